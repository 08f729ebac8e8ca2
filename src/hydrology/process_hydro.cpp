// The scenario pipeline: control and input files of the two simulators, their
// runs, and the reading of their results into the level tables.
#include "hydrology/process_hydro.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "core/external_program.h"
#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"
#include "hydrology/flow_engine.h"

namespace osm {

namespace fs = std::filesystem;

namespace {

constexpr int NLevels = 6;
constexpr int StepMinutes = 4;
constexpr double CubicMetresPerCubicFoot = 0.028317;
constexpr double CubicFeetPerCubicMetre = 35.315;

std::string in(const std::string& folder, const std::string& name) { return (fs::path(folder) / name).string(); }

std::string findProgram(const std::string& name, const std::string& hydroFolder, const std::string& besideDir) {
    for (const std::string& dir : {hydroFolder, besideDir}) {
        if (dir.empty()) continue;
        const fs::path p = fs::path(dir) / name;
        std::error_code ec;
        if (fs::is_regular_file(p, ec)) return p.string();
    }
    throw Fault("The program " + name + " was not found in " + hydroFolder +
                (besideDir.empty() ? "" : " nor in " + besideDir) + ".");
}

bool isSunday(const Main& mn, int month, int day) {
    const int first = mn.FirstSunday(month);
    return day >= first && (day - first) % 7 == 0;
}

void show(const HydroSetup& s, const Model& m, int L, int month) {
    if (!s.progress) return;
    s.progress->Show(Format(m.physical.VolLevel(L), "###,###,###"), m.main.MonthName(month),
                     (L - 1) * 12 + month, NLevels * 12);
}

void run(const HydroSetup& s, const std::string& program, const std::string& arg, const std::string& output) {
    const std::string out = in(s.hydroFolder, output);
    std::error_code ec;
    fs::remove(out, ec);
    RunProgram({program, {arg}, s.hydroFolder, s.timeLimit, fs::path(program).filename().string() + ".log"});
    RequireOutput(program, out);
}

// Copies the finished file into the program folder through a temporary file, so
// a failed copy leaves the old file whole.
void copyInto(const std::string& from, const std::string& to) {
    const std::string tmp = to + ".part";
    std::error_code ec;
    fs::copy_file(from, tmp, fs::copy_options::overwrite_existing, ec);
    try {
        if (ec) throw FileFault(to, ec.message());
        ReplaceDurably(tmp, to);
    } catch (const Fault& e) {
        fs::remove(tmp, ec);
        throw FileFault(to, std::string("cannot copy the new scenario file here (") + e.what() +
                                "); the old file is unchanged");
    }
}

}  // namespace

double ReservoirElev(int month) {
    static const std::array<double, 12> elev = {3677.7, 3674.8, 3673.2, 3673.8, 3681.2, 3690.5,
                                                3691.6, 3688.4, 3686.3, 3685.4, 3683.7, 3681.6};
    return elev.at(static_cast<size_t>(month - 1));
}

HydroSetup DefaultHydroSetup(const Model& m, const std::string& besideDir) {
    HydroSetup s;
    s.hydroFolder = InFolder(m, "hydro");
    s.scheduler = findProgram("ospsw95b", s.hydroFolder, besideDir);
    s.router = findProgram("USFlow", s.hydroFolder, besideDir);
    return s;
}

void WriteRoutingControl(const Model& m, const std::string& tag, const std::string& folder) {
    const Main& mn = m.main;
    TextWriter out(in(folder, "usflow" + tag + ".in"));
    out.Line("usflow" + tag + " inflow" + tag + ".dat " + NumText(StepMinutes) + " " +
             NumText(mn.ReachMile(mn.LastReach, 1)) + " caddqd.In 1");
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const double mid = (static_cast<double>(mn.ReachMile(r, 0)) + mn.ReachMile(r, 1)) / 2 - HarlFerryMile;
        out.Line(Format(mid, "0.0"));
    }
    out.Commit();
}

