#include <gtest/gtest.h>

#include "production/production_steps.h"
#include "production_fixture.h"
#include "support/fault_text.h"

using namespace osm;

namespace {

constexpr int June = 6;  // 30 days

}  // namespace

// Reach 2: 1000 cfs with 100 cfs of tributary, 100 ft by one mile (wetted area
// 163,680 m2 by the authors' 0.31), two spates on 1e6 m2 of basin, 4 g/m2 of
// detritus feeders, 2 g/ft2 of algae, 1000 g of vegetation detritus. The release
// carries 0.5 g/m3 of lake detritus, 60% labile.
TEST(DetritusStep, BothPoolsAndTheBudgetWorkedByHand) {
    test::ProductionRiver t;
    t.m.main.LastReach = 2;
    t.m.morph.TribQ(6, 2) = 100;
    t.m.morph.TribBasinArea(2) = 1e6f;
    t.m.morph.SpateCount.redim(Bounds{0, 600});
    t.m.morph.SpateCount(6) = 2;
    t.pr.Benthos(1, 2) = 4;
    t.pr.AlgaeBiomass(2) = 2;
    t.pr.VegDetritus(2) = 1000;
    DetritusStep(t.m, June);
    EXPECT_FLOAT_EQ(t.pr.DetLabile(1), 0.3f);
    EXPECT_FLOAT_EQ(t.pr.DetRefract(1), 0.2f);
    EXPECT_NEAR(t.pr.DetLabile(2), 0.86546799, 1e-6);
    EXPECT_NEAR(t.pr.DetRefract(2), 1.5799905, 1e-5);
    EXPECT_NEAR(t.pr.DetBudget(1, 2), 19817076, 4);  // 900 cfs * 0.3 g/m3 over the month
    EXPECT_NEAR(t.pr.DetBudget(2, 2), 44037944, 4);
    EXPECT_NEAR(t.pr.DetBudget(3, 2), 58924.8, 0.01);
    EXPECT_FLOAT_EQ(t.pr.DetBudget(4, 2), 300);
    EXPECT_NEAR(t.pr.DetBudget(5, 2), 10, 1e-5);
    EXPECT_NEAR(t.pr.DetBudget(6, 2), 63914255, 8);

    // Before 1963 with the river's own record the release carries natural detritus.
    t.m.sediment.HistOSDSSConc = true;
    t.m.main.CurYr = 62;
    DetritusStep(t.m, June);
    EXPECT_FLOAT_EQ(t.pr.DetLabile(1), 1.8f);
    // No width is no wetted area: a fault, not a division.
    t.ph.MeanWidth(2) = 0;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { DetritusStep(t.m, June); }),
                            {"detritus", "zero wetted area", "reach 2"}));
}

namespace {

// Two reaches of benthos at 2.5 g/m2 in each group. With the default benthos
// parameters the half saturation is 0.3*0.1*4/(0.48*0.2) = 1.25 and the scale
// (5*1.25/5.5)/0.3 = 3.7878788.
struct BenthosRiver : test::ProductionRiver {
    BenthosRiver() {
        m.morph.TribQ(6, 2) = 100;
        for (int r = 2; r <= 3; ++r) pr.Benthos(1, r) = pr.Benthos(2, r) = 2.5f;
        pr.DetLabile(1) = 0.3f;
        pr.DetLabile(2) = 0.5f;
        pr.DetLabile(3) = 0.5f;
        pr.AlgaeBiomass(2) = 2;
        pr.AlgaeBiomass(3) = 200;
        ph.WaterTemp(2) = 10;
        ph.WaterTemp(3) = 40;  // mortality 2^4 * 0.3, held at 0.9
        // Reach 2: sand above the scour threshold (500 mg/l = 14.158 g/ft3), the
        // lowest width 80 of 100 ft, grown from 60 the month before.
        ph.SedConc(2, 1) = 15;
        ph.MinStageWidth(2) = 80;
        pr.MinWidthPrev(2) = 60;
        pr.MinWidthPrev(3) = 120;  // a fall of the lowest width leaves the benthos alone
    }
};

}  // namespace

// Reach 2, mortality 0.6: detritus feeders grow by 1.0 (food 0.4), algae
// feeders by 2.5 (food 1.0); then the scour keeps 0.8, drying 80/100, and the
// wider lowest width spreads them by 60/80. Reach 3: the algae feeders' growth
// of 250 is held to the ceiling (3+1)*0.9*2.5 = 9.
TEST(BenthosStep, FeedingCeilingScourDryingAndStranding) {
    BenthosRiver t;
    BenthosStep(t.m);
    EXPECT_FLOAT_EQ(t.pr.FeedHalfSat, 1.25f);
    EXPECT_NEAR(t.pr.Benthos(1, 2), 0.984, 1e-6);  // (2.5+1-1.5+0.05)*0.8*0.8*0.75
    EXPECT_NEAR(t.pr.Benthos(2, 2), 1.704, 1e-6);  // (2.5+2.5-1.5+0.05)*0.8*0.8*0.75
    EXPECT_NEAR(t.pr.BenthosTotal(2), 2.688, 1e-6);
    EXPECT_NEAR(t.pr.BenthosEq(2), 8.0555556, 1e-5);  // 16.667*(0.25*1.4/0.6 - 0.1)
    EXPECT_NEAR(t.pr.Benthos(1, 3), 1.55, 1e-6);      // 2.5 + 1.25 - 2.25 + 0.05
    EXPECT_NEAR(t.pr.Benthos(2, 3), 9.3, 1e-5);       // 2.5 + 9 - 2.25 + 0.05
    EXPECT_NEAR(t.pr.BenthosEq(3), 463.61111, 1e-3);
    EXPECT_FLOAT_EQ(t.pr.MinWidthPrev(2), 80);
    EXPECT_FLOAT_EQ(t.pr.MinWidthPrev(3), 100);
    // Drift from the lake's 0.02 toward 2.688*0.01/(0.5*0.31) in reach 2.
    EXPECT_FLOAT_EQ(t.pr.Drift(1), 0.02f);
    EXPECT_NEAR(t.pr.Drift(2), 0.018474168, 1e-7);
    EXPECT_TRUE(t.messages.seen.empty());
}

// A negative growth ratio makes the feeding scale negative: the message, each
// month the parameters stay so, and benthos and drift stay as they were.
TEST(BenthosStep, UnusableParametersGiveTheMessageEachMonth) {
    BenthosRiver t;
    t.pr.MaxRToMort = -0.5f;
    t.pr.Drift(2) = 7;
    BenthosStep(t.m);
    BenthosStep(t.m);
    ASSERT_EQ(t.messages.seen.size(), 2u);
    EXPECT_EQ(t.messages.seen[1].text, "benthos parameters would imply negative feeding rate; revise them");
    EXPECT_FLOAT_EQ(t.pr.Benthos(1, 2), 2.5f);
    EXPECT_FLOAT_EQ(t.pr.Drift(2), 7);
    // No base mortality divides by zero: a fault naming what.
    t.pr.BaseMort = 0;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { BenthosStep(t.m); }), {"benthos", "zero BaseMort"}));
}
