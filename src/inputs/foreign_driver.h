#pragma once
// The common face of the foreign-file kinds: each kind is a small "installable driver" that opens
// its file as a database, creates tables from a `create table` text, adds rows by field position
// and reads a table back. The worksheet kinds take a named range as the table; dBase takes the
// folder as the database and a file's base name as the table; database files are SQLite.

#include "inputs/foreign_types.h"

#include <functional>
#include <memory>

namespace vesk {

class ForeignDriver {
public:
    virtual ~ForeignDriver() = default;

    // Opens the database: the file, or for dBase the folder of the file. With `forWriting`, a
    // file that does not exist yet is made (at the latest by close()).
    virtual bool open(const QString& path, bool forWriting) = 0;
    virtual bool hasTable(const QString& name) = 0;
    // Runs a `create table` statement; nothing else is accepted.
    bool execute(const QString& sql);
    virtual bool createTable(const TableDef& def) = 0;
    // Adds rows (records, fields) to a table, each value going to the field of its position.
    virtual bool appendRows(const QString& table, const CellArray& rows) = 0;
    // The table, or std::nullopt when the file holds none of that name.
    virtual std::optional<ForeignTable> readTable(const QString& name) = 0;
    // Writes out what was built and lets the file go. Returns false when the writing failed.
    virtual bool close() = 0;

protected:
    // Whether no table of that name is there yet; sets the engine's error when one is.
    bool tableIsNew(const QString& name);
};

// A table made in this session, kept in memory until the driver closes.
struct BufferedTable {
    TableDef def;
    QList<QList<Cell>> rows;
    // Where a worksheet places the table (zero-based) and whether the field names stand above the rows;
    // a table placed whole by its writer (the chart data export) brings its own head row.
    int firstRow = 0, firstCol = 0;
    bool fieldHeads = true;
};

// A driver that keeps the tables it makes until close(), so that the written file can follow all
// of their data (field widths, code page, one workbook). `tableNoun` is what the kind calls a
// table in its messages.
class BufferingDriver : public ForeignDriver {
public:
    explicit BufferingDriver(QString tableNoun) : tableNoun_(std::move(tableNoun)) {}
    // The tables of this session, then those of the file.
    bool hasTable(const QString& name) final;
    // Finds the table of this session and checks the rows against its fields before bufferRows().
    bool appendRows(const QString& table, const CellArray& rows) final;

protected:
    virtual bool fileHasTable(const QString& name) = 0;
    // Adds the rows, already checked to fit, to the table; false with the engine's error set.
    virtual bool bufferRows(BufferedTable& table, const CellArray& rows) = 0;
    QList<BufferedTable> building_;

private:
    QString tableNoun_;
};

// A driver for the kind; nullptr for ForeignKind::None and Text (text files need none).
std::unique_ptr<ForeignDriver> makeForeignDriver(ForeignKind kind);

// Helpers shared by the drivers.
// Opens a file through `load`, which fills in its error when the file cannot be read; a file
// that does not exist is fine `forWriting` (close() makes it). Sets the engine's error otherwise.
bool openForeignFile(const QString& path, bool forWriting, const std::function<bool(QString*)>& load);
// The field names of the first row of a range; a blank heading becomes "F" and its column number.
QStringList headingsOf(const QList<Cell>& firstRow);
// Whether the array fits the table's fields; sets the engine's error when it does not.
bool rowsFitFields(const CellArray& rows, int fieldCount);

// The table being written in this session under `table` (names compared case-blind), or nullptr.
template <typename Building> Building* findBuilding(QList<Building>& building, const QString& table) {
    for (auto& candidate : building)
        if (candidate.def.name.compare(table, Qt::CaseInsensitive) == 0)
            return &candidate;
    return nullptr;
}
// The table of this session that `rows` are appended to, when it exists and the rows fit its
// fields; nullptr with the engine's error set otherwise.
void setNotMadeInThisSession(const QString& table, const QString& noun = QStringLiteral("range"));
template <typename Building>
Building* buildingToAppend(QList<Building>& building, const QString& table, const CellArray& rows) {
    Building* b = findBuilding(building, table);
    if (!b) {
        setNotMadeInThisSession(table);
        return nullptr;
    }
    return rowsFitFields(rows, static_cast<int>(b->def.fields.size())) ? b : nullptr;
}
// A worksheet range read as a table: its first row names the fields, the rows below are the
// records. `cellAt(row, col)` gives a cell of the sheet; the range's corners are inclusive.
ForeignTable tableOfRange(const QString& name, int row1, int col1, int row2, int col2,
                          const std::function<Cell(int, int)>& cellAt);
// Row `i` of `rows` (counted from its lower bound) as the table's fields store it.
QList<Cell> storedRow(const TableDef& def, const CellArray& rows, int i, int limit);
// Text cut to the driver's limit: worksheets keep 255 characters, dBase 254.
QString cutText(const QString& text, int limit);
// A value as the text a file keeps of it: valueText of platform/cell.h.
// The value a field stores: a text field, or any text, the value's text cut to the field's length
// and to the driver's limit; other values as they are.
Cell storedValue(const FieldDef& field, const Cell& value, int limit);

} // namespace vesk
