// One opening of Study Setup: the working fields, the question when a tab is left with changes, the
// end of a new database, and the form's close.

#include "foundation/settings_file.h"
#include "setup_test_support.h"
#include "study/study_setup_session.h"

#include <QFile>

using namespace vesk;
using namespace vesk::test;

namespace {

const QString kApplyChanges = "              Apply Changes";

void fillAges(AgeGroupsEditor& ages, const QStringList& values) {
    for (int c = 0; c < 3; ++c) {
        GridModel& g = ages.grid(c);
        g.setRows(static_cast<int>(values.size()) + 1);
        for (int r = 0; r < values.size(); ++r)
            g.setTextMatrix(r + 1, 0, values[r]);
    }
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(content);
}

QByteArray readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<no file>");
}

using SessionTest = SetupTest;

} // namespace

TEST_F(SessionTest, LeavingATabWithChangesAsksAndAppliesIt) {
    StudySetupSession s(false, computation().MtxDAP);
    s.load();
    EXPECT_FALSE(s.pickExisting);
    s.study = {"S1", "2001", "First"};
    s.dirty = true;
    prompts.answer(Answer::Yes);
    s.changeTab(StudySetupSession::TabAgeGroups);
    EXPECT_EQ(prompts.messages(), QStringList({kApplyChanges}));
    EXPECT_EQ(prompts.shown()[0].title, "VESK");
    EXPECT_EQ(prompts.shown()[0].buttons, Buttons::YesNo);
    EXPECT_EQ(s.tabInForce, StudySetupSession::TabAgeGroups);
    EXPECT_TRUE(s.applied[StudySetupSession::TabStudy]);
    EXPECT_FALSE(s.dirty);
    EXPECT_EQ(rows("SELECT BDSId FROM _DctBDS"), QStringList({"S1"}));
    EXPECT_EQ(s.dbgrid2.rows(), 2);
    // No: nothing is applied, and the flag stays for the next change.
    prompts.clear();
    s.dirty = true;
    prompts.answer(Answer::No);
    s.changeTab(StudySetupSession::TabStudy);
    EXPECT_TRUE(s.dirty);
    EXPECT_FALSE(s.applied[StudySetupSession::TabAgeGroups]);
    // Yes on a tab applied already: nothing runs again.
    prompts.clear();
    s.study.years = "2001,2002";
    prompts.answer(Answer::Yes);
    s.changeTab(StudySetupSession::TabPopUnits);
    EXPECT_EQ(prompts.messages(), QStringList({kApplyChanges}));
    EXPECT_EQ(rows("SELECT Year FROM _DctBDS"), QStringList({"2001"}));
    // Without changes no question.
    prompts.clear();
    s.dirty = false;
    s.changeTab(StudySetupSession::TabCauses);
    EXPECT_TRUE(prompts.messages().isEmpty());
}

