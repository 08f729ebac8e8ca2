#pragma once
// Stage, width and discharge tables by reach, averaged from the hydraulic sheet
// and cached beside the Reach Breaks file.
#include <string>

namespace osm {

struct Model;

// Builds the cached files when missing; False when the build failed (the
// message has been shown).
bool EnsureStageTables(Model& m, const std::string& reachFile);
// Builds both cached files from the hydraulic sheet, whether or not they exist.
void RebuildStageTables(Model& m, const std::string& reachFile);
void ReadQsvwFile(Model& m, const std::string& reachFile);
void ReadHabFile(Model& m, const std::string& reachFile);
void SetIndexSlices(Model& m);

}  // namespace osm
