#pragma once
// Storage potential of eddies, channel margins and the main channel pool.
#include <string>

namespace osm {

struct Model;

void RecomputeStorage(Model& m, bool Reset);
void ReadCoarseVolumes(Model& m, const std::string& path, const std::string& sheet);

}  // namespace osm