TEST_F(SessionTest, AFirstStudyCompletesTheNewDatabase) {
    ctx().NewDBDone = true;
    for (const char* item : {"mnu_res", "mnu_Compute", "mnu_BPUES"})
        menus.setMenuEnabled(item, false);
    StudySetupSession s(true, computation().MtxDAP);
    s.load();
    s.study = {"S1", "2001,2002", "First"};
    ASSERT_TRUE(s.applyTab(StudySetupSession::TabStudy));
    s.scheme = {"SCH", "District", "State", "Nation"};
    ASSERT_TRUE(s.applyTab(StudySetupSession::TabPopUnits));
    fillAges(s.ages, {"0", "1", "5"});
    EXPECT_TRUE(prompts.messages().isEmpty());
    ASSERT_TRUE(s.applyTab(StudySetupSession::TabAgeGroups));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(
        prompts.shown()[0].text,
        "New Database Created.\nYou need to build up causes of burden dictionaries and maps.\nYou can either "
        "build it up manually using File-Dictionaries or Import using File-Import.");
    EXPECT_EQ(prompts.shown()[0].title, "New Database Created");
    EXPECT_FALSE(ctx().NewDBDone);
    for (const char* item : {"mnu_res", "mnu_Compute", "mnu_BPUES"})
        EXPECT_TRUE(menus.isMenuEnabled(item)) << item;
    // The form closes without a word.
    prompts.clear();
    EXPECT_TRUE(s.closeRequested());
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(SessionTest, ANewDatabaseWithoutTheMinimumIsDeletedOnNo) {
    // The settings as File -> New found them, copied to the temporary folder.
    const QString prog = dir.filePath("prog"), temp = dir.filePath("temp");
    ASSERT_TRUE(QDir().mkpath(prog) && QDir().mkpath(temp));
    settings().AppPath = prog;
    preferences().txtTempArea = temp;
    writeFile(temp + "/Vesk.stp", "[VESK]\r\nthe settings before File -> New\r\n");
    writeFile(prog + "/Vesk.stp", "[VESK]\r\nthe settings naming the new file\r\n");
    ctx().NewDBDone = true;
    StudySetupSession s(true, computation().MtxDAP);
    s.load();
    s.study = {"S1", "2001", "First"};
    ASSERT_TRUE(s.applyTab(StudySetupSession::TabStudy));
    prompts.answer(Answer::Yes);
    EXPECT_FALSE(s.closeRequested());
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].text,
              "You have not entered the minimum parameters required to conduct a study\n"
              "                                          Do you want to do it now?\n"
              "Click YES to continue with the study or NO to cancel the study and delete the database");
    EXPECT_EQ(prompts.shown()[0].title, "Insufficient information to create new database");
    EXPECT_TRUE(QFile::exists(file));
    prompts.clear();
    prompts.answer(Answer::No);
    db.reset(); // the program's handle on the study file is then the only one, as outside the tests
    bool abandoned = false;
    EXPECT_TRUE(s.closeRequested(&abandoned));
    EXPECT_TRUE(abandoned);
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_FALSE(ctx().StudyDB);
    EXPECT_FALSE(ctx().NewDBDone);
    EXPECT_EQ(readFile(prog + "/Vesk.stp"), QByteArray("[VESK]\r\nthe settings before File -> New\r\n"));
    EXPECT_EQ(s.ages.grid(0).rows(), 2);
}

TEST_F(SessionTest, AnExistingDatabaseClosesWithoutTheQuestion) {
    StudySetupSession s(false, computation().MtxDAP);
    s.load();
    EXPECT_TRUE(s.closeRequested());
    EXPECT_TRUE(prompts.messages().isEmpty());
    // Nor when opened for a first study on a database that File -> New did not make.
    StudySetupSession first(true, computation().MtxDAP);
    first.load();
    EXPECT_TRUE(first.closeRequested());
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(SessionTest, TheLoadShowsTheCurrentStudy) {
    exec("INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES ('S1', 2002, 'First', 'SCH', 0), "
         "('S1', 2001, 'First', 'SCH', 1), ('S2', 2001, 'Second', NULL, 0)");
    exec("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES ('SCH', 'District', 'State', "
         "'Nation')");
    exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 0, 0, 0), ('S1', NULL, 1, 1)");
    StudySetupSession s(false, computation().MtxDAP);
    s.load();
    EXPECT_TRUE(s.pickExisting);
    EXPECT_EQ(s.study.id, "S1");
    EXPECT_EQ(s.study.years, "2001,2002");
    EXPECT_EQ(s.study.title, "First");
    EXPECT_EQ(s.yearList, (QList<int>{2001, 2002}));
    EXPECT_EQ(s.scheme.bpu, "District");
    EXPECT_EQ(s.ages.grid(0).textMatrix(2, 0), "");
    EXPECT_EQ(s.ages.grid(1).textMatrix(2, 0), "1");
    EXPECT_EQ(s.dbgrid2.rows(), 4);
    EXPECT_EQ(s.flexBuiltInDAP.rows(), 5);
    EXPECT_TRUE(s.FnChkMinStdParameter()); // each grid holds its heading and two rows
    EXPECT_TRUE(prompts.messages().isEmpty());
}

