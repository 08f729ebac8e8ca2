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
    // The sheet's values, kept while the pattern editor rescales the tables above.
    Table2<float> TribQBase{"TribQBase"};
    Table3<float> TribSedConcBase{"TribSedConcBase"};

    Table1<int16_t> SpateCount{"SpateCount"};  // month index 0..600, spates in the tributaries

    // Substrate by discharge level, averaged over a reach's transects, and by slice.
    int16_t MaxQLevels = 0;
    Table3<float> SubstrateTable{"SubstrateTable"};    // (t 0..5, level 0..MaxQLevels, r), proportion
    Table1<int32_t> SubstrateQ{"SubstrateQ"};          // level 0..MaxQLevels, cfs
    Table1<std::string> SubstrateName{"SubstrateName"};  // t 1..5
    Table3<float> SliceSubstrate{"SliceSubstrate"};    // (t 0..5, s 1..NSlices, r), proportion

    // The 1990 deposit inventory.
    Table1<int16_t> NBackwater{"NBackwater"};  // r
    Table1<int16_t> NCM{"NCM"};                // r, channel margin deposits
    Table2<int16_t> NEddy{"NEddy"};            // (r, size class 0..3), eddy deposits

    Table1<float> TribBasinArea{"TribBasinArea"};  // r, m2

    // Tributary habitat (.trb): habitat classes c 1..3, curve cells j 0..20.
    Table1<float> TribHabLen{"TribHabLen"};        // r, accessible length from the main stem, ft
    Table2<float> TribHabIndex{"TribHabIndex"};    // (c, r), multiplier of the class curve
    Table3<float> TribHabCurve{"TribHabCurve"};    // (c, r, j)
};

}  // namespace osm
