#include "shell/loading_chain.h"

#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "platform/progress.h"
#include "platform/prompts.h"
#include "platform/sound.h"
#include "shell/frame_preferences.h"
#include "shell/frame_texts.h"
#include "shell/menu_state.h"
#include "shell/study_backend.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <exception>

namespace vesk {

namespace t = frame_texts;

namespace {

FrameHost* currentHost = nullptr;

// The bar's range for the chain: one step per stage, Value 1 to 7.
constexpr int kChainSteps = 7;

using frame_texts::text;

// Folder and file joined as the settings name them.
QString joinPath(const QString& folder, const QString& file) {
    return folder + QDir::separator() + file;
}

} // namespace

FrameHost* frameHost() {
    return currentHost;
}

void setFrameHost(FrameHost* host) {
    currentHost = host;
}

void enableTimer1() {
    if (currentHost)
        currentHost->setTimerEnabled(true);
}

QString LoadingChain::programFolder() const {
    return programFolder_.isEmpty() ? QCoreApplication::applicationDirPath() : programFolder_;
}

void LoadingChain::Form_Load() {
    applyMenuChange(MenuChange::FrameLoad);
    host_.setTimerEnabled(true);
}

void LoadingChain::Timer1_Timer() {
    // A tick that comes while a message of the chain is up waits for the next one.
    if (running_)
        return;
    running_ = true;
    try {
        runChain();
    } catch (const RuntimeError& e) {
        chainError(e);
    } catch (const std::exception& e) {
        chainError({0, QString::fromLocal8Bit(e.what())});
    }
    running_ = false;
}

void LoadingChain::runChain() {
    // 1. Fresh flags, the bar's range, the busy sound.
    DBStruOK_ = true;
    SettingsOK_ = true;
    progress().setRange(0, kChainSteps);
    playSound(settings().sLBussy);

    // 2. The settings file must be there; without it the error handler takes over, and the timer,
    // still armed, brings the message back at the next tick.
    readFirstLine();

    // 3. The settings.
    const SettingsResult read = InitVESKFilePath(programFolder_);
    if (!applySettingsResult(static_cast<int>(read.outcome), read.SettingsOK))
        return;

    // 4. The structure of the database the settings name.
    const PreferencesControls& p = preferences();
    DBStruOK_ = studyBackend().ChkDBStru(joinPath(p.txtwklocation, p.txtVESKObj));
    progress().setValue(2);

    if (!DBStruOK_) {
        // 5. A database that is wrong or missing leaves the study menus dead.
        applyMenuChange(MenuChange::ChainBadDatabase);
        studyBackend().clearMtxDAP();
    } else {
        // 6.
        applyMenuChange(MenuChange::ChainReady);
        // 7.
        VeskSettings& s = settings();
        if (s.ColWdth[0] == 0 || s.ColWdth[1] == 0)
            loadChainDefaultWidths(s);
        studyBackend().InitTblNames();
        studyBackend().InitDAP();
        progress().setValue(3);
        // 8.
        if (!SettingsOK_) {
            if (!trapini()) {
                host_.endProgram();
                return;
            }
            applyMenuChange(MenuChange::Trapini);
        } else {
            loadStudy();
        }
    }
    endTick();
}

bool LoadingChain::readFirstLine() {
    QFile file(settingsFilePath(appPathFor(programFolder())));
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(runtime_error::kFileNotFound);
    QByteArray line = file.readLine();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    file.close();
    if (line != "[VESK]")
        return false;
    PreferencesControls& p = preferences();
    if (!p.loaded) {
        progress().setVisible(true);
        progress().setValue(1);
    } else if (p.changed) {
        progress().setVisible(true);
        progress().setValue(1);
        p.changed = false;
    }
    return true;
}

// The outcome of the settings routines: false when the program is to end.
bool LoadingChain::applySettingsResult(int outcome, bool settingsOK) {
    switch (static_cast<SettingsOutcome>(outcome)) {
    case SettingsOutcome::EndProgram:
        host_.endProgram();
        return false;
    case SettingsOutcome::NoSettings:
        applyMenuChange(MenuChange::Trapini);
        break;
    case SettingsOutcome::Ok:
        break;
    }
    SettingsOK_ = settingsOK;
    return true;
}

LoadReport applyLoadReport(LoadReport report, FrameHost& host) {
    // A database without any study goes on to Study Setup for a first one, before the menu changes.
    if (report.finding == StudyFinding::NoStudyEntry)
        host.showStudySetup(true);
    applyStudyFinding(report.finding);
    return report;
}

void loadAgeGroups(StudyBackend& b, FrameHost& host) {
    if (applyLoadReport(b.InitAgeGrps(), host).finding == StudyFinding::AgeDefinitionsFound)
        b.buildAgeGroupLabels();
}

void LoadingChain::loadStudy() {
    StudyBackend& b = studyBackend();
    if (!applyLoadReport(b.InitBDS(), host_)) {
        // 8.1: no current study; the chain does not come back by itself.
        host_.setTimerEnabled(false);
        applyMenuChange(MenuChange::NoStudy);
    } else {
        // 8.2
        b.InitYear();
        b.InitPAGScheme();
        loadAgeGroups(b, host_);
        progress().setValue(4);
        // 8.3
        if (!applyLoadReport(b.InitCOB(), host_))
            applyMenuChange(MenuChange::NoStudy);
        else
            loadStudyRows(b);
    }
    // 8.7
    SetLevelCaptions();
    // 8.8
    offerErrors();
}

void LoadingChain::loadStudyRows(StudyBackend& b) {
    // 8.4
    b.InitCobcd();
    applyLoadReport(b.InitBPULst(QStringLiteral("_DctBPU")), host_);
    applyLoadReport(b.InitPAGLst(QStringLiteral("_DctPAG1")), host_);
    b.InitDmgphyPrmtrs();
    progress().setValue(5);
    // 8.5
    if (b.hasBPUList() && b.CheckDatpop())
        b.buildPopulationArrays();
    // 8.6
    progress().setValue(6);
}

void applyFrameRequest(const FrameRequest& request) {
    using Kind = FrameRequest::Kind;
    switch (request.kind) {
    case Kind::Finding:
        applyStudyFinding(request.finding);
        break;
    case Kind::SwitchItems:
        for (const QString& item : request.items)
            menus().setMenuEnabled(item, request.enabled);
        break;
    case Kind::StudyComplete:
        applyMenuChange(MenuChange::ChainReady);
        break;
    case Kind::LevelCaptions:
        SetLevelCaptions();
        break;
    case Kind::RearmChain:
        enableTimer1();
        break;
    }
}

void LoadingChain::offerErrors() {
    const int count = errorStoreCount();
    if (count == 0)
        return;
    stopSound();
    const Answer answer = prompts().ask(text(count == 1 ? t::kInitErrorOne : t::kInitErrorMany),
                                        Buttons::YesNo, Icon::None, text(t::kInitErrorTitle));
    progress().setVisible(false);
    if (answer == Answer::Yes)
        host_.showErrorViewer(); // the viewer takes its copy of the store when it opens
    clearErrorStore();
}

void LoadingChain::endTick() {
    // 9.
    stopSound();
    progress().setValue(kChainSteps);
    progress().setVisible(false);
    // 10.
    host_.setTimerEnabled(false);
    progress().setVisible(false);
}

void LoadingChain::chainError(const RuntimeError& e) {
    // A routine that leaves through its handler hides the bar it showed.
    progress().setVisible(false);
    if (e.number == runtime_error::kModelessOverModal) {
        preferencesForm().hide();
        return;
    }
    prompts().ask(text(t::kErrNumber) + QString::number(e.number) + text(t::kErrGap) + e.words);
}

void LoadingChain::commandError(const QString& description) {
    progress().setVisible(false);
    prompts().ask(text(t::kErrorPrefix) + description, Buttons::Ok, Icon::Information);
}

} // namespace vesk
