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
};

}  // namespace osm
