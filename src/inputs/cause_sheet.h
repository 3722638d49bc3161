#pragma once
// The cause-of-death sheet of the Inputs window (msflgCOD): the cause-specific mortality
// proportions (CSMP) of the unit and year in force, the share of the deaths of one age-sex group
// that falls to one cause. One row per cause of the study and a last row "Total"; the fixed columns
// COBCd and Disease, then one column per YLL label (all female labels, then all male ones). Stored
// in DatCSM (BPUID, YEAR, COBCd, ASG, CSMP, UpdDt).
//
// A cell holds a proportion from 0 to 1; a typed value outside is refused and cannot be let through.
// The proportions of a column should add to 1: a column whose sum differs from 1 by more than 1e-9
// (far above what the rounding of proportions of up to 15 digits adds, far below any typing slip,
// so 0.9999 is not 1) is reported, and Confirm asks whether to go on anyway. Figures are shown as
// the shortest text that reads back to the same double.

#include "database/db_connection.h"
#include "inputs/demography_store.h"
#include "platform/grid_model.h"

#include <QList>
#include <QStringList>

namespace vesk {

struct StudyCause {
    QString code;
    QString name;
};

inline constexpr int kCauseFixedCols = 2; // COBCd, Disease
inline constexpr double kSumToOneTolerance = 1e-9;

// The heading row, a row per cause, the row "Total"; a column per label.
void layoutCauseGrid(GridModel& grid, const QList<StudyCause>& causes, const QStringList& labels);

// A value typed into a cell: whether it is a proportion from 0 to 1 (a blank is one).
bool isProportion(const QString& typed);

// "Add Totals": the sums of every label column into the row "Total". True when all of them are 1.
bool procAddTotals(GridModel& grid);

// The buttons: Add Totals shows its message only when a sum is not 1; Check Totals also when all are.
bool addTotals(GridModel& grid);
bool checkTotals(GridModel& grid);

// The stored proportions of the unit and year; labels outside the sheet are not shown. True when
// the table held rows of the unit and year.
bool loadCauses(GridModel& grid, const SheetUnit& unit, DbConnection& db);

// Confirm: the sum-to-one question (No: Declined), a proportion outside 0 to 1 refused on its cell,
// the one question about rows already there (No: Declined), then one transaction: a row there is
// edited (a blank becomes 0), a new one added unless its value is 0 or blank.
ConfirmResult confirmCauses(GridModel& grid, const SheetUnit& unit, DbConnection& db);

} // namespace vesk
