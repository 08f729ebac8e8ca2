#pragma once
// Scenario comparison: each run's mean of every stored variable, data set and
// reach, beside the base run's (the first of the set), with the difference and
// the percent difference; and a short summary of the quantities a river manager
// asks about first.
#include <string>
#include <vector>

namespace osm {

struct Graphs;
struct RunSet;
class TextWriter;

// The mean of one row and reach of a run over its months: a yearly variable
// over its Decembers only, where it holds its value; months without a value
// (observed gaps, months a stopped run did not reach) are left out. NaN when
// no month has a value.
double RunMean(const RunSet& set, const Graphs& g, size_t run, size_t row, int reach);

// var,set,label,reach,scenario,mean,difference,percent_difference: one record
// per row, reach and run; the base's difference is 0. A percent difference
// from a base mean of 0, and any figure of a mean that does not exist, is empty.
void WriteComparisonCsv(const RunSet& set, const Graphs& g, TextWriter& out);

// Power value, sand storage, campsites, trout and native fish biomass, angler
// days and the money values, for each run: one line each, with the difference
// from the base.
std::string ComparisonSummary(const RunSet& set, const Graphs& g);

}  // namespace osm