TEST_F(SessionTest, MarkingAnotherStudyShowsItsOwnSchemeAndAges) {
    exec("INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES ('S1', 2001, 'First', 'SCH', 1), "
         "('S2', 2003, 'Second', NULL, 0)");
    exec("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES ('SCH', 'District', 'State', "
         "'Nation')");
    exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 0, 0, 0), ('S1', 5, 5, 5)");
    StudySetupSession s(false, computation().MtxDAP);
    s.load();
    EXPECT_EQ(s.scheme.scheme, "SCH");
    EXPECT_EQ(s.ages.grid(0).rows(), 3);
    ASSERT_EQ(s.dbgrid2.textMatrix(2, 1), "S2");
    ASSERT_TRUE(s.markCurrentAt(2));
    EXPECT_EQ(ctx().CurBDSId, "S2");
    EXPECT_EQ(s.study.id, "S2");
    EXPECT_EQ(s.study.years, "2003");
    EXPECT_EQ(s.scheme.scheme, "");
    EXPECT_EQ(s.scheme.bpu, "");
    EXPECT_EQ(s.ages.grid(0).rows(), 2);
    EXPECT_EQ(s.dbgrid2.textMatrix(2, 5), "True");
    EXPECT_EQ(s.dbgrid2.textMatrix(1, 5), "False");
}

// What Study Setup asks of the frame, read without a frame: the requests are kept in order.
TEST_F(SessionTest, WithoutAHandlerTheRequestsOfANewDatabaseAreKeptInOrder) {
    setupRequests().setHandler({});
    ctx().NewDBDone = true;
    StudySetupSession s(true, computation().MtxDAP);
    s.load();
    s.study = {"S1", "2001", "First"};
    ASSERT_TRUE(s.applyTab(StudySetupSession::TabStudy));
    s.scheme = {"SCH", "District", "State", "Nation"};
    ASSERT_TRUE(s.applyTab(StudySetupSession::TabPopUnits));
    fillAges(s.ages, {"0", "1", "5"});
    ASSERT_TRUE(s.applyTab(StudySetupSession::TabAgeGroups));
    using Kind = FrameRequest::Kind;
    std::vector<Kind> kinds;
    std::vector<StudyFinding> findings;
    for (const FrameRequest& r : setupRequests().takeKept()) {
        kinds.push_back(r.kind);
        if (r.kind == Kind::Finding)
            findings.push_back(r.finding);
    }
    EXPECT_EQ(kinds, (std::vector<Kind>{Kind::LevelCaptions, Kind::LevelCaptions, Kind::Finding,
                                        Kind::StudyComplete}));
    EXPECT_EQ(findings, std::vector<StudyFinding>{StudyFinding::AgeDefinitionsFound});
    EXPECT_TRUE(setupRequests().takeKept().empty());
    // Nothing was switched meanwhile.
    for (const char* item : {"mnu_res", "mnu_Compute", "mnu_BPUES"})
        EXPECT_TRUE(menus.isMenuEnabled(item)) << item;
}

TEST_F(SessionTest, TheFrameDoesWhatStudySetupAsks) {
    applyFrameRequest(FrameRequest::switchItems({"mnu_Daly", "mnu_res"}, false));
    EXPECT_FALSE(menus.isMenuEnabled("mnu_Daly"));
    EXPECT_FALSE(menus.isMenuEnabled("mnu_res"));
    applyFrameRequest(FrameRequest::of({StudyFinding::NoAggregates}));
    EXPECT_FALSE(menus.isMenuEnabled("mns_lsr"));
    applyFrameRequest(FrameRequest::of({StudyFinding::AgeDefinitionsFound}));
    for (const char* item : {"mnu_BPUES", "mnu_studyInp", "mnu_Daly", "mns_lsr", "mnu_Compute", "mnu_res"})
        EXPECT_TRUE(menus.isMenuEnabled(item)) << item;
    ctx().LblBPU = "District";
    applyFrameRequest(FrameRequest::plain(FrameRequest::Kind::LevelCaptions));
    EXPECT_EQ(menus.menuCaption("mnu_bpu"), "District");
}
