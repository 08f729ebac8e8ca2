#include "core/workbook.h"

#include <freexl.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "core/csv_sheet.h"
#include "core/fault.h"
#include "core/numbers.h"
#include "core/provenance.h"
#include "core/textfile.h"

namespace fs = std::filesystem;

namespace osm {

// ---------------------------------------------------------------------------
// Cell

Cell::Cell(Kind kind, double number, std::string text, std::string where)
    : kind_(kind), number_(number), text_(std::move(text)), where_(std::move(where)) {}

double Cell::number() const {
    switch (kind_) {
    case Kind::Empty: return 0.0;
    case Kind::Number: return fitting(number_, NumText(number_));
    case Kind::Text: break;
    }
    // A cell of blanks reads as an empty one.
    if (text_.find_first_not_of(" \t") == std::string::npos) return 0.0;
    const std::string where = where_.empty() ? std::string("cell") : where_;
    if (!IsNumber(text_))
        throw Fault(where + ": expected a number, found '" + Excerpt(text_) + "'");
    return fitting(Val(text_), Excerpt(text_));
}

// Every number of a sheet is a single before anything compares or sums it, so a
// sheet mile on a reach break falls as the single reach mile does; one beyond a
// single's range is refused.
double Cell::fitting(double v, const std::string& shown) const {
    if (FitsSingle(v)) return static_cast<float>(v);
    throw Fault((where_.empty() ? std::string("cell") : where_) + ": the number " + shown +
                " is beyond the range of a single-precision number (about 3.4E+38)");
}

int16_t Cell::int16() const { return ToInt16(number(), where_.empty() ? "cell" : where_); }

int32_t Cell::int32() const { return ToInt32(number(), where_.empty() ? "cell" : where_); }

std::string Cell::text() const {
    switch (kind_) {
    case Kind::Empty: return "";
    case Kind::Number: return NumText(number_);
    case Kind::Text: break;
    }
    return text_;
}

// ---------------------------------------------------------------------------
// Helpers

namespace {

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

bool sameName(const std::string& a, const std::string& b) { return lower(a) == lower(b); }

std::string trim(const std::string& s) {
    const size_t b = s.find_first_not_of(" \t");
    if (b == std::string::npos) return "";
    const size_t e = s.find_last_not_of(" \t");
    return s.substr(b, e - b + 1);
}

std::string withoutDollar(const std::string& name) {
    return !name.empty() && name.back() == '$' ? name.substr(0, name.size() - 1) : name;
}

std::string withDollar(const std::string& name) {
    return !name.empty() && name.back() == '$' ? name : name + "$";
}

// The workbook as messages name it: "physical.xls", not the whole path.
std::string displayName(const std::string& path) {
    fs::path p(path);
    if (p.filename().empty()) p = p.parent_path();
    const std::string name = p.filename().string();
    return name.empty() ? path : name;
}

std::string quoteId(const std::string& name) {
    std::string out = "\"";
    for (char c : name) {
        if (c == '"') out += '"';
        out += c;
    }
    return out + "\"";
}

std::string joinNames(const std::vector<std::string>& names) {
    std::string out;
    for (const std::string& n : names) out += (out.empty() ? "" : ", ") + n;
    return out.empty() ? "none" : out;
}

// One cell as it goes into SQLite: no declared column types, so each value keeps
// its own and numbers compare and sort as numbers.
struct Value {
    enum class Kind { Null, Integer, Real, Text } kind = Kind::Null;
    int64_t integer = 0;
    double real = 0.0;
    std::string text;
};

Value numberValue(double d) {
    Value v;
    if (d == std::floor(d) && d >= -9223372036854775808.0 && d < 9223372036854775808.0) {
        v.kind = Value::Kind::Integer;
        v.integer = static_cast<int64_t>(d);
    } else {
        v.kind = Value::Kind::Real;
        v.real = d;
    }
    return v;
}

Value textValue(const std::string& s) {
    if (s.empty()) return {};
    if (IsNumber(s)) {
        const double d = Val(s);
        if (std::isfinite(d)) return numberValue(d);
    }
    Value v;
    v.kind = Value::Kind::Text;
    v.text = s;
    return v;
}

struct SheetData {
    std::vector<std::string> heads;
    std::vector<std::vector<Value>> rows;
    std::vector<size_t> widths;  // cells each row holds as written
};

// Rows of nothing at the foot of a sheet are not part of it.
void dropBlankTail(SheetData& d) {
    while (!d.rows.empty() &&
           std::all_of(d.rows.back().begin(), d.rows.back().end(),
                       [](const Value& v) { return v.kind == Value::Kind::Null; })) {
        d.rows.pop_back();
        d.widths.pop_back();
    }
}

// ---- CSV folders

// The file of a sheet: "TribFlow$" is TribFlow.csv, matched without regard to case
// as sheet names are.
std::optional<fs::path> findCsv(const fs::path& folder, const std::string& sheetName) {
    const std::string stem = withoutDollar(sheetName);
    if (stem.empty() || stem.find_first_of("/\\") != std::string::npos) return std::nullopt;
    std::error_code ec;
    const fs::path exact = folder / (stem + ".csv");
    if (fs::is_regular_file(exact, ec)) return exact;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& p = it->path();
        if (sameName(p.extension().string(), ".csv") && sameName(p.stem().string(), stem) &&
            fs::is_regular_file(p, ec))
            return p;
    }
    return std::nullopt;
}

std::vector<std::string> csvSheetNames(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
        if (sameName(it->path().extension().string(), ".csv"))
            names.push_back(it->path().stem().string() + "$");
    std::sort(names.begin(), names.end());
    return names;
}

SheetData csvSheet(const fs::path& file) {
    const std::vector<CsvRecord> records = ParseCsv(ReadWholeFile(file), file.string());
    SheetData d;
    if (records.empty()) return d;
    for (const CsvField& f : records[0].fields) d.heads.push_back(f.value);
    for (size_t r = 1; r < records.size(); ++r) {
        std::vector<Value> row;
        for (const CsvField& f : records[r].fields) row.push_back(textValue(f.value));
        d.widths.push_back(row.size());
        d.rows.push_back(std::move(row));
    }
    dropBlankTail(d);
    return d;
}

// ---- Legacy Excel files

class XlsFile {
public:
    explicit XlsFile(const std::string& path) {
        const int rc = freexl_open(path.c_str(), &handle_);
        if (rc != FREEXL_OK) {
            if (handle_) freexl_close(handle_);
            handle_ = nullptr;
            throw FileFault(path, "is not a legacy Excel workbook that can be read (FreeXL error " +
                                      std::to_string(rc) + ")");
        }
        InputLog::Note(path);
    }
    ~XlsFile() {
        if (handle_) freexl_close(handle_);
    }
    XlsFile(const XlsFile&) = delete;
    XlsFile& operator=(const XlsFile&) = delete;

