#include "core/util.h"

#include <filesystem>

namespace osm {

bool FileExists(const std::string& path) {
    std::error_code ec;
    return std::filesystem::exists(path, ec);
}

std::string Stem(const std::string& path) { return path.size() < 3 ? std::string() : path.substr(0, path.size() - 3); }

}  // namespace osm
