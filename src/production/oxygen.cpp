// Oxygen by reach: the entry value relaxes toward saturation over the reach.
#include <cmath>

#include "core/model.h"
#include "core/numbers.h"
#include "production/production_steps.h"

namespace osm {

void OxygenStep(Model& m, int month) {
    const Main& mn = m.main;
    const Physical& ph = m.physical;
    Production& pr = m.production;
    pr.DO(1) = pr.OutflowO2;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const double Q = ph.MeanFlow(r);
        const double Qt = m.morph.TribQ(mn.MonthIdx, r);
        CheckNonZero(m, Q, "oxygen", "mean flow", r);
        // The entry value mixes the temperatures of the reach above and of the
        // tributary; the oxygen of the reach above does not enter.
        const double C0 = ((Q - Qt) * ph.WaterTemp(r - 1) + static_cast<double>(ph.EqTemp(month)) * Qt) / Q;
        const double tc = static_cast<double>(ph.WaterTemp(r)) + pr.GRConstC;
        CheckNonZero(m, tc, "oxygen", "water temperature plus GRConstC", r);
        const double Cs = (static_cast<double>(pr.GRConstA) - pr.GRConstB) / tc;
        pr.DO(r) = Sng((C0 - Cs) * std::exp(-static_cast<double>(pr.OxyExchange) * ph.MeanWidth(r) *
                                            mn.ReachLen(r) / Q) +
                       Cs);
    }
}

}  // namespace osm
