#include "presentation/profile_points.h"

#include <algorithm>
#include <cmath>

#include "core/model.h"
#include "core/numbers.h"
#include "core/results_store.h"
#include "presentation/time_series.h"

namespace osm {

int ProfilePointCount(const Model& m) {
    const Main& mn = m.main;
    return static_cast<int>(Int(std::fabs(mn.ReachMile(mn.FirstReach, 0)) + mn.ReachMile(mn.LastReach, 1)));
}

int ReachValuePoints(const Model& m, int r) {
    const Main& mn = m.main;
    const float length = mn.ReachMile(r, 1) - mn.ReachMile(r, 0);
    return static_cast<int>(CInt(std::fabs(Int(length) - 1)));
}

std::vector<double> ProfileMiles(const Model& m) {
    const Main& mn = m.main;
    std::vector<double> miles;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const double top = mn.ReachMile(r, 0), foot = mn.ReachMile(r, 1);
        const int n = ReachValuePoints(m, r);
        // The block spans the reach; its closing zero stands at the foot.
        for (int k = 0; k < n; ++k) miles.push_back(top + (foot - top) * k / std::max(n - 1, 1));
        miles.push_back(foot);
    }
    return miles;
}

void SetupProfiles(const Model& m, ChartSet& charts) {
    const Graphs& g = m.graphs;
    const int points = ProfilePointCount(m);
    for (int i = 1; i <= 6; ++i) {
        const int v = g.ProfSlot(i);
        if (v == 0) continue;
        CheckChartVariable(m, "Profile", i, v);
        SetupChartFrame(m, charts, 2, i, v);
        ChartState& c = Chart(charts, i);
        c.styleCode = 4;
        c.xPoints = points;
        c.xTicks = 5;
        const int sets = g.VarSets(v);
        c.SetCurveCount(sets);

        const int n = sets * (m.main.NRuns + 1);
        c.SetCurveCount(n);
        c.xMiles = ProfileMiles(m);
        for (int j = 1; j <= n; ++j) {
            c.SetRole(j - 1, CurveRoleOf(g, v, j));
            const int32_t colour = g.CurveColour(j);
            // The overlaid run's lines thin out set by set, black inside.
            if (j <= sets)
                c.SetFormat(j - 1, {0, 1, colour, colour});
            else
                c.SetFormat(j - 1, {0, static_cast<int16_t>(n - j), colour, 0});
        }
    }
    LabelMileAxis(m, charts);
}

void LabelMileAxis(const Model& m, ChartSet& charts) {
    const Main& mn = m.main;
    const int points = ProfilePointCount(m);
    const double spacing = CInt(static_cast<double>(points) / Chart(charts, 1).xTicks);
    for (int i = 1; i <= 6; ++i) {
        if (m.graphs.ProfSlot(i) == 0) continue;
        ChartState& c = Chart(charts, i);
        c.axisLabels.assign(static_cast<size_t>(std::max(c.xTicks, 0)) + 1, "");
        for (int k = 1; k <= c.xTicks; ++k)
            c.SetAxisLabel(k, NumText(Sng(mn.ReachMile(mn.FirstReach, 0) + spacing * k)));
    }
}

namespace {

// One repaint of chart i from the store at the given month.
void drawProfile(const Model& m, ChartState& c, int i, int v, int month) {
    const Main& mn = m.main;
    const Graphs& g = m.graphs;
    c.Clear();
    // Before any run there is no month in the store to show.
    if (month < mn.Results.lo(4) || month > mn.Results.hi(4)) return;
    int curve = 0;
    double top = 0;
    for (int run = 0; run <= mn.NRuns; ++run)
        for (int s = 1; s <= g.VarSets(v); ++s) {
            for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
                const int n = ReachValuePoints(m, r);
                const float value = ShownResult(mn, run, v, s, r, month);
                for (int k = 0; k < n; ++k) c.AddPoint(curve, value);
                // A reach without an observation is left out, its closing zero too.
                if (std::isnan(value)) {
                    c.AddPoint(curve, value);
                    continue;
                }
                top = std::max(top, static_cast<double>(value));
                c.AddPoint(curve, 0.0f);
            }
            ++curve;
        }
    if (g.YMax(2, i) == 0) c.yTop = top;
}

}  // namespace

void UpdateProfiles(const Model& m, ChartSet& charts, int /*iYear*/, int /*iMonth*/) {
    const Graphs& g = m.graphs;
    if (g.VisForms(3) == 0) return;
    for (int i = 1; i <= 6; ++i) {
        const int v = g.ProfSlot(i);
        if (v == 0) continue;
        const int scale = g.VarTime(v);
        if (scale < m.main.TimeFlags.lo() || scale > m.main.TimeFlags.hi() || !m.main.TimeFlags(scale)) continue;
        drawProfile(m, Chart(charts, i), i, v, m.main.CumMonth);
    }
}

void ReplotProfiles(const Model& m, ChartSet& charts) {
    const Main& mn = m.main;
    const Graphs& g = m.graphs;
    if (g.VisForms(3) == 0) return;
    for (int i = 1; i <= 6; ++i) {
        const int v = g.ProfSlot(i);
        if (v == 0) continue;
        const int month = g.VarTime(v) == TimeYearly ? mn.RunYear0 * 12 + 1 : mn.CumMonth;
        drawProfile(m, Chart(charts, i), i, v, month);
    }
}

}  // namespace osm
