#include <gtest/gtest.h>

#include "core/model.h"
#include "population/population_editors.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

using namespace osm;

namespace {

// The small river: species 1 the trout, 2 the chub; the food types at 3..5.
// Its links: trout on aquatic insects (diet 0.6, mortality 0.1), trout on chub
// (0.1, 0.2), chub on Cladophora (0.4, 0.05).
struct Editors : ::testing::Test {
    std::unique_ptr<test::SmallModel> s = test::StartSmallModel(false);
    Model& m = s->m;
    Popsubs& ps = m.popsubs;
    test::CollectMessages seen;
    void SetUp() override { m.messages = &seen; }
};

}  // namespace

// A new ratio moves the fry survival in proportion to the old one; with no old
// ratio the survival is left to the next initialisation; the box shows CompK
// until a ratio is set.
TEST_F(Editors, CompensationRatioMovesFrySurvival) {
    ps.RcJuv(2) = 8;
    ps.Sejuv(2) = 0.3f;
    SetRcJuv(ps, 2, 4);
    EXPECT_FLOAT_EQ(ps.Sejuv(2), 0.15f);
    EXPECT_FLOAT_EQ(ShownRcJuv(ps, 2), 4.0f);
    SetRcJuv(ps, 2, 0);
    EXPECT_FLOAT_EQ(ps.Sejuv(2), 0.0f);  // 0/4 of it, as the rule goes
    ps.Sejuv(2) = 0.3f;
    ps.CompK(2) = 6.5f;
    EXPECT_FLOAT_EQ(ShownRcJuv(ps, 2), 6.5f);
    SetRcJuv(ps, 2, 5);
    EXPECT_FLOAT_EQ(ps.Sejuv(2), 0.3f);
    EXPECT_FLOAT_EQ(ps.RcJuv(2), 5.0f);
}

// The axis end is 20/HabScale of the first-year mean; the reach marks sit at
// HabScale * reach mean / mean, held to 1..19, at CompRel capped at 1, and only
// on juvenile capacity panels once the vulnerabilities are summed.
TEST_F(Editors, HabitatPanelAxisAndReachMarks) {
    ps.HabLinked(1, 4, 1) = -1;
    ps.HabScale(1, 4, 1) = 10;
    EXPECT_FALSE(HabAxisMax(ps, 1, 4, 1));  // no first year yet
    ps.HabMean(1, 4, 0) = 3.5f;
    EXPECT_FLOAT_EQ(*HabAxisMax(ps, 1, 4, 1), 7.0f);
    EXPECT_FALSE(HabAxisMax(ps, 1, 4, 2));  // link off

    EXPECT_TRUE(HabReachMarks(m, 1, 4, 1).empty());  // VulSum 0 before an initialisation
    ps.VulSum(1) = 12;
    ps.HabReachMean(1, 4, 2) = 0.7f;
    ps.HabReachMean(1, 4, 3) = 10;
    ps.CompRel(2, 1) = 0.4f;
    ps.CompRel(3, 1) = 1.5f;
    const auto marks = HabReachMarks(m, 1, 4, 1);
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_EQ(marks[0].r, 2);
    EXPECT_FLOAT_EQ(marks[0].cell, 2.0f);
    EXPECT_FLOAT_EQ(marks[0].height, 0.4f);
    EXPECT_FLOAT_EQ(marks[1].cell, 19.0f);  // 28.6 cut to 19
    EXPECT_FLOAT_EQ(marks[1].height, 1.0f);
    ps.HabReachMean(1, 4, 2) = 0;
    EXPECT_FLOAT_EQ(HabReachMarks(m, 1, 4, 1)[0].cell, 1.0f);
    EXPECT_TRUE(HabReachMarks(m, 1, 4, 3).empty());
}

// Drawing on an unlinked panel links it (with a scale that puts the mean mid-
// curve); a link keeps its own scale; the scale follows the dragged cell, held
// to 1..20.
TEST_F(Editors, DrawingACurveLinksItAndSetsTheScale) {
    ASSERT_EQ(ps.HabLinked(2, 3, 3), 0);
    SetHabCell(ps, 2, 3, 3, 7, 1.4f);
    EXPECT_EQ(ps.HabLinked(2, 3, 3), -1);
    EXPECT_FLOAT_EQ(ps.HabScale(2, 3, 3), NewLinkScale);
    EXPECT_FLOAT_EQ(ps.HabCurve(2, 3, 3, 7), 1.4f);
    ASSERT_EQ(ps.HabLinked(1, 1, 2), -1);  // the trout's stage range on the risk, scale 10 in the file
    ps.HabScale(1, 1, 2) = 4;
    SetHabCell(ps, 1, 1, 2, 20, 0.2f);
    EXPECT_FLOAT_EQ(ps.HabScale(1, 1, 2), 4.0f);
    SetHabScale(ps, 1, 1, 2, 0);
    EXPECT_FLOAT_EQ(ps.HabScale(1, 1, 2), 1.0f);
    SetHabScale(ps, 1, 1, 2, 26);
    EXPECT_FLOAT_EQ(ps.HabScale(1, 1, 2), 20.0f);
    SetHabScale(ps, 1, 1, 2, 12);
    EXPECT_FLOAT_EQ(ps.HabScale(1, 1, 2), 12.0f);
    EXPECT_EQ(PanelVar(0), 1);
    EXPECT_EQ(PanelEffect(2), 3);
    EXPECT_EQ(PanelVar(17), 6);
    EXPECT_EQ(PanelEffect(16), 2);
}

