#include "sediment/storage_potential.h"

#include <array>
#include <cmath>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/workbook.h"
#include "hydrology/stage_tables.h"
#include "sediment/sand_budget.h"

namespace osm {

namespace {

constexpr std::array<int32_t, 13> CoarseQTable = {0,     5000,  8000,  10000, 15000, 18000, 20000,
                                                  25000, 30000, 35000, 40000, 45000, 100000};

// Bed area of the main channel of reaches 2..12 of the Ostrel Gorge reach set, ft2.
constexpr int BedAreaFirstReach = 2;
constexpr std::array<double, 11> ReachBedAreaTable = {17930000, 11930000, 15610000, 41650000,
                                                      29700000, 42790000, 10060000, 16210000,
                                                      19950000, 77970000, 14950000};
constexpr int BedAreaLastReach = BedAreaFirstReach + static_cast<int>(ReachBedAreaTable.size()) - 1;

// The main channel pool fullness is measured against the pool at this flow.
constexpr double PoolRefQ = 20000;

// The eddy storage curves of one recomputation, row 0 the origin.
struct EddyCurves {
    int n = 0;
    Table1<double> q{"EddyQ"};
    Table2<double> vol{"EddyVol"};  // (i 0..N, k 1..3), ft3 per eddy
};

EddyCurves readEddyStorage(const Model& m, const std::string& sheet) {
    Database db = OpenWorkbook(m.main.PhysicalXls);
    Cursor c = db.OpenSheet(sheet);
    EddyCurves e;
    e.n = static_cast<int>(c.RecordCount());
    // One row is enough: the first segment runs from the origin.
    if (e.n < 1)
        throw FileFault(m.main.PhysicalXls + ", sheet " + sheet, 2, "a row of discharge and eddy volumes",
                        "an empty sheet");
    e.q.redim(Bounds{0, e.n});
    e.vol.redim(Bounds{0, e.n}, Bounds{1, 3});
    static const char* cols[] = {"Vol_S", "Vol_M", "Vol_L"};
    // The curves are interpolated between rows, and a lone row from the origin:
    // discharges must rise from row to row, and from 0 to a lone row.
    for (int i = 1; !c.AtEnd(); ++i, c.MoveNext()) {
        e.q(i) = c.Field("Discharge").number();
        if (e.q(i) < 0 || (i > 1 && !(e.q(i) > e.q(i - 1))) || (e.n == 1 && e.q(i) == 0))
            throw FileFault(m.main.PhysicalXls + ", sheet " + sheet, i + 1,
                            i == 1 ? "a discharge of 0 cfs or more (above 0 if it is the only row)"
                                   : "a discharge above the row before's " + NumText(e.q(i - 1)) + " cfs",
                            NumText(e.q(i)));
        for (int k = 1; k <= 3; ++k) e.vol(i, k) = c.Field(cols[k - 1]).number();
    }
    return e;
}

double midSliceQ(const Model& m, int r, int s) {
    const double e = s * static_cast<double>(m.main.SliceThick) - m.main.SliceThick / 2.0;
    return QOfStage(m, r, e);
}

void addToBand(Model& m, int z, int s, int r) {
    Sediment& sd = m.sediment;
    if (const int b = BandOfSlice(m, s, r))
        sd.BandPot(b, r, z) = Sng(static_cast<double>(sd.BandPot(b, r, z)) + sd.SandPot(s, r, z));
}

void eddyPotential(Model& m, const EddyCurves& e) {
    const Main& mn = m.main;
    const int n = e.n;
    Table1<double> reachVol{"ReachEddyVol"};
    reachVol.redim(Bounds{0, n});
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        for (int i = 1; i <= n; ++i) {
            double v = 0;
            for (int k = 1; k <= 3; ++k) v += m.morph.NEddy(r, k) * e.vol(i, k);
            reachVol(i) = v;
        }
        double prev = 0;
        for (int s = 1; s <= mn.NSlices; ++s) {
            const double q = midSliceQ(m, r, s);
            int i = 1;
            while (i <= n && !(q < e.q(i))) ++i;
            const int j = i - 1;
            // Beyond the last row the last segment goes on upward.
            const int lo = j < n ? j : n - 1;
            const double slope = (reachVol(lo + 1) - reachVol(lo)) / (e.q(lo + 1) - e.q(lo));
            const double v = (q - e.q(j)) * slope + reachVol(j);
            m.sediment.SandPot(s, r, 1) = Sng(std::max(v - prev, 0.0) * SandDensity);
            prev = v;
            addToBand(m, 1, s, r);
        }
    }
}

void marginPotential(Model& m) {
    const Main& mn = m.main;
    Sediment& sd = m.sediment;
    const double a = sd.AngleOfRepose * 3.1415927 / 180;
    const double thick = mn.SliceThick;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
        for (int s = 1; s <= mn.NSlices; ++s) {
            const double w = m.physical.SliceArea(s, r) * 0.5 / (static_cast<double>(mn.ReachLen(r)) * 5280);
            // The lowest slice fills whole; above it a deposit is a wedge at the
            // angle of repose, cut off at the slice's top.
            double area;
            if (s == 1) {
                area = (w + w) * thick;
            } else {
                const double h = std::min(w * std::tan(a), thick);
                area = h * w;
            }
            sd.SandPot(s, r, 2) =
                Sng(SandDensity * m.morph.NCM(r) * area * sd.AvgCMLengthInMiles * 5280);
            addToBand(m, 2, s, r);
        }
}

void poolPotential(Model& m) {
    const Main& mn = m.main;
    Sediment& sd = m.sediment;
    const double b = sd.BedThickSlope, h = sd.BedThickHalfSat;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
        for (int s = 1; s <= mn.NSlices; ++s) {
            const double q = midSliceQ(m, r, s);
            int i = 1;
            while (i <= 12 && !(q < CoarseQ(i))) ++i;
            const int j = std::max(i - 1, 1);
            const int lo = j < 12 ? j : 11;
            const double slope = (static_cast<double>(sd.CoarseVol(lo + 1, r)) - sd.CoarseVol(lo, r)) /
                                 (CoarseQ(lo + 1) - CoarseQ(lo));
            const double vc = (q - CoarseQ(j)) * slope + sd.CoarseVol(j, r);
            // The loose bed layer thins as the flow rises.
            const double qb = std::pow(q, b);
            const double thickness = sd.BedThickMax * (1 - qb / (std::pow(h, b) + qb));
            const double bed = ReachBedArea(r) * thickness * 0.2;
            sd.SandPot(s, r, 3) = Sng((vc + bed) * SandDensity);
            if (q < PoolRefQ) sd.PoolPotRef(r) = sd.SandPot(s, r, 3);
        }
}

void beachBase(Model& m) {
    const Main& mn = m.main;
    Sediment& sd = m.sediment;
    sd.BeachBasePot.redim(Bounds{mn.FirstReach, mn.LastReach});
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        int s = 1;
        while (s <= mn.NSlices && !(static_cast<double>(m.physical.SliceQ(s, r)) > sd.CFSLowBeachLimit)) ++s;
        sd.BeachLowSlice(r) = ToInt16(s - 1, "BeachLowSlice");
        s = sd.BeachLowSlice(r);
        while (s <= mn.NSlices && !(static_cast<double>(m.physical.SliceQ(s, r)) > sd.CFSHighBeachLimit)) ++s;
        sd.BeachHighSlice(r) = ToInt16(s - 1, "BeachHighSlice");
        double sum = 0;
        for (int k = sd.BeachLowSlice(r); k <= sd.BeachHighSlice(r); ++k)
            sum += static_cast<double>(sd.SandPot(k, r, 1)) * sd.BaseBeachRelFull;
        sd.BeachBasePot(r) = Sng(sum);
    }
}

