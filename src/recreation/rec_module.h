#pragma once
// Module Rec: rafting launches and campsites, trout angling, economic values.
#include <cstdint>
#include <string>

#include "core/table.h"

namespace osm {

// Camps of the camp table; the tables keep room for this many.
inline constexpr int MaxCamps = 127;

struct Rec {
    // The tables of fixed size exist from the start.
    Rec() {
        for (auto* t : {&MonthEffort, &MonthQ}) t->redim(Bounds{0, 12});
        qMax.redim(Bounds{0, 20});
        Fished.redim(Bounds{0, 20});
        AgeVul.redim(Bounds{0, 20}, Bounds{0, 10});
        VulAges.redim(Bounds{0, 20});
        PeoplePerCamp.redim(Bounds{1, 3});
        RecHeaders.redim(Bounds{1, 6});
        DolDayAng.redim(Bounds{0, 12});
        DolTrip.redim(Bounds{1, 2}, Bounds{0, 12});
    }

    // Rafting policy (recreation file, second section). Trip types t 1..NTripTypes.
    int16_t NTripTypes = 0;
    int16_t MaxTripDays = 0;
    Table1<std::string> TripName{"TripName"};
    Table1<int16_t> Parties{"Parties"};        // t: parties in a year
    Table1<int16_t> TripDays{"TripDays"};      // t: days on the river
    Table1<int16_t> TripPeople{"TripPeople"};  // t: people in a party
    Table2<float> LaunchCap{"LaunchCap"};      // (t, m 0..12): daily launch limit
    Table2<float> LaunchPref{"LaunchPref"};    // (t, m 0..12): monthly weight
    Table2<float> Launches{"Launches"};        // (t, m 0..12): launches a day
    Table1<int16_t> PeoplePerCamp{"PeoplePerCamp"};  // 1 small <=, 2 medium <=, 3 large <=
    Table1<std::string> RecHeaders{"RecHeaders"};    // 1..6: the file's header lines, kept

    // Trips and camps, worked out by LoadRafting.
    Table1<float> TripMiles{"TripMiles"};    // t: river miles a day
    Table1<float> PartyClass{"PartyClass"};  // t: 1 needs a large camp, 2 medium, 3 any
    Table1<float> CampMile{"CampMile"};      // c 1..127: miles below the dam
    Table1<std::string> CampSizeChar{"CampSizeChar"};
    Table1<int16_t> CampSize{"CampSize"};    // c: 1 large, 2 medium, 3 small, 0 none
    Table1<int16_t> CampReach{"CampReach"};  // c
    Table1<int16_t> CampFirst{"CampFirst"};  // r 0..NReaches+1: first camp of the reach
    Table<float, 4> CampList{"CampList"};    // (1 PREF | 2 INDEX, t, d, j): candidates by PREF
    Table2<int16_t> CampCount{"CampCount"};  // (t, d): candidates of a trip day
    // (k 0..3, c, m 0..12): parties a night; row 0 takes camps without a size.
    Table3<float> CampUse{"CampUse"};
    Table2<float> ReachCampNum{"ReachCampNum"};  // (k 0..3, r): camps in the table
    bool RaftingLoaded = false;
    int16_t RaftMonth = 0;  // the month the rafting form shows

    Table2<float> BeachCap{"BeachCap"};          // (k 1..3, r): campsites the beaches offer
    Table3<float> ReachCampUse{"ReachCampUse"};  // (k 1..3, r 0.., month 0..12): campsite-nights

    // Angling parameters (recreation file, first section). Species i 1..20.
    bool DynEffort = false;
    float DyEffort50 = 0, DyEffortSlope = 0, DyEffortMax = 0;
    Table1<float> ReachEffort{"ReachEffort"};  // r: share of the effort
    int32_t TotalMaxEffort = 0;                // angler days in a year
    Table1<float> MonthEffort{"MonthEffort"};  // m 0..12
    Table1<float> MonthQ{"MonthQ"};            // m 0..12: relative catchability
    Table1<bool> Fished{"Fished"};             // i 0..20
    Table1<float> qMax{"qMax"};                // i 0..20
    Table2<float> AgeVul{"AgeVul"};            // (i 0..20, a 0..10)
    // i 0..20: pre-adult ages whose vulnerability the file gives, the species' wk.
    Table1<int16_t> VulAges{"VulAges"};

    // Angling results.
    Table1<float> CatchRch{"CatchRch"};          // r: catch of the year
    Table1<float> CPERch{"CPERch"};              // r: catch per effort
    Table1<float> EffortRch{"EffortRch"};        // r: angler days
    int32_t AnglerValue = 0;                     // $ of the year

    // Economic values (sheet Economic$), m 0..12.
    Table1<int16_t> DolDayAng{"DolDayAng"};  // $ spent locally an angler day
    Table2<int16_t> DolTrip{"DolTrip"};      // (1 commercial | 2 private, m): $ a person-day
};

}  // namespace osm
