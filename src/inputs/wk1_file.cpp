#include "inputs/wk1_file.h"

#include "inputs/codepage.h"
#include "inputs/sheet_bounds.h"
#include "inputs/xlsx_file.h"

#include <QFile>
#include <QSaveFile>
#include <QtEndian>
#include <cmath>
#include <cstring>

namespace vesk {

namespace {

enum RecordType : quint16 {
    kBof = 0x0000,
    kEof = 0x0001,
    kRange = 0x0006,
    kName = 0x000B,
    kBlank = 0x000C,
    kInteger = 0x000D,
    kNumber = 0x000E,
    kLabel = 0x000F,
    kFormula = 0x0010,
    kString = 0x0033,
};
constexpr quint16 kVersion = 0x0406;
constexpr quint8 kFormatDefault = 0xFF; // protected, special "default"
constexpr quint8 kFormatDate = 0xF2;    // protected, special D1 (day-month-year)

quint16 u16(const QByteArray& b, int at) {
    return qFromLittleEndian<quint16>(reinterpret_cast<const uchar*>(b.constData()) + at);
}

void putU16(QByteArray& b, quint16 v) {
    uchar raw[2];
    qToLittleEndian(v, raw);
    b.append(reinterpret_cast<const char*>(raw), 2);
}

void putRecord(QByteArray& out, quint16 type, const QByteArray& body) {
    putU16(out, type);
    putU16(out, static_cast<quint16>(body.size()));
    out += body;
}

// Special formats 2-4 and 9-10 are dates, 7-8 and 11-12 times of day: both are date cells here.
bool isDateFormat(quint8 format) {
    if ((format & 0x70) != 0x70)
        return false;
    const int special = format & 0x0F;
    return (special >= 2 && special <= 4) || (special >= 7 && special <= 12);
}

// The text of a LABEL or STRING record, which ends with a NUL; a zero byte inside an LMBCS escape
// does not end it.
QByteArray recordText(const QByteArray& body) {
    QByteArray text = body.mid(5);
    text.truncate(lmbcsLength(text));
    return text;
}

QString labelText(const QByteArray& body) {
    QByteArray text = recordText(body);
    // The first character is the alignment prefix: ' left, " right, ^ centred, \ repeated.
    if (!text.isEmpty() && QByteArray("'\"^\\|").contains(text[0]))
        text.remove(0, 1);
    return decodeLmbcs(text);
}

CellBox boxOf(const Wk1Name& n) {
    return {std::min(n.row1, n.row2), std::min(n.col1, n.col2), std::max(n.row1, n.row2),
            std::max(n.col1, n.col2)};
}

QByteArray cellHead(quint8 format, int col, int row) {
    QByteArray b;
    b += static_cast<char>(format);
    putU16(b, static_cast<quint16>(col));
    putU16(b, static_cast<quint16>(row));
    return b;
}

} // namespace

std::optional<Wk1Sheet> Wk1Sheet::load(const QString& path, QString* error) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        *error = f.errorString();
        return std::nullopt;
    }
    const QByteArray data = f.readAll();
    Wk1Sheet sheet;
    sheet.fileSize_ = data.size();
    if (!sheet.readRecords(data, error) || !sheet.checkBounds(data.size(), error))
        return std::nullopt;
    return sheet;
}

bool Wk1Sheet::readRecords(const QByteArray& data, QString* error) {
    int at = 0;
    bool sawBof = false;
    while (at + 4 <= data.size()) {
        const quint16 type = u16(data, at), len = u16(data, at + 2);
        if (at + 4 + len > data.size())
            break;
        Record r{type, data.mid(at + 4, len)};
        at += 4 + len;
        if (!sawBof) {
            if (type != kBof || len != 2 || u16(r.body, 0) < 0x0404 || u16(r.body, 0) > 0x0406)
                break;
            sawBof = true;
            continue;
        }
        if (type == kEof)
            return true;
        if (type == kName && len >= 24)
            readNameRecord(r.body);
        else if (type != kRange && type != kName) { // the used area is worked out again on saving
            readCellRecord(r);
            kept_ << r;
        }
    }
    *error = sawBof ? QStringLiteral("the worksheet ends before its last record")
                    : QStringLiteral("not a Lotus 1-2-3 release 2 worksheet");
    return false;
}

void Wk1Sheet::readNameRecord(const QByteArray& body) {
    QByteArray raw = body.left(16);
    raw.truncate(lmbcsLength(raw));
    names_ << Wk1Name{decodeLmbcs(raw), u16(body, 16), u16(body, 18), u16(body, 20), u16(body, 22)};
}

