#include <gtest/gtest.h>

#include "core/model.h"
#include "core/reaches.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;

namespace {

const char* threeReaches =
    "\"Test river\",3,2,3\r\n\"Reach\",\"Label\",\"Upper\",\"Lower\"\r\n"
    "1,\"Dam\",0,0.5\r\n2,\"Upper gorge\",0.5,20.62\r\n3,\"Lower gorge\",20.62,40\r\n";

class ReachFile : public ::testing::Test {
protected:
    void SetUp() override { ReadReachFile(m, f.Write("Reaches.csv", threeReaches)); }
    test::TestFolder f;
    Model m;
};

}  // namespace

TEST_F(ReachFile, ReadsRowsAllocatesTheReachTablesAndFindsTheReachOfAMile) {
    EXPECT_EQ(m.main.ReachLabel(2), "Upper gorge");
    EXPECT_FLOAT_EQ(m.main.ReachLen(2), 20.12f);
    // Run-reach tables start at FirstReach; reach tables keep row 1.
    EXPECT_EQ(m.sediment.SandBalance.lo(), 2);
    EXPECT_EQ(m.physical.MeanFlow.lo(), 1);
    m.main.IndexQ(1) = 5000;
    const StatusReachList s = SetStatusReachList(m);
    ASSERT_EQ(s.reaches.size(), 2u);
    EXPECT_EQ(s.reaches[1], "2 / Lower gorge / DS_RM = 24");
    EXPECT_EQ(s.indexStages[0], "5000");
    EXPECT_EQ(ReachOfMile(m, 0.5), 2);  // upstream mile belongs to the reach
    EXPECT_EQ(ReachOfMile(m, 40.0), 0);  // last downstream mile is outside
    EXPECT_EQ(ReachOfMileInclusive(m, 40.0), 3);
    EXPECT_EQ(ReachOfMileInclusive(m, 0.5), 1);  // the first reach that holds it
}

TEST_F(ReachFile, BadFilesAreClearErrorsAndChangeNothing) {
    const std::string tooMany = std::string(threeReaches) + "4,\"Extra\",40,50\r\n";
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadReachFile(m, f.Write("More.csv", tooMany)); }),
                            {"More.csv:6", "NReaches"}));
    EXPECT_EQ(m.main.NReaches, 3);
    EXPECT_EQ(m.main.ReachLabel(3), "Lower gorge");
}
