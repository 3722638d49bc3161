#pragma once
// One-byte code pages of the foreign files: Windows-1252 for dBase tables and old text files, code
// page 850 and 437 of DOS-era tables, and LMBCS, the multi-byte set of Lotus worksheets.

#include <QByteArray>
#include <QString>

namespace vesk {

enum class CodePage { Utf8, Cp1252, Cp850, Cp437 };

QString decodeBytes(const QByteArray& bytes, CodePage page);
// Characters the page cannot hold become "?".
QByteArray encodeText(const QString& text, CodePage page);
// Whether every character of the text has a byte in the page.
bool encodable(const QString& text, CodePage page);

// LMBCS: group 1 (code page 850) by default, other characters as Unicode escapes (0x14, high, low).
QString decodeLmbcs(const QByteArray& bytes);
QByteArray encodeLmbcs(const QString& text);
// Where the LMBCS text at the start of `bytes` ends: at its first NUL that is no byte of an escape
// (a Unicode escape holds a zero byte for Ā, a line break and most scripts), or at the end.
qsizetype lmbcsLength(const QByteArray& bytes);

// UTF-8 when the bytes are valid UTF-8, else the fallback page.
QString decodeGuessingUtf8(const QByteArray& bytes, CodePage fallback);

} // namespace vesk
