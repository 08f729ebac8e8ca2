#include <gtest/gtest.h>

#include "core/fault.h"
#include "core/model.h"
#include "core/start_up.h"
#include "sediment/tributary_habitat_file.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

// The default file comes back byte for byte through the program's writer.
TEST(TributaryHabitatFile, RoundTripOfTheDefaultFile) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    TestFolder f;
    WriteTrbFile(m, f.File("again.trb"));
    EXPECT_EQ(f.Read("again.trb"), TestFolder::ReadFile(OSM_SOURCE_DIR "/data/default.trb"));
}

// A reach range, then per reach the index and three classes of a length and 21
// points; values may be separated by blanks, commas or line ends.
TEST(TributaryHabitatFile, ReadsTheBlocksOfItsOwnRange) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    TestFolder f;
    std::string text = "3 3\r\n0.5\r\n";
    for (int c = 1; c <= 3; ++c) {
        text += std::to_string(c * 100) + ",";
        for (int i = 0; i <= 20; ++i) text += std::to_string(c * i) + (i % 7 == 6 ? "\r\n" : " ");
        text += "\r\n";
    }
    const float before = m.morph.TribHabIndex(4);
    ReadTrbFile(m, f.Write("one.trb", text));
    EXPECT_FLOAT_EQ(m.morph.TribHabIndex(3), 0.5f);
    EXPECT_FLOAT_EQ(m.morph.TribHabLen(3, 2), 200);
    EXPECT_FLOAT_EQ(m.morph.TribHabCurve(20, 3, 3), 60);
    EXPECT_FLOAT_EQ(m.morph.TribHabCurve(0, 3, 1), 0);
    EXPECT_FLOAT_EQ(m.morph.TribHabIndex(4), before);  // outside the file's range
}

// A value that is not a number, or a file that ends early, names the file and
// the line, and leaves the tables as they were.
TEST(TributaryHabitatFile, BadInputIsNamedAndChangesNothing) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    TestFolder f;
    WriteTrbFile(m, f.File("good.trb"));
    std::string text = f.Read("good.trb");
    const float index2 = m.morph.TribHabIndex(2);
    const float len2 = m.morph.TribHabLen(2, 1);
    text.replace(text.find("\r\n") + 2, 0, "x");  // the index of reach 2, line 2
    f.Write("bad.trb", text);
    EXPECT_TRUE(osm::test::Holds(osm::test::FaultText([&] { ReadTrbFile(m, f.File("bad.trb")); }),
                                 {"bad.trb:2", "habitat index of reach 2"}));
    f.Write("short.trb", f.Read("good.trb").substr(0, 200));
    EXPECT_TRUE(osm::test::Holds(osm::test::FaultText([&] { ReadTrbFile(m, f.File("short.trb")); }),
                                 {"short.trb"}));
    f.Write("range.trb", "2 14\r\n");
    EXPECT_TRUE(osm::test::Holds(osm::test::FaultText([&] { ReadTrbFile(m, f.File("range.trb")); }),
                                 {"range.trb:1", "1 to 12"}));
    EXPECT_EQ(m.morph.TribHabIndex(2), index2);
    EXPECT_EQ(m.morph.TribHabLen(2, 1), len2);
}
