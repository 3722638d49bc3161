// The tab "Define Study": the typing rules, the year grammar, new and picked studies, the current
// study, the study's column of the cause dictionary, and the deletion of a study.

#include "setup_test_support.h"
#include "study/study_setup.h"
#include "study/study_setup_input.h"

using namespace vesk;
using namespace vesk::test;

namespace {

using Years = std::optional<QList<int>>;

} // namespace

TEST(StudySetupInput, StudyIdStartsWithALetterAndHoldsLettersAndDigitsOnly) {
    EXPECT_EQ(studyIdKeyMessage('1', 0), "The StudyId should start with a character");
    EXPECT_EQ(studyIdKeyMessage('1', 1), "");
    EXPECT_EQ(studyIdKeyMessage('a', 0), "");
    EXPECT_EQ(studyIdKeyMessage('_', 2), "No data other than alphabets and Numerics is allowed ");
    EXPECT_EQ(studyIdKeyMessage(' ', 0), "No data other than alphabets and Numerics is allowed ");
    EXPECT_EQ(studyIdKeyMessage(QChar(0xe9), 1), "No data other than alphabets and Numerics is allowed ");
    EXPECT_EQ(studyIdTextMessage("AB-1"), "No data other than alphabets and Numerics is allowed ");
    EXPECT_TRUE(isValidStudyId("Ind01"));
    EXPECT_FALSE(isValidStudyId("Ind012")); // at most five
    EXPECT_FALSE(isValidStudyId("9Ind"));
    EXPECT_FALSE(isValidStudyId(""));
}

TEST(StudySetupInput, TitleDoesNotBeginWithABlank) {
    EXPECT_EQ(studyTitleKeyMessage(' ', 0), "The Studytitle should not begin with the space");
    EXPECT_EQ(studyTitleKeyMessage(' ', 3), "");
    EXPECT_EQ(studyTitleKeyMessage('N', 0), "");
}

TEST(StudySetupInput, YearGrammar) {
    EXPECT_EQ(parseStudyYears("2001"), Years(QList<int>{2001}));
    EXPECT_EQ(parseStudyYears(" 2003, 2001 ,2002 "), Years(QList<int>{2001, 2002, 2003}));
    EXPECT_EQ(parseStudyYears("2001\n2004\r\n2002\r\n"), Years(QList<int>{2001, 2002, 2004}));
    EXPECT_EQ(parseStudyYears("1999-2002"), Years(QList<int>{1999, 2000, 2001, 2002}));
    EXPECT_EQ(parseStudyYears("1999 - 2000,2005"), Years(QList<int>{1999, 2000, 2005}));
    EXPECT_EQ(parseStudyYears("2001,2001"), Years(QList<int>{2001}));
    EXPECT_EQ(parseStudyYears("2001-2001"), Years(QList<int>{2001}));
    for (const char* bad : {"", "  ", "201", "20011", "2001,", ",2001", "2001,,2002", "2002-2001", "abcd",
                            "2001-", "2001 2002", "0999", "2001-20x2", "2001.5"})
        EXPECT_EQ(parseStudyYears(bad), std::nullopt) << bad;
    EXPECT_EQ(formatStudyYears({2001}), "2001");
    EXPECT_EQ(formatStudyYears({2001, 2002}), "2001,2002");
    EXPECT_EQ(formatStudyYears({1999, 2000, 2001, 2005}), "1999-2001,2005");
}

TEST(StudySetupInput, FiveYearAgeGroup) {
    EXPECT_EQ(FiveYearAgeGroup(3), (QList<int>{0, 1, 5, 10, 15}));
    EXPECT_EQ(FiveYearAgeGroup(1), (QList<int>{0, 1, 5}));
    EXPECT_EQ(FiveYearAgeGroup(0), (QList<int>{0, 1}));
    EXPECT_EQ(FiveYearAgeGroup(17).last(), 85);
}

using StudyTab = SetupTest;

TEST_F(StudyTab, AStudyOfThreeYearsIsThreeRowsWithOneCurrent) {
    exec("INSERT INTO _DctBDS (BDSId, Year, BDSTi, Slct) VALUES ('OLD', 1990, 'Old one', 1)");
    const StudyApplyResult r = applyNewStudy(ctx(), {"Ind", "2001-2003", "India burden"});
    ASSERT_TRUE(r.applied);
    EXPECT_EQ(r.years, (QList<int>{2001, 2002, 2003}));
    EXPECT_EQ(rows("SELECT BDSId, Year, BDSTi, PAGSch, Slct FROM _DctBDS ORDER BY rowid"),
              QStringList({"OLD|1990|Old one|<null>|0", "Ind|2001|India burden|<null>|1",
                           "Ind|2002|India burden|<null>|0", "Ind|2003|India burden|<null>|0"}));
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDS WHERE Slct <> 0"), "1");
    // The context follows: the first year is the current year, and the year list holds it alone.
    EXPECT_EQ(ctx().CurBDSId, "Ind");
    EXPECT_EQ(ctx().CurYear, 2001);
    ASSERT_TRUE(ctx().VctrYrLst.isArray());
    EXPECT_EQ(ctx().VctrYrLst.array().size(), 1);
    EXPECT_EQ(ctx().VctrYrLst.array()(0).toDouble(), 2001);
    EXPECT_TRUE(prompts.messages().isEmpty()) << prompts.messages().join('\n').toStdString();
}

