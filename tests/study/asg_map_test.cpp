// The age-sex map and the rules that keep a study's sets together.

#include "asg_test_support.h"
#include "study/asg_labels.h"
#include "study/asg_map.h"

using namespace vesk;
using vesk::test::boundaryColumn;
using vesk::test::labelArray;
using vesk::test::texts;

namespace {

class AsgMapTest : public vesk::test::PromptedTest {};

Cell labelsOf(const std::vector<double>& ages) {
    return Cell(FnAsgLabels(boundaryColumn(ages), 0));
}

Cell list(const QStringList& labels) {
    return Cell(labelArray(labels));
}

// The map rows as "label>group@index" texts, in row order.
QStringList mapRows(const CellArray& record) {
    QStringList out;
    const CellArray& m = record(kAsgMapRows).array();
    for (int i = m.lbound(0); i <= m.ubound(0); ++i)
        out << m(i, 0).toString() + u'>' + m(i, 1).toString() + u'@' + m(i, 2).toString();
    return out;
}

} // namespace

TEST_F(AsgMapTest, EqualSetsMapOneToOne) {
    const Cell a = labelsOf({0, 5, 15, 45, 60});
    const CellArray r = FnAsgMapEq(a, a);
    ASSERT_TRUE(asgMapFeasible(r));
    EXPECT_EQ(r(kAsgMapFirstSide), Cell(0));
    EXPECT_EQ(r(kAsgMapSecondSide), Cell(1));
    const QStringList rows = mapRows(r);
    ASSERT_EQ(rows.size(), 10);
    EXPECT_EQ(rows[0], "F0-4>F0-4@0");
    EXPECT_EQ(rows[9], "M60-w>M60-w@9");
}

TEST_F(AsgMapTest, EqualSizeWithOneDifferentBoundaryIsNotFeasible) {
    const CellArray r = FnAsgMapEq(labelsOf({0, 5, 15, 45, 60}), labelsOf({0, 5, 15, 40, 60}));
    EXPECT_FALSE(asgMapFeasible(r));
    EXPECT_TRUE(r(kAsgMapFirstSide).isEmpty());
    EXPECT_TRUE(r(kAsgMapRows).isEmpty());
}

TEST_F(AsgMapTest, EqReadsIndicesBeforeSorting) {
    // Unsorted lists: the map row sits at the partner's index in the second list, and names the
    // index of the first list's label as passed.
    const CellArray r =
        FnAsgMapEq(list({"M5-w", "F0-4", "M0-4", "F5-w"}), list({"F5-w", "M0-4", "F0-4", "M5-w"}));
    ASSERT_TRUE(asgMapFeasible(r));
    EXPECT_EQ(mapRows(r), QStringList({"F5-w>F5-w@3", "M0-4>M0-4@2", "F0-4>F0-4@1", "M5-w>M5-w@0"}));
}

TEST_F(AsgMapTest, EqRefusesDifferentSizesAndNonArrays) {
    EXPECT_FALSE(asgMapFeasible(FnAsgMapEq(labelsOf({0, 5}), labelsOf({0, 5, 10}))));
    EXPECT_FALSE(asgMapFeasible(FnAsgMapEq(Cell(), labelsOf({0, 5}))));
    EXPECT_FALSE(asgMapFeasible(FnAsgMapEq(labelsOf({0, 5}), Cell("F0-4"))));
}

TEST_F(AsgMapTest, UneqRefusesEqualSizesAndNonArrays) {
    EXPECT_FALSE(asgMapFeasible(FnAsgMapUneq(labelsOf({0, 5}), labelsOf({0, 5}))));
    EXPECT_FALSE(asgMapFeasible(FnAsgMapUneq(Cell(), labelsOf({0, 5}))));
}

TEST_F(AsgMapTest, GbdFiveAgainstFinerSetIsFeasible) {
    // YLL 0, 5, 15, 45, 60 against YLD 0, 1, 5, 15, 30, 45, 60, 70.
    const Cell yll = labelsOf({0, 5, 15, 45, 60});
    const Cell yld = labelsOf({0, 1, 5, 15, 30, 45, 60, 70});
    const CellArray r = FnAsgMap(yld, yll);
    ASSERT_TRUE(asgMapFeasible(r));
    EXPECT_EQ(r(kAsgMapFirstSide), Cell(1)); // the second argument (YLL) is the shorter
    EXPECT_EQ(r(kAsgMapSecondSide), Cell(0));
    EXPECT_EQ(mapRows(r),
              QStringList({"F0>F0-4@0", "F01-4>F0-4@0", "F05-14>F05-14@1", "F15-29>F15-44@2",
                           "F30-44>F15-44@2", "F45-59>F45-59@3", "F60-69>F60-w@4", "F70-w>F60-w@4",
                           "M0>M0-4@5", "M01-4>M0-4@5", "M05-14>M05-14@6", "M15-29>M15-44@7",
                           "M30-44>M15-44@7", "M45-59>M45-59@8", "M60-69>M60-w@9", "M70-w>M60-w@9"}));
    // The other order of the arguments: the first is now the shorter.
    const CellArray back = FnAsgMap(yll, yld);
    ASSERT_TRUE(asgMapFeasible(back));
    EXPECT_EQ(back(kAsgMapFirstSide), Cell(0));
    EXPECT_EQ(mapRows(back), mapRows(r));
}

