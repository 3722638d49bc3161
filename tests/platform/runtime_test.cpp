#include "platform/runtime.h"

#include <gtest/gtest.h>

using namespace vesk;

TEST(Val, LeadingNumberIsTaken) {
    struct Case {
        const char* text;
        double value;
    } cases[] = {
        {"12abc", 12}, {" 1 2.5", 12.5}, {"abc", 0},   {"", 0},        {"-3.5e2x", -350},
        {"1,5", 1},    {"&HFF", 255},    {"&O17", 15}, {"1.2.3", 1.2}, {"  +7", 7},
        {"2D3", 2000}, {".5", 0.5},      {"1e", 1},    {"-", 0},       {"\t42\n", 42},
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(Val(QString::fromUtf8(c.text)), c.value) << c.text;
}

TEST(Like, PatternsOfTheRuntime) {
    EXPECT_TRUE(Like("C:\\", "?:\\"));
    EXPECT_FALSE(Like("C:\\x", "?:\\"));
    EXPECT_TRUE(Like("study.vdb", "*.???"));
    EXPECT_FALSE(Like("study.db", "*.???"));
    EXPECT_FALSE(Like("", "*.???"));
    EXPECT_TRUE(Like("\\\\server\\share", "\\\\*\\*"));
    EXPECT_TRUE(Like("M05-14", "[MF]##-##"));
    EXPECT_FALSE(Like("P05-14", "[MF]##-##"));
    EXPECT_TRUE(Like("P05-14", "[!MF]##-##"));
    EXPECT_TRUE(Like("b", "[a-c]"));
    EXPECT_FALSE(Like("B", "[a-c]"));
    EXPECT_TRUE(Like("Method=1", "Method=1*"));
    EXPECT_TRUE(Like("abc", "*"));
}

TEST(Rounding, HalfToEven) {
    EXPECT_DOUBLE_EQ(roundHalfEven(2.5), 2);
    EXPECT_DOUBLE_EQ(roundHalfEven(3.5), 4);
    EXPECT_DOUBLE_EQ(roundHalfEven(-2.5), -2);
    EXPECT_DOUBLE_EQ(roundHalfEven(0.125, 2), 0.12);
    EXPECT_DOUBLE_EQ(roundHalfEven(2.6), 3);
}

TEST(Format, FixedDecimalsTiesAwayFromZero) {
    EXPECT_EQ(formatFixed(0.125, 2), "0.13");
    EXPECT_EQ(formatFixed(2.675, 2), "2.68");
    EXPECT_EQ(formatFixed(-0.0001, 2), "0.00");
    EXPECT_EQ(formatFixed(33.1349, 2), "33.13");
    EXPECT_EQ(formatFixed(5, 0), "5");
    EXPECT_EQ(formatNumber(1234567.891, "#,##0.00"), "1,234,567.89");
    EXPECT_EQ(formatNumber(0.5, "0.000"), "0.500");
    EXPECT_EQ(formatNumber(-1234.5, "#,##0"), "-1,235");
    // Optional integer digits: no leading zero before the point.
    EXPECT_EQ(formatNumber(0.5, "##.00"), ".50");
    EXPECT_EQ(formatNumber(12.5, "#.##"), "12.5");
    EXPECT_EQ(formatNumber(12, "#.##"), "12.");
    EXPECT_EQ(formatNumber(0, "#.##"), ".");
    EXPECT_EQ(formatNumber(-0.125, "#.##"), "-.13");
    EXPECT_EQ(formatNumber(3.14159, "#.0#"), "3.14");
    EXPECT_EQ(formatNumber(3.1, "#.0#"), "3.1");
    EXPECT_EQ(formatNumber(3, "#.0#"), "3.0");
    EXPECT_EQ(formatNumber(-0.25, "##.0"), "-.3");
    EXPECT_EQ(formatNumber(12.345, "##.00"), "12.35");
    EXPECT_EQ(formatNumber(123.4, "##.0"), "123.4");
}

TEST(Numbers, PrintedAsTheRuntimeDoes) {
    EXPECT_EQ(numberToText(0.1), "0.1");
    EXPECT_EQ(numberToText(1e20), "1E+20");
    EXPECT_EQ(numberToText(1.5e-5), "1.5E-05");
    EXPECT_EQ(numberToText(-3), "-3");
}

TEST(Numbers, SingleIntAndFix) {
    EXPECT_EQ(toSingle(0.1), 0.1f);
    EXPECT_DOUBLE_EQ(vbInt(-1.5), -2);
    EXPECT_DOUBLE_EQ(vbFix(-1.5), -1);
    EXPECT_EQ(Mid("PATH  =C:\\x", 8), "C:\\x");
    EXPECT_EQ(Mid("abc", 9), "");
}
