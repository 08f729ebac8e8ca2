#include "hydrology/scenario_choice.h"

#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/util.h"
#include "hydrology/policy_file.h"
#include "hydrology/release_policy.h"
#include "hydrology/flow_engine.h"

namespace osm {

namespace fs = std::filesystem;

void ApplyScenario(Model& m, const std::string& path) {
    const std::string file = FileExists(path) ? path : InFolder(m, path);
    if (!FileExists(file)) throw FileFault(path, "the scenario file is missing (looked for as given and in the program folder)");
    const fs::path p(file);
    const std::string ext = p.extension().string();
    if (ext == ".exp") {
        LoadExp(m, file);
        m.main.ExpFile = file;
    } else if (ext == ".sts") {
        const std::string name = p.stem().string();
        std::error_code ec;
        if (!fs::equivalent(file, InFolder(m, name + ".sts"), ec))
            throw FileFault(file, "a flow scenario must lie in the program folder " + m.main.ProgramFolder +
                                      ", where the run reads it each year");
        const int k = AddScenario(m, name);
        Physical& ph = m.physical;
        for (int y = ph.DiurnalCode.lo(0); y <= ph.DiurnalCode.hi(0); ++y) ph.DiurnalCode(y) = static_cast<int16_t>(k);
    } else
        LoadPolicy(m, file);
}

}  // namespace osm
