#include <gtest/gtest.h>

#include "core/run_driver.h"
#include "presentation/profile_points.h"
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

TEST_F(Profiles, EachReachIsABlockClosedByAZero) {
    UpdateProfiles(m, charts, 1, 7);
    const ChartState& flow = Chart(charts, 1);
    const float a = StoredValue(0, 1, 1, 2, 7), b = StoredValue(0, 1, 1, 3, 7);
    // 5.6 miles of reach 2 give Int 5 less one points; half a mile of reach 3, |0 - 1|.
    EXPECT_EQ(flow.curves[0], (std::vector<float>{a, a, a, a, 0, b, 0}));
    EXPECT_DOUBLE_EQ(flow.yTop, static_cast<double>(StoredValue(0, 1, 2, 3, 7)));
    // A repaint replaces the points rather than adding to them.
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_EQ(flow.PointCount(0), 7);
}

TEST_F(Profiles, AllNegativeValuesGiveATopOfZeroUnlessTheTopIsFixed) {
    for (int r = 1; r <= 3; ++r)
        for (int s = 1; s <= 2; ++s) m.main.Results(0, 1, s, r, 7) = -3;
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_DOUBLE_EQ(Chart(charts, 1).yTop, 0);
    m.graphs.YMax(2, 1) = 50;
    SetupProfiles(m, charts);
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_DOUBLE_EQ(Chart(charts, 1).ShownYRange().top, 50);
}

TEST_F(Profiles, AYearlyVariableWaitsForTheYearStep) {
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_EQ(Chart(charts, 3).PointCount(0), 0);
    SetCalendar(m, 1, 12);
    m.main.TimeFlags(3) = true;
    m.main.TimeFlags(2) = false;
    UpdateProfiles(m, charts, 1, 13);
    EXPECT_FLOAT_EQ(Chart(charts, 3).curves[0][0], StoredValue(0, 2, 1, 2, 12));
    // The monthly chart isn't due at the year step and keeps July's picture.
    EXPECT_FLOAT_EQ(Chart(charts, 1).curves[0][0], StoredValue(0, 1, 1, 2, 7));
}

TEST_F(Profiles, ReplotIgnoresTheFlagsAndReadsAYearlyVariableAtTheYearsFirstMonth) {
    SetCalendar(m, 3, 5);  // CumMonth 29, RunYear0 2
    ReplotProfiles(m, charts);
    EXPECT_FLOAT_EQ(Chart(charts, 1).curves[0][0], StoredValue(0, 1, 1, 2, 29));
    EXPECT_FLOAT_EQ(Chart(charts, 3).curves[0][0], StoredValue(0, 2, 1, 2, 25));
    // Before any run: nothing monthly, and a yearly variable reads month 1.
    m.main.CumMonth = 0;
    m.main.RunYear0 = 0;
    ReplotProfiles(m, charts);
    EXPECT_EQ(Chart(charts, 1).PointCount(0), 0);
    EXPECT_FLOAT_EQ(Chart(charts, 3).curves[0][0], StoredValue(0, 2, 1, 2, 1));
}

TEST_F(Profiles, OverlaidRunFormatsAndPoints) {
    m.main.NRuns = 1;
    SetupProfiles(m, charts);
    const ChartState& flow = Chart(charts, 1);
    ASSERT_EQ(flow.CurveCount(), 4);
    // Overlay curves: sizes n - i, their own colour, black inside.
    EXPECT_EQ(flow.formats[3].size, 0);
    EXPECT_EQ(flow.formats[2].colour, m.graphs.CurveColour(3));
    UpdateProfiles(m, charts, 1, 7);
    EXPECT_FLOAT_EQ(flow.curves[3][5], StoredValue(1, 1, 2, 3, 7));
}

TEST_F(Profiles, MileLabelsFromTheFirstReach) {
    // 28 miles over five ticks: 5.6 a tick rounds to 6, counted from mile 0.4.
    m.main.ReachMile(3, 1) = 28.0f;
    SetupProfiles(m, charts);
    EXPECT_EQ(Chart(charts, 1).axisLabels, (std::vector<std::string>{"", "6.4", "12.4", "18.4", "24.4", "30.4"}));
}
