// The desktop program: the splash, then the main frame, whose timer runs the loading chain.

#include "platform/forms/qt_services.h"
#include "shell/forms/form_registry.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/forms/frm_splash.h"
#include "shell/study_backend.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VESK"));
    QApplication::setApplicationVersion(QStringLiteral(VESK_VERSION));

    vesk::QtPromptService promptService;
    vesk::setPromptService(&promptService);
    vesk::QtSoundService soundService;
    vesk::setSoundService(&soundService);

    // The study database behind the loading chain, and the forms of the layers below in the menu.
    vesk::DatabaseStudyBackend databaseBackend;
    vesk::setStudyBackend(&databaseBackend);
    vesk::registerForms();

    vesk::FRMMAINMENU frame;
    vesk::frmSplash splash([&frame] { frame.showFrame(); });
    splash.show();
    const int code = app.exec();
    vesk::setPromptService(nullptr);
    vesk::setSoundService(nullptr);
    vesk::setStudyBackend(nullptr);
    return code;
}