TEST_F(StudyTab, BlankFieldsAreRefusedInTheirOrder) {
    EXPECT_EQ(applyNewStudy(ctx(), {"", "", ""}).focus, StudyField::Id);
    EXPECT_EQ(applyNewStudy(ctx(), {"S1", " ", ""}).focus, StudyField::Years);
    EXPECT_EQ(applyNewStudy(ctx(), {"S1", "2001", " "}).focus, StudyField::Title);
    EXPECT_EQ(prompts.messages(), QStringList({"Study id is blank append record is not possibe",
                                               "Year is blank append record is not possibe",
                                               "Study title is blank append record is not possibe"}));
    prompts.clear();
    EXPECT_EQ(applyExistingStudy(ctx(), {"", "", ""}).focus, StudyField::Id);
    EXPECT_EQ(applyExistingStudy(ctx(), {"S1", "", ""}).focus, StudyField::Years);
    EXPECT_EQ(applyExistingStudy(ctx(), {"S1", "2001", ""}).focus, StudyField::Title);
    EXPECT_EQ(prompts.messages(), QStringList({"Study id is blank append record is not possibe ",
                                               "Year is blank append record is not possibe'",
                                               "Studytitle is blank append record is not possibe"}));
    EXPECT_TRUE(rows("SELECT * FROM _DctBDS").isEmpty());
    EXPECT_EQ(columnsOf("_DctBDM").size(), 4);
}

TEST_F(StudyTab, AnIdInUseIsRefused) {
    ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001", "First"}).applied);
    prompts.clear();
    EXPECT_FALSE(applyNewStudy(ctx(), {" S1 ", "2005", "Again"}).applied);
    EXPECT_EQ(prompts.messages(), QStringList({"S1 is already exist in the data base"}));
    EXPECT_EQ(rows("SELECT Year FROM _DctBDS"), QStringList({"2001"}));
}

TEST_F(StudyTab, ABadYearFieldIsRefused) {
    EXPECT_FALSE(applyNewStudy(ctx(), {"S1", "2003-2001", "First"}).applied);
    EXPECT_EQ(prompts.messages(), QStringList({"Not a valid Entry for Date"}));
    EXPECT_TRUE(rows("SELECT * FROM _DctBDS").isEmpty());
}

TEST_F(StudyTab, ASecondStudyAddsASecondBooleanColumnAllUnset) {
    addCause("A0101");
    addCause("A0102");
    ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001", "First"}).applied);
    exec("UPDATE _DctBDM SET S1 = 1");
    ASSERT_TRUE(applyNewStudy(ctx(), {"S2", "2002", "Second"}).applied);
    EXPECT_EQ(columnsOf("_DctBDM"), QStringList({"CobCd", "Disease", "ClstrCd", "Sqla", "S1", "S2"}));
    EXPECT_EQ(rows("SELECT CobCd, S1, S2 FROM _DctBDM ORDER BY CobCd"),
              QStringList({"A0101|1|0", "A0102|1|0"}));
    // A cause added later starts outside every study.
    addCause("A0103");
    EXPECT_EQ(value("SELECT S1 || S2 FROM _DctBDM WHERE CobCd = 'A0103'"), "00");
}

TEST_F(StudyTab, IdsArePlainWordsBecauseTheyNameColumns) {
    // The typing rules keep an id a plain word; Apply checks again before the id names a column.
    EXPECT_FALSE(applyNewStudy(ctx(), {"1S", "2001", "T"}).applied);
    EXPECT_FALSE(applyNewStudy(ctx(), {"S'1", "2001", "T"}).applied);
    EXPECT_FALSE(applyNewStudy(ctx(), {"S 1", "2001", "T"}).applied);
    EXPECT_EQ(prompts.messages(), QStringList({"The StudyId should start with a character",
                                               "No data other than alphabets and Numerics is allowed ",
                                               "No data other than alphabets and Numerics is allowed "}));
    QSqlError e;
    EXPECT_FALSE(addStudyColumn(*db, "x]; DROP TABLE _DctBDS; --", &e));
    EXPECT_FALSE(dropStudyColumn(*db, "CobCd", &e));
    EXPECT_EQ(columnsOf("_DctBDM").size(), 4);
    EXPECT_EQ(rows("SELECT * FROM _DctBDS").size(), 0);
    // A word that is already a field of the dictionary cannot be a study.
    prompts.clear();
    EXPECT_FALSE(applyNewStudy(ctx(), {"Sqla", "2001", "T"}).applied);
    EXPECT_EQ(
        prompts.messages(),
        QStringList({"Sqla is the name of a field of the Cause of Burden dictionary, please choose another "
                     "Study Id"}));
    // A plain word works as a column in every statement of the causes.
    ASSERT_TRUE(applyNewStudy(ctx(), {"Where", "2001", "A keyword as id"}).applied);
    EXPECT_EQ(studyColumnName(*db, "WHERE"), "Where");
}

