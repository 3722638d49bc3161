#pragma once
// The menu items of the standard life tables: File -> Import -> User Defined Standard Life Table
// (Mnu_SubMnu_UsrStdLftbl) and File -> Export -> Life Tables -> Standard Life Table - KRO / - WHO
// (mnu_expKROLTS, mnu_expWHOLTS) and - User Defined Standard Life Table (mnu_expUstrLTS, which does
// nothing, not even its dialog, while there is no user table). Each asks for the file (the dialogs start in the import folder
// and offer the five kinds) and leaves the rest to the core: user_life_table_import.h,
// standard_table_export.h. A dialog cancelled does nothing.

#include <array>

namespace vesk {

void Mnu_SubMnu_UsrStdLftbl_Click();
void mnu_expKROLTS_Click();
void mnu_expWHOLTS_Click();
void mnu_expUstrLTS_Click();

// The items and their commands, for the frame to register.
struct StandardTableCommand {
    const char* item;
    void (*run)();
};
const std::array<StandardTableCommand, 4>& standardTableCommands();

} // namespace vesk
