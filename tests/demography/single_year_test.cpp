// The single-year series of a study: the first rows merged as "Choice For Five Years" says, Sprague
// where it serves and even spreading where it overshoots, the open group kept last.

#include "demography/single_year.h"
#include "foundation/settings_file.h"
#include "platform/prompts.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

const SpraguePanels& panels() {
    static const SpraguePanels p = *ProcLoadPanels(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"));
    return p;
}

// A basic array of one year and `units` units over the start ages `ages`, female and male values.
CellArray basic(int units, const std::vector<int>& ages, const std::vector<std::vector<double>>& male,
                const std::vector<std::vector<double>>& female) {
    CellArray a({1, units, int(ages.size()), 5});
    for (int b = 0; b < units; ++b) {
        if (male[b].empty())
            continue; // a unit without data: its first cell stays Empty
        for (int r = 0; r < int(ages.size()); ++r) {
            a(0, b, r, 0) = Cell(ages[r]);
            a(0, b, r, 1) = r + 1 < int(ages.size()) ? Cell(ages[r + 1] - ages[r]) : Cell("W");
            a(0, b, r, 2) = Cell(female[b][r]);
            a(0, b, r, 3) = Cell(male[b][r]);
            a(0, b, r, 4) = Cell(female[b][r] + male[b][r]);
        }
    }
    return a;
}

class SingleYear : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
};

TEST_F(SingleYear, ChoiceTwoMergesTheFirstThreeRows) {
    // 0, 1, 2, 5, ..., 30: the first three rows make one 0-4 group and six closed groups follow,
    // a vector of seven elements: 5 x 6 single years and the last element kept as the open one.
    const std::vector<int> ages{0, 1, 2, 5, 10, 15, 20, 25, 30};
    const std::vector<double> m{100, 380, 470, 900, 880, 860, 850, 820, 4000};
    const std::vector<double> f{95, 370, 460, 880, 870, 850, 845, 815, 4300};
    const Cell r = Newp(Cell(basic(1, ages, {m}, {f})), 2, &panels());
    ASSERT_TRUE(r.isArray());
    const CellArray& s = r.array();
    ASSERT_EQ(s.size(2), 31);
    double first = 0;
    for (int i = 0; i < 5; ++i)
        first += s(0, 0, i, 3).toDouble();
    EXPECT_NEAR(first, 100 + 380 + 470, 1e-9); // the merged group's five years add up to it
    EXPECT_EQ(s(0, 0, 30, 3).toDouble(), 4000.0);
    EXPECT_EQ(s(0, 0, 30, 1).toString(), QStringLiteral("W"));
    EXPECT_EQ(s(0, 0, 7, 0).toDouble(), 7.0);
    EXPECT_EQ(s(0, 0, 7, 1).toDouble(), 1.0);
    EXPECT_DOUBLE_EQ(s(0, 0, 7, 4).toDouble(), s(0, 0, 7, 2).toDouble() + s(0, 0, 7, 3).toDouble());
    // The same vector through Sprague directly.
    CellArray v({7}), single;
    const double merged[] = {950, 900, 880, 860, 850, 820, 4000};
    for (int i = 0; i < 7; ++i)
        v(i) = Cell(merged[i]);
    ASSERT_TRUE(FnSprague(v, 1, single, panels()).isArray());
    for (int i = 0; i < 31; ++i)
        EXPECT_EQ(s(0, 0, i, 3).toDouble(), single(i).toDouble()) << i;
}

TEST_F(SingleYear, SharpJumpFallsBackToEvenSpreadingSilently) {
    const std::vector<int> ages{0, 5, 10, 15, 20, 25, 30};
    const std::vector<double> smooth{500, 480, 470, 460, 450, 440, 2000};
    const std::vector<double> jump{5000, 0, 0, 0, 0, 0, 10};
    const Cell r = Newp(Cell(basic(2, ages, {smooth, jump}, {smooth, jump})), 0, &panels());
    ASSERT_TRUE(r.isArray());
    const CellArray& s = r.array();
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(s(0, 1, i, 3).toDouble(), 1000.0); // 5000 spread evenly
    EXPECT_EQ(s(0, 1, 30, 3).toDouble(), 10.0);
    EXPECT_NE(s(0, 0, 0, 3).toDouble(), 100.0); // the smooth unit is Sprague's
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(SingleYear, UnitWithoutDataIsSkipped) {
    const std::vector<int> ages{0, 5, 10, 15, 20, 25, 30};
    const std::vector<double> smooth{500, 480, 470, 460, 450, 440, 2000};
    const Cell r = Newp(Cell(basic(2, ages, {{}, smooth}, {{}, smooth})), 0, &panels());
    ASSERT_TRUE(r.isArray());
    EXPECT_TRUE(r.array()(0, 0, 0, 3).isEmpty());
    EXPECT_TRUE(r.array()(0, 1, 0, 3).isNumber());
}

TEST_F(SingleYear, NotAnArraySaysSo) {
    EXPECT_TRUE(Newp(Cell(3.0), 0, &panels()).isEmpty());
    EXPECT_EQ(prompts_.messages(), QStringList{"Input Data is not an Array"});
}

TEST_F(SingleYear, NullValueStopsWithTheRuntimesWords) {
    CellArray a = basic(1, {0, 5, 10, 15, 20, 25, 30}, {{1, 2, 3, 4, 5, 6, 7}}, {{1, 2, 3, 4, 5, 6, 7}});
    a(0, 0, 3, 3) = Cell::null();
    EXPECT_TRUE(Newp(Cell(a), 0, &panels()).isEmpty());
    EXPECT_EQ(prompts_.messages(), QStringList{"Invalid use of Null"});
}

TEST_F(SingleYear, RecordsOfFewerThanSixRowsSaySo) {
    QList<SingleYearRecord> rows, out;
    for (int i = 0; i < 5; ++i)
        rows << SingleYearRecord{Cell("007"), Cell(2020), Cell(5 * i), Cell(100.0), Cell(90.0), Cell("2020-01-01")};
    BuildSnglYr(rows, out, &panels());
    EXPECT_TRUE(out.isEmpty());
    EXPECT_EQ(prompts_.messages(), QStringList{"les than 5 rows"});
}

TEST_F(SingleYear, RecordsToOneRecordForEachSingleYear) {
    QList<SingleYearRecord> rows, out;
    const double m[] = {500, 480, 470, 460, 450, 440, 2000};
    for (int i = 0; i < 7; ++i)
        rows << SingleYearRecord{Cell("007"), Cell(2020), Cell(5 * i), Cell(m[i]), Cell(m[i] / 2),
                                 Cell(i == 3 ? "2021-05-01" : "2020-01-01")};
    BuildSnglYr(rows, out, &panels());
    ASSERT_EQ(out.size(), 31);
    EXPECT_EQ(out[0].bpu.toString(), QStringLiteral("007"));
    EXPECT_EQ(out[30].age.toDouble(), 30.0);
    EXPECT_EQ(out[30].male.toDouble(), 2000.0);
    EXPECT_EQ(out[30].female.toDouble(), 1000.0);
    EXPECT_EQ(out[12].date.toString(), QStringLiteral("2021-05-01")); // the latest of the unit's rows
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

} // namespace
