#pragma once
// The monthly flow engine: release, spike periods, hourly flows and stages by
// reach; the scenario (.sts) and experimental release (.exp) files.
#include <string>

namespace osm {

struct Model;
struct Physical;

void MonthlyFlows(Model& m, int iYear, int iMonth);

// Reads a scenario file; with headerOnly it stops before the volume levels. Reading
// noaction.sts also keeps its power values as the no-action ones.
void ReadSts(Model& m, const std::string& path, bool headerOnly);
// Writes the scenario in memory in the form ReadSts reads, records as whole numbers.
void WriteSts(const Model& m, const std::string& path);

void LoadMonthlyVolumes(Model& m, const std::string& workbook, const std::string& sheet,
                        const std::string& field);
void LoadSpikeFlags(Model& m, const std::string& workbook, const std::string& sheet);
// Reads an experimental release file; a diurnal code that names no scenario of
// the scenario list is a fault naming the line and the year.
void LoadExp(Model& m, const std::string& path);
// The codes of the scenario list, for messages: "1 (noaction), 2 (steady)".
std::string DiurnalCodesText(const Physical& p);
void SaveExp(const Model& m, const std::string& path);
// HistSedConc from the observed series; HistSedSeen marks the cells it set.
void LoadMainSed(Model& m, const std::string& workbook, const std::string& sheet);

// A point between two volume levels: the value of a level table at volume x is
// t(lower) + weight*(t(upper) - t(lower)), level 0 being the point (0, 0).
struct LevelPoint {
    int lower = 0;
    int upper = 1;
    double weight = 0.0;
};
LevelPoint LevelOf(const Physical& p, double x);

// The level lookup in its three uses, at month m.
double PowerAt(const Physical& p, const LevelPoint& lp, int month, bool noAction);
double QAvgAt(const Physical& p, const LevelPoint& lp, int month, int r);
double QDiAt(const Physical& p, const LevelPoint& lp, int d, int month, int r, int h);

}  // namespace osm
