#include "core/fault.h"

#include "core/main_module.h"
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

std::string RunPlace(const Main& mn, int reach) {
    const int month = mn.CumMonth > 0 ? (mn.CumMonth - 1) % 12 + 1 : 0;
    std::string text = "year " + NumText(1900 + mn.CurYr) + ", month " + NumText(month);
    if (reach != 0) text += ", reach " + NumText(reach);
    return text;
}

FileFault::FileFault(const std::string& file, int line, const std::string& expected,
                     const std::string& found)
    : Fault(describe(file, line, expected, found)), file_(file), line_(line) {}

FileFault::FileFault(const std::string& file, const std::string& text)
    : Fault(file + ": " + text), file_(file) {}

}  // namespace osm
