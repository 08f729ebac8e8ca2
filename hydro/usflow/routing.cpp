// Muskingum-Cunge routing with variable parameters.
//
// The river from the dam to the end mile is cut into computation reaches. Over
// each reach, with inflow I and outflow O, the Muskingum storage is the water
// in the reach at the weighted flow, S = dx A(X I + (1-X) O), A the wetted area
// of the reach's rating, and continuity gives
//   S(n+1) = S(n) + dt (I(n) + I(n+1) - O(n) - O(n+1))/2.
// Linearised about a flow (dA = dQ/c) this is the classic recurrence
//   O(n+1) = C0 I(n+1) + C1 I(n) + C2 O(n),  K = dx/c, D = K(1-X) + dt/2,
//   C0 = (dt/2 - KX)/D, C1 = (dt/2 + KX)/D, C2 = (K(1-X) - dt/2)/D.
// Solved in the storage form instead (for O(n+1), by Newton's method), the
// scheme keeps the storage as the reach's state: volume is conserved exactly
// while the parameters follow the flow, and over a periodic cycle the outflow
// volume equals the inflow volume. (The recurrence with parameters that change
// from step to step loses water: several per cent on a peaking day.)
// Cunge's choice X = (1 - q/(S0 c dx))/2, with q = Q/B the flow per unit
// width, makes the scheme's numerical diffusion equal the physical diffusion of
// the flood wave, q/(2 S0); that is what attenuates the daily wave.
// c = dQ/dA (the kinematic celerity) and B come from the station ratings at a
// reference flow, the mean of the three known corner flows, so the parameters
// follow the wave.
//
// Stability and accuracy limits: C0 >= 0 needs the Courant number C = c dt/dx
// at least 2X, and C2 >= 0 needs C <= 2(1 - X); X >= 0 needs dx >= q/(S0 c).
// The computation step is 12 minutes (three 4-minute file steps; the file's
// steps between are interpolated in time), and each reach is as long as the
// wave travels in one step at the mean flow (C = 1) but at least two thirds
// of the distance it travels at the fastest flow met (C <= 1.5; the last reach
// may be three quarters of that, C <= 2). X is limited to
// [0, min(C/2, 1 - C/2)], so every coefficient stays at or above 0 and the
// scheme neither overshoots nor goes negative; where the limit binds, the wave
// diffuses a little more than the physical diffusion. Before the recorded run
// the first day is routed until its wave has crossed the whole river, so the
// cycles start from a periodic state.
#include "usflow/routing.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace hydro {

namespace {

constexpr double FeetPerMile = 5280.0;

// The segment of the discharge list that holds q (the first or last one outside).
size_t segmentOf(const std::vector<double>& qs, double q) {
    size_t k = 1;
    while (k + 1 < qs.size() && q > qs[k]) ++k;
    return k;
}

// A station's hydraulics blended between the two stations around a mile.
struct Blend {
    const Station* a;
    const Station* b;
    double w;  // weight of b
};

Blend blendAt(const Geometry& g, double mile) {
    const auto& st = g.stations;
    if (mile <= st.front().mile) return {&st.front(), &st.front(), 0};
    if (mile >= st.back().mile) return {&st.back(), &st.back(), 0};
    size_t i = 1;
    while (st[i].mile < mile) ++i;
    const double w = (mile - st[i - 1].mile) / (st[i].mile - st[i - 1].mile);
    return {&st[i - 1], &st[i], w};
}

// A computation reach: its geometry at its middle, with the celerity of each
// segment of the discharge list and the width and area at each discharge.
struct ReachParams {
    double slope;
    std::vector<double> celerity;
    std::vector<double> width;
    std::vector<double> area;
};

// The celerity of a reach at flow q, continuous in q: the segment celerities
// hold at the middle of their segments, with straight lines between.
double celerityAt(const ReachParams& rp, const std::vector<double>& qs, double q) {
    const size_t n = rp.celerity.size();
    double prevMid = 0.5 * (qs[0] + qs[1]);
    if (q <= prevMid) return rp.celerity[0];
    for (size_t k = 1; k < n; ++k) {
        const double mid = 0.5 * (qs[k] + qs[k + 1]);
        if (q <= mid) return rp.celerity[k - 1] + (q - prevMid) / (mid - prevMid) * (rp.celerity[k] - rp.celerity[k - 1]);
        prevMid = mid;
    }
    return rp.celerity[n - 1];
}

Hydraulics blendHydraulics(const Geometry& g, const Blend& b, double q) {
    const Hydraulics ha = StationHydraulics(g, *b.a, q);
    if (b.w == 0) return ha;
    const Hydraulics hb = StationHydraulics(g, *b.b, q);
    return {ha.celerity + b.w * (hb.celerity - ha.celerity), ha.width + b.w * (hb.width - ha.width)};
}

}  // namespace

