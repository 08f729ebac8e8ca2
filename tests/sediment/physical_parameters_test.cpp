#include <gtest/gtest.h>

#include "core/fault.h"
#include "core/model.h"
#include "core/start_up.h"
#include "sediment/physical_parameters.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

// The default river's parameter file comes back byte for byte through the program.
TEST(PhysicalParameterFile, RoundTripOfTheDefaultFile) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", true, {}});
    EXPECT_GT(m.sediment.OSDSSConc, 0.0f);
    EXPECT_EQ(m.morph.NTrib, 2);
    TestFolder f;
    WritePhyFile(m, f.File("again.phy"));
    EXPECT_EQ(f.Read("again.phy"), TestFolder::ReadFile(OSM_SOURCE_DIR "/data/default.phy"));
}

TEST(PhysicalParameterFile, AMalformedLineIsNamedAndChangesNothing) {
    Model m;
    StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", true, {}});
    TestFolder f;
    WritePhyFile(m, f.File("good.phy"));
    std::string text = f.Read("good.phy");
    const size_t at = text.find("\"ErodeRate\",");
    text.replace(at + 12, 1, "x");
    f.Write("bad.phy", text);
    const float before = m.sediment.ErodeRate;
    m.sediment.AngleOfRepose = 99;
    try {
        ReadPhyFile(m, f.File("bad.phy"));
        FAIL();
    } catch (const FileFault& e) {
        EXPECT_NE(std::string(e.what()).find("bad.phy:"), std::string::npos) << e.what();
        EXPECT_NE(std::string(e.what()).find("ErodeRate"), std::string::npos);
    }
    EXPECT_EQ(m.sediment.ErodeRate, before);
    EXPECT_EQ(m.sediment.AngleOfRepose, 99.0f);
}
