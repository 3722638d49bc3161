// DeleteStudy: the question with the units shared with other studies, and the cascade as it
// stands, the one DatADW test governing all five data tables included.

#include "setup_test_support.h"
#include "study/study_setup.h"
#include "study/study_setup_session.h"

using namespace vesk;
using namespace vesk::test;

namespace {

class DeleteStudyTest : public SetupTest {
protected:
    // Two studies: S1 (units U1, U2) and S2 (units U2, U3), S2 current; data for U1 in 2001 and 2002.
    void SetUp() override {
        SetupTest::SetUp();
        ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001,2002", "First"}).applied);
        ASSERT_TRUE(applyNewStudy(ctx(), {"S2", "2001", "Second"}).applied);
        for (const auto& [study, unit] : {std::pair{"S1", "U1"}, {"S1", "U2"}, {"S2", "U2"}, {"S2", "U3"}})
            exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES (?, ?, ?, 1, 'P1')",
                 {study, unit, QStringLiteral("Unit ") + unit});
        for (const char* study : {"S1", "S2"}) {
            exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES (?, 'P1', 'Agg', 'N')",
                 {study});
            exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES (?, 'N', 'Nation')", {study});
            exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, 0, 0, 0)", {study});
        }
        for (int year : {2001, 2002}) {
            exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('U1', ?, 'A0101', 'M0-w', 0.5)",
                 {year});
            exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('U1', ?, 0, 100, 90)", {year});
            exec("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES ('U1', ?, 0, 0.1, 0.1, 0.1)",
                 {year});
            exec("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES ('S1', ?, 'A0101', 'M0-w', 0.2)",
                 {year});
            exec("INSERT INTO RsltDALY (BPUID, YEAR, DAPID, COBCd, ASG, IDALY, PDALY) "
                 "VALUES ('U1', ?, 1, 'A0101', 'M0-w', 3, 4)",
                 {year});
        }
        prompts.clear();
    }
    void addAdw(int year) {
        exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P) VALUES ('U1', ?, 'A0101', 'M0-w', 1, 2)",
             {year});
        exec("INSERT INTO DatADWSqla (BPUID, YEAR, COBCd, SqlaCd, ASG, i, P) "
             "VALUES ('U1', ?, 'A0101', 'SQ1', 'M0-w', 1, 2)",
             {year});
    }
    int count(const QString& table, const QString& where = QString()) {
        return value(QStringLiteral("SELECT count(*) FROM %1 %2").arg(table, where)).toInt();
    }
    void expectStudyRowsGone() {
        for (const char* table : {"_DfnAgeGrps", "_DctPAG2", "_DctPAG1", "_DctBPU", "_DctBDS"})
            EXPECT_EQ(count(table, "WHERE BDSId = 'S1'"), 0) << table;
        EXPECT_FALSE(columnsOf("_DctBDM").contains("S1"));
        EXPECT_TRUE(columnsOf("_DctBDM").contains("S2"));
        // The other study keeps all of its own.
        EXPECT_EQ(count("_DctBPU", "WHERE BDSId = 'S2'"), 2);
        EXPECT_EQ(count("_DctBDS", "WHERE BDSId = 'S2'"), 1);
    }
};

} // namespace

TEST_F(DeleteStudyTest, TheQuestionListsTheUnitsSharedAndNotShared) {
    prompts.answer(Answer::No);
    EXPECT_FALSE(DeleteStudy(ctx(), "S1", 2001));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].text,
              "The BDSID- S1 you have selected have the following details\n Following BPUS are mapped - U2"
              " Following BPUS are not mapped - U3 Do You want to proceed further with the data for the "
              "mapped been deleted? ");
    EXPECT_EQ(prompts.shown()[0].buttons, Buttons::YesNo);
    // No: nothing changes.
    EXPECT_EQ(count("_DctBDS", "WHERE BDSId = 'S1'"), 2);
    EXPECT_TRUE(columnsOf("_DctBDM").contains("S1"));
}

TEST_F(DeleteStudyTest, WithoutDatAdwRowsTheOtherDataOfTheYearStay) {
    prompts.answer(Answer::Yes);
    ASSERT_TRUE(DeleteStudy(ctx(), "S1", 2001));
    expectStudyRowsGone();
    // The single test on DatADW found nothing, so none of the five data tables was touched.
    EXPECT_EQ(count("DatCSM"), 2);
    EXPECT_EQ(count("DatPOP"), 2);
    EXPECT_EQ(count("DatASDR"), 2);
    EXPECT_EQ(count("DatDwt"), 2);
    EXPECT_EQ(count("RsltDALY"), 2);
}

TEST_F(DeleteStudyTest, WithDatAdwRowsTheFiveDataTablesLoseTheYear) {
    addAdw(2001);
    addAdw(2002);
    prompts.answer(Answer::Yes);
    ASSERT_TRUE(DeleteStudy(ctx(), "S1", 2001));
    expectStudyRowsGone();
    for (const char* table : {"DatADW", "DatADWSqla", "DatCSM", "DatPOP", "DatASDR"}) {
        EXPECT_EQ(count(table, "WHERE YEAR = 2001"), 0) << table;
        EXPECT_EQ(count(table, "WHERE YEAR = 2002"), 1) << table; // another year stays
    }
    // Disability weights and stored results are not touched.
    EXPECT_EQ(count("DatDwt"), 2);
    EXPECT_EQ(count("RsltDALY"), 2);
}

TEST_F(DeleteStudyTest, TheCurrentStudyCannotBeDeleted) {
    StudySetupSession session(false, computation().MtxDAP);
    session.load();
    // Rows: S1 2001, S1 2002, S2 2001 (current).
    ASSERT_EQ(session.dbgrid2.textMatrix(3, 1), "S2");
    prompts.answer(Answer::Yes);
    EXPECT_FALSE(session.deleteStudyAt(3));
    EXPECT_EQ(
        prompts.messages(),
        QStringList({" Do U want to delete the selected study",
                     "Please select the current study the current study should be different from the study "
                     "to be deleted"}));
    EXPECT_EQ(prompts.shown()[1].title, "Study Deletion");
    EXPECT_EQ(count("_DctBDS", "WHERE BDSId = 'S2'"), 1);
    // Another study goes, after both questions; the grid is read again.
    prompts.clear();
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(session.deleteStudyAt(1));
    EXPECT_EQ(prompts.messages().size(), 2);
    EXPECT_EQ(session.dbgrid2.rows(), 2);
    EXPECT_EQ(session.dbgrid2.textMatrix(1, 1), "S2");
}
