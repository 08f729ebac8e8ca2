// The flow scenario file (.sts): flow limits, minimum flows, and for each volume
// level and month the power value and the routed flow at every reach and hour.
#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"
#include "hydrology/flow_engine.h"

namespace osm {

namespace {

constexpr int NLevels = 6;

// Everything a scenario file holds; read whole, then taken into the model.
struct Scenario {
    std::string title;
    float maxFlow = 0, downRamp = 0, upRamp = 0;
    bool releaseDriven = false;
    std::array<int32_t, 3> changeVol{}, changeLimit{};
    Table1<float> maxDailyChange{"MaxDailyChange"};
    Table2<float> minFlow{"MinFlowMH"};
    Table1<float> volLevel{"VolLevel"};
    Table2<float> powerVal{"PowerVal"};
    Table3<float> qAvg{"QAvgTable"};
    Table<float, 5> qDi{"QDiTable"};
};

bool isNoAction(const std::string& path) {
    std::string name = std::filesystem::path(path).filename().string();
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name == "noaction.sts";
}

int32_t nonNegative(const TextReader& in, int32_t x, const char* what) {
    if (x < 0) in.Fail(std::string(what) + " (0 or more)", NumText(x));
    return x;
}

// Flows, volumes and limits are never negative.
void readHeader(TextReader& in, Scenario& s) {
    s.title = in.Line("the title line");
    in.Text("\"Flow Parameters\"");
    s.maxFlow = in.NonNegative("the maximum flow");
    s.downRamp = in.NonNegative("the down ramp rate");
    s.upRamp = in.NonNegative("the up ramp rate");
    in.Text("\"Release-Driven_Max_Daily_Flow_Change\"");
    s.releaseDriven = in.Flag("the release-driven change flag");
    for (auto& v : s.changeVol) v = nonNegative(in, in.Int32("a change volume"), "a change volume");
    for (auto& v : s.changeLimit) v = nonNegative(in, in.Int32("a change limit"), "a change limit");
    in.SkipLine("the month heads");
    s.maxDailyChange.redim(Bounds{0, 12});
    in.Text("\"MaxDailyFlowChange\"");
    for (int mo = 1; mo <= 12; ++mo) s.maxDailyChange(mo) = in.NonNegative("a maximum daily change");
    in.SkipLine("\"MinDailyFlow_By_Month_And_Hour\"");
    in.SkipLine("the hour heads");
    s.minFlow.redim(Bounds{0, 12}, Bounds{0, 24});
    for (int h = 1; h <= 24; ++h) {
        in.Number("an hour");
        for (int mo = 1; mo <= 12; ++mo) s.minFlow(mo, h) = in.NonNegative("a minimum flow");
    }
    in.SkipLine("the line before the volume levels");
}

void readLevels(TextReader& in, const Main& mn, Scenario& s) {
    in.Text("\"Monthly Release Volumes\"");
    s.volLevel.redim(Bounds{0, NLevels});
    for (int L = 1; L <= NLevels; ++L) {
        s.volLevel(L) = in.Single("a volume level");
        if (s.volLevel(L) <= s.volLevel(L - 1))
            in.Fail("volume levels rising strictly from 0", NumText(s.volLevel(L)));
    }
    in.SkipLine("a blank line");
    in.SkipLine("the column heads");
    s.powerVal.redim(Bounds{0, 12}, Bounds{0, NLevels});
    s.qAvg.redim(Bounds{0, 12}, Bounds{0, NLevels}, Bounds{0, mn.NReaches});
    s.qDi.redim(Bounds{0, 2}, Bounds{0, 12}, Bounds{0, NLevels}, Bounds{0, mn.NReaches}, Bounds{0, 24});
    for (int L = 1; L <= NLevels; ++L)
        for (int mo = 1; mo <= 12; ++mo) {
            if (const int got = in.Int16("the month of level " + NumText(L)); got != mo)
                in.Fail("month " + NumText(mo) + " of level " + NumText(L) + " (records run month by month, level by level)",
                        NumText(got));
            in.Number("the level's volume");
            in.Text("\"Power Value=\"");
            s.powerVal(mo, L) = in.Single("a power value");
            for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
                if (const int got = in.Int16("a reach number"); got != r)
                    in.Fail("reach " + NumText(r) + " (the file's reaches must match the Reach Breaks file)",
                            NumText(got));
                s.qAvg(mo, L, r) = in.NonNegative("a mean flow");
                for (int d = 1; d <= 2; ++d)
                    for (int h = 1; h <= 24; ++h) s.qDi(d, mo, L, r, h) = in.NonNegative("an hourly flow");
            }
        }
}

}  // namespace

