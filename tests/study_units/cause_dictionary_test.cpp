// The dictionary of causes: Append in its order, the code checks, sequelae and their maps, and the
// deletion cascade over the data tables.

#include "database/study_context.h"
#include "platform/progress.h"
#include "foundation/error_store.h"
#include "study/cause_dictionary.h"
#include "study_units_support.h"

namespace vesk::test {

namespace {

using Levels = std::array<QList<DictRow>, 4>;

class CauseDictionaryTest : public StudyDbTest {
protected:
    CauseDictionary dict() { return CauseDictionary(*db); }

    // Group 1 > subgroup 11 > clusters 1101 (two causes) and 1102 (one cause); group 2 > 21 > 2101.
    void buildSmallDictionary() {
        RecordingProgress progress;
        const Levels levels = {
            QList<DictRow>{{"1", "Communicable", ""}, {"2", "Noncommunicable", ""}},
            QList<DictRow>{{"11", "Infections", "1"}, {"21", "Cancers", "2"}},
            QList<DictRow>{{"1101", "Diarrhoea", "11"}, {"1102", "Malaria", "11"}, {"2101", "Lung", "21"}},
            QList<DictRow>{{"11011", "Cholera", "1101"},
                           {"11012", "Shigella", "1101"},
                           {"11021", "Falciparum", "1102"},
                           {"21011", "Lung cancer", "2101"}}};
        ASSERT_TRUE(dict().append(levels, progress));
        prompts.clear();
    }
    void addData(const QString& cause) {
        exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('B1', 2000, ?, 'M0-4', 0.1)",
             {cause});
        exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P) VALUES ('B1', 2000, ?, 'M0-4', 1, 2)",
             {cause});
        exec("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES ('S1', 2000, ?, 'M0-4', 0.5)",
             {cause});
    }
};

TEST_F(CauseDictionaryTest, AppendWritesTheLevelsInOrderWithTheirStatusLines) {
    RecordingProgress progress;
    const Levels levels = {QList<DictRow>{{"1", "Communicable", ""}},
                           QList<DictRow>{{"11", "Infections", "1"}},
                           QList<DictRow>{{"1101", "Diarrhoea", "11"}},
                           QList<DictRow>{{"11011", "Cholera", "1101"}, {"", "", ""}}};
    ASSERT_TRUE(dict().append(levels, progress));
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(rows("SELECT GrpCd, \"Group\" FROM _DctBDMGrps"), QStringList({"1|Communicable"}));
    EXPECT_EQ(rows("SELECT SGrpCd, Subgroup, GrpCd FROM _DctBDMSGrps"), QStringList({"11|Infections|1"}));
    EXPECT_EQ(rows("SELECT ClstrCd, Cluster, SGrpCd FROM _DctBDMClstr"), QStringList({"1101|Diarrhoea|11"}));
    EXPECT_EQ(rows("SELECT CobCd, Disease, ClstrCd, Sqla FROM _DctBDM"),
              QStringList({"11011|Cholera|1101|0"}));
    EXPECT_EQ(progress.text, QString()); // the status line is cleared at the end
    EXPECT_FALSE(progress.visible);
    // Loading gives the rows back for the grids.
    EXPECT_EQ(loadDictLevel(*db, DictLevel::SubGroup), QList<DictRow>({{"11", "Infections", "1"}}));
    EXPECT_EQ(loadDictLevel(*db, DictLevel::Group), QList<DictRow>({{"1", "Communicable", ""}}));
}

TEST_F(CauseDictionaryTest, AppendEditsExistingRows) {
    buildSmallDictionary();
    RecordingProgress progress;
    const Levels levels = {QList<DictRow>{{"1", "Infectious", ""}}, QList<DictRow>{{"21", "Tumours", "1"}},
                           QList<DictRow>{}, QList<DictRow>{{"11011", "Cholera (all)", "1101"}}};
    ASSERT_TRUE(dict().append(levels, progress));
    EXPECT_EQ(value("SELECT \"Group\" FROM _DctBDMGrps WHERE GrpCd = 1"), "Infectious");
    EXPECT_EQ(value("SELECT Subgroup || '|' || GrpCd FROM _DctBDMSGrps WHERE SGrpCd = '21'"), "Tumours|1");
    EXPECT_EQ(value("SELECT Disease FROM _DctBDM WHERE CobCd = '11011'"), "Cholera (all)");
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDM"), "4");
}