    std::vector<std::string> sheetNames() const {
        std::vector<std::string> names;
        unsigned int count = 0;
        if (freexl_get_info(handle_, FREEXL_BIFF_SHEET_COUNT, &count) != FREEXL_OK) return names;
        for (unsigned int i = 0; i < count && i <= 0xFFFF; ++i) {
            const char* name = nullptr;
            if (freexl_get_worksheet_name(handle_, static_cast<unsigned short>(i), &name) ==
                    FREEXL_OK &&
                name)
                names.emplace_back(name);
        }
        return names;
    }

    std::optional<SheetData> sheet(const std::string& sheetName) const {
        const std::vector<std::string> names = sheetNames();
        size_t index = names.size();
        for (size_t i = 0; i < names.size() && index == names.size(); ++i)
            if (sameName(names[i], withoutDollar(sheetName)) || sameName(names[i], sheetName))
                index = i;
        if (index == names.size()) return std::nullopt;
        if (freexl_select_active_worksheet(handle_, static_cast<unsigned short>(index)) !=
            FREEXL_OK)
            return std::nullopt;
        unsigned int rows = 0;
        unsigned short cols = 0;
        if (freexl_worksheet_dimensions(handle_, &rows, &cols) != FREEXL_OK) return SheetData{};
        // The dimensions may be counts or last indexes; a probe past them tells which.
        FreeXL_CellValue probe;
        const unsigned int nRows =
            freexl_get_cell_value(handle_, rows, 0, &probe) == FREEXL_OK ? rows + 1 : rows;
        const unsigned int nCols =
            freexl_get_cell_value(handle_, 0, cols, &probe) == FREEXL_OK ? cols + 1u : cols;

        SheetData d;
        for (unsigned int r = 0; r < nRows; ++r) {
            std::vector<Value> row;
            for (unsigned int c = 0; c < nCols; ++c) {
                FreeXL_CellValue cell;
                if (freexl_get_cell_value(handle_, r, static_cast<unsigned short>(c), &cell) !=
                    FREEXL_OK) {
                    row.emplace_back();
                    continue;
                }
                row.push_back(cellValue(cell));
            }
            if (r == 0) {
                for (const Value& v : row) d.heads.push_back(headText(v));
            } else {
                d.widths.push_back(row.size());
                d.rows.push_back(std::move(row));
            }
        }
        dropBlankTail(d);
        return d;
    }

private:
    static Value cellValue(const FreeXL_CellValue& cell) {
        switch (cell.type) {
        case FREEXL_CELL_INT: return numberValue(cell.value.int_value);
        case FREEXL_CELL_DOUBLE: return numberValue(cell.value.double_value);
        case FREEXL_CELL_TEXT:
        case FREEXL_CELL_SST_TEXT:
            return textValue(cell.value.text_value ? cell.value.text_value : "");
        case FREEXL_CELL_DATE:
        case FREEXL_CELL_DATETIME:
        case FREEXL_CELL_TIME: {
            Value v;
            v.kind = Value::Kind::Text;
            v.text = cell.value.text_value ? cell.value.text_value : "";
            return v;
        }
        default: return {};
        }
    }

