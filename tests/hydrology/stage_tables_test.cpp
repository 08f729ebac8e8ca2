#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/fault.h"
#include "core/model.h"
#include "core/reaches.h"
#include "hydrology/stage_tables.h"
#include "support/collect_messages.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;
using osm::test::TestFolder;

namespace {

const int sheetQ[12] = {5000, 8000, 10000, 15000, 18000, 20000, 25000, 30000, 35000, 40000, 45000, 60000};

// Reach 2 runs from dam mile 0.5 to 20.62, reach 3 from 20.62 to 40; the sheet
// counts miles from 15.62 below the dam.
const char* threeReaches =
    "\"Test river\",3,2,3\r\n\"Reach\",\"Label\",\"Upper\",\"Lower\"\r\n"
    "1,\"Dam\",0,0.5\r\n2,\"Upper gorge\",0.5,20.62\r\n3,\"Lower gorge\",20.62,40\r\n";

// One record a discharge for each run reach: reach 2 (sheet mile -10) has stage
// 2i, velocity 1, width 100 + 10i; reach 3 (sheet mile 10) stage 3i, velocity 3,
// width 300.
std::string StarsOut(const std::string& before, const std::string& after) {
    std::string s = "MILE,DISCHARGE,STAGE,VELOCITY,WIDTH\r\n" + before;
    for (int i = 1; i <= 12; ++i) {
        const std::string q = std::to_string(sheetQ[i - 1]);
        s += "-10," + q + "," + std::to_string(2 * i) + ",1," + std::to_string(100 + 10 * i) + "\r\n";
        s += "10," + q + "," + std::to_string(3 * i) + ",3,300\r\n";
    }
    return s + after;
}

struct River {
    TestFolder f;
    Model m;
    osm::test::CollectMessages messages;
    std::string reachFile;

    explicit River(const std::string& sheet) {
        m.messages = &messages;
        reachFile = f.Write("Reaches.csv", threeReaches);
        ReadReachFile(m, reachFile);
        f.Write("physical.xls/StarsOut.csv", sheet);
        m.main.PhysicalXls = f.File("physical.xls");
    }
};

// One run reach a mile long, five slices of 2 ft. Mean stage 2i + 2 at row i;
// widths 40, 60, then 50 (narrower), then 55 + 5 a row; velocity 1.5.
struct Tiny {
    TestFolder f;
    Model m;
    StageAverages avg;
    std::string reachFile;

    Tiny() {
        m.main.NSlices = 5;
        m.main.SliceThick = 2;
        reachFile = f.Write("Tiny.csv", "\"Tiny\",2,2,2\r\n\"a\",\"b\",\"c\",\"d\"\r\n"
                                        "1,\"Dam\",0,0.5\r\n2,\"Run\",0.5,1.5\r\n");
        ReadReachFile(m, reachFile);
        // The storage recomputation after the index slices reads the eddy curves.
        f.Write("physical.xls/Eddy_Storage.csv", "Discharge,Vol_S,Vol_M,Vol_L\r\n0,0,0,0\r\n60000,0,0,0\r\n");
        m.main.PhysicalXls = f.File("physical.xls");
        for (auto* t : {&avg.Stage, &avg.Velocity, &avg.Width}) t->redim(Bounds{0, 12}, Bounds{0, 2});
        const float widths[12] = {40, 60, 50, 55, 60, 65, 70, 75, 80, 85, 90, 95};
        for (int i = 1; i <= 12; ++i)
            avg.Stage(i, 2) = static_cast<float>(2 * i + 2), avg.Width(i, 2) = widths[i - 1], avg.Velocity(i, 2) = 1.5f;
    }
};

}  // namespace

