#include <gtest/gtest.h>

#include "core/model.h"
#include "core/start_up.h"
#include "sediment/physical_parameters.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

// The default river's parameter file comes back byte for byte; a malformed value
// is named with the file and changes nothing.
TEST(PhysicalParameterFile, RoundTripAndAMalformedLine) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", true, {}});
    TestFolder f;
    WritePhyFile(m, f.File("again.phy"));
    std::string text = f.Read("again.phy");
    EXPECT_EQ(text, TestFolder::ReadFile(OSM_SOURCE_DIR "/data/default.phy"));

    text.replace(text.find("\"ErodeRate\",") + 12, 1, "x");
    const float before = m.sediment.ErodeRate;
    m.sediment.AngleOfRepose = 99;
    EXPECT_TRUE(test::Holds(test::FaultText([&] { ReadPhyFile(m, f.Write("bad.phy", text)); }),
                            {"bad.phy:", "ErodeRate"}));
    EXPECT_EQ(m.sediment.ErodeRate, before);
    EXPECT_EQ(m.sediment.AngleOfRepose, 99.0f);
}
