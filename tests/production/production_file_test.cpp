#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/fault.h"
#include "core/model.h"
#include "core/start_up.h"
#include "production/production_file.h"
#include "production/production_steps.h"
#include "production/test_profiles.h"
#include "support/fault_text.h"
#include "support/small_model.h"
#include "support/test_folder.h"

using namespace osm;

namespace {

std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

const std::string DefaultBhp = OSM_SOURCE_DIR "/data/default.bhp";

}  // namespace

// The default file comes back byte for byte, and its fields land where the
// order says: the last of line 5, the vegetation block, the populations.
TEST(BhpFile, DefaultFileRoundTripsByteForByte) {
    test::TestFolder f;
    Model m;
    ReadBhpFile(m, DefaultBhp);
    const Production& p = m.production;
    EXPECT_FLOAT_EQ(p.RefractRate, 0.5f);
    EXPECT_FLOAT_EQ(p.TerrDetritus, 0.0005f);
    EXPECT_EQ(p.NVegTypes, 4);
    EXPECT_EQ(p.VegName(2), "Coyote willow");
    EXPECT_TRUE(p.VegClimax(3, 2));
    EXPECT_FALSE(p.VegClimax(4, 2));
    EXPECT_EQ(p.VegWmax(4), 40);
    EXPECT_FLOAT_EQ(p.VegComp(4, 3), 0.4f);  // type 4's effect on type 3
    EXPECT_FLOAT_EQ(p.VegMort(20, 4), 1);
    EXPECT_EQ(p.VegMort(0, 1), 0);
    EXPECT_EQ(p.PopName(3), "Wading birds");
    EXPECT_FLOAT_EQ(p.PopF(3, 3), 0.05f);
    const std::string out = f.path() + "/copy.bhp";
    WriteBhpFile(m, out);
    EXPECT_EQ(Slurp(out), Slurp(DefaultBhp));
}

// A short file, text for a number and more vegetation types than the tables
// hold are refused with file, line and what was expected; the parameters in
// force stay.
TEST(BhpFile, BadFilesAreRefusedAndNothingIsTaken) {
    test::TestFolder f;
    Model m;
    ReadBhpFile(m, DefaultBhp);
    const std::string good = Slurp(DefaultBhp);
    const std::string shortFile = f.Write("short.bhp", good.substr(0, good.find("\"Tamarisk\"")));
    const std::string text = f.Write("text.bhp", "0.8 475 40 33.5 8.5\r\n2 0.06 x 3\r\n");
    std::string seven = good;
    seven.replace(seven.find("4 20 0.01"), 9, "7 20 0.01");
    const std::string many = f.Write("many.bhp", seven);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadBhpFile(m, shortFile); }),
                            {"short.bhp", "the name of vegetation type 3", "end of the file"}));
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadBhpFile(m, text); }),
                            {"text.bhp:2:", "LightExtTurb", "'x'"}));
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadBhpFile(m, many); }),
                            {"many.bhp:6:", "NVegTypes", "0 to 6", "'7'"}));
    // A name with a quote inside could not be written back between quotes.
    std::string inner = good;
    inner.replace(inner.find("\"Riparian litter\""), 17, "x\"Riparian litter\"");
    const std::string quote = f.Write("quote.bhp", inner);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadBhpFile(m, quote); }),
                            {"quote.bhp:29:", "the name of food type 2 (in double quotes, with none inside)",
                             "'x\"Riparian'"}));
    EXPECT_EQ(m.production.NVegTypes, 4);
    EXPECT_FLOAT_EQ(m.production.BaseLightExt, 0.06f);
    m.production.PopName(1) = "Aquatic \"snails\"";
    const std::string kept = f.Write("kept.bhp", good);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { WriteBhpFile(m, kept); }), {"kept.bhp", "Aquatic \"snails\"", "nothing was saved"}));
    EXPECT_EQ(Slurp(kept), good);
}

// Two observations of one site and month average; the drift's last field sums
// three columns as read; a row of a year outside the calibration years is left
// out; row 0 is the mean of the monthly means.
TEST(ProductionObs, MonthlyMeansAndTheLongTermRow) {
    auto s = test::StartSmallModel(false);
    s->folder.Write("obs.xls/Benthos.csv",
                    "USGS_Mile,YR,MNTH,DO,SECCHI,ALGAE,TOTMASM\r\n"
                    "5,90,7,9,12,2,30\r\n5,90,7,10,14,3,40\r\n5,91,3,8,10,1,20\r\n5,60,3,1,1,1,1\r\n");
    s->folder.Write("obs.xls/Drift.csv",
                    "USGS_Mile,YR,MNTH,DETRITUS,INVERTS,ALGAE\r\n5,90,7,0.4,0.1,0.3\r\n");
    ReadProductionObs(s->m, s->folder.path() + "/obs.xls", 85, 95);
    const Table3<float>& o = s->m.production.ObsProd;
    const int jul90 = (90 - 48) * 12 + 7, mar91 = (91 - 48) * 12 + 3;
    EXPECT_FLOAT_EQ(o(jul90, 2, 1), 9.5f);
    EXPECT_FLOAT_EQ(o(jul90, 2, 4), 35);
    EXPECT_FLOAT_EQ(o(mar91, 2, 2), 10);
    EXPECT_FLOAT_EQ(o(0, 2, 1), (9.5f + 8) / 2);
    EXPECT_NEAR(o(jul90, 2, 6), 0.8, 1e-6);
    EXPECT_EQ(o((60 - 48) * 12 + 3, 2, 1), 0);
    EXPECT_EQ(o(0, 3, 1), 0);
}

// A test month runs on a copy: the live model's month and benthos stay; the
// oxygen profile starts at the release's oxygen, the benthos reference at the
// base biomass.
TEST(TestProfiles, ATestMonthNeverTouchesTheLiveModel) {
    auto s = test::StartSmallModel(false);
    Model& live = s->m;
    ResetBenthos(live);
    live.main.MonthIdx = 100;
    Model test = live;
    const AlgaeProfiles a = SetTestFlows(test, 7, 90);
    EXPECT_EQ(test.main.MonthIdx, (90 - 48) * 12 + 7);
    ASSERT_EQ(a.benthosEq.value.size(), 3u);  // the dam's row and two reaches
    EXPECT_DOUBLE_EQ(a.benthosEq.value[0], live.production.BaseBenthos);
    EXPECT_DOUBLE_EQ(a.benthos.mile.back(), live.main.ReachMile(3, 1));
    EXPECT_GE(a.algae.max, a.algae.value[1]);
    const Profile ox = RedrawOxygen(test, 7);
    EXPECT_FLOAT_EQ(static_cast<float>(ox.value[0]), live.production.OutflowO2);
    EXPECT_EQ(live.main.MonthIdx, 100);
    EXPECT_FLOAT_EQ(live.production.Benthos(1, 2), live.production.BaseBenthos / 2);
    // A year before 1948 leaves the monthly tables.
    EXPECT_THROW(SetTestFlows(test, 7, 40), Fault);
}
