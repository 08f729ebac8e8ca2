#pragma once
// The results store: every stored variable of every month, for the run and an
// overlaid run. Graphs, maps, profiles and the dump read only this.
namespace osm {

struct Main;
struct Model;

// Sizes the store from the graph table and the reach count; all zeros.
void AllocateResults(Model& m);
// Writes every variable of the current CumMonth for the run NRuns.
void StoreResults(Model& m, int iYear, int iMonth);
// A stored value as the views draw it: NaN, no point at all, where an observed
// set had no observation.
float ShownResult(const Main& mn, int run, int var, int sub, int r, int month);

}  // namespace osm
