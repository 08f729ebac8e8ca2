#include "recreation/recreation_file.h"

#include <algorithm>
#include <cctype>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/textfile.h"

namespace osm {

namespace {

constexpr const char* SizeLetters[] = {"S", "M", "L"};

std::string upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

std::string tripWhat(const char* what, int t) { return std::string(what) + " of trip type " + NumText(t); }

// A count of days, parties or people: never negative.
int16_t count(TextReader& in, const std::string& what) {
    const int16_t n = in.Int16(what);
    if (n < 0) in.Fail(what + " (0 or more)", NumText(n));
    return n;
}

// A line of 12 monthly values of trip type t, none negative.
void readMonths(TextReader& in, Table2<float>& table, int t, const char* what) {
    for (int mo = 1; mo <= 12; ++mo)
        table(t, mo) = in.NonNegative(std::string(what) + " of month " + NumText(mo) + ", trip type " + NumText(t));
}

void writeMonths(TextWriter& out, const Table2<float>& table, int t) {
    for (int mo = 1; mo <= 12; ++mo) out.Number(table(t, mo));
    out.EndRecord();
}

// A text key at the start of a record, checked so that a file out of step with
// the reaches or species in force is caught where it goes wrong.
void expectKey(TextReader& in, const std::string& key) {
    const int line = in.line();
    const std::string found = in.Text("\"" + key + "\"");
    if (found != key) throw FileFault(in.path(), line, "\"" + key + "\"", found);
}

}  // namespace

void AllocateTripTables(Rec& rc, int n) {
    const Bounds trips{1, n};
    rc.NTripTypes = static_cast<int16_t>(n);
    rc.TripName.redim(trips);
    rc.Parties.redim(trips);
    rc.TripDays.redim(trips);
    rc.TripPeople.redim(trips);
    rc.TripMiles.redim(trips);
    rc.PartyClass.redim(trips);
    for (auto* t : {&rc.LaunchCap, &rc.LaunchPref, &rc.Launches}) t->redim(trips, Bounds{0, 12});
}

void AllocateTripTypes(Model& m) { AllocateTripTables(m.rec, 3); }

void ReadRafting(Model& m, const std::string& path) {
    if (path.empty()) return;
    TextReader in(path);
    while (true) {
        if (in.AtEnd()) in.Fail("a line RAFTING before the rafting policy", "the end of the file");
        if (upper(in.Line("a line RAFTING")) == "RAFTING") break;
    }
    Rec next = m.rec;
    const int line = in.line();
    const int n = in.Int16("the number of trip types");
    if (n < 0) throw FileFault(path, line, "the number of trip types (0 or more)", NumText(n));
    AllocateTripTables(next, n);
    in.SkipLine("the trip type header");
    for (int t = 1; t <= n; ++t) next.TripName(t) = in.Line(tripWhat("the name", t));
    auto header = [&](int h) { next.RecHeaders(h) = in.Line("header line " + NumText(h)); };
    header(1);
    for (int t = 1; t <= n; ++t) next.Parties(t) = count(in, tripWhat("the parties a year", t));
    header(2);
    next.MaxTripDays = 0;
    for (int t = 1; t <= n; ++t) {
        next.TripDays(t) = count(in, tripWhat("the days on the river", t));
        next.MaxTripDays = std::max(next.MaxTripDays, next.TripDays(t));
    }
    header(3);
    for (int t = 1; t <= n; ++t) next.TripPeople(t) = count(in, tripWhat("the people a party", t));
    header(4);
    for (int t = 1; t <= n; ++t) readMonths(in, next.LaunchCap, t, "the daily launch limit");
    header(5);
    for (int t = 1; t <= n; ++t) readMonths(in, next.LaunchPref, t, "the monthly weight");
    header(6);
    // The schedule fills the months up to their limits and no further.
    for (int t = 1; t <= n; ++t)
        for (int mo = 1; mo <= 12; ++mo) {
            const std::string what = "the launches a day of month " + NumText(mo) + ", trip type " + NumText(t);
            const float launches = in.NonNegative(what);
            if (launches > next.LaunchCap(t, mo))
                in.Fail(what + " (at most its daily launch limit " + NumText(next.LaunchCap(t, mo)) + ")",
                        NumText(launches));
            next.Launches(t, mo) = launches;
        }
    in.SkipLine("the line People Per Camp");
    for (int s = 1; s <= 3; ++s) {
        next.PeoplePerCamp(s) = count(in, "the people per camp of size " + std::string(SizeLetters[s - 1]));
        in.Text("the size letter");
    }
    m.rec = std::move(next);
}

void ReadAnglingPars(Model& m, const std::string& path) {
    if (path.empty()) return;
    const Main& mn = m.main;
    TextReader in(path);
    Rec next = m.rec;
    next.DynEffort = in.Flag("DynEffort");
    next.DyEffort50 = in.Single("DyEffort50");
    next.DyEffortSlope = in.Single("DyEffortSlope");
    next.DyEffortMax = in.Single("DyEffortMax");
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        in.Int16("the reach number");
        next.ReachEffort(r) = in.Single("the effort share of reach " + NumText(r));
    }
    expectKey(in, "TotalMaxEffort");
    next.TotalMaxEffort = in.Int32("TotalMaxEffort");
    for (int mo = 1; mo <= 12; ++mo) {
        in.Text("the month name");
        next.MonthEffort(mo) = in.Single("the effort share of month " + NumText(mo));
        next.MonthQ(mo) = in.Single("the catchability of month " + NumText(mo));
    }
    for (int i = 1; i <= m.popsubs.NSpecies; ++i) {
        const std::string sp = " of species " + NumText(i);
        in.Int16("the species index");
        next.Fished(i) = in.Flag("the angling flag" + sp);
        if (!next.Fished(i)) continue;
        expectKey(in, "qMax");
        next.qMax(i) = in.Single("qMax" + sp);
        const int line = in.line();
        expectKey(in, "AgeVul");
        int a = 0;
        while (in.line() == line && !in.AtLineEnd()) {
            if (a == next.AgeVul.hi(1))
                throw FileFault(path, line, "at most " + NumText(a) + " ages after AgeVul", in.Text("a value"));
            ++a;
            next.AgeVul(i, a) = in.Single("the vulnerability of age " + NumText(a) + sp);
        }
        next.VulAges(i) = static_cast<int16_t>(a);
    }
    m.rec = std::move(next);
}

