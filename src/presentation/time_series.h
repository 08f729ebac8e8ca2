#pragma once
// The time-series graphs of the index reach: curve formats, the monthly and
// yearly point feed, and the rebuild of every chart from the results store.
#include "presentation/chart_state.h"

namespace osm {

struct Graphs;
struct Model;

// A chart's variable must be in the graph table; a fault names the view, the
// chart and the variables there are.
void CheckChartVariable(const Model& m, const char* view, int chart, int v);
// What graphs and profiles set alike on chart i showing variable v: size code,
// frame, switches, the y axis of the setup (kind 1 graphs, 2 profiles) and the
// title.
void SetupChartFrame(const Model& m, ChartSet& charts, int kind, int i, int v);

// Run, data set and kind of curve 1.. of a chart showing variable v: the sets of
// run 0 first, then those of the overlaid run.
CurveRole CurveRoleOf(const Graphs& g, int v, int curve);

// Axis limits, title and curve formats of every chart with a variable.
void SetupGraphs(const Model& m, ChartSet& charts);
// Removes every point of all six charts.
void ClearGraphs(ChartSet& charts);
// One feed of the run driver: a point per curve for each chart whose time scale
// is due; the window turns over in the December of its last year.
void UpdateGraphs(Model& m, ChartSet& charts, int iYear, int iMonth);
// Feeds the charts again from the start of the run up to the month in hand. The
// calendar is stepped through the run and then put back as it stood.
void ReplotGraphs(Model& m, ChartSet& charts);

}  // namespace osm
