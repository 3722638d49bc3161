#pragma once
// What the study-definition forms share about their grids: a body of texts under one heading row
// and a numbered column, edited through the floating cell box, with one blank row at the foot for
// the next entry, and the Delete key handed to the form.

#include "platform/forms/flex_grid_view.h"
#include "platform/grid_model.h"

#include <QList>
#include <QStringList>
#include <functional>

namespace vesk {

// A grid view over `model`, named `name`, edited through the cell box; the model keeps a blank row
// at its foot as the user writes into the last row.
FlexGridView* makeTextGrid(QWidget* parent, const QString& name, GridModel* model);

// The body rows of the grid as texts, row by row (the blank row at the foot included).
QList<QStringList> gridRows(const GridModel& grid);
// The grid with `headers` and `rows`, and one blank row after them.
void setGridRows(GridModel& grid, const QStringList& headers, const QList<QStringList>& rows);
// Removes the body row `row` (grid coordinates); a grid of two rows or fewer is blanked instead.
void removeGridRow(GridModel& grid, int row);
// Adds a blank row when the last row holds any text.
void keepBlankLastRow(GridModel& grid);

// Calls `onDelete` when the Delete key is pressed on `view`.
void onDeleteKey(QWidget* view, std::function<void()> onDelete);

} // namespace vesk
