#pragma once
// Many runs of one loaded model side by side: each run on its own copy of the
// model, on a pool of threads. A run's results depend only on its copy, so they
// are the same to the last bit whatever the number of threads and the order in
// which the runs end, and the same as a lone run of the same inputs.
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "core/messages.h"
#include "presentation/run_set.h"

namespace osm {

struct Model;

struct RunJob {
    std::string name;
    // Gives the run its own inputs (a policy, a scenario, parameter values) on
    // its copy of the model; the files it reads join the provenance. A fault
    // here is the run's fault.
    std::function<void(Model&)> prepare;
};

struct ManyRunsSetup {
    int startYr = 48;
    int years = 50;
    int jobs = 0;  // threads; 0 for one per core
    // On the run's thread when a run has ended, normally or by a fault, with
    // its model (to write its own files, say); a fault here is the run's fault.
    std::function<void(size_t, Model&)> finished;
    // On the calling thread about ten times a second: months done of all.
    std::function<void(long, long)> progress;
};

struct ManyRunsResult {
    RunSet set;                                     // the runs in the order of the jobs
    std::vector<std::set<std::string>> inputs;      // the files each run read, start-up not included
    std::vector<std::vector<ModelMessage>> messages;  // the model's messages of each run
};

// The runs of `jobs`, each from a copy of `loaded`, over the years of `setup`.
// A run that faults keeps the months it finished and its fault text; the others
// go on.
ManyRunsResult RunMany(const Model& loaded, const std::vector<RunJob>& jobs, const ManyRunsSetup& setup);

// Threads for `asked` (0: one per core).
int JobCount(int asked);
// Calls work(i) for i = 0..count-1 on `threads` threads, each taking the next
// index as it becomes free. The first exception of a work item is thrown again
// here after all threads have ended.
void ForEachParallel(size_t count, int threads, const std::function<void(size_t)>& work);

}  // namespace osm
