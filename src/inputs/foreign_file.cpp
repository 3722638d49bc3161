#include "inputs/foreign_file.h"

#include "inputs/foreign_driver.h"
#include "inputs/messages.h"
#include "inputs/staged_file.h"
#include "inputs/text_file.h"
#include "platform/csv.h"
#include "platform/prompts.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>

namespace vesk {

namespace {

// A step that reports its failure in its own words: `ok`, and when it is false the engine's
// "cannot open" error with those words.
bool cannotOpenUnless(bool ok, const QString& error) {
    if (!ok)
        setForeignError(engine_error::kCannotOpen, error);
    return ok;
}

// The array as (rows, fields): a one-dimensional array is one field.
CellArray asTable(const CellArray& array) {
    if (array.rank() == 2)
        return array;
    const int n = array.rank() == 1 ? array.size(0) : 0;
    CellArray out{n, 1};
    for (int i = 0; i < n; ++i)
        out(i, 0) = array(array.lbound(0) + i);
    return out;
}

// Every value of the array, row after row, as one field.
CellArray asOneField(const CellArray& array) {
    if (array.rank() != 2)
        return asTable(array);
    CellArray out{static_cast<int>(array.count()), 1};
    for (std::size_t k = 0; k < array.count(); ++k)
        out(static_cast<int>(k), 0) = array.flat(k);
    return out;
}

QString trimmedText(const Cell& v) {
    return v.toString().trimmed();
}

// Values as they go to the file: trimmed for an existing database table, and in "_DctBDM" the
// first three columns as text and "Yes" / "No" of the fourth as True / False.
CellArray preparedRows(const CellArray& rows, const QString& tableName, bool trim) {
    CellArray out = rows;
    const bool causes = tableName.toUpper() == QLatin1String("_DCTBDM");
    const int n = rows.rank() == 2 ? rows.size(0) : 0, m = rows.rank() == 2 ? rows.size(1) : 0;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < m; ++j) {
            Cell& v = out(i, j);
            if (trim && v.isText())
                v = trimmedText(v).isEmpty() ? Cell::null() : Cell(trimmedText(v));
            if (!causes || v.isEmpty() || v.isNull())
                continue;
            if (j < 3) {
                v = Cell(v.toString());
            } else if (j == 3 && v.isText()) {
                const QString word = v.toString().toUpper();
                if (word == QLatin1String("YES"))
                    v = Cell::boolean(true);
                else if (word == QLatin1String("NO"))
                    v = Cell::boolean(false);
            }
        }
    }
    return out;
}

QStringList namesFor(const QStringList& given, int columns) {
    QStringList out = given.mid(0, columns);
    for (int j = static_cast<int>(out.size()); j < columns; ++j)
        out << QStringLiteral("Field%1").arg(j);
    return out;
}

// What a file of `kind` calls itself in a refusal, and whether it holds a number that is no finite
// number: a database table holds an infinity (the engine stores not-a-number as Null), a text file
// writes every number as text, and worksheets, workbooks and dBase tables hold none.
struct NonFiniteRule {
    const char* noun;
    bool infinity;
    bool notANumber;
};

NonFiniteRule nonFiniteRule(ForeignKind kind) {
    switch (kind) {
    case ForeignKind::Database: return {"a database table", true, false};
    case ForeignKind::Text: return {"a text file", true, true};
    case ForeignKind::Dbf: return {"a dBase table", false, false};
    case ForeignKind::Wk1: return {"a Lotus worksheet", false, false};
    default: return {"an Excel workbook", false, false};
    }
}

// Whether every number of `rows` is one that a file of `kind` brings back; sets the engine's
// overflow error naming the first that is not, with its row and field.
bool holdsEveryNumber(ForeignKind kind, const CellArray& rows, const QStringList& fieldNames) {
    const NonFiniteRule rule = nonFiniteRule(kind);
    const int n = rows.rank() == 2 ? rows.size(0) : 0, m = rows.rank() == 2 ? rows.size(1) : 0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < m; ++j) {
            const Cell& v = rows(rows.lbound(0) + i, rows.lbound(1) + j);
            const double x = v.isNumber() ? v.toDouble() : 0.0;
            if (std::isfinite(x) || (std::isinf(x) && rule.infinity) || (std::isnan(x) && rule.notANumber))
                continue;
            setForeignError(engine_error::kNumericOverflow,
                            QStringLiteral("The value %1 in row %2 of the field '%3' is no finite number, "
                                           "which %4 cannot hold.")
                                .arg(shortestNumber(x))
                                .arg(i + 1)
                                .arg(namesFor(fieldNames, m).at(j), QLatin1String(rule.noun)));
            return false;
        }
    return true;
}

