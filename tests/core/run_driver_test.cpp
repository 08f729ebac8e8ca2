#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "core/fault.h"
#include "core/model.h"
#include "core/run_driver.h"
#include "support/fault_text.h"
#include "support/small_model.h"

using namespace osm;

namespace {

// Records what the driver asks of the views, and plays a user at the yields.
class Recorder : public RunObserver {
public:
    explicit Recorder(Model& m) : m_(m) {}
    std::vector<std::string> progress;
    std::vector<int> graphMonths, mapMonths, profileMonths;
    int pauseWaits = 0;
    std::function<void(Model&)> atYield;

    void ShowProgress(const std::string& year, const std::string& month) override { progress.push_back(year + " " + month); }
    void UpdateGraphs(int, int iMonth) override { graphMonths.push_back(iMonth); }
    void UpdateMaps(int, int iMonth) override { mapMonths.push_back(iMonth); }
    void UpdateProfiles(int, int iMonth) override { profileMonths.push_back(iMonth); }
    void Yield() override {
        if (atYield) atYield(m_);
    }
    void PauseSleep() override { ++pauseWaits; }

private:
    Model& m_;
};

}  // namespace

TEST(Calendar, FoldsPast1997AndFaultsPast2047) {
    Model m;
    m.main.CurYr = 98;
    SetCalendar(m, 51, 1);
    EXPECT_EQ(m.main.MonthIdx, 1);
    EXPECT_EQ(m.main.SimYr, 48);
    EXPECT_EQ(m.main.RunYear0, 50);
    m.main.CurYr = 147;
    SetCalendar(m, 100, 12);
    EXPECT_EQ(m.main.MonthIdx, 600);
    m.main.CurYr = 148;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { SetCalendar(m, 101, 1); }), {"2048"}));
}

TEST(RunDriver, StopRunsTheYearStepOnlyInTheLastMonth) {
    for (int stopAt : {12, 15}) {
        auto s = test::StartSmallModel(true);
        Recorder obs(s->m);
        obs.atYield = [stopAt](Model& m) {
            if (m.main.CumMonth == stopAt) m.main.StopRun = true;
        };
        StartRun(s->m, obs, 48, 3);
        EXPECT_EQ(s->m.main.CumMonth, stopAt);
        // Every month's graph update and the first year's own, none for a year cut short.
        EXPECT_EQ(obs.graphMonths.size(), stopAt + 1u);
    }
}

TEST(RunDriver, ProgressShowsTheFoldedYearAndProfileMonthFiltersMapsAndProfiles) {
    auto s = test::StartSmallModel(true);
    s->m.main.ProfileMonth = 6;
    Recorder obs(s->m);
    StartRun(s->m, obs, 97, 2);
    ASSERT_EQ(obs.progress.size(), 24u);
    EXPECT_EQ(obs.progress[11], "97 dec");
    EXPECT_EQ(obs.progress[12], "48 jan");
    EXPECT_TRUE(s->m.main.StopRun);
    EXPECT_EQ(obs.mapMonths, (std::vector<int>{6, 12, 6, 12}));
    EXPECT_EQ(obs.profileMonths, (std::vector<int>{6, 13, 6, 13}));  // the year step is not filtered
    EXPECT_EQ(obs.graphMonths.size(), 26u);
}

TEST(RunDriver, OnlyTheWholeModelSpinsUpOn1993And1994AndRestoresThePolicy) {
    for (bool phys : {true, false}) {
        auto s = test::StartSmallModel(phys);
        Physical& p = s->m.physical;
        p.MonthlyVol(541) = 7.0f;
        p.SpikeFlag(550) = true;
        p.SpinVol(541) = 9.0f;
        Recorder obs(s->m);
        PrepareRun(s->m, obs, 60, 1);
        EXPECT_EQ(s->m.main.CurYr, phys ? 60 : 93);
        RunModel(s->m, obs);
        EXPECT_EQ(p.MonthlyVol(541), 7.0f);
        EXPECT_TRUE(p.SpikeFlag(550));
        // The spin-up leaves no trace in the store's calendar and shows nothing.
        EXPECT_EQ(obs.progress.size(), 12u);
        EXPECT_EQ(obs.progress.front(), "60 jan");
        EXPECT_EQ(s->m.main.CumMonth, 12);
    }
}

TEST(RunControl, AnnualPauseWaitsAfterTheYearsPictureUntilContinued) {
    auto s = test::StartSmallModel(true);
    s->m.main.AnnPause = true;
    Recorder obs(s->m);
    int waits = 0;
    obs.atYield = [&](Model& m) {
        if (m.main.Paused && ++waits == 3) m.main.Paused = false;  // the user presses Continue
    };
    StartRun(s->m, obs, 48, 1);
    EXPECT_EQ(obs.pauseWaits, 2);
    EXPECT_EQ(obs.profileMonths.back(), 13);  // December's picture stood during the wait
}

TEST(RunControl, StopWhilePausedEndsAtTheTopOfTheNextMonth) {
    auto s = test::StartSmallModel(true);
    Recorder obs(s->m);
    obs.atYield = [&](Model& m) {
        if (m.main.CumMonth == 3 && !m.main.Paused && !m.main.StopRun) {
            m.main.Paused = true;
            WaitWhilePaused(m, obs);
        } else if (m.main.Paused) {
            m.main.StopRun = true;  // Stop leaves Paused as it is
            m.main.Paused = false;  // the next Start clears it
        }
    };
    StartRun(s->m, obs, 48, 2);
    EXPECT_EQ(s->m.main.CumMonth, 3);
}

TEST(RunControl, OverlaySlotGoesToOneAndBack) {
    Model m;
    m.main.Overlay = true;
    AddOverlaySlot(m);
    AddOverlaySlot(m);
    EXPECT_EQ(m.main.NRuns, 1);
    m.main.Overlay = false;
    AddOverlaySlot(m);
    EXPECT_EQ(m.main.NRuns, 0);
}
