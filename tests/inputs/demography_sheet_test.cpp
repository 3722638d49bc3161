// The population and death-rate sheets against a real study file: the layout from the PND ages,
// the last-row switch, the checks that cannot be overridden, the multiplier and denominator both
// ways, persons, HoldInMem, the question about rows already there, and a Confirm that fails midway.

#include "inputs/demography_store.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

#include <QDate>

namespace vesk::test {
namespace {

namespace col = demography_col;
namespace t = sheet_texts;

const QList<double> kAges{0, 1, 5, 10};

class DemographySheet : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutDemographyGrid(grid, kAges);
    }
    void type(int row, const QString& male, const QString& female) {
        grid.setTextMatrix(row, col::kMale, male);
        grid.setTextMatrix(row, col::kFemale, female);
    }
    void typeAll(const QStringList& males, const QStringList& females) {
        for (int i = 0; i < males.size(); ++i)
            type(i + 1, males[i], females[i]);
    }
    ConfirmResult confirm(DemographyKind kind, double scale = 1, bool holdInMem = false,
                          const LoadedFigures* loaded = nullptr) {
        DemographyConfirm c;
        c.loaded = loaded;
        c.kind = kind;
        c.unit = unit;
        c.lastPndAge = kAges.last();
        c.scale = scale;
        c.holdInMem = holdInMem;
        return confirmDemography(c, grid, memory, *db);
    }
    QStringList stored(const QString& table, const QString& fields = QStringLiteral("Bai, M, F")) {
        return rows(QStringLiteral("SELECT %1 FROM %2 WHERE BPUID = 'B1' AND YEAR = 2000 ORDER BY Bai")
                        .arg(fields, table));
    }
    // The stored rates as doubles: (Bai, M, F) per row.
    QList<QList<double>> storedNumbers() {
        QList<QList<double>> out;
        auto q = db->query(QStringLiteral("SELECT Bai, M, F FROM DatASDR ORDER BY Bai"));
        while (q && q->next())
            out << QList<double>{q->value(0).toDouble(), q->value(1).toDouble(), q->value(2).toDouble()};
        return out;
    }
    GridModel grid;
    CellArray memory;
    SheetUnit unit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
};

TEST_F(DemographySheet, RowsFollowThePndAgesAndTheLastIsOpen) {
    ASSERT_EQ(grid.rows(), 5);
    EXPECT_EQ(grid.textMatrix(0, col::kAge), "Age-x");
    EXPECT_EQ(grid.textMatrix(0, col::kPersons), "Persons");
    const QStringList sizes{grid.textMatrix(1, col::kSize), grid.textMatrix(2, col::kSize),
                            grid.textMatrix(3, col::kSize), grid.textMatrix(4, col::kSize)};
    EXPECT_EQ(sizes, (QStringList{"1", "4", "5", "w"}));
    EXPECT_EQ(demographyAges(grid), kAges);
}

TEST_F(DemographySheet, TheLastRowSwitchesToAClosedIntervalAndBack) {
    bool added = false;
    EXPECT_EQ(switchLastRow(grid, added), LastRowSwitch::NeedsValues);
    EXPECT_EQ(grid.rows(), 5);
    type(4, "10", "12");
    EXPECT_EQ(switchLastRow(grid, added), LastRowSwitch::Closed);
    EXPECT_TRUE(added);
    ASSERT_EQ(grid.rows(), 6);
    EXPECT_EQ(grid.textMatrix(4, col::kSize), "5");
    EXPECT_EQ(grid.textMatrix(5, col::kAge), "15");
    EXPECT_EQ(grid.textMatrix(5, col::kSize), "w");
    EXPECT_EQ(switchLastRow(grid, added), LastRowSwitch::Opened);
    EXPECT_FALSE(added);
    EXPECT_EQ(grid.rows(), 5);
    EXPECT_EQ(grid.textMatrix(4, col::kSize), "w");
    EXPECT_EQ(grid.textMatrix(4, col::kMale), "10");
}

TEST_F(DemographySheet, TheScaleFieldsTakeDigitsAndNothingBelowOne) {
    EXPECT_EQ(scaleFactor(""), 1.0);
    EXPECT_EQ(scaleFactor("0"), 1.0);
    EXPECT_EQ(scaleFactor("1000"), 1000.0);
    EXPECT_EQ(scaleFactor(" 100 "), 100.0);
    EXPECT_EQ(scaleFactor("1e3"), 1.0);
    EXPECT_EQ(scaleFactor("-5"), 1.0);
}

