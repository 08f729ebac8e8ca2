#include "hydrology/stage_tables.h"

#include "core/model.h"

namespace osm {

bool EnsureStageTables(Model&, const std::string& /*reachFile*/) { return true; }
void RebuildStageTables(Model&, const std::string& /*reachFile*/) {}
void ReadQsvwFile(Model&, const std::string& /*reachFile*/) {}
void ReadHabFile(Model&, const std::string& /*reachFile*/) {}
void SetIndexSlices(Model&) {}

}  // namespace osm
