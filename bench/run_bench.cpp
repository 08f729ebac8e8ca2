// Whole runs of the driver on the default data set, start-up excluded.
#include <benchmark/benchmark.h>

#include <exception>

#include "core/model.h"
#include "core/run_driver.h"
#include "core/start_up.h"

namespace {

class QuietMessages : public osm::MessageSink {
public:
    void Show(const osm::ModelMessage&) override {}
};

void runFiftyYears(benchmark::State& state, bool physOnly) {
    QuietMessages quiet;
    osm::Model loaded;
    loaded.messages = &quiet;
    try {
        osm::StartUp(loaded, osm::StartOptions{OSM_DEFAULT_FOLDER, physOnly, {}});
    } catch (const std::exception& e) {
        state.SkipWithError(e.what());
        return;
    }
    osm::RunObserver observer;
    for (auto _ : state) {
        state.PauseTiming();
        osm::Model m = loaded;
        state.ResumeTiming();
        osm::StartRun(m, observer, 48, 50);
        benchmark::DoNotOptimize(m.main.Results.raw().data());
    }
}

void BM_PhysicalRun50Years(benchmark::State& state) { runFiftyYears(state, true); }
void BM_WholeRun50Years(benchmark::State& state) { runFiftyYears(state, false); }

}  // namespace

BENCHMARK(BM_PhysicalRun50Years)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WholeRun50Years)->Unit(benchmark::kMillisecond);
