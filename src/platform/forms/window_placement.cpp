#include "platform/forms/window_placement.h"

#include <QMdiArea>
#include <QStyle>

namespace vesk {

QMdiSubWindow* placeInArea(QMdiArea* area, QWidget* form, OpeningSize size) {
    // A form that set its own opening size keeps it; the area would guess one from the size hint.
    const bool sized = size == OpeningSize::FormsOwn && form->testAttribute(Qt::WA_Resized);
    const QSize wanted = form->size();
    QMdiSubWindow* sub = area->addSubWindow(form);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->show();
    if (sized)
        sub->resize(wanted + sub->size() - sub->contentsRect().size() +
                    QSize(0, sub->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, sub)));
    return sub;
}

void showSingleInArea(QMdiArea* area, QWidget* form, QPointer<QMdiSubWindow>& slot) {
    if (!form)
        return;
    if (slot)
        slot->close();
    form->setAttribute(Qt::WA_DeleteOnClose);
    slot = placeInArea(area, form, OpeningSize::FormsOwn);
}

void placeWindow(QWidget* form, QWidget* parent) {
    if (auto* area = qobject_cast<QMdiArea*>(parent)) {
        placeInArea(area, form, OpeningSize::AreaGuess);
        return;
    }
    if (parent)
        form->setParent(parent, Qt::Window);
    form->show();
}

void raiseWindow(QWidget* form) {
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

void placeBesideOpener(QWidget* opener, QWidget* form) {
    for (QWidget* w = opener ? opener->parentWidget() : nullptr; w; w = w->parentWidget())
        if (auto* area = qobject_cast<QMdiArea*>(w)) {
            placeInArea(area, form, OpeningSize::FormsOwn);
            return;
        }
}

} // namespace vesk
