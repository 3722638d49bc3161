// The demographic parameters sheet against a real study file: the family of the four, the checks,
// the row added, the question before an edit, and No that keeps the row.

#include "inputs/parameters_sheet.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

namespace vesk::test {
namespace {

namespace col = parameters_col;
namespace t = sheet_texts;

class ParametersSheet : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutParametersGrid(grid);
    }
    void type(const QString& family, const QString& growth, const QString& infants) {
        grid.setTextMatrix(1, col::kFamily, family);
        grid.setTextMatrix(1, col::kGrowth, growth);
        grid.setTextMatrix(1, col::kInfantMortality, infants);
    }
    QStringList stored() { return rows("SELECT BPUID, YEAR, Cdmdl, PGR, IMR FROM DatDmgphyPrmtrs"); }
    GridModel grid;
    SheetUnit unit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
};

TEST_F(ParametersSheet, TheFamiliesAreTheFourOfThePopUp) {
    EXPECT_EQ(coaleDemenyFamilies(), (QStringList{"West", "South", "North", "East"}));
    EXPECT_EQ(grid.textMatrix(0, col::kFamily), "CDMdl");
    EXPECT_EQ(grid.textMatrix(0, col::kInfantMortality), "IMR");
}

TEST_F(ParametersSheet, ARowIsAddedWithTheDatabaseNamed) {
    type("West", "0.0215", "56.5");
    EXPECT_EQ(confirmParameters(grid, unit, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored(), QStringList{"B1|2000|West|0.0215|56.5"});
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kStoredParameters) + db->path()});
}

TEST_F(ParametersSheet, EachCellIsCheckedInTurn) {
    type("Westish", "0.02", "50");
    EXPECT_EQ(confirmParameters(grid, unit, *db).col, col::kFamily);
    type("South", "", "50");
    EXPECT_EQ(confirmParameters(grid, unit, *db).col, col::kGrowth);
    type("South", "-0.01", "-1");
    const ConfirmResult r = confirmParameters(grid, unit, *db);
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(r.col, col::kInfantMortality);
    EXPECT_EQ(prompts.messages(), QStringList(3, text(t::kInvalidInput)));
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(ParametersSheet, ARowThereIsEditedAfterYesAndKeptAfterNo) {
    exec("INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES ('B1', 2000, 'East', 0.01, 30)");
    ASSERT_TRUE(loadParameters(grid, unit, *db));
    EXPECT_EQ(grid.textMatrix(1, col::kFamily), "East");
    EXPECT_EQ(grid.textMatrix(1, col::kGrowth), "0.01");
    type("North", "-0.005", "12.25");
    prompts.answer(Answer::No);
    EXPECT_EQ(confirmParameters(grid, unit, *db).outcome, ConfirmResult::Outcome::Declined);
    EXPECT_EQ(stored(), QStringList{"B1|2000|East|0.01|30"});
    prompts.answer(Answer::Yes);
    EXPECT_EQ(confirmParameters(grid, unit, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored(), QStringList{"B1|2000|North|-0.005|12.25"});
    const QString ask = text(t::kParametersExistPart1) + "District" + text(t::kParametersExistPart2);
    EXPECT_EQ(prompts.messages(), (QStringList{ask, ask, text(t::kParametersUpdated)}));
}

TEST_F(ParametersSheet, AUnitWithoutARowLoadsNothing) {
    EXPECT_FALSE(loadParameters(grid, unit, *db));
    EXPECT_EQ(grid.textMatrix(1, col::kFamily), "");
}

} // namespace
} // namespace vesk::test