void ReadSts(Model& m, const std::string& path, bool headerOnly) {
    TextReader in(path);
    Scenario s;
    readHeader(in, s);
    if (!headerOnly) readLevels(in, m.main, s);

    Physical& p = m.physical;
    p.StsTitle = s.title;
    p.MaxFlowLimit = s.maxFlow;
    p.DownRamp = s.downRamp;
    p.UpRamp = s.upRamp;
    p.ReleaseDrivenChange = s.releaseDriven;
    for (int i = 1; i <= 3; ++i) {
        p.ChangeVol(i) = s.changeVol[static_cast<size_t>(i - 1)];
        p.ChangeLimit(i) = s.changeLimit[static_cast<size_t>(i - 1)];
    }
    p.MaxDailyChange = std::move(s.maxDailyChange);
    p.MinFlowMH = std::move(s.minFlow);
    if (headerOnly) return;
    p.VolLevel = std::move(s.volLevel);
    p.PowerVal = std::move(s.powerVal);
    p.QAvgTable = std::move(s.qAvg);
    p.QDiTable = std::move(s.qDi);
    if (isNoAction(path)) p.PowerValNoAction = p.PowerVal;
}

void WriteSts(const Model& m, const std::string& path) {
    const Main& mn = m.main;
    const Physical& p = m.physical;
    TextWriter out(path);
    out.Line(p.StsTitle);
    out.Text("Flow Parameters").Number(p.MaxFlowLimit).Number(p.DownRamp).Number(p.UpRamp);
    out.EndRecord();
    out.Text("Release-Driven_Max_Daily_Flow_Change").FlagNumber(p.ReleaseDrivenChange);
    for (int i = 1; i <= 3; ++i) out.Number(p.ChangeVol(i));
    for (int i = 1; i <= 3; ++i) out.Number(p.ChangeLimit(i));
    out.EndRecord();
    out.Text("Month");
    for (int mo = 1; mo <= 12; ++mo) out.Text(mn.MonthName(mo));
    out.EndRecord();
    out.Text("MaxDailyFlowChange");
    for (int mo = 1; mo <= 12; ++mo) out.Number(p.MaxDailyChange(mo));
    out.EndRecord();
    out.Text("MinDailyFlow_By_Month_And_Hour");
    out.EndRecord();
    out.Text("HR");
    for (int mo = 1; mo <= 12; ++mo) out.Text(mn.MonthName(mo));
    out.EndRecord();
    for (int h = 1; h <= 24; ++h) {
        out.Number(h);
        for (int mo = 1; mo <= 12; ++mo) out.Number(p.MinFlowMH(mo, h));
        out.EndRecord();
    }
    out.Line("");
    out.Text("Monthly Release Volumes");
    for (int L = 1; L <= NLevels; ++L) out.Number(p.VolLevel(L));
    out.EndRecord();
    out.Line("");
    out.Text("Month").Text("MRV").Text("Reach").Text("QAvg");
    for (int h = 1; h <= 24; ++h) out.Text("QDi_On-" + NumText(h));
    for (int h = 1; h <= 24; ++h) out.Text((h == 24 ? "QDi-" : "QDi_Off-") + NumText(h));
    out.EndRecord();
    auto whole = [](float x) { return static_cast<int>(CInt(x)); };
    for (int L = 1; L <= NLevels; ++L)
        for (int mo = 1; mo <= 12; ++mo) {
            out.Number(mo).Number(whole(p.VolLevel(L))).Text("Power Value=").Number(whole(p.PowerVal(mo, L)));
            for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
                out.Number(r).Number(whole(p.QAvgTable(mo, L, r)));
                for (int d = 1; d <= 2; ++d)
                    for (int h = 1; h <= 24; ++h) out.Number(whole(p.QDiTable(d, mo, L, r, h)));
            }
            out.EndRecord();
        }
    out.Commit();
}

}  // namespace osm
