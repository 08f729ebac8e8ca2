#pragma once
// Progress of a batch run: a bar on a terminal, a line a year otherwise.
#include <cstdio>
#include <string>

namespace osm::batch {

class ProgressBar {
public:
    explicit ProgressBar(std::FILE* out);
    // done of total months; label such as "1973 jun".
    // Off a terminal a line is written every 12 steps, counted as `unit`s.
    void Show(int done, int total, const std::string& label, const std::string& unit = "year");
    void Finish();

private:
    std::FILE* out_;
    bool terminal_;
    int lastShown_ = -1;
};

}  // namespace osm::batch
