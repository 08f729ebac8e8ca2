#pragma once
// Module Sediment: the sand budget and the storage potential.
#include "core/table.h"

namespace osm {

struct Sediment {
    // Sediment of the dam's release (physical parameter file).
    float OSDSSConc = 0;        // mg/l in the dam era
    float PreOSDPropSand = 0;   // sand share of the record before the dam
    float PostOSDPropSand = 0;  // sand share of the dam's release
    bool HistOSDSSConc = false; // before 1963 the release is the river's own record

    Table3<float> SandStore{"SandStore"};    // (s 0..NSlices, run reach, z 1..3), g
    Table2<float> ReachConc{"ReachConc"};    // (r 1..NReaches, k 0..2), g/ft3
    Table3<float> BandSand{"BandSand"};      // (b 1..4, run reach, z 1..2), g
    Table1<float> SandBalance{"SandBalance"};  // run reach
    Table3<float> BandPot{"BandPot"};        // (b 1..4, run reach, z 1..2), g
    Table1<float> PoolPotRef{"PoolPotRef"};  // run reach, g
};

}  // namespace osm
