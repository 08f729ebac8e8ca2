#include <gtest/gtest.h>

#include "core/model.h"
#include "population/population_file.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

namespace {
const char* kDefault = OSM_SOURCE_DIR "/data/default.fis";
}

// The default file comes back byte for byte, links and curves included.
TEST(PopulationFile, DefaultRoundTrip) {
    Model m;
    ReadPopFile(m, kDefault);
    const Popsubs& ps = m.popsubs;
    EXPECT_EQ(ps.NSpecies, 8);
    EXPECT_EQ(ps.SpName(3), "Rainbow trout");
    EXPECT_EQ(ps.HabVarName(1), "Daily stage range");
    EXPECT_EQ(ps.HabLinked(1, 4, 1), -1);
    EXPECT_EQ(ps.HabLinked(1, 2, 1), 0);
    EXPECT_FLOAT_EQ(ps.HabCurve(1, 2, 1, 20), 0.0f);  // no link: the curve stays 0
    EXPECT_EQ(ps.NLinks, 23);
    TestFolder f;
    WritePopFile(m, f.File("again.fis"));
    EXPECT_EQ(f.Read("again.fis"), TestFolder::ReadFile(kDefault));
}

// A name holding a comma is written quoted and reads back whole; written bare
// by hand it ends at the comma and the rest of the line is refused as the next
// field, leaving the old records in place.
TEST(PopulationFile, NameWithAComma) {
    Model m;
    ReadPopFile(m, kDefault);
    m.popsubs.SpName(2) = "Sucker, canyon";
    TestFolder f;
    WritePopFile(m, f.File("comma.fis"));
    Model back;
    ReadPopFile(back, f.File("comma.fis"));
    EXPECT_EQ(back.popsubs.SpName(2), "Sucker, canyon");
    EXPECT_FLOAT_EQ(back.popsubs.alpha(2), m.popsubs.alpha(2));

    std::string text = f.Read("comma.fis");
    text.replace(text.find("\"Sucker, canyon\""), 16, "Sucker, canyon");
    const std::string fault = test::FaultText([&] { ReadPopFile(back, f.Write("bare.fis", text)); });
    EXPECT_TRUE(test::Holds(fault, {"bare.fis:", "starting biomass of species 2", "canyon"}));
    EXPECT_EQ(back.popsubs.SpName(2), "Sucker, canyon");
}

// Short files, text where a number belongs and too many species are refused
// with file and line; the old records stay.
TEST(PopulationFile, BadInput) {
    Model m;
    ReadPopFile(m, kDefault);
    TestFolder f;
    const std::string good = TestFolder::ReadFile(kDefault);
    size_t cut = 0;
    for (int line = 0; line < 40; ++line) cut = good.find("\r\n", cut) + 2;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadPopFile(m, f.Write("short.fis", good.substr(0, cut))); }),
                            {"short.fis:", "end of the file"}));
    std::string text = good;
    text.replace(text.find("0.35 0.55"), 4, "x.35");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadPopFile(m, f.Write("text.fis", text)); }),
                            {"text.fis:12", "weight at maturity of species 1", "x.35"}));
    text = good;
    text.replace(0, 1, "18");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadPopFile(m, f.Write("many.fis", text)); }),
                            {"many.fis:1", "number of species (0 to 17)", "18"}));
    EXPECT_EQ(m.popsubs.NSpecies, 8);
    EXPECT_EQ(m.popsubs.SpName(1), "Gorge chub");
    EXPECT_EQ(m.popsubs.NLinks, 23);
}
