#pragma once
// The results of one or many runs as a CF-conventions NetCDF-4 file, for xarray,
// R and other analysis tools: dimensions run, time (the months of a run), reach
// and set; one variable per stored variable of the graph table, named and given
// units from its title; NaN where a run has no value. The provenance is kept in
// the global attributes.
#include <string>

namespace osm {

struct Graphs;
struct RunSet;

// Written to a temporary file beside `path`, which replaces `path` only when
// complete; a fault names the file and the library's reason.
void WriteResultsNetcdf(const RunSet& set, const Graphs& g, const std::string& path);

// The NetCDF name and the units of a graph-table title: "Flow (kcfs):" gives
// "flow" and "kcfs"; a title without units gives "1" as its units.
std::string NetcdfName(const std::string& title);
std::string NetcdfUnits(const std::string& title);

}  // namespace osm
