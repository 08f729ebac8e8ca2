#pragma once
// Module Production: oxygen, light and algae, detritus and benthos, riparian
// vegetation, and the parameters of the production file (.bhp), which also
// carries the reach-scale indicator populations' parameters.
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

// Room of the vegetation tables (types 1..6), of a mortality curve, and of the
// indicator population tables.
inline constexpr int MaxVegTypes = 6;
inline constexpr int MaxMortPoints = 100;
inline constexpr int MaxIndicatorPops = 30;
inline constexpr int MaxIndicatorFoods = 3;

struct Production {
    // --- Oxygen, light and algae: parameters.
    float OxyExchange = 0;      // re-aeration coefficient
    float GRConstA = 0, GRConstB = 0, GRConstC = 0;  // oxygen saturation constants
    float OutflowO2 = 0;        // oxygen of the dam release, mg/l
    float FineWgt = 0;          // weight of fines against sand in turbidity; < 0: plain sum
    float BaseLightExt = 0;     // per ft, clear water
    float LightExtTurb = 0;     // per ft and mg/l
    float AlgaeMax = 0;         // g/ft2
    float MinProdWinter = 0;    // kept in the file and shown; no step uses it
    float PhotoEffic = 0;       // maintenance against light

    // --- Detritus and benthos: parameters.
    float LabileAlgal = 0, LabileTerr = 0;
    float TribDetritus = 0, TerrDetritus = 0, LakeDetritus = 0, NatDetritus = 0;
    float AlgaeDetritus = 0, DetSink = 0, DetConsume = 0, RefractRate = 0;
    float OstrelDetritus = 0, BaseBenthos = 0, BenthosGrowthEff = 0, BaseMort = 0;
    float MortQ10 = 0, Colonize = 0, MaxRToMort = 0, AlgaeAvail = 0, DryPower = 0;
    float ScourSand = 0, ScourKeep = 0;
    float DriftRate = 0, DriftSink = 0, LakeDrift = 0, NatDrift = 0;

    // --- Riparian vegetation: parameters, by type v 1..NVegTypes.
    int16_t NVegTypes = 0;
    int16_t NMortPoints = 0;
    float VegMinCover = 0;
    Table1<std::string> VegName{"VegName"};   // v 0..6
    Table2<bool> VegClimax{"VegClimax"};      // (substrate t 0..5, v 0..6)
    Table1<float> VegGrowth{"VegGrowth"}, VegDkill{"VegDkill"}, VegBug{"VegBug"}, VegDet{"VegDet"};
    Table1<int16_t> VegWmin{"VegWmin"}, VegWmax{"VegWmax"};  // ft of water table depth
    Table2<float> VegComp{"VegComp"};         // (j 0..6, v 0..6): effect of type j on type v
    Table2<float> VegMort{"VegMort"};         // (dose i 0..NMortPoints, v 0..6); row 0 is 0

    // --- Reach-scale indicator populations: parameters (the file's last block).
    int16_t NPop = 0;
    int16_t NFood = 0;
    Table1<std::string> FoodName{"FoodName"};  // j 0..3
    Table1<std::string> PopName{"PopName"};    // i 0..30
    Table1<float> PopR{"PopR"}, PopS{"PopS"}, PopV{"PopV"}, PopA1{"PopA1"}, PopA2{"PopA2"},
        PopE{"PopE"};                          // i 0..30
    Table2<float> PopF{"PopF"};                // (j 0..3, i 0..30)

    // --- State by reach r (row 1 is the water leaving the dam where it matters).
    Table1<float> DO{"DO"};                    // mg/l at the reach's end
    Table1<float> SecchiDepth{"SecchiDepth"};  // ft
    Table1<float> AlgaeBiomass{"AlgaeBiomass"};  // g/ft2 over the wetted hard substrate
    Table1<float> AlgaeTotal{"AlgaeTotal"};    // the width-weighted sum before the mean
    Table2<float> AlgaeSlice{"AlgaeSlice"};    // (s 0..NSlices, r), g/ft2
    Table1<float> NoonStage{"NoonStage"};      // ft, hour 12 of the weekday
    Table2<float> AlgaeClass{"AlgaeClass"};    // (class 1..6, r); no step fills it
    Table1<float> DetLabile{"DetLabile"}, DetRefract{"DetRefract"};  // g/m3
    Table2<float> DetBudget{"DetBudget"};      // (source 1..6, r), g a month
    Table2<float> Benthos{"Benthos"};          // (c 1 detritus, 2 algae feeders, r), g/m2
    Table1<float> BenthosTotal{"BenthosTotal"};  // g/m2
    Table1<float> BenthosEq{"BenthosEq"};      // g/m2, reference level
    Table1<float> Drift{"Drift"};
    Table1<float> MinWidthPrev{"MinWidthPrev"};  // ft, MinStageWidth of the month before
    float FeedHalfSat = 0;

    // Vegetation on the eddy slices: (v 0..6, s 0..NSlices, r) and (s, r).
    Table3<float> VegCover{"VegCover"};
    Table3<float> VegDepthDose{"VegDepthDose"};
    Table2<int16_t> SliceDryScore{"SliceDryScore"};
    Table2<float> SliceWaterDepth{"SliceWaterDepth"};  // ft below the slice, >= 0 when dry
    Table2<float> VegArea{"VegArea"};          // (v 0..6, r), ft2 above the cover floor
    Table1<float> VegBugProd{"VegBugProd"};    // terrestrial insects per suitable area
    Table1<float> VegDetritus{"VegDetritus"};  // detritus per suitable area

    // Observed production: (month index 0..600, r, field 1..6): 1 DO, 2 SECCHI,
    // 3 ALGAE, 4 TOTMASM, 5 DETRITUS, 6 DETRITUS+INVERTS+ALGAE of the drift.
    // Row 0 holds the mean of the months observed in the calibration years.
    Table3<float> ObsProd{"ObsProd"};
};

}  // namespace osm
