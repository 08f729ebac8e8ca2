#include "production/production_steps.h"

#include "core/model.h"

namespace osm {

void OxygenStep(Model&, int /*month*/) {}
void AlgaeDetritusStep(Model&, int /*month*/) {}
void BenthosStep(Model&) {}
void ResetBenthos(Model&) {}
void ProductionYear(Model&, int /*iYear*/) {}
void VegYear(Model&, int /*iYear*/) {}
void VegSliceMonth(Model&, int /*r*/, int /*s*/, float /*Depth*/, float /*p*/) {}
void ResetVeg(Model&) {}
void ReadBhpFile(Model&, const std::string& /*path*/) {}
void ReadProductionObs(Model&, const std::string& /*workbook*/, int /*yrFirst*/, int /*yrLast*/) {}

}  // namespace osm
