#pragma once
// Rafting launches and campsites, trout angling, the recreation file and the
// economic values.
#include <string>

namespace osm {

struct Model;

void AllocateTripTypes(Model& m);
void ReadRafting(Model& m, const std::string& path);
void ReadAnglingPars(Model& m, const std::string& path);
void ReadEconomic(Model& m, const std::string& path, const std::string& sheet);
void LoadRafting(Model& m);
void RaftingMonth(Model& m, int iMonth);
void TroutAngling(Model& m, int iYear);

}  // namespace osm
