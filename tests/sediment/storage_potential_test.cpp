#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "sediment/storage_potential.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

namespace {

constexpr double G = SandDensity;

// One run reach a mile long with five slices of 2 ft and a rating of 1000 cfs a
// foot, so the mid-slice discharges are 1000, 3000, .., 9000 cfs.
struct Geometry {
    TestFolder f;
    Model m;
    Sediment& sd = m.sediment;

    explicit Geometry(const std::string& eddySheet =
                          "Discharge,Vol_S,Vol_M,Vol_L\r\n0,0,0,0\r\n4000,100,200,400\r\n8000,300,400,1000\r\n") {
        BuildMonthsTable(m);
        m.main.NSlices = 5;
        ReadReachFile(m, f.Write("Reaches.csv", "\"t\",2,2,2\r\n\"a\",\"b\",\"c\",\"d\"\r\n"
                                                "1,\"Dam\",0,0.5\r\n2,\"Run\",0.5,1.5\r\n"));
        f.Write("physical.xls/Eddy_Storage.csv", eddySheet);
        m.main.PhysicalXls = f.File("physical.xls");
        Physical& p = m.physical;
        for (int i = 1; i <= 13; ++i) {
            p.QTable(i, 2) = static_cast<float>((i - 1) * 5000);
            p.StageTable(i, 2) = static_cast<float>((i - 1) * 5);
        }
        const float area[] = {10560, 10560, 105600, 10560, 10560};  // half widths 1, 1, 10, 1, 1 ft
        for (int s = 1; s <= 5; ++s) {
            p.SliceQ(s, 2) = static_cast<float>(1000 * (2 * s - 1));
            p.SliceArea(s, 2) = area[s - 1];
        }
        for (int b = 1; b <= 4; ++b) p.IndexSlice(b, 2) = static_cast<float>(b == 1 ? 2 : b + 2);
        m.morph.NEddy(2, 1) = 1, m.morph.NEddy(2, 3) = 2, m.morph.NCM(2) = 3;
        sd.AngleOfRepose = 45, sd.AvgCMLengthInMiles = 0.5f;
        sd.CoarseVol(1, 2) = 500000, sd.CoarseVol(2, 2) = 440000, sd.CoarseVol(3, 2) = 400000;
        sd.BedThickMax = 2, sd.BedThickHalfSat = 1000, sd.BedThickSlope = 1;
        sd.CFSLowBeachLimit = 2000, sd.CFSHighBeachLimit = 6000, sd.BaseBeachRelFull = 0.5f;
    }
};

}  // namespace

// Eddies: one small and two large give 0, 900, 2300 ft3 at 0, 4000, 8000 cfs;
// each slice holds the rise of that curve over the slice below, and the last
// segment goes on above 8000 cfs.
// Only a reset restarts the stores; a plain recomputation keeps the sand where
// it is.
TEST(StoragePotential, EddyMarginAndPoolOfASmallGeometry) {
    Geometry g;
    for (int z = 1; z <= 3; ++z) g.sd.IniPropSliceFull(z) = 0.5f;
    g.sd.SandStore(2, 2, 1) = 7;
    RecomputeStorage(g.m, false);
    const Sediment& sd = g.sd;
    EXPECT_EQ(sd.SandStore(2, 2, 1), 7.0f);
    const double eddy[] = {225, 450, 575, 700, 700};
    // Margins: the lowest slice fills 2w x 2 ft; above, a 45 degree wedge h x w
    // with h cut at the slice's 2 ft.
    const double margin[] = {4, 1, 20, 1, 1};
    for (int s = 1; s <= 5; ++s) {
        EXPECT_NEAR(sd.SandPot(s, 2, 1), eddy[s - 1] * G, eddy[s - 1] * G * 1e-6) << s;
        const double cm = G * 3 * margin[s - 1] * 0.5 * 5280;
        EXPECT_NEAR(sd.SandPot(s, 2, 2), cm, cm * 1e-6) << s;
    }
    // Pool: coarse volume from levels 1..3 (below 5000 cfs the first segment
    // extends down), plus the bed layer 2000/(1000 + q) ft over 17,930,000 ft2 x 0.2.
    auto pool = [](double vc, double q) { return (vc + 17930000 * 0.2 * 2 * 1000 / (1000 + q)) * G; };
    EXPECT_NEAR(sd.SandPot(1, 2, 3), pool(580000, 1000), 1e-6 * pool(580000, 1000));
    EXPECT_NEAR(sd.SandPot(4, 2, 3), pool(460000, 7000), 1e-6 * pool(460000, 7000));
    EXPECT_FLOAT_EQ(sd.PoolPotRef(2), sd.SandPot(5, 2, 3));  // every slice lies below 20000 cfs
    // Bands below index slices 2, 4, 5, 6: slice 1 | 2, 3 | 4 | 5.
    EXPECT_NEAR(sd.BandPot(2, 2, 1), 1025 * G, 1);
    // Beach slices: the first above 2000 cfs is 2, the first above 6000 is 4.
    EXPECT_EQ(sd.BeachLowSlice(2), 1);
    EXPECT_EQ(sd.BeachHighSlice(2), 3);
    EXPECT_NEAR(sd.BeachBasePot(2), (225 + 450 + 575) * G * 0.5, 1);
    RecomputeStorage(g.m, true);
    EXPECT_NEAR(sd.SandStore(2, 2, 1), 225 * G, 1);
    EXPECT_FLOAT_EQ(sd.SandStore(0, 2, 3), sd.SandPot(1, 2, 3) * 0.5f);
}

