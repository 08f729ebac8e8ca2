#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "support/test_folder.h"
#include "usflow/routing.h"
#include "usflow/usflow_files.h"

using namespace hydro;
using osm::test::TestFolder;

namespace {

constexpr double Step = 240;  // 4 minutes
constexpr int PerDay = 360;

// A gorge of three stations whose area grows as Q^0.7 and width as Q^0.12.
Geometry gorge() {
    Geometry g;
    g.damMile = -15.62;
    g.discharge = {2000, 5000, 10000, 20000, 40000};
    for (double mile : {-15.0, 40.0, 120.0}) {
        Station s;
        s.mile = mile;
        s.slope = mile < 0 ? 0.001 : 0.002;
        for (double q : g.discharge) {
            s.area.push_back(2000 * std::pow(q / 5000, 0.7));
            s.width.push_back(220 * std::pow(q / 5000, 0.12));
        }
        g.stations.push_back(s);
    }
    return g;
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

TEST(Router, CelerityAndWidthFromTheRating) {
    const Geometry g = gorge();
    const Station& s = g.stations[0];
    const Hydraulics h = StationHydraulics(g, s, 7000);
    EXPECT_NEAR(h.celerity, 5000 / (s.area[2] - s.area[1]), 1e-9);
    EXPECT_NEAR(h.width, s.width[1] + 0.4 * (s.width[2] - s.width[1]), 1e-9);
}

TEST(Router, DailyWaveLagsAttenuatesAndKeepsItsVolume) {
    // A peaking day: 5,000 cfs at night, 20,000 cfs from hour 10 to 18, ramps between.
    std::vector<double> in;
    for (int k = 1; k <= 3 * PerDay; ++k) {
        const double h = std::fmod(k * Step / 3600.0, 24.0);
        in.push_back(5000 + 15000 * std::clamp(std::min((h - 7) / 3, (21 - h) / 3), 0.0, 1.0));
    }
    const std::vector<double> miles{0, 30, 60, 100};
    const RoutingResult r = RouteFlow(gorge(), 110, in, Step, miles, PerDay);
    const double inflowDay = std::accumulate(in.begin() + 2 * PerDay, in.end(), 0.0);
    double lastPeakHour = -1, lastPeak = 1e9;
    for (size_t p = 0; p < miles.size(); ++p) {
        double volume = 0, peak = 0, peakHour = 0;
        for (int k = 2 * PerDay; k < 3 * PerDay; ++k) {
            const double q = r.flow[size_t(k)][p];
            volume += q;
            if (q > peak) peak = q, peakHour = (k - 2 * PerDay) * Step / 3600.0;
        }
        EXPECT_NEAR(volume, inflowDay, 0.001 * inflowDay) << "mile " << miles[p];
        if (p > 0) {  // later and lower downstream; the peak moves a few miles an hour
            const double mph = (miles[p] - miles[p - 1]) / std::fmod(peakHour - lastPeakHour + 24, 24);
            EXPECT_TRUE(mph > 2 && mph < 15) << "mile " << miles[p] << ": " << mph;
            EXPECT_LT(peak, lastPeak);
        }
        lastPeakHour = peakHour, lastPeak = peak;
    }
}

TEST(RouterFiles, ControlInflowAndOutput) {
    TestFolder f;
    f.Write("usflowON.in", "usflowON inflowON.dat 4 40 caddqd.In 1\r\n-15.4\r\n-5.1\r\n14.7\r\n");
    const RoutingControl c = ReadRoutingControl(f.File("usflowON.in"));
    EXPECT_EQ(c.inflowFile, "inflowON.dat");
    EXPECT_EQ(c.outMiles, (std::vector<double>{-15.4, -5.1, 14.7}));
    // The inflow file is found whatever the letter case of its name.
    f.Write("inflowOn.dat", "0.066667 141.585000\r\n0.133333 283.170000\r\n");
    EXPECT_NEAR(ReadInflow(FindFile(f.File("inflowON.dat")), 4).at(0), 5000, 1e-9);  // 141.585 m3/s at 0.028317 m3/ft3

    RoutingResult r;
    r.flow = {{5000, 6000}, {5500, 6500}};
    WriteRouted(f.File("out.dat"), r, 4);
    EXPECT_EQ(f.Read("out.dat"), "    0.0667    141.58500    169.90200\r\n    0.1333    155.74350    184.06050\r\n");
}

TEST(RouterFiles, BadFilesNameTheLine) {
    TestFolder f;
    auto fails = [](auto fn, const char* part) { return errorText(fn).find(part) != std::string::npos; };
    f.Write("in.dat", "0.066667 10\r\n0.2 11\r\n");
    EXPECT_TRUE(fails([&] { ReadInflow(f.File("in.dat"), 4); }, "in.dat:2: expected the time 0.133333"));
    f.Write("g.In", "title\r\ndam_mile -15.62\r\ndischarges 1000 2000\r\nstation 0 0.001 500 400 100 110\r\n");
    EXPECT_TRUE(fails([&] { ReadGeometry(f.File("g.In")); }, "g.In:4: expected areas rising"));
}
