#pragma once
// Species file, population dynamics, trophic links and the observed catch data.
#include <string>

namespace osm {

struct Model;

void ResetPredIdx(Model& m);
void PopInit(Model& m, int flag);
void CopyPredIdx(Model& m);
void PopHabitat(Model& m, int iYear, int iMonth);
void PopEffects(Model& m, int iYear, int iMonth);
void PopRisk(Model& m, int iMonth);
void PopYear(Model& m, int iYear);
void ResetReachPops(Model& m);
void ReadPopFile(Model& m, const std::string& path);
void ReadCatchData(Model& m, const std::string& path, const std::string& sheet, int yrFirst,
                   int yrLast);
void ReadRainbowData(Model& m, const std::string& path, const std::string& sheet, int yrFirst,
                     int yrLast);

}  // namespace osm
