#pragma once
// The main frame's logic without its widgets: the loading chain that runs in Timer1's tick, and the
// commands File -> New, Open, Close, the toolbar's Close Database, Exit and Study -> Setup.
//
// The frame comes up with most of its menu dead and arms Timer1; the tick reads the settings, checks
// the database's structure, loads the study context, offers the errors collected and disarms the
// timer. File -> New, File -> Open and the preferences' OK lead back into the same chain.
//
// The chain talks to the window through FrameHost, to the menu through menus() (menu_state.h), to
// the bar through progress(), to the user through prompts(), and to the database through
// studyBackend(); it holds no widget. The loaders below it report what they found (LoadReport) and
// Study Setup asks for what it needs (FrameRequest); the chain and the frame do it.

#include "foundation/runtime_error.h"
#include "study/study_setup_report.h"

#include <QString>
#include <functional>

namespace vesk {

class StudyBackend;

// What the chain asks of the frame window.
class FrameHost {
public:
    virtual ~FrameHost() = default;
    virtual void setTimerEnabled(bool enabled) = 0; // Timer1.Enabled
    virtual bool isTimerEnabled() const = 0;
    // The error viewer (frmgridtest) over the frame, listing ErrStore.
    virtual void showErrorViewer() = 0;
    // Study Setup. `newDatabase`: with the tabs for a first study only (0, 1, 2 enabled, 3, 4
    // disabled), as after File -> New; otherwise as Study -> Setup opens it, modally.
    virtual void showStudySetup(bool newDatabase) = 0;
    // Ends the program: the frame's unload, then the end of the process.
    virtual void endProgram() = 0;
};

// The frame that is up, or nullptr (the preferences' OK re-arms its timer through it).
FrameHost* frameHost();
void setFrameHost(FrameHost* host); // not owned

// Enables the frame's Timer1, so that the chain runs at its next tick.
void enableTimer1();

// What the chain does with a loader's report: Study Setup for a first study when the database has
// no study at all, then the finding's change of the menu. Gives the report back.
LoadReport applyLoadReport(LoadReport report, FrameHost& host);
// Step 8.2's age definitions: loaded, their finding applied, and the age-sex group labels built
// from them when there are some.
void loadAgeGroups(StudyBackend& backend, FrameHost& host);

// Does what Study Setup asks of the frame: a loader's finding on the menu, items switched, the
// menu of a ready database, the level captions, Timer1 armed again.
void applyFrameRequest(const FrameRequest& request);

class LoadingChain {
public:
    explicit LoadingChain(FrameHost& host) : host_(host) {}

    // The program folder that holds Vesk.stp; empty for QCoreApplication::applicationDirPath().
    void setProgramFolder(const QString& folder) { programFolder_ = folder; }
    QString programFolder() const;

    // The frame's load: the Starting state, then Timer1 armed.
    void Form_Load();
    // Timer1's tick: the loading chain, steps 1 to 11.
    void Timer1_Timer();

    void mnu_New_Click();
    void mnu_Open_Click();
    void Cls_Click();           // File -> Close
    void closeDatabaseButton(); // the toolbar's "Close Database"
    void mnu_exit_Click();
    void mnu_SSetup_Click();

    bool DBStruOK() const { return DBStruOK_; }
    bool SettingsOK() const { return SettingsOK_; }
    bool NewDBDone() const { return NewDBDone_; }
    // True while a tick runs (a tick that comes meanwhile does nothing).
    bool running() const { return running_; }

private:
    void runChain();
    bool readFirstLine(); // step 2
    bool applySettingsResult(int outcome, bool settingsOK);
    void loadStudy();                       // step 8
    void loadStudyRows(StudyBackend& b);    // steps 8.4 to 8.6
    void offerErrors();                     // step 8.8
    void endTick();                         // steps 9 and 10
    void chainError(const RuntimeError& e); // step 11
    void commandError(const QString& description);
    // Runs a command: a run-time error, or any other failure, ends it through commandError.
    void guarded(const std::function<void()>& command);
    void closeDatabase(bool fromToolbar);
    void copySettingsToTemp();

    FrameHost& host_;
    QString programFolder_;
    bool DBStruOK_ = true;
    bool SettingsOK_ = true;
    bool NewDBDone_ = false;
    bool running_ = false;
    bool ended_ = false;
};

} // namespace vesk
