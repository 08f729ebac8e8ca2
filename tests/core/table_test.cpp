#include <gtest/gtest.h>

#include "core/table.h"
#include "support/fault_text.h"

using namespace osm;

TEST(Table, IndexOutsideTheBoundsIsAFaultNamingTableAndIndex) {
    Table2<float> t("SandStore");
    t.redim(Bounds{0, 3}, Bounds{2, 4});
    EXPECT_TRUE(test::Holds(test::FaultText([&] { t(3, 1) = 2; }), {"SandStore", "index 2 is 1", "2..4"}));
    EXPECT_THROW(t(4, 2), Fault);
    Table1<float> none("none");
    none.redim(Bounds{1, 0});
    EXPECT_TRUE(none.empty());
    EXPECT_THROW(none(1), Fault);
}

TEST(Table, RedimPreserveKeepsTheOverlapOfTheLastDimension) {
    Table2<int> t("t");
    t.redim(Bounds{0, 1}, Bounds{1, 3});
    for (int i = 0; i <= 1; ++i)
        for (int j = 1; j <= 3; ++j) t(i, j) = 10 * i + j;
    t.redimPreserve(Bounds{1, 5});
    for (int i = 0; i <= 1; ++i) {
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(t(i, j), 10 * i + j);
        EXPECT_EQ(t(i, 5), 0);
    }
    t.redimPreserve(Bounds{1, 2});
    EXPECT_EQ(t(1, 2), 12);
    EXPECT_THROW(t(1, 3), Fault);
}
