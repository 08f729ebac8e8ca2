// The release policy editors' arithmetic, the monthly pattern editor's series,
// and the release policy file.
#include <gtest/gtest.h>

#include <cmath>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "hydrology/flow_engine.h"
#include "hydrology/monthly_patterns.h"
#include "hydrology/policy_file.h"
#include "hydrology/release_policy.h"
#include "support/fault_text.h"
#include "support/small_model.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;

namespace {

// Levels of 200,000 acre-feet; power 101 per level, the no-action scenario 40,
// so the loss grows by 61 for every 200,000 acre-feet.
Physical levels() {
    Model m;
    Physical p = m.physical;
    for (int L = 1; L <= 6; ++L)
        for (int mo = 1; mo <= 12; ++mo) {
            p.VolLevel(L) = 200000.0f * float(L);
            p.PowerVal(mo, L) = 101.0f * float(L);
            p.PowerValNoAction(mo, L) = 40.0f * float(L);
        }
    return p;
}

}  // namespace

TEST(ReleasePolicy, AnnualLossRoundsEachMonthHalfToEvenAndNoActionIsZero) {
    Physical p = levels();
    // 0.305 of each reference volume: jan 335.5 -> 336, apr 251.625 -> 252,
    // may 266.875 -> 267, nov 274.5 -> 274 (half to even), ...: 3447, not 3446.5.
    EXPECT_EQ(GetAnnLoss(p), 3447.0);
    const PowerFigures f = MonthPower(p, 3, 2);
    EXPECT_EQ(f.value, 202.0);
    EXPECT_EQ(f.loss, 122.0);
    p.PowerValNoAction = p.PowerVal;
    EXPECT_EQ(GetAnnLoss(p), 0.0);
}

TEST(ReleasePolicy, SpikeVolumesAgainstThePowerplant) {
    // 45,000 cfs for 2 days: 2*86400*45000/43560 acre-feet, the plant 124,958.7 of them.
    const SpikeVolumes v = SpikeVolume(45000, 2);
    EXPECT_NEAR(v.required, 178512.3967, 1e-3);
    EXPECT_NEAR(v.excess, 53553.7190, 1e-3);
    EXPECT_NEAR(SpikeVolume(31500, 3).excess, 0.0, 1e-9);
    Physical p = levels();
    SetSpikeFlow(p, 45000, 2, 10);
    EXPECT_EQ(p.SpikeVol, 178512.0f);  // the volume as shown, whole acre-feet
    EXPECT_EQ(p.SpikeQ, 45000.0f);
    EXPECT_EQ(p.SpikeDays, 2);
    EXPECT_EQ(p.SpikeStartDay, 10);
}

TEST(ReleasePolicy, SpikeMonthsListedAddedAndCleared) {
    int y = 0, mo = 0;
    Get_iYr_iMon(13, y, mo);
    EXPECT_EQ(y * 100 + mo, 4901);
    Get_iYr_iMon(12, y, mo);  // December reads as month 0 of the next year
    EXPECT_EQ(y * 100 + mo, 4900);
    Physical p = levels();
    AddSpike(p, 96, 3);
    AddSpike(p, 48, 12);
    EXPECT_TRUE(p.SpikeFlag(12));
    EXPECT_TRUE(p.SpikeFlag(579));
    const std::vector<std::string> lines = SpikeListLines(p);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "Year: 48 Month: 12");
    EXPECT_EQ(lines[1], "Year: 96 Month: 3");
    EXPECT_TRUE(ClearSpikeLine(p, lines[1]));
    EXPECT_FALSE(p.SpikeFlag(579));
    EXPECT_FALSE(ClearSpikeLine(p, "no month here"));
    EXPECT_TRUE(Holds(FaultText([&] { AddSpike(p, 98, 1); }), {"1948 to 1997", "year 98"}));
    EXPECT_TRUE(Holds(FaultText([&] { AddSpike(p, 60, 13); }), {"month 13"}));
}

TEST(ReleasePolicy, HourlyRangeOverBothDayTypesAndAllReaches) {
    Physical p = levels();
    p.QDiTable.redim(Bounds{0, 2}, Bounds{0, 12}, Bounds{0, 6}, Bounds{0, 3}, Bounds{0, 24});
    for (int h = 1; h <= 24; ++h) p.QDiTable(1, 5, 2, 2, h) = 8000, p.QDiTable(2, 5, 2, 3, h) = 9000;
    p.QDiTable(1, 5, 2, 3, 7) = 21000;
    const FlowRange r = GetYMax(p, 5, 2, 2, 3);
    EXPECT_EQ(r.yMax, 21000.0);
    EXPECT_EQ(r.yMin, 0.0);  // reach 2's Sunday and reach 3's weekday flows are 0
}

