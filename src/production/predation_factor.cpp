// The mortality multiplier of a food type from the trophic links, as the
// populations leave it: present against reference predators, over the share of
// mortality that predators cause.
#include "core/model.h"
#include "production/production_steps.h"

namespace osm {

double PredationFactor(const Model& m, int a, int r) {
    const Popsubs& ps = m.popsubs;
    const double ref = ps.PredIdx0(a, r);
    if (ref <= 0) return 1;
    const double free = ps.PredFree(a);
    return (1 - free) * ps.PredIdx(a, r) / ref + free;
}

}  // namespace osm
