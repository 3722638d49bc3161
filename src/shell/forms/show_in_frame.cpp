#include "shell/forms/show_in_frame.h"

#include "shell/forms/frm_main_menu.h"

#include <QMdiArea>
#include <QStyle>

namespace vesk {

void showInFrame(FRMMAINMENU& frame, QWidget* form, QPointer<QMdiSubWindow>& slot) {
    if (!form)
        return;
    if (slot)
        slot->close();
    form->setAttribute(Qt::WA_DeleteOnClose);
    // A form that set its own opening size keeps it; the area would guess one from the size hint.
    const bool sized = form->testAttribute(Qt::WA_Resized);
    const QSize wanted = form->size();
    slot = frame.mdiArea()->addSubWindow(form);
    slot->setAttribute(Qt::WA_DeleteOnClose);
    slot->show();
    if (sized)
        slot->resize(wanted + slot->size() - slot->contentsRect().size() +
                     QSize(0, slot->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, slot)));
}

} // namespace vesk
