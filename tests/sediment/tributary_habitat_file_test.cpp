#include <gtest/gtest.h>

#include "core/model.h"
#include "core/start_up.h"
#include "sediment/tributary_habitat_file.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

// The default file comes back byte for byte; bad input names the file and line
// and changes nothing.
TEST(TributaryHabitatFile, RoundTripAndBadInput) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", false, {}});
    TestFolder f;
    WriteTrbFile(m, f.File("again.trb"));
    std::string text = f.Read("again.trb");
    EXPECT_EQ(text, TestFolder::ReadFile(OSM_SOURCE_DIR "/data/default.trb"));

    text.replace(text.find("\r\n") + 2, 0, "x");  // the length of reach 2, line 2
    const float index2 = m.morph.TribHabLen(2);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadTrbFile(m, f.Write("bad.trb", text)); }),
                            {"bad.trb:2", "accessible length of reach 2"}));
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadTrbFile(m, f.Write("range.trb", "2 14\r\n")); }),
                            {"range.trb:1", "1 to 12"}));
    EXPECT_EQ(m.morph.TribHabLen(2), index2);
}
