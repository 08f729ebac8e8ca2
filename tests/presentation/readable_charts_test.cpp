// What the charts draw beyond the chart control's numbers: round ticks with short
// labels, a profile's mile scale, the role of each curve, gaps where there was no
// observation, and a replot of a run that went to the last usable year.
#include <gtest/gtest.h>

#include <cmath>

#include "core/run_driver.h"
#include "presentation/profile_points.h"
#include "presentation/time_axis.h"
#include "presentation/time_series.h"
#include "graph_views_fixture.h"

using namespace osm;

namespace {

std::vector<double> values(double lo, double hi, int maxTicks) { return RoundTicks(lo, hi, maxTicks).values; }

}  // namespace

TEST(RoundTicks, StepIsOneTwoOrFiveTimesAPowerOfTenAndLimitsAreWidenedToIt) {
    // 253 miles in at most 6 intervals: steps of 10 and 20 give too many, 50 gives 0..300.
    AxisTicks t = RoundTicks(0, 253, 6);
    EXPECT_DOUBLE_EQ(t.step, 50);
    EXPECT_EQ(t.values, (std::vector<double>{0, 50, 100, 150, 200, 250, 300}));
    // The top of an empty chart, 0.001: 1e-4 and 2e-4 give 10 and 5 intervals.
    t = RoundTicks(0, 0.001, 4);
    EXPECT_DOUBLE_EQ(t.step, 0.0005);
    ASSERT_EQ(t.values.size(), 3u);
    EXPECT_DOUBLE_EQ(t.values[2], 0.001);
    // Negative bottoms widen downward; zero stays an exact tick.
    EXPECT_EQ(values(-3, 7, 4), (std::vector<double>{-5, 0, 5, 10}));
    // A limit on a whole step is not pushed one step further by rounding noise.
    EXPECT_EQ(values(0, 0.6, 3).back(), 0.6);
    // A range of no height still gets an axis.
    t = RoundTicks(2, 2, 4);
    EXPECT_GT(t.hi, t.lo);
    EXPECT_GE(t.values.size(), 2u);
}

TEST(TickText, FewCharactersAndNoMoreDecimalsThanTheStepNeeds) {
    EXPECT_EQ(TickText(0, 0.2), "0");
    EXPECT_EQ(TickText(0.4, 0.2), "0.4");
    EXPECT_EQ(TickText(250, 50), "250");
    EXPECT_EQ(TickText(-5, 5), "-5");
    EXPECT_EQ(TickText(0.003, 0.001), "0.003");
    EXPECT_EQ(TickText(0.0005, 0.0005), "0.0005");
    EXPECT_EQ(TickText(15000, 5000), "15k");
    EXPECT_EQ(TickText(10500, 500), "10.5k");
    EXPECT_EQ(TickText(2500000, 500000), "2.5M");
    EXPECT_EQ(TickText(5000, 1000), "5000");  // under ten thousand in full
    for (double v : {0.0, 2e-5, 4e-5, 6e-5}) EXPECT_LE(TickText(v, 2e-5).size(), 6u) << v;
}

struct ChartsOfTheFixture : ::testing::Test {
    Model m;
    ChartSet charts;
    void SetUp() override { test::MakeChartModel(m); }
};

TEST_F(ChartsOfTheFixture, ProfileMilesSpanEachReachWithItsClosingZeroAtTheFoot) {
    // Reach 2 runs 0.4..6.0: |Int(5.6) - 1| = 4 value points 1.8667 miles apart;
    // reach 3 runs 6.0..6.5: one value point at its top. Each closes at its foot.
    const std::vector<double> miles = ProfileMiles(m);
    const std::vector<double> expected{0.4, 0.4 + 5.6 / 3, 0.4 + 2 * 5.6 / 3, 6.0, 6.0, 6.0, 6.5};
    ASSERT_EQ(miles.size(), expected.size());
    for (size_t k = 0; k < miles.size(); ++k) EXPECT_NEAR(miles[k], expected[k], 1e-5) << k;
    // The profile's curves have one point for every mile place.
    SetupProfiles(m, charts);
    m.main.CumMonth = 5;
    m.main.TimeFlags(2) = true;
    UpdateProfiles(m, charts, 1, 5);
    EXPECT_EQ(Chart(charts, 1).xMiles, miles);
    EXPECT_EQ(Chart(charts, 1).PointCount(0), static_cast<int>(miles.size()));
}

