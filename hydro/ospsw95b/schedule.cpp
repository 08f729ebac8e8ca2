// The month's hourly release as a linear programme.
//
// Unknowns: the release q(d,h) of each day type d (weekday, Sunday) and hour h.
// Power is a concave function of the release (head falls as the tailwater
// rises, and water above the turbine capacity spills), written as a
// piecewise-linear curve with breakpoints Q0 = 0 < Q1 < ... < QK. Each q(d,h)
// is split into segment flows s(d,h,k) in [0, Q(k+1) - Q(k)], so that
//   q(d,h) = sum_k s(d,h,k),  power(d,h) = sum_k slope(k) s(d,h,k).
// Because the slopes fall from segment to segment, an optimum fills the
// segments in order and the sum is the curve's exact value.
//
//   maximise   sum_d n(d) sum_h price(d,h) sum_k slope(k) s(d,h,k)
//   subject to sum_d n(d) sum_h q(d,h) = V                 month's volume
//              minFlow(h) <= q(d,h) <= maxFlow              flow limits
//              -down <= q(d,h) - q(d,h-1) <= up             ramps, hour 24 before hour 1
//              -down <= q(d',1) - q(d,24) <= up             ramps at midnight between
//                                                           a weekday and a Sunday
//              lo(d) <= q(d,h) <= hi(d), hi(d) - lo(d) <= D daily change
//
// n(d) counts the days of each type in the month. The ramp rows close the day
// on itself, since the schedule is the same every day of its type (and the
// routing repeats it in cycles), and join the weekday to the Sunday both ways,
// as Saturday runs into Sunday and Sunday into Monday. The programme is solved with GLPK's simplex method.
#include "ospsw95b/schedule.h"

#include <glpk.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace hydro {

double PowerCurve::At(double flow) const {
    if (q.size() < 2) return 0;
    size_t k = 1;
    while (k + 1 < q.size() && flow > q[k]) ++k;
    const double f = (flow - q[k - 1]) / (q[k] - q[k - 1]);
    return mw[k - 1] + f * (mw[k] - mw[k - 1]);
}

double ScheduleValue(const Problem& p, const std::vector<std::vector<double>>& q) {
    double v = 0;
    for (size_t d = 0; d < p.days.size(); ++d)
        for (int h = 0; h < p.hours; ++h)
            v += p.days[d].count * p.days[d].price[static_cast<size_t>(h)] *
                 p.curve.At(q[d][static_cast<size_t>(h)]);
    return v;
}

namespace {

double dayHours(const Problem& p) {
    double n = 0;
    for (const DayType& d : p.days) n += d.count * p.hours;
    return n;
}

Schedule flatSchedule(const Problem& p, std::string note) {
    Schedule s;
    const double mean = p.volume / dayHours(p);
    s.q.assign(p.days.size(), std::vector<double>(static_cast<size_t>(p.hours), mean));
    s.value = ScheduleValue(p, s.q);
    s.flat = true;
    s.note = std::move(note);
    return s;
}

// Column and row numbering of the programme (GLPK counts from 1).
struct Layout {
    int days, hours, segs;
    int seg(int d, int h, int k) const { return 1 + (d * hours + h) * segs + k; }
    int hi(int d) const { return 1 + days * hours * segs + 2 * d; }
    int lo(int d) const { return hi(d) + 1; }
    int cols() const { return days * hours * segs + 2 * days; }
    int flowRow(int d, int h) const { return 1 + d * hours + h; }
    int rampRow(int d, int h) const { return 1 + days * hours + d * hours + h; }
    int hiRow(int d, int h) const { return 1 + 2 * days * hours + d * hours + h; }
    int loRow(int d, int h) const { return 1 + 3 * days * hours + d * hours + h; }
    int changeRow(int d) const { return 1 + 4 * days * hours + d; }
    int volumeRow() const { return 1 + 4 * days * hours + days; }
    // Midnight from day type d into the other: q(other, 1) - q(d, 24).
    int crossRow(int d) const { return volumeRow() + 1 + d; }
    int rows() const { return volumeRow() + (days == 2 ? 2 : 0); }
};

struct Lp {
    glp_prob* p = glp_create_prob();
    ~Lp() { glp_delete_prob(p); }
};

}  // namespace

