#include <gtest/gtest.h>

#include "production/production_steps.h"
#include "production_fixture.h"
#include "support/fault_text.h"

using namespace osm;

namespace {

constexpr int June = 6;  // daylight from hour 5 to hour 21

struct AlgaeRiver : test::ProductionRiver {
    AlgaeRiver() {
        // Slice 1 is bedrock and 10 ft wide; slice 2 half sand, half talus, 20 ft wide.
        m.morph.SliceSubstrate(5, 1, 2) = 1;
        m.morph.SliceSubstrate(2, 2, 2) = 0.5f;
        m.morph.SliceSubstrate(4, 2, 2) = 0.5f;
        ph.SliceWidth(1, 2) = 10;
        ph.SliceWidth(2, 2) = 20;
        m.main.LastReach = 2;
    }
};

}  // namespace

// The entry value mixes the temperatures of the reach above (10) and of the
// tributary at the equilibrium temperature (20) by flow: 12; saturation at 12
// degrees is 435/45.5; the exchange over 100 ft by one mile at 1000 cfs keeps
// exp(-0.08) of the difference. The dam's row takes the outflow oxygen, which
// the first reach never sees.
TEST(OxygenStep, RelaxesTheMixedTemperaturesTowardSaturation) {
    test::ProductionRiver t;
    t.m.main.LastReach = 2;
    t.m.morph.TribQ(6, 2) = 200;
    t.ph.WaterTemp(1) = 10;
    t.ph.WaterTemp(2) = 12;
    t.ph.EqTemp(June) = 20;
    OxygenStep(t.m, June);
    EXPECT_FLOAT_EQ(t.pr.DO(1), 8.5f);
    EXPECT_NEAR(t.pr.DO(2), 11.812438, 1e-5);
    t.ph.MeanFlow(2) = 0;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { OxygenStep(t.m, June); }),
                            {"oxygen", "zero mean flow", "year 1948", "month 6", "reach 2"}));
}

// Turbidity weighs fines twice against sand, or adds them when the weight is
// negative: 0.01 g/ft3 of sand and 0.02 of fines.
TEST(AlgaeStep, SecchiDepthFromWeightedOrSummedTurbidity) {
    AlgaeRiver t;
    t.ph.SedConc(2, 1) = 0.01f;
    t.ph.SedConc(2, 2) = 0.02f;
    AlgaeStep(t.m, June);
    EXPECT_NEAR(t.pr.SecchiDepth(2), 25.802243, 1e-4);
    t.pr.FineWgt = -1;
    AlgaeStep(t.m, June);
    EXPECT_NEAR(t.pr.SecchiDepth(2), 24.081250, 1e-4);
}

// Hours 1..12 stand at 4 ft, hours 13..24 at 1 ft; extinction 2 per ft. In the
// eight daylight hours at 4 ft the light fades below 5% at level 2, so level 1
// is not counted wet then: 16 wet hours, not 24, and its nine hours of full
// light at 1 ft give P = (16/13 - 0.25/0.75) * 3. Level 4 has 12/13 against
// 8/12 of light; levels 2 and 3 are too dark. Slice 1 (levels 1, 2) shows the
// 0 of level 2, the last level of the slice; slice 2 counts half its width.
TEST(AlgaeStep, WetHoursAndLightOnTheFootGrid) {
    AlgaeRiver t;
    t.pr.BaseLightExt = 2;
    t.pr.LightExtTurb = 0;
    for (int h = 1; h <= 24; ++h) t.ph.HourlyStage(h, 2, 1) = h <= 12 ? 4.0f : 1.0f;
    t.ph.HourlyStage(12, 2, 1) = 4.0f;
    AlgaeStep(t.m, June);
    EXPECT_FLOAT_EQ(t.pr.NoonStage(2), 4.0f);
    EXPECT_FLOAT_EQ(t.pr.AlgaeSlice(1, 2), 0.0f);
    EXPECT_NEAR(t.pr.AlgaeSlice(2, 2), 1.6442308, 1e-6);
    EXPECT_NEAR(t.pr.AlgaeTotal(2), 43.365385, 1e-4);  // 10 * 2.6923077 + 20 * 0.5 * 1.6442308
    EXPECT_NEAR(t.pr.AlgaeBiomass(2), 1.0841346, 1e-6);

    // A stage held all day: levels wet 24 of 24 hours grow above the ceiling;
    // with no hard substrate at all the mean is 0.
    for (int h = 1; h <= 24; ++h) t.ph.HourlyStage(h, 2, 1) = 4.0f;
    AlgaeStep(t.m, June);
    EXPECT_GT(t.pr.AlgaeSlice(2, 2), t.pr.AlgaeMax);
    t.m.morph.SliceSubstrate.clear();
    AlgaeStep(t.m, June);
    EXPECT_EQ(t.pr.AlgaeBiomass(2), 0.0f);
}

// Grazers reduce algae through the light they need: twice the reference grazers,
// with all of the mortality linked to them, doubles the maintenance term.
TEST(AlgaeStep, GrazersRaiseTheLightNeeded) {
    AlgaeRiver t;
    t.pr.BaseLightExt = 2;
    t.pr.LightExtTurb = 0;
    for (int h = 1; h <= 24; ++h) t.ph.HourlyStage(h, 2, 1) = 4.0f;
    AlgaeStep(t.m, June);
    const float free = t.pr.AlgaeSlice(2, 2);  // (24/13 - 0.25/(17/12)) * 3
    EXPECT_NEAR(free, 5.0090498, 1e-5);
    const int algae = t.m.popsubs.NSpecies + 3;
    t.m.popsubs.PredIdx(algae, 2) = 2;
    t.m.popsubs.PredIdx0(algae, 2) = 1;
    t.m.popsubs.PredFree(algae) = 0;
    AlgaeStep(t.m, June);
    EXPECT_NEAR(t.pr.AlgaeSlice(2, 2), (24.0 / 13 - 2 * 0.25 / (17.0 / 12)) * 3, 1e-5);
}
