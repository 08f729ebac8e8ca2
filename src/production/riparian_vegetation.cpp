// Riparian vegetation on the eddy slices: flooding kills by an accumulated depth
// dose, slices far from the water table lose cover slowly, and once a year the
// cover grows under competition and yields detritus and insects.
#include "production/riparian_vegetation.h"

#include <algorithm>

#include "core/model.h"
#include "core/numbers.h"
#include "production/production_steps.h"

namespace osm {

namespace {

constexpr float DoseCap = 32000;

}  // namespace

void VegSliceMonth(Model& m, int r, int s, float Depth, float /*p*/) {
    Production& pr = m.production;
    float& waterDepth = pr.SliceWaterDepth(s, r);
    if (Depth > 0) {
        waterDepth = Sng(waterDepth * 0.5);
        for (int v = 1; v <= pr.NVegTypes; ++v) {
            float& dose = pr.VegDepthDose(v, s, r);
            dose = Sng(dose + static_cast<double>(pr.VegDkill(v)) * Depth);
            if (dose >= DoseCap) dose = DoseCap;
            const int i = std::min(static_cast<int>(CInt(dose)), static_cast<int>(pr.NMortPoints));
            pr.VegCover(v, s, r) = Sng(pr.VegCover(v, s, r) * (1 - static_cast<double>(pr.VegMort(i, v))));
        }
    } else {
        // Above the water the memory of flooding goes at once.
        for (int v = 1; v <= pr.NVegTypes; ++v) pr.VegDepthDose(v, s, r) = 0;
        int16_t& score = pr.SliceDryScore(s, r);
        score = ToInt16(CInt(score - Depth / (5.0 - Depth)), "SliceDryScore");
        waterDepth = Sng(waterDepth * 0.5 - Depth * 0.5);
    }
    // Outside its band of water table depth a plant loses 5% of its cover.
    for (int v = 1; v <= pr.NVegTypes; ++v)
        if (!(pr.VegWmin(v) <= waterDepth && waterDepth < pr.VegWmax(v)))
            pr.VegCover(v, s, r) = Sng(pr.VegCover(v, s, r) * 0.95);
}

void VegYear(Model& m, int /*iYear*/) {
    const Main& mn = m.main;
    Production& pr = m.production;
    pr.VegArea.clear();
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        double bugs = 0, litter = 0, Wsum = 1e-6;
        for (int s = 1; s <= mn.NSlices; ++s)
            for (int v = 1; v <= pr.NVegTypes; ++v) {
                // Competition sees the new cover of the types already grown in this slice.
                double c = 0;
                for (int j = 1; j <= pr.NVegTypes; ++j)
                    c += static_cast<double>(pr.VegCover(j, s, r)) * pr.VegComp(j, v);
                float& cover = pr.VegCover(v, s, r);
                cover = Sng(cover * ((1 - c) * pr.VegGrowth(v) + 1));
                if (cover < pr.VegMinCover) cover = pr.VegMinCover;
                double a = 0;
                for (int t = 1; t <= 5; ++t)
                    if (pr.VegClimax(t, v))
                        a += static_cast<double>(m.morph.SliceSubstrate(t, s, r)) * m.physical.SliceArea(s, r);
                // Only cover above the floor, the seed source, counts.
                const double e = std::max(static_cast<double>(cover) - pr.VegMinCover, 0.0);
                pr.VegArea(v, r) = Sng(pr.VegArea(v, r) + a * e);
                bugs += pr.VegBug(v) * e * a;
                litter += pr.VegDet(v) * e * a;
                Wsum += a;
            }
        pr.VegBugProd(r) = Sng(bugs / Wsum);
        pr.VegDetritus(r) = Sng(litter / Wsum);
    }
}

void ResetVeg(Model& m) {
    const Main& mn = m.main;
    Production& pr = m.production;
    // Cover starts afresh, so that every run from the same inputs is the same run;
    // the first three types start at the floor, whatever the number of types.
    pr.VegCover.clear();
    pr.VegDepthDose.clear();
    pr.SliceDryScore.clear();
    pr.SliceWaterDepth.clear();
    for (int r = 1; r <= mn.NReaches; ++r)
        for (int s = 1; s <= mn.NSlices; ++s) {
            for (int v = 1; v <= 3; ++v) pr.VegCover(v, s, r) = pr.VegMinCover;
            // High slices count as long dry, a few feet above the water table.
            if (s > 30) pr.SliceDryScore(s, r) = 100;
            if (s > 27) pr.SliceWaterDepth(s, r) = static_cast<float>(s - 30);
        }
}

VegPattern VegPatternTest(const Model& live) {
    Model m = live;
    Main& mn = m.main;
    Production& pr = m.production;
    mn.FirstReach = 2;
    mn.LastReach = 2;
    mn.NSlices = 1;
    VegPattern out;
    out.cover.redim(Bounds{0, 100}, Bounds{1, std::max<int>(pr.NVegTypes, 1)});
    for (int v = 1; v <= pr.NVegTypes; ++v) {
        pr.VegCover(v, 1, 2) = pr.VegMinCover;
        out.cover(0, v) = pr.VegMinCover;
    }
    for (int year = 1; year <= 100; ++year) {
        VegYear(m, year);
        for (int v = 1; v <= pr.NVegTypes; ++v) out.cover(year, v) = pr.VegCover(v, 1, 2);
    }
    return out;
}

}  // namespace osm
