#pragma once
// The interpolation tool's work without its window: the source ladder, the run of Sprague's
// subdivision over one or two data columns (sprague.h), the collapse of the single years into the
// output age groups the user types, the check of the collapsed values, and the formatting of values
// by the life-table decimals.

#include "demography/sprague.h"
#include "platform/cell_array.h"

#include <QList>
#include <QStringList>
#include <optional>

namespace vesk {

// The source ladder of an upper age limit: 0, 5, ..., limit - 5 and "limit-w"; std::nullopt after
// "Please enter valid data" (no number) or "The upper age limit should be divisible by 5".
std::optional<QStringList> interpolatorAgeLadder(const QString& limit);

// KeepOpen from the last source age: 1 when it ends in "-w".
qint16 interpolatorKeepOpen(const QString& lastAge);

enum class InterpolatorOutcome {
    Done,
    NoData,       // "Please fill the data"
    TooFewRows,   // "Interpolation is not possible as it reqiures minimum of 5 Rows data"
    Negative,     // the sudden-change question answered No
    NegativeChart // answered Yes: the window draws the source series
};

struct InterpolatorRun {
    InterpolatorOutcome outcome = InterpolatorOutcome::NoData;
    QList<CellArray> singleYears; // one vector a data column: 0 to N - 1, and N with the open group
};

// Finres, first half: each data column (texts as typed, one a source row) through FnSprague, with
// KeepOpen from the last age. The messages and the sudden-change question are asked here.
InterpolatorRun runInterpolator(const QStringList& ages, const QList<QStringList>& columns,
                                const SpraguePanels* panels = nullptr);

// Finres, second half: for each output row (a lower age; the last may end in "-w"), the sum over its
// single years of each column; a year the table lacks says "Data for <age> Age group is not
// available" and leaves that row empty. With `exactAges`, each row takes the value of its single year.
// Rows: label, then one value a column (Empty where not available).
CellArray collapseToOutputGroups(const QList<CellArray>& singleYears, const QStringList& outputGroups,
                                 bool exactAges);

// ProcChkNegRslt: the collapsed rows whose value is 0 or less, said in one message with a table of
// "Age Groups" and "Data"; false when there were any.
bool ProcChkNegRslt(const CellArray& collapsed);

// TKdecimals: with `decimals` above 0 the picture "#." and one "#" a place; else the whole part.
QString TKdecimals(double value, int decimals);

// The output group check: an age that is not above the one before, or above the upper limit, with
// its message; empty when it passes. `previous` the age of the row above, if any.
QString outputGroupRefusal(const QString& typed, std::optional<double> previous, std::optional<double> upperLimit);

// The data columns of a source file (table Popdata, fields pop and Dths; a text file by its [pop]
// and [Dths] lines, ";" between values): the values of `fields` in order, std::nullopt after "Unable
// to  read file".
std::optional<QList<QStringList>> readInterpolatorSource(const QString& path, const QStringList& fields);

} // namespace vesk
