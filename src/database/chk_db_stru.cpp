#include "database/chk_db_stru.h"

#include "database/db_connection.h"
#include "database/db_schema.h"
#include "database/db_structure.h"
#include "database/db_texts.h"
#include "database/type_rules.h"
#include "foundation/settings.h"
#include "platform/prompts.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace vesk {

QString StructureFinding::message() const {
    using namespace dbtext;
    switch (kind) {
    case Kind::MissingTable:
        return TableNotPresent1 + table + TableNotPresent2;
    case Kind::MissingField:
        return FieldNotPresent1 + field + FieldNotPresent2 + table + FieldNotPresent3;
    case Kind::Difference:
        break;
    }
    return AttributeOpen1 + field + AttributeOpen2 + table + AttributeMiddle[attribute - AttrType] +
           expected + AttributeClose;
}

QString StructureFinding::logLine() const {
    using namespace dbtext;
    switch (kind) {
    case Kind::MissingTable:
        return {};
    case Kind::MissingField:
        return LogMissing1 + field + LogMissing2 + table + LogMissing3;
    case Kind::Difference:
        break;
    }
    return LogArrayProperties + field + u'|' + table + u'|' + expected + LogGap + LogTableProperties +
           foundField + u'|' + foundTable + u'|' + found;
}

namespace {

QString folded(const QString& s) {
    return s.trimmed().toUpper();
}

const DbConnection::TableEntry* findTable(const QList<DbConnection::TableEntry>& tables,
                                          const QString& name) {
    for (const auto& t : tables)
        if (folded(t.name) == folded(name))
            return &t;
    return nullptr;
}

const FieldProperties* findField(const QList<FieldProperties>& fields, const QString& name) {
    for (const auto& f : fields)
        if (folded(f.name) == folded(name))
            return &f;
    return nullptr;
}

// The comparisons of one field, in their order; each only where the definition states a value.
void compareField(int t, int s, const DbConnection::TableEntry& table, const FieldProperties& found,
                  QList<StructureFinding>& out) {
    for (int a = AttrType; a <= AttrAllowZeroLength; ++a) {
        const QString expected = dbAttr(t, s, a).trimmed();
        if (expected.isEmpty())
            continue;
        const QString value = found.property(a);
        if (folded(value) == folded(expected))
            continue;
        out.push_back({StructureFinding::Kind::Difference, dbTableName(t), dbAttr(t, s, AttrName), a,
                       expected, table.name, found.name, value});
    }
}

// The rules of kind and range of a field whose type agrees: told as a difference of its type, the
// value found carrying the rules the file holds, or saying that it holds none.
void compareTypeRules(int t, int s, const DbConnection::TableEntry& table, const FieldProperties& found,
                      QList<StructureFinding>& out) {
    const QString type = dbAttr(t, s, AttrType).trimmed();
    if (folded(found.type) != folded(type))
        return; // the type itself is told already
    const QString expected = expectedTypeRules(type.toInt(), dbAttr(t, s, AttrName));
    if (folded(found.typeRules) == folded(expected))
        return;
    const QString held = found.typeRules.isEmpty() ? dbtext::WithoutTypeRules : found.typeRules;
    out.push_back({StructureFinding::Kind::Difference, dbTableName(t), dbAttr(t, s, AttrName), AttrType, type,
                   table.name, found.name, found.type + u' ' + held});
}

// Walks the definition over the file; false when a table is missing, which ends the walk.
bool compareTables(const DbConnection& db, StructureReport& report) {
    QSqlError error;
    const auto tables = db.tables(&error);
    if (error.isValid()) {
        report.unreadable = engineDescription(error);
        return false;
    }
    for (int t = 0; t < kDbTableCount; ++t) {
        const DbConnection::TableEntry* table = findTable(tables, dbTableName(t));
        if (!table) {
            report.findings.push_back(
                {.kind = StructureFinding::Kind::MissingTable, .table = dbTableName(t)});
            return false;
        }
        const auto fields = readFieldProperties(db, *table, &error);
        if (!fields) {
            report.unreadable = engineDescription(error);
            return false;
        }
        for (int s = 1; s < kDbSlotCount; ++s) {
            const QString name = dbAttr(t, s, AttrName);
            if (name.isEmpty())
                continue;
            if (const FieldProperties* f = findField(*fields, name)) {
                compareField(t, s, *table, *f, report.findings);
                compareTypeRules(t, s, *table, *f, report.findings);
            } else
                report.findings.push_back(
                    {.kind = StructureFinding::Kind::MissingField, .table = dbTableName(t), .field = name});
        }
    }
    return true;
}

} // namespace

StructureReport checkDatabaseStructure(const QString& dbPath) {
    InitDBStruArr();
    StructureReport report;
    if (!QFileInfo::exists(dbPath)) {
        report.fileMissing = true;
        return report;
    }
    QString error;
    const auto db = DbConnection::open(dbPath, &error);
    if (!db) {
        report.unreadable = error;
        return report;
    }
    compareTables(*db, report);
    return report;
}

QString structureLogPath() {
    QString& out = settings().StatOutPath;
    if (out.isEmpty())
        out = !settings().AppPath.isEmpty() ? settings().AppPath : QCoreApplication::applicationDirPath();
    return out + dbtext::StructureLogName;
}

bool ChkDBStru(const QString& dbPath) {
    // The log is rewritten on every run, before anything else; when it cannot be written the check
    // still runs and shows its messages.
    const QString logPath = structureLogPath();
    QFile::remove(logPath);
    QFile log(logPath);
    const bool logOpen = log.open(QIODevice::WriteOnly | QIODevice::Truncate);
    QTextStream out(&log);

    const StructureReport report = checkDatabaseStructure(dbPath);
    if (report.fileMissing) {
        prompts().ask(dbtext::DatabaseNotPresent, Buttons::Ok, Icon::Warning);
        return false;
    }
    for (const StructureFinding& f : report.findings) {
        prompts().ask(f.message(), Buttons::Ok, Icon::Warning);
        if (const QString line = f.logLine(); logOpen && !line.isEmpty())
            out << line << "\r\n";
    }
    // A file that the engine cannot open as a database ends the check with its result as it stood,
    // True: loading the study then meets the same failure and says what it is.
    return report.unreadable.isEmpty() ? report.passed() : true;
}

} // namespace vesk
