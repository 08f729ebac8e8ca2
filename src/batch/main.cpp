// osm-batch: scripted runs of the model on a program folder.
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>

#include "batch/batch_options.h"
#include "batch/many_runs_command.h"
#include "batch/progress_bar.h"
#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/provenance.h"
#include "core/reaches.h"
#include "core/run_driver.h"
#include "hydrology/policy_file.h"
#include "hydrology/process_hydro.h"
#include "core/start_up.h"
#include "core/textfile.h"
#include "presentation/graph_table.h"
#include "presentation/results_csv.h"
#include "presentation/results_dump.h"
#include "presentation/results_netcdf.h"
#include "presentation/run_set.h"

namespace {

using namespace osm;

// Model messages go to stderr and are counted by kind for the summary.
class CountingMessages : public MessageSink {
public:
    explicit CountingMessages(batch::ProgressBar& bar) : bar_(bar) {}
    void Show(const ModelMessage& msg) override {
        bar_.Finish();
        std::cerr << "osm-batch: " << (msg.title.empty() ? "" : msg.title + ": ") << msg.text
                  << (msg.detail.empty() ? "" : " (" + msg.detail + ")") << "\n";
        ++counts_[msg.kind];
    }
    void Summary() const {
        if (counts_.empty()) return;
        std::cerr << "osm-batch: model messages:";
        for (const auto& [kind, n] : counts_) std::cerr << " " << n << " " << kind << ";";
        std::cerr << "\n";
    }

private:
    batch::ProgressBar& bar_;
    std::map<std::string, int> counts_;
};

class BatchObserver : public RunObserver {
public:
    BatchObserver(const Model& m, batch::ProgressBar& bar) : m_(m), bar_(bar) {}
    void ShowProgress(const std::string& year, const std::string& month) override {
        const int y = static_cast<int>(Val(year));
        bar_.Show(m_.main.CumMonth, m_.main.NYears * 12, NumText(y < 100 ? 1900 + y : y) + " " + month);
    }

private:
    const Model& m_;
    batch::ProgressBar& bar_;
};

void chooseDump(Model& m, const batch::Options& o) {
    Graphs& g = m.graphs;
    const int rows = GraphRowCount(g);
    for (int i = 0; i < rows; ++i) g.DumpVar(i) = !o.vars;
    if (o.vars)
        for (int i : *o.vars) {
            if (i < 0 || i >= rows)
                throw batch::UsageError{"--vars: row " + NumText(i) + " is not in 0.." + NumText(rows - 1)};
            g.DumpVar(i) = true;
        }
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) g.DumpReach(r) = !o.reaches;
    if (o.reaches)
        for (int r : *o.reaches) {
            if (r < m.main.FirstReach || r > m.main.LastReach)
                throw batch::UsageError{"--reaches: reach " + NumText(r) + " is not in " +
                                        NumText(m.main.FirstReach) + ".." + NumText(m.main.LastReach)};
            g.DumpReach(r) = true;
        }
}

void listVars(const Model& m) {
    const Graphs& g = m.graphs;
    int row = 0;
    for (int v = 1; v <= g.NVars; ++v)
        for (int s = 1; s <= g.VarSets(v); ++s, ++row)
            std::cout << row << "\tvar " << v << " set " << s << "\t" << GraphRowLabel(g, v, s) << "\n";
}

// Progress of the scenario pipeline on the progress bar.
class HydroBar : public HydroProgress {
public:
    explicit HydroBar(batch::ProgressBar& bar) : bar_(bar) {}
    void Show(const std::string& volume, const std::string& month, int step, int steps) override {
        bar_.Show(step, steps, volume + " af " + month, "volume level");
    }

private:
    batch::ProgressBar& bar_;
};

// The folder of the running program, where the simulators are built beside it.
std::string programDir(const char* argv0) {
    std::error_code ec;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    return (ec ? std::filesystem::absolute(argv0) : self).parent_path().string();
}

int processHydro(Model& m, const batch::Options& o, batch::ProgressBar& bar, const char* argv0) {
    try {
        // The pipeline needs only the months table and the reach breaks, so it
        // runs on a folder that has no scenario file yet.
        BuildMonthsTable(m);
        m.main.ProgramFolder = o.folder;
        const auto rb = o.files.find("reach-breaks");
        ReadReachFile(m, InFolder(m, rb == o.files.end() ? "Reaches.csv" : rb->second));
        std::string from = o.hydroFrom;
        if (!std::filesystem::exists(from)) from = InFolder(m, from);
        ReadFlowParameters(m, from);
        HydroSetup setup = DefaultHydroSetup(m, programDir(argv0));
        HydroBar progress(bar);
        setup.progress = &progress;
        ProcessHydro(m, o.hydroOut, o.hydroTitle.empty() ? m.physical.StsTitle : o.hydroTitle, setup);
        bar.Finish();
    } catch (const std::exception& e) {
        bar.Finish();
        std::cerr << "osm-batch: process-hydro failed: " << e.what() << "\n";
        return 1;
    }
    std::cerr << "osm-batch: wrote " << InFolder(m, std::filesystem::path(o.hydroOut).filename().string()) << "\n";
    return 0;
}

