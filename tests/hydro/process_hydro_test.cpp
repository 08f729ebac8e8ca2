#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "hydrology/flow_engine.h"
#include "hydrology/process_hydro.h"
#include "ospsw95b/peakshav_files.h"
#include "support/collect_messages.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;
using osm::test::TestFolder;

namespace {

// Two reaches below the dam row (miles 0.5 to 20.62 to 40), modified low
// fluctuating limits, and the default river's simulator data in hydro/.
struct HydroRiver {
    TestFolder f;
    Model m;
    std::string hydro;

    HydroRiver() {
        f.Write("Reaches.csv", "\"Test river\",3,2,3\r\n\"Reach\",\"Label\",\"Upper\",\"Lower\"\r\n"
                               "1,\"Dam\",0,0.5\r\n2,\"Upper gorge\",0.5,20.62\r\n3,\"Lower gorge\",20.62,40\r\n");
        BuildMonthsTable(m);
        ReadReachFile(m, f.File("Reaches.csv"));
        m.main.ProgramFolder = f.path();
        Physical& p = m.physical;
        p.MaxFlowLimit = 25000, p.UpRamp = 4000, p.DownRamp = 2500;
        const int32_t vols[] = {600000, 800000, 99999999}, limits[] = {5000, 6000, 8000};
        for (int i = 1; i <= 3; ++i) p.ChangeVol(i) = vols[i - 1], p.ChangeLimit(i) = limits[i - 1];
        const float levels[] = {300000, 500000, 700000, 900000, 1200000, 2000000};
        for (int L = 1; L <= 6; ++L) p.VolLevel(L) = levels[L - 1];
        for (int mo = 1; mo <= 12; ++mo) {
            p.MaxDailyChange(mo) = 8000;
            for (int hr = 1; hr <= 24; ++hr) p.MinFlowMH(mo, hr) = hr >= 8 && hr <= 19 ? 8000.0f : 5000.0f;
        }
        hydro = f.File("hydro");
        std::filesystem::create_directories(hydro);
        for (const char* name : {"caddqd.In", "ospsw95b.dat"})
            std::filesystem::copy_file(std::string(OSM_SOURCE_DIR) + "/data/hydro/" + name, hydro + "/" + name);
    }
    void sizeTables() {
        m.physical.QAvgTable.redim(Bounds{0, 12}, Bounds{0, 6}, Bounds{0, 3});
        m.physical.QDiTable.redim(Bounds{0, 2}, Bounds{0, 12}, Bounds{0, 6}, Bounds{0, 3}, Bounds{0, 24});
    }
};

// A peakshav.out of February: the power value on line 16 behind leading blanks,
// an "id" line, and two records a day of the given hourly releases.
std::string peakshavOut(double weekday, double sunday) {
    std::string s;
    for (int i = 1; i <= 15; ++i) s += "header line " + std::to_string(i) + "\r\n";
    s += "   MONTH POWER VALUE =       4321098  trailing\r\n";
    s += "identical is not the id line only because it starts so\r\n";
    for (int day = 1; day <= 29; ++day)
        for (int half = 0; half < 2; ++half) {
            s += "d" + std::to_string(day);
            for (int hr = 1; hr <= 12; ++hr)
                s += " " + std::to_string((day - 4) % 7 == 0 ? sunday : weekday + half * 12 + hr);
            s += "\r\n";
        }
    return s;
}

}  // namespace

TEST(ProcessHydroFiles, ReleaseDrivenDailyChangeAndRouterControlMiles) {
    HydroRiver h;
    // The release-driven rule overwrites the daily change: 700,000 af is below the second volume.
    Physical& p = h.m.physical;
    p.ReleaseDrivenChange = true;
    WritePeakshav(h.m, 3, 5, h.hydro);
    EXPECT_EQ(p.MaxDailyChange(5), 6000);
    EXPECT_EQ(hydro::ReadParameters(h.f.File("hydro/peakshav.par")).maxDailyChange, 6000);

    // Mid miles from the gauge: (0.5 + 20.62)/2 - 15.62 and (20.62 + 40)/2 - 15.62.
    WriteRoutingControl(h.m, "OF", h.hydro);
    EXPECT_EQ(h.f.Read("hydro/usflowOF.in"), "usflowOF inflowOF.dat 4 40 caddqd.In 1\r\n-5.1\r\n14.7\r\n");
}

