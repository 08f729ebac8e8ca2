#pragma once
// Module Graphs: the graph table of stored variables, the graphics setup and the
// choices of the results dump.
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

enum TimeScale : int16_t { TimeWeekly = 1, TimeMonthly = 2, TimeYearly = 3 };

struct Graphs {
    // Graph table (graphleg.txt).
    int16_t NVars = 0;
    int16_t MaxSub = 0;
    Table2<std::string> VarLabel{"VarLabel"};  // (set 0..MaxSub, var 1..NVars); set 0 is the title
    Table1<int16_t> VarSets{"VarSets"};        // 1..NVars
    Table1<int16_t> VarTime{"VarTime"};        // 0..NVars
    Table1<int16_t> VarStyle{"VarStyle"};
    Table1<int16_t> VarSize{"VarSize"};
    Table1<int16_t> VarMapId{"VarMapId"};
    Table1<int32_t> CurveColour{"CurveColour"};  // 1..2*MaxSub

    // Graphics setup (.grs).
    Table1<int16_t> VisForms{"VisForms"};    // 1 graphs, 2 maps, 3 profiles, 4 cross-sections
    int16_t TimeWindow = 10;
    Table1<int16_t> GraphSlot{"GraphSlot"};  // 1..6
    Table1<int16_t> MapSlot{"MapSlot"};      // 1..6
    Table1<int16_t> ProfSlot{"ProfSlot"};    // 1..6
    Table2<float> YMax{"YMax"};              // (kind 1 graphs | 2 profiles, 1..6)
    Table2<float> YMin{"YMin"};
    bool ShowSandBox = false;
    bool PlotObsAvg = false;
    Table1<int16_t> CXProfile{"CXProfile"};  // 1..3 cross-section panels
    bool StartupFinished = false;

    // The chart last double-clicked: its number and "time_series" or "ds_profile".
    int16_t ClickedGraph = 0;
    std::string ClickedKind;

    // Results dump choices, kept while the program runs.
    Table1<bool> DumpVar{"DumpVar"};         // 0..rows-1 of the graph table
    Table1<bool> DumpReach{"DumpReach"};     // FirstReach..LastReach
};

}  // namespace osm
