// Labels of age-sex groups: building, reading back, ASGDfn's modes.

#include "asg_test_support.h"
#include "study/asg_labels.h"

using namespace vesk;
using vesk::test::boundaryColumn;
using vesk::test::texts;

namespace {

class AsgLabelsTest : public vesk::test::PromptedTest {};

QStringList labelsOf(const std::vector<double>& ages) {
    return texts(FnAsgLabels(boundaryColumn(ages), 0));
}

} // namespace

TEST_F(AsgLabelsTest, StandardBoundariesGiveSortedLabelsFemaleFirst) {
    EXPECT_EQ(labelsOf({0, 1, 5, 15, 45, 60}),
              QStringList({"F0", "F01-4", "F05-14", "F15-44", "F45-59", "F60-w", "M0", "M01-4", "M05-14",
                           "M15-44", "M45-59", "M60-w"}));
}

TEST_F(AsgLabelsTest, OpenGroupLowerAgeIsNotPadded) {
    EXPECT_EQ(labelsOf({0, 5}), QStringList({"F0-4", "F5-w", "M0-4", "M5-w"}));
    // A closed group's lower age below 10 is padded, the same age as an open group's is not.
    EXPECT_EQ(labelsOf({0, 5, 7}), QStringList({"F0-4", "F05-6", "F7-w", "M0-4", "M05-6", "M7-w"}));
}

TEST_F(AsgLabelsTest, OnlyBoundaryZeroIsOneOpenGroup) {
    EXPECT_EQ(labelsOf({0}), QStringList({"F0-w", "M0-w"}));
}

TEST_F(AsgLabelsTest, SingleYearLabelOnlyWhenNextBoundaryIsOne) {
    EXPECT_EQ(labelsOf({0, 1, 5}), QStringList({"F0", "F01-4", "F5-w", "M0", "M01-4", "M5-w"}));
    EXPECT_EQ(labelsOf({0, 2}), QStringList({"F0-1", "F2-w", "M0-1", "M2-w"}));
    EXPECT_EQ(labelsOf({3, 4}), QStringList({"F03-3", "F4-w", "M03-3", "M4-w"}));
}

TEST_F(AsgLabelsTest, PaddingOnlyStrictlyBetweenZeroAndTen) {
    const QStringList l = labelsOf({0, 1, 5, 10, 15});
    EXPECT_TRUE(l.contains("M0"));     // 0 not padded
    EXPECT_TRUE(l.contains("M01-4"));  // 1 padded, last age 4 not
    EXPECT_TRUE(l.contains("M05-9"));  // 5 padded, last age 9 not
    EXPECT_TRUE(l.contains("M10-14")); // 10 not padded
    EXPECT_TRUE(l.contains("M15-w"));
}

TEST_F(AsgLabelsTest, AgesAreTakenAsTypedWithoutAscendingCheck) {
    EXPECT_EQ(labelsOf({10, 5}), QStringList({"F10-4", "F5-w", "M10-4", "M5-w"}));
}

TEST_F(AsgLabelsTest, BlankAndNonNumericEntriesAreSkipped) {
    CellArray b({5, 3});
    b(0, 1) = Cell("0");
    b(1, 1) = Cell("");
    b(2, 1) = Cell("5");
    b(3, 1) = Cell("W");
    b(4, 1) = Cell(15);
    EXPECT_EQ(texts(FnAsgLabels(b, 1)), QStringList({"F0-4", "F05-14", "F15-w", "M0-4", "M05-14", "M15-w"}));
}

TEST_F(AsgLabelsTest, PersonsLabelsOnePerEntry) {
    EXPECT_EQ(texts(FnAsgLabelsP(boundaryColumn({0, 1, 5, 15}), 0)),
              QStringList({"P0", "P01-4", "P05-14", "P15-w"}));
}

TEST_F(AsgLabelsTest, StartEndAndWidth) {
    EXPECT_EQ(FnAsgStart("M0"), 0);
    EXPECT_EQ(FnAsgStart("M05-9"), 5);
    EXPECT_EQ(FnAsgStart("F60-w"), 60);
    EXPECT_EQ(FnAsgStart("U15-44"), 15);
    EXPECT_EQ(FnAsgEnd("M0"), Cell(1.0));
    EXPECT_EQ(FnAsgEnd("M0-4"), Cell(5.0));
    EXPECT_EQ(FnAsgEnd("M05-14"), Cell(15.0));
    EXPECT_EQ(FnAsgEnd("F01-4"), Cell(5.0));
    EXPECT_EQ(FnAsgWidth("M0-4"), Cell(6.0));
    EXPECT_EQ(FnAsgWidth("M0"), Cell(2.0));
    EXPECT_EQ(FnAsgWidth("M60-w"), Cell("W"));
}

TEST_F(AsgLabelsTest, EndOfOpenAndBrokenLabels) {
    EXPECT_EQ(FnAsgEnd("M60-w"), Cell("W"));
    EXPECT_EQ(FnAsgEnd("M60-W"), Cell("W"));
    EXPECT_TRUE(FnAsgEnd("M60-").isEmpty());
    EXPECT_TRUE(FnAsgEnd("M60-x").isEmpty());
}

