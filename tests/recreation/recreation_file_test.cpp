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

const std::string DefaultRec = OSM_SOURCE_DIR "/data/default.rec";

Model recModel(const std::string& reachFile) {
    Model m;
    BuildMonthsTable(m);
    ReadReachFile(m, reachFile);
    m.popsubs.NSpecies = 8;
    AllocateTripTypes(m);
    return m;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

}  // namespace

// Trip names and headers are free text, commas and quotes and all.
TEST(RecreationFile, RoundTripWithFreeTextNamesAndHeaders) {
    TestFolder f;
    std::string text = replaced(TestFolder::ReadFile(DefaultRec), "Commercial oar", "Oar, \"commercial\"");
    text = replaced(text, "Parties per year", "How many, a year");
    const std::string path = f.Write("mine.rec", text);
    Model m = recModel(OSM_SOURCE_DIR "/data/Reaches.csv");
    ReadRafting(m, path);
    ReadAnglingPars(m, path);
    EXPECT_EQ(m.rec.MaxTripDays, 18);
    EXPECT_EQ(m.rec.TripName(2), "Oar, \"commercial\"");
    EXPECT_EQ(m.rec.AgeVul(3, 2), 0.4f);
    WriteRecFile(m, f.File("again.rec"));
    EXPECT_EQ(f.Read("again.rec"), text);
}

TEST(RecreationFile, BadFilesAreNamedAndChangeNothing) {
    TestFolder f;
    Model m = recModel(OSM_SOURCE_DIR "/data/Reaches.csv");
    const Rec before = m.rec;
    const std::string text = TestFolder::ReadFile(DefaultRec);
    const std::string cap = f.Write("cap.rec", replaced(text, "0,0,1,2,3,3,3,3,3,2,1,0", "0,0,x,2,3,3,3,3,3,2,1,0"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRafting(m, cap); }),
                      {"cap.rec:58:", "daily launch limit of month 3, trip type 2", "'x'"}));
    const std::string none = f.Write("none.rec", text.substr(0, text.find("RAFTING")));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRafting(m, none); }), {"none.rec", "RAFTING"}));
    // Eleven vulnerabilities are more than the ages the table holds.
    const std::string many = f.Write("many.rec", replaced(text, "\"AgeVul\",0.05,0.4,0.9", "\"AgeVul\",1,1,1,1,1,1,1,1,1,1,1"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadAnglingPars(m, many); }), {"many.rec:30:", "at most 10 ages"}));
    // The schedule never launches more a day than the month's limit: a file that
    // does (3e38 launches once reached the results store as infinite camp use)
    // is refused at its line; a month at its limit is taken.
    const std::string over = f.Write("over.rec", replaced(text, "0,0,0,1.2113,", "0,0,0,2.5,"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRafting(m, over); }),
                      {"over.rec:65:", "launches a day of month 4, trip type 1 (at most its daily launch limit 2)", "'2.5'"}));
    const std::string huge = f.Write("huge.rec", replaced(text, "0.274,0", "0.274,3e38"));
    EXPECT_TRUE(Holds(FaultText([&] { ReadRafting(m, huge); }), {"huge.rec:66:", "month 12, trip type 2", "limit 0)"}));
    EXPECT_EQ(m.rec.NTripTypes, before.NTripTypes);
    EXPECT_EQ(m.rec.TotalMaxEffort, before.TotalMaxEffort);
    ReadRafting(m, f.Write("full.rec", replaced(text, "0,0,0,1.2113,", "0,0,0,2,")));
    EXPECT_EQ(m.rec.Launches(1, 4), 2.0f);
}
