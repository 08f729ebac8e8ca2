#include "core/scenario.h"

#include <filesystem>

#include "core/model.h"

namespace osm {

namespace {

std::string fileName(const std::string& path) { return std::filesystem::path(path).filename().string(); }

}  // namespace

std::string ModeName(const Main& mn) { return mn.PhysOnly ? "Physical Model Only" : "Entire Model"; }

std::string ScenarioName(const Model& m) {
    std::string name = fileName(m.main.StsFile) + ", " + fileName(m.main.ExpFile);
    if (!m.physical.PolicyFile.empty()) name += ", policy " + fileName(m.physical.PolicyFile);
    return name;
}

std::string RunName(const Main& mn, int run) {
    const std::string& scenario = mn.RunScenario.at(static_cast<size_t>(run));
    if (scenario.empty()) return "no run yet";
    return (run == 0 ? "run: " : "overlaid run: ") + scenario;
}

}  // namespace osm
