#pragma once
// GridFunctions: data between grids, two-dimensional arrays and recordsets, and the one editing
// style of directly edited grids. Array dimension 1 runs over grid rows, dimension 2 over grid
// columns; the body of a grid is what lies behind its fixed bands.

#include "foundation/runtime_error.h"
#include "platform/cell_array.h"
#include "platform/grid_model.h"

#include <QStringList>

class QSqlQuery;

namespace vesk {

// Fills the body from the array: the grid takes the array's rows and columns behind its fixed
// bands, the headers (when given) go into the last fixed row, the last fixed column numbers the
// rows with their grid index, Null shows as an empty cell and every other value as its text.
// Nothing happens when `values` is not two-dimensional.
void FnArrToGrid(const CellArray& values, GridModel& grid, const QStringList* headers = nullptr);

// A table under its heads: one fixed row holding `heads`, no fixed column, the rows of `values` below
// (FnArrToGrid), each number as the text that reads back to the same double (valueText), so that a
// figure computed in single precision shows the double that is stored of it. The result viewers, the
// chart data and the views show their tables so.
void showTable(GridModel& grid, const QStringList& heads, const CellArray& values);

// The array carries its own headings: the grid takes exactly its size, `fixedCols` and `fixedRows`
// fixed bands (at most one less than the grid has), and every cell the value at its position.
// `option` >= 0 asks the view to fit its columns with that many pixels to spare; -1 leaves them.
void FnFillGrid(const CellArray& values, GridModel& grid, int fixedCols, int fixedRows, int option = -1);

// The body as texts (rows, columns). A grid without body rows or columns raises RuntimeError 9
// ("Subscript out of range").
CellArray FnGridToArr(const GridModel& grid);
// The selected block as texts, whichever way it was dragged.
CellArray FnGridSelToArr(const GridModel& grid);

// A two-cell array: cell 0 the matrix of values in (field, record) order, field first, unlike the
// grids; cell 1 the vector of field names. Empty for a recordset without rows. The query is
// expected active, as exec() leaves it.
Cell FnRsToArr(QSqlQuery& recordset);

} // namespace vesk
