#include "sediment/sand_budget.h"

#include "core/model.h"

namespace osm {

void SandStep(Model& m, int r, int /*month*/, float /*p*/, float /*Q*/, float /*StageHi*/,
              float /*QHi*/) {
    // Without storage a reach passes on the concentrations it receives.
    for (int k = 1; k <= 2; ++k) m.sediment.ReachConc(r, k) = m.sediment.ReachConc(r - 1, k);
}
void ResetSandStore(Model&) {}

}  // namespace osm
