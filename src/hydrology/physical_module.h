#pragma once
// Module Physical: the monthly flow engine, the stage tables and the river
// temperature.
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

struct Physical {
    // Release sequence, by month index 0..600 (541..565 for the spin-up volumes).
    Table1<float> MonthlyVol{"MonthlyVol"};
    Table1<float> SpinVol{"SpinVol"};
    Table1<float> AnnualVol{"AnnualVol"};  // 48..148
    Table1<bool> SpikeFlag{"SpikeFlag"};
    Table1<int16_t> DiurnalCode{"DiurnalCode"};  // 48..148: scenario of each year
    Table1<bool> ExpTempYr{"ExpTempYr"};         // 48..148: experimental temperature year

    // Seasonal pattern of monthly volumes (row 0 the release, then the tributaries).
    Table2<float> RelSeason{"RelSeason"};  // (0..NTrib, month 1..12)
    float MaxRelSeasonAdjust = 0;
    bool RelativeSeasonal = false;

    // Scenario list.
    Table1<std::string> DiurnalName{"DiurnalName"};  // 0..10
    int16_t NDiurnal = 0;
    int16_t CurDiurnal = 0;
    float SpikeQ = 45000.0f;
    int16_t SpikeDays = 2;
    int16_t SpikeStartDay = 10;
    float SpikeVol = 0.0f;
    // The record of monthly volumes in force: a sheet of riverware.xls and, for a
    // planning trace, its field ("" for "Historical$"), with the trace's spike
    // size (kcfs, 0 for a trace without spikes).
    std::string MonthlyVolSheet = "Historical$";
    std::string MonthlyVolField;
    int16_t TraceSpikeKcfs = 0;
    // The release policy file last loaded or saved; "" for none.
    std::string PolicyFile;
    // How each monthly series is made (1 the dam, 2.. the tributaries): 1 the
    // record, 2 one year's pattern repeated, 3 the record's year RepYr repeated.
    Table1<int16_t> SeqType{"SeqType"};  // 1..3
    Table1<int16_t> RepYr{"RepYr"};      // 1..3, two-digit years
    int16_t SpikeTrace = 1;
    float PowerAccum = 0.0f;
    float AnnualPowerValue = 0.0f;

    // Flow scenario (.sts): by level L 1..6, month m 1..12, reach, hour, day type
    // d (1 weekday, 2 Sunday).
    std::string StsTitle;
    float MaxFlowLimit = 0, DownRamp = 0, UpRamp = 0;
    bool ReleaseDrivenChange = false;
    Table1<int32_t> ChangeVol{"ChangeVol"};        // 1..3, acre-feet
    Table1<int32_t> ChangeLimit{"ChangeLimit"};    // 1..3, cfs
    Table1<float> MaxDailyChange{"MaxDailyChange"};  // 0..12, cfs
    Table2<float> MinFlowMH{"MinFlowMH"};          // (m 0..12, h 0..24), cfs
    Table1<float> VolLevel{"VolLevel"};            // 0..6, acre-feet, ascending
    Table2<float> PowerVal{"PowerVal"};            // (m 0..12, L 0..6)
    Table2<float> PowerValNoAction{"PowerValNoAction"};
    Table3<float> QAvgTable{"QAvgTable"};          // (m 0..12, L 0..6, r 0..NReaches)
    Table<float, 5> QDiTable{"QDiTable"};          // (d 0..2, m 0..12, L 0..6, r 0..NReaches, h 0..24)

    // Outputs of the month, by reach.
    Table1<float> MeanFlow{"MeanFlow"}, MaxFlow{"MaxFlow"}, MinFlow{"MinFlow"};
    Table1<float> MeanStage{"MeanStage"}, MaxStage{"MaxStage"}, MinStage{"MinStage"};
    Table1<float> MeanWidth{"MeanWidth"}, MaxStageWidth{"MaxStageWidth"},
        MinStageWidth{"MinStageWidth"};
    Table3<float> HourlyStage{"HourlyStage"};  // (h 0..24, r, d 0..2)
    Table2<float> SedConc{"SedConc"};          // (r, k 0..2), g/ft3
    Table1<float> ReachSedLoad{"ReachSedLoad"};
    Table2<float> HistSedConc{"HistSedConc"};  // (month index 0..600, r), mg/l
    Table2<bool> HistSedSeen{"HistSedSeen"};   // the cells of HistSedConc the sheet set

    // Stage tables: rating rows 1..13 by reach (row 1 is zero flow).
    int16_t NQRows = 13;
    Table2<float> QTable{"QTable"}, StageTable{"StageTable"}, WidthTable{"WidthTable"};
    Table2<float> SliceArea{"SliceArea"};      // (s 1..NSlices, r), ft2
    Table2<float> SliceWidth{"SliceWidth"};    // (s 0..NSlices, r), ft
    Table2<float> SliceQ{"SliceQ"};            // (s 0..NSlices, r), cfs at mid-slice
    Table1<float> WetArea{"WetArea"};
    Table2<float> IndexSlice{"IndexSlice"};    // (i 0..4, r)

    // River temperature.
    Table1<float> BaseTemp{"BaseTemp"};        // 0..12, normal release
    Table1<float> EqTemp{"EqTemp"};            // 0..12, equilibrium (and tributaries)
    Table1<float> ExpTemp{"ExpTemp"};          // 0..12, experimental release
    float HeatEx = 0;
    Table1<float> WaterTemp{"WaterTemp"};      // 0..NReaches; 1 is the release
    Table2<float> ObsTemp{"ObsTemp"};          // (month index 0..600, r)
    Table2<bool> ObsTempSeen{"ObsTempSeen"};   // the cells of ObsTemp that hold an observation
};

}  // namespace osm
