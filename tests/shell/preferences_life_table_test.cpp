// The standard life table's tab of the preferences form: the grid of each choice with its note, the
// user option without a table, edits of a fixed table written back on Apply, the user table from the
// grid, and the grid's export read back.

#include "demography/standard_life_table.h"
#include "demography/standard_table_texts.h"
#include "inputs/foreign_file.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "shell/preferences_life_table.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vesk::test {
namespace {

namespace st = standard_table_texts;

CellArray table(const QStringList& ages, const QStringList& female, const QStringList& male) {
    CellArray t({static_cast<int>(ages.size()), 3});
    for (int i = 0; i < ages.size(); ++i) {
        t(i, 0) = Cell(ages[i]);
        t(i, 1) = Cell(female[i]);
        t(i, 2) = Cell(male[i]);
    }
    return t;
}

QStringList rowsOf(const GridModel& g) {
    QStringList rows;
    for (int r = 0; r < g.rows(); ++r)
        rows << QStringList{g.textMatrix(r, 0), g.textMatrix(r, 1), g.textMatrix(r, 2)}.join(u'|');
    return rows;
}

class PreferencesLifeTable : public ::testing::Test {
protected:
    void SetUp() override {
        setPromptService(&prompts_);
        s_.MtxLTSKRO = table({"0", "1", "2"}, {"82.5", "81.84", "80.868"}, {"80", "79.36", "78.3651"});
        s_.MtxLTSWHO = table({"0", "1"}, {"81.6", "81"}, {"76.1", "75.7"});
        s_.LifeTblType = 1;
    }
    void TearDown() override { setPromptService(nullptr); }

