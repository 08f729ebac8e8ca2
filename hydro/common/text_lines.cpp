#include "common/text_lines.h"

#include <fstream>

#include "common/file_error.h"

namespace hydro {

std::vector<std::string> ReadLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw FileError{path + ": cannot be opened"};
    std::vector<std::string> lines;
    std::string s;
    while (std::getline(in, s)) {
        if (!s.empty() && s.back() == '\r') s.pop_back();
        lines.push_back(s);
    }
    return lines;
}

}  // namespace hydro
