#include <gtest/gtest.h>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "sediment/morphology_sheets.h"
#include "support/collect_messages.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;

namespace {

// The dam row and two run reaches, miles 0.5..10 and 10..20, rated at 1000 cfs a
// foot, with three slices; a fourth reach below them is not run.
struct Sheets {
    test::TestFolder f;
    Model m;
    test::CollectMessages messages;
    std::string xls = f.File("physical.xls");

    Sheets() {
        m.messages = &messages;
        BuildMonthsTable(m);
        m.main.NSlices = 3;
        ReadReachFile(m, f.Write("Reaches.csv", "\"t\",4,2,3\r\n\"a\",\"b\",\"c\",\"d\"\r\n1,\"Dam\",0,0.5\r\n"
                                                "2,\"Upper\",0.5,10\r\n3,\"Lower\",10,20\r\n4,\"Lake\",20,30\r\n"));
        for (int r = 2; r <= 3; ++r)
            for (int i = 1; i <= 13; ++i) {
                m.physical.QTable(i, r) = static_cast<float>((i - 1) * 5000);
                m.physical.StageTable(i, r) = static_cast<float>((i - 1) * 5);
            }
    }
    void sheet(const std::string& name, const std::string& text) { f.Write("physical.xls/" + name + ".csv", text); }
};

}  // namespace

// mg/l become g/ft3; the running sum down the river stops at the last row's
// month index, so a sheet that does not end on its highest month leaves later
// months unsummed.
TEST(MorphologySheets, TribFlowTablesAndTheRunningSum) {
    Sheets t;
    t.sheet("TribFlow", "OSD_Mile,YR,MNTH,CMONTH,AVGQW,SandMGL,FineMGL\r\n"
                        "5,48,1,1,100,9,9\r\n5,48,2,2,200,0,0\r\n"
                        "10,48,1,1,50,0,0\r\n"  // the boundary mile belongs to the upper reach
                        "15,48,1,1,30,3531.7,0\r\n"
                        "99,48,1,1,7,0,0\r\n");  // outside the river: reach 0
    ReadTribFlow(t.m, t.xls, "TribFlow$");
    const Morph& mo = t.m.morph;
    EXPECT_FLOAT_EQ(mo.TribQ(1, 2), 50);  // the later row of the same month and reach wins
    EXPECT_FLOAT_EQ(mo.TribQ(1, 0), 7);
    EXPECT_NEAR(mo.TribSedConc(1, 3, 1), 100.00715, 1e-4);
    EXPECT_FLOAT_EQ(mo.TribFlow(1, 3), 80);
    EXPECT_FLOAT_EQ(mo.TribFlow(2, 2), 0);  // the last row's month index is 1
    t.sheet("TribFlow", "OSD_Mile,YR,MNTH,CMONTH,AVGQW,SandMGL,FineMGL\r\n5,98,1,601,1,0,0\r\n");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadTribFlow(t.m, t.xls, "TribFlow$"); }),
                            {"TribFlow$", "month index", "601"}));
    EXPECT_FLOAT_EQ(t.m.morph.TribQ(1, 2), 50);
}

// A tributary on a reach break read from the sheet as a single: 10.2 is
// 10.19999981 in both, so the inclusive lookup puts it in the upper reach.
TEST(MorphologySheets, ASheetMileOnAReachBreakComparesAsASingle) {
    Sheets t;
    ReadReachFile(t.m, t.f.Write("Reaches.csv", "\"t\",3,2,3\r\n\"a\",\"b\",\"c\",\"d\"\r\n1,\"Dam\",0,0.5\r\n"
                                                "2,\"Upper\",0.5,10.2\r\n3,\"Lower\",10.2,20\r\n"));
    t.sheet("TribFlow", "OSD_Mile,YR,MNTH,CMONTH,AVGQW,SandMGL,FineMGL\r\n10.2,48,1,1,50,0,0\r\n");
    ReadTribFlow(t.m, t.xls, "TribFlow$");
    EXPECT_FLOAT_EQ(t.m.morph.TribQ(1, 2), 50);
    EXPECT_FLOAT_EQ(t.m.morph.TribQ(1, 3), 0);
}

// Reach 2 averages two transects, reach 3 has none and is named in a message.
// Each slice (1000, 3000, 5000 cfs) takes the first level above its discharge,
// the highest level above the last.
TEST(MorphologySheets, SubstrateByLevelAndSlice) {
    Sheets t;
    t.sheet("Substrate", "MaxQLevels,Discharge,OSD_Mile,Fines,Sand,Grav_Cob,Talus,Bedrock\r\n"
                         "2,2000,5,10,40,30,10,10\r\n2,4000,5,0,20,40,20,20\r\n"
                         "2,2000,6,30,20,30,10,10\r\n2,4000,6,20,0,40,20,20\r\n"
                         "2,2000,35,50,50,0,0,0\r\n");  // outside the river: reach 0, one row
    ReadSubstrate(t.m, t.xls, "Substrate$");
    const Morph& mo = t.m.morph;
    EXPECT_EQ(mo.SubstrateQ(2), 4000);
    EXPECT_FLOAT_EQ(mo.SliceSubstrate(2, 1, 2), 0.3f);
    EXPECT_FLOAT_EQ(mo.SliceSubstrate(2, 3, 2), 0.1f);
    ASSERT_EQ(t.messages.seen.size(), 1u);
    EXPECT_TRUE(test::Holds(t.messages.seen[0].text, {"no substrate transect in reach 3", "physical.xls"}));
    // A short transect is not detected: its rows shift the levels of all later rows.
    t.sheet("Substrate", "MaxQLevels,Discharge,OSD_Mile,Fines,Sand,Grav_Cob,Talus,Bedrock\r\n"
                         "2,2000,5,100,0,0,0,0\r\n2,2000,15,0,100,0,0,0\r\n2,4000,15,0,0,100,0,0\r\n");
    ReadSubstrate(t.m, t.xls, "Substrate$");
    EXPECT_FLOAT_EQ(mo.SubstrateTable(2, 2, 3), 1.0f);  // sand counted at level 2
    EXPECT_FLOAT_EQ(mo.SubstrateTable(3, 1, 3), 1.0f);  // gravel at level 1
}

// "VS" is small; an unknown size keeps the class of the eddy before; "UP" is no
// deposit type; past the last run reach the reading stops.
TEST(MorphologySheets, DepositInventory) {
    Sheets t;
    t.sheet("RC90", "OSD_Mile,RCCHAR,Dep_Type,BE_Size\r\n"
                    "1,RC,R,VS\r\n1.5,NRC,S,S\r\n2,NRC,TFE/UP,L\r\n2.5,NRC,R/CM,XX\r\n"
                    "3,RC,CM,L\r\n3.5,NRC,CM/PB,\r\n4,NRC,UP,M\r\n"
                    "12,NRC,R/UP,M\r\n12.5,RC,CM/UP,\r\n"
                    "25,RC,R,L\r\n18,NRC,R,L\r\n");  // mile 25 lies in reach 4, past the run
    ReadRC90(t.m, t.xls, "RC90$");
    const Morph& mo = t.m.morph;
    const int counts[] = {mo.NEddy(2, 1), mo.NEddy(2, 2), mo.NEddy(2, 3), mo.NCM(2), mo.NBackwater(2), mo.NEddy(3, 2)};
    EXPECT_EQ(std::vector<int>(std::begin(counts), std::end(counts)), (std::vector<int>{2, 0, 2, 2, 2, 1}));
    EXPECT_EQ(mo.NEddy(3, 3), 0);  // the row after mile 25 is never read
}
