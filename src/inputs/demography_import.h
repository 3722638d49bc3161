#pragma once
// The import of the population and death-rate sheets from the five kinds of foreign file: a Lotus
// or Excel worksheet (the rows in a named range whose name is the BPU id, matched without regard to
// case), a dBase table, a text file (fields split at ";", no row of names) or a table of a database
// file (its name asked for). The fields go by position: BPU id, year, lower age (BAI), male, female,
// date.
//
// Each kind first asks whether the file is laid out so; No ends the import. Then the tests, each of
// which ends it with its message: rows of the unit; every row of the unit in force and of the study
// year (a worksheet's range must hold no other, a text file's first row names its unit); no more
// rows than the sheet has ages; every age one of the sheet's. The figures go into the grid as they
// stand in the file, under the scale of the sheet (a file holds what the table holds: a population,
// a rate per one), and need Confirm like typed ones.

#include "inputs/demography_store.h"
#include "platform/grid_model.h"

#include <QString>

namespace vesk {

struct DemographyImport {
    DemographyKind kind = DemographyKind::Population;
    SheetUnit unit;
    QString path;        // the file chosen
    QString table;       // a database file's table; empty to ask for it
    double scale = 1;    // the multiplier or denominator in force, for showing the figures
};

// True when the figures of the file went into the grid; false when the import ended (its message
// shown) or the user answered No.
bool importDemography(const DemographyImport& import, GridModel& grid);

// The title of the import's file dialog for a sheet, the generic word at its end.
QString importTitle(DemographyKind kind, const QString& term);

} // namespace vesk