    static std::string headText(const Value& v) {
        switch (v.kind) {
        case Value::Kind::Null: return "";
        case Value::Kind::Integer: return std::to_string(v.integer);
        case Value::Kind::Real: return NumText(v.real);
        case Value::Kind::Text: break;
        }
        return v.text;
    }

    const void* handle_ = nullptr;
};

// ---- SQLite

struct Statement {
    sqlite3_stmt* s = nullptr;
    Statement() = default;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement() { sqlite3_finalize(s); }
};

void exec(sqlite3* db, const std::string& sql, const std::string& what) {
    char* err = nullptr;
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &err) != SQLITE_OK) {
        const std::string msg = err ? err : sqlite3_errmsg(db);
        sqlite3_free(err);
        throw Fault(what + ": " + msg);
    }
}

// Writes a sheet into a new table of `db`, all or nothing.
void createTable(sqlite3* db, const std::string& table, const SheetData& d,
                 const std::string& source) {
    // The columns run to the last head or the last cell with something in it;
    // a column without a head is named as the data layer names one: F1, F2, ...
    size_t ncols = 0;
    for (size_t i = 0; i < d.heads.size(); ++i)
        if (!trim(d.heads[i]).empty()) ncols = i + 1;
    for (const auto& row : d.rows)
        for (size_t i = ncols; i < row.size(); ++i)
            if (row[i].kind != Value::Kind::Null) ncols = i + 1;
    ncols = std::max<size_t>(ncols, 1);

    std::vector<std::string> names;
    std::set<std::string> seen;
    for (size_t i = 0; i < ncols; ++i) {
        std::string name = i < d.heads.size() ? trim(d.heads[i]) : "";
        if (name.empty()) name = "F" + std::to_string(i + 1);
        if (!seen.insert(lower(name)).second)
            throw Fault(source + ": the column head '" + name +
                        "' appears twice; give each column its own head");
        names.push_back(name);
    }

    const std::string what = source + ": cannot load the sheet";
    std::string create = "CREATE TABLE " + quoteId(table) + " (";
    std::string insert = "INSERT INTO " + quoteId(table) + " VALUES (";
    for (size_t i = 0; i < ncols; ++i) {
        create += (i ? ", " : "") + quoteId(names[i]);
        insert += i ? ", ?" : "?";
    }
    create += ")";
    insert += ")";

    exec(db, "SAVEPOINT load_sheet", what);
    try {
        exec(db, create, what);
        Statement st;
        if (sqlite3_prepare_v2(db, insert.c_str(), -1, &st.s, nullptr) != SQLITE_OK)
            throw Fault(what + ": " + sqlite3_errmsg(db));
        for (const auto& row : d.rows) {
            for (size_t i = 0; i < ncols; ++i) {
                const int k = static_cast<int>(i) + 1;
                const Value none;
                const Value& v = i < row.size() ? row[i] : none;
                switch (v.kind) {
                case Value::Kind::Null: sqlite3_bind_null(st.s, k); break;
                case Value::Kind::Integer: sqlite3_bind_int64(st.s, k, v.integer); break;
                case Value::Kind::Real: sqlite3_bind_double(st.s, k, v.real); break;
                case Value::Kind::Text:
                    sqlite3_bind_text(st.s, k, v.text.c_str(), static_cast<int>(v.text.size()),
                                      SQLITE_TRANSIENT);
                    break;
                }
            }
            if (sqlite3_step(st.s) != SQLITE_DONE) throw Fault(what + ": " + sqlite3_errmsg(db));
            sqlite3_reset(st.s);
        }
    } catch (...) {
        sqlite3_exec(db, "ROLLBACK TO load_sheet; RELEASE load_sheet", nullptr, nullptr, nullptr);
        throw;
    }
    exec(db, "RELEASE load_sheet", what);
}

