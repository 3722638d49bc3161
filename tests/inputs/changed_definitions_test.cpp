// Stored rows that no longer fit the age definitions, against a real study file: the question, Yes
// that deletes the rows of the unit and year only, No that keeps them and says what to change.

#include "inputs/changed_definitions.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

namespace vesk::test {
namespace {

namespace t = sheet_texts;

class ChangedDefinitions : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
    }
    SheetUnit unit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
    const QList<double> ages{0, 1, 5, 10};
};

TEST_F(ChangedDefinitions, RowsThatFitAskNothing) {
    exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 0, 1, 1), ('B1', 2000, 15, 1, 1)");
    EXPECT_EQ(askAboutChangedPndAges(*db, unit, ages), ChangedRows::Fit); // 15 is the closed interval over 10
    exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('B1', 2000, 'A01', 'F0-4', 0.5)");
    EXPECT_EQ(askAboutChangedYllLabels(*db, unit, {"F0-4", "M0-4"}), ChangedRows::Fit);
    EXPECT_TRUE(prompts.messages().isEmpty());
}

TEST_F(ChangedDefinitions, YesDeletesThePopulationAndRatesOfTheUnitAndYear) {
    exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 3, 1, 1), ('B2', 2000, 3, 1, 1), "
         "('B1', 1999, 3, 1, 1)");
    exec("INSERT INTO DatASDR (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 0, 0.1, 0.1)");
    prompts.answer(Answer::Yes);
    EXPECT_EQ(askAboutChangedPndAges(*db, unit, ages), ChangedRows::Deleted);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kChangedPndAges)});
    EXPECT_EQ(rows("SELECT BPUID, YEAR FROM DatPOP ORDER BY BPUID, YEAR"), (QStringList{"B1|1999", "B2|2000"}));
    EXPECT_EQ(value("SELECT count(*) FROM DatASDR"), "0");
}

TEST_F(ChangedDefinitions, NoKeepsTheRowsAndSaysWhatToChange) {
    exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('B1', 2000, 'A01', 'F0-9', 0.5)");
    prompts.answer(Answer::No);
    EXPECT_EQ(askAboutChangedYllLabels(*db, unit, {"F0-4", "M0-4"}), ChangedRows::Kept);
    EXPECT_EQ(prompts.messages(), (QStringList{text(t::kChangedYllLabels), text(t::kKeepYllLabels)}));
    EXPECT_EQ(value("SELECT count(*) FROM DatCSM"), "1");
}

} // namespace
} // namespace vesk::test
