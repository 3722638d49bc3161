#pragma once
// What the life table tests share: an input table of ages, rates and populations, settings with a
// chosen radix, and the check of a result against a table of expected columns.

#include "demography/life_table.h"

#include <gtest/gtest.h>
#include <cmath>
#include <vector>

namespace vesk::test {

// An expected cell: a number, the open interval's "W", "NA", or a cell left empty.
struct HandValue {
    enum Kind { Number, W, NA, Blank } kind = Number;
    double v = 0;
    HandValue(double x) : v(x) {}
    explicit HandValue(Kind k) : kind(k) {}
};
inline const HandValue kW{HandValue::W}, kNA{HandValue::NA}, kEmpty{HandValue::Blank};
// Rows of the expected table: n, ax, qx, px, lx, dx, Lx, mx, Tx, Ex and, where the method has it,
// POP or RSlx; one value for each row of the life table.
using HandTable = std::vector<std::vector<HandValue>>;

inline Cell rates(const std::vector<double>& ages, const std::vector<double>& m,
                  const std::vector<double>& pop = {}) {
    const int cols = pop.empty() ? 2 : 3;
    CellArray a({int(ages.size()), cols});
    for (int i = 0; i < int(ages.size()); ++i) {
        a(i, 0) = Cell(ages[i]);
        a(i, 1) = Cell(m[i]);
        if (!pop.empty())
            a(i, 2) = Cell(pop[i]);
    }
    return Cell(std::move(a));
}

inline LifeTableSettings withRadix(double radix) {
    LifeTableSettings o;
    o.radix = radix;
    return o;
}

inline void expectCell(const Cell& c, const HandValue& e, double tolerance, const char* what, int row) {
    SCOPED_TRACE(testing::Message() << what << " row " << row);
    switch (e.kind) {
    case HandValue::W:
        EXPECT_EQ(c.toString(), QStringLiteral("W"));
        break;
    case HandValue::NA:
        EXPECT_EQ(c.toString(), QStringLiteral("NA"));
        break;
    case HandValue::Blank:
        EXPECT_TRUE(c.isEmpty()) << c.toString().toStdString();
        break;
    case HandValue::Number:
        ASSERT_TRUE(c.isNumber()) << c.toString().toStdString();
        EXPECT_NEAR(c.toDouble(), e.v, tolerance * std::max(1.0, std::abs(e.v)));
        break;
    }
}

inline void expectTable(const Cell& t, const HandTable& expected, int width, double tolerance = 1e-13) {
    ASSERT_TRUE(t.isArray());
    const CellArray& a = t.array();
    ASSERT_EQ(a.size(1), width);
    const char* names[] = {"n", "ax", "qx", "px", "lx", "dx", "Lx", "mx", "Tx", "Ex", "POP/RSlx"};
    for (size_t k = 0; k < expected.size(); ++k) {
        ASSERT_EQ(int(expected[k].size()), a.size(0));
        for (int i = 0; i < a.size(0); ++i)
            expectCell(a(i, int(k) + 2), expected[k][i], tolerance, names[k], i);
    }
}

} // namespace vesk::test