TEST(ProcessHydroFiles, SchedulerOutputGivesPowerReleaseAndFlatness) {
    HydroRiver h;
    Processor pr;
    h.f.Write("hydro/peakshav.out", peakshavOut(6000, 3000));
    ReadPeakshavOut(h.m, pr, 2, 2, h.f.File("hydro/peakshav.out"));
    EXPECT_EQ(h.m.physical.PowerVal(2, 2), 4321098.0f);
    EXPECT_FALSE(pr.FlatRelease);
    EXPECT_EQ(pr.HourSeries(24, 0), 6024);
    EXPECT_EQ(pr.HourSeries(3 * 24 + 5, 0), 3000);  // the 4th is a Sunday
    h.f.Write("hydro/noid.out", "one\r\ntwo\r\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadPeakshavOut(h.m, pr, 1, 2, h.f.File("hydro/noid.out")); }), {"noid.out:3"}));
}

TEST(ProcessHydroFiles, RoutedFlowsFillTheLastCycle) {
    HydroRiver h;
    test::CollectMessages sink;
    h.m.messages = &sink;
    h.sizeTables();
    Processor pr;
    auto routed = [](int records) {
        std::string s;
        for (int n = 1; n <= records; ++n) s += std::to_string(n * 4 / 60.0) + " " + std::to_string(n * 0.01) + " 1\r\n";
        return s;
    };
    h.f.Write("hydro/usflowON.dat", routed(1080));
    ReadRouted(h.m, pr, 3, h.f.File("hydro/usflowON.dat"));
    AddRoutedCycle(h.m, pr, 1, 4, 3);
    AddRoutedCycle(h.m, pr, 2, 4, 3);
    const Physical& p = h.m.physical;
    // Hour 50 is record 750: 7.5 m3/s x 35.315.
    EXPECT_FLOAT_EQ(p.QDiTable(1, 3, 4, 2, 2), 7.5f * 35.315f);
    // The mean of both day types at the first reach: hours 49..72, 0.15 m3/s an hour.
    EXPECT_NEAR(p.QAvgTable(3, 4, 2), 0.15 * (49 + 72) / 2 * 35.315, 1e-3);

    // More cycles than asked: the last one kept is whole, so the run goes on with the message.
    h.f.Write("hydro/usflowOF.dat", routed(1200));
    ReadRouted(h.m, pr, 3, h.f.File("hydro/usflowOF.dat"));
    ASSERT_EQ(sink.seen.size(), 1u);
    EXPECT_EQ(sink.seen[0].text, "USFLOW did not simulate maxcycles for mar");
}

// A router or scheduler output that does not cover every hour and reach, or that
// carries a negative flow, fails the run instead of leaving hours of no flow.
TEST(ProcessHydroFiles, ShortOrNegativeOutputsAreFaults) {
    HydroRiver h;
    test::CollectMessages sink;
    h.m.messages = &sink;
    h.sizeTables();
    Processor pr;
    auto routed = [](int records, const std::string& last) {
        std::string s;
        for (int n = 1; n < records; ++n) s += std::to_string(n * 4 / 60.0) + " 1 1\r\n";
        return s + last;
    };
    const std::string path = h.f.File("hydro/usflowON.dat");
    h.f.Write("hydro/usflowON.dat", "0.066667 1 1\r\n");  // one line
    EXPECT_TRUE(Holds(FaultText([&] { ReadRouted(h.m, pr, 3, path); }), {"usflowON.dat", "0 of the 72 hours", "mar"}));
    h.f.Write("hydro/usflowON.dat", routed(900, "60 1 1\r\n"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRouted(h.m, pr, 3, path); }), {"60 of the 72 hours"}));
    h.f.Write("hydro/usflowON.dat", routed(1080, "72 1\r\n"));  // the last record lacks a reach
    EXPECT_TRUE(Holds(FaultText([&] { ReadRouted(h.m, pr, 3, path); }), {"usflowON.dat", "reach 3", "the end of the file"}));
    h.f.Write("hydro/usflowON.dat", routed(1080, "72 1\r\n72.066667 1 1\r\n"));  // and one within the file
    EXPECT_TRUE(Holds(FaultText([&] { ReadRouted(h.m, pr, 3, path); }),
                      {"usflowON.dat:1081", "reach 3 on line 1080", "a new line"}));
    h.f.Write("hydro/usflowON.dat", routed(3, "0.2 1 1\r\n0.266667 1 -4\r\n"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRouted(h.m, pr, 3, path); }), {"usflowON.dat:4", "reach 3", "0 or more", "'-4'"}));
    h.f.Write("hydro/usflowON.dat", "0.066667 1 1 1\r\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadRouted(h.m, pr, 3, path); }), {"usflowON.dat:1", "more flows"}));
    EXPECT_TRUE(sink.seen.empty());

    std::string out = peakshavOut(-5000, 3000);
    h.f.Write("hydro/neg.out", out);
    EXPECT_TRUE(Holds(FaultText([&] { ReadPeakshavOut(h.m, pr, 1, 2, h.f.File("hydro/neg.out")); }),
                      {"neg.out:18", "hourly release (0 or more)"}));
    h.f.Write("hydro/early.out", "one\r\nid\r\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadPeakshavOut(h.m, pr, 1, 2, h.f.File("hydro/early.out")); }),
                      {"early.out:2", "power value on line 16"}));
}

