#include "presentation/results_csv.h"

#include <algorithm>
#include <cmath>

#include "core/model.h"
#include "core/textfile.h"
#include "presentation/run_set.h"

namespace osm {

void WriteResultsCsv(const Model& m, const std::string& path) {
    TextWriter out(path);
    WriteResultsCsv(m, out);
    out.Commit();
}

void WriteResultsCsv(const Model& m, TextWriter& out) {
    const Main& mn = m.main;
    const Graphs& g = m.graphs;
    const int lastVar = mn.PhysOnly ? std::min<int>(g.NVars, mn.NPhysVars) : g.NVars;
    out.Line("run,var,sub,reach,month,value");
    for (int run = 0; run <= mn.NRuns; ++run)
        for (int v = 1; v <= lastVar; ++v)
            for (int s = 1; s <= g.VarSets(v); ++s)
                for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
                    for (int c = 1; c <= mn.CumMonth; ++c) {
                        out.Number(run).Number(v).Number(s).Number(r).Number(c);
                        out.Number(mn.Results(run, v, s, r, c));
                        out.EndRecord();
                    }
}

void WriteRunCsv(const RunSet& set, size_t run, TextWriter& out) {
    out.Line("run,var,sub,reach,month,value");
    for (size_t row = 0; row < set.rows.size(); ++row)
        for (int r = set.firstReach; r <= set.lastReach; ++r)
            for (int c = 1; c <= set.runs[run].months; ++c) {
                out.Number(0).Number(set.rows[row].first).Number(set.rows[row].second).Number(r).Number(c);
                const float x = set.at(run, row, r, c);
                if (std::isnan(x)) out.Bare("");
                else out.Number(x);
                out.EndRecord();
            }
}

}  // namespace osm
