#include <gtest/gtest.h>

#include "core/fault.h"
#include "core/model.h"
#include "presentation/graph_table.h"
#include "support/collect_messages.h"
#include "support/test_folder.h"

using namespace osm;

namespace {

const char* heads = "a\r\nb\r\nc\r\nd\r\n";

// A model of three reaches, two in the run, collecting its messages.
struct GraphTable : ::testing::Test {
    test::TestFolder f;
    test::CollectMessages c;
    Model m;
    void SetUp() override {
        m.main.NReaches = 3;
        m.main.FirstReach = 2;
        m.main.LastReach = 3;
        m.messages = &c;
    }
    std::string write(const std::string& name, const std::string& body) { return f.Write(name, heads + body); }
};

}  // namespace

TEST_F(GraphTable, ReadsVariablesSetsAndCodes) {
    LoadGraphTable(m, write("graphleg.txt",
        "3 3\r\n"
        "1 \"M\" 2 \"Flow (kcfs)\" \"Min\" \"Max\" 0 1 1\r\n"
        "2,\"WMY\",1,\"Power value, $M\",3,2,7\r\n"
        "3 \"x\" 3 \"Temperature\" \"Model\" \"  OBServed\" \"ob\" 1 1 9\r\n"));
    const Graphs& g = m.graphs;
    EXPECT_EQ(g.VarTime(1), TimeMonthly);
    EXPECT_EQ(g.VarTime(2), TimeYearly);  // the last letter found wins
    EXPECT_EQ(g.VarTime(3), 0);
    EXPECT_TRUE(IsObservedSet(g, 2, 3));
    EXPECT_FALSE(IsObservedSet(g, 3, 3));
    EXPECT_EQ(GraphRowLabel(g, 1, 2), "Flow (kcfs) Max");
    EXPECT_EQ(GraphRowLabel(g, 2, 1), "Power value, $M");
    EXPECT_TRUE(c.seen.empty());
}

TEST_F(GraphTable, WarnsOfDuplicateMapIdsAndAWrongMaxSub) {
    const std::string p =
        write("graphleg.txt", "2 4\r\n1 \"M\" 1 \"A\" 0 1 5\r\n2 \"M\" 2 \"B\" \"x\" \"y\" 0 1 5\r\n");
    LoadGraphTable(m, p);
    ASSERT_EQ(c.seen.size(), 2u);
    EXPECT_EQ(c.seen[0].text,
              "There are duplicate Map Ids in the Graph File " + p + "\nThe Maps may not draw correctly");
    EXPECT_EQ(c.seen[1].text, "MaxSets not equal to the Actual max number of sets in File " + p);
}

TEST_F(GraphTable, AShortFileIsAnErrorAndChangesNothing) {
    LoadGraphTable(m, write("good.txt", "1 1\r\n1 \"M\" 1 \"A\" 0 1 5\r\n"));
    try {
        LoadGraphTable(m, write("short.txt", "2 1\r\n1 \"M\" 1 \"A\" 0 1 5\r\n2 \"M\" 1\r\n"));
        FAIL();
    } catch (const FileFault& e) {
        EXPECT_NE(std::string(e.what()).find("short.txt"), std::string::npos);
        EXPECT_NE(std::string(e.what()).find("variable 2"), std::string::npos) << e.what();
    }
    EXPECT_EQ(m.graphs.NVars, 1);
}
