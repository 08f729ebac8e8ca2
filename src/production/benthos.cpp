// Benthic insects in two feeding groups (detritus and algae feeders) grow on
// their food under a ceiling, are scoured by sand, dried by the daily stage swing
// and diluted when the lowest wetted width grows; drift follows the benthos.
#include <algorithm>
#include <cmath>

#include "core/model.h"
#include "core/numbers.h"
#include "population/reach_populations.h"
#include "production/production_steps.h"

namespace osm {

namespace {

constexpr double FtToM = 0.31;
// The two fixed constants of the feeding function.
constexpr double FeedA = 0.1;
constexpr double FeedB = 5.5;

void DriftStep(Model& m) {
    const Main& mn = m.main;
    const Physical& ph = m.physical;
    Production& pr = m.production;
    const bool natural = m.sediment.HistOSDSSConc && mn.CurYr < 63;
    pr.Drift(1) = natural ? pr.NatDrift : pr.LakeDrift;
    CheckNonZero(m, pr.DriftSink, "drift", "DriftSink", mn.FirstReach);
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const double Q = ph.MeanFlow(r), Qt = m.morph.TribQ(mn.MonthIdx, r);
        CheckNonZero(m, Q, "drift", "mean flow", r);
        // Tributaries bring no drift.
        const double C0 = (Q - Qt) * pr.Drift(r - 1) / Q;
        const double Cs = static_cast<double>(pr.BenthosTotal(r)) * pr.DriftRate / (pr.DriftSink * FtToM);
        pr.Drift(r) = Sng((C0 - Cs) * std::exp(-static_cast<double>(mn.MileDaySec) * pr.DriftSink *
                                                ph.MeanWidth(r) * mn.ReachLen(r) / Q) +
                          Cs);
    }
}

}  // namespace

void BenthosStep(Model& m) {
    const Main& mn = m.main;
    const Physical& ph = m.physical;
    Production& pr = m.production;
    const int r0 = mn.FirstReach;
    const double eff = pr.BenthosGrowthEff, baseMort = pr.BaseMort;
    const double F0 = static_cast<double>(pr.OstrelDetritus) * pr.LabileAlgal;
    CheckNonZero(m, F0 * eff, "benthos", "reference food (OstrelDetritus x LabileAlgal) times BenthosGrowthEff", r0);
    pr.FeedHalfSat = Sng(baseMort * 0.1 * (static_cast<double>(pr.MaxRToMort) + 1) / (F0 * eff));
    const double half = pr.FeedHalfSat;
    CheckNonZero(m, baseMort, "benthos", "BaseMort", r0);
    const double scaleDen = eff * half * F0 / baseMort - FeedA;
    CheckNonZero(m, scaleDen, "benthos", "growth term of the feeding scale (MaxRToMort)", r0);
    const double Sc = (pr.BaseBenthos * half / FeedB) / scaleDen;
    if (Sc <= 0 || half <= 0) {
        ShowMessage(m, "benthos", "benthos parameters would imply negative feeding rate; revise them");
        return;
    }
    CheckNonZero(m, m.morph.MgLPerGFt3, "benthos", "MgLPerGFt3", r0);
    const double scourConc = pr.ScourSand / static_cast<double>(m.morph.MgLPerGFt3);

    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        const double detritus = (static_cast<double>(pr.DetLabile(r - 1)) + pr.DetLabile(r)) / 2;
        const double algae = static_cast<double>(pr.AlgaeBiomass(r)) * pr.AlgaeAvail;
        const double Pe = PredationFactor(m, m.popsubs.NSpecies + 1, r);
        const double mu = std::min(std::pow(static_cast<double>(pr.MortQ10), ph.WaterTemp(r) / 10.0) * baseMort * Pe, 0.9);
        CheckNonZero(m, mu, "benthos", "monthly mortality", r);
        pr.BenthosEq(r) = Sng((Sc * FeedB / half) * (eff * half * (algae + detritus) / mu - FeedA));
        const double minW = ph.MinStageWidth(r), maxW = ph.MaxStageWidth(r);
        CheckNonZero(m, maxW, "benthos", "width at the highest stage", r);
        double total = 0;
        for (int c = 1; c <= 2; ++c) {
            const double F = c == 1 ? detritus : algae;
            double B = pr.Benthos(c, r);
            const double feedDen = FeedA * FeedB + B * half / Sc;
            CheckNonZero(m, feedDen, "benthos", "feeding term", r);
            double Gr = eff * half * B * FeedB * F / feedDen;
            const double Gm = (static_cast<double>(pr.MaxRToMort) + 1) * mu * B;
            if (Gm < Gr) Gr = Gm;
            B = B + Gr - B * mu + pr.Colonize;
            // Scour compares the two concentrations in g/ft3.
            if (scourConc < ph.SedConc(r, 1)) B *= pr.ScourKeep;
            B *= std::pow(minW / maxW, static_cast<double>(pr.DryPower));
            // A lowest wetted width grown over last month's spreads the benthos over it.
            if (pr.MinWidthPrev(r) < minW) B = pr.MinWidthPrev(r) * B / minW;
            pr.Benthos(c, r) = Sng(B);
            total += pr.Benthos(c, r);
        }
        pr.BenthosTotal(r) = Sng(total);
        pr.MinWidthPrev(r) = ph.MinStageWidth(r);
    }
    DriftStep(m);
}

void ResetBenthos(Model& m) {
    Production& pr = m.production;
    for (int r = 1; r <= m.main.NReaches; ++r) {
        pr.Benthos(1, r) = pr.BaseBenthos / 2;
        pr.Benthos(2, r) = pr.BaseBenthos / 2;
        pr.MinWidthPrev(r) = 0;
    }
}

void ProductionYear(Model& m, int) { ReachPopYear(m); }

}  // namespace osm