TEST_F(StudyTab, APickedStudyGetsTheYearsItLacksAsRowsNotCurrent) {
    ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001", "First"}).applied);
    exec("UPDATE _DctBDS SET PAGSch = 'SCH'");
    const StudyApplyResult r = applyExistingStudy(ctx(), {"S1", "2001,2003-2004", "First"});
    ASSERT_TRUE(r.applied);
    EXPECT_EQ(rows("SELECT Year, PAGSch, Slct FROM _DctBDS ORDER BY Year"),
              QStringList({"2001|SCH|1", "2003|SCH|0", "2004|SCH|0"}));
    EXPECT_TRUE(prompts.messages().isEmpty());
}

TEST_F(StudyTab, PickingWithNothingCurrentAsksForAStudy) {
    exec("INSERT INTO _DctBDS (BDSId, Year, BDSTi, Slct) VALUES ('S1', 2001, 'T', 0)");
    EXPECT_FALSE(applyExistingStudy(ctx(), {"S1", "2002", "T"}).applied);
    EXPECT_EQ(prompts.messages(), QStringList({"Please select a Study from -Pick an existing study "}));
    EXPECT_EQ(rows("SELECT Year FROM _DctBDS"), QStringList({"2001"}));
}

TEST_F(StudyTab, MarkingARowCurrentLeavesOnlyItCurrentAndReloadsTheContext) {
    ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001-2002", "First"}).applied);
    ASSERT_TRUE(applyNewStudy(ctx(), {"S2", "2005", "Second"}).applied);
    exec("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES ('SCH', 'District', 'State', "
         "'Nation')");
    exec("UPDATE _DctBDS SET PAGSch = 'SCH' WHERE BDSId = 'S1'");
    exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 0, 0, 0), ('S1', 5, 5, 5)");
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'U1', 'Unit', 1, 'P1')");
    exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S1', 'P1', 'Agg', 'N')");
    addCause("A0101");
    exec("UPDATE _DctBDM SET S1 = 1");
    ASSERT_TRUE(markCurrentStudy(ctx(), "S1", 2002));
    EXPECT_EQ(rows("SELECT BDSId || Year FROM _DctBDS WHERE Slct <> 0"), QStringList({"S12002"}));
    EXPECT_EQ(ctx().CurBDSId, "S1");
    EXPECT_EQ(ctx().CurYear, 2002);
    EXPECT_EQ(ctx().CurPAGSch, "SCH");
    EXPECT_EQ(ctx().LblBPU, "District");
    EXPECT_EQ(menus.menuCaption("mnu_bpu"), "District");
    ASSERT_TRUE(ctx().ArrAgeDfn.isArray());
    EXPECT_EQ(ctx().ArrAgeDfn.array().size(0), 2);
    ASSERT_TRUE(ctx().VctrYLLAsg.isArray());
    EXPECT_EQ(ctx().VctrYLLAsg.array()(0).toString(), "F0-4");
    ASSERT_TRUE(ctx().MtxCobCd.isArray());
    EXPECT_EQ(ctx().MtxCobCd.array()(0, 0).toString(), "A0101");
    ASSERT_TRUE(ctx().VctrBPULst.isArray());
    EXPECT_EQ(ctx().VctrBPULst.array()(0).toString(), "U1");
    EXPECT_TRUE(prompts.messages().isEmpty()) << prompts.messages().join('\n').toStdString();
    // Back to S2, which has nothing: what came from S1 goes.
    ASSERT_TRUE(markCurrentStudy(ctx(), "S2", 2005));
    EXPECT_EQ(ctx().CurBDSId, "S2");
    EXPECT_FALSE(ctx().ArrAgeDfn.isArray());
    EXPECT_FALSE(ctx().VctrYLLAsg.isArray());
    EXPECT_FALSE(ctx().MtxCobCd.isArray());
    EXPECT_FALSE(ctx().VctrBPULst.isArray());
    EXPECT_EQ(prompts.messages(), QStringList({"Please define Age definitions for Current Study"}));
}

