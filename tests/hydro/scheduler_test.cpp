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

// A curve that falls in slope: 3 MW per 1000 cfs, then 2, then 1.
PowerCurve concaveCurve() { return {{0, 1000, 2000, 3000}, {0, 3, 5, 6}}; }

Problem threeHours() {
    Problem p;
    p.hours = 3;
    p.days = {{1, {10, 40, 20}}};
    p.maxFlow = 3000;
    p.upRamp = 1500;
    p.downRamp = 1000;
    p.maxDailyChange = 1800;
    p.minFlow = {500, 500, 500};
    p.volume = 4500;
    p.curve = concaveCurve();
    return p;
}

Problem monthLike(double volumeAf) {
    Control c{"peakshav.par", 31, "jan", "peakshav.out"};
    Parameters par;
    par.volume = volumeAf;
    par.upRamp = 4000;
    par.downRamp = 2500;
    par.maxFlow = 25000;
    par.maxDailyChange = 8000;
    par.reservoirElev = 3680;
    for (int h = 1; h <= 24; ++h) par.minFlow.push_back(h >= 8 && h <= 19 ? 8000 : 5000);
    Plant plant;
    plant.tailBase = 3113;
    plant.tailCoef = 4;
    plant.tailExp = 0.6;
    plant.monthFactor.assign(12, 1.0);
    for (int h = 1; h <= 24; ++h) {
        plant.weekdayPrice.push_back(h >= 12 && h <= 20 ? 50 : 22);
        plant.sundayPrice.push_back(h >= 12 && h <= 20 ? 34 : 20);
    }
    return MakeProblem(c, par, plant);
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
    const Problem p = threeHours();
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
            for (int h = 0; h < 3 && ok; ++h) {
                const double step = q[size_t(h)] - q[size_t((h + 2) % 3)];
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
    for (double af : {500000.0, 700000.0, 900000.0}) {
        const Problem p = monthLike(af);
        const Schedule s = SolveSchedule(p);
        ASSERT_FALSE(s.flat) << af;
        double volume = 0;
        for (size_t d = 0; d < 2; ++d) {
            const auto& q = s.q[d];
            EXPECT_LE(*std::max_element(q.begin(), q.end()) - *std::min_element(q.begin(), q.end()),
                      p.maxDailyChange + 1e-6);
            for (size_t h = 0; h < 24; ++h) {
                const double rise = q[h] - q[(h + 23) % 24];
                EXPECT_LE(rise, p.upRamp + 1e-6);
                EXPECT_LE(-rise, p.downRamp + 1e-6);
                EXPECT_GE(q[h], p.minFlow[h] - 1e-6);
                EXPECT_LE(q[h], p.maxFlow + 1e-6);
                volume += p.days[d].count * q[h];
            }
        }
        EXPECT_NEAR(volume, af * 43560.0 / 3600.0, 1e-6 * volume);
        // Saturday night into Sunday, Sunday night into Monday.
        for (size_t d = 0; d < 2; ++d) {
            const double rise = s.q[1 - d][0] - s.q[d][23];
            EXPECT_LE(rise, p.upRamp + 1e-6);
            EXPECT_LE(-rise, p.downRamp + 1e-6);
        }
        // Peaking pays: the schedule is worth more than the flat release.
        const double mean = p.volume / (24.0 * 31);
        EXPECT_GT(s.value, ScheduleValue(p, {std::vector<double>(24, mean), std::vector<double>(24, mean)}));
    }
}

TEST(Scheduler, OneChoiceLeftGivesAFlatRelease) {
    // 2,000,000 af in January is 32,527 cfs, above the 25,000 cfs limit.
    const Schedule high = SolveSchedule(monthLike(2000000));
    EXPECT_TRUE(high.flat);
    EXPECT_NEAR(high.q[0][0], 2000000 * 43560.0 / (31 * 86400.0), 1e-6);
    EXPECT_EQ(high.q[0], high.q[1]);
    // 200,000 af is below the minimum flows: spread evenly.
    const Schedule low = SolveSchedule(monthLike(200000));
    EXPECT_TRUE(low.flat);
    EXPECT_NEAR(low.q[1][23], 200000 * 43560.0 / (31 * 86400.0), 1e-6);
    // No daily change allowed and a flat minimum: each day is flat, and the
    // weekday and Sunday levels may differ.
    Problem p = monthLike(700000);
    p.maxDailyChange = 0;
    p.minFlow.assign(24, 5000);
    const Schedule s = SolveSchedule(p);
    for (const auto& q : s.q) EXPECT_NEAR(*std::max_element(q.begin(), q.end()), *std::min_element(q.begin(), q.end()), 1e-6);
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
    Problem p = monthLike(500000);
    Schedule s;
    s.q = {std::vector<double>(24, 8000.25), std::vector<double>(24, 4000)};
    s.value = 1234567.4;
    WriteOutput(c.outFile, c, par, p, s);
    std::ifstream in(c.outFile);
    std::vector<std::string> lines;
    for (std::string l; std::getline(in, l);) lines.push_back(l);
    ASSERT_GE(lines.size(), 18u + 58u);
    EXPECT_EQ(lines[15].substr(20, 13), "      1234567");
    EXPECT_EQ(lines[17].substr(0, 2), "id");
    // February 1996: Sundays 4, 11, 18, 25; two records a day.
    EXPECT_EQ(lines.size(), 18u + 58u);
    EXPECT_EQ(lines[18].substr(0, 9), "feb01wd-a");
    EXPECT_EQ(lines[24].substr(0, 9), "feb04su-a");
    std::istringstream rec(lines[24]);
    std::string label;
    double v = 0;
    rec >> label >> v;
    EXPECT_EQ(v, 4000);
    std::istringstream wd(lines[18]);
    wd >> label >> v;
    EXPECT_NEAR(v, 8000.2, 0.051);
}

TEST(SchedulerFiles, ControlAndParametersAreReadAndBadOnesNamed) {
    TestFolder f;
    f.Write("peakshav.ctr", "filename = peakshav.ctr\r\nCONTROL FILE FOR OSPSW95B\r\n*\r\npeakshav.par\r\n30\r\n"
                            "apr\r\ncyapr96.prn\r\napr96.hpr\r\npeakshav.out\r\n");
    const Control c = ReadControl(f.File("peakshav.ctr"));
    EXPECT_EQ(c.parFile, "peakshav.par");
    EXPECT_EQ(c.days, 30);
    EXPECT_EQ(c.month, "apr");
    EXPECT_EQ(c.outFile, "peakshav.out");
    std::string par = "filename = peakshav.par\r\nD_VARNOLD\r\n10/24/96\r\nP\r\nR\r\nR\r\nR\r\n====\r\n*\r\n"
                      "500000                {release volume (af/month)}\r\n8000  {up}\r\n6000\r\n31500\r\n25000\r\n3673.8\r\n";
    for (int h = 1; h <= 24; ++h) par += std::to_string(1000 + h) + "                  {hour}\r\n";
    f.Write("peakshav.par", par + "\r\n");
    const Parameters pr = ReadParameters(f.File("peakshav.par"));
    EXPECT_EQ(pr.volume, 500000);
    EXPECT_EQ(pr.upRamp, 8000);
    EXPECT_EQ(pr.reservoirElev, 3673.8);
    ASSERT_EQ(pr.minFlow.size(), 24u);
    EXPECT_EQ(pr.minFlow[23], 1024);

    f.Write("bad.ctr", "filename = bad.ctr\r\nC\r\n*\r\npeakshav.par\r\n30\r\napril\r\na\r\nb\r\nout\r\n");
    try {
        ReadControl(f.File("bad.ctr"));
        ADD_FAILURE() << "a bad month name was taken";
    } catch (const FileError& e) {
        EXPECT_NE(e.text.find("bad.ctr:6: expected a month name"), std::string::npos) << e.text;
    }
    f.Write("short.par", par.substr(0, par.find("3673.8")));
    try {
        ReadParameters(f.File("short.par"));
        ADD_FAILURE() << "a short parameter file was taken";
    } catch (const FileError& e) {
        EXPECT_NE(e.text.find("the reservoir elevation"), std::string::npos) << e.text;
    }
}

TEST(SchedulerFiles, PlantDataNeedsEveryPart) {
    TestFolder f;
    std::string text = "plant\nefficiency 0.9\nturbine_capacity 30000\ntailwater 3100 4 0.6\n"
                       "month_factor 1 1 1 1 1 1 1 1 1 1 1 1\nhour weekday sunday\n";
    for (int h = 1; h <= 24; ++h) text += std::to_string(h) + " " + std::to_string(20 + h) + " 20\n";
    f.Write("ok.dat", text);
    const Plant p = ReadPlant(f.File("ok.dat"));
    EXPECT_EQ(p.efficiency, 0.9);
    EXPECT_EQ(p.weekdayPrice[23], 44);
    f.Write("bad.dat", text.substr(0, text.find("13 ")));
    try {
        ReadPlant(f.File("bad.dat"));
        ADD_FAILURE() << "missing hours were taken";
    } catch (const FileError& e) {
        EXPECT_NE(e.text.find("hour 13"), std::string::npos) << e.text;
    }
}
