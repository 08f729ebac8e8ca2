#include "sediment/physical_parameters.h"

#include "core/model.h"

namespace osm {

void ReadPhyFile(Model&, const std::string& /*path*/) {}
void WritePhyFile(const Model&, const std::string& /*path*/) {}

}  // namespace osm