// Potentials are what the slices may hold: each must be a finite amount, and a
// margin's not negative, or the sand step would store absurd amounts (an angle
// of repose of 90 degrees gives wedges of negative size, volumes near the limit
// of a single overflow).
void checkPotentials(const Model& m) {
    const Main& mn = m.main;
    const Sediment& sd = m.sediment;
    const std::string from[] = {"",
                                "eddies (sheet Eddy_Storage$ and the eddies of sheet RC90$)",
                                "channel margins (AngleOfRepose " + NumText(sd.AngleOfRepose) +
                                    ", AvgCMLengthInMiles " + NumText(sd.AvgCMLengthInMiles) + ")",
                                "the pool (sheet MCPool_Storage$ and the BedThick parameters)"};
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
        for (int z = 1; z <= 3; ++z)
            for (int s = 1; s <= mn.NSlices; ++s) {
                const double pot = sd.SandPot(s, r, z);
                // The pool's curve may extrapolate below 0 at high flows; the other zones never do.
                if (!FitsSingle(pot) || (z == 2 && pot < 0))
                    throw Fault("reach " + NumText(r) + ", slice " + NumText(s) + ": the sand storage potential of " +
                                from[z] + " is " + NumText(pot) + ", not a finite amount" +
                                (z == 2 ? " of 0 or more" : ""));
            }
}

}  // namespace

