#include "inputs/dbf_file.h"

#include "inputs/codepage.h"
#include "inputs/dbf_field.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cmath>

namespace vesk {

namespace {

// The code page a .cpg file beside the table names, else its language driver byte;
// Windows-1252 when neither says.
CodePage pageOf(const QByteArray& cpg, quint8 languageDriver) {
    const QString n = QString::fromLatin1(cpg).trimmed().toUpper();
    if (n.contains(QLatin1String("UTF-8")) || n.contains(QLatin1String("UTF8")) || n == u"65001")
        return CodePage::Utf8;
    if (n.endsWith(QLatin1String("437")) || (n.isEmpty() && languageDriver == 0x01))
        return CodePage::Cp437;
    if (n.endsWith(QLatin1String("850")) || (n.isEmpty() && languageDriver == 0x02))
        return CodePage::Cp850;
    return CodePage::Cp1252;
}

constexpr quint8 kWindows1252 = 0x57; // the language driver byte of Windows ANSI

// The file beside `dbf` with the other suffix, found case-blind; empty when there is none.
QString besideFile(const QString& dbf, const QString& suffix) {
    const QFileInfo info(dbf);
    const QString wanted = info.completeBaseName() + suffix;
    for (const QString& entry : info.dir().entryList(QDir::Files))
        if (entry.compare(wanted, Qt::CaseInsensitive) == 0)
            return info.dir().filePath(entry);
    return QString();
}

QByteArray cpgOf(const QString& dbf) {
    const QString cpg = besideFile(dbf, QStringLiteral(".cpg"));
    QFile f(cpg);
    return !cpg.isEmpty() && f.open(QIODevice::ReadOnly) ? f.read(64) : QByteArray();
}

// The checked layout of the file and its bytes (the header only unless `whole`); std::nullopt with
// the engine's error set, naming the file, when it is no dBase table or claims more than it holds.
std::optional<DbfLayout> layoutOfFile(const QString& path, bool whole, QByteArray* bytes) {
    QFile f(path);
    QString why = QStringLiteral("it cannot be opened");
    std::optional<DbfLayout> layout;
    if (f.open(QIODevice::ReadOnly)) {
        *bytes = whole ? f.readAll() : f.read(32 + DbfLayout::kMaxLength);
        layout = parseDbfLayout(*bytes, f.size(), &why);
    }
    if (!layout)
        setForeignError(dbf_error::kNotATable,
                        QStringLiteral("'%1' is no dBase table this program can read: %2.").arg(path, why));
    return layout;
}

bool saveBytes(const QString& path, const QByteArray& bytes) {
    QSaveFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size() && f.commit();
}

// A value converted to what a field of the type holds; std::nullopt when it cannot be.
std::optional<Cell> toFieldValue(FieldType type, const Cell& v) {
    if (v.isEmpty() || v.isNull() || (v.isText() && v.toString().trimmed().isEmpty()))
        return Cell::null();
    const QString text = v.toString().trimmed();
    switch (type) {
    case FieldType::Text:
        return Cell(valueText(v));
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

} // namespace

bool DbfDriver::open(const QString& path, bool forWriting) {
    building_.clear();
    folder_ = splitFolderAndBase(path).folder;
    if (!QFileInfo(folder_).isDir()) {
        setForeignError(engine_error::kInvalidPath, QStringLiteral("'%1' is not a valid path.").arg(folder_));
        return false;
    }
    // A table to be read is checked before anything is read of it.
    QByteArray head;
    return forWriting || !QFileInfo(path).isFile() || layoutOfFile(path, false, &head).has_value();
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

namespace {

// The fields of the table, each as its column's values need; std::nullopt with the engine's error
// set when a value fits none.
std::optional<QList<DbfField>> fieldsOf(const BufferedTable& t, CodePage page) {
    const QStringList names = fieldNamesFor(t.def, page);
    QList<DbfField> fields;
    for (int j = 0; j < t.def.fields.size(); ++j) {
        const auto f = dbfFieldFor(t.def.fields[j], encodeText(names[j], page), t.rows, j, page);
        if (!f)
            return std::nullopt;
        fields << *f;
    }
    return fields;
}

QByteArray tableBytes(const BufferedTable& t, const DbfLayout& layout, CodePage page) {
    QByteArray out = dbfHeader(layout, QDate::currentDate());
    out.reserve(layout.headerLength + layout.records * layout.recordLength + 1);
    for (const auto& row : t.rows) {
        out += ' ';
        for (int j = 0; j < layout.fields.size(); ++j)
            out += dbfFieldBytes(row[j], layout.fields[j], page);
    }
    return out + kDbfEndOfFile;
}

} // namespace

bool DbfDriver::writeTable(const BufferedTable& t) {
    bool oneByte = true;
    for (const auto& f : t.def.fields)
        oneByte = oneByte && encodable(f.name, CodePage::Cp1252);
    for (const auto& row : t.rows)
        for (const auto& v : row)
            oneByte = oneByte && (!v.isText() || encodable(v.toString(), CodePage::Cp1252));
    const CodePage page = oneByte ? CodePage::Cp1252 : CodePage::Utf8;
    const auto fields = fieldsOf(t, page);
    if (!fields)
        return false;
    const DbfLayout layout = dbfLayoutFor(*fields, t.rows.size(), oneByte ? kWindows1252 : 0);
    if (layout.recordLength > DbfLayout::kMaxLength) {
        setForeignError(engine_error::kTooLarge,
                        QStringLiteral("A record of '%1' would take %2 bytes; a dBase record holds %3.")
                            .arg(t.def.name)
                            .arg(layout.recordLength)
                            .arg(DbfLayout::kMaxLength));
        return false;
    }
    const QString path = QDir(folder_).filePath(t.def.name + QStringLiteral(".dbf"));
    const QString cpg = QDir(folder_).filePath(t.def.name + QStringLiteral(".cpg"));
    const bool ok = oneByte ? (!QFile::exists(cpg) || QFile::remove(cpg)) : saveBytes(cpg, "UTF-8");
    if (!ok || !saveBytes(path, tableBytes(t, layout, page))) {
        setForeignError(engine_error::kCannotOpen, QStringLiteral("Cannot create '%1'.").arg(path));
        return false;
    }
    return true;
}

bool DbfDriver::close() {
    bool ok = true;
    for (const auto& b : building_)
        ok = writeTable(b) && ok;
    building_.clear();
    return ok;
}

std::optional<ForeignTable> DbfDriver::readTable(const QString& name) {
    const QString path = tableFile(name);
    if (path.isEmpty())
        return std::nullopt;
    QByteArray bytes;
    const auto layout = layoutOfFile(path, true, &bytes);
    if (!layout)
        return std::nullopt;
    const CodePage page = pageOf(cpgOf(path), layout->languageDriver);
    ForeignTable t;
    t.name = name;
    for (const auto& f : layout->fields)
        t.fieldNames << decodeBytes(f.name, page);
    QList<qint64> live;
    for (qint64 i = 0; i < layout->records; ++i)
        if (dbfRecord(bytes, *layout, i).front() != '*')
            live << i;
    const int fields = static_cast<int>(layout->fields.size());
    if (!live.isEmpty())
        t.rows = CellArray{static_cast<int>(live.size()), fields};
    for (int i = 0; i < live.size(); ++i) {
        const QByteArrayView record = dbfRecord(bytes, *layout, live[i]);
        for (int j = 0; j < fields; ++j) {
            const DbfField& f = layout->fields[j];
            t.rows(i, j) = dbfFieldValue(record.sliced(f.offset, f.width), f, page);
        }
    }
    return t;
}

} // namespace vesk
