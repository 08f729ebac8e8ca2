// Bad input found by running the model on mutated copies of its files: each is
// refused at start-up with a text that names the file and line, or the workbook,
// sheet and row, instead of a crash or absurd results.
#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <string>

#include "core/fault.h"
#include "core/model.h"
#include "core/run_driver.h"
#include "core/start_up.h"
#include "hydrology/flow_engine.h"
#include "support/fault_text.h"
#include "support/small_model.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;
using osm::test::TestFolder;

namespace {

// The text of `from` with the line that begins `head` replaced by `line`.
std::string withLine(std::string text, const std::string& head, const std::string& line) {
    const size_t at = text.find(head);
    EXPECT_NE(at, std::string::npos) << head;
    if (at == std::string::npos) return text;
    return text.replace(at, text.find("\r\n", at) - at, line);
}

// The fault of a physical-only start of the small river after `mutate`.
std::string startFault(const std::function<void(const TestFolder&)>& mutate) {
    TestFolder f;
    test::WriteSmallRiver(f);
    mutate(f);
    Model m;
    return FaultText([&] { StartUp(m, StartOptions{f.path(), true, {}}); });
}

void edit(const TestFolder& f, const std::string& name, const std::string& head, const std::string& line) {
    f.Write(name, withLine(f.Read(name), head, line));
}

}  // namespace

// A row cut short before a column the model reads, and a sheet the model needs
// with no rows, used to give campsite use in the millions or quietly other results.
TEST(BadInput, ShortRowsAndEmptySheetsAreRefusedNamingSheetAndRow) {
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) {
                          f.Write("physical.xls/Eddy_Storage.csv",
                                  "Discharge,Vol_S,Vol_M,Vol_L\r\n0,0,0,0\r\n10000,1000,3000,9000\r\n30000,2500");
                      }),
                      {"physical.xls, sheet Eddy_Storage$, row 4", "ends after 2 cells", "Vol_M"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) {
                          f.Write("physical.xls/RC90.csv", "OSD_Mile,RCCHAR,Dep_Type,BE_Size\r\n2,NRC,R,L\r\n4,RC");
                      }),
                      {"sheet RC90$, row 3", "Dep_Type"}));
    // An empty cell is still a cell: it reads as the Parts make of it.
    TestFolder ok;
    test::WriteSmallRiver(ok);
    ok.Write("physical.xls/RC90.csv", "OSD_Mile,RCCHAR,Dep_Type,BE_Size\r\n2,NRC,R,\r\n4,RC,S,M\r\n");
    Model m;
    EXPECT_NO_THROW(StartUp(m, StartOptions{ok.path(), true, {}}));

    for (const char* sheet : {"RC90", "TribFlow", "OSDEqTemp", "Mainsed", "MCPool_Storage", "Eddy_Storage"}) {
        const std::string text = startFault([&](const TestFolder& f) {
            const std::string file = std::string("physical.xls/") + sheet + ".csv";
            const std::string whole = f.Read(file);
            f.Write(file, whole.substr(0, whole.find("\r\n") + 2));
        });
        std::string lower = text;
        for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        std::string name = std::string(sheet) + "$";
        for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        EXPECT_TRUE(Holds(lower, {"physical.xls", name.c_str()})) << text;
    }
}

// A release record that stops early used to surface as a zero discharge in the
// sand step of 1993; a negative or overflowing volume went through.
TEST(BadInput, MonthlyVolumesCoverTheRecordAndAreNonNegativeSingles) {
    const std::string shortText = startFault([](const TestFolder& f) {
        const std::string whole = f.Read("riverware.xls/Historical.csv");
        size_t at = 0;
        for (int i = 0; i <= 300; ++i) at = whole.find("\r\n", at) + 2;  // heads and 300 months
        f.Write("riverware.xls/Historical.csv", whole.substr(0, at));
    });
    EXPECT_TRUE(Holds(shortText, {"riverware.xls, sheet Historical$", "holds 300 of the 600 months", "month 1 of 1973"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "riverware.xls/Historical.csv", "48,3,", "48,3,-5"); }),
                      {"riverware.xls, sheet Historical$, row 4", "0 or more, found -5"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "riverware.xls/Historical.csv", "48,3,", "48,3,1e40"); }),
                      {"sheet Historical$, row 4, column ACFT", "1E+40", "single"}));
}

// Row i of the release record is month i: a dropped or doubled row used to shift
// the spin-up years out of their table.
TEST(BadInput, ReleaseRowsRunMonthByMonth) {
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "riverware.xls/Historical.csv", "48,5,", "48,4,650000"); }),
                      {"sheet Historical$, row 6", "expected YR 48 and MNTH 5", "found YR 48 and MNTH 4"}));
}

// Parameters that make the slices' potentials absurd are refused where they are
// computed, naming the reach, the slice and the parameters behind them.
TEST(BadInput, StoragePotentialsMustBeFiniteAndMarginsNotNegative) {
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "default.phy", "\"AngleOfRepose\"", "\"AngleOfRepose\",90"); }),
                      {"reach 2, slice 2", "channel margins (AngleOfRepose 90", "of 0 or more"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) {
                          edit(f, "physical.xls/Eddy_Storage.csv", "10000,", "10000,3e38,3e38,3e38");
                      }),
                      {"reach 2, slice", "eddies (sheet Eddy_Storage$", "INF"}));
    // One seasonal pattern more than the tributaries of the Fans sheet.
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) {
                          edit(f, "default.phy", "0,", "0,1,1,1,1,1,1,1,1,1,1,1,1\r\n1,1,1,1,1,1,1,1,1,1,1,1,1");
                      }),
                      {"default.phy:3", "\"MaxRelSeasonAdjust\"", "one for each of the 0 tributaries of the Fans sheet", "'1'"}));
}

