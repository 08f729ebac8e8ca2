#pragma once
// A scenario of a comparison, by its file: a release policy (.pol), an
// experimental release file (.exp) or a flow scenario (.sts, which then serves
// every year of the run).
#include <string>

namespace osm {

struct Model;

// Applies the scenario file to the model. A path that does not exist as given
// is looked for in the program folder. A .sts file must lie in the program
// folder, where the flow engine reads it each year.
void ApplyScenario(Model& m, const std::string& path);

}  // namespace osm
