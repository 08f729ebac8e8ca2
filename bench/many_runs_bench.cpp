// Many whole-model runs of 50 years on the default data set, start-up excluded
// (the runs copy the loaded model): an ensemble of perturbed runs, and the same
// runs on one thread and on two, for the scaling. Run with --benchmark_repetitions
// and read the medians; the machine's load at the time matters.
#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "core/ensemble.h"
#include "core/many_runs.h"
#include "core/model.h"
#include "default_model.h"

namespace {

// n runs, each with its own angle of repose drawn from 28..36 degrees.
std::vector<osm::RunJob> angleRuns(const osm::Model& m, int n, osm::EnsembleSpec& spec,
                                   std::map<std::string, std::string>& texts,
                                   std::vector<std::vector<double>>& values) {
    spec.runs = n;
    spec.seed = 1;
    spec.parameters = {{"phy", "AngleOfRepose", osm::Distribution::Uniform, 28, 36}};
    values = osm::DrawParameters(spec);
    texts = osm::ParameterTexts(m, spec);
    std::vector<osm::RunJob> jobs;
    for (size_t i = 0; i < values.size(); ++i)
        jobs.push_back({"run " + std::to_string(i + 1), [&spec, &texts, &values, i](osm::Model& run) {
                            osm::ApplyParameters(run, spec, texts, values[i], "/tmp", i);
                        }});
    return jobs;
}

// Args: runs, threads.
void BM_WholeModelEnsemble50Years(benchmark::State& state) {
    osm::Model loaded;
    if (!osm_bench::StartDefaultModel(state, loaded, false)) return;
    osm::EnsembleSpec spec;
    std::map<std::string, std::string> texts;
    std::vector<std::vector<double>> values;
    const auto jobs = angleRuns(loaded, static_cast<int>(state.range(0)), spec, texts, values);
    osm::ManyRunsSetup setup;
    setup.startYr = 48;
    setup.years = 50;
    setup.jobs = static_cast<int>(state.range(1));
    for (auto _ : state) {
        const osm::ManyRunsResult r = osm::RunMany(loaded, jobs, setup);
        for (const auto& run : r.set.runs)
            if (!run.fault.empty()) {
                state.SkipWithError(run.fault.c_str());
                return;
            }
        benchmark::DoNotOptimize(r.set.runs.data());
    }
    state.counters["runs/s"] =
        benchmark::Counter(static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate);
}

}  // namespace

// The 1→2 thread scaling on 8 runs, and the 1,000-run ensemble on every core.
BENCHMARK(BM_WholeModelEnsemble50Years)
    ->ArgNames({"runs", "jobs"})
    ->Args({8, 1})
    ->Args({8, 2})
    ->Unit(benchmark::kSecond)
    ->UseRealTime()
    ->Iterations(1);
BENCHMARK(BM_WholeModelEnsemble50Years)
    ->Name("BM_Ensemble1000")
    ->ArgNames({"runs", "jobs"})
    ->Args({1000, 0})
    ->Unit(benchmark::kSecond)
    ->UseRealTime()
    ->Iterations(1);
