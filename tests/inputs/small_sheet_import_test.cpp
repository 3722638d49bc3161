// The imports of the demographic parameters and of the weights, against a real study file: the
// row of the unit and year, the rows of the study by their codes, the questions, and the messages
// of a source without them.

#include "inputs/foreign_file.h"
#include "inputs/parameters_sheet.h"
#include "inputs/sheet_texts.h"
#include "inputs/small_sheet_import.h"
#include "study_db_gtest.h"

#include <QFile>

namespace vesk::test {
namespace {

namespace t = sheet_texts;

class SmallSheetImport : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
    }
    void writeText(const QString& name, const QByteArray& content) {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    SheetUnit unit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
};

TEST_F(SmallSheetImport, TheParametersOfTheUnitAndYearFillTheRow) {
    GridModel grid;
    layoutParametersGrid(grid);
    writeText("dp.txt", "B2;2000;East;0.01;10\r\nB1;1999;North;0.02;20\r\nB1;2000;West;0.0215;56.5\r\n");
    EXPECT_TRUE(importParameters(unit, path("dp.txt"), QString(), grid));
    EXPECT_EQ(grid.textMatrix(1, parameters_col::kFamily), "West");
    EXPECT_EQ(grid.textMatrix(1, parameters_col::kGrowth), "0.0215");
    EXPECT_EQ(grid.textMatrix(1, parameters_col::kInfantMortality), "56.5");
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kAskText) + "District" + text(t::kAskParametersFields)});
    ASSERT_EQ(confirmParameters(grid, unit, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(rows("SELECT Cdmdl, PGR, IMR FROM DatDmgphyPrmtrs"), QStringList{"West|0.0215|56.5"});
    writeText("none.txt", "B2;2000;East;0.01;10\r\n");
    EXPECT_FALSE(importParameters(unit, path("none.txt"), QString(), grid));
    EXPECT_EQ(prompts.messages().last(), text(t::kNotInSourcePart1) + "District" + text(t::kNotInSourcePart2) +
                                             path("none.txt") + text(t::kNotInSourcePart3));
}

TEST_F(SmallSheetImport, TheWeightsOfTheStudyFillTheRowsOfTheirCodes) {
    GridModel grid;
    layoutWeightsGrid(grid, {{"A01", "Tuberculosis", "A01"}, {"SQ1", "Malaria, anaemia", "B02"}});
    CellArray a{2, 8};
    const QList<QList<Cell>> rows{
        {Cell("S1"), Cell("sq1"), Cell("Anaemia"), Cell(0.012), Cell(0.012), Cell(0.012), Cell(0.012), Cell(0.012)},
        {Cell("S2"), Cell("A01"), Cell("Other study"), Cell(0.9), Cell(0.9), Cell(0.9), Cell(0.9), Cell(0.9)}};
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 8; ++j)
            a(i, j) = rows[i][j];
    ASSERT_TRUE(FnWriteArrFile(a, path("dwt.xlsx"), "S1",
                               {"dwsid", "Sqlacd", "Sequela", "U0-4", "U05-14", "U15-44", "U45-59", "U60-w"}));
    EXPECT_TRUE(importWeights(WeightsKey{"S1", 2000}, "District", path("dwt.xlsx"), QString(), grid));
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kAskWeightsExcel)});
    EXPECT_EQ(grid.textMatrix(2, kWeightFixedCols + 4), "0.012");
    EXPECT_EQ(grid.textMatrix(1, kWeightFixedCols), "");
    ASSERT_EQ(confirmWeights(grid, WeightsKey{"S1", 2000}, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(value("SELECT count(*) FROM DatDwt WHERE COBCd = 'SQ1'"), "5");
    prompts.answer(Answer::No);
    EXPECT_FALSE(importWeights(WeightsKey{"S1", 2000}, "District", path("dwt.xlsx"), QString(), grid));
}

} // namespace
} // namespace vesk::test
