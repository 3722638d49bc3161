#include "inputs/sheet_bounds.h"

#include "platform/table_limits.h"

namespace vesk {

qint64 CellBox::cellCount() const {
    if (row2 < row1 || col2 < col1)
        return 0;
    return (static_cast<qint64>(row2) - row1 + 1) * (static_cast<qint64>(col2) - col1 + 1);
}

bool fitsItsSource(const CellBox& box, qint64 sourceBytes) {
    return box.cellCount() <= cellsAllowedFor(sourceBytes);
}

} // namespace vesk
