#include "inputs/dbf_field.h"

#include "inputs/dbf_number.h"
#include "inputs/foreign_driver.h"

#include <cmath>

namespace vesk {

namespace {

// The days a D field holds: 1 January 100 to 31 December 9999.
const double kFirstDay = dateSerial(QDate(100, 1, 1));
const double kLastDay = dateSerial(QDate(9999, 12, 31));

bool holdsDate(double serial) {
    return serial > kFirstDay - 1 && serial < kLastDay + 1;
}

bool hasValue(const Cell& v) {
    return !v.isEmpty() && !v.isNull() && !(v.isNumber() && !std::isfinite(v.toDouble()));
}

QByteArray textBytes(const Cell& v, CodePage page) {
    return encodeText(cutText(valueText(v), kDbfMaxText), page);
}

// Blanks at the end of a text are the field's padding and would not come back: a text that ends in
// them is refused, unless it is longer than the field, whose cut the format allows.
std::optional<DbfField> textField(const FieldDef& def, const QList<QList<Cell>>& rows, int col, CodePage page) {
    int bytes = def.length > 0 ? std::min(def.length, kDbfMaxText) : kDbfMaxText;
    for (const auto& row : rows) {
        if (!hasValue(row[col]))
            continue;
        const QString text = valueText(row[col]);
        if (text.endsWith(u' ') && text.size() <= kDbfMaxText) {
            setForeignError(dbf_error::kFieldOverflow,
                            QStringLiteral("The text '%1' of the field '%2' ends in blanks, which a dBase "
                                           "text field does not keep apart from its padding.")
                                .arg(text, def.name));
            return std::nullopt;
        }
        bytes = std::max(bytes, static_cast<int>(textBytes(row[col], page).size()));
    }
    return DbfField{QByteArray(), 'C', std::max(bytes, 1), 0, 0};
}

std::optional<DbfField> numberField(const FieldDef& def, const QList<QList<Cell>>& rows, int col) {
    QList<double> values;
    for (const auto& row : rows)
        if (hasValue(row[col]))
            values << row[col].toDouble();
    const bool whole = def.type() == FieldType::Integer || def.type() == FieldType::Long;
    double refused = 0.0;
    const auto f = numberFieldFor(values, whole,
                                  def.type() == FieldType::Integer ? 6
                                  : whole                          ? 11
                                                                   : 1,
                                  &refused);
    if (!f) {
        setForeignError(dbf_error::kFieldOverflow,
                        QStringLiteral("The value %1 of the field '%2' does not fit a dBase number field: no "
                                       "text of %3 characters reads back to it.")
                            .arg(shortestText(refused), def.name)
                            .arg(DbfNumberField::kMaxWidth));
        return std::nullopt;
    }
    return DbfField{QByteArray(), 'N', f->width, f->decimals, 0, f->exponent};
}

std::optional<DbfField> dateField(const FieldDef& def, const QList<QList<Cell>>& rows, int col) {
    for (const auto& row : rows) {
        const double v = row[col].toDouble();
        if (hasValue(row[col]) && holdsDate(v) && v != std::floor(v)) {
            setForeignError(dbf_error::kFieldOverflow,
                            QStringLiteral("The date %1 of the field '%2' has a time of day, which a dBase "
                                           "date does not hold.")
                                .arg(Cell::date(v).toString(), def.name));
            return std::nullopt;
        }
        if (!hasValue(row[col]) || holdsDate(v))
            continue;
        const QString named = std::fabs(v) < 1e8 ? Cell::date(v).toString() : shortestText(v);
        setForeignError(
            dbf_error::kFieldOverflow,
            QStringLiteral("The date %1 of the field '%2' is outside the years 100 to 9999 that a "
                           "dBase date holds.")
                .arg(named, def.name));
        return std::nullopt;
    }
    return DbfField{QByteArray(), 'D', 8, 0, 0};
}

QByteArray padded(QByteArray bytes, int width) {
    bytes.truncate(width);
    return bytes + QByteArray(width - bytes.size(), ' ');
}

QByteArray dateBytes(double serial) {
    const QDate d = serialToDateTime(serial).date();
    return QStringLiteral("%1%2%3")
        .arg(d.year(), 4, 10, QLatin1Char('0'))
        .arg(d.month(), 2, 10, QLatin1Char('0'))
        .arg(d.day(), 2, 10, QLatin1Char('0'))
        .toLatin1();
}

Cell dateValue(QByteArrayView bytes) {
    const QByteArrayView t = bytes.trimmed();
    if (t.size() != 8 || t == "00000000")
        return Cell::null();
    bool ok[3] = {false, false, false};
    const QDate d(t.first(4).toInt(&ok[0]), t.sliced(4, 2).toInt(&ok[1]), t.sliced(6, 2).toInt(&ok[2]));
    return ok[0] && ok[1] && ok[2] && d.isValid() ? Cell::date(dateSerial(d)) : Cell::null();
}

Cell logicalValue(QByteArrayView bytes) {
    const char c = bytes.isEmpty() ? '?' : bytes[0];
    if (QByteArrayView("TtYy").contains(c))
        return Cell::boolean(true);
    if (QByteArrayView("FfNn").contains(c))
        return Cell::boolean(false);
    return Cell::null();
}

Cell textValue(QByteArrayView bytes, CodePage page) {
    while (!bytes.isEmpty() && (bytes.back() == ' ' || bytes.back() == '\0'))
        bytes.chop(1);
    return bytes.isEmpty() ? Cell::null() : Cell(decodeBytes(bytes.toByteArray(), page));
}

Cell binaryInteger(QByteArrayView bytes) {
    if (bytes.size() != 4)
        return Cell::null();
    quint32 v = 0;
    for (int k = 3; k >= 0; --k)
        v = v << 8 | static_cast<quint8>(bytes[k]);
    return Cell(static_cast<double>(static_cast<qint32>(v)));
}

} // namespace

std::optional<DbfField> dbfFieldFor(const FieldDef& def, const QByteArray& name,
                                    const QList<QList<Cell>>& rows, int col, CodePage page) {
    std::optional<DbfField> f;
    switch (def.type()) {
    case FieldType::Text:
        f = textField(def, rows, col, page);
        break;
    case FieldType::Logical:
        f = DbfField{QByteArray(), 'L', 1, 0, 0};
        break;
    case FieldType::Date:
        f = dateField(def, rows, col);
        break;
    default:
        f = numberField(def, rows, col);
        break;
    }
    if (f)
        f->name = name;
    return f;
}

QByteArray dbfFieldBytes(const Cell& v, const DbfField& f, CodePage page) {
    if (!hasValue(v))
        return padded(f.type == 'L' ? QByteArray("?") : QByteArray(), f.width);
    switch (f.type) {
    case 'C':
        return padded(textBytes(v, page), f.width);
    case 'L':
        return v.toDouble() != 0.0 ? QByteArray("T") : QByteArray("F");
    case 'D':
        return dateBytes(v.toDouble());
    default:
        return numberText(v.toDouble(), DbfNumberField{f.width, f.decimals, f.exponent});
    }
}

Cell dbfFieldValue(QByteArrayView bytes, const DbfField& f, CodePage page) {
    switch (f.type) {
    case 'C':
    case 'V':
        return textValue(bytes, page);
    case 'N':
    case 'F': {
        const auto v = parseNumber(bytes);
        return v ? Cell(*v) : Cell::null();
    }
    case 'I':
        return binaryInteger(bytes);
    case 'D':
        return dateValue(bytes);
    case 'L':
        return logicalValue(bytes);
    default:
        return Cell::null(); // memo and binary fields live in files of their own
    }
}

} // namespace vesk
