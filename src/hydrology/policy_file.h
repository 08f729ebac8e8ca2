#pragma once
// The release policy file (.pol): the diurnal scenario of each year, the
// monthly release trace, the spike flow and its months, and the experimental
// release temperature with its years. A commented text file of one keyword a
// line (docs/policy_file.md). The policy editor saves and loads it, and
// osm-batch --policy applies it before a run.
#include <string>

namespace osm {

struct Model;

// Reads a policy file and applies it. Parts the file leaves out stay as they
// are. Bad content is a fault naming file, line and what was expected, and then
// nothing of the file is applied.
void LoadPolicy(Model& m, const std::string& path);
// Writes the policy in force, every part of it.
void SavePolicy(const Model& m, const std::string& path);

}  // namespace osm
