// The checks of the preferences form when a field is left, and its Close: the path forms, a path of
// another machine tested for its machine and then its folder, the database file, the upper age
// range, the number keys of the leading causes, and Close with a path missing.

#include "foundation/settings_texts.h"
#include "platform/program_end.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "shell/preferences_checks.h"
#include "shell/preferences_texts.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vesk::test {
namespace {

namespace t = preferences_texts;

class PreferencesChecks : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        setPromptService(&prompts_);
        setProgramEnd(&ends_);
        settings() = VeskSettings{};
    }
    void TearDown() override {
        setPromptService(nullptr);
        setProgramEnd(nullptr);
        settings() = VeskSettings{};
    }
    QString folder(const QString& name) const {
        QDir(dir_.path()).mkpath(name);
        return dir_.filePath(name);
    }
    // The one message shown and its title, or what went wrong.
    std::pair<QString, QString> shownOnce() const {
        if (prompts_.shown().size() != 1)
            return {QStringLiteral("%1 messages").arg(prompts_.shown().size()),
                    prompts_.messages().join(u'|')};
        return {prompts_.shown()[0].text, prompts_.shown()[0].title};
    }

    ScriptedPrompts prompts_;
    CountingProgramEnd ends_;
    QTemporaryDir dir_;
};

using Shown = std::pair<QString, QString>;

TEST_F(PreferencesChecks, PathForms) {
    EXPECT_TRUE(isPathFormat(QStringLiteral("C:\\")));
    EXPECT_TRUE(isPathFormat(QStringLiteral("C:\\Vesk\\Data")));
    EXPECT_TRUE(isPathFormat(QStringLiteral("d:data")));
    EXPECT_TRUE(isPathFormat(QStringLiteral("\\\\server\\share\\vesk")));
    EXPECT_TRUE(isNetworkPath(QStringLiteral("\\\\server\\share")));
    EXPECT_FALSE(isNetworkPath(QStringLiteral("\\\\server")));
    EXPECT_FALSE(isPathFormat(QStringLiteral("Vesk\\Data")));
    EXPECT_FALSE(isPathFormat(QStringLiteral("data")));
#ifndef Q_OS_WIN
    EXPECT_TRUE(isPathFormat(QStringLiteral("/home/vesk")));
    EXPECT_TRUE(isNetworkPath(QStringLiteral("//server/share/vesk")));
#endif
}

TEST_F(PreferencesChecks, AFolderInNoKnownFormIsRefusedByItsForm) {
    EXPECT_FALSE(checkFolderLeft(QStringLiteral("relative/folder")));
    EXPECT_EQ(shownOnce(), Shown(text(t::kPathFormat), text(t::kTitleFormat)));
}

