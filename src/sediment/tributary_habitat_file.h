#pragma once
// The tributary habitat file (.trb): by reach an index, and for each of three
// habitat classes a length and a curve of 21 points.
#include <string>

namespace osm {

struct Model;

void ReadTrbFile(Model& m, const std::string& path);
void WriteTrbFile(const Model& m, const std::string& path);

}  // namespace osm
