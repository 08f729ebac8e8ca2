#include "presentation/results_dump.h"

#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"
#include "presentation/graph_table.h"

namespace osm {

namespace {

// Calls f(row, v, s) for each row of the graph table chosen for the dump.
template <typename F>
void forChosenRows(const Graphs& g, F f) {
    int row = 0;
    for (int v = 1; v <= g.NVars; ++v)
        for (int s = 1; s <= g.VarSets(v); ++s, ++row)
            if (g.DumpVar(row)) f(row, v, s);
}

}  // namespace

void DumpResults(Model& m, const std::string& path) {
    TextWriter out(path);
    DumpResults(m, out);
    out.Commit();
}

void DumpResults(Model& m, TextWriter& out) {
    Main& mn = m.main;
    const Graphs& g = m.graphs;
    out.Text("Yr").Text("Month").Text("CumMonth");
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        if (!g.DumpReach(r)) continue;
        forChosenRows(g, [&](int, int v, int s) {
            out.Text(NumText(r - mn.FirstReach + 1) + " - " + GraphRowLabel(g, v, s));
        });
    }
    out.EndRecord();
    for (int c = 1; c <= mn.CumMonth; ++c) {
        const int month = (c - 1) % 12 + 1;
        mn.TimeFlags(3) = month == 12;
        out.Number(static_cast<int>(Int((c - 1) / 12.0)) + mn.StartYr).Number(month).Number(c);
        for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
            if (!g.DumpReach(r)) continue;
            forChosenRows(g, [&](int, int v, int s) {
                if (g.VarTime(v) != TimeYearly || mn.TimeFlags(3))
                    out.Number(mn.Results(mn.NRuns, v, s, r, c));
                else
                    out.Text(".");
            });
        }
        out.EndRecord();
    }
}

}  // namespace osm
