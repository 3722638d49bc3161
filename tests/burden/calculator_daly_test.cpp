// The DALY calculator: both sides built, the checks in order, and the join through the age-sex map.

#include "burden/calculator.h"
#include "calculator_support.h"
#include "study/asg_map.h"

using namespace vesk;
using vesk::test::femaleE;
using vesk::test::maleE;

namespace {

class DalyTest : public vesk::test::CalculatorTest {
protected:
    bool build(const QStringList& yldAges, const QStringList& yllAges, bool feasibility = true) {
        yldDef_.setAgeTexts(yldAges);
        yllDef_.setAgeTexts(yllAges);
        return buildDalyCalculator(yldDef_, yllDef_, yld_, yll_, feasibility);
    }
    static void fill(CalcDataModel& m, const std::vector<QStringList>& rows) {
        for (int r = 0; r < static_cast<int>(rows.size()); ++r)
            for (int c = 0; c < rows[r].size(); ++c)
                m.setInputText(r, c, rows[r][c]);
    }

    AgeDefModel yldDef_, yllDef_;
    CalcDataModel yld_, yll_;
    DapGridModel dap_{true};
};

} // namespace

TEST_F(DalyTest, RowTextsOfTheDalyGrid) {
    EXPECT_EQ(dap_.text(0, 0), "Built In-0");
    EXPECT_EQ(dap_.text(3, 0), "Built In-3");
    EXPECT_EQ(dap_.text(4, 0), "Custom");
    EXPECT_EQ(dap_.text(1, DapGridModel::CColumn), "0.1658");
    EXPECT_EQ(dap_.text(0, DapGridModel::SelectColumn), "False");
}

TEST_F(DalyTest, BuildChecksYllFirstThenYld) {
    EXPECT_FALSE(build({}, {}));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please fill the Yll  ASG"}));
    prompts_.clear();
    EXPECT_FALSE(build({}, {"0"}));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please fill the YLD  ASG"}));
}

TEST_F(DalyTest, BuildBothSidesWithTheirHeads) {
    ASSERT_TRUE(build({"0", "1", "5"}, {"0", "5"}));
    EXPECT_EQ(yld_.labels().size(), 6);
    EXPECT_EQ(yll_.labels(), QStringList({"F0-4", "F5-w", "M0-4", "M5-w"}));
    QStringList heads;
    for (int c = 1; c < yld_.columnCount(); ++c)
        heads << yld_.headerData(c, Qt::Horizontal).toString();
    EXPECT_EQ(heads, QStringList({"Age at onset", "Duration", "Disablity Weight", "Cases"}));
    EXPECT_EQ(yll_.headerData(1, Qt::Horizontal).toString(), "Deaths");
    EXPECT_EQ(yll_.headerData(2, Qt::Horizontal).toString(), "Age at Death");
}

TEST_F(DalyTest, SetsThatDoNotMapAreRefusedWithTheOptionOn) {
    EXPECT_FALSE(build({"0", "3"}, {"0", "5"}));
    EXPECT_EQ(
        prompts_.messages(),
        QStringList({"The data you have entered in YLL and YLd do not map. Please enter the proper data"}));
    EXPECT_FALSE(yld_.isBuilt());
    prompts_.clear();
    EXPECT_TRUE(build({"0", "3"}, {"0", "5"}, false));
    EXPECT_TRUE(prompts_.messages().isEmpty());
}

TEST_F(DalyTest, ComputeChecksInOrder) {
    ASSERT_TRUE(build({"0", "3"}, {"0", "5"}, false));
    EXPECT_FALSE(CalculateDalyCal(dap_, yld_, yll_, true));
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text,
              "!!! The Asg you have entered are not feesable. Please Enter valid asgs  !!!");
    EXPECT_EQ(prompts_.shown()[0].title, "Feesability Check");
    prompts_.clear();
    EXPECT_FALSE(CalculateDalyCal(dap_, yld_, yll_, false));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please select r,k,Beta and c values from the list"}));
    prompts_.clear();
    dap_.toggleSelect(0);
    EXPECT_FALSE(CalculateDalyCal(dap_, yld_, yll_, false));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please fill the Requried input and then compute DALYs"}));
    prompts_.clear();
    fill(yld_, {{"1", "2", "0.5", "10"}});
    fill(yll_, {{"3", ""}}); // a row half typed
    EXPECT_FALSE(CalculateDalyCal(dap_, yld_, yll_, false));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please fill the Requried input and then compute DALYs"}));
}

