#include "database/db_connection.h"

#include "database/type_rules.h"

#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QUrl>

namespace vesk {

namespace {

// Files open through this program, by canonical path, with the number of connections on each.
QHash<QString, int>& openFiles() {
    static QHash<QString, int> files;
    return files;
}

QString canonical(const QString& path) {
    const QFileInfo info(path);
    const QString c = info.canonicalFilePath();
    return c.isEmpty() ? info.absoluteFilePath() : c;
}

QString nextConnectionName() {
    static int counter = 0;
    return QStringLiteral("vesk-db-%1").arg(++counter);
}

QString errorText(const QSqlError& e) {
    return engineDescription(e);
}

// The engine found no database in the file (text, random bytes), or one damaged past reading.
bool isUnrecognized(const QSqlError& e) {
    constexpr int kSqliteCorrupt = 11;
    constexpr int kSqliteNotADatabase = 26;
    const QString code = e.nativeErrorCode();
    return code == QString::number(kSqliteNotADatabase) || code == QString::number(kSqliteCorrupt) ||
           e.databaseText().contains(QStringLiteral("file is not a database"), Qt::CaseInsensitive) ||
           e.databaseText().contains(QStringLiteral("malformed"), Qt::CaseInsensitive);
}

} // namespace

std::shared_ptr<DbConnection> DbConnection::open(const QString& path, QString* error) {
    if (!QFileInfo(path).isFile()) {
        *error = QStringLiteral("Could not find file '%1'.").arg(path);
        return nullptr;
    }
    return connect(path, false, error);
}

std::shared_ptr<DbConnection> DbConnection::create(const QString& path, QString* error) {
    if (QFileInfo::exists(path)) {
        *error = QStringLiteral("Database '%1' already exists.").arg(path);
        return nullptr;
    }
    return connect(path, true, error);
}

std::shared_ptr<DbConnection> DbConnection::connect(const QString& path, bool create, QString* error) {
    const QString name = nextConnectionName();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        // A URI with mode=rw never makes a file where none is: a file that went away fails here.
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI"));
        const QString uri =
            QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString(QUrl::FullyEncoded);
        db.setDatabaseName(uri + (create ? QStringLiteral("?mode=rwc") : QStringLiteral("?mode=rw")));
        if (!db.open()) {
            *error = errorText(db.lastError());
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(name);
            return nullptr;
        }
    }
    std::shared_ptr<DbConnection> c(new DbConnection(name, path));
    openFiles()[canonical(path)] += 1;
    QSqlError e;
    // The file must read as a database, and every connection enforces the relations.
    if (!c->exec(QStringLiteral("PRAGMA foreign_keys = ON"), {}, &e) ||
        !c->query(QStringLiteral("SELECT count(*) FROM sqlite_master"), {}, &e)) {
        *error =
            isUnrecognized(e) ? QStringLiteral("Unrecognized database format '%1'.").arg(path) : errorText(e);
        return nullptr;
    }
    return c;
}

DbConnection::~DbConnection() {
    {
        QSqlDatabase db = QSqlDatabase::database(name_, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(name_);
    auto& files = openFiles();
    const QString key = canonical(path_);
    if (--files[key] <= 0)
        files.remove(key);
}

QSqlDatabase DbConnection::database() const {
    return QSqlDatabase::database(name_, false);
}

std::optional<QSqlQuery> DbConnection::query(const QString& sql, const QVariantList& values,
                                             QSqlError* error) const {
    QSqlQuery q(database());
    q.setForwardOnly(true);
    bool ok = q.prepare(sql);
    if (ok) {
        for (const QVariant& v : values)
            q.addBindValue(v);
        ok = q.exec();
    }
    if (!ok) {
        if (error)
            *error = q.lastError();
        return std::nullopt;
    }
    return q;
}

bool DbConnection::exec(const QString& sql, const QVariantList& values, QSqlError* error) const {
    return query(sql, values, error).has_value();
}

QList<DbConnection::TableEntry> DbConnection::tables(QSqlError* error) const {
    QList<TableEntry> out;
    auto q = query(QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'table' ORDER BY rowid"),
                   {}, error);
    while (q && q->next())
        out.push_back({q->value(0).toString(), q->value(1).toString()});
    return out;
}

bool isDatabaseFileOpen(const QString& path) {
    return openFiles().contains(canonical(path));
}

QString engineDescription(const QSqlError& error) {
    QString text = error.databaseText().trimmed();
    if (text.isEmpty())
        text = error.text().trimmed();
    static const QString check = QStringLiteral("CHECK constraint failed: ");
    if (text.startsWith(check))
        return text.mid(check.size());
    static const QRegularExpression notNull(QStringLiteral("^NOT NULL constraint failed: (.+)$"));
    if (const auto m = notNull.match(text); m.hasMatch())
        return QStringLiteral("The field '%1' cannot contain a Null value because the Required property for "
                              "this field is set to True.  Enter a value in this field.")
            .arg(m.captured(1));
    if (text.startsWith(QStringLiteral("UNIQUE constraint failed")))
        return QStringLiteral(
            "The changes you requested to the table were not successful because they would "
            "create duplicate values in the index, primary key, or relationship.  Change the "
            "data in the field or fields that contain duplicate data, remove the index, or "
            "redefine the index to permit duplicate entries and try again.");
    if (text.startsWith(QStringLiteral("FOREIGN KEY constraint failed")))
        return QStringLiteral("You cannot add or change a record because a related record is required.");
    return text;
}

bool isNoSuchTable(const QSqlError& error) {
    return error.databaseText().contains(QStringLiteral("no such table"), Qt::CaseInsensitive);
}

int engineErrorNumber(const QSqlError& error) {
    QString text = error.databaseText().trimmed();
    if (text.isEmpty())
        text = error.text().trimmed();
    static const QString check = QStringLiteral("CHECK constraint failed: ");
    if (text.startsWith(check)) {
        const QString name = text.mid(check.size());
        if (const int number = typeRuleNumber(name))
            return number;
        if (name.startsWith(QStringLiteral("The field '")) && name.contains(QStringLiteral("' is too small")))
            return 3163;
        if (name.startsWith(QStringLiteral("Field '")) &&
            name.endsWith(QStringLiteral("zero-length string.")))
            return 3315;
        if (name.startsWith(QStringLiteral("Index or primary key cannot contain a Null")))
            return 3058;
        return 3316;
    }
    if (text.startsWith(QStringLiteral("NOT NULL constraint failed")))
        return 3314;
    if (text.startsWith(QStringLiteral("UNIQUE constraint failed")))
        return 3022;
    if (text.startsWith(QStringLiteral("FOREIGN KEY constraint failed")))
        return 3201;
    if (text.contains(QStringLiteral("no such column"), Qt::CaseInsensitive))
        return 3061;
    if (isNoSuchTable(error))
        return 3078;
    return 3000;
}

Cell cellFromVariant(const QVariant& v) {
    if (!v.isValid() || v.isNull())
        return Cell::null();
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
        return Cell(v.toDouble());
    case QMetaType::Bool:
        return Cell(v.toBool() ? -1 : 0);
    default:
        return Cell(v.toString());
    }
}

bool isPlainIdentifier(const QString& name) {
    static const QRegularExpression re(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return re.match(name).hasMatch();
}

QList<QList<Cell>> rowsOf(QSqlQuery& q, int columns) {
    QList<QList<Cell>> rows;
    while (q.next()) {
        QList<Cell> row;
        row.reserve(columns);
        for (int c = 0; c < columns; ++c)
            row.push_back(cellFromVariant(q.value(c)));
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace vesk