// The table named in SQLite's "no such table: X", or "".
std::string missingTable(const std::string& message) {
    const std::string head = "no such table: ";
    if (message.rfind(head, 0) != 0) return "";
    std::string name = message.substr(head.size());
    if (lower(name).rfind("main.", 0) == 0) name = name.substr(5);
    return name;
}

}  // namespace

// ---------------------------------------------------------------------------
// Cursor

bool Cursor::AtEnd() const { return closed_ || pos_ >= rows_.size(); }

void Cursor::MoveNext() {
    if (closed_) throw Fault(source_ + ": the cursor is closed");
    if (pos_ < rows_.size()) ++pos_;
}

void Cursor::MoveFirst() {
    if (closed_) throw Fault(source_ + ": the cursor is closed");
    pos_ = 0;
}

void Cursor::Close() {
    closed_ = true;
    rows_.clear();
    widths_.clear();
    pos_ = 0;
}

long Cursor::RecordCount() const { return static_cast<long>(rows_.size()); }

const std::vector<std::string>& Cursor::columns() const { return columns_; }

const std::vector<Cell>& Cursor::current() const {
    if (closed_) throw Fault(source_ + ": the cursor is closed");
    if (pos_ >= rows_.size()) throw Fault(source_ + ": no current row (past the last row)");
    return rows_[pos_];
}

Cell Cursor::located(const Cell& cell, size_t column) const {
    const std::string where = source_ + ", row " +
                              std::to_string(firstRow_ + static_cast<long>(pos_)) + ", column " +
                              columns_[column];
    const bool isNumber = cell.kind() == Cell::Kind::Number;
    return Cell(cell.kind(), isNumber ? cell.number_ : 0.0, isNumber ? "" : cell.text(), where);
}