int BandOfSlice(const Model& m, int s, int r) {
    for (int b = 1; b <= 4; ++b)
        if (s < static_cast<double>(m.physical.IndexSlice(b, r))) return b;
    return 0;
}

int32_t CoarseQ(int i) { return CoarseQTable.at(static_cast<size_t>(i)); }

void CheckReachBedArea(const Model& m) {
    if (m.main.FirstReach < BedAreaFirstReach || m.main.LastReach > BedAreaLastReach)
        throw Fault("the main channel bed areas cover reaches " + NumText(BedAreaFirstReach) + " to " +
                    NumText(BedAreaLastReach) + ", but the Reach Breaks file runs reaches " +
                    NumText(static_cast<int>(m.main.FirstReach)) + " to " +
                    NumText(static_cast<int>(m.main.LastReach)) +
                    "; use a reach file of the eleven Ostrel Gorge reaches or extend the bed area table");
}

double ReachBedArea(int r) {
    if (r < BedAreaFirstReach || r > BedAreaLastReach)
        throw Fault("no main channel bed area for reach " + NumText(r));
    return ReachBedAreaTable[static_cast<size_t>(r - BedAreaFirstReach)];
}

void RecomputeStorage(Model& m, bool Reset) {
    CheckReachBedArea(m);
    const Main& mn = m.main;
    const EddyCurves eddies = readEddyStorage(m, "Eddy_Storage$");
    Sediment& sd = m.sediment;
    const Bounds run{mn.FirstReach, mn.LastReach};
    sd.BandPot.redim(Bounds{1, 4}, run, Bounds{1, 2});
    sd.SandPot.redim(Bounds{0, mn.NSlices}, run, Bounds{1, 3});
    eddyPotential(m, eddies);
    marginPotential(m);
    poolPotential(m);
    checkPotentials(m);
    if (Reset) ResetSandStore(m);
    beachBase(m);
}

void ReadCoarseVolumes(Model& m, const std::string& path, const std::string& sheet) {
    CheckReachBedArea(m);
    Database db = OpenWorkbook(path);
    Cursor c = db.OpenRequiredSheet(sheet);
    Table2<float> vol = m.sediment.CoarseVol;
    vol.clear();
    double current = -1;
    int level = 0;
    for (int row = 2; !c.AtEnd(); ++row, c.MoveNext()) {
        const double q = c.Field("Discharge").number();
        if (q != current) {
            level = 1;
            while (level <= 12 && CoarseQ(level) != q) ++level;
            if (level > 12)
                throw FileFault(path + ", sheet " + sheet, row,
                                "a discharge of the coarse volume levels (5000 to 100000 cfs)", NumText(q));
            current = q;
        }
        const int r = c.Field("ReachNum").int16();
        if (r < 1 || r > m.main.NReaches)
            throw FileFault(path + ", sheet " + sheet, row,
                            "a reach number 1 to " + NumText(static_cast<int>(m.main.NReaches)), NumText(r));
        vol(level, r) = c.Field("V_Coarse").single();
    }
    m.sediment.CoarseVol = std::move(vol);
}

}  // namespace osm
