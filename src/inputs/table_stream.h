#pragma once
// A table as plain lines of text, for handing it from a child process to the program: a head line
// "VESK-TABLE <records> <fields>", a line "F<name>" per field, then a line per cell, record by
// record: "-" for Null, "N<number>" and "D<date serial>" as the shortest text of the same double,
// "T<text>" with "\\", "\n" and "\r" escaped. Every cell comes back as it went out.

#include "inputs/foreign_types.h"

#include <QByteArray>
#include <optional>

namespace vesk {

QByteArray encodeTable(const ForeignTable& table);

// The table of `stream`; std::nullopt with the reason in `error` when the stream is not whole (a
// head that claims more cells than the stream holds is refused before anything is allocated).
std::optional<ForeignTable> decodeTable(const QByteArray& stream, QString* error);

} // namespace vesk
