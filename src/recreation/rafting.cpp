#include "recreation/rafting.h"

#include <algorithm>
#include <cctype>

#include "core/fault.h"
#include "core/model.h"
#include "core/numbers.h"
#include "core/reaches.h"
#include "core/workbook.h"

namespace osm {

namespace {

// A trip runs the whole river from the put-in at the gauge to the take-out.
constexpr double RiverTripMiles = 226.0;
// Points of a beach curve; the curve spans the fullness ratio 0..1/BaseBeachRelFull.
constexpr int BeachCurvePoints = 50;

std::string tripLabel(const Rec& rc, int t) {
    return "trip type " + NumText(t) + " (" + rc.TripName(t) + ")";
}

void computeTripMiles(Rec& rc) {
    rc.MaxTripDays = 0;
    for (int t = 1; t <= rc.NTripTypes; ++t) {
        if (rc.TripDays(t) == 0)
            throw Fault(tripLabel(rc, t) + " has 0 days on the river, so its miles a day (" +
                        NumText(RiverTripMiles) + " / days) cannot be worked out; give it 1 day or more");
        rc.TripMiles(t) = Sng(RiverTripMiles / rc.TripDays(t));
        rc.MaxTripDays = std::max(rc.MaxTripDays, rc.TripDays(t));
    }
}

Database openCampTable(const Model& m) {
    Database links;
    if (!links.hasTable("Camps") && !LinkSheet(links, m.main.PhysicalXls, "CampingBeaches", "Camps"))
        throw Fault(m.main.PhysicalXls + ": the sheet CampingBeaches (the camp table) is missing");
    return links;
}

// A camp's INDEX is its number in the camp tables.
int16_t campIndex(const Model& m, const Cursor& camps) {
    const int16_t c = camps.Field("INDEX").int16();
    if (c < 1 || c > MaxCamps)
        throw Fault(m.main.PhysicalXls + ", sheet CampingBeaches: the camp at mile " + camps.Field("MILE").text() +
                    " has INDEX " + NumText(c) + "; an INDEX numbers a camp 1 to " + NumText(MaxCamps));
    return c;
}

void buildCampLists(const Model& m, Database& links, Rec& rc) {
    const int n = rc.NTripTypes;
    rc.CampCount.redim(Bounds{1, n}, Bounds{1, rc.MaxTripDays});
    rc.CampList.redim(Bounds{1, 2}, Bounds{1, n}, Bounds{1, rc.MaxTripDays}, Bounds{1, 0});
    for (int t = 1; t <= n; ++t) {
        for (int d = 1; d <= rc.TripDays(t); ++d) {
            const float lower = Sng(static_cast<double>(rc.TripMiles(t)) * (d - 1));
            const float upper = Sng(static_cast<double>(rc.TripMiles(t)) * d);
            Cursor camps = links.Query(CampWindowQuery(lower, upper));
            int j = 0;
            for (; !camps.AtEnd(); camps.MoveNext()) {
                ++j;
                if (j > rc.CampList.hi(3)) rc.CampList.redimPreserve(Bounds{1, j});
                rc.CampList(1, t, d, j) = camps.Field("PREF").single();
                rc.CampList(2, t, d, j) = campIndex(m, camps);
            }
            rc.CampCount(t, d) = ToInt16(j, "camps of a trip day");
        }
    }
}

int16_t sizeCode(const std::string& letter) {
    if (letter == "L") return 1;
    if (letter == "M") return 2;
    if (letter == "S") return 3;
    return 0;
}

// Whether the beach curves of run reach r read a campsite at some fullness.
bool beachesOffer(const Model& m, int r) {
    for (int k = 1; k <= 3; ++k)
        for (int i = 1; i <= BeachCurvePoints; ++i)
            if (m.sediment.BeachCurve(i, k, r) > 0) return true;
    return false;
}

void readCamps(Model& m, Database& links, Rec& rc) {
    const Main& mn = m.main;
    Cursor camps = links.Query("SELECT * FROM Camps ORDER BY MILE");
    int c = 0;
    int before = 0;
    for (; !camps.AtEnd(); camps.MoveNext()) {
        if (++c > MaxCamps)
            throw Fault(mn.PhysicalXls + ", sheet CampingBeaches: more than " + NumText(MaxCamps) +
                        " camps; the camp tables hold " + NumText(MaxCamps));
        rc.CampMile(c) = Sng(camps.Field("MILE").number() + HarlFerryMile);
        const std::string size = camps.Field("SIZE").text();
        rc.CampSizeChar(c) = size.empty()
                                 ? ""
                                 : std::string(1, static_cast<char>(std::toupper(static_cast<unsigned char>(size[0]))));
        const int r = ReachOfMileInclusive(m, rc.CampMile(c));
        // The parties of a camp in a run reach whose beaches can offer no campsite
        // would be stored as use of a capacity of 0: a million times over.
        if (r >= mn.FirstReach && r <= mn.LastReach && !beachesOffer(m, r))
            throw Fault(mn.PhysicalXls + ", sheet CampingBeaches: the camp at mile " + camps.Field("MILE").text() +
                        " (INDEX " + camps.Field("INDEX").text() + ") lies in reach " + NumText(r) +
                        ", whose beach curves in " + mn.PhyFile +
                        " offer no campsite at any fullness; move the camp or draw the reach's curves");
        rc.CampReach(c) = static_cast<int16_t>(r);
        if (r != before) rc.CampFirst(r) = static_cast<int16_t>(c);
        before = r;
    }
    rc.CampFirst(mn.NReaches + 1) = MaxCamps;

    // Rows missing from a short table count as bad sizes too, as do all after the
    // first bad one.
    bool bad = false;
    for (c = 1; c <= MaxCamps; ++c) {
        rc.CampSize(c) = sizeCode(rc.CampSizeChar(c));
        bad = bad || rc.CampSize(c) == 0;
        if (bad)
            ShowMessage(m, "camp size", "Error in Camps / SIZE data", "",
                        "camp " + NumText(c) + ", SIZE '" + rc.CampSizeChar(c) + "'");
    }

    rc.ReachCampNum.redim(Bounds{0, 3}, Bounds{1, mn.NReaches});
    rc.BeachCap.redim(Bounds{1, 3}, Bounds{1, mn.NReaches});
    for (int r = mn.FirstReach + 1; r <= mn.LastReach; ++r) {
        if (rc.CampFirst(r) == 0) continue;  // no camp in the reach
        for (c = rc.CampFirst(r); c <= rc.CampFirst(r + 1) - 1; ++c) rc.ReachCampNum(rc.CampSize(c), r) += 1;
    }
}

}  // namespace

std::string CampWindowQuery(float lower, float upper) {
    return std::string("SELECT *  FROM Camps") + " WHERE MILE >= " + NumTextLead(lower) + " AND MILE < " +
           NumTextLead(upper) + " ORDER BY PREF DESC";
}

void SetPartyClass(Rec& rc) {
    const int small = rc.PeoplePerCamp(1), medium = rc.PeoplePerCamp(2);
    for (int t = 1; t <= rc.NTripTypes; ++t) {
        const int p = rc.TripPeople(t);
        if (1 <= p && p <= small) rc.PartyClass(t) = 3;
        else if (small < p && p <= medium) rc.PartyClass(t) = 2;
        else if (p >= medium) rc.PartyClass(t) = 1;
    }
}

void PlaceParties(Rec& rc, int month) {
    Table2<double> unplaced("Unplaced");
    unplaced.redim(Bounds{0, 3}, Bounds{1, rc.MaxTripDays});
    int lastSize = 0;
    bool spread = false;
    for (int t = 1; t <= rc.NTripTypes; ++t) {
        const int cls = static_cast<int>(rc.PartyClass(t));
        for (int d = 1; d <= rc.TripDays(t); ++d) {
            double rest = rc.Launches(t, month);
            for (int j = 1; j <= rc.CampCount(t, d); ++j) {
                const int c = static_cast<int>(CInt(rc.CampList(2, t, d, j)));
                const int z = rc.CampSize(c);
                lastSize = z;
                if (z > cls) continue;  // too small for the party
                float& use = rc.CampUse(z, c, month);
                use = Sng(use + rest);
                const double over = static_cast<double>(use) - 1.0;
                if (over <= 0) {
                    rest = 0;
                    break;
                }
                use = 1;
                rest = over;
            }
            if (rest > 0) {
                unplaced(cls, d) += rest;
                spread = true;
            }
        }
    }
    if (!spread) return;
    // Demand that found no camp lands evenly on every candidate of its day, over
    // the limit of one party a night.
    for (int t = 1; t <= rc.NTripTypes; ++t) {
        const int cls = static_cast<int>(rc.PartyClass(t));
        for (int d = 1; d <= rc.TripDays(t); ++d) {
            for (int j = 1; j <= rc.CampCount(t, d); ++j) {
                const double u = unplaced(cls, d);
                if (u == 0) break;
                const int c = static_cast<int>(CInt(rc.CampList(2, t, d, j)));
                float& use = rc.CampUse(lastSize, c, month);
                use = Sng(use + u / rc.CampCount(t, d));
            }
        }
    }
}

void SumReachUse(const Model& m, Rec& rc, int month) {
    const double days = m.main.DaysInMonth(month);
    for (int c = 1; c <= MaxCamps; ++c) {
        const int r = rc.CampReach(c);
        for (int k = 1; k <= 3; ++k)
            rc.ReachCampUse(k, r, month) = Sng(rc.ReachCampUse(k, r, month) + rc.CampUse(k, c, month) * days);
    }
}

void LoadRafting(Model& m) {
    const Main& mn = m.main;
    Rec next = m.rec;
    const Bounds camps{1, MaxCamps};
    next.CampMile.redim(camps);
    next.CampSizeChar.redim(camps);
    next.CampSize.redim(camps);
    next.CampReach.redim(camps);
    next.CampFirst.redim(Bounds{0, mn.NReaches + 1});
    computeTripMiles(next);
    Database links = openCampTable(m);
    SetPartyClass(next);
    readCamps(m, links, next);
    buildCampLists(m, links, next);
    next.CampUse.redim(Bounds{0, 3}, camps, Bounds{0, 12});
    // Row 0 takes the camps whose mile lies outside the river.
    next.ReachCampUse.redim(Bounds{1, 3}, Bounds{0, mn.NReaches}, Bounds{0, 12});
    for (int month = 1; month <= 12; ++month) {
        PlaceParties(next, month);
        SumReachUse(m, next, month);
    }
    next.RaftingLoaded = true;
    m.rec = std::move(next);
}

std::string MonthlySchedule(Model& m, int t) {
    Rec& rc = m.rec;
    if (t < 1 || t > rc.NTripTypes) return "";
    // Worked on a copy, so that a fault leaves the old schedule in place.
    std::array<float, 13> launches{};
    auto open = [&](int mo) {
        return rc.LaunchCap(t, mo) > 0 && launches[static_cast<size_t>(mo)] < rc.LaunchCap(t, mo);
    };
    double left = rc.Parties(t);
    std::array<double, 13> w{};
    while (left >= 1) {
        double sum = 0;
        int nOpen = 0;
        for (int mo = 1; mo <= 12; ++mo) {
            w[static_cast<size_t>(mo)] = rc.LaunchPref(t, mo);
            if (open(mo)) {
                sum += w[static_cast<size_t>(mo)];
                ++nOpen;
            }
        }
        if (nOpen == 0) break;
        if (sum == 0)
            throw Fault(tripLabel(rc, t) + ": every month still open for launches has a preference weight of 0, so the " +
                        NumText(left) + " parties left cannot be shared among them; give one of them a weight");
        for (double& x : w) x /= sum;
        double placed = 0;
        for (int mo = 1; mo <= 12; ++mo) {
            if (!open(mo)) continue;
            const double days = m.main.DaysInMonth(mo);
            const double add = w[static_cast<size_t>(mo)] * left / days;
            float& l = launches[static_cast<size_t>(mo)];
            l = Sng(l + add);
            if (l <= rc.LaunchCap(t, mo)) {
                placed += days * add;
            } else {
                placed += days * (rc.LaunchCap(t, mo) - (l - add));
                l = rc.LaunchCap(t, mo);
            }
        }
        if (placed <= 0) break;  // negative weights would never finish
        left -= placed;
    }
    for (int mo = 1; mo <= 12; ++mo) rc.Launches(t, mo) = launches[static_cast<size_t>(mo)];
    const double n = CInt(left);
    return n == 0 ? "" : "WARNING!!!  There will be " + NumText(n) + " Parties that could not Launch";
}

void BeachCapacity(Model& m) {
    const Main& mn = m.main;
    const Sediment& sd = m.sediment;
    Rec& rc = m.rec;
    const double scale = sd.BaseBeachRelFull;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r) {
        double x = 0;
        for (int s = sd.BeachLowSlice(r); s <= sd.BeachHighSlice(r); ++s) x += sd.SandStore(s, r, 1);
        const double f = x / (sd.BeachBasePot(r) + 1e-10);
        if (scale == 0)
            throw Fault(RunPlace(mn, r) + ": the beach scale BaseBeachRelFull is 0, so the campsite "
                        "curve spans no sand; set it above 0 in the physical parameters");
        const double j = Int(BeachCurvePoints / (1.0 / scale) * f);
        // Point 0 reads no campsites; sand beyond the curve's last point has no reading.
        if (!(j >= 0 && j <= BeachCurvePoints))
            throw Fault(RunPlace(mn, r) + ": the beach fullness " + NumText(f) +
                        " gives campsite curve point " + NumText(j) + ", outside 0.." +
                        NumText(BeachCurvePoints) + "; check the eddy sand and the beach limits");
        const int i = static_cast<int>(j);
        for (int k = 1; k <= 3; ++k) rc.BeachCap(k, r) = sd.BeachCurve(i, k, r);
    }
}

void RaftingMonth(Model& m, int iMonth) {
    if (!m.rec.RaftingLoaded) return;
    m.rec.RaftMonth = static_cast<int16_t>(iMonth);
    BeachCapacity(m);
}

std::vector<float> CampDays(const Model& m, int month) {
    const Rec& rc = m.rec;
    std::vector<float> days;
    for (int c = 1; c <= MaxCamps; ++c) {
        double sum = 0;
        for (int k = 1; k <= 3; ++k) sum += rc.CampUse(k, c, month);
        days.push_back(Sng(m.main.DaysInMonth(month) * sum));
    }
    return days;
}

std::vector<std::array<float, 6>> CampUseSeries(const Model& m, int month) {
    const Rec& rc = m.rec;
    std::vector<std::array<float, 6>> series;
    for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r) {
        std::array<float, 6> s{};
        for (int k = 1; k <= 3; ++k) {
            s[static_cast<size_t>(2 * k - 2)] = rc.ReachCampUse(k, r, month);
            s[static_cast<size_t>(2 * k - 1)] = Sng(static_cast<double>(rc.BeachCap(k, r)) * m.main.DaysInMonth(month));
        }
        series.push_back(s);
    }
    return series;
}

}  // namespace osm
