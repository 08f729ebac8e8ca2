#include "production/production_file.h"

#include <utility>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"

namespace osm {

namespace {

// A count read from the file, refused outside 0..most.
int16_t Count(TextReader& in, const char* what, int most) {
    const int16_t n = in.Int16(what);
    if (n < 0 || n > most)
        in.Fail(std::string(what) + " (0 to " + NumText(most) + ", the room of the tables)", NumText(static_cast<int>(n)));
    return n;
}

// Names stand between double quotes in the file, so none can hold one.
std::string ReadName(TextReader& in, const std::string& what) {
    const std::string name = in.Text(what);
    if (name.find('"') != std::string::npos) in.Fail(what + " (in double quotes, with none inside)", name);
    return name;
}

void ReadVegType(TextReader& in, Production& p, int v) {
    const std::string of = " of vegetation type " + NumText(v);
    p.VegName(v) = ReadName(in, "the name" + of);
    for (int t = 1; t <= 5; ++t) p.VegClimax(t, v) = in.Flag("substrate flag " + NumText(t) + of);
    p.VegGrowth(v) = in.Single("VegGrowth" + of);
    p.VegDkill(v) = in.NonNegative("VegDkill" + of);
    p.VegWmin(v) = in.Int16("VegWmin" + of);
    p.VegWmax(v) = in.Int16("VegWmax" + of);
    p.VegBug(v) = in.Single("VegBug" + of);
    p.VegDet(v) = in.Single("VegDet" + of);
    for (int j = 1; j <= p.NVegTypes; ++j) p.VegComp(j, v) = in.Single("VegComp (effect of type " + NumText(j) + ")" + of);
    for (int i = 1; i <= p.NMortPoints; ++i) p.VegMort(i, v) = in.Single("VegMort point " + NumText(i) + of);
}

void ReadIndicatorPops(TextReader& in, Production& p) {
    p.NPop = Count(in, "NPop, the number of indicator populations", MaxIndicatorPops);
    p.NFood = Count(in, "NFood, the number of indicator food types", MaxIndicatorFoods);
    p.FoodName.clear();
    p.PopName.clear();
    p.PopF.clear();
    for (int j = 1; j <= p.NFood; ++j) p.FoodName(j) = ReadName(in, "the name of food type " + NumText(j));
    for (int i = 1; i <= p.NPop; ++i) {
        const std::string of = " of indicator population " + NumText(i);
        p.PopR(i) = in.Single("PopR" + of);
        p.PopS(i) = in.Single("PopS" + of);
        p.PopV(i) = in.Single("PopV" + of);
        p.PopA1(i) = in.Single("PopA1" + of);
        p.PopA2(i) = in.Single("PopA2" + of);
        p.PopE(i) = in.Single("PopE" + of);
        p.PopName(i) = ReadName(in, "the name" + of);
        for (int j = 1; j <= p.NFood; ++j) p.PopF(j, i) = in.Single("PopF (food type " + NumText(j) + ")" + of);
    }
}

}  // namespace

void ReadBhpFile(Model& m, const std::string& path) {
    TextReader in(path, TextReader::Mode::Blanks);
    Production p = m.production;
    for (auto [x, name] : {std::pair{&p.OxyExchange, "OxyExchange"}, {&p.GRConstA, "GRConstA"},
                           {&p.GRConstB, "GRConstB"}, {&p.GRConstC, "GRConstC"}, {&p.OutflowO2, "OutflowO2"},
                           {&p.FineWgt, "FineWgt"}, {&p.BaseLightExt, "BaseLightExt"},
                           {&p.LightExtTurb, "LightExtTurb"}, {&p.AlgaeMax, "AlgaeMax"},
                           {&p.MinProdWinter, "MinProdWinter"}, {&p.PhotoEffic, "PhotoEffic"},
                           {&p.LakeDetritus, "LakeDetritus"}, {&p.OstrelDetritus, "OstrelDetritus"},
                           {&p.AlgaeDetritus, "AlgaeDetritus"}, {&p.DetSink, "DetSink"},
                           {&p.NatDetritus, "NatDetritus"}, {&p.TribDetritus, "TribDetritus"},
                           {&p.BaseBenthos, "BaseBenthos"}, {&p.BenthosGrowthEff, "BenthosGrowthEff"},
                           {&p.BaseMort, "BaseMort"}, {&p.MortQ10, "MortQ10"}, {&p.Colonize, "Colonize"},
                           {&p.LakeDrift, "LakeDrift"}, {&p.DriftRate, "DriftRate"}, {&p.DriftSink, "DriftSink"},
                           {&p.NatDrift, "NatDrift"}, {&p.MaxRToMort, "MaxRToMort"}, {&p.AlgaeAvail, "AlgaeAvail"},
                           {&p.DryPower, "DryPower"}, {&p.ScourSand, "ScourSand"}, {&p.ScourKeep, "ScourKeep"},
                           {&p.LabileAlgal, "LabileAlgal"}, {&p.LabileTerr, "LabileTerr"},
                           {&p.TerrDetritus, "TerrDetritus"}, {&p.DetConsume, "DetConsume"},
                           {&p.RefractRate, "RefractRate"}})
        *x = in.Single(name);
    p.NVegTypes = Count(in, "NVegTypes, the number of vegetation types", MaxVegTypes);
    p.NMortPoints = Count(in, "NMortPoints, the points of a mortality curve", MaxMortPoints);
    p.VegMinCover = in.Single("VegMinCover");
    p.VegMort.redim(Bounds{0, p.NMortPoints}, Bounds{0, MaxVegTypes});
    for (int v = 1; v <= p.NVegTypes; ++v) ReadVegType(in, p, v);
    ReadIndicatorPops(in, p);
    m.production = std::move(p);
}

void WriteBhpFile(const Model& m, const std::string& path) {
    const Production& p = m.production;
    TextWriter out(path, TextWriter::Mode::Blanks);
    auto line = [&out](std::initializer_list<float> xs) {
        for (float x : xs) out.Number(x);
        out.EndRecord();
    };
    auto quoted = [&](const std::string& s) {
        if (s.find('"') != std::string::npos)
            throw FileFault(path, "the name '" + s + "' holds a double quote, which the file cannot; nothing was saved");
        out.Bare("\"" + s + "\"");
    };
    line({p.OxyExchange, p.GRConstA, p.GRConstB, p.GRConstC, p.OutflowO2});
    line({p.FineWgt, p.BaseLightExt, p.LightExtTurb, p.AlgaeMax, p.MinProdWinter, p.PhotoEffic, p.LakeDetritus,
          p.OstrelDetritus, p.AlgaeDetritus, p.DetSink, p.NatDetritus, p.TribDetritus});
    line({p.BaseBenthos, p.BenthosGrowthEff, p.BaseMort, p.MortQ10, p.Colonize, p.LakeDrift, p.DriftRate,
          p.DriftSink, p.NatDrift});
    line({p.MaxRToMort, p.AlgaeAvail, p.DryPower, p.ScourSand, p.ScourKeep});
    line({p.LabileAlgal, p.LabileTerr, p.TerrDetritus, p.DetConsume, p.RefractRate});
    out.Number(static_cast<int>(p.NVegTypes)).Number(static_cast<int>(p.NMortPoints)).Number(p.VegMinCover);
    out.EndRecord();
    for (int v = 1; v <= p.NVegTypes; ++v) {
        quoted(p.VegName(v));
        out.EndRecord();
        for (int t = 1; t <= 5; ++t) out.FlagNumber(p.VegClimax(t, v));
        out.EndRecord();
        out.Number(p.VegGrowth(v)).Number(p.VegDkill(v)).Number(static_cast<int>(p.VegWmin(v)));
        out.Number(static_cast<int>(p.VegWmax(v))).Number(p.VegBug(v)).Number(p.VegDet(v));
        out.EndRecord();
        for (int j = 1; j <= p.NVegTypes; ++j) out.Number(p.VegComp(j, v));
        out.EndRecord();
        for (int i = 1; i <= p.NMortPoints; ++i) out.Number(p.VegMort(i, v));
        out.EndRecord();
    }
    out.Number(static_cast<int>(p.NPop)).Number(static_cast<int>(p.NFood));
    out.EndRecord();
    for (int j = 1; j <= p.NFood; ++j) {
        quoted(p.FoodName(j));
        out.EndRecord();
    }
    for (int i = 1; i <= p.NPop; ++i) {
        for (float x : {p.PopR(i), p.PopS(i), p.PopV(i), p.PopA1(i), p.PopA2(i), p.PopE(i)}) out.Number(x);
        quoted(p.PopName(i));
        out.EndRecord();
        for (int j = 1; j <= p.NFood; ++j) out.Number(p.PopF(j, i));
        out.EndRecord();
    }
    out.Commit();
}

}  // namespace osm