TEST_F(AsgMapTest, FifteenStartingNoGroupIsNotFeasible) {
    // Against 0, 1, 5, 10, 20 (the same size) 15 starts no group of the second set.
    EXPECT_FALSE(asgMapFeasible(FnAsgMap(labelsOf({0, 1, 5, 10, 20}), labelsOf({0, 5, 15, 45, 60}))));
    // And against a longer set that has 10 and 20 but not 15.
    EXPECT_FALSE(
        asgMapFeasible(FnAsgMap(labelsOf({0, 1, 5, 10, 20, 30, 45, 60}), labelsOf({0, 5, 15, 45, 60}))));
}

TEST_F(AsgMapTest, OpenGroupCoveredByClosedGroupsEndingOpen) {
    const CellArray r = FnAsgMapUneq(list({"M0-59", "M60-w"}), list({"M0-59", "M60-69", "M70-w"}));
    ASSERT_TRUE(asgMapFeasible(r));
    EXPECT_EQ(mapRows(r), QStringList({"M0-59>M0-59@0", "M60-69>M60-w@1", "M70-w>M60-w@1"}));
}

TEST_F(AsgMapTest, OpenGroupSwallowsSeveralClosedOnes) {
    const CellArray r = FnAsgMap(labelsOf({0, 60}), labelsOf({0, 60, 65, 70, 75, 80}));
    ASSERT_TRUE(asgMapFeasible(r));
    const QStringList rows = mapRows(r);
    EXPECT_TRUE(rows.contains("F65-69>F60-w@1"));
    EXPECT_TRUE(rows.contains("F80-w>F60-w@1"));
    EXPECT_TRUE(rows.contains("M75-79>M60-w@3"));
    // A closed group cannot take an open piece: 60-w does not fit in 60-69.
    EXPECT_FALSE(asgMapFeasible(
        FnAsgMap(list({"M0-59", "M60-69", "M70-w"}), list({"M0-29", "M30-59", "M60-w", "M70-w"}))));
    // Nor a set that stops short: 0, 60, 65 against 0, 60 works, but not 0, 65 against 0, 60, 70.
    EXPECT_FALSE(asgMapFeasible(FnAsgMap(labelsOf({0, 65}), labelsOf({0, 60, 70}))));
}

TEST_F(AsgMapTest, WholeLifeGroupTakesEveryPiece) {
    const CellArray r = FnAsgMap(labelsOf({0}), labelsOf({0, 1, 5, 15, 45, 60}));
    ASSERT_TRUE(asgMapFeasible(r));
    const QStringList rows = mapRows(r);
    EXPECT_EQ(rows.first(), "F0>F0-w@0");
    EXPECT_EQ(rows.last(), "M60-w>M0-w@1");
}

TEST_F(AsgMapTest, DuplicateBoundariesRefusedByUnequalMap) {
    // 0, 5, 5, 15 gives F05-4 beside F05-14: neighbours with the same lower age.
    const Cell dup = labelsOf({0, 5, 5, 15});
    EXPECT_EQ(texts(dup.array()),
              QStringList({"F0-4", "F05-14", "F05-4", "F15-w", "M0-4", "M05-14", "M05-4", "M15-w"}));
    EXPECT_FALSE(asgMapFeasible(FnAsgMap(dup, labelsOf({0, 5, 10, 15, 20})))); // dup in S
    EXPECT_FALSE(asgMapFeasible(FnAsgMap(labelsOf({0, 15}), dup)));            // dup in L
    // The same end in L, whatever the letters: refused too.
    EXPECT_FALSE(asgMapFeasible(FnAsgMapUneq(list({"F0-w"}), list({"F0-4", "M5-9", "F05-9"}))));
}

TEST_F(AsgMapTest, DuplicateBoundariesRefusedByEqualMapForLackOfPartner) {
    EXPECT_FALSE(asgMapFeasible(FnAsgMap(labelsOf({0, 5, 5, 15}), labelsOf({0, 5, 10, 15}))));
}

