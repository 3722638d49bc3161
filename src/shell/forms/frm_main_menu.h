#pragma once
// FRMMAINMENU: the main frame. A multiple-document window with the menu of the program, Toolbar1,
// ProgressBar1 and Label1 at its foot, and Timer1, whose tick runs the loading chain.
//
// The frame is thin: the menu is built from the table of frame_menu_tree.h, the states of the menu
// come from menu_state.h, and the chain and the File commands are LoadingChain's. The frame
// installs itself as the core's MenuSwitch, Progress and FrameHost while it lives.

#include "platform/forms/bar_progress.h"
#include "shell/loading_chain.h"
#include "shell/menu_state.h"

#include <QHash>
#include <QMainWindow>
#include <functional>

class QAction;
class QLabel;
class QMdiArea;
class QMenu;
class QProgressBar;
class QTimer;
class QToolBar;

namespace vesk {

class FRMMAINMENU : public QMainWindow, public FrameHost, public MenuSwitch {
    Q_OBJECT
public:
    explicit FRMMAINMENU(QWidget* parent = nullptr);
    ~FRMMAINMENU() override;

    // The frame's load (the Starting state and Timer1 armed), pending events, then the frame shown.
    void showFrame();

    LoadingChain& chain() { return chain_; }
    QMdiArea* mdiArea() const { return mdiArea_; }
    // The action of a menu item or toolbar button by its object name, or nullptr.
    QAction* item(const QString& name) const;
    // Whether the feature behind an item is built into this program: an item that is not built stays
    // disabled in every state.
    bool isBuilt(const QString& name) const;
    // What ending the program does; by default the application's event loop ends.
    void setEndProgram(std::function<void()> end) { end_ = std::move(end); }

    // FrameHost
    void setTimerEnabled(bool enabled) override;
    bool isTimerEnabled() const override;
    void showErrorViewer() override;
    void showStudySetup(bool newDatabase) override;
    void endProgram() override;

    // MenuSwitch
    void setMenuEnabled(const QString& name, bool enabled) override;
    bool isMenuEnabled(const QString& name) const override;
    void setMenuCaption(const QString& name, const QString& caption) override;
    QString menuCaption(const QString& name) const override;

    QToolBar* Toolbar1 = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QLabel* Label1 = nullptr;
    QTimer* Timer1 = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void buildToolbar();
    void buildFoot();
    void connectCommands();
    void runCommand(const QString& name);
    void refresh(const QString& name);
    void refreshAll();
    void mnu_veskh_Click();
    void mnu_avesk_Click();

    LoadingChain chain_;
    BarProgress* progress_ = nullptr; // the frame's bar and Label1 as the core's Progress
    QMdiArea* mdiArea_ = nullptr;
    QHash<QString, QAction*> items_;
    QHash<QString, bool> logical_; // what the menu states say, before the built-ness of each item
    std::function<void()> end_;
    bool ending_ = false;
};

} // namespace vesk
