#pragma once
// Arrays to and from the five kinds of foreign file. Everything above this layer deals only in
// two-dimensional arrays (rows, fields), row 0 being the first record; field names travel apart.
//
// The kind comes from the path (see foreignKind): Lotus worksheets (.WK1), Excel workbooks (.xlsx,
// and .xls to read), database tables (SQLite: .vdb, .db, .sqlite, .mdb), dBase tables (.dbf, the
// folder being the database and the file's base name the table) and text files (.txt, ";" between
// fields). A worksheet's table is a named range whose first row holds the field names.

#include "inputs/foreign_types.h"

namespace vesk {

// The older writer, for result views: a one- or two-dimensional array as text fields, in a fixed
// layout (one field "ArrData", or "Field0", "Field1"... one per column). It asks before replacing
// a file, and shows its own messages. `mode`: 1 one field, 2 one field per column, 0 as the
// array's rank says. `fileType`: a kind such as "WK1" or "txt" that wins over the path's
// extension; empty to go by the path. Returns true when the file was written.
bool FnWriteArr(const CellArray& array, int mode, const QString& fileType, const QString& path,
                const QString& tableName = QString());

// Writes an array as a typed table. Without `fieldTypes`, FnColTypes supplies them. For a
// database file, given types mean that the table exists already: the rows are added to it, text
// trimmed. In "_DctBDM" the fourth column's "Yes" / "No" are stored as True / False and the first
// three columns as text. Returns false on failure, with lastForeignError() telling why.
bool FnWriteArrFile(const CellArray& array, const QString& path, const QString& tableName,
                    const QStringList& fieldNames, const CellArray* fieldTypes = nullptr);

// Several typed tables written into one worksheet, workbook or database file in one session: the
// file is opened and written once, where a call of FnWriteArrFile a table would rewrite a workbook
// whole for each (the square of its size). All of them or none: the file stays as it was when one
// fails (a worksheet or workbook is staged beside it, a database file's tables go in as one
// transaction). A table that the file holds already is a failure. False with lastForeignError().
struct NamedTable {
    QString name;
    QStringList fieldNames;
    CellArray rows; // (rows, fields)
};
bool FnWriteArrTables(const QString& path, const QList<NamedTable>& tables);

// Several tables of one file read in one session, each in the place of its name: std::nullopt for
// one the file does not hold. std::nullopt for the whole when the file cannot be opened or a table
// cannot be read (lastForeignError() tells why).
std::optional<QList<std::optional<ForeignTable>>> FnReadArrTables(const QString& path, const QStringList& names);

// Reads a table into an array (records, fields); empty when the file or the table does not exist.
// The field names go to `fieldNames` when it is given.
CellArray FnReadArrFile(const QString& path, const QString& tableName, QStringList* fieldNames = nullptr);

// The `create table` texts of the older writer, exactly as it builds them: for worksheets with and
// without a table name (the second lacks its closing parenthesis, which the drivers accept), and
// for dBase tables.
QString wk1CreateText(const QString& tableName, int columns);
QString dbfCreateText(const QString& baseName, int columns);

} // namespace vesk
