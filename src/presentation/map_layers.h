#pragma once
// Map layers and legends.
namespace osm {

struct Model;

void LoadMapLayers(Model& m);
void BuildDefaultLegends(Model& m);

}  // namespace osm