TEST_F(PreferencesChecks, AFolderThatIsThereAndAnEmptyFieldPassInSilence) {
    EXPECT_TRUE(checkFolderLeft(folder(QStringLiteral("work"))));
    EXPECT_TRUE(checkFolderLeft(QString()));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(PreferencesChecks, AMissingLocalFolderIsTold) {
    EXPECT_FALSE(checkFolderLeft(dir_.filePath(QStringLiteral("nowhere"))));
    EXPECT_EQ(shownOnce(), Shown(text(t::kNoDirectory), text(t::kTitleSetupError)));
}

#ifndef Q_OS_WIN
// A path of another machine passes the form by its pattern and is tested for existence: here the
// "machine" and "share" are the first two folders of a path that this system reaches ("//a/b" is
// "/a/b" to it), so the folder is found and nothing is said.
TEST_F(PreferencesChecks, ANetworkPathPassesByItsPatternAndIsTestedForExistence) {
    const QString work = folder(QStringLiteral("work"));
    const QString network = QLatin1Char('/') + work;
    ASSERT_TRUE(network.startsWith(QLatin1String("//")));
    ASSERT_TRUE(isNetworkPath(network));
    EXPECT_TRUE(checkFolderLeft(network));
    EXPECT_TRUE(prompts_.shown().isEmpty()) << prompts_.messages().join(u'|').toStdString();
    // The share is there, the folder is not: the folder's message.
    EXPECT_FALSE(checkFolderLeft(network + QStringLiteral("/missing")));
    EXPECT_EQ(shownOnce(), Shown(text(t::kNoDirectory), text(t::kTitleSetupError)));
}
#endif

// A machine the network does not know ends in the settings writer's message for it.
TEST_F(PreferencesChecks, ABadMachineNameEndsInTheMachineMessage) {
    EXPECT_FALSE(checkFolderLeft(QStringLiteral("\\\\no-such-machine-vesk\\share\\data")));
    EXPECT_EQ(shownOnce(),
              Shown(text(settings_texts::kMachineMissing), text(settings_texts::kTitleSetupError)));
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
#ifndef Q_OS_WIN
    prompts_.clear();
    EXPECT_FALSE(checkFolderLeft(QStringLiteral("//no-such-machine-vesk/share/data")));
    EXPECT_EQ(shownOnce(),
              Shown(text(settings_texts::kMachineMissing), text(settings_texts::kTitleSetupError)));
#endif
}

TEST_F(PreferencesChecks, TheDatabaseFile) {
    const QString work = folder(QStringLiteral("work"));
    EXPECT_FALSE(checkDatabaseLeft(work, QStringLiteral("study")));
    EXPECT_EQ(shownOnce(), Shown(text(t::kFileFormat), text(t::kTitleFormat)));
    prompts_.clear();
    EXPECT_FALSE(checkDatabaseLeft(work, QStringLiteral("study.vdb")));
    EXPECT_EQ(shownOnce(), Shown(text(t::kNoFile), text(t::kTitleSetupError)));
    prompts_.clear();
    QFile f(work + QStringLiteral("/study.vdb"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    EXPECT_TRUE(checkDatabaseLeft(work, QStringLiteral("study.vdb")));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(PreferencesChecks, TheLowestAgeOfTheUpperRangeIs45To85) {
    VeskSettings& s = settings();
    s.MinMaxAge = 50;
    for (const char* refused : {"44", "85.6", "90", "abc"}) {
        prompts_.clear();
        EXPECT_FALSE(checkMinMaxAgeLeft(QString::fromLatin1(refused), s)) << refused;
        EXPECT_EQ(shownOnce(), Shown(text(t::kMinMaxAge), QString())) << refused;
        EXPECT_EQ(s.MinMaxAge, 50);
    }
    prompts_.clear();
    EXPECT_TRUE(checkMinMaxAgeLeft(QStringLiteral("45"), s));
    EXPECT_EQ(s.MinMaxAge, 45);
    EXPECT_TRUE(checkMinMaxAgeLeft(QStringLiteral("85"), s));
    EXPECT_EQ(s.MinMaxAge, 85);
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(PreferencesChecks, TheHighestAgeIsAboveTheLowestAndAtMost85) {
    VeskSettings& s = settings();
    s.MinMaxAge = 55;
    s.MaxMaxAge = 80;
    EXPECT_FALSE(checkMaxMaxAgeLeft(QStringLiteral("55"), s));
    // The pieces of the message follow one another as they are.
    EXPECT_EQ(shownOnce(),
              Shown(QStringLiteral("MaxMaxAge should be greater than55and Less than 85"), QString()));
    prompts_.clear();
    EXPECT_FALSE(checkMaxMaxAgeLeft(QStringLiteral("86"), s));
    EXPECT_EQ(s.MaxMaxAge, 80);
    prompts_.clear();
    EXPECT_TRUE(checkMaxMaxAgeLeft(QStringLiteral("85"), s));
    EXPECT_EQ(s.MaxMaxAge, 85);
    EXPECT_TRUE(checkMaxMaxAgeLeft(QStringLiteral("56"), s));
    EXPECT_EQ(s.MaxMaxAge, 56);
    // A lowest age of 0 is the 45 the settings file's writer makes of it.
    s.MinMaxAge = 0;
    EXPECT_TRUE(checkMaxMaxAgeLeft(QStringLiteral("46"), s));
    EXPECT_FALSE(checkMaxMaxAgeLeft(QStringLiteral("45"), s));
    EXPECT_EQ(prompts_.messages().value(0),
              QStringLiteral("MaxMaxAge should be greater than45and Less than 85"));
}

TEST_F(PreferencesChecks, TheLeadingCausesTakeNumberKeysAndTheirValueOnLeaving) {
    for (char c = '0'; c <= '9'; ++c)
        EXPECT_TRUE(isNumberKey(c));
    EXPECT_TRUE(isNumberKey(8)); // Backspace
    for (int c : {'a', '.', '-', ' ', '+', 'E'})
        EXPECT_FALSE(isNumberKey(c)) << char(c);
    VeskSettings& s = settings();
    s.NLdCauses = 10;
    nLeadingCausesLeft(QStringLiteral("25"), s);
    EXPECT_EQ(s.NLdCauses, 25);
    nLeadingCausesLeft(QString(), s);
    EXPECT_EQ(s.NLdCauses, 25);
    nLeadingCausesLeft(QStringLiteral("99999999999"), s);
    EXPECT_EQ(s.NLdCauses, 25);
}

TEST_F(PreferencesChecks, CloseWithThePathsFilledHidesWithoutAWord) {
    PreferencesControls p;
    p.txtwklocation = p.txtImpLoc = p.txtStatOut = p.txtTempArea = QStringLiteral("/x");
    EXPECT_EQ(closeAsked(p), CloseOutcome::Hide);
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

// Close with an empty path: Yes stays in the form, No ends the program.
TEST_F(PreferencesChecks, CloseWithAnEmptyPathAndNoEndsTheProgram) {
    QString PreferencesControls::*paths[] = {
        &PreferencesControls::txtwklocation, &PreferencesControls::txtImpLoc,
        &PreferencesControls::txtStatOut, &PreferencesControls::txtTempArea};
    for (auto path : paths) {
        PreferencesControls p;
        p.txtwklocation = p.txtImpLoc = p.txtStatOut = p.txtTempArea = QStringLiteral("/x");
        p.*path = QString();
        prompts_.clear();
        prompts_.answer(Answer::Yes);
        EXPECT_EQ(closeAsked(p), CloseOutcome::Stay);
        prompts_.answer(Answer::No);
        EXPECT_EQ(closeAsked(p), CloseOutcome::EndProgram);
        ASSERT_EQ(prompts_.shown().size(), 2);
        EXPECT_EQ(prompts_.shown()[1].text, text(t::kPathsIncomplete));
        EXPECT_EQ(prompts_.shown()[1].title, text(t::kTitleSetupError));
        EXPECT_EQ(prompts_.shown()[1].buttons, Buttons::YesNo);
    }
    EXPECT_EQ(prompts_.unanswered(), 0);
}

} // namespace
} // namespace vesk::test
