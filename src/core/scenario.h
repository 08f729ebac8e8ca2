#pragma once
// What a user needs to know of the results in view: the mode the program runs
// in and the release scenario a run comes from.
#include <string>

namespace osm {

struct Main;
struct Model;

// "Entire Model" or "Physical Model Only", as the start dialog offers them.
std::string ModeName(const Main& mn);
// The scenario in force: the flow scenario file, the release sequence file and
// the policy file when one was applied, by their names without folders
// ("noaction.sts, default.exp", "noaction.sts, default.exp, policy wet.pol").
std::string ScenarioName(const Model& m);
// How the key names run 0 or 1 of the store: by the scenario it was run on, or
// "no run yet".
std::string RunName(const Main& mn, int run);

}  // namespace osm