// Every cell and every range within the sheet, and no range sparser than the file can account for.
bool Wk1Sheet::checkBounds(qint64 fileSize, QString* error) const {
    if (lastRow_ >= kMaxRows || lastCol_ >= kMaxCols) {
        *error = QStringLiteral("a cell lies beyond row %1 or column %2, the edge of a sheet")
                     .arg(kMaxRows)
                     .arg(kMaxCols);
        return false;
    }
    for (const auto& n : names_) {
        *error = rangeRefusal(boxOf(n), cells_, kMaxRows, kMaxCols, fileSize,
                              QStringLiteral("the range '%1'").arg(n.name));
        if (!error->isEmpty())
            return false;
    }
    return true;
}

CellBox Wk1Sheet::areaToRead(const Wk1Name& name) const {
    return boxToRead(boxOf(name), cells_, fileSize_);
}

void Wk1Sheet::readCellRecord(const Record& r) {
    const bool cellRecord = r.type == kBlank || r.type == kInteger || r.type == kNumber || r.type == kLabel ||
                            r.type == kFormula || r.type == kString;
    if (!cellRecord || r.body.size() < 5)
        return;
    const quint8 format = static_cast<quint8>(r.body[0]);
    const int col = u16(r.body, 1), row = u16(r.body, 3);
    Cell value = Cell::null();
    auto number = [&](double v) {
        if (!std::isfinite(v))
            return Cell::null(); // ERR and NA are kept as special not-a-numbers
        return isDateFormat(format) ? Cell::date(dateFromExcelSerial(v)) : Cell(v);
    };
    if (r.type == kInteger && r.body.size() >= 7) {
        value = number(static_cast<qint16>(u16(r.body, 5)));
    } else if ((r.type == kNumber || r.type == kFormula) && r.body.size() >= 13) {
        double v;
        std::memcpy(&v, r.body.constData() + 5, 8);
        value = number(qFromLittleEndian(v));
    } else if (r.type == kLabel) {
        value = Cell(labelText(r.body));
    } else if (r.type == kString) {
        value = Cell(decodeLmbcs(recordText(r.body)));
    }
    cells_[{row, col}] = Value{value, format};
    lastRow_ = std::max(lastRow_, row);
    lastCol_ = std::max(lastCol_, col);
}

Cell Wk1Sheet::cell(int row, int col) const {
    const auto it = cells_.constFind({row, col});
    return it == cells_.constEnd() ? Cell::null() : it->value;
}

void Wk1Sheet::setCell(int row, int col, const Cell& value) {
    if (value.isEmpty() || value.isNull())
        return;
    Record r;
    if (value.isText() || value.isArray()) {
        r.type = kLabel;
        r.body = cellHead(kFormatDefault, col, row) + '\'' +
                 encodeLmbcs(cutText(valueText(value), kMaxLabel)) + '\0';
    } else {
        // Lotus has no logical cells: True is 1 and False 0, as its @TRUE and @FALSE give them.
        // Lotus counts 29 February 1900 as a day, as worksheets after it do.
        const double v = value.isBoolean() ? (value.toDouble() != 0.0 ? 1.0 : 0.0)
                         : value.isDate()  ? excelSerialFromDate(value.toDouble())
                                           : value.toDouble();
        const quint8 format = value.isDate() ? kFormatDate : kFormatDefault;
        if (!value.isDate() && v == std::trunc(v) && v >= -32768.0 && v <= 32767.0) {
            r.type = kInteger;
            r.body = cellHead(format, col, row);
            putU16(r.body, static_cast<quint16>(static_cast<qint16>(v)));
        } else {
            r.type = kNumber;
            r.body = cellHead(format, col, row);
            const double le = qToLittleEndian(v);
            r.body.append(reinterpret_cast<const char*>(&le), 8);
        }
    }
    readCellRecord(r);
    kept_ << r;
}

const Wk1Name* Wk1Sheet::findName(const QString& name) const {
    for (const auto& n : names_)
        if (n.name.compare(name, Qt::CaseInsensitive) == 0)
            return &n;
    return nullptr;
}

bool Wk1Sheet::save(const QString& path, QString* error) const {
    QByteArray out, body;
    putU16(body, kVersion);
    putRecord(out, kBof, body);
    body.clear();
    putU16(body, 0);
    putU16(body, 0);
    putU16(body, static_cast<quint16>(std::max(lastCol_, 0)));
    putU16(body, static_cast<quint16>(std::max(lastRow_, 0)));
    putRecord(out, kRange, body);
    for (const auto& r : kept_)
        putRecord(out, r.type, r.body);
    for (const auto& n : names_) {
        body = encodeLmbcs(n.name).left(kMaxName);
        body.append(16 - body.size(), '\0');
        for (int v : {n.col1, n.row1, n.col2, n.row2})
            putU16(body, static_cast<quint16>(v));
        putRecord(out, kName, body);
    }
    putRecord(out, kEof, QByteArray());
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(out) != out.size() || !f.commit()) {
        *error = f.errorString();
        return false;
    }
    return true;
}

