// The interpolation tool's work: the source ladder, the run over one or two columns with its
// messages, the collapse to output age groups, the check of the collapsed values, the decimals, and
// the source read from a file.

#include "demography/interpolator.h"
#include "inputs/foreign_file.h"
#include "platform/prompts.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vesk;

namespace {

const SpraguePanels& panels() {
    static const SpraguePanels p = *ProcLoadPanels(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"));
    return p;
}

class Interpolator : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
    const QStringList ages_{"0", "5", "10", "15", "20", "25", "30-w"};
    const QStringList pop_{"500", "480", "470", "460", "450", "440", "2000"};
    const QStringList deaths_{"9", "2", "1", "1", "2", "2", "60"};
};

TEST_F(Interpolator, LadderOfAnUpperLimit) {
    EXPECT_EQ(*interpolatorAgeLadder("20"), QStringList({"0", "5", "10", "15", "20-w"}));
    EXPECT_FALSE(interpolatorAgeLadder("twenty"));
    EXPECT_FALSE(interpolatorAgeLadder("72"));
    EXPECT_EQ(prompts_.messages(),
              QStringList({"Please enter valid data", "The upper age limit should be divisible by 5"}));
}

TEST_F(Interpolator, KeepOpenFromTheLastAge) {
    EXPECT_EQ(interpolatorKeepOpen("30-w"), 1);
    EXPECT_EQ(interpolatorKeepOpen(" 85-w "), 1);
    EXPECT_EQ(interpolatorKeepOpen("30"), 0);
}

TEST_F(Interpolator, RunsEachColumn) {
    const InterpolatorRun r = runInterpolator(ages_, {pop_, deaths_}, &panels());
    // The deaths' sharp first group may overshoot; the population alone does not.
    const InterpolatorRun p = runInterpolator(ages_, {pop_}, &panels());
    ASSERT_EQ(p.outcome, InterpolatorOutcome::Done);
    ASSERT_EQ(p.singleYears.size(), 1);
    EXPECT_EQ(p.singleYears[0].size(0), 31); // 30 single years and the open group
    EXPECT_EQ(p.singleYears[0](30).toDouble(), 2000.0);
    if (r.outcome == InterpolatorOutcome::Done) {
        EXPECT_EQ(r.singleYears.size(), 2);
    }
}

TEST_F(Interpolator, NoDataAndTooFewRows) {
    EXPECT_EQ(runInterpolator(ages_, {QStringList(7, QString())}, &panels()).outcome, InterpolatorOutcome::NoData);
    EXPECT_EQ(runInterpolator({"0", "5", "10", "15", "20-w"}, {{"1", "2", "3", "4", "5"}}, &panels()).outcome,
              InterpolatorOutcome::TooFewRows);
    EXPECT_EQ(prompts_.messages(),
              QStringList({"Please fill the data",
                           "Interpolation is not possible as it reqiures minimum of 5 Rows data"}));
}

TEST_F(Interpolator, SuddenChangeAsksForTheChart) {
    const QStringList jump{"10000", "0", "0", "0", "0", "0", "5"};
    prompts_.answer(Answer::Yes);
    EXPECT_EQ(runInterpolator(ages_, {jump}, &panels()).outcome, InterpolatorOutcome::NegativeChart);
    prompts_.answer(Answer::No);
    const InterpolatorRun r = runInterpolator(ages_, {jump}, &panels());
    EXPECT_EQ(r.outcome, InterpolatorOutcome::Negative);
    EXPECT_TRUE(r.singleYears.isEmpty());
    EXPECT_EQ(prompts_.shown().last().text,
              QStringLiteral("There appears to be sudden change in the figures between the age groups. Sprague "
                             "Interpolation may not be appropriate.\rCheck data or try an alternate interpolation "
                             "method. Do you want to view the chart?"));
    EXPECT_EQ(prompts_.shown().last().title, QStringLiteral("VESK"));
}

TEST_F(Interpolator, CollapsesIntoTheOutputGroups) {
    const InterpolatorRun r = runInterpolator(ages_, {pop_}, &panels());
    const CellArray& y = r.singleYears[0];
    const CellArray c = collapseToOutputGroups(r.singleYears, {"0", "1", "15", "25-w"}, false);
    ASSERT_EQ(c.size(0), 4);
    EXPECT_EQ(c(0, 0).toString(), QStringLiteral("0"));
    EXPECT_EQ(c(0, 1).toDouble(), y(0).toDouble());
    double oneTo14 = 0, from25 = 0;
    for (int a = 1; a <= 14; ++a)
        oneTo14 += y(a).toDouble();
    for (int a = 25; a <= 30; ++a)
        from25 += y(a).toDouble();
    EXPECT_DOUBLE_EQ(c(1, 1).toDouble(), oneTo14);
    EXPECT_DOUBLE_EQ(c(3, 1).toDouble(), from25);
    EXPECT_NEAR(c(2, 1).toDouble(), 460 + 450, 1e-9); // 15-24: two whole source groups
    const CellArray exact = collapseToOutputGroups(r.singleYears, {"3", "17"}, true);
    EXPECT_EQ(exact(1, 1).toDouble(), y(17).toDouble());
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(Interpolator, MissingYearsSaySo) {
    const InterpolatorRun r = runInterpolator(ages_, {pop_}, &panels());
    // 10-14 is there; 15-39 and 40 run past the table's last year, 30.
    const CellArray c = collapseToOutputGroups(r.singleYears, {"10", "15", "40"}, false);
    EXPECT_TRUE(c(0, 1).isNumber());
    EXPECT_TRUE(c(1, 1).isEmpty());
    EXPECT_TRUE(c(2, 1).isEmpty());
    EXPECT_EQ(prompts_.messages(), QStringList({"Data for 15 Age group is not available",
                                                "Data for 40 Age group is not available"}));
}

TEST_F(Interpolator, ZeroOrLessIsFlagged) {
    CellArray c({3, 3});
    const char* labels[] = {"0", "5", "10-w"};
    const double values[][2] = {{10, 1}, {0, 2}, {-1, 3}};
    for (int r = 0; r < 3; ++r) {
        c(r, 0) = Cell(labels[r]);
        c(r, 1) = Cell(values[r][0]);
        c(r, 2) = Cell(values[r][1]);
    }
    EXPECT_FALSE(ProcChkNegRslt(c));
    EXPECT_EQ(prompts_.messages(),
              QStringList{"There appears to be sudden change in the figures between the following age groups. "
                          "Sprague Interpolation may not be appropriate.\rCheck data or try an alternate "
                          "interpolation method\n\nAge Groups\tData\n5\t0\n10-w\t-1"});
    c(1, 1) = Cell(1.0);
    c(2, 1) = Cell(1.0);
    prompts_.clear();
    EXPECT_TRUE(ProcChkNegRslt(c));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(Interpolator, DecimalsOfTheLifeTableSetting) {
    EXPECT_EQ(TKdecimals(12.345, 2), QStringLiteral("12.35"));
    EXPECT_EQ(TKdecimals(12.9, 0), QStringLiteral("12"));
    EXPECT_EQ(TKdecimals(-12.9, 0), QStringLiteral("-12"));
}

TEST_F(Interpolator, OutputGroupsAscendWithinTheLimit) {
    EXPECT_TRUE(outputGroupRefusal("15", 10, 80).isEmpty());
    EXPECT_EQ(outputGroupRefusal("10", 10, 80), QStringLiteral("The entered  age group may be either repetative [or] "
                                                               "may be less than the Previous age group"));
    EXPECT_EQ(outputGroupRefusal("85", 80, 80), QStringLiteral("Your Output Age group should be within your upper "
                                                               "age limit"));
    EXPECT_TRUE(outputGroupRefusal("80-w", 75, 80).isEmpty());
}

TEST_F(Interpolator, SourceFromAMarkedTextFileAndAWorksheet) {
    QTemporaryDir dir;
    const QString txt = dir.filePath("p.txt");
    QFile f(txt);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[pop];500;480;470\n460;450;440;2000\n[Dths];9;2;1;1;2;2;60\n");
    f.close();
    const auto both = readInterpolatorSource(txt, {"pop", "Dths"});
    ASSERT_TRUE(both);
    EXPECT_EQ((*both)[0], pop_);
    EXPECT_EQ((*both)[1], deaths_);
    const QString xlsx = dir.filePath("p.xlsx");
    CellArray t({7, 2});
    for (int i = 0; i < 7; ++i) {
        t(i, 0) = Cell(pop_[i].toDouble());
        t(i, 1) = Cell(deaths_[i].toDouble());
    }
    ASSERT_TRUE(FnWriteArrFile(t, xlsx, "Popdata", {"POP", "Dths"}));
    const auto deaths = readInterpolatorSource(xlsx, {"Dths"});
    ASSERT_TRUE(deaths);
    EXPECT_EQ((*deaths)[0], deaths_);
    EXPECT_FALSE(readInterpolatorSource(dir.filePath("none.xlsx"), {"pop"}));
    EXPECT_EQ(prompts_.messages(), QStringList{"Unable to  read file"});
}

} // namespace
