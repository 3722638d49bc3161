// The desktop program: the splash, then the main frame, whose timer runs the loading chain.

#include "platform/forms/qt_services.h"
#include "platform/program_end.h"
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
    // A routine below the frame whose rules end the program ends it through the frame.
    struct FrameEnd : vesk::ProgramEnd {
        vesk::FRMMAINMENU& frame;
        explicit FrameEnd(vesk::FRMMAINMENU& f) : frame(f) {}
        void end() override { frame.endProgram(); }
    } frameEnd(frame);
    vesk::setProgramEnd(&frameEnd);
    vesk::frmSplash splash([&frame] { frame.showFrame(); });
    splash.show();
    const int code = app.exec();
    vesk::setProgramEnd(nullptr);
    vesk::setPromptService(nullptr);
    vesk::setSoundService(nullptr);
    vesk::setStudyBackend(nullptr);
    return code;
}
