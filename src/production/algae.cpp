// Light and attached algae by reach: how long each foot of the bed is wet and
// how much light reaches it through the turbid water set the month's standing
// crop on the hard substrate.
#include <algorithm>
#include <cmath>

#include "core/model.h"
#include "core/numbers.h"
#include "production/production_steps.h"

namespace osm {

namespace {

// Levels of the one-foot grid above the thalweg.
constexpr int GridLevels = 100;

// Turbidity in mg/l: fines weighted against sand, or the plain sum when the
// weight is negative.
double Turbidity(const Model& m, int r) {
    const double sand = m.physical.SedConc(r, 1), fines = m.physical.SedConc(r, 2);
    const double w = m.production.FineWgt;
    const double g = w >= 0 ? (fines * w + sand) / (w + 1) : sand + fines;
    return g * m.morph.MgLPerGFt3;
}

void AlgaeOfReach(Model& m, int month, int r, Table1<double>& wet, Table1<double>& light) {
    const Main& mn = m.main;
    const Physical& ph = m.physical;
    Production& pr = m.production;
    const double k = pr.BaseLightExt + pr.LightExtTurb * Turbidity(m, r);
    CheckNonZero(m, k, "algae", "light extinction", r);
    pr.SecchiDepth(r) = Sng(1.7 / k);
    const double G = PredationFactor(m, m.popsubs.NSpecies + 3, r);
    pr.NoonStage(r) = ph.HourlyStage(12, r, 1);

    wet.clear();
    light.clear();
    double top = 0;
    for (int h = 1; h <= 24; ++h) {
        const double S = ph.HourlyStage(h, r, 1);
        top = std::max(top, S);
        const bool day = mn.SunriseHr(month) <= h && h <= mn.SunsetHr(month);
        // Deeper levels leave the loop where daylight fades out, and so do not
        // count as wet for that hour.
        for (int i = static_cast<int>(Int(S)); i >= 1; --i) {
            wet(i) += 1;
            if (!day) continue;
            const double e = -k * (S - i);
            if (e < -50) break;
            const double L = std::pow(std::exp(e), 0.8);
            light(i) += L;
            if (L < 0.05) break;
        }
    }

    double total = 0, W = 1e-10;
    for (int i = 1; i <= static_cast<int>(CInt(top)); ++i) {
        // Fixed divisors, whatever the day length of the month.
        light(i) = light(i) / 12 + 1e-10;
        wet(i) = wet(i) / 13;
        const double P = std::max((wet(i) - G * pr.PhotoEffic / light(i)) * pr.AlgaeMax, 0.0);
        const int s = std::clamp(static_cast<int>(CInt(static_cast<double>(i) / mn.SliceThick)), 1,
                                 static_cast<int>(mn.NSlices));
        const Table3<float>& sub = m.morph.SliceSubstrate;
        // Talus, gravel and cobble, and bedrock: the hard substrate algae grow on.
        const double H = static_cast<double>(sub(4, s, r)) + sub(3, s, r) + sub(5, s, r);
        total += ph.SliceWidth(s, r) * P * H;
        pr.AlgaeSlice(s, r) = Sng(P);
        W += ph.SliceWidth(s, r) * H;
    }
    pr.AlgaeTotal(r) = Sng(total);
    pr.AlgaeBiomass(r) = Sng(total / W);
}

}  // namespace

void AlgaeStep(Model& m, int month) {
    Production& pr = m.production;
    pr.AlgaeSlice.redim(Bounds{0, m.main.NSlices}, Bounds{1, m.main.NReaches});
    Table1<double> wet{"WetHours"}, light{"Light"};
    wet.redim(Bounds{1, GridLevels});
    light.redim(Bounds{1, GridLevels});
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) AlgaeOfReach(m, month, r, wet, light);
}

void AlgaeDetritusStep(Model& m, int month) {
    AlgaeStep(m, month);
    DetritusStep(m, month);
}

}  // namespace osm
