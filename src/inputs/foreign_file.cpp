#include "inputs/foreign_file.h"

#include "inputs/foreign_driver.h"
#include "inputs/messages.h"
#include "inputs/text_file.h"
#include "platform/prompts.h"

#include <QFile>
#include <QFileInfo>

namespace vesk {

namespace {

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

bool writeThroughDriver(ForeignDriver& driver, const QString& table, const QString& createText,
                        const CellArray& rows) {
    const bool ok = driver.execute(createText) && driver.appendRows(table, rows);
    return driver.close() && ok;
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
    if (QFileInfo::exists(path)) {
        if (prompts().ask(texts::kReplaceExistingFile, Buttons::YesNo, Icon::Question) != Answer::Yes)
            return false;
        QFile::remove(path);
    }
    const ForeignKind kind = fileType.trimmed().isEmpty() ? foreignKind(path) : foreignKindOfName(fileType);
    const bool oneField = mode == 1 || (mode == 0 && array.rank() != 2);
    const CellArray rows = oneField ? asOneField(array) : asTable(array);
    const int columns = oneField ? 0 : rows.size(1);
    bool ok = false;
    QString error;
    if (kind == ForeignKind::Text) {
        ok = writeTextTable(path, rows, &error);
        if (!ok)
            setForeignError(engine_error::kCannotOpen, error);
    } else if (auto driver = makeForeignDriver(kind); driver && driver->open(path, true)) {
        if (kind == ForeignKind::Dbf) {
            const QString base = splitFolderAndBase(path).base;
            ok = writeThroughDriver(*driver, base, dbfCreateText(base, columns), rows);
        } else if (kind == ForeignKind::Database) {
            TableDef def{tableName.isEmpty() ? QStringLiteral("ArrFileData") : tableName, {}};
            for (int j = 0; j < std::max(columns, 1); ++j)
                def.fields << FieldDef{columns ? QStringLiteral("Field%1").arg(j) : QStringLiteral("ArrData"),
                                       QStringLiteral("char"), 255};
            ok = driver->createTable(def) && driver->appendRows(def.name, rows);
            driver->close();
        } else {
            const QString table = tableName.isEmpty() ? QStringLiteral("ArrFileData") : tableName;
            ok = writeThroughDriver(*driver, table, wk1CreateText(tableName, columns), rows);
        }
    } else if (!driver) {
        setForeignError(engine_error::kInvalidPath,
                        QStringLiteral("'%1' names no kind of file that can be written.").arg(path));
    }
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
    if (kind == ForeignKind::Text) {
        QString error;
        if (writeTextTable(path, rows, &error))
            return true;
        setForeignError(engine_error::kCannotOpen, error);
        return false;
    }
    auto driver = makeForeignDriver(kind);
    if (!driver) {
        setForeignError(engine_error::kInvalidPath,
                        QStringLiteral("'%1' names no kind of file that can be written.").arg(path));
        return false;
    }
    if (!driver->open(path, true))
        return false;
    const bool typed = fieldTypes && fieldTypes->rank() == 2;
    if (kind == ForeignKind::Database && typed) {
        // The table is there already: the rows go in by field position, trimmed.
        const bool ok = driver->appendRows(tableName, preparedRows(rows, tableName, true));
        driver->close();
        return ok;
    }
    // The types follow the values as they will be stored ("Yes" of "_DctBDM" being a Boolean).
    const CellArray stored = preparedRows(rows, tableName, false);
    CellArray types;
    if (typed)
        types = *fieldTypes;
    else
        FnColTypes(stored, types);
    const QString table = kind == ForeignKind::Dbf ? splitFolderAndBase(path).base : tableName;
    const QString sql = FnCreateTableSql(table, namesFor(fieldNames, types.size(1)), types);
    return writeThroughDriver(*driver, table, sql, stored);
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

} // namespace vesk
