#include <gtest/gtest.h>

#include <cmath>

#include "core/model.h"
#include "core/run_driver.h"
#include "population/population_steps.h"
#include "population/reach_populations.h"
#include "support/collect_messages.h"
#include "support/fault_text.h"
#include "support/small_model.h"

using namespace osm;

namespace {

// The small river (reaches 2 and 3) with its two species: 1 the trout, 2 the
// chub (catch index 1 and 3: B0 4, shares 0.25 and 0.75), after the
// initialisation.
struct Pops : ::testing::Test {
    std::unique_ptr<test::SmallModel> s = test::StartSmallModel(false);
    Model& m = s->m;
    Popsubs& ps = m.popsubs;
    test::CollectMessages seen;
    void SetUp() override {
        m.messages = &seen;
        Production& pr = m.production;  // food in both reaches, as a spin-up leaves it
        for (int r : {2, 3}) {
            pr.BenthosTotal(r) = 2.0f * r;
            pr.Drift(r) = 0.1f;
            pr.VegBugProd(r) = 0.5f;
            pr.AlgaeBiomass(r) = 0.2f * r;
        }
        PopInit(m, 0);
    }
};

}  // namespace

// The chub's equilibrium worked by hand: Alpha0 = 0.2 * 0.35 / (1 - 0.8^4),
// weights up to 0.35 at age 4, R0 = (1 - 0.64) * 4 / (4 Alpha0 + 0.35) / 0.45^3,
// and Sejuv from the compensation ratio 8: R0 * 8 / 4 / (2500 * 0.05).
TEST_F(Pops, InitialisationEquilibrium) {
    EXPECT_FLOAT_EQ(ps.B0(2), 4.0f);
    EXPECT_FLOAT_EQ(ps.Share(3, 2), 0.75f);
    EXPECT_NEAR(ps.Alpha0(2), 0.1185637, 1e-6);
    EXPECT_NEAR(ps.AlphaMax(2), 0.1863144, 1e-6);
    EXPECT_NEAR(ps.WAge(4, 2), 0.35, 1e-6);
    EXPECT_NEAR(ps.R0(2), 19.17183, 1e-4);
    EXPECT_NEAR(ps.NAdults(2), 8.735164, 1e-4);
    EXPECT_NEAR(ps.NAge(3, 2), 19.17183 * 0.45 * 0.45, 1e-4);
    EXPECT_NEAR(ps.Sejuv(2), 0.3067492, 1e-6);
    EXPECT_NEAR(ps.CompK(2), 8.0, 1e-5);
    EXPECT_NEAR(ps.Mpred(2), -0.6 * std::log(0.05), 1e-6);
    EXPECT_FLOAT_EQ(ps.InvSurv(2, 1), 1.0f);
    EXPECT_NEAR(ps.InvSurv(2, 12), std::pow(0.3067492, -11.0 / 12), 1e-4);
}

// A year run from the equilibrium returns it: the recruits are R0 and stay in
// their reaches, the growth increment is Alpha0 at the starting biomass, and
// the biomass comes back to B0 (the chub has no habitat link; the trout has one).
TEST_F(Pops, FirstYearReturnsTheEquilibrium) {
    RunObserver obs;
    StartRun(m, obs, 48, 1);
    for (int i : {1, 2}) {
        EXPECT_NEAR(ps.Recruits(i) / ps.R0(i), 1.0, 1e-4) << i;
        EXPECT_NEAR(ps.WAge(1, i) / ps.Alpha0(i), 1.0, 1e-5) << i;
        EXPECT_NEAR(ps.Biomass(i) / ps.B0(i), 1.0, 1e-4) << i;
    }
    EXPECT_NEAR(ps.Share(3, 2), 0.75, 1e-5);
    // No habitat link: HabSum of effect 3 is 12 months of 1.
    EXPECT_FLOAT_EQ(ps.HabSum(2, 3, 3), 12.0f);
    for (const auto& msg : seen.seen) EXPECT_EQ(msg.kind, "sand balance") << msg.text;  // the small river's own
}

// The habitat curve cell: a value a quarter of the month's mean at scale 10 is
// z = 2.5, cell 2 (half to even); far above the mean it is cell 19.
TEST_F(Pops, HabitatEffectCells) {
    ps.HabMean(1, 1, 3) = 4;
    ps.HabVal(1, 2, 3) = 1;
    ps.HabVal(1, 3, 3) = 100;
    PopEffects(m, 2, 3);
    EXPECT_NEAR(ps.HabEffect(1, 2, 2, 3), 0.6, 1e-6);
    EXPECT_NEAR(ps.HabEffect(1, 3, 2, 3), 1.45, 1e-6);
    EXPECT_FLOAT_EQ(ps.HabEffect(1, 2, 1, 3), 1.0f);
    ps.HabMean(1, 1, 3) = 0;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { PopEffects(m, 2, 3); }),
                            {"species 1 (Rainbow trout)", "reach 2", "division by zero"}));
}

// Equal risks everywhere: the mean survival is exp(-d Rk), so d = -ln(T) / Rk;
// with no risk at all the slope is 0 and the fit stops the run.
TEST_F(Pops, NewtonOnEqualRisks) {
    const double T = ps.StageCum(2, 2) / ps.StageCum(1, 2);
    ps.Risk(2, 2) = ps.Risk(3, 2) = 0.5f;
    FitRiskRate(m, 2);
    EXPECT_NEAR(ps.RiskRate(2), -std::log(T) / 0.5, 2e-3);
    ps.Risk(2, 2) = ps.Risk(3, 2) = 0;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { FitRiskRate(m, 2); }), {"Gorge chub", "division by zero"}));
}