void WritePeakshav(Model& m, int L, int month, const std::string& folder) {
    const Main& mn = m.main;
    Physical& p = m.physical;
    TextWriter ctr(in(folder, "peakshav.ctr"));
    for (const std::string& s :
         {std::string("filename = peakshav.ctr"), std::string("CONTROL FILE FOR OSPSW95B"), std::string("*"),
          std::string("peakshav.par"), NumText(mn.DaysInMonth(month)), mn.MonthName(month),
          "cy" + mn.MonthName(month) + "96.prn", mn.MonthName(month) + "96.hpr", std::string("peakshav.out")})
        ctr.Line(s);
    ctr.Commit();

    if (p.ReleaseDrivenChange)
        for (int i = 1; i <= 3; ++i)
            if (p.VolLevel(L) < static_cast<float>(p.ChangeVol(i))) {
                p.MaxDailyChange(month) = static_cast<float>(p.ChangeLimit(i));
                break;
            }
    TextWriter par(in(folder, "peakshav.par"));
    for (const char* s : {"filename = peakshav.par", "D_VARNOLD", "10/24/96", "PARAMETER FILE FOR OSPS02g ver 1.2",
                          "REMARK: USED FOR PHASE II HYDRO OPT RESEARCH", "REMARK: REPRESENTATIVE ___",
                          "REMARK: DIURNAL SCENARIO _____",
                          "============================================================", "*"})
        par.Line(s);
    // The comment starts at column 23.
    auto value = [&](const std::string& v, const std::string& comment) {
        par.Line(v + std::string(v.size() < 22 ? 22 - v.size() : 1, ' ') + comment);
    };
    value(NumText(p.VolLevel(L)), "{release volume (af/month)}");
    value(NumText(p.UpRamp), "{upramp rate (cfs/hr)}");
    value(NumText(p.DownRamp), "{downramp rate (cfs/hr)}");
    value(NumText(p.MaxFlowLimit), "{maximum flow constraint (cfs)}");
    value(NumText(p.MaxDailyChange(month)), "{maximum daily change constraint (cfs)}");
    value(NumText(ReservoirElev(month)), "{reservoir elevation (ft above msl)}");
    for (int h = 1; h <= 24; ++h)
        value(NumText(p.MinFlowMH(month, h)), "{hour  " + NumText(h) + " minimum flow (cfs) }");
    par.Line("");
    par.Commit();
}

void ReadPeakshavOut(Model& m, Processor& pr, int L, int month, const std::string& path) {
    TextReader rd(path, TextReader::Mode::Blanks);
    for (int i = 1;; ++i) {
        std::string line = rd.Line("a line beginning \"id\" before the hourly releases");
        line.erase(0, std::min(line.size(), line.find_first_not_of(" \t")));
        if (i == 16) m.physical.PowerVal(month, L) = Sng(Val(line.size() > 20 ? line.substr(20, 13) : ""));
        if (line.rfind("id", 0) == 0) {
            if (i <= 16) rd.Fail("the power value on line 16, before the line beginning \"id\"", line);
            break;
        }
    }
    const int days = static_cast<int>(m.main.DaysInMonth(month));
    pr.HourSeries.redim(Bounds{0, 744}, Bounds{0, 0});
    pr.FlatRelease = true;
    int k = 0;
    for (int day = 1; day <= days; ++day)
        for (int rec = 1; rec <= 2; ++rec) {
            rd.Text("the label of day " + NumText(day));
            for (int h = 1; h <= 12; ++h) {
                ++k;
                pr.HourSeries(k, 0) = rd.NonNegative("an hourly release");
                if (k > 1 && pr.HourSeries(k, 0) != pr.HourSeries(k - 1, 0)) pr.FlatRelease = false;
            }
        }
}