bool writeThroughDriver(ForeignDriver& driver, const QString& table, const QString& createText,
                        const CellArray& rows) {
    const bool ok = driver.execute(createText) && driver.appendRows(table, rows);
    return driver.close() && ok;
}

// Whether the file of `target` can be written beside it; sets the engine's error when not, a
// folder that is not there being a path that is not valid.
bool stagedReady(const StagedFile& staged, const QString& target) {
    const QString folder = splitFolderAndBase(target).folder;
    if (!QFileInfo(folder).isDir()) {
        setForeignError(engine_error::kInvalidPath, QStringLiteral("'%1' is not a valid path.").arg(folder));
        return false;
    }
    QString error;
    const bool ready = staged.ready(&error);
    return cannotOpenUnless(ready, error);
}

bool commitStaged(StagedFile& staged) {
    QString error;
    const bool committed = staged.commit(&error);
    return cannotOpenUnless(committed, error);
}

// The older writer's fixed layout written to `path`: one text field, or one per column.
bool writeOlderLayout(ForeignKind kind, const QString& path, const CellArray& rows, int columns,
                      const QString& tableName) {
    if (kind == ForeignKind::Text) {
        QString error;
        const bool written = writeTextTable(path, rows, &error);
        return cannotOpenUnless(written, error);
    }
    auto driver = makeForeignDriver(kind);
    if (!driver) {
        setForeignError(engine_error::kInvalidPath,
                        QStringLiteral("'%1' names no kind of file that can be written.").arg(path));
        return false;
    }
    if (!driver->open(path, true))
        return false;
    if (kind == ForeignKind::Dbf) {
        const QString base = splitFolderAndBase(path).base;
        return writeThroughDriver(*driver, base, dbfCreateText(base, columns), rows);
    }
    if (kind == ForeignKind::Database) {
        TableDef def{tableName.isEmpty() ? QStringLiteral("ArrFileData") : tableName, {}};
        for (int j = 0; j < std::max(columns, 1); ++j)
            def.fields << FieldDef{columns ? QStringLiteral("Field%1").arg(j) : QStringLiteral("ArrData"),
                                   QStringLiteral("char"), 255};
        const bool ok = driver->createTable(def) && driver->appendRows(def.name, rows);
        return driver->close() && ok;
    }
    const QString table = tableName.isEmpty() ? QStringLiteral("ArrFileData") : tableName;
    return writeThroughDriver(*driver, table, wk1CreateText(tableName, columns), rows);
}

// What FnWriteArrFile is asked to write, apart from the rows and the path.
struct WriteRequest {
    ForeignKind kind;
    QString tableName;
    QStringList fieldNames;
    const CellArray* fieldTypes;
};

// The rows as a typed table in the file at `path`.
bool writeTypedTable(const WriteRequest& r, const QString& path, const CellArray& rows) {
    auto driver = makeForeignDriver(r.kind);
    if (!driver->open(path, true))
        return false;
    const bool typed = r.fieldTypes && r.fieldTypes->rank() == 2;
    if (r.kind == ForeignKind::Database && typed) {
        // The table is there already: the rows go in by field position, trimmed.
        const bool ok = driver->appendRows(r.tableName, preparedRows(rows, r.tableName, true));
        return driver->close() && ok;
    }
    // The types follow the values as they will be stored ("Yes" of "_DctBDM" being a Boolean).
    const CellArray stored = preparedRows(rows, r.tableName, false);
    CellArray types;
    if (typed)
        types = *r.fieldTypes;
    else
        FnColTypes(stored, types);
    const QString table = r.kind == ForeignKind::Dbf ? splitFolderAndBase(path).base : r.tableName;
    const QString sql = FnCreateTableSql(table, namesFor(r.fieldNames, types.size(1)), types);
    return writeThroughDriver(*driver, table, sql, stored);
}

