#include "population/population_steps.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/model.h"
#include "core/numbers.h"
#include "population/population_checks.h"

namespace osm {

namespace {

// The food abundance of food type f (1 aquatic insects, 2 terrestrial insects,
// 3 Cladophora) in reach r, from the production steps.
float foodAbundance(const Model& m, int f, int r) {
    const Production& pr = m.production;
    switch (f) {
    case 1: return pr.BenthosTotal(r) + pr.Drift(r);
    case 2: return pr.VegBugProd(r);
    default: return pr.AlgaeBiomass(r);
    }
}

// A flow's curve cell, at most 20.
int flowCell(const Model& m, int r, double x, const char* what) {
    if (!std::isfinite(x)) PopFault(m, 0, r, std::string(what) + " is not a number");
    return static_cast<int>(std::min(x, 20.0));
}

// Warm tributary and backwater area of reach r this month: the tributary mouth
// against tributary flow, its pond and the backwaters against main-stem flow.
void tributaryHabitat(Model& m, int r, int iMonth) {
    const Morph& mo = m.morph;
    Popsubs& ps = m.popsubs;
    const double c = static_cast<float>(20.0 / 3.0);
    const double q1 = CInt(mo.TribQ(m.main.MonthIdx, r) * c / 100);
    const double q2 = CInt(m.physical.MeanFlow(r) * c / 10000);
    const int j1 = flowCell(m, r, q1, "the tributary flow cell");
    const int j2 = flowCell(m, r, q2, "the main-stem flow cell");
    ps.TribArea(r, iMonth) = Sng(static_cast<double>(mo.TribHabIndex(1, r)) * mo.TribHabLen(r) * mo.TribHabCurve(1, r, j1) +
                                 static_cast<double>(mo.TribHabIndex(2, r)) * mo.TribHabCurve(2, r, j2));
    ps.BackArea(r, iMonth) = Sng(static_cast<double>(mo.TribHabIndex(3, r)) * mo.TribHabCurve(3, r, j2) * mo.NBackwater(r));
}

}  // namespace

int MonthOfLife(const Model& m, int i, int iMonth) {
    int lm = iMonth - m.popsubs.breedtime(i) + 1;
    if (lm < 1) lm += 12;
    return lm;
}

void FoodTotals(Model& m, bool intoBiomass) {
    Popsubs& ps = m.popsubs;
    for (int f = 1; f <= 3; ++f) {
        const int a = ps.NSpecies + f;
        float total = 1e-20f;
        for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) {
            ps.ReachBio(r, a) = foodAbundance(m, f, r);
            total += ps.ReachBio(r, a);
        }
        (intoBiomass ? ps.Biomass(a) : ps.B0(a)) = total;
        for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r)
            ps.Share(r, a) = Sng(PopDiv(m, a, r, ps.ReachBio(r, a), total, "the food total"));
    }
}

void ResetPredIdx(Model& m) {
    Popsubs& ps = m.popsubs;
    for (int a = ps.NSpecies + 1; a <= ps.NSpecies + 3; ++a)
        for (int r = ps.PredIdx.lo(1); r <= ps.PredIdx.hi(1); ++r) {
            ps.PredIdx(a, r) = 1;
            ps.PredIdx0(a, r) = 1;
        }
}

void CopyPredIdx(Model& m) {
    Popsubs& ps = m.popsubs;
    for (int a = ps.NSpecies + 1; a <= ps.NSpecies + 3; ++a)
        for (int r = ps.PredIdx.lo(1); r <= ps.PredIdx.hi(1); ++r) ps.PredIdx0(a, r) = ps.PredIdx(a, r);
}

