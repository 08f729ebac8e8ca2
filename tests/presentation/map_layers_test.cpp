// Map layers, legends, projection and colours: hand-worked values on small
// synthetic layers, the default data set's layers, and refused bad input.
#include <gtest/gtest.h>

#include "core/colours.h"
#include "core/model.h"
#include "presentation/legends.h"
#include "presentation/map_layers.h"
#include "presentation/map_projection.h"
#include "support/collect_messages.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

namespace osm {
namespace {

using test::FaultText;
using test::Holds;
using test::TestFolder;

const std::string MifHeader =
    "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n"
    "CoordSys NonEarth Units \"mi\" Bounds (0, 0) (400, 400)\nColumns 2\n"
    "  ID Integer\n  RiverMile Float\nData\n\n";
const std::string ShapeHeader =
    "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n"
    "CoordSys NonEarth Units \"mi\" Bounds (0, 0) (400, 400)\nColumns 1\n"
    "  Name Char(40)\nData\n\n";

std::string riverMif(const std::vector<std::pair<double, double>>& pts) {
    std::string s = MifHeader;
    for (auto [x, y] : pts)
        s += "Point " + std::to_string(x) + " " + std::to_string(y) + "\n    Symbol (34,255,2)\n";
    return s;
}

// Three reaches: 0-0.5, 0.5-20.62, 20.62-40 miles.
void setReaches(Model& m, std::initializer_list<std::pair<float, float>> reaches) {
    Main& mn = m.main;
    mn.NReaches = static_cast<int16_t>(reaches.size());
    mn.FirstReach = 1;
    mn.LastReach = mn.NReaches;
    mn.ReachMile.redim(Bounds{0, mn.NReaches}, Bounds{0, 1});
    int r = 1;
    for (auto [up, down] : reaches) {
        mn.ReachMile(r, 0) = up;
        mn.ReachMile(r, 1) = down;
        ++r;
    }
}

VectorMap milesLine(std::initializer_list<float> miles) {
    VectorMap map;
    int id = 1;
    for (float mile : miles) {
        map.RiverMiles.push_back({id, mile});
        map.RiverPoints.push_back({id * 1000, 0});
        ++id;
    }
    return map;
}

TEST(MapLayers, MileToPointSearchesDownAndUpFromItsGuess) {
    Model m;
    setReaches(m, {{0, 0.5f}, {0.5f, 20.62f}, {20.62f, 40}});
    const VectorMap line = milesLine({0, 0.5f, 10, 20.62f, 30, 40});
    // span 40 over 6 vertices: every guess from the origin 100 is the last vertex.
    EXPECT_EQ(MileToPoint(m, line, 10), 3);
    EXPECT_EQ(MileToPoint(m, line, 15), 3);
    EXPECT_EQ(MileToPoint(m, line, 0.5), 2);  // exactly on a vertex: that vertex
    EXPECT_EQ(MileToPoint(m, line, -1), 0);   // above the first row
    EXPECT_EQ(MileToPoint(m, line, 41), 0);   // below the last row

    // span 900 over 4 vertices (225 a vertex): mile 310 guesses vertex 2 (mile 300)
    // and walks up to the first row at or above it, returning the row before.
    Model wide;
    setReaches(wide, {{0, 900}});
    const VectorMap sparse = milesLine({0, 300, 600, 900});
    EXPECT_EQ(MileToPoint(wide, sparse, 310), 2);
    EXPECT_EQ(MileToPoint(wide, sparse, 500), 2);
    EXPECT_EQ(MileToPoint(wide, sparse, 150), 1);
}

TEST(MapLayers, ReachPointsShareTheBorderVertexWhichBelongsToTheUpperReach) {
    Model m;
    setReaches(m, {{0, 0.5f}, {0.5f, 20.62f}, {20.62f, 40}});
    m.vectorMap = milesLine({0, 0.5f, 10, 20.62f, 30, 40});
    m.vectorMap.ReachPoint = BuildReachPoints(m, m.vectorMap);
    EXPECT_EQ(m.vectorMap.ReachPoint, (std::vector<int16_t>{0, 1, 2, 4, 6}));
    EXPECT_EQ(PointToReach(m, 1), 1);
    EXPECT_EQ(PointToReach(m, 2), 1);  // border of reaches 1 and 2
    EXPECT_EQ(PointToReach(m, 3), 2);
    EXPECT_EQ(PointToReach(m, 4), 2);  // border of reaches 2 and 3
    EXPECT_EQ(PointToReach(m, 5), 3);
    EXPECT_EQ(PointToReach(m, 7), 0);

    // A reach that begins above the first mile of the line has no vertex.
    setReaches(m, {{-5, 0.5f}, {0.5f, 40}});
    EXPECT_TRUE(Holds(FaultText([&] { BuildReachPoints(m, m.vectorMap); }),
                      {"mile -5", "reach 1"}));
}

TEST(MapLayers, ProjectionFitsTheBoxAtOneAndAHalfToOne) {
    VectorMap wide;
    wide.MapMinX = 0, wide.MapMinY = 0, wide.MapMaxX = 3000, wide.MapMaxY = 1000;
    // h = 3000/1.5 + 150 = 2150, w = 3150, d = 75.
    const MapWindow a = ProjectMap(wide, 630, 430);
    EXPECT_FLOAT_EQ(a.Left, -75);
    EXPECT_FLOAT_EQ(a.Right, 3075);
    EXPECT_FLOAT_EQ(a.Top, 1650);
    EXPECT_FLOAT_EQ(a.Bottom, -650);
    EXPECT_EQ(ToScreen(a, MapPoint{0, 0}), (MapPoint{15, 330}));
    EXPECT_EQ(ToScreen(a, MapPoint{3000, 1000}), (MapPoint{615, 130}));

    VectorMap tall;
    tall.MapMinX = 0, tall.MapMinY = 0, tall.MapMaxX = 1000, tall.MapMaxY = 2000;
    // w = 3000 + 100, h = 2100, d = 50; both vertical edges move up by d.
    const MapWindow b = ProjectMap(tall, 310, 210);
    EXPECT_FLOAT_EQ(b.Left, -1100);
    EXPECT_FLOAT_EQ(b.Right, 2100);
    EXPECT_FLOAT_EQ(b.Top, 2050);
    EXPECT_FLOAT_EQ(b.Bottom, 50);
    EXPECT_EQ(ToScreen(b, MapPoint{0, 0}), (MapPoint{110, 205}));
}

TEST(MapLayers, ColourRampAndTheColourOfAValue) {
    const auto& ramp = ColourRamp();
    EXPECT_EQ(ramp[0], RGB(0, 0, 0));
    EXPECT_EQ(ramp[1], RGB(178, 0, 190));   // x = 0.04; green 0.14 rounds to 0
    EXPECT_EQ(ramp[13], RGB(53, 234, 94));  // x = 0.52
    EXPECT_EQ(ramp[25], RGB(161, 0, 73));   // x = 1; green -120.55 becomes 0

    LegendRec cont;
    cont.ScaleMin = 0, cont.ScaleMax = 12;
    EXPECT_EQ(ColourOfValue(cont, 6, 0), ramp[13]);     // Int(6 * 2) + 1
    EXPECT_EQ(ColourOfValue(cont, 1000, 0), ramp[25]);  // cut to the top
    EXPECT_EQ(ColourOfValue(cont, -0.1f, 0), ramp[0]);  // Int(-0.2) + 1 = 0, black
    EXPECT_TRUE(Holds(FaultText([&] { ColourOfValue(cont, -1, 0); }), {"below the colour scale"}));
    cont.ScaleMin = 6;  // the lower limit only narrows the scale: Int(6 * 4) + 1
    EXPECT_EQ(ColourOfValue(cont, 6, 0), ramp[25]);
    cont.ScaleMax = 6;
    EXPECT_TRUE(Holds(FaultText([&] { ColourOfValue(cont, 1, 0); }), {"limits are equal"}));

    LegendRec cat;
    cat.Categorical = 1, cat.NCats = 2, cat.Breaks = {10, 20}, cat.Colours = {111, 222};
    EXPECT_EQ(ColourOfValue(cat, 10, 0), 111);
    EXPECT_EQ(ColourOfValue(cat, 15, 0), 222);
    EXPECT_EQ(ColourOfValue(cat, 25, 333), 333);  // above the last break: the colour in force
    EXPECT_EQ(QBColor(12), RGB(255, 0, 0));
    EXPECT_EQ(QBColor(1), RGB(0, 0, 128));
}

TEST(MapLayers, HitTestListsEachReachOnceInVertexOrder) {
    Model m;
    setReaches(m, {{0, 0.5f}, {0.5f, 20.62f}, {20.62f, 40}});
    m.vectorMap = milesLine({0, 0.5f, 10, 20.62f, 30, 40});
    m.vectorMap.ReachPoint = BuildReachPoints(m, m.vectorMap);
    const std::vector<MapPoint> screen = {{0, 0}, {10, 0}, {20, 0}, {30, 0}, {40, 0}, {50, 0}};
    // At x 40 the segments 4-5 and 5-6 both hold the mouse; a segment counts by
    // its first vertex, so the border vertex 4 of reaches 2 and 3 is reach 2.
    EXPECT_EQ(HitVertices(m.vectorMap, screen, 40, 1), (std::vector<int32_t>{4, 5}));
    const auto rows = HitReaches(m, HitVertices(m.vectorMap, screen, 40, 1));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].Reach, 2);
    EXPECT_EQ(rows[1].Reach, 3);
    EXPECT_TRUE(HitVertices(m.vectorMap, screen, 30, 2).empty());  // strictly inside 2 pixels
    // Vertices 3 and 4 both lie in reach 2: one row, that of the first hit.
    const auto one = HitReaches(m, {3, 4});
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one[0].Vertex, 3);
}