// The README's own example, from the folder above a relative program folder.
TEST(ProcessHydro, ReadmeCommandWithARelativeFolder) {
    HydroRiver h;
    h.m.physical.StsTitle = "No action";
    h.sizeTables();
    std::filesystem::create_directories(h.f.File("data"));
    std::filesystem::rename(h.hydro, h.f.File("data/hydro"));
    std::filesystem::rename(h.f.File("Reaches.csv"), h.f.File("data/Reaches.csv"));
    WriteSts(h.m, h.f.File("data/noaction.sts"));
    h.f.Write("data/trial.sts", "the old file\r\n");
    const std::string cmd = "cd " + h.f.path() + " && " + OSM_BATCH_EXE +
                            " --folder data process-hydro --from noaction.sts --out trial.sts"
                            " --title \"Trial: peaking with lower ramps\" >/dev/null 2>err.txt";
    const int status = std::system(cmd.c_str());
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << h.f.Read("err.txt");
    EXPECT_EQ(h.f.Read("data/trial.sts").rfind("Trial: peaking with lower ramps\r\n", 0), 0u);
}

TEST(ProcessHydro, FailuresLeaveTheOldFileAndTheTables) {
    HydroRiver h;
    h.f.Write("made.sts", "the old file\r\n");
    h.m.physical.PowerVal(1, 1) = 42;
    HydroSetup s;
    s.hydroFolder = h.hydro, s.router = USFLOW_EXE, s.timeLimit = std::chrono::seconds(30);
    auto fails = [&](std::initializer_list<const char*> parts) {
        return Holds(FaultText([&] { ProcessHydro(h.m, "made.sts", "T", s); }), parts);
    };
    s.scheduler = "/bin/false";
    EXPECT_TRUE(fails({"false", "exit status 1"}));
    s.scheduler = OSPSW95B_EXE;
    std::filesystem::remove(h.hydro + "/caddqd.In");
    EXPECT_TRUE(fails({"USFlow", "exit status 1", "caddqd.In: cannot be opened"}));

    EXPECT_EQ(h.f.Read("made.sts"), "the old file\r\n");
    EXPECT_EQ(h.m.physical.PowerVal(1, 1), 42);
}

TEST(ProcessHydro, BatchCommandRunsThePipelineFromAnotherScenariosHead) {
    HydroRiver h;
    h.m.physical.StsTitle = "Head only";
    h.sizeTables();
    WriteSts(h.m, h.f.File("full.sts"));
    const std::string full = h.f.Read("full.sts");
    // The head down to the volume levels is enough.
    h.f.Write("limits.flow", full.substr(0, full.find("\r\n", full.find("Monthly Release Volumes")) + 2));
    const std::string cmd = std::string(OSM_BATCH_EXE) + " --folder " + h.f.path() + " process-hydro --from " +
                            h.f.File("limits.flow") + " --out made.sts >/dev/null 2>" + h.f.File("err.txt");
    const int status = std::system(cmd.c_str());
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << h.f.Read("err.txt");
    auto back = std::make_unique<Model>();
    BuildMonthsTable(*back);
    ReadReachFile(*back, h.f.File("Reaches.csv"));
    ReadSts(*back, h.f.File("made.sts"), false);
    const Physical& p = back->physical;
    EXPECT_EQ(p.StsTitle, "Head only");
    for (int L = 2; L <= 6; ++L) EXPECT_GT(p.PowerVal(1, L), p.PowerVal(1, L - 1));
    // 2,000,000 af in January is above the 25,000 cfs limit: flat everywhere.
    const float flat = p.QDiTable(1, 1, 6, 2, 1);
    EXPECT_NEAR(flat, 2000000 * 43560.0 / (31 * 86400.0), 1);
    for (int hr = 1; hr <= 24; ++hr) EXPECT_EQ(p.QDiTable(2, 1, 6, 3, hr), flat);
    // A routed month: 700,000 af over 27 weekdays and 4 Sundays of July 1996, back in cfs;
    // the same mean at every reach, a different daily wave below.
    double cfsDays = 0;
    for (int hr = 1; hr <= 24; ++hr) cfsDays += (27 * p.QDiTable(1, 7, 3, 2, hr) + 4 * p.QDiTable(2, 7, 3, 2, hr)) / 24.0;
    EXPECT_NEAR(cfsDays, 700000 * 43560.0 / 86400.0, 0.01 * cfsDays);
    EXPECT_EQ(p.QAvgTable(7, 3, 2), p.QAvgTable(7, 3, 3));
    EXPECT_NE(p.QDiTable(1, 7, 3, 2, 12), p.QDiTable(1, 7, 3, 3, 12));
}
