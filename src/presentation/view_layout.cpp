#include "presentation/view_layout.h"

#include <algorithm>

namespace osm {

namespace {

struct Cells {
    int cols = 1;
    int rows = 1;
    double w = 0;
    double h = 0;
};

Cells cellsFor(int n, int cols, double w, double h, double gap) {
    Cells c;
    c.cols = cols;
    c.rows = (n + cols - 1) / cols;
    c.w = std::max(0.0, (w - gap * (c.cols + 1)) / c.cols);
    c.h = std::max(0.0, (h - gap * (c.rows + 1)) / c.rows);
    return c;
}

// Width of the largest view of the given shape that fits a cell.
double fittedWidth(const Cells& c, double aspect) { return std::min(c.w, c.h * aspect); }

}  // namespace

int TileColumns(int n, double w, double h, double aspect, double gap) {
    if (n <= 0) return 0;
    if (aspect <= 0) aspect = 1;
    int best = 1;
    double bestWidth = -1;
    for (int cols = 1; cols <= n; ++cols) {
        const Cells c = cellsFor(n, cols, w, h, gap);
        // A layout leaving a whole row or column empty is never better.
        if ((c.rows - 1) * cols >= n) continue;
        const double fw = fittedWidth(c, aspect);
        if (fw > bestWidth + 1e-9) {
            bestWidth = fw;
            best = cols;
        }
    }
    return best;
}

std::vector<ViewRect> TileViews(int n, double w, double h, double aspect, double gap) {
    std::vector<ViewRect> out;
    if (n <= 0) return out;
    const Cells c = cellsFor(n, TileColumns(n, w, h, aspect, gap), w, h, gap);
    out.reserve(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        const int row = i / c.cols;
        const int col = i % c.cols;
        out.push_back({gap + col * (c.w + gap), gap + row * (c.h + gap), c.w, c.h});
    }
    return out;
}

}  // namespace osm
