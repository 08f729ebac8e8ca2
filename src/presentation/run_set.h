#pragma once
// The stored values of several runs of one model, kept apart from the models
// that made them: what a comparison, an ensemble or the NetCDF file reads. Each
// run holds the graph-table rows of its mode, the reaches FirstReach..LastReach
// and its months 1..months; an observed month without an observation is NaN.
#include <string>
#include <utility>
#include <vector>

#include "core/provenance.h"

namespace osm {

struct Model;

struct RunValues {
    std::string name;
    std::string fault;  // why the run stopped; "" for a run that ended normally
    int months = 0;     // the months the run reached
    std::vector<float> values;
};

struct RunSet {
    std::vector<std::pair<int, int>> rows;  // (var, set) of each graph-table row kept
    int firstReach = 0, lastReach = -1;
    int months = 0;  // the months of a whole run
    std::vector<RunValues> runs;
    Provenance provenance;

    int reachCount() const { return lastReach - firstReach + 1; }
    size_t index(size_t row, int reach, int month) const {
        return (row * static_cast<size_t>(reachCount()) + static_cast<size_t>(reach - firstReach)) *
                   static_cast<size_t>(months) +
               static_cast<size_t>(month - 1);
    }
    float at(size_t run, size_t row, int reach, int month) const {
        return runs[run].values[index(row, reach, month)];
    }
};

// An empty set shaped for the model's graph table, reaches, mode and run years.
RunSet RunSetFor(const Model& m, int nYears);
// The values of slot `slot` of the model's results store, named `name`; months
// the run did not reach are NaN.
RunValues TakeRun(const RunSet& set, const Model& m, int slot, const std::string& name);

}  // namespace osm
