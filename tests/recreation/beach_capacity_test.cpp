#include <gtest/gtest.h>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "recreation/rafting.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;

TEST(BeachCapacity, TheCurveIsReadAtTheFloorOfTheFullnessIndex) {
    test::TestFolder folder;
    Model m;
    BuildMonthsTable(m);
    ReadReachFile(m, folder.Write("Reaches.csv", "\"t\",2,2,2\r\n\"a\",\"b\",\"c\",\"d\"\r\n"
                                                 "1,\"Dam\",0,0.5\r\n2,\"Upper\",0.5,120\r\n"));
    Sediment& sd = m.sediment;
    sd.BaseBeachRelFull = 0.5f;
    for (int i = 1; i <= 50; ++i) sd.BeachCurve(i, 1, 2) = static_cast<float>(10 * i + 1);
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
    // Exactly 1/B times the base falls just short of the end through the 1e-10
    // in the divisor.
    EXPECT_EQ(capacityWith(400, 400), 491.0f);
    sd.BeachLowSlice(2) = 5;  // an empty stage range holds no sand
    EXPECT_EQ(capacityWith(4000, 4000), 0.0f);
    sd.BeachLowSlice(2) = 3;
    // Beyond the curve's end, below its start (-0.1 of the base: floor of -2.5),
    // or with no scale there is no point to read: a fault naming where the run
    // is, never a clamp.
    m.main.CurYr = 93;
    m.main.CumMonth = 16;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { capacityWith(4000, 4000); }),
                            {"year 1993, month 4, reach 2", "point 499", "outside 0..50"}));
    EXPECT_TRUE(test::Holds(test::FaultText([&] { capacityWith(-40, 0); }), {"reach 2", "point -3"}));
    sd.BaseBeachRelFull = 0;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { capacityWith(100, 120); }),
                            {"reach 2", "BaseBeachRelFull is 0"}));
}
