#include <gtest/gtest.h>

#include "presentation/view_layout.h"

using namespace osm;

TEST(ViewLayout, SixGraphsInALandscapeFormTakeTwoColumns) {
    // Columns 1..6 give views 389.5, 595.5, 396, 296.25, 236.4, 196.5 wide.
    const auto r = TileViews(6, 1200, 800, GraphAspect, 3);
    ASSERT_EQ(r.size(), 6u);
    EXPECT_DOUBLE_EQ(r[0].w, 595.5);
    EXPECT_DOUBLE_EQ(r[2].y, 6 + 788.0 / 3);
    EXPECT_DOUBLE_EQ(r[5].x + r[5].w, 1197);
    EXPECT_EQ(TileColumns(4, 400, 1600, MapAspect, 3), 1);
    EXPECT_TRUE(TileViews(0, 800, 600, 3, 3).empty());
    for (const ViewRect& v : TileViews(3, 5, 5, 3, 3)) EXPECT_TRUE(v.w >= 0 && v.h >= 0);  // no room
}

TEST(ViewLayout, ViewsStayInsideAndNeverOverlap) {
    for (int n = 1; n <= 6; ++n)
        for (double w : {300.0, 1600.0})
            for (double h : {200.0, 1200.0}) {
                const auto r = TileViews(n, w, h, GraphAspect, ViewGap);
                ASSERT_EQ(static_cast<int>(r.size()), n);
                for (size_t i = 0; i < r.size(); ++i) {
                    EXPECT_LE(r[i].x + r[i].w, w + 1e-9);
                    EXPECT_LE(r[i].y + r[i].h, h + 1e-9);
                    for (size_t j = i + 1; j < r.size(); ++j)  // in reading order
                        EXPECT_TRUE(r[i].x + r[i].w <= r[j].x || r[i].y + r[i].h <= r[j].y) << n << " " << w << h;
                }
            }
}
