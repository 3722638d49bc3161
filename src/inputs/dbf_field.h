#pragma once
// Values in the fields of a dBase table, each field stored as text of its width:
// - character (C): the text in the table's code page, cut to 254 characters, left-aligned and padded
//   with blanks; the padding goes on reading, leading blanks stay. The width is the longest text's
//   bytes, so that in UTF-8 a field keeps 254 characters, not 254 bytes.
// - number (N; F read too): see dbf_number.h. Integer and Long columns N(6,0) and N(11,0) or wider.
// - date (D): eight digits, yyyyMMdd, for the years 100 to 9999; the time of day is not kept.
// - logical (L): "T" or "F", "?" for no value.
// A field without a value is blank, "?" in a logical field; a number field of "*" (an overflow in
// dBase) reads as no value too.

#include "inputs/codepage.h"
#include "inputs/dbf_format.h"
#include "inputs/foreign_types.h"

namespace vesk {

// The characters a character field keeps.
constexpr int kDbfMaxText = 254;

// The field that every stored value of column `col` fits. std::nullopt, with the engine's error set
// naming the value and the field, when a value fits no field of the column's kind.
std::optional<DbfField> dbfFieldFor(const FieldDef& def, const QByteArray& name,
                                    const QList<QList<Cell>>& rows, int col, CodePage page);
// The bytes of a value, one that dbfFieldFor() chose the field for, exactly the field's width long.
QByteArray dbfFieldBytes(const Cell& value, const DbfField& field, CodePage page);
// The value a field's bytes hold; Null for blanks, for a kind this reader does not know (memos,
// binary fields) and for a text that is no value of the field's kind.
Cell dbfFieldValue(QByteArrayView bytes, const DbfField& field, CodePage page);

} // namespace vesk
