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

TEST(Csv, FullPrecisionNumbers) {
    EXPECT_EQ(csvNumber(33.13123456789), "33.13123457");
}
