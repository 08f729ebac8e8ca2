#include <gtest/gtest.h>

#include "core/model.h"
#include "core/numbers.h"
#include "core/run_driver.h"
#include "presentation/results_dump.h"
#include "support/small_model.h"

using namespace osm;

namespace {

// Ends the run at the yield after month 15.
struct StopAfter15 : RunObserver {
    Model& m;
    explicit StopAfter15(Model& mm) : m(mm) {}
    void Yield() override {
        if (m.main.CumMonth == 15) m.main.StopRun = true;
    }
};

void choose(Model& m, std::initializer_list<int> rows, int reach) {
    m.graphs.DumpVar.fill(false);
    m.graphs.DumpReach.fill(false);
    for (int r : rows) m.graphs.DumpVar(r) = true;
    m.graphs.DumpReach(reach) = true;
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> out;
    for (size_t start = 0, end; start < text.size(); start = end + 2) {
        end = text.find("\r\n", start);
        out.push_back(text.substr(start, end - start));
    }
    return out;
}

}  // namespace

TEST(ResultsDump, BeforeAnyRunOnlyTheHeadings) {
    auto s = test::StartSmallModel(true);
    choose(s->m, {0}, 3);
    DumpResults(s->m, s->folder.File("a.out"));
    EXPECT_EQ(s->folder.Read("a.out"), "\"Yr\",\"Month\",\"CumMonth\",\"2 - Flow Min\"\r\n");
}

TEST(ResultsDump, AStoppedRunGivesItsMonthsAndYearlyValuesOnlyInDecember) {
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    StopAfter15 obs(m);
    StartRun(m, obs, 60, 5);
    // Row of variable 12 (power value): after the sets of variables 1..11.
    int row = 0;
    for (int v = 1; v < 12; ++v) row += m.graphs.VarSets(v);
    choose(m, {0, row}, 2);
    DumpResults(m, s->folder.File("b.out"));
    const auto l = lines(s->folder.Read("b.out"));
    ASSERT_EQ(l.size(), 16u);
    EXPECT_EQ(l[0], "\"Yr\",\"Month\",\"CumMonth\",\"1 - Flow Min\",\"1 - Power value\"");
    const auto flow = [&](int c) { return NumText(m.main.Results(0, 1, 1, 2, c)); };
    EXPECT_EQ(l[1], "60,1,1," + flow(1) + ",\".\"");
    EXPECT_EQ(l[12], "60,12,12," + flow(12) + "," + NumText(m.main.Results(0, 12, 1, 2, 12)));
    EXPECT_EQ(l[15], "61,3,15," + flow(15) + ",\".\"");
}
