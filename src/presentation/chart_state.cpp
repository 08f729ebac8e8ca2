#include "presentation/chart_state.h"

#include <algorithm>

namespace osm {

void ChartState::SetCurveCount(int n) {
    const auto count = static_cast<size_t>(std::max(n, 0));
    curves.resize(count);
    formats.resize(count);
    dirty = true;
}

void ChartState::SetFormat(int curve, CurveFormat f) {
    if (curve < 0) return;
    if (static_cast<size_t>(curve) >= formats.size()) formats.resize(static_cast<size_t>(curve) + 1);
    formats[static_cast<size_t>(curve)] = f;
    dirty = true;
}

void ChartState::SetAxisLabel(int tick, const std::string& text) {
    if (tick < 0) return;
    if (static_cast<size_t>(tick) >= axisLabels.size()) axisLabels.resize(static_cast<size_t>(tick) + 1);
    axisLabels[static_cast<size_t>(tick)] = text;
    dirty = true;
}

void ChartState::AddPoint(int curve, float value) {
    if (curve < 0) return;
    const auto c = static_cast<size_t>(curve);
    if (c >= curves.size()) curves.resize(c + 1);
    if (c >= formats.size()) formats.resize(c + 1);
    curves[c].push_back(value);
    dirty = true;
}

void ChartState::Clear() {
    for (auto& c : curves) c.clear();
    dirty = true;
}

int ChartState::PointCount(int curve) const {
    if (curve < 0 || static_cast<size_t>(curve) >= curves.size()) return 0;
    return static_cast<int>(curves[static_cast<size_t>(curve)].size());
}

YRange ChartState::ShownYRange() const {
    YRange r{yBottom, yTop};
    if (!autoY) return r;
    for (const auto& c : curves)
        for (float v : c) {
            r.top = std::max(r.top, static_cast<double>(v));
            r.bottom = std::min(r.bottom, static_cast<double>(v));
        }
    return r;
}

int ChartState::ShownXSpan() const {
    int longest = 0;
    for (const auto& c : curves) longest = std::max(longest, static_cast<int>(c.size()));
    return std::max(xPoints, longest);
}

double ChartState::TickPosition(int k) const {
    if (xTicks <= 0) return 0;
    const int span = xPoints > 0 ? xPoints : ShownXSpan();
    return static_cast<double>(k) * span / xTicks;
}

}  // namespace osm
