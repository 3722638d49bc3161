#include "study/forms/definestudy1_register.h"

#include "shell/forms/frm_main_menu.h"
#include "shell/forms/menu_commands.h"
#include "study/forms/definestudy1.h"

namespace vesk {

void registerStudySetup() {
    setStudySetupOpener(
        [](FRMMAINMENU& frame, bool newDatabase) { DEFINESTUDY1::open(&frame, newDatabase); });
}

} // namespace vesk
