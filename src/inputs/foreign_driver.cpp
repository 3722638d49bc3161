#include "inputs/foreign_driver.h"

#include "inputs/dbf_file.h"
#include "inputs/sqlite_table_file.h"
#include "inputs/wk1_file.h"
#include "inputs/xls_file.h"
#include "inputs/xlsx_file.h"

#include <QFile>

namespace vesk {

bool ForeignDriver::execute(const QString& sql) {
    QString error;
    const auto def = parseCreateTable(sql, &error);
    if (!def) {
        setForeignError(engine_error::kSyntaxInCreate, error);
        return false;
    }
    return createTable(*def);
}

bool ForeignDriver::tableIsNew(const QString& name) {
    if (!hasTable(name))
        return true;
    setForeignError(engine_error::kTableExists, QStringLiteral("Table '%1' already exists.").arg(name));
    return false;
}

bool BufferingDriver::hasTable(const QString& name) {
    return findBuilding(building_, name) || fileHasTable(name);
}

bool BufferingDriver::appendRows(const QString& table, const CellArray& rows) {
    BufferedTable* b = findBuilding(building_, table);
    if (!b) {
        setNotMadeInThisSession(table, tableNoun_);
        return false;
    }
    return rowsFitFields(rows, static_cast<int>(b->def.fields.size())) && bufferRows(*b, rows);
}

std::unique_ptr<ForeignDriver> makeForeignDriver(ForeignKind kind) {
    switch (kind) {
    case ForeignKind::Wk1:
        return std::make_unique<Wk1Driver>();
    case ForeignKind::Xlsx:
        return std::make_unique<XlsxDriver>();
    case ForeignKind::Xls:
        return std::make_unique<XlsDriver>();
    case ForeignKind::Dbf:
        return std::make_unique<DbfDriver>();
    case ForeignKind::Database:
        return std::make_unique<SqliteTableDriver>();
    default:
        return nullptr;
    }
}

bool openForeignFile(const QString& path, bool forWriting, const std::function<bool(QString*)>& load) {
    if (!QFile::exists(path)) {
        if (forWriting)
            return true;
        setForeignError(engine_error::kCannotOpen, QStringLiteral("Cannot open the file '%1'.").arg(path));
        return false;
    }
    QString error;
    if (!load(&error)) {
        setForeignError(engine_error::kCannotOpen,
                        QStringLiteral("Cannot open the file '%1': %2.").arg(path, error));
        return false;
    }
    return true;
}

QStringList headingsOf(const QList<Cell>& firstRow) {
    QStringList out;
    for (int j = 0; j < firstRow.size(); ++j) {
        // A name keeps its blanks, as it was written; only a blank heading takes the default.
        const QString h = firstRow[j].toString();
        out << (h.trimmed().isEmpty() ? QStringLiteral("F%1").arg(j + 1) : h);
    }
    return out;
}

void setNotMadeInThisSession(const QString& table, const QString& noun) {
    setForeignError(
        engine_error::kNotWritable,
        QStringLiteral("Cannot update '%1'; the %2 was not made in this session.").arg(table, noun));
}

QList<Cell> storedRow(const TableDef& def, const CellArray& rows, int i, int limit) {
    QList<Cell> row;
    for (int j = 0; j < rows.size(1); ++j)
        row << storedValue(def.fields[j], rows(rows.lbound(0) + i, rows.lbound(1) + j), limit);
    return row;
}

ForeignTable tableOfRange(const QString& name, int row1, int col1, int row2, int col2,
                          const std::function<Cell(int, int)>& cellAt) {
    ForeignTable t;
    t.name = name;
    QList<Cell> heading;
    for (int c = col1; c <= col2; ++c)
        heading << cellAt(row1, c);
    t.fieldNames = headingsOf(heading);
    if (row2 > row1) {
        t.rows = CellArray{row2 - row1, col2 - col1 + 1};
        for (int r = row1 + 1; r <= row2; ++r)
            for (int c = col1; c <= col2; ++c)
                t.rows(r - row1 - 1, c - col1) = cellAt(r, c);
    }
    return t;
}

bool rowsFitFields(const CellArray& rows, int fieldCount) {
    if (rows.rank() != 2 && !rows.isEmpty()) {
        setForeignError(engine_error::kItemNotFound, QStringLiteral("The rows are not a table of fields."));
        return false;
    }
    if (rows.rank() == 2 && rows.size(1) > fieldCount) {
        setForeignError(
            engine_error::kItemNotFound,
            QStringLiteral("Item not found in this collection: the table has %1 fields, the rows %2.")
                .arg(fieldCount)
                .arg(rows.size(1)));
        return false;
    }
    return true;
}

QString cutText(const QString& text, int limit) {
    if (text.size() <= limit)
        return text;
    // Never leave half of a surrogate pair behind.
    return text.left(text[limit - 1].isHighSurrogate() ? limit - 1 : limit);
}

Cell storedValue(const FieldDef& field, const Cell& value, int limit) {
    if (value.isEmpty() || value.isNull())
        return value;
    const bool textField = field.type() == FieldType::Text;
    if (!textField && !value.isText() && !value.isArray())
        return value;
    const int cap = textField && field.length > 0 ? std::min(field.length, limit) : limit;
    return Cell(cutText(valueText(value), cap));
}

} // namespace vesk