TEST_F(DalyTest, FinerYldSideIsTheBaseAndTakesTheYllOfEachGroup) {
    ASSERT_TRUE(build({"0", "1", "5"}, {"0", "5"}));
    // YLD rows: F0, F01-4, F5-w, M0, M01-4, M5-w.
    fill(yld_, {{"0.5", "2", "0.5", "10"},
                {"2", "1", "0.2", "5"},
                {"30", "4", "0.1", "8"},
                {"0.5", "2", "0.5", "12"},
                {"", "", "", ""},
                {"40", "1", "0.3", "2"}});
    // YLL rows: F0-4, F5-w, M0-4, M5-w.
    fill(yll_, {{"4", "2.5"}, {"6", "30"}, {"3", "1.5"}, {"5", "47.25"}});
    dap_.toggleSelect(0);
    ASSERT_TRUE(CalculateDalyCal(dap_, yld_, yll_, true));
    EXPECT_TRUE(prompts_.messages().isEmpty());
    const auto* iyld = yld_.result("IYLD[0,0]");
    const auto* yll = yll_.result("YLL[0,0]");
    const auto* daly = yld_.result("DALY[0,0]");
    ASSERT_NE(iyld, nullptr);
    ASSERT_NE(yll, nullptr);
    ASSERT_NE(daly, nullptr);
    EXPECT_EQ(yll_.result("DALY[0,0]"), nullptr);
    EXPECT_NEAR(iyld->at(0).toDouble(), 0.5 * 2 * 10, 1e-5);
    EXPECT_NEAR(yll->at(0).toDouble(), 4 * femaleE(2.5), 1e-3);
    // F0-4 goes into its first piece, F0; F01-4 keeps its own value.
    EXPECT_NEAR(daly->at(0).toDouble(), 10 + 4 * femaleE(2.5), 1e-3);
    EXPECT_NEAR(daly->at(1).toDouble(), 0.2 * 1 * 5, 1e-5);
    EXPECT_NEAR(daly->at(2).toDouble(), 0.1 * 4 * 8 + 6 * femaleE(30), 1e-3);
    EXPECT_NEAR(daly->at(3).toDouble(), 0.5 * 2 * 12 + 3 * maleE(1.5), 1e-3);
    EXPECT_TRUE(daly->at(4).isNull()); // a blank row that receives nothing
    EXPECT_NEAR(daly->at(5).toDouble(), 0.3 * 1 * 2 + 5 * maleE(47.25), 1e-3);
}

TEST_F(DalyTest, JoinRules) {
    const QStringList fine{"F0", "F01-4", "M0", "M01-4"};
    const QStringList coarse{"F0-4", "M0-4"};
    auto labels = [](const QStringList& l) {
        CellArray a({static_cast<int>(l.size())});
        for (int i = 0; i < l.size(); ++i)
            a(i) = Cell(l[i]);
        return Cell(a);
    };
    // The YLL side finer: the base is YLL; a Null base row takes the value, a number the sum.
    const CellArray map = FnAsgMap(labels(coarse), labels(fine));
    ASSERT_TRUE(asgMapFeasible(map));
    const DalyJoin j = joinDaly(coarse, {Cell(1.5), Cell::null()}, fine,
                                {Cell::null(), Cell(2.0), Cell(3.0), Cell(4.0)}, map);
    EXPECT_TRUE(j.baseIsYll);
    ASSERT_EQ(j.values.size(), 4u);
    EXPECT_EQ(j.values[0], Cell(1.5));
    EXPECT_EQ(j.values[1], Cell(2.0));
    EXPECT_EQ(j.values[2], Cell(3.0)); // a Null from the other side adds nothing
    EXPECT_EQ(j.values[3], Cell(4.0));
    // Equal sets: the YLL side is the base, rows joined one to one.
    const CellArray same = FnAsgMap(labels(coarse), labels(coarse));
    const DalyJoin k = joinDaly(coarse, {Cell(1.0), Cell(2.0)}, coarse, {Cell(10.0), Cell(20.0)}, same);
    EXPECT_TRUE(k.baseIsYll);
    EXPECT_EQ(k.values[0], Cell(11.0));
    EXPECT_EQ(k.values[1], Cell(22.0));
    // No map (the option off and the sets do not nest): rows of equal labels are joined.
    const QStringList other{"F0-2", "F3-w", "M0-4"};
    const DalyJoin n = joinDaly(other, {Cell(1.0), Cell(2.0), Cell(3.0)}, coarse, {Cell(10.0), Cell(20.0)},
                                FnAsgMap(labels(other), labels(coarse)));
    EXPECT_FALSE(n.baseIsYll);
    EXPECT_EQ(n.values[0], Cell(1.0));
    EXPECT_EQ(n.values[2], Cell(23.0));
}
