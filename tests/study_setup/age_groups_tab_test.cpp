// The tab "Age Groups": the grids, the row rule, the feasibility check, the questions before a
// definition with data under it is replaced, and the rows written to _DfnAgeGrps.

#include "setup_test_support.h"
#include "study/study_setup.h"
#include "study/study_setup_ages.h"

using namespace vesk;
using namespace vesk::test;

namespace {

class AgeGroupsTest : public SetupTest {
protected:
    void SetUp() override {
        SetupTest::SetUp();
        ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001", "First"}).applied);
        prompts.clear();
    }
    // Fills one grid with the ages given, a blank text for a blank cell.
    void fill(int column, const QStringList& ages) {
        GridModel& g = editor.grid(column);
        g.setRows(static_cast<int>(ages.size()) + 1);
        for (int r = 0; r < ages.size(); ++r)
            g.setTextMatrix(r + 1, 0, ages[r]);
    }
    void fillAll(const QStringList& yll, const QStringList& yld, const QStringList& pnd) {
        fill(0, yll);
        fill(1, yld);
        fill(2, pnd);
    }
    QStringList stored() {
        return rows("SELECT YLL, YLD, PND FROM _DfnAgeGrps WHERE BDSId = 'S1' ORDER BY rowid");
    }
    QStringList column(int c) {
        QStringList out;
        const GridModel& g = editor.grid(c);
        for (int r = 1; r < g.rows(); ++r)
            out << g.textMatrix(r, 0);
        return out;
    }
    // Data under the label M0 of the YLD set, for the study's unit.
    void dataUnderYldLabels() {
        exec(
            "INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'U1', 'Unit', 1, 'P1')");
        exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P) VALUES ('U1', 2001, 'A0101', 'M0', 1, 1)");
        ctx().InitBPULst("_DctBPU");
    }
    AgeGroupsEditor editor;
};

const QString kRowRule = "Age gruop defination must satisfy many to one or one to many  relation ship "
                         "between  the sets for YLL YLD "
                         "DALY . This requires that figures in the same row of three set either match are "
                         "some cells remain blank ";

} // namespace

TEST_F(AgeGroupsTest, TheGridsStartWithTheirHeadingAndOneRow) {
    const char* heads[3] = {"YLL", "YLD", "PND"};
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(editor.grid(c).rows(), 2);
        EXPECT_EQ(editor.grid(c).cols(), 1);
        EXPECT_EQ(editor.grid(c).textMatrix(0, 0), heads[c]);
    }
}

TEST_F(AgeGroupsTest, ApplyWritesOneRowPerPndEntryAndLoadsTheContext) {
    fillAll({"0", "1", "5", "", "15", "45", "60"}, {"0", "1", "5", "", "15", "45", "60"},
            {"0", "1", "5", "10", "15", "45", "60"});
    ASSERT_TRUE(editor.apply(ctx()));
    EXPECT_TRUE(prompts.messages().isEmpty()) << prompts.messages().join('\n').toStdString();
    // Each grid is closed up before the rows are made: the blank of YLL and YLD moves to the end.
    EXPECT_EQ(stored(), QStringList({"0|0|0", "1|1|1", "5|5|5", "15|15|10", "45|45|15", "60|60|45",
                                     "<null>|<null>|60"}));
    ASSERT_TRUE(ctx().ArrAgeDfn.isArray());
    EXPECT_EQ(ctx().ArrAgeDfn.array().size(0), 7);
    ASSERT_TRUE(ctx().VctrYLLAsg.isArray());
    EXPECT_EQ(ctx().VctrYLLAsg.array().size(), 12);
    ASSERT_TRUE(ctx().VctrPNDAge.isArray());
    EXPECT_EQ(ctx().VctrPNDAge.array().size(), 7);
}

TEST_F(AgeGroupsTest, SurplusYllAndYldRowsAreLostWhenPndIsShorter) {
    fillAll({"0", "1", "5", "15", "45", "60"}, {"0", "1", "5", "15", "45", "60"}, {"0", "1", "5", "15"});
    ASSERT_TRUE(editor.apply(ctx()));
    EXPECT_EQ(stored(), QStringList({"0|0|0", "1|1|1", "5|5|5", "15|15|15"}));
    // The labels are those of the rows kept: the set ends open at 15.
    ASSERT_TRUE(ctx().VctrYLLAsg.isArray());
    const CellArray& yll = ctx().VctrYLLAsg.array();
    ASSERT_EQ(yll.size(), 8);
    EXPECT_EQ(yll(3).toString(), "F15-w");
}

