#include "inputs/sqlite_table_file.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <atomic>
#include <cmath>
#include <utility>

namespace vesk {

QString quoteIdentifier(const QString& name) {
    return u'"' + QString(name).replace(QStringLiteral("\""), QStringLiteral("\"\"")) + u'"';
}

SqliteTableDriver::SqliteTableDriver() {
    static std::atomic<int> serial{0};
    connection_ = QStringLiteral("vesk-foreign-%1").arg(++serial);
}

SqliteTableDriver::~SqliteTableDriver() {
    close();
}

bool SqliteTableDriver::open(const QString& path, bool forWriting) {
    close();
    if (!QFile::exists(path) && !forWriting) {
        setForeignError(engine_error::kCannotOpen, QStringLiteral("Cannot open the file '%1'.").arg(path));
        return false;
    }
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
        db.setDatabaseName(path);
        open_ = db.open();
        if (open_) {
            QSqlQuery q(db);
            // A file that is not a database fails here rather than on the first table.
            open_ = q.exec(QStringLiteral("PRAGMA foreign_keys=ON")) &&
                    q.exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        }
        if (!open_)
            setForeignError(
                engine_error::kCannotOpen,
                QStringLiteral("Cannot open the database '%1': %2.").arg(path, db.lastError().text()));
    }
    if (!open_) {
        QSqlDatabase::removeDatabase(connection_);
        return false;
    }
    failed_ = false;
    writing_ = forWriting && QSqlDatabase::database(connection_, false).transaction();
    if (forWriting && !writing_) {
        setForeignError(engine_error::kCannotOpen,
                        QStringLiteral("Cannot write to the database '%1': %2.")
                            .arg(path, QSqlDatabase::database(connection_, false).lastError().text()));
        close();
        return false;
    }
    return true;
}

bool SqliteTableDriver::close() {
    bool kept = true;
    if (open_) {
        QSqlDatabase db = QSqlDatabase::database(connection_, false);
        if (writing_ && !failed_ && !db.commit()) {
            setForeignError(engine_error::kCannotOpen, db.lastError().text());
            failed_ = true;
        }
        if (writing_ && failed_) {
            db.rollback();
            kept = false;
        }
        writing_ = failed_ = false;
        db.close();
        open_ = false;
    }
    if (QSqlDatabase::contains(connection_))
        QSqlDatabase::removeDatabase(connection_);
    return kept;
}

