#include "presentation/time_series.h"

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/results_store.h"
#include "core/run_driver.h"
#include "presentation/graph_table.h"
#include "presentation/time_axis.h"

namespace osm {

void CheckChartVariable(const Model& m, const char* view, int chart, int v) {
    if (v >= 1 && v <= m.graphs.NVars) return;
    throw Fault(std::string(view) + " " + NumText(chart) + " is set to show variable " + NumText(v) +
                ", but the graph table has variables 1 to " + NumText(static_cast<int>(m.graphs.NVars)) +
                ": choose another in Set Graphics or load another graphics setup file");
}

void SetupChartFrame(const Model& m, ChartSet& charts, int kind, int i, int v) {
    const Graphs& g = m.graphs;
    ChartState& c = Chart(charts, i);
    c.sizeCode = 10;
    c.frameColour = 0;
    c.backColour = Chart(charts, 1).backColour;
    c.switch1 = true;
    c.switch2 = false;
    c.autoY = g.YMax(kind, i) == 0;
    c.yTop = c.autoY ? 0.001 : g.YMax(kind, i);
    c.yBottom = g.YMin(kind, i);
    c.title = g.VarLabel(0, v);
    for (int s = 1; s <= g.VarSets(v); ++s) c.title += g.VarLabel(s, v);
}

CurveRole CurveRoleOf(const Graphs& g, int v, int curve) {
    const int sets = g.VarSets(v);
    const int set = (curve - 1) % sets + 1;
    return {static_cast<int16_t>((curve - 1) / sets), static_cast<int16_t>(set), IsObservedSet(g, set, v)};
}

void SetupGraphs(const Model& m, ChartSet& charts) {
    const Graphs& g = m.graphs;
    const int runs = m.main.NRuns + 1;
    for (int i = 1; i <= 6; ++i) {
        const int v = g.GraphSlot(i);
        if (v == 0) continue;
        CheckChartVariable(m, "Graph", i, v);
        SetupChartFrame(m, charts, 1, i, v);
        ChartState& c = Chart(charts, i);
        const int sets = g.VarSets(v);

        const int n = sets * runs;
        c.SetCurveCount(n);
        int k = 1;
        int16_t style = 2;
        for (int j = 1; j <= n; ++j) {
            c.SetRole(j - 1, CurveRoleOf(g, v, j));
            if (j <= sets) {
                const bool observed = IsObservedSet(g, j, v);
                const int16_t st = observed ? MarkStyle : g.VarStyle(v);
                const int16_t sz = observed ? int16_t{5} : g.VarSize(v);
                c.SetFormat(j - 1, {st, sz, g.CurveColour(j), g.CurveColour(j)});
            } else {
                // A curve of the overlaid run: the colours of the sets again, in
                // the next style for each further run.
                if (k > sets) k = 1;
                c.SetFormat(j - 1, {style, 5, g.CurveColour(k), g.CurveColour(k)});
                ++k;
                if (j % sets == 0) ++style;
            }
        }
    }
}

namespace {

// The window turns over in the December of its last year, except at the end of
// the run, whose last picture stays.
bool WindowTurnsOver(const Model& m, int iYear) {
    DivideTimeWindow(m.graphs.TimeWindow);  // a window of no years is a fault, not a division
    return iYear % m.graphs.TimeWindow == 0 && m.main.CumMonth != m.main.NYears * 12;
}

}  // namespace

void ClearGraphs(ChartSet& charts) {
    for (auto& c : charts) c.Clear();
}

void UpdateGraphs(Model& m, ChartSet& charts, int iYear, int iMonth) {
    const Graphs& g = m.graphs;
    const Main& mn = m.main;
    if (g.VisForms(1) == 0) return;
    if (iMonth == 12 && WindowTurnsOver(m, iYear)) {
        ClearGraphs(charts);
        LabelTimeAxis(m, charts);
    }
    for (int i = 1; i <= 6; ++i) {
        const int v = g.GraphSlot(i);
        if (v == 0) continue;
        const int scale = g.VarTime(v);
        const bool due = (scale == TimeMonthly && mn.TimeFlags(2)) || (scale == TimeYearly && mn.TimeFlags(3));
        if (!due) continue;
        ChartState& c = Chart(charts, i);
        int curve = 0;
        for (int run = 0; run <= mn.NRuns; ++run)
            for (int s = 1; s <= g.VarSets(v); ++s)
                c.AddPoint(curve++, ShownResult(mn, run, v, s, mn.IndexReach, mn.CumMonth));
    }
}

namespace {

// The calendar as the driver left it at a yield.
struct Calendar {
    int16_t CurYr, SimYr, MonthIdx, CumMonth, RunYear0;
    bool monthly, yearly;

    explicit Calendar(const Main& mn)
        : CurYr(mn.CurYr), SimYr(mn.SimYr), MonthIdx(mn.MonthIdx), CumMonth(mn.CumMonth),
          RunYear0(mn.RunYear0), monthly(mn.TimeFlags(2)), yearly(mn.TimeFlags(3)) {}
    void Restore(Main& mn) const {
        mn.CurYr = CurYr;
        mn.SimYr = SimYr;
        mn.MonthIdx = MonthIdx;
        mn.CumMonth = CumMonth;
        mn.RunYear0 = RunYear0;
        mn.TimeFlags(2) = monthly;
        mn.TimeFlags(3) = yearly;
    }
};

}  // namespace

void ReplotGraphs(Model& m, ChartSet& charts) {
    Main& mn = m.main;
    // A replot may come at any yield of a run, December's included, when the
    // driver has yet to run the year step on its own calendar.
    const Calendar saved(mn);
    const int years = mn.CumMonth / 12;
    const int rest = mn.CumMonth - 12 * years;
    // The year first: a run that went to its last year left CurYr one past it.
    mn.CurYr = mn.StartYr;
    SetCalendar(m, 1, 1);
    ClearGraphs(charts);
    SetupGraphs(m, charts);
    LabelTimeAxis(m, charts);
    for (int y = 1; y <= years; ++y) {
        for (int mo = 1; mo <= 12; ++mo) {
            SetCalendar(m, y, mo);
            UpdateGraphs(m, charts, y, mo);
        }
        mn.TimeFlags(3) = true;
        mn.TimeFlags(2) = false;
        UpdateGraphs(m, charts, y, 13);
        mn.CurYr = static_cast<int16_t>(mn.CurYr + 1);
    }
    for (int mo = 1; mo <= rest; ++mo) {
        SetCalendar(m, years + 1, mo);
        UpdateGraphs(m, charts, years + 1, mo);
    }
    saved.Restore(mn);
}

}  // namespace osm