void WriteInflowFiles(const Model& m, const Processor& pr, int month, const std::string& folder) {
    const Main& mn = m.main;
    const int days = static_cast<int>(mn.DaysInMonth(month));
    std::array<std::array<double, 25>, 3> mean{};
    std::array<int, 3> count{};
    for (int day = 1; day <= days; ++day) {
        const size_t d = isSunday(mn, month, day) ? 2 : 1;
        ++count[d];
        for (int h = 1; h <= 24; ++h) mean[d][static_cast<size_t>(h)] += pr.HourSeries((day - 1) * 24 + h, 0);
    }
    for (size_t d = 1; d <= 2; ++d)
        for (size_t h = 1; h <= 24; ++h) mean[d][h] /= count[d];

    for (size_t d = 1; d <= 2; ++d) {
        TextWriter out(in(folder, d == 1 ? "inflowOn.dat" : "inflowOf.dat"), TextWriter::Mode::Blanks);
        for (int c = 1; c <= pr.MaxCycles; ++c)
            for (int h = 1; h <= 24; ++h) {
                const size_t prev = h == 1 ? 24 : static_cast<size_t>(h - 1);
                const double slope = (mean[d][static_cast<size_t>(h)] - mean[d][prev]) / (60.0 / StepMinutes);
                for (int k = 1; k <= 60 / StepMinutes; ++k) {
                    const double flow = (mean[d][prev] + k * slope) * CubicMetresPerCubicFoot;
                    const double time = (c - 1) * 24 + (h - 1) + StepMinutes * k / 60.0;
                    out.Bare(Format(time, "0.000000")).Bare(Format(flow, "0.000000"));
                    out.EndRecord();
                }
            }
        out.Commit();
    }
}

void ReadRouted(Model& m, Processor& pr, int month, const std::string& path) {
    const Main& mn = m.main;
    const int hours = pr.MaxCycles * 24;
    pr.HourSeries.redim(Bounds{0, hours}, Bounds{0, mn.NReaches});
    TextReader rd(path, TextReader::Mode::Blanks);
    int records = 0, hour = 0, lastLine = 0;
    // One record a line: a time, then a flow for every reach.
    while (!rd.AtEnd()) {
        rd.Number("a time");
        const int line = rd.fieldLine();
        if (line == lastLine) rd.Fail("the end of the record after the flow at reach " + NumText(mn.LastReach), "more flows");
        lastLine = line;
        ++records;
        const bool onHour = records % (60 / StepMinutes) == 0;
        if (onHour) hour = records * StepMinutes / 60;
        for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
            const std::string what = "the flow at reach " + NumText(r);
            const double q = rd.NonNegative(what);
            if (rd.fieldLine() != line)
                rd.Fail(what + " on line " + NumText(line) + " (a record holds a flow for every reach)", "a new line");
            if (onHour && hour <= hours) pr.HourSeries(hour, r) = Sng(q * CubicFeetPerCubicMetre);
        }
    }
    // Only the last cycle is kept: a file that stops before its end would leave
    // hours of no flow in the scenario.
    if (hour < hours)
        throw FileFault(path, "holds " + NumText(hour) + " of the " + NumText(hours) + " hours routed for " +
                                  mn.MonthName(month) + " (USFLOW did not simulate maxcycles); the run fails and "
                                  "the old scenario file stays");
    if (hour > hours)
        ShowMessage(m, "short routing", "USFLOW did not simulate maxcycles for " + mn.MonthName(month));
}

void AddRoutedCycle(Model& m, const Processor& pr, int d, int L, int month) {
    const Main& mn = m.main;
    Physical& p = m.physical;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
        for (int h = 1; h <= 24; ++h) {
            const int k = (pr.MaxCycles - 1) * 24 + h;
            p.QDiTable(d, month, L, r, h) += pr.HourSeries(k, r);
            if (r == mn.FirstReach) p.QAvgTable(month, L, r) += pr.HourSeries(k, r);
        }
    if (d == 2) {
        p.QAvgTable(month, L, mn.FirstReach) /= 48.0f;
        for (int r = mn.FirstReach + 1; r <= mn.LastReach; ++r)
            p.QAvgTable(month, L, r) = p.QAvgTable(month, L, mn.FirstReach);
    }
}

