#pragma once
// What one chart of the graphs or profiles holds, kept apart from any widget: its
// set-up (axis, title, curve formats), its axis labels and its points. The
// forms draw this; the model-side routines fill it, so every number on a chart
// can be checked without a display.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace osm {

// How a curve is drawn. Style 2 draws marks of the given size (observed data and
// the overlaid run); every other style draws a line of that width.
struct CurveFormat {
    int16_t style = 0;
    int16_t size = 1;
    int32_t colour = 0;   // the line or mark
    int32_t colour2 = 0;  // the mark's fill
};

inline constexpr int16_t MarkStyle = 2;

// What a curve shows: the run of the store it comes from (0, or 1 for the
// overlaid run), its data set, and whether that set is observed data.
struct CurveRole {
    int16_t run = 0;
    int16_t set = 1;
    bool observed = false;
};

struct YRange {
    double bottom = 0;
    double top = 0;
};

struct ChartState {
    // Set-up.
    int16_t sizeCode = 0;
    int16_t styleCode = 0;
    int32_t frameColour = 0;
    int32_t backColour = 0xFFFFFF;
    bool switch1 = false;
    bool switch2 = false;
    bool autoY = true;
    double yTop = 0;
    float yBottom = 0;
    int xPoints = 0;  // x positions across the chart; 0 until an axis is laid out
    int xTicks = 5;
    std::string title;
    std::vector<CurveFormat> formats;     // by curve index, from 0
    std::vector<CurveRole> roles;         // by curve index, from 0
    std::vector<std::string> axisLabels;  // by tick index, from 0; "" where none is set

    // Points. A point's x position is its place in its curve: every feed adds one
    // point to each curve it touches, so the curves of a chart keep step. NaN
    // holds a place where there is nothing to draw (no observation).
    std::vector<std::vector<float>> curves;

    // A profile's x scale: the river mile of each point place, the same for every
    // curve. Empty for a time series, whose x is the place itself.
    std::vector<double> xMiles;

    // Set by every change; the form that draws the chart clears it.
    bool dirty = true;

    int CurveCount() const { return static_cast<int>(curves.size()); }
    // New curve count: points and formats of the curves that stay are kept.
    void SetCurveCount(int n);
    void SetFormat(int curve, CurveFormat f);
    void SetRole(int curve, CurveRole r);
    void SetAxisLabel(int tick, const std::string& text);
    // Appends a value to a curve; a curve past the count is added blank.
    void AddPoint(int curve, float value);
    // Removes every point; the set-up and the labels stay.
    void Clear();
    int PointCount(int curve) const;

    // The y axis as drawn: fixed limits, or, while the chart scales itself, the
    // limits widened to take in every point.
    YRange ShownYRange() const;
    // The x axis runs from 0 to this: the point count, or the longest curve when
    // no axis was laid out or a curve has run past it.
    int ShownXSpan() const;
    // Where tick k stands on the x axis.
    double TickPosition(int k) const;
};

// Ticks of a readable axis over [lo, hi]: a round step (1, 2 or 5 times a power
// of ten) giving at most maxTicks intervals, and the limits widened outward to
// whole steps.
struct AxisTicks {
    double lo = 0, hi = 1, step = 1;
    std::vector<double> values;
};
AxisTicks RoundTicks(double lo, double hi, int maxTicks);
// A short text for a tick value on an axis of the given step: no more decimals
// than the step needs, thousands as "k" and millions as "M" ("12.5k", "3M"),
// and very small steps in exponent form ("2e-4").
std::string TickText(double value, double step);

// The six charts of a form; chart g (1..6) is element g - 1.
using ChartSet = std::array<ChartState, 6>;
inline ChartState& Chart(ChartSet& s, int g) { return s.at(static_cast<size_t>(g - 1)); }
inline const ChartState& Chart(const ChartSet& s, int g) { return s.at(static_cast<size_t>(g - 1)); }

}  // namespace osm
