#pragma once
// Oxygen, algae and light, detritus and benthos, riparian vegetation, and the
// production parameter file.
#include <string>

namespace osm {

struct Model;

void OxygenStep(Model& m, int month);
void AlgaeDetritusStep(Model& m, int month);
void BenthosStep(Model& m);
void ResetBenthos(Model& m);
// Annual production summary with the reach indicator populations.
void ProductionYear(Model& m, int iYear);
void VegYear(Model& m, int iYear);
// Monthly step of one eddy slice, called by the sand step: Depth is the water
// over the middle of the slice at the highest stage (negative when dry).
void VegSliceMonth(Model& m, int r, int s, float Depth, float p);
void ResetVeg(Model& m);
void ReadBhpFile(Model& m, const std::string& path);
// Observed chemistry and production of a workbook's sheets, years first..last.
void ReadProductionObs(Model& m, const std::string& workbook, int yrFirst, int yrLast);

}  // namespace osm
