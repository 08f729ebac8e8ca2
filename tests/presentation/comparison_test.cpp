#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/model.h"
#include "core/textfile.h"
#include "presentation/comparison.h"
#include "presentation/run_set.h"
#include "support/small_model.h"

using namespace osm;

namespace {

const float gap = std::numeric_limits<float>::quiet_NaN();

// Two years, reaches 2..3, a monthly variable 1 and a yearly variable 12 of the
// small river's graph table.
RunSet twoRuns() {
    RunSet set;
    set.rows = {{1, 1}, {12, 1}};
    set.firstReach = 2;
    set.lastReach = 3;
    set.months = 24;
    for (const float scale : {1.0f, 1.5f}) {
        RunValues run{scale == 1 ? "base" : "other", "", 24, {}};
        run.values.assign(2 * 2 * 24, 0);
        for (int c = 1; c <= 24; ++c) {
            run.values[set.index(0, 2, c)] = scale * static_cast<float>(c);  // 1..24: mean 12.5
            run.values[set.index(0, 3, c)] = c == 5 ? gap : 0;              // zeros and a gap
            run.values[set.index(1, 2, c)] = c == 12 ? 100 * scale : c == 24 ? 300 * scale : 7;  // Decembers count
            run.values[set.index(1, 3, c)] = 1;
        }
        set.runs.push_back(run);
    }
    return set;
}

}  // namespace

TEST(Comparison, MeansTakeDecembersOfYearlyVariablesAndSkipGaps) {
    auto s = test::StartSmallModel(true);
    const RunSet set = twoRuns();
    EXPECT_DOUBLE_EQ(RunMean(set, s->m.graphs, 0, 0, 2), 12.5);
    EXPECT_DOUBLE_EQ(RunMean(set, s->m.graphs, 1, 0, 2), 18.75);
    EXPECT_DOUBLE_EQ(RunMean(set, s->m.graphs, 0, 0, 3), 0);
    EXPECT_DOUBLE_EQ(RunMean(set, s->m.graphs, 0, 1, 2), 200);  // (100 + 300) / 2, not the 7s
    EXPECT_DOUBLE_EQ(RunMean(set, s->m.graphs, 1, 1, 2), 300);
}

TEST(Comparison, TableHoldsMeanDifferenceAndPercent) {
    auto s = test::StartSmallModel(true);
    const RunSet set = twoRuns();
    const std::string path = s->folder.File("c.csv");
    {
        TextWriter out(path);
        WriteComparisonCsv(set, s->m.graphs, out);
        out.Commit();
    }
    const std::string text = test::TestFolder::ReadFile(path);
    EXPECT_EQ(text.substr(0, text.find('\n') + 1), "var,set,label,reach,scenario,mean,difference,percent_difference\r\n");
    EXPECT_NE(text.find(",2,\"base\",12.5,0,0\r\n"), std::string::npos);
    EXPECT_NE(text.find(",2,\"other\",18.75,6.25,50\r\n"), std::string::npos);
    EXPECT_NE(text.find(",3,\"other\",0,0,\r\n"), std::string::npos);  // no percent of a zero base
    EXPECT_NE(text.find("12,1,\"Power value\",2,\"other\",300,100,50\r\n"), std::string::npos) << text;
    // 2 rows, 2 reaches, 2 runs, and the heading.
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1 + 2 * 2 * 2);
    const std::string summary = ComparisonSummary(set, s->m.graphs);
    EXPECT_NE(summary.find("Power value ($ million a year)\n  base: 200\n  other: 300 (+100, +50 %)\n"),
              std::string::npos)
        << summary;
}
