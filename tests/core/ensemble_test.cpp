#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/ensemble.h"
#include "core/model.h"
#include "presentation/run_set.h"
#include "support/fault_text.h"
#include "support/small_model.h"
#include "support/test_folder.h"

using namespace osm;

namespace {

std::string specText(const std::string& params) { return "# test\nruns 4\nseed 7\n" + params; }

}  // namespace

TEST(EnsembleSpec, ReadsRunsSeedAndParameters) {
    test::TestFolder f;
    const EnsembleSpec s = ReadEnsembleSpec(f.Write(
        "a.ens", specText("param phy AngleOfRepose uniform 28 36   # degrees\n\n"
                          "param rec TotalMaxEffort normal 24000 3000 min 5000 whole\n"
                          "param bhp 2:3 lognormal -5 0.4 max 0.02\n")));
    EXPECT_EQ(s.runs, 4);
    EXPECT_EQ(s.seed, 7u);
    ASSERT_EQ(s.parameters.size(), 3u);
    EXPECT_EQ(s.parameters[0].label(), "phy:AngleOfRepose");
    EXPECT_EQ(s.parameters[1].distribution, Distribution::Normal);
    EXPECT_EQ(s.parameters[1].lo, 5000);
    EXPECT_TRUE(s.parameters[1].whole);
    EXPECT_EQ(s.parameters[2].hi, 0.02);
    EXPECT_EQ(s.parameters[2].distribution, Distribution::LogNormal);
}

// Every bad line is refused naming the file, the line and what was expected.
TEST(EnsembleSpec, ABadLineIsRefusedWithFileAndLine) {
    test::TestFolder f;
    const struct {
        const char* text;
        const char* says;
    } cases[] = {
        {"runs 4\nseed 7\nparam xyz A uniform 1 2\n", "a.ens:3: expected the file kind phy, bhp, fis or rec"},
        {"runs 4\nseed 7\nparam phy A triangle 1 2\n", "a.ens:3: expected a distribution"},
        {"runs 4\nseed 7\nparam phy A uniform 2 1\n", "a.ens:3: expected a highest value not below"},
        {"runs 4\nseed 7\nparam phy A normal 1 -1\n", "a.ens:3: expected a standard deviation of 0 or more"},
        {"runs 4\nseed 7\nparam phy A normal 1 x\n", "a.ens:3: expected the standard deviation, found 'x'"},
        {"runs 4\nseed 7\nparam phy A normal 1 1 min 3 max 2\n", "a.ens:3: expected an upper bound"},
        {"runs 4\nseed 7\nparam phy A uniform 1 2 min 5\n", "a.ens:3: expected bounds that meet"},
        {"runs 4\nseed 7\nparam phy A uniform 1 2 above 5\n", "a.ens:3: expected min, max or whole"},
        {"runs 0\nseed 7\nparam phy A uniform 1 2\n", "a.ens:1: expected the number of runs"},
        {"runs 2.5\n", "a.ens:1: expected the number of runs"},
        {"runs 4 5\n", "a.ens:1: expected the end of the line"},
        {"runs 4\nseeds 7\n", "a.ens:2: expected a keyword: runs, seed or param"},
        {"seed 7\nparam phy A uniform 1 2\n", "expected a line \"runs N\""},
        {"runs 3\nparam phy A uniform 1 2\n", "expected a line \"seed S\""},
        {"runs 3\nseed 1\n", "expected at least one \"param\" line"},
    };
    for (const auto& c : cases) {
        const std::string path = f.Write("a.ens", c.text);
        EXPECT_NE(test::FaultText([&] { ReadEnsembleSpec(path); }).find(c.says), std::string::npos) << c.text;
    }
    EXPECT_NE(test::FaultText([&] { ReadEnsembleSpec(f.File("none.ens")); }).find("none.ens"), std::string::npos);
}

TEST(EnsembleDraws, AreReproducibleAndKeepTheirBounds) {
    EnsembleSpec s;
    s.runs = 2000;
    s.seed = 42;
    s.parameters = {{"phy", "A", Distribution::Uniform, 28, 36},
                    {"phy", "B", Distribution::Normal, 10, 2, 7, 20},
                    {"phy", "C", Distribution::LogNormal, 0, 0.5},
                    {"rec", "D", Distribution::Normal, 100, 30, 0, 1e9, true}};
    const auto v = DrawParameters(s);
    EXPECT_EQ(v, DrawParameters(s));
    s.seed = 43;
    EXPECT_NE(v, DrawParameters(s));
    double meanA = 0, meanB = 0, meanLogC = 0;
    for (const auto& run : v) {
        EXPECT_GE(run[0], 28);
        EXPECT_LT(run[0], 36);
        EXPECT_GE(run[1], 7);
        EXPECT_GT(run[2], 0);
        EXPECT_EQ(run[3], std::round(run[3]));
        meanA += run[0] / 2000;
        meanB += run[1] / 2000;
        meanLogC += std::log(run[2]) / 2000;
    }
    // Means within four standard errors: uniform 32 (sd 2.31); the normal cut
    // below at 7, 1.5 sd under its mean, whose mean rises by
    // 2 phi(1.5) / (1 - Phi(-1.5)) = 2 * 0.1295 / 0.9332 to 10.28; the log of
    // the lognormal 0.
    EXPECT_NEAR(meanA, 32, 4 * 2.31 / std::sqrt(2000));
    EXPECT_NEAR(meanB, 10.28, 4 * 2 / std::sqrt(2000));
    EXPECT_NEAR(meanLogC, 0, 4 * 0.5 / std::sqrt(2000));
    s.parameters = {{"phy", "A", Distribution::Normal, 0, 1, 50, 60}};
    EXPECT_NE(test::FaultText([&] { DrawParameters(s); }).find("phy:A: 10000 draws fell outside"), std::string::npos);
}

