// The start of reading: InitVESKFilePath, the dialogue for a missing file, and the one file name.

#include "settings_test_support.h"
#include "foundation/settings_texts.h"

namespace vesk::test {
namespace {

namespace t = settings_texts;

class SettingsStart : public StpTest {};

TEST_F(SettingsStart, ReadsTheFileOfTheProgramFolderWithSamplePercentHundred) {
    writeFile(stpPath(), completeFile());
    preferences().txtSampPct = QStringLiteral("20");
    settings().SampPct = 20;
    const SettingsResult r = InitVESKFilePath(appDir());
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_TRUE(r.SettingsOK);
    EXPECT_EQ(settings().AppPath, appDir());
    EXPECT_EQ(settings().SampPct, 100);
    EXPECT_EQ(preferences().txtSampPct, "100");
    EXPECT_EQ(settings().LifeTblType, 3);
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(SettingsStart, ReportsAWrongDatabasePathThroughSettingsOK) {
    writeFile(stpPath(), withLine(completeFile(), "OBJECT=study.vdb", "OBJECT="));
    const SettingsResult r = InitVESKFilePath(appDir());
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_FALSE(r.SettingsOK);
}

TEST_F(SettingsStart, MissingFileAsksAndYesLeavesOnlyNewAndOpen) {
    prompts_.answer(Answer::Yes);
    const SettingsResult r = InitVESKFilePath(appDir());
    EXPECT_EQ(r.outcome, SettingsOutcome::NoSettings);
    ASSERT_EQ(prompts_.shown().size(), 1);
    const PromptRecord& m = prompts_.shown()[0];
    EXPECT_EQ(m.text,
              "The VESK.STP file containing the paths for various locations is not present in your current "
              "directory Configure your application using New or Open under the File Menu of the VESK "
              "application.Select 'YES' to generate/update a 'VESK.STP' file and 'NO' to abort the "
              "application.");
    EXPECT_EQ(m.buttons, Buttons::YesNo);
    EXPECT_EQ(m.icon, Icon::Warning);
    EXPECT_EQ(m.title, "VESK Setup Error");
    EXPECT_EQ(prompts_.unanswered(), 0);
}

TEST_F(SettingsStart, MissingFileAndNoEndsTheProgram) {
    prompts_.answer(Answer::No);
    EXPECT_EQ(InitVESKFilePath(appDir()).outcome, SettingsOutcome::EndProgram);
}

TEST_F(SettingsStart, TrapiniReturnsTheAnswer) {
    prompts_.answer(Answer::Yes);
    prompts_.answer(Answer::No);
    EXPECT_TRUE(trapini());
    EXPECT_FALSE(trapini());
}

// The writer's and the reader's file are one file, also where the file system tells cases apart.
TEST_F(SettingsStart, OneFileNameForWriterAndReader) {
    EXPECT_STREQ(kSettingsFileName, "Vesk.stp");
    EXPECT_TRUE(settingsFilePath(appDir()).endsWith(QStringLiteral("/Vesk.stp")));
    writeFile(stpPath(), completeFile());
    ASSERT_EQ(InitVESKFilePath(appDir()).outcome, SettingsOutcome::Ok);
    settings().NLdCauses = 17;
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_EQ(QDir(appDir()).entryList(QDir::Files), QStringList{"Vesk.stp"});
    settings().NLdCauses = 0;
    ASSERT_EQ(InitVESKFilePath(appDir()).outcome, SettingsOutcome::Ok);
    EXPECT_EQ(settings().NLdCauses, 17);
}

TEST_F(SettingsStart, LowerCaseFileNameIsNotTheSettingsFile) {
#ifdef Q_OS_WIN
    GTEST_SKIP() << "the file system does not tell the two names apart";
#endif
    writeFile(appDir() + "/vesk.stp", completeFile());
    prompts_.answer(Answer::No);
    EXPECT_EQ(InitVESKFilePath(appDir()).outcome, SettingsOutcome::EndProgram);
    EXPECT_EQ(prompts_.messages(), QStringList{t::kTrapini});
}

TEST_F(SettingsStart, FileSystemRootGivesAnEmptyAppPath) {
#ifdef Q_OS_WIN
    GTEST_SKIP() << "drive roots are covered by DriveRootProgramFolderPutsTheFileInTheRoot";
#endif
    if (QFileInfo::exists(QStringLiteral("/Vesk.stp")))
        GTEST_SKIP() << "this machine has a /Vesk.stp";
    prompts_.answer(Answer::Yes);
    EXPECT_EQ(InitVESKFilePath(QStringLiteral("/")).outcome, SettingsOutcome::NoSettings);
    EXPECT_EQ(settings().AppPath, "");
}

} // namespace
} // namespace vesk::test
