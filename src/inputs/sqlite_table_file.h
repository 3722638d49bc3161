#pragma once
// Database tables (.vdb, .db, .sqlite, and .mdb paths) as SQLite files through QtSql. A missing file
// is created; the declared types of a new table name the old types (VARCHAR(n), SMALLINT, INTEGER,
// SINGLE, DOUBLE, DATETIME, BOOLEAN), so that reading back knows dates and Booleans: dates are
// stored as ISO text, Booleans as 1 and 0. Rows go in by bound parameters, one transaction for each
// call, so that a failure leaves none of that call's rows.

#include "inputs/foreign_driver.h"

namespace vesk {

// Opened for writing, everything until close() is one transaction: close() keeps the tables and rows
// made since open() only when none of the steps failed, so that rows that fail take the table
// made for them away again and the file stays as it was.
class SqliteTableDriver : public ForeignDriver {
public:
    SqliteTableDriver();
    ~SqliteTableDriver() override;
    bool open(const QString& path, bool forWriting) override;
    bool hasTable(const QString& name) override;
    bool createTable(const TableDef& def) override;
    bool appendRows(const QString& table, const CellArray& rows) override;
    std::optional<ForeignTable> readTable(const QString& name) override;
    bool close() override;

    // The SQLite text of a table definition.
    static QString sqliteDdl(const TableDef& def);

private:
    struct Column {
        QString name;
        FieldType type;
        QString declared;
    };
    QString actualName(const QString& name);
    QList<Column> columns(const QString& table);
    bool appendRowsInOpenTransaction(const QString& table, const CellArray& rows);
    QString connection_;
    bool open_ = false;
    bool writing_ = false; // a transaction runs from open() to close()
    bool failed_ = false;  // a step of that transaction failed: close() undoes it
};

// A double-quoted SQL identifier.
QString quoteIdentifier(const QString& name);

} // namespace vesk
