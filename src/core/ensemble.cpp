#include "core/ensemble.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "core/fault.h"
#include "core/many_runs.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/provenance.h"
#include "core/textfile.h"
#include "population/population_file.h"
#include "production/production_file.h"
#include "recreation/recreation_file.h"
#include "recreation/rafting.h"
#include "sediment/physical_parameters.h"

namespace osm {

namespace {

std::vector<std::string> words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> out;
    for (std::string w; in >> w;) out.push_back(w);
    return out;
}

class SpecLine {
public:
    SpecLine(const std::string& path, int line, std::vector<std::string> w)
        : path_(path), line_(line), w_(std::move(w)) {}
    size_t size() const { return w_.size(); }
    const std::string& word(size_t i, const std::string& what) const {
        if (i >= w_.size()) fail(what, "");
        return w_[i];
    }
    double number(size_t i, const std::string& what) const {
        const std::string& w = word(i, what);
        if (!IsNumber(w) || !std::isfinite(Val(w))) fail(what, w);
        return Val(w);
    }
    [[noreturn]] void fail(const std::string& expected, const std::string& found) const {
        throw FileFault(path_, line_, expected, found);
    }

private:
    std::string path_;
    int line_;
    std::vector<std::string> w_;
};

EnsembleParameter readParameter(const SpecLine& l) {
    EnsembleParameter p;
    p.kind = l.word(1, "the file kind phy, bhp, fis or rec");
    if (p.kind != "phy" && p.kind != "bhp" && p.kind != "fis" && p.kind != "rec")
        l.fail("the file kind phy, bhp, fis or rec", p.kind);
    p.target = l.word(2, "a parameter: Name, Name#k or line:field");
    const std::string dist = l.word(3, "a distribution: uniform, normal or lognormal");
    if (dist == "uniform") p.distribution = Distribution::Uniform;
    else if (dist == "normal") p.distribution = Distribution::Normal;
    else if (dist == "lognormal") p.distribution = Distribution::LogNormal;
    else l.fail("a distribution: uniform, normal or lognormal", dist);
    const bool uniform = p.distribution == Distribution::Uniform;
    p.a = l.number(4, uniform ? "the lowest value" : dist == "normal" ? "the mean" : "mu, the mean of the log");
    p.b = l.number(5, uniform ? "the highest value" : dist == "normal" ? "the standard deviation"
                                                                      : "sigma, the standard deviation of the log");
    if (uniform && p.b < p.a) l.fail("a highest value not below the lowest " + NumText(p.a), NumText(p.b));
    if (!uniform && p.b < 0) l.fail("a standard deviation of 0 or more", NumText(p.b));
    for (size_t i = 6; i < l.size(); i += 2) {
        const std::string& key = l.word(i, "min, max or whole");
        if (key == "whole") {
            p.whole = true;
            --i;
        } else if (key == "min") p.lo = l.number(i + 1, "the lower bound");
        else if (key == "max") p.hi = l.number(i + 1, "the upper bound");
        else l.fail("min, max or whole", key);
    }
    if (p.hi < p.lo) l.fail("an upper bound not below the lower bound " + NumText(p.lo), NumText(p.hi));
    if (uniform && (p.b < p.lo || p.a > p.hi)) l.fail("bounds that meet the range of the uniform draw", l.word(6, ""));
    return p;
}

// Uniform on [0, 1) from the top 53 bits: the same on every platform, as
// std::mt19937_64 is, where the standard distributions are not.
double unit(std::mt19937_64& g) { return static_cast<double>(g() >> 11) * 0x1.0p-53; }

double standardNormal(std::mt19937_64& g) {
    const double u1 = 1.0 - unit(g);  // in (0, 1]: its log exists
    const double u2 = unit(g);
    return std::sqrt(-2.0 * std::log(u1)) * std::cos(2.0 * M_PI * u2);
}

double drawOnce(const EnsembleParameter& p, std::mt19937_64& g) {
    switch (p.distribution) {
    case Distribution::Uniform: return p.a + (p.b - p.a) * unit(g);
    case Distribution::Normal: return p.a + p.b * standardNormal(g);
    case Distribution::LogNormal: return std::exp(p.a + p.b * standardNormal(g));
    }
    return 0;
}

// A field of a line: its start and length; fields are parted by commas and blanks.
struct Span {
    size_t at = std::string::npos, length = 0;
};
std::vector<Span> fieldsOf(const std::string& line) {
    std::vector<Span> out;
    size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == ',' || line[i] == '\r')) ++i;
        if (i >= line.size()) break;
        const size_t start = i;
        if (line[i] == '"') {
            i = line.find('"', i + 1);
            i = i == std::string::npos ? line.size() : i + 1;
        } else
            while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != ',' && line[i] != '\r') ++i;
        out.push_back({start, i - start});
    }
    return out;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos) break;
        start = end + 1;
    }
    return lines;
}

bool wholeNumber(const std::string& s, int& out) {
    if (s.empty() || s.size() > 7 || s.find_first_not_of("0123456789") != std::string::npos) return false;
    out = std::stoi(s);
    return out > 0;
}

