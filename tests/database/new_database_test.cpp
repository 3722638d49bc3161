// File -> New: dialog, replacement question, creation, failure and the hand-over to the settings.

#include "database/chk_db_stru.h"
#include "database/db_paths.h"
#include "database/new_database.h"
#include "database/study_context.h"
#include "db_test_support.h"
#include "foundation/settings.h"
#include "shell/frame_preferences.h"
#include "shell/study_backend.h"

#include <QFile>

using namespace vesk;
using vesk::test::DbTest;

namespace {

// The preferences form, as far as File -> New presses its OK.
class PressedPreferences : public PreferencesForm {
public:
    void Ok_Click() override {
        ++pressed;
        pressedWith = preferences().txtwklocation + " | " + preferences().txtVESKObj;
    }
    void showModal() override {}
    void hide() override {}
    int pressed = 0;
    QString pressedWith;
};

class NewDatabaseTest : public DbTest {
protected:
    void SetUp() override {
        DbTest::SetUp();
        preferences().txtwklocation = "/old/place";
        preferences().txtVESKObj = "old.vdb";
        setPreferencesForm(&form_);
    }
    void TearDown() override {
        setPreferencesForm(nullptr);
        DbTest::TearDown();
    }
    bool fileNew() { return backend.CreateNewDatabase(); }
    void writeFile(const QString& name, const QByteArray& bytes) {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

    DatabaseStudyBackend backend;
    PressedPreferences form_;
    int& okPressed = form_.pressed;
    QString& pressedWith = form_.pressedWith;
};

TEST_F(NewDatabaseTest, CancelLeavesSettingsAndTheOpenDatabaseAlone) {
    const QString current = newStudyFile("current.vdb");
    studyContext().StudyDB = openDb(current);
    const auto before = studyContext().StudyDB;
    prompts.fileAnswer(std::nullopt);
    EXPECT_FALSE(fileNew());
    EXPECT_FALSE(studyContext().NewDBDone);
    EXPECT_EQ(okPressed, 0);
    EXPECT_EQ(preferences().txtwklocation, "/old/place");
    EXPECT_EQ(preferences().txtVESKObj, "old.vdb");
    EXPECT_EQ(studyContext().StudyDB, before);
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].kind, PromptRecord::Kind::SaveFile);
    EXPECT_EQ(prompts.shown()[0].text, "New Database");
    EXPECT_EQ(prompts.shown()[0].filter, "VESK Database (*.vdb)");
}

TEST_F(NewDatabaseTest, ABlankNameCountsAsCancel) {
    prompts.fileAnswer(QStringLiteral("   "));
    EXPECT_FALSE(fileNew());
    EXPECT_EQ(okPressed, 0);
}

TEST_F(NewDatabaseTest, ANewFileIsBuiltAndHandedToTheSettings) {
    prompts.fileAnswer(path("fresh.vdb"));
    EXPECT_TRUE(fileNew());
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_EQ(okPressed, 1);
    EXPECT_EQ(pressedWith, dir.path() + " | fresh.vdb");
    ASSERT_TRUE(studyContext().StudyDB);
    EXPECT_EQ(studyContext().StudyDB->path(), path("fresh.vdb"));
    prompts.clear();
    EXPECT_TRUE(ChkDBStru(path("fresh.vdb")));
}

TEST_F(NewDatabaseTest, ANameWithoutSuffixTakesTheStudyFileSuffix) {
    prompts.fileAnswer(path("plain"));
    EXPECT_TRUE(fileNew());
    EXPECT_TRUE(QFile::exists(path("plain.vdb")));
    EXPECT_EQ(preferences().txtVESKObj, "plain.vdb");
}

TEST_F(NewDatabaseTest, RefusingTheReplacementLeavesTheFile) {
    writeFile("taken.vdb", "keep me");
    prompts.fileAnswer(path("taken.vdb"));
    prompts.answer(Answer::No);
    EXPECT_FALSE(fileNew());
    EXPECT_EQ(prompts.messages(), QStringList({"File Already Exists.Do you want to Replace"}));
    EXPECT_EQ(prompts.shown().last().buttons, Buttons::YesNo);
    EXPECT_EQ(prompts.shown().last().icon, Icon::Question);
    EXPECT_EQ(readText(path("taken.vdb")), "keep me");
    EXPECT_EQ(okPressed, 0);
}

