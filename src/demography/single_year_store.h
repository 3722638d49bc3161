#pragma once
// BuildSnglYr1: the batch builder that keeps a table of single-year values up to date from a table
// of values by age group, unit by unit, in the database of the study.
//
// Source rows: BPUID, YEAR, M, F, upddt, one for each age group of a unit, in age order (the order
// they were stored in). Target rows: BPUID, YEAR, Bai (single year from 0), m, f, ESTDT (the
// source's latest upddt at the time of the estimate). For each unit of `units`:
//   - no source rows: next unit;
//   - the target holds an estimate (max ESTDT) and the source's latest upddt is not later: up to date;
//   - later: the unit's target rows are deleted and built again; on this path each female value and
//     then the number of rows are shown in a plain box as they are collected, as the builder always
//     did;
//   - the male and the female series: FnSprague with the open group kept, on a negative stop even
//     spreading over `ageBreaks` (the start ages of the study's groups) silently; too few rows say
//     "les than 5 rows" and go to the next unit;
//   - the unit's rows go in as one transaction.
// A failure shows the engine's words in a plain box and stops the loop; false then. The two
// entry points: BuildSnglYrPop ("POP" to "POPSNGYLR") and BuildSnglYrDth ("ASDR" to "DthSnglYr").

#include "database/db_connection.h"
#include "demography/sprague.h"
#include "platform/cell_array.h"

namespace vesk {

bool BuildSnglYr1(const DbConnection& db, const CellArray& units, const QString& source, const QString& target,
                  const CellArray& ageBreaks, const SpraguePanels* panels = nullptr);

bool BuildSnglYrPop(const DbConnection& db, const CellArray& units, const CellArray& ageBreaks);
bool BuildSnglYrDth(const DbConnection& db, const CellArray& units, const CellArray& ageBreaks);

} // namespace vesk
