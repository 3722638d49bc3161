#pragma once
// The consistency check of a standard life table (the user defined table of the import and of
// Preferences): a matrix of rows of single years, columns 0 age, 1 female e(x), 2 male e(x).
//
// A table passes when it is a two-dimensional array of at least three columns, the age of its last
// row is 100, every age is the one before plus 1, and neither sex's expectancy rises from one row to
// the next (equal neighbours pass). Cells are compared as numbers, texts through the lenient parse,
// since a table read from a text file holds texts. `FnLifeExpAt` serves single years only, which is
// why an abridged table fails.

#include "platform/cell.h"
#include "platform/cell_array.h"

namespace vesk {

// True (the old -1) when the table passes.
bool DoChk(const CellArray& table);
// A cell that holds no array fails.
bool DoChk(const Cell& table);

} // namespace vesk