TEST(MonthlyPatterns, TributarySedimentRatingsAndTheSummerCurve) {
    EXPECT_NEAR(Quennased(100, true), 81773.148, 1e-2);
    EXPECT_NEAR(Quennased(100, false), 70899.463, 1e-2);
    EXPECT_NEAR(TSRsed(100, 6, true), 3927.280, 1e-2);
    EXPECT_NEAR(TSRsed(100, 10, false), 58005.545, 1e-2);  // months 7..10: the monsoon curve
    EXPECT_NEAR(TSRsed(100, 11, false), 21828.205, 1e-2);
}

// The small river's record: every year 8,250,000 acre-feet, months of 600,000
// plus 50,000 times ((month - 1) mod 5).
class PatternRiver : public ::testing::Test {
protected:
    std::unique_ptr<osm::test::SmallModel> s = osm::test::StartSmallModel(true);
    Model& m = s->m;
    MonthPattern rising() {
        MonthPattern p{};
        for (int mo = 1; mo <= 12; ++mo) p[size_t(mo)] = mo;
        return p;
    }
};

TEST_F(PatternRiver, DamSeriesFromPatternRelativeShapeAndRepeatedYear) {
    Physical& p = m.physical;
    ApplyDamSequence(m, SeqPattern, rising());
    EXPECT_EQ(p.MonthlyVol(1), 1.0f);
    EXPECT_EQ(p.MonthlyVol(600), 12.0f);  // every year alike
    EXPECT_EQ(p.MonthlyVol(279), 3.0f);

    p.RelativeSeasonal = true;
    p.MaxRelSeasonAdjust = 9000000;
    ApplyDamSequence(m, SeqRecord, rising());
    EXPECT_FLOAT_EQ(p.MonthlyVol(13), 8250000.0f / 78);  // January of 1949 scaled to the year
    EXPECT_FLOAT_EQ(p.MonthlyVol(24), 8250000.0f * 12 / 78);
    p.MaxRelSeasonAdjust = 8000000;  // every year above the limit keeps its own shape
    ApplyDamSequence(m, SeqRecord, rising());
    EXPECT_EQ(p.MonthlyVol(13), 600000.0f);
    EXPECT_EQ(p.MonthlyVol(17), 800000.0f);

    ApplyDamSequence(m, SeqPattern, rising());
    const MonthPattern year = GetRepYrData(m, 1, 60);  // from the record, not the volumes in force
    EXPECT_EQ(year[5], 800000.0);
    EXPECT_EQ(p.MonthlyVol(5), 5.0f);
    EXPECT_TRUE(Holds(FaultText([&] { GetRepYrData(m, 1, 98); }), {"between 48 and 97"}));
}

TEST_F(PatternRiver, TributaryPatternBringsItsSedimentAndTheRunningSum) {
    Morph& mo = m.morph;
    mo.NTrib = 2;
    mo.TribReach(1) = 2;
    mo.TribReach(2) = 3;
    MonthPattern q{};
    for (int i = 1; i <= 12; ++i) q[size_t(i)] = 100;
    ApplyTribSequence(m, 3, SeqPattern, q);
    ApplyTribSequence(m, 2, SeqRepeatYear, rising());
    const double perGFt3 = mo.MgLPerGFt3;
    EXPECT_FLOAT_EQ(mo.TribSedConc(10, 3, 2), float(TSRsed(100, 10, false) / perGFt3));
    EXPECT_FLOAT_EQ(mo.TribSedConc(11, 3, 2), float(TSRsed(100, 11, false) / perGFt3));
    EXPECT_EQ(mo.TribSedConc(10, 2, 1), 0.0f);  // a repeated year leaves the sediment
    EXPECT_EQ(mo.TribFlow(598, 2), 10.0f);      // October
    EXPECT_EQ(mo.TribFlow(598, 3), 110.0f);
    ApplyTribSequence(m, 3, SeqRecord, q);  // back to the sheet, which is empty
    EXPECT_EQ(mo.TribFlow(598, 3), 10.0f);
    EXPECT_TRUE(Holds(FaultText([&] { mo.NTrib = 1, ApplyTribSequence(m, 3, SeqPattern, q); }), {"no tributary series 3"}));
}