// A row that ends before the column is cut short, not empty: nothing stands for it.
void Cursor::requireCell(size_t column) const {
    if (pos_ < widths_.size() && column >= widths_[pos_])
        throw Fault(source_ + ", row " + std::to_string(firstRow_ + static_cast<long>(pos_)) +
                    ": the row ends after " + std::to_string(widths_[pos_]) +
                    (widths_[pos_] == 1 ? " cell" : " cells") + ", before column " +
                    columns_[column]);
}

Cell Cursor::Field(const std::string& name) const {
    for (size_t i = 0; i < columns_.size(); ++i)
        if (sameName(columns_[i], name)) {
            requireCell(i);
            return located(current()[i], i);
        }
    throw Fault(source_ + ": no column '" + name + "' (columns: " + joinNames(columns_) + ")");
}

Cell Cursor::Field(int ordinal) const {
    if (ordinal < 0 || static_cast<size_t>(ordinal) >= columns_.size())
        throw Fault(source_ + ": no column number " + std::to_string(ordinal) + " (there are " +
                    std::to_string(columns_.size()) + ", counted from 0)");
    const size_t i = static_cast<size_t>(ordinal);
    requireCell(i);
    return located(current()[i], i);
}

// ---------------------------------------------------------------------------
// Database

struct Database::Impl {
    std::string display;          // workbook name for messages; "" for the program's own
    bool folder = false;          // a folder of CSV sheets, else a legacy Excel file
    std::unique_ptr<XlsFile> xls;  // kept open for sheets read later
    std::map<std::string, std::string> sources;  // table (lower case) -> "book, sheet X$"
    std::map<std::string, std::string> links;    // table (lower case) -> connect text
    std::map<std::string, std::vector<size_t>> widths;  // table (lower case) -> cells of each row
};

Database::Database() : impl_(std::make_unique<Impl>()) {
    if (sqlite3_open_v2(":memory:", &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) !=
        SQLITE_OK) {
        const std::string msg = db_ ? sqlite3_errmsg(db_) : "out of memory";
        sqlite3_close_v2(db_);
        db_ = nullptr;
        throw Fault("cannot open an in-memory database: " + msg);
    }
}

Database::~Database() {
    if (db_) sqlite3_close_v2(db_);
}

Database::Database(Database&& other) noexcept
    : db_(std::exchange(other.db_, nullptr)),
      path_(std::move(other.path_)),
      impl_(std::move(other.impl_)) {}

Database& Database::operator=(Database&& other) noexcept {
    if (this != &other) {
        if (db_) sqlite3_close_v2(db_);
        db_ = std::exchange(other.db_, nullptr);
        path_ = std::move(other.path_);
        impl_ = std::move(other.impl_);
    }
    return *this;
}

bool Database::tableExists(const std::string& tableName) const {
    if (!db_) throw Fault("the database was moved away");
    Statement st;
    const char* sql =
        "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE";
    if (sqlite3_prepare_v2(db_, sql, -1, &st.s, nullptr) != SQLITE_OK)
        throw Fault(std::string("cannot look up a table: ") + sqlite3_errmsg(db_));
    sqlite3_bind_text(st.s, 1, tableName.c_str(), static_cast<int>(tableName.size()),
                      SQLITE_TRANSIENT);
    return sqlite3_step(st.s) == SQLITE_ROW;
}

bool Database::loadSheet(const std::string& sheetName) {
    if (!db_ || path_.empty()) return false;
    const std::string table = withoutDollar(sheetName);
    if (table.empty()) return false;
    std::optional<SheetData> data;
    if (impl_->folder) {
        const std::optional<fs::path> file = findCsv(path_, sheetName);
        if (!file) return false;
        data = csvSheet(*file);
    } else {
        data = impl_->xls->sheet(sheetName);
        if (!data) return false;
    }
    const std::string source = impl_->display + ", sheet " + withDollar(sheetName);
    createTable(db_, table, *data, source);
    impl_->sources[lower(table)] = source;
    impl_->widths[lower(table)] = std::move(data->widths);
    return true;
}

