#pragma once
// Rows inserted at the engine's own speed: one INSERT prepared once on the connection's SQLite
// handle, each row's values bound natively, stepped and reset, inside a transaction the caller
// holds (QSqlDatabase::transaction / commit). QSqlQuery costs a few microseconds a row in variants
// and copies; a result table of millions of rows would spend more time there than in the engine.
// A refused row is told as the engine tells it (the QSqlError the rest of the program reads, so
// that engineDescription and engineErrorNumber apply), and the statement is ready for the next.

#include "database/db_connection.h"

#include <QSqlError>
#include <QString>
#include <QVariant>

struct sqlite3;
struct sqlite3_stmt;

namespace vesk {

class BulkInsert {
public:
    // Prepares `sql` on `db`; ok() is false (and error() says why) when it cannot be prepared or the
    // connection is not SQLite.
    BulkInsert(const DbConnection& db, const QString& sql);
    ~BulkInsert();
    BulkInsert(const BulkInsert&) = delete;
    BulkInsert& operator=(const BulkInsert&) = delete;

    bool ok() const { return stmt_ != nullptr; }
    const QSqlError& error() const { return error_; }

    // Parameters count from 0, in the order of the statement's marks.
    void bindNull(int i);
    void bindDouble(int i, double v);
    void bindInteger(int i, qint64 v);
    void bindText(int i, const QString& v);
    // A value as the query layer would bind it: Null, a whole number, a number, or text.
    void bind(int i, const QVariant& v);

    // Inserts the row bound; false with error() on a refusal. The bindings are cleared either way.
    bool insert();

private:
    sqlite3* db_ = nullptr;
    sqlite3_stmt* stmt_ = nullptr;
    QSqlError error_;
};

} // namespace vesk
