// The life table engine at its edges: the first-age rules, the open row, the Reed-Merrell rounding,
// the faults that end in the error box, and the companions' tables.

#include "demography/life_table.h"
#include "foundation/runtime_error.h"
#include "life_table_support.h"
#include "platform/prompts.h"

#include <gtest/gtest.h>
#include <cmath>

using namespace vesk;
using namespace vesk::test;
namespace col = vesk::life_table_col;

namespace {

class LifeTableEdges : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};

    double at(const Cell& t, int row, int c) const { return t.array()(row, c).toDouble(); }
    void expectErrorBox(const Cell& t, const char* words) {
        EXPECT_TRUE(t.isEmpty());
        ASSERT_EQ(prompts_.shown().size(), 1);
        EXPECT_EQ(prompts_.shown()[0].text, QString::fromLatin1(words));
        EXPECT_EQ(prompts_.shown()[0].title, QStringLiteral("Error generating Life Table"));
        EXPECT_EQ(prompts_.shown()[0].icon, Icon::Critical);
    }
};

const std::vector<double> kAges{0, 1, 5, 10};
const std::vector<double> kRates{0.05, 0.01, 0.002, 0.05};

TEST_F(LifeTableEdges, InfantRowWithNoInfantDeathsIsZeroOnlyUnderStandard) {
    // R = 0 (IMR 0), PGR 2: Standard q0 = 0/(0.05·e^-2 + 0.95) = 0; Keyfitz and Greville
    // (1 - 0.95)·e^-2 + 0/0.95 = 0.05·e^-2.
    const Cell r3 = rates(kAges, kRates, {100, 400, 500, 2000});
    EXPECT_EQ(at(FnLifeTable(r3, 0, 1000, 2, kLtStandard, Cell(), withRadix(1)), 0, col::qx), 0.0);
    for (qint16 method : {kLtKeyfitz, kLtGreville})
        EXPECT_NEAR(at(FnLifeTable(r3, 0, 1000, 2, method, Cell(), withRadix(1)), 0, col::qx), 0.05 * std::exp(-2.0),
                    1e-17)
            << method;
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(LifeTableEdges, TableOpeningWithZeroToFourTakesTheGeneralRule) {
    // Ages 0, 5, 10+: no infant row. Standard with IMR 10 (a0 0.09) and IMR 70 (a0 0.3):
    // q0 = 5m/(1 + (1 - a0)·5m) with m 0.02.
    for (auto [imr, a0] : {std::pair<qint16, double>{10, 0.09}, {70, 0.3}}) {
        const Cell t = FnLifeTable(rates({0, 5, 10}, {0.02, 0.002, 0.05}), imr, 1000, 0, kLtStandard, Cell(),
                                   withRadix(1));
        EXPECT_DOUBLE_EQ(at(t, 0, col::ax), a0);
        EXPECT_DOUBLE_EQ(at(t, 0, col::qx), 0.1 / (1 + (1 - a0) * 0.1));
    }
}

TEST_F(LifeTableEdges, AgeOneTakesFourTenthsWhateverItsWidth) {
    for (const auto& ages : {std::vector<double>{0, 1, 2, 5}, std::vector<double>{0, 1, 5, 10}}) {
        const Cell t = FnLifeTable(rates(ages, kRates), 30, 1000, 0, kLtStandard, Cell(), withRadix(1));
        EXPECT_EQ(at(t, 1, col::ax), 0.4);
        EXPECT_EQ(at(t, 0, col::ax), 0.15); // IMR 30: 20 to 40 inclusive
    }
    EXPECT_EQ(FnAxFraction(1.4, 30), 0.4);
    EXPECT_EQ(FnAxFraction(1.5, 30), 0.5); // 1.5 rounds to 2, halves to even
    EXPECT_EQ(FnAxFraction(0.5, 30), 0.15); // 0.5 rounds to 0
    EXPECT_EQ(FnAxFraction(2.5, 30), 0.5);
}

TEST_F(LifeTableEdges, ReedMerrellWholeNumberTxAtRadixOne) {
    // Ages 0, 5, 10+, radix 1: the row aged 0 with n 5 fits no rule of its own, so its Tx is the
    // sum of Lx from the end, rounded to a whole number after every addition.
    const Cell t = FnLifeTable(rates({0, 5, 10}, {0.02, 0.002, 0.05}), 30, 1000, 0, kLtReedMerrell, Cell(),
                               withRadix(1));
    ASSERT_TRUE(t.isArray());
    const double L2 = at(t, 2, col::Lx), L1 = at(t, 1, col::Lx), L0 = at(t, 0, col::Lx);
    const double expected = std::nearbyint(std::nearbyint(std::nearbyint(L2) + L1) + L0);
    EXPECT_EQ(at(t, 0, col::Tx), expected);
    EXPECT_EQ(at(t, 0, col::Tx), std::trunc(at(t, 0, col::Tx)));
    EXPECT_GT(L0, 3.0); // five years nearly all lived: the rounding is no rounding error of the test
}

TEST_F(LifeTableEdges, ReedMerrellAgeFiveAndAgesFromTen) {
    const Cell t = FnLifeTable(rates({0, 1, 5, 10, 15, 20}, {0.05, 0.01, 0.002, 0.001, 0.003, 0.05}), 50, 1000,
                               0, kLtReedMerrell, Cell(), withRadix(100000));
    ASSERT_TRUE(t.isArray());
    const auto l = [&](int i) { return at(t, i, col::lx); };
    EXPECT_DOUBLE_EQ(at(t, 2, col::Lx), 0.21 * l(0) + 1.384 * l(2) + 1.637 * l(3));
    for (int i : {3, 4})
        EXPECT_DOUBLE_EQ(at(t, i, col::Lx), at(t, i, col::Tx) - at(t, i + 1, col::Tx)) << i;
}

TEST_F(LifeTableEdges, ReedMerrellGuardsLeaveCellsEmpty) {
    // A table that opens at age 1 with n 4: the 0.034·l(i-1) rule has no row before it.
    const Cell t = FnLifeTable(rates({1, 5, 10}, {0.01, 0.002, 0.05}), 50, 1000, 0, kLtReedMerrell, Cell(),
                               withRadix(1));
    ASSERT_TRUE(t.isArray());
    EXPECT_TRUE(t.array()(0, col::Lx).isEmpty());
    EXPECT_TRUE(t.array()(0, col::mx).isEmpty());
}

TEST_F(LifeTableEdges, LastRowDiesOut) {
    const Cell r3 = rates(kAges, kRates, {100, 400, 500, 2000});
    for (qint16 method : {kLtStandard, kLtKeyfitz, kLtReedMerrell, kLtGreville}) {
        const Cell t = FnLifeTable(r3, 20, 1000, 0, method, Cell(), withRadix(1000));
        ASSERT_TRUE(t.isArray()) << method;
        EXPECT_EQ(at(t, 3, col::qx), 1.0);
        EXPECT_EQ(at(t, 3, col::px), 0.0);
        EXPECT_EQ(at(t, 3, col::dx), at(t, 3, col::lx));
        EXPECT_EQ(t.array()(3, col::n).toString(), QStringLiteral("W"));
        EXPECT_EQ(t.array().size(1), method == kLtKeyfitz || method == kLtReedMerrell ? 16 : 15);
    }
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(LifeTableEdges, KeyfitzLimitAtTheFirstAgeStopsInTheErrorBox) {
    LifeTableSettings o = withRadix(1);
    o.kfLower = 0;
    o.kfUpper = 5;
    expectErrorBox(FnLifeTable(rates(kAges, kRates, {100, 400, 500, 2000}), 20, 1000, 0, kLtKeyfitz, Cell(), o),
                   "Subscript out of range");
}

TEST_F(LifeTableEdges, KeyfitzLimitAtTheOpenRowStopsInTheErrorBox) {
    LifeTableSettings o = withRadix(1);
    o.kfLower = 5;
    o.kfUpper = 10;
    expectErrorBox(FnLifeTable(rates(kAges, kRates, {100, 400, 500, 2000}), 20, 1000, 0, kLtKeyfitz, Cell(), o),
                   "Subscript out of range");
}

TEST_F(LifeTableEdges, KeyfitzUpperLimitEqualToLowerCorrectsThatRowOnly) {
    LifeTableSettings o = withRadix(1);
    o.kfLower = 1;
    o.kfUpper = 1;
    const Cell t = FnLifeTable(rates(kAges, kRates, {100, 400, 500, 2000}), 20, 1000, 0, kLtKeyfitz, Cell(), o);
    ASSERT_TRUE(t.isArray());
    // 1 - exp(-4·(0.01 + (100 - 500)(0.002 - 0.05)/(48·400)))
    EXPECT_NEAR(at(t, 1, col::qx), 1 - std::exp(-4 * (0.01 + (100.0 - 500) * (0.002 - 0.05) / (48 * 400.0))), 1e-15);
    EXPECT_DOUBLE_EQ(at(t, 2, col::qx), 0.01 / 1.005);
}

TEST_F(LifeTableEdges, WhatCannotBeginIsFalseWithoutAMessage) {
    const auto isFalse = [](const Cell& c) { return c.isBoolean() && c.toDouble() == 0; };
    EXPECT_TRUE(isFalse(FnLifeTable(Cell(3.0), 0, 1000, 0, kLtStandard, Cell(), withRadix(1))));
    EXPECT_TRUE(isFalse(FnLifeTable(Cell(CellArray({4})), 0, 1000, 0, kLtStandard, Cell(), withRadix(1))));
    EXPECT_TRUE(isFalse(FnLifeTable(rates(kAges, kRates), 0, 1000, 0, kLtKeyfitz, Cell(), withRadix(1))));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(LifeTableEdges, OpenRowRateOfZeroIsADivisionByZero) {
    expectErrorBox(FnLifeTable(rates(kAges, {0.05, 0.01, 0.002, 0}), 20, 1000, 0, kLtStandard, Cell(), withRadix(1)),
                   "Division by zero");
}

TEST_F(LifeTableEdges, ZeroImrDenominatorIsADivisionByZero) {
    expectErrorBox(FnLifeTable(rates(kAges, kRates), 20, 0, 0, kLtStandard, Cell(), withRadix(1)), "Division by zero");
}

TEST_F(LifeTableEdges, GrevilleConstantOfZeroHasNoLogarithm) {
    LifeTableSettings o = withRadix(1);
    o.greval = 0;
    expectErrorBox(FnLifeTable(rates(kAges, kRates), 20, 1000, 0, kLtGreville, Cell(), o),
                   "Invalid procedure call or argument");
}

TEST_F(LifeTableEdges, NullRateIsAnInvalidUseOfNull) {
    Cell r = rates(kAges, kRates);
    r.array()(2, 1) = Cell::null();
    expectErrorBox(FnLifeTable(r, 20, 1000, 0, kLtStandard, Cell(), withRadix(1)), "Invalid use of Null");
}

TEST_F(LifeTableEdges, TextsAreTakenAsNumbersAndRatesThroughTheLenientParse) {
    CellArray a({4, 2});
    const char* ages[] = {"0", " 1", "5 ", "10"};
    const char* m[] = {"0.05", "0.01", "2e-3", "0.05"};
    for (int i = 0; i < 4; ++i) {
        a(i, 0) = Cell(QString::fromLatin1(ages[i]));
        a(i, 1) = Cell(QString::fromLatin1(m[i]));
    }
    const Cell fromText = FnLifeTable(Cell(a), 50, 1000, 0, kLtStandard, Cell(), withRadix(1000));
    const Cell fromNumbers = FnLifeTable(rates(kAges, kRates), 50, 1000, 0, kLtStandard, Cell(), withRadix(1000));
    ASSERT_TRUE(fromText.isArray());
    for (int i = 0; i < 4; ++i)
        for (int c = col::n; c <= col::Ex; ++c)
            EXPECT_EQ(fromText.array()(i, c), fromNumbers.array()(i, c)) << i << "," << c;
    a(1, 1) = Cell(QStringLiteral("abc")); // no number: 0, so q1 = 0
    EXPECT_EQ(at(FnLifeTable(Cell(a), 50, 1000, 0, kLtStandard, Cell(), withRadix(1)), 1, col::qx), 0.0);
    a(1, 0) = Cell(QStringLiteral("one")); // an age that is no number
    expectErrorBox(FnLifeTable(Cell(a), 50, 1000, 0, kLtStandard, Cell(), withRadix(1)), "Type mismatch");
}

TEST_F(LifeTableEdges, AdjustedColumnsReduceByTheDisabilityFraction) {
    CellArray adjust({4});
    const double d[] = {0, 0.1, 0.25, 1};
    for (int i = 0; i < 4; ++i)
        adjust(i) = Cell(d[i]);
    const Cell r3 = rates(kAges, kRates, {100, 400, 500, 2000});
    for (qint16 method : {kLtStandard, kLtKeyfitz, kLtReedMerrell, kLtGreville}) {
        const Cell t = FnLifeTable(r3, 20, 1000, 0, method, Cell(adjust), withRadix(1000));
        ASSERT_TRUE(t.isArray());
        const int base = lifeTableWidth(method) - 3;
        for (int i = 0; i < 4; ++i) {
            EXPECT_DOUBLE_EQ(at(t, i, base), at(t, i, col::Lx) * (1 - d[i]));
            EXPECT_DOUBLE_EQ(at(t, i, base + 1), at(t, i, col::Tx) * (1 - d[i]));
            EXPECT_DOUBLE_EQ(at(t, i, base + 2), at(t, i, col::Ex) * (1 - d[i]));
        }
        const Cell plain = FnLifeTable(r3, 20, 1000, 0, method, Cell(), withRadix(1000));
        EXPECT_TRUE(plain.array()(0, base + 2).isEmpty());
    }
    expectErrorBox(FnLifeTable(r3, 20, 1000, 0, kLtStandard, Cell(CellArray({3})), withRadix(1)),
                   "Subscript out of range");
}

TEST(LifeTableCompanions, SeparationFactorBoundsAreInclusive) {
    EXPECT_EQ(FnSeparationFactor(0), 0.95);
    EXPECT_EQ(FnSeparationFactor(0.015), 0.95);
    EXPECT_EQ(FnSeparationFactor(0.0150001), 0.85);
    EXPECT_EQ(FnSeparationFactor(0.025), 0.85);
    EXPECT_EQ(FnSeparationFactor(0.05), 0.8);
    EXPECT_EQ(FnSeparationFactor(0.1), 0.75);
    EXPECT_EQ(FnSeparationFactor(0.15), 0.67);
    EXPECT_EQ(FnSeparationFactor(0.1500001), 0.6);
    EXPECT_EQ(FnSeparationFactor(1), 0.6);
}

TEST(LifeTableCompanions, AxFractionByImr) {
    EXPECT_FALSE(FnAxFraction(0, std::nullopt).has_value());
    EXPECT_EQ(FnAxFraction(0, 19.99), 0.09);
    EXPECT_EQ(FnAxFraction(0, 20), 0.15);
    EXPECT_EQ(FnAxFraction(0, 40), 0.15);
    EXPECT_EQ(FnAxFraction(0, 40.5), 0.23);
    EXPECT_EQ(FnAxFraction(0, 60), 0.23);
    EXPECT_EQ(FnAxFraction(0, 60.1), 0.3);
    EXPECT_EQ(FnAxFraction(1, std::nullopt), 0.4);
    EXPECT_EQ(FnAxFraction(85, 0), 0.5);
    EXPECT_THROW(FnAxFraction(40000, 0), RuntimeError); // no 16-bit age
}

TEST(LifeTableCompanions, SumColumnRoundsAfterEveryAddition) {
    CellArray t({3, 1});
    t(0, 0) = Cell(0.5);
    t(1, 0) = Cell(1.5);
    t(2, 0) = Cell::null();
    // From the end up: 0 (Null) -> 0; 0 + 1.5 = 1.5 -> 2; 2 + 0.5 = 2.5 -> 2 (halves to even).
    EXPECT_EQ(FnSumColumn(t, 0, 0, 1), 2);
    // From the first down: 0.5 -> 0; 0 + 1.5 -> 2; 2 + 0 = 2.
    EXPECT_EQ(FnSumColumn(t, 0, 2, 0), 2);
    EXPECT_EQ(FnSumColumn(t, 0, 1, 1), 2);
    t(0, 0) = Cell(3e9);
    EXPECT_THROW(FnSumColumn(t, 0, 0, 1), RuntimeError); // past the 32-bit accumulator
}

TEST(LifeTableCompanions, ImrRatio) {
    EXPECT_EQ(FnIMRRatio(50, 1000), 0.05);
    EXPECT_EQ(FnIMRRatio(1, 1), 1.0);
    EXPECT_THROW(FnIMRRatio(5, 0), RuntimeError);
}

TEST(LifeTableCompanions, SettingsAsTheEngineReadsThem) {
    VeskSettings s;
    s.LTRadix = 0;
    s.LTKFlwrLmt = QStringLiteral(" ");
    s.LTKFupprLmt = QStringLiteral("60");
    s.LTGreval = QString();
    const LifeTableSettings o = lifeTableSettings(s);
    EXPECT_EQ(o.radix, 1.0);
    EXPECT_FALSE(o.kfLower.has_value());
    EXPECT_EQ(o.kfUpper, 60.0);
    EXPECT_EQ(o.greval, 1.099658856);
    s.LTGreval = QStringLiteral("1.2");
    s.LTRadix = 100000;
    EXPECT_EQ(lifeTableSettings(s).greval, 1.2);
    EXPECT_EQ(lifeTableSettings(s).radix, 100000.0);
}

} // namespace
