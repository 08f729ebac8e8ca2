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
    // Runs of a batch: done of total months of all runs. Off a terminal a line is
    // written at each tenth of the way.
    void ShowBatch(long done, long total, int runs);
    void Finish();

private:
    std::FILE* out_;
    bool terminal_;
    int lastShown_ = -1;
};

}  // namespace osm::batch
