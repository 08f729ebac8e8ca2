// The scenario pipeline: the texts of every file it writes, the reading of the
// simulators' files, the whole pipeline on a small river, and its failures.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "core/external_program.h"
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
        p.StsTitle = "Old title";
        p.MaxFlowLimit = 25000;
        p.UpRamp = 4000;
        p.DownRamp = 2500;
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
    HydroSetup setup() const {
        HydroSetup s;
        s.hydroFolder = hydro;
        s.scheduler = OSPSW95B_EXE;
        s.router = USFLOW_EXE;
        s.timeLimit = std::chrono::seconds(30);
        return s;
    }
    // A model of this river with the scenario file read in.
    std::unique_ptr<Model> readBack(const std::string& sts) const {
        auto back = std::make_unique<Model>();
        BuildMonthsTable(*back);
        ReadReachFile(*back, f.File("Reaches.csv"));
        ReadSts(*back, f.File(sts), false);
        return back;
    }
};

// A peakshav.out of February: the power value on line 16 behind leading blanks,
// an "id" line, and two records a day of the given hourly releases.
std::string peakshavOut(double weekday, double sunday, double rise = 1) {
    std::string s;
    for (int i = 1; i <= 15; ++i) s += "header line " + std::to_string(i) + "\r\n";
    s += "   MONTH POWER VALUE =       4321098  trailing\r\n";
    s += "identical is not the id line only because it starts so\r\n";
    for (int day = 1; day <= 29; ++day)
        for (int half = 0; half < 2; ++half) {
            s += "d" + std::to_string(day);
            for (int hr = 1; hr <= 12; ++hr)
                s += " " + std::to_string((day - 4) % 7 == 0 ? sunday : weekday + rise * (half * 12 + hr));
            s += "\r\n";
        }
    return s;
}

class Progress : public HydroProgress {
public:
    std::vector<std::string> seen;
    void Show(const std::string& volume, const std::string& month, int step, int steps) override {
        seen.push_back(volume + " " + month + " " + std::to_string(step) + "/" + std::to_string(steps));
    }
};

}  // namespace

TEST(ProcessHydroFiles, SchedulerFilesReadBackByTheSchedulerAndRouterControlText) {
    HydroRiver h;
    WritePeakshav(h.m, 2, 2, h.hydro);
    EXPECT_EQ(h.f.Read("hydro/peakshav.ctr"),
              "filename = peakshav.ctr\r\nCONTROL FILE FOR OSPSW95B\r\n*\r\npeakshav.par\r\n29\r\nfeb\r\n"
              "cyfeb96.prn\r\nfeb96.hpr\r\npeakshav.out\r\n");
    const hydro::Parameters par = hydro::ReadParameters(h.f.File("hydro/peakshav.par"));
    EXPECT_EQ(par.volume, 500000);
    EXPECT_EQ(par.upRamp, 4000);
    EXPECT_EQ(par.downRamp, 2500);
    EXPECT_EQ(par.maxFlow, 25000);
    EXPECT_EQ(par.maxDailyChange, 8000);
    EXPECT_EQ(par.reservoirElev, 3674.8);
    ASSERT_EQ(par.minFlow.size(), 24u);
    for (size_t i = 0; i < 24; ++i) EXPECT_EQ(par.minFlow[i], i >= 7 && i <= 18 ? 8000 : 5000) << i;

    // The release-driven rule overwrites the daily change: 700,000 af is below
    // the second volume; above every volume the table keeps its value.
    Physical& p = h.m.physical;
    p.ReleaseDrivenChange = true;
    WritePeakshav(h.m, 3, 5, h.hydro);
    EXPECT_EQ(p.MaxDailyChange(5), 6000);
    EXPECT_EQ(hydro::ReadParameters(h.f.File("hydro/peakshav.par")).maxDailyChange, 6000);
    p.VolLevel(6) = 1e9f;
    WritePeakshav(h.m, 6, 7, h.hydro);
    EXPECT_EQ(p.MaxDailyChange(7), 8000);

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
    EXPECT_EQ(pr.HourSeries(1, 0), 6001);
    EXPECT_EQ(pr.HourSeries(24, 0), 6024);
    EXPECT_EQ(pr.HourSeries(3 * 24 + 5, 0), 3000);  // the 4th is a Sunday

    h.f.Write("hydro/flat.out", peakshavOut(7, 7, 0));
    ReadPeakshavOut(h.m, pr, 1, 2, h.f.File("hydro/flat.out"));
    EXPECT_TRUE(pr.FlatRelease);
    h.sizeTables();
    FillFlat(h.m, pr, 1, 2);
    EXPECT_EQ(h.m.physical.QDiTable(2, 2, 1, 3, 17), 7);
    EXPECT_EQ(h.m.physical.QAvgTable(2, 1, 2), 7);

    h.f.Write("hydro/noid.out", "one\r\ntwo\r\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadPeakshavOut(h.m, pr, 1, 2, h.f.File("hydro/noid.out")); }),
                      {"noid.out:3", "a line beginning \"id\""}));
}

