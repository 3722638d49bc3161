#pragma once
// Text tables: one line per row, the values joined by ";", each line ended by carriage return and
// line feed. Files are written in UTF-8; reading takes UTF-8, or Windows-1252 when the bytes are
// not valid UTF-8, and keeps every value as text. A line is cut at each ";", so that the field
// count comes from the line itself; shorter lines leave the rest of their row Empty.
//
// A value holding ";", a double quote or a line break goes out between double quotes, its quotes
// doubled, and reads back whole (a quoted value may span lines). A field that starts with a quote
// but closes none before a ";" or a line end reads as it stands, quote and all, so files written
// without quotes read as they always did. Numbers go out as the runtime prints them where its
// fifteen digits give the same double back, else as the shortest text that does.
//
// A file whose rows, each as wide as the widest line, would take far more cells than the file has
// characters (one wide line over many short ones) is refused, not built.

#include "platform/cell_array.h"

#include <QString>
#include <optional>

namespace vesk {

// Rows of a one- or two-dimensional array as text lines; Empty and Null write nothing between
// the separators. False when the file cannot be written.
bool writeTextTable(const QString& path, const CellArray& array, QString* error);
// The rows of the file (lines, fields); std::nullopt when it cannot be read, or with `error`
// naming the file when its shape is refused.
std::optional<CellArray> readTextTable(const QString& path, QString* error = nullptr);

// The pieces of the two for files that hold more than one table (a file of sections): the lines of
// an array, each ended by carriage return and line feed; the text of a file as the reader decodes
// it (std::nullopt when it cannot be read); and a text cut into rows and fields, refused as the
// reader refuses it (`source` names it in the refusal).
QString textTableLines(const CellArray& array);
std::optional<QString> readTextContent(const QString& path);
std::optional<CellArray> parseTextTable(const QString& text, const QString& source, QString* error = nullptr);

} // namespace vesk
