#pragma once
// Fixtures of the calculator tests: a single-year standard life table in the settings, scripted
// prompts, a clean error store.

#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "qt_printers.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "straight_life_table.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <ostream>

namespace vesk::test {

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
