#pragma once
// Module Popsubs: species, population dynamics, recruitment and trophic links,
// and the reach-scale indicator populations' state.
//
// Index rules: species i 1..NSpecies; the three food types follow at
// NSpecies + 1 (aquatic insects), + 2 (terrestrial insects), + 3 (Cladophora).
// Per-species tables run 0..20, ages 0..20, habitat variables h 1..6, effects
// k 1..3, months of the year 0..12 (0: the year as a whole).
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

inline constexpr int MaxSpecies = 17;     // three food types above them fill 0..20
inline constexpr int SpeciesRoom = 20;
inline constexpr int MaxAge = 20;
inline constexpr int NHabVars = 6;
inline constexpr int NHabEffects = 3;
inline constexpr int HabCells = 20;
inline constexpr int MaxLinks = 200;
inline constexpr int HarvestYears = 100;

struct Popsubs {
    int16_t NSpecies = 0;

    // --- The species record (the population file), by species 0..20.
    Table1<std::string> SpName{"SpName"};
    Table1<float> B0{"B0"};              // starting total biomass, kg
    Table1<float> alpha{"alpha"};        // body weight at maturity, kg
    Table1<float> alphamax{"alphamax"};  // the same at low density
    Table1<float> rho{"rho"};            // Ford-Walford slope
    Table1<int16_t> wk{"wk"};            // age at maturity: pre-adult classes
    Table1<float> sbase{"sbase"};        // adult annual survival
    Table1<float> sbasejuv{"sbasejuv"};  // survival from age 1 to maturity
    Table1<float> RcJuv{"RcJuv"};        // recruitment compensation ratio; 0: Sejuv as entered
    Table1<bool> SetHabFlag{"SetHabFlag"};
    Table1<float> fec{"fec"};            // eggs per kg of mature body weight
    Table1<float> sfry{"sfry"};          // egg to fry survival
    Table1<float> Sejuv{"Sejuv"};        // fry to age 1 survival
    Table1<int16_t> FecSpare1{"FecSpare1"}, FecSpare2{"FecSpare2"};  // kept and written back
    Table1<float> ppred{"ppred"};        // share of egg/fry mortality from incidental predators
    Table1<int16_t> RchFry{"RchFry"};    // reach of that predation
    Table1<int16_t> Pwk1{"Pwk1"}, Pwk2{"Pwk2"};  // its months
    Table1<float> htype{"htype"};        // dilution exponent
    Table1<float> fert{"fert"};          // hatchery age-1 fish a year
    Table1<int16_t> fertyr1{"fertyr1"};  // first and last run years of stocking
    Table1<float> fertyr2{"fertyr2"};
    Table1<float> biomass{"biomass"};    // despite its name: share staying in the natal reach
    Table1<int16_t> breedtime{"breedtime"};  // calendar month of age 1
    Table2<float> VulMonth{"VulMonth"};      // (i, month of life 0..12)
    Table1<int16_t> MinAgeTaken{"MinAgeTaken"};
    Table2<float> HarvestRate{"HarvestRate"};  // (i, run year 0..100)

    // Habitat links (i, h 0..6, k 0..3) and their curves (i, h, k, cell 0..20).
    Table1<std::string> HabVarName{"HabVarName"};        // 0..6
    Table1<std::string> HabEffectName{"HabEffectName"};  // 0..3
    Table3<int16_t> HabLinked{"HabLinked"};
    Table3<int16_t> setwhen{"setwhen"}, dur{"dur"}, setwhere{"setwhere"};
    Table3<float> HabScale{"HabScale"};
    Table<float, 4> HabCurve{"HabCurve"};

    // Trophic links 1..NLinks (room 0..200).
    int16_t NLinks = 0;
    Table1<int16_t> LinkPred{"LinkPred"}, LinkPrey{"LinkPrey"};
    Table1<float> LinkDiet{"LinkDiet"}, LinkMort{"LinkMort"};

    // Observed data of population.xls.
    Table3<float> CatchIndex{"CatchIndex"};        // (0..20, r, year 47..98); 47: the mean
    Table2<float> CatchObs{"CatchObs"};            // (r, year 47..98)
    Table2<float> AnglerDaysObs{"AnglerDaysObs"};  // (r, year 47..98)
    Table1<int16_t> CatchDataFlag{"CatchDataFlag"};  // 0..20

    // --- Population state, by species or food type a 0..20.
    Table1<float> Biomass{"Biomass"};    // kg of adults; a food type's sum over reaches
    Table1<float> NAdults{"NAdults"};
    Table2<float> NAge{"NAge"};          // (a 0..20, i)
    Table2<float> WAge{"WAge"};          // (a 0..20, i), kg
    Table1<float> Recruits{"Recruits"};
    Table2<float> Share{"Share"};        // (r, a)
    Table2<float> ReachBio{"ReachBio"};  // (r, a)
    Table1<float> Alpha0{"Alpha0"}, AlphaMax{"AlphaMax"}, R0{"R0"};
    Table2<float> StageSurv{"StageSurv"}, StageCum{"StageCum"};  // (s 0..3, i)
    Table1<float> CompK{"CompK"}, Mpred{"Mpred"}, Mother{"Mother"};
    Table2<float> InvSurv{"InvSurv"};    // (i, month of life 0..12)
    Table1<float> SAdult{"SAdult"}, VulSum{"VulSum"}, BaseJuv{"BaseJuv"};

    // Habitat of the month by variable h 1..6, reach and month 0..12, with the two
    // area terms of variable 6.
    Table3<float> HabVal{"HabVal"};
    Table2<float> TribArea{"TribArea"}, BackArea{"BackArea"};  // (r, month)
    Table3<float> HabMean{"HabMean"};          // (i, h, month 0..12); 0: the year
    Table3<float> HabReachMean{"HabReachMean"};  // (i, h, r)
    Table<float, 4> HabEffect{"HabEffect"};    // (i, r, k, month)
    Table3<float> HabSum{"HabSum"};            // (i, r, k)
    Table2<float> HabBar{"HabBar"};            // (k, i)
    Table2<float> RiskAcc{"RiskAcc"};          // (i, r)
    Table2<float> Risk{"Risk"}, Risk0{"Risk0"};  // (r, i)

    // Fitted in year 1.
    Table1<float> RiskRate{"RiskRate"}, CompB{"CompB"}, DilIdx{"DilIdx"}, DilIdx0{"DilIdx0"};
    Table2<float> CompC{"CompC"}, CompRel{"CompRel"};  // (r, i)

    // Trophic indices. PredFree, PredIdx and PredIdx0 of the food types are what
    // the production steps read as the predation on them.
    Table1<float> PredFree{"PredFree"}, DietFree{"DietFree"};  // 0..20
    Table2<float> Overlap{"Overlap"};                          // (a, b)
    Table2<float> PredIdx{"PredIdx"}, PredIdx0{"PredIdx0"};    // (a 0..20, r)
    Table1<float> PredNow{"PredNow"}, FoodNow{"FoodNow"};      // 0..20, of the reach at hand

    // Reach-scale indicator populations: the number of population i in reach r.
    Table2<float> PopN{"PopN"};  // (i 0..30, r)
};

// Sizes the tables keyed by species and age only (called once, with the model).
void AllocateSpeciesTables(Popsubs& ps);
// Sizes the population tables keyed by reach (called whenever reaches are read).
void AllocatePopReachTables(Popsubs& ps, int nReaches);

}  // namespace osm