TEST_F(DemographySheet, APopulationIsStoredTimesTheMultiplierWithTheDatabaseNamed) {
    typeAll({"120", "480", "610", "2500"}, {"118", "470", "600", "2900"});
    const ConfirmResult r = confirm(DemographyKind::Population, 1000);
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored("DatPOP"),
              (QStringList{"0|120000|118000", "1|480000|470000", "5|610000|600000", "10|2500000|2900000"}));
    EXPECT_EQ(value("SELECT DISTINCT UpdDt FROM DatPOP"), QDate::currentDate().toString(Qt::ISODate));
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kStoredPopulation) + db->path()});
}

TEST_F(DemographySheet, AZeroOrAFractionalPopulationIsRefusedOnItsCell) {
    typeAll({"120", "0", "610", "2500"}, {"118", "470", "600", "2900"});
    ConfirmResult r = confirm(DemographyKind::Population);
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(r.row, 2);
    EXPECT_EQ(r.col, col::kMale);
    type(2, "480", "470.5");
    r = confirm(DemographyKind::Population);
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(r.col, col::kFemale);
    EXPECT_EQ(prompts.messages(), QStringList(2, text(t::kPopulationNotPositive)));
    EXPECT_TRUE(stored("DatPOP").isEmpty());
}

TEST_F(DemographySheet, TooFewFilledRowsAreRefused) {
    // The last PND age 10 asks for two rows filled on both sexes.
    type(1, "120", "118");
    EXPECT_EQ(confirm(DemographyKind::Population).outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kRowsNotFilled)});
    type(2, "480", "470");
    EXPECT_EQ(confirm(DemographyKind::Population).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored("DatPOP").size(), 2);
}

// A PND set of wide groups (0, 15, 45: nine five-year groups to 45, three rows) asks for every row.
TEST_F(DemographySheet, WideGroupsAskForEveryRowFilled) {
    layoutDemographyGrid(grid, {0, 15, 45});
    type(1, "10", "10");
    type(2, "20", "20");
    DemographyConfirm c;
    c.unit = unit;
    c.lastPndAge = 45;
    EXPECT_EQ(confirmDemography(c, grid, memory, *db).outcome, ConfirmResult::Outcome::Refused);
    type(3, "30", "30");
    EXPECT_EQ(confirmDemography(c, grid, memory, *db).outcome, ConfirmResult::Outcome::Stored);
}

TEST_F(DemographySheet, RatesOfZeroAreAcceptedAndDividedByTheDenominator) {
    typeAll({"0", "1.25", "0.5", "123.456"}, {"0", "1", "0.25", "100"});
    EXPECT_EQ(confirm(DemographyKind::DeathRates, 1000).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored("DatASDR"), (QStringList{"0|0|0", "1|0.00125|0.001", "5|5e-04|0.00025",
                                              "10|0.123456|0.1"}));
    EXPECT_EQ(prompts.messages().last(), text(t::kStoredDeathRates) + db->path());
}

TEST_F(DemographySheet, PersonsRateIsWeightedByThePopulationOrZeroWithoutIt) {
    typeAll({"0.01", "0.02", "0.03", "0.04"}, {"0.03", "0.02", "0.01", "0.04"});
    ASSERT_EQ(confirm(DemographyKind::DeathRates).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored("DatASDR", "Bai, P"), (QStringList{"0|0", "1|0", "5|0", "10|0"}));
    exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 0, 300, 100), "
         "('B1', 2000, 1, 50, 50)");
    prompts.answer(Answer::Yes);
    ASSERT_EQ(confirm(DemographyKind::DeathRates).outcome, ConfirmResult::Outcome::Stored);
    // (0.03 * 100 + 0.01 * 300) / 400 = 0.015; (0.02 * 50 + 0.02 * 50) / 100 = 0.02.
    const QStringList p = stored("DatASDR", "Bai, P");
    ASSERT_EQ(p.size(), 4);
    EXPECT_DOUBLE_EQ(p[0].section(u'|', 1).toDouble(), 0.015);
    EXPECT_DOUBLE_EQ(p[1].section(u'|', 1).toDouble(), 0.02);
    EXPECT_EQ(p[2], "5|0");
}