TEST(ProcessHydroFiles, InflowFilesRampFourMinuteStepsInCubicMetres) {
    HydroRiver h;
    Processor pr;
    pr.HourSeries.redim(Bounds{0, 744}, Bounds{0, 0});
    // February: weekday hour h releases 1000 h cfs, Sundays (4, 11, 18, 25) 500.
    for (int k = 1; k <= 29 * 24; ++k)
        pr.HourSeries(k, 0) = ((k - 1) / 24 - 3) % 7 == 0 ? 500.0f : 1000.0f * static_cast<float>((k - 1) % 24 + 1);
    WriteInflowFiles(h.m, pr, 2, h.hydro);
    const std::string on = h.f.Read("hydro/inflowOn.dat");
    // First step: 24000 + (1000 - 24000)/15 cfs x 0.028317 = 636.1886 m3/s.
    EXPECT_EQ(on.substr(0, on.find('\n') + 1), "0.066667 636.188600\r\n");
    EXPECT_EQ(std::count(on.begin(), on.end(), '\n'), 3 * 24 * 15);
    // The last: hour 72 at the mean of hour 24, 24000 x 0.028317.
    EXPECT_EQ(on.substr(on.size() - 24), "\r\n72.000000 679.608000\r\n");
    const std::string of = h.f.Read("hydro/inflowOf.dat");
    EXPECT_EQ(of.substr(0, of.find('\n') + 1), "0.066667 14.158500\r\n");
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
    EXPECT_TRUE(sink.seen.empty());
    AddRoutedCycle(h.m, pr, 1, 4, 3);
    AddRoutedCycle(h.m, pr, 2, 4, 3);
    const Physical& p = h.m.physical;
    // Hour 50 is record 750: 7.5 m3/s x 35.315.
    EXPECT_FLOAT_EQ(p.QDiTable(1, 3, 4, 2, 2), 7.5f * 35.315f);
    EXPECT_FLOAT_EQ(p.QDiTable(2, 3, 4, 3, 24), 35.315f);
    // The mean of both day types at the first reach: hours 49..72, 0.15 m3/s an hour.
    EXPECT_NEAR(p.QAvgTable(3, 4, 2), 0.15 * (49 + 72) / 2 * 35.315, 1e-3);
    EXPECT_EQ(p.QAvgTable(3, 4, 3), p.QAvgTable(3, 4, 2));

    h.f.Write("hydro/usflowOF.dat", routed(900));
    ReadRouted(h.m, pr, 3, h.f.File("hydro/usflowOF.dat"));
    ASSERT_EQ(sink.seen.size(), 1u);
    EXPECT_EQ(sink.seen[0].text, "USFLOW did not simulate maxcycles for mar");
}

TEST(ProcessHydro, WholePipelineOnASmallRiver) {
    HydroRiver h;
    HydroSetup s = h.setup();
    Progress progress;
    s.progress = &progress;
    ProcessHydro(h.m, "made.sts", "Made by the pipeline", s);
    EXPECT_EQ(progress.seen.front(), "300,000 jan 1/72");
    EXPECT_EQ(progress.seen.back(), "2,000,000 dec 72/72");
    EXPECT_EQ(h.m.physical.StsTitle, "Made by the pipeline");

    const auto back = h.readBack("made.sts");
    const Physical& p = back->physical;
    EXPECT_EQ(p.MaxFlowLimit, 25000);
    for (int L = 2; L <= 6; ++L) EXPECT_GT(p.PowerVal(1, L), p.PowerVal(1, L - 1));
    // 2,000,000 af in January is above the 25,000 cfs limit: flat everywhere.
    const float flat = p.QDiTable(1, 1, 6, 2, 1);
    EXPECT_NEAR(flat, 2000000 * 43560.0 / (31 * 86400.0), 1);
    for (int hr = 1; hr <= 24; ++hr) EXPECT_EQ(p.QDiTable(2, 1, 6, 3, hr), flat);
    // A routed month: the same mean at every reach; the daily wave arrives later below.
    EXPECT_EQ(p.QAvgTable(7, 3, 2), p.QAvgTable(7, 3, 3));
    auto riseHour = [&](int r) {
        float lo = 1e9f, hi = 0;
        for (int hr = 1; hr <= 24; ++hr) lo = std::min(lo, p.QDiTable(1, 7, 3, r, hr)), hi = std::max(hi, p.QDiTable(1, 7, 3, r, hr));
        EXPECT_GT(hi - lo, 1000);
        int hr = 1;
        while (p.QDiTable(1, 7, 3, r, hr) > (lo + hi) / 2) ++hr;   // out of the peak
        while (p.QDiTable(1, 7, 3, r, hr) <= (lo + hi) / 2) ++hr;  // through the trough
        return hr;
    };
    EXPECT_GT(riseHour(3), riseHour(2));
}

