// The desktop program: the splash, then the main frame, whose timer runs the loading chain.

#include "burden/forms/calculators_open.h"
#include "database/database_backend.h"
#include "platform/forms/qt_services.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/forms/frm_shw_cnt_mem.h"
#include "shell/forms/frm_splash.h"
#include "study/forms/definestudy1_register.h"
#include "study/forms/study_forms_register.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VESK"));
    QApplication::setApplicationVersion(QStringLiteral(VESK_VERSION));

    vesk::QtPromptService promptService;
    vesk::setPromptService(&promptService);
    vesk::QtSoundService soundService;
    vesk::setSoundService(&soundService);

    // The study database behind the loading chain, and the viewers of the run log.
    vesk::DatabaseStudyBackend databaseBackend;
    vesk::setStudyBackend(&databaseBackend);
    vesk::registerRunLogViewers();
    vesk::registerCalculators();
    vesk::registerStudySetup();
    vesk::registerStudyDefinitionForms();

    vesk::FRMMAINMENU frame;
    vesk::frmSplash splash([&frame] { frame.showFrame(); });
    splash.show();
    const int code = app.exec();
    vesk::setPromptService(nullptr);
    vesk::setSoundService(nullptr);
    vesk::setStudyBackend(nullptr);
    return code;
}