// A camp INDEX outside the camp tables used to end in an index fault naming no sheet.
TEST(BadInput, ACampIndexOutsideTheCampTablesIsNamed) {
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "physical.xls/CampingBeaches.csv", "0.290000,", "0.290000,M,37,0"); }),
                      {"sheet CampingBeaches", "mile 0.29", "INDEX 0", "1 to 127"}));
}

TEST(BadInput, TextFilesRefuseOverlapsNegativeCountsAndFlowsAndHugeNumbers) {
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "Reaches.csv", "3,\"Lower", "3,\"Lower gorge\",0,40"); }),
                      {"Reaches.csv:5", "may not overlap", "'0'"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "Reaches.csv", "2,\"Upper", "2,\"Upper gorge\",20.62,0.5"); }),
                      {"Reaches.csv:4", "downstream mile below the upstream mile"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "default.rec", "Trip length", "Trip length (days)\r\n-10"); }),
                      {"default.rec:", "the days on the river of trip type 1 (0 or more)", "'-10'"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) {
                          const std::string text = f.Read("default.rec");
                          f.Write("default.rec", withLine(text, "60\r\n", "-60"));
                      }),
                      {"default.rec:", "parties a year", "'-60'"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "noaction.sts", "\"Flow Parameters\"", "\"Flow Parameters\",-5,1,1"); }),
                      {"noaction.sts:2", "the maximum flow (0 or more)", "'-5'"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "default.phy", "\"ErodeRate\"", "\"ErodeRate\",1e40"); }),
                      {"default.phy:", "ErodeRate", "single", "'1e40'"}));
    // A graph table whose results store would not fit in memory is refused before it is asked for.
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) {
                          std::string text = f.Read("graphleg.txt");
                          const size_t line5 = text.find("line 4\r\n") + 8;
                          f.Write("graphleg.txt", text.replace(line5, text.find(' ', line5) - line5 + 2, "13 30000"));
                      }),
                      {"graphleg.txt:5", "MaxSub 1..100", "13 30000"}));
}

// A bad stage record used to end in "cannot open the file" of the cached table,
// its cause shown only in a message before.
TEST(BadInput, AStageTableBuildFailureNamesTheSheetRow) {
    const std::string text = startFault([](const TestFolder& f) {
        std::string sheet = f.Read("physical.xls/StarsOut.csv");
        sheet.insert(sheet.find("\r\n") + 2, "10,5000,abc,1,100\r\n");
        f.Write("physical.xls/StarsOut.csv", sheet);
    });
    EXPECT_TRUE(Holds(text, {"Reaches.qsvw", "sheet StarsOut$, row 2, column STAGE", "'abc'"}));
    EXPECT_EQ(text.find("cannot open"), std::string::npos);
}

// Diurnal codes name the scenarios of the list: 0 and 6 once looked for ".sts".
TEST(BadInput, DiurnalCodesOutsideTheListAreNamedWithTheCodesThatExist) {
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "default.exp", "1950,", "1950,99,0"); }),
                      {"default.exp:", "diurnal pattern of 1950", "1 (noaction), 2 (steady)", "'99'"}));
    EXPECT_TRUE(Holds(startFault([](const TestFolder& f) { edit(f, "default.exp", "1990,", "1990,0,0"); }),
                      {"diurnal pattern of 1990", "'0'"}));
    // An empty list leaves no code for any year: the list itself is at fault.
    for (const char* empty : {"", "\r\n", " \r\n\r\n"})
        EXPECT_TRUE(Holds(startFault([&](const TestFolder& f) { f.Write("diurnal_scenarios.txt", empty); }),
                          {"diurnal_scenarios.txt:", "expected at least one scenario name", "found nothing"}));
    auto s = test::StartSmallModel(true);
    Model& m = s->m;
    m.physical.DiurnalCode(48) = 3;
    SetCalendar(m, 1, 1);
    EXPECT_TRUE(Holds(FaultText([&] { MonthlyFlows(m, 1, 1); }),
                      {"year 1948", "diurnal code 3", "1 (noaction), 2 (steady)"}));
    // A name of the list without its file says where the name came from.
    m.physical.DiurnalName(2) = "nothing";
    m.physical.DiurnalCode(48) = 2;
    EXPECT_TRUE(Holds(FaultText([&] { MonthlyFlows(m, 1, 1); }),
                      {"nothing.sts of diurnal code 2 (year 1948, named in", "diurnal_scenarios.txt) is missing"}));
}

// A camp in a run reach whose beach curves offer no campsite had its parties
// stored against a capacity of 0: campsite use in the tens of millions.
TEST(BadInput, ACampWhereTheBeachesOfferNoCampsiteIsRefused) {
    const std::string text = startFault([](const TestFolder& f) {
        std::string phy = f.Read("default.phy");
        for (int k = 1; k <= 3; ++k) {
            const size_t key = phy.find("\"BeachMax-3-" + std::to_string(k) + "\"");
            const size_t from = phy.find("\r\n", key) + 2;
            std::string zeros = "0";
            for (int i = 2; i <= 50; ++i) zeros += ",0";
            phy.replace(from, phy.find("\r\n", from) - from, zeros);
        }
        f.Write("default.phy", phy);
    });
    EXPECT_TRUE(Holds(text, {"sheet CampingBeaches", "the camp at mile 5.15", "(INDEX 28) lies in reach 3",
                             "default.phy offer no campsite"}));
    // A camp above the run reaches is stored nowhere and stays allowed.
    TestFolder ok;
    test::WriteSmallRiver(ok);
    edit(ok, "physical.xls/CampingBeaches.csv", "0.290000,", "-15.5,M,37,1");
    Model m;
    EXPECT_NO_THROW(StartUp(m, StartOptions{ok.path(), true, {}}));
}
