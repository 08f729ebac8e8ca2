#include <gtest/gtest.h>

#include "core/model.h"
#include "core/start_up.h"
#include "sediment/tributary_habitat_file.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

// The default file comes back byte for byte; a file of its own reach range reads
// values separated by blanks, commas or line ends and leaves other reaches alone.
TEST(TributaryHabitatFile, RoundTripAndAFileOfItsOwnRange) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    TestFolder f;
    WriteTrbFile(m, f.File("again.trb"));
    EXPECT_EQ(f.Read("again.trb"), TestFolder::ReadFile(OSM_SOURCE_DIR "/data/default.trb"));

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
    EXPECT_FLOAT_EQ(m.morph.TribHabIndex(4), before);
}

// A value that is not a number, a file that ends early or a reach range past the
// river names the file (and the line) and leaves the tables as they were.
TEST(TributaryHabitatFile, BadInputIsNamedAndChangesNothing) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    TestFolder f;
    std::string text = TestFolder::ReadFile(OSM_SOURCE_DIR "/data/default.trb");
    text.replace(text.find("\r\n") + 2, 0, "x");  // the index of reach 2, line 2
    const float index2 = m.morph.TribHabIndex(2);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadTrbFile(m, f.Write("bad.trb", text)); }),
                            {"bad.trb:2", "habitat index of reach 2"}));
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadTrbFile(m, f.Write("short.trb", "2 3\r\n0.25\r\n1,2 3\r\n")); }),
                            {"short.trb"}));
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadTrbFile(m, f.Write("range.trb", "2 14\r\n")); }),
                            {"range.trb:1", "1 to 12"}));
    EXPECT_EQ(m.morph.TribHabIndex(2), index2);
}
