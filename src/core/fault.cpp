#include "core/fault.h"

#include "core/numbers.h"

namespace osm {

namespace {
std::string describe(const std::string& file, int line, const std::string& expected,
                     const std::string& found) {
    std::string text = file + ":" + std::to_string(line) + ": expected " + expected;
    text += found.empty() ? std::string(", found nothing") : ", found '" + Excerpt(found) + "'";
    return text;
}
}  // namespace

FileFault::FileFault(const std::string& file, int line, const std::string& expected,
                     const std::string& found)
    : Fault(describe(file, line, expected, found)), file_(file), line_(line) {}

FileFault::FileFault(const std::string& file, const std::string& text)
    : Fault(file + ": " + text), file_(file) {}

}  // namespace osm
