#include "platform/csv.h"

#include <gtest/gtest.h>

using namespace vesk;

TEST(Csv, QuotedFieldsAndCrLf) {
    auto t = parseCsv("a,b,c\r\n1,\"x, \"\"y\"\"\",3\r\n\r\n4,5,\n");
    ASSERT_TRUE(t);
    EXPECT_EQ(t->header, (QStringList{"a", "b", "c"}));
    ASSERT_EQ(t->rows.size(), 2);
    EXPECT_EQ(t->rows[0][1], "x, \"y\"");
    EXPECT_EQ(t->rows[1], (QStringList{"4", "5", ""}));
    EXPECT_EQ(t->column("B"), 1);
    EXPECT_EQ(parseCsv(toCsv(*t))->rows, t->rows);
}

TEST(Csv, UnclosedQuoteIsAnError) {
    QString e;
    EXPECT_FALSE(parseCsv("a\n\"x", &e));
    EXPECT_FALSE(e.isEmpty());
}

TEST(Csv, NumbersAreTheShortestTextOfTheSameDouble) {
    EXPECT_EQ(csvNumber(33.13123456789), "33.13123456789");
    EXPECT_EQ(csvNumber(123456789012), "123456789012");
    EXPECT_EQ(csvNumber(0.1), "0.1");
    EXPECT_EQ(csvNumber(12345.678901234567), "12345.678901234567");
    EXPECT_EQ(csvNumber(1e300), "1e+300");
    EXPECT_EQ(csvNumber(-1e-300), "-1e-300");
    EXPECT_EQ(csvNumber(-2.5), "-2.5");
    EXPECT_EQ(csvNumber(0), "0");
    for (const double v : {1.0 / 3.0, 9007199254740993.0, 4.35, 1e-7, 6.02214076e23})
        EXPECT_EQ(csvNumber(v).toDouble(), v);
}
