// The widths and decimals grids of the preferences form: the rows of each tab, filled from the
// settings and put back, the overflow of a width, the decimals' bounds, and the sample grid.

#include "foundation/runtime_error.h"
#include "shell/preferences_grids.h"

#include <gtest/gtest.h>

namespace vesk::test {
namespace {

QStringList column(const GridModel& g, int col) {
    QStringList texts;
    for (int r = 0; r < g.rows(); ++r)
        texts << g.textMatrix(r, col);
    return texts;
}

VeskSettings numberedWidths() {
    VeskSettings s;
    for (int i = 0; i < kColumnWidthCount; ++i)
        s.ColWdth[i] = 1000 + i;
    return s;
}

TEST(PreferencesGrids, EachWidthTabHoldsItsRowsUnderTheHeadings) {
    MenuGrids grids;
    const VeskSettings s = numberedWidths();
    DoProcess(grids, s);
    for (int tab : {kFileTab, kComputeTab, kToolsTab}) {
        EXPECT_EQ(grids[tab].rows(), 1) << tab; // the headings alone
        EXPECT_EQ(column(grids[tab], 0), QStringList{"Menu and Item"});
    }
    EXPECT_EQ(column(grids[kViewTab], 0),
              (QStringList{"Menu and Item", "View -> Age Specific Disability Weights",
                           "View -> Deaths by Age, Sex and Cause", "View -> Population by Age and Sex"}));
    EXPECT_EQ(
        column(grids[kStudyTab], 0),
        (QStringList{"Menu and Item", "Study -> Inputs -> Cause of Disease Tab",
                     "Study -> Setup -> Cause of Burden", "Study -> Inputs -> Epidemiological Estimates"}));
    EXPECT_EQ(column(grids[kResultsTab], 0),
              (QStringList{"Menu and Item", "Results -> Detail results by Age, Sex and Cause",
                           "Results -> Summary results by Age, Sex and Cause"}));
    // Row "View -> Population by Age and Sex": VPC1, VPC2, VPC3 (indices 6, 14, 22).
    EXPECT_EQ(grids[kViewTab].textMatrix(0, 1), QStringLiteral("Row Heading 1"));
    EXPECT_EQ(grids[kViewTab].textMatrix(0, 2), QStringLiteral("Row Heading 2"));
    EXPECT_EQ(grids[kViewTab].textMatrix(0, 3), QStringLiteral("Other Columns"));
    EXPECT_EQ(grids[kViewTab].textMatrix(3, 1), QStringLiteral("1006"));
    EXPECT_EQ(grids[kViewTab].textMatrix(3, 2), QStringLiteral("1014"));
    EXPECT_EQ(grids[kViewTab].textMatrix(3, 3), QStringLiteral("1022"));
    // Row "Study -> Setup -> Cause of Burden": SSCC1..3 (7, 15, 23).
    EXPECT_EQ(grids[kStudyTab].textMatrix(2, 1), QStringLiteral("1007"));
    EXPECT_EQ(grids[kStudyTab].textMatrix(2, 3), QStringLiteral("1023"));
}

TEST(PreferencesGrids, WidthsGoBackToTheirKeys) {
    MenuGrids grids;
    VeskSettings s = numberedWidths();
    DoProcess(grids, s);
    grids[kResultsTab].setTextMatrix(2, 2, QStringLiteral("3333")); // RSC2
    grids[kStudyTab].setTextMatrix(3, 1, QStringLiteral("1234.5")); // SIEC1, half to even
    grids[kViewTab].setTextMatrix(1, 3, QString());                 // VWC3: 0, the writer's default
    grids[kViewTab].setTextMatrix(2, 1, QStringLiteral("-40"));     // VDC1: below 0 is 0
    AppndColumnWidths(grids, s);
    EXPECT_EQ(s.ColWdth[ColWdthIndex(QStringLiteral("RSC2"))], 3333);
    EXPECT_EQ(s.ColWdth[ColWdthIndex(QStringLiteral("SIEC1"))], 1234);
    EXPECT_EQ(s.ColWdth[ColWdthIndex(QStringLiteral("VWC3"))], 0);
    EXPECT_EQ(s.ColWdth[ColWdthIndex(QStringLiteral("VDC1"))], 0);
    EXPECT_EQ(s.ColWdth[ColWdthIndex(QStringLiteral("VPC2"))], 1014); // untouched
}

TEST(PreferencesGrids, AWidthBeyond32BitsOverflowsAndChangesNothing) {
    MenuGrids grids;
    VeskSettings s = numberedWidths();
    DoProcess(grids, s);
    grids[kViewTab].setTextMatrix(1, 1, QStringLiteral("123"));
    grids[kResultsTab].setTextMatrix(1, 1, QStringLiteral("2147483648"));
    try {
        AppndColumnWidths(grids, s);
        FAIL() << "no overflow";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number, 6);
    }
    EXPECT_EQ(s.ColWdth[ColWdthIndex(QStringLiteral("VWC1"))], 1000);
}

TEST(PreferencesGrids, DecimalTabsAndTheirSettings) {
    MenuGrids grids;
    VeskSettings s;
    s.RptDecPlcs = 1;
    s.LDthDecPlcs = 2;
    s.RsltDecPlcs = 3;
    s.LSumDecPlcs = 4;
    s.LDaleDecPlcs = 5;
    s.LfTbDecPlcs = 6;
    s.ToolDecPlcs = 7;
    DoProcess1(grids, s);
    for (int tab : {kFileTab, kStudyTab, kComputeTab})
        EXPECT_EQ(grids[tab].rows(), 1) << tab;
    EXPECT_EQ(grids[kViewTab].textMatrix(0, 1), QStringLiteral("Decimal Places"));
    EXPECT_EQ(column(grids[kViewTab], 1), (QStringList{"Decimal Places", "1", "2"}));
    EXPECT_EQ(column(grids[kResultsTab], 0),
              (QStringList{"Menu and Item", "Results -> Detail results by Age, Sex and Cause",
                           "Results -> Summary results by Age, Sex and Cause", "Results -> DALE"}));
    EXPECT_EQ(column(grids[kResultsTab], 1), (QStringList{"Decimal Places", "3", "4", "5"}));
    EXPECT_EQ(column(grids[kToolsTab], 0), (QStringList{"Menu and Item", "Tools -> Life Table", "Tools"}));
    EXPECT_EQ(column(grids[kToolsTab], 1), (QStringList{"Decimal Places", "6", "7"}));
    grids[kToolsTab].setTextMatrix(2, 1, QStringLiteral("40")); // more than a double holds
    grids[kViewTab].setTextMatrix(1, 1, QStringLiteral("-2"));
    grids[kResultsTab].setTextMatrix(3, 1, QStringLiteral("0"));
    AppndDecimals(grids, s);
    EXPECT_EQ(s.ToolDecPlcs, kMaxDecimals);
    EXPECT_EQ(s.RptDecPlcs, 0);
    EXPECT_EQ(s.LDaleDecPlcs, 0);
    EXPECT_EQ(s.LfTbDecPlcs, 6);
}

TEST(PreferencesGrids, TheSampleShowsWidthsScaledAndTheDecimals) {
    EXPECT_EQ(samplePercent(QString()), 100);
    EXPECT_EQ(samplePercent(QStringLiteral("0")), 100);
    EXPECT_EQ(samplePercent(QStringLiteral("-5")), 100);
    EXPECT_EQ(samplePercent(QStringLiteral("50")), 50);
    EXPECT_EQ(samplePixels({900, 4000, 1200}, 100), (std::array<int, 3>{60, 267, 80}));
    EXPECT_EQ(samplePixels({900, 4000, 1200}, 50), (std::array<int, 3>{30, 133, 40}));
    EXPECT_EQ(samplePixels({0, 15, 30}, 200), (std::array<int, 3>{0, 2, 4}));
    GridModel sample;
    fillSample(sample, 3);
    EXPECT_EQ(column(sample, 0), (QStringList{"Row Heading 1", "M00-04", "F15-29"}));
    EXPECT_EQ(column(sample, 2), (QStringList{"Other Columns", "1234.568", "0.500"}));
    fillSample(sample, 0);
    EXPECT_EQ(column(sample, 2), (QStringList{"Other Columns", "1235", "1"}));
}

TEST(PreferencesGrids, TheRowBeingEdited) {
    MenuGrids grids;
    DoProcess(grids, numberedWidths());
    grids[kViewTab].setTextMatrix(1, 2, QStringLiteral("x"));
    EXPECT_EQ(rowWidths(grids[kViewTab], 1), (std::array<qint32, 3>{1000, 0, 1016}));
    MenuGrids decimals;
    DoProcess1(decimals, VeskSettings{});
    decimals[kViewTab].setTextMatrix(2, 1, QStringLiteral("4.5"));
    EXPECT_EQ(rowDecimals(decimals[kViewTab], 2), 4);
}

} // namespace
} // namespace vesk::test
