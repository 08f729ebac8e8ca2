#include "core/csv_sheet.h"

#include <fstream>
#include <iterator>

#include "core/fault.h"
#include "core/provenance.h"

namespace osm {

bool CsvRecord::blank() const {
    for (const CsvField& f : fields)
        if (!f.value.empty()) return false;
    return true;
}

namespace {

bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

// What follows a position up to the line end, short enough for a message.
std::string restOfLine(std::string_view text, size_t pos) {
    size_t e = pos;
    while (e < text.size() && !isLineEnd(text[e]) && e - pos < 20) ++e;
    return std::string(text.substr(pos, e - pos));
}

}  // namespace

std::vector<CsvRecord> ParseCsv(std::string_view text, const std::string& fileName) {
    std::vector<CsvRecord> records;
    const size_t n = text.size();
    size_t pos = text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
    int line = 1;
    while (pos < n) {
        CsvRecord rec;
        rec.begin = pos;
        rec.line = line;
        for (;;) {
            CsvField field;
            field.begin = pos;
            if (pos < n && text[pos] == '"') {
                const int openLine = line;
                ++pos;
                for (;;) {
                    if (pos >= n)
                        throw FileFault(fileName, openLine, "a closing quote", "the end of the file");
                    const char c = text[pos];
                    if (c == '"') {
                        if (pos + 1 < n && text[pos + 1] == '"') {
                            field.value += '"';
                            pos += 2;
                            continue;
                        }
                        ++pos;
                        break;
                    }
                    // A line end inside quotes belongs to the value; count it as a line.
                    if (c == '\n' || (c == '\r' && (pos + 1 >= n || text[pos + 1] != '\n'))) ++line;
                    field.value += c;
                    ++pos;
                }
                if (pos < n && text[pos] != ',' && !isLineEnd(text[pos]))
                    throw FileFault(fileName, line, "a comma or the line end after a closing quote",
                                    restOfLine(text, pos));
            } else {
                while (pos < n && text[pos] != ',' && !isLineEnd(text[pos])) ++pos;
                field.value.assign(text.substr(field.begin, pos - field.begin));
            }
            field.end = pos;
            rec.fields.push_back(std::move(field));
            if (pos < n && text[pos] == ',') {
                ++pos;
                continue;
            }
            break;
        }
        rec.end = pos;
        if (pos < n && text[pos] == '\r') ++pos;
        if (pos < n && text[pos] == '\n') ++pos;
        rec.next = pos;
        ++line;
        records.push_back(std::move(rec));
    }
    return records;
}

std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw FileFault(path.string(), "cannot be opened for reading");
    InputLog::Note(path.string());
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) throw FileFault(path.string(), "could not be read to the end");
    return text;
}

}  // namespace osm