TEST_F(DemographySheet, PersonsIsASumForPeopleAndBlankForRatesWithoutPeople) {
    typeAll({"1", "2", "3", "4"}, {"10", "20", "30", "40"});
    fillPersons(grid, DemographyKind::Population);
    EXPECT_EQ(grid.textMatrix(4, col::kPersons), "44");
    fillPersons(grid, DemographyKind::DeathRates);
    EXPECT_EQ(grid.textMatrix(4, col::kPersons), "");
    fillPersons(grid, DemographyKind::DeathRates, {AgePopulation{10, 3, 1}});
    EXPECT_EQ(grid.textMatrix(4, col::kPersons), "13"); // (40 * 1 + 4 * 3) / (1 + 3)
}

TEST_F(DemographySheet, HoldInMemKeepsTheFiguresAndChangesNoTable) {
    typeAll({"120", "480", "610", "2500"}, {"118", "470", "600", "2900"});
    EXPECT_EQ(confirm(DemographyKind::Population, 10, true).outcome, ConfirmResult::Outcome::InMemory);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kStoredInMemory)});
    EXPECT_TRUE(stored("DatPOP").isEmpty());
    ASSERT_EQ(memory.size(0), 4);
    ASSERT_EQ(memory.size(1), 6);
    EXPECT_EQ(memory(3, 0), Cell("B1"));
    EXPECT_EQ(memory(3, 1).toDouble(), 2000.0);
    EXPECT_EQ(memory(3, 2).toDouble(), 10.0);
    EXPECT_EQ(memory(3, 3).toDouble(), 25000.0);
    EXPECT_EQ(memory(3, 4).toDouble(), 29000.0);
    EXPECT_TRUE(memory(3, 5).isDate());
}

TEST_F(DemographySheet, RowsAlreadyThereAskOnceAndNoKeepsThem) {
    exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 5, 7, 8)");
    typeAll({"120", "480", "610", "2500"}, {"118", "470", "600", "2900"});
    prompts.answer(Answer::No);
    EXPECT_EQ(confirm(DemographyKind::Population).outcome, ConfirmResult::Outcome::Declined);
    EXPECT_EQ(prompts.messages(),
              QStringList{text(t::kExistingDataPart1) + "District" + text(t::kExistingDataPart2)});
    EXPECT_EQ(stored("DatPOP"), QStringList{"5|7|8"});
    prompts.answer(Answer::Yes);
    EXPECT_EQ(confirm(DemographyKind::Population).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored("DatPOP"),
              (QStringList{"0|120|118", "1|480|470", "5|610|600", "10|2500|2900"}));
}

TEST_F(DemographySheet, AConfirmThatFailsMidwayStoresNothingAndSaysSo) {
    // The last row, times the multiplier, is beyond what the LONG field holds.
    typeAll({"120", "480", "610", "2500000"}, {"118", "470", "600", "2900"});
    EXPECT_EQ(confirm(DemographyKind::Population, 1000).outcome, ConfirmResult::Outcome::Failed);
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages()[0].startsWith("6 Overflow")) << prompts.messages()[0].toStdString();
    EXPECT_TRUE(prompts.messages()[0].endsWith(text(t::kNothingStored)));
    EXPECT_TRUE(stored("DatPOP").isEmpty());
}

TEST_F(DemographySheet, ALoadShowsTheStoredFiguresThroughTheScaleInReverse) {
    exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 0, 120000, 118000), "
         "('B1', 2000, 10, 2500000, 2900000), ('B1', 2000, 15, 1000, 2000)");
    const DemographyLoad found = loadDemography(DemographyKind::Population, grid, unit, 1000, *db);
    EXPECT_TRUE(found.confirmed);
    EXPECT_TRUE(found.added); // 15 is the closed interval over the last PND age
    EXPECT_TRUE(found.unmatched.isEmpty());
    ASSERT_EQ(grid.rows(), 6);
    EXPECT_EQ(grid.textMatrix(1, col::kMale), "120");
    EXPECT_EQ(grid.textMatrix(1, col::kPersons), "238");
    EXPECT_EQ(grid.textMatrix(4, col::kSize), "5");
    EXPECT_EQ(grid.textMatrix(5, col::kFemale), "2");
    EXPECT_EQ(grid.textMatrix(5, col::kSize), "w");
    EXPECT_EQ(grid.textMatrix(2, col::kMale), "");

    GridModel rates;
    layoutDemographyGrid(rates, kAges);
    exec("INSERT INTO DatASDR (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 0, 0.00123456789, 0.1)");
    EXPECT_TRUE(loadDemography(DemographyKind::DeathRates, rates, unit, 1000, *db).confirmed);
    EXPECT_EQ(rates.textMatrix(1, col::kMale), "1.23456789");
    EXPECT_EQ(rates.textMatrix(1, col::kFemale), "100");
}

