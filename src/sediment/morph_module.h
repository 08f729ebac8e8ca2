#pragma once
// Module morph: tributary flow and sediment, spates, substrate and deposits.
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

struct Morph {
    // The named sediment-bearing tributaries.
    int16_t NTrib = 0;
    Table1<std::string> TribName{"TribName"};  // by reach
    Table1<int16_t> TribReach{"TribReach"};    // 1..2
    // mg/l per g/ft3; set when the tributary sheet is read, 0 before.
    float MgLPerGFt3 = 0.0f;
    Table2<float> TribQ{"TribQ"};              // (month index 0..600, r), cfs entering in r
    Table2<float> TribFlow{"TribFlow"};        // (month index 0..600, r), cfs summed down the river
    Table3<float> TribSedConc{"TribSedConc"};  // (month index 0..600, r, k 0..2), g/ft3
};

}  // namespace osm