TEST_F(PatternRiver, PlanningTraceCarriesItsSpikeSizeAndFlagColumn) {
    std::string trace = "YR,MNTH,Run1,Run2\r\n", flags = "Run1,Run2\r\n";
    for (int i = 1; i <= 600; ++i) {
        trace += std::to_string(48 + (i - 1) / 12) + "," + std::to_string((i - 1) % 12 + 1) + ",1000," +
                 std::to_string(2000 + i) + "\r\n";
        flags += std::string(i == 3 ? "-1" : "0") + "," + (i == 579 ? "-1" : "0") + "\r\n";
    }
    s->folder.Write("riverware.xls/Spike_Traces.csv", trace);
    s->folder.Write("riverware.xls/spike.csv", flags);
    s->folder.Write("riverware.xls/RunList.csv", "Nruns,RunType\r\n1,0\r\n2,40\r\n");
    const std::vector<TraceInfo> runs = ReadRunList(m.main.RiverwareXls);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[1].spikeKcfs, 40);
    LoadReleaseTrace(m, "Spike_Traces$", "Run2");
    const Physical& p = m.physical;
    EXPECT_EQ(p.MonthlyVol(600), 2600.0f);
    EXPECT_EQ(p.MonthlyVolField, "Run2");
    EXPECT_EQ(p.TraceSpikeKcfs, 40);
    EXPECT_EQ(p.SpikeTrace, 1);  // the second flag column, counted from 0
    LoadSpikeFlags(m, m.main.RiverwareXls, "spike$");
    EXPECT_TRUE(p.SpikeFlag(579));
    EXPECT_FALSE(p.SpikeFlag(3));
    // The policy file names the trace, and a later load finds the same record.
    SavePolicy(m, s->folder.File("trace.pol"));
    EXPECT_NE(s->folder.Read("trace.pol").find("release-trace Spike_Traces$ Run2"), std::string::npos);
    LoadReleaseTrace(m, "Historical$", "");
    EXPECT_EQ(p.TraceSpikeKcfs, 0);
    LoadPolicy(m, s->folder.File("trace.pol"));
    EXPECT_EQ(p.MonthlyVol(600), 2600.0f);
    EXPECT_EQ(p.TraceSpikeKcfs, 40);
}

// ---------------------------------------------------------------------------
// The policy file

class PolicyFile : public PatternRiver {
protected:
    std::string write(const std::string& text) { return s->folder.Write("test.pol", text); }
};

TEST_F(PolicyFile, HandWrittenFileWithCommentsRangesAndNewScenario) {
    // A scenario not listed yet joins the list when its file is in the folder.
    s->folder.Write("made.sts", s->folder.Read("steady.sts"));
    LoadPolicy(m, write("# a policy\n\n"
                        "diurnal 1948-2047 noaction   # the base\n"
                        "diurnal 1960-1962 steady\n"
                        "diurnal 1990 made\n"
                        "release-trace \"Historical$\"\n"
                        "release-repeat 1950\n"
                        "spike-flow 40000 3 5\n"
                        "spikes 1996-03 1950-12\n"
                        "spikes 1997-04   # another\n"
                        "exp-temp-pattern 1 2 3 4 5 6 7 8 9 10 11 12\n"
                        "exp-temp-years 1990-1992 2000\n"));
    const Physical& p = m.physical;
    EXPECT_EQ(p.DiurnalCode(59), 1);
    EXPECT_EQ(p.DiurnalCode(61), 2);
    EXPECT_EQ(p.DiurnalName(3), "made");
    EXPECT_EQ(p.NDiurnal, 3);
    EXPECT_EQ(p.DiurnalCode(90), 3);
    EXPECT_EQ(p.DiurnalCode(147), 1);
    EXPECT_EQ(p.SeqType(1), SeqRepeatYear);
    EXPECT_EQ(p.MonthlyVol(600), 650000.0f);  // December of 1950's record, in every year
    EXPECT_EQ(p.SpikeQ, 40000.0f);
    EXPECT_EQ(p.SpikeVol, float(ShownVolume(SpikeVolume(40000, 3).required)));
    EXPECT_TRUE(p.SpikeFlag(579) && p.SpikeFlag(36) && p.SpikeFlag(592));
    int flagged = 0;
    for (int i = 1; i <= 600; ++i) flagged += p.SpikeFlag(i);
    EXPECT_EQ(flagged, 3);
    EXPECT_EQ(p.ExpTemp(12), 12.0f);
    EXPECT_TRUE(p.ExpTempYr(91) && p.ExpTempYr(100));
    EXPECT_FALSE(p.ExpTempYr(93));
}

