#pragma once
// FnCrossTab: a table of rows turned into a grid, one row for each distinct value of a row-key column
// and, for each distinct value of a column-key column, the carried columns of the row that has both
// keys. Keys are gathered in the order in which they are first met; a key compares by its text.
//
//   result (row keys, 1 + column keys x carried columns): column 0 the row key, then for each column key
//   in order its carried values in the order of `carry`; with `heads` true a row 0 above them holds ""
//   and the column keys (once for each carried column).
//
// Every row key must have as many rows as every other: otherwise "Transpose elements are not equal" is
// shown and the result is Empty. A name of `carry` ("2,3": column indices separated by commas) that is
// no column of the table is refused with "Cannot add the colno " and the name, and the others go on; a
// cell no row fills stays Empty.

#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>

namespace vesk {

Cell FnCrossTab(const CellArray& table, int rowKey, int columnKey, bool heads, const QString& carry);

} // namespace vesk
