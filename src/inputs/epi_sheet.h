#pragma once
// The epidemiological sheets of the Inputs window: "By &Cause" (flex1, table DatADW) and
// "Sequelae" (grdSqle, table DatADWSqla, keyed by the sequela too). One row per YLD label of the
// study, in the order of the labels; the measures, each a number not below 0 or blank:
//
//   i     "Incidence"              incidence rate per person year
//   p     "Prevalence"             annual prevalence per person
//   ago   "Age of Onset"           average age at onset, in years
//   durn  "Duration"               average duration, in years
//   AGP   "Av. Age of Prev Cases"  average age of the prevalent cases, in years
//
// The rates are typed under their bases ("Incidence Rate Per:" so many person years, "Annual
// Prevalence Per:" so many persons) and stored per one, as the rates of the demographic sheets
// are: divided by the base, the point moved where the base is a power of ten.

#include "database/db_connection.h"
#include "inputs/demography_store.h"
#include "platform/cell_array.h"
#include "platform/grid_model.h"

#include <QStringList>

namespace vesk {

namespace epi_col {
inline constexpr int kAsg = 0;
inline constexpr int kIncidence = 1;
inline constexpr int kPrevalence = 2;
inline constexpr int kOnset = 3;
inline constexpr int kDuration = 4;
inline constexpr int kPrevalentAge = 5;
} // namespace epi_col

// The cause (and, on the sequela sheet, the sequela) in force, with the bases of the two rates.
struct EpiKey {
    SheetUnit unit;
    QString cause;
    QString sequela; // empty on the sheet by cause
    double incidenceBase = 1;
    double prevalenceBase = 1;
};

// A stored measure as the sheet shows it: the rates under their bases, the others as they stand.
QString shownMeasure(const EpiKey& key, int column, double stored);

// The heading row and a row per label.
void layoutEpiGrid(GridModel& grid, const QStringList& yldLabels);

// GetData: the stored rows of the key into the grid, the rates shown under their bases. Stored rows
// of another count than the labels raise the question of the age definitions (OK deletes the rows
// of the key, Cancel leaves them; either way the grid stays blank). True when the grid shows rows.
bool GetData(GridModel& grid, const EpiKey& key, DbConnection& db);

// The sequela sheet's look at the shares of its sequela in DatCSMSqla, a table that stands in no
// definition of the study file: the engine's refusal ("3078 ...", its number and words) when the
// file does not hold it, else nothing.
std::optional<QString> lookAtSequelaShares(const EpiKey& key, DbConnection& db);

// Commitdata. With HoldInMem the grid goes into `memory` (a row per label: ASG, i, p, ago, durn, AGP,
// BPU id, year, cause, date) and no table changes; otherwise the rows of the key are added (none
// there) or edited in step (all there), in one transaction, a blank measure stored as Null, and the
// count reported. A cell that is no number from 0 up is refused on its cell.
ConfirmResult Commitdata(const GridModel& grid, const EpiKey& key, bool holdInMem, CellArray& memory,
                         DbConnection& db);

} // namespace vesk