TEST(StageTables, AveragesBySheetDischargeAndReachKeepingTheRecordQuirks) {
    River river(StarsOut("30,5000,9,9,9\r\n",           // outside every reach, before any reach
                         "-5,5000,3,2,150\r\n"          // reach 2, counted
                         "30,5000,1,3,10\r\n"           // outside: adds to reach 2, not counted
                         "-10,7000,3,0,30\r\n"          // no such discharge: stays on 5000
                         "5,60000,40,3,300\r\n"));      // mile 20.62: the first mile of reach 3
    const StageAverages a = BuildStageTables(river.m, river.m.main.PhysicalXls, "StarsOut$");
    // Reach 2 at 5000 cfs: stages 2+3+1+3 over three counted records.
    EXPECT_EQ(a.Count(1, 2), 3);
    EXPECT_FLOAT_EQ(a.Stage(1, 2), 3.0f);
    EXPECT_FLOAT_EQ(a.Velocity(1, 2), 2.0f);   // (1+2+3+0)/3
    EXPECT_FLOAT_EQ(a.Width(1, 2), 100.0f);    // (110+150+10+30)/3
    // The boundary record went to reach 3, not reach 2.
    EXPECT_EQ(a.Count(12, 3), 2);
    EXPECT_FLOAT_EQ(a.Stage(12, 3), 38.0f);
    // A record before any reach matched lands on the unused reach 0, uncounted.
    EXPECT_EQ(a.Count(1, 0), 0);
    EXPECT_FLOAT_EQ(a.Stage(1, 0), 9.0f);
}

TEST(StageTables, RatingInterpolatesAndExtendsTheEndSegments) {
    River river("");
    Physical& p = river.m.physical;
    const int r = 2;
    for (int i = 1; i <= 13; ++i) {
        p.QTable(i, r) = i == 1 ? 0.0f : static_cast<float>(sheetQ[i - 2]);
        p.StageTable(i, r) = static_cast<float>(i == 13 ? 14 : i - 1);
        p.WidthTable(i, r) = i == 1 ? 0.0f : static_cast<float>(i == 13 ? 190 : 100 + 10 * (i - 2));
    }
    EXPECT_DOUBLE_EQ(StageOfQ(river.m, r, 12500), 3.5);   // between 10000 and 15000
    // Below the first row the rating has nothing to read.
    EXPECT_TRUE(Holds(FaultText([&] { StageOfQ(river.m, r, -5000); }),
                      {"reach 2", "-5000", "below the first row of QTable"}));
    // 45000..60000 rises 3 ft: 10000 cfs more is 2 ft more.
    EXPECT_DOUBLE_EQ(StageOfQ(river.m, r, 70000), 16.0);
    EXPECT_DOUBLE_EQ(QOfStage(river.m, r, 16.0), 70000.0);
    // The top width segment falls 10 ft over 3 ft of stage: no clamp at 0.
    EXPECT_NEAR(WidthOfStage(river.m, r, 74.0), -10.0, 1e-9);
    // An unread rating is a fault, not a division by zero.
    EXPECT_TRUE(Holds(FaultText([&] { StageOfQ(river.m, 1, 1000); }), {"reach 1"}));
}