void FillFlat(Model& m, const Processor& pr, int L, int month) {
    const Main& mn = m.main;
    Physical& p = m.physical;
    const float q = pr.HourSeries(1, 0);
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        p.QAvgTable(month, L, r) = q;
        for (int d = 1; d <= 2; ++d)
            for (int h = 1; h <= 24; ++h) p.QDiTable(d, month, L, r, h) = q;
    }
}

void ReadFlowParameters(Model& m, const std::string& path) {
    Table1<float> levels{"VolLevel"};
    levels.redim(Bounds{0, NLevels});
    {
        TextReader rd(path);
        // Items before the volume levels: title, two parameter lines, month heads,
        // daily change, two heads, 24 hours, one skipped line.
        for (int i = 0; i < 32; ++i) rd.SkipLine("the scenario header");
        if (rd.Text("\"Monthly Release Volumes\"") != "Monthly Release Volumes")
            rd.Fail("\"Monthly Release Volumes\"", "another line");
        for (int L = 1; L <= NLevels; ++L) {
            levels(L) = rd.Single("a volume level");
            if (levels(L) <= levels(L - 1)) rd.Fail("volume levels rising strictly from 0", NumText(levels(L)));
        }
    }
    ReadSts(m, path, true);
    m.physical.VolLevel = std::move(levels);
}

void ProcessHydro(Model& m, const std::string& stsName, const std::string& title, const HydroSetup& given) {
    const Main& mn = m.main;
    // The programs run in the hydro folder: a path relative to this process's
    // working directory would name nothing there.
    HydroSetup setup = given;
    for (std::string* path : {&setup.hydroFolder, &setup.scheduler, &setup.router})
        if (!path->empty()) *path = fs::absolute(*path).lexically_normal().string();
    const std::string folder = setup.hydroFolder;
    if (!fs::is_directory(folder)) throw Fault("The hydro folder " + folder + " does not exist.");
    const Physical saved = m.physical;
    try {
        Physical& p = m.physical;
        p.StsTitle = title;
        p.PowerVal.redim(Bounds{0, 12}, Bounds{0, NLevels});
        p.QAvgTable.redim(Bounds{0, 12}, Bounds{0, NLevels}, Bounds{0, mn.NReaches});
        p.QDiTable.redim(Bounds{0, 2}, Bounds{0, 12}, Bounds{0, NLevels}, Bounds{0, mn.NReaches}, Bounds{0, 24});
        WriteRoutingControl(m, "ON", folder);
        WriteRoutingControl(m, "OF", folder);
        Processor pr;
        pr.MaxCycles = 3;
        for (int L = 1; L <= NLevels; ++L)
            for (int month = 1; month <= 12; ++month) {
                show(setup, m, L, month);
                WritePeakshav(m, L, month, folder);
                run(setup, setup.scheduler, "peakshav.ctr", "peakshav.out");
                show(setup, m, L, month);
                ReadPeakshavOut(m, pr, L, month, in(folder, "peakshav.out"));
                if (pr.FlatRelease) {
                    FillFlat(m, pr, L, month);
                    continue;
                }
                WriteInflowFiles(m, pr, month, folder);
                for (int d = 1; d <= 2; ++d) {
                    const std::string tag = d == 1 ? "ON" : "OF";
                    run(setup, setup.router, "usflow" + tag + ".in", "usflow" + tag + ".dat");
                    ReadRouted(m, pr, month, in(folder, "usflow" + tag + ".dat"));
                    AddRoutedCycle(m, pr, d, L, month);
                    show(setup, m, L, month);
                }
            }
        const std::string made = in(folder, stsName);
        WriteSts(m, made);
        copyInto(made, InFolder(m, fs::path(stsName).filename().string()));
    } catch (...) {
        m.physical = saved;
        throw;
    }
}

}  // namespace osm
