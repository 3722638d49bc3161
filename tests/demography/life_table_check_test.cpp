// The consistency check of a user defined standard life table.

#include "demography/life_table_check.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

// Ages first..100 with e(x) = 100 - x for both sexes (a legal table).
CellArray table(int first = 0, int last = 100) {
    CellArray t({last - first + 1, 3});
    for (int a = first; a <= last; ++a) {
        t(a - first, 0) = a;
        t(a - first, 1) = 100.0 - a + 0.5;
        t(a - first, 2) = 100.0 - a;
    }
    return t;
}

} // namespace

TEST(DoChk, ASingleYearTableTo100Passes) {
    EXPECT_TRUE(DoChk(table()));
}

TEST(DoChk, LastAgeMustBe100) {
    EXPECT_FALSE(DoChk(table(0, 99)));
    EXPECT_FALSE(DoChk(table(0, 101)));
}

TEST(DoChk, EqualNeighboursPass) {
    CellArray t = table();
    t(41, 1) = t(40, 1);
    t(71, 2) = t(70, 2);
    EXPECT_TRUE(DoChk(t));
}

TEST(DoChk, ARiseInEitherSexFails) {
    CellArray f = table();
    f(41, 1) = f(40, 1).toDouble() + 0.01;
    EXPECT_FALSE(DoChk(f));
    CellArray m = table();
    m(100, 2) = m(99, 2).toDouble() + 0.01;
    EXPECT_FALSE(DoChk(m));
}

TEST(DoChk, AGapOfTwoYearsFails) {
    // An abridged table: ages 0, 1, 5, 10, ..., 100.
    CellArray t({22, 3});
    for (int i = 0; i < 22; ++i) {
        const int age = i == 0 ? 0 : i == 1 ? 1 : 5 * (i - 1);
        t(i, 0) = age, t(i, 1) = 90.0 - age, t(i, 2) = 85.0 - 0.8 * age;
    }
    EXPECT_FALSE(DoChk(t));
    CellArray g = table();
    g(50, 0) = 51; // 49, 51, 51: a gap and then a repeat
    EXPECT_FALSE(DoChk(g));
}

TEST(DoChk, NotATableFails) {
    EXPECT_FALSE(DoChk(Cell()));
    EXPECT_FALSE(DoChk(Cell::null()));
    EXPECT_FALSE(DoChk(Cell(3.0)));
    EXPECT_FALSE(DoChk(CellArray()));
    EXPECT_FALSE(DoChk(CellArray({101})));    // one dimension
    EXPECT_FALSE(DoChk(CellArray({101, 2}))); // no male column
    EXPECT_TRUE(DoChk(Cell(table())));
}

TEST(DoChk, TextsFromAFileAreComparedAsNumbers) {
    // "9.97" sorts above "10.03" as text; as numbers it is below, and the table passes.
    CellArray t({3, 3});
    const char* rows[3][3] = {{"98", "10.03", "9.50"}, {"99", "9.97", "9.10"}, {"100", "9.60", "8.00"}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            t(i, j) = QString::fromLatin1(rows[i][j]);
    EXPECT_TRUE(DoChk(t));
}
