#pragma once
// Faults: the one exception type of the model. A fault says what went wrong,
// where (file:line, or year/month/reach/variable) and, where it helps, what to do.
#include <stdexcept>
#include <string>

namespace osm {

class Fault : public std::runtime_error {
public:
    explicit Fault(const std::string& text) : std::runtime_error(text) {}
};

// A fault in an input file: names the file, the line and what was expected.
struct Main;

// Where a run is, for a fault raised by a step: "year 1993, month 4, reach 5"
// (the reach left out when it is 0).
std::string RunPlace(const Main& mn, int reach = 0);

class FileFault : public Fault {
public:
    FileFault(const std::string& file, int line, const std::string& expected,
              const std::string& found);
    FileFault(const std::string& file, const std::string& text);

    const std::string& file() const { return file_; }
    int line() const { return line_; }

private:
    std::string file_;
    int line_ = 0;
};

}  // namespace osm
