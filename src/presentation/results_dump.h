#pragma once
// The results dump: chosen variables and reaches of the latest run, one record
// a month, for a spreadsheet.
#include <string>

namespace osm {

struct Model;
class TextWriter;

// Writes the file for the DumpVar and DumpReach flags as they stand.
void DumpResults(Model& m, const std::string& path);
// The same into a file being written, which the caller commits.
void DumpResults(Model& m, TextWriter& out);

}  // namespace osm