// Opening: food types named, running sums of the links, each pair's link; the
// model's unlinked shares are left to the run.
// Proportions then add links, move the sums and warn, with the exact texts, when
// a sum passes 1 (exactly 1 is allowed); removing a link renumbers the later ones.
TEST_F(Editors, TrophicLinkEditorSumsWarnsAndRenumbers) {
    ps.PredFree(3) = 0.9f;
    LinkEditor ed(m);
    EXPECT_EQ(ed.Top(), 5);
    EXPECT_EQ(ps.SpName(3), "Aquat. insects");
    EXPECT_EQ(ps.SpName(5), "Cladophora");
    EXPECT_FLOAT_EQ(ed.PredSum(3), 0.1f);
    EXPECT_FLOAT_EQ(ed.DietSum(1), 0.7f);
    EXPECT_EQ(ed.LinkIndex(2, 5), 3);
    EXPECT_EQ(ed.LinkIndex(2, 1), 0);

    EXPECT_EQ(ed.SetMort(2, 3, 0), 0);  // no proportion, no link
    EXPECT_EQ(ps.NLinks, 3);
    EXPECT_EQ(ed.SetMort(2, 3, 0.95f), 4);
    EXPECT_EQ(ps.NLinks, 4);
    EXPECT_EQ(ps.LinkPred(4), 2);
    EXPECT_EQ(ps.LinkPrey(4), 3);
    EXPECT_FLOAT_EQ(ps.LinkDiet(4), 0.0f);
    EXPECT_NEAR(ed.PredSum(3), 1.05, 1e-6);
    ASSERT_EQ(seen.seen.size(), 1u);
    EXPECT_EQ(seen.seen[0].text, "Predation proportions on prey Aquat. insects sum to >1.0, REENTER BEFORE RUNNING MODEL");
    EXPECT_EQ(ed.SetMort(1, 3, 0.2f), 1);  // 1.05 - 0.1 + 0.2, the value stands
    EXPECT_NEAR(ed.PredSum(3), 1.15, 1e-6);
    EXPECT_FLOAT_EQ(ps.LinkMort(1), 0.2f);
    EXPECT_EQ(ed.SetDiet(1, 2, 0.5f), 2);  // 0.7 - 0.1 + 0.5
    EXPECT_EQ(seen.seen.back().text, "Diet proportions for Rainbow trout sum to >1.0, REENTER BEFORE RUNNING MODEL");
    const size_t before = seen.seen.size();
    EXPECT_EQ(ed.SetDiet(2, 4, 0.6f), 5);  // 0.4 + 0.6: exactly 1
    EXPECT_EQ(seen.seen.size(), before);

    EXPECT_TRUE(ed.Remove(1, 2));
    EXPECT_FALSE(ed.Remove(1, 2));
    EXPECT_EQ(ps.NLinks, 4);
    EXPECT_EQ(ed.LinkIndex(1, 2), 0);
    EXPECT_EQ(ed.LinkIndex(2, 5), 2);
    EXPECT_EQ(ed.LinkIndex(2, 3), 3);
    EXPECT_EQ(ed.LinkIndex(2, 4), 4);
    EXPECT_EQ(ps.LinkPred(2), 2);
    EXPECT_EQ(ps.LinkPrey(2), 5);
    EXPECT_FLOAT_EQ(ps.LinkMort(2), 0.05f);
    EXPECT_NEAR(ed.PredSum(2), 0.0, 1e-6);
    EXPECT_NEAR(ed.DietSum(1), 0.6, 1e-6);  // 1.1 less the removed link's 0.5
    EXPECT_FLOAT_EQ(ps.PredFree(3), 0.9f);
}

// The links fill the 200 places of the file and no more; the last is removable.
TEST_F(Editors, NoLinkBeyondTheFileRoom) {
    LinkEditor ed(m);
    for (int l = ps.NLinks + 1; l <= MaxLinks; ++l) {
        ps.LinkPred(l) = 1;
        ps.LinkPrey(l) = 4;
        ps.NLinks = static_cast<int16_t>(l);
    }
    EXPECT_EQ(ed.SetDiet(2, 1, 0.5f), 0);
    EXPECT_EQ(ps.NLinks, MaxLinks);
    ASSERT_EQ(seen.seen.size(), 1u);
    EXPECT_NE(seen.seen[0].text.find("200"), std::string::npos);
    EXPECT_TRUE(ed.Remove(2, 5));
    EXPECT_EQ(ed.SetDiet(2, 1, 0.5f), MaxLinks);
}
