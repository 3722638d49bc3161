// The import of the population and death-rate sheets from each kind of file, against a real study
// file: the question of each kind, the named range equal to the BPU id in a worksheet (any case),
// every test that ends an import with its message, and the figures shown through the scale and
// stored by Confirm as they stood in the file.

#include "inputs/demography_import.h"
#include "inputs/foreign_file.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

namespace vesk::test {
namespace {

namespace col = demography_col;
namespace t = sheet_texts;

const QList<double> kAges{0, 1, 5, 10};
const QStringList kFields{"BPUID", "Year", "BAI", "M", "F", "UpdDt"};

CellArray sourceRows(const QList<QList<Cell>>& rows) {
    CellArray a{static_cast<int>(rows.size()), 6};
    for (int i = 0; i < rows.size(); ++i)
        for (int j = 0; j < rows[i].size(); ++j)
            a(i, j) = rows[i][j];
    return a;
}

QList<QList<Cell>> unitRows(const QString& unit, int year, double scale) {
    QList<QList<Cell>> rows;
    const double ages[] = {0, 1, 5, 10};
    for (int k = 0; k < 4; ++k)
        rows << QList<Cell>{Cell(unit), Cell(year), Cell(ages[k]), Cell((k + 1) * scale), Cell((k + 2) * scale),
                            Cell::date(45000)};
    return rows;
}

class DemographyImportTest : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutDemographyGrid(grid, kAges);
    }
    void write(const QString& file, const QString& table, const QList<QList<Cell>>& rows) {
        ASSERT_TRUE(FnWriteArrFile(sourceRows(rows), path(file), table, kFields))
            << lastForeignError().words.toStdString();
    }
    bool import(const QString& file, DemographyKind kind = DemographyKind::Population, double scale = 1,
                const QString& table = QString()) {
        DemographyImport im;
        im.kind = kind;
        im.unit = unit;
        im.path = path(file);
        im.table = table;
        im.scale = scale;
        return importDemography(im, grid);
    }
    QStringList males() {
        QStringList out;
        for (int r = 1; r < grid.rows(); ++r)
            out << grid.textMatrix(r, col::kMale);
        return out;
    }
    GridModel grid;
    SheetUnit unit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
};

TEST_F(DemographyImportTest, AWorkbookRangeNamedAfterTheUnitInAnyCaseIsImported) {
    write("p.xlsx", "b1", unitRows("B1", 2000, 1000));
    write("p.xlsx", "B2", unitRows("B2", 2000, 7));
    EXPECT_TRUE(import("p.xlsx", DemographyKind::Population, 1000));
    EXPECT_EQ(males(), (QStringList{"1", "2", "3", "4"}));
    EXPECT_EQ(grid.textMatrix(4, col::kPersons), "9");
    EXPECT_EQ(prompts.messages(),
              QStringList{text(t::kAskWorksheet) + "District" + text(t::kAskPopulationFields) + text(t::kAskTail)});
    // Confirm stores the figures as they stood in the file.
    DemographyConfirm c;
    c.unit = unit;
    c.lastPndAge = 10;
    c.scale = 1000;
    CellArray memory;
    ASSERT_EQ(confirmDemography(c, grid, memory, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(rows("SELECT Bai, M, F FROM DatPOP ORDER BY Bai"),
              (QStringList{"0|1000|2000", "1|2000|3000", "5|3000|4000", "10|4000|5000"}));
}

TEST_F(DemographyImportTest, AWorksheetWithoutTheUnitsRangeSaysHowToNameIt) {
    write("p.wk1", "B2", unitRows("B2", 2000, 1));
    EXPECT_FALSE(import("p.wk1"));
    EXPECT_EQ(prompts.messages().last(), text(t::kNoRange));
    EXPECT_EQ(males(), QStringList(4, QString()));
}

TEST_F(DemographyImportTest, ARangeHoldingOtherUnitsListsThem) {
    QList<QList<Cell>> rows = unitRows("B1", 2000, 1);
    rows[2][0] = Cell("B9");
    write("p.xlsx", "B1", rows);
    EXPECT_FALSE(import("p.xlsx"));
    EXPECT_EQ(prompts.messages().last(), text(t::kOtherUnits) + "\n" + text(t::kOtherUnitsListed) + "\nB9");
}

TEST_F(DemographyImportTest, ARangeOfAnotherYearIsRefused) {
    write("p.xlsx", "B1", unitRows("B1", 1999, 1));
    EXPECT_FALSE(import("p.xlsx"));
    EXPECT_EQ(prompts.messages().last(), text(t::kOtherYear));
}

TEST_F(DemographyImportTest, NoSaysTheFileIsNotLaidOutSoAndNothingHappens) {
    write("p.xlsx", "B1", unitRows("B1", 2000, 1));
    prompts.answer(Answer::No);
    EXPECT_FALSE(import("p.xlsx"));
    EXPECT_EQ(prompts.messages().size(), 1);
    EXPECT_EQ(males(), QStringList(4, QString()));
}

TEST_F(DemographyImportTest, ADbaseTableGivesTheRowsOfTheUnitAndYear) {
    QList<QList<Cell>> rows = unitRows("B2", 2000, 5) + unitRows("B1", 2000, 0.001) + unitRows("B1", 1999, 9);
    write("rates.dbf", QString(), rows);
    EXPECT_TRUE(import("rates.dbf", DemographyKind::DeathRates, 1000));
    EXPECT_EQ(males(), (QStringList{"1", "2", "3", "4"}));
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kAskDbf) + "District" + text(t::kAskDeathRateFields) +
                                              text(t::kAskDbfTail)});
}

