// Runs of the driver and of the flow engine on the default data set, start-up
// excluded.
#include <benchmark/benchmark.h>

#include <exception>

#include "core/model.h"
#include "core/run_driver.h"
#include "default_model.h"
#include "hydrology/flow_engine.h"

namespace {

void runFiftyYears(benchmark::State& state, bool physOnly) {
    osm::Model loaded;
    if (!osm_bench::StartDefaultModel(state, loaded, physOnly)) return;
    osm::RunObserver observer;
    for (auto _ : state) {
        state.PauseTiming();
        osm::Model m = loaded;
        state.ResumeTiming();
        try {
            osm::StartRun(m, observer, 48, 50);
        } catch (const std::exception& e) {
            state.SkipWithError(e.what());
            return;
        }
        benchmark::DoNotOptimize(m.main.Results.raw().data());
    }
}

void BM_PhysicalRun50Years(benchmark::State& state) { runFiftyYears(state, true); }
void BM_WholeRun50Years(benchmark::State& state) { runFiftyYears(state, false); }

// One month of the flow engine over the whole river, on the post-dam record.
void BM_MonthlyFlows(benchmark::State& state) {
    osm::Model m;
    if (!osm_bench::StartDefaultModel(state, m, true)) return;
    m.main.CurYr = 80;
    int month = 1, year = 1;
    for (auto _ : state) {
        osm::SetCalendar(m, year, month);
        osm::MonthlyFlows(m, year, month);
        if (++month > 12) {
            month = 1;
            year = 2;
        }
    }
}

}  // namespace

BENCHMARK(BM_PhysicalRun50Years)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WholeRun50Years)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MonthlyFlows)->Unit(benchmark::kMicrosecond);
