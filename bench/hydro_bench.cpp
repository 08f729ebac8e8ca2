// The scenario pipeline on the default river: the whole ProcessHydro (72
// scheduling runs and up to 144 routings, each a process), and one run of each
// program. The programs are looked for beside this benchmark and in the build
// folder above it.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <exception>
#include <filesystem>

#include "core/external_program.h"
#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "default_model.h"
#include "hydrology/process_hydro.h"

namespace {

namespace fs = std::filesystem;

struct HydroBench {
    fs::path folder;
    osm::Model m;
    osm::HydroSetup setup;
};

// A copy of the default river's reach breaks, scenario and hydro data in a
// temporary program folder.
bool prepare(benchmark::State& state, HydroBench& b) {
    try {
        b.folder = fs::temp_directory_path() / ("osm_hydro_bench_" + std::to_string(::getpid()));
        fs::remove_all(b.folder);
        fs::create_directories(b.folder / "hydro");
        const fs::path data = OSM_DEFAULT_FOLDER;
        for (const char* f : {"Reaches.csv", "noaction.sts"}) fs::copy_file(data / f, b.folder / f);
        for (const char* f : {"caddqd.In", "ospsw95b.dat"}) fs::copy_file(data / "hydro" / f, b.folder / "hydro" / f);
        b.m.messages = &osm_bench::SilentMessages();
        osm::BuildMonthsTable(b.m);
        osm::ReadReachFile(b.m, (b.folder / "Reaches.csv").string());
        b.m.main.ProgramFolder = b.folder.string();
        osm::ReadFlowParameters(b.m, (b.folder / "noaction.sts").string());
        const fs::path self = fs::read_symlink("/proc/self/exe").parent_path();
        const bool beside = fs::exists(self / "ospsw95b");
        b.setup = osm::DefaultHydroSetup(b.m, (beside ? self : self.parent_path()).string());
    } catch (const std::exception& e) {
        state.SkipWithError(e.what());
        return false;
    }
    return true;
}

void BM_ProcessHydroDefaultRiver(benchmark::State& state) {
    HydroBench b;
    if (!prepare(state, b)) return;
    for (auto _ : state) {
        try {
            osm::ProcessHydro(b.m, "bench.sts", "Benchmark", b.setup);
        } catch (const std::exception& e) {
            state.SkipWithError(e.what());
            break;
        }
    }
    fs::remove_all(b.folder);
}
BENCHMARK(BM_ProcessHydroDefaultRiver)->Unit(benchmark::kSecond)->Iterations(1)->Repetitions(3);

// One scheduling run of a peaking month (500,000 af in July) and one routing
// of its weekday down the whole river.
void BM_EachProgramOnce(benchmark::State& state, bool route) {
    HydroBench b;
    if (!prepare(state, b)) return;
    const std::string hydro = b.setup.hydroFolder;
    try {
        osm::Processor pr;
        osm::WriteRoutingControl(b.m, "ON", hydro);
        osm::WritePeakshav(b.m, 2, 7, hydro);
        osm::RunProgram({b.setup.scheduler, {"peakshav.ctr"}, hydro, b.setup.timeLimit, ""});
        osm::ReadPeakshavOut(b.m, pr, 2, 7, hydro + "/peakshav.out");
        osm::WriteInflowFiles(b.m, pr, 7, hydro);
    } catch (const std::exception& e) {
        state.SkipWithError(e.what());
        return;
    }
    const std::string program = route ? b.setup.router : b.setup.scheduler;
    const std::string arg = route ? "usflowON.in" : "peakshav.ctr";
    for (auto _ : state) osm::RunProgram({program, {arg}, hydro, b.setup.timeLimit, ""});
    fs::remove_all(b.folder);
}
BENCHMARK_CAPTURE(BM_EachProgramOnce, ospsw95b, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_EachProgramOnce, USFlow, true)->Unit(benchmark::kMillisecond);

}  // namespace