namespace {

void initSpecies(Model& m, int i) {
    Popsubs& ps = m.popsubs;
    const int wk = ps.wk(i);
    const double rho = ps.rho(i), sbase = ps.sbase(i), b0 = ps.B0(i);
    const double p = std::pow(rho, wk);
    ps.Alpha0(i) = Sng(PopDiv(m, i, 0, (1 - rho) * ps.alpha(i), 1 - p, "1 - rho^wk"));
    ps.AlphaMax(i) = Sng(PopDiv(m, i, 0, (1 - rho) * ps.alphamax(i), 1 - p, "1 - rho^wk"));
    if (ps.AlphaMax(i) <= ps.Alpha0(i)) ps.AlphaMax(i) = Sng(ps.Alpha0(i) * 1.1);
    if (ps.MinAgeTaken(i) == 0) ps.MinAgeTaken(i) = 2;
    ps.WAge(0, i) = 0;
    for (int a = 1; a <= wk; ++a) ps.WAge(a, i) = Sng(ps.WAge(a - 1, i) * rho + ps.Alpha0(i));
    ps.Biomass(i) = ps.B0(i);
    const double s = Sng(std::pow(static_cast<double>(ps.sbasejuv(i)), wk - 1));
    const double radult = (1 - rho * sbase) * b0 /
                          (PopDiv(m, i, 0, ps.Alpha0(i) * sbase, 1 - sbase, "1 - sbase") + ps.WAge(wk, i));
    ps.R0(i) = Sng(PopDiv(m, i, 0, radult, s, "the juvenile survival to maturity"));
    ps.NAdults(i) = Sng(s * ps.R0(i) / (1 - sbase));
    ps.Recruits(i) = Sng(s * ps.R0(i));
    ps.StageSurv(1, i) = Sng(static_cast<double>(ps.fec(i)) * ps.sfry(i));
    ps.StageCum(1, i) = ps.StageSurv(1, i);
    if (ps.RcJuv(i) > 0)
        ps.Sejuv(i) = Sng(PopDiv(m, i, 0, PopDiv(m, i, 0, static_cast<double>(ps.R0(i)) * ps.RcJuv(i), b0, "B0"),
                                 ps.StageCum(1, i), "fec * sfry"));
    ps.StageSurv(2, i) = ps.Sejuv(i);
    ps.StageCum(2, i) = Sng(static_cast<double>(ps.StageCum(1, i)) * ps.StageSurv(2, i));
    ps.StageCum(3, i) = Sng(static_cast<double>(ps.StageCum(2, i)) * ps.StageSurv(3, i));
    float vulSum = 0;
    for (int mo = 1; mo <= 12; ++mo) vulSum += ps.VulMonth(i, mo);
    ps.VulSum(i) = vulSum;
    ps.InvSurv(i, 1) = 1;
    const double L = PopLog(m, i, 0, ps.Sejuv(i), "Sejuv");
    for (int mo = 2; mo <= 12; ++mo)
        ps.InvSurv(i, mo) = Sng(ps.InvSurv(i, mo - 1) *
                                std::exp(-L * PopDiv(m, i, 0, ps.VulMonth(i, mo - 1), vulSum, "the sum of VulMonth")));
    ps.CompK(i) = Sng(PopDiv(m, i, 0, static_cast<double>(ps.StageCum(2, i)) * ps.Biomass(i), ps.R0(i), "R0"));
    const double F = -PopLog(m, i, 0, ps.sfry(i), "sfry");
    ps.Mpred(i) = Sng(ps.ppred(i) * F);
    ps.Mother(i) = Sng(std::max(0.0, F - ps.Mpred(i)));
    for (int a = 1; a <= wk; ++a)
        ps.NAge(a, i) = Sng(std::pow(static_cast<double>(ps.sbasejuv(i)), a - 1) * ps.R0(i));
    if (ps.Alpha0(i) * 1.00000001 >= ps.AlphaMax(i)) ps.AlphaMax(i) = Sng(ps.Alpha0(i) * 1.00000001);
    ps.BaseJuv(i) = ps.NAge(1, i);
}

}  // namespace

void PopInit(Model& m, int flag) {
    Popsubs& ps = m.popsubs;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    for (int i = 1; i <= ps.NSpecies; ++i) {
        ps.B0(i) = 0;
        for (int r = first; r <= last; ++r) {
            ps.ReachBio(r, i) = std::max(ps.CatchIndex(i, r, 47), 1e-10f);
            ps.B0(i) += ps.ReachBio(r, i);
        }
        for (int r = first; r <= last; ++r) ps.Share(r, i) = ps.ReachBio(r, i) / ps.B0(i);
    }
    FoodTotals(m, false);
    BuildLinks(m, flag);
    for (int i = 1; i <= ps.NSpecies; ++i) initSpecies(m, i);
}

