#pragma once
// Modules VectorMap and Legend: the map layers (river centre-line, lakes,
// tributaries, labels) in fixed-point map units, and the colour legends of
// model.mde.
#include <cstdint>
#include <string>
#include <vector>

namespace osm {

// Map coordinates are the file's values times MapScale, rounded.
inline constexpr float MapScale = 1000.0f;
// The large start of a minimum search (bit pattern 7F7FFFFD).
inline constexpr float BigSingle = 3.40282306e+38f;

struct MapPoint {
    int32_t X = 0;
    int32_t Y = 0;
    bool operator==(const MapPoint&) const = default;
};

enum ShapeKind : int16_t { ShapeEmpty = 0, ShapePolyline = 1, ShapePolygon = 2 };

struct MapShape {
    int16_t ShapeType = ShapeEmpty;
    std::vector<MapPoint> Points;  // vertex k is Points[k-1]
};

struct RiverMileRec {
    int32_t MapId = 0;
    float RiverMile = 0;
};

struct MapLabel {
    float Mile = 0;
    std::string Text;
};

struct VectorMap {
    bool Loaded = false;                 // false until every layer and the legends were read
    std::vector<MapPoint> RiverPoints;   // vertex k is RiverPoints[k-1]
    std::vector<RiverMileRec> RiverMiles;
    std::vector<MapShape> LakeShapes, TribShapes;
    float MapMinX = BigSingle, MapMinY = BigSingle, MapMaxX = 0, MapMaxY = 0;
    std::vector<int16_t> ReachPoint;     // index 1..NReaches+1; index 0 unused
    std::vector<MapLabel> MapLabels;
    std::string MapLabelFile;            // empty: the reach labels of the program folder
    bool MapDirty[7] = {true, true, true, true, true, true, true};  // 1..6
};

struct LegendRec {
    float ScaleMin = 0;
    float ScaleMax = 1;
    std::vector<int32_t> Colours;  // category k is Colours[k-1]
    std::vector<float> Breaks;     // upper bound of category k is Breaks[k-1]
    std::string Name;
    int16_t Categorical = 0;
    int16_t NCats = 2;
    int16_t MapId = 0;  // map id of the variable
    int16_t Set = 0;    // data set of the variable
    bool operator==(const LegendRec&) const = default;
};

struct Legend {
    std::vector<LegendRec> Legends;  // legend number n is Legends[n-1]
};

}  // namespace osm