TEST_F(AgeGroupsTest, EachSetMustHoldAnAge) {
    fillAll({"0", "5"}, {"", ""}, {"0", "5"});
    EXPECT_FALSE(editor.apply(ctx()));
    EXPECT_EQ(prompts.messages(),
              QStringList({"Please enter Age sex group definitions for  YLL,YLD,PND in Age Groups Tab "}));
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(AgeGroupsTest, SetsThatDoNotMapAreRefusedAsNotFeasible) {
    // 15 starts no group of the YLD set.
    fillAll({"0", "5", "15", "45", "60"}, {"0", "1", "5", "10", "20"}, {"0", "1", "5", "10", "15", "20"});
    EXPECT_FALSE(editor.apply(ctx()));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].text,
              "The Age Groups Entered are not Feesable for maping, Please enter again");
    EXPECT_EQ(prompts.shown()[0].title, "Feesability Check");
    EXPECT_TRUE(stored().isEmpty());
    // One to many: the YLL groups are unions of YLD groups.
    prompts.clear();
    fillAll({"0", "5", "15", "45", "60"}, {"0", "1", "5", "15", "30", "45", "60", "70"},
            {"0", "1", "5", "15", "30", "45", "60", "70"});
    EXPECT_TRUE(editor.apply(ctx()));
    EXPECT_TRUE(prompts.messages().isEmpty());
}

TEST_F(AgeGroupsTest, TheRowRuleBlanksARowWhoseFiguresDiffer) {
    fillAll({"0", "5"}, {"0", "6"}, {"0", ""});
    EXPECT_TRUE(editor.checkRowRule(1));
    EXPECT_FALSE(editor.rowRuleFired);
    EXPECT_FALSE(editor.checkRowRule(2));
    EXPECT_EQ(prompts.messages(), QStringList({kRowRule}));
    EXPECT_TRUE(editor.rowRuleFired);
    EXPECT_EQ(column(0), QStringList({"0", ""}));
    EXPECT_EQ(column(1), QStringList({"0", ""}));
    // Blank cells always pass; YLD is held to PND where YLL is blank.
    fillAll({"", "1"}, {"5", ""}, {"5", "1"});
    EXPECT_TRUE(editor.checkRowRule(1));
    EXPECT_TRUE(editor.checkRowRule(2));
    fillAll({""}, {"5"}, {"4"});
    EXPECT_FALSE(editor.checkRowRule(1));
}

TEST_F(AgeGroupsTest, AfterTheRowRuleFiredApplyLeavesExistingDefinitions) {
    fillAll({"0", "5"}, {"0", "5"}, {"0", "5"});
    ASSERT_TRUE(editor.apply(ctx()));
    fillAll({"0", "5"}, {"0", "6"}, {"0", "5"});
    EXPECT_FALSE(editor.checkRowRule(2));
    prompts.clear();
    fillAll({"0", "10"}, {"0", "10"}, {"0", "10"});
    EXPECT_FALSE(editor.apply(ctx()));
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_EQ(stored(), QStringList({"0|0|0", "5|5|5"}));
}

TEST_F(AgeGroupsTest, DeleteShortensAGridOrBlanksTheLastRow) {
    fillAll({"0", "5", "15"}, {"0"}, {"0"});
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(editor.deleteRow(0, 2));
    EXPECT_EQ(column(0), QStringList({"0", "5", "15"}));
    EXPECT_FALSE(editor.gridChanged);
    prompts.answer(Answer::Ok);
    EXPECT_TRUE(editor.deleteRow(0, 2));
    EXPECT_EQ(column(0), QStringList({"0", "15"}));
    EXPECT_TRUE(editor.gridChanged);
    EXPECT_EQ(prompts.shown()[0].text, "Are you sure to delete the row ?");
    EXPECT_EQ(prompts.shown()[0].title, "Vesk");
    EXPECT_EQ(prompts.shown()[0].buttons, Buttons::OkCancel);
    // A grid of two rows is blanked, not shortened.
    prompts.answer(Answer::Ok);
    EXPECT_TRUE(editor.deleteRow(1, 1));
    EXPECT_EQ(editor.grid(1).rows(), 2);
    EXPECT_EQ(column(1), QStringList({""}));
}

TEST_F(AgeGroupsTest, QuickFillSizesTheGridToTheEntriesPlusTwo) {
    editor.quickFill(0, {0, 5, 15, 45, 60});
    EXPECT_EQ(editor.grid(0).rows(), 7);
    EXPECT_EQ(column(0), QStringList({"0", "5", "15", "45", "60", ""}));
    EXPECT_TRUE(editor.gridChanged);
}

TEST_F(AgeGroupsTest, RedefiningWithDataUnderTheLabelsWarnsFirst) {
    fillAll({"0", "1", "5"}, {"0", "1", "5"}, {"0", "1", "5"});
    ASSERT_TRUE(editor.apply(ctx()));
    dataUnderYldLabels();
    // An edit, then Apply: the warning names the third table word, then the question.
    editor.gridChanged = true;
    fillAll({"0", "5"}, {"0", "5"}, {"0", "5"});
    prompts.answer(Answer::No);
    EXPECT_FALSE(editor.apply(ctx()));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].text,
              "For S1 There exist data for these Asg in the Datpop & DatAsdr\n please "
              "refer to the Datpop & DatAsdr Table in " +
                  file + ".");
    EXPECT_EQ(prompts.shown()[0].title, "vesk");
    EXPECT_EQ(prompts.shown()[0].buttons, Buttons::YesNo);
    EXPECT_EQ(stored().size(), 3);
    // Yes, then Cancel at the second question: nothing changes, and the grid-changed flag goes.
    prompts.clear();
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(editor.apply(ctx()));
    EXPECT_EQ(prompts.messages().last(), "Are you sure you want to Redefine the Age Defination ");
    EXPECT_FALSE(editor.gridChanged);
    EXPECT_EQ(stored().size(), 3);
    // Without the grid-changed flag the rows are replaced with no question.
    prompts.clear();
    EXPECT_TRUE(editor.apply(ctx()));
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_EQ(stored(), QStringList({"0|0|0", "5|5|5"}));
    // The data rows stay under their old labels.
    EXPECT_EQ(value("SELECT count(*) FROM DatADW WHERE ASG = 'M0'"), "1");
}

