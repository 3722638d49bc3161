// The epidemiological sheets against a real study file: rows by the YLD labels, the rates under
// their bases, rows added then updated with their counts, blank measures stored as Null, HoldInMem,
// a refused cell, the sequela sheet on its own table, and GetData's question when the stored rows
// do not fit the labels.

#include "inputs/epi_sheet.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

namespace vesk::test {
namespace {

namespace col = epi_col;
namespace t = sheet_texts;

const QStringList kLabels{"F0-14", "F15-w", "M0-14", "M15-w"};

class EpiSheet : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutEpiGrid(grid, kLabels);
        key.unit = SheetUnit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
        key.cause = QStringLiteral("A01");
    }
    void typeRow(int row, const QStringList& measures) {
        for (int c = 0; c < measures.size(); ++c)
            grid.setTextMatrix(row, c + 1, measures[c]);
    }
    void typeAll() {
        typeRow(1, {"120", "3500", "4.5", "2", "6"});
        typeRow(2, {"80", "2000", "40", "12.5", "45"});
        typeRow(3, {"130", "3700", "4", "2.25", "6.5"});
        typeRow(4, {"", "", "", "", ""});
    }
    ConfirmResult commit(bool holdInMem = false) { return Commitdata(grid, key, holdInMem, memory, *db); }
    GridModel grid;
    CellArray memory;
    EpiKey key;
};

TEST_F(EpiSheet, ARowPerYldLabelUnderTheMeasuresHeadings) {
    ASSERT_EQ(grid.rows(), 5);
    EXPECT_EQ(grid.textMatrix(0, col::kPrevalentAge), "Av. Age of Prev Cases");
    EXPECT_EQ(grid.textMatrix(4, col::kAsg), "M15-w");
}

TEST_F(EpiSheet, RowsAreAddedThenUpdatedWithTheRatesPerOne) {
    key.incidenceBase = 100000;
    key.prevalenceBase = 1000;
    typeAll();
    EXPECT_EQ(commit().outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kRecordsAdded) + "4"});
    EXPECT_EQ(rows("SELECT ASG, i, P, ago, DURN, agp FROM DatADW WHERE BPUID = 'B1' AND YEAR = 2000 "
                   "AND COBCd = 'A01' ORDER BY ASG"),
              (QStringList{"F0-14|0.0012|3.5|4.5|2|6", "F15-w|8e-04|2|40|12.5|45", "M0-14|0.0013|3.7|4|2.25|6.5",
                           "M15-w|<null>|<null>|<null>|<null>|<null>"}));
    typeRow(4, {"1", "2", "3", "4", "5"});
    prompts.clear();
    EXPECT_EQ(commit().outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kRecordsUpdated) + "4"});
    EXPECT_EQ(value("SELECT count(*) FROM DatADW"), "4");
    EXPECT_EQ(value("SELECT i FROM DatADW WHERE ASG = 'M15-w'"), "1e-05");
}

TEST_F(EpiSheet, GetDataShowsTheStoredRowsUnderTheBases) {
    key.incidenceBase = 1000;
    typeAll();
    ASSERT_EQ(commit().outcome, ConfirmResult::Outcome::Stored);
    GridModel shown;
    layoutEpiGrid(shown, kLabels);
    EXPECT_TRUE(GetData(shown, key, *db));
    EXPECT_EQ(shown.textMatrix(1, col::kIncidence), "120");
    EXPECT_EQ(shown.textMatrix(2, col::kDuration), "12.5");
    EXPECT_EQ(shown.textMatrix(4, col::kOnset), "");
}

TEST_F(EpiSheet, StoredRowsOfAnotherCountAskAndOkDeletesThemForTheCause) {
    exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i) VALUES ('B1', 2000, 'A01', 'F0-4', 1), "
         "('B1', 2000, 'B02', 'F0-4', 1)");
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(GetData(grid, key, *db));
    EXPECT_EQ(value("SELECT count(*) FROM DatADW"), "2");
    prompts.answer(Answer::Ok);
    EXPECT_FALSE(GetData(grid, key, *db));
    EXPECT_EQ(rows("SELECT COBCd FROM DatADW"), QStringList{"B02"});
    ASSERT_EQ(prompts.shown().size(), 2);
    EXPECT_EQ(prompts.shown()[0].text, text(t::kRowsNotTheAgesPart1) + "\n" + text(t::kRowsNotTheAgesPart2));
    EXPECT_EQ(prompts.shown()[0].title, "vesk :warning");
}

TEST_F(EpiSheet, HoldInMemKeepsTheRowsAndChangesNoTable) {
    typeAll();
    EXPECT_EQ(commit(true).outcome, ConfirmResult::Outcome::InMemory);
    EXPECT_EQ(value("SELECT count(*) FROM DatADW"), "0");
    ASSERT_EQ(memory.size(0), 4);
    ASSERT_EQ(memory.size(1), 10);
    EXPECT_EQ(memory(1, 0), Cell("F15-w"));
    EXPECT_EQ(memory(1, 4).toDouble(), 12.5);
    EXPECT_TRUE(memory(3, 1).isNull());
    EXPECT_EQ(memory(3, 8), Cell("A01"));
}

TEST_F(EpiSheet, ANegativeMeasureIsRefusedOnItsCell) {
    typeAll();
    typeRow(2, {"80", "2000", "40", "-1", "45"});
    const ConfirmResult r = commit();
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(r.row, 2);
    EXPECT_EQ(r.col, col::kDuration);
    EXPECT_EQ(value("SELECT count(*) FROM DatADW"), "0");
}

TEST_F(EpiSheet, TheSequelaSheetStoresUnderItsSequela) {
    key.sequela = QStringLiteral("A01S1");
    typeAll();
    EXPECT_EQ(commit().outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kSequelaRecordsAdded) + "4"});
    EXPECT_EQ(value("SELECT count(*) FROM DatADWSqla WHERE SqlaCd = 'A01S1' AND COBCd = 'A01'"), "4");
    EXPECT_EQ(value("SELECT count(*) FROM DatADW"), "0");
    prompts.clear();
    EXPECT_EQ(commit().outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kSequelaRecordsUpdated) + "4"});
}

} // namespace
} // namespace vesk::test
