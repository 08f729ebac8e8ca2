#include "presentation/time_axis.h"

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"

namespace osm {

TimeDivision DivideTimeWindow(int timeWindow) {
    if (timeWindow <= 0)
        throw Fault("The graphs cannot show a time window of " + NumText(timeWindow) +
                    " years: set the number of years to display to 1 or more");
    TimeDivision d;
    for (int t = 15; t >= 1; --t)
        if (timeWindow % t == 0) {
            d.ticks = t;
            break;
        }
    d.step = timeWindow / d.ticks;
    return d;
}

int FirstYearShown(const Model& m, int timeScale) {
    const Main& mn = m.main;
    const int window = m.graphs.TimeWindow;
    if (mn.RunYear0 + 1 < window) return mn.StartYr;
    // Once the window has turned over it starts after the year in hand; the last
    // year of a run looks back instead. A yearly chart starts one year earlier,
    // since its first point is the December of the year in hand.
    int year = mn.CurYr == mn.NYears + 48 ? mn.CurYr - window : mn.CurYr + 1;
    if (timeScale == TimeYearly) --year;
    return year;
}

void LabelTimeAxis(const Model& m, ChartSet& charts) {
    const Graphs& g = m.graphs;
    const TimeDivision d = DivideTimeWindow(g.TimeWindow);
    for (int i = 1; i <= 6; ++i) {
        ChartState& c = Chart(charts, i);
        c.xTicks = d.ticks;
        c.dirty = true;
        const int v = g.GraphSlot(i);
        if (v == 0) continue;
        const int scale = g.VarTime(v);
        if (scale == TimeMonthly) c.xPoints = g.TimeWindow * 12;
        if (scale == TimeYearly) {
            c.xPoints = d.step + g.TimeWindow;
            c.xTicks = d.ticks + 1;
        }
        int year = FirstYearShown(m, scale);
        c.axisLabels.assign(static_cast<size_t>(c.xTicks) + 1, "");
        for (int k = 0; k <= d.ticks; ++k) {
            if (year >= 100) year -= 100;
            c.SetAxisLabel(k, NumText(year));
            year += d.step;
        }
    }
}

}  // namespace osm