std::vector<std::string> Database::SheetNames() const {
    if (path_.empty()) return {};
    return impl_->folder ? csvSheetNames(path_) : impl_->xls->sheetNames();
}

bool Database::hasTable(const std::string& tableName) {
    const std::string table = withoutDollar(tableName);
    return !table.empty() && (tableExists(table) || loadSheet(tableName));
}

Cursor Database::OpenSheet(const std::string& sheetName) {
    const std::string table = withoutDollar(sheetName);
    const std::string book = impl_ && !impl_->display.empty() ? impl_->display : "the database";
    if (table.empty()) throw Fault(book + ": no sheet name given");
    if (!tableExists(table) && !loadSheet(sheetName)) {
        if (path_.empty()) throw Fault(book + ": no table '" + table + "'");
        const std::vector<std::string> sheets = SheetNames();
        std::string text = book + ": no sheet '" + sheetName + "'";
        if (impl_->folder) text += " (no file " + table + ".csv in " + path_ + ")";
        throw Fault(text + "; sheets: " + joinNames(sheets));
    }
    const auto known = impl_->sources.find(lower(table));
    const std::string source = known != impl_->sources.end()
                                   ? known->second
                                   : book + ", sheet " + withDollar(sheetName);
    Cursor c = run("SELECT * FROM " + quoteId(table) + " ORDER BY rowid", source, 2);
    const auto widths = impl_->widths.find(lower(table));
    if (widths != impl_->widths.end() && widths->second.size() == c.rows_.size()) c.widths_ = widths->second;
    return c;
}

Cursor Database::OpenRequiredSheet(const std::string& sheetName) {
    Cursor c = OpenSheet(sheetName);
    if (c.AtEnd()) throw Fault(c.source_ + ": the sheet has no rows below its heads; the model needs its data");
    return c;
}

Cursor Database::Query(const std::string& sqlText) {
    const std::string book = impl_ && !impl_->display.empty() ? impl_->display + ", " : "";
    return run(sqlText, book + "query \"" + sqlText + "\"" + tablesBehind(sqlText), 1);
}

// For messages: the sheet behind each table a statement names.
std::string Database::tablesBehind(const std::string& sqlText) const {
    std::string behind;
    const std::string text = lower(sqlText);
    for (const auto& [table, sheet] : impl_->sources)
        if (text.find(table) != std::string::npos) behind += " (table " + table + ": " + sheet + ")";
    return behind;
}

Cursor Database::run(const std::string& sqlText, const std::string& source, long firstRow) {
    if (!db_) throw Fault("the database was moved away");
    const std::string book = !impl_->display.empty() ? impl_->display + ": " : "";
    auto failed = [&](const std::string& why) {
        return Fault(book + "the query \"" + sqlText + "\" failed: " + why + tablesBehind(sqlText));
    };

    Statement st;
    const char* tail = nullptr;
    std::set<std::string> tried;
    for (;;) {
        if (sqlite3_prepare_v2(db_, sqlText.c_str(), static_cast<int>(sqlText.size()), &st.s,
                               &tail) == SQLITE_OK)
            break;
        const std::string msg = sqlite3_errmsg(db_);
        // A sheet is loaded the first time a statement names it.
        const std::string missing = missingTable(msg);
        if (!missing.empty() && tried.insert(lower(missing)).second && loadSheet(missing))
            continue;
        throw failed(msg);
    }
    if (!st.s) throw failed("there is no statement in it");
    for (const char* p = tail; p && *p; ++p)
        if (!std::isspace(static_cast<unsigned char>(*p)) && *p != ';')
            throw failed("it holds more than one statement");

    Cursor cursor;
    cursor.source_ = source;
    cursor.firstRow_ = firstRow;
    const int ncols = sqlite3_column_count(st.s);
    for (int i = 0; i < ncols; ++i) {
        const char* name = sqlite3_column_name(st.s, i);
        cursor.columns_.emplace_back(name ? name : "");
    }
    int rc;
    while ((rc = sqlite3_step(st.s)) == SQLITE_ROW) {
        std::vector<Cell> row;
        row.reserve(static_cast<size_t>(ncols));
        for (int i = 0; i < ncols; ++i) {
            switch (sqlite3_column_type(st.s, i)) {
            case SQLITE_NULL: row.emplace_back(); break;
            case SQLITE_INTEGER:
                row.emplace_back(Cell::Kind::Number,
                                 static_cast<double>(sqlite3_column_int64(st.s, i)), "", "");
                break;
            case SQLITE_FLOAT:
                row.emplace_back(Cell::Kind::Number, sqlite3_column_double(st.s, i), "", "");
                break;
            default: {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(st.s, i));
                const int bytes = sqlite3_column_bytes(st.s, i);
                row.emplace_back(Cell::Kind::Text, 0.0,
                                 text ? std::string(text, static_cast<size_t>(bytes)) : "", "");
            }
            }
        }
        cursor.rows_.push_back(std::move(row));
    }
    if (rc != SQLITE_DONE) throw failed(sqlite3_errmsg(db_));
    return cursor;
}

