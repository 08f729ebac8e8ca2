// The population work at the start of a run on the default data set: the
// initialisation and the recruitment fitting of year 1, each on its own.
#include <benchmark/benchmark.h>

#include <exception>

#include "core/model.h"
#include "core/run_driver.h"
#include "default_model.h"
#include "population/population_steps.h"

namespace {

// The default model after one simulated year: the year-1 sums the fitting reads.
bool afterFirstYear(benchmark::State& state, osm::Model& m) {
    if (!osm_bench::StartDefaultModel(state, m, false)) return false;
    osm::RunObserver observer;
    try {
        osm::StartRun(m, observer, 48, 1);
    } catch (const std::exception& e) {
        state.SkipWithError(e.what());
        return false;
    }
    return true;
}

void BM_PopInit(benchmark::State& state) {
    osm::Model m;
    if (!afterFirstYear(state, m)) return;
    for (auto _ : state) {
        osm::PopInit(m, 0);
        benchmark::DoNotOptimize(m.popsubs.R0.raw().data());
    }
}

void BM_RecruitmentFitting(benchmark::State& state) {
    osm::Model loaded;
    if (!afterFirstYear(state, loaded)) return;
    for (auto _ : state) {
        state.PauseTiming();
        osm::Model m = loaded;
        state.ResumeTiming();
        osm::Popsubs& ps = m.popsubs;
        for (int i = 1; i <= ps.NSpecies; ++i)
            osm::FitRecruitment(m, i, ps.HabSum(i, m.main.LastReach, 3));
        benchmark::DoNotOptimize(ps.CompC.raw().data());
    }
}

}  // namespace

BENCHMARK(BM_PopInit)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RecruitmentFitting)->Unit(benchmark::kMicrosecond);
