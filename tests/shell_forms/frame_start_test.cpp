// The program started as a user starts it: the splash, the frame, and the loading chain in Timer1's
// tick, on every road the chain can take.

#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_texts.h"
#include "frame_fixture.h"
#include "shell/forms/menu_commands.h"
#include "shell/frame_menu_tree.h"
#include "shell/frame_texts.h"
#include "shell/loading_chain.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace vesk;
using namespace vesk::test;

namespace {

QList<int> values(const QSignalSpy& spy) {
    QList<int> out;
    for (const auto& args : spy)
        out << args.at(0).toInt();
    return out;
}

const QString kUnbuiltPrefix = QStringLiteral("Study databases cannot be checked or opened by this build");
const QString kNotPresent = QStringLiteral(
    "Database not present in the location specified,please check the database path in the File - Setup.");

} // namespace

class FrameStartTest : public QObject {
    Q_OBJECT
private slots:
    void init() { resetGlobals(); }
    void cleanup() { resetGlobals(); }

    void splashGivesWayToFrame();
    void frameLoadIsStartingState();
    void startWithoutSettingsFileRepeatsError53();
    void startWithoutDatabaseLayer();
    void startWithPathWithoutDatabase();
    void startWithFileThatIsNoDatabase();
    void startReady();
    void databaseWithoutStudy();
    void oneErrorAsksSingular();
    void twoErrorsAskPlural();
    void errorsViewedThroughViewer();
    void errorsListedWithoutViewer();
    void emptyObjectLineReachesTrapiniAtStep8();
    void emptyObjectLineAndNoEndsProgram();
};

void FrameStartTest::splashGivesWayToFrame() {
    ProgramFolder folder;
    folder.writeStp();
    folder.touchDatabase();
    RunningProgram program(folder);
    auto* product = program.splash().findChild<QLabel*>(QStringLiteral("lblProductName"));
    auto* logo = program.splash().findChild<QLabel*>(QStringLiteral("imgLogo"));
    QVERIFY(product && logo);
    QCOMPARE(product->text(), QStringLiteral("VESK- Health Loss Ledger"));
    QVERIFY(!logo->pixmap().isNull());
    QVERIFY(program.waitForFrame());
    QCOMPARE(program.frame().windowTitle(), QStringLiteral("VESK- Health Loss Ledger"));
    // The splash plays the busy sound before any settings are read: an empty name, then the stop.
    QVERIFY(program.sounds.played.size() >= 2);
    QCOMPARE(program.sounds.played.at(0), QString());
    QCOMPARE(program.sounds.played.at(1), QString());
    QVERIFY(program.waitForChain());
    // The first chain, too, plays before it reads the settings: silent, then stopped.
    QCOMPARE(program.sounds.played, (QStringList{QString(), QString(), QString(), QString()}));
    // A later run plays the busy sound the settings name, and stops it at its end.
    QVERIFY(!settings().sLBussy.isEmpty());
    program.frame().setTimerEnabled(true);
    QVERIFY(program.waitForChain());
    QCOMPARE(program.sounds.played.mid(4), (QStringList{settings().sLBussy, QString()}));
}

void FrameStartTest::frameLoadIsStartingState() {
    ProgramFolder folder;
    folder.writeStp();
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    FRMMAINMENU frame;
    frame.chain().setProgramFolder(folder.prog());
    frame.Timer1->setInterval(60000);
    QVERIFY(!frame.isTimerEnabled());
    frame.showFrame();
    QVERIFY(frame.isVisible());
    QVERIFY(frame.isTimerEnabled());
    QVERIFY2(stateMismatch(frame, MenuState::Starting).isEmpty(),
             qPrintable(stateMismatch(frame, MenuState::Starting)));
    QVERIFY(!frame.item(QStringLiteral("mnu_res"))->isEnabled());
    QVERIFY(frame.item(QStringLiteral("mnu_file"))->isEnabled());
    QVERIFY(frame.ProgressBar1->isHidden());
    QVERIFY(frame.Label1->isHidden());
    QCOMPARE(frame.Label1->text(), QStringLiteral("Processing,please wait..."));
    frame.Timer1->stop();
}

