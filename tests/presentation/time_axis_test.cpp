#include <gtest/gtest.h>

#include "presentation/time_axis.h"
#include "support/fault_text.h"
#include "graph_views_fixture.h"

using namespace osm;

namespace {

struct TimeAxis : ::testing::Test {
    Model m;
    ChartSet charts;
    void SetUp() override { test::MakeChartModel(m); }
    // Charts 1 (monthly) and 2 (yearly) laid out for a window.
    void label(int window) {
        m.graphs.TimeWindow = static_cast<int16_t>(window);
        LabelTimeAxis(m, charts);
    }
};

}  // namespace

TEST(TimeDivisionTest, LargestDivisorUpToFifteen) {
    EXPECT_EQ(DivideTimeWindow(30).ticks, 15);
    EXPECT_EQ(DivideTimeWindow(17).ticks, 1);  // a prime over 15: one tick
    EXPECT_TRUE(test::Holds(test::FaultText([] { DivideTimeWindow(0); }), {"time window of 0 years"}));
}

TEST_F(TimeAxis, SixteenYearsGiveEightTicksOfTwoYears) {
    label(16);
    const ChartState& monthly = Chart(charts, 1);
    EXPECT_EQ(monthly.xPoints, 192);
    EXPECT_EQ(monthly.axisLabels, (std::vector<std::string>{"48", "50", "52", "54", "56", "58", "60", "62", "64"}));
    EXPECT_DOUBLE_EQ(monthly.TickPosition(3), 72.0);
    // A yearly chart has a point more than its window and a tick on every step.
    EXPECT_EQ(Chart(charts, 2).xPoints, 18);
    EXPECT_DOUBLE_EQ(Chart(charts, 2).TickPosition(1), 2.0);
}

TEST_F(TimeAxis, YearsPastNinetyNineLoseTheirHundred) {
    m.main.StartYr = 95;
    label(10);
    EXPECT_EQ(Chart(charts, 1).axisLabels,
              (std::vector<std::string>{"95", "96", "97", "98", "99", "0", "1", "2", "3", "4", "5"}));
}

TEST_F(TimeAxis, TheRunsLastYearLooksBack) {
    // The test is against NYears + 48 whatever the start year: with 20 years it
    // catches CurYr 68.
    m.main.NYears = 20;
    m.main.RunYear0 = 19;
    m.main.CurYr = 68;
    EXPECT_EQ(FirstYearShown(m, TimeMonthly), 58);
    EXPECT_EQ(FirstYearShown(m, TimeYearly), 57);
    m.main.CurYr = 67;
    EXPECT_EQ(FirstYearShown(m, TimeMonthly), 68);
    // Still inside the first window: the start year, for both scales.
    m.main.RunYear0 = 8;
    EXPECT_EQ(FirstYearShown(m, TimeYearly), 48);
}
