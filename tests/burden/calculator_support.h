#pragma once
// Fixtures of the calculator tests: a single-year standard life table in the settings, scripted
// prompts, a clean error store.

#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "shell/error_store.h"
#include "shell/settings.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList& l, std::ostream* os) {
    *os << '[' << l.join(", ").toStdString() << ']';
}

namespace vesk::test {

// e(x) of the test's standard table: straight lines, so that interpolated values are known exactly.
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

class CalculatorTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        settings().StatOutPath = dir_.path() + QStringLiteral("/");
        settings().MtxLTSKRO = straightLifeTable();
        settings().MtxLTSWHO = CellArray();
        settings().LifeTblType = 1;
        clearErrorStore();
    }
    void TearDown() override {
        clearErrorStore();
        settings().MtxLTSKRO = CellArray();
    }

    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
    QTemporaryDir dir_;
};

} // namespace vesk::test
