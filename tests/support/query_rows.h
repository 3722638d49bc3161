#pragma once
// A query's rows as the tests compare them: each row's columns joined by "|", a Null as "<null>".

#include "database/db_connection.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QStringList>

namespace vesk::test {

// The rows of `sql` with its bound `values`. When the query fails: no rows, and the statement with
// the engine's text in `error` (when given).
inline QStringList queryRows(const DbConnection& db, const QString& sql, const QVariantList& values = {},
                             QString* error = nullptr) {
    QStringList out;
    QSqlError e;
    auto q = db.query(sql, values, &e);
    if (!q) {
        if (error)
            *error = sql + QStringLiteral(": ") + e.text();
        return out;
    }
    const int n = q->record().count();
    while (q->next()) {
        QStringList row;
        for (int i = 0; i < n; ++i)
            row << (q->value(i).isNull() ? QStringLiteral("<null>") : q->value(i).toString());
        out << row.join(u'|');
    }
    return out;
}

} // namespace vesk::test
