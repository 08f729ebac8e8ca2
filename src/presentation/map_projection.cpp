#include "presentation/map_projection.h"

#include <algorithm>
#include <cmath>

#include "core/colours.h"
#include "core/fault.h"
#include "core/model.h"
#include "presentation/map_layers.h"

namespace osm {

MapWindow ProjectMap(const VectorMap& map, float width, float height) {
    MapWindow out;
    float w = map.MapMaxX - map.MapMinX;
    float h = map.MapMaxY - map.MapMinY;
    const float cx = w / 2 + map.MapMinX;
    const float cy = h / 2 + map.MapMinY;
    if (h == 0 || w / h > 1.5f) {
        h = w / 1.5f;
        const float margin = w * 0.05f;
        h += margin;
        w += margin;
        const float d = margin / 2;
        out.Top = h / 2 + cy + d;
        out.Bottom = cy - h / 2 - d;
        out.Left = map.MapMinX - d;
        out.Right = map.MapMaxX + d;
    } else {
        // Shifted up by d on both edges, unlike the wide case.
        w = h * 1.5f;
        const float margin = h * 0.05f;
        w += margin;
        h += margin;
        const float d = margin / 2;
        out.Right = w / 2 + cx + d;
        out.Left = cx - w / 2 - d;
        out.Bottom = map.MapMinY + d;
        out.Top = map.MapMaxY + d;
    }
    if (w == 0 || h == 0) throw Fault("the map layers have no extent: nothing to project");
    out.Sx = width / w;
    out.Sy = height / h;
    return out;
}

MapPoint ToScreen(const MapWindow& w, MapPoint p) {
    const float px = std::fabs((static_cast<float>(p.X) - w.Left) * w.Sx);
    const float py = std::fabs((static_cast<float>(p.Y) - w.Top) * w.Sy);
    return {static_cast<int32_t>(std::nearbyint(px)), static_cast<int32_t>(std::nearbyint(py))};
}

std::vector<MapPoint> ToScreen(const MapWindow& w, const std::vector<MapPoint>& pts) {
    std::vector<MapPoint> out;
    out.reserve(pts.size());
    for (MapPoint p : pts) out.push_back(ToScreen(w, p));
    return out;
}

const std::array<int32_t, 26>& ColourRamp() {
    static const std::array<int32_t, 26> ramp = [] {
        std::array<int32_t, 26> out{};
        auto channel = [](double v) {
            const double r = std::nearbyint(v);
            return static_cast<int>(std::clamp(r, 0.0, 255.0));
        };
        for (int i = 1; i <= 25; ++i) {
            const double x = i / 25.0;
            const double x2 = x * x, x3 = x2 * x, x4 = x3 * x;
            out[static_cast<size_t>(i)] =
                RGB(channel(200 - 470 * x - 2046 * x2 + 6963 * x3 - 4486 * x4),
                    channel(5.45 - 252 * x + 3138 * x2 - 3982 * x3 + 970 * x4),
                    channel(169 + 605 * x - 1903 * x2 + 552 * x3 + 650 * x4));
        }
        out[0] = QBColor(0);
        return out;
    }();
    return ramp;
}

int32_t ColourOfValue(const LegendRec& l, float value, int32_t inForce) {
    if (l.Categorical == 1) {
        for (size_t k = 0; k < l.Breaks.size() && k < static_cast<size_t>(l.NCats); ++k)
            if (value <= l.Breaks[k]) return l.Colours[k];
        return inForce;
    }
    const float width = l.ScaleMax - l.ScaleMin;
    if (width == 0)
        throw Fault("legend \"" + l.Name + "\": the scale's limits are equal (" +
                    std::to_string(l.ScaleMin) + "), so no colour can be chosen");
    const double i = std::floor(static_cast<double>(value * (24.0f / width))) + 1;
    if (std::isnan(i) || i < 0)
        throw Fault("legend \"" + l.Name + "\": value " + std::to_string(value) +
                    " lies below the colour scale (index " + std::to_string(i) + ")");
    return ColourRamp()[static_cast<size_t>(std::min(i, 25.0))];
}

std::vector<int32_t> HitVertices(const VectorMap& map, const std::vector<MapPoint>& screen,
                                 int x, int y) {
    std::vector<int32_t> hits;
    for (size_t i = 0; i + 1 < screen.size() && i < map.RiverMiles.size(); ++i) {
        const MapPoint a = screen[i], b = screen[i + 1];
        const int left = std::min(a.X, b.X) - 2, right = std::max(a.X, b.X) + 2;
        const int top = std::min(a.Y, b.Y) - 2, bottom = std::max(a.Y, b.Y) + 2;
        if (x > left && x < right && y > top && y < bottom) hits.push_back(map.RiverMiles[i].MapId);
    }
    return hits;
}

std::vector<ReachHit> HitReaches(const Model& m, const std::vector<int32_t>& hits) {
    std::vector<ReachHit> out;
    int last = -1;
    for (int32_t hit : hits) {
        const int r = PointToReach(m, hit);
        if (r != last) {
            last = r;
            out.push_back({r, hit});
        }
    }
    return out;
}

}  // namespace osm