QString SqliteTableDriver::actualName(const QString& name) {
    QSqlQuery q(QSqlDatabase::database(connection_, false));
    q.prepare(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type IN ('table','view') AND lower(name)=lower(?)"));
    q.addBindValue(name);
    return q.exec() && q.next() ? q.value(0).toString() : QString();
}

bool SqliteTableDriver::hasTable(const QString& name) {
    return open_ && !actualName(name).isEmpty();
}

namespace {

// The old type a field's declaration names, so that reading back knows dates and Booleans.
QString declaredType(const FieldDef& f) {
    if (f.type() == FieldType::Text)
        return f.length > 0 ? QStringLiteral("VARCHAR(%1)").arg(f.length) : QStringLiteral("TEXT");
    static constexpr std::pair<FieldType, const char*> kTypes[] = {
        {FieldType::Integer, "SMALLINT"}, {FieldType::Long, "INTEGER"},  {FieldType::Single, "SINGLE"},
        {FieldType::Double, "DOUBLE"},    {FieldType::Date, "DATETIME"}, {FieldType::Logical, "BOOLEAN"},
    };
    for (const auto& [type, name] : kTypes)
        if (type == f.type())
            return QString::fromLatin1(name);
    return QString();
}

} // namespace

QString SqliteTableDriver::sqliteDdl(const TableDef& def) {
    QStringList fields;
    for (const auto& f : def.fields)
        fields << quoteIdentifier(f.name) + u' ' + declaredType(f);
    return QStringLiteral("CREATE TABLE %1 (%2)")
        .arg(quoteIdentifier(def.name), fields.join(QStringLiteral(", ")));
}

bool SqliteTableDriver::createTable(const TableDef& def) {
    if (!tableIsNew(def.name)) {
        failed_ = true; // a step of the session refused: what it made before goes too
        return false;
    }
    QSqlQuery q(QSqlDatabase::database(connection_, false));
    if (!q.exec(sqliteDdl(def))) {
        setForeignError(engine_error::kSyntaxInCreate, q.lastError().text());
        failed_ = true;
        return false;
    }
    return true;
}

QList<SqliteTableDriver::Column> SqliteTableDriver::columns(const QString& table) {
    QList<Column> out;
    QSqlQuery q(QSqlDatabase::database(connection_, false));
    if (q.exec(QStringLiteral("PRAGMA table_info(%1)").arg(quoteIdentifier(table))))
        while (q.next()) {
            const QString declared = q.value(2).toString();
            out << Column{q.value(1).toString(), fieldTypeOf(declared.section(u'(', 0, 0)), declared};
        }
    return out;
}

namespace {

QVariant bindValue(const Cell& v, FieldType type) {
    if (v.isEmpty() || v.isNull())
        return QVariant();
    switch (type) {
    case FieldType::Text:
        return valueText(v);
    case FieldType::Logical:
        return v.isNumber() ? QVariant(v.toDouble() != 0.0 ? 1 : 0) : QVariant(v.toString());
    case FieldType::Date:
        return v.isNumber() ? QVariant(Cell::date(v.toDouble()).toString()) : QVariant(v.toString());
    default:
        break;
    }
    if (!v.isNumber())
        return v.toString();
    const double x = v.isBoolean() ? (v.toDouble() != 0.0 ? 1.0 : 0.0) : v.toDouble();
    if (x == std::trunc(x) && std::fabs(x) < 9.0e15)
        return QVariant(static_cast<qint64>(x));
    return QVariant(x);
}

Cell readValue(const QVariant& v, FieldType type) {
    if (v.isNull())
        return Cell::null();
    const bool isText = v.typeId() == QMetaType::QString;
    switch (type) {
    case FieldType::Logical:
        if (isText) {
            const QString t = v.toString().trimmed().toLower();
            if (t == u"true" || t == u"yes")
                return Cell::boolean(true);
            if (t == u"false" || t == u"no")
                return Cell::boolean(false);
            return Cell(v.toString());
        }
        return Cell::boolean(v.toDouble() != 0.0);
    case FieldType::Date:
        if (isText) {
            const QString t = v.toString().trimmed();
            QDateTime when = QDateTime::fromString(t, Qt::ISODateWithMs);
            if (!when.isValid())
                when = QDateTime::fromString(t, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
            if (!when.isValid() && QDate::fromString(t, Qt::ISODate).isValid())
                when = QDate::fromString(t, Qt::ISODate).startOfDay();
            return when.isValid() ? Cell::date(dateSerial(when)) : Cell(v.toString());
        }
        return Cell::date(v.toDouble());
    case FieldType::Single:
        return isText ? Cell(v.toString()) : Cell::single(static_cast<float>(v.toDouble()));
    default:
        break;
    }
    if (isText)
        return Cell(v.toString());
    if (v.typeId() == QMetaType::QByteArray)
        return Cell::null();
    return Cell(v.toDouble());
}

} // namespace

bool SqliteTableDriver::appendRows(const QString& table, const CellArray& rows) {
    const bool ok = appendRowsInOpenTransaction(table, rows);
    failed_ = failed_ || !ok;
    return ok;
}

bool SqliteTableDriver::appendRowsInOpenTransaction(const QString& table, const CellArray& rows) {
    if (!writing_) {
        setForeignError(engine_error::kNotWritable,
                        QStringLiteral("Cannot update '%1'; the database is open for reading.").arg(table));
        return false;
    }
    const QString name = actualName(table);
    if (name.isEmpty()) {
        setForeignError(engine_error::kNoSuchTable,
                        QStringLiteral("The table '%1' does not exist.").arg(table));
        return false;
    }
    const QList<Column> cols = columns(name);
    if (!rowsFitFields(rows, static_cast<int>(cols.size())))
        return false;
    const int n = rows.rank() == 2 ? rows.size(0) : 0, m = rows.rank() == 2 ? rows.size(1) : 0;
    if (n == 0)
        return true;
    QStringList names, marks;
    for (int j = 0; j < m; ++j) {
        names << quoteIdentifier(cols[j].name);
        marks << QStringLiteral("?");
    }
    QSqlQuery q(QSqlDatabase::database(connection_, false));
    q.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(quoteIdentifier(name), names.join(u','), marks.join(u',')));
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < m; ++j)
            q.bindValue(j, bindValue(rows(rows.lbound(0) + i, rows.lbound(1) + j), cols[j].type));
        if (!q.exec()) {
            setForeignError(3022, QStringLiteral("Row %1 of '%2' could not be added: %3")
                                      .arg(i + 1)
                                      .arg(name, q.lastError().text()));
            return false;
        }
    }
    return true;
}

std::optional<ForeignTable> SqliteTableDriver::readTable(const QString& name) {
    const QString actual = open_ ? actualName(name) : QString();
    if (actual.isEmpty())
        return std::nullopt;
    QList<Column> cols = columns(actual);
    QSqlQuery q(QSqlDatabase::database(connection_, false));
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("SELECT * FROM %1").arg(quoteIdentifier(actual))))
        return std::nullopt;
    ForeignTable t;
    t.name = actual;
    const QSqlRecord rec = q.record();
    for (int j = 0; j < rec.count(); ++j) {
        t.fieldNames << rec.fieldName(j);
        if (j >= cols.size())
            cols << Column{rec.fieldName(j), FieldType::Double, QString()};
    }
    QList<QList<Cell>> rows;
    while (q.next()) {
        QList<Cell> row;
        for (int j = 0; j < rec.count(); ++j)
            row << readValue(q.value(j), cols[j].type);
        rows << row;
    }
    if (!rows.isEmpty() && rec.count() > 0) {
        t.rows = CellArray{static_cast<int>(rows.size()), static_cast<int>(rec.count())};
        for (int i = 0; i < rows.size(); ++i)
            for (int j = 0; j < rec.count(); ++j)
                t.rows(i, j) = rows[i][j];
    }
    return t;
}

} // namespace vesk
