#include "sediment/sand_budget.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/step_values.h"
#include "production/production_steps.h"
#include "sediment/storage_potential.h"

namespace osm {

namespace {

// Sand above this share of the reach's stored sand, made or lost by one step, is
// reported.
constexpr double BalanceTolerancePct = 1.0;

// What a slice may hold in this period: the deeper it lies under the period's
// peak flow, the less.
double sliceCapacity(const Sediment& sd, double pot, double qHi, double sliceQ) {
    const double d = qHi - sliceQ;
    if (d <= 0) return pot;
    const double b = sd.RelStoreSlope, h = sd.RelStoreHalfSat;
    const double db = std::pow(d, b);
    return pot * (1 - db / (std::pow(h, b) + db));
}

void checkDivisor(double x, const char* what, const Model& m, int r) {
    if (x == 0)
        throw Fault("the sand step divides by a zero " + std::string(what) + " in reach " + NumText(r) +
                    ", year " + NumText(1900 + m.main.CurYr) + ", month index " + NumText(m.main.MonthIdx));
}

void showBalance(Model& m, int r, double error) {
    std::string prefix = error > 0 ? "Created " : "Lost ";
    prefix.resize(10, ' ');
    ShowMessage(m, "sand balance",
                prefix + Format(std::fabs(error) / 1000000, "0.0") + " tons in reach " + NumText(r));
}

}  // namespace

void SandStep(Model& m, int r, int month, float p, float Q, float StageHi, float QHi) {
    const Main& mn = m.main;
    const Morph& mo = m.morph;
    Sediment& sd = m.sediment;
    const int mi = mn.MonthIdx;
    const int nSlices = mn.NSlices;

    checkDivisor(Q, "discharge", m, r);
    double old[4] = {};
    for (int z = 1; z <= 3; ++z) {
        old[z] = sd.ZoneSand(r, z);
        sd.ZoneSand(r, z) = 0;
    }

    // Fines are only mixed, never stored.
    const double qt = mo.TribQ(mi, r);
    sd.ReachConc(r, 2) = Sng(((Q - qt) * sd.ReachConc(r - 1, 2) + mo.TribSedConc(mi, r, 2) * qt) / Q);

    const double days = static_cast<double>(mn.DaysInMonth(month)) * p;
    checkDivisor(days, "period length", m, r);
    const int top =
        StepIndex(m, r, Int(StageHi / static_cast<double>(mn.SliceThick)), "the slice of the peak stage") + 1;
    // Above the table the pool's capacity is that of the highest slice, and no
    // slice takes the inflow.
    const int poolTop = std::clamp(top, 0, nSlices);
    const double in = ((Q - qt) * sd.ReachConc(r - 1, 1) + mo.TribSedConc(mi, r, 1) * qt) * 86400 * days;

    // The pool takes its share first; what it cannot hold at this stage goes to
    // the eddies and margins with their inflow.
    double poolExcess = 0;
    sd.SandStore(0, r, 3) = Sng(sd.SandStore(0, r, 3) + sd.SandDest(3) * in);
    const double poolCap = sd.SandPot(poolTop, r, 3);
    if (sd.SandStore(0, r, 3) > poolCap) {
        poolExcess = sd.SandStore(0, r, 3) - poolCap;
        sd.SandStore(0, r, 3) = Sng(poolCap);
    }

    const double dest12 = static_cast<double>(sd.SandDest(1)) + sd.SandDest(2);
    double toPool = 0;
    for (int z = 1; z <= 2; ++z) {
        double carry = 0;
        for (int s = nSlices; s >= 1; --s) {
            float& store = sd.SandStore(s, r, z);
            const double pot = sd.SandPot(s, r, z);
            double f = 1;
            if (sd.FullAdjustErode) f = std::min(store / (pot + 1e-8), 1.0);
            const double rate = s > top ? sd.WindErodeRate : sd.ErodeRate;
            const double eroded = Sng(store * f * rate * p);
            store = Sng(store - eroded);

            const double cap = sliceCapacity(sd, pot, QHi, m.physical.SliceQ(s, r));
            if (s == top) {
                checkDivisor(dest12, "share of sand destined to eddies and margins", m, r);
                const double share = std::max(sd.SandDest(z) / dest12, 0.0);
                carry += sd.SandDest(z) * in + share * poolExcess;
            }
            store = Sng(store + carry);
            if (store > cap) {
                carry = store - cap;
                store = Sng(cap);
            } else {
                carry = 0;
            }
            carry += eroded;
            if (s == 1) toPool += carry;

            if (z == 1 && r == mn.FirstReach && s == nSlices) sd.BandSand.clear();
            if (const int b = BandOfSlice(m, s, r)) sd.BandSand(b, r, z) = Sng(sd.BandSand(b, r, z) + store);
            if (z == 1 && !mn.PhysOnly)
                VegSliceMonth(m, r, s,
                              Sng(StageHi - (mn.SliceThick / 2.0 + (s - 1) * static_cast<double>(mn.SliceThick))),
                              p);
            sd.ZoneSand(r, z) = Sng(sd.ZoneSand(r, z) + store);
        }
    }

    // What fell out of the lowest slices returns to the pool, which sheds its
    // own excess downstream.
    float& pool = sd.SandStore(0, r, 3);
    pool = Sng(pool + toPool);
    double out = 0;
    if (pool > poolCap) {
        out = pool - poolCap;
        pool = Sng(poolCap);
    }
    double f = 1;
    // The pool's potential at row 0 is never written, so with any sand present
    // this fullness is 1: the pool erodes at the full rate.
    if (sd.FullAdjustErode) f = std::min(pool / (sd.SandPot(0, r, 3) + 1e-7), 1.0);
    const double eroded = Sng(pool * sd.ErodeRate * f * p);
    pool = Sng(pool - eroded);
    out += eroded;
    sd.ZoneSand(r, 3) = pool;

    const double passing = 1 - (dest12 + sd.SandDest(3));
    sd.ReachConc(r, 1) = Sng((in * passing + out) / (static_cast<double>(Q) * 86400 * days));

    static const char* zoneSand[] = {"", "the sand in eddies", "the sand in channel margins", "the sand in the pool"};
    for (int z = 1; z <= 3; ++z) CheckStepValue(m, r, sd.ZoneSand(r, z), zoneSand[z]);
    CheckStepValue(m, r, sd.ReachConc(r, 1), "the sand concentration passed downstream");
    double gain = 0, total = 0;
    for (int z = 1; z <= 3; ++z) {
        gain += static_cast<double>(sd.ZoneSand(r, z)) - old[z];
        total += sd.ZoneSand(r, z);
    }
    // The check and its message see the error as stored, a single.
    sd.SandBalance(r) = Sng(out + gain - in);
    const double error = sd.SandBalance(r);
    if (std::fabs(error) * 100 / (total + 1e-10) > BalanceTolerancePct) showBalance(m, r, error);
    sd.SandBalance(r) = Sng(error / 1000000);
}

void ResetSandStore(Model& m) {
    const Main& mn = m.main;
    Sediment& sd = m.sediment;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        for (int z = 1; z <= 2; ++z) {
            double sum = 0;
            for (int s = 1; s <= mn.NSlices; ++s) {
                sd.SandStore(s, r, z) = Sng(static_cast<double>(sd.SandPot(s, r, z)) * sd.IniPropSliceFull(z));
                sum += sd.SandStore(s, r, z);
            }
            sd.ZoneSand(r, z) = Sng(sum);
        }
        // The pool starts from its potential at the lowest stage.
        sd.SandStore(0, r, 3) = Sng(static_cast<double>(sd.SandPot(1, r, 3)) * sd.IniPropSliceFull(3));
        sd.ZoneSand(r, 3) = sd.SandStore(0, r, 3);
    }
}

}  // namespace osm
