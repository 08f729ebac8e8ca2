#include <gtest/gtest.h>

#include "core/table.h"
#include "support/fault_text.h"

using namespace osm;

TEST(Table, IndexOutsideTheBoundsIsAFaultNamingTableAndIndex) {
    Table2<float> t("SandStore");
    t.redim(Bounds{0, 3}, Bounds{2, 4});
    EXPECT_TRUE(test::Holds(test::FaultText([&] { t(3, 1) = 2; }), {"SandStore", "index 2 is 1", "2..4"}));
    Table1<float> none("none");
    none.redim(Bounds{1, 0});
    EXPECT_TRUE(none.empty());
    EXPECT_THROW(none(1), Fault);
}