void FrameStartTest::startWithoutSettingsFileRepeatsError53() {
    ProgramFolder folder; // no Vesk.stp
    RunningProgram program(folder, 20);
    QVERIFY(program.waitForFrame());
    QVERIFY(QTest::qWaitFor([&] { return program.prompts.messages().size() >= 2; }, 5000));
    program.frame().Timer1->stop();
    const QString expected = QStringLiteral("Err number : 53     File not found");
    QCOMPARE(program.prompts.messages().at(0), expected);
    QCOMPARE(program.prompts.messages().at(1), expected); // the armed timer brings it back
    QVERIFY(program.frame().ProgressBar1->isHidden());
    // Nothing else ran: the menu still stands as the frame's load left it.
    QVERIFY(stateMismatch(program.frame(), MenuState::Starting).isEmpty());
    QVERIFY(program.enabled(QStringLiteral("mnu_study")));
}

void FrameStartTest::startWithoutDatabaseLayer() {
    // The database layer that is installed by default accepts no database: the frame stands in
    // "Bad database" and says why.
    ProgramFolder folder;
    folder.writeStp();
    const QString db = folder.touchDatabase();
    RunningProgram program(folder);
    QSignalSpy bar(program.frame().ProgressBar1, &QProgressBar::valueChanged);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    const QStringList messages = program.prompts.messages();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages.at(0).startsWith(kUnbuiltPrefix));
    QVERIFY(messages.at(0).endsWith(db));
    QVERIFY2(stateMismatch(program.frame(), MenuState::BadDatabase).isEmpty(),
             qPrintable(stateMismatch(program.frame(), MenuState::BadDatabase)));
    QVERIFY(!program.enabled(toolbarButtonName(3)));
    QVERIFY(!program.enabled(toolbarButtonName(4)));
    QVERIFY(!program.frame().item(QStringLiteral("mnu_study"))->isEnabled());
    QVERIFY(program.frame().item(QStringLiteral("mnu_Open"))->isEnabled());
    QCOMPARE(values(bar), (QList<int>{1, 2, 7}));
    QVERIFY(program.frame().ProgressBar1->isHidden());
    QVERIFY(program.frame().chain().SettingsOK());
    QVERIFY(!program.frame().chain().DBStruOK());
}

void FrameStartTest::startWithPathWithoutDatabase() {
    ProgramFolder folder;
    folder.writeStp(); // names vesk.vdb, which is not there
    RecordingDatabaseBackend backend;
    setStudyBackend(&backend);
    RunningProgram program(folder);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    const QStringList messages = program.prompts.messages();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.at(0), text(settings_texts::kCheckVeskPath));
    QCOMPARE(messages.at(1), kNotPresent);
    QVERIFY(backend.calls.contains(QStringLiteral("clearMtxDAP")));
    QVERIFY(!backend.calls.contains(QStringLiteral("InitBDS")));
    QVERIFY(stateMismatch(program.frame(), MenuState::BadDatabase).isEmpty());
    QVERIFY(program.frame().ProgressBar1->isHidden());
    QVERIFY(!program.frame().isTimerEnabled());
}

void FrameStartTest::startWithFileThatIsNoDatabase() {
    // A text file where the study database should be: the structure check cannot open it and stays
    // True; the study's loader says why, and the study menus stay dead.
    ProgramFolder folder;
    folder.writeStp();
    const QString db = folder.touchDatabase();
    QFile text(db);
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("BPUID;YEAR;Bai;M;F\r\nU1;2000;0;100;120\r\n");
    text.close();
    RecordingDatabaseBackend backend;
    setStudyBackend(&backend);
    RunningProgram program(folder);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    QVERIFY(program.frame().chain().DBStruOK());
    QVERIFY(backend.calls.contains(QStringLiteral("InitBDS")));
    const QString described = QStringLiteral(" Error from InitBDS  Unrecognized database format '%1'.")
                                  .arg(QFileInfo(db).absoluteFilePath());
    QCOMPARE(program.prompts.messages(), QStringList{described});
    QVERIFY2(stateMismatch(program.frame(), MenuState::NoStudy).isEmpty(),
             qPrintable(stateMismatch(program.frame(), MenuState::NoStudy)));
    QVERIFY(!program.frame().isTimerEnabled());
}

