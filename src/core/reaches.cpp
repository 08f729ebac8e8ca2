#include "core/reaches.h"

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"

namespace osm {

namespace {

struct ReachRow {
    std::string label;
    float up = 0, down = 0;
};

}  // namespace

void ReadReachFile(Model& m, const std::string& path) {
    TextReader in(path);
    in.Text("a title");
    const int n = in.Int16("NReaches");
    const int first = in.Int16("FirstReach");
    const int last = in.Int16("LastReach");
    if (n < 1) in.Fail("NReaches of 1 or more", NumText(n));
    if (first < 1 || last > n || first > last)
        throw FileFault(path, 1, "1 <= FirstReach <= LastReach <= NReaches (" + NumText(n) + ")",
                        NumText(first) + ", " + NumText(last));
    for (int i = 0; i < 4; ++i) in.Text("a column head");
    std::vector<ReachRow> rows;
    while (!in.AtEnd()) {
        if (static_cast<int>(rows.size()) == n) {
            const int line = in.line();
            throw FileFault(path, line, "no more rows than NReaches (" + NumText(n) + ")", in.Line("a row"));
        }
        ReachRow row;
        in.Number("a reach number");
        row.label = in.Text("a reach label");
        row.up = in.Single("the upstream mile");
        row.down = in.Single("the downstream mile");
        // Reaches run downstream, each below the one before: a mile in two reaches
        // would belong to the first only.
        if (!(row.down > row.up)) in.Fail("a downstream mile below the upstream mile " + NumText(row.up), NumText(row.down));
        if (!rows.empty() && row.up < rows.back().down)
            in.Fail("an upstream mile of " + NumText(rows.back().down) +
                        " or more, the downstream mile of the reach before (reaches may not overlap)",
                    NumText(row.up));
        rows.push_back(row);
    }
    if (static_cast<int>(rows.size()) < n)
        in.Fail(NumText(n) + " reach rows (NReaches)", NumText(static_cast<int>(rows.size())) + " rows");

    Main& mn = m.main;
    mn.NReaches = static_cast<int16_t>(n);
    mn.FirstReach = static_cast<int16_t>(first);
    mn.LastReach = static_cast<int16_t>(last);
    AllocateReachArrays(m);
    for (int r = 1; r <= n; ++r) {
        const ReachRow& row = rows[static_cast<size_t>(r - 1)];
        mn.ReachLabel(r) = row.label;
        mn.ReachMile(r, 0) = row.up;
        mn.ReachMile(r, 1) = row.down;
        mn.ReachLen(r) = Sng(static_cast<double>(row.down) - row.up);
    }
    mn.IndexReach = mn.FirstReach;
}

int ReachOfMile(const Model& m, double mile) {
    for (int r = 1; r <= m.main.NReaches; ++r)
        if (m.main.ReachMile(r, 0) <= mile && mile < m.main.ReachMile(r, 1)) return r;
    return 0;
}

int ReachOfMileInclusive(const Model& m, double mile) {
    for (int r = 1; r <= m.main.NReaches; ++r)
        if (m.main.ReachMile(r, 0) <= mile && mile <= m.main.ReachMile(r, 1)) return r;
    return 0;
}

void AllocateReachArrays(Model& m) {
    const Main& mn = m.main;
    const Bounds reach{1, mn.NReaches};
    const Bounds reach0{0, mn.NReaches};
    const Bounds run{mn.FirstReach, mn.LastReach};
    const Bounds months{0, 600};
    const Bounds slices0{0, mn.NSlices};
    const Bounds years{47, 98};

    Main& w = m.main;
    w.ReachLabel.redim(reach);
    w.ReachMile.redim(reach, Bounds{0, 1});
    w.ReachLen.redim(reach);

    Physical& p = m.physical;
    for (auto* t : {&p.MeanFlow, &p.MaxFlow, &p.MinFlow, &p.MeanStage, &p.MaxStage, &p.MinStage,
                    &p.MeanWidth, &p.MaxStageWidth, &p.MinStageWidth, &p.ReachSedLoad})
        t->redim(reach);
    p.HourlyStage.redim(Bounds{0, 24}, reach, Bounds{0, 2});
    p.SedConc.redim(reach, Bounds{0, 2});
    p.HistSedConc.redim(months, reach0);
    p.HistSedSeen.redim(months, reach0);
    for (auto* t : {&p.QTable, &p.StageTable, &p.WidthTable}) t->redim(Bounds{1, 13}, reach);
    p.SliceArea.redim(Bounds{1, mn.NSlices}, reach);
    p.SliceWidth.redim(slices0, reach);
    p.SliceQ.redim(slices0, reach);
    p.WetArea.redim(reach);
    p.IndexSlice.redim(Bounds{0, 4}, reach);
    p.WaterTemp.redim(reach0);
    p.ObsTemp.redim(months, reach0);  // reach 0 takes readings of a mile outside the river
    p.ObsTempSeen.redim(months, reach0);

    Sediment& s = m.sediment;
    s.SandStore.redim(slices0, run, Bounds{1, 3});
    s.ReachConc.redim(reach, Bounds{0, 2});
    s.BandSand.redim(Bounds{1, 4}, run, Bounds{1, 2});
    s.BandPot.redim(Bounds{1, 4}, run, Bounds{1, 2});
    s.SandBalance.redim(run);
    s.PoolPotRef.redim(run);
    s.BeachMax.redim(Bounds{1, 3}, run);
    s.BeachCurve.redim(Bounds{0, 50}, Bounds{1, 3}, run);
    s.ZoneSand.redim(run, Bounds{1, 3});
    s.SandPot.redim(slices0, run, Bounds{1, 3});
    s.CoarseVol.redim(Bounds{1, 12}, reach0);
    s.BeachLowSlice.redim(run);
    s.BeachHighSlice.redim(run);
    s.BeachBasePot.redim(run);
    m.morph.TribName.redim(reach0);

    // Sheet rows of a mile outside the river land in reach 0, which nothing reads.
    Morph& mo = m.morph;
    mo.TribQ.redim(months, reach0);
    mo.TribQBase.redim(months, reach0);
    mo.TribFlow.redim(months, reach);
    mo.TribSedConc.redim(months, reach0, Bounds{0, 2});
    mo.TribSedConcBase.redim(months, reach0, Bounds{0, 2});
    mo.SubstrateTable.redim(Bounds{0, 5}, Bounds{0, mo.MaxQLevels}, reach0);
    mo.SliceSubstrate.redim(Bounds{0, 5}, Bounds{1, mn.NSlices}, reach);
    mo.NBackwater.redim(reach0);
    mo.NCM.redim(reach0);
    mo.NEddy.redim(reach0, Bounds{0, 3});
    mo.TribBasinArea.redim(reach0);
    mo.TribHabLen.redim(reach);
    mo.TribHabIndex.redim(Bounds{1, 3}, reach);
    mo.TribHabCurve.redim(Bounds{1, 3}, reach, Bounds{0, 20});

    Production& pr = m.production;
    for (auto* t : {&pr.DO, &pr.SecchiDepth, &pr.AlgaeBiomass, &pr.AlgaeTotal, &pr.NoonStage,
                    &pr.DetLabile, &pr.DetRefract, &pr.BenthosTotal, &pr.BenthosEq, &pr.Drift,
                    &pr.MinWidthPrev, &pr.VegBugProd, &pr.VegDetritus})
        t->redim(reach0);  // row r - 1 of the first reach
    pr.AlgaeSlice.redim(slices0, reach);
    pr.AlgaeClass.redim(Bounds{1, 6}, reach);
    pr.DetBudget.redim(Bounds{1, 6}, reach);
    pr.Benthos.redim(Bounds{1, 2}, reach);
    pr.VegCover.redim(Bounds{0, MaxVegTypes}, slices0, reach);
    pr.VegDepthDose.redim(Bounds{0, MaxVegTypes}, slices0, reach);
    pr.SliceDryScore.redim(slices0, reach);
    pr.SliceWaterDepth.redim(slices0, reach);
    pr.VegArea.redim(Bounds{0, MaxVegTypes}, reach);
    pr.ObsProd.redim(months, reach0, Bounds{0, 6});  // reach 0: sites off the river

    AllocatePopReachTables(m.popsubs, mn.NReaches);

    Rec& rc = m.rec;
    rc.BeachCap.redim(Bounds{1, 3}, reach);
    rc.ReachCampUse.redim(Bounds{1, 3}, reach0, Bounds{0, 12});  // reach 0: camps off the river
    rc.ReachCampNum.redim(Bounds{0, 3}, reach);
    rc.ReachEffort.redim(reach);
    rc.CatchRch.redim(reach);
    rc.CPERch.redim(reach);
    rc.EffortRch.redim(reach);

    m.graphs.DumpReach.redim(run);
}

std::vector<std::string> FillReachList(const Model& m) {
    std::vector<std::string> list;
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) {
        list.push_back(NumText(r - m.main.FirstReach + 1) + " / " + m.main.ReachLabel(r) +
                       " / DS_RM = " +
                       Format(m.main.ReachMile(r, 1) - HarlFerryMile, "0"));
    }
    return list;
}

StatusReachList SetStatusReachList(const Model& m) {
    StatusReachList s;
    s.reaches = FillReachList(m);
    for (int i = 1; i <= 4; ++i) s.indexStages[static_cast<size_t>(i - 1)] = NumText(m.main.IndexQ(i));
    return s;
}

}  // namespace osm
