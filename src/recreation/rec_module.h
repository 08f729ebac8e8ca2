#pragma once
// Module Rec: rafting launches and campsites, trout angling, economic values.
#include <cstdint>

#include "core/table.h"

namespace osm {

struct Rec {
    Table2<float> BeachCap{"BeachCap"};          // (k 1..3, r): campsites the beaches offer
    Table3<float> ReachCampUse{"ReachCampUse"};  // (k 1..3, r, month 0..12): campsite-nights
    Table1<float> CatchRch{"CatchRch"};          // r: catch of the year
    Table1<float> CPERch{"CPERch"};              // r: catch per effort
    Table1<float> EffortRch{"EffortRch"};        // r: angler days
    int32_t AnglerValue = 0;                     // $ of the year
};

}  // namespace osm
