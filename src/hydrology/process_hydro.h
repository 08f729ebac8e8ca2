#pragma once
// The scenario pipeline: turns the flow limits and volume levels in memory into
// a flow scenario (.sts) file by running the hydropower scheduler ospsw95b and
// the flow router USFlow for each volume level and month, through their files in
// the program folder's hydro folder.
#include <chrono>
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

struct Model;

// Progress of the pipeline: the current level's volume (with the mask
// "###,###,###"), the month name, and the (level, month) step of 72. Called
// before each step and after each program run, so a form can serve its events.
class HydroProgress {
public:
    virtual ~HydroProgress() = default;
    virtual void Show(const std::string& volume, const std::string& month, int step, int steps) = 0;
};

struct HydroSetup {
    std::string hydroFolder;  // where the files are written and the programs run
    std::string scheduler;    // path of ospsw95b
    std::string router;       // path of USFlow
    std::chrono::milliseconds timeLimit{60000};  // for each program run
    HydroProgress* progress = nullptr;
};

// The hydro folder of the program folder, and the two programs found there or,
// failing that, in `besideDir` (the folder of the running executable). A program
// found in neither place is a fault naming both.
HydroSetup DefaultHydroSetup(const Model& m, const std::string& besideDir);

// State of the pipeline (module Processor).
struct Processor {
    int16_t MaxCycles = 3;
    // The month's hourly release HourSeries(k, 0), k 1..744; after routing the
    // routed flow HourSeries(k, r), k 1..MaxCycles*24.
    Table2<float> HourSeries{"HourSeries"};
    bool FlatRelease = false;
};

// Reservoir elevation (ft above msl) of month 1..12.
double ReservoirElev(int month);

// Takes the flow limits, minimum flows and volume levels of a scenario file's
// header (a full .sts file or one that stops after the volume levels).
void ReadFlowParameters(Model& m, const std::string& path);

// Runs the whole pipeline and writes stsName (a file name) into the hydro folder
// and then into the program folder, titled `title`. On any failure the model's
// tables and the old file are left as they were.
void ProcessHydro(Model& m, const std::string& stsName, const std::string& title, const HydroSetup& setup);

// The steps of the pipeline, each on the files in `folder`.
void WriteRoutingControl(const Model& m, const std::string& tag, const std::string& folder);
// Writes peakshav.ctr and peakshav.par for level L and month; with the
// release-driven rule in force this overwrites MaxDailyChange(month).
void WritePeakshav(Model& m, int L, int month, const std::string& folder);
void ReadPeakshavOut(Model& m, Processor& pr, int L, int month, const std::string& path);
// inflowOn.dat (weekdays) and inflowOf.dat (Sundays) from the month's release.
void WriteInflowFiles(const Model& m, const Processor& pr, int month, const std::string& folder);
void ReadRouted(Model& m, Processor& pr, int month, const std::string& path);
// Adds the last cycle of the routed day type d (1 "ON", 2 "OF") to the tables.
void AddRoutedCycle(Model& m, const Processor& pr, int d, int L, int month);
// A flat month: every reach and hour takes the first hourly release.
void FillFlat(Model& m, const Processor& pr, int L, int month);

}  // namespace osm
