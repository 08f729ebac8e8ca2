#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <map>
#include <sstream>
#include <tuple>

#include "core/provenance.h"
#include "support/test_folder.h"

using osm::test::TestFolder;

namespace {

int runBatch(const std::string& args, const TestFolder& f) {
    const std::string cmd = std::string(OSM_BATCH_EXE) + " --folder " + f.path() + " " + args + " >" +
                            f.File("stdout.txt") + " 2>" + f.File("stderr.txt");
    const int status = std::system(cmd.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The values of one variable, set and reach of a long-form CSV, by month.
std::map<int, double> series(const std::string& csv, int var, int sub, int reach) {
    std::map<int, double> out;
    std::istringstream in(csv);
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) {
        int run, v, s, r, c;
        double x;
        char comma;
        std::istringstream l(line);
        l >> run >> comma >> v >> comma >> s >> comma >> r >> comma >> c >> comma >> x;
        if (v == var && s == sub && r == reach) out[c] = x;
    }
    return out;
}

// The mean, difference and percent of a comparison record.
std::string comparisonRecord(const std::string& csv, const std::string& head) {
    const size_t at = csv.find(head);
    if (at == std::string::npos) return "";
    return csv.substr(at + head.size(), csv.find('\r', at) - at - head.size());
}

}  // namespace

// Two policies of the small river: each run's long form is the one a lone run
// of the policy writes, byte for byte, and the comparison's mean, difference
// and percent are those of the two runs' CSVs, worked here.
TEST(BatchManyRuns, CompareMatchesLoneRunsAndItsFiguresTheirCsvs) {
    TestFolder f;
    osm::test::WriteSmallRiver(f);
    f.Write("base.pol", "release-pattern 300000 300000 300000 300000 300000 300000 300000 300000 300000 300000 "
                        "300000 300000\n");
    f.Write("high.pol", "release-pattern 600000 600000 600000 600000 600000 600000 600000 600000 600000 600000 "
                        "600000 600000\n");
    ASSERT_EQ(runBatch("--phys-only --years 2 compare base.pol high.pol --jobs 2 --out-dir " + f.path(), f), 0)
        << f.Read("stderr.txt");
    EXPECT_NE(f.Read("stdout.txt").find("Scenario comparison, 1948 for 2 years, base base:"), std::string::npos);
    ASSERT_EQ(runBatch("--phys-only --years 2 --policy high.pol --csv " + f.File("lone.csv"), f), 0);
    EXPECT_EQ(f.Read("high.csv"), f.Read("lone.csv"));

    const auto base = series(f.Read("base.csv"), 1, 2, 2), high = series(f.Read("high.csv"), 1, 2, 2);
    ASSERT_EQ(base.size(), 24u);
    double mb = 0, mh = 0;
    for (int c = 1; c <= 24; ++c) mb += base.at(c) / 24, mh += high.at(c) / 24;
    ASSERT_NE(mb, mh);
    const std::string comparison = f.Read("comparison.csv");
    std::istringstream rec(comparisonRecord(comparison, "1,2,\"Flow Max\",2,\"high\","));
    double mean, diff, percent;
    char comma;
    rec >> mean >> comma >> diff >> comma >> percent;
    // The CSVs hold the singles in short text: they agree to a single's precision.
    EXPECT_NEAR(mean, mh, 1e-6 * std::abs(mh));
    EXPECT_NEAR(diff, mh - mb, 1e-6 * std::abs(mh));
    EXPECT_NEAR(percent, (mh - mb) * 100 / mb, 1e-5 * std::abs(percent));

    // The provenance names the policy with the hash of its contents.
    const std::string json = f.Read("high.csv.json");
    EXPECT_NE(json.find("high.pol\", \"sha256\": \"" + osm::Sha256Hex(f.Read("high.pol"))), std::string::npos)
        << json;
    EXPECT_EQ(json.find("base.pol"), std::string::npos);
    EXPECT_NE(f.Read("comparison.csv.json").find("base.pol"), std::string::npos);
    EXPECT_NE(json.find("\"mode\": \"physical model only\""), std::string::npos);
}

// A scenario that faults is named with its fault; the other runs are written.
TEST(BatchManyRuns, AFaultingScenarioIsNamedAndTheOthersKept) {
    TestFolder f;
    osm::test::WriteSmallRiver(f);
    f.Write("bad.pol", "spikes 1996-13\n");
    EXPECT_EQ(runBatch("--phys-only --years 1 compare noaction.sts bad.pol --out-dir " + f.path(), f), 1);
    const std::string err = f.Read("stderr.txt");
    EXPECT_NE(err.find("osm-batch: bad: the run stopped after 0 months"), std::string::npos) << err;
    EXPECT_NE(err.find("bad.pol:1"), std::string::npos) << err;
    EXPECT_EQ(series(f.Read("noaction.csv"), 1, 1, 2).size(), 12u);
    EXPECT_NE(f.Read("comparison.csv").find("\"noaction\""), std::string::npos);
}

TEST(BatchManyRuns, EnsembleWritesParametersAndPercentilesAndRefusesABadSpec) {
    TestFolder f;
    osm::test::WriteSmallRiver(f);
    f.Write("a.ens", "runs 3\nseed 5\nparam phy AngleOfRepose uniform 25 35\nparam rec TotalMaxEffort normal 1200 "
                     "100 min 1 whole\n");
    ASSERT_EQ(runBatch("--phys-only --years 1 ensemble a.ens --out-dir " + f.path() + " --netcdf " + f.File("e.nc"),
                       f),
              0)
        << f.Read("stderr.txt");
    const std::string params = f.Read("ensemble_parameters.csv");
    EXPECT_EQ(params.substr(0, params.find('\n')), "\"run\",\"name\",\"fault\",\"phy:AngleOfRepose\",\"rec:TotalMaxEffort\"\r");
    EXPECT_EQ(std::count(params.begin(), params.end(), '\n'), 4);
    const std::string p = f.Read("ensemble_percentiles.csv");
    EXPECT_EQ(p.substr(0, p.find('\n')), "var,set,reach,month,p5,p50,p95\r");
    EXPECT_NE(f.Read("ensemble_percentiles.csv.json").find("a.ens"), std::string::npos);
    EXPECT_NE(f.Read("ensemble_median.csv").find("run,var,sub,reach,month,value"), std::string::npos);

    f.Write("bad.ens", "runs 3\nseed 5\nparam phy AngleOfRepose uniform 35 25\n");
    EXPECT_EQ(runBatch("--phys-only --years 1 ensemble bad.ens --out-dir " + f.path(), f), 1);
    EXPECT_NE(f.Read("stderr.txt").find("bad.ens:3: expected a highest value not below the lowest 35"),
              std::string::npos)
        << f.Read("stderr.txt");
    for (const char* usage : {"compare one.pol", "ensemble", "compare a.pol b.pol --dump x.out", "--jobs 0"})
        EXPECT_EQ(runBatch(usage, f), 2) << usage;
}
