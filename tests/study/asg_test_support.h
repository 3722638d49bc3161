#pragma once
// Small helpers of the age-sex group tests: arrays from lists, and a prompt service per test.

#include "cell_texts.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "qt_printers.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <initializer_list>
#include <ostream>
#include <vector>

namespace vesk::test {

// A boundaries array (rows, 3) with `ages` in column `column` and the other columns blank.
inline CellArray boundaryColumn(const std::vector<double>& ages, int column = 0) {
    CellArray b({static_cast<int>(ages.size()), 3});
    for (int i = 0; i < static_cast<int>(ages.size()); ++i)
        b(i, column) = Cell(ages[i]);
    return b;
}

inline CellArray labelArray(const QStringList& labels) {
    CellArray out({static_cast<int>(labels.size())});
    for (int i = 0; i < labels.size(); ++i)
        out(i) = Cell(labels[i]);
    return out;
}

// A test with its own scripted prompts installed.
class PromptedTest : public ::testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
};

} // namespace vesk::test
