// The frame's commands as the user gives them from the menu and the toolbar: File -> New, Open,
// Close, the toolbar's Close Database, Exit, Study -> Setup, Help and About; and the menu tree.

#include "frame_fixture.h"
#include "shell/forms/menu_commands.h"
#include "shell/frame_menu_tree.h"
#include "shell/frame_preferences.h"
#include "shell/frame_texts.h"
#include "foundation/settings.h"
#include "foundation/settings_texts.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace vesk;
using namespace vesk::test;

namespace {

QByteArray fileBytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}


// The preferences as the frame asks for them, counted.
struct CountedPreferences : PreferencesForm {
    int shown = 0;
    void Ok_Click() override {}
    void showModal() override { ++shown; }
    void hide() override {}
};

} // namespace

class FrameCommandsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { resetGlobals(); }
    void cleanup() { resetGlobals(); }

    void menuTreeAsTheTableSays();
    void unbuiltItemsStayDisabled();
    void fileCloseForgetsDatabase();
    void nextStartAfterFileClose();
    void toolbarCloseKeepsDatabaseName();
    void openFailedSaysSo();
    void openPassedWritesSettingsAndRunsChain();
    void openCancelledDoesNothing();
    void newDatabaseLandsInStudySetup();
    void newAfterSettingsFileHasGone();
    void exitEndsProgram();
    void closingFrameEndsProgram();
    void studySetupGuard();
    void setupAndPreferencesShowThePreferences();
    void helpWithoutHelpFile();
    void aboutBoxIsModalAndCloses();
    void progressLabelFollowsText();
};

void FrameCommandsTest::menuTreeAsTheTableSays() {
    FRMMAINMENU frame;
    for (const MenuItemDef& def : menuTree()) {
        const QString name = QString::fromLatin1(def.name);
        QAction* action = frame.item(name);
        QVERIFY2(action, qPrintable(name));
        QCOMPARE(action->objectName(), name);
        QCOMPARE(action->text(), QString::fromLatin1(def.caption));
        // The parent in the table is the parent on the screen.
        const QString parent = QString::fromLatin1(def.parent);
        if (!parent.isEmpty()) {
            auto* parentMenu = frame.findChild<QMenu*>(parent);
            QVERIFY2(parentMenu && parentMenu->actions().contains(action), qPrintable(name));
        } else {
            QVERIFY(frame.menuBar()->actions().contains(action));
        }
    }
    // A few captions letter for letter, the old spellings kept.
    QCOMPARE(frame.item(QStringLiteral("mnu_Open"))->text(), QStringLiteral("&Open.."));
    QCOMPARE(frame.item(QStringLiteral("mnu_sens"))->text(),
             QStringLiteral("DALYs -  &Sensitivity Analysis"));
    QCOMPARE(frame.item(QStringLiteral("mnu_exp_epi"))->text(), QStringLiteral("&Epideilogical Estimates"));
    QCOMPARE(frame.item(QStringLiteral("mnu_impbpu"))->text(),
             QStringLiteral("&Basic Populatuion Units (BPU)"));
    QCOMPARE(frame.item(QStringLiteral("mnu_Ppg1SmTbls"))->text(), QStringLiteral("&Summary Details"));
    QCOMPARE(frame.item(QStringLiteral("mnu_BpPYldPAgCa"))->text(),
             QStringLiteral("Percentage Distribution of PYL&Ds among specific causes"));
    QCOMPARE(frame.item(QStringLiteral("mnu_idalyYldAgSxCu"))->text(),
             QStringLiteral("IYL&D by Age,Sex and Cause"));
    QCOMPARE(frame.item(QStringLiteral("mnu_Reports"))->text(), QStringLiteral("&View"));
    const QStringList top = {"&File", "&Study", "&View", "&Compute", "&Results", "&Tools", "&Help"};
    QStringList shown;
    for (QAction* a : frame.menuBar()->actions())
        shown << a->text();
    QCOMPARE(shown, top);
    // The toolbar: five buttons, numbered 1 to 5, keyed and captioned alike.
    const QStringList keys = {"Setup", "Open File", "Dictionaries", "Close Database", "Exit"};
    QCOMPARE(frame.Toolbar1->actions().size(), 5);
    for (int i = 0; i < 5; ++i) {
        QAction* button = frame.Toolbar1->actions().at(i);
        QCOMPARE(button->objectName(), toolbarButtonName(i + 1));
        QCOMPARE(button->text(), keys.at(i));
        QCOMPARE(button->data().toString(), keys.at(i));
    }
}

