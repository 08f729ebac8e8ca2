#include <gtest/gtest.h>

#include "core/fault.h"
#include "core/model.h"
#include "core/reaches.h"
#include "core/run_driver.h"
#include "core/start_up.h"
#include "hydrology/flow_engine.h"
#include "support/collect_messages.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;
using osm::test::TestFolder;

namespace {

// Three reaches; a rating of 2 ft per 5000 cfs and 10 ft of width per ft of
// stage; levels of 100,000 acre-feet whose mean flow is 1000 cfs per level, the
// weekday 500 cfs above it; 700 cfs of tributary flow.
struct FlowRiver {
    TestFolder f;
    Model m;
    osm::test::CollectMessages messages;

    FlowRiver() {
        m.messages = &messages;
        BuildMonthsTable(m);
        ReadReachFile(m, f.Write("Reaches.csv",
                                 "\"t\",3,2,3\r\n\"a\",\"b\",\"c\",\"d\"\r\n1,\"Dam\",0,0.5\r\n"
                                 "2,\"Upper\",0.5,10\r\n3,\"Lower\",10,20\r\n"));
        Physical& p = m.physical;
        for (int r = 1; r <= 3; ++r)
            for (int i = 1; i <= 13; ++i)
                p.QTable(i, r) = 5000.0f * float(i - 1), p.StageTable(i, r) = 2.0f * float(i - 1), p.WidthTable(i, r) = 20.0f * float(i - 1);
        p.QAvgTable.redim(Bounds{0, 12}, Bounds{0, 6}, Bounds{0, 3});
        p.QDiTable.redim(Bounds{0, 2}, Bounds{0, 12}, Bounds{0, 6}, Bounds{0, 3}, Bounds{0, 24});
        for (int L = 1; L <= 6; ++L) {
            const float l = float(L);
            p.VolLevel(L) = 100000 * l;
            for (int mo = 1; mo <= 12; ++mo) {
                p.PowerVal(mo, L) = 10 * l, p.PowerValNoAction(mo, L) = 4 * l;
                for (int r = 2; r <= 3; ++r) {
                    p.QAvgTable(mo, L, r) = 1000 * l;
                    for (int h = 1; h <= 24; ++h) p.QDiTable(1, mo, L, r, h) = 1000 * l + 500, p.QDiTable(2, mo, L, r, h) = 1000 * l;
                }
            }
        }
        m.morph.MgLPerGFt3 = static_cast<float>(1000.0 / 28.317);
        m.sediment.OSDSSConc = 5;
        // No storage potential: the sand step passes all sand on.
        for (int z = 1; z <= 3; ++z) m.sediment.SandDest(z) = 0.25f * static_cast<float>(z);
        m.main.CurYr = 70;
        p.DiurnalCode(70) = p.CurDiurnal = 1;
    }

    void month(int iMonth, float vol) {
        SetCalendar(m, 2, iMonth);
        m.physical.MonthlyVol(m.main.MonthIdx) = vol;
        for (int r = 2; r <= 3; ++r) m.morph.TribFlow(m.main.MonthIdx, r) = 700;
        MonthlyFlows(m, 2, iMonth);
    }
    void spikeIn(int iMonth, float vol) {
        SetCalendar(m, 2, iMonth);
        m.physical.SpikeFlag(m.main.MonthIdx) = true;
        m.physical.SpikeVol = vol;
    }
    Model readBack(const std::string& sts) {
        Model n;
        BuildMonthsTable(n);
        ReadReachFile(n, f.File("Reaches.csv"));
        ReadSts(n, f.File(sts), false);
        return n;
    }
};

}  // namespace

TEST(FlowEngine, OnePeriodMonthWorkedByHand) {
    FlowRiver river;
    river.month(7, 250000);  // halfway between levels 2 and 3
    const Physical& p = river.m.physical;
    EXPECT_FLOAT_EQ(p.MeanFlow(2), 3200);      // 2500 + 700
    EXPECT_FLOAT_EQ(p.MaxFlow(2), 3600);       // 3000 + 700*6/7
    EXPECT_FLOAT_EQ(p.MinFlow(2), 3600);       // the weekday only
    EXPECT_FLOAT_EQ(p.MinStage(2), 1.04f);     // the Sunday: 2500 + 100
    EXPECT_FLOAT_EQ(p.MeanWidth(2), 12.8f);
}

