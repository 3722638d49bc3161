#include "database/db_create.h"

#include "database/db_schema.h"
#include "database/type_rules.h"
#include "database/validation_rule.h"
#include "foundation/runtime_error.h"
#include "platform/runtime.h"

#include <QFile>
#include <utility>

namespace vesk {

using sql::quoteName;
using sql::quoteString;

namespace {

// The old engine's texts for the refusals that are not validation rules.
const QString kKeyNull = QStringLiteral("Index or primary key cannot contain a Null value.");

QString zeroLengthText(const QString& table, const QString& field) {
    return QStringLiteral("Field '%1.%2' cannot be a zero-length string.").arg(table, field);
}

QString tooLongText(const QString& table, const QString& field) {
    return QStringLiteral(
               "The field '%1.%2' is too small to accept the amount of data you attempted to add.  "
               "Try inserting or pasting less data.")
        .arg(table, field);
}

QString constraint(const QString& name, const QString& expression) {
    const QString check = QStringLiteral("CHECK (%1)").arg(expression);
    return name.isEmpty() ? check : QStringLiteral("CONSTRAINT %1 %2").arg(quoteName(name), check);
}

// A default value of the definition as SQL: a number as it stands, a quoted text as a string.
std::optional<QString> defaultSql(const QString& value) {
    bool isNumber = false;
    value.toDouble(&isNumber);
    if (isNumber)
        return value;
    if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
        return quoteString(value.mid(1, value.size() - 2));
    if (value.compare(QStringLiteral("True"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("1");
    if (value.compare(QStringLiteral("False"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("0");
    return std::nullopt;
}

// "TRUE" / "FALSE" of an attribute trimmed and upper-cased; any other text sets nothing.
std::optional<bool> flag(int t, int s, int attribute) {
    const QString v = dbAttr(t, s, attribute).trimmed().toUpper();
    if (v == u"TRUE")
        return true;
    if (v == u"FALSE")
        return false;
    return std::nullopt;
}

std::optional<QString> columnSql(int t, int s, QString* error) {
    const QString table = dbTableName(t);
    const QString field = dbAttr(t, s, AttrName);
    const int type = dbAttr(t, s, AttrType).trimmed().toInt();
    const QString sizeText = dbAttr(t, s, AttrSize).trimmed();
    const int size = sizeText.isEmpty() ? 0 : sizeText.toInt();
    const QString typeSql = declaredType(type, size);
    if (typeSql.isEmpty()) {
        *error = QStringLiteral("Invalid field data type.");
        return std::nullopt;
    }
    const bool isText = type == dbText || type == dbMemo;
    QStringList parts{quoteName(field), typeSql};
    if (isText)
        parts << QStringLiteral("COLLATE NOCASE");
    if (flag(t, s, AttrRequired) == true)
        parts << QStringLiteral("NOT NULL");
    if (const QString d = dbAttr(t, s, AttrDefault).trimmed(); !d.isEmpty()) {
        const auto sqlDefault = defaultSql(d);
        if (!sqlDefault) {
            *error = QStringLiteral("The default value %1 of the field %2 cannot be read.").arg(d, field);
            return std::nullopt;
        }
        parts << QStringLiteral("DEFAULT ") + *sqlDefault;
    }
    const QString col = quoteName(field);
    if (dbAttr(t, s, AttrPrimaryKey) == u"True")
        parts << constraint(kKeyNull, col + QStringLiteral(" IS NOT NULL"));
    if (isText && flag(t, s, AttrAllowZeroLength) == false)
        parts << constraint(zeroLengthText(table, field), col + QStringLiteral(" <> ''"));
    if (type == dbText && size > 0)
        parts << constraint(tooLongText(table, field), QStringLiteral("length(%1) <= %2").arg(col).arg(size));
    if (const QString rule = dbAttr(t, s, AttrValidationRule).trimmed(); !rule.isEmpty()) {
        const auto check = ruleToCheck(rule, field, error);
        if (!check)
            return std::nullopt;
        const QString text = dbAttr(t, s, AttrValidationText).trimmed();
        parts << constraint(text.isEmpty() ? ruleWithoutTextMessage(rule, table, field) : text, *check);
    }
    for (const TypeRule& rule : typeRules(type, field))
        parts << constraint(runtimeWords(rule.number), rule.expression);
    return parts.join(u' ');
}

struct RelationRow {
    int table;
    QString field;
    QString text;
};

QStringList keyFields(int t) {
    QStringList keys;
    for (int s = 1; s <= dbFieldCount(t); ++s)
        if (dbAttr(t, s, AttrPrimaryKey) == u"True")
            keys << dbAttr(t, s, AttrName);
    return keys;
}

// The FOREIGN KEY clause of a relation, added to the foreign table's constraints; nothing for a
// relation the engine refuses or does not enforce.
bool addRelation(const RelationRow& row, QList<QStringList>& tableConstraints, QString* error) {
    const QStringList piece = row.text.split(u'|');
    const int primary = piece.size() > 1 ? dbTableIndex(piece[1]) : -1;
    const int foreign = piece.size() > 2 ? dbTableIndex(piece[2]) : -1;
    if (primary < 0 || foreign < 0) {
        *error = QStringLiteral("Item not found in this collection.");
        return false;
    }
    const int attributes = piece.size() > 3 ? static_cast<int>(Val(piece[3])) : 0;
    const QStringList keys = keyFields(primary);
    const bool uniqueAlone = keys.size() == 1 && keys[0].compare(row.field, Qt::CaseInsensitive) == 0;
    constexpr int dbRelationDontEnforce = 2;
    if (!uniqueAlone || (attributes & dbRelationDontEnforce))
        return true; // no unique index on the referenced field (error 3609): passed over on purpose
    tableConstraints[foreign] << QStringLiteral("CONSTRAINT %1 FOREIGN KEY (%2) REFERENCES %3 (%2)")
                                     .arg(quoteName(piece[0]), quoteName(row.field),
                                          quoteName(dbTableName(primary)));
    return true;
}

} // namespace

QString ruleWithoutTextMessage(const QString& rule, const QString& table, const QString& field) {
    return kRuleWithoutTextOpening + rule +
           QStringLiteral("' set for '%1.%2'. Enter a value that the expression for this field can accept.")
               .arg(table, field);
}

QString declaredType(int typeCode, int size) {
    // The type each code is declared as; text fields also state their length.
    static constexpr std::pair<int, const char*> kTypes[] = {
        {dbBoolean, "BOOLEAN"}, {dbByte, "BYTE"},     {dbInteger, "SMALLINT"}, {dbLong, "LONG"},
        {dbSingle, "SINGLE"},   {dbDouble, "DOUBLE"}, {dbDate, "DATETIME"},    {dbMemo, "LONGTEXT"},
    };
    if (typeCode == dbText)
        return QStringLiteral("VARCHAR(%1)").arg(size > 0 ? size : 255);
    for (const auto& [code, type] : kTypes)
        if (code == typeCode)
            return QString::fromLatin1(type);
    return {};
}

std::optional<QStringList> createTableStatements(QString* error) {
    QList<QStringList> columns(kDbTableCount), constraints(kDbTableCount);
    QList<RelationRow> relations;
    for (int t = 0; t < kDbTableCount; ++t) {
        if (dbTableName(t).trimmed().isEmpty()) {
            *error = QStringLiteral("The schema definition holds no table %1.").arg(t);
            return std::nullopt;
        }
        for (int s = 1; s < kDbSlotCount && !dbAttr(t, s, AttrName).isEmpty(); ++s) {
            const auto col = columnSql(t, s, error);
            if (!col)
                return std::nullopt;
            columns[t] << *col;
            if (const QString rel = dbAttr(t, s, AttrRelation); !rel.isEmpty())
                relations.push_back({t, dbAttr(t, s, AttrName), rel});
        }
        if (const QStringList keys = keyFields(t); !keys.isEmpty()) {
            QStringList quoted;
            for (const QString& k : keys)
                quoted << quoteName(k);
            constraints[t] << QStringLiteral("CONSTRAINT %1 PRIMARY KEY (%2)")
                                  .arg(quoteName(kPrimaryIndexName), quoted.join(QStringLiteral(", ")));
        }
    }
    for (const RelationRow& row : relations)
        if (!addRelation(row, constraints, error))
            return std::nullopt;
    QStringList statements;
    for (int t = 0; t < kDbTableCount; ++t)
        statements << QStringLiteral("CREATE TABLE %1 (\n    %2\n)")
                          .arg(quoteName(dbTableName(t)),
                               (columns[t] + constraints[t]).join(QStringLiteral(",\n    ")));
    return statements;
}

bool buildStudyTables(const DbConnection& db, QString* error) {
    const auto statements = createTableStatements(error);
    if (!statements)
        return false;
    for (const QString& statement : *statements) {
        QSqlError e;
        if (!db.exec(statement, {}, &e)) {
            *error = engineDescription(e);
            return false;
        }
    }
    return true;
}

bool removeStudyFile(const QString& path, QString* error) {
    if (isDatabaseFileOpen(path)) {
        *error = QStringLiteral("The file '%1' is already opened by VESK and cannot be replaced.").arg(path);
        return false;
    }
    QFile file(path);
    if (file.exists() && !file.remove()) {
        *error = QStringLiteral("The file '%1' could not be replaced: %2").arg(path, file.errorString());
        return false;
    }
    for (const char* extra : {"-journal", "-wal", "-shm"})
        QFile::remove(path + QLatin1String(extra));
    return true;
}

bool createStudyFile(const QString& path, QString* error) {
    InitDBStruArr();
    // The old engine took a locale argument with every new database; a SQLite file keeps its text in
    // UTF-8 whatever the locale, so there is nothing to pass.
    const auto db = DbConnection::create(path, error);
    // A new file has nothing to lose: no disk sync after each table.
    return db && db->exec(QStringLiteral("PRAGMA synchronous = OFF")) && buildStudyTables(*db, error);
}

} // namespace vesk
