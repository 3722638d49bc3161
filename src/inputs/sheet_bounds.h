#pragma once
// The bounds that the worksheet readers keep to, so that a damaged or hostile file is refused
// before it costs more than a small multiple of its size: the largest sheet of any worksheet kind
// (1,048,576 rows and 16,384 columns; a Lotus sheet is smaller), and no more cells in a table than
// the bytes it was read from can account for. A range that claims more cells than that is read from
// the cells it holds, not from the corners it claims.

#include <QMap>
#include <QPair>
#include <QString>
#include <algorithm>

namespace vesk {

inline constexpr int kSheetMaxRows = 1048576;
inline constexpr int kSheetMaxCols = 16384;

// A rectangle of a sheet, zero-based and inclusive.
struct CellBox {
    int row1 = 0, col1 = 0, row2 = -1, col2 = -1;
    qint64 cellCount() const;
};

// The part of `box` that holds cells of `cells` (keyed by row and column): its first row and
// column stay, the rows below and the columns right of its last cell go; blank cells between stay.
template <typename Value>
CellBox cellsPresentIn(const CellBox& box, const QMap<QPair<int, int>, Value>& cells) {
    CellBox out{box.row1, box.col1, box.row1, box.col1};
    for (auto it = cells.lowerBound({box.row1, box.col1});
         it != cells.constEnd() && it.key().first <= box.row2; ++it) {
        const int col = it.key().second;
        if (col < box.col1 || col > box.col2)
            continue;
        out.row2 = std::max(out.row2, it.key().first);
        out.col2 = std::max(out.col2, col);
    }
    return out;
}

// Whether the file of `sourceBytes` bytes can account for the cells of the box: a million cells
// whatever the source, and four for each byte beyond.
bool fitsItsSource(const CellBox& box, qint64 sourceBytes);

// The part of a range to read as a table: the whole range when its source can account for it (so
// that blank records at its end stay), else the part that holds cells.
template <typename Value>
CellBox boxToRead(const CellBox& box, const QMap<QPair<int, int>, Value>& cells, qint64 sourceBytes) {
    return fitsItsSource(box, sourceBytes) ? box : cellsPresentIn(box, cells);
}

// Why a range, named by `what` ("the range 'T'"), cannot be read as a table: it reaches beyond a
// sheet of `maxRows` and `maxCols`, or even its part that holds cells spans more than its source of
// `sourceBytes` bytes can account for. Empty when it can be read.
template <typename Value>
QString rangeRefusal(const CellBox& box, const QMap<QPair<int, int>, Value>& cells, int maxRows, int maxCols,
                     qint64 sourceBytes, const QString& what) {
    if (box.row1 < 0 || box.col1 < 0 || box.row2 >= maxRows || box.col2 >= maxCols)
        return QStringLiteral("%1 reaches beyond row %2 or column %3, the edge of a sheet")
            .arg(what)
            .arg(maxRows)
            .arg(maxCols);
    const CellBox read = boxToRead(box, cells, sourceBytes);
    if (!fitsItsSource(read, sourceBytes))
        return QStringLiteral("%1 spans %2 cells, more than %3 bytes can hold")
            .arg(what)
            .arg(read.cellCount())
            .arg(sourceBytes);
    return QString();
}

} // namespace vesk
