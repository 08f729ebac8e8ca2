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

    // Scenario list.
    Table1<std::string> DiurnalName{"DiurnalName"};  // 0..10
    int16_t NDiurnal = 0;
    int16_t CurDiurnal = 0;
    float SpikeQ = 45000.0f;
    int16_t SpikeDays = 2;
    int16_t SpikeStartDay = 10;
    float SpikeVol = 0.0f;
    std::string MonthlyVolSheet = "Historical$";
    int16_t SpikeTrace = 1;
    float PowerAccum = 0.0f;
    float AnnualPowerValue = 0.0f;

    // Outputs of the month, by reach.
    Table1<float> MeanFlow{"MeanFlow"}, MaxFlow{"MaxFlow"}, MinFlow{"MinFlow"};
    Table1<float> MeanStage{"MeanStage"}, MaxStage{"MaxStage"}, MinStage{"MinStage"};
    Table1<float> MeanWidth{"MeanWidth"}, MaxStageWidth{"MaxStageWidth"},
        MinStageWidth{"MinStageWidth"};
    Table3<float> HourlyStage{"HourlyStage"};  // (h 0..24, r, d 0..2)
    Table2<float> SedConc{"SedConc"};          // (r, k 0..2), g/ft3
    Table1<float> ReachSedLoad{"ReachSedLoad"};
    Table2<float> HistSedConc{"HistSedConc"};  // (month index 0..600, r), mg/l

    // Stage tables.
    Table2<float> IndexSlice{"IndexSlice"};    // (i 0..4, r)

    // River temperature.
    Table1<float> WaterTemp{"WaterTemp"};      // 0..NReaches; 1 is the release
    Table2<float> ObsTemp{"ObsTemp"};          // (month index 0..600, r)
};

}  // namespace osm
