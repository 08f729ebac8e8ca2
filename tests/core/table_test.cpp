#include <gtest/gtest.h>

#include "core/table.h"

using namespace osm;

TEST(Table, IndexOutsideTheBoundsIsAFaultNamingTableAndIndex) {
    Table2<float> t("SandStore");
    t.redim(Bounds{0, 3}, Bounds{2, 4});
    t(3, 4) = 1.5f;
    EXPECT_EQ(t(3, 4), 1.5f);
    EXPECT_EQ(t(0, 2), 0.0f);
    try {
        t(3, 1) = 2;
        FAIL();
    } catch (const Fault& f) {
        const std::string text = f.what();
        EXPECT_NE(text.find("SandStore"), std::string::npos);
        EXPECT_NE(text.find("index 2 is 1"), std::string::npos);
        EXPECT_NE(text.find("2..4"), std::string::npos);
    }
    EXPECT_THROW(t(4, 2), Fault);
}

TEST(Table, RedimPreserveKeepsTheOverlapOfTheLastDimension) {
    Table2<int> t("t");
    t.redim(Bounds{0, 1}, Bounds{1, 3});
    for (int i = 0; i <= 1; ++i)
        for (int j = 1; j <= 3; ++j) t(i, j) = 10 * i + j;
    t.redimPreserve(Bounds{1, 5});
    EXPECT_EQ(t.hi(1), 5);
    for (int i = 0; i <= 1; ++i) {
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(t(i, j), 10 * i + j);
        EXPECT_EQ(t(i, 5), 0);
    }
    t.redimPreserve(Bounds{1, 2});
    EXPECT_EQ(t(1, 2), 12);
    EXPECT_THROW(t(1, 3), Fault);
}

TEST(Table, FlagsAndEmptyBounds) {
    Table1<bool> flags("SpikeFlag");
    flags.redim(Bounds{0, 600});
    flags(600) = true;
    EXPECT_TRUE(flags(600));
    EXPECT_FALSE(flags(0));
    Table1<float> none("none");
    none.redim(Bounds{1, 0});
    EXPECT_TRUE(none.empty());
    EXPECT_THROW(none(1), Fault);
}
