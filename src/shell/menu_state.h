#pragma once
// The states of the main menu, kept in one place.
//
// A state says which items are enabled and which are disabled; the frame applies it. The commands
// that lead into a state (the loading chain, File -> Open, File -> Close, the toolbar's Close
// Database, the settings dialogue for a missing file) each also carry their own literal list of
// enables and disables, which is applied after the state and wins where the two differ: the
// toolbar's close also disables Preferences and toolbar button 1, a failed Open leaves the Study
// menu enabled, and so on.
//
// The core never touches a widget: it switches items through the MenuSwitch that the frame
// installs. Until a frame is installed a RecordingMenus keeps the switches, which is what the core
// tests read.

#include "database/study_context.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vesk {

class MenuSwitch {
public:
    virtual ~MenuSwitch() = default;
    // `name` is an object name of the menu tree or a toolbar button (toolbarButtonName).
    virtual void setMenuEnabled(const QString& name, bool enabled) = 0;
    virtual bool isMenuEnabled(const QString& name) const = 0;
    virtual void setMenuCaption(const QString& name, const QString& caption) = 0;
    virtual QString menuCaption(const QString& name) const = 0;
};

// Keeps the switches in memory: every item starts enabled with its caption from the menu tree.
class RecordingMenus : public MenuSwitch {
public:
    void setMenuEnabled(const QString& name, bool enabled) override { disabled_[name] = !enabled; }
    bool isMenuEnabled(const QString& name) const override { return !disabled_.value(name, false); }
    void setMenuCaption(const QString& name, const QString& caption) override { captions_[name] = caption; }
    QString menuCaption(const QString& name) const override;

private:
    QHash<QString, bool> disabled_;
    QHash<QString, QString> captions_;
};

MenuSwitch& menus();
void setMenuSwitch(MenuSwitch* menuSwitch); // not owned; nullptr goes back to a RecordingMenus

enum class MenuState { Starting, Ready, NoStudy, BadDatabase, Closed, NoSettings };

struct MenuStateRule {
    enum class Others { Keep, Enable, Disable };
    MenuState state;
    const char* title;    // "Starting", "Ready", ...
    QStringList enabled;  // switched on
    QStringList disabled; // switched off
    Others others;        // what becomes of every item named in neither list
};

const MenuStateRule& menuStateRule(MenuState state);

// The commands that switch menu items, each with its literal list.
enum class MenuChange {
    FrameLoad,              // the frame's load: Starting
    ChainBadDatabase,       // the chain found the database wrong: Bad database
    ChainReady,             // the chain found the database right: Ready
    OpenPassed,             // File -> Open, the file passed the check: Ready
    OpenFailed,             // File -> Open, the file failed, before the message: Bad database
    OpenFailedAfterMessage, // File -> Open, the file failed, after the message: no state of its own
    FileClose,              // File -> Close: Closed
    ToolbarClose,           // the toolbar's "Close Database": Closed, less Preferences and button 1
    Trapini,                // the settings dialogue answered Yes: No settings
    NoStudy,                // no current study (InitBDS or InitCOB False): No study
};

struct MenuStep {
    QString name;
    bool enabled;
};

// The state a change leads into, if it has one.
std::optional<MenuState> menuStateOf(MenuChange change);
// The change's literal list, in its order.
const std::vector<MenuStep>& menuSteps(MenuChange change);

// Applies the state of `change` (if any) and then its literal list through menus().
void applyMenuChange(MenuChange change);
// Applies a state alone.
void applyMenuState(MenuState state);

// The six items that a study without its minimum definition switches off (mnu_BPUES, mnu_studyInp,
// mnu_Daly, mns_lsr, mnu_Compute, mnu_res).
const QStringList& noStudyItems();
void disableMenus(const QStringList& names);
void enableMenus(const QStringList& names);

// What a loader's finding does to the menu: a study that lacks its minimum (no current study, no
// scheme, no age definitions, no causes) switches the six items off, found age definitions switch
// them on again; no units switch off all that needs units, no aggregates the inputs and the life
// tables. The other findings leave the menu alone. Study Setup for a first study is the chain's.
void applyStudyFinding(StudyFinding finding);

// Gives mnu_pag2, mnu_bpu and mnu_Pag1Results the captions LblPAG2, LblBPU and LblPAG1 of the
// study backend. An empty label falls back to "PAG2", "Detail Tables" and "PAG1".
void SetLevelCaptions();

} // namespace vesk