TEST(MapLayers, ReadsTheInterchangeLayers) {
    TestFolder f;
    const std::string mif = f.Write("r.mif", riverMif({{210.3641, 115.6238}, {210.5, 114.0}}));
    f.Write("r.mid", "1,0\n2,0.5\n");
    VectorMap map;
    map.MapMaxX = 999999;  // the maxima are never reset
    ReadRiver(map, mif);
    EXPECT_EQ(map.RiverPoints, (std::vector<MapPoint>{{210364, 115624}, {210500, 114000}}));
    EXPECT_EQ(map.RiverMiles[1].MapId, 2);
    EXPECT_FLOAT_EQ(map.RiverMiles[1].RiverMile, 0.5f);
    EXPECT_FLOAT_EQ(map.MapMinX, 210364);
    EXPECT_FLOAT_EQ(map.MapMinY, 114000);
    EXPECT_FLOAT_EQ(map.MapMaxX, 999999);
    EXPECT_FLOAT_EQ(map.MapMaxY, 115624);

    // An unknown statement between objects leaves an empty slot.
    const std::string shapes = f.Write(
        "s.mif", ShapeHeader + "Region  1\n  3\n1 1\n2 1\n2 2\n    Pen (1,2,0)\n    Brush (2,0)\n"
                               "    Center 1.5 1.5\nPoint \nPline 2\n3 3\n4 4.5\n    Pen (1,2,0)\n");
    const std::vector<MapShape> s = ReadShapes(map, shapes);
    ASSERT_EQ(s.size(), 3u);
    EXPECT_EQ(s[0].ShapeType, ShapePolygon);
    EXPECT_EQ(s[0].Points.size(), 3u);
    EXPECT_EQ(s[1].ShapeType, ShapeEmpty);
    EXPECT_EQ(s[2].ShapeType, ShapePolyline);
    EXPECT_EQ(s[2].Points[1], (MapPoint{4000, 4500}));
    EXPECT_FLOAT_EQ(map.MapMinX, 1000);

    const auto labels = ReadMapLabels(f.Write("l.csv", "\"Mile\",\"Label\"\n2\n0,\"Dam\"\n0.4,\"Harl, Canyon\"\n"));
    ASSERT_EQ(labels.size(), 2u);
    EXPECT_FLOAT_EQ(labels[1].Mile, 0.4f);
    EXPECT_EQ(labels[1].Text, "Harl, Canyon");
}