void PopHabitat(Model& m, int iYear, int iMonth) {
    Popsubs& ps = m.popsubs;
    const Physical& ph = m.physical;
    const Production& pr = m.production;
    if (iYear == 1 && iMonth == 1) {
        ps.HabMean.clear();
        ps.HabReachMean.clear();
    }
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) {
        tributaryHabitat(m, r, iMonth);
        ps.HabVal(1, r, iMonth) = ph.MaxStage(r) - ph.MinStage(r);
        ps.HabVal(2, r, iMonth) = Sng(static_cast<double>(ph.MeanWidth(r)) * m.main.ReachLen(r));
        ps.HabVal(3, r, iMonth) = pr.VegArea(2, r) + pr.VegArea(3, r);
        ps.HabVal(4, r, iMonth) = ph.WaterTemp(r);
        ps.HabVal(5, r, iMonth) = ph.SedConc(r, 1) + ph.SedConc(r, 2);
        ps.HabVal(6, r, iMonth) = ps.TribArea(r, iMonth) + ps.BackArea(r, iMonth);
        if (iYear != 1) continue;
        for (int h = 1; h <= NHabVars; ++h) {
            const double x = ps.HabVal(h, r, iMonth);
            for (int i = 1; i <= ps.NSpecies; ++i) {
                const double vul = ps.VulMonth(i, MonthOfLife(m, i, iMonth));
                ps.HabMean(i, h, iMonth) = Sng(ps.HabMean(i, h, iMonth) + ps.Share(r, i) * x);
                ps.HabReachMean(i, h, r) = Sng(ps.HabReachMean(i, h, r) + vul * x);
                ps.HabMean(i, h, 0) = Sng(ps.HabMean(i, h, 0) + ps.Share(r, i) * vul * x);
            }
        }
    }
}

void PopEffects(Model& m, int /*iYear*/, int iMonth) {
    Popsubs& ps = m.popsubs;
    for (int i = 1; i <= ps.NSpecies; ++i)
        for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r)
            for (int k = 1; k <= NHabEffects; ++k) {
                double P = 1;
                for (int h = 1; h <= NHabVars; ++h) {
                    if (ps.HabLinked(i, h, k) != -1) continue;
                    double z = PopDiv(m, i, r, static_cast<double>(ps.HabScale(i, h, k)) * ps.HabVal(h, r, iMonth),
                                      ps.HabMean(i, h, iMonth), "the first-year mean of a linked habitat variable");
                    if (!(z < 19)) z = 19;
                    if (z < 1) z = 1;
                    P *= ps.HabCurve(i, h, k, static_cast<int>(CInt(z)));
                }
                ps.HabEffect(i, r, k, iMonth) = Sng(std::max(P, 1e-6));
            }
}

void PopRisk(Model& m, int iMonth) {
    Popsubs& ps = m.popsubs;
    if (iMonth == 1) {
        ps.RiskAcc.clear();
        ps.HabSum.clear();
    }
    FoodTotals(m, true);
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) {
        ReachIndices(m, r);
        for (int i = 1; i <= ps.NSpecies; ++i) {
            const int lm = MonthOfLife(m, i, iMonth);
            ps.RiskAcc(i, r) = Sng(ps.RiskAcc(i, r) +
                                   ps.VulMonth(i, lm) * PopDiv(m, i, r, ps.PredNow(i), ps.FoodNow(i), "the food index") *
                                       ps.HabEffect(i, r, 2, iMonth));
            for (int k = 1; k <= 2; ++k)
                ps.HabSum(i, r, k) = Sng(ps.HabSum(i, r, k) + static_cast<double>(ps.InvSurv(i, lm)) / ps.HabEffect(i, r, k, iMonth));
            ps.HabSum(i, r, 3) += ps.HabEffect(i, r, 3, iMonth);
        }
        for (int a = ps.NSpecies + 1; a <= ps.NSpecies + 3; ++a) ps.PredIdx(a, r) = ps.PredNow(a) - ps.PredFree(a);
    }
}

