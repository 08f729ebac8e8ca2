#include "hydrology/flow_engine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/textfile.h"
#include "core/util.h"
#include "core/workbook.h"
#include "hydrology/stage_tables.h"
#include "sediment/sand_budget.h"

namespace osm {

namespace {

constexpr int NLevels = 6;

template <typename Table>
double levelValue(const LevelPoint& lp, Table t) {
    const double lo = lp.lower == 0 ? 0.0 : t(lp.lower);
    return lo + lp.weight * (t(lp.upper) - lo);
}

}  // namespace

LevelPoint LevelOf(const Physical& p, double x) {
    int j = 0;
    while (j < NLevels && p.VolLevel(j + 1) <= x) ++j;
    LevelPoint lp;
    if (j < NLevels) {
        lp.lower = j;
        lp.upper = j + 1;
        const double v0 = j == 0 ? 0.0 : p.VolLevel(j);
        lp.weight = (x - v0) / (static_cast<double>(p.VolLevel(j + 1)) - v0);
    } else {
        // Above the top level the last segment is extended.
        lp.lower = NLevels - 1;
        lp.upper = NLevels;
        const double v5 = p.VolLevel(NLevels - 1), v6 = p.VolLevel(NLevels);
        lp.weight = 1.0 + (x - v6) / (v6 - v5);
    }
    return lp;
}

double PowerAt(const Physical& p, const LevelPoint& lp, int month, bool noAction) {
    const auto& t = noAction ? p.PowerValNoAction : p.PowerVal;
    return levelValue(lp, [&](int L) { return static_cast<double>(t(month, L)); });
}

double QAvgAt(const Physical& p, const LevelPoint& lp, int month, int r) {
    return levelValue(lp, [&](int L) { return static_cast<double>(p.QAvgTable(month, L, r)); });
}

double QDiAt(const Physical& p, const LevelPoint& lp, int d, int month, int r, int h) {
    return levelValue(lp, [&](int L) { return static_cast<double>(p.QDiTable(d, month, L, r, h)); });
}

// ---------------------------------------------------------------------------
// The month step.

namespace {

struct Periods {
    int count = 1;
    std::array<float, 4> share{0, 1, 0, 0};  // index 1..3
};

Periods periodsOf(Model& m, int iMonth, float& vol) {
    const Physical& p = m.physical;
    Periods per;
    if (!p.SpikeFlag(m.main.MonthIdx)) return per;
    const double vol2 = static_cast<double>(vol) - p.SpikeVol;
    if (vol2 <= 0) {
        ShowMessage(m, "spike eliminated",
                    "Spike volume > total release volume for this month. Spike flow eliminated.");
        return per;
    }
    vol = Sng(vol2);
    const double days = m.main.DaysInMonth(iMonth);
    per.count = 3;
    per.share[1] = Sng((p.SpikeStartDay - 1) / days);
    per.share[2] = Sng(p.SpikeDays / days);
    per.share[3] = Sng(1.0 - per.share[1] - per.share[2]);
    return per;
}

void setDamRowSediment(Model& m) {
    const Sediment& sd = m.sediment;
    double c, prop;
    if (!sd.HistOSDSSConc || m.main.CurYr >= 63) {
        c = sd.OSDSSConc;
        prop = sd.PostOSDPropSand;
    } else {
        // Before the dam closed in 1963 the river's own record applies.
        c = m.physical.HistSedConc(m.main.MonthIdx, m.main.FirstReach);
        prop = sd.PreOSDPropSand;
    }
    const double perGFt3 = m.morph.MgLPerGFt3;
    if (perGFt3 == 0)
        throw Fault("the sediment unit conversion is not set: the tributary flow sheet must be read "
                    "before a run");
    m.sediment.ReachConc(1, 1) = Sng(c * prop / perGFt3);
    m.sediment.ReachConc(1, 2) = Sng((1 - prop) * c / perGFt3);
}

void clearReachOutputs(Physical& p, int r) {
    for (auto* t : {&p.MeanFlow, &p.MaxFlow, &p.MeanStage, &p.MaxStage, &p.MeanWidth, &p.ReachSedLoad})
        (*t)(r) = 0;
    p.SedConc(r, 1) = 0;
    p.SedConc(r, 2) = 0;
    p.MinFlow(r) = 1000000;
    p.MinStage(r) = 1000000;
    for (int h = 1; h <= 24; ++h) p.HourlyStage(h, r, 1) = p.HourlyStage(h, r, 2) = 0;
}

void reachPeriod(Model& m, int r, int iMonth, int i, float share, const LevelPoint& lp) {
    Physical& p = m.physical;
    const int mi = m.main.MonthIdx;
    double maxStage = 0, maxQ = 0, minQ = 1000000;
    double minStage = static_cast<double>(m.main.NSlices) * m.main.SliceThick;
    if (i == 1) clearReachOutputs(p, r);
    const double trib = m.morph.TribFlow(mi, r);
    const double meanQ = i != 2 ? Sng(QAvgAt(p, lp, iMonth, r) + trib) : p.SpikeQ;
    const double meanStage = StageOfQ(m, r, meanQ);
    const double meanWidth = WidthOfStage(m, r, meanStage);
    std::array<std::array<float, 3>, 25> stage{};
    for (int h = 1; h <= 24; ++h) {
        double q1, q2;
        if (i != 2) {
            // The weekday takes six sevenths of the tributary flow, the Sunday one.
            q1 = Sng(QDiAt(p, lp, 1, iMonth, r, h) + trib * 6 / 7);
            q2 = Sng(QDiAt(p, lp, 2, iMonth, r, h) + trib / 7);
            minQ = std::min(minQ, q1);
            maxQ = std::max(maxQ, q1);
        } else {
            q1 = q2 = p.SpikeQ;
            minQ = maxQ = p.SpikeQ;
        }
        stage[h][1] = Sng(StageOfQ(m, r, q1));
        stage[h][2] = Sng(StageOfQ(m, r, q2));
        for (int d = 1; d <= 2; ++d) {
            maxStage = std::max(maxStage, static_cast<double>(stage[h][d]));
            minStage = std::min(minStage, static_cast<double>(stage[h][d]));
        }
    }
    SandStep(m, r, iMonth, share, Sng(meanQ), Sng(maxStage), Sng(maxQ));

    p.MeanFlow(r) = Sng(p.MeanFlow(r) + share * meanQ);
    p.MeanStage(r) = Sng(p.MeanStage(r) + share * meanStage);
    p.MeanWidth(r) = Sng(p.MeanWidth(r) + share * meanWidth);
    p.MaxFlow(r) = Sng(std::max<double>(p.MaxFlow(r), maxQ));
    p.MinFlow(r) = Sng(std::min<double>(p.MinFlow(r), minQ));
    if (maxStage > p.MaxStage(r)) {
        p.MaxStage(r) = Sng(maxStage);
        p.MaxStageWidth(r) = Sng(WidthOfStage(m, r, maxStage));
    }
    if (minStage < p.MinStage(r)) {
        p.MinStage(r) = Sng(minStage);
        p.MinStageWidth(r) = Sng(WidthOfStage(m, r, minStage));
    }
    for (int k = 1; k <= 2; ++k)
        p.SedConc(r, k) = Sng(p.SedConc(r, k) + static_cast<double>(m.sediment.ReachConc(r, k)) * share);
    for (int h = 1; h <= 24; ++h)
        for (int d = 1; d <= 2; ++d)
            p.HourlyStage(h, r, d) = Sng(p.HourlyStage(h, r, d) + static_cast<double>(stage[h][d]) * share);
}

}  // namespace

void MonthlyFlows(Model& m, int iYear, int iMonth) {
    Main& mn = m.main;
    Physical& p = m.physical;
    if (iMonth == 1) {
        const int k = p.DiurnalCode(mn.CurYr);
        if (k < 1 || k > p.NDiurnal)
            throw Fault("year " + NumText(1900 + mn.CurYr) + ": diurnal code " + NumText(k) +
                        " names no scenario; the codes are " + DiurnalCodesText(p));
        if (k != p.CurDiurnal || iYear == 1) {
            const std::string path = InFolder(m, p.DiurnalName(k) + ".sts");
            if (!FileExists(path))
                throw Fault("the scenario file " + path + " of diurnal code " + NumText(k) + " (year " +
                            NumText(1900 + mn.CurYr) + ", named in " + m.main.DiurnalFile + ") is missing");
            ReadSts(m, path, false);
            p.CurDiurnal = static_cast<int16_t>(k);
        }
        p.PowerAccum = 0;
    }
    float vol = p.MonthlyVol(mn.MonthIdx);
    const Periods per = periodsOf(m, iMonth, vol);
    setDamRowSediment(m);
    const double rest = static_cast<double>(per.share[1]) + per.share[3];
    for (int i = 1; i <= per.count; ++i) {
        const float share = per.share[static_cast<size_t>(i)];
        double pv = vol;
        if (i == 2) pv = p.SpikeVol;
        else if (per.count == 3) {
            if (rest <= 0)
                throw Fault("year " + NumText(1900 + mn.CurYr) + ", month " + NumText(iMonth) +
                            ": the spike leaves no days of ordinary release to price");
            pv = share * static_cast<double>(vol) / rest;
        }
        const LevelPoint priced = LevelOf(p, pv);
        p.PowerAccum = Sng(p.PowerAccum + share * std::fabs(PowerAt(p, priced, iMonth, false) -
                                                            PowerAt(p, priced, iMonth, true)));
        if (iMonth == 12) p.AnnualPowerValue = p.PowerAccum;
        // Every period's flows are read at the month's (spike-less) volume.
        const LevelPoint flows = LevelOf(p, vol);
        for (int r = mn.FirstReach; r <= mn.LastReach; ++r) reachPeriod(m, r, iMonth, i, share, flows);
    }
}

}  // namespace osm
