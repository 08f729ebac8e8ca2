#pragma once
// The monthly flow engine: release, spike periods, hourly flows and stages by
// reach; the scenario (.sts) and experimental release (.exp) files.
#include <string>

namespace osm {

struct Model;

void MonthlyFlows(Model& m, int iYear, int iMonth);
void ReadSts(Model& m, const std::string& path, bool headerOnly);
void LoadMonthlyVolumes(Model& m, const std::string& workbook, const std::string& sheet,
                        const std::string& field);
void LoadSpikeFlags(Model& m, const std::string& workbook, const std::string& sheet);
void LoadExp(Model& m, const std::string& path);
void SaveExp(const Model& m, const std::string& path);
void LoadMainSed(Model& m, const std::string& workbook, const std::string& sheet);

}  // namespace osm
