#include "hydrology/river_temperature.h"

#include "core/model.h"

namespace osm {

void RiverTemperature(Model&, int /*month*/) {}
void LoadTempPatterns(Model&, const std::string& /*sheet*/, const std::string& /*workbook*/) {}
void LoadObsTemp(Model&, const std::string& /*sheet*/, const std::string& /*workbook*/) {}

}  // namespace osm
