#include "study/forms/study_forms_register.h"

#include "shell/forms/frm_main_menu.h"
#include "shell/forms/menu_commands.h"
#include "shell/forms/show_in_frame.h"
#include "study/forms/defpopunits.h"
#include "study/forms/frm_buld_main_cl_dic.h"
#include "study/forms/frm_cob.h"

#include <QPointer>

namespace vesk {

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
