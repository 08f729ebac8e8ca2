#pragma once
// The production parameter file (.bhp): oxygen, light, algae, detritus, benthos,
// the vegetation types and the reach-scale indicator populations, read field by
// field in a fixed order.
#include <string>

namespace osm {

struct Model;

// Reads the whole file before taking any of it: a bad file leaves the parameters
// in force as they were.
void ReadBhpFile(Model& m, const std::string& path);
// Writes through a temporary file, so a failed save never loses the old one.
void WriteBhpFile(const Model& m, const std::string& path);

}  // namespace osm
