#include "demography/user_life_table_file.h"

#include "demography/standard_table_texts.h"
#include "foundation/settings_file.h"
#include "inputs/foreign_file.h"
#include "platform/texts.h"

#include <QDir>
#include <QFileInfo>
#include <cmath>

namespace vesk {

namespace {

namespace t = standard_table_texts;

// The text layout: the block title and its three tagged lines, read as the settings file's tables.
std::optional<CellArray> textRows(const QString& path, QString* reason) {
    CellArray rows;
    if (FnReadLTS(text(t::kTextTitle), rows, path))
        return rows;
    const QString refusal = settingsBlockRefusal();
    *reason = refusal.isEmpty() ? text(t::kNoTextBlock).arg(path) : refusal;
    return std::nullopt;
}

// The table of the configured name in the folder of a dBase file (looked up as the driver does,
// whatever the case of its name), else the file itself.
QString dbfSource(const QString& path, const QString& tableName) {
    const QFileInfo chosen(path);
    const QString wanted = tableName + QStringLiteral(".dbf");
    for (const QString& entry : chosen.dir().entryList(QDir::Files))
        if (entry.compare(wanted, Qt::CaseInsensitive) == 0)
            return chosen.dir().filePath(entry);
    return path;
}

// The rows of a table read through the foreign-file layer, or the reason there are none.
std::optional<CellArray> readTable(const QString& path, const QString& table, QString* reason) {
    CellArray rows = FnReadArrFile(path, table);
    if (rows.rank() == 2 && rows.size(0) > 0)
        return rows;
    *reason = lastForeignError().number != 0 ? lastForeignError().words : text(t::kNoRows).arg(path);
    return std::nullopt;
}

// A database file or a worksheet: the configured table, else "LTS".
std::optional<CellArray> namedTableRows(const QString& path, const QString& tableName, QString* reason) {
    if (auto rows = readTable(path, tableName, reason))
        return rows;
    if (lastForeignError().number != engine_error::kNoSuchTable)
        return std::nullopt;
    const QString fallback = text(t::kFallbackTable);
    if (auto rows = readTable(path, fallback, reason))
        return rows;
    if (lastForeignError().number == engine_error::kNoSuchTable)
        *reason = text(t::kNoTable).arg(path, tableName, fallback);
    return std::nullopt;
}

std::optional<CellArray> sourceRows(const QString& path, ForeignKind kind, const QString& tableName,
                                    QString* reason) {
    switch (kind) {
    case ForeignKind::Text:
        return textRows(path, reason);
    case ForeignKind::Dbf:
        return readTable(dbfSource(path, tableName), QString(), reason);
    default:
        return namedTableRows(path, tableName, reason);
    }
}

// The number a cell holds: a number (not a Boolean nor a date), or a text that is one whole.
std::optional<double> finiteNumber(const Cell& v) {
    double x = 0;
    bool ok = false;
    if (v.isNumber() && !v.isBoolean() && !v.isDate()) {
        x = v.toDouble();
        ok = true;
    } else if (v.isText()) {
        x = v.toString().trimmed().toDouble(&ok);
    }
    if (!ok || !std::isfinite(x))
        return std::nullopt;
    return x;
}

// The first three fields of the rows as numbers: age, female, male.
std::optional<CellArray> lifeTableOf(const CellArray& rows, const QString& path, QString* reason) {
    const int fields = rows.size(1);
    if (fields < 3) {
        *reason = text(t::kTooFewFields).arg(path, QString::number(fields));
        return std::nullopt;
    }
    const int n = rows.size(0), r0 = rows.lbound(0), c0 = rows.lbound(1);
    CellArray table({n, 3});
    for (int i = 0; i < n; ++i)
        for (int c = 0; c < 3; ++c) {
            const Cell& v = rows(r0 + i, c0 + c);
            const auto x = finiteNumber(v);
            if (!x) {
                *reason =
                    text(t::kNoNumber).arg(text(t::kFieldNames[c]), QString::number(i + 1), v.toString());
                return std::nullopt;
            }
            table(i, c) = Cell(*x);
        }
    return table;
}

} // namespace

std::optional<CellArray> readUserLifeTable(const QString& path, const QString& tableName, QString* reason) {
    const ForeignKind kind = foreignKind(path);
    if (kind == ForeignKind::None) {
        *reason = text(t::kNoKind).arg(path);
        return std::nullopt;
    }
    if (!QFileInfo(path).isFile()) {
        *reason = text(t::kNoFile).arg(path);
        return std::nullopt;
    }
    const auto rows = sourceRows(path, kind, tableName, reason);
    if (!rows)
        return std::nullopt;
    return lifeTableOf(*rows, path, reason);
}

} // namespace vesk
