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
    size_t entries(const std::string& d) const { return std::distance(fs::directory_iterator(f_.File(d)), {}); }
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
    EXPECT_EQ(c.Field("name").text(), "Smith, \"J\"");
    EXPECT_EQ(c.Field(2).int16(), 7);
    c.MoveNext();
    EXPECT_TRUE(c.Field("AVGQW").isEmpty());
    EXPECT_EQ(c.Field("Reach").int16(), 2);  // half to even
    c.MoveNext();
    EXPECT_EQ(c.Field("Name").text(), "two\r\nlines");
    EXPECT_EQ(c.Field("AVGQW").number(), 1000.0);
    EXPECT_EQ(c.Field("Reach").number(), 12.0);  // blanks around a number
    c.MoveNext();
    EXPECT_EQ(c.Field("Reach").kind(), osm::Cell::Kind::Text);
}

// A sheet's numbers are singles wherever they are read, also through a query:
// 52.3 is 52.29999924 and compares equal to a reach mile of 52.3.
TEST_F(WorkbookTest, NumbersAreSingles) {
    sheet("Mainsed.csv", "OSD_Mile\n52.3\n");
    osm::Database db = osm::OpenWorkbook(book());
    EXPECT_EQ(db.OpenSheet("Mainsed$").Field("OSD_Mile").number(), static_cast<double>(52.3f));
    EXPECT_EQ(db.Query("SELECT OSD_Mile FROM Mainsed").Field(0).number(), static_cast<double>(52.3f));
}

TEST_F(WorkbookTest, FaultsNameWorkbookSheetRowAndColumn) {
    sheet("TribFlow.csv", "Name,AVGQW\nKanab,3\nParia,abc\n");
    sheet("Twice.csv", "MILE,Stage,mile\n1,2,3\n");
    const std::string missing = f_.File("nothing.xls");
    EXPECT_EQ(FaultText([&] { osm::OpenWorkbook(missing); }), "workbook not found: " + missing);
    osm::Database db = osm::OpenWorkbook(book());
    EXPECT_TRUE(Holds(FaultText([&] { db.OpenSheet("Substrate$"); }), {"physical.xls", "Substrate$", "TribFlow$"}));
    EXPECT_TRUE(Holds(FaultText([&] { db.OpenSheet("Twice$"); }), {"Twice$", "mile"}));
    // A failed load leaves no half table behind.
    EXPECT_NE(sqlite3_exec(db.handle(), "SELECT * FROM Twice", nullptr, nullptr, nullptr), SQLITE_OK);
    osm::Cursor c = db.OpenSheet("TribFlow$");
    EXPECT_TRUE(Holds(FaultText([&] { c.Field("AVGQ"); }), {"physical.xls, sheet TribFlow$", "'AVGQ'", "Name, AVGQW"}));
    c.MoveNext();
    const osm::Cell bad = c.Field("AVGQW");
    EXPECT_TRUE(Holds(FaultText([&] { bad.number(); }),
                      {"physical.xls, sheet TribFlow$, row 3, column AVGQW", "expected a number, found 'abc'"}));
}

// A sheet number is stored as a single: beyond its range it is refused naming the
// cell, as is a text number that overflows even a double; a huge cell is quoted
// only in part.
TEST_F(WorkbookTest, NumbersBeyondASingleAndHugeCellsAreRefusedNamingTheRow) {
    sheet("Historical.csv", "YR,ACFT\n48,3E+38\n48,1e40\n48,-1e400\n48," + std::string(1 << 20, 'q') + "\n");
    osm::Database db = osm::OpenWorkbook(f_.File("physical.xls"));
    osm::Cursor c = db.OpenSheet("Historical$");
    EXPECT_FLOAT_EQ(c.Field("ACFT").single(), 3e38f);
    c.MoveNext();
    const osm::Cell big = c.Field("ACFT");
    EXPECT_TRUE(Holds(FaultText([&] { big.single(); }), {"sheet Historical$, row 3, column ACFT", "1E+40", "single"}));
    c.MoveNext();
    EXPECT_TRUE(Holds(FaultText([&] { c.Field(1).number(); }), {"row 4", "-1e400", "single"}));
    c.MoveNext();
    const std::string text = FaultText([&] { c.Field(1).number(); });
    EXPECT_TRUE(Holds(text, {"row 5", "1048576 characters"}));
    EXPECT_LT(text.size(), 300u);
}

