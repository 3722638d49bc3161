#include "database/bulk_insert.h"

#include <QSqlDriver>
#include <sqlite3.h>

namespace vesk {

namespace {

sqlite3* handleOf(const DbConnection& db) {
    const QVariant v = db.database().driver()->handle();
    if (!v.isValid() || qstrcmp(v.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3* const*>(v.constData());
}

QSqlError engineError(sqlite3* db) {
    return QSqlError(QString(), QString::fromUtf8(sqlite3_errmsg(db)), QSqlError::StatementError,
                     QString::number(sqlite3_extended_errcode(db)));
}

} // namespace

BulkInsert::BulkInsert(const DbConnection& db, const QString& sql) : db_(handleOf(db)) {
    if (!db_) {
        error_ = QSqlError(QStringLiteral("The connection is not an SQLite connection"), QString(),
                           QSqlError::ConnectionError);
        return;
    }
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v2(db_, text.constData(), int(text.size()), &stmt_, nullptr) != SQLITE_OK) {
        error_ = engineError(db_);
        sqlite3_finalize(stmt_);
        stmt_ = nullptr;
    }
}

BulkInsert::~BulkInsert() {
    sqlite3_finalize(stmt_);
}

void BulkInsert::bindNull(int i) {
    sqlite3_bind_null(stmt_, i + 1);
}

void BulkInsert::bindDouble(int i, double v) {
    sqlite3_bind_double(stmt_, i + 1, v);
}

void BulkInsert::bindInteger(int i, qint64 v) {
    sqlite3_bind_int64(stmt_, i + 1, v);
}

void BulkInsert::bindText(int i, const QString& v) {
    const QByteArray utf8 = v.toUtf8();
    sqlite3_bind_text(stmt_, i + 1, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

void BulkInsert::bind(int i, const QVariant& v) {
    if (v.isNull()) {
        bindNull(i);
        return;
    }
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::Bool:
        bindInteger(i, v.toLongLong());
        return;
    case QMetaType::Double:
    case QMetaType::Float:
        bindDouble(i, v.toDouble());
        return;
    default:
        bindText(i, v.toString());
    }
}

bool BulkInsert::insert() {
    const int rc = sqlite3_step(stmt_);
    const bool done = rc == SQLITE_DONE;
    if (!done)
        error_ = engineError(db_);
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
    return done;
}

} // namespace vesk
