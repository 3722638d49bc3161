#pragma once
// Lotus 1-2-3 release 2 worksheets (.WK1), read and written by the program itself.
//
// A file is a run of records, each a 16-bit type, a 16-bit length and the body, little-endian:
// BOF (0x0000, version 0x0406), RANGE (0x0006, the used area), cells as BLANK (0x000C), INTEGER
// (0x000D, a 16-bit whole number), NUMBER (0x000E, an IEEE double), LABEL (0x000F, an alignment
// prefix and the text, NUL-ended), FORMULA (0x0010, its last value first) with STRING (0x0033) for
// a text result, NAME (0x000B, a range name of at most 15 bytes and its corners), EOF
// (0x0001). Each cell starts with a format byte (protection bit, format type, decimals or special
// code: 0x72 is the date format D1) and its column and row. Texts are LMBCS.
//
// A named range serves as a table: its first row holds the field names, the rows below the
// records. New tables go below the used area of an existing sheet; the other records of the file
// are kept as they were.

#include "inputs/foreign_driver.h"
#include "inputs/sheet_bounds.h"

#include <QByteArray>
#include <QMap>

namespace vesk {

struct Wk1Name {
    QString name;
    int col1 = 0, row1 = 0, col2 = 0, row2 = 0;
};

class Wk1Sheet {
public:
    static constexpr int kMaxRows = 8192;
    static constexpr int kMaxCols = 256;
    static constexpr int kMaxName = 15;
    static constexpr int kMaxLabel = 255;

    // Parses a file; std::nullopt with `error` set when it is not a worksheet of this release.
    static std::optional<Wk1Sheet> load(const QString& path, QString* error);
    bool save(const QString& path, QString* error) const;

    // The value of a cell: Null for a blank, a date for a number in a date or time format.
    Cell cell(int row, int col) const;
    void setCell(int row, int col, const Cell& value); // Empty and Null write nothing
    const QList<Wk1Name>& names() const { return names_; }
    const Wk1Name* findName(const QString& name) const; // case-blind
    void addName(const Wk1Name& name) { names_ << name; }
    void replaceNames(const QList<Wk1Name>& names) { names_ = names; }
    // The part of the range to read as a table (see boxToRead).
    CellBox areaToRead(const Wk1Name& name) const;
    // The last used row, -1 on an empty sheet.
    int lastRow() const { return lastRow_; }

private:
    struct Record {
        quint16 type;
        QByteArray body;
    };
    struct Value {
        Cell value;
        quint8 format = 0xFF;
    };
    bool readRecords(const QByteArray& data, QString* error);
    void readNameRecord(const QByteArray& body);
    void readCellRecord(const Record& r);
    bool checkBounds(qint64 fileSize, QString* error) const;
    QList<Record> kept_; // records of the loaded file other than cells, names, RANGE and EOF
    QMap<QPair<int, int>, Value> cells_;
    QList<Wk1Name> names_;
    int lastRow_ = -1;
    int lastCol_ = -1;
    qint64 fileSize_ = 0; // of the loaded file, which its ranges must be accounted for by
};

class Wk1Driver : public ForeignDriver {
public:
    bool open(const QString& path, bool forWriting) override;
    bool hasTable(const QString& name) override;
    bool createTable(const TableDef& def) override;
    bool appendRows(const QString& table, const CellArray& rows) override;
    std::optional<ForeignTable> readTable(const QString& name) override;
    bool close() override;

private:
    struct Building {
        TableDef def;
        int firstRow = 0; // the heading row
        int rows = 0;     // records written so far
    };
    QString path_;
    Wk1Sheet sheet_;
    QList<Building> building_;
    bool dirty_ = false;
};

} // namespace vesk
