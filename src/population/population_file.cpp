#include "population/population_file.h"

#include <algorithm>
#include <cctype>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"

namespace osm {

namespace {

// A whole number within lo..hi, or a fault naming the line.
int16_t inRange(TextReader& in, const std::string& what, int lo, int hi) {
    const int16_t v = in.Int16(what);
    if (v < lo || v > hi)
        throw FileFault(in.path(), in.fieldLine(), what + " (" + NumText(lo) + " to " + NumText(hi) + ")",
                        NumText(static_cast<int>(v)));
    return v;
}

// True or False as written, or a number (non-zero is True).
bool readFlag(TextReader& in, const std::string& what) {
    std::string t = in.Text(what);
    std::string lower = t;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    if (lower == "true" || lower == "#true#") return true;
    if (lower == "false" || lower == "#false#") return false;
    if (!IsNumber(t)) throw FileFault(in.path(), in.fieldLine(), what + " (True or False)", t);
    return Val(t) != 0;
}

void clearRecords(Popsubs& ps) {
    for (auto* t : {&ps.HabLinked, &ps.setwhen, &ps.dur, &ps.setwhere}) t->clear();
    ps.HabScale.clear();
    ps.HabCurve.clear();
    ps.VulMonth.clear();
    ps.HarvestRate.clear();
    ps.HabVarName.clear();
    ps.HabEffectName.clear();
    for (auto* t : {&ps.LinkPred, &ps.LinkPrey}) t->clear();
    for (auto* t : {&ps.LinkDiet, &ps.LinkMort}) t->clear();
}

void readSpecies(TextReader& in, Popsubs& ps, int i, int nv, int ne) {
    const std::string sp = " of species " + NumText(i);
    auto num = [&](const std::string& what) { return in.Single(what + sp); };
    ps.SpName(i) = in.Name("the name" + sp);
    ps.B0(i) = num("the starting biomass");
    ps.alpha(i) = num("the weight at maturity");
    ps.alphamax(i) = num("the maximum weight at maturity");
    ps.rho(i) = num("the Ford-Walford slope");
    ps.wk(i) = inRange(in, "the age at maturity" + sp, 1, MaxAge);
    ps.sbase(i) = num("the adult survival");
    ps.sbasejuv(i) = num("the juvenile survival");
    ps.RcJuv(i) = num("the compensation ratio");
    ps.SetHabFlag(i) = readFlag(in, "the habitat-only flag" + sp);
    ps.fec(i) = num("the eggs per kg");
    ps.sfry(i) = num("the egg to fry survival");
    ps.Sejuv(i) = num("the fry to age 1 survival");
    ps.FecSpare1(i) = in.Int16("a whole number after the survivals" + sp);
    ps.FecSpare2(i) = in.Int16("a whole number after the survivals" + sp);
    ps.ppred(i) = num("the share of incidental predation");
    ps.RchFry(i) = in.Int16("the reach of incidental predation" + sp);
    ps.Pwk1(i) = inRange(in, "the first month of egg/fry predation" + sp, 1, 12);
    ps.Pwk2(i) = inRange(in, "the last month of egg/fry predation" + sp, 1, 12);
    ps.htype(i) = num("the dilution exponent");
    ps.fert(i) = num("the hatchery addition");
    ps.fertyr1(i) = in.Int16("the first year of additions" + sp);
    ps.fertyr2(i) = num("the last year of additions");
    ps.biomass(i) = num("the share staying in the natal reach");
    ps.breedtime(i) = inRange(in, "the calendar month of age 1" + sp, 1, 12);
    for (int mo = 1; mo <= 12; ++mo)
        ps.VulMonth(i, mo) = num("the vulnerability of month of life " + NumText(mo));
    for (int h = 1; h <= nv; ++h)
        for (int k = 1; k <= ne; ++k) {
            const std::string link = " of variable " + NumText(h) + " on effect " + NumText(k) + sp;
            const int16_t on = in.Int16("the link flag (-1 or 0)" + link);
            if (on != 0 && on != -1)
                throw FileFault(in.path(), in.fieldLine(), "the link flag (-1 or 0)" + link, NumText(static_cast<int>(on)));
            ps.HabLinked(i, h, k) = on;
            if (on != -1) continue;
            ps.setwhen(i, h, k) = in.Int16("the index week" + link);
            ps.dur(i, h, k) = in.Int16("the duration" + link);
            ps.setwhere(i, h, k) = in.Int16("the index reach" + link);
            ps.HabScale(i, h, k) = in.Single("the curve scale" + link);
            for (int j = 1; j <= HabCells; ++j)
                ps.HabCurve(i, h, k, j) = in.Single("curve cell " + NumText(j) + link);
        }
    ps.MinAgeTaken(i) = in.Int16("the minimum age taken" + sp);
    const int nh = inRange(in, "the number of harvest years" + sp, 0, HarvestYears);
    for (int y = 1; y <= nh; ++y) ps.HarvestRate(i, y) = num("the harvest rate of year " + NumText(y));
}

void readLinks(TextReader& in, Popsubs& ps) {
    const int top = ps.NSpecies + 3;
    ps.NLinks = 0;
    while (!in.AtEnd()) {
        const int l = ps.NLinks + 1;
        if (l > MaxLinks)
            throw FileFault(in.path(), in.line(), "at most " + NumText(MaxLinks) + " trophic links", "more");
        const std::string link = " of trophic link " + NumText(l);
        ps.LinkPred(l) = inRange(in, "the predator" + link, 1, top);
        ps.LinkPrey(l) = inRange(in, "the prey" + link, 1, top);
        ps.LinkDiet(l) = in.Single("the diet proportion" + link);
        ps.LinkMort(l) = in.Single("the mortality proportion" + link);
        ps.NLinks = static_cast<int16_t>(l);
    }
}

// A name is written bare; one holding a comma is quoted so that it reads back whole.
void writeName(TextWriter& out, const std::string& s) {
    if (s.find(',') != std::string::npos || (!s.empty() && s.front() == '"')) out.Bare("\"" + s + "\"");
    else out.Bare(s);
    out.EndRecord();
}

}  // namespace

void ReadPopFile(Model& m, const std::string& path) {
    TextReader in(path, TextReader::Mode::Blanks);
    Popsubs next = m.popsubs;
    clearRecords(next);
    next.NSpecies = inRange(in, "the number of species", 0, MaxSpecies);
    in.Int16("the number of curve cells");
    const int nv = inRange(in, "the number of habitat variables", 0, NHabVars);
    const int ne = inRange(in, "the number of habitat effects", 0, NHabEffects);
    next.HabVarName(NHabVars) = "Warm Trib/backwater Area";
    for (int h = 1; h <= nv; ++h) next.HabVarName(h) = in.Name("the name of habitat variable " + NumText(h));
    for (int k = 1; k <= ne; ++k) next.HabEffectName(k) = in.Name("the name of habitat effect " + NumText(k));
    for (int i = 1; i <= next.NSpecies; ++i) readSpecies(in, next, i, nv, ne);
    readLinks(in, next);
    m.popsubs = std::move(next);
}

void WritePopFile(const Model& m, const std::string& path) {
    const Popsubs& ps = m.popsubs;
    TextWriter out(path, TextWriter::Mode::Blanks);
    auto record = [&out](std::initializer_list<float> xs) {
        for (float x : xs) out.Number(x);
        out.EndRecord();
    };
    auto n = [](int16_t v) { return static_cast<float>(v); };
    out.Number(static_cast<int>(ps.NSpecies)).Number(HabCells).Number(NHabVars).Number(NHabEffects);
    out.EndRecord();
    for (int h = 1; h <= NHabVars; ++h) writeName(out, ps.HabVarName(h));
    for (int k = 1; k <= NHabEffects; ++k) writeName(out, ps.HabEffectName(k));
    for (int i = 1; i <= ps.NSpecies; ++i) {
        writeName(out, ps.SpName(i));
        for (float x : {ps.B0(i), ps.alpha(i), ps.alphamax(i), ps.rho(i), n(ps.wk(i)), ps.sbase(i),
                        ps.sbasejuv(i), ps.RcJuv(i)})
            out.Number(x);
        out.Bare(ps.SetHabFlag(i) ? "True" : "False");
        out.EndRecord();
        record({ps.fec(i), ps.sfry(i), ps.Sejuv(i), n(ps.FecSpare1(i)), n(ps.FecSpare2(i))});
        record({ps.ppred(i), n(ps.RchFry(i)), n(ps.Pwk1(i)), n(ps.Pwk2(i)), ps.htype(i)});
        record({ps.fert(i), n(ps.fertyr1(i)), ps.fertyr2(i)});
        record({ps.biomass(i), n(ps.breedtime(i))});
        for (int mo = 1; mo <= 12; ++mo) record({ps.VulMonth(i, mo)});
        for (int h = 1; h <= NHabVars; ++h)
            for (int k = 1; k <= NHabEffects; ++k) {
                record({n(ps.HabLinked(i, h, k))});
                if (ps.HabLinked(i, h, k) != -1) continue;
                record({n(ps.setwhen(i, h, k)), n(ps.dur(i, h, k)), n(ps.setwhere(i, h, k)), ps.HabScale(i, h, k)});
                for (int j = 1; j <= HabCells; ++j) record({ps.HabCurve(i, h, k, j)});
            }
        record({n(ps.MinAgeTaken(i)), static_cast<float>(HarvestYears)});
        for (int y = 1; y <= HarvestYears; ++y) record({ps.HarvestRate(i, y)});
    }
    for (int l = 1; l <= ps.NLinks; ++l)
        record({n(ps.LinkPred(l)), n(ps.LinkPrey(l)), ps.LinkDiet(l), ps.LinkMort(l)});
    out.Commit();
}

}  // namespace osm