TEST(FlowEngine, DecemberWithASpikeAccruesAllThreePeriods) {
    FlowRiver river;
    Physical& p = river.m.physical;
    p.PowerAccum = 0;
    river.spikeIn(12, 50000);
    river.month(12, 300000);
    // The spike runs days 10 and 11; the rest of the release splits by length.
    const double s1 = 9.0 / 31, s2 = 2.0 / 31, s3 = 1 - s1 - s2;
    const double pv1 = s1 * 250000 / (s1 + s3), pv3 = s3 * 250000 / (s1 + s3);
    EXPECT_NEAR(p.AnnualPowerValue, s1 * 6 * pv1 / 1e5 + s2 * 6 * 0.5 + s3 * 6 * pv3 / 1e5, 1e-4);
    EXPECT_FLOAT_EQ(p.MaxFlow(2), 45000);
    EXPECT_NEAR(p.MeanFlow(2), (s1 + s3) * 3200 + s2 * 45000, 0.05);
}

TEST(FlowEngine, SpikeOnTheFirstDayAndSpikeLargerThanTheRelease) {
    FlowRiver river;
    Physical& p = river.m.physical;
    // On the first day the spike leaves a first period of no length, which the
    // sand step cannot divide by: the run stops.
    river.spikeIn(3, 50000);
    p.SpikeStartDay = 1;
    EXPECT_THROW(river.month(3, 300000), Fault);

    p.SpikeVol = 400000;
    river.month(3, 300000);
    ASSERT_EQ(river.messages.seen.size(), 1u);
    EXPECT_EQ(river.messages.seen[0].text,
              "Spike volume > total release volume for this month. Spike flow eliminated.");
    EXPECT_FLOAT_EQ(p.MeanFlow(2), 3700);  // the whole month at 300,000 acre-feet
}

TEST(ScenarioFiles, StsRoundTripNoActionPowerValuesAndAMalformedFile) {
    FlowRiver river;
    Physical& p = river.m.physical;
    p.StsTitle = "Test scenario, peaking";
    p.QDiTable(2, 7, 3, 3, 24) = 4321;
    WriteSts(river.m, river.f.File("noaction.sts"));
    Model n = river.readBack("noaction.sts");
    EXPECT_EQ(n.physical.StsTitle, "Test scenario, peaking");
    EXPECT_EQ(n.physical.QDiTable(2, 7, 3, 3, 24), 4321);
    EXPECT_EQ(n.physical.PowerValNoAction(5, 4), 40);  // from noaction.sts
    WriteSts(n, river.f.File("again.sts"));
    EXPECT_EQ(river.f.Read("again.sts"), river.f.Read("noaction.sts"));

    // Another scenario leaves the no-action values alone; a header-only read the levels.
    p.PowerVal(5, 4) = 99;
    WriteSts(river.m, river.f.File("other.sts"));
    ReadSts(n, river.f.File("other.sts"), true);
    EXPECT_EQ(n.physical.PowerVal(5, 4), 40);
    ReadSts(n, river.f.File("other.sts"), false);
    EXPECT_EQ(n.physical.PowerVal(5, 4), 99);
    EXPECT_EQ(n.physical.PowerValNoAction(5, 4), 40);

    std::string text = river.f.Read("noaction.sts");
    river.f.Write("bad.sts", text.replace(text.find("Flow Parameters\",") + 17, 1, "x"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadSts(n, river.f.File("bad.sts"), false); }), {"bad.sts:", ": expected"}));
    EXPECT_EQ(n.physical.PowerVal(5, 4), 99);
}

TEST(ReleaseFiles, ExpRoundTripAndShortFile) {
    FlowRiver river;
    Physical& p = river.m.physical;
    for (int y = 48; y <= 147; ++y) p.DiurnalCode(y) = 1;
    p.ExpTemp(7) = 14.5f, p.DiurnalCode(147) = 3, p.ExpTempYr(96) = true;
    SaveExp(river.m, river.f.File("a.exp"));
    Model n;
    n.physical.NDiurnal = 3;
    LoadExp(n, river.f.File("a.exp"));
    EXPECT_EQ(n.physical.ExpTemp(7), 14.5f);
    EXPECT_EQ(n.physical.DiurnalCode(147), 3);
    EXPECT_TRUE(n.physical.ExpTempYr(96));
    const std::string text = river.f.Read("a.exp");
    river.f.Write("short.exp", text.substr(0, text.find("2047")));
    EXPECT_THROW(LoadExp(n, river.f.File("short.exp")), FileFault);
    EXPECT_EQ(n.physical.DiurnalCode(147), 3);
}

