#pragma once
// Rafting: the launch schedule of each trip type, the camps each trip day can
// use, the use of each camp month by month, and the campsites the beaches offer.
#include <array>
#include <string>
#include <vector>

namespace osm {

struct Model;
struct Rec;

// The text of the query for the camps between two miles, best first.
std::string CampWindowQuery(float lower, float upper);

// The whole rafting load: trip miles, party classes, camp lists, the camp table,
// and the camp use of the twelve months. Replaces the tables only when all of it
// has worked.
void LoadRafting(Model& m);

// Steps of LoadRafting, on the tables of `rc`.
void SetPartyClass(Rec& rc);
void PlaceParties(Rec& rc, int month);
void SumReachUse(const Model& m, Rec& rc, int month);

// Fills the year's parties of trip type t into the months by the preference
// weights under the launch limits. Returns the warning the rafting form shows, ""
// when every party launches.
std::string MonthlySchedule(Model& m, int t);

// The month step: the campsites the beaches offer now.
void RaftingMonth(Model& m, int iMonth);
void BeachCapacity(Model& m);

// What the camp-use charts show for a month: campsite-days of each camp 1..127,
// and for each reach (index r - FirstReach) demand and capacity of each size
// class, as the series 1..6 (odd demand, even capacity).
std::vector<float> CampDays(const Model& m, int month);
std::vector<std::array<float, 6>> CampUseSeries(const Model& m, int month);

}  // namespace osm
