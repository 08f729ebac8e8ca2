#pragma once
// The projection of the map layers onto a picture of given size, the colours of
// the maps and the hit test of a mouse press on the river.
#include <array>
#include <cstdint>
#include <vector>

#include "presentation/vectormap_module.h"

namespace osm {

struct Model;

// The window of scaled map units fitted to a picture, and its scale in pixels.
struct MapWindow {
    float Left = 0, Right = 0, Top = 0, Bottom = 0;
    float Sx = 0, Sy = 0;  // pixels per map unit
};

// Fits the layers' bounding box, at the fixed shape 1.5 wide to 1 high with a
// margin, to a picture of width x height pixels.
MapWindow ProjectMap(const VectorMap& map, float width, float height);
// A map point in pixels of the window; north comes out at the top.
MapPoint ToScreen(const MapWindow& w, MapPoint p);
std::vector<MapPoint> ToScreen(const MapWindow& w, const std::vector<MapPoint>& pts);

// Entry 0 black, 1..25 the continuous ramp.
const std::array<int32_t, 26>& ColourRamp();

// The colour a reach of value `value` takes in legend `l`; `inForce` is the
// colour in force, kept by a categorical value above the last break.
int32_t ColourOfValue(const LegendRec& l, float value, int32_t inForce);

// The vertices whose segment to the next one passes within 2 pixels of (x, y).
std::vector<int32_t> HitVertices(const VectorMap& map, const std::vector<MapPoint>& screen,
                                 int x, int y);
// The reaches under those vertices, each once, in the order of the vertices,
// with the vertex of its first hit.
struct ReachHit {
    int Reach = 0;
    int Vertex = 0;
};
std::vector<ReachHit> HitReaches(const Model& m, const std::vector<int32_t>& hits);

}  // namespace osm
