#include "population/catch_data.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <utility>
#include <vector>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/workbook.h"

namespace osm {

namespace {

std::string lowerPrefix(const std::string& s, size_t n) {
    std::string out = s.substr(0, std::min(n, s.size()));
    std::transform(out.begin(), out.end(), out.begin(), [](unsigned char c) { return std::tolower(c); });
    return out;
}

// A species index, reach or year that the catch tables lack is refused, naming
// the sheet and row, before anything is stored.
int within(int v, const Table3<float>& t, int dim, const std::string& sheet, long row, const char* what) {
    if (v < t.lo(dim) || v > t.hi(dim))
        throw Fault(sheet + ", row " + std::to_string(row) + ": " + what + " " + NumText(v) + " is outside " +
                    NumText(t.lo(dim)) + ".." + NumText(t.hi(dim)));
    return v;
}

}  // namespace

void ReadCatchData(Model& m, const std::string& path, const std::string& sheet, int yrFirst,
                   int yrLast) {
    Database db = OpenWorkbook(path);
    Popsubs& ps = m.popsubs;
    Table3<float> index = ps.CatchIndex;
    std::vector<std::pair<std::string, int>> lookup;
    long row = 2;
    for (Cursor c = db.OpenRequiredSheet("Lookup$"); !c.AtEnd(); c.MoveNext(), ++row)
        lookup.emplace_back(c.Field("SPCODE").text(), within(c.Field("ModelIndex").int16(), index, 0,
                                                             path + ", sheet Lookup$", row, "the model index"));
    const int nl = static_cast<int>(lookup.size());

    Table1<int16_t> flag = ps.CatchDataFlag;
    index.clear();
    flag.clear();
    std::map<std::pair<int, int>, int> count;  // (reach, species)
    row = 2;
    for (Cursor c = db.OpenRequiredSheet(sheet); !c.AtEnd(); c.MoveNext(), ++row) {
        const std::string code = c.Field("SPECIES").text();
        const auto it = std::find_if(lookup.begin(), lookup.end(),
                                     [&](const auto& entry) { return entry.first == code; });
        if (it == lookup.end()) continue;
        const int i = it->second;
        const std::string where = path + ", sheet " + sheet;
        const int r = within(c.Field("REACH").int16(), index, 1, where, row, "the reach");
        const int yr = within(c.Field("YR").int16(), index, 2, where, row, "the year");
        const float v = c.Field("STDCATCH").single();
        index(i, r, yr) = v;
        if (yr >= yrFirst && yr <= yrLast) {
            index(i, r, 47) += v;
            ++count[{r, i}];
        }
        if (yr == 47) flag(i) = -1;
    }
    for (int r = index.lo(1); r <= index.hi(1); ++r)
        for (int i = 1; i <= nl; ++i) {
            const auto it = count.find({r, i});
            if (it != count.end()) index(i, r, 47) /= static_cast<float>(it->second);
        }
    ps.CatchIndex = std::move(index);
    ps.CatchDataFlag = std::move(flag);
}

void ReadRainbowData(Model& m, const std::string& path, const std::string& sheet, int yrFirst,
                     int yrLast) {
    Popsubs& ps = m.popsubs;
    const int first = m.main.FirstReach, last = m.main.LastReach;
    int i = ps.NSpecies + 1;
    for (int s = 1; s <= ps.NSpecies; ++s)
        if (lowerPrefix(ps.SpName(s), 7) == "rainbow") {
            i = s;
            break;
        }
    Table3<float> index = ps.CatchIndex;
    Table2<float> days = ps.AnglerDaysObs, caught = ps.CatchObs;
    const float old = index(i, first, 47);
    for (int yr = 47; yr <= 98; ++yr) index(i, first, yr) = 0;
    Database db = OpenWorkbook(path);
    int n = 0;
    long row = 2;
    for (Cursor c = db.OpenSheet(sheet); !c.AtEnd(); c.MoveNext(), ++row) {
        const int yr = within(c.Field("YR").int16(), index, 2, path + ", sheet " + sheet, row, "the year");
        const float cpue = c.Field("CPUE").single();
        const float d = Sng(static_cast<double>(c.Field("ANGHR_1000").single()) * 1000 / 6);
        const float k = c.Field("Catch").single();
        index(i, first, yr) = cpue;
        days(first, yr) = d;
        caught(first, yr) = k;
        if (yr >= yrFirst && yr <= yrLast) {
            index(i, first, 47) += cpue;
            days(first, 47) += d;
            caught(first, 47) += k;
            ++n;
        }
    }
    const std::string where = path + ", sheet " + sheet;
    if (n == 0)
        throw Fault(where + " holds no record of the years " + NumText(yrFirst) + " to " + NumText(yrLast) +
                    ": the rainbow trout series has no mean to rescale the other reaches by");
    if (old == 0)
        throw Fault(where + ": the mean catch index of " + (i <= ps.NSpecies ? ps.SpName(i) : std::string("species ") + NumText(i)) +
                    " at reach " + NumText(first) + " is 0: the catch survey (sheet " + CatchSurveySheet +
                    ", species codes of sheet Lookup$) has no record of it there in " + NumText(yrFirst) + " to " +
                    NumText(yrLast) + ", so the other reaches cannot be rescaled to the units of the CPUE series");
    index(i, first, 47) /= static_cast<float>(n);
    days(first, 47) /= static_cast<float>(n);
    caught(first, 47) /= static_cast<float>(n);
    const float ratio = index(i, first, 47) / old;
    for (int r = first + 1; r <= last; ++r)
        for (int yr = 47; yr <= 98; ++yr) index(i, r, yr) *= ratio;
    ps.CatchIndex = std::move(index);
    ps.AnglerDaysObs = std::move(days);
    ps.CatchObs = std::move(caught);
}

}  // namespace osm
