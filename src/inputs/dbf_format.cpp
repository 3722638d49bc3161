#include "inputs/dbf_format.h"

#include <algorithm>

namespace vesk {

namespace {

constexpr int kHeaderSize = 32;
constexpr int kDescriptorSize = 32;
constexpr char kEndOfFields = 0x0D;

// The versions of dBase III and IV, FoxBASE+, FoxPro and Visual FoxPro, with and without memos.
constexpr quint8 kVersions[] = {0x03, 0x04, 0x05, 0x30, 0x31, 0x32, 0x43, 0x63,
                                0x83, 0x8B, 0x8E, 0xCB, 0xE5, 0xF5, 0xFB};

int le16(QByteArrayView b, int at) {
    return static_cast<quint8>(b[at]) | static_cast<quint8>(b[at + 1]) << 8;
}

quint32 le32(QByteArrayView b, int at) {
    return static_cast<quint32>(le16(b, at)) | static_cast<quint32>(le16(b, at + 2)) << 16;
}

void putLe16(QByteArray& b, int at, int v) {
    b[at] = static_cast<char>(v & 0xFF);
    b[at + 1] = static_cast<char>(v >> 8 & 0xFF);
}

void putLe32(QByteArray& b, int at, quint32 v) {
    putLe16(b, at, static_cast<int>(v & 0xFFFF));
    putLe16(b, at + 2, static_cast<int>(v >> 16));
}

// The field a descriptor names. `wide` reads a character field's width in two bytes.
DbfField fieldOf(QByteArrayView d, bool wide) {
    DbfField f;
    QByteArrayView name = d.first(11);
    if (const qsizetype nul = name.indexOf('\0'); nul >= 0)
        name = name.first(nul);
    f.name = name.trimmed().toByteArray();
    f.type = d[11];
    f.width = static_cast<quint8>(d[16]);
    f.decimals = static_cast<quint8>(d[17]);
    if (f.type == 'C' && wide) {
        f.width += f.decimals * 256;
        f.decimals = 0;
    }
    return f;
}

// The fields side by side from the first byte after the deletion flag; the record length they need.
int placeFields(QList<DbfField>& fields) {
    int offset = 1;
    for (auto& f : fields) {
        f.offset = offset;
        offset += f.width;
    }
    return offset;
}

// The descriptors between the header and the 0x0D that ends them, all within the header.
std::optional<QList<QByteArrayView>> descriptorsOf(QByteArrayView head, int headerLength, QString* why) {
    QList<QByteArrayView> out;
    for (int at = kHeaderSize;; at += kDescriptorSize) {
        if (at < headerLength && head[at] == kEndOfFields)
            break;
        if (at + kDescriptorSize >= headerLength) {
            *why = QStringLiteral("its field descriptors do not end within the header");
            return std::nullopt;
        }
        out << head.sliced(at, kDescriptorSize);
    }
    if (out.isEmpty())
        *why = QStringLiteral("it has no fields");
    return out.isEmpty() ? std::nullopt : std::optional(out);
}

// The fields of the descriptors, in the record length the header gives: character widths in two
// bytes where they fit it, else in one (some writers leave other bytes where the decimals stand).
std::optional<QList<DbfField>> fieldsOf(const QList<QByteArrayView>& descriptors, int recordLength,
                                        QString* why) {
    for (const bool wide : {true, false}) {
        QList<DbfField> fields;
        for (const auto d : descriptors)
            fields << fieldOf(d, wide);
        if (placeFields(fields) <= recordLength)
            return fields;
    }
    *why = QStringLiteral("its fields are wider than its record length of %1 bytes").arg(recordLength);
    return std::nullopt;
}

} // namespace

std::optional<DbfLayout> parseDbfLayout(QByteArrayView head, qint64 fileLength, QString* why) {
    QString reason;
    if (!why)
        why = &reason;
    if (head.size() < kHeaderSize || fileLength < kHeaderSize) {
        *why = QStringLiteral("it is shorter than a dBase header");
        return std::nullopt;
    }
    if (!std::ranges::count(kVersions, static_cast<quint8>(head[0]))) {
        *why = QStringLiteral("its first byte names no dBase version");
        return std::nullopt;
    }
    DbfLayout l;
    l.records = le32(head, 4);
    l.headerLength = le16(head, 8);
    l.recordLength = le16(head, 10);
    l.languageDriver = static_cast<quint8>(head[29]);
    if (l.headerLength > fileLength || l.headerLength > head.size()) {
        *why = QStringLiteral("its header claims %1 bytes, more than the file holds").arg(l.headerLength);
        return std::nullopt;
    }
    const auto descriptors = descriptorsOf(head, l.headerLength, why);
    if (!descriptors)
        return std::nullopt;
    auto fields = fieldsOf(*descriptors, l.recordLength, why);
    if (!fields)
        return std::nullopt;
    l.fields = *fields;
    if (l.records > (fileLength - l.headerLength) / l.recordLength) {
        *why = QStringLiteral("its header claims %1 records of %2 bytes, more than the file holds")
                   .arg(l.records)
                   .arg(l.recordLength);
        return std::nullopt;
    }
    return l;
}

DbfLayout dbfLayoutFor(QList<DbfField> fields, qint64 records, quint8 languageDriver) {
    DbfLayout l;
    l.languageDriver = languageDriver;
    l.records = records;
    l.recordLength = placeFields(fields);
    l.headerLength = kHeaderSize + kDescriptorSize * static_cast<int>(fields.size()) + 1;
    l.fields = std::move(fields);
    return l;
}

QByteArray dbfHeader(const DbfLayout& l, const QDate& changed) {
    QByteArray b(kHeaderSize, '\0');
    b[0] = 0x03;
    b[1] = static_cast<char>(std::clamp(changed.year() - 1900, 0, 255));
    b[2] = static_cast<char>(changed.month());
    b[3] = static_cast<char>(changed.day());
    putLe32(b, 4, static_cast<quint32>(l.records));
    putLe16(b, 8, l.headerLength);
    putLe16(b, 10, l.recordLength);
    b[29] = static_cast<char>(l.languageDriver);
    for (const auto& f : l.fields) {
        QByteArray d(kDescriptorSize, '\0');
        d.replace(0, std::min<qsizetype>(f.name.size(), 10),
                  f.name.first(std::min<qsizetype>(f.name.size(), 10)));
        d[11] = f.type;
        d[16] = static_cast<char>(f.width & 0xFF);
        d[17] = static_cast<char>(f.type == 'C' ? f.width >> 8 : f.decimals);
        b += d;
    }
    b += kEndOfFields;
    return b;
}

QByteArrayView dbfRecord(QByteArrayView file, const DbfLayout& layout, qint64 i) {
    return file.sliced(layout.headerLength + i * layout.recordLength, layout.recordLength);
}

} // namespace vesk
