// The chart feeds of a run on the default data set: a 50-year physical run with
// six time-series graphs and six profiles filled month by month, and a replot of
// the graphs from the store. Drawing on screen is not part of it.
#include <benchmark/benchmark.h>

#include <exception>

#include "core/model.h"
#include "core/run_driver.h"
#include "default_model.h"
#include "presentation/profile_points.h"
#include "presentation/time_axis.h"
#include "presentation/time_series.h"

namespace {

class ChartFeed : public osm::RunObserver {
public:
    explicit ChartFeed(osm::Model& m) : m_(m) {}
    void ClearGraphs() override {
        osm::ClearGraphs(graphs);
        osm::SetupGraphs(m_, graphs);
        osm::LabelTimeAxis(m_, graphs);
    }
    void ResetProfiles() override { osm::SetupProfiles(m_, profiles); }
    void UpdateGraphs(int y, int mo) override { osm::UpdateGraphs(m_, graphs, y, mo); }
    void UpdateProfiles(int y, int mo) override { osm::UpdateProfiles(m_, profiles, y, mo); }

    osm::ChartSet graphs, profiles;

private:
    osm::Model& m_;
};

bool loadWithAllViews(benchmark::State& state, osm::Model& m) {
    if (!osm_bench::StartDefaultModel(state, m, true)) return false;
    for (int i = 1; i <= 6; ++i) {
        m.graphs.GraphSlot(i) = static_cast<int16_t>(i);
        m.graphs.ProfSlot(i) = static_cast<int16_t>(i);
    }
    m.graphs.VisForms(1) = 1;
    m.graphs.VisForms(3) = 1;
    m.main.ProfileMonth = 0;
    return true;
}

void BM_PhysicalRun50YearsWithChartFeeds(benchmark::State& state) {
    osm::Model loaded;
    if (!loadWithAllViews(state, loaded)) return;
    for (auto _ : state) {
        state.PauseTiming();
        osm::Model m = loaded;
        ChartFeed feed(m);
        state.ResumeTiming();
        try {
            osm::StartRun(m, feed, 48, 50);
        } catch (const std::exception& e) {
            state.SkipWithError(e.what());
            return;
        }
        benchmark::DoNotOptimize(feed.profiles[0].curves.data());
    }
}

void BM_ReplotGraphsAfter50Years(benchmark::State& state) {
    osm::Model m;
    if (!loadWithAllViews(state, m)) return;
    ChartFeed feed(m);
    osm::StartRun(m, feed, 48, 50);
    for (auto _ : state) {
        osm::ChartSet charts;
        osm::ReplotGraphs(m, charts);
        benchmark::DoNotOptimize(charts[0].curves.data());
    }
}

}  // namespace

BENCHMARK(BM_PhysicalRun50YearsWithChartFeeds)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplotGraphsAfter50Years)->Unit(benchmark::kMillisecond);