std::string fileOfKind(const Model& m, const std::string& kind) {
    const Main& mn = m.main;
    return kind == "phy" ? mn.PhyFile : kind == "bhp" ? mn.BhpFile : kind == "fis" ? mn.FisFile : mn.RecFile;
}

void loadKind(Model& m, const std::string& kind, const std::string& path) {
    if (kind == "phy") ReadPhyFile(m, path);
    else if (kind == "bhp") ReadBhpFile(m, path);
    else if (kind == "fis") ReadPopFile(m, path);
    else {
        ReadRafting(m, path);
        ReadAnglingPars(m, path);
        LoadRafting(m);
    }
}

}  // namespace

EnsembleSpec ReadEnsembleSpec(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw FileFault(path, "cannot open the file (missing or unreadable)");
    InputLog::Note(path);
    EnsembleSpec spec;
    spec.path = path;
    bool seeded = false;
    std::string text;
    int n = 0;
    while (std::getline(in, text)) {
        ++n;
        const size_t hash = text.find('#');
        const SpecLine l(path, n, words(text.substr(0, hash)));
        if (l.size() == 0) continue;
        const std::string& key = l.word(0, "");
        if (key == "runs") {
            const double runs = l.number(1, "the number of runs, a whole number from 1");
            if (runs < 1 || runs > 1e6 || runs != std::floor(runs)) l.fail("the number of runs, a whole number from 1", l.word(1, ""));
            spec.runs = static_cast<int>(runs);
        } else if (key == "seed") {
            const double seed = l.number(1, "the seed, a whole number from 0");
            if (seed < 0 || seed > 9.0e15 || seed != std::floor(seed)) l.fail("the seed, a whole number from 0", l.word(1, ""));
            spec.seed = static_cast<uint64_t>(seed);
            seeded = true;
        } else if (key == "param") {
            spec.parameters.push_back(readParameter(l));
        } else
            l.fail("a keyword: runs, seed or param", key);
        if (key != "param" && l.size() > 2) l.fail("the end of the line", l.word(2, ""));
    }
    if (spec.runs == 0) throw FileFault(path, n, "a line \"runs N\"", "");
    if (!seeded) throw FileFault(path, n, "a line \"seed S\"", "");
    if (spec.parameters.empty()) throw FileFault(path, n, "at least one \"param\" line", "");
    return spec;
}

std::vector<std::vector<double>> DrawParameters(const EnsembleSpec& spec) {
    std::mt19937_64 g(spec.seed);
    std::vector<std::vector<double>> values(static_cast<size_t>(spec.runs));
    for (auto& run : values)
        for (const EnsembleParameter& p : spec.parameters) {
            const auto draw = [&] { return p.whole ? std::round(drawOnce(p, g)) : drawOnce(p, g); };
            double x = draw();
            for (int tries = 1; x < p.lo || x > p.hi; ++tries) {
                if (tries == 10000)
                    throw FileFault(spec.path, "parameter " + p.label() + ": 10000 draws fell outside its bounds " +
                                                   NumText(p.lo) + " .. " + NumText(p.hi));
                x = draw();
            }
            run.push_back(x);
        }
    return values;
}

std::string SetParameter(const std::string& text, const std::string& target, double value, const std::string& file) {
    std::vector<std::string> lines = linesOf(text);
    size_t line = 0, field = 0;
    const size_t colon = target.find(':');
    int a = 0, b = 0;
    if (colon != std::string::npos && wholeNumber(target.substr(0, colon), a) &&
        wholeNumber(target.substr(colon + 1), b)) {
        line = static_cast<size_t>(a);
        field = static_cast<size_t>(b);
    } else {
        const size_t hash = target.find('#');
        const std::string name = target.substr(0, hash);
        int k = 1;
        if (hash != std::string::npos && !wholeNumber(target.substr(hash + 1), k))
            throw FileFault(file, "the parameter " + target + " needs a whole number from 1 after '#'");
        for (size_t i = 0; i < lines.size() && line == 0; ++i) {
            const auto f = fieldsOf(lines[i]);
            if (!f.empty() && lines[i].substr(f[0].at, f[0].length) == "\"" + name + "\"") line = i + 1;
        }
        if (line == 0) throw FileFault(file, "has no parameter named \"" + name + "\"");
        field = static_cast<size_t>(k) + 1;
    }
    if (line > lines.size()) throw FileFault(file, "has no line " + NumText(static_cast<int>(line)) + " for " + target);
    std::string& l = lines[line - 1];
    const auto f = fieldsOf(l);
    if (field > f.size())
        throw FileFault(file, static_cast<int>(line), "a field " + NumText(static_cast<int>(field)) + " for " + target, l);
    const Span s = f[field - 1];
    const std::string old = l.substr(s.at, s.length);
    if (!IsNumber(old)) throw FileFault(file, static_cast<int>(line), "a number for " + target, old);
    l.replace(s.at, s.length, NumText(value));
    std::string out;
    for (size_t i = 0; i < lines.size(); ++i) out += lines[i] + (i + 1 < lines.size() ? "\n" : "");
    return out;
}

