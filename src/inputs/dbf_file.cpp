#include "inputs/dbf_file.h"

#include "inputs/codepage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <shapefil.h>

namespace vesk {

namespace {

// The code page a table's language driver byte or .cpg file names; Windows-1252 when none.
CodePage pageOf(const char* name) {
    const QString n = QString::fromLatin1(name ? name : "").trimmed().toUpper();
    if (n.contains(QLatin1String("UTF-8")) || n.contains(QLatin1String("UTF8")) || n == u"65001")
        return CodePage::Utf8;
    if (n == u"LDID/1" || n.endsWith(QLatin1String("437")))
        return CodePage::Cp437;
    if (n == u"LDID/2" || n.endsWith(QLatin1String("850")))
        return CodePage::Cp850;
    return CodePage::Cp1252;
}

// The decimals a number needs to come back whole, at 15 significant digits.
int decimalsNeeded(double v) {
    if (v == 0.0 || !std::isfinite(v))
        return 0;
    const int magnitude = static_cast<int>(std::floor(std::log10(std::fabs(v))));
    QString s = QString::number(v, 'f', std::clamp(14 - magnitude, 0, 17));
    if (s.contains(u'.')) {
        while (s.endsWith(u'0'))
            s.chop(1);
        if (s.endsWith(u'.'))
            s.chop(1);
    }
    const int dot = static_cast<int>(s.indexOf(u'.'));
    return dot < 0 ? 0 : static_cast<int>(s.size()) - dot - 1;
}

int integerDigits(double v) {
    const double a = std::fabs(std::trunc(v));
    return (a < 1.0 ? 1 : static_cast<int>(std::floor(std::log10(a))) + 1) + (v < 0 ? 1 : 0);
}

// A value converted to what a field of the type holds; std::nullopt when it cannot be.
std::optional<Cell> toFieldValue(FieldType type, const Cell& v) {
    if (v.isEmpty() || v.isNull() || (v.isText() && v.toString().trimmed().isEmpty()))
        return Cell::null();
    const QString text = v.toString().trimmed();
    switch (type) {
    case FieldType::Text:
        return Cell(v.toString());
    case FieldType::Logical:
        if (v.isNumber())
            return Cell::boolean(v.toDouble() != 0.0);
        if (QStringList{"T", "Y", "TRUE", "YES"}.contains(text.toUpper()))
            return Cell::boolean(true);
        if (QStringList{"F", "N", "FALSE", "NO"}.contains(text.toUpper()))
            return Cell::boolean(false);
        return std::nullopt;
    case FieldType::Date: {
        if (v.isNumber())
            return Cell::date(v.toDouble());
        const QDateTime when = QDateTime::fromString(text, Qt::ISODate);
        if (when.isValid())
            return Cell::date(dateSerial(when));
        const QDate day = QDate::fromString(text, Qt::ISODate);
        return day.isValid() ? std::optional<Cell>(Cell::date(dateSerial(day))) : std::nullopt;
    }
    default: {
        if (v.isNumber())
            return Cell(v.toDouble());
        bool ok = false;
        const double x = text.toDouble(&ok);
        return ok ? std::optional<Cell>(Cell(x)) : std::nullopt;
    }
    }
}

// Field names: the first ten bytes, made unique with a number at the end where cutting clashed.
QStringList fieldNamesFor(const TableDef& def, CodePage page) {
    QStringList out;
    for (const auto& f : def.fields) {
        QString name = f.name;
        while (encodeText(name, page).size() > DbfDriver::kMaxNameBytes)
            name.chop(1);
        for (int k = 1; out.contains(name, Qt::CaseInsensitive); ++k) {
            const QString tail = QString::number(k);
            name = f.name;
            while (encodeText(name, page).size() + tail.size() > DbfDriver::kMaxNameBytes)
                name.chop(1);
            name += tail;
        }
        out << name;
    }
    return out;
}

// The bytes of a text cut to the width without splitting a character.
QByteArray fitBytes(const QString& text, CodePage page, int width) {
    QByteArray b = encodeText(text, page);
    if (b.size() <= width)
        return b;
    QString t = text;
    while (!t.isEmpty() && encodeText(t, page).size() > width)
        t.chop(1);
    return encodeText(t, page);
}

struct Layout {
    char type = 'C';
    int width = 1, decimals = 0;
};

Layout layoutOf(const FieldDef& f, const QList<QList<Cell>>& rows, int col, CodePage page) {
    Layout l;
    switch (f.type()) {
    case FieldType::Text: {
        int bytes = f.length > 0 ? f.length : DbfDriver::kMaxText;
        for (const auto& row : rows)
            if (row[col].isText())
                bytes = std::max(bytes, static_cast<int>(encodeText(row[col].toString(), page).size()));
        return {'C', std::clamp(bytes, 1, DbfDriver::kMaxText), 0};
    }
    case FieldType::Logical:
        return {'L', 1, 0};
    case FieldType::Date:
        return {'D', 8, 0};
    default:
        break;
    }
    const bool whole = f.type() == FieldType::Integer || f.type() == FieldType::Long;
    int digits = f.type() == FieldType::Integer ? 6 : whole ? 11 : 1, decimals = 0;
    for (const auto& row : rows) {
        if (!row[col].isNumber() || !std::isfinite(row[col].toDouble()))
            continue;
        digits = std::max(digits, integerDigits(row[col].toDouble()));
        if (!whole)
            decimals = std::max(decimals, decimalsNeeded(row[col].toDouble()));
    }
    if (whole)
        return {'N', std::min(digits, 20), 0};
    decimals = std::min(decimals, std::max(0, 20 - digits - 1));
    return {'N', 20, decimals};
}

} // namespace

bool DbfDriver::open(const QString& path, bool forWriting) {
    building_.clear();
    folder_ = splitFolderAndBase(path).folder;
    if (!QFileInfo(folder_).isDir()) {
        setForeignError(engine_error::kInvalidPath, QStringLiteral("'%1' is not a valid path.").arg(folder_));
        return false;
    }
    return true;
}

QString DbfDriver::tableFile(const QString& name) const {
    const QString wanted = name + QStringLiteral(".dbf");
    for (const QString& entry : QDir(folder_).entryList(QDir::Files))
        if (entry.compare(wanted, Qt::CaseInsensitive) == 0)
            return QDir(folder_).filePath(entry);
    return QString();
}

bool DbfDriver::createTable(const TableDef& def) {
    if (def.name.isEmpty() || def.name.contains(u'/') || def.name.contains(u'\\')) {
        setForeignError(engine_error::kInvalidName,
                        QStringLiteral("'%1' is not a valid name.").arg(def.name));
        return false;
    }
    if (!tableIsNew(def.name))
        return false;
    if (def.fields.isEmpty() || def.fields.size() > 255) {
        setForeignError(engine_error::kTooLarge, QStringLiteral("A dBase table has 1 to 255 fields."));
        return false;
    }
    building_ << BufferedTable{def, {}};
    return true;
}

bool DbfDriver::bufferRows(BufferedTable& t, const CellArray& rows) {
    const int n = rows.rank() == 2 ? rows.size(0) : 0;
    for (int i = 0; i < n; ++i) {
        QList<Cell> row;
        for (int j = 0; j < t.def.fields.size(); ++j) {
            const Cell v = j < rows.size(1) ? rows(rows.lbound(0) + i, rows.lbound(1) + j) : Cell::null();
            const auto stored = toFieldValue(t.def.fields[j].type(), v);
            if (!stored) {
                setForeignError(3421, QStringLiteral("Data type conversion error: '%1' in the field '%2'.")
                                          .arg(v.toString(), t.def.fields[j].name));
                return false;
            }
            row << *stored;
        }
        t.rows << row;
    }
    return true;
}

bool DbfDriver::writeTable(const BufferedTable& t) {
    bool oneByte = true;
    for (const auto& f : t.def.fields)
        oneByte = oneByte && encodable(f.name, CodePage::Cp1252);
    for (const auto& row : t.rows)
        for (const auto& v : row)
            oneByte = oneByte && (!v.isText() || encodable(v.toString(), CodePage::Cp1252));
    const CodePage page = oneByte ? CodePage::Cp1252 : CodePage::Utf8;
    const QString path = QDir(folder_).filePath(t.def.name + QStringLiteral(".dbf"));
    DBFHandle h = DBFCreateEx(QFile::encodeName(path).constData(), oneByte ? "LDID/87" : "UTF-8");
    if (!h) {
        setForeignError(engine_error::kCannotOpen, QStringLiteral("Cannot create '%1'.").arg(path));
        return false;
    }
    const QStringList names = fieldNamesFor(t.def, page);
    QList<Layout> layouts;
    bool ok = true;
    for (int j = 0; j < t.def.fields.size() && ok; ++j) {
        layouts << layoutOf(t.def.fields[j], t.rows, j, page);
        ok = DBFAddNativeFieldType(h, encodeText(names[j], page).constData(), layouts[j].type,
                                   layouts[j].width, layouts[j].decimals) >= 0;
    }
    for (int i = 0; i < t.rows.size() && ok; ++i) {
        for (int j = 0; j < layouts.size(); ++j) {
            const Cell& v = t.rows[i][j];
            if (v.isNull() || (v.isNumber() && !std::isfinite(v.toDouble()))) {
                DBFWriteNULLAttribute(h, i, j);
            } else if (layouts[j].type == 'C') {
                DBFWriteStringAttribute(h, i, j, fitBytes(v.toString(), page, layouts[j].width).constData());
            } else if (layouts[j].type == 'L') {
                DBFWriteLogicalAttribute(h, i, j, v.toDouble() != 0.0 ? 'T' : 'F');
            } else if (layouts[j].type == 'D') {
                const QDate day = serialToDateTime(v.toDouble()).date();
                DBFWriteDoubleAttribute(h, i, j, day.year() * 10000.0 + day.month() * 100 + day.day());
            } else {
                DBFWriteDoubleAttribute(h, i, j, v.toDouble());
            }
        }
    }
    DBFClose(h);
    if (!ok) {
        QFile::remove(path);
        setForeignError(engine_error::kCannotOpen,
                        QStringLiteral("Cannot write the fields of '%1'.").arg(path));
    }
    return ok;
}

bool DbfDriver::close() {
    bool ok = true;
    for (const auto& b : building_)
        ok = writeTable(b) && ok;
    building_.clear();
    return ok;
}

namespace {
Cell readValue(DBFHandle h, int rec, int field, char type, CodePage page) {
    if (DBFIsAttributeNULL(h, rec, field))
        return Cell::null();
    const QByteArray raw(DBFReadStringAttribute(h, rec, field));
    switch (type) {
    case 'C':
    case 'V':
        return Cell(decodeBytes(raw, page));
    case 'N':
    case 'F':
    case 'I':
        return Cell(DBFReadDoubleAttribute(h, rec, field));
    case 'D': {
        const QDate day = QDate::fromString(QString::fromLatin1(raw.trimmed()), QStringLiteral("yyyyMMdd"));
        return day.isValid() ? Cell::date(dateSerial(day)) : Cell::null();
    }
    case 'L': {
        const char c = raw.isEmpty() ? '?' : raw[0];
        if (QByteArray("TtYy").contains(c))
            return Cell::boolean(true);
        if (QByteArray("FfNn").contains(c))
            return Cell::boolean(false);
        return Cell::null();
    }
    default:
        return Cell::null(); // memo and binary fields live in files of their own
    }
}
} // namespace

std::optional<ForeignTable> DbfDriver::readTable(const QString& name) {
    const QString path = tableFile(name);
    if (path.isEmpty())
        return std::nullopt;
    DBFHandle h = DBFOpen(QFile::encodeName(path).constData(), "rb");
    if (!h)
        return std::nullopt;
    const CodePage page = pageOf(DBFGetCodePage(h));
    const int fields = DBFGetFieldCount(h), records = DBFGetRecordCount(h);
    ForeignTable t;
    t.name = name;
    QList<char> types;
    for (int j = 0; j < fields; ++j) {
        char fieldName[XBASE_FLDNAME_LEN_READ + 1] = {};
        int width = 0, decimals = 0;
        DBFGetFieldInfo(h, j, fieldName, &width, &decimals);
        t.fieldNames << decodeBytes(QByteArray(fieldName), page);
        types << DBFGetNativeFieldType(h, j);
    }
    QList<int> live;
    for (int i = 0; i < records; ++i)
        if (!DBFIsRecordDeleted(h, i))
            live << i;
    if (!live.isEmpty() && fields > 0) {
        t.rows = CellArray{static_cast<int>(live.size()), fields};
        for (int i = 0; i < live.size(); ++i)
            for (int j = 0; j < fields; ++j)
                t.rows(i, j) = readValue(h, live[i], j, types[j], page);
    }
    DBFClose(h);
    return t;
}

} // namespace vesk
