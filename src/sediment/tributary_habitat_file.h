#pragma once
// The tributary habitat file (.trb): by reach the accessible length, and for
// each of three habitat classes a multiplier and a curve of 21 cells.
#include <string>

namespace osm {

struct Model;

void ReadTrbFile(Model& m, const std::string& path);
void WriteTrbFile(const Model& m, const std::string& path);

}  // namespace osm