// The group rule allows up to 9, but its message says 3: the wording is kept.
TEST_F(CauseDictionaryTest, AGroupCodeBeyondTheRuleShowsTheGroupMessage) {
    RecordingProgress progress;
    const Levels levels = {QList<DictRow>{{"1", "One", ""}, {"12", "Twelve", ""}, {"2", "Two", ""}},
                           QList<DictRow>{}, QList<DictRow>{}, QList<DictRow>{}};
    EXPECT_FALSE(dict().append(levels, progress));
    EXPECT_EQ(messages(),
              QStringList({"The groups cannot be greater than 3, The record cannot be updated at present"}));
    EXPECT_EQ(rows("SELECT GrpCd FROM _DctBDMGrps"), QStringList({"1"})); // rows before the error stay
}

TEST_F(CauseDictionaryTest, OtherWriteErrorsShowTheirTextAndTerminate) {
    RecordingProgress progress;
    const Levels levels = {QList<DictRow>{}, QList<DictRow>{{"123", "Too long", "-NA-"}}, QList<DictRow>{},
                           QList<DictRow>{}};
    EXPECT_FALSE(dict().append(levels, progress));
    EXPECT_EQ(messages(),
              QStringList(
                  {"The field '_DctBDMSGrps.SGrpCd' is too small to accept the amount of data you attempted "
                   "to add.  Try inserting or pasting less data. Operation Terminated."}));
}

TEST_F(CauseDictionaryTest, ACauseWithoutDescriptionStopsAppendBeforeAnyWrite) {
    RecordingProgress progress;
    const Levels levels = {QList<DictRow>{{"1", "One", ""}}, QList<DictRow>{}, QList<DictRow>{},
                           QList<DictRow>{{"11011", "", ""}}};
    EXPECT_FALSE(dict().append(levels, progress));
    EXPECT_EQ(messages(),
              QStringList({"Fill the Description for the CobCd entered as the description cannot be "
                           "empty"}));
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDMGrps"), "0");
}

// A cause code of 4 or 6 characters is listed in the error and not saved.
TEST_F(CauseDictionaryTest, CauseCodesOfFourOrSixCharactersAreListedAndNotSaved) {
    buildSmallDictionary();
    const CobcdCheck check = chkcobcd(*db, {"1101", "110123", "11013", "99011", ""});
    EXPECT_EQ(check.valid, QStringList({"11013"}));
    EXPECT_EQ(check.errors,
              QStringList({"1101::Only five charactered Cobcd is valid",
                           "110123::Only five charactered Cobcd is valid", "99011::Clustercd doesnot exit"}));
    RecordingProgress progress;
    const Levels levels = {
        QList<DictRow>{}, QList<DictRow>{}, QList<DictRow>{},
        QList<DictRow>{{"1101", "Four", "1101"}, {"110123", "Six", "1101"}, {"11013", "Five", ""}}};
    EXPECT_FALSE(dict().append(levels, progress));
    EXPECT_EQ(messages(), QStringList({"1101::Only five charactered Cobcd is valid\n"
                                       "110123::Only five charactered Cobcd is valid"}));
    EXPECT_EQ(value("SELECT ClstrCd FROM _DctBDM WHERE CobCd = '11013'"), "1101"); // the valid one is saved
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDM WHERE length(CobCd) <> 5"), "0");
}

TEST_F(CauseDictionaryTest, SequelaChecksAndSaving) {
    EXPECT_FALSE(dict().saveSequelae({{"", "No code", ""}}));
    EXPECT_FALSE(dict().saveSequelae({{"S1234567", "Eight", ""}}));
    EXPECT_FALSE(dict().saveSequelae({{"S1", "", ""}}));
    EXPECT_EQ(messages(), QStringList({" The Sequela cd cannot be null",
                                       " The Sequela cd should be less than or equal to 7",
                                       " The Description cannot be null"}));
    prompts.clear();
    EXPECT_TRUE(dict().saveSequelae({{"S123456", "Seven", ""}, {"S2", "Blindness", ""}}));
    EXPECT_TRUE(dict().saveSequelae({{"S2", "Low vision", ""}}));
    EXPECT_EQ(messages(), QStringList({"The Sequela has been updated ", "The Sequela has been updated "}));
    EXPECT_EQ(loadSequelae(*db), QList<DictRow>({{"S123456", "Seven", ""}, {"S2", "Low vision", ""}}));
}

