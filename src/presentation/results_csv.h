#pragma once
// Every stored value of the results store in long form, for analysis tools:
// run,var,sub,reach,month,value.
#include <string>

namespace osm {

struct Model;

class TextWriter;
void WriteResultsCsv(const Model& m, const std::string& path);
// The same into a file being written, which the caller commits.
void WriteResultsCsv(const Model& m, TextWriter& out);

}  // namespace osm
