#include <gtest/gtest.h>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "recreation/rafting.h"
#include "recreation/recreation_file.h"
#include "support/collect_messages.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;

namespace {

void setCamps(Rec& rc) { rc.PeoplePerCamp(1) = 12, rc.PeoplePerCamp(2) = 24, rc.PeoplePerCamp(3) = 40; }

// One trip type with the months table, for the schedule.
Model scheduleModel(int parties) {
    Model m;
    BuildMonthsTable(m);
    AllocateTripTables(m.rec, 1);
    m.rec.TripName(1) = "Oar", m.rec.Parties(1) = static_cast<int16_t>(parties);
    return m;
}

// A river of two run reaches, the dam row reach 1, and a camp table of five camps
// written out of mile order. Gauge miles 10..200 are 25.62..215.62 below the dam.
struct CampRiver {
    test::TestFolder folder;
    test::CollectMessages messages;
    Model m;

    explicit CampRiver(const std::string& campRows =
                           "200,l,8,5\r\n10,L,5,1\r\n113,S,3,4\r\n50,S,9,2\r\n80,M,7,3\r\n") {
        folder.Write("physical.xls/CampingBeaches.csv", "MILE,SIZE,PREF,INDEX\r\n" + campRows);
        BuildMonthsTable(m);
        ReadReachFile(m, folder.Write("Reaches.csv", "\"t\",3,2,3\r\n\"a\",\"b\",\"c\",\"d\"\r\n1,\"Dam\",0,0.5\r\n"
                                                     "2,\"Upper\",0.5,120\r\n3,\"Lower\",120,260\r\n"));
        m.main.PhysicalXls = folder.File("physical.xls");
        m.messages = &messages;
        // Beaches that offer a campsite of each size in both run reaches.
        for (int r = 2; r <= 3; ++r)
            for (int k = 1; k <= 3; ++k) m.sediment.BeachCurve(50, k, r) = 1;
        // Type 1: two days of 113 miles, 30 people, large camps only. Type 2: three
        // days of 75.33 miles, 10 people, any camp.
        Rec& rc = m.rec;
        AllocateTripTables(rc, 2);
        setCamps(rc);
        rc.TripName(1) = "Motor", rc.TripDays(1) = 2, rc.TripPeople(1) = 30, rc.Launches(1, 4) = 1.5f;
        rc.TripName(2) = "Oar", rc.TripDays(2) = 3, rc.TripPeople(2) = 10, rc.Launches(2, 4) = 0.5f;
    }
};

std::vector<int> candidates(const Rec& rc, int t, int d) {
    std::vector<int> c;
    for (int j = 1; j <= rc.CampCount(t, d); ++j) c.push_back(static_cast<int>(rc.CampList(2, t, d, j)));
    return c;
}

}  // namespace

// No parties wipe an old schedule; parties with no caps cannot launch; open
// months that all weigh nothing are a fault that keeps the old schedule.
TEST(LaunchSchedule, NoPartiesNoCapsAndABadWeighting) {
    Model m = scheduleModel(0);
    m.rec.LaunchCap(1, 7) = 2, m.rec.LaunchPref(1, 7) = 1, m.rec.Launches(1, 7) = 7;
    EXPECT_EQ(MonthlySchedule(m, 1), "");
    EXPECT_EQ(m.rec.Launches(1, 7), 0.0f);
    m.rec.Parties(1) = 430, m.rec.LaunchCap.clear();
    EXPECT_EQ(MonthlySchedule(m, 1), "WARNING!!!  There will be 430 Parties that could not Launch");
    m.rec.LaunchCap(1, 7) = 3, m.rec.LaunchPref.clear(), m.rec.Launches(1, 7) = 1.5f;
    EXPECT_TRUE(Holds(FaultText([&] { MonthlySchedule(m, 1); }), {"trip type 1 (Oar)", "weight of 0"}));
    EXPECT_EQ(m.rec.Launches(1, 7), 1.5f);
}

// April (30 days, cap 1) and May (31 days, cap 10) weigh the same. Round 1:
// April takes 50/30 > 1 a day, so it fills to 1 (30 parties); May takes 50/31.
// Round 2: the 20 left go to May alone: 70/31 a day. A remainder below 1 ends
// the filling and is rounded.
TEST(LaunchSchedule, ACapThatBindsPassesItsShareToTheOpenMonths) {
    Model m = scheduleModel(100);
    Rec& rc = m.rec;
    rc.LaunchCap(1, 4) = 1, rc.LaunchCap(1, 5) = 10, rc.LaunchPref(1, 4) = 1, rc.LaunchPref(1, 5) = 1;
    rc.LaunchPref(1, 6) = 5;  // weighs in the sum only while open; June has no cap
    EXPECT_EQ(MonthlySchedule(m, 1), "");
    EXPECT_EQ(rc.Launches(1, 4), 1.0f);
    EXPECT_NEAR(rc.Launches(1, 5), 70.0 / 31.0, 1e-6);
    EXPECT_EQ(rc.Launches(1, 6), 0.0f);
    rc.LaunchCap(1, 5) = 0;
    rc.LaunchCap(1, 4) = 3.32f;  // 99.6 parties fit: 0.4 left, shown as none
    EXPECT_EQ(MonthlySchedule(m, 1), "");
    EXPECT_EQ(rc.Launches(1, 4), 3.32f);
    rc.LaunchCap(1, 4) = 3.31f;  // 99.3 fit: 0.7 left rounds to one party
    EXPECT_EQ(MonthlySchedule(m, 1), "WARNING!!!  There will be 1 Parties that could not Launch");
}

