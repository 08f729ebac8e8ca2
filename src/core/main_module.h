#pragma once
// Module Main: the calendar, run control, constants, months table, file paths,
// reach tables and the results store.
#include <array>
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

struct Main {
    // Mode, chosen once at start-up.
    bool PhysOnly = false;

    // Calendar. Years are two-digit counts from 1900 (48 is 1948, 147 is 2047).
    int16_t StartYr = 48;
    int16_t NYears = 50;
    int16_t CurYr = 48;
    int16_t SimYr = 48;
    int16_t MonthIdx = 0;
    int16_t CumMonth = 0;
    int16_t RunYear0 = 0;
    int16_t iYear = 0;
    int16_t iMonth = 0;
    Table1<bool> TimeFlags{"TimeFlags"};  // 1 weekly, 2 monthly, 3 yearly

    // Run control.
    bool Overlay = false;
    int16_t NRuns = 0;
    bool AnnPause = false;
    bool Paused = false;
    bool StopRun = false;
    int16_t IndexReach = 0;
    Table1<float> IndexQ{"IndexQ"};       // 1..4, cfs
    int16_t ProfileMonth = 0;

    // Constants.
    int16_t NPhysVars = 13;
    float MileDaySec = 5280.0f / 86400.0f;
    int16_t NSlices = 50;
    int16_t SliceThick = 2;
    float SlicePctBase = 100.0f;

    // Months table, index 1..12 (0 unused).
    Table1<std::string> MonthName{"MonthName"};
    Table1<float> DaysInMonth{"DaysInMonth"};
    Table1<int16_t> FirstSunday{"FirstSunday"};
    Table1<int16_t> SunriseHr{"SunriseHr"};
    Table1<int16_t> SunsetHr{"SunsetHr"};

    // The program folder and the files in force.
    std::string ProgramFolder;
    std::string ReachFile, GrsFile, PhyFile, BhpFile, FisFile, RecFile, TrbFile, ExpFile,
        StsFile, OutFile;
    std::string DiurnalFile, StartMessageFile, GraphLegFile, ModelMdeFile, ReachLabelsFile,
        CampLabelsFile, RiverMifFile, LakesMifFile, TribsMifFile;
    std::string RiverwareXls, PhysicalXls, LowerProductionXls, PopulationXls;

    // Reach tables.
    int16_t NReaches = 0;
    int16_t FirstReach = 0;
    int16_t LastReach = 0;
    Table1<std::string> ReachLabel{"ReachLabel"};
    Table2<float> ReachMile{"ReachMile"};  // (r, 0 upstream | 1 downstream), miles below the dam
    Table1<float> ReachLen{"ReachLen"};

    // Results store: (run 0..1, var 1..NVars, sub 1..MaxSub, reach, month).
    Table<float, 5> Results{"Results"};
    // Beside the store, in its shape: True where an observed set had no
    // observation in its input that month. The store itself holds 0 there.
    Table<bool, 5> ObsMissing{"ObsMissing"};
    // The scenario each run of the store came from (flow scenario and release
    // sequence files), by run 0..1.
    std::array<std::string, 2> RunScenario;
    int16_t ObsMonth = 0;
    int16_t ObsYr = 0;
};

// The gauge site Harl Ferry stands this many miles below the dam; field data
// count river miles from it.
inline constexpr double HarlFerryMile = 15.62;

}  // namespace osm
