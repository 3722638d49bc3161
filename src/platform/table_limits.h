#pragma once
// How large a table a file may make, so that a damaged or hostile file (one wide line over many
// short ones, a range that claims far more than the file holds) is refused before it costs more
// than a small multiple of its size. One rule for every reader: a million cells whatever the
// source, which any file of sensible shape stays below, and four cells for each byte or character
// of the source beyond (a cell in a file takes more than one, but a blank one between takes none).

#include <QtGlobal>
#include <algorithm>

namespace vesk {

inline constexpr qint64 kCellsAlwaysAllowed = qint64(1) << 20;
inline constexpr qint64 kCellsPerSourceUnit = 4;

// The most cells a table read from a source of `sourceSize` bytes or characters may take.
constexpr qint64 cellsAllowedFor(qint64 sourceSize) {
    return std::max(kCellsAlwaysAllowed, kCellsPerSourceUnit * sourceSize);
}

// Whether `rows` rows, each made as wide as the widest of `widest` cells, stay within what a
// source of `sourceSize` allows.
constexpr bool widenedRowsFit(qint64 rows, qint64 widest, qint64 sourceSize) {
    return widest <= 0 || rows <= cellsAllowedFor(sourceSize) / widest;
}

} // namespace vesk
