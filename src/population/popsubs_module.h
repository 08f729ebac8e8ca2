#pragma once
// Module Popsubs: species, population dynamics, recruitment and trophic links.
#include <cstdint>

#include "core/table.h"

namespace osm {

struct Popsubs {
    int16_t NSpecies = 0;
    Table1<float> Biomass{"Biomass"};              // 0..20, kg
    Table2<float> Share{"Share"};                  // (r, 0..20)
    Table3<float> CatchIndex{"CatchIndex"};        // (0..20, r, year 47..98)
    Table2<float> CatchObs{"CatchObs"};            // (r, year 47..98)
    Table2<float> AnglerDaysObs{"AnglerDaysObs"};  // (r, year 47..98)
    Table1<int16_t> CatchDataFlag{"CatchDataFlag"};  // 0..20
    // Trophic links as the production steps read them, by species or food type
    // a 0..20 (food types at NSpecies + 1 aquatic insects, + 2 terrestrial
    // insects, + 3 algae): the share of mortality no predator causes, and the
    // predation index of the month and of the reference state, by reach.
    Table1<float> PredFree{"PredFree"};            // 0..20
    Table2<float> PredIdx{"PredIdx"};              // (a 0..20, r)
    Table2<float> PredIdx0{"PredIdx0"};            // (a 0..20, r)
};

}  // namespace osm
