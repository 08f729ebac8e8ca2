#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <stdexcept>

#include "core/fault.h"
#include "core/many_runs.h"
#include "core/model.h"
#include "core/run_driver.h"
#include "support/small_model.h"

using namespace osm;

namespace {

// Four whole-model runs of two years, each with its own spike flow.
std::vector<RunJob> fourRuns() {
    std::vector<RunJob> jobs;
    for (int k = 0; k < 4; ++k)
        jobs.push_back({"run " + std::to_string(k), [k](Model& m) {
                            m.physical.SpikeQ = static_cast<float>(30000 + 5000 * k);
                            for (int i = 1; i <= 24; i += 3 + k) m.physical.SpikeFlag(i) = true;
                        }});
    return jobs;
}

bool sameBits(const RunValues& a, const RunValues& b) {
    return a.values.size() == b.values.size() &&
           std::memcmp(a.values.data(), b.values.data(), a.values.size() * sizeof(float)) == 0;
}

}  // namespace

// Side by side, one after another and alone: the same values to the last bit.
TEST(ManyRuns, ParallelSerialAndLoneRunsAreIdentical) {
    auto s = test::StartSmallModel(false);
    const auto jobs = fourRuns();
    ManyRunsSetup setup;
    setup.startYr = 48;
    setup.years = 2;
    setup.jobs = 1;
    const ManyRunsResult serial = RunMany(s->m, jobs, setup);
    setup.jobs = 3;
    const ManyRunsResult parallel = RunMany(s->m, jobs, setup);
    ASSERT_EQ(serial.set.runs.size(), 4u);
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(serial.set.runs[i].fault, "") << i;
        EXPECT_EQ(serial.set.runs[i].months, 24);
        EXPECT_TRUE(sameBits(serial.set.runs[i], parallel.set.runs[i])) << i;
        Model lone = s->m;
        jobs[i].prepare(lone);
        RunObserver quiet;
        StartRun(lone, quiet, 48, 2);
        EXPECT_TRUE(sameBits(serial.set.runs[i], TakeRun(serial.set, lone, 0, ""))) << i;
    }
    // The runs differ from each other: the spikes reach the results.
    EXPECT_FALSE(sameBits(serial.set.runs[0], serial.set.runs[1]));
    EXPECT_EQ(serial.set.runs[2].name, "run 2");
}

// A run that faults keeps its name, its fault and the months it reached; the
// others end normally. Progress ends at the total.
TEST(ManyRuns, AFaultingRunIsNamedAndTheOthersKept) {
    auto s = test::StartSmallModel(true);
    std::vector<RunJob> jobs = {{"good", nullptr},
                                {"bad setup", [](Model&) { throw Fault("no such policy"); }},
                                {"late fault", [](Model& m) { m.physical.DiurnalCode(49) = 9; }},
                                {"also good", nullptr}};
    ManyRunsSetup setup;
    setup.startYr = 48;
    setup.years = 2;
    setup.jobs = 2;
    long last = -1, total = 0;
    setup.progress = [&](long done, long all) {
        EXPECT_GE(done, last);
        last = done;
        total = all;
    };
    const ManyRunsResult r = RunMany(s->m, jobs, setup);
    EXPECT_EQ(r.set.runs[0].fault, "");
    EXPECT_EQ(r.set.runs[1].fault, "no such policy");
    EXPECT_EQ(r.set.runs[1].months, 0);
    EXPECT_NE(r.set.runs[2].fault.find("diurnal code 9"), std::string::npos) << r.set.runs[2].fault;
    EXPECT_EQ(r.set.runs[2].months, 12);  // the first year stands
    EXPECT_EQ(r.set.runs[3].fault, "");
    EXPECT_TRUE(sameBits(r.set.runs[0], r.set.runs[3]));
    EXPECT_EQ(total, 4 * 24);
    EXPECT_EQ(last, total);
    // Each run read the scenario files of its own years.
    EXPECT_FALSE(r.inputs[0].empty());
}

TEST(ManyRuns, EveryIndexIsWorkedOnceAndAFailureComesBack) {
    std::vector<std::atomic<int>> seen(100);
    ForEachParallel(100, 3, [&](size_t i) { ++seen[i]; });
    for (const auto& n : seen) EXPECT_EQ(n.load(), 1);
    EXPECT_THROW(ForEachParallel(10, 2, [](size_t i) {
                     if (i == 7) throw std::runtime_error("seven");
                 }),
                 std::runtime_error);
    EXPECT_EQ(JobCount(3), 3);
    EXPECT_GE(JobCount(0), 1);
}
