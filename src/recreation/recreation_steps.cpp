#include "recreation/recreation_steps.h"

#include "core/model.h"

namespace osm {

void TroutAngling(Model&, int /*iYear*/) {}

}  // namespace osm
