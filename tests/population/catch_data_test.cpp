#include <gtest/gtest.h>

#include "core/model.h"
#include "population/catch_data.h"
#include "support/fault_text.h"
#include "support/small_model.h"

using namespace osm;

// The small river: chub and trout surveyed in reaches 2 and 3 in 1990 and 1991,
// the trout's CPUE series at reach 2 (the first reach).
TEST(CatchData, MeansAndRainbowRescaling) {
    auto s = test::StartSmallModel(false);
    const Popsubs& ps = s->m.popsubs;
    // Chub: (0.5 + 1.5) / 2 and 3 / 1.
    EXPECT_FLOAT_EQ(ps.CatchIndex(2, 2, 47), 1.0f);
    EXPECT_FLOAT_EQ(ps.CatchIndex(2, 3, 47), 3.0f);
    EXPECT_FLOAT_EQ(ps.CatchIndex(2, 2, 91), 1.5f);
    // Trout at reach 2 is the CPUE series (mean 2, old mean 4): the other reach
    // is rescaled by 2 / 4, its mean (1 + 2) / 2 becoming 0.75.
    EXPECT_FLOAT_EQ(ps.CatchIndex(1, 2, 47), 2.0f);
    EXPECT_FLOAT_EQ(ps.CatchIndex(1, 2, 91), 3.0f);
    EXPECT_FLOAT_EQ(ps.CatchIndex(1, 3, 47), 0.75f);
    EXPECT_FLOAT_EQ(ps.CatchIndex(1, 3, 91), 1.0f);
    // Thousands of angler hours to days of 6 hours, and their means in slot 47.
    EXPECT_FLOAT_EQ(ps.AnglerDaysObs(2, 90), 10000.0f);
    EXPECT_FLOAT_EQ(ps.AnglerDaysObs(2, 47), 12500.0f);
    EXPECT_FLOAT_EQ(ps.CatchObs(2, 47), 105000.0f);
    EXPECT_EQ(ps.CatchDataFlag(1), 0);
}

// A code missing from Lookup$ is skipped; a record of year 47 sets the flag and
// adds to the sum without a count of its own; a series with no year in range
// cannot rescale the other reaches.
TEST(CatchData, LookupYear47AndEmptySeries) {
    auto s = test::StartSmallModel(false);
    Model& m = s->m;
    const auto& f = s->folder;
    f.Write("pop2.xls/Lookup.csv", "SPCODE,ModelIndex\r\nGCH,2\r\n");
    f.Write("pop2.xls/Pop.csv", "SPECIES,REACH,YR,STDCATCH\r\nXXX,2,90,9\r\nGCH,2,47,2\r\nGCH,2,90,4\r\n");
    f.Write("pop2.xls/RBT.csv", "YR,CPUE,ANGHR_1000,Catch\r\n47,1,1,1\r\n");
    ReadCatchData(m, f.File("pop2.xls"), "Pop$", 48, 98);
    EXPECT_FLOAT_EQ(m.popsubs.CatchIndex(2, 2, 47), 6.0f);  // (2 + 4) / 1
    EXPECT_EQ(m.popsubs.CatchDataFlag(2), -1);
    EXPECT_FLOAT_EQ(m.popsubs.CatchIndex(1, 2, 47), 0.0f);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadRainbowData(m, f.File("pop2.xls"), "RBT$", 48, 98); }),
                            {"RBT$", "no record of the years 48 to 98"}));
}

// An empty Lookup$ or catch survey used to surface as the CPUE sheet's fault;
// each is now refused by its own name, and a survey without the trout at the
// first reach names the survey and its codes.
TEST(CatchData, EmptyOrTroutlessSurveysAreNamed) {
    auto s = test::StartSmallModel(false);
    Model& m = s->m;
    const auto& f = s->folder;
    const std::string book = f.File("pop3.xls");
    f.Write("pop3.xls/Lookup.csv", "");
    f.Write("pop3.xls/Pop.csv", "SPECIES,REACH,YR,STDCATCH\r\nRBT,2,90,4\r\n");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadCatchData(m, book, "Pop$", 48, 98); }),
                            {"sheet Lookup$", "no rows"}));
    f.Write("pop3.xls/Lookup.csv", "SPCODE,ModelIndex\r\nRBT,1\r\n");
    f.Write("pop3.xls/Pop.csv", "SPECIES,REACH,YR,STDCATCH\r\n");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadCatchData(m, book, "Pop$", 48, 98); }),
                            {"sheet Pop$", "no rows"}));
    // Trout only in reach 3: the CPUE series of reach 2 has nothing to scale.
    f.Write("pop3.xls/Pop.csv", "SPECIES,REACH,YR,STDCATCH\r\nRBT,3,90,4\r\n");
    f.Write("pop3.xls/RBT.csv", "YR,CPUE,ANGHR_1000,Catch\r\n90,1,60,60000\r\n");
    ReadCatchData(m, book, "Pop$", 48, 98);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadRainbowData(m, book, "RBT$", 48, 98); }),
                            {"sheet RBT$", "Rainbow trout at reach 2 is 0", "sheet Pop_Halden_Broome$",
                             "codes of sheet Lookup$", "48 to 98"}));
}