TEST_F(AsgMapTest, ShorterSetNeighboursOfOtherLettersAreNoDuplicates) {
    // F0-w and M0-w share lower age and end, but their letters differ: allowed in S.
    EXPECT_TRUE(asgMapFeasible(FnAsgMap(labelsOf({0}), labelsOf({0, 5}))));
}

TEST_F(AsgMapTest, GroupMeetingNoPieceAfterACompletedOneIsPassedOver) {
    // The run as the program has always made it: F07-w meets no piece right after F0-4 was
    // completed, so it is passed over, and passing the end of S that way ends feasible, with the map
    // holding the rows found.
    const CellArray r = FnAsgMapUneq(list({"F0-4", "F07-w"}), list({"F0-4", "F05-9", "F10-w"}));
    ASSERT_TRUE(asgMapFeasible(r));
    const CellArray& m = r(kAsgMapRows).array();
    EXPECT_EQ(m(0, 1), Cell("F0-4"));
    EXPECT_TRUE(m(1, 0).isEmpty());
    // Before any group is completed, meeting no piece is not feasible.
    EXPECT_FALSE(asgMapFeasible(FnAsgMapUneq(list({"F03-4", "F5-w"}), list({"F0-4", "F05-9", "F10-w"}))));
}

TEST_F(AsgMapTest, FeasibilityRuleShowsItsMessage) {
    EXPECT_TRUE(FnChkAsgFeasible(labelsOf({0, 1, 5, 15, 30, 45, 60, 70}), labelsOf({0, 5, 15, 45, 60})));
    EXPECT_TRUE(prompts_.shown().isEmpty());
    EXPECT_FALSE(FnChkAsgFeasible(labelsOf({0, 1, 5, 10, 20}), labelsOf({0, 5, 15, 45, 60})));
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text,
              "The Age Groups Entered are not Feesable for maping, Please enter again");
    EXPECT_EQ(prompts_.shown()[0].title, "Feesability Check");
}

TEST_F(AsgMapTest, RowRule) {
    const Cell blank;
    EXPECT_TRUE(FnAsgRowRuleHolds(Cell(5), Cell(5), Cell(5)));
    EXPECT_TRUE(FnAsgRowRuleHolds(Cell(5), blank, Cell(5)));
    EXPECT_TRUE(FnAsgRowRuleHolds(Cell(5), Cell("5"), Cell("")));
    EXPECT_TRUE(FnAsgRowRuleHolds(blank, Cell(5), Cell(5)));
    EXPECT_TRUE(FnAsgRowRuleHolds(blank, blank, Cell(7)));
    EXPECT_TRUE(FnAsgRowRuleHolds(blank, Cell(7), blank));
    EXPECT_FALSE(FnAsgRowRuleHolds(Cell(5), Cell(10), blank));
    EXPECT_FALSE(FnAsgRowRuleHolds(Cell(5), Cell(5), Cell(7)));
    EXPECT_FALSE(FnAsgRowRuleHolds(blank, Cell(5), Cell(10)));
    EXPECT_FALSE(FnChkAsgRowRule(Cell(5), blank, Cell(10)));
    EXPECT_EQ(
        prompts_.messages(),
        QStringList({"Age gruop defination must satisfy many to one or one to many  relation ship between  "
                     "the sets for YLL YLD DALY . This requires that figures in the same row of three set "
                     "either match are some cells remain blank "}));
}

TEST_F(AsgMapTest, PndSetMayDifferAsTheRowRuleAllows) {
    // A ladder of PND ages beside coarser YLL and YLD sets: every row passes the row rule, and the
    // map test looks at YLL and YLD only.
    const std::vector<double> pnd{0, 1, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85};
    CellArray dfn({static_cast<int>(pnd.size()), 3});
    for (int i = 0; i < static_cast<int>(pnd.size()); ++i) {
        const double a = pnd[i];
        dfn(i, 2) = Cell(a);
        if (a == 0 || a == 5 || a == 15 || a == 45 || a == 60)
            dfn(i, 0) = Cell(a);
        if (a == 0 || a == 1 || a == 5 || a == 15 || a == 30 || a == 45 || a == 60 || a == 70)
            dfn(i, 1) = Cell(a);
        EXPECT_TRUE(FnAsgRowRuleHolds(dfn(i, 0), dfn(i, 1), dfn(i, 2))) << a;
    }
    CellArray yll, yld;
    ASSERT_TRUE(ASGDfn(dfn, 0, yll));
    ASSERT_TRUE(ASGDfn(dfn, 1, yld));
    EXPECT_TRUE(FnChkAsgFeasible(Cell(yld), Cell(yll)));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}
