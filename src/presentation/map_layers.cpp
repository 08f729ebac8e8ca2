#include "presentation/map_layers.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/textfile.h"
#include "presentation/legends.h"

namespace osm {

namespace {

int32_t scaled(float v) { return static_cast<int32_t>(std::nearbyint(v * MapScale)); }

// One vertex "X Y" of a layer, scaled and taken into the bounding box.
MapPoint readVertex(TextReader& in, VectorMap& map) {
    const float x = in.Single("an X coordinate");
    const float y = in.Single("a Y coordinate");
    if (std::fabs(x) * MapScale > 2.0e9f || std::fabs(y) * MapScale > 2.0e9f)
        in.Fail("a coordinate within +/-2000000", std::to_string(x) + " " + std::to_string(y));
    const MapPoint p{scaled(x), scaled(y)};
    map.MapMinX = std::min(map.MapMinX, static_cast<float>(p.X));
    map.MapMinY = std::min(map.MapMinY, static_cast<float>(p.Y));
    map.MapMaxX = std::max(map.MapMaxX, static_cast<float>(p.X));
    map.MapMaxY = std::max(map.MapMaxY, static_cast<float>(p.Y));
    return p;
}

std::vector<MapPoint> readVertices(TextReader& in, VectorMap& map) {
    const int16_t n = in.Int16("a vertex count");
    if (n < 0) in.Fail("a vertex count of 0 or more", std::to_string(n));
    std::vector<MapPoint> pts;
    for (int k = 0; k < n; ++k) pts.push_back(readVertex(in, map));
    return pts;
}

std::string midPath(const std::string& mifPath) {
    return mifPath.substr(0, mifPath.size() >= 3 ? mifPath.size() - 3 : 0) + "mid";
}

}  // namespace

void ReadRiver(VectorMap& map, const std::string& mifPath) {
    const std::string mid = midPath(mifPath);
    for (const std::string& p : {mifPath, mid})
        if (!std::filesystem::exists(p))
            throw FileFault(p, "ERRORFailed to find file Loading Map Data " + p);
    map.MapMinX = map.MapMinY = BigSingle;
    TextReader in(mifPath, TextReader::Mode::Blanks);
    for (int k = 0; k < 9; ++k) in.SkipLine("a header line");
    map.RiverPoints.clear();
    while (!in.AtEnd()) {
        const std::string word = in.Chars(5, "the word Point");
        if (word != "Point") in.Fail("the word Point", word);
        map.RiverPoints.push_back(readVertex(in, map));
        in.SkipLine("the symbol line of a point");
    }
    TextReader rows(mid, TextReader::Mode::Blanks);
    map.RiverMiles.clear();
    for (size_t k = 0; k < map.RiverPoints.size(); ++k) {
        RiverMileRec r;
        r.MapId = rows.Int32("a vertex number (one row per point of " + mifPath + ")");
        r.RiverMile = rows.Single("a river mile");
        if (!map.RiverMiles.empty() && r.RiverMile < map.RiverMiles.back().RiverMile)
            rows.Fail("a river mile at or above the row before it", std::to_string(r.RiverMile));
        map.RiverMiles.push_back(r);
    }
}

std::vector<MapShape> ReadShapes(VectorMap& map, const std::string& path) {
    TextReader in(path, TextReader::Mode::Blanks);
    for (int k = 0; k < 4; ++k) in.SkipLine("a header line");
    const std::string columns = in.Chars(7, "the word Columns");
    if (columns != "Columns") in.Fail("the word Columns", columns);
    const int16_t c = in.Int16("a column count");
    if (c < 0) in.Fail("a column count of 0 or more", std::to_string(c));
    for (int k = 0; k < c + 2; ++k) in.SkipLine("a column definition, Data and a blank line");
    std::vector<MapShape> shapes;
    while (!in.AtEnd()) {
        const std::string word = in.Chars(6, "Pline or Region");
        MapShape s;
        if (word == "Pline ") {
            s.ShapeType = ShapePolyline;
            s.Points = readVertices(in, map);
            in.SkipLine("the pen line of a polyline");
        } else if (word == "Region") {
            s.ShapeType = ShapePolygon;
            in.Text("a polygon count");
            s.Points = readVertices(in, map);
            for (int k = 0; k < 3; ++k) in.SkipLine("the pen, brush and centre lines of a region");
        } else if (word.empty()) {
            in.SkipLine("a line");
            continue;
        }
        shapes.push_back(std::move(s));
    }
    return shapes;
}

std::vector<MapLabel> ReadMapLabels(const std::string& path) {
    TextReader in(path);
    in.SkipLine("a heading");
    const int16_t n = in.Int16("a label count");
    if (n < 0) in.Fail("a label count of 0 or more", std::to_string(n));
    std::vector<MapLabel> labels(static_cast<size_t>(n));
    for (MapLabel& l : labels) {
        l.Mile = in.Single("a label mile");
        l.Text = in.Text("a label text");
    }
    return labels;
}

void LoadMapLabels(Model& m, const std::string& path) {
    m.vectorMap.MapLabels = ReadMapLabels(path);
    m.vectorMap.MapLabelFile = path;
    for (bool& d : m.vectorMap.MapDirty) d = true;
}

int MileToPoint(const Model& m, const VectorMap& map, double mile) {
    const int n = static_cast<int>(map.RiverMiles.size());
    if (n == 0) return 0;
    const Main& mn = m.main;
    const double span = std::fabs(static_cast<double>(mn.ReachMile(1, 0)) -
                                  mn.ReachMile(mn.NReaches, 1));
    int guess = n;
    if (span > 0) {
        const double g = std::floor(std::fabs(mile + 100) / (span / n)) + 1;
        if (g < n) guess = static_cast<int>(g);
    }
    auto at = [&](int k) { return static_cast<double>(map.RiverMiles[k - 1].RiverMile); };
    if (mile <= at(guess)) {
        for (int k = guess; k >= 1; --k)
            if (at(k) <= mile) return map.RiverMiles[k - 1].MapId;
        return 0;
    }
    for (int k = guess; k <= n; ++k)
        if (at(k) >= mile) return k > 1 ? map.RiverMiles[k - 2].MapId : 0;
    return 0;
}

std::vector<int16_t> BuildReachPoints(const Model& m, const VectorMap& map) {
    const int nr = m.main.NReaches;
    std::vector<int16_t> points(static_cast<size_t>(nr) + 2, 0);
    for (int r = 1; r <= nr; ++r) {
        const int p = MileToPoint(m, map, m.main.ReachMile(r, 0));
        if (p < 1 || p > static_cast<int>(map.RiverPoints.size()))
            throw FileFault(midPath(m.main.RiverMifFile),
                            "no vertex of the river stands at or below mile " +
                                std::to_string(m.main.ReachMile(r, 0)) + ", where reach " +
                                std::to_string(r) + " begins (expected the mile column to "
                                "cover every reach)");
        points[static_cast<size_t>(r)] = static_cast<int16_t>(p);
    }
    points[static_cast<size_t>(nr) + 1] = static_cast<int16_t>(map.RiverPoints.size());
    return points;
}

int PointToReach(const Model& m, int vertex) {
    const std::vector<int16_t>& rp = m.vectorMap.ReachPoint;
    for (int r = 1; r + 1 < static_cast<int>(rp.size()); ++r)
        if (rp[static_cast<size_t>(r) + 1] >= vertex) return r;
    return 0;
}

void LoadMapLayers(Model& m) {
    const Main& mn = m.main;
    VectorMap map = m.vectorMap;  // the maxima of the box carry over between loads
    Legend legend;
    try {
        ReadRiver(map, mn.RiverMifFile);
        map.LakeShapes = ReadShapes(map, mn.LakesMifFile);
        map.TribShapes = ReadShapes(map, mn.TribsMifFile);
        legend = ReadLegends(mn.ModelMdeFile);
        const std::string labels = map.MapLabelFile.empty() ? mn.ReachLabelsFile : map.MapLabelFile;
        map.MapLabels = ReadMapLabels(labels);
        map.MapLabelFile = labels;
        map.ReachPoint = BuildReachPoints(m, map);
    } catch (const Fault& e) {
        m.vectorMap.Loaded = false;
        ShowMessage(m, "maps", std::string("The maps are not available: ") + e.what());
        return;
    }
    map.Loaded = true;
    for (bool& d : map.MapDirty) d = true;
    m.vectorMap = std::move(map);
    m.legend = std::move(legend);
}

}  // namespace osm
