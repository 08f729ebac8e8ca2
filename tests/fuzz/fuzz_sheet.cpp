// A workbook sheet kept as a CSV file: every cell read as a number, a 16-bit
// integer and a text; then the first column, when every cell of it is a number,
// is written back with its own values and must read back the same.
#include <vector>

#include "core/numbers.h"
#include "core/workbook.h"
#include "fuzz_support.h"

namespace {

// The cells of the first column as numbers; false when one is not a number.
bool firstColumn(osm::Cursor& c, std::vector<double>& values) {
    values.clear();
    for (c.MoveFirst(); !c.AtEnd(); c.MoveNext()) {
        const osm::Cell cell = c.Field(0);
        if (cell.kind() != osm::Cell::Kind::Number) return false;
        values.push_back(cell.number());
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace osm;
    const std::string book = fuzz::WorkFolder() + "/book.xls";
    fuzz::WriteInput("book.xls/Sheet.csv", data, size);
    std::vector<double> before;
    std::string head;
    fuzz::Takes([&] {
        Database db = OpenWorkbook(book);
        Cursor c = db.OpenSheet("Sheet$");
        c.RecordCount();
        for (; !c.AtEnd(); c.MoveNext())
            for (int k = 0; k < static_cast<int>(c.columns().size()); ++k) {
                const Cell cell = c.Field(k);
                fuzz::Takes([&] { cell.number(); });
                fuzz::Takes([&] { cell.int16(); });
                cell.text();
            }
        if (!c.columns().empty() && firstColumn(c, before)) head = c.columns()[0];
    });
    if (head.empty()) return 0;
    if (!fuzz::Takes([&] { UpdateSheetColumns(book, "Sheet", {head}, {before}); })) return 0;

    std::vector<double> after;
    fuzz::Takes([&] {
        Database db = OpenWorkbook(book);
        Cursor c = db.OpenSheet("Sheet$");
        if (!firstColumn(c, after)) fuzz::Finding("a column of numbers written back holds a text");
    });
    if (after.size() != before.size())
        fuzz::Finding("the sheet had " + std::to_string(before.size()) + " rows, written back " +
                      std::to_string(after.size()));
    for (size_t i = 0; i < before.size(); ++i)
        if (NumText(after[i]) != NumText(before[i]))
            fuzz::Finding("row " + std::to_string(i + 2) + ": " + NumText(before[i]) +
                          " written back reads " + NumText(after[i]));
    return 0;
}
