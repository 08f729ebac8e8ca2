#include "sediment/sand_budget.h"

#include "core/model.h"

namespace osm {

void SandStep(Model&, int /*r*/, int /*month*/, float /*p*/, float /*Q*/, float /*StageHi*/,
              float /*QHi*/) {}
void ResetSandStore(Model&) {}

}  // namespace osm
