#include "inputs/sheet_bounds.h"

namespace vesk {

namespace {

// A table may hold a million cells whatever its source, and four cells for each byte beyond: a
// cell in a file takes more than a byte, but a blank one between takes none.
constexpr qint64 kCellsAlways = 1 << 20;
constexpr qint64 kCellsPerByte = 4;

} // namespace

qint64 CellBox::cellCount() const {
    if (row2 < row1 || col2 < col1)
        return 0;
    return (static_cast<qint64>(row2) - row1 + 1) * (static_cast<qint64>(col2) - col1 + 1);
}

bool fitsItsSource(const CellBox& box, qint64 sourceBytes) {
    return box.cellCount() <= std::max(kCellsAlways, kCellsPerByte * sourceBytes);
}

} // namespace vesk
