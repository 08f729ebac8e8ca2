#include "hydrology/flow_engine.h"

#include "core/model.h"

namespace osm {

void MonthlyFlows(Model&, int /*iYear*/, int /*iMonth*/) {}
void ReadSts(Model&, const std::string& /*path*/, bool /*headerOnly*/) {}
void LoadMonthlyVolumes(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/,
                        const std::string& /*field*/) {}
void LoadSpikeFlags(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}
void LoadExp(Model&, const std::string& /*path*/) {}
void SaveExp(const Model&, const std::string& /*path*/) {}
void LoadMainSed(Model&, const std::string& /*workbook*/, const std::string& /*sheet*/) {}

}  // namespace osm