namespace {

// Steps 2 to 5 of the annual step for one species: habitat sums, risk, dilution.
void yearSummaries(Model& m, int i, int y) {
    Popsubs& ps = m.popsubs;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    ps.SAdult(i) = ps.sbase(i);
    for (int k = 1; k <= NHabEffects; ++k) {
        if (y == 1) ps.HabBar(k, i) = 0;
        for (int r = first; r <= last; ++r) {
            if (std::fabs(ps.HabSum(i, r, k) - 1.0) < 1e-10) ps.HabSum(i, r, k) = 1e-10f;
            if (y == 1) ps.HabBar(k, i) = Sng(ps.HabBar(k, i) + static_cast<double>(ps.HabSum(i, r, k)) * ps.Share(r, i));
        }
    }
    for (int r = first; r <= last; ++r) {
        ps.Risk(r, i) = ps.RiskAcc(i, r) / 12;
        if (y == 1) ps.Risk0(r, i) = ps.Risk(r, i);
        if (ps.Risk0(r, i) * 10 < ps.Risk(r, i)) ps.Risk(r, i) = ps.Risk0(r, i) * 10;
    }
    if (y == 1) {
        if (ps.DilIdx(i) == 0) ps.DilIdx(i) = 1;
        ps.DilIdx0(i) = ps.DilIdx(i);
    }
    const double q = std::min(50.0, PopDiv(m, i, 0, ps.DilIdx(i), ps.DilIdx0(i), "the first-year dilution index"));
    ps.StageCum(1, i) = Sng(ps.StageSurv(1, i) * std::exp((1 - q) * ps.Mpred(i)));
}

// Steps 10 to 12: recruits by reach, then dispersal of the shares.
void recruitAndDisperse(Model& m, int i) {
    Popsubs& ps = m.popsubs;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    const double S1 = ps.StageCum(1, i);
    const double bar = ps.HabBar(1, i);
    std::vector<double> E(static_cast<size_t>(last + 1));
    double sumR = 0;
    for (int r = first; r <= last; ++r) {
        E[r] = std::exp(-static_cast<double>(ps.RiskRate(i)) * ps.Risk(r, i));
        const double c = PopDiv(m, i, r, ps.HabSum(i, r, 1), bar, "the first-year habitat sum HabBar");
        const double Br = static_cast<double>(ps.Biomass(i)) * ps.Share(r, i);
        sumR += E[r] * S1 * Br / (c * ps.CompC(r, i) * (1 - E[r]) * S1 * Br + 1);
    }
    ps.Recruits(i) = Sng(sumR);
    const double Rb = PopDiv(m, i, 0, sumR, ps.Biomass(i), "the adult biomass") + 1e-10;
    std::vector<double> q(static_cast<size_t>(last + 1));
    double Sq = 1e-20;
    for (int r = first; r <= last; ++r) {
        const double den = (1 - E[r]) * S1 * ps.HabSum(i, r, 1) / bar * ps.CompC(r, i);
        q[r] = std::max(0.0, PopDiv(m, i, r, E[r] * S1 / Rb - 1, den, "the recruitment density term"));
        Sq += q[r];
    }
    const double stay = ps.biomass(i);
    for (int r = first; r <= last; ++r) ps.Share(r, i) = Sng((1 - stay) * q[r] / Sq + stay * ps.Share(r, i));
}

// Steps 13 to 16: hatchery, ageing with harvest, the adults' delay-difference step.
void ageAndGrow(Model& m, int i, int y, double Alpha) {
    Popsubs& ps = m.popsubs;
    const int wk = ps.wk(i);
    const double rho = ps.rho(i);
    if (ps.fertyr1(i) <= y && y <= ps.fertyr2(i)) ps.Recruits(i) += ps.fert(i);
    const double H = ps.HarvestRate(i, y);
    for (int a = wk; a >= 2; --a) {
        ps.NAge(a, i) = Sng(static_cast<double>(ps.NAge(a - 1, i)) * ps.sbasejuv(i) * (1 - m.rec.AgeVul(i, a - 1) * H));
        ps.WAge(a, i) = Sng(ps.WAge(a - 1, i) * rho + Alpha);
    }
    ps.NAge(1, i) = ps.Recruits(i);
    ps.WAge(1, i) = Sng(Alpha);
    ps.Biomass(i) = Sng((ps.NAdults(i) * Alpha + rho * ps.Biomass(i)) * (1 - H) * ps.SAdult(i) +
                        static_cast<double>(ps.WAge(wk, i)) * ps.NAge(wk, i));
    ps.NAdults(i) = Sng((1 - H) * ps.SAdult(i) * ps.NAdults(i) + ps.NAge(wk, i));
}

}  // namespace

void PopYear(Model& m, int iYear) {
    Popsubs& ps = m.popsubs;
    FoodTotals(m, true);
    DilutionIndex(m);
    for (int i = 1; i <= ps.NSpecies; ++i) {
        yearSummaries(m, i, iYear);
        double Btot = ps.Biomass(i);
        for (int a = 1; a <= ps.wk(i) - 1; ++a) Btot += static_cast<double>(ps.NAge(a, i)) * ps.WAge(a, i);
        const double K3 = ps.HabSum(i, m.main.LastReach, 3);
        if (iYear == 1) FitRecruitment(m, i, K3);
        const double Alpha =
            ps.AlphaMax(i) / (PopDiv(m, i, 0, Btot, static_cast<double>(ps.CompB(i)) * K3, "CompB * K3") + 1);
        recruitAndDisperse(m, i);
        ageAndGrow(m, i, iYear, Alpha);
    }
}

}  // namespace osm
