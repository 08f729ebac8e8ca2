#pragma once
// The graphics setup file (.grs): which views are wanted and what each chart,
// map and profile shows.
#include <string>

namespace osm {

struct Model;

// Reads a setup file. On any error it shows the failure message, sets the
// defaults and returns False; the views are rebuilt by the caller.
bool LoadGraphSetup(Model& m, const std::string& path);
void SaveGraphSetup(const Model& m, const std::string& path);
void SetGraphSetupDefaults(Model& m);

}  // namespace osm
