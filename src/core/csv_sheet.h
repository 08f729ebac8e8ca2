#pragma once
// A workbook sheet kept as a CSV file (RFC 4180: quoted fields may hold commas,
// doubled quotes and line ends; CRLF or LF line ends). The parse remembers where
// every field stood in the text, so a sheet can be rewritten with every cell that
// was not changed kept byte for byte.
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace osm {

struct CsvField {
    std::string value;   // quotes removed, doubled quotes made single
    size_t begin = 0;    // the field as written, quotes included: [begin, end)
    size_t end = 0;
};

struct CsvRecord {
    std::vector<CsvField> fields;
    size_t begin = 0;  // first character of the record
    size_t end = 0;    // just before the line end
    size_t next = 0;   // just after the line end
    int line = 0;      // file line on which the record starts, from 1

    // True when every field is empty (a blank line, or only commas).
    bool blank() const;
};

// Splits CSV text into records. A leading UTF-8 byte-order mark is skipped; a line
// end after the last record does not start another. An unclosed quote, or text
// after a closing quote, is a fault naming `fileName` and the line.
std::vector<CsvRecord> ParseCsv(std::string_view text, const std::string& fileName);

// The whole of a file as bytes; a file that cannot be read is a fault naming it.
std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace osm
