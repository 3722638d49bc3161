#include "frame_fixture.h"

#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "shell/forms/menu_commands.h"
#include "shell/frame_menu_tree.h"
#include "shell/frame_preferences.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTimer>

namespace vesk::test {

namespace {

// Numeric blocks for a start: made-up numbers of the right shape, not reference values.
QStringList numericBlocks() {
    const QString rule27(27, u'-');
    const QString rule28(28, u'-');
    QStringList lines{rule27, QStringLiteral("[LTS]"), rule27};
    for (const char* section : {"[Standard Life Table-KRO]", "[Standard Life Table-WHO]"}) {
        lines << QString::fromLatin1(section) << QStringLiteral("[BAI]:0|1|5|10")
              << QStringLiteral("[EXM]:70|69|65|60") << QStringLiteral("[EXF]:75|74|70|65");
    }
    lines << rule28 << QStringLiteral("[OAIGD]") << rule28 << QStringLiteral("1|2|3|4|5")
          << QStringLiteral("6|7|8|9|10") << rule27 << QStringLiteral("[PANELS]") << rule27;
    for (int panel = 0; panel < 5; ++panel)
        lines << QStringLiteral("[PANEL %1]").arg(panel) << QStringLiteral("0.1|0.2|0.3|0.2|0.2");
    lines << rule27;
    return lines;
}

} // namespace

ProgramFolder::ProgramFolder() {
    for (const QString& folder : {prog(), work(), stat(), temp(), import()})
        QDir().mkpath(folder);
}

void ProgramFolder::writeStp(const QString& objectName) {
    QFile in(QStringLiteral(VESK_SOURCE_DIR "/data/Vesk.stp.in"));
    if (!in.open(QIODevice::ReadOnly))
        qFatal("the delivered settings file is missing");
    QString text = QString::fromUtf8(in.readAll());
    text.replace(QStringLiteral("@VESK_WORK_DIR@"), work());
    text.replace(QStringLiteral("@VESK_STAT_DIR@"), stat());
    text.replace(QStringLiteral("@VESK_TEMP_DIR@"), temp());
    text.replace(QStringLiteral("@VESK_IMPORT_DIR@"), import());
    text.replace(QStringLiteral("@VESK_SOUND_DIR@"), prog() + QStringLiteral("/sounds"));
    QStringList lines = text.split(QRegularExpression(QStringLiteral("\r\n|\n")));
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QString& line : lines)
        if (line.startsWith(QLatin1String("OBJECT=")))
            line = QStringLiteral("OBJECT=") + objectName;
    if (!lines.contains(QStringLiteral("[OAIGD]")))
        lines << numericBlocks();
    QFile out(stpPath());
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write the test's settings file");
    out.write((lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8());
}

QString ProgramFolder::stpValue(const QString& key) const {
    QFile in(stpPath());
    if (!in.open(QIODevice::ReadOnly))
        return QStringLiteral("<no file>");
    for (const QString& line : QString::fromUtf8(in.readAll()).split(QStringLiteral("\r\n")))
        if (line.startsWith(key))
            return line.mid(key.size());
    return QStringLiteral("<no line>");
}

QString ProgramFolder::touchDatabase(const QString& name) const {
    const QString path = work() + QLatin1Char('/') + name;
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    return path;
}

bool FakeStudyBackend::ChkDBStru(const QString& path) {
    calls << QStringLiteral("ChkDBStru ") + path;
    return chk(path);
}

bool FakeStudyBackend::CreateNewDatabase() {
    calls << QStringLiteral("CreateNewDatabase");
    return created;
}

LoadReport FakeStudyBackend::InitBDS() {
    calls << QStringLiteral("InitBDS");
    return bds() ? LoadReport{} : LoadReport{bdsFinding};
}

LoadReport FakeStudyBackend::InitCOB() {
    calls << QStringLiteral("InitCOB");
    return cob ? LoadReport{} : LoadReport{StudyFinding::EngineFailed};
}

void FakeStudyBackend::InitCobcd() {
    calls << QStringLiteral("InitCobcd");
    for (int i = 0; i < cobcdErrors; ++i)
        ErrorStore(
            0,
            QStringLiteral("The Sqla is checked in _DctBdm for cobcd A0%1  but not defined in _MapBdmSqla")
                .arg(i + 1),
            QStringLiteral("InitCobcd "));
}

bool FakeStudyBackend::CheckDatpop() {
    calls << QStringLiteral("CheckDatpop");
    return datpop;
}

RunningProgram::RunningProgram(const ProgramFolder& folder, int timerInterval) {
    setPromptService(&prompts);
    setSoundService(&sounds);
    frame_ = std::make_unique<FRMMAINMENU>();
    frame_->chain().setProgramFolder(folder.prog());
    frame_->setEndProgram([this] { ++endCalls; });
    frame_->Timer1->setInterval(timerInterval);
    splash_ = std::make_unique<frmSplash>([this] { frame_->showFrame(); });
    splash_->Timer1->start(5);
    splash_->show();
}

RunningProgram::~RunningProgram() {
    splash_.reset();
    frame_.reset();
    setPromptService(nullptr);
    setSoundService(nullptr);
}

bool RunningProgram::waitForFrame() {
    return QTest::qWaitFor([this] { return frame_->isVisible() && !splash_->isVisible(); }, 5000);
}

bool RunningProgram::waitForChain(int timeoutMs) {
    return QTest::qWaitFor([this] { return !frame_->isTimerEnabled() && !frame_->chain().running(); },
                           timeoutMs);
}

void resetGlobals() {
    settings() = VeskSettings();
    preferences() = PreferencesControls();
    clearErrorStore();
    clearMenuCommands();
    setStudyBackend(nullptr);
    setPreferencesForm(nullptr);
}

QString stateMismatch(const FRMMAINMENU& frame, MenuState state) {
    const MenuStateRule& rule = menuStateRule(state);
    QStringList wrong;
    for (const QString& name : rule.enabled)
        if (!frame.isMenuEnabled(name))
            wrong << name + QStringLiteral(" should be enabled");
    for (const QString& name : rule.disabled)
        if (frame.isMenuEnabled(name))
            wrong << name + QStringLiteral(" should be disabled");
    if (rule.others != MenuStateRule::Others::Keep) {
        QSet<QString> reach;
        for (const QString& name : rule.enabled)
            for (const QString& parent : menuAncestors(name))
                reach.insert(parent);
        const bool on = rule.others == MenuStateRule::Others::Enable;
        for (const QString& name : allSwitchableItems()) {
            if (rule.enabled.contains(name) || rule.disabled.contains(name))
                continue;
            const bool expected = on || reach.contains(name);
            if (frame.isMenuEnabled(name) != expected)
                wrong << name + (expected ? QStringLiteral(" should be enabled")
                                          : QStringLiteral(" should be disabled"));
        }
    }
    return wrong.isEmpty() ? QString()
                           : QStringLiteral("%1: %2").arg(QString::fromLatin1(rule.title),
                                                          wrong.join(QStringLiteral(", ")));
}

} // namespace vesk::test
