// The sand step of one reach and period, and the storage recomputation, on the
// default data set.
#include <benchmark/benchmark.h>

#include "core/model.h"
#include "core/run_driver.h"
#include "default_model.h"
#include "sediment/sand_budget.h"
#include "sediment/storage_potential.h"

namespace {

// Every run reach in turn, as the flow engine walks them, at a peak of 25000 cfs
// over a mean of 15000: most slices lie under the peak and pay for the capacity
// curve.
void BM_SandStepPerReach(benchmark::State& state) {
    osm::Model m;
    if (!osm_bench::StartDefaultModel(state, m, true)) return;
    m.main.CurYr = 80;
    osm::SetCalendar(m, 1, 6);
    m.sediment.ReachConc(1, 1) = 0.01f;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    int r = first;
    for (auto _ : state) {
        osm::SandStep(m, r, 6, 1.0f, 15000, 14.0f, 25000);
        if (++r > last) r = first;
    }
    benchmark::DoNotOptimize(m.sediment.SandStore.raw().data());
}

void BM_RecomputeStorage(benchmark::State& state) {
    osm::Model m;
    if (!osm_bench::StartDefaultModel(state, m, true)) return;
    for (auto _ : state) osm::RecomputeStorage(m, false);
    benchmark::DoNotOptimize(m.sediment.SandPot.raw().data());
}

}  // namespace

BENCHMARK(BM_SandStepPerReach)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RecomputeStorage)->Unit(benchmark::kMillisecond);