TEST_F(DemographyImportTest, ASourceWithoutTheUnitSaysSoNamingTheFile) {
    write("other.dbf", QString(), unitRows("B2", 2000, 1));
    EXPECT_FALSE(import("other.dbf"));
    EXPECT_EQ(prompts.messages().last(), text(t::kNotInSourcePart1) + "District" + text(t::kNotInSourcePart2) +
                                             path("other.dbf") + text(t::kNotInSourcePart3));
}

TEST_F(DemographyImportTest, ATextFileOfTheUnitIsImportedAndOneOfAnotherIsRefused) {
    write("p.txt", QString(), unitRows("B1", 2000, 1));
    EXPECT_TRUE(import("p.txt"));
    EXPECT_EQ(males(), (QStringList{"1", "2", "3", "4"}));
    EXPECT_EQ(prompts.messages().first(), text(t::kAskText) + "District" + text(t::kAskPopulationTextFields) +
                                              text(t::kAskTail));
    write("q.txt", QString(), unitRows("B2", 2000, 1));
    EXPECT_FALSE(import("q.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kTextOtherUnitPart1) + "District" + text(t::kTextOtherUnitPart2));
}

TEST_F(DemographyImportTest, ADatabaseTableIsAskedForByName) {
    write("source.vdb", "PopTable", unitRows("B1", 2000, 1));
    prompts.inputAnswer(QStringLiteral("PopTable"));
    EXPECT_TRUE(import("source.vdb"));
    EXPECT_EQ(males(), (QStringList{"1", "2", "3", "4"}));
    ASSERT_EQ(prompts.shown().size(), 2);
    EXPECT_EQ(prompts.shown()[1].text, text(t::kAskTableName));
    EXPECT_EQ(prompts.shown()[1].title, text(t::kAskTablePopulationTitle));
}

TEST_F(DemographyImportTest, MoreRowsThanAgesOrAnAgeOutsideTheSheetAreRefused) {
    QList<QList<Cell>> rows = unitRows("B1", 2000, 1);
    rows << QList<Cell>{Cell("B1"), Cell(2000), Cell(15.0), Cell(1.0), Cell(1.0), Cell()};
    write("many.xlsx", "B1", rows);
    EXPECT_FALSE(import("many.xlsx"));
    EXPECT_EQ(prompts.messages().last(), text(t::kTooManyAges) + "\n" + text(t::kTooManyAgesTail));
    rows.removeLast();
    rows[3][2] = Cell(12.0);
    write("odd.xlsx", "B1", rows);
    EXPECT_FALSE(import("odd.xlsx"));
    EXPECT_EQ(prompts.messages().last(), text(t::kOtherAges));
    EXPECT_FALSE(import("odd.xlsx", DemographyKind::DeathRates));
    EXPECT_EQ(prompts.messages().last(), text(t::kOtherDeathAges));
}

} // namespace
} // namespace vesk::test