// A reach whose survival cannot replace the adults gets 1e20 and no part in the
// mean; the viable reach returns exactly its share of R0. With the flag every
// reach takes the mean; with no viable reach the message comes.
TEST_F(Pops, NonViableReachAndSetHabFlag) {
    for (int r : {2, 3}) ps.HabSum(2, r, 1) = 1;
    ps.HabBar(1, 2) = 1;
    ps.Risk(2, 2) = 5;
    ps.Risk(3, 2) = 0.5f;
    FitRecruitment(m, 2, 12);
    EXPECT_FLOAT_EQ(ps.CompC(2, 2), 1e20f);
    const double E = std::exp(-static_cast<double>(ps.RiskRate(2)) * 0.5), S1 = ps.StageCum(1, 2), Br = 3;
    EXPECT_NEAR(E * S1 * Br / (ps.CompC(3, 2) * (1 - E) * S1 * Br + 1), 0.75 * ps.R0(2), 1e-3);
    EXPECT_FLOAT_EQ(ps.CompRel(3, 2), 1.0f);
    double bstart = 4;  // B0 and the pre-adult classes below maturity
    for (int a = 1; a <= 3; ++a) bstart += static_cast<double>(ps.NAge(a, 2)) * ps.WAge(a, 2);
    EXPECT_NEAR(ps.CompB(2), bstart / (ps.AlphaMax(2) / ps.Alpha0(2) - 1) / 12, 1e-4);

    ps.SetHabFlag(2) = true;
    FitRecruitment(m, 2, 12);
    EXPECT_FLOAT_EQ(ps.CompC(2, 2), ps.CompC(3, 2));
    EXPECT_LT(ps.CompRel(2, 2), 1e-10f);
    EXPECT_TRUE(seen.seen.empty());

    ps.StageCum(2, 2) = ps.StageCum(1, 2) * 0.01f;  // survival far below replacement
    ps.Risk(2, 2) = 0.5f;
    FitRecruitment(m, 2, 12);
    ASSERT_EQ(seen.seen.size(), 1u);
    EXPECT_EQ(seen.seen[0].text, "species Gorge chub not sustainable in any area; check parameters");
    EXPECT_FLOAT_EQ(ps.CompC(3, 2), 1e20f);
    EXPECT_FLOAT_EQ(ps.CompRel(3, 2), 1.0f);
}

// Incidental predators of eggs and fry: the chub counts stage ranges 4, 0 (as 1),
// 9 and 16 at power 0.5; the trout counts the biomass of the last two species in
// each of its four months; months in the wrong order count nothing.
TEST_F(Pops, DilutionIndex) {
    const float w[] = {4, 0, 9, 16};
    for (int mo = 5; mo <= 8; ++mo) ps.HabVal(1, 3, mo) = w[mo - 5];
    ps.Biomass(1) = 2;
    ps.Biomass(2) = 3;
    DilutionIndex(m);
    EXPECT_NEAR(ps.DilIdx(2), 0.5 + 1 + 1.0 / 3 + 0.25, 1e-6);
    EXPECT_FLOAT_EQ(ps.DilIdx(1), 20.0f);
    ps.Pwk1(1) = 6;
    ps.Pwk2(1) = 5;
    DilutionIndex(m);
    EXPECT_FLOAT_EQ(ps.DilIdx(1), 1e-20f);
}

// Links: proportions adding up to exactly 1 leave 1e-10 and no message; above 1
// each sum has its message. At the starting state the share-weighted predation
// index of a prey is 1.
TEST_F(Pops, TrophicLinks) {
    double mean = 0;
    for (int r : {2, 3}) {
        ReachIndices(m, r);
        mean += ps.Share(r, 2) * ps.PredNow(2);
    }
    EXPECT_NEAR(mean, 1.0, 1e-6);
    ps.LinkMort(1) = 1.0f;  // all of the aquatic insects' mortality from the trout
    BuildLinks(m, 1);
    EXPECT_NEAR(ps.PredFree(3), 1e-10, 1e-12);
    EXPECT_TRUE(seen.seen.empty());
    ps.LinkMort(1) = 1.2f;
    ps.LinkDiet(2) = 0.6f;  // the trout's diet now sums to 1.2
    BuildLinks(m, 1);
    ASSERT_EQ(seen.seen.size(), 2u);
    EXPECT_EQ(seen.seen[0].text, "food proportions for species  1>1, must reenter");
    EXPECT_EQ(seen.seen[1].text, "predation impacts on species  3>1, must reenter");
}

// Indicator populations: one step worked by hand (x = 2, k = sqrt 2,
// y = 100 * 5 / k / 11), food rounded after each addition, and the overflow.
TEST_F(Pops, ReachPopulations) {
    Production& pr = m.production;
    ResetReachPops(m);
    pr.DetLabile(2) = 1;
    pr.DetLabile(3) = 0.004f;
    ReachPopYear(m);
    EXPECT_NEAR(ps.PopN(1, 2), 1.998549, 1e-5);
    EXPECT_FLOAT_EQ(ps.PopN(1, 3), 0.5f);  // food 0.4 rounds to 0
    pr.DetLabile(3) = 400;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReachPopYear(m); }), {"reach 3", "40000", "32767"}));

    const std::vector<float> food(50, 10.0f);
    TestPopResult t = RunTestPop(m, 1, 10, food);
    EXPECT_NEAR(t.Neq, 10 * std::sqrt(2.0) * 5 - 10, 1e-4);
    ASSERT_EQ(t.series.size(), 50u);
    EXPECT_NEAR(t.series[0], t.Neq / 50, 1e-5);
    pr.PopS(1) = 0.2f;
    const float before = ps.PopN(1, 1);
    t = RunTestPop(m, 1, 10, food);
    EXPECT_EQ(t.message, "survival rate too low for viable population ever, fix it");
    EXPECT_EQ(ps.PopN(1, 1), before);
}
