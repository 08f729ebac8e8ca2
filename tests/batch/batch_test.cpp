#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "support/test_folder.h"

using osm::test::TestFolder;

namespace {

int runBatch(const std::string& args, const TestFolder& f) {
    const std::string cmd = std::string(OSM_BATCH_EXE) + " " + args + " >" + f.File("stdout.txt") +
                            " 2>" + f.File("stderr.txt");
    const int status = std::system(cmd.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

TEST(BatchRunner, RunsDumpsAndWritesTheLongForm) {
    TestFolder f;
    osm::test::WriteSmallRiver(f);
    EXPECT_EQ(runBatch("--folder " + f.path() + " --phys-only --years 2 --dump " + f.File("r.out") + " --csv " +
                           f.File("r.csv") + " --vars 0,1 --reaches 3", f), 0)
        << f.Read("stderr.txt");
    const std::string dump = f.Read("r.out");
    const std::string head = "\"Yr\",\"Month\",\"CumMonth\",\"2 - Flow Min\",\"2 - Flow Max\"\r\n48,1,1,";
    EXPECT_EQ(dump.substr(0, head.size()), head);
    EXPECT_NE(dump.find("\r\n49,12,24,"), std::string::npos);
    // 13 variables of the physical model, their 28 sets, 2 reaches, 24 months.
    const std::string csv = f.Read("r.csv");
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 1 + 28 * 2 * 24);
}

TEST(BatchRunner, ExitStatusTellsUsageFromFaults) {
    TestFolder f;
    for (const char* usage : {"--bogus", "--years ten"}) EXPECT_EQ(runBatch(usage, f), 2) << usage;
    EXPECT_EQ(runBatch("--folder " + f.File("nowhere"), f), 1);
    osm::test::WriteSmallRiver(f);
    EXPECT_EQ(runBatch("--folder " + f.path() + " --phys-only --reaches 9 --dump x.out", f), 2);
    EXPECT_EQ(runBatch("--folder " + f.path() + " --list-vars", f), 0);
    EXPECT_NE(f.Read("stdout.txt").find("var 13 set 2"), std::string::npos);
}

// The dump and the CSV of a run are one result: when the CSV cannot be written,
// the old dump stays too, and no temporary file is left beside it.
TEST(BatchRunner, AFailedOutputLeavesThePairOfOldFiles) {
    TestFolder f;
    osm::test::WriteSmallRiver(f);
    f.Write("r.out", "old dump\r\n");
    EXPECT_EQ(runBatch("--folder " + f.path() + " --phys-only --years 1 --dump " + f.File("r.out") + " --csv " +
                           f.File("no/such/folder/r.csv"), f), 1);
    EXPECT_NE(f.Read("stderr.txt").find("r.csv"), std::string::npos);
    EXPECT_EQ(f.Read("r.out"), "old dump\r\n");
    for (const auto& e : std::filesystem::directory_iterator(f.path()))
        EXPECT_EQ(e.path().string().find("saving~"), std::string::npos) << e.path();
}
