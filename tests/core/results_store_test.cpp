#include <gtest/gtest.h>

#include "core/fault.h"
#include "core/model.h"
#include "core/results_store.h"
#include "core/run_driver.h"
#include "support/fault_text.h"
#include "support/small_model.h"

using namespace osm;

namespace {

std::unique_ptr<test::SmallModel> startWithSediment(bool physOnly) {
    auto s = test::StartSmallModel(physOnly);
    for (int r = 1; r <= s->m.main.NReaches; ++r) s->m.physical.SedConc(r, 1) = 1.0f;
    return s;
}

void monthOf(Model& m, int iYear, int iMonth) {
    SetCalendar(m, iYear, iMonth);
    StoreResults(m, iYear, iMonth);
}

}  // namespace

TEST(ResultsStore, StoresTheExpressionsOfTheTable) {
    auto s = startWithSediment(false);
    Model& m = s->m;
    m.main.CurYr = 50;
    m.morph.MgLPerGFt3 = static_cast<float>(1000.0 / 28.317);
    Physical& p = m.physical;
    p.MinFlow(2) = 8000;
    p.SedConc(2, 1) = 0.1f;
    p.SedConc(2, 2) = 0.3f;
    m.morph.TribQ(25, 2) = 100;
    m.morph.TribSedConc(25, 2, 1) = 2;
    m.morph.TribSedConc(25, 2, 2) = 3;
    m.sediment.BandSand(2, 2, 1) = 50;
    m.sediment.BandPot(2, 2, 1) = 100;
    m.rec.BeachCap(2, 2) = 3;
    m.rec.ReachCampUse(2, 2, 1) = 31;
    m.production.AlgaeClass(1, 2) = 1;
    m.production.AlgaeClass(6, 2) = 4;
    m.rec.AnglerValue = 2500000;
    monthOf(m, 3, 1);  // January 1950, month index 25
    const auto R = [&](int v, int sub, int r = 2) { return m.main.Results(0, v, sub, r, 25); };
    EXPECT_FLOAT_EQ(R(1, 1), 8.0f);
    EXPECT_NEAR(R(3, 1), 0.4 * 1000.0 / 28.317, 1e-3);
    EXPECT_FLOAT_EQ(R(4, 1), 75.0f);
    EXPECT_NEAR(R(5, 1), 5.0 * 100 * 31 * 86400 / 1e9, 1e-6);  // thousands of tonnes
    EXPECT_NEAR(R(6, 2), 0.5, 1e-6);
    EXPECT_NEAR(R(11, 2), 31.0 / (3 * 31 + 1e-6), 1e-6);
    EXPECT_NEAR(R(18, 1), 25.0, 1e-5);
    EXPECT_FLOAT_EQ(R(26, 1), 2.5f);
    EXPECT_EQ(R(26, 1, 3), 0.0f);  // only at the first run reach
}

TEST(ResultsStore, PhysicalModeStoresTheFirstThirteenObservedAveragesWhenAskedAndFaultsOnNaN) {
    auto s = startWithSediment(true);
    Model& m = s->m;
    m.production.DO(2) = 9;
    m.physical.WaterTemp(2) = 12;
    m.physical.ObsTemp(0, 2) = 11;
    m.physical.ObsTemp(3, 2) = 14;
    monthOf(m, 1, 3);
    EXPECT_EQ(m.main.Results(0, 13, 1, 2, 3), 12.0f);
    EXPECT_EQ(m.main.Results(0, 14, 1, 2, 3), 0.0f);
    EXPECT_EQ(m.main.Results(0, 13, 2, 2, 3), 14.0f);
    m.graphs.PlotObsAvg = true;
    monthOf(m, 1, 3);
    EXPECT_EQ(m.main.Results(0, 13, 2, 2, 3), 11.0f);
    m.physical.SedConc(3, 1) = 0;  // percent fines of no sediment: 0/0
    EXPECT_TRUE(test::Holds(test::FaultText([&] { monthOf(m, 2, 5); }), {"month 5", "reach 3", "variable 4"}));
    // A finite double beyond the range of the single it is stored in is refused too:
    // sand in a band with no potential.
    m.physical.SedConc(3, 1) = 1;
    m.sediment.BandSand(1, 2, 1) = 1e35f;
    m.sediment.BandPot(1, 2, 1) = 0;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { monthOf(m, 2, 7); }), {"month 7", "reach 2", "variable 6", "E+43", "single"}));
}

TEST(ResultsStore, Month601GrowsTheStoreKeepingBothRuns) {
    auto s = startWithSediment(true);
    Model& m = s->m;
    m.main.NYears = 51;
    m.physical.MaxFlow(3) = 1000;
    monthOf(m, 50, 12);
    m.main.NRuns = 1;
    m.physical.MaxFlow(3) = 2000;
    monthOf(m, 50, 12);
    monthOf(m, 51, 1);
    EXPECT_EQ(m.main.Results(0, 1, 2, 3, 600), 1.0f);
    EXPECT_EQ(m.main.Results(1, 1, 2, 3, 601), 2.0f);
}
