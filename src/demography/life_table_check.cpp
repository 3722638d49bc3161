#include "demography/life_table_check.h"

namespace vesk {

bool DoChk(const CellArray& table) {
    if (table.rank() != 2 || table.size(0) < 1 || table.size(1) < 3)
        return false;
    const int first = table.lbound(0), last = table.ubound(0), c0 = table.lbound(1);
    auto value = [&](int row, int col) { return table(row, c0 + col).toDouble(); };
    if (value(last, 0) != 100)
        return false;
    for (int i = first; i < last; ++i) {
        if (value(i + 1, 0) != value(i, 0) + 1)
            return false;
        if (value(i + 1, 1) > value(i, 1) || value(i + 1, 2) > value(i, 2))
            return false;
    }
    return true;
}

bool DoChk(const Cell& table) {
    return table.isArray() && DoChk(table.array());
}

} // namespace vesk
