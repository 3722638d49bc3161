#pragma once
// Text tables: one line per row, the values joined by ";", each line ended by carriage return and
// line feed. Files are written in UTF-8; reading takes UTF-8, or Windows-1252 when the bytes are
// not valid UTF-8, and keeps every value as text. A line is cut at each ";", so that the field
// count comes from the line itself; shorter lines leave the rest of their row Empty.

#include "platform/cell_array.h"

#include <QString>
#include <optional>

namespace vesk {

// Rows of a one- or two-dimensional array as text lines; Empty and Null write nothing between
// the separators. False when the file cannot be written.
bool writeTextTable(const QString& path, const CellArray& array, QString* error);
// The rows of the file (lines, fields); std::nullopt when it cannot be read.
std::optional<CellArray> readTextTable(const QString& path);

} // namespace vesk
