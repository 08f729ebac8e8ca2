#pragma once
// The results dump: chosen variables and reaches of the latest run, one record
// a month, for a spreadsheet.
#include <string>

namespace osm {

struct Model;

// Writes the file for the DumpVar and DumpReach flags as they stand.
void DumpResults(Model& m, const std::string& path);

}  // namespace osm