void FrameStartTest::startReady() {
    ProgramFolder folder;
    folder.writeStp();
    const QString db = folder.touchDatabase();
    FakeStudyBackend backend;
    backend.lblBPU = QStringLiteral("District");
    backend.lblPAG1 = QStringLiteral("Province");
    backend.lblPAG2 = QStringLiteral("Region");
    setStudyBackend(&backend);
    RunningProgram program(folder);
    QSignalSpy bar(program.frame().ProgressBar1, &QProgressBar::valueChanged);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    QCOMPARE(program.prompts.messages(), QStringList());
    QCOMPARE(backend.calls, (QStringList{QStringLiteral("ChkDBStru ") + db, "InitTblNames", "InitDAP",
                                         "InitBDS", "InitYear", "InitPAGScheme", "InitAgeGrps", "InitCOB",
                                         "InitCobcd", "InitBPULst _DctBPU", "InitPAGLst _DctPAG1",
                                         "InitDmgphyPrmtrs", "CheckDatpop", "buildPopulationArrays"}));
    QVERIFY2(stateMismatch(program.frame(), MenuState::Ready).isEmpty(),
             qPrintable(stateMismatch(program.frame(), MenuState::Ready)));
    QCOMPARE(values(bar), (QList<int>{1, 2, 3, 4, 5, 6, 7}));
    QVERIFY(program.frame().ProgressBar1->isHidden());
    QCOMPARE(program.frame().menuCaption(QStringLiteral("mnu_pag2")), QStringLiteral("Region"));
    QCOMPARE(program.frame().menuCaption(QStringLiteral("mnu_Pag1Results")), QStringLiteral("Province"));
    QCOMPARE(program.frame().menuCaption(QStringLiteral("mnu_bpu")), QStringLiteral("District"));
    // Ready: every built item works; the features not built yet stay disabled.
    QVERIFY(program.frame().item(QStringLiteral("Cls"))->isEnabled());
    QVERIFY(program.frame().item(QStringLiteral("mnu_res"))->isEnabled());
    QVERIFY(!program.frame().item(QStringLiteral("mnu_lt"))->isEnabled());
    // The widths a fresh file carries need no chain defaults.
    QCOMPARE(settings().ColWdth[16], 4000);
}

void FrameStartTest::databaseWithoutStudy() {
    ProgramFolder folder;
    folder.writeStp();
    folder.touchDatabase();
    FakeStudyBackend backend;
    // What InitBDS does with a database whose dictionary of studies is empty.
    backend.bds = [] {
        prompts().ask(QStringLiteral("No entry in the Dictionary of Studies"));
        return false;
    };
    backend.bdsFinding = StudyFinding::NoStudyEntry;
    setStudyBackend(&backend);
    QList<bool> setupOpened;
    setStudySetupOpener([&](FRMMAINMENU&, bool newDatabase) { setupOpened << newDatabase; });
    RunningProgram program(folder);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    QCOMPARE(program.prompts.messages(),
             QStringList{QStringLiteral("No entry in the Dictionary of Studies")});
    QCOMPARE(setupOpened, QList<bool>{true});
    QVERIFY(!backend.calls.contains(QStringLiteral("InitYear")));
    QVERIFY2(stateMismatch(program.frame(), MenuState::NoStudy).isEmpty(),
             qPrintable(stateMismatch(program.frame(), MenuState::NoStudy)));
    QVERIFY(program.frame().ProgressBar1->isHidden());
    QVERIFY(!program.frame().isTimerEnabled());
    // No scheme: the level captions fall back, the BPU branch to "Detail Tables".
    QCOMPARE(program.frame().menuCaption(QStringLiteral("mnu_pag2")), QStringLiteral("PAG2"));
    QCOMPARE(program.frame().menuCaption(QStringLiteral("mnu_bpu")), QStringLiteral("Detail Tables"));
    QCOMPARE(program.frame().menuCaption(QStringLiteral("mnu_Pag1Results")), QStringLiteral("PAG1"));
}

namespace {

// Starts with `errors` errors put in the store by InitCobcd, answers the offer with `answer`.
struct ErrorOffer {
    QStringList messages;
    QList<PromptRecord> shown;
    bool barHidden = false;
    int storeAfter = -1;
};

ErrorOffer runWithErrors(int errors, Answer answer) {
    ProgramFolder folder;
    folder.writeStp();
    folder.touchDatabase();
    FakeStudyBackend backend;
    backend.cobcdErrors = errors;
    setStudyBackend(&backend);
    RunningProgram program(folder);
    program.prompts.answer(answer);
    ErrorOffer out;
    if (!program.waitForFrame() || !program.waitForChain())
        return out;
    out.messages = program.prompts.messages();
    out.shown = program.prompts.shown();
    out.barHidden = program.frame().ProgressBar1->isHidden();
    out.storeAfter = errorStoreCount();
    setStudyBackend(nullptr);
    return out;
}

} // namespace

