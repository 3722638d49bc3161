#pragma once
// What the frame's menu opens. The frame carries its own commands (File -> New, Open, Close,
// Preferences, Exit, Help and About); every other form of the program is made reachable by
// registering the command of its menu item here, before the frame is built (form_registry.h wires
// the forms of the layers below). An item with no command stays disabled whatever state the menu
// is in.
//
// Two forms are asked for by the frame's own logic rather than by a menu item: Study Setup (after
// File -> New and from Study -> Setup) and the error viewer frmgridtest (at the end of the loading
// chain). Openers are registered for them.

#include <QString>
#include <functional>

namespace vesk {

class FRMMAINMENU;

using MenuCommand = std::function<void(FRMMAINMENU& frame)>;

// Registers the command of the menu item `itemName` (an object name of the menu tree).
void registerMenuCommand(const QString& itemName, MenuCommand command);
// The command of `itemName`, or an empty function.
MenuCommand menuCommand(const QString& itemName);

// Study Setup; `newDatabase` opens it with the tabs for a first study only.
using StudySetupOpener = std::function<void(FRMMAINMENU& frame, bool newDatabase)>;
void setStudySetupOpener(StudySetupOpener opener);
const StudySetupOpener& studySetupOpener();

// The error viewer, listing ErrStore; it takes its copy of the store when it opens.
void setErrorViewerOpener(MenuCommand opener);
const MenuCommand& errorViewerOpener();

// Forgets every registration (tests).
void clearMenuCommands();

} // namespace vesk