// ---------------------------------------------------------------------------------------------

bool Wk1Driver::open(const QString& path, bool forWriting) {
    path_ = path;
    building_.clear();
    dirty_ = false;
    sheet_ = Wk1Sheet();
    return openForeignFile(path, forWriting, [&](QString* error) {
        auto sheet = Wk1Sheet::load(path, error);
        if (sheet)
            sheet_ = std::move(*sheet);
        return sheet.has_value();
    });
}

bool Wk1Driver::hasTable(const QString& name) {
    if (sheet_.findName(name))
        return true;
    for (const auto& b : building_)
        if (b.def.name.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

bool Wk1Driver::createTable(const TableDef& def) {
    if (def.name.isEmpty() || encodeLmbcs(def.name).size() > Wk1Sheet::kMaxName) {
        setForeignError(
            engine_error::kInvalidName,
            QStringLiteral("'%1' is not a valid name: a Lotus range name has 1 to %2 bytes, a character "
                           "beyond code page 850 taking three.")
                .arg(def.name)
                .arg(Wk1Sheet::kMaxName));
        return false;
    }
    if (!tableIsNew(def.name))
        return false;
    if (def.fields.size() > Wk1Sheet::kMaxCols) {
        setForeignError(
            engine_error::kTooLarge,
            QStringLiteral("A Lotus worksheet has no more than %1 columns.").arg(Wk1Sheet::kMaxCols));
        return false;
    }
    // The new range starts one blank row below whatever the sheet holds.
    const int first = sheet_.lastRow() < 0 ? 0 : sheet_.lastRow() + 2;
    if (first >= Wk1Sheet::kMaxRows) {
        setForeignError(
            engine_error::kTooLarge,
            QStringLiteral("A Lotus worksheet has no more than %1 rows.").arg(Wk1Sheet::kMaxRows));
        return false;
    }
    for (int j = 0; j < def.fields.size(); ++j)
        sheet_.setCell(first, j, Cell(def.fields[j].name));
    sheet_.addName(Wk1Name{def.name, 0, first, std::max(0, static_cast<int>(def.fields.size()) - 1), first});
    building_ << Building{def, first, 0};
    dirty_ = true;
    return true;
}

bool Wk1Driver::appendRows(const QString& table, const CellArray& rows) {
    Building* b = buildingToAppend(building_, table, rows);
    if (!b)
        return false;
    const int n = rows.rank() == 2 ? rows.size(0) : 0;
    if (b->firstRow + b->rows + n >= Wk1Sheet::kMaxRows || b != &building_.last()) {
        setForeignError(engine_error::kTooLarge,
                        QStringLiteral("No room below the range '%1' in the worksheet.").arg(table));
        return false;
    }
    for (int i = 0; i < n; ++i) {
        const int row = b->firstRow + b->rows + 1;
        const QList<Cell> values = storedRow(b->def, rows, i, Wk1Sheet::kMaxLabel);
        for (int j = 0; j < values.size(); ++j)
            sheet_.setCell(row, j, values[j]);
        ++b->rows;
    }
    // Stretch the range over the new rows.
    Wk1Name grown{b->def.name, 0, b->firstRow, std::max(0, static_cast<int>(b->def.fields.size()) - 1),
                  b->firstRow + b->rows};
    QList<Wk1Name> names = sheet_.names();
    for (auto& nm : names)
        if (nm.name.compare(b->def.name, Qt::CaseInsensitive) == 0)
            nm = grown;
    sheet_.replaceNames(names);
    dirty_ = true;
    return true;
}

std::optional<ForeignTable> Wk1Driver::readTable(const QString& name) {
    const Wk1Name* range = sheet_.findName(name);
    if (!range)
        return std::nullopt;
    const CellBox box = sheet_.areaToRead(*range);
    return tableOfRange(range->name, box.row1, box.col1, box.row2, box.col2,
                        [this](int r, int c) { return sheet_.cell(r, c); });
}

bool Wk1Driver::close() {
    if (!dirty_)
        return true;
    dirty_ = false;
    QString error;
    if (!sheet_.save(path_, &error)) {
        setForeignError(engine_error::kCannotOpen,
                        QStringLiteral("Cannot write '%1': %2.").arg(path_, error));
        return false;
    }
    return true;
}

} // namespace vesk