TEST_F(PolicyFile, SavedPolicyReadsBackToTheSameTablesAndText) {
    Physical& p = m.physical;
    for (int y = 70; y <= 80; ++y) p.DiurnalCode(y) = 2;
    p.DiurnalCode(147) = 2;
    AddSpike(p, 84, 6);
    SetSpikeFlow(p, 50000, 2, 1);
    p.ExpTemp(7) = 13.25f;
    p.ExpTempYr(48) = p.ExpTempYr(120) = true;
    ApplyDamSequence(m, SeqPattern, rising());
    p.SeqType(1) = SeqPattern;
    const std::string path = s->folder.File("saved.pol");
    SavePolicy(m, path);
    const std::string text = s->folder.Read("saved.pol");
    EXPECT_NE(text.find("diurnal 1970-1980 steady"), std::string::npos);
    EXPECT_NE(text.find("spikes 1984-06"), std::string::npos);

    auto t = osm::test::StartSmallModel(true);
    LoadPolicy(t->m, path);
    const Physical& q = t->m.physical;
    for (int y = 48; y <= 147; ++y) {
        EXPECT_EQ(q.DiurnalCode(y), p.DiurnalCode(y)) << y;
        EXPECT_EQ(q.ExpTempYr(y), p.ExpTempYr(y)) << y;
    }
    for (int i = 1; i <= 600; ++i) {
        EXPECT_EQ(q.SpikeFlag(i), p.SpikeFlag(i)) << i;
        EXPECT_EQ(q.MonthlyVol(i), p.MonthlyVol(i)) << i;
    }
    EXPECT_EQ(q.ExpTemp(7), 13.25f);
    EXPECT_EQ(q.SpikeVol, p.SpikeVol);
    EXPECT_EQ(q.SpikeStartDay, 1);
    SavePolicy(t->m, s->folder.File("again.pol"));
    EXPECT_EQ(s->folder.Read("again.pol"), text);
}

TEST_F(PolicyFile, BadContentNamesFileLineAndWhatWasExpectedAndAppliesNothing) {
    const Physical before = m.physical;
    struct Case {
        const char* text;
        std::initializer_list<const char*> says;
    };
    const Case cases[] = {
        {"diurnal 1950 steady\nflows 3\n", {"test.pol:2:", "a keyword", "flows"}},
        {"diurnal 1950-1940 steady\n", {"test.pol:1:", "a range", "1950-1940"}},
        {"diurnal 2048 steady\n", {"1948 to 2047", "2048"}},
        {"diurnal 1950 nowhere\n", {"a scenario of diurnal_scenarios.txt", "nowhere"}},
        {"diurnal 1950 steady\n\nexp-temp-pattern 1 2 3\n", {"test.pol:3:", "month 4", "the end of the line"}},
        {"diurnal 1950 steady\nspike-flow 45000 2 10 7\n", {"test.pol:2:", "the end of the line or a # comment", "7"}},
        {"spike-flow 45000 20 10\n", {"first spike day", "1 to 9", "10"}},
        {"spikes 1996-13\n", {"YEAR-MONTH", "1996-13"}},
        {"spike-flow 45000 2 10\nspike-flow 45000 2 10\n", {"test.pol:2:", "one spike-flow line"}},
        {"diurnal 1950 steady\nrelease-trace Nothing$ Run1\n", {"test.pol:2:", "release trace", "Nothing$"}},
        {"release-pattern 1 2 x\n", {"monthly volume", "month 3", "x"}},
    };
    for (const Case& c : cases) {
        const std::string text = FaultText([&] { LoadPolicy(m, write(c.text)); });
        EXPECT_TRUE(Holds(text, c.says)) << c.text;
    }
    EXPECT_EQ(m.physical.DiurnalCode(50), before.DiurnalCode(50));
    EXPECT_EQ(m.physical.SpikeQ, before.SpikeQ);
    EXPECT_EQ(m.physical.MonthlyVolSheet, before.MonthlyVolSheet);
}
