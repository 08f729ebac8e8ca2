#pragma once
// Stage, width and discharge tables by reach, averaged from the hydraulic sheet
// and cached beside the Reach Breaks file.
#include <string>

#include "core/table.h"

namespace osm {

struct Model;

// The twelve discharges of the hydraulic sheet, cfs; rating rows 2..13.
inline constexpr int NSheetQ = 12;
inline constexpr int NRatingRows = 13;
double SheetDischarge(int i);  // i 1..12

// The sheet averaged by discharge row (1..12) and reach. Row 0 and reach 0 take
// the records that match no discharge or no reach before any that did; they are
// never written.
struct StageAverages {
    Table2<float> Stage{"AvgStage"}, Velocity{"AvgVelocity"}, Width{"AvgWidth"};
    Table2<int> Count{"AvgCount"};
};

// Reads "DISCHARGE", "STAGE", "VELOCITY", "WIDTH" and "MILE" of the sheet and
// averages them by discharge and reach. The ratings of the run's reaches must
// rise; a flat or falling stage is a fault naming the reach and the row.
StageAverages BuildStageTables(const Model& m, const std::string& workbook,
                               const std::string& sheet);
// The cached files: Stem(reachFile) + "hab" (slice areas of the run's reaches)
// and Stem(reachFile) + "qsvw" (the 13 rating rows of each run reach).
void WriteHabFile(const Model& m, const std::string& reachFile, const StageAverages& avg);
void WriteQsvwFile(Model& m, const std::string& reachFile, const StageAverages& avg);
std::string HabFileName(const std::string& reachFile);
std::string QsvwFileName(const std::string& reachFile);

// Builds the cached files from "StarsOut$" of physical.xls when the qsvw file is
// missing. An empty name does nothing. When the build fails, shows the message
// "Failed to make file " and returns the cause; else returns "".
std::string EnsureStageTables(Model& m, const std::string& reachFile);
// Builds both cached files whether or not they exist and reads them back. Faults
// go to the caller.
void RebuildStageTables(Model& m, const std::string& reachFile);
// Read the cached files into QTable, StageTable, WidthTable and into SliceArea,
// SliceQ, SliceWidth, WetArea. The qsvw file goes first: the slice discharges come
// from its rating. A bad file is a FileFault and changes nothing.
void ReadQsvwFile(Model& m, const std::string& reachFile);
void ReadHabFile(Model& m, const std::string& reachFile);

// Rating lookups over rows 1..13 of reach r, linear between rows and extended
// from the end segments beyond them (no clamp).
double StageOfQ(const Model& m, int r, double q);
double WidthOfStage(const Model& m, int r, double stage);
double QOfStage(const Model& m, int r, double stage);

// IndexSlice(1..4, r) of the run's reaches from the index flows, then the storage
// tables.
void SetIndexSlices(Model& m);

}  // namespace osm