TEST(PartyClass, TheFirstTwoLimitsDecideAndTheThirdIsNotUsed) {
    Rec rc;
    AllocateTripTables(rc, 6);
    setCamps(rc);
    const int people[] = {12, 13, 24, 25, 41, 0};
    for (int t = 1; t <= 6; ++t) rc.TripPeople(t) = static_cast<int16_t>(people[t - 1]), rc.PartyClass(t) = 9;
    SetPartyClass(rc);
    const float expected[] = {3, 2, 2, 1, 1, 9};  // below 1 keeps what it had
    for (int t = 1; t <= 6; ++t) EXPECT_EQ(rc.PartyClass(t), expected[t - 1]) << people[t - 1] << " people";
}

TEST(CampLists, EachTripDayTakesTheCampsOfItsMileWindowBestFirst) {
    CampRiver river;
    LoadRafting(river.m);
    const Rec& rc = river.m.rec;
    // Mile 113 opens the second day of a two-day trip.
    EXPECT_EQ(candidates(rc, 1, 1), (std::vector<int>{2, 3, 1}));
    EXPECT_EQ(candidates(rc, 1, 2), (std::vector<int>{5, 4}));
    EXPECT_EQ(candidates(rc, 2, 3), (std::vector<int>{5}));
    EXPECT_EQ(rc.CampSizeChar(5), "L");  // in mile order; a lower-case letter counts
    // The first run reach is left out of the count, though it holds three camps.
    // Reach 3's count runs on through the 121 empty entries up to 126, each of
    // them a bad size that says so.
    EXPECT_EQ(rc.ReachCampNum(1, 2), 0.0f);
    EXPECT_EQ(rc.ReachCampNum(1, 3), 1.0f);
    EXPECT_EQ(rc.ReachCampNum(0, 3), 121.0f);
    ASSERT_EQ(river.messages.seen.size(), 122u);
    EXPECT_EQ(river.messages.seen[0].text, "Error in Camps / SIZE data");
}

TEST(CampUse, FirstPassOnePartyANightThenTheRestSpreadsOnTheLastSize) {
    CampRiver river;
    LoadRafting(river.m);
    const Rec& rc = river.m.rec;
    // April. Motor day 1: only camp 1 is large; it takes 1 party, 0.5 unplaced.
    // Motor day 2: camp 5 takes 1, 0.5 unplaced. Oar day 1: camp 2 (small) takes
    // 0.5; day 2 camp 3 (medium) 0.5; day 3 camp 5 is full at 1.5, 0.5 unplaced.
    // The last camp looked at was large, so the second pass spreads as large use:
    // 0.5/3 on camps 2, 3, 1; 0.5/2 on camps 5, 4; 0.5 on camp 5.
    EXPECT_NEAR(rc.CampUse(1, 1, 4), 1 + 0.5 / 3, 1e-6);
    EXPECT_NEAR(rc.CampUse(3, 2, 4), 0.5, 1e-6);
    EXPECT_NEAR(rc.CampUse(1, 4, 4), 0.25, 1e-6);
    EXPECT_NEAR(rc.CampUse(1, 5, 4), 1.75, 1e-6);
    // Campsite-nights of April's 30 days by reach, and the charts that show them.
    EXPECT_NEAR(rc.ReachCampUse(1, 2, 4), 45, 1e-4);
    EXPECT_NEAR(CampDays(river.m, 4).at(4), 1.75 * 30, 1e-4);
    EXPECT_NEAR(CampUseSeries(river.m, 4).at(1).at(0), 60, 1e-4);
}

// No camp past mile 113: the second motor day has no candidate and its 1.5
// parties find nowhere to go. The idle oar trip looked last at the medium camp 3,
// so day 1's half party spreads as medium use on camps 2, 3 and 1.
TEST(CampUse, ATripDayWithoutCampsLosesItsParties) {
    CampRiver river("10,L,5,1\r\n50,S,9,2\r\n80,M,7,3\r\n");
    river.m.rec.Launches(2, 4) = 0;
    LoadRafting(river.m);
    const Rec& rc = river.m.rec;
    EXPECT_EQ(rc.CampCount(1, 2), 0);
    double total = 0;
    for (int c = 1; c <= 127; ++c)
        for (int k = 0; k <= 3; ++k) total += rc.CampUse(k, c, 4);
    EXPECT_NEAR(total, 1.5, 1e-6);
    EXPECT_NEAR(rc.CampUse(2, 1, 4), 0.5 / 3, 1e-6);
}

TEST(CampUse, BadTablesAndTripsAreFaults) {
    CampRiver river;
    river.m.rec.TripDays(2) = 0;
    EXPECT_TRUE(Holds(FaultText([&] { LoadRafting(river.m); }), {"trip type 2 (Oar)", "0 days"}));
    EXPECT_FALSE(river.m.rec.RaftingLoaded);
    std::string rows;
    for (int c = 1; c <= 128; ++c) rows += std::to_string(c) + ",L," + std::to_string(c) + "," + std::to_string(c) + "\r\n";
    CampRiver many(rows);
    EXPECT_TRUE(Holds(FaultText([&] { LoadRafting(many.m); }), {"more than 127 camps"}));
}
