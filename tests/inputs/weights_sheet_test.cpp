// The disability weights sheet against a real study file: the five U groups whatever the study's
// labels, a sequela's row under its own code, the check from 0 to 1 that cannot be overridden, the
// question before an overwrite, and Update of the cause in force alone.

#include "inputs/sheet_texts.h"
#include "inputs/weights_sheet.h"
#include "study_db_gtest.h"

namespace vesk::test {
namespace {

namespace t = sheet_texts;

const QList<WeightRow> kRows{{"A01", "Tuberculosis", "A01"}, {"B02S1", "Malaria, anaemia", "B02"},
                             {"B02S2", "Malaria, episode", "B02"}};

class WeightsSheet : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutWeightsGrid(grid, kRows);
    }
    void typeRow(int row, const QStringList& weights) {
        for (int c = 0; c < weights.size(); ++c)
            grid.setTextMatrix(row, kWeightFixedCols + c, weights[c]);
    }
    QStringList stored() { return rows("SELECT COBCd, ASG, Dwt FROM DatDwt WHERE BDSId = 'S1' ORDER BY COBCd, ASG"); }
    GridModel grid;
    WeightsKey key{QStringLiteral("S1"), 2000};
};

TEST_F(WeightsSheet, TheFiveFixedGroupsHeadTheColumns) {
    EXPECT_EQ(weightLabels(), (QStringList{"U0-4", "U05-14", "U15-44", "U45-59", "U60-w"}));
    ASSERT_EQ(grid.cols(), 7);
    EXPECT_EQ(grid.textMatrix(0, 6), "U60-w");
    EXPECT_EQ(grid.textMatrix(2, 0), "B02S1");
}

TEST_F(WeightsSheet, AConfirmStoresEveryFilledCellUnderItsCode) {
    typeRow(1, {"0.2", "0.2", "0.25", "0.3", "0.35"});
    typeRow(2, {"0.012", "", "", "", ""});
    EXPECT_EQ(confirmWeights(grid, key, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored(), (QStringList{"A01|U0-4|0.2", "A01|U05-14|0.2", "A01|U15-44|0.25", "A01|U45-59|0.3",
                                     "A01|U60-w|0.35", "B02S1|U0-4|0.012"}));
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kStoredWeights) + db->path()});
}

TEST_F(WeightsSheet, AWeightOutsideZeroToOneIsRefused) {
    typeRow(1, {"0.2", "1.2", "", "", ""});
    const ConfirmResult r = confirmWeights(grid, key, *db);
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(r.row, 1);
    EXPECT_EQ(r.col, kWeightFixedCols + 1);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kWeightOutOfRange)});
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(WeightsSheet, WeightsThereAskBeforeAnOverwrite) {
    exec("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES ('S1', 2000, 'A01', 'U0-4', 0.9)");
    ASSERT_TRUE(fillWithTabData(grid, key, *db));
    EXPECT_EQ(grid.textMatrix(1, kWeightFixedCols), "0.9");
    typeRow(1, {"0.5", "", "", "", ""});
    prompts.answer(Answer::No);
    EXPECT_EQ(confirmWeights(grid, key, *db).outcome, ConfirmResult::Outcome::Declined);
    EXPECT_EQ(stored(), QStringList{"A01|U0-4|0.9"});
    prompts.answer(Answer::Yes);
    EXPECT_EQ(confirmWeights(grid, key, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored(), QStringList{"A01|U0-4|0.5"});
    EXPECT_EQ(prompts.messages().first(), text(t::kWeightsExist));
}

// Export asks for each row whose code has weights already; No passes that row over.
TEST_F(WeightsSheet, ExportAsksRowByRowAndNoPassesTheRowOver) {
    exec("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES ('S1', 2000, 'A01', 'U0-4', 0.9), "
         "('S1', 2000, 'B02S1', 'U0-4', 0.8)");
    typeRow(1, {"0.2", "", "", "", ""});
    typeRow(2, {"0.3", "", "", "", ""});
    typeRow(3, {"0.4", "", "", "", ""});
    prompts.answer(Answer::No);  // A01 keeps 0.9
    prompts.answer(Answer::Yes); // B02S1 takes 0.3
    EXPECT_EQ(exportWeights(grid, key, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored(), (QStringList{"A01|U0-4|0.9", "B02S1|U0-4|0.3", "B02S2|U0-4|0.4"}));
    EXPECT_EQ(prompts.messages(), (QStringList{text(t::kWeightsRowExists), text(t::kWeightsRowExists),
                                               text(t::kStoredWeights) + db->path()}));
}

TEST_F(WeightsSheet, UpdateWritesTheRowsOfTheCauseInForceOnly) {
    typeRow(1, {"0.2", "", "", "", ""});
    typeRow(2, {"0.3", "", "", "", ""});
    typeRow(3, {"0.4", "", "", "", ""});
    EXPECT_EQ(updateWeights(grid, key, "b02", kRows, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(stored(), (QStringList{"B02S1|U0-4|0.3", "B02S2|U0-4|0.4"}));
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kUpdatedWeights) + db->path()});
}

} // namespace
} // namespace vesk::test