Database OpenWorkbook(const std::string& path) {
    std::error_code ec;
    const fs::file_status status = fs::status(path, ec);
    const bool folder = fs::is_directory(status);
    if (!folder && !fs::is_regular_file(status)) throw Fault("workbook not found: " + path);
    Database db;
    db.path_ = path;
    db.impl_->display = displayName(path);
    db.impl_->folder = folder;
    if (!folder) db.impl_->xls = std::make_unique<XlsFile>(path);
    return db;
}

// ---------------------------------------------------------------------------
// Linked tables

bool LinkSheet(Database& database, const std::string& workbook, const std::string& sheet,
               const std::string& tableName) {
    const std::string sheetName = withDollar(sheet);
    const std::string table = withoutDollar(tableName);
    if (table.empty() || withoutDollar(sheetName).empty()) return false;
    if (database.tableExists(table)) return false;

    std::error_code ec;
    const fs::file_status status = fs::status(workbook, ec);
    std::optional<SheetData> data;
    if (fs::is_directory(status)) {
        const std::optional<fs::path> file = findCsv(workbook, sheetName);
        if (!file) return false;
        data = csvSheet(*file);
    } else if (fs::is_regular_file(status)) {
        data = XlsFile(workbook).sheet(sheetName);
        if (!data) return false;
    } else {
        return false;
    }
    const std::string source = displayName(workbook) + ", sheet " + sheetName;
    createTable(database.db_, table, *data, source);
    database.impl_->sources[lower(table)] = source;
    database.impl_->links[lower(table)] = "Excel 5.0;Database=" + workbook;
    return true;
}

bool UnlinkTable(Database& database, const std::string& tableName) {
    if (!database.db_) throw Fault("the database was moved away");
    const std::string key = lower(withoutDollar(tableName));
    const auto link = database.impl_->links.find(key);
    if (link == database.impl_->links.end()) return false;
    const std::string connect = upper(link->second);
    if (connect.find("EXCEL 5.0;") == std::string::npos ||
        connect.find("DATABASE=") == std::string::npos)
        return false;
    exec(database.db_, "DROP TABLE IF EXISTS " + quoteId(withoutDollar(tableName)),
         "cannot remove the linked table " + tableName);
    database.impl_->links.erase(link);
    database.impl_->sources.erase(key);
    return true;
}

std::string LinkConnect(Database& database, const std::string& tableName) {
    if (!database.impl_) return "";
    const auto link = database.impl_->links.find(lower(withoutDollar(tableName)));
    return link == database.impl_->links.end() ? "" : link->second;
}

// ---------------------------------------------------------------------------
// Writing a sheet back

