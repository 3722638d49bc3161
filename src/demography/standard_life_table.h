#pragma once
// The standard life table that the settings choose, for the calculators, the computation and the
// command-line tool alike: [LIFE TABLE TYPE] 1 the KRO table, 2 the user defined one, 3 the WHO
// table. The numbers run KRO, user, WHO; any other value keeps the KRO table, as the settings start.

#include "foundation/settings.h"
#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>

namespace vesk {

// Why the chosen table cannot serve.
enum class StandardLifeTableLack {
    None,         // the table is there
    NoUserTable,  // the user defined table is chosen and none is loaded
    MissingBlock, // a fixed table is chosen and the settings hold none (its block was not read)
};

struct StandardLifeTable {
    // The chosen table: nullptr for NoUserTable; for MissingBlock the empty table the settings hold,
    // so that a reader of it fails where it reads.
    const CellArray* table = nullptr;
    StandardLifeTableLack lack = StandardLifeTableLack::None;
    const char* block = nullptr; // the settings block of the choice, "[Standard Life Table-KRO]"...
};

// The standard life table that s.LifeTblType chooses: the user's table is that of the preferences,
// when one is loaded and is an array.
StandardLifeTable standardLifeTable(const VeskSettings& s = settings(),
                                    const PreferencesControls& p = preferences());

// The user defined table as a matrix at this moment: a copy of the table of the preferences, or a
// cell that holds no array (Empty) when none is loaded.
Cell GetUsrLifeTable(const PreferencesControls& p = preferences());

// The note that Preferences shows beside the choice `lifeTblType`: what the table is and where its
// numbers come from. Any number but 2 and 3 is the KRO table, as for standardLifeTable.
QString standardLifeTableNote(int lifeTblType);

// The three tables of a settings file as its reader loads them (FnReadLTS: KRO, WHO, and the user
// table when the file holds one), with [LIFE TABLE TYPE] (0 when the file names none of 1, 2, 3)
// and the user table's source name UsrLTSTblNm (its default when the file names none), for a
// reader of the tables alone, such as the command-line tool. False, with the reason in `error`,
// when the file cannot be read.
bool readStandardLifeTables(const QString& settingsFile, VeskSettings& s, PreferencesControls& p,
                            QString* error);

} // namespace vesk
