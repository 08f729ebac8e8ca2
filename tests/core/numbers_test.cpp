#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/fault.h"
#include "core/numbers.h"
#include "support/fault_text.h"

using namespace osm;

TEST(Rounding, IntIsFloorCIntRoundsHalfToEvenAndSixteenBitOverflowIsAFault) {
    EXPECT_EQ(Int(-2.5), -3);
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(-3.5), -4);
    EXPECT_THROW(ToInt16(32767.5), Fault);  // rounds to 32768
    EXPECT_TRUE(test::Holds(test::FaultText([] { ToInt16(40000, "food of reach 3"); }), {"food of reach 3"}));
}

TEST(Val, TakesTheLeadingNumber) {
    const std::pair<const char*, double> cases[] = {
        {"abc", 0}, {"12abc", 12}, {".5", 0.5}, {"1,500", 1}, {" 1 2", 12}, {"-3.25e2x", -325}, {"4e", 4}};
    for (const auto& [text, value] : cases) EXPECT_EQ(Val(text), value) << text;
    EXPECT_TRUE(IsNumber(" -1.5E+3 "));
    EXPECT_FALSE(IsNumber("1 2"));
}

TEST(NumberText, PlainWithLeadingBlankAndByMask) {
    EXPECT_EQ(NumText(1e20f), "1E+20");
    EXPECT_EQ(NumText(static_cast<float>(226.0 / 7.0)), "32.28571");
    EXPECT_EQ(NumTextLead(0.5f), " .5");
    EXPECT_EQ(NumTextLead(-0.5f), "-.5");
    const struct { double x; const char *mask, *text; } cases[] = {
        {1234567.4, "###,###,##0", "1,234,567"}, {2.12345, "######0.0##", "2.123"}, {7, "000", "007"},
        {-1500, "$###,###,##0", "-$1,500"}, {0.25, "#.###", ".25"},
        {-2.5, "0", "-3"},  // a half away from zero, unlike CInt
        {1.005, "0.00", "1.01"}, {999.96, "0.0", "1000.0"}, {-0.01, "0.0", "0.0"}};
    for (const auto& c : cases) EXPECT_EQ(Format(c.x, c.mask), c.text) << c.x << " " << c.mask;
}

// A value that no mask can hold (an overflowed flow in a message) gives its plain
// text instead of bringing the program down.
TEST(NumberText, MasksOfInfiniteAndNaNValuesAndLongTextsCut) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Format(inf, "0.0"), "INF");
    EXPECT_EQ(Format(-inf, "###,###,###"), "-INF");
    EXPECT_NE(Format(std::nan(""), "$#,##0").find("NAN"), std::string::npos);
    EXPECT_TRUE(FitsSingle(3.4e38));
    EXPECT_FALSE(FitsSingle(-3.5e38));
    EXPECT_FALSE(FitsSingle(std::nan("")));
    EXPECT_EQ(Excerpt("short"), "short");
    EXPECT_EQ(Excerpt(std::string(200, 'x'), 10), "xxxxxxxxxx... (200 characters)");
}
