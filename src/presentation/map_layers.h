#pragma once
// Map layers: the MapInfo Interchange readers, the label files and the cut of
// the river centre-line into one run of vertices per reach.
#include <string>
#include <vector>

#include "presentation/vectormap_module.h"

namespace osm {

struct Model;

// Reads every layer, the legends and the labels, and cuts the river into
// reaches. A missing or malformed file leaves the program without maps: the
// reason is shown once and the layers in force stay as they were.
void LoadMapLayers(Model& m);

// Each reader fills `map` or throws a FileFault naming file, line and what was
// expected; the bounding box grows with every vertex read.
void ReadRiver(VectorMap& map, const std::string& mifPath);
std::vector<MapShape> ReadShapes(VectorMap& map, const std::string& path);
std::vector<MapLabel> ReadMapLabels(const std::string& path);

// Replaces the labels by those of a label file.
void LoadMapLabels(Model& m, const std::string& path);

// The vertex whose mile is the last at or below `mile`, found from a guess;
// 0 when the mile lies beyond the table.
int MileToPoint(const Model& m, const VectorMap& map, double mile);
// The vertex at which each reach begins; the last entry is the last vertex.
std::vector<int16_t> BuildReachPoints(const Model& m, const VectorMap& map);
// The smallest reach r with ReachPoint(r+1) >= vertex; 0 if none.
int PointToReach(const Model& m, int vertex);

}  // namespace osm
