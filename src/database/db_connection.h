#pragma once
// The one way to a study file: a QSQLITE connection with foreign keys enforced, opened without ever
// creating a file by accident, and closed when the last holder lets it go. Queries are forward-only
// and take their values as bound parameters.

#include "platform/cell.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>
#include <memory>
#include <optional>

namespace vesk {

class DbConnection {
public:
    // An existing study file; nullptr with `error` when it is missing or not a database (then the
    // old engine's "Unrecognized database format '<path>'.").
    static std::shared_ptr<DbConnection> open(const QString& path, QString* error);
    // A new, empty file at `path` (which must not exist); nullptr with `error` on failure.
    static std::shared_ptr<DbConnection> create(const QString& path, QString* error);

    ~DbConnection();
    DbConnection(const DbConnection&) = delete;
    DbConnection& operator=(const DbConnection&) = delete;

    QSqlDatabase database() const;
    const QString& path() const { return path_; }

    // Runs `sql` with `values` bound in order; std::nullopt (and `error`) on failure.
    std::optional<QSqlQuery> query(const QString& sql, const QVariantList& values = {},
                                   QSqlError* error = nullptr) const;
    bool exec(const QString& sql, const QVariantList& values = {}, QSqlError* error = nullptr) const;

    // The tables of the file in the order they were made, with their CREATE TABLE text.
    struct TableEntry {
        QString name;
        QString sql;
    };
    QList<TableEntry> tables(QSqlError* error = nullptr) const;

private:
    DbConnection(QString name, QString path) : name_(std::move(name)), path_(std::move(path)) {}
    static std::shared_ptr<DbConnection> connect(const QString& path, bool create, QString* error);

    QString name_;
    QString path_;
};

// Whether any connection of this program holds the file at `path` open.
bool isDatabaseFileOpen(const QString& path);

// The description of an engine error as the user reads it: a refused CHECK gives the constraint's
// name, which is the field's validation text; other refusals read as the old engine worded them.
QString engineDescription(const QSqlError& error);
// The engine could not find a table or query named in the statement.
bool isNoSuchTable(const QSqlError& error);
// The number the old engine gave the same refusal, for the forms whose messages hang on it:
// 3163 a text longer than its field, 3315 a zero-length text, 3058 a Null key, 3316 a validation
// rule, 3022 a duplicate key, 3201 a missing related record, 3314 a Null in a required field,
// 3061 an unknown name in a statement (the old engine read it as a parameter with no value),
// 3078 an unknown table; 3000 (reserved error) for anything else. A value its declared type cannot
// hold gives the runtime's number instead: 13 (Type mismatch) or 6 (Overflow).
int engineErrorNumber(const QSqlError& error);

// A value of a query as a dynamic cell: NULL gives Null, numbers a number, anything else a text.
Cell cellFromVariant(const QVariant& value);

// The rows of a query as cells, each row `columns` wide.
QList<QList<Cell>> rowsOf(QSqlQuery& q, int columns);

// A name made of letters, digits and "_" only, starting with a letter or "_": fit to stand as an
// identifier in a statement (a study id used as a column name, a table name passed by a caller).
bool isPlainIdentifier(const QString& name);

} // namespace vesk
