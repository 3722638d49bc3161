#include "shell/forms/menu_commands.h"

#include <QHash>

namespace vesk {

namespace {

QHash<QString, MenuCommand>& registry() {
    static QHash<QString, MenuCommand> commands;
    return commands;
}

StudySetupOpener& studySetup() {
    static StudySetupOpener opener;
    return opener;
}

MenuCommand& errorViewer() {
    static MenuCommand opener;
    return opener;
}

} // namespace

void registerMenuCommand(const QString& itemName, MenuCommand command) {
    registry().insert(itemName, std::move(command));
}

MenuCommand menuCommand(const QString& itemName) {
    return registry().value(itemName);
}

void setStudySetupOpener(StudySetupOpener opener) {
    studySetup() = std::move(opener);
}

const StudySetupOpener& studySetupOpener() {
    return studySetup();
}

void setErrorViewerOpener(MenuCommand opener) {
    errorViewer() = std::move(opener);
}

const MenuCommand& errorViewerOpener() {
    return errorViewer();
}

void clearMenuCommands() {
    registry().clear();
    studySetup() = {};
    errorViewer() = {};
}

} // namespace vesk
