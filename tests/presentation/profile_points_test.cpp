#include <gtest/gtest.h>

#include "core/run_driver.h"
#include "presentation/profile_points.h"
#include "support/fault_text.h"
#include "graph_views_fixture.h"

using namespace osm;
using osm::test::StoredValue;

namespace {

struct Profiles : ::testing::Test {
    Model m;
    ChartSet charts;
    void SetUp() override {
        test::MakeChartModel(m);
        SetupProfiles(m, charts);
        SetCalendar(m, 1, 7);  // CumMonth 7, monthly flags
    }
};

}  // namespace

TEST_F(Profiles, PointsAcrossAndPerReach) {
    // From mile 0.4 at the top of the first run reach to 6.5 at the foot.
    EXPECT_EQ(ProfilePointCount(m), 6);
    EXPECT_EQ(ReachValuePoints(m, 2), 4);  // 5.6 miles: Int 5, less one
    EXPECT_EQ(ReachValuePoints(m, 3), 1);  // half a mile: |0 - 1|
    m.main.ReachMile(3, 1) = 7.5f;         // 1.5 miles: |1 - 1|, the zero alone
    EXPECT_EQ(ReachValuePoints(m, 3), 0);
    m.main.ReachMile(3, 1) = 11.5f;  // 5.5 miles
    EXPECT_EQ(ReachValuePoints(m, 3), 4);
}

TEST_F(Profiles, EachReachIsABlockClosedByAZero) {
    UpdateProfiles(m, charts, 1, 7);
    const ChartState& flow = Chart(charts, 1);
    ASSERT_EQ(flow.CurveCount(), 2);
    const float a = StoredValue(0, 1, 1, 2, 7), b = StoredValue(0, 1, 1, 3, 7);
    EXPECT_EQ(flow.curves[0], (std::vector<float>{a, a, a, a, 0, b, 0}));
    EXPECT_FLOAT_EQ(flow.curves[1][0], StoredValue(0, 1, 2, 2, 7));
    // The top follows the highest value of the repaint.
    EXPECT_DOUBLE_EQ(flow.yTop, static_cast<double>(StoredValue(0, 1, 2, 3, 7)));
    // A repaint replaces the points rather than adding to them.
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_EQ(flow.PointCount(0), 7);
}

TEST_F(Profiles, AllNegativeValuesGiveATopOfZero) {
    for (int r = 1; r <= 3; ++r)
        for (int s = 1; s <= 2; ++s) m.main.Results(0, 1, s, r, 7) = -3;
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_DOUBLE_EQ(Chart(charts, 1).yTop, 0);
    EXPECT_DOUBLE_EQ(Chart(charts, 1).ShownYRange().bottom, -3);
}

TEST_F(Profiles, AFixedTopStays) {
    m.graphs.YMax(2, 1) = 50;
    m.graphs.YMin(2, 1) = 1;
    SetupProfiles(m, charts);
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_FALSE(Chart(charts, 1).autoY);
    EXPECT_DOUBLE_EQ(Chart(charts, 1).ShownYRange().top, 50);
    EXPECT_DOUBLE_EQ(Chart(charts, 1).ShownYRange().bottom, 1);
}

TEST_F(Profiles, AYearlyVariableWaitsForTheYearStep) {
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_EQ(Chart(charts, 3).PointCount(0), 0);
    SetCalendar(m, 1, 12);
    m.main.TimeFlags(3) = true;
    m.main.TimeFlags(2) = false;
    UpdateProfiles(m, charts, 1, 13);
    ASSERT_EQ(Chart(charts, 3).PointCount(0), 7);
    EXPECT_FLOAT_EQ(Chart(charts, 3).curves[0][0], StoredValue(0, 2, 1, 2, 12));
    // The monthly chart isn't due at the year step and keeps July's picture.
    EXPECT_FLOAT_EQ(Chart(charts, 1).curves[0][0], StoredValue(0, 1, 1, 2, 7));
}

TEST_F(Profiles, HiddenProfilesTakeNothing) {
    m.graphs.VisForms(3) = 0;
    UpdateProfiles(m, charts, 1, 7);
    ReplotProfiles(m, charts);
    EXPECT_EQ(Chart(charts, 1).PointCount(0), 0);
}

TEST_F(Profiles, ReplotIgnoresTheFlagsAndReadsAYearlyVariableAtTheYearsFirstMonth) {
    SetCalendar(m, 3, 5);  // CumMonth 29, RunYear0 2
    ReplotProfiles(m, charts);
    EXPECT_FLOAT_EQ(Chart(charts, 1).curves[0][0], StoredValue(0, 1, 1, 2, 29));
    EXPECT_FLOAT_EQ(Chart(charts, 3).curves[0][0], StoredValue(0, 2, 1, 2, 25));
}

TEST_F(Profiles, ReplotBeforeAnyRunShowsNothing) {
    m.main.CumMonth = 0;
    m.main.RunYear0 = 0;
    EXPECT_NO_THROW(ReplotProfiles(m, charts));
    EXPECT_EQ(Chart(charts, 1).PointCount(0), 0);
    EXPECT_EQ(Chart(charts, 3).PointCount(0), 7);  // a yearly variable reads month 1
}

TEST_F(Profiles, OverlaidRunFormatsAndPoints) {
    m.main.NRuns = 1;
    SetupProfiles(m, charts);
    const ChartState& flow = Chart(charts, 1);
    ASSERT_EQ(flow.CurveCount(), 4);
    const Graphs& g = m.graphs;
    EXPECT_EQ(flow.formats[0].size, 1);
    EXPECT_EQ(flow.formats[1].colour2, g.CurveColour(2));
    // Overlay curves: sizes n - i, their own colour, black inside.
    EXPECT_EQ(flow.formats[2].size, 1);
    EXPECT_EQ(flow.formats[3].size, 0);
    EXPECT_EQ(flow.formats[2].colour, g.CurveColour(3));
    EXPECT_EQ(flow.formats[3].colour2, 0);
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_FLOAT_EQ(flow.curves[3][5], StoredValue(1, 1, 2, 3, 7));
}

TEST_F(Profiles, MileLabelsFromTheFirstReach) {
    // 40 miles over chart 1's five ticks: 8 miles a tick, counted from mile 0.4.
    m.main.ReachMile(3, 1) = 40.0f;
    SetupProfiles(m, charts);
    const ChartState& c = Chart(charts, 1);
    EXPECT_EQ(c.xPoints, 40);
    EXPECT_EQ(c.axisLabels, (std::vector<std::string>{"", "8.4", "16.4", "24.4", "32.4", "40.4"}));
    // 28 miles: 5.6 a tick rounds to 6.
    m.main.ReachMile(3, 1) = 28.0f;
    SetupProfiles(m, charts);
    EXPECT_EQ(c.axisLabels[1], "6.4");
    EXPECT_EQ(c.axisLabels[5], "30.4");
    EXPECT_EQ(Chart(charts, 3).axisLabels[2], "12.4");
    EXPECT_TRUE(Chart(charts, 2).axisLabels.empty());
}

TEST_F(Profiles, AProfileOfAVariableOutsideTheTableIsAFault) {
    m.graphs.ProfSlot(6) = 9;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { SetupProfiles(m, charts); }), {"Profile 6", "variable 9"}));
}
