#include "core/workbook.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "core/csv_sheet.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

namespace fs = std::filesystem;

using osm::test::FaultText;
using osm::test::Holds;

namespace {

class WorkbookTest : public ::testing::Test {
protected:
    std::string book() const { return f_.File("physical.xls"); }
    void sheet(const std::string& file, const std::string& text) const { f_.Write("physical.xls/" + file, text); }
    std::string sheetText(const std::string& file) const { return f_.Read("physical.xls/" + file); }
    size_t entries(const std::string& dir) const {
        return std::distance(fs::directory_iterator(f_.File(dir)), fs::directory_iterator());
    }
    // Small versions of the camp and hydraulic sheets the program queries.
    void campsAndStars() const {
        sheet("CampingBeaches.csv",
              "MILE,SIZE,PREF,INDEX\n100,L,1,1\n9.5,M,4,2\n28.25,S,2,3\n60.5,L,9,4\n10,M,3,5\n45,S,7,6\n30,L,5,7\n");
        sheet("StarsOut.csv",
              "MILE,Q,STAGE\n1,8000,2.1\n3.5,8000,3.25\n3.5,15000,4.5\n3.5,5000,1.75\n5,8000,2.9\n"
              "5,15000,3.9\n12,8000,1.2\n");
    }
    osm::test::TestFolder f_;
};

std::vector<double> column(osm::Cursor c, const std::string& name) {
    std::vector<double> out;
    for (c.MoveFirst(); !c.AtEnd(); c.MoveNext()) out.push_back(c.Field(name).number());
    return out;
}

TEST_F(WorkbookTest, SheetKeepsRowOrderQuotingAndCellKinds) {
    // CRLF, a byte-order mark, quoted commas, doubled quotes, a line end inside quotes, empty cells.
    sheet("TribFlow.csv",
          "\xEF\xBB\xBFName,AVGQW,Reach\r\n\"Smith, \"\"J\"\"\",3,7\r\nKanab,,2.5\r\n"
          "\"two\r\nlines\",1e3, 12 \r\nParia,-4,x\r\n");
    osm::Database db = osm::OpenWorkbook(book());
    osm::Cursor c = db.OpenSheet("TribFlow$");
    ASSERT_EQ(c.RecordCount(), 4);
    ASSERT_EQ(c.columns(), (std::vector<std::string>{"Name", "AVGQW", "Reach"}));
    EXPECT_EQ(c.Field("name").text(), "Smith, \"J\"");
    c.MoveNext();
    EXPECT_TRUE(c.Field("AVGQW").isEmpty());
    EXPECT_EQ(c.Field("AVGQW").number(), 0.0);
    EXPECT_EQ(c.Field("Reach").int16(), 2);  // half to even
    c.MoveNext();
    EXPECT_EQ(c.Field("Name").text(), "two\r\nlines");
    EXPECT_EQ(c.Field("AVGQW").number(), 1000.0);
    EXPECT_EQ(c.Field("Reach").number(), 12.0);  // blanks around a number
    c.MoveNext();
    EXPECT_EQ(c.Field("AVGQW").int32(), -4);
    EXPECT_EQ(c.Field("Reach").kind(), osm::Cell::Kind::Text);
    c.MoveNext();
    c.MoveNext();  // staying at the end is harmless
    EXPECT_TRUE(c.AtEnd());
    // A sheet name without "$" and in another case is the same sheet.
    EXPECT_EQ(db.OpenSheet("tribflow").RecordCount(), 4);
}

TEST_F(WorkbookTest, OrdinalFieldsMoveFirstAndClose) {
    sheet("Mainsed.csv", "Year,Month,Spike1,Spike2\n1990,1,0,-1\n1990,2,-1,0\n");
    osm::Database db = osm::OpenWorkbook(book());
    osm::Cursor c = db.OpenSheet("Mainsed$");
    EXPECT_EQ(column(c, "Month"), (std::vector<double>{1, 2}));
    c.MoveFirst();
    EXPECT_EQ(c.Field(3).int16(), -1);
    EXPECT_TRUE(Holds(FaultText([&] { c.Field(4); }), {"Mainsed$", "4"}));
    EXPECT_TRUE(Holds(FaultText([&] { c.Field(-1); }), {"Mainsed$"}));
    c.Close();
    EXPECT_TRUE(c.AtEnd());
    EXPECT_TRUE(Holds(FaultText([&] { c.Field(0); }), {"closed"}));
}

TEST_F(WorkbookTest, EmptySheetsAndCellsWithoutHeads) {
    sheet("Fans.csv", "MILE,AREA\n");
    sheet("Blank.csv", "MILE,AREA,,\r\n,,\r\n\r\n");  // heads, then nothing but separators
    sheet("Lookup.csv", "Code,,Value\na,x,99999999999999999999\nb,,1.0\nc,,   \nd,,7,extra\n");
    osm::Database db = osm::OpenWorkbook(book());
    osm::Cursor fans = db.OpenSheet("Fans$");
    EXPECT_TRUE(fans.AtEnd());
    EXPECT_TRUE(Holds(FaultText([&] { fans.Field("MILE"); }), {"Fans$", "no current row"}));
    osm::Cursor blank = db.OpenSheet("Blank$");
    EXPECT_TRUE(blank.AtEnd());
    EXPECT_EQ(blank.columns(), (std::vector<std::string>{"MILE", "AREA"}));

    osm::Cursor c = db.OpenSheet("Lookup$");
    ASSERT_EQ(c.columns(), (std::vector<std::string>{"Code", "F2", "Value", "F4"}));
    EXPECT_EQ(c.Field("F2").text(), "x");
    EXPECT_DOUBLE_EQ(c.Field("Value").number(), 1e20);  // past 64 bits, kept as a real
    c.MoveNext();
    EXPECT_EQ(c.Field("Value").text(), "1");
    c.MoveNext();
    EXPECT_EQ(c.Field("Value").number(), 0.0);  // blanks count as empty
    c.MoveNext();
    EXPECT_EQ(c.Field("F4").text(), "extra");
}

TEST_F(WorkbookTest, FaultsNameWorkbookSheetRowAndColumn) {
    sheet("TribFlow.csv", "Name,AVGQW\nKanab,3\nParia,abc\nBig,40000\n");
    osm::Database db = osm::OpenWorkbook(book());
    EXPECT_TRUE(Holds(FaultText([&] { db.OpenSheet("Substrate$"); }), {"physical.xls", "Substrate$", "TribFlow$"}));
    osm::Cursor c = db.OpenSheet("TribFlow$");
    EXPECT_TRUE(Holds(FaultText([&] { c.Field("AVGQ"); }), {"physical.xls, sheet TribFlow$", "'AVGQ'", "Name, AVGQW"}));
    c.MoveNext();
    const osm::Cell bad = c.Field("AVGQW");
    EXPECT_TRUE(Holds(FaultText([&] { bad.number(); }),
                      {"physical.xls, sheet TribFlow$, row 3, column AVGQW", "expected a number, found 'abc'"}));
    c.MoveNext();
    EXPECT_EQ(c.Field("AVGQW").int32(), 40000);
    EXPECT_TRUE(Holds(FaultText([&] { c.Field("AVGQW").int16(); }), {"row 4, column AVGQW", "40000"}));
}

TEST_F(WorkbookTest, MissingUnreadableOrMalformedFilesAreFaults) {
    const std::string missing = f_.File("nothing.xls");
    EXPECT_EQ(FaultText([&] { osm::OpenWorkbook(missing); }), "workbook not found: " + missing);
    const std::string junk = f_.Write("junk.xls", "Name,Value\nnot,an excel file\n");
    EXPECT_TRUE(Holds(FaultText([&] { osm::OpenWorkbook(junk); }), {"junk.xls", "Excel"}));

    sheet("Open.csv", "A,B\n1,\"never closed\n2,3\n");
    sheet("After.csv", "A,B\n1,2\n\"x\"y,3\n");
    sheet("Twice.csv", "MILE,Stage,mile\n1,2,3\n");
    osm::Database db = osm::OpenWorkbook(book());
    EXPECT_TRUE(Holds(FaultText([&] { db.OpenSheet("Open$"); }), {"Open.csv:2", "closing quote"}));
    EXPECT_TRUE(Holds(FaultText([&] { db.OpenSheet("After$"); }), {"After.csv:3", "'y,3'"}));
    EXPECT_TRUE(Holds(FaultText([&] { db.OpenSheet("Twice$"); }), {"Twice$", "mile"}));
    // A failed load leaves no half table behind.
    EXPECT_NE(sqlite3_exec(db.handle(), "SELECT * FROM Twice", nullptr, nullptr, nullptr), SQLITE_OK);
}

TEST_F(WorkbookTest, TheProgramsQueriesGiveTheirRowsInOrder) {
    campsAndStars();
    osm::Database links;
    ASSERT_TRUE(osm::LinkSheet(links, book(), "CampingBeaches", "Camps"));
    // Miles sort as numbers, not as text (100 after 10 after 9.5).
    EXPECT_EQ(column(links.Query("SELECT * FROM Camps ORDER BY MILE"), "MILE"),
              (std::vector<double>{9.5, 10, 28.25, 30, 45, 60.5, 100}));
    // The lower bound is in the range, the upper one is not.
    EXPECT_EQ(column(links.Query("SELECT *  FROM Camps WHERE MILE >=  28.25 AND MILE <  60.5 ORDER BY PREF DESC"),
                     "PREF"),
              (std::vector<double>{7, 5, 2}));

    // The hydraulic sheet is loaded by the first statement that names it.
    osm::Database stars = osm::OpenWorkbook(book());
    EXPECT_EQ(column(stars.Query("SELECT STAGE FROM StarsOut WHERE MILE  =   3.5"), "STAGE"),
              (std::vector<double>{3.25, 4.5, 1.75}));
    const char* scale = "Select MAX(stage) as [maxS] , MIN(stage) as [minS] from StarsOut WHERE MILE  =   ";
    osm::Cursor found = stars.Query(std::string(scale) + "3.5");
    EXPECT_EQ(found.Field("maxs").number(), 4.5);
    EXPECT_EQ(found.Field("MINS").number(), 1.75);
    // No section at that mile: one row of empty cells, read as 0.
    osm::Cursor none = stars.Query(std::string(scale) + "77");
    ASSERT_EQ(none.RecordCount(), 1);
    EXPECT_TRUE(none.Field("maxS").isEmpty());
    EXPECT_EQ(none.Field("minS").number(), 0.0);

    EXPECT_TRUE(Holds(FaultText([&] { stars.Query("SELECT DEPTH FROM StarsOut"); }),
                      {"SELECT DEPTH FROM StarsOut", "no such column: DEPTH"}));
    EXPECT_TRUE(Holds(FaultText([&] { stars.Query("SELECT * FROM Rapids"); }),
                      {"physical.xls", "SELECT * FROM Rapids", "no such table: Rapids"}));
    EXPECT_TRUE(Holds(FaultText([&] { stars.Query("SELECT 1; DROP TABLE StarsOut"); }), {"more than one statement"}));
    EXPECT_TRUE(stars.hasTable("StarsOut$"));
}

TEST_F(WorkbookTest, LinkAndUnlinkFollowTheNameRules) {
    campsAndStars();
    osm::Database links;
    EXPECT_EQ(osm::LinkConnect(links, "Camps"), "");
    // The sheet gets its "$", the table loses one.
    ASSERT_TRUE(osm::LinkSheet(links, book(), "CampingBeaches", "Camps$"));
    EXPECT_EQ(osm::LinkConnect(links, "Camps"), "Excel 5.0;Database=" + book());
    EXPECT_TRUE(Holds(FaultText([&] { links.OpenSheet("Camps").Field("DEPTH"); }),
                      {"physical.xls, sheet CampingBeaches$", "DEPTH"}));
    // A name that is taken stays as it is until it is unlinked.
    EXPECT_FALSE(osm::LinkSheet(links, book(), "StarsOut$", "Camps"));
    EXPECT_EQ(links.OpenSheet("Camps").RecordCount(), 7);
    EXPECT_FALSE(osm::LinkSheet(links, book(), "Rapids", "Rapids"));
    EXPECT_FALSE(links.hasTable("Rapids"));

    EXPECT_TRUE(osm::UnlinkTable(links, "Camps"));
    EXPECT_FALSE(links.hasTable("Camps"));
    EXPECT_FALSE(osm::UnlinkTable(links, "Camps"));
    // A table of the database's own is not a link and is never removed.
    ASSERT_EQ(sqlite3_exec(links.handle(), "CREATE TABLE Own (x)", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_FALSE(osm::UnlinkTable(links, "Own"));
    EXPECT_TRUE(links.hasTable("Own"));
}

TEST_F(WorkbookTest, UpdateSheetColumnsRewritesOnlyTheGivenCells) {
    sheet("MainTemp.csv",
          "Month,\"Mean, F\",T2,Note\r\n1,40,1.5,\"keep \"\"this\"\"\"\r\n2,41.25,2\r\n3,  42 ,3,x\r\n4,43,4,y\r\n");
    osm::UpdateSheetColumns(book(), "MainTemp$", {"t2", "Month"}, {{9.5, -0.25, 1e20}, {7}});
    EXPECT_EQ(sheetText("MainTemp.csv"),
              "Month,\"Mean, F\",T2,Note\r\n7,40,9.5,\"keep \"\"this\"\"\"\r\n2,41.25,-0.25\r\n"
              "3,  42 ,1E+20,x\r\n4,43,4,y\r\n");
    osm::Database db = osm::OpenWorkbook(book());
    EXPECT_EQ(column(db.OpenSheet("MainTemp$"), "T2"), (std::vector<double>{9.5, -0.25, 1e20, 4}));

    // A short row is widened to reach the column; no temporary file is left over.
    osm::UpdateSheetColumns(book(), "MainTemp", {"Note"}, {{0, 0}});
    EXPECT_EQ(sheetText("MainTemp.csv"),
              "Month,\"Mean, F\",T2,Note\r\n7,40,9.5,0\r\n2,41.25,-0.25,0\r\n3,  42 ,1E+20,x\r\n4,43,4,y\r\n");
    EXPECT_EQ(entries("physical.xls"), 1u);
}

TEST_F(WorkbookTest, FailedUpdatesChangeNothing) {
    const std::string before = "Month,T1\n1,2\n3,4\n\n";
    sheet("MainTemp.csv", before);
    EXPECT_TRUE(Holds(FaultText([&] { osm::UpdateSheetColumns(book(), "MainTemp$", {"T9"}, {{1}}); }),
                      {"MainTemp$", "'T9'", "nothing was changed"}));
    EXPECT_TRUE(Holds(FaultText([&] { osm::UpdateSheetColumns(book(), "MainTemp$", {"T1"}, {{1, 2, 3}}); }),
                      {"3 values", "2 rows", "nothing was changed"}));
    EXPECT_EQ(sheetText("MainTemp.csv"), before);

    const std::string bytes = std::string("\xD0\xCF\x11\xE0", 4) + "not really a workbook";
    const std::string legacy = f_.Write("legacy.xls", bytes);
    EXPECT_TRUE(Holds(FaultText([&] { osm::UpdateSheetColumns(legacy, "MainTemp$", {"T1"}, {{1}}); }),
                      {"legacy.xls", "read-only", "nothing was changed"}));
    EXPECT_EQ(f_.Read("legacy.xls"), bytes);
    EXPECT_EQ(entries("."), 2u);
}

}  // namespace