void UpdateSheetColumns(const std::string& workbook, const std::string& sheet,
                        const std::vector<std::string>& columns,
                        const std::vector<std::vector<double>>& values) {
    const std::string sheetName = withDollar(sheet);
    const std::string where = displayName(workbook) + ", sheet " + sheetName;
    const std::string unchanged = "; nothing was changed";

    std::error_code ec;
    const fs::file_status status = fs::status(workbook, ec);
    if (fs::is_regular_file(status))
        throw Fault(workbook + ": this workbook is a legacy Excel file and is read-only; sheet " +
                    sheetName + " was not saved" + unchanged);
    if (!fs::is_directory(status)) throw Fault("workbook not found: " + workbook);
    const std::optional<fs::path> file = findCsv(workbook, sheetName);
    if (!file)
        throw Fault(where + ": no such sheet (no file " + withoutDollar(sheetName) + ".csv in " +
                    workbook + ")" + unchanged);
    if (columns.size() != values.size())
        throw Fault(where + ": " + std::to_string(columns.size()) + " columns but " +
                    std::to_string(values.size()) + " lists of values" + unchanged);

    const std::string text = ReadWholeFile(*file);
    const std::vector<CsvRecord> records = ParseCsv(text, file->string());
    if (records.empty()) throw Fault(where + ": the sheet has no heads" + unchanged);
    size_t last = records.size();
    while (last > 1 && records[last - 1].blank()) --last;
    const size_t dataRows = last - 1;

    std::vector<std::string> heads;
    for (const CsvField& f : records[0].fields) heads.push_back(trim(f.value));
    // record -> field -> new text
    std::map<size_t, std::map<size_t, std::string>> changes;
    for (size_t c = 0; c < columns.size(); ++c) {
        const auto head = std::find_if(heads.begin(), heads.end(), [&](const std::string& h) {
            return sameName(h, trim(columns[c]));
        });
        if (head == heads.end())
            throw Fault(where + ": no column '" + columns[c] + "' (columns: " + joinNames(heads) +
                        ")" + unchanged);
        const size_t field = static_cast<size_t>(head - heads.begin());
        if (values[c].size() > dataRows)
            throw Fault(where + ": " + std::to_string(values[c].size()) + " values for column " +
                        columns[c] + " but the sheet has " + std::to_string(dataRows) + " rows" +
                        unchanged);
        for (size_t i = 0; i < values[c].size(); ++i) {
            if (!std::isfinite(values[c][i]))
                throw Fault(where + ", row " + std::to_string(i + 2) + ", column " + columns[c] +
                            ": cannot save " + NumText(values[c][i]) + unchanged);
            changes[i + 1][field] = NumText(values[c][i]);
        }
    }
    if (changes.empty()) return;

    // Every byte outside the changed cells is copied as it stands.
    std::string out;
    out.reserve(text.size() + 64);
    size_t copied = 0;
    for (const auto& [r, fields] : changes) {
        const CsvRecord& rec = records[r];
        out.append(text, copied, rec.begin - copied);
        const size_t width = std::max(rec.fields.size(), fields.rbegin()->first + 1);
        for (size_t k = 0; k < width; ++k) {
            if (k) out += ',';
            const auto changed = fields.find(k);
            if (changed != fields.end())
                out += changed->second;
            else if (k < rec.fields.size())
                out.append(text, rec.fields[k].begin, rec.fields[k].end - rec.fields[k].begin);
        }
        copied = rec.end;
    }
    out.append(text, copied, std::string::npos);

    fs::path temp = *file;
    temp += ".saving";
    {
        std::ofstream o(temp, std::ios::binary | std::ios::trunc);
        if (o) o.write(out.data(), static_cast<std::streamsize>(out.size()));
        o.close();
        if (!o) {
            fs::remove(temp, ec);
            throw Fault(where + ": cannot write " + temp.string() + unchanged);
        }
    }
    try {
        ReplaceDurably(temp.string(), file->string());
    } catch (const Fault& e) {
        std::error_code ignored;
        fs::remove(temp, ignored);
        throw Fault(where + ": " + e.what() + unchanged);
    }
}

}  // namespace osm
