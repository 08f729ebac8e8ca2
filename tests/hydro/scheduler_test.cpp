// The hydropower scheduler: the linear programme against hand-worked values and
// a brute-force search, its limits, and its files.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "ospsw95b/peakshav_files.h"
#include "ospsw95b/schedule.h"
#include "support/test_folder.h"

using namespace hydro;
using osm::test::TestFolder;

namespace {

Problem monthLike(double volumeAf) {
    Parameters par;
    par.volume = volumeAf;
    par.upRamp = 4000;
    par.downRamp = 2500;
    par.maxFlow = 25000;
    par.maxDailyChange = 8000;
    par.reservoirElev = 3680;
    Plant plant;
    plant.tailBase = 3113;
    plant.tailCoef = 4;
    plant.tailExp = 0.6;
    plant.monthFactor.assign(12, 1.0);
    for (int h = 1; h <= 24; ++h) {
        const bool peak = h >= 12 && h <= 20;
        par.minFlow.push_back(h >= 8 && h <= 19 ? 8000 : 5000);
        plant.weekdayPrice.push_back(peak ? 50 : 22);
        plant.sundayPrice.push_back(peak ? 34 : 20);
    }
    return MakeProblem({"peakshav.par", 31, "jan", "peakshav.out"}, par, plant);
}

template <typename F>
std::string errorText(F&& f) {
    try {
        f();
    } catch (const FileError& e) {
        return e.text;
    }
    return "no error";
}

}  // namespace

TEST(Scheduler, PowerCurveFromHeadAndEfficiency) {
    Plant plant;
    plant.efficiency = 0.88;
    plant.turbineCapacity = 2000;
    plant.tailBase = 3113;
    plant.tailCoef = 4;
    plant.tailExp = 0.6;
    const PowerCurve c = MakePowerCurve(plant, 3677.7, 3000, 1000);
    ASSERT_EQ(c.q.size(), 4u);
    // 0.88 x 1000 cfs x (3677.7 - 3117) ft / 11.81 = 41.7795 MW.
    EXPECT_NEAR(c.mw[1], 41.7795, 1e-3);
    // Above the turbine capacity the water spills: power falls with the head.
    EXPECT_LT(c.mw[3], c.mw[2]);
    EXPECT_NEAR(c.At(500), c.mw[1] / 2, 1e-9);
}

TEST(Scheduler, OptimumMatchesABruteForceSearch) {
    Problem p;
    p.hours = 3;
    p.days = {{1, {10, 40, 20}}};
    p.maxFlow = 3000;
    p.upRamp = 1500;
    p.downRamp = 1000;
    p.maxDailyChange = 1800;
    p.minFlow = {500, 500, 500};
    p.volume = 4500;
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
    for (double af : {500000.0, 900000.0}) {
        const Problem p = monthLike(af);
        const Schedule s = SolveSchedule(p);
        ASSERT_FALSE(s.flat) << af;
        double volume = 0;
        for (size_t d = 0; d < 2; ++d) {
            const auto& q = s.q[d];
            EXPECT_LE(*std::max_element(q.begin(), q.end()) - *std::min_element(q.begin(), q.end()),
                      p.maxDailyChange + 1e-6);
            // Each hour from the one before, the first also from the other day
            // type's last (Saturday into Sunday, Sunday into Monday).
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
        EXPECT_NEAR(volume, af * 43560.0 / 3600.0, 1e-6 * volume);
        // Peaking pays: the schedule is worth more than the flat release.
        const std::vector<double> mean(24, p.volume / (24.0 * 31));
        EXPECT_GT(s.value, ScheduleValue(p, {mean, mean}));
    }
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
    // No daily change allowed and a flat minimum: each day is flat, and the
    // weekday and Sunday levels may differ.
    Problem p = monthLike(700000);
    p.maxDailyChange = 0;
    p.minFlow.assign(24, 5000);
    for (const auto& q : SolveSchedule(p).q)
        EXPECT_NEAR(*std::max_element(q.begin(), q.end()), *std::min_element(q.begin(), q.end()), 1e-6);
}

TEST(Scheduler, WeekdaysAndSundaysOfTheMonth) {
    // January 1996 began on a Monday: Sundays 7, 14, 21, 28.
    EXPECT_EQ(monthLike(500000).days[1].count, 4);
    EXPECT_EQ(monthLike(500000).days[0].count, 27);
    EXPECT_EQ(FirstSunday1996(9), 1);
    EXPECT_EQ(MonthOfName("Feb"), 2);
    EXPECT_EQ(MonthOfName("febr"), 0);
}

TEST(SchedulerFiles, OutputCarriesThePowerValueWhereTheReaderLooks) {
    TestFolder f;
    Control c{"peakshav.par", 29, "feb", f.File("peakshav.out")};
    Parameters par;
    par.volume = 500000;
    par.minFlow.assign(24, 1000);
    Schedule s;
    s.q = {std::vector<double>(24, 8000.25), std::vector<double>(24, 4000)};
    s.value = 1234567.4;
    WriteOutput(c.outFile, c, par, monthLike(500000), s);
    std::ifstream in(c.outFile);
    std::vector<std::string> lines;
    for (std::string l; std::getline(in, l);) lines.push_back(l);
    // February 1996: Sundays 4, 11, 18, 25; two records a day.
    ASSERT_EQ(lines.size(), 18u + 58u);
    EXPECT_EQ(lines[15].substr(20, 13), "      1234567");
    EXPECT_EQ(lines[17].substr(0, 2), "id");
    std::string weekday, sunday;
    double wv = 0, sv = 0;
    std::istringstream(lines[18]) >> weekday >> wv;
    std::istringstream(lines[24]) >> sunday >> sv;
    EXPECT_EQ(weekday, "feb01wd-a");
    EXPECT_NEAR(wv, 8000.2, 0.051);
    EXPECT_EQ(sunday, "feb04su-a");
    EXPECT_EQ(sv, 4000);
}

TEST(SchedulerFiles, BadControlParameterAndPlantFilesAreNamed) {
    TestFolder f;
    f.Write("bad.ctr", "filename = bad.ctr\r\nC\r\n*\r\npeakshav.par\r\n30\r\napril\r\na\r\nb\r\nout\r\n");
    EXPECT_NE(errorText([&] { ReadControl(f.File("bad.ctr")); }).find("bad.ctr:6: expected a month name"),
              std::string::npos);
    f.Write("short.par", "filename = peakshav.par\r\nD_VARNOLD\r\n10/24/96\r\nP\r\nR\r\nR\r\nR\r\n====\r\n*\r\n"
                         "500000                {release volume (af/month)}\r\n8000  {up}\r\n6000\r\n31500\r\n25000\r\n");
    EXPECT_NE(errorText([&] { ReadParameters(f.File("short.par")); }).find("the reservoir elevation"),
              std::string::npos);

    std::string plant = "plant\nefficiency 0.9\nturbine_capacity 30000\ntailwater 3100 4 0.6\n"
                        "month_factor 1 1 1 1 1 1 1 1 1 1 1 1\nhour weekday sunday\n";
    for (int h = 1; h <= 24; ++h) plant += std::to_string(h) + " " + std::to_string(20 + h) + " 20\n";
    f.Write("ok.dat", plant);
    const Plant p = ReadPlant(f.File("ok.dat"));
    EXPECT_EQ(p.efficiency, 0.9);
    EXPECT_EQ(p.weekdayPrice[23], 44);
    f.Write("bad.dat", plant.substr(0, plant.find("13 ")));
    EXPECT_NE(errorText([&] { ReadPlant(f.File("bad.dat")); }).find("hour 13"), std::string::npos);
}
