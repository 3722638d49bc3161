#pragma once
// Single-year series: the study's population and deaths, entered in its own age groups, turned into
// values by single year of age for each unit, year and sex, by Sprague's subdivision (sprague.h),
// falling back, silently, to even spreading where Sprague's method overshoots below zero. The open
// group is kept as the last single year.
//
// "Choice For Five Years" says how the first five years are grouped: 0 one group 0-4; 1 two, 0 and
// 1-4; 2 three, 0, 1 and 2-4. Sprague's subdivision needs five-year groups, so the first rows are
// added into one 0-4 group first (with 2 the vector has two elements fewer than the rows).

#include "demography/sprague.h"
#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QList>
#include <optional>

namespace vesk {

// Newp: the single-year form of a basic array (year, unit, age row, column; columns kBai 0 start age,
// kWidth 1 width ("W" in the open row), 2 female, 3 male, 4 both). For each year and unit whose
// first cell is neither Empty nor Null: the male and the female columns as group vectors (the first
// rows merged as `choiceFiveYears` says), FnSprague with KeepOpen 1, on a negative stop
// FnSpreadUniform over the start ages of the same vector. Both results must be arrays of the same
// length, else that year and unit stay empty; the first sizes the result (year, unit, single year,
// the same columns), and later ones of another length stay empty. Each single-year row holds its age,
// its width (1, "W" in the open row), female, male and their sum. A non-array: "Input Data is not an
// Array" and Empty. `panels` read from the settings file at each call when not given.
Cell Newp(const Cell& basic, int choiceFiveYears, const SpraguePanels* panels = nullptr);

// One record of BuildSnglYr, in and out: unit, year, age, male, female, date.
struct SingleYearRecord {
    Cell bpu, year, age, male, female, date;
};

// BuildSnglYr: the records of each unit and year (in age order, as given) to one record for each
// single year, the date the latest of the unit's rows. A unit with fewer than six rows says "les than
// 5 rows" and yields nothing; so does one whose two sexes give series of different lengths.
void BuildSnglYr(const QList<SingleYearRecord>& rows, QList<SingleYearRecord>& out,
                 const SpraguePanels* panels = nullptr);

// The single-year series of one group vector: Sprague, else even spreading over `ageBreaks`; the
// integer 0 when the vector is too short.
Cell singleYearSeries(const CellArray& groups, const CellArray& ageBreaks, const SpraguePanels* panels);

} // namespace vesk
