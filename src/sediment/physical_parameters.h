#pragma once
// The physical parameter file (.phy).
#include <string>

namespace osm {

struct Model;

void ReadPhyFile(Model& m, const std::string& path);
void WritePhyFile(const Model& m, const std::string& path);

}  // namespace osm
