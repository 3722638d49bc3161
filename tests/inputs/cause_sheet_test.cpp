// The cause-of-death sheet against a real study file: the layout, Add Totals and Check Totals, a
// column summing to 0.9999, the override of the sum-to-one rule, the cell check that cannot be
// overridden, the one question about rows already there, and the rows stored.

#include "inputs/cause_sheet.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

namespace vesk::test {
namespace {

namespace t = sheet_texts;

const QList<StudyCause> kCauses{{"A01", "Tuberculosis"}, {"B02", "Malaria"}, {"C03", "Other"}};
const QStringList kLabels{"F0-4", "F05-w", "M0-4", "M05-w"};

class CauseSheet : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutCauseGrid(grid, kCauses, kLabels);
    }
    // The proportions of one label column, cause by cause.
    void column(int label, const QStringList& values) {
        for (int i = 0; i < values.size(); ++i)
            grid.setTextMatrix(i + 1, kCauseFixedCols + label, values[i]);
    }
    void fillAllOne() {
        column(0, {"0.5", "0.25", "0.25"});
        column(1, {"0.1", "0.2", "0.7"});
        column(2, {"1", "0", "0"});
        column(3, {"0.125", "0.375", "0.5"});
    }
    QStringList stored() {
        return rows("SELECT COBCd, ASG, CSMP FROM DatCSM WHERE BPUID = 'B1' AND YEAR = 2000 ORDER BY COBCd, ASG");
    }
    GridModel grid;
    SheetUnit unit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
};

TEST_F(CauseSheet, ARowPerCauseAColumnPerLabelAndTheTotalRow) {
    ASSERT_EQ(grid.rows(), 5);
    ASSERT_EQ(grid.cols(), 6);
    EXPECT_EQ(grid.textMatrix(0, 0), "COBCd");
    EXPECT_EQ(grid.textMatrix(0, 2), "F0-4");
    EXPECT_EQ(grid.textMatrix(2, 1), "Malaria");
    EXPECT_EQ(grid.textMatrix(4, 1), "Total");
}

TEST_F(CauseSheet, ACellOutsideZeroToOneIsNoProportion) {
    EXPECT_TRUE(isProportion(""));
    EXPECT_TRUE(isProportion("0"));
    EXPECT_TRUE(isProportion("1"));
    EXPECT_TRUE(isProportion("0.00000001"));
    EXPECT_FALSE(isProportion("1.0000001"));
    EXPECT_FALSE(isProportion("-0.1"));
}

TEST_F(CauseSheet, CheckTotalsSaysWhetherEveryColumnAddsToOne) {
    fillAllOne();
    EXPECT_TRUE(checkTotals(grid));
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kSubtotalsAllOne)});
    EXPECT_EQ(grid.textMatrix(4, kCauseFixedCols + 1), "1"); // 0.1 + 0.2 + 0.7 is 1 within the tolerance
    column(3, {"0.125", "0.375", "0.4999"});
    prompts.clear();
    EXPECT_FALSE(addTotals(grid));
    EXPECT_EQ(grid.textMatrix(4, kCauseFixedCols + 3), "0.9999");
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kSubtotalsNotOne)});
}

TEST_F(CauseSheet, AColumnOf09999AsksAndYesStoresAnyway) {
    fillAllOne();
    column(3, {"0.125", "0.375", "0.4999"});
    prompts.answer(Answer::No);
    EXPECT_EQ(confirmCauses(grid, unit, *db).outcome, ConfirmResult::Outcome::Declined);
    EXPECT_TRUE(stored().isEmpty());
    prompts.answer(Answer::Yes);
    EXPECT_EQ(confirmCauses(grid, unit, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_TRUE(stored().contains("C03|M05-w|0.4999"));
    EXPECT_EQ(prompts.messages(),
              (QStringList{text(t::kConfirmAnyway), text(t::kConfirmAnyway), text(t::kStoredCauses) + db->path()}));
}

TEST_F(CauseSheet, AFirstConfirmAsksNothingAndAddsNoZeroOrBlankRow) {
    fillAllOne();
    grid.setTextMatrix(3, kCauseFixedCols + 3, "");
    grid.setTextMatrix(2, kCauseFixedCols + 3, "0.875");
    EXPECT_EQ(confirmCauses(grid, unit, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kStoredCauses) + db->path()});
    const QStringList s = stored();
    EXPECT_EQ(s.size(), 12 - 2 - 1); // M0-4 of B02 and C03 are 0, M05-w of C03 blank
    EXPECT_FALSE(s.contains("B02|M0-4|0"));
}

TEST_F(CauseSheet, AProportionAboveOneIsRefusedWithoutAQuestion) {
    fillAllOne();
    grid.setTextMatrix(2, kCauseFixedCols, "1.5");
    const ConfirmResult r = confirmCauses(grid, unit, *db);
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(r.row, 2);
    EXPECT_EQ(r.col, kCauseFixedCols);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kProportionOutOfRange)});
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(CauseSheet, RowsThereAreModifiedAfterOneQuestionAndLoadedBack) {
    exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('B1', 2000, 'A01', 'F0-4', 0.9), "
         "('B1', 2000, 'A01', 'OLD0-9', 0.3)");
    ASSERT_TRUE(loadCauses(grid, unit, *db));
    EXPECT_EQ(grid.textMatrix(1, kCauseFixedCols), "0.9");
    fillAllOne();
    prompts.answer(Answer::No);
    EXPECT_EQ(confirmCauses(grid, unit, *db).outcome, ConfirmResult::Outcome::Declined);
    EXPECT_EQ(stored(), (QStringList{"A01|F0-4|0.9", "A01|OLD0-9|0.3"}));
    prompts.answer(Answer::Yes);
    EXPECT_EQ(confirmCauses(grid, unit, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_TRUE(stored().contains("A01|F0-4|0.5"));
    EXPECT_TRUE(stored().contains("A01|OLD0-9|0.3")); // a label no longer in the set is left alone
    const QString ask = text(t::kCausesExistPart1) + "District" + text(t::kCausesExistPart2);
    EXPECT_EQ(prompts.messages().mid(0, 2), (QStringList{ask, ask}));

    GridModel again;
    layoutCauseGrid(again, kCauses, kLabels);
    ASSERT_TRUE(loadCauses(again, unit, *db));
    EXPECT_EQ(again.textMatrix(3, kCauseFixedCols + 1), "0.7");
    EXPECT_EQ(again.textMatrix(4, kCauseFixedCols + 3), "1");
}

TEST_F(CauseSheet, AUnitWithoutRowsLoadsBlankCells) {
    EXPECT_FALSE(loadCauses(grid, unit, *db));
    EXPECT_EQ(grid.textMatrix(1, kCauseFixedCols), "");
}

} // namespace
} // namespace vesk::test
