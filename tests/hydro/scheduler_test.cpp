#include <gtest/gtest.h>

#include <algorithm>

#include "ospsw95b/peakshav_files.h"
#include "ospsw95b/schedule.h"

using namespace hydro;

namespace {

Problem monthLike(double volumeAf) {
    Parameters par;
    par.volume = volumeAf, par.upRamp = 4000, par.downRamp = 2500, par.maxFlow = 25000, par.maxDailyChange = 8000;
    par.reservoirElev = 3680;
    Plant plant;
    plant.tailBase = 3113, plant.tailCoef = 4, plant.tailExp = 0.6;
    plant.monthFactor.assign(12, 1.0);
    for (int h = 1; h <= 24; ++h) {
        const bool peak = h >= 12 && h <= 20;
        par.minFlow.push_back(h >= 8 && h <= 19 ? 8000 : 5000);
        plant.weekdayPrice.push_back(peak ? 50 : 22);
        plant.sundayPrice.push_back(peak ? 34 : 20);
    }
    return MakeProblem({"peakshav.par", 31, "jan", "peakshav.out"}, par, plant);
}

}  // namespace

TEST(Scheduler, PowerCurveFromHeadAndEfficiency) {
    Plant plant;
    plant.efficiency = 0.88, plant.turbineCapacity = 2000;
    plant.tailBase = 3113, plant.tailCoef = 4, plant.tailExp = 0.6;
    const PowerCurve c = MakePowerCurve(plant, 3677.7, 3000, 1000);
    ASSERT_EQ(c.q.size(), 4u);
    // 0.88 x 1000 cfs x (3677.7 - 3117) ft / 11.81 = 41.7795 MW.
    EXPECT_NEAR(c.mw[1], 41.7795, 1e-3);
    // Above the turbine capacity the water spills: power falls with the head.
    EXPECT_LT(c.mw[3], c.mw[2]);
}

TEST(Scheduler, OptimumMatchesABruteForceSearch) {
    Problem p;
    p.hours = 3;
    p.days = {{1, {10, 40, 20}}};
    p.maxFlow = 3000, p.upRamp = 1500, p.downRamp = 1000, p.maxDailyChange = 1800, p.volume = 4500;
    p.minFlow = {500, 500, 500};
    p.curve = {{0, 1000, 2000, 3000}, {0, 3, 5, 6}};  // falling in slope
    const Schedule s = SolveSchedule(p);
    ASSERT_FALSE(s.flat);
    // Every schedule on a grid of 50/3 cfs that meets the limits (the optimum
    // of these limits lies on thirds of 50 cfs).
    double best = -1;
    for (int i = 0; i <= 150; ++i)
        for (int j = 0; j <= 150; ++j) {
            const double a = 500 + i * 50.0 / 3, b = 500 + j * 50.0 / 3, c = 4500 - a - b;
            if (c < 500 - 1e-9 || c > 3000 + 1e-9) continue;
            const std::vector<double> q{a, b, c};
            bool ok = *std::max_element(q.begin(), q.end()) - *std::min_element(q.begin(), q.end()) <= 1800 + 1e-9;
            for (size_t h = 0; h < 3 && ok; ++h) {
                const double step = q[h] - q[(h + 2) % 3];
                ok = step <= 1500 + 1e-9 && -step <= 1000 + 1e-9;
            }
            if (ok) best = std::max(best, ScheduleValue(p, {q}));
        }
    ASSERT_GT(best, 0);
    EXPECT_NEAR(s.value, best, 1e-6 * best);
    // The hour worth 40 gets the most water, the one worth 10 the least.
    EXPECT_GT(s.q[0][1], s.q[0][2]);
    EXPECT_GT(s.q[0][2], s.q[0][0]);
}

TEST(Scheduler, LimitsHoldAndTheVolumeIsReleased) {
    const Problem p = monthLike(900000);
    const Schedule s = SolveSchedule(p);
    ASSERT_FALSE(s.flat);
    double volume = 0;
    for (size_t d = 0; d < 2; ++d) {
        const auto& q = s.q[d];
        EXPECT_LE(*std::max_element(q.begin(), q.end()) - *std::min_element(q.begin(), q.end()), p.maxDailyChange + 1e-6);
        // The first hour ramps also from the other day type's last (Saturday into Sunday, Sunday into Monday).
        for (size_t h = 0; h < 24; ++h) {
            for (double before : {q[(h + 23) % 24], h == 0 ? s.q[1 - d][23] : q[h - 1]}) {
                EXPECT_LE(q[h] - before, p.upRamp + 1e-6);
                EXPECT_LE(before - q[h], p.downRamp + 1e-6);
            }
            EXPECT_GE(q[h], p.minFlow[h] - 1e-6);
            EXPECT_LE(q[h], p.maxFlow + 1e-6);
            volume += p.days[d].count * q[h];
        }
    }
    EXPECT_NEAR(volume, 900000 * 43560.0 / 3600.0, 1e-6 * volume);
}

TEST(Scheduler, OneChoiceLeftGivesAFlatRelease) {
    // 2,000,000 af in January is 32,527 cfs, above the 25,000 cfs limit;
    // 200,000 af is below the minimum flows: spread evenly.
    for (double af : {2000000.0, 200000.0}) {
        const Schedule s = SolveSchedule(monthLike(af));
        EXPECT_TRUE(s.flat);
        EXPECT_NEAR(s.q[0][0], af * 43560.0 / (31 * 86400.0), 1e-6);
        EXPECT_EQ(s.q[0], s.q[1]);
    }
}

