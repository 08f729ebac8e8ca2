#include "core/start_up.h"

#include <array>
#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/results_store.h"
#include "core/textfile.h"
#include "core/util.h"
#include "hydrology/flow_engine.h"
#include "hydrology/river_temperature.h"
#include "hydrology/stage_tables.h"
#include "population/catch_data.h"
#include "population/population_file.h"
#include "presentation/graph_table.h"
#include "presentation/graphics_setup.h"
#include "presentation/legends.h"
#include "presentation/map_layers.h"
#include "production/production_file.h"
#include "production/production_steps.h"
#include "recreation/recreation_steps.h"
#include "sediment/morphology_sheets.h"
#include "sediment/physical_parameters.h"
#include "sediment/storage_potential.h"

namespace osm {

namespace fs = std::filesystem;

void RequireFile(const std::string& path) {
    if (!FileExists(path))
        throw Fault("missing required file: " + path +
                    " (the program folder must hold it; see data/README.md)");
}

std::string StartMessage(const std::string& folder) {
    const std::string path = (fs::path(folder) / "start_message.txt").string();
    RequireFile(path);
    TextReader in(path);
    std::string text;
    while (!in.AtEnd()) text += in.Line("a line of text");
    return text;
}

namespace {

void readDiurnalScenarios(Model& m) {
    const std::string path = m.main.DiurnalFile;
    RequireFile(path);
    TextReader in(path, TextReader::Mode::Blanks);
    Physical& p = m.physical;
    int n = 0;
    std::array<std::string, 10> names;
    while (!in.AtEnd()) {
        if (n == 10) in.Fail("at most 10 scenario names", in.Text("a scenario name"));
        names[static_cast<size_t>(n++)] = in.Text("a scenario name");
    }
    // The diurnal codes of the release file count from 1 into this list.
    if (n == 0) in.Fail("at least one scenario name (a .sts file of the program folder, without .sts)", "");
    for (int k = 1; k <= n; ++k) p.DiurnalName(k) = names[static_cast<size_t>(k - 1)];
    p.NDiurnal = static_cast<int16_t>(n);
}

std::string option(const StartOptions& o, const std::string& kind, const std::string& fallback) {
    const auto it = o.files.find(kind);
    return it == o.files.end() ? fallback : it->second;
}

void buildPaths(Model& m, const StartOptions& o) {
    Main& mn = m.main;
    auto in = [&](const std::string& name) { return InFolder(m, name); };
    mn.DiurnalFile = in("diurnal_scenarios.txt");
    mn.StartMessageFile = in("start_message.txt");
    mn.GrsFile = option(o, "grs", in("default.grs"));
    mn.PhyFile = option(o, "phy", in("default.phy"));
    mn.BhpFile = option(o, "bhp", in("default.bhp"));
    mn.FisFile = option(o, "fis", in("default.fis"));
    mn.RecFile = option(o, "rec", in("default.rec"));
    mn.TrbFile = option(o, "trb", in("default.trb"));
    mn.OutFile = in("default.out");
    // These two are named without a folder and are looked for in the program folder.
    mn.ExpFile = option(o, "exp", "default.exp");
    mn.StsFile = "noaction.sts";
    mn.ReachFile = option(o, "reach-breaks", in("Reaches.csv"));
    mn.GraphLegFile = in("graphleg.txt");
    mn.ModelMdeFile = in("model.mde");
    mn.ReachLabelsFile = in("Reachlabels.csv");
    mn.CampLabelsFile = in("CampingBeaches.csv");
    mn.RiverMifFile = in("ORRiv.mif");
    mn.LakesMifFile = in("Lakes.mif");
    mn.TribsMifFile = in("tribs.mif");
    mn.RiverwareXls = in("riverware.xls");
    mn.PhysicalXls = in("physical.xls");
    mn.LowerProductionXls = in("lower_production.xls");
    mn.PopulationXls = in("population.xls");
}

// Checks the file, then runs its loader.
template <typename Load>
void load(const std::string& path, Load loader) {
    RequireFile(path);
    loader(path);
}

}  // namespace

void BuildMonthsTable(Model& m) {
    Main& mn = m.main;
    static const std::array<const char*, 12> names = {"jan", "feb", "mar", "apr", "may", "jun",
                                                      "jul", "aug", "sep", "oct", "nov", "dec"};
    static const std::array<int, 12> days = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    // First Sundays of 1996, the year in which the flow simulators run.
    static const std::array<int, 12> sunday = {7, 4, 3, 7, 5, 2, 7, 4, 1, 6, 3, 1};
    static const std::array<int, 12> sunrise = {8, 7, 7, 6, 6, 5, 5, 6, 6, 7, 7, 8};
    static const std::array<int, 12> sunset = {17, 18, 19, 20, 20, 21, 21, 20, 20, 19, 18, 17};
    for (int i = 1; i <= 12; ++i) {
        const size_t k = static_cast<size_t>(i - 1);
        mn.MonthName(i) = names[k];
        mn.DaysInMonth(i) = static_cast<float>(days[k]);
        mn.FirstSunday(i) = static_cast<int16_t>(sunday[k]);
        mn.SunriseHr(i) = static_cast<int16_t>(sunrise[k]);
        mn.SunsetHr(i) = static_cast<int16_t>(sunset[k]);
    }
    mn.NSlices = 50;
    mn.SliceThick = 2;
    mn.SlicePctBase = 100.0f;
}

void LoadReachData(Model& m, const std::string& reachFile) {
    const Main& mn = m.main;
    load(reachFile, [&](const std::string& p) { ReadReachFile(m, p); });
    // The cached file cannot be read when it could not be made: the cause is the fault.
    if (const std::string why = EnsureStageTables(m, reachFile); !why.empty())
        throw Fault("cannot make the stage tables " + QsvwFileName(reachFile) + " from sheet StarsOut$: " + why);
    ReadQsvwFile(m, reachFile);
    ReadHabFile(m, reachFile);
    RequireFile(mn.PhysicalXls);
    ReadTribFlow(m, mn.PhysicalXls, "TribFlow$");
    LoadObsTemp(m, "MainTemp$", mn.PhysicalXls);
    LoadMainSed(m, mn.PhysicalXls, "Mainsed$");
    ReadRC90(m, mn.PhysicalXls, "RC90$");
    ReadSubstrate(m, mn.PhysicalXls, "Substrate$");
    if (!mn.PhysOnly) load(mn.TrbFile, [&](const std::string& p) { ReadTrbFile(m, p); });
    ReadTribAttributes(m, mn.PhysicalXls, "TribAttributes$");
    ReadFans(m, mn.PhysicalXls, "Fans$");
    ReadCoarseVolumes(m, mn.PhysicalXls, "MCPool_Storage$");
    load(InFolder(m, mn.StsFile), [&](const std::string& p) { ReadSts(m, p, false); });
    SetIndexSlices(m);
}

void NewReachBreaks(Model& m, const std::string& reachFile) {
    if (reachFile.empty()) return;
    // Everything keyed by reach is rebuilt on a copy, taken only when all of it
    // has loaded.
    Model next = m;
    next.main.ReachFile = reachFile;
    LoadMapLayers(next);
    LoadReachData(next, reachFile);
    RebuildStageTables(next, reachFile);
    if (!m.main.Results.empty() && next.main.NReaches > m.main.Results.hi(3))
        throw Fault(reachFile + " has " + NumText(next.main.NReaches) +
                    " reaches, more than the " + NumText(m.main.Results.hi(3)) +
                    " the results store was sized for at start-up; restart the program with it");
    next.main.Results = std::move(m.main.Results);
    next.main.ObsMissing = std::move(m.main.ObsMissing);
    m = std::move(next);
}

void StartUp(Model& m, const StartOptions& o) {
    Main& mn = m.main;
    if (!fs::is_directory(o.folder))
        throw Fault("the program folder " + o.folder + " does not exist");
    mn.ProgramFolder = fs::absolute(o.folder).lexically_normal().string();
    mn.PhysOnly = o.physOnly;
    const bool whole = !mn.PhysOnly;

    mn.NPhysVars = 13;
    mn.NYears = 50;
    mn.StartYr = 48;
    mn.CurYr = 48;
    mn.MileDaySec = 5280.0f / 86400.0f;
    buildPaths(m, o);
    RequireFile(mn.StartMessageFile);
    readDiurnalScenarios(m);
    AllocateTripTypes(m);
    LoadGraphSetup(m, mn.GrsFile);
    load(mn.RecFile, [&](const std::string& p) { ReadRafting(m, p); });
    BuildMonthsTable(m);
    load(InFolder(m, mn.ExpFile), [&](const std::string& p) { LoadExp(m, p); });

    Physical& ph = m.physical;
    ph.SpikeQ = 45000.0f;
    ph.SpikeDays = 2;
    ph.SpikeStartDay = 10;
    ph.MonthlyVolSheet = "Historical$";
    ph.SpikeTrace = 1;
    load(mn.RiverwareXls, [&](const std::string& p) { LoadMonthlyVolumes(m, p, "Historical$", ""); });
    load(mn.PhysicalXls, [&](const std::string& p) { LoadTempPatterns(m, "OSDEQTemp$", p); });
    if (whole) {
        ReadSpateEvents(m, mn.PhysicalXls, "SpateEvents$");
        ReadEconomic(m, mn.PhysicalXls, "Economic$");
        load(mn.BhpFile, [&](const std::string& p) { ReadBhpFile(m, p); });
        load(mn.FisFile, [&](const std::string& p) { ReadPopFile(m, p); });
    }

    LoadReachData(m, mn.ReachFile);
    load(mn.PhyFile, [&](const std::string& p) { ReadPhyFile(m, p); });
    if (whole) {
        load(mn.LowerProductionXls, [&](const std::string& p) { ReadProductionObs(m, p, 48, 98); });
        load(mn.PopulationXls, [&](const std::string& p) {
            ReadCatchData(m, p, CatchSurveySheet, 48, 98);
            ReadRainbowData(m, p, "RBT_HF$", 48, 98);
        });
    }
    ReadAnglingPars(m, mn.RecFile);
    LoadMapLayers(m);
    LoadRafting(m);
    if (whole) load(mn.TrbFile, [&](const std::string& p) { ReadTrbFile(m, p); });
    load(mn.GraphLegFile, [&](const std::string& p) { LoadGraphTable(m, p); });
    if (m.vectorMap.Loaded) CheckLegends(m);
    LoadRafting(m);
    m.graphs.StartupFinished = true;
}

}  // namespace osm
