#pragma once
// Water temperature by reach: the release, then mixing with tributaries and
// exchange with the equilibrium temperature on the way down.
#include <string>

namespace osm {

struct Model;

void RiverTemperature(Model& m, int month);
void LoadTempPatterns(Model& m, const std::string& sheet, const std::string& workbook);
void LoadObsTemp(Model& m, const std::string& sheet, const std::string& workbook);

}  // namespace osm
