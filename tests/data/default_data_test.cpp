#include <gtest/gtest.h>

#include "core/model.h"
#include "core/start_up.h"
#include "support/collect_messages.h"

using namespace osm;

// The program opens on data/ in both modes with no set-up and no message.
TEST(DefaultData, StartsInBothModes) {
    for (bool phys : {true, false}) {
        Model m;
        test::CollectMessages quiet;
        m.messages = &quiet;
        StartUp(m, StartOptions{OSM_SOURCE_DIR "/data", phys, {}});
        EXPECT_TRUE(quiet.seen.empty());
        EXPECT_EQ(m.main.NReaches, 12);
        EXPECT_EQ(m.physical.DiurnalName(1), "noaction");
        EXPECT_GT(m.physical.MonthlyVol(600), 0.0f);
        EXPECT_GT(m.physical.SpinVol(541), 0.0f);
        // Rising ratings in every run reach, and the whole record of volumes.
        for (int r = m.main.FirstReach; r <= m.main.LastReach; ++r)
            for (int i = 2; i <= 13; ++i) {
                EXPECT_GT(m.physical.QTable(i, r), m.physical.QTable(i - 1, r));
                EXPECT_GT(m.physical.StageTable(i, r), m.physical.StageTable(i - 1, r)) << r << " " << i;
            }
        EXPECT_LT(m.physical.StageTable(13, 2), 100.0f);  // well inside 50 slices of 2 ft
        for (int y = 63; y <= 97; ++y) {
            EXPECT_GT(m.physical.AnnualVol(y), 7.0e6f) << y;
            EXPECT_LT(m.physical.AnnualVol(y), 2.5e7f) << y;
        }
    }
}
