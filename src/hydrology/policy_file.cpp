#include "hydrology/policy_file.h"

#include <array>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"
#include "core/util.h"
#include "hydrology/monthly_patterns.h"
#include "hydrology/release_policy.h"

namespace osm {

namespace {

constexpr int FirstYear = 48, LastYear = 147;   // years of the diurnal codes
constexpr int LastRecordYear = 97;              // the record of monthly volumes

// What a policy file holds, read whole before any of it is applied. Each part
// is set only when the file names it.
struct Policy {
    std::map<int, int16_t> diurnal;  // two-digit year -> scenario code
    std::vector<std::string> newNames;  // scenarios that join the list, in order
    struct Release {
        int line = 0;
        std::string sheet, field;
        int kind = SeqRecord;
        MonthPattern pattern{};
        int repeatYear = 0;
    };
    std::optional<Release> release;
    struct SpikeFlow {
        double mag = 0;
        int dur = 0, startDay = 0;
    };
    std::optional<SpikeFlow> spikeFlow;
    std::optional<std::set<int>> spikes;  // month indices
    std::optional<std::array<float, 13>> expTemp;
    std::optional<std::set<int>> expTempYears;
};

// The fields of one line of the file: a keyword, then values up to the line's
// end or a "#" comment.
class PolicyLine {
public:
    explicit PolicyLine(TextReader& in) : in_(in) {}

    // The next line's keyword; false at the end of the file.
    bool Next(std::string& keyword) {
        while (!in_.AtEnd()) {
            keyword = in_.Text("a keyword");
            line_ = in_.fieldLine();
            if (keyword.empty() || keyword[0] != '#') return true;
            skipComment();
        }
        return false;
    }
    int line() const { return line_; }
    bool More() {
        if (in_.line() != line_ || in_.AtLineEnd()) return false;
        return true;
    }
    // The next value, or false at the line's end or a comment.
    bool Value(std::string& text, const std::string& what) {
        if (!More()) return false;
        text = in_.Text(what);
        if (!text.empty() && text[0] == '#') {
            skipComment();
            return false;
        }
        return true;
    }
    std::string Text(const std::string& what) {
        std::string t;
        if (!Value(t, what)) Fail(what, "the end of the line");
        return t;
    }
    double Number(const std::string& what, double lo, double hi) {
        const std::string t = Text(what);
        if (!IsNumber(t)) Fail(what, t);
        const double x = Val(t);
        if (x < lo || x > hi) Fail(what + " (" + NumText(lo) + " to " + NumText(hi) + ")", t);
        return x;
    }
    int Whole(const std::string& what, int lo, int hi) {
        const double x = Number(what, lo, hi);
        if (x != Int(x)) Fail(what + " (a whole number)", NumText(x));
        return static_cast<int>(x);
    }
    // A year, or a range of years "1948-1960", as two-digit years.
    std::pair<int, int> Years(const std::string& text, int lo, int hi) {
        const size_t dash = text.find('-', 1);
        const std::string a = text.substr(0, dash), b = dash == std::string::npos ? a : text.substr(dash + 1);
        const std::string what = "a year " + NumText(1900 + lo) + " to " + NumText(1900 + hi) +
                                 ", or a range of them such as " + NumText(1900 + lo) + "-" + NumText(1900 + lo + 9);
        if (!IsNumber(a) || !IsNumber(b)) Fail(what, text);
        const double y0 = Val(a) - 1900, y1 = Val(b) - 1900;
        if (y0 != Int(y0) || y1 != Int(y1) || y0 < lo || y1 > hi || y1 < y0) Fail(what, text);
        return {static_cast<int>(y0), static_cast<int>(y1)};
    }
    // The line has no more values.
    void End() {
        std::string t;
        if (Value(t, "the end of the line")) Fail("the end of the line or a # comment", t);
    }
    [[noreturn]] void Fail(const std::string& expected, const std::string& found) const {
        throw FileFault(in_.path(), line_, expected, found);
    }

private:
    void skipComment() {
        if (in_.line() == in_.fieldLine()) in_.Line("a comment");
    }

