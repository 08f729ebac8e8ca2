// What a run is checked against before it starts, what it records of its
// scenario, and the mark beside the store for months without an observation.
#include <gtest/gtest.h>

#include <cmath>

#include "core/model.h"
#include "core/results_store.h"
#include "core/run_driver.h"
#include "core/scenario.h"
#include "core/start_up.h"
#include "support/small_model.h"

using namespace osm;

TEST(RunYears, StartFrom48To147AndTheRunEndsBy2047) {
    EXPECT_EQ(RunYearsProblem(48, 100), "");   // 1948..2047, the whole reach of the record
    EXPECT_EQ(RunYearsProblem(147, 1), "");
    EXPECT_EQ(RunYearsProblem(93, 55), "");
    const std::string tooLong = RunYearsProblem(48, 101);
    EXPECT_NE(tooLong.find("from 1 to 100"), std::string::npos) << tooLong;
    EXPECT_NE(tooLong.find("end by 2047"), std::string::npos) << tooLong;
    EXPECT_NE(RunYearsProblem(147, 2).find("from 1 to 1:"), std::string::npos);
    for (double start : {0.0, 47.0, 148.0, 90.5, -48.0})
        EXPECT_NE(RunYearsProblem(start, 1).find("48 (1948) to 147 (2047)"), std::string::npos) << start;
    for (double years : {0.0, -1.0, 2.5}) EXPECT_NE(RunYearsProblem(90, years), "") << years;
}

TEST(RunScenario, EachRunOfTheStoreIsNamedByTheScenarioItRanOn) {
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    RunObserver quiet;
    EXPECT_EQ(ModeName(m.main), "Physical Model Only");
    EXPECT_EQ(ScenarioName(m), "noaction.sts, default.exp");
    EXPECT_EQ(RunName(m.main, 0), "no run yet");
    StartRun(m, quiet, 90, 1);
    EXPECT_EQ(RunName(m.main, 0), "run: noaction.sts, default.exp");
    // The overlaid run on another release sequence keeps the first run's name.
    m.main.ExpFile = s->folder.path() + "/other.exp";
    m.main.Overlay = true;
    StartRun(m, quiet, 90, 1);
    EXPECT_EQ(RunName(m.main, 0), "run: noaction.sts, default.exp");
    EXPECT_EQ(RunName(m.main, 1), "overlaid run: noaction.sts, other.exp");
}

TEST(ObservedGaps, TheStoreHoldsZeroAndTheMarkBesideItSaysNoObservation) {
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    Main& mn = m.main;
    // The observed temperatures of the small river: July and August 1990 at
    // mile 5 (reach 2), 11.4 and 12.5 kept as whole degrees.
    EXPECT_TRUE(m.physical.ObsTempSeen((90 - 48) * 12 + 7, 2));
    EXPECT_FALSE(m.physical.ObsTempSeen((90 - 48) * 12 + 6, 2));
    EXPECT_TRUE(m.physical.ObsTempSeen(0, 2));  // the reach's mean
    RunObserver quiet;
    StartRun(m, quiet, 90, 1);
    EXPECT_EQ(mn.Results(0, 13, 2, 2, 7), 11.0f);
    EXPECT_FALSE(mn.ObsMissing(0, 13, 2, 2, 7));
    EXPECT_EQ(mn.Results(0, 13, 2, 2, 6), 0.0f);
    EXPECT_TRUE(mn.ObsMissing(0, 13, 2, 2, 6));
    EXPECT_TRUE(std::isnan(ShownResult(mn, 0, 13, 2, 2, 6)));
    EXPECT_EQ(ShownResult(mn, 0, 13, 2, 2, 7), 11.0f);
    // Model sets are never marked, whatever their value.
    for (int mo = 1; mo <= 12; ++mo) EXPECT_FALSE(mn.ObsMissing(0, 13, 1, 2, mo)) << mo;
    // The observed sediment of May 1955 at mile 1 (reach 2) is an observation; 1990 has none.
    EXPECT_TRUE(m.physical.HistSedSeen((55 - 48) * 12 + 5, 2));
    EXPECT_TRUE(mn.ObsMissing(0, 3, 2, 2, 5));
    // Against the long-term average every month of a reach with readings has one.
    m.graphs.PlotObsAvg = true;
    StartRun(m, quiet, 90, 1);
    EXPECT_FALSE(mn.ObsMissing(0, 13, 2, 2, 6));
    EXPECT_EQ(mn.Results(0, 13, 2, 2, 6), m.physical.ObsTemp(0, 2));
}

TEST(ObservedGaps, TheMarksGrowWithTheStorePastFiftyYears) {
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    RunObserver quiet;
    StartRun(m, quiet, 48, 51);
    ASSERT_EQ(m.main.ObsMissing.hi(4), 612);
    // July 1990 is month 511 of the run and observed; month 601 (January 1998) is not.
    EXPECT_FALSE(m.main.ObsMissing(0, 13, 2, 2, 511));
    EXPECT_TRUE(m.main.ObsMissing(0, 13, 2, 2, 601));
}
