// FnLifeExpAt: the standard life expectancy at a fractional age, from a table of single years.

#include "demography/life_expectancy_at.h"
#include "foundation/error_store.h"
#include "platform/cell_array.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace vesk;

namespace {

double female(int age) {
    return 82.5 - 0.79 * age;
}
double male(int age) {
    return 80.0 - 0.77 * age;
}

// Ages first..last in single years; cells as text, as the settings file keeps them, or as numbers.
CellArray singleYearTable(int first, int last, bool asText = true, int columns = 3) {
    CellArray t{last - first + 1, columns};
    for (int i = 0; i <= last - first; ++i) {
        const int age = first + i;
        const double values[] = {double(age), female(age), male(age), 1000.0 + age};
        for (int j = 0; j < columns; ++j)
            t(i, j) = asText ? Cell(QString::number(values[j], 'g', 10)) : Cell(values[j]);
    }
    return t;
}

// A clean error store: the look-up stores nothing, its caller does.
class LifeExpAt : public ::testing::Test {
protected:
    void SetUp() override { clearErrorStore(); }
    void TearDown() override { clearErrorStore(); }
};

} // namespace

TEST_F(LifeExpAt, InterpolatesLinearlyBetweenSingleYears) {
    for (bool asText : {true, false}) {
        const CellArray t = singleYearTable(0, 100, asText);
        EXPECT_FLOAT_EQ(FnLifeExpAt(t, 30.25f, "F"), float(female(30) + 0.25 * (female(31) - female(30))));
        EXPECT_FLOAT_EQ(FnLifeExpAt(t, 30.25f, "M"), float(male(30) + 0.25 * (male(31) - male(30))));
        EXPECT_FLOAT_EQ(FnLifeExpAt(t, 0, "F"), 82.5f);
        EXPECT_FLOAT_EQ(FnLifeExpAt(t, 99.99f, "M"),
                        float(male(99) + (99.99f - 99) * (male(100) - male(99))));
    }
}

TEST_F(LifeExpAt, AtTheLastAgeReturnsTheLastRowWithoutInterpolation) {
    const CellArray t = singleYearTable(0, 100);
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 100, "F"), float(female(100)));
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 100.5f, "F"), float(female(100)));
    const CellArray to85 = singleYearTable(0, 85);
    EXPECT_FLOAT_EQ(FnLifeExpAt(to85, 85.7f, "M"), float(male(85)));
    EXPECT_FLOAT_EQ(FnLifeExpAt(to85, 85, "M"), float(male(85)));
}

TEST_F(LifeExpAt, OutsideTheTableGivesZero) {
    const CellArray t = singleYearTable(0, 100);
    EXPECT_EQ(FnLifeExpAt(t, 101, "F"), 0.0f);
    EXPECT_EQ(FnLifeExpAt(t, 150.2f, "M"), 0.0f);
    EXPECT_EQ(FnLifeExpAt(t, -0.5f, "F"), 0.0f); // Int(-0.5) is -1
    const CellArray from5 = singleYearTable(5, 100);
    EXPECT_EQ(FnLifeExpAt(from5, 4.9f, "F"), 0.0f);
    EXPECT_FLOAT_EQ(FnLifeExpAt(from5, 5, "F"), float(female(5)));
}

TEST_F(LifeExpAt, OtherLettersReadTheAgeColumn) {
    const CellArray t = singleYearTable(0, 100);
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 30.25f, "X"), 30.25f);
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 30.25f, ""), 30.25f);
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 30.25f, "f"), 30.25f); // the caller upper-cases the letter
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 100.5f, "X"), 100.0f);
}

TEST_F(LifeExpAt, PersonsColumnIsTheFourthAndASubscriptErrorOnThreeColumns) {
    const CellArray three = singleYearTable(0, 100);
    try {
        FnLifeExpAt(three, 30.5f, "P");
        FAIL() << "no subscript error";
    } catch (const std::out_of_range& e) {
        EXPECT_STREQ(e.what(), "Subscript out of range");
    }
    EXPECT_EQ(errorStoreCount(), 0); // the caller's handler stores it
    const CellArray four = singleYearTable(0, 100, true, 4);
    EXPECT_FLOAT_EQ(FnLifeExpAt(four, 30.5f, "P"), 1030.5f);
    // No row for the age: nothing is read, so no error either.
    EXPECT_EQ(FnLifeExpAt(three, 120, "P"), 0.0f);
}

TEST_F(LifeExpAt, NoTableIsASubscriptError) {
    EXPECT_THROW(FnLifeExpAt(CellArray{}, 3, "F"), std::out_of_range);
    EXPECT_THROW(FnLifeExpAt(CellArray{0, 3}, 3, "F"), std::out_of_range);
}

TEST_F(LifeExpAt, AnAbridgedTableServesOnlyItsOwnAgesOnAOneYearBase) {
    const int ages[] = {0, 1, 5, 10, 15};
    const double ex[] = {82.5, 81.84, 77.95, 72.99, 68.02};
    CellArray t{5, 3};
    for (int i = 0; i < 5; ++i) {
        t(i, 0) = Cell(ages[i]);
        t(i, 1) = Cell(ex[i]);
        t(i, 2) = Cell(ex[i] - 2);
    }
    EXPECT_EQ(FnLifeExpAt(t, 3, "F"), 0.0f);
    EXPECT_EQ(FnLifeExpAt(t, 7.5f, "F"), 0.0f);
    // At 5.5 the step to the next row (10) is taken as one year.
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 5.5f, "F"), float(77.95 + 0.5 * (72.99 - 77.95)));
    EXPECT_FLOAT_EQ(FnLifeExpAt(t, 15.9f, "F"), float(68.02));
}