TEST_F(NewDatabaseTest, AcceptingTheReplacementBuildsAFreshFile) {
    writeFile("taken.vdb", "not a database at all, long enough to be taken for one by nobody");
    writeFile("taken.vdb-journal", QByteArray(600, 'j')); // left by an earlier file of that name
    prompts.fileAnswer(path("taken.vdb"));
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(fileNew());
    EXPECT_EQ(okPressed, 1);
    prompts.clear();
    EXPECT_TRUE(ChkDBStru(path("taken.vdb")));
}

TEST_F(NewDatabaseTest, ReplacingTheOpenFileFailsWithTheGeneralMessage) {
    const QString current = newStudyFile("current.vdb");
    studyContext().StudyDB = openDb(current);
    exec(*studyContext().StudyDB, "INSERT INTO _DctBDS (BDSId, Year) VALUES (?, ?)", {"S1", 2001});
    prompts.fileAnswer(current);
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(fileNew()); // NewDBDone stays as it came in: only Cancel and No clear it
    ASSERT_EQ(prompts.messages().size(), 2);
    EXPECT_EQ(prompts.messages()[1], "Error from New Database Creation:  The file '" + current +
                                         "' is already opened by VESK and cannot be replaced.");
    EXPECT_EQ(okPressed, 0);
    EXPECT_EQ(preferences().txtVESKObj, "old.vdb");
    auto q = studyContext().StudyDB->query("SELECT count(*) FROM _DctBDS");
    ASSERT_TRUE(q && q->next());
    EXPECT_EQ(q->value(0).toInt(), 1);
}

TEST_F(NewDatabaseTest, AFolderThatCannotBeWrittenFailsWithTheGeneralMessage) {
    prompts.fileAnswer(path("no/such/folder/x.vdb"));
    fileNew();
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages()[0].startsWith("Error from New Database Creation:  "));
    EXPECT_EQ(okPressed, 0);
    EXPECT_EQ(preferences().txtwklocation, "/old/place");
}

TEST(DatabasePaths, LocalPathsStandUnchanged) {
    const DatabaseLocation unix = normaliseDatabasePath("/data/studies/Nat.vdb", "/");
    EXPECT_EQ(unix.path, "/data/studies/Nat.vdb");
    EXPECT_EQ(unix.folder, "/data/studies");
    EXPECT_EQ(unix.fileTitle, "Nat.vdb"); // no file "nat.vdb" names it here, so the case stays
    const DatabaseLocation win = normaliseDatabasePath("C:\\VESK\\Data\\nat.vdb", "c: [SYSTEM]");
    EXPECT_EQ(win.path, "C:\\VESK\\Data\\nat.vdb");
    EXPECT_EQ(win.folder, "C:\\VESK\\Data");
    EXPECT_EQ(win.fileTitle, "nat.vdb");
    EXPECT_TRUE(win.share.isEmpty());
}

TEST(DatabasePaths, AMappedDriveBecomesItsNetworkPath) {
    const DatabaseLocation loc = normaliseDatabasePath("Z:\\vesk\\nat.vdb", "z: [\\\\server\\share]");
    EXPECT_EQ(loc.share, "\\\\server\\share");
    EXPECT_EQ(loc.path, "\\\\server\\share\\vesk\\nat.vdb");
    EXPECT_EQ(loc.folder, "\\\\server\\share\\vesk");
    EXPECT_EQ(loc.fileTitle, "nat.vdb");
}

TEST(DatabasePaths, ANetworkPathIsUsedAsItStands) {
    EXPECT_TRUE(driveText("\\\\server\\share\\a.vdb").isEmpty());
    const DatabaseLocation loc = normaliseDatabasePath("\\\\server\\share\\a.vdb", "");
    EXPECT_EQ(loc.path, "\\\\server\\share\\a.vdb");
    EXPECT_EQ(loc.folder, "\\\\server\\share");
    EXPECT_EQ(loc.fileTitle, "a.vdb");
}

TEST_F(NewDatabaseTest, TheFileTitleIsLowerCasedOnlyWhereThatNamesTheSameFile) {
    writeFile("Mixed.vdb", "x");
    const DatabaseLocation loc = normaliseDatabasePath(path("Mixed.vdb"), driveText(path("Mixed.vdb")));
    EXPECT_EQ(loc.folder, dir.path());
    const bool caseBlind = QFile::exists(path("mixed.vdb"));
    EXPECT_EQ(loc.fileTitle, caseBlind ? "mixed.vdb" : "Mixed.vdb");
}

} // namespace
