#pragma once
// What the imports, exports and purges of the File menu share: a study table read whole as an array,
// rows appended to a study table by field position inside the caller's transaction, the statements
// of a purge run in order, a table written into a foreign file, and the text files that hold more
// than one table (sections under a heading line).
//
// Every import runs in one transaction: the old program wrote row by row and ran a recover routine
// after a failure, which left the tables empty; here the transaction is undone, so a failure leaves
// every table as it was. The foreign keys are checked at the commit (PRAGMA defer_foreign_keys), so
// that a dictionary can be emptied and filled again under the rows that refer to it.

#include "database/db_connection.h"
#include "platform/cell_array.h"

#include <QSqlError>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <functional>
#include <optional>

namespace vesk {

// A table as the exports write it and the imports read it: field names and rows (rows, fields).
struct TableRows {
    QStringList fieldNames;
    CellArray rows; // empty (rank 0) when there is no row
    int rowCount() const { return rows.rank() == 2 ? rows.size(0) : 0; }
};

// FnGetFldNames: the fields of a study table in their order; empty when there is no such table.
QStringList FnGetFldNames(const DbConnection& db, const QString& table);

// The rows of a statement, values bound; std::nullopt with `error` when the engine refuses it.
std::optional<TableRows> selectRows(const DbConnection& db, const QString& sql, const QVariantList& values,
                                    QSqlError* error);

// Whether the statement gives a row (a failure counts as none).
bool hasRows(const DbConnection& db, const QString& sql, const QVariantList& values = {});

// Runs `work` in one transaction with the foreign keys checked at its end: committed when `work`
// returns true and the commit passes, undone otherwise. False with the engine's error (or the one
// `work` set).
bool inOneImport(const DbConnection& db, const std::function<bool(QSqlError*)>& work, QSqlError* error);

// Runs the statements in order; false with the engine's error at the first that fails.
bool runStatements(const DbConnection& db, const QStringList& statements, QSqlError* error);

// Appends the rows to `table`, the columns of the array to `fields` by position (an array narrower
// than `fields` leaves the rest to their defaults; wider columns are ignored). `lead`, when given,
// fills the first fields before the array's columns (the current study's id). Values as the old
// engine took them into an existing table: text trimmed, an empty text or an Empty cell as Null, a
// number bound to a text field as the runtime prints it (so that a code 7 read from a worksheet is
// "7", not "7.0"). `convert`, when given, turns a value first (column index of the array, value).
using ValueConversion = std::function<Cell(int column, const Cell& value)>;
bool appendRows(const DbConnection& db, const QString& table, const QStringList& fields,
                const CellArray& rows, QSqlError* error, const QVariantList& lead = {},
                const ValueConversion& convert = {});

// A table written into the foreign file of `path` (FnWriteArrFile). A text file or a dBase table
// that is there is replaced (the caller asks first), and so is a worksheet or database file when
// `replaceWhole` says that it is the table's own; the old file stays whole until the new one is
// written. In a dBase table, a column with a number that no 20-character number field holds goes
// out as text, each number its shortest text, so that the import brings back the same doubles.
// False with lastForeignError() telling why.
bool writeTableFile(const CellArray& rows, const QString& path, const QString& table,
                    const QStringList& fieldNames, bool replaceWhole = false);

// A row that a text file lost the end of: the first row with fewer fields than the file's widest,
// told as "row N has K of its M fields"; std::nullopt when every row is whole. (A text table leaves
// the fields a line lacks Empty; a field that is there but blank is an empty text.)
std::optional<QString> shortTextRow(const CellArray& rows);

// FnRemCol: the array without its column `col` (counted from the array's lower bound); an array
// of one column gives an empty array.
CellArray FnRemCol(const CellArray& array, int col);

// Where a table of a dBase folder lies: for a dBase path, the file of the table in the path's folder;
// any other path as it stands.
QString tablePath(const QString& path, const QString& table);

// A text file of sections: each table under a heading line of its own, a blank line after it.
struct Section {
    QString heading; // the whole line, such as "[_DctBDMGrps]"
    CellArray rows;
};
// Writes the sections; false with `error`.
bool writeSections(const QString& path, const QList<Section>& sections, QString* error);
// The rows of a section of `text`: the lines after the first line that `isHeading` accepts, up to
// the first that `ends` accepts or the end, cut at ";" as a text table is. Empty when no line is the
// heading; std::nullopt with `error` when the rows are refused as a text table's would be.
std::optional<CellArray> sectionRows(const QString& text, const QString& source,
                                     const std::function<bool(const QString&)>& isHeading,
                                     const std::function<bool(const QString&)>& ends, QString* error);
// A value a section would not bring back: the first text of `rows` for which `breaks` is true.
std::optional<QString> firstBreakingValue(const CellArray& rows,
                                          const std::function<bool(const QString&)>& breaks);

} // namespace vesk