TEST_F(AsgLabelsTest, ModesZeroToTwoReadTheirColumn) {
    CellArray b({3, 3});
    b(0, 0) = Cell(0);
    b(1, 0) = Cell(5);
    b(0, 1) = Cell(0);
    b(1, 1) = Cell(1);
    b(2, 1) = Cell(5);
    b(0, 2) = Cell(0);
    CellArray r;
    ASSERT_TRUE(ASGDfn(b, 0, r));
    EXPECT_EQ(texts(r), QStringList({"F0-4", "F5-w", "M0-4", "M5-w"}));
    ASSERT_TRUE(ASGDfn(b, 1, r));
    EXPECT_EQ(texts(r), QStringList({"F0", "F01-4", "F5-w", "M0", "M01-4", "M5-w"}));
    ASSERT_TRUE(ASGDfn(b, 2, r));
    EXPECT_EQ(texts(r), QStringList({"F0-w", "M0-w"}));
    ASSERT_TRUE(ASGDfn(b, 8, r));
    EXPECT_EQ(texts(r), QStringList({"P0", "P01-4", "P5-w"}));
    ASSERT_TRUE(ASGDfn(b, 7, r));
    EXPECT_EQ(texts(r), QStringList({"P0-4", "P5-w"}));
    EXPECT_TRUE(prompts_.messages().isEmpty());
}

TEST_F(AsgLabelsTest, ModesThreeToFiveParseLabelsKeepingBounds) {
    CellArray labels(std::vector<Bound>{{1, 4}});
    labels(1) = Cell("M0");
    labels(2) = Cell("M01-4");
    labels(3) = Cell("F60-w");
    labels(4) = Cell("F05-14");
    for (int mode : {3, 4, 5}) {
        CellArray r;
        ASSERT_TRUE(ASGDfn(CellArray(), mode, r, &labels));
        ASSERT_EQ(r.rank(), 2);
        EXPECT_EQ(r.lbound(0), 1);
        EXPECT_EQ(r.ubound(0), 4);
        EXPECT_EQ(r(1, 0), Cell("M0"));
        EXPECT_EQ(r(1, 1), Cell(0.0));
        EXPECT_EQ(r(1, 2), Cell(2.0)); // end 1 - 0 + 1
        EXPECT_EQ(r(2, 1), Cell(1.0));
        EXPECT_EQ(r(2, 2), Cell(5.0)); // end 5 - 1 + 1
        EXPECT_EQ(r(3, 2), Cell(999.0));
        EXPECT_EQ(r(4, 2), Cell(11.0)); // end 15 - 5 + 1
    }
}

TEST_F(AsgLabelsTest, ModeSixAndAboveNineLeaveResultUntouched) {
    const CellArray b = boundaryColumn({0, 5});
    CellArray r({1});
    r(0) = Cell("kept");
    for (int mode : {6, 10, 42}) {
        EXPECT_TRUE(ASGDfn(b, mode, r));
        ASSERT_EQ(r.rank(), 1);
        EXPECT_EQ(r(0), Cell("kept"));
    }
}

TEST_F(AsgLabelsTest, ErrorIsShownAndFalseReturned) {
    CellArray r({1});
    r(0) = Cell("kept");
    // A column with no numeric entry cannot size the result.
    EXPECT_FALSE(ASGDfn(boundaryColumn({0, 5}), 2, r));
    EXPECT_EQ(prompts_.messages(), QStringList({"Error from ASGDfn :  Subscript out of range"}));
    EXPECT_EQ(r(0), Cell("kept"));
    prompts_.clear();
    // Parsing with no labels.
    EXPECT_FALSE(ASGDfn(CellArray(), 3, r, nullptr));
    EXPECT_EQ(prompts_.messages(), QStringList({"Error from ASGDfn :  Type mismatch"}));
    prompts_.clear();
    // A column outside the boundaries.
    CellArray narrow({2, 1});
    narrow(0, 0) = Cell(0);
    EXPECT_FALSE(ASGDfn(narrow, 1, r));
    EXPECT_EQ(prompts_.messages(), QStringList({"Error from ASGDfn :  Subscript out of range"}));
}

TEST_F(AsgLabelsTest, VectorsOfALoadedDefinition) {
    // Rows as _DfnAgeGrps holds them, a null field as "".
    CellArray dfn({4, 3});
    const char* rows[4][3] = {{"0", "0", "0"}, {"", "1", "1"}, {"5", "5", "5"}, {"", "", "10"}};
    for (int i = 0; i < 4; ++i)
        for (int c = 0; c < 3; ++c)
            dfn(i, c) = Cell(rows[i][c]);
    CellArray yll, yld, pnd;
    ASSERT_TRUE(buildAgeGroupVectors(dfn, yll, yld, pnd));
    EXPECT_EQ(texts(yll), QStringList({"F0-4", "F5-w", "M0-4", "M5-w"}));
    EXPECT_EQ(texts(yld), QStringList({"F0", "F01-4", "F5-w", "M0", "M01-4", "M5-w"}));
    EXPECT_EQ(texts(pnd), QStringList({"0", "1", "5", "10"}));
    EXPECT_TRUE(prompts_.messages().isEmpty());
}
