#pragma once
// Workbook tables: every bulk input sheet is read through this one interface.
//
// A workbook is opened by its name (physical.xls, ...). The name may be a folder
// of CSV files, one per sheet (sheet "TribFlow$" is the file TribFlow.csv, first
// row the column heads), or a legacy Excel file read through FreeXL. Either way the
// sheets are loaded into an in-memory SQLite database, one table per sheet in row
// order, named after the sheet less its closing "$", so that cursors keep the
// sheet's order and the program's SQL texts run as written.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;

namespace osm {

// One cell of a cursor's current row, with where it came from for messages.
class Cell {
public:
    enum class Kind { Empty, Number, Text };

    Cell() = default;
    Cell(Kind kind, double number, std::string text, std::string where);

    Kind kind() const { return kind_; }
    bool isEmpty() const { return kind_ == Kind::Empty; }
    // The cell as a single: an empty cell is 0; a text that is not a number, or a
    // number beyond the range of a single, is a fault naming the cell.
    double number() const;
    float single() const { return static_cast<float>(number()); }
    // Rounded half to even; outside -32768..32767 is a fault naming the cell.
    int16_t int16() const;
    int32_t int32() const;
    // A number cell gives its plain text; an empty cell gives "".
    std::string text() const;

private:
    friend class Cursor;
    double fitting(double v, const std::string& shown) const;

    Kind kind_ = Kind::Empty;
    double number_ = 0.0;
    std::string text_;
    std::string where_;  // "physical.xls, sheet TribFlow$, row 12, column AVGQW"
};

// A cursor over the rows of a sheet or of a query, materialised when opened.
// MoveNext at the end stays there; a field read past the last row or after Close
// is a fault.
class Cursor {
public:
    bool AtEnd() const;
    void MoveNext();
    void MoveFirst();
    void Close();
    long RecordCount() const;
    // Column looked up by name, case-insensitively; a missing column is a fault
    // naming the workbook, the sheet and the column, and so is a sheet row that
    // ends before the column (an empty cell is what it is: 0 or "").
    Cell Field(const std::string& name) const;
    // Column by ordinal, counted from 0; past the last column is a fault.
    Cell Field(int ordinal) const;
    const std::vector<std::string>& columns() const;

private:
    friend class Database;
    const std::vector<Cell>& current() const;
    Cell located(const Cell& cell, size_t column) const;
    void requireCell(size_t column) const;

    std::string source_;  // "physical.xls, sheet TribFlow$", or the query, for messages
    std::vector<std::string> columns_;
    std::vector<std::vector<Cell>> rows_;
    std::vector<size_t> widths_;  // a sheet's cells by row as written; none for a query
    long firstRow_ = 2;  // row number of rows_[0] in messages: 2 below a sheet's heads
    size_t pos_ = 0;
    bool closed_ = false;
};

// An in-memory SQLite database: a workbook's sheets, or the program's own
// database of linked sheets.
class Database {
public:
    Database();
    ~Database();
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& path() const { return path_; }
    // A forward cursor over the rows of a sheet ("TribFlow$"); a missing sheet is
    // a fault naming the workbook and the sheet.
    Cursor OpenSheet(const std::string& sheetName);
    // The same for a sheet the model cannot do without: one with no rows below
    // its heads is a fault naming it.
    Cursor OpenRequiredSheet(const std::string& sheetName);
    // A cursor from an SQL text; an SQL error is a fault with the statement. A
    // sheet the statement names is loaded from the workbook when first needed.
    Cursor Query(const std::string& sqlText);
    // True when the table is in the database, or the workbook has a sheet of that
    // name (which is then loaded).
    bool hasTable(const std::string& tableName);
    // The names of the workbook's sheets (those of a CSV folder end in "$").
    std::vector<std::string> SheetNames() const;
    sqlite3* handle() const { return db_; }

private:
    friend Database OpenWorkbook(const std::string& path);
    friend bool LinkSheet(Database& database, const std::string& workbook,
                          const std::string& sheet, const std::string& tableName);
    friend bool UnlinkTable(Database& database, const std::string& tableName);
    friend std::string LinkConnect(Database& database, const std::string& tableName);
    bool tableExists(const std::string& tableName) const;
    // Loads a sheet of the workbook as a table; false when the workbook has no such sheet.
    bool loadSheet(const std::string& sheetName);
    Cursor run(const std::string& sqlText, const std::string& source, long firstRow);
    std::string tablesBehind(const std::string& sqlText) const;

    struct Impl;
    sqlite3* db_ = nullptr;
    std::string path_;
    std::unique_ptr<Impl> impl_;
};

// Opens a workbook read-only, first row as heads: a folder of CSV sheets, or a
// legacy Excel file. A missing workbook, or a file FreeXL cannot read, is a fault
// naming it. The sheets are read when first asked for; later changes to the files
// are not seen by this database.
Database OpenWorkbook(const std::string& path);

// Attaches a sheet of a workbook as a table of `database`. The connect text is
// "Excel 5.0;" then "Database=" and the workbook path; the sheet name gets a
// closing "$" if it has none, and the table name loses one. True on success;
// false when the workbook or the sheet is missing, or the table name is taken
// (unlink it first).
bool LinkSheet(Database& database, const std::string& workbook, const std::string& sheet,
               const std::string& tableName);
// Removes a table that is linked to a workbook; True when it removed it.
bool UnlinkTable(Database& database, const std::string& tableName);
// The connect text a linked table carries, "" for none.
std::string LinkConnect(Database& database, const std::string& tableName);

// Writes new values into named columns of a sheet, row by row in the sheet's
// order, keeping every other cell. Works on the CSV form of a workbook; a legacy
// .xls is read-only and is a fault that says so (nothing is changed). The file is
// replaced through a temporary file, so a failure never loses the sheet.
// values[c][i] goes to column columns[c] of data row i; a list shorter than the
// sheet leaves the rows after it alone, a longer one is a fault. Faults change nothing.
void UpdateSheetColumns(const std::string& workbook, const std::string& sheet,
                        const std::vector<std::string>& columns,
                        const std::vector<std::vector<double>>& values);

}  // namespace osm
