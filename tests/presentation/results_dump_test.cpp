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

}  // namespace

TEST(ResultsDump, AStoppedRunGivesItsMonthsAndYearlyValuesOnlyInDecember) {
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    StopAfter15 obs(m);
    StartRun(m, obs, 60, 5);
    // Row of variable 12 (power value): after the sets of variables 1..11.
    int row = 0;
    for (int v = 1; v < 12; ++v) row += m.graphs.VarSets(v);
    m.graphs.DumpVar.fill(false);
    m.graphs.DumpReach.fill(false);
    m.graphs.DumpVar(0) = m.graphs.DumpVar(row) = true;
    m.graphs.DumpReach(2) = true;
    DumpResults(m, s->folder.File("b.out"));
    const std::string text = s->folder.Read("b.out");
    const auto flow = [&](int c) { return NumText(m.main.Results(0, 1, 1, 2, c)); };
    EXPECT_EQ(text.find("\"Yr\",\"Month\",\"CumMonth\",\"1 - Flow Min\",\"1 - Power value\"\r\n60,1,1,"), 0u);
    EXPECT_NE(text.find("\r\n60,12,12," + flow(12) + "," + NumText(m.main.Results(0, 12, 1, 2, 12)) + "\r\n"),
              std::string::npos);
    EXPECT_TRUE(text.ends_with("\r\n61,3,15," + flow(15) + ",\".\"\r\n"));
}