Schedule SolveSchedule(const Problem& p) {
    const double n = dayHours(p);
    if (n <= 0) throw std::invalid_argument("a month without days");
    double minVolume = 0;
    for (const DayType& d : p.days)
        for (int h = 0; h < p.hours; ++h) minVolume += d.count * p.minFlow[static_cast<size_t>(h)];
    if (p.volume >= p.maxFlow * n) return flatSchedule(p, "volume at or above the maximum flow");
    if (p.volume <= minVolume) return flatSchedule(p, "volume at or below the minimum flows");

    const Layout lay{static_cast<int>(p.days.size()), p.hours, static_cast<int>(p.curve.q.size()) - 1};
    glp_term_out(GLP_OFF);
    Lp lp;
    glp_set_obj_dir(lp.p, GLP_MAX);
    glp_add_cols(lp.p, lay.cols());
    glp_add_rows(lp.p, lay.rows());
    std::vector<int> ia{0}, ja{0};
    std::vector<double> ar{0};
    auto put = [&](int row, int col, double v) {
        ia.push_back(row);
        ja.push_back(col);
        ar.push_back(v);
    };
    for (int d = 0; d < lay.days; ++d) {
        const DayType& day = p.days[static_cast<size_t>(d)];
        glp_set_col_bnds(lp.p, lay.hi(d), GLP_LO, 0, 0);
        glp_set_col_bnds(lp.p, lay.lo(d), GLP_LO, 0, 0);
        for (int h = 0; h < p.hours; ++h) {
            const int next = (h + 1) % p.hours;
            for (int k = 0; k < lay.segs; ++k) {
                const size_t uk = static_cast<size_t>(k);
                const double width = p.curve.q[uk + 1] - p.curve.q[uk];
                const double slope = (p.curve.mw[uk + 1] - p.curve.mw[uk]) / width;
                const int c = lay.seg(d, h, k);
                glp_set_col_bnds(lp.p, c, GLP_DB, 0, width);
                glp_set_obj_coef(lp.p, c, day.count * day.price[static_cast<size_t>(h)] * slope);
                put(lay.flowRow(d, h), c, 1);
                put(lay.rampRow(d, h), c, 1);
                if (p.hours > 1) put(lay.rampRow(d, next), c, -1);
                put(lay.hiRow(d, h), c, -1);
                put(lay.loRow(d, h), c, 1);
                put(lay.volumeRow(), c, day.count);
            }
            const double minQ = p.minFlow[static_cast<size_t>(h)];
            glp_set_row_bnds(lp.p, lay.flowRow(d, h), minQ < p.maxFlow ? GLP_DB : GLP_FX, minQ, p.maxFlow);
            // Row rampRow(d,h) is q(d,h) - q(d,h-1): each hour enters its own row and, negated, the next one's.
            glp_set_row_bnds(lp.p, lay.rampRow(d, h), GLP_DB, -p.downRamp, p.upRamp);
            put(lay.hiRow(d, h), lay.hi(d), 1);
            glp_set_row_bnds(lp.p, lay.hiRow(d, h), GLP_LO, 0, 0);
            put(lay.loRow(d, h), lay.lo(d), -1);
            glp_set_row_bnds(lp.p, lay.loRow(d, h), GLP_LO, 0, 0);
        }
        put(lay.changeRow(d), lay.hi(d), 1);
        put(lay.changeRow(d), lay.lo(d), -1);
        glp_set_row_bnds(lp.p, lay.changeRow(d), GLP_UP, 0, p.maxDailyChange);
    }
    glp_set_row_bnds(lp.p, lay.volumeRow(), GLP_FX, p.volume, p.volume);
    if (lay.days == 2)
        for (int d = 0; d < 2; ++d) {
            for (int k = 0; k < lay.segs; ++k) {
                put(lay.crossRow(d), lay.seg(1 - d, 0, k), 1);
                put(lay.crossRow(d), lay.seg(d, p.hours - 1, k), -1);
            }
            glp_set_row_bnds(lp.p, lay.crossRow(d), GLP_DB, -p.downRamp, p.upRamp);
        }
    glp_load_matrix(lp.p, static_cast<int>(ia.size()) - 1, ia.data(), ja.data(), ar.data());
    glp_scale_prob(lp.p, GLP_SF_AUTO);
    glp_smcp parm;
    glp_init_smcp(&parm);
    parm.msg_lev = GLP_MSG_OFF;
    parm.presolve = GLP_ON;
    const int rc = glp_simplex(lp.p, &parm);
    if (rc == GLP_ENOPFS || (rc == 0 && glp_get_status(lp.p) == GLP_NOFEAS))
        return flatSchedule(p, "no schedule meets the limits");
    if (rc != 0 || glp_get_status(lp.p) != GLP_OPT)
        throw std::runtime_error("the simplex method failed (GLPK code " + std::to_string(rc) + ")");

    Schedule s;
    s.q.assign(p.days.size(), std::vector<double>(static_cast<size_t>(p.hours)));
    double lo = 1e300, hi = -1e300;
    for (int d = 0; d < lay.days; ++d)
        for (int h = 0; h < p.hours; ++h) {
            const double q = glp_get_row_prim(lp.p, lay.flowRow(d, h));
            s.q[static_cast<size_t>(d)][static_cast<size_t>(h)] = q;
            lo = std::min(lo, q);
            hi = std::max(hi, q);
        }
    if (hi - lo < 0.5) return flatSchedule(p, "");
    s.value = ScheduleValue(p, s.q);
    return s;
}

PowerCurve MakePowerCurve(const Plant& plant, double reservoirElev, double topFlow, double stepCfs) {
    PowerCurve c;
    auto power = [&](double q) {
        const double tail = plant.tailBase + plant.tailCoef * std::pow(q / 1000.0, plant.tailExp);
        const double head = std::max(0.0, reservoirElev - tail);
        // 11.81 cfs falling one foot at full efficiency make one kilowatt.
        return plant.efficiency * std::min(q, plant.turbineCapacity) * head / 11.81 / 1000.0;
    };
    const int steps = std::max(1, static_cast<int>(std::ceil(topFlow / stepCfs)));
    for (int i = 0; i <= steps; ++i) {
        const double q = std::min(topFlow, i * stepCfs);
        c.q.push_back(q);
        c.mw.push_back(power(q));
    }
    return c;
}

}  // namespace hydro
