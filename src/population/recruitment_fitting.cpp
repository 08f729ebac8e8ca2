// Recruitment fitting at the end of year 1: the risk rate, the density
// coefficients by reach and the density scale of body growth, so that the first
// year returns the equilibrium recruits; and the dilution index of incidental
// predators on eggs and fry.
#include <cmath>

#include "core/model.h"
#include "core/numbers.h"
#include "population/population_checks.h"
#include "population/population_steps.h"

namespace osm {

void DilutionIndex(Model& m) {
    Popsubs& ps = m.popsubs;
    const int n = ps.NSpecies;
    for (int i = 1; i <= n; ++i) {
        // The last two species count as the incidental predators of the first.
        const double N = i == 1 ? static_cast<double>(ps.Biomass(n - 1)) + ps.Biomass(n) : 1.0;
        double idx = 1e-20;
        for (int mo = ps.Pwk1(i); mo <= ps.Pwk2(i); ++mo) {
            double w = ps.HabVal(1, ps.RchFry(i), mo);
            if (w == 0) w = 1;
            idx = Sng(idx + N / PopPow(m, i, ps.RchFry(i), w, ps.htype(i), "the dilution of egg/fry predators"));
        }
        ps.DilIdx(i) = Sng(idx);
    }
}

void FitRiskRate(Model& m, int i) {
    Popsubs& ps = m.popsubs;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    // Newton's method, every quantity held as a single.
    const float T = Sng(PopDiv(m, i, 0, ps.StageCum(2, i), ps.StageCum(1, i), "StageCum(1)"));
    float d = Sng(-PopLog(m, i, 0, T, "the target survival StageCum(2)/StageCum(1)"));
    bool converged = false;
    for (int it = 1; it <= 100; ++it) {
        float A = 0, D = 0;
        for (int r = first; r <= last; ++r) {
            const float e = Sng(std::exp(-static_cast<double>(d) * ps.Risk(r, i)));
            A = Sng(A + static_cast<double>(ps.ReachBio(r, i)) * e);
            D = Sng(D - static_cast<double>(ps.Risk(r, i)) * ps.ReachBio(r, i) * e);
        }
        A = Sng(PopDiv(m, i, 0, A, ps.B0(i), "B0"));
        D = Sng(PopDiv(m, i, 0, D, ps.B0(i), "B0"));
        const float dNew = Sng(PopDiv(m, i, 0, static_cast<double>(T) - A, D,
                                      "the slope of the survival in the risk rate (all risks 0)") + d);
        if (0.001f * T > std::fabs(dNew - d)) {
            converged = true;
            break;
        }
        d = dNew;
    }
    ps.RiskRate(i) = d;
    if (!converged)
        ShowMessage(m, "recruitment estimation", "recruitment estimation did not converge for species " + NumTextLead(i));
}

void FitRecruitment(Model& m, int i, double K3) {
    Popsubs& ps = m.popsubs;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    FitRiskRate(m, i);
    const double S1 = ps.StageCum(1, i), B0 = ps.B0(i), R0 = ps.R0(i);
    double sumC = 0, sumS = 0;
    for (int r = first; r <= last; ++r) {
        const double E = std::exp(-static_cast<double>(ps.RiskRate(i)) * ps.Risk(r, i));
        const double c = PopDiv(m, i, r, ps.HabBar(1, i), ps.HabSum(i, r, 1), "the habitat sum HabSum") *
                         PopDiv(m, i, r, E * S1 * B0 / R0 - 1, ps.Share(r, i) * B0 * S1 * (1 - E),
                                "the survival deficit 1 - E");
        if (c <= 0) {
            ps.CompC(r, i) = 1e20f;
            continue;
        }
        ps.CompC(r, i) = Sng(c);
        sumC += static_cast<double>(ps.CompC(r, i)) * ps.Share(r, i);
        sumS += ps.Share(r, i);
    }
    if (sumC == 0) {
        ShowMessage(m, "not sustainable", "species " + ps.SpName(i) + " not sustainable in any area; check parameters");
        sumC = 1e20;
        sumS = 1;
    }
    const double Cbar = sumC / sumS;
    for (int r = first; r <= last; ++r) {
        ps.CompRel(r, i) = Sng(Cbar / ps.CompC(r, i));
        for (int h = 1; h <= NHabVars; ++h)
            ps.HabReachMean(i, h, r) = Sng(PopDiv(m, i, r, ps.HabReachMean(i, h, r), ps.VulSum(i), "the sum of VulMonth"));
    }
    for (int h = 1; h <= NHabVars; ++h)
        ps.HabMean(i, h, 0) = Sng(PopDiv(m, i, 0, ps.HabMean(i, h, 0), ps.VulSum(i), "the sum of VulMonth"));
    if (ps.SetHabFlag(i))
        for (int r = first; r <= last; ++r) ps.CompC(r, i) = Sng(Cbar);
    double Bstart = B0;
    for (int a = 1; a <= ps.wk(i) - 1; ++a) Bstart += static_cast<double>(ps.NAge(a, i)) * ps.WAge(a, i);
    const double growth = PopDiv(m, i, 0, ps.AlphaMax(i), ps.Alpha0(i), "Alpha0") - 1;
    ps.CompB(i) = Sng(PopDiv(m, i, 0, PopDiv(m, i, 0, Bstart, growth, "AlphaMax/Alpha0 - 1"), K3, "the habitat sum K3"));
}

}  // namespace osm
