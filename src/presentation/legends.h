#pragma once
// The colour legends of the maps (model.mde): one legend for each variable of
// the graph table and each of its data sets.
#include <string>

#include "presentation/vectormap_module.h"

namespace osm {

struct Model;

// Reads a legend file, or throws a FileFault naming file, line and what was expected.
Legend ReadLegends(const std::string& path);
// Reads a legend file into the model; a bad file leaves the legends in force.
void LoadLegends(Model& m, const std::string& path);
// Writes the legends in their order; a failed save leaves the old file.
void SaveLegends(const Legend& legend, const std::string& path);

// The name a legend of variable `var`, data set `set` has: the title, followed
// by the set's label when the variable has more than one set.
std::string LegendName(const Model& m, int var, int set);
// Makes the legends agree with the graph table, rewriting model.mde when they don't.
void CheckLegends(Model& m);
// The variable of legend number n (1-based); 0 if the graph table has none.
int VarOfLegend(const Model& m, int n);

}  // namespace osm

namespace osm {

// The least and greatest result of variable `var`, data set `set` over every
// reach and the months of its time scale up to the month in hand, in run 0.
// The starts are kept where no result passes them.
void GetMinMax(const Model& m, int var, int set, float& min, float& max);

}  // namespace osm
