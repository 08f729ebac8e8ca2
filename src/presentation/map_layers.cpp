#include "presentation/map_layers.h"

#include "core/model.h"

namespace osm {

void LoadMapLayers(Model&) {}
void BuildDefaultLegends(Model&) {}

}  // namespace osm
