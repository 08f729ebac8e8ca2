#include <gtest/gtest.h>

#include "core/model.h"
#include "core/start_up.h"
#include "recreation/economic_values.h"
#include "recreation/recreation_file.h"
#include "support/fault_text.h"
#include "support/small_model.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;

namespace {

std::string economicSheet(int rows) {
    std::string s = "Month,Dol_Day_Ang,Dol_Com_Trp,Dol_Priv_Trp\r\n";
    for (int mo = 1; mo <= rows; ++mo)
        s += "m" + std::to_string(mo) + "," + std::to_string(40 + mo) + "," + std::to_string(1500 + 10 * mo) + "," +
             std::to_string(500 + mo) + "\r\n";
    return s;
}

}  // namespace

TEST(EconomicValues, TwelveMonthsOfDollarsOrNothing) {
    test::TestFolder f;
    f.Write("good.xls/Economic.csv", economicSheet(12));
    f.Write("short.xls/Economic.csv", economicSheet(11));
    Model m;
    ReadEconomic(m, f.File("good.xls"), "Economic$");
    EXPECT_EQ(m.rec.DolDayAng(4), 44);
    EXPECT_EQ(m.rec.DolTrip(2, 12), 512);

    EXPECT_TRUE(Holds(FaultText([&] { ReadEconomic(m, f.File("short.xls"), "Economic$"); }),
                      {"short.xls", "Economic$", "12 rows", "found 11"}));
    EXPECT_EQ(m.rec.DolTrip(2, 12), 512);
}

TEST(EconomicValues, AnnualValueByClassWorkedByHand) {
    Model m;
    BuildMonthsTable(m);
    AllocateTripTables(m.rec, 4);
    Rec& rc = m.rec;
    rc.DolTrip(1, 4) = 1600;
    rc.DolTrip(1, 6) = 1700;
    rc.DolTrip(2, 4) = 520;
    rc.DolTrip(2, 5) = 3;
    rc.TripPeople(1) = 10;
    rc.TripPeople(2) = 3;
    rc.TripPeople(3) = 7;
    rc.TripPeople(4) = 50;
    rc.Launches(1, 4) = 1.5f;     // 1.5 * 10 * 30 * 1600 = 720000
    rc.Launches(2, 6) = 0.25f;    // 0.25 * 3 * 30 * 1700 = 38250, commercial too
    rc.Launches(3, 4) = 0.1234f;  // 0.1234 * 7 * 30 * 520 = 13475.28 -> 13475
    rc.Launches(3, 5) = 0.25f;    // 0.25 * 7 * 31 * 3 = 162.75 -> 163
    rc.Launches(4, 4) = 5;        // a fourth type carries no money
    const RaftingValue v = ShowTotals(m);
    EXPECT_EQ(v.byClass[0], 758250.0);
    EXPECT_EQ(v.byClass[1], 13638.0);
    EXPECT_EQ(DollarText(v.total), "$771,888");
}

// The whole model reads the recreation files at start-up with the dollars; a
// physical-only start reads the rafting but not the dollars.
TEST(EconomicValues, StartUpReadsTheDollarsOnlyForTheWholeModel) {
    auto whole = test::StartSmallModel(false);
    EXPECT_EQ(whole->m.rec.DolTrip(1, 4), 1600);
    EXPECT_EQ(whole->m.rec.TotalMaxEffort, 1200);
    EXPECT_EQ(whole->m.rec.CampCount(1, 2), 3);  // the camps at gauge miles 22.61, 22.79 and 22.97
    auto phys = test::StartSmallModel(true);
    EXPECT_EQ(phys->m.rec.DolTrip(1, 4), 0);
    EXPECT_TRUE(phys->m.rec.RaftingLoaded);
}
