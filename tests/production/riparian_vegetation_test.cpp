#include <gtest/gtest.h>

#include "production/production_steps.h"
#include "production/riparian_vegetation.h"
#include "production_fixture.h"

using namespace osm;

namespace {

// Two types on slice 1 of reach 2: marsh on fines and sand, willow on sand and
// gravel; a three-point mortality curve.
struct VegRiver : test::ProductionRiver {
    VegRiver() {
        pr.NVegTypes = 2;
        pr.NMortPoints = 3;
        pr.VegMinCover = 0.01f;
        pr.VegMort.redim(Bounds{0, 3}, Bounds{0, MaxVegTypes});
        pr.VegMort(1, 1) = 0.1f, pr.VegMort(2, 1) = 0.5f, pr.VegMort(3, 1) = 0.9f;
        pr.VegDkill(1) = 0.5f;
        pr.VegWmin(1) = 0, pr.VegWmax(1) = 3;
        pr.VegWmin(2) = -100, pr.VegWmax(2) = 100;
        pr.VegGrowth(1) = 0.8f, pr.VegGrowth(2) = 0.5f;
        pr.VegComp(1, 1) = 1, pr.VegComp(2, 1) = 0.5f, pr.VegComp(1, 2) = 0.4f, pr.VegComp(2, 2) = 1;
        pr.VegBug(1) = 0.5f, pr.VegBug(2) = 1;
        pr.VegDet(1) = 0.8f, pr.VegDet(2) = 0.6f;
        pr.VegClimax(1, 1) = pr.VegClimax(2, 1) = true;
        pr.VegClimax(2, 2) = pr.VegClimax(3, 2) = true;
        m.morph.SliceSubstrate(1, 1, 2) = 0.5f;
        m.morph.SliceSubstrate(2, 1, 2) = 0.3f;
        m.morph.SliceSubstrate(3, 1, 2) = 0.2f;
        ph.SliceArea(1, 2) = 1000;
        m.main.LastReach = 2;
        m.main.NSlices = 1;
    }
};

}  // namespace

// Flooded 3 ft: the dose 1.5 rounds to 2 (half to even) and kills half; the
// water table halves. The dose caps at 32000, and a dose past the curve reads
// its last point. Depth 0 counts as dry and wipes the dose; the band of water
// table depth is [Wmin, Wmax), so a depth of exactly 3 costs marsh 5%.
TEST(VegSliceMonth, DepthDoseCapAndWaterTable) {
    VegRiver t;
    t.pr.VegCover(1, 1, 2) = 0.8f;
    t.pr.SliceWaterDepth(1, 2) = 2;
    VegSliceMonth(t.m, 2, 1, 3.0f, 1);
    EXPECT_FLOAT_EQ(t.pr.VegDepthDose(1, 1, 2), 1.5f);
    EXPECT_FLOAT_EQ(t.pr.VegCover(1, 1, 2), 0.4f);
    EXPECT_FLOAT_EQ(t.pr.SliceWaterDepth(1, 2), 1);
    t.pr.VegDepthDose(1, 1, 2) = 31999.8f;
    VegSliceMonth(t.m, 2, 1, 1.0f, 1);
    EXPECT_FLOAT_EQ(t.pr.VegDepthDose(1, 1, 2), 32000);
    EXPECT_FLOAT_EQ(t.pr.VegCover(1, 1, 2), 0.04f);
    VegSliceMonth(t.m, 2, 1, 0.0f, 1);
    EXPECT_FLOAT_EQ(t.pr.VegDepthDose(1, 1, 2), 0);
    EXPECT_FLOAT_EQ(t.pr.SliceWaterDepth(1, 2), 0.25f);
    t.pr.SliceWaterDepth(1, 2) = 0;
    VegSliceMonth(t.m, 2, 1, -6.0f, 1);  // water table 0*0.5 + 3 = 3: outside [0, 3)
    EXPECT_FLOAT_EQ(t.pr.SliceWaterDepth(1, 2), 3);
    EXPECT_NEAR(t.pr.VegCover(1, 1, 2), 0.04 * 0.95, 1e-7);
}

