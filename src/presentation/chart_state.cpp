#include "presentation/chart_state.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace osm {

void ChartState::SetCurveCount(int n) {
    const auto count = static_cast<size_t>(std::max(n, 0));
    curves.resize(count);
    formats.resize(count);
    roles.resize(count);
    dirty = true;
}

void ChartState::SetFormat(int curve, CurveFormat f) {
    if (curve < 0) return;
    if (static_cast<size_t>(curve) >= formats.size()) formats.resize(static_cast<size_t>(curve) + 1);
    formats[static_cast<size_t>(curve)] = f;
    dirty = true;
}

void ChartState::SetRole(int curve, CurveRole r) {
    if (curve < 0) return;
    if (static_cast<size_t>(curve) >= roles.size()) roles.resize(static_cast<size_t>(curve) + 1);
    roles[static_cast<size_t>(curve)] = r;
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
            if (std::isnan(v)) continue;
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

namespace osm {

AxisTicks RoundTicks(double lo, double hi, int maxTicks) {
    AxisTicks t;
    if (!(hi > lo)) hi = lo + 1;
    maxTicks = std::max(maxTicks, 1);
    const int power = static_cast<int>(std::floor(std::log10((hi - lo) / maxTicks)));
    // A tick value is worked as a whole count times the step's digit, then scaled
    // by the power of ten in one operation, so 3 steps of 0.2 give 0.6 exactly.
    const auto at = [power](long long count, int digit) {
        const double units = static_cast<double>(count * digit);
        return power < 0 ? units / std::pow(10.0, -power) : units * std::pow(10.0, power);
    };
    long long first = 0, last = 0;
    int digit = 1;
    for (int f : {1, 2, 5, 10}) {
        digit = f;
        t.step = at(1, f);
        // A small tolerance keeps a limit that is already a whole step as it is.
        first = static_cast<long long>(std::floor(lo / t.step + 1e-9));
        last = static_cast<long long>(std::ceil(hi / t.step - 1e-9));
        if (last - first <= maxTicks) break;
    }
    t.lo = at(first, digit);
    t.hi = at(last, digit);
    for (long long k = first; k <= last; ++k) t.values.push_back(at(k, digit));
    return t;
}

std::string TickText(double value, double step) {
    char buf[32];
    const double a = std::fabs(value);
    auto fixed = [&](double v, double st, const char* suffix) {
        const int decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(st) - 1e-9)));
        std::snprintf(buf, sizeof buf, "%.*f%s", decimals, v, suffix);
        return std::string(buf);
    };
    if (value == 0) return "0";
    if (a >= 1e6 && step >= 1e5) return fixed(value / 1e6, step / 1e6, "M");
    if (a >= 1e4 && step >= 100) return fixed(value / 1e3, step / 1e3, "k");
    if (step < 1e-3) {
        std::snprintf(buf, sizeof buf, "%.2g", value);
        return buf;
    }
    return fixed(value, step, "");
}

}  // namespace osm