// A database file gains its table in place: it may be the open study, which a copy put over it
// would cut off from its connection. Each call's rows go in as one transaction; a file that the
// failed write made is taken away again.
bool writeDatabaseTable(const WriteRequest& r, const QString& path, const CellArray& rows) {
    const bool existed = QFileInfo::exists(path);
    const bool ok = writeTypedTable(r, path, rows);
    if (!ok && !existed)
        QFile::remove(path);
    return ok;
}

// Whether the dBase table of `path` is not there yet, looked up in its folder as the driver does;
// sets the engine's error when it is.
bool dbfTableIsNew(const QString& path) {
    auto probe = makeForeignDriver(ForeignKind::Dbf);
    if (!probe->open(path, true))
        return false;
    const QString base = splitFolderAndBase(path).base;
    const bool there = probe->hasTable(base);
    probe->close();
    if (there)
        setForeignError(engine_error::kTableExists, QStringLiteral("Table '%1' already exists.").arg(base));
    return !there;
}

} // namespace

QString wk1CreateText(const QString& tableName, int columns) {
    if (columns <= 0)
        return tableName.isEmpty()
                   ? QStringLiteral("Create table ArrFileData (ArrData char(255)")
                   : QStringLiteral("Create table ") + tableName + QStringLiteral(" (ArrData char(255))");
    QString fields;
    for (int j = 0; j < columns; ++j)
        fields += QStringLiteral("Field%1 char(255),").arg(j);
    fields.chop(1);
    return tableName.isEmpty()
               ? QStringLiteral("Create table ArrFileData (") + fields
               : QStringLiteral("Create table ") + tableName + QStringLiteral(" (") + fields + u')';
}

QString dbfCreateText(const QString& baseName, int columns) {
    if (columns <= 0)
        return QStringLiteral("create table ") + baseName + QStringLiteral("(Field0  char(254))");
    QString fields;
    for (int j = 0; j < columns; ++j)
        fields += QStringLiteral("Field%1 char(254),").arg(j);
    fields.chop(1);
    return QStringLiteral("create table ") + baseName + u'(' + fields + u')';
}