std::map<std::string, std::string> ParameterTexts(const Model& m, const EnsembleSpec& spec) {
    std::map<std::string, std::string> texts;
    for (const EnsembleParameter& p : spec.parameters) {
        if (texts.count(p.kind)) continue;
        if (m.main.PhysOnly && (p.kind == "bhp" || p.kind == "fis"))
            throw FileFault(spec.path, "parameter " + p.label() + ": the ." + p.kind +
                                           " file acts in the whole model only, not in the physical model");
        const std::string path = fileOfKind(m, p.kind);
        std::ifstream in(path, std::ios::binary);
        if (!in) throw FileFault(path, "cannot open the file (missing or unreadable)");
        std::ostringstream text;
        text << in.rdbuf();
        texts[p.kind] = text.str();
    }
    return texts;
}

void ApplyParameters(Model& m, const EnsembleSpec& spec, const std::map<std::string, std::string>& texts,
                     const std::vector<double>& values, const std::string& folder, size_t run) {
    // The copies are the run's own and not inputs of the results: their values
    // are written beside them; the log of the copies is dropped.
    InputLog copies(InputLog::Drop);
    for (const auto& [kind, base] : texts) {
        std::string text = base;
        const std::string shown = fileOfKind(m, kind);
        for (size_t i = 0; i < spec.parameters.size(); ++i)
            if (spec.parameters[i].kind == kind) text = SetParameter(text, spec.parameters[i].target, values[i], shown);
        const std::string path =
            (std::filesystem::path(folder) / ("run" + NumText(static_cast<int>(run) + 1) + "." + kind)).string();
        {
            std::ofstream out(path, std::ios::binary | std::ios::trunc);
            out << text;
            if (!out) throw FileFault(path, "cannot write the run's parameter file");
        }
        loadKind(m, kind, path);
        std::filesystem::remove(path);
    }
}

double Percentile(std::vector<float>& values, double p) {
    values.erase(std::remove_if(values.begin(), values.end(), [](float x) { return std::isnan(x); }), values.end());
    if (values.empty()) return std::nan("");
    const double h = (static_cast<double>(values.size()) - 1) * p;
    const size_t lo = static_cast<size_t>(std::floor(h));
    std::nth_element(values.begin(), values.begin() + static_cast<long>(lo), values.end());
    const double x = values[lo];
    if (lo + 1 >= values.size()) return x;
    const double next = *std::min_element(values.begin() + static_cast<long>(lo) + 1, values.end());
    return x + (h - static_cast<double>(lo)) * (next - x);
}

RunSet EnsemblePercentiles(const RunSet& runs, int threads) {
    static const double fractions[] = {0.05, 0.50, 0.95};
    static const char* names[] = {"5th percentile", "median", "95th percentile"};
    RunSet out = runs;
    out.runs.clear();
    for (int k = 0; k < 3; ++k) {
        RunValues p;
        p.name = names[k];
        p.months = runs.months;
        p.values.assign(runs.rows.size() * static_cast<size_t>(runs.reachCount()) * static_cast<size_t>(runs.months),
                        std::numeric_limits<float>::quiet_NaN());
        out.runs.push_back(std::move(p));
    }
    ForEachParallel(runs.rows.size(), threads, [&](size_t row) {
        std::vector<float> column(runs.runs.size());
        for (int r = runs.firstReach; r <= runs.lastReach; ++r)
            for (int c = 1; c <= runs.months; ++c) {
                const size_t at = runs.index(row, r, c);
                for (int k = 0; k < 3; ++k) {
                    column.resize(runs.runs.size());
                    for (size_t i = 0; i < runs.runs.size(); ++i) column[i] = runs.runs[i].values[at];
                    out.runs[static_cast<size_t>(k)].values[at] = static_cast<float>(Percentile(column, fractions[k]));
                }
            }
    });
    return out;
}

void WriteParametersCsv(const EnsembleSpec& spec, const std::vector<std::vector<double>>& values, const RunSet& runs,
                        TextWriter& out) {
    out.Text("run").Text("name").Text("fault");
    for (const EnsembleParameter& p : spec.parameters) out.Text(p.label());
    out.EndRecord();
    for (size_t i = 0; i < values.size(); ++i) {
        out.Number(static_cast<int>(i) + 1).Text(i < runs.runs.size() ? runs.runs[i].name : "");
        out.Text(i < runs.runs.size() ? runs.runs[i].fault : "");
        for (const double x : values[i]) out.Number(x);
        out.EndRecord();
    }
}

void WritePercentilesCsv(const RunSet& percentiles, TextWriter& out) {
    out.Line("var,set,reach,month,p5,p50,p95");
    for (size_t row = 0; row < percentiles.rows.size(); ++row)
        for (int r = percentiles.firstReach; r <= percentiles.lastReach; ++r)
            for (int c = 1; c <= percentiles.months; ++c) {
                out.Number(percentiles.rows[row].first).Number(percentiles.rows[row].second).Number(r).Number(c);
                for (size_t k = 0; k < 3; ++k) {
                    const float x = percentiles.at(k, row, r, c);
                    if (std::isnan(x)) out.Bare("");
                    else out.Number(x);
                }
                out.EndRecord();
            }
}

}  // namespace osm
