#pragma once
// What the tests of the preferences form share: the program up and Ready with the form installed,
// the form opened as a user opens it (the toolbar's "Setup") and closed again, the gestures on its
// fields and tabs, and the settings file's lines read back.

#include "frame_fixture.h"
#include "grid_gestures.h"
#include "shell/forms/frm_vesk_setup.h"
#include "shell/frame_menu_tree.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>
#include <functional>

namespace vesk::test {

struct PreferencesProgram : ReadyProgram {
    // Ready, with the preferences window installed as the frame's.
    bool start() { return ReadyProgram::start(installPreferencesForm); }

    // Opens the form with the toolbar's "Setup", does `steps` in it, then presses Close (when `close`)
    // and returns once the form is gone. False when the form did not come up.
    bool inForm(const std::function<void(frmVESKSetup&)>& steps, bool close = true) {
        bool ran = false;
        QTimer::singleShot(0, [&] {
            frmVESKSetup* f = nullptr;
            if (!QTest::qWaitFor([&] {
                    f = qobject_cast<frmVESKSetup*>(QApplication::activeModalWidget());
                    return f != nullptr;
                }))
                return;
            f->activateWindow();
            if (!QTest::qWaitForWindowActive(f) || !QTest::qWaitFor([f] { return f->isActiveWindow(); }))
                qWarning("the preferences did not become active");
            steps(*f);
            ran = true;
            if (close && f->isVisible())
                QTest::mouseClick(f->cmdClose, Qt::LeftButton);
            if (f->isVisible())
                f->hide(); // a test that failed inside leaves the form: it must not stay up
        });
        program->frame().item(toolbarButtonName(1))->trigger();
        return ran;
    }

    // Applies, then waits for the loading chain that Apply arms to have run again.
    bool applyAndReload(frmVESKSetup& f) {
        QTest::mouseClick(f.cmdApply, Qt::LeftButton);
        return program->frame().isTimerEnabled() && program->waitForChain();
    }

    // The settings file's lines, without their CR LF; `n` counts from 1 as the file's layout does.
    QStringList lines() const {
        QFile in(folder.stpPath());
        if (!in.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(in.readAll()).split(QStringLiteral("\r\n"));
    }
    QString line(int n) const { return lines().value(n - 1); }
    // The line `n` lines after the heading `heading`.
    QString after(const QString& heading, int n = 1) const {
        const QStringList l = lines();
        const qsizetype at = l.indexOf(heading);
        return at < 0 ? QStringLiteral("<no %1>").arg(heading) : l.value(at + n);
    }
};

// Replaces a field's text by typing: the field takes the focus, its text is selected and typed over.
inline void typeOver(QLineEdit* edit, const QString& text) {
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(edit, Qt::Key_Delete);
    else
        QTest::keyClicks(edit, text);
}

// Leaves a field for another control, as a click or Tab does.
inline void leaveFor(QWidget* next) {
    next->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
}

// A click on a tab of a tab widget.
inline void clickTab(QTabWidget* tabs, int index) {
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(index).center());
    QCoreApplication::processEvents();
}

// A click on an option's round, where the user clicks it.
inline void clickOption(QAbstractButton* option) {
    QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(8, option->height() / 2));
}

} // namespace vesk::test