bool FnWriteArr(const CellArray& array, int mode, const QString& fileType, const QString& path,
                const QString& tableName) {
    clearForeignError();
    if (QFileInfo::exists(path) &&
        prompts().ask(texts::kReplaceExistingFile, Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    const ForeignKind kind = fileType.trimmed().isEmpty() ? foreignKind(path) : foreignKindOfName(fileType);
    const bool oneField = mode == 1 || (mode == 0 && array.rank() != 2);
    const CellArray rows = oneField ? asOneField(array) : asTable(array);
    // The file written is a new one that takes the old one's place only once it is whole.
    StagedFile staged(path, false);
    const bool ok = stagedReady(staged, path) &&
                    writeOlderLayout(kind, staged.path(), rows, oneField ? 0 : rows.size(1), tableName) &&
                    commitStaged(staged);
    if (!ok) {
        prompts().ask(lastForeignError().words, Buttons::Ok, Icon::Critical);
        return false;
    }
    prompts().ask(texts::kDataStoredInFile + path, Buttons::Ok, Icon::Information);
    return true;
}

bool FnWriteArrFile(const CellArray& array, const QString& path, const QString& tableName,
                    const QStringList& fieldNames, const CellArray* fieldTypes) {
    clearForeignError();
    if (path.trimmed().isEmpty() || array.rank() == 0)
        return false;
    const CellArray rows = asTable(array);
    const ForeignKind kind = foreignKind(path);
    if (!holdsEveryNumber(kind, rows, fieldNames))
        return false;
    if (kind == ForeignKind::Text) {
        QString error;
        const bool written = writeTextTable(path, rows, &error);
        return cannotOpenUnless(written, error);
    }
    if (!makeForeignDriver(kind)) {
        setForeignError(engine_error::kInvalidPath,
                        QStringLiteral("'%1' names no kind of file that can be written.").arg(path));
        return false;
    }
    const WriteRequest request{kind, tableName, fieldNames, fieldTypes};
    if (kind == ForeignKind::Database)
        return writeDatabaseTable(request, path, rows);
    // A dBase table is its own file, so the one asked for must not be there yet; a worksheet or
    // workbook gains the range beside those it holds.
    if (kind == ForeignKind::Dbf && !dbfTableIsNew(path))
        return false;
    StagedFile staged(path, kind != ForeignKind::Dbf);
    return stagedReady(staged, path) && writeTypedTable(request, staged.path(), rows) && commitStaged(staged);
}

CellArray FnReadArrFile(const QString& path, const QString& tableName, QStringList* fieldNames) {
    clearForeignError();
    if (fieldNames)
        fieldNames->clear();
    const ForeignKind kind = foreignKind(path);
    if (!QFileInfo::exists(path))
        return CellArray();
    if (kind == ForeignKind::Text) {
        QString refusal;
        auto rows = readTextTable(path, &refusal);
        if (!refusal.isEmpty())
            setForeignError(engine_error::kTooLarge, refusal);
        return rows.value_or(CellArray());
    }
    auto driver = makeForeignDriver(kind);
    if (!driver || !driver->open(path, false))
        return CellArray();
    const QString table = kind == ForeignKind::Dbf ? splitFolderAndBase(path).base : tableName;
    auto t = driver->readTable(table);
    driver->close();
    if (!t) {
        setForeignError(engine_error::kNoSuchTable,
                        QStringLiteral("The file '%1' holds no table '%2'.").arg(path, table));
        return CellArray();
    }
    if (fieldNames)
        *fieldNames = t->fieldNames;
    return t->rows;
}

namespace {

// The tables through one session of the driver at `path`: each made from its values' types and
// filled; the driver writes them out at close.
// Every statement is read before the file is opened, so that a name the drivers refuse ends the
// session before any table of it is made.
bool writeTablesThroughDriver(ForeignKind kind, const QString& path, const QList<NamedTable>& tables) {
    QList<TableDef> defs;
    QList<CellArray> rows;
    for (const NamedTable& t : tables) {
        rows << preparedRows(asTable(t.rows), t.name, false);
        CellArray types;
        FnColTypes(rows.last(), types);
        QString error;
        const auto def = parseCreateTable(FnCreateTableSql(t.name, namesFor(t.fieldNames, types.size(1)), types), &error);
        if (!def) {
            setForeignError(engine_error::kSyntaxInCreate, error);
            return false;
        }
        defs << *def;
    }
    auto driver = makeForeignDriver(kind);
    if (!driver->open(path, true))
        return false;
    bool ok = true;
    for (int k = 0; k < defs.size() && ok; ++k)
        ok = driver->createTable(defs[k]) && driver->appendRows(defs[k].name, rows[k]);
    return driver->close() && ok;
}

} // namespace

bool FnWriteArrTables(const QString& path, const QList<NamedTable>& tables) {
    clearForeignError();
    const ForeignKind kind = foreignKind(path);
    if (kind != ForeignKind::Wk1 && kind != ForeignKind::Xlsx && kind != ForeignKind::Database) {
        setForeignError(engine_error::kInvalidPath,
                        QStringLiteral("'%1' names no kind of file that holds many tables.").arg(path));
        return false;
    }
    for (const NamedTable& t : tables)
        if (!holdsEveryNumber(kind, asTable(t.rows), t.fieldNames))
            return false;
    if (kind == ForeignKind::Database) {
        const bool existed = QFileInfo::exists(path);
        const bool ok = writeTablesThroughDriver(kind, path, tables);
        if (!ok && !existed)
            QFile::remove(path);
        return ok;
    }
    StagedFile staged(path, true);
    return stagedReady(staged, path) && writeTablesThroughDriver(kind, staged.path(), tables) &&
           commitStaged(staged);
}

std::optional<QList<std::optional<ForeignTable>>> FnReadArrTables(const QString& path, const QStringList& names) {
    clearForeignError();
    const ForeignKind kind = foreignKind(path);
    auto driver = kind == ForeignKind::Text || kind == ForeignKind::Dbf ? nullptr : makeForeignDriver(kind);
    if (!driver || !QFileInfo::exists(path) || !driver->open(path, false)) {
        if (lastForeignError().number == 0)
            setForeignError(engine_error::kCannotOpen, QStringLiteral("The file '%1' cannot be opened.").arg(path));
        return std::nullopt;
    }
    QList<std::optional<ForeignTable>> out;
    for (const QString& name : names) {
        clearForeignError();
        auto t = driver->readTable(name);
        if (!t && lastForeignError().number != 0) {
            driver->close();
            return std::nullopt;
        }
        out << t;
    }
    driver->close();
    clearForeignError();
    return out;
}

} // namespace vesk
