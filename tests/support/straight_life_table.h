#pragma once
// The calculator tests' standard life table: e(x) on straight lines, so that interpolated values
// are known exactly.

#include "platform/cell_array.h"

#include <QString>

namespace vesk::test {

inline double femaleE(double x) {
    return 82.5 - 0.8 * x;
}
inline double maleE(double x) {
    return 80.0 - 0.78 * x;
}

// Rows 0 to 100 as the settings file gives them: texts of age, female, male.
inline CellArray straightLifeTable() {
    CellArray t({101, 3});
    for (int x = 0; x <= 100; ++x) {
        t(x, 0) = Cell(QString::number(x));
        t(x, 1) = Cell(QString::number(femaleE(x), 'g', 10));
        t(x, 2) = Cell(QString::number(maleE(x), 'g', 10));
    }
    return t;
}

} // namespace vesk::test
