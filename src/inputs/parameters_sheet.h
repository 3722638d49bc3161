#pragma once
// The demographic parameters sheet of the Inputs window (msflgDP): one row for the unit and year in
// force, with the Coale-Demeny family of the model life tables ("West", "South", "North", "East",
// chosen from the pop-up of the cell), the population growth rate (a decimal: 0.02 is 2 % a year)
// and the infant mortality rate per 1,000 live births. Stored in DatDmgphyPrmtrs (BPUID, YEAR,
// Cdmdl, PGR, IMR).
//
// Confirm checks the row (a family of the four, a growth rate, an infant mortality rate not below
// 0: "Please enter valid input" on the first cell that fails), then adds the row, or, when the unit
// and year have one, asks before it edits it; No leaves the table as it was.

#include "database/db_connection.h"
#include "inputs/demography_store.h"
#include "platform/grid_model.h"

namespace vesk {

namespace parameters_col {
inline constexpr int kFamily = 0;
inline constexpr int kGrowth = 1;
inline constexpr int kInfantMortality = 2;
} // namespace parameters_col

// One heading row and one blank row of three columns.
void layoutParametersGrid(GridModel& grid);
// The four families, in the order of the pop-up.
QStringList coaleDemenyFamilies();
// The stored row of the unit and year into the grid; true when there was one.
bool loadParameters(GridModel& grid, const SheetUnit& unit, DbConnection& db);
// Confirm of the row: Refused (on a cell), Declined, Stored (added or edited) or Failed.
ConfirmResult confirmParameters(const GridModel& grid, const SheetUnit& unit, DbConnection& db);

} // namespace vesk
