#include "burden/forms/calculators_open.h"

#include "burden/forms/frm_daly_cal.h"
#include "burden/forms/frm_yll_cal.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/forms/menu_commands.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

namespace vesk {

namespace {

// Shows a new window in the frame's area or as a window of its own.
void place(QWidget* form, QWidget* parent) {
    if (auto* area = qobject_cast<QMdiArea*>(parent)) {
        QMdiSubWindow* sub = area->addSubWindow(form);
        sub->setAttribute(Qt::WA_DeleteOnClose);
        sub->show();
        return;
    }
    if (parent)
        form->setParent(parent, Qt::Window);
    form->show();
}

// Brings an open window forward.
void raise(QWidget* form) {
    if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget())) {
        if (QMdiArea* area = sub->mdiArea())
            area->setActiveSubWindow(sub);
        sub->showNormal();
    } else {
        form->showNormal();
        form->raise();
        form->activateWindow();
    }
}

frmYLLCal* openTask(CalculatorTask task, QWidget* parent) {
    static QPointer<frmYLLCal> open[3];
    QPointer<frmYLLCal>& slot = open[static_cast<int>(task)];
    if (slot) {
        raise(slot);
        return slot;
    }
    slot = new frmYLLCal(task);
    place(slot, parent);
    return slot;
}

} // namespace

frmYLLCal* openYllCalculator(QWidget* parent) {
    return openTask(CalculatorTask::Yll, parent);
}

frmYLLCal* openIyldCalculator(QWidget* parent) {
    return openTask(CalculatorTask::Iyld, parent);
}

frmYLLCal* openPyldCalculator(QWidget* parent) {
    return openTask(CalculatorTask::Pyld, parent);
}

frmDALYCal* openDalyCalculator(QWidget* parent) {
    static QPointer<frmDALYCal> open;
    if (open) {
        raise(open);
        return open;
    }
    open = new frmDALYCal();
    place(open, parent);
    return open;
}

void registerCalculators() {
    registerMenuCommand(QStringLiteral("mnu_yllcal"), [](FRMMAINMENU& f) { openYllCalculator(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_yldcal"),
                        [](FRMMAINMENU& f) { openIyldCalculator(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_pyldcal"),
                        [](FRMMAINMENU& f) { openPyldCalculator(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_dcal"), [](FRMMAINMENU& f) { openDalyCalculator(f.mdiArea()); });
}

} // namespace vesk
