#include "platform/cell_array.h"

#include <gtest/gtest.h>

using namespace vesk;

TEST(Cell, IsSixteenBytes) { EXPECT_EQ(sizeof(Cell), 16u); }

TEST(Cell, EmptyNullAndZeroStayApart) {
    Cell empty, null = Cell::null(), zero(0.0);
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_TRUE(null.isNull());
    EXPECT_TRUE(zero.isNumber());
    EXPECT_NE(empty, null);
    EXPECT_NE(empty, zero);
    EXPECT_NE(null, zero);
    EXPECT_EQ(empty.toString(), "");
    EXPECT_EQ(zero.toString(), "0");
}

TEST(Cell, TextIsInternedAndParsedLeniently) {
    Cell a(QStringLiteral("12.5abc")), b(QStringLiteral("12.5abc"));
    EXPECT_EQ(a, b);
    EXPECT_DOUBLE_EQ(a.toDouble(), 12.5);
    EXPECT_EQ(a.toString(), "12.5abc");
}

TEST(Cell, NestedArrayIsCopiedOnWrite) {
    CellArray inner{3};
    inner(0) = Cell(1.0);
    Cell c(inner);
    Cell d = c;
    d.array()(0) = Cell(2.0);
    EXPECT_DOUBLE_EQ(c.array()(0).toDouble(), 1.0);
    EXPECT_DOUBLE_EQ(d.array()(0).toDouble(), 2.0);
}

TEST(CellArray, RowMajorWithBoundsChecked) {
    CellArray a{2, 3};
    EXPECT_EQ(a.count(), 6u);
    a(1, 2) = Cell(7.0);
    EXPECT_DOUBLE_EQ(a.flat(5).toDouble(), 7.0);
    EXPECT_THROW(a(2, 0), std::out_of_range);
    EXPECT_THROW(a.at({0}), std::out_of_range);
}

TEST(CellArray, PreservingRedimKeepsTheOverlapInAnyDimension) {
    CellArray a{2, 3};
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 3; ++j)
            a(i, j) = Cell(i * 10 + j);
    a.redim({{0, 2}, {0, 1}}, true);
    EXPECT_EQ(a.size(0), 3);
    EXPECT_EQ(a.size(1), 2);
    EXPECT_DOUBLE_EQ(a(1, 1).toDouble(), 11.0);
    EXPECT_TRUE(a(2, 0).isEmpty());
    a.redim({{0, 0}, {0, 0}}, false);
    EXPECT_TRUE(a(0, 0).isEmpty());
}

TEST(CellArray, NonZeroLowerBounds) {
    CellArray a(std::vector<Bound>{{1, 3}});
    a(1) = Cell(1.0);
    a(3) = Cell(3.0);
    EXPECT_THROW(a(0), std::out_of_range);
    EXPECT_EQ(a.lbound(), 1);
    EXPECT_EQ(a.ubound(), 3);
}