TEST_F(ChartsOfTheFixture, EachCurveKnowsItsRunSetAndWhetherItIsObserved) {
    m.main.NRuns = 1;
    SetupGraphs(m, charts);
    // Variable 3 has the sets "model", "Obs" and "other": six curves with the overlay.
    {
        const ChartState* c = &Chart(charts, 4);
        ASSERT_EQ(c->roles.size(), 6u);
        EXPECT_EQ(c->roles[0].run, 0);
        EXPECT_FALSE(c->roles[0].observed);
        EXPECT_TRUE(c->roles[1].observed);
        EXPECT_EQ(c->roles[4].run, 1);
        EXPECT_EQ(c->roles[4].set, 2);
        EXPECT_TRUE(c->roles[4].observed);
        EXPECT_EQ(c->roles[5].set, 3);
    }
    ChartSet profiles;
    SetupProfiles(m, profiles);
    const ChartState& flow = Chart(profiles, 1);  // profile 1: "min", "max" twice
    ASSERT_EQ(flow.roles.size(), 4u);
    EXPECT_EQ(flow.roles[3].run, 1);
    EXPECT_EQ(flow.roles[3].set, 2);
}

TEST_F(ChartsOfTheFixture, AMonthWithoutObservationIsAGapInGraphsAndProfiles) {
    Main& mn = m.main;
    // Month 2 of reach 2 had no observed temperature; the store holds 0 there.
    mn.Results(0, 3, 2, 2, 2) = 0;
    mn.ObsMissing(0, 3, 2, 2, 2) = true;
    SetupGraphs(m, charts);
    LabelTimeAxis(m, charts);
    mn.CurYr = mn.StartYr;
    for (int mo = 1; mo <= 3; ++mo) {
        SetCalendar(m, 1, mo);
        UpdateGraphs(m, charts, 1, mo);
    }
    const auto& obs = Chart(charts, 4).curves[1];
    ASSERT_EQ(obs.size(), 3u);
    EXPECT_FLOAT_EQ(obs[0], test::StoredValue(0, 3, 2, 2, 1));
    EXPECT_TRUE(std::isnan(obs[1]));
    EXPECT_FLOAT_EQ(obs[2], test::StoredValue(0, 3, 2, 2, 3));

    // A profile of variable 3 in month 2: reach 2's block and its closing zero
    // are left out, reach 3's stands.
    mn.ObsMissing(0, 3, 2, 2, 2) = true;
    m.graphs.ProfSlot(2) = 3;
    SetupProfiles(m, charts);
    mn.CumMonth = 2;
    UpdateProfiles(m, charts, 1, 2);
    const auto& profile = Chart(charts, 2).curves[1];
    ASSERT_EQ(profile.size(), 7u);
    for (size_t k = 0; k < 5; ++k) EXPECT_TRUE(std::isnan(profile[k])) << k;
    EXPECT_FLOAT_EQ(profile[5], test::StoredValue(0, 3, 2, 3, 2));
    EXPECT_EQ(profile[6], 0.0f);
    // The profile's automatic top comes from the values that are drawn.
    EXPECT_FLOAT_EQ(static_cast<float>(Chart(charts, 2).yTop), test::StoredValue(0, 3, 3, 3, 2));
}

TEST_F(ChartsOfTheFixture, ARunThatEndedIn2047IsReplottedWithItsLastWindow) {
    Main& mn = m.main;
    // The driver leaves a 100-year run from 1948 at CurYr 148, one past the last.
    mn.NYears = 100;
    mn.Results.redimPreserve(Bounds{1, 1200});
    mn.ObsMissing.redimPreserve(Bounds{1, 1200});
    mn.CumMonth = 1200;
    mn.CurYr = 148;
    mn.RunYear0 = 99;
    SetupGraphs(m, charts);
    ReplotGraphs(m, charts);
    EXPECT_EQ(mn.CurYr, 148);  // the calendar is put back
    // The last turnover came in December of year 90 (2037): its window starts at
    // 2038, labelled in two digits after the fold at 100.
    const ChartState& flow = Chart(charts, 1);
    ASSERT_EQ(flow.axisLabels.size(), 11u);
    EXPECT_EQ(flow.axisLabels.front(), "38");
    EXPECT_EQ(flow.axisLabels.back(), "48");
    // December 2037 and the 120 months of the last ten years; every tick has a
    // place of its own across the axis.
    EXPECT_EQ(flow.PointCount(0), 121);
    EXPECT_EQ(flow.xPoints, 120);
    for (int k = 1; k <= flow.xTicks; ++k) EXPECT_GT(flow.TickPosition(k), flow.TickPosition(k - 1));
}