void FrameStartTest::oneErrorAsksSingular() {
    const ErrorOffer offer = runWithErrors(1, Answer::No);
    QCOMPARE(offer.messages,
             QStringList{QStringLiteral(
                 "An error occured during Initalization of Vesk Data, do you wish to view it")});
    QCOMPARE(offer.shown.at(0).title, QStringLiteral("Initalization of Vesk Data"));
    QCOMPARE(offer.shown.at(0).buttons, Buttons::YesNo);
    QCOMPARE(offer.storeAfter, 0);
    QVERIFY(offer.barHidden);
}

void FrameStartTest::twoErrorsAskPlural() {
    const ErrorOffer offer = runWithErrors(2, Answer::No);
    QCOMPARE(offer.messages,
             QStringList{QStringLiteral(
                 "Few errors occured during Initalization of Vesk Data, do you wish to view them")});
    QCOMPARE(offer.shown.at(0).title, QStringLiteral("Initalization of Vesk Data"));
    QCOMPARE(offer.storeAfter, 0);
    QVERIFY(offer.barHidden);
}

void FrameStartTest::errorsViewedThroughViewer() {
    int seen = -1;
    setErrorViewerOpener([&](FRMMAINMENU&) { seen = errorStoreCount(); });
    const ErrorOffer offer = runWithErrors(2, Answer::Yes);
    QCOMPARE(seen, 2); // the viewer opens on the full store
    QCOMPARE(offer.messages.size(), 1);
    QCOMPARE(offer.storeAfter, 0);
    QVERIFY(offer.barHidden);
}

void FrameStartTest::errorsListedWithoutViewer() {
    const ErrorOffer offer = runWithErrors(2, Answer::Yes);
    QCOMPARE(offer.messages.size(), 2);
    const QString listing = offer.messages.at(1);
    QVERIFY(listing.startsWith(QStringLiteral("S.No\tError Number\tError Description\tError Source")));
    QVERIFY(listing.contains(QStringLiteral("The Sqla is checked in _DctBdm for cobcd A01")));
    QVERIFY(listing.contains(QStringLiteral("The Sqla is checked in _DctBdm for cobcd A02")));
    QCOMPARE(offer.storeAfter, 0);
}

void FrameStartTest::emptyObjectLineReachesTrapiniAtStep8() {
    // After File -> Close the OBJECT line is empty: the reader rejects the path, the structure check
    // of the old engine let a folder through, and the settings dialogue follows at step 8.
    ProgramFolder folder;
    folder.writeStp(QString());
    RecordingDatabaseBackend backend;
    setStudyBackend(&backend);
    RunningProgram program(folder);
    program.prompts.answer(Answer::Yes);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    const QStringList messages = program.prompts.messages();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.at(0), text(settings_texts::kCheckVeskPath));
    QCOMPARE(messages.at(1), text(settings_texts::kTrapini));
    QVERIFY(!program.frame().chain().SettingsOK());
    QVERIFY(backend.calls.contains(QStringLiteral("InitDAP")));
    QVERIFY(!backend.calls.contains(QStringLiteral("InitBDS")));
    QVERIFY2(stateMismatch(program.frame(), MenuState::NoSettings).isEmpty(),
             qPrintable(stateMismatch(program.frame(), MenuState::NoSettings)));
    QVERIFY(program.frame().item(QStringLiteral("mnu_New"))->isEnabled());
    QVERIFY(program.frame().item(QStringLiteral("mnu_Open"))->isEnabled());
    QVERIFY(!program.frame().item(QStringLiteral("mnu_tools"))->isEnabled());
    QVERIFY(program.frame().ProgressBar1->isHidden());
    QCOMPARE(program.endCalls, 0);
}

void FrameStartTest::emptyObjectLineAndNoEndsProgram() {
    ProgramFolder folder;
    folder.writeStp(QString());
    RecordingDatabaseBackend backend;
    setStudyBackend(&backend);
    RunningProgram program(folder);
    program.prompts.answer(Answer::No);
    QVERIFY(program.waitForFrame());
    QVERIFY(QTest::qWaitFor([&] { return program.endCalls == 1; }, 5000));
    QCOMPARE(program.prompts.messages().last(), text(settings_texts::kTrapini));
    QVERIFY(!program.frame().isTimerEnabled());
}

QTEST_MAIN(FrameStartTest)
#include "frame_start_test.moc"
