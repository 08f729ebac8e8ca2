// The whole model on the default data, 50 years, against the stored means of
// every variable, data set and reach. A deliberate change of the model or of
// the data set regenerates the reference with OSM_UPDATE_REFERENCE=1 and shows
// up in review as a change of tests/data/whole_run_reference.csv.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <tuple>

#include "core/model.h"
#include "core/run_driver.h"
#include "core/start_up.h"
#include "support/collect_messages.h"

using namespace osm;

namespace {

using Key = std::tuple<int, int, int>;  // variable, data set, reach

std::map<Key, double> RunMeans() {
    Model m;
    test::CollectMessages quiet;
    m.messages = &quiet;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    RunObserver obs;
    StartRun(m, obs, 48, 50);
    const Main& mn = m.main;
    std::map<Key, double> means;
    for (int v = 1; v <= m.graphs.NVars; ++v)
        for (int s = 1; s <= m.graphs.VarSets(v); ++s)
            for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
                double sum = 0;
                for (int month = 1; month <= mn.CumMonth; ++month) sum += mn.Results(0, v, s, r, month);
                means[{v, s, r}] = sum / mn.CumMonth;
            }
    return means;
}

const char* const kReference = OSM_SOURCE_DIR "/tests/data/whole_run_reference.csv";

void WriteReference(const std::map<Key, double>& means) {
    std::ofstream out(kReference);
    out << "var,set,reach,mean\n";
    out.precision(9);
    for (const auto& [k, v] : means)
        out << std::get<0>(k) << ',' << std::get<1>(k) << ',' << std::get<2>(k) << ',' << v << '\n';
}

std::map<Key, double> ReadReference() {
    std::ifstream in(kReference);
    std::map<Key, double> means;
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) {
        std::istringstream f(line);
        int v, s, r;
        char c;
        double mean;
        f >> v >> c >> s >> c >> r >> c >> mean;
        means[{v, s, r}] = mean;
    }
    return means;
}

}  // namespace

TEST(WholeRun, FiftyYearsOnTheDefaultDataMatchTheReference) {
    const auto means = RunMeans();
    if (std::getenv("OSM_UPDATE_REFERENCE")) {
        WriteReference(means);
        GTEST_SKIP() << "reference rewritten";
    }
    const auto reference = ReadReference();
    ASSERT_EQ(reference.size(), means.size()) << "the reference covers other variables or reaches";
    for (const auto& [k, expected] : reference) {
        const double got = means.at(k);
        EXPECT_NEAR(got, expected, 1e-5 * std::max(1.0, std::fabs(expected)))
            << "variable " << std::get<0>(k) << " set " << std::get<1>(k) << " reach " << std::get<2>(k);
    }
}