void WriteRecFile(const Model& m, const std::string& path) {
    if (path.empty()) return;
    const Main& mn = m.main;
    const Rec& rc = m.rec;
    TextWriter out(path);
    out.Flag(rc.DynEffort).Number(rc.DyEffort50).Number(rc.DyEffortSlope).Number(rc.DyEffortMax);
    out.EndRecord();
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        out.Number(r).Number(rc.ReachEffort(r));
        out.EndRecord();
    }
    out.Text("TotalMaxEffort").Number(static_cast<double>(rc.TotalMaxEffort));
    out.EndRecord();
    for (int mo = 1; mo <= 12; ++mo) {
        out.Text(mn.MonthName(mo)).Number(rc.MonthEffort(mo)).Number(rc.MonthQ(mo));
        out.EndRecord();
    }
    for (int i = 1; i <= m.popsubs.NSpecies; ++i) {
        out.Number(i).Flag(rc.Fished(i));
        out.EndRecord();
        if (!rc.Fished(i)) continue;
        out.Text("qMax").Number(rc.qMax(i));
        out.EndRecord();
        out.Text("AgeVul");
        for (int a = 1; a <= rc.VulAges(i); ++a) out.Number(rc.AgeVul(i, a));
        out.EndRecord();
    }

    const int n = rc.NTripTypes;
    out.Line("RAFTING");
    out.Line(NumText(n));
    out.Line("Trip Type");
    for (int t = 1; t <= n; ++t) out.Line(rc.TripName(t));
    out.Line(rc.RecHeaders(1));
    for (int t = 1; t <= n; ++t) out.Line(NumText(rc.Parties(t)));
    out.Line(rc.RecHeaders(2));
    for (int t = 1; t <= n; ++t) out.Line(NumText(rc.TripDays(t)));
    out.Line(rc.RecHeaders(3));
    for (int t = 1; t <= n; ++t) out.Line(NumText(rc.TripPeople(t)));
    out.Line(rc.RecHeaders(4));
    for (int t = 1; t <= n; ++t) writeMonths(out, rc.LaunchCap, t);
    out.Line(rc.RecHeaders(5));
    for (int t = 1; t <= n; ++t) writeMonths(out, rc.LaunchPref, t);
    out.Line(rc.RecHeaders(6));
    for (int t = 1; t <= n; ++t) writeMonths(out, rc.Launches, t);
    out.Line("People Per Camp");
    for (int s = 1; s <= 3; ++s) {
        out.Number(static_cast<int>(rc.PeoplePerCamp(s))).Bare(SizeLetters[s - 1]);
        out.EndRecord();
    }
    out.Commit();
}

}  // namespace osm
