#include "batch/progress_bar.h"

#include <unistd.h>

#include <algorithm>

namespace osm::batch {

ProgressBar::ProgressBar(std::FILE* out) : out_(out), terminal_(isatty(fileno(out)) != 0) {}

void ProgressBar::Show(int done, int total, const std::string& label, const std::string& unit) {
    if (total <= 0) return;
    if (terminal_) {
        constexpr int width = 40;
        const int filled = done * width / total;
        std::fprintf(out_, "\r[%s%s] %3d%%  %-10s", std::string(static_cast<size_t>(filled), '#').c_str(),
                     std::string(static_cast<size_t>(width - filled), '.').c_str(), done * 100 / total,
                     label.c_str());
        std::fflush(out_);
    } else if (done % 12 == 0 && done != lastShown_) {
        std::fprintf(out_, "%s %d of %d done (%s)\n", unit.c_str(), done / 12, total / 12, label.c_str());
    }
    lastShown_ = done;
}

void ProgressBar::ShowBatch(long done, long total, int runs) {
    if (total <= 0) return;
    const int percent = static_cast<int>(done * 100 / total);
    const long runMonths = total / std::max(runs, 1);
    const std::string label = std::to_string(done / std::max(runMonths, 1L)) + " of " + std::to_string(runs) + " runs";
    if (terminal_) {
        constexpr int width = 40;
        const int filled = percent * width / 100;
        std::fprintf(out_, "\r[%s%s] %3d%%  %-20s", std::string(static_cast<size_t>(filled), '#').c_str(),
                     std::string(static_cast<size_t>(width - filled), '.').c_str(), percent, label.c_str());
        std::fflush(out_);
        lastShown_ = percent;
    } else if (percent / 10 != lastShown_ / 10 || lastShown_ < 0) {
        std::fprintf(out_, "%d%% of the batch done (%s)\n", percent, label.c_str());
        lastShown_ = percent;
    }
}

void ProgressBar::Finish() {
    if (terminal_ && lastShown_ >= 0) std::fprintf(out_, "\n");
    lastShown_ = -1;
}

}  // namespace osm::batch