TEST(ProcessHydro, FailuresLeaveTheOldFileAndTheTables) {
    HydroRiver h;
    h.f.Write("made.sts", "the old file\r\n");
    h.m.physical.PowerVal(1, 1) = 42;
    HydroSetup s = h.setup();
    auto fails = [&](std::initializer_list<const char*> parts) {
        return Holds(FaultText([&] { ProcessHydro(h.m, "made.sts", "T", s); }), parts);
    };
    s.scheduler = h.f.File("hydro/nowhere");
    EXPECT_TRUE(fails({"nowhere", "was not found"}));
    s.scheduler = "/bin/false";
    EXPECT_TRUE(fails({"false", "exit status 1"}));
    s.scheduler = "/bin/true";
    EXPECT_TRUE(fails({"true", "wrote no output file", "peakshav.out"}));
    s = h.setup();
    std::filesystem::remove(h.hydro + "/caddqd.In");
    EXPECT_TRUE(fails({"USFlow", "exit status 1", "caddqd.In: cannot be opened"}));

    EXPECT_EQ(h.f.Read("made.sts"), "the old file\r\n");
    EXPECT_EQ(h.m.physical.PowerVal(1, 1), 42);
    EXPECT_EQ(h.m.physical.StsTitle, "Old title");
}

TEST(ProcessHydro, ProgramsAreFoundInTheHydroFolderOrBesideTheProgram) {
    HydroRiver h;
    const std::string built = std::filesystem::path(OSPSW95B_EXE).parent_path().string();
    const HydroSetup s = DefaultHydroSetup(h.m, built);
    EXPECT_EQ(s.scheduler, built + "/ospsw95b");
    EXPECT_EQ(s.hydroFolder, h.hydro);
    std::filesystem::copy_file(USFLOW_EXE, h.hydro + "/USFlow");
    EXPECT_EQ(DefaultHydroSetup(h.m, built).router, h.hydro + "/USFlow");
    EXPECT_TRUE(Holds(FaultText([&] { DefaultHydroSetup(h.m, h.f.path()); }),
                      {"ospsw95b was not found in", h.hydro.c_str(), "nor in"}));
}

TEST(ExternalProgram, TimeLimitMissingFolderAndARun) {
    TestFolder f;
    EXPECT_TRUE(Holds(FaultText([&] { RunProgram({"/bin/sleep", {"5"}, f.path(), std::chrono::milliseconds(200), ""}); }),
                      {"sleep", "did not finish within 0.2 s"}));
    EXPECT_TRUE(Holds(FaultText([&] { RunProgram({"/bin/true", {}, f.File("missing"), std::chrono::seconds(5), ""}); }),
                      {"missing", "does not exist"}));
    RunProgram({"/bin/sh", {"-c", "echo made > out.txt"}, f.path(), std::chrono::seconds(5), "log.txt"});
    EXPECT_EQ(f.Read("out.txt"), "made\n");
}

TEST(ProcessHydro, BatchCommandMakesAScenarioFromAnotherOnesHead) {
    HydroRiver h;
    h.m.physical.StsTitle = "Head only";
    h.sizeTables();
    WriteSts(h.m, h.f.File("full.sts"));
    const std::string full = h.f.Read("full.sts");
    // The head down to the volume levels is enough.
    h.f.Write("limits.flow", full.substr(0, full.find("\r\n", full.find("Monthly Release Volumes")) + 2));
    h.f.Write("bad.flow", full.substr(0, full.find("\"Monthly Release Volumes\"")) + "\"Monthly Release Volumes\",5,4\r\n");
    auto batch = [&](const std::string& args) {
        const std::string cmd = std::string(OSM_BATCH_EXE) + " --folder " + h.f.path() + " process-hydro " + args +
                                " >/dev/null 2>" + h.f.File("err.txt");
        const int status = std::system(cmd.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    EXPECT_EQ(batch("--from " + h.f.File("limits.flow") + " --out made.sts"), 0) << h.f.Read("err.txt");
    const auto back = h.readBack("made.sts");
    EXPECT_EQ(back->physical.StsTitle, "Head only");
    EXPECT_GT(back->physical.PowerVal(12, 6), 0);

    EXPECT_EQ(batch("--from x.sts"), 2);
    EXPECT_TRUE(Holds(h.f.Read("err.txt"), {"process-hydro needs --from SCENARIO.sts and --out NAME.sts"}));
    EXPECT_EQ(batch("--from " + h.f.File("bad.flow") + " --out made.sts"), 1);
    EXPECT_TRUE(Holds(h.f.Read("err.txt"), {"process-hydro failed", "bad.flow:", "rising strictly from 0, found '4'"}));
}