// The dump and the CSV of one run with their provenance sidecars: all are
// written out before any replaces its old file, so a failure leaves the old
// files. The NetCDF file, a whole of its own, follows.
void writeOutputs(Model& m, const batch::Options& o, const Provenance& p) {
    std::optional<TextWriter> dump, csv, dumpJson, csvJson;
    if (!o.dumpFile.empty()) {
        DumpResults(m, dump.emplace(o.dumpFile));
        dumpJson.emplace(o.dumpFile + ".json").Bare(ProvenanceJson(p, o.dumpFile));
    }
    if (!o.csvFile.empty()) {
        WriteResultsCsv(m, csv.emplace(o.csvFile));
        csvJson.emplace(o.csvFile + ".json").Bare(ProvenanceJson(p, o.csvFile));
    }
    const auto opt = [](std::optional<TextWriter>& w) { return w ? &*w : nullptr; };
    CommitAll({opt(dump), opt(csv), opt(dumpJson), opt(csvJson)});
    if (!o.netcdfFile.empty()) {
        RunSet set = RunSetFor(m, m.main.NYears);
        set.provenance = p;
        for (int slot = 0; slot <= m.main.NRuns; ++slot)
            set.runs.push_back(TakeRun(set, m, slot, m.main.RunScenario.at(static_cast<size_t>(slot))));
        WriteResultsNetcdf(set, m.graphs, o.netcdfFile);
    }
}

}  // namespace

int main(int argc, char** argv) {
    batch::Options o;
    try {
        o = batch::ParseOptions(argc, argv, OSM_DEFAULT_FOLDER);
    } catch (const batch::UsageError& e) {
        std::cerr << "osm-batch: " << e.text << "\n" << batch::UsageText();
        return 2;
    }
    if (o.help) {
        std::cout << batch::UsageText();
        return 0;
    }
    InputLog inputs;
    batch::ProgressBar bar(stderr);
    CountingMessages messages(bar);
    Model m;
    m.messages = &messages;
    try {
        if (o.processHydro) return processHydro(m, o, bar, argv[0]);
        StartUp(m, StartOptions{o.folder, o.physOnly, o.files});
        if (!o.policyFile.empty()) try {
                const bool here = std::filesystem::exists(o.policyFile);
                LoadPolicy(m, here ? o.policyFile : InFolder(m, o.policyFile));
            } catch (const std::exception& e) {
                std::cerr << "osm-batch: the policy was not applied, nothing was run: " << e.what() << "\n";
                return 1;
            }
        if (o.listVars) {
            listVars(m);
            return 0;
        }
        if (o.command.empty()) chooseDump(m, o);
    } catch (const batch::UsageError& e) {
        std::cerr << "osm-batch: " << e.text << "\n";
        return 2;
    } catch (const std::exception& e) {
        std::cerr << "osm-batch: start-up failed: " << e.what() << "\n";
        return 1;
    }
    if (!o.command.empty()) {
        const int status = o.command == "compare" ? batch::Compare(m, o, inputs.files(), bar)
                                                  : batch::Ensemble(m, o, inputs.files(), bar);
        messages.Summary();
        return status;
    }
    const int startYr = o.startYear.value_or(m.main.StartYr);
    const int years = o.years.value_or(m.main.NYears);
    BatchObserver observer(m, bar);
    int status = 0;
    try {
        StartRun(m, observer, startYr, years);
        if (o.overlay) {
            m.main.Overlay = true;
            StartRun(m, observer, startYr, years);
        }
        bar.Finish();
    } catch (const std::exception& e) {
        bar.Finish();
        std::cerr << "osm-batch: the run stopped: " << e.what() << "\n";
        status = 1;
    }
    try {
        writeOutputs(m, o, MakeProvenance(m.main.PhysOnly, startYr, years, inputs.files()));
    } catch (const std::exception& e) {
        std::cerr << "osm-batch: " << e.what() << "\n";
        status = 1;
    }
    messages.Summary();
    return status;
}