void FrameCommandsTest::unbuiltItemsStayDisabled() {
    FRMMAINMENU frame;
    frame.Timer1->setInterval(60000);
    frame.setMenuEnabled(QStringLiteral("mnu_lt"), true);
    QVERIFY(frame.isMenuEnabled(QStringLiteral("mnu_lt")));
    QVERIFY(!frame.item(QStringLiteral("mnu_lt"))->isEnabled());
    QVERIFY(!frame.item(toolbarButtonName(3))->isEnabled()); // "Dictionaries" runs mnu_cgroups
    QVERIFY(!frame.item(QStringLiteral("mnu_SSetup"))->isEnabled());
    // Once a form registers its command the item works.
    int runs = 0;
    registerMenuCommand(QStringLiteral("mnu_lt"), [&](FRMMAINMENU&) { ++runs; });
    registerMenuCommand(QStringLiteral("mnu_cgroups"), [&](FRMMAINMENU&) { runs += 10; });
    frame.showFrame();
    frame.Timer1->stop();
    QVERIFY(frame.item(QStringLiteral("mnu_lt"))->isEnabled());
    frame.item(QStringLiteral("mnu_lt"))->trigger();
    QCOMPARE(runs, 1);
    QVERIFY(frame.item(toolbarButtonName(3))->isEnabled());
    frame.item(toolbarButtonName(3))->trigger();
    QCOMPARE(runs, 11);
}

void FrameCommandsTest::fileCloseForgetsDatabase() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.trigger(QStringLiteral("Cls"));
    QVERIFY(ready.backend.calls.contains(QStringLiteral("releaseStudyDB")));
    QVERIFY(ready.backend.calls.contains(QStringLiteral("clearMtxDAP")));
    QVERIFY2(stateMismatch(ready.frame(), MenuState::Closed).isEmpty(),
             qPrintable(stateMismatch(ready.frame(), MenuState::Closed)));
    QVERIFY(!ready.frame().isMenuEnabled(toolbarButtonName(3)));
    QVERIFY(!ready.frame().isMenuEnabled(toolbarButtonName(4)));
    QVERIFY(ready.frame().isMenuEnabled(toolbarButtonName(1)));
    QVERIFY(ready.frame().isMenuEnabled(QStringLiteral("mnu_setup")));
    QCOMPARE(preferences().txtVESKObj, QString());
    QCOMPARE(ready.folder.stpValue(QStringLiteral("OBJECT=")), QString());
    QCOMPARE(ready.program->prompts.messages(), QStringList());
}

void FrameCommandsTest::nextStartAfterFileClose() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.trigger(QStringLiteral("Cls"));
    ready.program.reset();
    // The closed database is reported at the next start, and the settings dialogue follows.
    resetGlobals();
    RecordingDatabaseBackend backend;
    setStudyBackend(&backend);
    RunningProgram program(ready.folder);
    program.prompts.answer(Answer::Yes);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    QCOMPARE(program.prompts.messages(),
             (QStringList{text(settings_texts::kCheckVeskPath), text(settings_texts::kTrapini)}));
    QVERIFY(stateMismatch(program.frame(), MenuState::NoSettings).isEmpty());
}

void FrameCommandsTest::toolbarCloseKeepsDatabaseName() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.trigger(toolbarButtonName(4));
    QVERIFY(ready.backend.calls.contains(QStringLiteral("releaseStudyDB")));
    // As File -> Close, and also Preferences and toolbar button 1 dead; the name stays.
    for (const QString& name : menuStateRule(MenuState::Closed).disabled)
        QVERIFY2(!ready.frame().isMenuEnabled(name), qPrintable(name));
    QVERIFY(!ready.frame().isMenuEnabled(QStringLiteral("mnu_setup")));
    QVERIFY(!ready.frame().isMenuEnabled(toolbarButtonName(1)));
    QVERIFY(!ready.frame().item(toolbarButtonName(1))->isEnabled());
    QVERIFY(ready.frame().isMenuEnabled(QStringLiteral("mnu_Open")));
    QCOMPARE(preferences().txtVESKObj, QStringLiteral("vesk.vdb"));
    QCOMPARE(ready.folder.stpValue(QStringLiteral("OBJECT=")), QStringLiteral("vesk.vdb"));
}

