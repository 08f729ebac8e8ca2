#pragma once
// Module Production: oxygen, algae, detritus, benthos and riparian vegetation.
#include "core/table.h"

namespace osm {

struct Production {
    Table1<float> DO{"DO"};
    Table1<float> SecchiDepth{"SecchiDepth"};
    Table1<float> AlgaeBiomass{"AlgaeBiomass"};
    Table1<float> AlgaeTotal{"AlgaeTotal"};
    Table2<float> AlgaeClass{"AlgaeClass"};        // (class 1..6, r); 6 is the total
    Table2<float> DetritusIn{"DetritusIn"};        // (1..2, r)
    Table1<float> Detritus{"Detritus"};
    Table1<float> Inverts{"Inverts"};
    Table1<float> RiparianLitter{"RiparianLitter"};
    Table2<float> VegArea{"VegArea"};              // (vegetation type, r), ft2
    Table3<float> ObsChem{"ObsChem"};              // (month index 0..600, r, field 0..6)
};

}  // namespace osm
