#pragma once
// Save As of a result grid, the same on every window that shows results: the dialog "Save Results
// As" over the five kinds of foreign file, the question before a file is replaced (for a database:
// replace it, add a table to it, or stop), the rows written as a table with its field names
// (text files with ";" between fields), and "Data exported successfully:" with the path, or
// "Unable to save data" with what the writer said. Numbers go out as the doubles they are; the
// grid's rounding for the screen is not saved.

#include "platform/cell_array.h"

#include <QStringList>

namespace vesk {

// The words of a window whose Save As speaks otherwise (the interpolator: "Save As" and "File Already
// Exists.Do you want to Replace", the same question for a database); empty texts keep the results'.
struct SaveAsWords {
    QString dialogTitle;
    QString replaceQuestion;
    QString replaceTitle;
    bool databaseQuestion = true; // ask replace / add a table / stop for a database that exists
};

// `rows`: records by fields; `fieldNames` one for each field; `tableName` the table of a worksheet
// or a new database (a dBase table is its file). True when the file was written.
bool saveResultsAs(const CellArray& rows, const QStringList& fieldNames, const QString& tableName,
                   const SaveAsWords& words = {});

// The same to a path already chosen (what follows the dialog).
bool saveResultsTo(const QString& path, const CellArray& rows, const QStringList& fieldNames,
                   const QString& tableName, const SaveAsWords& words = {});

} // namespace vesk
