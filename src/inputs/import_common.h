#pragma once
// What the imports of the input sheets share: which kinds are worksheets (read through a range
// named after the unit or study), the head of each kind's question about the file's layout, a number
// of a source cell, the table to read (a database file's asked for by name), and the message of a
// refusal.

#include "inputs/foreign_types.h"
#include "platform/cell.h"

#include <QString>
#include <optional>

namespace vesk {

bool isWorksheetKind(ForeignKind kind);

// "Are you sure that the ... selected is in the format '": the words of the kind of file.
QString layoutQuestionHead(ForeignKind kind);

// The number a source cell holds: a number as it is, a text by the lenient parse of its trimmed
// characters; nothing for a blank, Null or Empty cell.
std::optional<double> sourceNumber(const Cell& v);

// The name to read the source under: the range `range` of a worksheet, `table` of another kind; a
// database file's table asked for (input box titled `title`) when none is given. Nothing when the
// user gives none.
std::optional<QString> sourceTableName(ForeignKind kind, const QString& table, const QString& range,
                                       const QString& title);

// "The data for the current <term> is not present in the source database <path>.Import operation
// has been terminated".
QString notInSourceMessage(const QString& term, const QString& path);

// A refusal of an import, shown.
void tellImportRefusal(const QString& message);

} // namespace vesk
