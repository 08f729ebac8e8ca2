#include "hydrology/river_temperature.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/fault.h"
#include "core/model.h"
#include "core/reaches.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;
using osm::test::TestFolder;

namespace {

// Reach 1 is the dam row; the run reaches are 10 and 20 miles long.
const char* evenReaches =
    "\"Test river\",3,2,3\r\n\"Reach\",\"Label\",\"Upper\",\"Lower\"\r\n"
    "1,\"Dam\",0,0.5\r\n2,\"Upper gorge\",0.5,10.5\r\n3,\"Lower gorge\",10.5,30.5\r\n";

void setYear(Model& m, int yr, int month) {
    m.main.CurYr = m.main.SimYr = static_cast<int16_t>(yr);
    m.main.MonthIdx = static_cast<int16_t>((yr - 48) * 12 + month);
}

// Normal 8, experimental 15 and equilibrium 20 degrees in every month.
class RiverTemperatureTest : public ::testing::Test {
protected:
    void SetUp() override {
        ReadReachFile(m, f.Write("Reaches.csv", evenReaches));
        for (int mo = 1; mo <= 12; ++mo) m.physical.BaseTemp(mo) = 8, m.physical.ExpTemp(mo) = 15, m.physical.EqTemp(mo) = 20;
        for (int r = 2; r <= 3; ++r) m.physical.MeanFlow(r) = 1000, m.physical.MeanWidth(r) = 100;
    }
    float release(int yr) {
        setYear(m, yr, 7);
        RiverTemperature(m, 7);
        return m.physical.WaterTemp(1);
    }
    std::string book() const { return f.File("physical.xls"); }

    TestFolder f;
    Model m;
};

TEST_F(RiverTemperatureTest, WithoutExchangeOnlyTributariesMix) {
    setYear(m, 70, 5);
    m.physical.HeatEx = 0;
    m.physical.MeanFlow(3) = 2000;
    m.morph.TribQ(269, 2) = 250;
    m.morph.TribQ(269, 3) = 500;
    RiverTemperature(m, 5);
    // (750*8 + 250*20)/1000, then (1500*11 + 500*20)/2000.
    EXPECT_FLOAT_EQ(m.physical.WaterTemp(2), 11.0f);
    EXPECT_FLOAT_EQ(m.physical.WaterTemp(3), 13.25f);
}

TEST_F(RiverTemperatureTest, ExchangeDecaysTowardEquilibrium) {
    setYear(m, 70, 5);
    m.physical.HeatEx = 0.5f;
    RiverTemperature(m, 5);
    // x = -0.5*100*10/1000 = -0.5: 20 - 12*exp(-0.5); the next reach is twice as long.
    EXPECT_NEAR(m.physical.WaterTemp(2), 12.7216321, 1e-4);
    EXPECT_NEAR(m.physical.WaterTemp(3), 20.0 - 12.0 * std::exp(-1.5), 1e-4);
}

TEST_F(RiverTemperatureTest, PreDamYearsReleaseRiverWaterUnlessExperimental) {
    m.sediment.HistOSDSSConc = true;
    m.physical.ExpTempYr(55) = true;
    EXPECT_FLOAT_EQ(release(62), 20.0f);
    EXPECT_FLOAT_EQ(release(63), 8.0f);
    EXPECT_FLOAT_EQ(release(55), 15.0f);
    m.sediment.HistOSDSSConc = false;
    EXPECT_FLOAT_EQ(release(62), 8.0f);
}

TEST_F(RiverTemperatureTest, NoFlowIsAFaultNamingYearMonthAndReach) {
    setYear(m, 62, 4);
    m.physical.HeatEx = 0;
    m.physical.WaterTemp(3) = -1;
    m.physical.MeanFlow(3) = 0;
    EXPECT_TRUE(Holds(FaultText([&] { RiverTemperature(m, 4); }), {"1962", "month 4", "reach 3"}));
    // The reaches above it keep this month's result.
    EXPECT_FLOAT_EQ(m.physical.WaterTemp(2), 8.0f);
    EXPECT_FLOAT_EQ(m.physical.WaterTemp(3), -1.0f);
}

TEST_F(RiverTemperatureTest, ObservedSeriesIsRoundedAveragedAndABadMonthChangesNothing) {
    f.Write("physical.xls/MainTemp.csv",
            "OSD_Mile,YR,MNTH,AVGTEMP\r\n5,62,1,12.5\r\n5,62,2,13.5\r\n5,62,4,9.4\r\n"
            "10.5,70,6,10.5\r\n"   // the downstream mile of reach 2 is reach 3's
            "55,70,8,7\r\n");      // below the river: reach 0, out of the way
    LoadObsTemp(m, "MainTemp$", book());
    const auto& obs = m.physical.ObsTemp;
    EXPECT_FLOAT_EQ(obs(169, 2), 12.0f);
    EXPECT_FLOAT_EQ(obs(170, 2), 14.0f);
    EXPECT_FLOAT_EQ(obs(0, 2), 35.0f / 3.0f);
    EXPECT_FLOAT_EQ(obs(270, 3), 10.0f);
    // Loading again starts afresh rather than adding to the means.
    LoadObsTemp(m, "MainTemp$", book());
    EXPECT_FLOAT_EQ(obs(0, 3), 10.0f);
    f.Write("physical.xls/Early.csv", "OSD_Mile,YR,MNTH,AVGTEMP\r\n5,62,1,3\r\n5,40,3,12\r\n");
    EXPECT_TRUE(Holds(FaultText([&] { LoadObsTemp(m, "Early$", book()); }), {"Early$", "row 3", "-93"}));
    EXPECT_FLOAT_EQ(obs(169, 2), 12.0f);
}

TEST_F(RiverTemperatureTest, PatternsReadBackOtherColumnsStayAndAThirteenthRowTakesNothing) {
    std::string sheet = "Month,OSDOut,Note,EQUILIB\r\n";
    for (int mo = 1; mo <= 12; ++mo)
        sheet += std::to_string(mo) + "," + std::to_string(mo + 5) + ".5,\"n\"," + std::to_string(mo + 10) + "\r\n";
    f.Write("physical.xls/OSDEqTemp.csv", sheet);
    LoadTempPatterns(m, "OSDEQTemp$", book());
    EXPECT_FLOAT_EQ(m.physical.BaseTemp(1), 6.5f);
    m.physical.EqTemp(12) = -0.25f;
    SaveTempData(m, "OSDEQTemp$", book());
    EXPECT_NE(f.Read("physical.xls/OSDEqTemp.csv").find("12,17.5,\"n\",-0.25\r\n"), std::string::npos);
    Model back;
    LoadTempPatterns(back, "OSDEQTemp$", book());
    EXPECT_EQ(back.physical.EqTemp(12), -0.25f);

    std::string longSheet = "OSDOut,EQUILIB\r\n";
    for (int i = 0; i < 13; ++i) longSheet += "1,2\r\n";
    f.Write("physical.xls/Long.csv", longSheet);
    EXPECT_TRUE(Holds(FaultText([&] { LoadTempPatterns(back, "Long$", book()); }), {"Long$", "row 14", "twelve"}));
    EXPECT_FLOAT_EQ(back.physical.BaseTemp(1), 6.5f);
}

}  // namespace
