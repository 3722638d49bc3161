#pragma once
// The N leading causes of a unit: the causes ranked by a measure summed over the age-sex groups, with
// each cause's share of the total of all causes (not of the N shown).
//
//   FnCauseTotals  (years, 0, DAPs, causes, 0..2): slot 0 the cause, slot 1 the sum of the measure's
//                  slot over the groups of the chosen units, slot 2 the share in per cent as the text
//                  "0.000", or the number 0 when the total is not above 0
//   the report     (causes, 0..3): code, description, value, share; sorted on the share, descending,
//                  by an exchange sort without a second key (a tie keeps the order of the causes as far
//                  as the exchanges leave it), cut to the first N rows

#include "database/db_connection.h"
#include "platform/cell.h"
#include "platform/cell_array.h"
#include "platform/progress.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace vesk {

class Computation;


// FnCauseTotals over a six-dimensional result and its label array (the cause codes in entry 3), for
// the measure slot `slot` (2 or 3; any other gives Empty); `unit`, `dap` and `year` restrict the sums
// to one index each when given. A value that is no number (Null) goes to the error store and adds
// nothing.
Cell FnCauseTotals(const Cell& result, const Cell& labels, int slot, std::optional<int> unit = std::nullopt,
                   std::optional<int> dap = std::nullopt, std::optional<int> year = std::nullopt,
                   Progress* bar = nullptr);

// FnSortMtx: the rows of a two-dimensional matrix in the order of column `column`, read as numbers
// through their text; `direction` 0 descending, anything else ascending. An exchange sort: row i
// against every row below it, rows swapped whole when strictly out of order.
void FnSortMtx(CellArray& matrix, int column, int direction);

// FnMoveCol: the matrix with column `from` moved to `to`, the columns between shifted by one.
CellArray FnMoveCol(const CellArray& matrix, int from, int to);

// FnDiseaseName: the Disease of a cause in _DctBDM; empty when there is none.
QString FnDiseaseName(const DbConnection& db, const QString& code);

// The report of year index `y` and DAP index `d` of FnCauseTotals: (rows, 0..3) as described above,
// at most `n` rows; `name` gives a cause's description.
CellArray leadingCausesReport(const Cell& totals, int y, int d, int n, const std::function<QString(const QString&)>& name);

// The heads of the report's columns for a measure ("IDALY", "PDALY", ...).
QStringList leadingCausesHeads(const QString& measure);

// The five measures a ranking can take, and where each stands in the computation: the result, its
// label array and the slot.
enum class BurdenMeasure { YLL, IYLD, PYLD, IDALY, PDALY };
std::optional<BurdenMeasure> burdenMeasureNamed(const QString& name); // "YLL" .. "PDALY", any case
QString burdenMeasureName(BurdenMeasure measure);
struct MeasureSource {
    Cell result;
    Cell labels;
    int slot = 0;
};
MeasureSource measureSource(const Computation& comp, BurdenMeasure measure);

// N as the report's box gives it: a whole number above 0 as it stands; an empty box or 0 asks "Enter a
// valid number for NLeading Cause" / "Do you want The Default as 10" under "Value foe N Leading cause
// not set", OK giving 10 and Cancel nothing.
std::optional<int> leadingCausesN(const QString& box);

struct LeadingCausesTable {
    QStringList heads;
    CellArray rows; // (rows, 0..3): code, description, value, share
};

// procNLeadCausDALY: the N leading causes of unit `unit` (a BPU, or an aggregate of a result rolled up
// by FnBPUToPag), year index `year` and DAP index `dap` of `source`. A result or label array that is
// no array shows "The present result cannot be shown. Please Calculate the daly again" and gives
// nothing; so does a Cancel of the question for N.
std::optional<LeadingCausesTable> procNLeadCausDALY(const MeasureSource& source, BurdenMeasure measure, int unit,
                                                    int year, int dap, const QString& nBox,
                                                    const std::function<QString(const QString&)>& name);

} // namespace vesk
