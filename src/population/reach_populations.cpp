#include "population/reach_populations.h"

#include <cmath>

#include "core/model.h"
#include "core/numbers.h"
#include "population/population_checks.h"

namespace osm {

void ResetReachPops(Model& m) {
    Popsubs& ps = m.popsubs;
    for (int i = 1; i <= m.production.NPop; ++i)
        for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) ps.PopN(i, r) = 1;
}

void ReachPopYear(Model& m) {
    const Production& pr = m.production;
    Popsubs& ps = m.popsubs;
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r)
        for (int i = 1; i <= pr.NPop; ++i) {
            int16_t food = 0;
            for (int j = 1; j <= pr.NFood; ++j) {
                double term = 0;
                if (j == 1) term = pr.DetLabile(r);
                else if (j == 2) term = pr.VegDetritus(r);
                else if (j == 3) term = static_cast<double>(ps.PopN(1, r)) + ps.PopN(2, r);
                const double sum = CInt(food + term * pr.PopF(j, i));
                if (!(sum >= -32768 && sum <= 32767))
                    PopFault(m, 0, r, "the food of indicator population " + NumText(i) + " (" + pr.PopName(i) +
                                          ") is " + NumText(sum) + ", beyond a 16-bit whole number (32767)");
                food = static_cast<int16_t>(sum);
            }
            ReachPopStep(m, i, r, food);
        }
}

void ReachPopStep(Model& m, int i, int r, double food) {
    const Production& pr = m.production;
    Popsubs& ps = m.popsubs;
    const double R = pr.PopR(i), S = pr.PopS(i), v = pr.PopV(i);
    const double x = PopDiv(m, 0, r, R, PopDiv(m, 0, r, 1, S, "the survival PopS") - 1, "1/PopS - 1") - 1;
    const float k = Sng(PopPow(m, 0, r, x, PopDiv(m, 0, r, 1, v, "the variance PopV"), "the food scale of an indicator population"));
    const float y = Sng(PopDiv(m, 0, r, food * PopDiv(m, 0, r, pr.PopA1(i), k, "the food scale k"),
                               static_cast<double>(ps.PopN(i, r)) + pr.PopA2(i), "PopN + PopA2"));
    const double yv = PopPow(m, 0, r, y, v, "the food response of an indicator population");
    const float P = Sng(R * yv / (yv + 1));
    ps.PopN(i, r) = Sng((P + 1.0) * ps.PopN(i, r) * S + pr.PopE(i));
}

TestPopResult RunTestPop(Model& m, int i, float fmax, const std::vector<float>& testFood) {
    const Production& pr = m.production;
    TestPopResult out;
    const double R = pr.PopR(i), S = pr.PopS(i), v = pr.PopV(i);
    const double x = R / (1 / S - 1) - 1;
    if (x < 0) {
        out.message = "survival rate too low for viable population ever, fix it";
        return out;
    }
    if (v == 0) {
        out.message = "can't assume zero effect of food; reset variance par";
        return out;
    }
    const double k = Sng(std::pow(x, 1 / v));
    out.Neq = Sng(fmax * k * pr.PopA1(i) - pr.PopA2(i));
    Popsubs& ps = m.popsubs;
    ps.PopN(i, 1) = out.Neq / 50;
    for (int t = 1; t <= 50; ++t) {
        out.series.push_back(ps.PopN(i, 1));
        ReachPopStep(m, i, 1, t <= static_cast<int>(testFood.size()) ? testFood[t - 1] : 0.0f);
    }
    return out;
}

}  // namespace osm
