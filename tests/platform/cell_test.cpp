#include "platform/cell_array.h"

#include <gtest/gtest.h>

#include <limits>

using namespace vesk;

TEST(Cell, IsSixteenBytes) {
    EXPECT_EQ(sizeof(Cell), 16u);
}

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

TEST(Cell, TextIsComparedByItsCharactersAndParsedLeniently) {
    Cell a(QStringLiteral("12.5abc")), b(QStringLiteral("12.5abc"));
    EXPECT_EQ(a, b);
    EXPECT_NE(a, Cell(QStringLiteral("12.5abd")));
    EXPECT_NE(a, Cell(12.5));
    EXPECT_DOUBLE_EQ(a.toDouble(), 12.5);
    EXPECT_EQ(a.toString(), "12.5abc");
}

// A text lives as long as a cell holds it: the copies of a cell share it, and the last one gives it
// back, so that the texts of every file read in a session do not stay in memory for good.
TEST(Cell, TextIsGivenBackWithItsLastCell) {
    const QString text = QStringLiteral("made at run time ") + QString::number(20261124);
    ASSERT_TRUE(text.isDetached());
    {
        const Cell a(text);
        Cell b = a;
        Cell c;
        c = b;
        const Cell d(std::move(b));
        EXPECT_FALSE(text.isDetached()); // the cells share its characters
        EXPECT_EQ(c.toString(), text);
        EXPECT_EQ(d, a);
    }
    EXPECT_TRUE(text.isDetached());
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

TEST(Cell, NumberSubtypesPrintAndCompareApart) {
    const Cell yes = Cell::boolean(true), no = Cell::boolean(false);
    EXPECT_TRUE(yes.isNumber());
    EXPECT_TRUE(yes.isBoolean());
    EXPECT_DOUBLE_EQ(yes.toDouble(), -1.0); // the runtime's True
    EXPECT_EQ(yes.toString(), "True");
    EXPECT_EQ(no.toString(), "False");
    EXPECT_NE(no, Cell(0.0));
    EXPECT_EQ(Cell::boolean(true), yes);

    const Cell day = Cell::date(43835.0);
    EXPECT_TRUE(day.isDate());
    EXPECT_EQ(day.toString(), "2020-01-05");
    EXPECT_EQ(Cell::date(43835.75).toString(), "2020-01-05 18:00:00");
    EXPECT_NE(day, Cell(43835.0));

    const Cell s = Cell::single(0.1f);
    EXPECT_TRUE(s.isSingle());
    EXPECT_EQ(s.toString(), "0.1");
    EXPECT_EQ(Cell(QStringLiteral("x")).subtype(), Cell::Subtype::Double);

    Cell copy = day, moved = std::move(copy);
    EXPECT_EQ(moved, day);
    EXPECT_EQ(sizeof(Cell), 16u);
}

TEST(Cell, DateSerialsCountFromThirtiethDecember1899) {
    EXPECT_DOUBLE_EQ(dateSerial(QDate(1899, 12, 30)), 0.0);
    EXPECT_DOUBLE_EQ(dateSerial(QDate(1900, 3, 1)), 61.0);
    EXPECT_DOUBLE_EQ(dateSerial(QDateTime(QDate(2020, 1, 5), QTime(6, 0))), 43835.25);
    EXPECT_DOUBLE_EQ(dateSerial(QDateTime(QDate(1899, 12, 29), QTime(6, 0))), -1.25);
    EXPECT_EQ(serialToDateTime(-1.25), QDateTime(QDate(1899, 12, 29), QTime(6, 0)));
    EXPECT_EQ(serialToDateTime(43835.5), QDateTime(QDate(2020, 1, 5), QTime(12, 0)));
    EXPECT_EQ(serialToDateTime(43835.99999999999), QDateTime(QDate(2020, 1, 6), QTime(0, 0)));
}

namespace {

// A date cell whose serial is no calendar date (a damaged worksheet can hold one) has no date to
// show: its text is the serial's, and nothing overflows on the way.
TEST(Cell, ADateFarBeyondTheCalendarShowsItsSerial) {
    for (double serial : {-1e300, 1e300, 1e9, -1e9, 1e19})
        EXPECT_EQ(vesk::Cell::date(serial).toString(), vesk::Cell(serial).toString()) << serial;
    EXPECT_FALSE(vesk::serialToDateTime(std::numeric_limits<double>::quiet_NaN()).isValid());
    EXPECT_EQ(vesk::Cell::date(-657434.0).toString(), QStringLiteral("0100-01-01"));
    EXPECT_EQ(vesk::Cell::date(-657435.0).toString(), QStringLiteral("0099-12-31"));
    EXPECT_EQ(vesk::Cell::date(2958465.0).toString(), QStringLiteral("9999-12-31"));
}

} // namespace
