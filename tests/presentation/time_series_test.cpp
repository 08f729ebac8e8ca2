#include <gtest/gtest.h>

#include "core/run_driver.h"
#include "presentation/time_axis.h"
#include "presentation/time_series.h"
#include "support/fault_text.h"
#include "graph_views_fixture.h"

using namespace osm;
using osm::test::StoredValue;

namespace {

struct TimeSeries : ::testing::Test {
    Model m;
    ChartSet charts;
    void SetUp() override {
        test::MakeChartModel(m);
        SetupGraphs(m, charts);
        LabelTimeAxis(m, charts);
    }
    // The graph calls of the run driver, in its order, through month `last` of
    // year `years` (12 ends with the year step).
    void run(int years, int last = 12) {
        m.main.CurYr = m.main.StartYr;
        for (int y = 1; y <= years; ++y) {
            for (int mo = 1; mo <= (y == years ? last : 12); ++mo) {
                SetCalendar(m, y, mo);
                UpdateGraphs(m, charts, y, mo);
            }
            if (y == years && last < 12) return;
            m.main.TimeFlags(3) = true;
            m.main.TimeFlags(2) = false;
            UpdateGraphs(m, charts, y, 12);
            m.main.CurYr = static_cast<int16_t>(m.main.CurYr + 1);
        }
    }
};

}  // namespace

TEST_F(TimeSeries, CurveFormatsOfSetsObservedDataAndAnOverlaidRun) {
    EXPECT_EQ(Chart(charts, 1).title, "Flow: min max");
    EXPECT_EQ(Chart(charts, 2).title, "Power");  // one set: no set label
    // The observed set is drawn in marks of size 5, whatever the variable says;
    // an overlaid run repeats the set colours in marks.
    const ChartState& temp = Chart(charts, 4);
    EXPECT_EQ(temp.formats[1].style, MarkStyle);
    EXPECT_EQ(temp.formats[1].size, 5);
    m.main.NRuns = 1;
    SetupGraphs(m, charts);
    ASSERT_EQ(temp.CurveCount(), 6);
    EXPECT_EQ(temp.formats[4].style, 2);
    EXPECT_EQ(temp.formats[4].colour, m.graphs.CurveColour(2));
    run(1, 3);
    EXPECT_FLOAT_EQ(Chart(charts, 1).curves[3][0], StoredValue(1, 1, 2, 2, 1));
}

TEST_F(TimeSeries, MonthlyChartsTakeAPointEachMonthYearlyOnesEachYear) {
    m.main.IndexReach = 3;
    run(2, 5);  // two years and five months: no window has turned
    const ChartState& flow = Chart(charts, 1);
    ASSERT_EQ(flow.PointCount(1), 17);
    EXPECT_FLOAT_EQ(flow.curves[1][16], StoredValue(0, 1, 2, 3, 17));
    const ChartState& power = Chart(charts, 2);
    ASSERT_EQ(power.PointCount(0), 1);  // the year step of year 1, from December
    EXPECT_FLOAT_EQ(power.curves[0][0], StoredValue(0, 2, 1, 3, 12));
}

TEST_F(TimeSeries, TheWindowTurnsOverInItsLastDecemberButNotAtTheRunsEnd) {
    m.graphs.TimeWindow = 2;
    m.main.NYears = 4;
    LabelTimeAxis(m, charts);
    run(2);
    // December's month step cleared the charts and took December; the year step
    // cleared them again and took the year's point.
    EXPECT_EQ(Chart(charts, 1).PointCount(0), 0);
    ASSERT_EQ(Chart(charts, 2).PointCount(0), 1);
    EXPECT_FLOAT_EQ(Chart(charts, 2).curves[0][0], StoredValue(0, 2, 1, 2, 24));
    EXPECT_EQ(Chart(charts, 1).axisLabels.front(), "50");  // CurYr 49 + 1
    EXPECT_EQ(Chart(charts, 2).axisLabels.front(), "49");
    // The last December keeps its picture: years 3 and 4 monthly, 2 to 4 yearly.
    charts = ChartSet{};
    SetupGraphs(m, charts);
    run(4);
    EXPECT_EQ(Chart(charts, 1).PointCount(0), 24);
    EXPECT_EQ(Chart(charts, 2).PointCount(0), 3);
}

TEST_F(TimeSeries, ReplotRebuildsTheChartsAndLeavesTheCalendar) {
    run(2, 5);
    ChartSet again;
    ReplotGraphs(m, again);
    for (int i = 1; i <= 6; ++i) EXPECT_EQ(Chart(again, i).curves, Chart(charts, i).curves) << i;
    EXPECT_EQ(m.main.CumMonth, 17);
    // At December's yield, after its month step and before its year step.
    run(2, 11);
    SetCalendar(m, 2, 12);
    UpdateGraphs(m, charts, 2, 12);
    ReplotGraphs(m, charts);
    EXPECT_EQ(m.main.CurYr, 49);
    EXPECT_EQ(m.main.RunYear0, 1);
    EXPECT_EQ(m.main.CumMonth, 24);
    EXPECT_TRUE(m.main.TimeFlags(2));
    EXPECT_FALSE(m.main.TimeFlags(3));
    // Before any run: nothing drawn and no month invented.
    m.main.CumMonth = 0;
    ReplotGraphs(m, again);
    EXPECT_EQ(m.main.CumMonth, 0);
    EXPECT_EQ(Chart(again, 1).PointCount(0), 0);
}

TEST_F(TimeSeries, AWindowOfNoYearsStopsAtTheFirstDecember) {
    m.graphs.TimeWindow = 0;
    SetCalendar(m, 1, 11);
    EXPECT_NO_THROW(UpdateGraphs(m, charts, 1, 11));
    SetCalendar(m, 1, 12);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { UpdateGraphs(m, charts, 1, 12); }), {"time window"}));
}

TEST_F(TimeSeries, AChartOfAVariableOutsideTheTableIsAFaultThatNamesIt) {
    m.graphs.GraphSlot(5) = 4;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { SetupGraphs(m, charts); }),
                            {"Graph 5", "variable 4", "variables 1 to 3"}));
}
