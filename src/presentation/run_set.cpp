#include "presentation/run_set.h"

#include <algorithm>
#include <limits>

#include "core/model.h"
#include "core/results_store.h"

namespace osm {

RunSet RunSetFor(const Model& m, int nYears) {
    const Main& mn = m.main;
    const Graphs& g = m.graphs;
    RunSet set;
    const int lastVar = mn.PhysOnly ? std::min<int>(g.NVars, mn.NPhysVars) : g.NVars;
    for (int v = 1; v <= lastVar; ++v)
        for (int s = 1; s <= g.VarSets(v); ++s) set.rows.emplace_back(v, s);
    set.firstReach = mn.FirstReach;
    set.lastReach = mn.LastReach;
    set.months = nYears * 12;
    return set;
}

RunValues TakeRun(const RunSet& set, const Model& m, int slot, const std::string& name) {
    const Main& mn = m.main;
    RunValues run;
    run.name = name;
    run.months = std::min<int>(mn.CumMonth, set.months);
    run.values.assign(set.rows.size() * static_cast<size_t>(set.reachCount()) * static_cast<size_t>(set.months),
                      std::numeric_limits<float>::quiet_NaN());
    for (size_t i = 0; i < set.rows.size(); ++i) {
        const auto [v, s] = set.rows[i];
        for (int r = set.firstReach; r <= set.lastReach; ++r)
            for (int c = 1; c <= run.months; ++c) run.values[set.index(i, r, c)] = ShownResult(mn, slot, v, s, r, c);
    }
    return run;
}

}  // namespace osm
