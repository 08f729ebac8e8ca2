#include "core/results_store.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"

namespace osm {

void AllocateResults(Model& m) {
    const Bounds runs{0, 1}, vars{1, m.graphs.NVars}, subs{1, m.graphs.MaxSub}, reaches{1, m.main.NReaches},
        months{1, 600};
    m.main.Results.redim(runs, vars, subs, reaches, months);
    m.main.ObsMissing.redim(runs, vars, subs, reaches, months);
}

namespace {

// Writes one value of the current month, refusing what is not a finite number or
// would not fit the single it is stored in.
class Store {
public:
    Store(Model& m, int iYear, int iMonth) : m_(m), iYear_(iYear), iMonth_(iMonth) {}

    void put(int var, int sub, int r, double value) {
        if (!FitsSingle(value))
            throw Fault("run year " + NumText(iYear_) + " (" + NumText(1900 + m_.main.CurYr) +
                        "), month " + NumText(iMonth_) + ", reach " + NumText(r) + ": variable " +
                        NumText(var) + " set " + NumText(sub) + " (" +
                        m_.graphs.VarLabel(0, var) + ") is " + NumText(value) +
                        ", not a finite number within the range of a single");
        m_.main.Results(m_.main.NRuns, var, sub, r, m_.main.CumMonth) = Sng(value);
    }
    // An observed value; where the input had no observation the table holds 0,
    // which is stored, and the mark beside the store says so.
    void obs(int var, int sub, int r, double value, bool seen) {
        put(var, sub, r, value);
        m_.main.ObsMissing(m_.main.NRuns, var, sub, r, m_.main.CumMonth) = !seen;
    }

private:
    Model& m_;
    int iYear_, iMonth_;
};

void storeVariable(Model& m, Store& s, int v, int r, int iMonth) {
    const Main& mn = m.main;
    const Physical& ph = m.physical;
    const Sediment& sd = m.sediment;
    const Production& pr = m.production;
    const Popsubs& ps = m.popsubs;
    const Rec& rc = m.rec;
    const int mi = mn.MonthIdx, om = mn.ObsMonth, oy = mn.ObsYr;
    const double days = mn.DaysInMonth(iMonth);
    switch (v) {
    case 1:
        s.put(v, 1, r, ph.MinFlow(r) / 1000.0);
        s.put(v, 2, r, ph.MaxFlow(r) / 1000.0);
        return;
    case 2:
        s.put(v, 1, r, ph.MinStage(r));
        s.put(v, 2, r, ph.MaxStage(r));
        return;
    case 3:
        s.put(v, 1, r, (static_cast<double>(ph.SedConc(r, 1)) + ph.SedConc(r, 2)) * m.morph.MgLPerGFt3);
        s.obs(v, 2, r, ph.HistSedConc(om, r), ph.HistSedSeen(om, r));
        return;
    case 4:
        s.put(v, 1, r, ph.SedConc(r, 2) * 100.0 / (static_cast<double>(ph.SedConc(r, 1)) + ph.SedConc(r, 2)));
        return;
    case 5:
        s.put(v, 1, r,
              (static_cast<double>(m.morph.TribSedConc(mi, r, 1)) + m.morph.TribSedConc(mi, r, 2)) *
                  m.morph.TribQ(mi, r) * days * 86400.0 / 1e9);
        return;
    case 6:
    case 7:
        for (int b = 1; b <= 4; ++b) {
            const int z = v - 5;
            s.put(v, b, r, sd.BandSand(b, r, z) / (sd.BandPot(b, r, z) + 1e-8));
        }
        return;
    case 8:
        s.put(v, 1, r, sd.SandStore(0, r, 3) / (sd.PoolPotRef(r) + 1e-8));
        return;
    case 9:
        s.put(v, 1, r, sd.SandBalance(r));
        return;
    case 10:
        s.put(v, 1, r, static_cast<double>(rc.BeachCap(1, r)) + rc.BeachCap(2, r) + rc.BeachCap(3, r));
        for (int k = 1; k <= 3; ++k) s.put(v, k + 1, r, rc.BeachCap(k, r));
        return;
    case 11:
        for (int k = 1; k <= 3; ++k)
            s.put(v, k, r, rc.ReachCampUse(k, r, iMonth) / (rc.BeachCap(k, r) * days + 1e-6));
        return;
    case 12:
        s.put(v, 1, r, ph.AnnualPowerValue / 1000000.0);
        return;
    case 13:
        s.put(v, 1, r, ph.WaterTemp(r));
        s.obs(v, 2, r, ph.ObsTemp(om, r), ph.ObsTempSeen(om, r));
        return;
    case 14:
        s.put(v, 1, r, pr.DO(r));
        s.put(v, 2, r, pr.ObsProd(om, r, 1));
        return;
    case 15:
        s.put(v, 1, r, pr.SecchiDepth(r));
        s.put(v, 2, r, pr.ObsProd(om, r, 2));
        return;
    case 16:
        s.put(v, 1, r, pr.AlgaeBiomass(r));
        s.put(v, 2, r, pr.ObsProd(om, r, 3));
        return;
    case 17:
        s.put(v, 1, r, pr.AlgaeTotal(r));
        s.put(v, 2, r, pr.ObsProd(om, r, 4));  // "TOTMASM"
        return;
    case 18:
        for (int c = 1; c <= 5; ++c)
            s.put(v, c, r, pr.AlgaeClass(c, r) * 100.0 / (pr.AlgaeClass(6, r) + 1e-10));
        return;
    case 19:
        s.put(v, 1, r, pr.DetBudget(1, r));  // detritus coming in from upstream
        s.put(v, 2, r, pr.DetLabile(r));
        s.put(v, 3, r, pr.ObsProd(om, r, 5));  // "DETRITUS"
        return;
    case 20:
        s.put(v, 1, r, pr.BenthosTotal(r));
        s.put(v, 2, r, pr.ObsProd(om, r, 6));  // the drift's sum with "INVERTS"
        return;
    case 21:
        s.put(v, 1, r, pr.VegDetritus(r));  // riparian litter
        return;
    case 22:
        for (int t = 1; t <= 3; ++t) s.put(v, t, r, pr.VegArea(t, r));
        return;
    case 23:
        s.put(v, 1, r, rc.CatchRch(r) * 1000.0);
        s.put(v, 2, r, ps.CatchObs(r, oy));
        return;
    case 24:
        s.put(v, 1, r, rc.CPERch(r) * 50.0);
        s.put(v, 2, r, ps.CatchIndex(3, r, oy) / 10000.0);
        return;
    case 25:
        s.put(v, 1, r, rc.EffortRch(r));
        s.put(v, 2, r, ps.AnglerDaysObs(r, oy));
        return;
    case 26:
        if (r == mn.FirstReach) s.put(v, 1, r, rc.AnglerValue / 1000000.0);
        return;
    default: {
        const int i = v - 26;  // species (or the first food type) of variable 27 + i - 1
        if (i > ps.NSpecies + 1) return;
        s.put(v, 1, r, static_cast<double>(ps.Share(r, i)) * ps.Biomass(i));
        const int y = (ps.CatchDataFlag(i) != 0 || m.graphs.PlotObsAvg) ? 47 : mn.SimYr;
        s.put(v, 2, r, ps.CatchIndex(i, r, y));
        return;
    }
    }
}

}  // namespace

float ShownResult(const Main& mn, int run, int var, int sub, int r, int month) {
    if (mn.ObsMissing(run, var, sub, r, month)) return std::numeric_limits<float>::quiet_NaN();
    return mn.Results(run, var, sub, r, month);
}

void StoreResults(Model& m, int iYear, int iMonth) {
    Main& mn = m.main;
    const bool avg = m.graphs.PlotObsAvg;
    mn.ObsMonth = avg ? int16_t{0} : mn.MonthIdx;
    mn.ObsYr = avg ? int16_t{47} : mn.SimYr;
    if (mn.CumMonth > mn.Results.hi(4)) {
        mn.Results.redimPreserve(Bounds{1, mn.NYears * 12});
        mn.ObsMissing.redimPreserve(Bounds{1, mn.NYears * 12});
    }
    const int lastVar = mn.PhysOnly ? std::min<int>(m.graphs.NVars, mn.NPhysVars) : m.graphs.NVars;
    Store s(m, iYear, iMonth);
    for (int v = 1; v <= lastVar; ++v)
        for (int r = mn.FirstReach; r <= mn.LastReach; ++r) storeVariable(m, s, v, r, iMonth);
}

}  // namespace osm