// The dry score adds Depth/(5 - Depth) in whole numbers, half to even: 6 ft
// above water adds 6/11 -> 1; 5 ft adds 0.5, so 1 -> 2 but 2 stays 2; 4 ft
// (4/9) adds nothing.
TEST(VegSliceMonth, DryScoreRounding) {
    VegRiver t;
    const int16_t& score = t.pr.SliceDryScore(1, 2);
    VegSliceMonth(t.m, 2, 1, -6.0f, 1);
    EXPECT_EQ(score, 1);
    VegSliceMonth(t.m, 2, 1, -5.0f, 1);
    EXPECT_EQ(score, 2);
    VegSliceMonth(t.m, 2, 1, -5.0f, 1);
    EXPECT_EQ(score, 2);
    VegSliceMonth(t.m, 2, 1, -4.0f, 1);
    EXPECT_EQ(score, 2);
}

// Marsh at 0.2 and willow at 0.3. Marsh sees 0.2*1 + 0.3*0.5 = 0.35 and grows to
// 0.2*(0.65*0.8 + 1) = 0.304; willow already sees the new marsh: 0.304*0.4 +
// 0.3 = 0.4216, and grows to 0.3*(0.5784*0.5 + 1) = 0.38676. Only cover above
// the floor counts, on 800 and 500 ft2 of suitable substrate.
TEST(VegYear, CompetitionSeesTheNewCoverAndTheFloorCountsNothing) {
    VegRiver t;
    t.pr.VegCover(1, 1, 2) = 0.2f;
    t.pr.VegCover(2, 1, 2) = 0.3f;
    VegYear(t.m, 1);
    EXPECT_NEAR(t.pr.VegCover(1, 1, 2), 0.304, 1e-7);
    EXPECT_NEAR(t.pr.VegCover(2, 1, 2), 0.38676, 1e-6);
    EXPECT_NEAR(t.pr.VegArea(1, 2), 235.2, 1e-4);
    EXPECT_NEAR(t.pr.VegArea(2, 2), 188.38, 1e-3);
    EXPECT_NEAR(t.pr.VegBugProd(2), 305.98 / 1300, 1e-6);
    EXPECT_NEAR(t.pr.VegDetritus(2), 301.188 / 1300, 1e-6);

    // Competition above 1 with fast growth drives cover below 0: the floor holds
    // it, and the floor yields no area.
    t.pr.VegGrowth(1) = 2;
    t.pr.VegCover(1, 1, 2) = 0.9f;
    t.pr.VegCover(2, 1, 2) = 2.0f;
    VegYear(t.m, 2);
    EXPECT_FLOAT_EQ(t.pr.VegCover(1, 1, 2), 0.01f);
    EXPECT_EQ(t.pr.VegArea(1, 2), 0);
}

// A run starts with the first three types at the floor whatever the number of
// types; slices above 30 long dry, the water table below slices 28 on at s - 30.
TEST(ResetVeg, FloorCoverAndHighSlicesDry) {
    VegRiver t;
    t.m.main.NSlices = 2;
    t.pr.VegCover(4, 1, 2) = 0.7f;
    ResetVeg(t.m);
    EXPECT_FLOAT_EQ(t.pr.VegCover(3, 2, 3), 0.01f);
    EXPECT_EQ(t.pr.VegCover(4, 1, 2), 0);
    EXPECT_EQ(t.pr.SliceDryScore(2, 2), 0);

    test::ProductionRiver big;
    big.m.main.NSlices = 50;
    ReadReachFile(big.m, big.f.path() + "/Reaches.csv");
    ResetVeg(big.m);
    EXPECT_EQ(big.pr.SliceDryScore(30, 2), 0);
    EXPECT_EQ(big.pr.SliceDryScore(31, 2), 100);
    EXPECT_FLOAT_EQ(big.pr.SliceWaterDepth(27, 2), 0);
    EXPECT_FLOAT_EQ(big.pr.SliceWaterDepth(28, 2), -2);
    EXPECT_FLOAT_EQ(big.pr.SliceWaterDepth(40, 2), 10);
}

// The growth test of the vegetation form runs on a copy: the live cover stays.
TEST(VegPatternTest, HundredYearsFromTheFloorOnACopy) {
    VegRiver t;
    t.pr.VegCover(1, 1, 2) = 0.5f;
    const VegPattern p = VegPatternTest(t.m);
    EXPECT_FLOAT_EQ(p.cover(0, 1), 0.01f);
    EXPECT_NEAR(p.cover(1, 1), 0.01 * ((1 - 0.01 - 0.005) * 0.8 + 1), 1e-7);
    EXPECT_GT(p.cover(100, 2), 0.3f);
    EXPECT_FLOAT_EQ(t.pr.VegCover(1, 1, 2), 0.5f);
}
