#include <gtest/gtest.h>

#include "presentation/chart_state.h"

using namespace osm;

TEST(ChartStateTest, ANewCurveCountKeepsThePointsOfTheCurvesThatStay) {
    ChartState c;
    c.SetCurveCount(2);
    c.AddPoint(1, 2);
    c.SetCurveCount(4);
    EXPECT_EQ(c.PointCount(1), 1);
    c.SetCurveCount(1);
    EXPECT_EQ(c.PointCount(1), 0);  // gone, and asking is no fault
    // A point for a curve past the count adds the curve rather than losing it.
    c.AddPoint(2, 5);
    c.Clear();
    EXPECT_EQ(c.CurveCount(), 3);
}

TEST(ChartStateTest, AutomaticAxisTakesInEveryPointFixedOneDoesNot) {
    ChartState c;
    c.yTop = 0.001;
    c.yBottom = 0;
    c.AddPoint(0, 7.5f);
    c.AddPoint(0, -2);
    EXPECT_DOUBLE_EQ(c.ShownYRange().top, 7.5);
    EXPECT_DOUBLE_EQ(c.ShownYRange().bottom, -2);
    c.autoY = false;
    c.yTop = 5;
    EXPECT_DOUBLE_EQ(c.ShownYRange().top, 5);
}

TEST(ChartStateTest, MorePointsThanLaidOutWidenTheAxisNotTheTicks) {
    ChartState c;
    c.xPoints = 120;
    c.xTicks = 10;
    for (int k = 0; k < 130; ++k) c.AddPoint(0, 1);
    EXPECT_EQ(c.ShownXSpan(), 130);
    EXPECT_DOUBLE_EQ(c.TickPosition(5), 60);
}
