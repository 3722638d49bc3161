#include "shell/forms/frm_main_menu.h"

#include "foundation/error_store.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "shell/forms/frm_about.h"
#include "shell/forms/menu_commands.h"
#include "shell/forms/shell_resources.h"
#include "shell/frame_menu_tree.h"
#include "shell/frame_preferences.h"
#include "shell/frame_texts.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLinearGradient>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <exception>

namespace vesk {

namespace t = frame_texts;

namespace {

using frame_texts::text;

// The commands the frame carries itself.
const QStringList kOwnCommands = {
    QStringLiteral("mnu_New"),   QStringLiteral("mnu_Open"),  QStringLiteral("Cls"),
    QStringLiteral("mnu_exit"),  QStringLiteral("mnu_setup"), QStringLiteral("mnu_veskh"),
    QStringLiteral("mnu_avesk"),
};

// Timer1 ticks this often while it is armed.
constexpr int kTimer1Interval = 500;

const char kNotBuiltTip[] = "Not built into this version of VESK yet.";

} // namespace

FRMMAINMENU::FRMMAINMENU(QWidget* parent) : QMainWindow(parent), chain_(*this) {
    initShellResources();
    setObjectName(QStringLiteral("FRMMAINMENU"));
    setWindowTitle(text(t::kWindowTitle));
    setWindowIcon(QIcon(QStringLiteral(":/shell/vesk_logo.png")));
    resize(1024, 720);

    mdiArea_ = new QMdiArea(this);
    mdiArea_->setObjectName(QStringLiteral("MDIArea"));
    QLinearGradient backdrop(0, 0, 0, 1);
    backdrop.setCoordinateMode(QGradient::ObjectBoundingMode);
    backdrop.setColorAt(0, QColor(0xe6, 0xec, 0xee));
    backdrop.setColorAt(1, QColor(0xa9, 0xbc, 0xc1));
    mdiArea_->setBackground(backdrop);
    setCentralWidget(mdiArea_);

    buildMenus();
    buildToolbar();
    buildFoot();
    connectCommands();

    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(kTimer1Interval);
    connect(Timer1, &QTimer::timeout, this, [this] { chain_.Timer1_Timer(); });

    progress_ = new BarProgress(ProgressBar1, Label1, BarProgress::Refresh::Repaint,
                                BarProgress::Label::ShownForText);
    setMenuSwitch(this);
    setProgress(progress_);
    setFrameHost(this);
    refreshAll();
}

FRMMAINMENU::~FRMMAINMENU() {
    if (&menus() == this)
        setMenuSwitch(nullptr);
    if (&progress() == progress_)
        setProgress(nullptr);
    if (frameHost() == this)
        setFrameHost(nullptr);
    delete progress_;
}

void FRMMAINMENU::buildMenus() {
    QHash<QString, QMenu*> menusByName;
    for (const MenuItemDef& def : menuTree()) {
        const QString name = QString::fromLatin1(def.name);
        const QString caption = QString::fromLatin1(def.caption);
        const QString parentName = QString::fromLatin1(def.parent);
        QMenu* parentMenu = menusByName.value(parentName);
        QAction* action = nullptr;
        if (isSubmenu(name)) {
            QMenu* menu = parentMenu ? parentMenu->addMenu(caption) : menuBar()->addMenu(caption);
            menu->setObjectName(name);
            menusByName.insert(name, menu);
            action = menu->menuAction();
        } else {
            action = parentMenu->addAction(caption);
            connect(action, &QAction::triggered, this, [this, name] { runCommand(name); });
        }
        action->setObjectName(name);
        items_.insert(name, action);
    }
}

void FRMMAINMENU::buildToolbar() {
    Toolbar1 = addToolBar(QStringLiteral("Toolbar1"));
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setMovable(false);
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    Toolbar1->setIconSize(QSize(24, 24));
    // ImageList1: the pictures of the five buttons, from the style of the platform.
    const QStyle::StandardPixmap pictures[] = {QStyle::SP_FileDialogDetailedView, QStyle::SP_DialogOpenButton,
                                               QStyle::SP_FileDialogListView, QStyle::SP_DialogCloseButton,
                                               QStyle::SP_BrowserStop};
    for (const ToolbarButtonDef& button : toolbarButtons()) {
        QAction* action = Toolbar1->addAction(style()->standardIcon(pictures[button.index - 1]),
                                              QString::fromLatin1(button.key));
        action->setData(QString::fromLatin1(button.key)); // the button's key
        const QString name = toolbarButtonName(button.index);
        action->setObjectName(name);
        items_.insert(name, action);
    }
}

void FRMMAINMENU::buildFoot() {
    Label1 = new QLabel(text(t::kLabel1), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setVisible(false);
    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setMinimumWidth(320);
    ProgressBar1->setVisible(false);
    statusBar()->addPermanentWidget(Label1);
    statusBar()->addPermanentWidget(ProgressBar1);
}

void FRMMAINMENU::connectCommands() {
    const auto onButton = [this](int index, std::function<void()> run) {
        connect(items_.value(toolbarButtonName(index)), &QAction::triggered, this, std::move(run));
    };
    onButton(1, [this] { runCommand(QStringLiteral("mnu_setup")); });
    onButton(2, [this] { runCommand(QStringLiteral("mnu_Open")); });
    onButton(3, [this] { runCommand(QStringLiteral("mnu_cgroups")); });
    onButton(4, [this] { chain_.closeDatabaseButton(); });
    onButton(5, [this] { runCommand(QStringLiteral("mnu_exit")); });
}

void FRMMAINMENU::runCommand(const QString& name) {
    if (name == QLatin1String("mnu_New"))
        return chain_.mnu_New_Click();
    if (name == QLatin1String("mnu_Open"))
        return chain_.mnu_Open_Click();
    if (name == QLatin1String("Cls"))
        return chain_.Cls_Click();
    if (name == QLatin1String("mnu_exit"))
        return chain_.mnu_exit_Click();
    if (name == QLatin1String("mnu_SSetup"))
        return chain_.mnu_SSetup_Click();
    try {
        if (name == QLatin1String("mnu_setup")) {
            try {
                preferencesForm().showModal();
            } catch (const std::exception& e) {
                prompts().ask(text(t::kPreferencesErrorPrefix) + QString::fromLocal8Bit(e.what()));
            }
        } else if (name == QLatin1String("mnu_veskh")) {
            mnu_veskh_Click();
        } else if (name == QLatin1String("mnu_avesk")) {
            mnu_avesk_Click();
        } else if (const MenuCommand command = menuCommand(name)) {
            command(*this);
        }
    } catch (const std::exception& e) {
        prompts().ask(text(t::kErrorPrefix) + QString::fromLocal8Bit(e.what()), Buttons::Ok,
                      Icon::Information);
    }
}

QAction* FRMMAINMENU::item(const QString& name) const {
    return items_.value(name);
}

bool FRMMAINMENU::isBuilt(const QString& name) const {
    if (name == toolbarButtonName(3))
        return isBuilt(QStringLiteral("mnu_cgroups"));
    if (name.startsWith(QLatin1String("Toolbar1_")))
        return true;
    if (kOwnCommands.contains(name) || isSubmenu(name))
        return true;
    if (name == QLatin1String("mnu_SSetup"))
        return bool(studySetupOpener());
    return bool(menuCommand(name));
}

void FRMMAINMENU::refresh(const QString& name) {
    QAction* action = items_.value(name);
    if (!action)
        return;
    const bool built = isBuilt(name);
    action->setEnabled(logical_.value(name, true) && built);
    action->setStatusTip(built ? QString() : text(kNotBuiltTip));
}

void FRMMAINMENU::refreshAll() {
    for (auto it = items_.cbegin(); it != items_.cend(); ++it)
        refresh(it.key());
}

void FRMMAINMENU::showFrame() {
    refreshAll(); // commands registered since the frame was built
    chain_.Form_Load();
    QCoreApplication::processEvents();
    show();
}

void FRMMAINMENU::setTimerEnabled(bool enabled) {
    if (enabled)
        Timer1->start();
    else
        Timer1->stop();
}

bool FRMMAINMENU::isTimerEnabled() const {
    return Timer1->isActive();
}

void FRMMAINMENU::showErrorViewer() {
    if (const MenuCommand& viewer = errorViewerOpener()) {
        viewer(*this);
        return;
    }
    // Without the viewer form, the store is listed in a message of its own.
    QStringList lines{QStringLiteral("S.No\tError Number\tError Description\tError Source")};
    const Cell& store = ErrStore();
    if (store.isArray()) {
        const CellArray& rows = store.array();
        for (int i = 0; i < rows.size(0); ++i)
            lines << QStringLiteral("%1\t%2\t%3\t%4")
                         .arg(i + 1)
                         .arg(rows(i, 0).toString(), rows(i, 1).toString(), rows(i, 2).toString());
    }
    prompts().ask(lines.join(QLatin1Char('\n')), Buttons::Ok, Icon::Information, text(t::kInitErrorTitle));
}

void FRMMAINMENU::showStudySetup(bool newDatabase) {
    if (const StudySetupOpener& opener = studySetupOpener()) {
        opener(*this, newDatabase);
        return;
    }
    prompts().ask(text(t::kStudySetupNotBuilt), Buttons::Ok, Icon::Information, text(t::kNotBuiltTitle));
}

void FRMMAINMENU::endProgram() {
    if (ending_)
        return;
    ending_ = true;
    Timer1->stop();
    mdiArea_->closeAllSubWindows();
    if (end_) {
        end_();
        return;
    }
    QApplication::closeAllWindows();
    QCoreApplication::exit(0);
}

void FRMMAINMENU::closeEvent(QCloseEvent* event) {
    // Closing the frame unloads every form and ends the program.
    event->accept();
    endProgram();
}

void FRMMAINMENU::setMenuEnabled(const QString& name, bool enabled) {
    logical_.insert(name, enabled);
    refresh(name);
}

bool FRMMAINMENU::isMenuEnabled(const QString& name) const {
    return logical_.value(name, true);
}

void FRMMAINMENU::setMenuCaption(const QString& name, const QString& caption) {
    if (QAction* action = items_.value(name))
        action->setText(caption);
}

QString FRMMAINMENU::menuCaption(const QString& name) const {
    const QAction* action = items_.value(name);
    return action ? action->text() : QString();
}

void FRMMAINMENU::mnu_veskh_Click() {
    const QString help = QDir(chain_.programFolder()).filePath(QStringLiteral("veskhelp.hlp"));
    if (!QFileInfo(help).isFile()) {
        prompts().ask(text(t::kHelpMissing) + QLatin1Char('\n') + QDir::toNativeSeparators(help), Buttons::Ok,
                      Icon::Warning, text(t::kNotBuiltTitle));
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(help)))
        prompts().ask(text(t::kHelpNotOpened) + QLatin1Char('\n') + QDir::toNativeSeparators(help),
                      Buttons::Ok, Icon::Warning, text(t::kNotBuiltTitle));
}

void FRMMAINMENU::mnu_avesk_Click() {
    frmAbout about(this);
    about.exec();
}

} // namespace vesk
