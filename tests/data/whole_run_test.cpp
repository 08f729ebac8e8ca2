// The whole model on the default data, 50 years, against the stored means of every
// variable, data set and reach. A deliberate change regenerates the reference with
// OSM_UPDATE_REFERENCE=1 and shows up in review as a change of whole_run_reference.csv.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <tuple>

#include "core/model.h"
#include "core/run_driver.h"
#include "core/start_up.h"
#include "support/collect_messages.h"

using namespace osm;

TEST(WholeRun, FiftyYearsOnTheDefaultDataMatchTheReference) {
    Model m;
    test::CollectMessages quiet;
    m.messages = &quiet;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    RunObserver obs;
    StartRun(m, obs, 48, 50);
    // The default data set is tuned to run without a sand balance or any other message.
    EXPECT_TRUE(quiet.seen.empty()) << quiet.seen.front().text;
    const Main& mn = m.main;
    std::map<std::tuple<int, int, int>, double> means;  // by variable, data set and reach
    for (int v = 1; v <= m.graphs.NVars; ++v)
        for (int s = 1; s <= m.graphs.VarSets(v); ++s)
            for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
                double sum = 0;
                for (int month = 1; month <= mn.CumMonth; ++month) sum += mn.Results(0, v, s, r, month);
                means[{v, s, r}] = sum / mn.CumMonth;
            }
    const char* const reference = OSM_SOURCE_DIR "/tests/data/whole_run_reference.csv";
    if (std::getenv("OSM_UPDATE_REFERENCE")) {
        std::ofstream out(reference);
        out << "var,set,reach,mean\n";
        out.precision(9);
        for (const auto& [k, v] : means)
            out << std::get<0>(k) << ',' << std::get<1>(k) << ',' << std::get<2>(k) << ',' << v << '\n';
        GTEST_SKIP() << "reference rewritten";
    }
    std::ifstream in(reference);
    in.ignore(1 << 20, '\n');  // the heads
    int v, s, r, rows = 0;
    char c;
    double expected;
    while (in >> v >> c >> s >> c >> r >> c >> expected) {
        ++rows;
        EXPECT_NEAR(means.at({v, s, r}), expected, 1e-5 * std::max(1.0, std::fabs(expected)))
            << "variable " << v << " set " << s << " reach " << r;
    }
    EXPECT_EQ(rows, static_cast<int>(means.size())) << "the reference covers other variables or reaches";
}
