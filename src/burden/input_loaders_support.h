#pragma once
// What the loaders and the stores of a computation share: their messages, the binding of a year, a
// unit or a set, the rows of one unit grouped by cause, and the text of a timed step.

#include "burden/input_loaders.h"
#include "platform/cell_array.h"

#include <QHash>
#include <QList>
#include <QVariantList>

namespace vesk::loaders {

using Rows = QList<QList<Cell>>;

// A message box with an OK button.
void show(const QString& text);
// A year or a DAP id as the statements bind it: a whole number as an integer, a text of a number as
// that number, Empty as 0, any other text as it stands (for the table to refuse).
QVariant keyNumber(const Cell& year);
// Number of rows of a one- or two-dimensional array held by a cell; 0 for none.
int rowsIn(const Cell& vectorOrMatrix);
// The i-th entry of a vector, from its lower bound.
const Cell& entry(const Cell& vector, int i);
// The rows of `sql` with `values` bound; the engine's failure goes to the error store under `source`
// and gives no rows.
Rows readRows(const LoaderStudy& s, const QString& sql, const QVariantList& values, int columns,
              const char* source);
// Rows grouped by the text of column `keyColumn`, each group in the order read.
QHash<QString, Rows> groupedBy(const Rows& rows, int keyColumn);
// The text of a progress step: the words, three blanks, the seconds to two places and the tail.
QString stepText(const char* words, const LoaderProgress& p, const char* tail);

} // namespace vesk::loaders
