#include "study/forms/study_forms_register.h"

#include "shell/forms/frm_main_menu.h"
#include "shell/forms/menu_commands.h"
#include "study/forms/defpopunits.h"
#include "study/forms/frm_buld_main_cl_dic.h"
#include "study/forms/frm_cob.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QStyle>

namespace vesk {

namespace {

// Shows `form` inside the frame, in place of the one `slot` held before.
void showInFrame(FRMMAINMENU& frame, QWidget* form, QPointer<QMdiSubWindow>& slot) {
    if (!form)
        return;
    if (slot)
        slot->close();
    form->setAttribute(Qt::WA_DeleteOnClose);
    const QSize wanted = form->size(); // the form's own opening size, not the area's guess
    slot = frame.mdiArea()->addSubWindow(form);
    slot->setAttribute(Qt::WA_DeleteOnClose);
    slot->show();
    slot->resize(wanted + slot->size() - slot->contentsRect().size() +
                 QSize(0, slot->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, slot)));
}

} // namespace

void registerStudyDefinitionForms() {
    static QPointer<QMdiSubWindow> units, dictionary, outline;
    registerMenuCommand(QStringLiteral("mnu_BPUES"),
                        [](FRMMAINMENU& frame) { showInFrame(frame, defpopunits::open(), units); });
    registerMenuCommand(QStringLiteral("mnu_cgroups"),
                        [](FRMMAINMENU& frame) { showInFrame(frame, FRMBULDMAINCLDIC::open(), dictionary); });
    registerMenuCommand(QStringLiteral("mnu_CauseGrps"), [](FRMMAINMENU& frame) {
        showInFrame(frame, frmCOB::open(frmCOB::Mode::Causes), outline);
    });
    registerMenuCommand(QStringLiteral("mnu_popunits_outline"), [](FRMMAINMENU& frame) {
        showInFrame(frame, frmCOB::open(frmCOB::Mode::Population), outline);
    });
}

} // namespace vesk
