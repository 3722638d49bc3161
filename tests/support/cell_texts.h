#pragma once
// Arrays of cells as texts, for readable comparisons in the tests.

#include "platform/cell_array.h"

#include <QStringList>

namespace vesk::test {

// The entries of a one-dimensional array as texts; nothing for any other array.
inline QStringList texts(const CellArray& a) {
    QStringList out;
    if (a.rank() != 1)
        return out;
    for (int i = a.lbound(0); i <= a.ubound(0); ++i)
        out.push_back(a(i).toString());
    return out;
}

} // namespace vesk::test
