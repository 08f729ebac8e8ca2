#include "batch/many_runs_command.h"

#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "core/ensemble.h"
#include "core/many_runs.h"
#include "core/model.h"
#include "core/provenance.h"
#include "core/run_driver.h"
#include "core/textfile.h"
#include "hydrology/scenario_choice.h"
#include "presentation/comparison.h"
#include "presentation/results_csv.h"
#include "presentation/results_netcdf.h"

namespace osm::batch {

namespace fs = std::filesystem;

namespace {

std::set<std::string> joined(std::set<std::string> a, const std::set<std::string>& b) {
    a.insert(b.begin(), b.end());
    return a;
}

std::string inDir(const Options& o, const std::string& name) { return (fs::path(o.outDir) / name).string(); }

// A result file and its provenance sidecar, both written before either is put in place.
template <typename Write>
void writeWithProvenance(const std::string& path, const Provenance& p, Write write) {
    TextWriter out(path), json(path + ".json");
    write(out);
    json.Bare(ProvenanceJson(p, path));
    CommitAll({&out, &json});
}

ManyRunsSetup setupFor(const Model& loaded, const Options& o, ProgressBar& bar, size_t runs) {
    ManyRunsSetup s;
    s.startYr = o.startYear.value_or(loaded.main.StartYr);
    s.years = o.years.value_or(loaded.main.NYears);
    s.jobs = o.jobs;
    s.progress = [&bar, runs](long done, long total) { bar.ShowBatch(done, total, static_cast<int>(runs)); };
    return s;
}

// Tells each run's faults and messages, named by the run; the number of runs that faulted.
int report(const ManyRunsResult& r) {
    int faulted = 0;
    for (size_t i = 0; i < r.set.runs.size(); ++i) {
        const RunValues& run = r.set.runs[i];
        for (const ModelMessage& msg : r.messages[i])
            std::cerr << "osm-batch: " << run.name << ": " << (msg.title.empty() ? "" : msg.title + ": ") << msg.text
                      << (msg.detail.empty() ? "" : " (" + msg.detail + ")") << "\n";
        if (run.fault.empty()) continue;
        ++faulted;
        std::cerr << "osm-batch: " << run.name << ": the run stopped after " << run.months
                  << " months, its results so far kept: " << run.fault << "\n";
    }
    return faulted;
}

bool checkYears(const ManyRunsSetup& s) {
    if (const std::string why = RunYearsProblem(s.startYr, s.years); !why.empty()) {
        std::cerr << "osm-batch: " << why << "\n";
        return false;
    }
    return true;
}

}  // namespace

int Compare(const Model& loaded, const Options& o, const std::set<std::string>& startInputs, ProgressBar& bar) {
    std::vector<RunJob> jobs;
    std::set<std::string> names;
    for (const std::string& scenario : o.scenarios) {
        std::string name = fs::path(scenario).stem().string();
        while (!names.insert(name).second) name += "'";
        jobs.push_back({name, [scenario](Model& m) { ApplyScenario(m, scenario); }});
    }
    ManyRunsSetup setup = setupFor(loaded, o, bar, jobs.size());
    if (!checkYears(setup)) return 2;
    std::vector<std::string> written(jobs.size());
    // Each run's long form, as a lone run of the scenario writes it.
    setup.finished = [&](size_t i, Model& m) {
        written[i] = inDir(o, jobs[i].name + ".csv");
        WriteResultsCsv(m, written[i]);
    };
    ManyRunsResult r = RunMany(loaded, jobs, setup);
    bar.Finish();
    int status = report(r) > 0 ? 1 : 0;
    std::set<std::string> all = startInputs;
    try {
        for (size_t i = 0; i < jobs.size(); ++i) {
            all.insert(r.inputs[i].begin(), r.inputs[i].end());
            WriteProvenanceSidecar(
                MakeProvenance(loaded.main.PhysOnly, setup.startYr, setup.years, joined(startInputs, r.inputs[i])),
                written[i]);
        }
        r.set.provenance = MakeProvenance(loaded.main.PhysOnly, setup.startYr, setup.years, all);
        writeWithProvenance(inDir(o, "comparison.csv"), r.set.provenance,
                            [&](TextWriter& out) { WriteComparisonCsv(r.set, loaded.graphs, out); });
        if (!o.netcdfFile.empty()) WriteResultsNetcdf(r.set, loaded.graphs, o.netcdfFile);
    } catch (const std::exception& e) {
        std::cerr << "osm-batch: " << e.what() << "\n";
        status = 1;
    }
    std::cout << "Scenario comparison, " << 1900 + setup.startYr << " for " << setup.years << " years, base "
              << jobs[0].name << ":\n"
              << ComparisonSummary(r.set, loaded.graphs);
    return status;
}

int Ensemble(const Model& loaded, const Options& o, const std::set<std::string>& startInputs, ProgressBar& bar) {
    EnsembleSpec spec;
    std::vector<std::vector<double>> values;
    std::map<std::string, std::string> texts;
    std::set<std::string> specInputs;
    try {
        InputLog log;
        spec = ReadEnsembleSpec(fs::exists(o.specFile) ? o.specFile : InFolder(loaded, o.specFile));
        values = DrawParameters(spec);
        texts = ParameterTexts(loaded, spec);
        specInputs = log.files();
    } catch (const std::exception& e) {
        std::cerr << "osm-batch: the ensemble was not run: " << e.what() << "\n";
        return 1;
    }
    // The runs' parameter files, each written and read back by its run.
    const fs::path folder = fs::temp_directory_path() / ("osm-ensemble-" + std::to_string(getpid()));
    fs::create_directories(folder);
    std::vector<RunJob> jobs;
    for (size_t i = 0; i < values.size(); ++i)
        jobs.push_back({"run " + std::to_string(i + 1), [&, i](Model& m) {
                            ApplyParameters(m, spec, texts, values[i], folder.string(), i);
                        }});
    ManyRunsSetup setup = setupFor(loaded, o, bar, jobs.size());
    if (!checkYears(setup)) return 2;
    ManyRunsResult r = RunMany(loaded, jobs, setup);
    bar.Finish();
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    const int faulted = report(r);
    int status = faulted > 0 ? 1 : 0;
    std::set<std::string> all = joined(startInputs, specInputs);
    for (const auto& files : r.inputs) all.insert(files.begin(), files.end());
    try {
        const Provenance p = MakeProvenance(loaded.main.PhysOnly, setup.startYr, setup.years, all);
        RunSet percentiles = EnsemblePercentiles(r.set, JobCount(o.jobs));
        percentiles.provenance = p;
        writeWithProvenance(inDir(o, "ensemble_parameters.csv"), p,
                            [&](TextWriter& out) { WriteParametersCsv(spec, values, r.set, out); });
        writeWithProvenance(inDir(o, "ensemble_percentiles.csv"), p,
                            [&](TextWriter& out) { WritePercentilesCsv(percentiles, out); });
        writeWithProvenance(inDir(o, "ensemble_median.csv"), p,
                            [&](TextWriter& out) { WriteRunCsv(percentiles, 1, out); });
        if (!o.netcdfFile.empty()) WriteResultsNetcdf(percentiles, loaded.graphs, o.netcdfFile);
    } catch (const std::exception& e) {
        std::cerr << "osm-batch: " << e.what() << "\n";
        status = 1;
    }
    std::cout << "Ensemble of " << values.size() << " runs of " << spec.parameters.size() << " parameters, "
              << 1900 + setup.startYr << " for " << setup.years << " years: " << values.size() - static_cast<size_t>(faulted)
              << " ended normally\n";
    return status;
}

}  // namespace osm::batch