// Removing the last sequela of a cause clears its flag; removing one of two does not.
TEST_F(CauseDictionaryTest, RemovingTheLastSequelaClearsTheFlag) {
    buildSmallDictionary();
    ASSERT_TRUE(dict().saveSequelae({{"SQ1", "Dehydration", ""}, {"SQ2", "Wasting", ""}}));
    prompts.clear();
    ASSERT_TRUE(dict().mapSequela("SQ1", "11011"));
    ASSERT_TRUE(dict().mapSequela("SQ2", "11011"));
    EXPECT_FALSE(dict().mapSequela("SQ2", "11011"));
    EXPECT_EQ(messages(), QStringList({"This Cobcd has allready been mapped to the above Sequelacd"}));
    EXPECT_EQ(value("SELECT Sqla FROM _DctBDM WHERE CobCd = '11011'"), "-1");
    EXPECT_EQ(dict().causesOfSequela("SQ1"), QList<DictRow>({{"11011", "Cholera", "1101"}}));
    ASSERT_TRUE(dict().removeSequelaMap("11011", "SQ1"));
    EXPECT_EQ(value("SELECT Sqla FROM _DctBDM WHERE CobCd = '11011'"), "-1");
    ASSERT_TRUE(dict().removeSequelaMap("11011", "SQ2"));
    EXPECT_EQ(value("SELECT Sqla FROM _DctBDM WHERE CobCd = '11011'"), "0");
    EXPECT_EQ(value("SELECT count(*) FROM _MapBDMSqla"), "0");
}

TEST_F(CauseDictionaryTest, DeletingASequelaAsksAndLeavesTheFlags) {
    buildSmallDictionary();
    ASSERT_TRUE(dict().saveSequelae({{"SQ1", "Dehydration", ""}}));
    ASSERT_TRUE(dict().mapSequela("SQ1", "11011"));
    prompts.clear();
    prompts.answer(Answer::No);
    EXPECT_FALSE(dict().deleteSequela("SQ1"));
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(dict().deleteSequela("SQ1"));
    EXPECT_EQ(messages(), QStringList({"Are you sure you want to delete the selected Sequela",
                                       "Are you sure you want to delete the selected Sequela"}));
    EXPECT_EQ(prompts.shown().first().title, QStringLiteral("VESK"));
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDMSqla"), "0");
    EXPECT_EQ(value("SELECT count(*) FROM _MapBDMSqla"), "0");
    EXPECT_EQ(value("SELECT Sqla FROM _DctBDM WHERE CobCd = '11011'"), "-1");
}

TEST_F(CauseDictionaryTest, TheDataTablesAreEveryTableBeginningWithDat) {
    EXPECT_EQ(dict().dataTables(), QStringList({"DatADW", "DatASDR", "DatCSM", "DatDmgphyPrmtrs", "DatPOP",
                                                "DatADWSqla", "DatDwt"}));
}

// Deleting a cluster with no causes asks nothing.
TEST_F(CauseDictionaryTest, DeletingAClusterWithoutCausesAsksNothing) {
    buildSmallDictionary();
    RecordingProgress progress;
    ASSERT_TRUE(dict().append(
        {QList<DictRow>{}, QList<DictRow>{}, QList<DictRow>{{"1103", "Empty", "11"}}, QList<DictRow>{}},
        progress));
    EXPECT_TRUE(dict().deleteCode("1103", 2));
    EXPECT_TRUE(prompts.shown().isEmpty());
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDMClstr WHERE ClstrCd = '1103'"), "0");
    EXPECT_FALSE(dict().deleteCode("9999", 2)); // a code that does not exist: nothing happens
}

TEST_F(CauseDictionaryTest, DeletingAClusterAsksTwiceAndTakesItsCausesAndTheirData) {
    buildSmallDictionary();
    addData("11011");
    addData("11021");
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(dict().deleteCode("1101", 2));
    prompts.answer(Answer::Ok);
    prompts.answer(Answer::No); // a refusal at the second question is final as well
    EXPECT_FALSE(dict().deleteCode("1101", 2));
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDM"), "4");
    prompts.clear();
    prompts.answer(Answer::Ok);
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(dict().deleteCode(" 1101 ", 2));
    EXPECT_EQ(messages(),
              QStringList({"There are 2 CobCds mapped to this Cluster Code( 1101 ),\nthese may be lost "
                           "if this Cluster Code is deleted.\nAre you sure want to delete them all ?",
                           "The CobCD's you are going to delete in this process\nis reffered in data "
                           "tables which will\nalso be lost if you delete the cluster code\nDo you "
                           "want to still continue?"}));
    EXPECT_EQ(prompts.shown()[0].title, QStringLiteral("Vesk : warning"));
    EXPECT_EQ(prompts.shown()[0].buttons, Buttons::OkCancel);
    EXPECT_EQ(prompts.shown()[1].title, QStringLiteral("Vesk : warning message"));
    EXPECT_EQ(prompts.shown()[1].buttons, Buttons::YesNo);
    EXPECT_EQ(rows("SELECT CobCd FROM _DctBDM ORDER BY CobCd"), QStringList({"11021", "21011"}));
    EXPECT_EQ(rows("SELECT ClstrCd FROM _DctBDMClstr ORDER BY ClstrCd"), QStringList({"1102", "2101"}));
    for (const char* table : {"DatCSM", "DatADW", "DatDwt"})
        EXPECT_EQ(rows(QStringLiteral("SELECT COBCd FROM %1").arg(table)), QStringList({"11021"})) << table;
}