TEST(MapLayers, RefusesMalformedLayersNamingFileAndLine) {
    TestFolder f;
    VectorMap map;
    const std::string bad = f.Write("b.mif", MifHeader + "Point 1 2\n  Symbol\nPoint 1 x\n  Symbol\n");
    f.Write("b.mid", "1,0\n2,1\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadRiver(map, bad); }), {"b.mif:12", "Y coordinate"}));
    const std::string shortMid = f.Write("c.mif", riverMif({{1, 1}, {2, 2}}));
    f.Write("c.mid", "1,0\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadRiver(map, shortMid); }), {"c.mid", "vertex number"}));
    const std::string noMid = f.Write("d.mif", riverMif({{1, 1}}));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRiver(map, noMid); }),
                      {"Failed to find file Loading Map Data", "d.mid"}));
    const std::string header = f.Write("h.mif", "a\nb\nc\nd\nColumn 1\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadShapes(map, header); }), {"h.mif:5", "Columns"}));
    const std::string legend = f.Write("bad.mde", "1\nFlow\n10 1\n2 0 0 40\n255 10\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadLegends(legend); }), {"bad.mde", "colour"}));
}

TEST(MapLayers, ABadLayerLeavesTheProgramWithoutMapsAndSaysSoOnce) {
    TestFolder f;
    test::CollectMessages sink;
    Model m;
    m.messages = &sink;
    setReaches(m, {{0, 0.5f}, {0.5f, 1}});
    m.main.RiverMifFile = f.Write("ORRiv.mif", riverMif({{1, 1}, {2, 2}, {3, 3}}));
    f.Write("ORRiv.mid", "1,0\n2,0.5\n3,1\n");
    m.main.LakesMifFile = f.Write("Lakes.mif", ShapeHeader);
    m.main.TribsMifFile = f.Write("tribs.mif", ShapeHeader + "Pline 1\n1 1\n  Pen\n");
    m.main.ModelMdeFile = f.Write("model.mde", "0\n");
    m.main.ReachLabelsFile = f.Write("Reachlabels.csv", "\"Mile\",\"Label\"\n1\n0.5,\"Gorge\"\n");
    LoadMapLayers(m);
    ASSERT_TRUE(m.vectorMap.Loaded);
    EXPECT_EQ(m.vectorMap.ReachPoint, (std::vector<int16_t>{0, 1, 2, 3}));
    EXPECT_EQ(m.vectorMap.MapLabels.size(), 1u);
    EXPECT_TRUE(sink.seen.empty());

    f.Write("tribs.mif", ShapeHeader + "Pline 2\n1 1\n");  // ends in mid-record
    LoadMapLayers(m);
    EXPECT_FALSE(m.vectorMap.Loaded);
    EXPECT_EQ(m.vectorMap.RiverPoints.size(), 3u);  // the layers in force stay
    ASSERT_EQ(sink.seen.size(), 1u);
    EXPECT_TRUE(Holds(sink.seen[0].text, {"maps are not available", "tribs.mif"}));
}

TEST(MapLayers, DefaultDataLayersCutIntoEveryReach) {
    Model m;
    const std::string data = std::string(OSM_SOURCE_DIR) + "/data/";
    setReaches(m, {{0, 0.4f}, {0.4f, 100}, {100, 253}});
    m.main.RiverMifFile = data + "ORRiv.mif";
    m.main.LakesMifFile = data + "Lakes.mif";
    m.main.TribsMifFile = data + "tribs.mif";
    m.main.ModelMdeFile = data + "model.mde";
    m.main.ReachLabelsFile = data + "Reachlabels.csv";
    LoadMapLayers(m);
    ASSERT_TRUE(m.vectorMap.Loaded);
    EXPECT_EQ(m.vectorMap.RiverPoints.size(), 507u);
    EXPECT_EQ(m.vectorMap.ReachPoint, (std::vector<int16_t>{0, 1, 1, 201, 507}));
    EXPECT_EQ(m.vectorMap.MapLabels.size(), 13u);
    EXPECT_EQ(m.legend.Legends.size(), 75u);
}

// Graph table: variable 1 "Flow" with sets "min" and "max" (map id 10), variable 2
// "Temp" with one set (map id 20).
void setGraphTable(Model& m) {
    Graphs& g = m.graphs;
    g.NVars = 2;
    g.MaxSub = 2;
    g.VarLabel.redim(Bounds{0, 2}, Bounds{1, 2});
    g.VarSets.redim(Bounds{1, 2});
    g.VarMapId.redim(Bounds{1, 2});
    g.VarLabel(0, 1) = "Flow: ", g.VarLabel(1, 1) = "min", g.VarLabel(2, 1) = "max";
    g.VarLabel(0, 2) = "Temp";
    g.VarSets(1) = 2, g.VarSets(2) = 1;
    g.VarMapId(1) = 10, g.VarMapId(2) = 20;
}

TEST(Legends, RoundTripAndCheckAgainstTheGraphTable) {
    TestFolder f;
    const std::string original = std::string(OSM_SOURCE_DIR) + "/data/model.mde";
    const Legend data = ReadLegends(original);
    SaveLegends(data, f.File("copy.mde"));
    EXPECT_EQ(ReadLegends(f.File("copy.mde")).Legends, data.Legends);
    EXPECT_EQ(data.Legends[0].Name, "Flow (kcfs): min");
    EXPECT_EQ(data.Legends[0].Colours[0], 16777215);
    EXPECT_FLOAT_EQ(data.Legends[0].Breaks[4], 40);

    // The file holds Temp (renamed since), a legend of a removed variable (30),
    // and Flow max; Flow min is missing.
    Model m;
    setGraphTable(m);
    m.main.ModelMdeFile = f.Write("model.mde",
                                  "3\nOld temp\n20 1\n2 1 0 5\n255 1\n65280 5\nGone\n30 1\n2 0 0 1\n"
                                  "0 0\n0 0\nFlow: max\n10 2\n1 1 3 4\n16711680 4\n");
    LoadLegends(m, m.main.ModelMdeFile);
    CheckLegends(m);
    const auto& l = m.legend.Legends;
    ASSERT_EQ(l.size(), 3u);
    EXPECT_EQ(l[0].Name, "Flow: min");  // a default legend: continuous 0 to 1
    EXPECT_EQ(l[0].NCats, 2);
    EXPECT_FLOAT_EQ(l[0].ScaleMax, 1);
    EXPECT_EQ(l[1].Name, "Flow: max");
    EXPECT_EQ(l[1].Colours, (std::vector<int32_t>{16711680}));
    EXPECT_EQ(l[2].Name, "Temp");
    EXPECT_EQ(l[2].Categorical, 1);
    EXPECT_EQ(ReadLegends(m.main.ModelMdeFile).Legends, l);  // written in the table's order
    EXPECT_EQ(VarOfLegend(m, 2), 1);
    EXPECT_EQ(VarOfLegend(m, 3), 2);
    EXPECT_EQ(VarOfLegend(m, 4), 0);

    // Agreeing legends are not rewritten.
    const std::string before = f.Read("model.mde");
    f.Write("model.mde", before + "\n");
    CheckLegends(m);
    EXPECT_EQ(f.Read("model.mde"), before + "\n");
}

}  // namespace
}  // namespace osm
