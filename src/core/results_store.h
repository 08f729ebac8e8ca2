#pragma once
// The results store: every stored variable of every month, for the run and an
// overlaid run. Graphs, maps, profiles and the dump read only this.
namespace osm {

struct Model;

// Sizes the store from the graph table and the reach count; all zeros.
void AllocateResults(Model& m);
// Writes every variable of the current CumMonth for the run NRuns.
void StoreResults(Model& m, int iYear, int iMonth);

}  // namespace osm
