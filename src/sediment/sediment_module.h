#pragma once
// Module Sediment: the sand budget and the storage potential.
#include "core/table.h"

namespace osm {

struct Sediment {
    Table3<float> SandStore{"SandStore"};    // (s 0..NSlices, run reach, z 1..3), g
    Table2<float> ReachConc{"ReachConc"};    // (r 1..NReaches, k 0..2), g/ft3
    Table3<float> BandSand{"BandSand"};      // (b 1..4, run reach, z 1..2), g
    Table1<float> SandBalance{"SandBalance"};  // run reach
    Table3<float> BandPot{"BandPot"};        // (b 1..4, run reach, z 1..2), g
    Table1<float> PoolPotRef{"PoolPotRef"};  // run reach, g
};

}  // namespace osm
