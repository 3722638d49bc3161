#pragma once
// The import of the cause-of-death sheet: from a worksheet (the range named after the unit), a
// dBase table, a database table (its name asked for) or a text file (";" between fields, its first
// line naming them), laid out as BPUID, Year, COBCd and one column per YLL label holding the
// proportions. The rows of the unit, year and each cause of the sheet fill its row, label by label;
// a file whose labels are not those of the sheet asks whether to take the sheet's labels only (No
// ends the import). Figures are not tested cell by cell (Confirm tests them); they are shown as the
// shortest text that reads back to the same double, not rounded to eight decimals, so that nothing
// imported is lost on the way to the table.

#include "inputs/demography_store.h"
#include "platform/grid_model.h"

namespace vesk {

struct CauseImport {
    SheetUnit unit;
    QString path;
    QString table; // a database file's table; empty to ask for it
};

// True when the file's proportions went into the grid; false when the import ended (its message
// shown) or the user answered No.
bool importCauses(const CauseImport& import, GridModel& grid);

} // namespace vesk
