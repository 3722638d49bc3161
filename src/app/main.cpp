#include "platform/forms/qt_services.h"

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VESK"));
    vesk::QtPromptService promptService;
    vesk::setPromptService(&promptService);
    vesk::QtSoundService soundService;
    vesk::setSoundService(&soundService);
    // The frame with its loading chain takes this place as soon as it is built.
    QMainWindow frame;
    frame.setWindowTitle(QStringLiteral("VESK- Health Loss Ledger"));
    frame.show();
    return app.exec();
}