TEST_F(WorkbookTest, TheProgramsQueriesAndLinks) {
    sheet("CampingBeaches.csv", "MILE,PREF\n100,1\n9.5,4\n28.25,2\n60.5,9\n10,3\n45,7\n30,5\n");
    sheet("StarsOut.csv", "MILE,STAGE\n1,2.1\n3.5,3.25\n3.5,4.5\n3.5,1.75\n");
    osm::Database links;
    // The sheet gets its "$", the table loses one.
    ASSERT_TRUE(osm::LinkSheet(links, book(), "CampingBeaches", "Camps$"));
    EXPECT_EQ(osm::LinkConnect(links, "Camps"), "Excel 5.0;Database=" + book());
    // Miles sort as numbers, not as text (100 after 10 after 9.5).
    EXPECT_EQ(column(links.Query("SELECT * FROM Camps ORDER BY MILE"), "MILE"),
              (std::vector<double>{9.5, 10, 28.25, 30, 45, 60.5, 100}));
    // The lower bound is in the range, the upper one is not.
    EXPECT_EQ(column(links.Query("SELECT *  FROM Camps WHERE MILE >=  28.25 AND MILE <  60.5 ORDER BY PREF DESC"),
                     "PREF"),
              (std::vector<double>{7, 5, 2}));
    // A name that is taken stays as it is until it is unlinked.
    EXPECT_FALSE(osm::LinkSheet(links, book(), "StarsOut$", "Camps"));
    EXPECT_TRUE(osm::UnlinkTable(links, "Camps"));
    EXPECT_FALSE(links.hasTable("Camps"));
    // A bad cell of a linked sheet, and a query on one without its columns, say which sheet stands behind the table.
    sheet("Bad.csv", "MILE\nNaN\n");
    ASSERT_TRUE(osm::LinkSheet(links, book(), "Bad", "Camps"));
    EXPECT_TRUE(Holds(FaultText([&] { links.Query("SELECT * FROM Camps ORDER BY MILE").Field("MILE").number(); }),
                      {"(table camps: physical.xls, sheet Bad$), row 1, column MILE", "'NaN'"}));
    EXPECT_TRUE(osm::UnlinkTable(links, "Camps"));
    sheet("Empty.csv", "");
    ASSERT_TRUE(osm::LinkSheet(links, book(), "Empty", "Camps"));
    EXPECT_TRUE(Holds(FaultText([&] { links.Query("SELECT * FROM Camps ORDER BY MILE"); }),
                      {"no such column: MILE", "(table camps: physical.xls, sheet Empty$)"}));

    // The hydraulic sheet is loaded by the first statement that names it; no section: one row of empty cells.
    osm::Database stars = osm::OpenWorkbook(book());
    const char* scale = "Select MAX(stage) as [maxS] , MIN(stage) as [minS] from StarsOut WHERE MILE  =   ";
    EXPECT_EQ(stars.Query(std::string(scale) + "3.5").Field("MINS").number(), 1.75);
    osm::Cursor none = stars.Query(std::string(scale) + "77");
    ASSERT_EQ(none.RecordCount(), 1);
    EXPECT_TRUE(none.Field("maxS").isEmpty());
    EXPECT_TRUE(Holds(FaultText([&] { stars.Query("SELECT * FROM Rapids"); }),
                      {"physical.xls", "SELECT * FROM Rapids", "no such table: Rapids"}));
}

TEST_F(WorkbookTest, UpdateSheetColumnsRewritesOnlyTheGivenCells) {
    sheet("MainTemp.csv",
          "Month,\"Mean, F\",T2,Note\r\n1,40,1.5,\"keep \"\"this\"\"\"\r\n2,41.25,2\r\n3,  42 ,3,x\r\n4,43,4,y\r\n");
    osm::UpdateSheetColumns(book(), "MainTemp$", {"t2", "Month"}, {{9.5, -0.25, 1e20}, {7}});
    EXPECT_EQ(sheetText("MainTemp.csv"),
              "Month,\"Mean, F\",T2,Note\r\n7,40,9.5,\"keep \"\"this\"\"\"\r\n2,41.25,-0.25\r\n"
              "3,  42 ,1E+20,x\r\n4,43,4,y\r\n");
    // A short row is widened to reach the column; no temporary file is left over.
    osm::UpdateSheetColumns(book(), "MainTemp", {"Note"}, {{0, 0}});
    EXPECT_EQ(sheetText("MainTemp.csv"),
              "Month,\"Mean, F\",T2,Note\r\n7,40,9.5,0\r\n2,41.25,-0.25,0\r\n3,  42 ,1E+20,x\r\n4,43,4,y\r\n");
    EXPECT_EQ(entries("physical.xls"), 1u);
    // Failed updates change nothing.
    const std::string before = sheetText("MainTemp.csv");
    EXPECT_TRUE(Holds(FaultText([&] { osm::UpdateSheetColumns(book(), "MainTemp$", {"T2"}, {{1, 2, 3, 4, 5}}); }),
                      {"5 values", "4 rows", "nothing was changed"}));
    EXPECT_EQ(sheetText("MainTemp.csv"), before);
    const std::string bytes = std::string("\xD0\xCF\x11\xE0", 4) + "not really a workbook";
    const std::string legacy = f_.Write("legacy.xls", bytes);
    EXPECT_TRUE(Holds(FaultText([&] { osm::UpdateSheetColumns(legacy, "MainTemp$", {"T1"}, {{1}}); }),
                      {"legacy.xls", "read-only", "nothing was changed"}));
    EXPECT_EQ(f_.Read("legacy.xls"), bytes);
    EXPECT_EQ(entries("."), 2u);
}

}  // namespace