TEST(StoragePotential, AnEmptyEddySheetIsRefusedByName) {
    Geometry g("Discharge,Vol_S,Vol_M,Vol_L\r\n");
    EXPECT_TRUE(osm::test::Holds(osm::test::FaultText([&] { RecomputeStorage(g.m, false); }),
                                 {"Eddy_Storage$", "an empty sheet"}));
}

// The curves are interpolated between rows: a repeated discharge used to divide
// by zero and store NaN sand, a falling one a negative slope. A lone row is a
// segment from the origin and must lie above it.
TEST(StoragePotential, EddyDischargesMustRiseFromRowToRow) {
    const std::string heads = "Discharge,Vol_S,Vol_M,Vol_L\r\n";
    const std::pair<std::string, std::vector<const char*>> bad[] = {
        {heads + "0,0,0,0\r\n4000,100,200,400\r\n4000,100,200,400\r\n8000,300,400,1000\r\n",
         {"Eddy_Storage$:4", "a discharge above the row before's 4000 cfs", "'4000'"}},
        {heads + "0,0,0,0\r\n8000,300,400,1000\r\n4000,100,200,400\r\n", {"Eddy_Storage$:4", "'4000'"}},
        {heads + "-10,0,0,0\r\n4000,100,200,400\r\n", {"Eddy_Storage$:2", "0 cfs or more", "'-10'"}},
        {heads + "0,5,5,5\r\n", {"Eddy_Storage$:2", "above 0 if it is the only row", "'0'"}},
    };
    for (const auto& [sheet, parts] : bad) {
        Geometry g(sheet);
        const std::string text = osm::test::FaultText([&] { RecomputeStorage(g.m, false); });
        for (const char* part : parts) EXPECT_NE(text.find(part), std::string::npos) << part << " not in " << text;
    }
    // A lone row above 0 runs its segment from the origin: 900 ft3 at 4000 cfs
    // gives 225 ft3 a slice of 1000 cfs, the last one included.
    Geometry lone("Discharge,Vol_S,Vol_M,Vol_L\r\n4000,100,200,400\r\n");
    RecomputeStorage(lone.m, false);
    for (int s = 1; s <= 5; ++s) EXPECT_NEAR(lone.sd.SandPot(s, 2, 1), (s == 1 ? 225 : 450) * G, 1e-3 * G) << s;
}

// The bed areas belong to reaches 2..12; a reach file running other reaches is
// refused at load with a clear text.
TEST(StoragePotential, ReachesWithoutABedAreaAreRefused) {
    Geometry g;
    ReadReachFile(g.m, g.f.Write("Wide.csv", "\"t\",2,1,2\r\n\"a\",\"b\",\"c\",\"d\"\r\n"
                                             "1,\"Dam\",0,0.5\r\n2,\"Run\",0.5,1.5\r\n"));
    EXPECT_TRUE(osm::test::Holds(osm::test::FaultText([&] { RecomputeStorage(g.m, false); }),
                                 {"reaches 2 to 12", "runs reaches 1 to 2"}));
}

// A coarse-volume discharge that is not one of the twelve levels is named with
// its row, and nothing is taken.
TEST(StoragePotential, ABadCoarseVolumeLevelIsNamed) {
    Geometry g;
    g.f.Write("physical.xls/Bad.csv", "Discharge,ReachNum,V_Coarse\r\n5000,2,1\r\n6000,2,2\r\n");
    EXPECT_TRUE(osm::test::Holds(
        osm::test::FaultText([&] { ReadCoarseVolumes(g.m, g.m.main.PhysicalXls, "Bad$"); }), {"Bad$", "3", "6000"}));
    EXPECT_EQ(g.sd.CoarseVol(1, 2), 500000.0f);
}
