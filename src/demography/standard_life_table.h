#pragma once
// The standard life table that the settings choose, for the calculators, the computation and the
// command-line tool alike: [LIFE TABLE TYPE] 1 the KRO table, 2 the user defined one, 3 the WHO
// table. The numbers run KRO, user, WHO; any other value keeps the KRO table, as the settings start.

#include "foundation/settings.h"
#include "platform/cell_array.h"

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

} // namespace vesk
