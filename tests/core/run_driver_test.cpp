#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/model.h"
#include "core/run_driver.h"
#include "support/small_model.h"

using namespace osm;

namespace {

// Records what the driver asks of the views, and stops the run at the yield after month stopAt.
struct Recorder : RunObserver {
    explicit Recorder(Model& model, int stop = -1) : m(model), stopAt(stop) {}
    Model& m;
    int stopAt;
    std::vector<std::string> progress;
    std::vector<int> graphMonths, mapMonths, profileMonths;
    void ShowProgress(const std::string& year, const std::string& month) override { progress.push_back(year + " " + month); }
    void UpdateGraphs(int, int iMonth) override { graphMonths.push_back(iMonth); }
    void UpdateMaps(int, int iMonth) override { mapMonths.push_back(iMonth); }
    void UpdateProfiles(int, int iMonth) override { profileMonths.push_back(iMonth); }
    void Yield() override {
        if (m.main.CumMonth == stopAt) m.main.StopRun = true;
    }
};

}  // namespace

TEST(RunDriver, ProgressFoldsTheYearProfileMonthFiltersAndAStopSkipsTheYearStep) {
    auto s = test::StartSmallModel(true);
    s->m.main.ProfileMonth = 6;
    Recorder obs(s->m, 15);
    StartRun(s->m, obs, 97, 3);
    EXPECT_EQ(s->m.main.CumMonth, 15);
    EXPECT_EQ(s->m.main.MonthIdx, 3);  // March 1948 after December 1997
    ASSERT_EQ(obs.progress.size(), 15u);
    EXPECT_EQ(obs.progress[11], "97 dec");
    EXPECT_EQ(obs.progress[12], "48 jan");
    EXPECT_EQ(obs.mapMonths, (std::vector<int>{6, 12}));
    EXPECT_EQ(obs.profileMonths, (std::vector<int>{6, 13}));  // the year step is not filtered
    // Every month's graph update and the first year's own, none for the year cut short.
    EXPECT_EQ(obs.graphMonths.size(), 16u);
}

TEST(RunDriver, OnlyTheWholeModelSpinsUpOn1993And1994AndRestoresThePolicy) {
    for (bool phys : {true, false}) {
        auto s = test::StartSmallModel(phys);
        Physical& p = s->m.physical;
        p.MonthlyVol(541) = 7.0f;
        p.SpinVol(541) = 9.0f;
        Recorder obs(s->m);
        PrepareRun(s->m, obs, 60, 1);
        EXPECT_EQ(s->m.main.CurYr, phys ? 60 : 93);
        RunModel(s->m, obs);
        EXPECT_EQ(p.MonthlyVol(541), 7.0f);
        // The spin-up leaves no trace in the store's calendar and shows nothing.
        EXPECT_EQ(obs.progress.size(), 12u);
    }
}