TEST_F(StudyTab, TheStudyGridShowsEveryRow) {
    ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001,2002", "First"}).applied);
    GridModel grid;
    fillStudyGrid(studyRows(*db), grid);
    EXPECT_EQ(grid.rows(), 3);
    EXPECT_EQ(grid.cols(), 6);
    QStringList heads, first;
    for (int c = 1; c < 6; ++c) {
        heads << grid.textMatrix(0, c);
        first << grid.textMatrix(1, c);
    }
    EXPECT_EQ(heads, QStringList({"Study Id", "Year", "Study Title", "PAG", "Slct"}));
    EXPECT_EQ(first, QStringList({"S1", "2001", "First", "", "True"}));
    EXPECT_EQ(grid.textMatrix(2, 5), "False");
}

TEST_F(StudyTab, TooLongATitleShowsTheFieldSizeWarning) {
    EXPECT_FALSE(applyNewStudy(ctx(), {"S1", "2001", QString(76, 'x')}).applied);
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].text,
              "Please check Actual  field size less than the data what you are entering on the screen");
    EXPECT_EQ(prompts.shown()[0].title, "Vesk : warning");
}

TEST_F(StudyTab, BuiltInParameterSetsStartTheTableAndFillMtxDAP) {
    GridModel grid;
    ASSERT_TRUE(fillBuiltInDapGrid(ctx(), computation().MtxDAP, grid));
    EXPECT_EQ(rows("SELECT DAPID, r, K, Beta, C FROM _DctDAP ORDER BY DAPID"),
              QStringList({"0|0|0|0|0", "1|0.03|1|0.04|0.1658", "2|0|1|0.04|0.1658", "3|0.03|0|0|0"}));
    ASSERT_EQ(grid.rows(), 5);
    QStringList heads;
    for (int c = 0; c < 6; ++c)
        heads << grid.textMatrix(0, c);
    EXPECT_EQ(heads, QStringList({"DAP Id", "r", "K", "Beta", "C", "Select"}));
    EXPECT_EQ(grid.textMatrix(2, 1), "0.03");
    EXPECT_EQ(grid.textMatrix(2, 4), "0.1658");
    EXPECT_EQ(grid.textMatrix(2, 5), "False");
    toggleBuiltInDap(computation().MtxDAP, grid, 4);
    toggleBuiltInDap(computation().MtxDAP, grid, 2);
    ASSERT_TRUE(computation().MtxDAP.isArray());
    const CellArray& m = computation().MtxDAP.array();
    ASSERT_EQ(m.size(0), 2);
    ASSERT_EQ(m.size(1), 5);
    // Grid order, the five cells of each chosen row.
    EXPECT_EQ(m(0, 0).toString(), "1");
    EXPECT_EQ(m(0, 4).toString(), "0.1658");
    EXPECT_EQ(m(1, 0).toString(), "3");
    EXPECT_EQ(m(1, 1).toString(), "0.03");
    // A second load ticks the rows MtxDAP holds, and does not write the sets twice.
    GridModel again;
    ASSERT_TRUE(fillBuiltInDapGrid(ctx(), computation().MtxDAP, again));
    EXPECT_EQ(value("SELECT count(*) FROM _DctDAP"), "4");
    EXPECT_EQ(again.textMatrix(1, 5), "False");
    EXPECT_EQ(again.textMatrix(2, 5), "True");
    EXPECT_EQ(again.textMatrix(4, 5), "True");
    toggleBuiltInDap(computation().MtxDAP, grid, 4);
    toggleBuiltInDap(computation().MtxDAP, grid, 2);
    EXPECT_FALSE(computation().MtxDAP.isArray());
}

TEST_F(StudyTab, TheMinimumOfAStudy) {
    MinimumFields f{"S1", "2001", "T", 3, 3, 3, "SCH", "District", "State", "Nation"};
    EXPECT_TRUE(FnChkMinStdParameter(f));
    for (QString MinimumFields::*field :
         {&MinimumFields::id, &MinimumFields::years, &MinimumFields::title, &MinimumFields::scheme,
          &MinimumFields::bpu, &MinimumFields::pag1, &MinimumFields::pag2}) {
        MinimumFields g = f;
        g.*field = QStringLiteral("  ");
        EXPECT_FALSE(FnChkMinStdParameter(g));
    }
    for (int MinimumFields::*rowsOf :
         {&MinimumFields::yllRows, &MinimumFields::yldRows, &MinimumFields::pndRows}) {
        MinimumFields g = f;
        g.*rowsOf = 2;
        EXPECT_FALSE(FnChkMinStdParameter(g));
    }
}
