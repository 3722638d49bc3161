#pragma once
// The standard life expectancy at a fractional age, read from a standard life table.

#include "platform/cell_array.h"

#include <QString>

namespace vesk {

// FnLifeExpAt = e(x) + (a-x)*(e(x+1)-e(x)), x = Int(a): linear interpolation of the standard life
// expectancy (Murray CJL, Bull WHO 1994;72(3):429-445, where the standard is Coale-Demeny West
// levels 26 and 25) at the fractional age a (years), read from a standard life table MtxLTS of rows
// (age, female e(x), male e(x)), one row per single year of age. Units: years. Returns a single
// float.
//   Column: "F" 1, "M" 2, "P" 3; any other letter (compared exactly) reads column 0, the age.
//   If Int(a) (towards minus infinity) equals the age of the LAST row, that row's value is returned
//   and the fraction ignored (85.7 on a table ending at 85 gives e(85)). Otherwise the first row i
//   whose age equals Int(a) gives LT(i) + (a - Int(a))*(LT(i+1) - LT(i)): linear interpolation on a
//   one-year base, whatever the spacing of the rows. No such row (an age above the last row, below
//   the first, or between the rows of an abridged table): 0.
// Cells are read as numbers by the lenient parse (the settings file keeps them as text).
// This function has no error handler of its own: a subscript error (a "P" on a three-column table,
// or a table that is not a two-dimensional matrix with rows) throws std::out_of_range whose what()
// is "Subscript out of range", for the caller's handler, which stores it as error 9
// (runtime_error::kSubscriptOutOfRange) under its own name.
float FnLifeExpAt(const CellArray& MtxLTS, float a, const QString& sexLetter);

} // namespace vesk
