#pragma once
// The population parameter file (.fis): the species records with their habitat
// links and curves, harvest rates and hatchery additions, then the trophic links.
#include <string>

namespace osm {

struct Model;

// Replaces every species table and the links; a file that is short, holds text
// where a number belongs or names more species, ages, years or links than the
// tables hold is a fault naming file and line, and the old records stay.
void ReadPopFile(Model& m, const std::string& path);
void WritePopFile(const Model& m, const std::string& path);

}  // namespace osm
