// The general array helpers: comparison of dynamic values, the exchange sort, row removal, compaction.

#include "cell_texts.h"
#include "foundation/array_helpers.h"
#include "qt_printers.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace vesk;

namespace {

using vesk::test::texts;

} // namespace

TEST(CompareCells, RuntimeRules) {
    EXPECT_EQ(CompareCells(Cell(5), Cell(10)), -1);
    EXPECT_EQ(CompareCells(Cell("M10"), Cell("M05")), 1);
    EXPECT_EQ(CompareCells(Cell("a"), Cell("B")), 1);  // binary: lower case after upper case
    EXPECT_EQ(CompareCells(Cell(1e9), Cell("W")), -1); // a number is less than any text
    EXPECT_EQ(CompareCells(Cell("W"), Cell(85)), 1);
    EXPECT_EQ(CompareCells(Cell(), Cell(0)), 0);
    EXPECT_EQ(CompareCells(Cell(), Cell(-1)), 1);
    EXPECT_EQ(CompareCells(Cell(), Cell("")), 0);
    EXPECT_EQ(CompareCells(Cell(), Cell()), 0);
    EXPECT_FALSE(CompareCells(Cell::null(), Cell(1)).has_value());
    EXPECT_FALSE(cellEquals(Cell::null(), Cell::null()));
    EXPECT_THROW(CompareCells(Cell(CellArray({1})), Cell(1)), RuntimeError);
}

TEST(FnSortArr, OneDimensionAscendingAndDescending) {
    CellArray a({5});
    const char* in[] = {"M0", "F60-w", "F0", "M05-9", "F01-4"};
    for (int i = 0; i < 5; ++i)
        a(i) = Cell(in[i]);
    FnSortArr(a, -1, 1);
    EXPECT_EQ(texts(a), QStringList({"F0", "F01-4", "F60-w", "M0", "M05-9"}));
    FnSortArr(a, -1, 0);
    EXPECT_EQ(texts(a), QStringList({"M05-9", "M0", "F60-w", "F01-4", "F0"}));
}

TEST(FnSortArr, RowsByColumnSwapWholeRows) {
    CellArray a({3, 2});
    a(0, 0) = Cell(30);
    a(0, 1) = Cell("c");
    a(1, 0) = Cell(10);
    a(1, 1) = Cell("a");
    a(2, 0) = Cell(20);
    a(2, 1) = Cell("b");
    FnSortArr(a, 0, 1);
    EXPECT_EQ(a(0, 1), Cell("a"));
    EXPECT_EQ(a(1, 1), Cell("b"));
    EXPECT_EQ(a(2, 1), Cell("c"));
    FnSortArr(a, 1, 0);
    EXPECT_EQ(a(0, 0), Cell(30));
}

TEST(FnSortArr, KeepsLowerBound) {
    CellArray a(std::vector<Bound>{{1, 3}});
    a(1) = Cell(3);
    a(2) = Cell(1);
    a(3) = Cell(2);
    FnSortArr(a, -1, 1);
    EXPECT_EQ(a.lbound(0), 1);
    EXPECT_EQ(a(1), Cell(1));
    EXPECT_EQ(a(3), Cell(3));
}

TEST(FnArrDelRow, OneAndTwoDimensions) {
    CellArray a({3});
    a(0) = Cell("x");
    a(1) = Cell("y");
    a(2) = Cell("z");
    EXPECT_EQ(texts(FnArrDelRow(a, 1, 1)), QStringList({"x", "z"}));
    CellArray m({2, 2});
    m(0, 0) = Cell(1);
    m(1, 0) = Cell(2);
    m(1, 1) = Cell("b");
    const CellArray r = FnArrDelRow(m, 0, 2);
    ASSERT_EQ(r.size(0), 1);
    EXPECT_EQ(r(0, 0), Cell(2));
    EXPECT_EQ(r(0, 1), Cell("b"));
    CellArray one({1});
    one(0) = Cell("last");
    EXPECT_EQ(FnArrDelRow(one, 0, 1).rank(), 0); // a list that loses its last row is empty
    EXPECT_THROW(FnArrDelRow(a, 3, 1), RuntimeError);
}

TEST(FnCompactArr, DropsBlanks) {
    CellArray a({5});
    a(0) = Cell("0");
    a(1) = Cell("");
    a(2) = Cell(5);
    a(3) = Cell("  ");
    const Cell c = FnCompactArr(Cell(a), 1);
    ASSERT_TRUE(c.isArray());
    EXPECT_EQ(texts(c.array()), QStringList({"0", "5"}));
    CellArray m({3, 2});
    m(0, 1) = Cell(1);
    m(2, 0) = Cell("x");
    const Cell cm = FnCompactArr(Cell(m), 2);
    ASSERT_TRUE(cm.isArray());
    EXPECT_EQ(cm.array().size(0), 2);
    EXPECT_EQ(cm.array()(1, 0), Cell("x"));
}

TEST(FnCompactArr, NothingLeftOrNoArrayGivesEmptyString) {
    CellArray a({2});
    EXPECT_EQ(FnCompactArr(Cell(a), 1), Cell(""));
    EXPECT_EQ(FnCompactArr(Cell(), 1), Cell(""));
    EXPECT_EQ(FnCompactArr(Cell("text"), 2), Cell(""));
}
