#include <gtest/gtest.h>

#include "core/model.h"
#include "core/start_up.h"
#include "recreation/economic_values.h"
#include "recreation/recreation_file.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;

TEST(EconomicValues, TwelveMonthsOfDollarsOrNothing) {
    test::TestFolder f;
    std::string sheet = "Month,Dol_Day_Ang,Dol_Com_Trp,Dol_Priv_Trp\r\n";
    for (int mo = 1; mo <= 11; ++mo)
        sheet += "m," + std::to_string(40 + mo) + "," + std::to_string(1500 + 10 * mo) + "," + std::to_string(500 + mo) + "\r\n";
    f.Write("short.xls/Economic.csv", sheet);
    f.Write("good.xls/Economic.csv", sheet + "m,52,1620,512\r\n");
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
    rc.DolTrip(1, 4) = 1600, rc.DolTrip(1, 6) = 1700, rc.DolTrip(2, 4) = 520, rc.DolTrip(2, 5) = 3;
    const int people[] = {10, 3, 7, 50};
    for (int t = 1; t <= 4; ++t) rc.TripPeople(t) = static_cast<int16_t>(people[t - 1]);
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
