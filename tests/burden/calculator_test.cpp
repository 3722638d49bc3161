// The YLL, IYLD and PYLD calculators through their models: build, read, compute, result columns.

#include "burden/calculator.h"
#include "burden/kernel.h"
#include "calculator_support.h"

#include <cmath>

using namespace vesk;
using vesk::test::femaleE;
using vesk::test::maleE;

namespace {

class CalcTest : public vesk::test::CalculatorTest {
protected:
    // A sheet of the task over the lower ages, with rows of inputs (one QStringList per row).
    void sheet(CalculatorTask task, const QStringList& ages, const std::vector<QStringList>& rows) {
        ageDef_.setAgeTexts(ages);
        ASSERT_TRUE(buildCalculator(task, ageDef_, data_));
        ASSERT_EQ(data_.rowCount(), static_cast<int>(rows.size()));
        for (int r = 0; r < data_.rowCount(); ++r)
            for (int c = 0; c < rows[r].size(); ++c)
                data_.setInputText(r, c, rows[r][c]);
    }
    void select(int row) { dap_.toggleSelect(row); }

    AgeDefModel ageDef_;
    CalcDataModel data_;
    DapGridModel dap_{false};
};

double value(const std::vector<Cell>* column, int row) {
    return column->at(row).toDouble();
}

} // namespace

TEST_F(CalcTest, BuildGivesSortedLabelsAndTheTaskHeads) {
    sheet(CalculatorTask::Yll, {"0", "1", "5"}, std::vector<QStringList>(6));
    EXPECT_EQ(data_.labels(), QStringList({"F0", "F01-4", "F5-w", "M0", "M01-4", "M5-w"}));
    EXPECT_EQ(data_.title(), "Data Inputs and Results");
    EXPECT_EQ(data_.headerData(1, Qt::Horizontal).toString(), "Deaths");
    EXPECT_EQ(data_.headerData(2, Qt::Horizontal).toString(), "Age at Death");
    sheet(CalculatorTask::Iyld, {"0"}, std::vector<QStringList>(2));
    EXPECT_EQ(data_.title(), "Epidemiological Data Input Sheet for YLD");
    QStringList heads;
    for (int c = 1; c < data_.columnCount(); ++c)
        heads << data_.headerData(c, Qt::Horizontal).toString();
    EXPECT_EQ(heads, QStringList({"Age at onset", "Duration", "Disablity Weight", "Incident Cases"}));
    sheet(CalculatorTask::Pyld, {"0"}, std::vector<QStringList>(2));
    heads.clear();
    for (int c = 1; c < data_.columnCount(); ++c)
        heads << data_.headerData(c, Qt::Horizontal).toString();
    EXPECT_EQ(heads, QStringList({"Prevalance Cases", "Disablity Weight", "Age of Prevelant Cases"}));
    EXPECT_TRUE(prompts_.messages().isEmpty());
}

TEST_F(CalcTest, EmptyAgeDefinitionAndUnbuildableLabels) {
    EXPECT_FALSE(buildCalculator(CalculatorTask::Yll, ageDef_, data_));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please fill the Age definition"}));
    prompts_.clear();
    ageDef_.setAgeTexts({"W"}); // typed, but no age in it
    EXPECT_FALSE(buildCalculator(CalculatorTask::Yll, ageDef_, data_));
    EXPECT_EQ(prompts_.messages(),
              QStringList({"Error from ASGDfn :  Subscript out of range", "Unexpected error. Quiting.."}));
    EXPECT_FALSE(data_.isBuilt());
}