// A figure keyed in thousands or per 1,000 is the decimal number it reads as: 1.1 thousand is 1100,
// not 1100.0000000000002, and a population of 1500 shows as 1.5 thousand and confirms again.
TEST_F(DemographySheet, APowerOfTenMovesTheDecimalPointExactly) {
    EXPECT_EQ(storedFigure("1.1", DemographyKind::Population, 1000), 1100.0);
    EXPECT_EQ(storedFigure("1.25", DemographyKind::DeathRates, 1000), 0.00125);
    EXPECT_EQ(storedFigure("7e-300", DemographyKind::DeathRates, 100000), 7e-305);
    EXPECT_EQ(storedFigure(" ", DemographyKind::DeathRates, 1000), std::nullopt);
    EXPECT_EQ(shownFigure(1500, DemographyKind::Population, 1000), "1.5");
    EXPECT_EQ(shownFigure(0.00125, DemographyKind::DeathRates, 1000), "1.25");
    EXPECT_EQ(shownFigure(120000, DemographyKind::Population, 1000), "120");
    EXPECT_EQ(shownFigure(5, DemographyKind::Population, 100), "0.05");
    EXPECT_EQ(shownFigure(1e-4, DemographyKind::DeathRates, 1000), "0.1"); // shortest text 1e-04, shown plainly
    EXPECT_EQ(shownFigure(1e-300, DemographyKind::DeathRates, 1000), "1e-297");
    for (const double v : {0.1, 1e-300, 1e300, 12345.678901234567, 0.00123456789, 3.0 / 7.0})
        for (const double scale : {1.0, 10.0, 1000.0, 100000.0})
            for (const DemographyKind kind : {DemographyKind::Population, DemographyKind::DeathRates})
                EXPECT_EQ(storedFigure(shownFigure(v, kind, scale), kind, scale), v)
                    << v << " through " << scale << " " << shownFigure(v, kind, scale).toStdString();
}

// Through any scale, a sheet loaded and confirmed again unchanged stores the very same doubles; a
// cell typed anew is scaled anew.
TEST_F(DemographySheet, AConfirmedSheetLoadedAndConfirmedAgainStoresTheSameNumbers) {
    for (const double scale : {7.0, 3.0, 1000.0}) {
        SCOPED_TRACE(scale);
        exec("DELETE FROM DatASDR");
        layoutDemographyGrid(grid, kAges);
        typeAll({"0.001234567890123", "0.1", "12345.678901234567", "3"}, {"0.1", "0.2", "1e-300", "0.7"});
        ASSERT_EQ(confirm(DemographyKind::DeathRates, scale).outcome, ConfirmResult::Outcome::Stored);
        const QList<QList<double>> first = storedNumbers();
        layoutDemographyGrid(grid, kAges);
        const DemographyLoad found = loadDemography(DemographyKind::DeathRates, grid, unit, scale, *db);
        ASSERT_TRUE(found.confirmed);
        prompts.answer(Answer::Yes);
        ASSERT_EQ(confirm(DemographyKind::DeathRates, scale, false, &found.figures).outcome,
                  ConfirmResult::Outcome::Stored);
        EXPECT_EQ(storedNumbers(), first);
        type(4, "6", "0.7");
        prompts.answer(Answer::Yes);
        ASSERT_EQ(confirm(DemographyKind::DeathRates, scale, false, &found.figures).outcome,
                  ConfirmResult::Outcome::Stored);
        EXPECT_EQ(storedNumbers()[3][1], 6.0 / scale);
    }
}

TEST_F(DemographySheet, StoredAgesOutsideTheSheetAreReported) {
    exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 3, 1, 1)");
    const DemographyLoad found = loadDemography(DemographyKind::Population, grid, unit, 1, *db);
    EXPECT_TRUE(found.confirmed);
    EXPECT_EQ(found.unmatched, QList<double>{3});
}

} // namespace
} // namespace vesk::test