    ScriptedPrompts prompts_;
    VeskSettings s_;
    PreferencesControls p_;
    LifeTableTab tab_;
};

TEST_F(PreferencesLifeTable, EachChoiceShowsItsTableAgeMaleFemaleAndItsNote) {
    tab_.load(s_, p_);
    EXPECT_EQ(rowsOf(tab_.grid()),
              (QStringList{"Age|Male|Female", "0|80|82.5", "1|79.36|81.84", "2|78.3651|80.868"}));
    EXPECT_EQ(tab_.note(), standardLifeTableNote(1));
    tab_.choose(3, s_, p_);
    EXPECT_EQ(rowsOf(tab_.grid()), (QStringList{"Age|Male|Female", "0|76.1|81.6", "1|75.7|81"}));
    EXPECT_EQ(tab_.note(), standardLifeTableNote(3));
    EXPECT_TRUE(tab_.note().startsWith(QStringLiteral("Interpolated values are taken from WHO.")));
    p_.userLifeTable = table({"0"}, {"75"}, {"70"});
    p_.userLifeTableLoaded = true;
    tab_.choose(2, s_, p_);
    EXPECT_EQ(rowsOf(tab_.grid()), (QStringList{"Age|Male|Female", "0|70|75"}));
    EXPECT_TRUE(tab_.note().startsWith(QStringLiteral("Defined by you.")));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(PreferencesLifeTable, TheUserOptionWithoutATableSaysSoAndGivesAnEmptySheet) {
    tab_.load(s_, p_);
    tab_.choose(2, s_, p_);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, QStringLiteral("There is no User defined Life Table "));
    EXPECT_EQ(prompts_.shown()[0].title, QStringLiteral("Life Table"));
    EXPECT_EQ(tab_.grid().rows(), 1 + kEmptySheetRows);
    EXPECT_EQ(tab_.grid().textMatrix(0, 0), QStringLiteral("Age"));
    EXPECT_TRUE(lifeTableFromGrid(tab_.grid()).isEmpty());
    EXPECT_FALSE(tab_.GetUsrLifeTable(p_).isArray());
    // At the form's load the same choice comes without a word.
    prompts_.clear();
    s_.LifeTblType = 2;
    tab_.load(s_, p_);
    EXPECT_TRUE(prompts_.shown().isEmpty());
    EXPECT_EQ(tab_.choice(), 2);
}

TEST_F(PreferencesLifeTable, TheUserTableIsTheGridsWhileTheUserOptionShows) {
    tab_.load(s_, p_);
    tab_.choose(2, s_, p_);
    GridModel& g = tab_.grid();
    // Typed: age, male, female.
    g.setTextMatrix(1, 0, QStringLiteral("0"));
    g.setTextMatrix(1, 1, QStringLiteral("70"));
    g.setTextMatrix(1, 2, QStringLiteral(" 75 "));
    g.setTextMatrix(3, 0, QStringLiteral("1")); // a blank row between is no row
    g.setTextMatrix(3, 1, QStringLiteral("69.5"));
    g.setTextMatrix(3, 2, QStringLiteral("74.4"));
    const Cell user = tab_.GetUsrLifeTable(p_);
    ASSERT_TRUE(user.isArray());
    const CellArray& u = user.array();
    ASSERT_EQ(u.size(0), 2);
    EXPECT_EQ(u(0, 0).toString(), QStringLiteral("0"));
    EXPECT_EQ(u(0, 1).toString(), QStringLiteral("75")); // female
    EXPECT_EQ(u(0, 2).toString(), QStringLiteral("70")); // male
    EXPECT_EQ(u(1, 2).toString(), QStringLiteral("69.5"));
    // Not kept until Apply.
    EXPECT_FALSE(p_.userLifeTableLoaded);
    tab_.apply(s_, p_);
    EXPECT_EQ(s_.LifeTblType, 2);
    EXPECT_TRUE(p_.userLifeTableLoaded);
    EXPECT_EQ(p_.userLifeTable.size(0), 2);
    EXPECT_EQ(rowsOf(tab_.grid()), (QStringList{"Age|Male|Female", "0|70|75", "1|69.5|74.4"}));
    // Another option shown: the user table is the one kept.
    tab_.choose(1, s_, p_);
    EXPECT_EQ(tab_.GetUsrLifeTable(p_).array().size(0), 2);
}

TEST_F(PreferencesLifeTable, AnEditOfAFixedTableGoesToItsMatrixOnApply) {
    tab_.load(s_, p_);
    tab_.grid().setTextMatrix(2, 2, QStringLiteral("81.9")); // female at age 1
    EXPECT_EQ(s_.MtxLTSKRO(1, 1).toString(), QStringLiteral("81.84"));
    tab_.apply(s_, p_);
    EXPECT_EQ(s_.MtxLTSKRO(1, 1).toString(), QStringLiteral("81.9"));
    EXPECT_EQ(s_.MtxLTSKRO(1, 2).toString(), QStringLiteral("79.36"));
    EXPECT_EQ(s_.LifeTblType, 1);
    // An edit not applied is dropped when another table is chosen.
    tab_.choose(3, s_, p_);
    tab_.grid().setTextMatrix(1, 1, QStringLiteral("99"));
    tab_.choose(3, s_, p_);
    EXPECT_EQ(s_.MtxLTSWHO(0, 2).toString(), QStringLiteral("76.1"));
    EXPECT_EQ(tab_.grid().textMatrix(1, 1), QStringLiteral("76.1"));
}

TEST_F(PreferencesLifeTable, TheGridIsExportedAsNumbersUnderItsFields) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("kro.vdb"));
    tab_.load(s_, p_);
    prompts_.fileAnswer(path);
    prompts_.answer(Answer::Ok);
    ASSERT_TRUE(tab_.exportGrid(s_));
    EXPECT_TRUE(prompts_.messages().value(0).startsWith(QStringLiteral("Data exported successfully:")))
        << prompts_.messages().join(u'|').toStdString();
    QStringList fields;
    const CellArray back = FnReadArrFile(path, QStringLiteral("LTSKRO"), &fields);
    ASSERT_EQ(back.rank(), 2) << lastForeignError().words.toStdString();
    EXPECT_EQ(fields, (QStringList{"Age", "EXF", "EXM"}));
    ASSERT_EQ(back.size(0), 3);
    EXPECT_TRUE(back(2, 1).isNumber());
    EXPECT_EQ(back(2, 1).toDouble(), 80.868);
    EXPECT_EQ(back(2, 2).toDouble(), 78.3651);
}

} // namespace
} // namespace vesk::test
