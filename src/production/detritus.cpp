// Labile and refractory detritus, carried down the river from the dam: each
// reach mixes in its tributary and relaxes toward the steady state of its own
// inputs (algae, riparian vegetation, spate-washed terrestrial material).
#include <cmath>

#include "core/model.h"
#include "core/numbers.h"
#include "production/production_steps.h"

namespace osm {

namespace {

// Feet to metres, as the authors rounded it; ft3 per m3.
constexpr double FtToM = 0.31;
constexpr double Ft3PerM3 = 35.315;

}  // namespace

void DetritusStep(Model& m, int month) {
    const Main& mn = m.main;
    const Physical& ph = m.physical;
    const Morph& mo = m.morph;
    Production& pr = m.production;
    const bool natural = m.sediment.HistOSDSSConc && mn.CurYr < 63;
    const double D = natural ? pr.NatDetritus : pr.LakeDetritus;
    pr.DetLabile(1) = Sng(D * pr.LabileAlgal);
    pr.DetRefract(1) = Sng(D - pr.DetLabile(1));
    const double tribL = static_cast<double>(pr.TribDetritus) * pr.LabileTerr;
    const double tribR = (1 - static_cast<double>(pr.LabileTerr)) * pr.TribDetritus;
    const double days = mn.DaysInMonth(month);
    const double V = days * 86400 / Ft3PerM3;
    const double mileFt = mn.MileDaySec;

    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const double Q = ph.MeanFlow(r), Qt = mo.TribQ(mn.MonthIdx, r);
        const double W = ph.MeanWidth(r), L = mn.ReachLen(r);
        CheckNonZero(m, Q, "detritus", "mean flow", r);
        const double A = W * L * 5280 * FtToM;
        CheckNonZero(m, A, "detritus", "wetted area (mean width times length)", r);
        const double Tm = mo.TribBasinArea(r) * static_cast<double>(mo.SpateCount(mn.MonthIdx)) / (days * A);
        const double TL = static_cast<double>(pr.TerrDetritus) * pr.LabileTerr * Tm;
        const double TR = (1 - static_cast<double>(pr.LabileTerr)) * pr.TerrDetritus * Tm;
        const double algae = pr.AlgaeBiomass(r), veg = pr.VegDetritus(r);

        const double K = static_cast<double>(pr.Benthos(1, r)) * pr.DetConsume + pr.DetSink;
        CheckNonZero(m, K, "detritus", "labile removal rate (benthos consumption plus sinking)", r);
        double C0 = (Qt * tribL + (Q - Qt) * pr.DetLabile(r - 1)) / Q;
        double Cs = (veg * pr.LabileTerr / A + static_cast<double>(pr.AlgaeDetritus) * pr.LabileAlgal * algae + TL) /
                    (K * FtToM);
        pr.DetLabile(r) = Sng(Cs + (C0 - Cs) * std::exp(-mileFt * K * W * L / Q));

        CheckNonZero(m, pr.RefractRate, "detritus", "RefractRate", r);
        C0 = (Qt * tribR + (Q - Qt) * pr.DetRefract(r - 1)) / Q;
        Cs = ((1 - static_cast<double>(pr.LabileTerr)) * veg / A +
              (1 - static_cast<double>(pr.LabileAlgal)) * pr.AlgaeDetritus * algae + TR) /
             (pr.RefractRate * FtToM);
        pr.DetRefract(r) = Sng((C0 - Cs) * std::exp(-mileFt * pr.RefractRate * W * L / Q) + Cs);

        // Sources of labile detritus over the month.
        pr.DetBudget(1, r) = Sng((Q - Qt) * pr.DetLabile(r - 1) * V);
        pr.DetBudget(2, r) = Sng(Qt * tribL * V);
        pr.DetBudget(3, r) = Sng(static_cast<double>(pr.AlgaeDetritus) * pr.LabileAlgal * algae * A);
        pr.DetBudget(4, r) = Sng(veg * pr.LabileTerr);
        pr.DetBudget(5, r) = Sng(TL * A);
        double sum = 0;
        for (int i = 1; i <= 5; ++i) sum += pr.DetBudget(i, r);
        pr.DetBudget(6, r) = Sng(sum);
    }
}

}  // namespace osm