void FrameCommandsTest::openFailedSaysSo() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.backend.chk = [](const QString&) { return false; };
    ready.program->prompts.fileAnswer(ready.folder.work() + QStringLiteral("/other.vdb"));
    ready.trigger(QStringLiteral("mnu_Open"));
    const auto& shown = ready.program->prompts.shown();
    QCOMPARE(shown.size(), 2);
    QCOMPARE(shown.at(0).kind, PromptRecord::Kind::OpenFile);
    QCOMPARE(shown.at(0).title, QStringLiteral("Open VESK Database..."));
    QCOMPARE(shown.at(0).filter, QStringLiteral("VESK Database (*.vdb)"));
    QCOMPARE(shown.at(1).text, text(frame_texts::kOpenNotVesk));
    FRMMAINMENU& frame = ready.frame();
    for (const char* off : {"mnu_res", "mnu_Reports", "Mnu_import", "mnu_exp", "Mnu_Purge", "Cls",
                            "mnu_cgroups", "mnu_Compute"})
        QVERIFY2(!frame.isMenuEnabled(QString::fromLatin1(off)), off);
    for (int button : {1, 3, 4})
        QVERIFY(!frame.isMenuEnabled(toolbarButtonName(button)));
    // The study menu is switched on again after the message; tools and help stay.
    QVERIFY(frame.isMenuEnabled(QStringLiteral("mnu_study")));
    QVERIFY(frame.isMenuEnabled(QStringLiteral("mnu_tools")));
    QVERIFY(frame.isMenuEnabled(QStringLiteral("mnu_Help")));
    QVERIFY(ready.backend.calls.contains(QStringLiteral("clearMtxDAP")));
    // The settings still name the database in use before.
    QCOMPARE(ready.folder.stpValue(QStringLiteral("OBJECT=")), QStringLiteral("vesk.vdb"));
    QVERIFY(!frame.isTimerEnabled());
}

void FrameCommandsTest::openPassedWritesSettingsAndRunsChain() {
    ProgramFolder folder;
    folder.writeStp();
    folder.touchDatabase();
    RunningProgram program(folder);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain()); // the database layer that is not built refuses it
    QVERIFY(stateMismatch(program.frame(), MenuState::BadDatabase).isEmpty());
    program.prompts.clear();

    FakeStudyBackend backend;
    setStudyBackend(&backend);
    const QString other = folder.work() + QStringLiteral("/other");
    QDir().mkpath(other);
    QFile(other + QStringLiteral("/Study.vdb")).open(QIODevice::WriteOnly);
    program.prompts.fileAnswer(other + QStringLiteral("/Study.vdb"));
    program.frame().item(toolbarButtonName(2))->trigger(); // "Open File"
    QCOMPARE(backend.calls.value(0), QStringLiteral("ChkDBStru ") + other + QStringLiteral("/Study.vdb"));
    QCOMPARE(folder.stpValue(QStringLiteral("OBJECT=")), QStringLiteral("Study.vdb"));
    QCOMPARE(folder.stpValue(QStringLiteral("PATH  =")), other);
    QVERIFY(program.frame().isTimerEnabled()); // the preferences' OK re-arms the chain
    QVERIFY(program.waitForChain());
    QCOMPARE(program.prompts.messages(), QStringList());
    QVERIFY(backend.calls.contains(QStringLiteral("InitBDS")));
    QVERIFY(stateMismatch(program.frame(), MenuState::Ready).isEmpty());
    QVERIFY(program.frame().ProgressBar1->isHidden());
    setStudyBackend(nullptr);
}

void FrameCommandsTest::openCancelledDoesNothing() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.program->prompts.fileAnswer(std::nullopt);
    ready.trigger(QStringLiteral("mnu_Open"));
    QCOMPARE(ready.program->prompts.messages(), QStringList());
    QVERIFY(stateMismatch(ready.frame(), MenuState::Ready).isEmpty());
    QVERIFY(!ready.backend.calls.contains(QStringLiteral("clearMtxDAP")));
}

void FrameCommandsTest::newDatabaseLandsInStudySetup() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    QList<bool> setupOpened;
    setStudySetupOpener([&](FRMMAINMENU&, bool newDatabase) { setupOpened << newDatabase; });
    ready.backend.created = true;
    ready.frame().Timer1->start(); // armed, as the settings' OK of the creation leaves it
    ready.trigger(QStringLiteral("mnu_New"));
    QVERIFY(ready.backend.calls.contains(QStringLiteral("CreateNewDatabase")));
    const QString copy = ready.folder.temp() + QStringLiteral("/Vesk.stp");
    QCOMPARE(fileBytes(copy), fileBytes(ready.folder.stpPath()));
    QVERIFY(!ready.frame().isTimerEnabled());
    QCOMPARE(setupOpened, QList<bool>{true});
    QVERIFY(ready.frame().chain().NewDBDone());
    QCOMPARE(ready.program->prompts.messages(), QStringList());
}

void FrameCommandsTest::newAfterSettingsFileHasGone() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.backend.created = true;
    QFile::remove(ready.folder.stpPath());
    ready.program->prompts.answer(Answer::Yes);
    ready.trigger(QStringLiteral("mnu_New"));
    // The dialogue for the missing file, and then File -> New goes on to Study Setup as ever.
    QCOMPARE(ready.program->prompts.messages(),
             (QStringList{text(settings_texts::kTrapini), text(frame_texts::kStudySetupNotBuilt)}));
    QVERIFY2(stateMismatch(ready.frame(), MenuState::NoSettings).isEmpty(),
             qPrintable(stateMismatch(ready.frame(), MenuState::NoSettings)));
}

