#include <gtest/gtest.h>

#include "core/fault.h"
#include "core/numbers.h"

using namespace osm;

TEST(Rounding, IntIsFloorAndCIntRoundsHalfToEven) {
    EXPECT_EQ(Int(-2.5), -3);
    EXPECT_EQ(Int(2.9), 2);
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(3.5), 4);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt(2.51), 3);
}

TEST(Rounding, SixteenBitOverflowIsAFault) {
    EXPECT_EQ(ToInt16(32767.4), 32767);
    EXPECT_EQ(ToInt16(-32768), -32768);
    EXPECT_THROW(ToInt16(32767.5), Fault);  // rounds to 32768
    try {
        ToInt16(40000, "food of reach 3");
        FAIL();
    } catch (const Fault& f) {
        EXPECT_NE(std::string(f.what()).find("food of reach 3"), std::string::npos);
    }
}

TEST(Val, TakesTheLeadingNumber) {
    EXPECT_EQ(Val(""), 0);
    EXPECT_EQ(Val("abc"), 0);
    EXPECT_EQ(Val("12abc"), 12);
    EXPECT_EQ(Val(".5"), 0.5);
    EXPECT_EQ(Val("1,500"), 1);
    EXPECT_EQ(Val(" 1 2"), 12);
    EXPECT_EQ(Val("-3.25e2x"), -325);
    EXPECT_EQ(Val("4e"), 4);
    EXPECT_TRUE(IsNumber(" -1.5E+3 "));
    EXPECT_FALSE(IsNumber("1 2"));
    EXPECT_FALSE(IsNumber("12abc"));
    EXPECT_FALSE(IsNumber(""));
}

TEST(NumberText, PlainAndWithLeadingBlank) {
    EXPECT_EQ(NumText(0.5f), "0.5");
    EXPECT_EQ(NumText(-3), "-3");
    EXPECT_EQ(NumText(1e20f), "1E+20");
    EXPECT_EQ(NumText(1e-10), "1E-10");
    EXPECT_EQ(NumText(45000.0f), "45000");
    EXPECT_EQ(NumText(static_cast<float>(226.0 / 7.0)), "32.28571");
    EXPECT_EQ(NumText(0.1), "0.1");
    EXPECT_EQ(NumTextLead(3), " 3");
    EXPECT_EQ(NumTextLead(-3), "-3");
    EXPECT_EQ(NumTextLead(28.25f), " 28.25");
    EXPECT_EQ(NumTextLead(0.5f), " .5");
    EXPECT_EQ(NumTextLead(-0.5f), "-.5");
    EXPECT_EQ(NumTextLead(static_cast<float>(226.0 / 7.0)), " 32.28571");
    EXPECT_EQ("species " + NumTextLead(3), "species  3");
}

TEST(FormatMask, ExamplesOfTheProgram) {
    EXPECT_EQ(Format(1234567.4, "###,###,##0"), "1,234,567");
    EXPECT_EQ(Format(0, "###,###,##0"), "0");
    EXPECT_EQ(Format(2.0, "######0.0##"), "2.0");
    EXPECT_EQ(Format(2.12345, "######0.0##"), "2.123");
    EXPECT_EQ(Format(7, "000"), "007");
    EXPECT_EQ(Format(-1500, "$###,###,##0"), "-$1,500");
    EXPECT_EQ(Format(0.25, "#.###"), ".25");
    EXPECT_EQ(Format(2.5, "0"), "3");  // a half away from zero, unlike CInt
    EXPECT_EQ(Format(-2.5, "0"), "-3");
    EXPECT_EQ(Format(1.005, "0.00"), "1.01");
    EXPECT_EQ(Format(999.96, "0.0"), "1000.0");
    EXPECT_EQ(Format(12345678, "$#,##0"), "$12,345,678");
    EXPECT_EQ(Format(-0.01, "0.0"), "0.0");
    EXPECT_EQ(Format(48.0 - 15.62, "0"), "32");
}
