#pragma once
// The graph table (graphleg.txt): which quantities of the results store exist
// for display, their titles, data sets, time scale, curve style and map id.
#include <string>

namespace osm {

struct Model;
struct Graphs;

// Reads graphleg.txt and sizes the results store. A bad file changes nothing.
void LoadGraphTable(Model& m, const std::string& path);
// The curve colours of the charts.
void SetCurveColours(Graphs& g);
// True when data set s of variable v holds observed data ("obs...").
bool IsObservedSet(const Graphs& g, int s, int v);
// Rows of the graph table: one per variable and data set, in order, from 0.
int GraphRowCount(const Graphs& g);
// The text of a row: the title, and the set label for a variable of several sets.
std::string GraphRowLabel(const Graphs& g, int v, int s);

}  // namespace osm