void FrameCommandsTest::exitEndsProgram() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    QCOMPARE(ready.program->endCalls, 0);
    ready.trigger(QStringLiteral("mnu_exit"));
    QCOMPARE(ready.program->endCalls, 1);
    QCOMPARE(ready.program->prompts.messages(), QStringList()); // no question, no saving
}

void FrameCommandsTest::closingFrameEndsProgram() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.frame().close();
    QCOMPARE(ready.program->endCalls, 1);
}

void FrameCommandsTest::studySetupGuard() {
    ProgramFolder folder;
    folder.writeStp(QString());
    RecordingDatabaseBackend backend;
    setStudyBackend(&backend);
    QList<bool> setupOpened;
    setStudySetupOpener([&](FRMMAINMENU&, bool newDatabase) { setupOpened << newDatabase; });
    RunningProgram program(folder);
    program.prompts.answer(Answer::Yes);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    QVERIFY(!program.frame().chain().SettingsOK());
    program.prompts.clear();
    CountedPreferences preferencesShown;
    setPreferencesForm(&preferencesShown);
    program.frame().chain().mnu_SSetup_Click();
    QCOMPARE(program.prompts.shown().at(0).text, QStringLiteral("Check paths and objects in the File Setup"));
    QCOMPARE(program.prompts.shown().at(0).icon, Icon::Warning);
    QCOMPARE(program.prompts.messages().size(), 1);
    QCOMPARE(preferencesShown.shown, 1); // then the preferences
    setPreferencesForm(nullptr);
    QVERIFY(setupOpened.isEmpty());
    setStudyBackend(nullptr);

    ReadyProgram ready;
    setStudySetupOpener([&](FRMMAINMENU&, bool newDatabase) { setupOpened << newDatabase; });
    QVERIFY(ready.start());
    QVERIFY(ready.frame().item(QStringLiteral("mnu_SSetup"))->isEnabled());
    ready.trigger(QStringLiteral("mnu_SSetup"));
    QCOMPARE(setupOpened, QList<bool>{false});
}

void FrameCommandsTest::setupAndPreferencesShowThePreferences() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    CountedPreferences preferencesShown;
    setPreferencesForm(&preferencesShown);
    ready.trigger(toolbarButtonName(1));
    QCOMPARE(preferencesShown.shown, 1);
    ready.trigger(QStringLiteral("mnu_setup"));
    QCOMPARE(preferencesShown.shown, 2);
    QCOMPARE(ready.program->prompts.messages(), QStringList());
    setPreferencesForm(nullptr);
}

void FrameCommandsTest::helpWithoutHelpFile() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    ready.trigger(QStringLiteral("mnu_veskh"));
    const QStringList messages = ready.program->prompts.messages();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages.at(0).startsWith(text(frame_texts::kHelpMissing)));
    QVERIFY(messages.at(0).endsWith(QDir::toNativeSeparators(ready.folder.prog() + "/veskhelp.hlp")));
}

void FrameCommandsTest::aboutBoxIsModalAndCloses() {
    ReadyProgram ready;
    QVERIFY(ready.start());
    bool sawIt = false;
    QTimer::singleShot(50, [&] {
        auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!box || box->objectName() != QLatin1String("frmAbout"))
            return;
        sawIt = box->isModal() && box->windowTitle() == QLatin1String("About VESK");
        if (auto* close = box->findChild<QPushButton*>(QStringLiteral("cmdClose")))
            close->click();
    });
    ready.trigger(QStringLiteral("mnu_avesk"));
    QVERIFY(sawIt);
}

void FrameCommandsTest::progressLabelFollowsText() {
    FRMMAINMENU frame;
    frame.show();
    progress().setText(text(frame_texts::kLabel1));
    QVERIFY(!frame.Label1->isHidden());
    QCOMPARE(frame.Label1->text(), QStringLiteral("Processing,please wait..."));
    progress().setText(QString());
    QVERIFY(frame.Label1->isHidden());
    progress().setVisible(true);
    progress().setRange(0, 7);
    progress().setValue(3);
    QVERIFY(!frame.ProgressBar1->isHidden());
    QCOMPARE(frame.ProgressBar1->value(), 3);
    progress().setVisible(false);
    QVERIFY(frame.ProgressBar1->isHidden());
}

QTEST_MAIN(FrameCommandsTest)
#include "frame_commands_test.moc"
