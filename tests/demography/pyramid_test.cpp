// The population pyramid's geometry and the population and deaths views' tables, worked by hand.

#include "demography/pop_death_views.h"
#include "demography/pyramid.h"
#include "platform/cell_array.h"

#include <gtest/gtest.h>

using namespace vesk;

TEST(Pyramid, UnitsAndWordsOfTheAxis) {
    EXPECT_EQ(FnGetUnits(7), 1.0); // a maximum of at most 10: the unit stays 1
    EXPECT_EQ(FnGetUnits(10), 1.0);
    EXPECT_EQ(FnGetUnits(11), 10.0);
    // 12345 -> 1235 -> 124 -> 12 -> 1: four divisions.
    EXPECT_EQ(FnGetUnits(12345), 1e4);
    // 96 -> 10: one division (the rounding keeps it at 10).
    EXPECT_EQ(FnGetUnits(96), 10.0);
    EXPECT_EQ(FnGetUnitsInWords(1e4), QString("Thousands"));
    EXPECT_EQ(FnGetUnitsInWords(1e2), QString("Tens"));
    EXPECT_EQ(FnGetUnitsInWords(1e9), QString("Hundred Millions"));
    EXPECT_TRUE(FnGetUnitsInWords(1).isEmpty());
    EXPECT_EQ(FnGetResizeFactor(100), 1.0);
    EXPECT_EQ(FnGetResizeFactor(101), 10.0);
    EXPECT_EQ(FnGetResizeFactor(12345), 1000.0);
}

TEST(Pyramid, GeometryOfATypedTable) {
    // Three groups, the largest 12000 women: factor 1000, scaled 12; five ticks of ceil(12 / 5) = 3 make
    // an axis of 15 on a half width of 300 pixels, 20 pixels a unit.
    const PyramidTable t = {{0, 6000, 5500}, {15, 9000, 12000}, {60, 3000, 4500}};
    const PyramidGeometry g = pyramidGeometry(t, 600, 400);
    EXPECT_EQ(g.factor, 1000.0);
    EXPECT_EQ(g.unit, 1e4);
    EXPECT_EQ(g.axisTitle, QString("Population in Thousands"));
    ASSERT_EQ(g.bars.size(), 3u);
    EXPECT_EQ(g.bars[0].label, QString("0"));
    EXPECT_EQ(g.bars[2].label, QString("60+")); // the last row with "+", whatever its width
    EXPECT_EQ(g.bars[0].height, 100.0);       // 400 / (3 + 1)
    EXPECT_EQ(g.bars[0].top, 300.0);          // the youngest at the bottom
    EXPECT_DOUBLE_EQ(g.bars[0].maleLength, 6 * 20.0);
    EXPECT_DOUBLE_EQ(g.bars[1].femaleLength, 12 * 20.0);
    EXPECT_DOUBLE_EQ(g.bars[2].femaleLength, 4.5 * 20.0);
    ASSERT_EQ(g.ticks.size(), 5u);
    EXPECT_EQ(g.ticks[4].label, QString("15"));
    EXPECT_DOUBLE_EQ(g.ticks[4].offset, 300.0);
    EXPECT_EQ(ArrPopPrymdatToClip({{0, 1.5, 2}}), QString("0\t1.5\t2\n"));
}

TEST(Pyramid, AUnitOfTheStudyReadsAgeMalesAndFemales) {
    CellArray pop({1, 2, 3, 5});
    for (int r = 0; r < 3; ++r) {
        pop(0, 1, r, 0) = Cell(double(r));
        pop(0, 1, r, 2) = Cell(100.0 + r); // female
        pop(0, 1, r, 3) = Cell(200.0 + r); // male
    }
    const PyramidTable t = pyramidOfUnit(Cell(std::move(pop)), 1);
    ASSERT_EQ(t.size(), 3u);
    EXPECT_EQ(t[2].age, 2.0);
    EXPECT_EQ(t[2].males, 202.0);
    EXPECT_EQ(t[2].females, 102.0);
}

TEST(PopDeathViews, LaddersAndTheirChecks) {
    EXPECT_EQ(fiveAgeGroups().back().eai, QString("w"));
    EXPECT_EQ(sevenAgeGroups().size(), 7u);
    const auto five = fiveYearGroups(85);
    EXPECT_EQ(five.size(), 18u);
    EXPECT_EQ(five[17].bai, QString("85"));
    EXPECT_FALSE(checkIntervals({{"5", "5"}}).has_value()); // one year, BAI equal to EAI, passes
    EXPECT_EQ(checkIntervals({{"5", ""}}).value_or(""), QString("The cell should not be left blank"));
    EXPECT_EQ(checkIntervals({{"10", "5"}}).value_or(""), QString("The BAI value should not be morethan EAI value"));
    EXPECT_EQ(checkIntervals({}).value_or(""), QString("The Age Intervals are not set, Please enter the Age Intervals"));
    EXPECT_FALSE(checkIntervals({{"60", "w"}}).has_value());
}

TEST(PopDeathViews, SumsByIntervalForEachSexOption) {
    // One unit, ages 0..9 single years and 10 the open row: females 1 a year, males 2 a year.
    CellArray pop({1, 1, 11, 5});
    for (int r = 0; r <= 10; ++r) {
        pop(0, 0, r, 0) = Cell(double(r));
        pop(0, 0, r, 2) = Cell(1.0);
        pop(0, 0, r, 3) = Cell(2.0);
    }
    CellArray ids({1});
    ids(0) = Cell("U1");
    const Cell array(std::move(pop));
    const std::vector<AgeInterval> rows = {{"0", "4"}, {"5", "5"}, {"6", "w"}};
    const auto all = popDeathTables(array, Cell(std::move(ids)), rows, "ALL");
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].unit, QString("U1"));
    EXPECT_EQ(all[0].heads, QStringList({"BAI", "EAI", "Male", "Female", "Persons"}));
    EXPECT_EQ(all[0].values[0], std::vector<double>({10, 5, 15}));
    EXPECT_EQ(all[0].values[1], std::vector<double>({2, 1, 3}));
    EXPECT_EQ(all[0].values[2], std::vector<double>({10, 5, 15})); // 6..10
    EXPECT_EQ(all[0].rows[2][1], QString("w"));
    EXPECT_EQ(popDeathTables(array, Cell(), rows, "P")[0].heads, QStringList({"BAI", "EAI", "Persons"}));
    EXPECT_EQ(popDeathTables(array, Cell(), rows, "MF")[0].values[0], std::vector<double>({10, 5}));
    EXPECT_EQ(popDeathTables(array, Cell(), rows, "F")[0].values[1], std::vector<double>({1}));
    // No array for the mode yet: the table stays empty.
    EXPECT_TRUE(popDeathTables(Cell(), Cell(), rows, "M").empty());
}
