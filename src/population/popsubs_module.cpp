#include "population/popsubs_module.h"

namespace osm {

void AllocateSpeciesTables(Popsubs& ps) {
    const Bounds sp{0, SpeciesRoom}, age{0, MaxAge}, month{0, 12};
    const Bounds h{0, NHabVars}, k{0, NHabEffects}, cells{0, HabCells};
    ps.SpName.redim(sp);
    for (auto* t : {&ps.B0, &ps.alpha, &ps.alphamax, &ps.rho, &ps.sbase, &ps.sbasejuv, &ps.RcJuv,
                    &ps.fec, &ps.sfry, &ps.Sejuv, &ps.ppred, &ps.htype, &ps.fert, &ps.fertyr2,
                    &ps.biomass, &ps.Biomass, &ps.NAdults, &ps.Recruits, &ps.Alpha0, &ps.AlphaMax,
                    &ps.R0, &ps.CompK, &ps.Mpred, &ps.Mother, &ps.SAdult, &ps.VulSum, &ps.BaseJuv,
                    &ps.RiskRate, &ps.CompB, &ps.DilIdx, &ps.DilIdx0, &ps.PredFree, &ps.DietFree,
                    &ps.PredNow, &ps.FoodNow})
        t->redim(sp);
    for (auto* t : {&ps.wk, &ps.FecSpare1, &ps.FecSpare2, &ps.RchFry, &ps.Pwk1, &ps.Pwk2,
                    &ps.fertyr1, &ps.breedtime, &ps.MinAgeTaken, &ps.CatchDataFlag})
        t->redim(sp);
    ps.SetHabFlag.redim(sp);
    ps.VulMonth.redim(sp, month);
    ps.InvSurv.redim(sp, month);
    ps.HarvestRate.redim(sp, Bounds{0, HarvestYears});
    ps.HabVarName.redim(h);
    ps.HabEffectName.redim(k);
    for (auto* t : {&ps.HabLinked, &ps.setwhen, &ps.dur, &ps.setwhere}) t->redim(sp, h, k);
    ps.HabScale.redim(sp, h, k);
    ps.HabCurve.redim(sp, h, k, cells);
    for (auto* t : {&ps.LinkPred, &ps.LinkPrey}) t->redim(Bounds{0, MaxLinks});
    for (auto* t : {&ps.LinkDiet, &ps.LinkMort}) t->redim(Bounds{0, MaxLinks});
    ps.NAge.redim(age, sp);
    ps.WAge.redim(age, sp);
    ps.StageSurv.redim(Bounds{0, 3}, sp);
    ps.StageCum.redim(Bounds{0, 3}, sp);
    ps.HabMean.redim(sp, h, month);
    ps.HabBar.redim(k, sp);
    ps.Overlap.redim(sp, sp);
}

void AllocatePopReachTables(Popsubs& ps, int nReaches) {
    const Bounds sp{0, SpeciesRoom}, reach{0, nReaches}, month{0, 12};
    const Bounds h{0, NHabVars}, k{0, NHabEffects}, years{47, 98};
    ps.CatchIndex.redim(sp, reach, years);
    ps.CatchObs.redim(reach, years);
    ps.AnglerDaysObs.redim(reach, years);
    for (auto* t : {&ps.Share, &ps.ReachBio, &ps.Risk, &ps.Risk0, &ps.CompC, &ps.CompRel})
        t->redim(reach, sp);
    ps.PredIdx.redim(sp, reach);
    ps.PredIdx0.redim(sp, reach);
    ps.HabVal.redim(h, reach, month);
    ps.TribArea.redim(reach, month);
    ps.BackArea.redim(reach, month);
    ps.HabReachMean.redim(sp, h, reach);
    ps.HabEffect.redim(sp, reach, k, month);
    ps.HabSum.redim(sp, reach, k);
    ps.RiskAcc.redim(sp, reach);
    ps.PopN.redim(Bounds{0, 30}, reach);
}

}  // namespace osm
