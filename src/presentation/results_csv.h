#pragma once
// Every stored value of the results store in long form, for analysis tools:
// run,var,sub,reach,month,value.
#include <string>

namespace osm {

struct Model;

void WriteResultsCsv(const Model& m, const std::string& path);

}  // namespace osm
