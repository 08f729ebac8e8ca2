#include "sediment/storage_potential.h"

#include "core/model.h"

namespace osm {

void RecomputeStorage(Model&, bool /*Reset*/) {}
void ReadCoarseVolumes(Model&, const std::string& /*path*/, const std::string& /*sheet*/) {}

}  // namespace osm
