#include "sediment/physical_parameters.h"

#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"
#include "sediment/storage_potential.h"

namespace osm {

namespace {

// The parameters the file holds, read whole before any is taken.
struct PhysicalParameters {
    float heatEx = 0;
    Table2<float> relSeason{"RelSeason"};
    float maxRelSeasonAdjust = 0;
    bool relativeSeasonal = false;
    Sediment sediment;
};

}  // namespace

void ReadPhyFile(Model& m, const std::string& path) {
    TextReader in(path);
    PhysicalParameters p;
    Sediment& s = p.sediment;
    s = m.sediment;
    in.Text("the key \"HeatEx\"");
    p.heatEx = in.Single("HeatEx");
    const int nTrib = m.morph.NTrib;
    // One seasonal pattern for the dam and one for each tributary of the Fans sheet.
    const std::string patterns = " (" + NumText(nTrib + 1) + " seasonal pattern" + (nTrib > 0 ? "s" : "") +
                                 ": one for the dam and one for each of the " + NumText(nTrib) +
                                 " tributaries of the Fans sheet)";
    p.relSeason.redim(Bounds{0, nTrib}, Bounds{1, 12});
    for (int i = 0; i <= nTrib; ++i) {
        in.Number("the index of seasonal pattern " + NumText(i) + patterns);
        for (int mo = 1; mo <= 12; ++mo) p.relSeason(i, mo) = in.Single("a seasonal pattern value");
    }
    if (const std::string key = in.Text("the key \"MaxRelSeasonAdjust\""); IsNumber(key))
        in.Fail("the key \"MaxRelSeasonAdjust\" after the last seasonal pattern" + patterns, key);
    p.maxRelSeasonAdjust = in.Single("MaxRelSeasonAdjust");
    auto value = [&in](const char* key) {
        in.Text(std::string("the key \"") + key + "\"");
        return in.Single(key);
    };
    auto flag = [&in](const char* key) {
        in.Text(std::string("the key \"") + key + "\"");
        return in.Flag(key);
    };
    p.relativeSeasonal = flag("RelativeSeasonal");
    s.FullAdjustErode = flag("FullAdjustErode");
    s.OSDSSConc = value("OSDSSConc");
    s.PreOSDPropSand = value("PreOSDPropSand");
    s.PostOSDPropSand = value("PostOSDPropSand");
    s.HistOSDSSConc = flag("HistOSDSSConc");
    s.AngleOfRepose = value("AngleOfRepose");
    s.AvgCMLengthInMiles = value("AvgCMLengthInMiles");
    s.ErodeRate = value("ErodeRate");
    s.WindErodeRate = value("WindErodeRate");
    in.Text("the key \"SandDest()\"");
    for (int z = 1; z <= 3; ++z) s.SandDest(z) = in.Single("SandDest");
    in.Text("the key \"IniPropSliceFull()\"");
    for (int z = 1; z <= 3; ++z) s.IniPropSliceFull(z) = in.Single("IniPropSliceFull");
    s.RelStoreHalfSat = value("RelStoreHalfSat");
    s.RelStoreSlope = value("RelStoreSlope");
    s.BedThickMax = value("BedThickMax");
    s.BedThickHalfSat = value("BedThickHalfSat");
    s.BedThickSlope = value("BedThickSlope");
    in.Text("the key \"CFSLowBeachLimit\"");
    s.CFSLowBeachLimit = in.Int32("CFSLowBeachLimit");
    in.Text("the key \"CFSHighBeachLimit\"");
    s.CFSHighBeachLimit = in.Int32("CFSHighBeachLimit");
    s.BaseBeachRelFull = value("BaseBeachRelFull");
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r)
        for (int k = 1; k <= 3; ++k) {
            const std::string key = "BeachMax-" + NumText(r) + "-" + NumText(k);
            in.Text("the key \"" + key + "\"");
            s.BeachMax(k, r) = in.Int16(key);
            for (int i = 1; i <= 50; ++i) s.BeachCurve(i, k, r) = in.Single("a beach curve value of " + key);
        }

    m.physical.HeatEx = p.heatEx;
    m.physical.RelSeason = std::move(p.relSeason);
    m.physical.MaxRelSeasonAdjust = p.maxRelSeasonAdjust;
    m.physical.RelativeSeasonal = p.relativeSeasonal;
    m.sediment = std::move(s);
    RecomputeStorage(m, true);
}

void WritePhyFile(const Model& m, const std::string& path) {
    const Sediment& s = m.sediment;
    const Physical& ph = m.physical;
    TextWriter out(path);
    auto record = [&out](const char* key, auto v) {
        out.Text(key).Number(v);
        out.EndRecord();
    };
    auto flag = [&out](const char* key, bool b) {
        out.Text(key).FlagNumber(b);
        out.EndRecord();
    };
    record("HeatEx", ph.HeatEx);
    for (int i = 0; i <= m.morph.NTrib; ++i) {
        out.Number(i);
        for (int mo = 1; mo <= 12; ++mo) out.Number(ph.RelSeason(i, mo));
        out.EndRecord();
    }
    record("MaxRelSeasonAdjust", ph.MaxRelSeasonAdjust);
    flag("RelativeSeasonal", ph.RelativeSeasonal);
    flag("FullAdjustErode", s.FullAdjustErode);
    record("OSDSSConc", s.OSDSSConc);
    record("PreOSDPropSand", s.PreOSDPropSand);
    record("PostOSDPropSand", s.PostOSDPropSand);
    flag("HistOSDSSConc", s.HistOSDSSConc);
    record("AngleOfRepose", s.AngleOfRepose);
    record("AvgCMLengthInMiles", s.AvgCMLengthInMiles);
    record("ErodeRate", s.ErodeRate);
    record("WindErodeRate", s.WindErodeRate);
    out.Text("SandDest()");
    for (int z = 1; z <= 3; ++z) out.Number(s.SandDest(z));
    out.EndRecord();
    out.Text("IniPropSliceFull()");
    for (int z = 1; z <= 3; ++z) out.Number(s.IniPropSliceFull(z));
    out.EndRecord();
    record("RelStoreHalfSat", s.RelStoreHalfSat);
    record("RelStoreSlope", s.RelStoreSlope);
    record("BedThickMax", s.BedThickMax);
    record("BedThickHalfSat", s.BedThickHalfSat);
    record("BedThickSlope", s.BedThickSlope);
    record("CFSLowBeachLimit", static_cast<int>(s.CFSLowBeachLimit));
    record("CFSHighBeachLimit", static_cast<int>(s.CFSHighBeachLimit));
    record("BaseBeachRelFull", s.BaseBeachRelFull);
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r)
        for (int k = 1; k <= 3; ++k) {
            const std::string key = "BeachMax-" + NumText(r) + "-" + NumText(k);
            out.Text(key).Number(static_cast<int>(s.BeachMax(k, r)));
            out.EndRecord();
            for (int i = 1; i <= 50; ++i) out.Number(s.BeachCurve(i, k, r));
            out.EndRecord();
        }
    out.Commit();
}

}  // namespace osm