    TextReader& in_;
    int line_ = 0;
};

// A scenario name's code; a name not listed yet joins the list when the policy
// is applied.
int16_t scenarioCode(const Model& m, Policy& pol, PolicyLine& f, const std::string& name) {
    for (size_t i = 0; i < pol.newNames.size(); ++i)
        if (pol.newNames[i] == name) return static_cast<int16_t>(m.physical.NDiurnal + 1 + static_cast<int>(i));
    const int k = ScenarioCode(m, name);
    if (k > 0 && k <= m.physical.NDiurnal) {
        if (!FileExists(InFolder(m, name + ".sts")))
            f.Fail("a scenario whose file " + name + ".sts is in the program folder", name);
        return static_cast<int16_t>(k);
    }
    if (k == 0 || m.physical.NDiurnal + static_cast<int>(pol.newNames.size()) >= m.physical.DiurnalName.hi(0))
        f.Fail("a scenario of diurnal_scenarios.txt, or the name of a .sts file in the program folder (at most " +
                   NumText(m.physical.DiurnalName.hi(0)) + " scenarios in all)",
               name);
    pol.newNames.push_back(name);
    return static_cast<int16_t>(m.physical.NDiurnal + static_cast<int>(pol.newNames.size()));
}

MonthPattern twelve(PolicyLine& f, const std::string& what, double lo, double hi) {
    MonthPattern v{};
    for (int mo = 1; mo <= 12; ++mo) v[static_cast<size_t>(mo)] = f.Number(what + " of month " + NumText(mo), lo, hi);
    return v;
}

// Years and ranges to the line's end.
std::set<int> yearList(PolicyLine& f, int lo, int hi) {
    std::set<int> years;
    std::string t;
    while (f.Value(t, "a year"))
        for (auto [a, b] = f.Years(t, lo, hi); a <= b; ++a) years.insert(a);
    return years;
}

template <typename T>
void once(PolicyLine& f, const std::optional<T>& part, const std::string& keyword) {
    if (part) f.Fail("one " + keyword + " line", "a second one");
}

Policy readPolicy(const Model& m, const std::string& path) {
    TextReader in(path, TextReader::Mode::Blanks);
    PolicyLine f(in);
    Policy pol;
    std::string key;
    auto release = [&]() -> Policy::Release& {
        if (!pol.release) pol.release = Policy::Release{0, m.physical.MonthlyVolSheet, m.physical.MonthlyVolField};
        pol.release->line = f.line();
        return *pol.release;
    };
    bool trace = false, shaped = false;
    while (f.Next(key)) {
        if (key == "diurnal") {
            const auto [a, b] = f.Years(f.Text("the years"), FirstYear, LastYear);
            const int16_t code = scenarioCode(m, pol, f, f.Text("a scenario name"));
            for (int y = a; y <= b; ++y) pol.diurnal[y] = code;
        } else if (key == "release-trace") {
            if (trace) f.Fail("one release-trace line", "a second one");
            trace = true;
            Policy::Release& r = release();
            r.sheet = f.Text("a sheet of riverware.xls");
            r.field.clear();
            std::string field;
            if (f.Value(field, "the trace's field")) r.field = field;
        } else if (key == "release-pattern" || key == "release-repeat") {
            if (shaped) f.Fail("one release-pattern or release-repeat line", key);
            shaped = true;
            Policy::Release& r = release();
            if (key == "release-pattern") {
                r.kind = SeqPattern;
                r.pattern = twelve(f, "a monthly volume (acre-feet)", 0, 1e8);
            } else {
                r.kind = SeqRepeatYear;
                r.repeatYear = f.Years(f.Text("a year of the record"), FirstYear, LastRecordYear).first;
            }
        } else if (key == "spike-flow") {
            once(f, pol.spikeFlow, key);
            Policy::SpikeFlow s;
            s.mag = f.Number("a spike magnitude (cfs)", 1, 1e6);
            s.dur = f.Whole("a spike duration (days)", 1, 28);
            s.startDay = f.Whole("the first spike day in the month", 1, 29 - s.dur);
            pol.spikeFlow = s;
        } else if (key == "spikes") {
            if (!pol.spikes) pol.spikes.emplace();
            std::string t;
            while (f.Value(t, "a spike month")) {
                const size_t dash = t.find('-');
                const std::string what = "a spike month YEAR-MONTH such as 1996-03, within 1948-01 to 1997-12";
                if (dash == std::string::npos || !IsNumber(t.substr(0, dash)) || !IsNumber(t.substr(dash + 1)))
                    f.Fail(what, t);
                const double y = Val(t.substr(0, dash)) - 1900, mo = Val(t.substr(dash + 1));
                if (y != Int(y) || mo != Int(mo) || y < 48 || y > LastRecordYear || mo < 1 || mo > 12)
                    f.Fail(what, t);
                pol.spikes->insert(SpikeMonthIdx(static_cast<int>(y), static_cast<int>(mo)));
            }
        } else if (key == "exp-temp-pattern") {
            once(f, pol.expTemp, key);
            const MonthPattern t = twelve(f, "a release temperature (deg C)", -5, 40);
            pol.expTemp.emplace();
            for (int mo = 1; mo <= 12; ++mo) (*pol.expTemp)[static_cast<size_t>(mo)] = Sng(t[static_cast<size_t>(mo)]);
        } else if (key == "exp-temp-years") {
            if (!pol.expTempYears) pol.expTempYears.emplace();
            const std::set<int> years = yearList(f, FirstYear, LastYear);
            pol.expTempYears->insert(years.begin(), years.end());
            continue;
        } else {
            f.Fail("a keyword: diurnal, release-trace, release-pattern, release-repeat, spike-flow, spikes, "
                   "exp-temp-pattern or exp-temp-years",
                   key);
        }
        if (key != "spikes") f.End();
    }
    return pol;
}

void applyRelease(Model& m, const Policy::Release& r, const std::string& path) {
    Physical& p = m.physical;
    try {
        LoadReleaseTrace(m, r.sheet, r.field);
        MonthPattern pattern = r.pattern;
        if (r.kind == SeqRecord) pattern = SeasonalPattern(m, 1);
        if (r.kind == SeqRepeatYear) pattern = GetRepYrData(m, 1, r.repeatYear);
        ApplyDamSequence(m, r.kind, pattern);
        if (r.kind == SeqPattern)
            for (int mo = 1; mo <= 12; ++mo) p.RelSeason(0, mo) = Sng(pattern[static_cast<size_t>(mo)]);
        p.SeqType(1) = static_cast<int16_t>(r.kind);
        if (r.kind == SeqRepeatYear) p.RepYr(1) = static_cast<int16_t>(r.repeatYear);
    } catch (const Fault& e) {
        throw FileFault(path, r.line, "a monthly release trace the program can load", e.what());
    }
}

void applyPolicy(Model& m, const Policy& pol, const std::string& path) {
    Physical& p = m.physical;
    for (const std::string& name : pol.newNames) AddScenario(m, name);
    for (const auto& [y, code] : pol.diurnal) p.DiurnalCode(y) = code;
    if (pol.release) applyRelease(m, *pol.release, path);
    if (pol.spikeFlow) SetSpikeFlow(p, pol.spikeFlow->mag, pol.spikeFlow->dur, pol.spikeFlow->startDay);
    if (pol.spikes) {
        p.SpikeFlag.clear();
        for (int i : *pol.spikes) p.SpikeFlag(i) = true;
    }
    if (pol.expTemp)
        for (int mo = 1; mo <= 12; ++mo) p.ExpTemp(mo) = (*pol.expTemp)[static_cast<size_t>(mo)];
    if (pol.expTempYears)
        for (int y = FirstYear; y <= LastYear; ++y) p.ExpTempYr(y) = pol.expTempYears->count(y) > 0;
}

// "1948-1960", or "1948" for one year.
std::string yearRange(int a, int b) {
    return NumText(1900 + a) + (a == b ? "" : "-" + NumText(1900 + b));
}

std::string quoted(const std::string& s) {
    return s.find_first_of(" \t,#") == std::string::npos && !s.empty() ? s : "\"" + s + "\"";
}

}  // namespace

void LoadPolicy(Model& m, const std::string& path) {
    const Policy pol = readPolicy(m, path);
    const Physical saved = m.physical;
    try {
        applyPolicy(m, pol, path);
    } catch (...) {
        m.physical = saved;
        throw;
    }
}

void SavePolicy(const Model& m, const std::string& path) {
    const Physical& p = m.physical;
    TextWriter out(path, TextWriter::Mode::Blanks);
    out.Line("# OSM release policy. One keyword a line; a # starts a comment. See docs/policy_file.md.");
    out.Line("");
    out.Line("# Diurnal scenario of each year: years, a name of diurnal_scenarios.txt.");
    for (int a = FirstYear; a <= LastYear;) {
        int b = a;
        while (b < LastYear && p.DiurnalCode(b + 1) == p.DiurnalCode(a)) ++b;
        const int code = p.DiurnalCode(a);
        if (code < 0 || code > p.DiurnalName.hi(0) || p.DiurnalName(code).empty())
            throw Fault("year " + NumText(1900 + a) + " has the diurnal code " + NumText(code) +
                        ", which names no scenario; the policy was not saved");
        out.Bare("diurnal").Bare(yearRange(a, b)).Bare(quoted(p.DiurnalName(code)));
        out.EndRecord();
        a = b + 1;
    }
    out.Line("");
    out.Line("# Monthly release volumes: a sheet of riverware.xls and its trace field;");
    out.Line("# then one year's pattern (acre-feet, jan..dec) or a year of the trace, repeated.");
    out.Bare("release-trace").Bare(quoted(p.MonthlyVolSheet));
    if (!p.MonthlyVolField.empty()) out.Bare(quoted(p.MonthlyVolField));
    out.EndRecord();
    if (p.SeqType(1) == SeqPattern) {
        out.Bare("release-pattern");
        for (int mo = 1; mo <= 12; ++mo) out.Number(p.MonthlyVol(mo));
        out.EndRecord();
    } else if (p.SeqType(1) == SeqRepeatYear) {
        out.Bare("release-repeat").Number(1900 + p.RepYr(1));
        out.EndRecord();
    }
    out.Line("");
    out.Line("# Spike flow: magnitude (cfs), duration (days), first day in the month;");
    out.Line("# then the months with a spike, YEAR-MONTH.");
    out.Bare("spike-flow").Number(p.SpikeQ).Number(static_cast<int>(p.SpikeDays)).Number(static_cast<int>(p.SpikeStartDay));
    out.EndRecord();
    out.Bare("spikes");
    int n = 0;
    for (int i = 1; i <= 600; ++i)
        if (p.SpikeFlag(i)) {
            if (n > 0 && n % 8 == 0) {
                out.EndRecord();
                out.Bare("spikes");
            }
            const int mo = (i - 1) % 12 + 1;
            out.Bare(NumText(1948 + (i - 1) / 12) + (mo < 10 ? "-0" : "-") + NumText(mo));
            ++n;
        }
    out.EndRecord();
    out.Line("");
    out.Line("# Experimental release temperature (deg C, jan..dec) and the years that use it.");
    out.Bare("exp-temp-pattern");
    for (int mo = 1; mo <= 12; ++mo) out.Number(p.ExpTemp(mo));
    out.EndRecord();
    out.Bare("exp-temp-years");
    for (int a = FirstYear; a <= LastYear; ++a) {
        if (!p.ExpTempYr(a)) continue;
        int b = a;
        while (b < LastYear && p.ExpTempYr(b + 1)) ++b;
        out.Bare(yearRange(a, b));
        a = b;
    }
    out.EndRecord();
    out.Commit();
}

}  // namespace osm
