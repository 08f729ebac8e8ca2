#include "recreation/recreation_steps.h"

#include "core/model.h"

namespace osm {

void AllocateTripTypes(Model&) {}
void ReadRafting(Model&, const std::string& /*path*/) {}
void ReadAnglingPars(Model&, const std::string& /*path*/) {}
void ReadEconomic(Model&, const std::string& /*path*/, const std::string& /*sheet*/) {}
void LoadRafting(Model&) {}
void RaftingMonth(Model&, int /*iMonth*/) {}
void TroutAngling(Model&, int /*iYear*/) {}

}  // namespace osm
