// FnCrossTab: rows to a grid, keys in the order met, its two messages.

#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "results/cross_tab.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

CellArray table(const QList<QStringList>& rows) {
    CellArray t({int(rows.size()), int(rows[0].size())});
    for (int r = 0; r < rows.size(); ++r)
        for (int k = 0; k < rows[r].size(); ++k)
            t(r, k) = Cell(rows[r][k]);
    return t;
}

QStringList row(const CellArray& g, int r) {
    QStringList out;
    for (int k = 0; k < g.size(1); ++k)
        out << g(r, k).toString();
    return out;
}

} // namespace

TEST(CrossTab, OneRowAKeyOneColumnAKeyInTheOrderMet) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    // Causes B then A; groups M before F as met.
    const Cell g = FnCrossTab(table({{"B", "M0", "1", "x"}, {"B", "F0", "2", "y"}, {"A", "M0", "3", "z"},
                                     {"A", "F0", "4", "w"}}),
                              0, 1, true, "2,3");
    ASSERT_TRUE(g.isArray());
    const CellArray& a = g.array();
    EXPECT_EQ(row(a, 0), QStringList({"", "M0", "M0", "F0", "F0"}));
    EXPECT_EQ(row(a, 1), QStringList({"B", "1", "x", "2", "y"}));
    EXPECT_EQ(row(a, 2), QStringList({"A", "3", "z", "4", "w"}));
    EXPECT_TRUE(prompts.shown().isEmpty());
}

TEST(CrossTab, UnequalRowKeysAreRefusedWithTheirMessage) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    EXPECT_TRUE(FnCrossTab(table({{"A", "M0", "1"}, {"A", "F0", "2"}, {"B", "M0", "3"}}), 0, 1, false, "2").isEmpty());
    EXPECT_EQ(prompts.messages(), QStringList{"Transpose elements are not equal"});
}

TEST(CrossTab, AColumnThatCannotBeCarriedIsRefusedAndTheOthersGoOn) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    const Cell g = FnCrossTab(table({{"A", "M0", "1"}, {"A", "F0", "2"}}), 0, 1, false, "9,2,x");
    ASSERT_TRUE(g.isArray());
    EXPECT_EQ(row(g.array(), 0), QStringList({"A", "1", "2"}));
    EXPECT_EQ(prompts.messages(), QStringList({"Cannot add the colno 9", "Cannot add the colno x"}));
}
