#include <gtest/gtest.h>

#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/start_up.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

namespace {

const char* otherReaches =
    "\"Other\",3,2,3\r\n\"a\",\"b\",\"c\",\"d\"\r\n1,\"A\",0,1\r\n2,\"B\",1,10\r\n3,\"C\",10,20\r\n";

StartOptions options(const TestFolder& f, bool phys) { return StartOptions{f.path(), phys, {}}; }

}  // namespace

TEST(StartUp, PhysicalModeNeverNeedsTheBiologicalFiles) {
    TestFolder f;
    test::WriteSmallRiver(f);
    for (const char* name : {"default.bhp", "default.fis", "default.trb", "lower_production.xls", "population.xls"})
        std::filesystem::remove_all(f.File(name));
    Model phys, whole;
    EXPECT_NO_THROW(StartUp(phys, options(f, true)));
    EXPECT_TRUE(test::Holds(test::FaultText([&] { StartUp(whole, options(f, false)); }), {"default.bhp"}));
}

TEST(StartUp, AMissingRequiredFileIsNamed) {
    for (const char* name : {"Reaches.csv", "graphleg.txt", "noaction.sts", "default.phy",
                             "diurnal_scenarios.txt", "riverware.xls"}) {
        TestFolder f;
        test::WriteSmallRiver(f);
        std::filesystem::remove_all(f.File(name));
        Model m;
        EXPECT_TRUE(test::Holds(test::FaultText([&] { StartUp(m, options(f, true)); }), {name}));
    }
}

TEST(StartUp, ReachFilesReplacedAtStartOrLaterAndRefusedBeyondTheStore) {
    TestFolder f;
    test::WriteSmallRiver(f);
    const std::string other = f.Write("other/Other.csv", otherReaches);
    Model m;
    StartUp(m, StartOptions{f.path(), true, {{"reach-breaks", other}}});
    EXPECT_EQ(m.main.ReachLabel(3), "C");
    EXPECT_EQ(m.physical.DiurnalName(2), "steady");
    EXPECT_EQ(StartMessage(f.path()), "A small test river.Two lines.");
    m.main.Results(0, 1, 1, 3, 1) = 5.0f;
    NewReachBreaks(m, f.File("Reaches.csv"));
    EXPECT_EQ(m.main.ReachLabel(3), "Lower gorge");
    EXPECT_EQ(m.main.Results(0, 1, 1, 3, 1), 5.0f);  // the store keeps its contents
    const std::string four = f.Write("Four.csv",
        "\"Four\",4,2,4\r\n\"a\",\"b\",\"c\",\"d\"\r\n1,\"A\",0,1\r\n2,\"B\",1,2\r\n3,\"C\",2,3\r\n4,\"D\",3,4\r\n");
    EXPECT_THROW(NewReachBreaks(m, four), Fault);
    EXPECT_EQ(m.main.NReaches, 3);
    NewReachBreaks(m, "");  // an empty name keeps the file
    EXPECT_EQ(m.main.ReachFile, f.File("Reaches.csv"));
    f.Write("diurnal_scenarios.txt", "a b c d e f g h i j k\r\n");
    Model n;
    EXPECT_THROW(StartUp(n, options(f, true)), FileFault);
}