TEST(EnsembleParameters, ReplaceTheNamedOrPlacedValueOnly) {
    const std::string phy = "\"HeatEx\",0.1\n\"SandDest()\",0.2,0.1,0.7\n\"AngleOfRepose\",32\n";
    EXPECT_EQ(SetParameter(phy, "AngleOfRepose", 30.5, "p.phy"),
              "\"HeatEx\",0.1\n\"SandDest()\",0.2,0.1,0.7\n\"AngleOfRepose\",30.5\n");
    EXPECT_EQ(SetParameter(phy, "SandDest()#2", 0.125, "p.phy"),
              "\"HeatEx\",0.1\n\"SandDest()\",0.2,0.125,0.7\n\"AngleOfRepose\",32\n");
    const std::string bhp = "30 475 40\r\n2 0.06 0.005\r\n\"Marsh\"\r\n";
    EXPECT_EQ(SetParameter(bhp, "2:3", 0.01, "p.bhp"), "30 475 40\r\n2 0.06 0.01\r\n\"Marsh\"\r\n");
    EXPECT_NE(test::FaultText([&] { SetParameter(phy, "Missing", 1, "p.phy"); }).find("p.phy: has no parameter named \"Missing\""),
              std::string::npos);
    EXPECT_NE(test::FaultText([&] { SetParameter(bhp, "3:1", 1, "p.bhp"); }).find("p.bhp:3: expected a number"),
              std::string::npos);
    EXPECT_NE(test::FaultText([&] { SetParameter(bhp, "2:4", 1, "p.bhp"); }).find("p.bhp:2: expected a field 4"),
              std::string::npos);
    EXPECT_NE(test::FaultText([&] { SetParameter(bhp, "9:1", 1, "p.bhp"); }).find("has no line 9"), std::string::npos);
    EXPECT_NE(test::FaultText([&] { SetParameter(phy, "SandDest()#x", 1, "p.phy"); }).find("after '#'"),
              std::string::npos);
}

// A run's value reaches the model through the file's own reader; the loaded
// model keeps its own.
TEST(EnsembleParameters, ReachTheRunsModelThroughTheReader) {
    auto s = test::StartSmallModel(true);
    EnsembleSpec spec;
    spec.path = "t.ens";
    spec.parameters = {{"phy", "AngleOfRepose", Distribution::Uniform, 1, 2},
                       {"rec", "TotalMaxEffort", Distribution::Uniform, 1, 2}};
    const auto texts = ParameterTexts(s->m, spec);
    Model run = s->m;
    ApplyParameters(run, spec, texts, {30.5, 900}, s->folder.path(), 0);
    EXPECT_EQ(run.sediment.AngleOfRepose, 30.5f);
    EXPECT_EQ(run.rec.TotalMaxEffort, 900);
    EXPECT_NE(s->m.sediment.AngleOfRepose, 30.5f);
    spec.parameters.push_back({"fis", "1:1", Distribution::Uniform, 1, 2});
    EXPECT_NE(test::FaultText([&] { ParameterTexts(s->m, spec); }).find("whole model only"), std::string::npos);
}

TEST(EnsemblePercentiles, InterpolateBetweenTheSortedValues) {
    std::vector<float> v = {5, 1, 4, 2, 3};
    EXPECT_DOUBLE_EQ(Percentile(v, 0.05), 1.2);  // h = 4 * 0.05 = 0.2
    EXPECT_DOUBLE_EQ(Percentile(v, 0.50), 3);
    EXPECT_DOUBLE_EQ(Percentile(v, 0.95), 4.8);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    std::vector<float> gaps = {nan, 10, nan, 20};
    EXPECT_DOUBLE_EQ(Percentile(gaps, 0.95), 19.5);  // of {10, 20}: h = 0.95
    std::vector<float> one = {7};
    EXPECT_DOUBLE_EQ(Percentile(one, 0.05), 7);
    std::vector<float> none = {nan};
    EXPECT_TRUE(std::isnan(Percentile(none, 0.5)));

    // Five runs of one row, one reach, two months: month 1 holds 1..5 in
    // shuffled runs, month 2 holds 10 * the run number but a gap in run 3.
    RunSet set;
    set.rows = {{1, 1}};
    set.firstReach = set.lastReach = 2;
    set.months = 2;
    const float first[] = {4, 2, 5, 1, 3};
    for (int i = 0; i < 5; ++i)
        set.runs.push_back({"r", "", 2, {first[i], i == 2 ? nan : 10.0f * static_cast<float>(i + 1)}});
    const RunSet p = EnsemblePercentiles(set, 2);
    ASSERT_EQ(p.runs.size(), 3u);
    EXPECT_EQ(p.runs[1].name, "median");
    EXPECT_FLOAT_EQ(p.at(0, 0, 2, 1), 1.2f);
    EXPECT_FLOAT_EQ(p.at(2, 0, 2, 1), 4.8f);
    EXPECT_FLOAT_EQ(p.at(1, 0, 2, 2), 30.0f);    // of 10, 20, 40, 50
    EXPECT_FLOAT_EQ(p.at(0, 0, 2, 2), 11.5f);    // h = 0.15
}
