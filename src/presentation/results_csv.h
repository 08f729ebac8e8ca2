#pragma once
// Every stored value of the results store in long form, for analysis tools:
// run,var,sub,reach,month,value.
#include <cstddef>
#include <string>

namespace osm {

struct Model;
struct RunSet;

class TextWriter;
void WriteResultsCsv(const Model& m, const std::string& path);
// The same into a file being written, which the caller commits.
void WriteResultsCsv(const Model& m, TextWriter& out);
// One run of a set in the same form, as run 0; a value the run lacks is empty.
void WriteRunCsv(const RunSet& set, size_t run, TextWriter& out);

}  // namespace osm