TEST(StageTables, CachedFilesOfATinyReachAndAMalformedOne) {
    Tiny t;
    WriteHabFile(t.m, t.reachFile, t.avg);
    WriteQsvwFile(t.m, t.reachFile, t.avg);
    // Widths at stages 2, 4, 6, 8, 10: 20 (halfway to row 1), 40, 60, 50, 55; the
    // narrowing slice adds nothing and the next counts from the narrower width.
    EXPECT_EQ(t.f.Read("Tiny.hab"),
              "\"Number of slices = \",5\r\n\"Thickness of slice = \",2\r\n"
              "2,105600,105600,105600,0,26400\r\n");

    ReadQsvwFile(t.m, t.reachFile);
    ReadHabFile(t.m, t.reachFile);
    const Physical& p = t.m.physical;
    EXPECT_FLOAT_EQ(p.WidthTable(4, 2), 50.0f);
    // Mid-slice discharges at stages 1, 3, 5, 7, 9.
    const float q[5] = {1250, 3750, 6500, 9000, 12500}, w[5] = {20, 20, 20, 0, 5};
    for (int s = 1; s <= 5; ++s) {
        EXPECT_FLOAT_EQ(p.SliceQ(s, 2), q[s - 1]) << s;
        EXPECT_FLOAT_EQ(p.SliceWidth(s, 2), w[s - 1]) << s;
    }
    EXPECT_FLOAT_EQ(p.WetArea(2), 343200.0f);
    // WetArea is not cleared by a second read.
    ReadHabFile(t.m, t.reachFile);
    EXPECT_FLOAT_EQ(p.WetArea(2), 686400.0f);

    // Index flows of 0, 5000, 9000 and 70000 cfs: stages 0, 4, 7 and 27.33 ft.
    const float indexQ[4] = {0, 5000, 9000, 70000}, slice[4] = {1, 3, 4, 14};
    for (int i = 1; i <= 4; ++i) t.m.main.IndexQ(i) = indexQ[i - 1];
    SetIndexSlices(t.m);
    for (int i = 1; i <= 4; ++i) EXPECT_FLOAT_EQ(p.IndexSlice(i, 2), slice[i - 1]) << i;
    EXPECT_FLOAT_EQ(p.IndexSlice(1, 1), 0.0f);  // reach 1 is not run

    // A malformed cached file names file and line and changes nothing.
    std::string text = t.f.Read("Tiny.qsvw");
    t.f.Write("Tiny.qsvw", text.replace(text.find("8000,6,"), 7, "8000,6x,"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadQsvwFile(t.m, t.reachFile); }), {"Tiny.qsvw:4"}));
    EXPECT_FLOAT_EQ(p.StageTable(2, 2), 4.0f);
    t.f.Write("Tiny.hab", "\"Number of slices = \",6\r\n\"Thickness of slice = \",2\r\n2,1,2,3,4,5,6\r\n");
    EXPECT_TRUE(Holds(FaultText([&] { ReadHabFile(t.m, t.reachFile); }), {"Tiny.hab:1", "NSlices (5)"}));
    EXPECT_FLOAT_EQ(p.WetArea(2), 686400.0f);
}

TEST(StageTables, RebuildWritesAndReadsBackTheSheetMeans) {
    River river(StarsOut("", "-5,5000,3,2,150\r\n30,5000,1,3,10\r\n"));
    RebuildStageTables(river.m, river.reachFile);
    const Physical& p = river.m.physical;
    EXPECT_FLOAT_EQ(p.StageTable(2, 2), 3.0f);  // (2 + 3 + 1) / 2
    EXPECT_FLOAT_EQ(p.StageTable(13, 3), 36.0f);
    // Reach 2, slice 1 (stage 2 ft): 2/3 of the 135 ft at 3 ft, over 20.12 miles.
    EXPECT_NEAR(p.SliceArea(1, 2), 90.0 * 20.12f * 5280, 1.0);
}

TEST(StageTables, AFlatStageStopsTheBuildAndAnExistingQsvwFileIsTakenAsItIs) {
    std::string sheet = StarsOut("", "");
    const std::string missing = "10,45000,33,3,300\r\n";
    sheet.erase(sheet.find(missing), missing.size());
    River river(sheet);
    EXPECT_TRUE(Holds(FaultText([&] { BuildStageTables(river.m, river.m.main.PhysicalXls, "StarsOut$"); }),
                      {"reach 3, row 12 (45000 cfs)"}));
    EXPECT_TRUE(Holds(EnsureStageTables(river.m, river.reachFile), {"reach 3, row 12 (45000 cfs)"}));
    ASSERT_EQ(river.messages.seen.size(), 1u);
    EXPECT_EQ(river.messages.seen[0].text.rfind("Failed to make file \n", 0), 0u);
    EXPECT_FALSE(std::filesystem::exists(river.f.File("Reaches.qsvw")));
    EXPECT_FALSE(std::filesystem::exists(river.f.File("Reaches.hab")));
    river.f.Write("Reaches.qsvw", "\"Q\",\"STAGE\",\"VELOCITY\",\"WIDTH\",\"REACH\"\r\n");
    EXPECT_EQ(EnsureStageTables(river.m, river.reachFile), "");
    EXPECT_EQ(river.messages.seen.size(), 1u);
}
