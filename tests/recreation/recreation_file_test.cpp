#include <gtest/gtest.h>

#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "recreation/recreation_file.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::FaultText;
using osm::test::Holds;
using osm::test::TestFolder;

namespace {

// A model with the months table, the reaches of `reachFile` and `species` species.
Model recModel(const std::string& reachFile, int species) {
    Model m;
    BuildMonthsTable(m);
    ReadReachFile(m, reachFile);
    m.popsubs.NSpecies = static_cast<int16_t>(species);
    AllocateTripTypes(m);
    return m;
}

const char* const TwoReaches =
    "\"Two\",3,2,3\r\n\"Reach\",\"Label\",\"Upper\",\"Lower\"\r\n1,\"Dam\",0,0.5\r\n2,\"A\",0.5,10\r\n3,\"B\",10,20\r\n";

// The angling section for reaches 2 and 3 and two species, the second fished.
std::string anglingSection(const std::string& ageVul = "\"AgeVul\",0.1,0.5") {
    std::string s = "#FALSE#,0.25,3,2\r\n2,0.6\r\n3,0.4\r\n\"TotalMaxEffort\",5000\r\n";
    for (const char* mo : {"jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"})
        s += std::string("\"") + mo + "\",0.125,0.5\r\n";
    return s + "1,#FALSE#\r\n2,#TRUE#\r\n\"qMax\",2E-05\r\n" + ageVul + "\r\n";
}

// Two trip types whose names and headers are free text, commas and all.
std::string raftingSection(const std::string& launchCaps = "0,0,0,1,2,3,3,3,2,1,0,0") {
    return "RAFTING\r\n2\r\nTrip Type\r\nOar, commercial\r\n\"Private\"\r\n"
           "How many, a year\r\n120\r\n45\r\nDays\r\n12\r\n21\r\nPeople\r\n20\r\n8\r\n"
           "Limits\r\n" + launchCaps + "\r\n1,1,1,1,1,1,1,1,1,1,1,1\r\n"
           "Weights\r\n0,0,0.5,1,1,1,1,1,1,0.5,0,0\r\n0.25,0.25,0.5,1,1,1,1,1,1,0.5,0.25,0.25\r\n"
           "Launches (per day)\r\n0,0,0,0.5,0.75,1,1,1,0.75,0.5,0,0\r\n"
           "0.1,0.1,0.1,0.2,0.2,0.2,0.2,0.2,0.2,0.1,0.1,0.1\r\n"
           "People Per Camp\r\n10,S\r\n20,M\r\n30,L\r\n";
}

}  // namespace

TEST(RecreationFile, RoundTripOfTheDefaultFile) {
    const std::string path = OSM_SOURCE_DIR "/data/default.rec";
    Model m = recModel(OSM_SOURCE_DIR "/data/Reaches.csv", 8);
    ReadRafting(m, path);
    ReadAnglingPars(m, path);
    EXPECT_EQ(m.rec.NTripTypes, 3);
    EXPECT_EQ(m.rec.MaxTripDays, 18);
    EXPECT_EQ(m.rec.AgeVul(3, 2), 0.4f);
    TestFolder f;
    WriteRecFile(m, f.File("again.rec"));
    EXPECT_EQ(f.Read("again.rec"), TestFolder::ReadFile(path));
}

// Names and headers are free text, commas and all; a physical-only model (no
// species) still reads the rafting policy; an empty name reads and writes nothing.
TEST(RecreationFile, FreeTextHeadersAndNamesComeBackUnchanged) {
    TestFolder f;
    const std::string text = anglingSection() + raftingSection();
    const std::string path = f.Write("mine.rec", text);
    Model m = recModel(f.Write("Reaches.csv", TwoReaches), 2);
    ReadRafting(m, path);
    ReadAnglingPars(m, path);
    EXPECT_EQ(m.rec.TripName(1), "Oar, commercial");
    EXPECT_EQ(m.rec.TripName(2), "\"Private\"");
    WriteRecFile(m, f.File("out.rec"));
    EXPECT_EQ(f.Read("out.rec"), text);

    Model phys = recModel(f.File("Reaches.csv"), 0);
    ReadAnglingPars(phys, path);
    EXPECT_EQ(phys.rec.TotalMaxEffort, 5000);

    ReadRafting(m, "");
    WriteRecFile(m, "");
    EXPECT_EQ(m.rec.NTripTypes, 2);
}

TEST(RecreationFile, BadFilesAreNamedAndChangeNothing) {
    TestFolder f;
    Model m = recModel(f.Write("Reaches.csv", TwoReaches), 2);
    const Rec before = m.rec;

    const std::string badCap = f.Write("cap.rec", anglingSection() + raftingSection("0,0,x,1,2,3,3,3,2,1,0,0"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRafting(m, badCap); }),
                      {"cap.rec:36:", "daily launch limit of month 3, trip type 1", "'x'"}));
    // Eleven vulnerabilities are more than the ages the table holds.
    const std::string many = f.Write("many.rec", anglingSection("\"AgeVul\",1,1,1,1,1,1,1,1,1,1,1"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadAnglingPars(m, many); }), {"many.rec:20:", "at most 10 ages"}));
    EXPECT_EQ(m.rec.NTripTypes, before.NTripTypes);
    EXPECT_EQ(m.rec.TotalMaxEffort, before.TotalMaxEffort);

    // A file written for more reaches is caught where its reach lines run on.
    Model one = recModel(f.Write("One.csv", "\"One\",2,2,2\r\n\"a\",\"b\",\"c\",\"d\"\r\n1,\"Dam\",0,1\r\n2,\"A\",1,9\r\n"), 2);
    EXPECT_TRUE(Holds(FaultText([&] { ReadAnglingPars(one, many); }),
                      {"many.rec:3:", "\"TotalMaxEffort\"", "found '3'"}));
}
