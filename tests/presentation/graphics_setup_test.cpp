#include <gtest/gtest.h>

#include "core/model.h"
#include "presentation/graphics_setup.h"
#include "support/collect_messages.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

TEST(GraphicsSetup, SaveThenLoadGivesTheSameSetupAndFile) {
    TestFolder f;
    Model a;
    SetGraphSetupDefaults(a);
    a.graphs.TimeWindow = 16;
    a.main.IndexQ(3) = 42500.5f;
    a.main.ProfileMonth = 6;
    a.graphs.ShowSandBox = true;
    a.graphs.GraphSlot(4) = 13;
    a.graphs.MapSlot(1) = 9;
    a.graphs.YMin(2, 6) = -1.25f;
    SaveGraphSetup(a, f.File("one.grs"));
    const std::string text = f.Read("one.grs");
    EXPECT_NE(text.find("\"Profile Month\",6\r\n\"ShowSandBox\",#TRUE#\r\n"), std::string::npos);
    Model b;
    ASSERT_TRUE(LoadGraphSetup(b, f.File("one.grs")));
    EXPECT_EQ(b.main.IndexQ(3), 42500.5f);
    EXPECT_EQ(b.graphs.YMin(2, 6), -1.25f);
    SaveGraphSetup(b, f.File("two.grs"));
    EXPECT_EQ(f.Read("two.grs"), text);
}

TEST(GraphicsSetup, AFailedLoadShowsTheMessageAndSetsTheDefaultsButForMapsAndProfileLimits) {
    TestFolder f;
    Model m;
    test::CollectMessages c;
    m.messages = &c;
    m.graphs.MapSlot(2) = 5;
    m.graphs.YMax(2, 1) = 30;
    m.graphs.TimeWindow = 3;
    const std::string p = f.Write("bad.grs", "\"VisForms-1\",1\r\n\"VisForms-2\",lots\r\n");
    EXPECT_FALSE(LoadGraphSetup(m, p));
    ASSERT_EQ(c.seen.size(), 1u);
    EXPECT_EQ(c.seen[0].text, "Failed to load Graphics SetUp File \n" + p + "\n Will Use Defaults");
    EXPECT_NE(c.seen[0].detail.find("bad.grs:2"), std::string::npos);
    EXPECT_EQ(m.graphs.TimeWindow, 10);
    EXPECT_EQ(m.graphs.MapSlot(2), 5);
    EXPECT_EQ(m.graphs.YMax(2, 1), 30.0f);
}