TEST_F(CauseDictionaryTest, DeletingASubGroupAsksOnceAndCascades) {
    buildSmallDictionary();
    addData("11012");
    prompts.answer(Answer::Ok);
    EXPECT_TRUE(dict().deleteCode("11", 1));
    EXPECT_EQ(messages(),
              QStringList({"There are 2 cluster codes mapped\nto this sub group code (11) these data "
                           "will be lost if the sub group code is deleted.\nDo you want to continue?"}));
    EXPECT_EQ(rows("SELECT SGrpCd FROM _DctBDMSGrps"), QStringList({"21"}));
    EXPECT_EQ(rows("SELECT ClstrCd FROM _DctBDMClstr"), QStringList({"2101"}));
    EXPECT_EQ(rows("SELECT CobCd FROM _DctBDM"), QStringList({"21011"}));
    EXPECT_EQ(value("SELECT count(*) FROM DatCSM"), "0");
}

// Deleting a group cascades through all levels with one question; the sequela maps stay.
TEST_F(CauseDictionaryTest, DeletingAGroupCascadesThroughAllLevelsWithOneQuestion) {
    buildSmallDictionary();
    addData("11011");
    addData("21011");
    ASSERT_TRUE(dict().saveSequelae({{"SQ1", "Dehydration", ""}}));
    ASSERT_TRUE(dict().mapSequela("SQ1", "11011"));
    prompts.clear();
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(dict().deleteCode("1", 0));
    EXPECT_EQ(
        messages(),
        QStringList({"YOU ARE AT THE TOP LEVEL OF HIERARCHY OF DISEASE GROUP CODE.\nTHERE ARE MANY SUB GROUP "
                     "CODES , CLUSTER CODES AND COBCD's REFERING TO THIS GROUP CODE\nTHESE WILL BE LOST IF "
                     "YOU DELETE THIS GROUP CODE. DO YOU WANT TO CONTINUE?"}));
    EXPECT_EQ(prompts.shown().first().title, QStringLiteral("Vesk : Warning"));
    EXPECT_EQ(rows("SELECT GrpCd FROM _DctBDMGrps"), QStringList({"2"}));
    EXPECT_EQ(rows("SELECT SGrpCd FROM _DctBDMSGrps"), QStringList({"21"}));
    EXPECT_EQ(rows("SELECT ClstrCd FROM _DctBDMClstr"), QStringList({"2101"}));
    EXPECT_EQ(rows("SELECT CobCd FROM _DctBDM"), QStringList({"21011"}));
    EXPECT_EQ(rows("SELECT COBCd FROM DatADW"), QStringList({"21011"}));
    EXPECT_EQ(rows("SELECT SqlaCd || cobcd FROM _MapBDMSqla"), QStringList({"SQ111011"}));
    EXPECT_EQ(prompts.unanswered(), 0);
}

TEST_F(CauseDictionaryTest, MapsMadeBeforeTheStudyHasCausesStoreNoErrors) {
    buildSmallDictionary();
    exec("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES ('SQ9', 'Late effect')");
    clearErrorStore();
    ASSERT_TRUE(dict().mapSequela("SQ9", "11011"));
    ASSERT_TRUE(dict().removeSequelaMap("11011", "SQ9"));
    EXPECT_EQ(errorStoreCount(), 0);
    EXPECT_TRUE(studyContext().MtxCobCd.isEmpty());
}

TEST_F(CauseDictionaryTest, ACascadeReloadsTheStudysCauses) {
    buildSmallDictionary();
    exec("UPDATE _DctBDM SET S1 = -1");
    studyContext().InitCobcd();
    ASSERT_EQ(studyContext().MtxCobCd.array().size(0), 4);
    prompts.answer(Answer::Ok);
    prompts.answer(Answer::Yes);
    ASSERT_TRUE(dict().deleteCode("1101", 2));
    EXPECT_EQ(studyContext().MtxCobCd.array().size(0), 2);
}

} // namespace

} // namespace vesk::test