TEST_F(AgeGroupsTest, YesAndOkReplaceTheDefinitionsAndLeaveTheData) {
    fillAll({"0", "1", "5"}, {"0", "1", "5"}, {"0", "1", "5"});
    ASSERT_TRUE(editor.apply(ctx()));
    dataUnderYldLabels();
    exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('U1', 2001, 'A0101', 'M0', 0.5)");
    exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('U1', 2001, 0, 100, 90)");
    exec("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES ('U1', 2001, 0, 0.1, 0.1, 0.1)");
    editor.gridChanged = true;
    fillAll({"0", "5"}, {"0", "5"}, {"0", "5"});
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Ok);
    EXPECT_TRUE(editor.apply(ctx()));
    EXPECT_EQ(stored(), QStringList({"0|0|0", "5|5|5"}));
    for (const char* table : {"DatADW", "DatCSM", "DatPOP", "DatASDR"})
        EXPECT_EQ(value(QStringLiteral("SELECT count(*) FROM %1").arg(table)), "1") << table;
}

TEST_F(AgeGroupsTest, DataUnderTheYllLabelsAloneGiveNoWarningAtApply) {
    fillAll({"0", "1", "5"}, {"0", "1", "5"}, {"0", "1", "5"});
    ASSERT_TRUE(editor.apply(ctx()));
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'U1', 'Unit', 1, 'P1')");
    exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('U1', 2001, 'A0101', 'M0', 0.5)");
    ctx().InitBPULst("_DctBPU");
    editor.gridChanged = true;
    prompts.answer(Answer::Ok);
    EXPECT_TRUE(editor.apply(ctx()));
    EXPECT_EQ(prompts.messages(), QStringList({"Are you sure you want to Redefine the Age Defination "}));
}

TEST_F(AgeGroupsTest, DefineAfreshAsksOnlyWhenDataStandUnderTheLabels) {
    fillAll({"0", "1", "5"}, {"0", "1", "5"}, {"0", "1", "5"});
    ASSERT_TRUE(editor.apply(ctx()));
    // No data: the grids are cleared at once.
    EXPECT_TRUE(editor.defineAfresh(ctx()));
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_EQ(column(0), QStringList({""}));
    // With data: Yes/No, then OK/Cancel; backing out keeps the grids.
    dataUnderYldLabels();
    fillAll({"0", "1"}, {"0", "1"}, {"0", "1"});
    editor.gridChanged = true;
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(editor.defineAfresh(ctx()));
    EXPECT_EQ(prompts.messages(),
              QStringList({"For S1 age definitions already exists do you want to redefine ",
                           " Are sure you want to redefine it"}));
    EXPECT_EQ(prompts.shown()[0].buttons, Buttons::YesNo);
    EXPECT_EQ(prompts.shown()[1].buttons, Buttons::OkCancel);
    EXPECT_FALSE(editor.gridChanged);
    EXPECT_EQ(column(0), QStringList({"0", "1"}));
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Ok);
    EXPECT_TRUE(editor.defineAfresh(ctx()));
    EXPECT_EQ(editor.grid(0).rows(), 2);
}

TEST_F(AgeGroupsTest, PickingFromAnotherStudyClosesUpEachGrid) {
    EXPECT_TRUE(editor.pickSources(*db).isEmpty());
    EXPECT_EQ(prompts.messages(), QStringList({"No Age Defination defined Previously"}));
    exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S0', 0, 0, 0), ('S0', NULL, 1, 1), "
         "('S0', 5, 5, 5), ('S9', 0, 0, 0)");
    EXPECT_EQ(editor.pickSources(*db), QStringList({"S0", "S9"}));
    editor.pickFrom(*db, "S0");
    EXPECT_EQ(column(0), QStringList({"0", "5"}));
    EXPECT_EQ(column(1), QStringList({"0", "1", "5"}));
    EXPECT_EQ(column(2), QStringList({"0", "1", "5"}));
}

TEST_F(AgeGroupsTest, DisplayExistingShowsTheRowsInPndOrder) {
    prompts.clear();
    EXPECT_FALSE(editor.displayExisting(*db, "S1"));
    EXPECT_EQ(prompts.messages(), QStringList({"No current records"}));
    exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 5, 5, 5), ('S1', 0, 0, 0), ('S1', "
         "NULL, 1, 1)");
    EXPECT_TRUE(editor.displayExisting(*db, "S1"));
    EXPECT_EQ(column(0), QStringList({"0", "", "5"}));
    EXPECT_EQ(column(2), QStringList({"0", "1", "5"}));
}
