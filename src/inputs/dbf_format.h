#pragma once
// The bytes of a dBase table (.dbf). A 32-byte header: the version, the date of the last change,
// the record count (4 bytes), the lengths of the header and of a record (2 bytes each), the language
// driver (byte 29). Then one 32-byte descriptor per field: the name (11 bytes, NUL-padded), the type,
// the width and the decimals; a character field wider than 255 bytes keeps the high byte of its width
// where a number keeps its decimals, as Clipper and FoxPro do. 0x0D ends the descriptors. Each record
// is a flag ("*" deleted, " " live) and the fields' texts side by side; 0x1A ends the file.
//
// A file is read only after its header was checked against the file's length: a record count, a
// header length or fields that the file cannot hold refuse the file, so that no claim of a damaged
// header is allocated or looped over.

#include <QByteArray>
#include <QByteArrayView>
#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace vesk {

// Engine errors of the dBase driver.
namespace dbf_error {
constexpr int kNotATable = 3274;     // "External table is not in the expected format."
constexpr int kFieldOverflow = 3349; // the value does not fit any field of its kind
} // namespace dbf_error

// The byte after the last record.
constexpr char kDbfEndOfFile = 0x1A;

struct DbfField {
    QByteArray name; // the bytes of the name, without padding
    char type = 'C';
    int width = 1;
    int decimals = 0;
    int offset = 0;        // in the record, after the deletion flag
    bool exponent = false; // a number field whose values are written with exponents where shorter
};

struct DbfLayout {
    static constexpr int kMaxLength = 0xFFFF; // of the header and of a record: two bytes each
    quint8 languageDriver = 0;
    qint64 records = 0;
    int headerLength = 0;
    int recordLength = 0;
    QList<DbfField> fields;
};

// The layout a file declares, its first bytes being `head` (the whole header at least, if the file
// has one) and its length `fileLength`. std::nullopt, with the reason in `why`, when it is no dBase
// table or claims more than the file holds.
std::optional<DbfLayout> parseDbfLayout(QByteArrayView head, qint64 fileLength, QString* why);

// The layout of a new table of `records` records with these fields: their offsets and the lengths of
// the header and of a record. The record length may pass kMaxLength; the writer refuses it then.
DbfLayout dbfLayoutFor(QList<DbfField> fields, qint64 records, quint8 languageDriver);
// The header bytes of the layout, with `changed` as the date of the last change.
QByteArray dbfHeader(const DbfLayout& layout, const QDate& changed);

// Record `i` of a file read whole, its layout checked against it.
QByteArrayView dbfRecord(QByteArrayView file, const DbfLayout& layout, qint64 i);

} // namespace vesk