TEST_F(CalcTest, BuiltInZeroYllIsLifeExpectancyTimesDeaths) {
    sheet(CalculatorTask::Yll, {"0", "5"}, {{"10", "2.5"}, {"20", "30"}, {"12", "2.5"}, {"22", "47.25"}});
    select(0);
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    const auto* yll = data_.result("YLL[0,0]");
    ASSERT_NE(yll, nullptr);
    EXPECT_NEAR(value(yll, 0), 10 * femaleE(2.5), 1e-3);
    EXPECT_NEAR(value(yll, 1), 20 * femaleE(30), 1e-3);
    EXPECT_NEAR(value(yll, 2), 12 * maleE(2.5), 1e-3);
    EXPECT_NEAR(value(yll, 3), 22 * maleE(47.25), 1e-3);
    EXPECT_EQ(data_.headerData(3, Qt::Horizontal).toString(), "YLL[0,0]");
    EXPECT_TRUE(prompts_.messages().isEmpty());
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(CalcTest, SecondSetAddsAColumnWithTheKernelsValue) {
    sheet(CalculatorTask::Yll, {"0", "5"}, {{"10", "2.5"}, {"20", "30"}, {"12", "2.5"}, {"22", "47.25"}});
    select(0);
    select(1);
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_EQ(data_.resultCount(), 2);
    EXPECT_EQ(data_.resultHead(1), "YLL[0.03,1]");
    const float L = FnLifeExpAt(settings().MtxLTSKRO, 30.0f, "F");
    const double expected = 20 * FnYLLF(30.0f, L, 0.03f, 1.0f, Cell("0.04"), Cell("0.1658"));
    EXPECT_NEAR(value(data_.result("YLL[0.03,1]"), 1), expected, 1e-9);
    // Discounting and age weights: less than the undiscounted years.
    EXPECT_LT(expected, 20 * femaleE(30));
    // Computing again replaces the columns rather than adding more.
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_EQ(data_.resultCount(), 2);
}

TEST_F(CalcTest, BlankAgeGivesNullShownBlank) {
    sheet(CalculatorTask::Yll, {"0"}, {{"10", ""}, {"5", "40"}});
    select(0);
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_TRUE(data_.result("YLL[0,0]")->at(0).isNull());
    EXPECT_EQ(data_.data(data_.index(0, 3)).toString(), "");
}

TEST_F(CalcTest, AgeOutsideItsGroupIsRefusedAndNothingComputed) {
    sheet(CalculatorTask::Yll, {"0", "5"}, {{"10", "5"}, {"20", "30"}, {"12", "2"}, {"22", "40"}});
    select(0);
    EXPECT_FALSE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please enter the currect AGD values"}));
    EXPECT_EQ(data_.resultCount(), 0);
    // An age below the open group's start is outside it too; at its start it is inside.
    EXPECT_FALSE(ageInGroup("M5-w", 4.9));
    EXPECT_TRUE(ageInGroup("M5-w", 5));
    EXPECT_TRUE(ageInGroup("M0", 0.99));
    EXPECT_FALSE(ageInGroup("M0", 1));
}

TEST_F(CalcTest, OnsetOutsideItsGroupIsRefused) {
    sheet(CalculatorTask::Iyld, {"0", "15"}, {{"20", "1", "0.5", "3"}, {}, {}, {}});
    select(0);
    EXPECT_FALSE(computeCalculator(CalculatorTask::Iyld, dap_, data_));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please enter the currect Age at Onset values"}));
    EXPECT_EQ(data_.resultCount(), 0);
}

TEST_F(CalcTest, NoSetMarked) {
    sheet(CalculatorTask::Yll, {"0"}, {{"10", "3"}, {"5", "40"}});
    EXPECT_FALSE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_EQ(prompts_.messages(), QStringList({"Please select the r,k, Beta,c values from the list"}));
}

TEST_F(CalcTest, BuiltInZeroIyldIsWeightTimesDurationTimesCases) {
    sheet(CalculatorTask::Iyld, {"0", "15"},
          {{"3", "2.5", "0.2", "100"},
           {"40", "10", "0.35", "12"},
           {"1", "4", "0.1", "7"},
           {"20", "0.5", "0.6", "3"}});
    select(0);
    ASSERT_TRUE(computeCalculator(CalculatorTask::Iyld, dap_, data_));
    const auto* iyld = data_.result("IYLD[0,0]");
    ASSERT_NE(iyld, nullptr);
    EXPECT_NEAR(value(iyld, 0), 0.2 * 2.5 * 100, 1e-4);
    EXPECT_NEAR(value(iyld, 1), 0.35 * 10 * 12, 1e-4);
    EXPECT_NEAR(value(iyld, 2), 0.1 * 4 * 7, 1e-4);
    EXPECT_NEAR(value(iyld, 3), 0.6 * 0.5 * 3, 1e-4);
}

TEST_F(CalcTest, BuiltInThreeIyldDiscountsTheDuration) {
    sheet(CalculatorTask::Iyld, {"0"}, {{"3", "10", "0.5", "2"}, {}});
    select(3);
    ASSERT_TRUE(computeCalculator(CalculatorTask::Iyld, dap_, data_));
    EXPECT_NEAR(value(data_.result("IYLD[0.03,0]"), 0), (1 - std::exp(-0.3)) / 0.03 * 0.5 * 2, 1e-4);
}

TEST_F(CalcTest, PyldWithBuiltInZeroAndAFractionalK) {
    sheet(CalculatorTask::Pyld, {"0"}, {{"50", "0.4", "30"}, {"8", "0.5", "70"}});
    select(0);
    select(4);
    QModelIndex k = dap_.index(DapGridModel::kCustomRow, DapGridModel::KColumn);
    ASSERT_TRUE(dap_.setData(dap_.index(DapGridModel::kCustomRow, DapGridModel::RColumn), "0.03"));
    ASSERT_TRUE(dap_.setData(k, "0.5"));
    ASSERT_TRUE(dap_.setData(dap_.index(DapGridModel::kCustomRow, DapGridModel::BetaColumn), "0.04"));
    ASSERT_TRUE(dap_.setData(dap_.index(DapGridModel::kCustomRow, DapGridModel::CColumn), "0.1658"));
    ASSERT_TRUE(computeCalculator(CalculatorTask::Pyld, dap_, data_));
    EXPECT_NEAR(value(data_.result("PYLD[0,0]"), 0), 0.4 * 50, 1e-5);
    EXPECT_NEAR(value(data_.result("PYLD[0,0]"), 1), 0.5 * 8, 1e-5);
    EXPECT_EQ(value(data_.result("PYLD[0.03,0.5]"), 0), 0.0); // K strictly between 0 and 1
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(CalcTest, CustomRIsCheckedOnLeavingTheCell) {
    const QModelIndex r = dap_.index(DapGridModel::kCustomRow, DapGridModel::RColumn);
    EXPECT_FALSE(dap_.setData(r, "1.5"));
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, "The value should be between 0 and 1");
    EXPECT_EQ(prompts_.shown()[0].title, "VESK");
    EXPECT_EQ(dap_.text(DapGridModel::kCustomRow, DapGridModel::RColumn), "");
    EXPECT_TRUE(dap_.setData(r, "1"));
    EXPECT_EQ(dap_.text(DapGridModel::kCustomRow, DapGridModel::RColumn), "1");
    // Only the Custom row takes text, and a K of 1.5 is not the r check's business.
    EXPECT_FALSE(dap_.setData(dap_.index(0, DapGridModel::RColumn), "0.5"));
    EXPECT_TRUE(dap_.setData(dap_.index(DapGridModel::kCustomRow, DapGridModel::KColumn), "1.5"));
}

TEST_F(CalcTest, RateOfOneIsAcceptedButDrawsAStoredError) {
    sheet(CalculatorTask::Yll, {"0"}, {{"1", "40"}, {}});
    ASSERT_TRUE(dap_.setData(dap_.index(DapGridModel::kCustomRow, DapGridModel::RColumn), "1"));
    ASSERT_TRUE(dap_.setData(dap_.index(DapGridModel::kCustomRow, DapGridModel::KColumn), "0"));
    select(4);
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    ASSERT_GE(errorStoreCount(), 1);
    EXPECT_EQ(ErrStore().array()(0, 0).toDouble(), -10);
    // The formula still ran with r = 1.
    EXPECT_NEAR(value(data_.result("YLL[1,0]"), 0), 1 - std::exp(-femaleE(40)), 1e-5);
}

TEST_F(CalcTest, LifeTableChosenByLifeTblType) {
    sheet(CalculatorTask::Yll, {"0"}, {{"1", "40"}, {}});
    select(0);
    CellArray who = vesk::test::straightLifeTable();
    who(40, 1) = Cell("50");
    settings().MtxLTSWHO = who;
    settings().LifeTblType = 3;
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_NEAR(value(data_.result("YLL[0,0]"), 0), 50, 1e-5);
    settings().LifeTblType = 1;
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_NEAR(value(data_.result("YLL[0,0]"), 0), femaleE(40), 1e-5);
    settings().LifeTblType = 2;
    preferences().userLifeTableLoaded = false;
    EXPECT_FALSE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, "There is no User defined Life Table ");
    EXPECT_EQ(prompts_.shown()[0].title, "Life Table");
    CellArray user = vesk::test::straightLifeTable();
    user(40, 1) = Cell("60");
    preferences().userLifeTable = user;
    preferences().userLifeTableLoaded = true;
    ASSERT_TRUE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    EXPECT_NEAR(value(data_.result("YLL[0,0]"), 0), 60, 1e-5);
    preferences().userLifeTableLoaded = false;
    preferences().userLifeTable = CellArray();
}

TEST_F(CalcTest, UnreadableTableIsReportedAsTheCalculatorsError) {
    settings().MtxLTSKRO = CellArray();
    sheet(CalculatorTask::Yll, {"0"}, {{"1", "40"}, {}});
    select(0);
    EXPECT_FALSE(computeCalculator(CalculatorTask::Yll, dap_, data_));
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, "Error from Yll Calculator: Subscript out of range");
    EXPECT_EQ(prompts_.shown()[0].title, "YLL Calculator");
}
