#pragma once
// The import of the epidemiological sheets: from a worksheet (the range named after the unit), a
// dBase table, a database table (its name asked for) or a text file (";" between fields), the fields
// by position: BPU id, year, cause, [sequela, on the sequela sheet,] age-sex group, incidence,
// prevalence, age of onset, duration, average age of the prevalent cases. The rows of the unit,
// year, cause (and sequela) fill the sheet's rows by their labels, the rates shown under the bases
// in force; they need Confirm like typed ones. The question of the kind first (No ends), then the
// tests, each ending the import with its message: a source without rows, none of the unit and year,
// a text file of another unit, a label that is not one of the sheet's.

#include "inputs/epi_sheet.h"

namespace vesk {

struct EpiImport {
    EpiKey key;     // the unit, cause, sequela and bases in force
    QString path;
    QString table;  // a database file's table; empty to ask for it
};

bool importEpi(const EpiImport& import, GridModel& grid);

} // namespace vesk