Hydraulics StationHydraulics(const Geometry& g, const Station& s, double q) {
    const auto& qs = g.discharge;
    const size_t k = segmentOf(qs, q);
    const double dA = s.area[k] - s.area[k - 1];
    Hydraulics h;
    h.celerity = (qs[k] - qs[k - 1]) / dA;
    const double f = std::clamp((q - qs[k - 1]) / (qs[k] - qs[k - 1]), 0.0, 1.0);
    h.width = s.width[k - 1] + f * (s.width[k] - s.width[k - 1]);
    return h;
}

RoutingResult RouteFlow(const Geometry& g, double endMile, const std::vector<double>& inflow,
                        double dtSeconds, const std::vector<double>& outMiles, int warmSteps) {
    if (inflow.empty()) throw std::invalid_argument("no inflow to route");
    if (g.stations.empty() || g.discharge.size() < 2) throw std::invalid_argument("no river geometry");
    if (endMile <= g.damMile) throw std::invalid_argument("the end mile lies above the dam");
    for (double m : outMiles)
        if (m < g.damMile || m > endMile) throw std::invalid_argument("an output mile lies outside the river");

    const size_t warm = std::clamp<size_t>(static_cast<size_t>(std::max(warmSteps, 1)), 1, inflow.size());
    const double mean = std::accumulate(inflow.begin(), inflow.begin() + static_cast<long>(warm), 0.0) /
                        static_cast<double>(warm);
    const double high = std::max(1.0, *std::max_element(inflow.begin(), inflow.end()));

    // The computation step: the largest multiple of the file's step that stays
    // within 12 minutes and divides the warm-up day.
    size_t sub = std::max<size_t>(1, static_cast<size_t>(720.0 / dtSeconds));
    while (sub > 1 && warm % sub != 0) --sub;
    const double dt = dtSeconds * static_cast<double>(sub);

    // Computation reaches, marching down from the dam: C = 1 at the mean flow
    // and C <= 1.5 at the highest (C <= 2 for the last reach, which may be
    // shortened to three quarters).
    auto makeReach = [&](double from, double to) {
        const Blend mid = blendAt(g, (from + to) / 2);
        ReachParams rp{mid.a->slope + mid.w * (mid.b->slope - mid.a->slope), {}, {}, {}};
        for (size_t k = 1; k < g.discharge.size(); ++k)
            rp.celerity.push_back(blendHydraulics(g, mid, 0.5 * (g.discharge[k - 1] + g.discharge[k])).celerity);
        for (size_t k = 0; k < g.discharge.size(); ++k) {
            rp.width.push_back(mid.a->width[k] + mid.w * (mid.b->width[k] - mid.a->width[k]));
            rp.area.push_back(mid.a->area[k] + mid.w * (mid.b->area[k] - mid.a->area[k]));
        }
        return rp;
    };
    auto fastest = [&](const ReachParams& rp) {
        double c = std::max(celerityAt(rp, g.discharge, mean), celerityAt(rp, g.discharge, high));
        for (size_t k = 0; k + 1 < g.discharge.size() && g.discharge[k] < high; ++k) c = std::max(c, rp.celerity[k]);
        return c;
    };
    std::vector<double> node{g.damMile};
    std::vector<ReachParams> reach;
    while (node.back() < endMile - 1e-9) {
        const double x = node.back();
        ReachParams rp = makeReach(x, x);
        double dx = std::max(celerityAt(rp, g.discharge, mean) * dt, fastest(rp) * dt / 1.5) / FeetPerMile;
        const double rest = endMile - x;
        if (rest <= 1.5 * dx) dx = rest;
        else if (rest < 2 * dx) dx = rest / 2;
        reach.push_back(makeReach(x, x + dx));
        node.push_back(x + dx);
    }

    RoutingResult res;
    res.dxMiles = (endMile - g.damMile) / static_cast<double>(reach.size());
    std::vector<double> now(reach.size() + 1, mean), next(now.size());
    // Water stored in each reach, ft3: dx A(Q) at the weighted flow
    // Q = X I + (1-X) O, A the wetted area of the reach's rating.
    std::vector<double> store(reach.size());
    auto params = [&](size_t j, double qRef, double& X) {
        const ReachParams& rp = reach[j];
        const size_t k = segmentOf(g.discharge, qRef);
        const double f = std::clamp((qRef - g.discharge[k - 1]) / (g.discharge[k] - g.discharge[k - 1]), 0.0, 1.0);
        const double width = rp.width[k - 1] + f * (rp.width[k] - rp.width[k - 1]);
        const double c = celerityAt(rp, g.discharge, qRef);
        const double dxFeet = (node[j + 1] - node[j]) * FeetPerMile;
        const double C = c * dt / dxFeet;
        X = std::clamp(0.5 * (1.0 - qRef / (width * rp.slope * c * dxFeet)), 0.0,
                       std::max(0.0, std::min(C / 2, 1 - C / 2)));
        res.maxCourant = std::max(res.maxCourant, C);
    };
    // Wetted area at flow q and its slope dA/dQ, the rating's straight segments
    // extended at both ends.
    auto area = [&](const ReachParams& rp, double q, double& dAdQ) {
        const size_t k = segmentOf(g.discharge, q);
        dAdQ = (rp.area[k] - rp.area[k - 1]) / (g.discharge[k] - g.discharge[k - 1]);
        return std::max(0.0, rp.area[k - 1] + (q - g.discharge[k - 1]) * dAdQ);
    };
    for (size_t j = 0; j < reach.size(); ++j) {
        double slope = 0;
        store[j] = (node[j + 1] - node[j]) * FeetPerMile * area(reach[j], mean, slope);
    }
    auto step = [&](double qin) {
        next[0] = qin;
        for (size_t j = 0; j < reach.size(); ++j) {
            double X = 0;
            params(j, std::max(1.0, (now[j] + now[j + 1] + next[j]) / 3.0), X);
            const double dxFeet = (node[j + 1] - node[j]) * FeetPerMile;
            const double rhs = store[j] + dt / 2 * (now[j] + next[j] - now[j + 1]);
            // dx A(X I + (1-X) O) + dt/2 O = rhs rises with O: Newton's method on
            // a piecewise-linear function ends in a few steps.
            double out = now[j + 1];
            for (int it = 0; it < 30; ++it) {
                double dAdQ = 0;
                const double a = area(reach[j], X * next[j] + (1 - X) * out, dAdQ);
                const double delta = (dxFeet * a + dt / 2 * out - rhs) / (dxFeet * (1 - X) * dAdQ + dt / 2);
                out = std::max(0.0, out - delta);
                if (std::abs(delta) < 1e-7 * (1 + out)) break;
            }
            store[j] = rhs - dt / 2 * out;
            next[j + 1] = out;
        }
        now.swap(next);
    };

    // Warm-up: the first day routed until its wave has passed the whole river,
    // so that the recorded cycles start from a periodic state.
    double travel = 0;
    for (size_t j = 0; j < reach.size(); ++j)
        travel += (node[j + 1] - node[j]) * FeetPerMile / reach[j].celerity.front();
    const int warmDays = static_cast<int>(std::ceil(travel / (static_cast<double>(warm) * dtSeconds))) + 1;
    for (int d = 0; d < warmDays; ++d)
        for (size_t i = sub - 1; i < warm; i += sub) step(inflow[i]);

    // Each output point between two nodes, with its weight.
    std::vector<std::pair<size_t, double>> at;
    for (double m : outMiles) {
        size_t j = 0;
        while (j + 2 < node.size() && node[j + 1] < m) ++j;
        at.push_back({j, (m - node[j]) / (node[j + 1] - node[j])});
    }
    auto sample = [&](const std::vector<double>& q) {
        std::vector<double> out;
        for (const auto& [j, f] : at) out.push_back(q[j] + f * (q[j + 1] - q[j]));
        return out;
    };
    // The recorded run: computation steps of `sub` file steps, the file's steps
    // between them interpolated in time.
    std::vector<double> before = sample(now);
    for (size_t i = sub - 1; i < inflow.size(); i += sub) {
        step(inflow[i]);
        const std::vector<double> after = sample(now);
        for (size_t s = 1; s <= sub; ++s) {
            std::vector<double> out(after.size());
            const double w = static_cast<double>(s) / static_cast<double>(sub);
            for (size_t p = 0; p < out.size(); ++p) out[p] = before[p] + w * (after[p] - before[p]);
            res.flow.push_back(std::move(out));
        }
        before = after;
    }
    // A tail shorter than one computation step keeps the last flows.
    while (res.flow.size() < inflow.size()) res.flow.push_back(before);
    return res;
}

}  // namespace hydro
