// The File commands of the frame and Study -> Setup's guard; the chain itself is in
// loading_chain.cpp.

#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "platform/progress.h"
#include "platform/prompts.h"
#include "platform/sound.h"
#include "shell/frame_preferences.h"
#include "shell/frame_texts.h"
#include "shell/loading_chain.h"
#include "shell/menu_state.h"
#include "shell/study_backend.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <exception>
#include <functional>

namespace vesk {

namespace t = frame_texts;

namespace {

using frame_texts::text;

// The file name as File -> Open stores it: in lower case where the file system does not tell the
// cases apart, as it is where it does (a lower-cased name would name no file there).
QString storedFileName(const QString& name) {
#ifdef Q_OS_WIN
    return name.toLower();
#else
    return name;
#endif
}

} // namespace

void LoadingChain::guarded(const std::function<void()>& command) {
    try {
        command();
    } catch (const RuntimeError& e) {
        commandError(e.words);
    } catch (const std::exception& e) {
        commandError(QString::fromLocal8Bit(e.what()));
    }
}

void LoadingChain::copySettingsToTemp() {
    // The copy of the settings file that later messages offer ("the copy of STP"). It is a spare:
    // File -> New goes on without it, so that a settings file that has gone still leads to the
    // dialogue for a missing file below.
    const QString temp = preferences().txtTempArea.trimmed();
    if (temp.isEmpty())
        return;
    const QString target = temp + QDir::separator() + QLatin1String(kSettingsFileName);
    if (QFileInfo::exists(target))
        QFile::remove(target);
    QFile::copy(settingsFilePath(appPathFor(programFolder())), target);
}

void LoadingChain::mnu_New_Click() {
    guarded([&] {
        NewDBDone_ = true;
        copySettingsToTemp();
        NewDBDone_ = studyBackend().CreateNewDatabase();
        if (!NewDBDone_)
            return;
        // The chain is not wanted now: a new database has no study, and Study Setup comes next.
        host_.setTimerEnabled(false);
        DBStruOK_ = true;
        SettingsOK_ = true;
        progress().setRange(0, 7);
        playSound(settings().sLBussy);
        const SettingsResult read = InitVESKFilePath(programFolder_);
        if (!applySettingsResult(static_cast<int>(read.outcome), read.SettingsOK))
            return;
        host_.showStudySetup(true);
    });
}

void LoadingChain::mnu_Open_Click() {
    guarded([&] {
        const auto chosen =
            prompts().openFileName(text(t::kOpenTitle), text(t::kOpenFilter), preferences().txtwklocation);
        if (!chosen || chosen->trimmed().isEmpty())
            return; // Cancel ends the command
        const QString path = *chosen;
        StudyBackend& b = studyBackend();
        if (b.ChkDBStru(path)) {
            applyMenuChange(MenuChange::OpenPassed);
            const QFileInfo info(path);
            PreferencesControls& p = preferences();
            // A network path ("\\machine\share\...") is kept as it is; a local one likewise.
            p.txtwklocation = QDir::toNativeSeparators(info.absolutePath());
            p.txtVESKObj = storedFileName(info.fileName());
            // The preferences' OK writes the settings and re-arms the chain.
            preferencesForm().Ok_Click();
            return;
        }
        applyMenuChange(MenuChange::OpenFailed);
        b.clearMtxDAP();
        prompts().ask(text(t::kOpenNotVesk));
        // The database in use before is not opened again.
        applyMenuChange(MenuChange::OpenFailedAfterMessage);
    });
}

void LoadingChain::closeDatabase(bool fromToolbar) {
    guarded([&] {
        StudyBackend& b = studyBackend();
        b.releaseStudyDB();
        applyMenuChange(fromToolbar ? MenuChange::ToolbarClose : MenuChange::FileClose);
        b.clearMtxDAP();
        // File -> Close forgets the database, so that the next start reports it; the toolbar's
        // button keeps its name in the settings. The two ways differ, and stay so.
        if (!fromToolbar)
            preferences().txtVESKObj.clear();
        Write_To_Vesk_Stp();
    });
}

void LoadingChain::Cls_Click() {
    closeDatabase(false);
}

void LoadingChain::closeDatabaseButton() {
    closeDatabase(true);
}

void LoadingChain::mnu_exit_Click() {
    host_.endProgram();
}

void LoadingChain::mnu_SSetup_Click() {
    guarded([&] {
        if (!SettingsOK_) {
            prompts().ask(text(t::kCheckPaths), Buttons::Ok, Icon::Warning);
            preferencesForm().showModal();
            return;
        }
        host_.showStudySetup(false);
    });
}

} // namespace vesk
