#include <gtest/gtest.h>

#include "core/model.h"
#include "core/reaches.h"
#include "core/results_store.h"
#include "core/start_up.h"
#include "recreation/rafting.h"
#include "support/small_model.h"
#include "support/test_folder.h"

using namespace osm;

TEST(BeachCapacity, TheCurveIsReadAtTheFloorOfTheFullnessIndex) {
    test::TestFolder folder;
    Model m;
    BuildMonthsTable(m);
    ReadReachFile(m, folder.Write("Reaches.csv", "\"t\",3,2,3\r\n\"a\",\"b\",\"c\",\"d\"\r\n"
                                                 "1,\"Dam\",0,0.5\r\n2,\"Upper\",0.5,120\r\n3,\"Lower\",120,260\r\n"));
    Sediment& sd = m.sediment;
    sd.BaseBeachRelFull = 0.5f;
    for (int i = 1; i <= 50; ++i)
        for (int k = 1; k <= 3; ++k) sd.BeachCurve(i, k, 2) = static_cast<float>(10 * i + k);
    sd.BeachLowSlice(2) = 3;
    sd.BeachHighSlice(2) = 4;
    sd.BeachBasePot(2) = 400;
    auto capacityWith = [&](float sand3, float sand4) {
        sd.SandStore(3, 2, 1) = sand3;
        sd.SandStore(4, 2, 1) = sand4;
        BeachCapacity(m);
        return m.rec.BeachCap(1, 2);
    };
    // 220/400 = 0.55 of the base; 50/(1/0.5)*0.55 = 13.75: point 13, not 14.
    EXPECT_EQ(capacityWith(100, 120), 131.0f);
    EXPECT_EQ(capacityWith(0, 0), 0.0f);  // index 0 reads nothing
    // Sand of exactly 1/B times the base falls just short of the end through the
    // 1e-10 in the divisor.
    EXPECT_EQ(capacityWith(400, 400), 491.0f);
    EXPECT_EQ(capacityWith(4000, 4000), 501.0f);  // beyond it stays at the end
    sd.BeachLowSlice(2) = 5;                      // an empty stage range holds no sand
    EXPECT_EQ(capacityWith(4000, 4000), 0.0f);
    sd.BeachLowSlice(2) = 3;
    sd.BaseBeachRelFull = 0;
    EXPECT_EQ(capacityWith(4000, 4000), 0.0f);
    EXPECT_EQ(m.rec.BeachCap(1, 3), 0.0f);  // a reach without eddy potential
}

TEST(RaftingMonth, CampsitesAndTheirUseReachTheStore) {
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    ASSERT_TRUE(m.rec.RaftingLoaded);
    Sediment& sd = m.sediment;
    sd.BaseBeachRelFull = 1;
    for (int i = 1; i <= 50; ++i)
        for (int k = 1; k <= 3; ++k) sd.BeachCurve(i, k, 2) = static_cast<float>(k);
    sd.BeachLowSlice(2) = 1;
    sd.BeachHighSlice(2) = 1;
    sd.BeachBasePot(2) = 10;
    sd.SandStore(1, 2, 1) = 5;
    for (int r = 1; r <= m.main.NReaches; ++r)  // keeps the percent of fines a number
        for (int k = 1; k <= 2; ++k) m.physical.SedConc(r, k) = 1;
    m.main.CumMonth = 7;
    RaftingMonth(m, 7);
    EXPECT_EQ(m.rec.RaftMonth, 7);
    StoreResults(m, 1, 7);
    EXPECT_EQ(m.main.Results(0, 10, 1, 2, 7), 6.0f);
    const double use = m.rec.ReachCampUse(1, 2, 7);
    EXPECT_GT(use, 0.0);
    EXPECT_NEAR(m.main.Results(0, 11, 1, 2, 7), use / (1 * 31 + 1e-6), 1e-4);
}
