// The life table tool's work without its window: the age ladder and the checks of Generate, each
// with its message, and the table it hands to the result window.

#include "demography/life_table.h"
#include "demography/life_table_tool.h"
#include "platform/prompts.h"

#include <gtest/gtest.h>
#include <cmath>

using namespace vesk;
namespace col = vesk::life_table_col;

namespace {

class LifeTableTool : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
    VeskSettings s_;

    // Ages 0, 1, 5, 10+ and their rates, as typed.
    static LifeTableToolInput input(qint16 method = kLtStandard) {
        LifeTableToolInput in;
        const char* rows[][3] = {{"0", "50", "100"}, {"1", "10", "400"}, {"5", "2", "500"}, {"10", "50", "2000"}};
        const int cols = method == kLtKeyfitz ? 3 : 2;
        in.grid = CellArray({4, cols});
        for (int i = 0; i < 4; ++i)
            for (int c = 0; c < cols; ++c)
                in.grid(i, c) = Cell(QString::fromLatin1(rows[i][c]));
        in.imr = QStringLiteral("50");
        in.imrDenominator = QStringLiteral("1000");
        in.pgr = QStringLiteral("0");
        in.asdrDenominator = QStringLiteral("1000");
        in.kfLower = QStringLiteral("5");
        in.kfUpper = QStringLiteral("5");
        in.method = method;
        return in;
    }
    QString onlyMessage() const {
        EXPECT_EQ(prompts_.shown().size(), 1);
        return prompts_.shown().isEmpty() ? QString() : prompts_.shown().constLast().text;
    }
};

TEST_F(LifeTableTool, LadderOfEachInitialGroupAndStep) {
    using V = std::vector<int>;
    EXPECT_EQ(*lifeTableAgeLadder("20", InitialAgeGroups::ZeroOneFour, 5), (V{0, 1, 5, 10, 15, 20}));
    EXPECT_EQ(*lifeTableAgeLadder("20", InitialAgeGroups::ZeroOneTwoFour, 5), (V{0, 1, 2, 5, 10, 15, 20}));
    EXPECT_EQ(*lifeTableAgeLadder("20", InitialAgeGroups::ZeroFive, 5), (V{0, 5, 10, 15, 20}));
    EXPECT_EQ(*lifeTableAgeLadder("20", InitialAgeGroups::ZeroTen, 5), (V{0, 10, 15, 20}));
    EXPECT_EQ(*lifeTableAgeLadder("30", InitialAgeGroups::ZeroOneFour, 10), (V{0, 1, 5, 10, 20, 30}));
    EXPECT_EQ(*lifeTableAgeLadder("30", InitialAgeGroups::ZeroTen, 10), (V{0, 10, 20, 30}));
    EXPECT_EQ(*lifeTableAgeLadder("0", InitialAgeGroups::ZeroOneFour, 5), (V{0}));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(LifeTableTool, LadderNeedsALastAgeOnTheStep) {
    EXPECT_FALSE(lifeTableAgeLadder(" ", InitialAgeGroups::ZeroOneFour, 5));
    EXPECT_EQ(onlyMessage(), QStringLiteral("enter value for Last age Groupe:"));
    EXPECT_EQ(prompts_.shown()[0].title, QStringLiteral("Vesk : Data Entry For life Table"));
    prompts_.clear();
    EXPECT_FALSE(lifeTableAgeLadder("72", InitialAgeGroups::ZeroOneFour, 5));
    EXPECT_EQ(onlyMessage(), QStringLiteral("GIVEN VALUE DOSENOT FALL UNDER 5 YEAR AGE INTERVAL, "
                                            "ENTER A VALID NUMBER FOR LAST AGE GROUP"));
    prompts_.clear();
    EXPECT_FALSE(lifeTableAgeLadder("75", InitialAgeGroups::ZeroOneFour, 10));
    EXPECT_EQ(onlyMessage(), QStringLiteral("GIVEN VALUE DOSENOT FALL UNDER 10 YEAR AGE INTERVAL, "
                                            "ENTER A VALID NUMBER FOR LAST AGE GROUP"));
}

TEST_F(LifeTableTool, GeneratesTheTableWithItsHeadsWithoutTheAdjustedColumns) {
    s_.LTRadix = 1000;
    const auto r = generateLifeTable(input(), s_);
    ASSERT_TRUE(r);
    EXPECT_EQ(r->table.size(1), 12);
    EXPECT_EQ(r->heads.join(u','), QStringLiteral("X,Mx,n,ax,qx,px,lx,dx,Lx,mx,Tx,Ex"));
    EXPECT_EQ(r->fieldNames.join(u','), QStringLiteral("Agex,ASDR,Agen,AX,QX,PX,SLX,Ltdx,Blx,LTMX,TX,EX"));
    // The rates divided by 1000 give the hand-worked Standard table: e0 27.290324626865...
    EXPECT_NEAR(r->table(0, col::Ex).toDouble(), 27.29032462686567, 1e-12);
    EXPECT_EQ(r->table(1, col::Mx).toDouble(), 0.01);
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(LifeTableTool, ThirteenthHeadUnderKeyfitzAndReedMerrell) {
    const auto k = generateLifeTable(input(kLtKeyfitz), s_);
    ASSERT_TRUE(k);
    EXPECT_EQ(k->heads.last(), QStringLiteral("POP"));
    EXPECT_EQ(k->fieldNames.last(), QStringLiteral("POP"));
    EXPECT_EQ(k->table.size(1), 13);
    const auto rm = generateLifeTable(input(kLtReedMerrell), s_);
    ASSERT_TRUE(rm);
    EXPECT_EQ(rm->heads.last(), QStringLiteral("RSlx"));
}

TEST_F(LifeTableTool, ImrInDecimalsWithDenominatorOneBecomesZero) {
    LifeTableToolInput in = input();
    in.imr = QStringLiteral("0.07");
    in.imrDenominator = QStringLiteral("1");
    const auto r = generateLifeTable(in, s_);
    ASSERT_TRUE(r); // 0.07 / 1 lies within 0 to 1 ...
    EXPECT_EQ(r->table(0, col::qx).toDouble(), 0.0); // ... then rounds to IMR 0: R = 0, q0 = 0
    EXPECT_EQ(r->table(0, col::ax).toDouble(), 0.09);
}

TEST_F(LifeTableTool, PgrRoundsHalfToEven) {
    LifeTableToolInput in = input(kLtGreville);
    in.greville = QStringLiteral("1.099658856");
    in.pgr = QStringLiteral("1.5"); // to 2
    const auto two = generateLifeTable(in, s_);
    in.pgr = QStringLiteral("2");
    const auto plain = generateLifeTable(in, s_);
    ASSERT_TRUE(two && plain);
    EXPECT_EQ(two->table(0, col::qx), plain->table(0, col::qx));
    in.pgr = QStringLiteral("2.5"); // to 2 as well
    EXPECT_EQ(generateLifeTable(in, s_)->table(0, col::qx), plain->table(0, col::qx));
}

TEST_F(LifeTableTool, ImrOutsideZeroToOne) {
    LifeTableToolInput in = input();
    in.imr = QStringLiteral("1200");
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(), QStringLiteral("Enter proper values for IMR and IMR Dinominator"));
}

TEST_F(LifeTableTool, GrevilleConstantOfZero) {
    LifeTableToolInput in = input(kLtGreville);
    in.greville = QStringLiteral("0");
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(), QStringLiteral("Grevil Constant Should Not be 0 (Zero)"));
    prompts_.clear();
    in.greville = QStringLiteral("1.2");
    ASSERT_TRUE(generateLifeTable(in, s_));
    EXPECT_EQ(s_.LTGreval, QStringLiteral("1.2"));
}

TEST_F(LifeTableTool, KeyfitzLimitsAreChecked) {
    LifeTableToolInput in = input(kLtKeyfitz);
    in.kfLower = QStringLiteral("11");
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(), QStringLiteral("Enter valid Lower limit for Keyfitz method:"));
    prompts_.clear();
    in.kfLower = QStringLiteral("5");
    in.kfUpper = QStringLiteral("-1");
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(), QStringLiteral("Enter valid Upper limit for Keyfitz method:"));
    prompts_.clear();
    in.kfLower = QStringLiteral("5");
    in.kfUpper = QStringLiteral("1");
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(),
              QStringLiteral("The Upper limit for Keyfitz method should aleays be greater then the Lower limit:"));
    prompts_.clear();
    in.kfUpper = QStringLiteral("5"); // equal to the lower: passes
    ASSERT_TRUE(generateLifeTable(in, s_));
    EXPECT_EQ(s_.LTKFlwrLmt, QStringLiteral("5"));
    EXPECT_EQ(s_.LTKFupprLmt, QStringLiteral("5"));
}

TEST_F(LifeTableTool, EveryRateMustBeFilled) {
    LifeTableToolInput in = input();
    in.grid(2, 1) = Cell(QString());
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(), QStringLiteral("Make sure that you have entered data on the grid:"));
    EXPECT_EQ(prompts_.shown()[0].title, QStringLiteral("Vesk:"));
}

TEST_F(LifeTableTool, RateOverItsDenominatorOutsideZeroToOne) {
    LifeTableToolInput in = input();
    in.grid(1, 1) = Cell(QStringLiteral("1500"));
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(), QStringLiteral("The ASDR (1500) for the BAI 1 divided by\n"
                                            "the ASDR denominator should be between the range of  0 to 1.\n"
                                            "Please Check your entry."));
}

TEST_F(LifeTableTool, AsdrDenominatorBlankOrZeroLeavesTheRates) {
    LifeTableToolInput in = input();
    for (const char* d : {"", "0"}) {
        in.asdrDenominator = QString::fromLatin1(d);
        in.grid(0, 1) = Cell(QStringLiteral("0.05"));
        in.grid(1, 1) = Cell(QStringLiteral("0.01"));
        in.grid(2, 1) = Cell(QStringLiteral("0.002"));
        in.grid(3, 1) = Cell(QStringLiteral("0.05"));
        s_.LTRadix = 1000;
        const auto r = generateLifeTable(in, s_);
        ASSERT_TRUE(r) << d;
        EXPECT_EQ(r->table(1, col::Mx).toDouble(), 0.01);
        EXPECT_NEAR(r->table(0, col::Ex).toDouble(), 27.29032462686567, 1e-12);
    }
}

TEST_F(LifeTableTool, UnableToComputeAfterTheEngineFails) {
    LifeTableToolInput in = input();
    in.grid(3, 1) = Cell(QStringLiteral("0")); // open row rate 0: the engine's box, then the tool's
    EXPECT_FALSE(generateLifeTable(in, s_));
    ASSERT_EQ(prompts_.shown().size(), 2);
    EXPECT_EQ(prompts_.shown()[0].text, QStringLiteral("Division by zero"));
    EXPECT_EQ(prompts_.shown()[1].text, QStringLiteral("Unable to compute life table:\rPlease check the source data:"));
}

TEST_F(LifeTableTool, KeyfitzWithoutPopulationCannotBegin) {
    LifeTableToolInput in = input();
    in.method = kLtKeyfitz;
    EXPECT_FALSE(generateLifeTable(in, s_));
    EXPECT_EQ(onlyMessage(), QStringLiteral("Unable to compute life table:\rPlease check the source data:"));
}

TEST_F(LifeTableTool, ShownRoundedByTheDecimalsPicture) {
    EXPECT_EQ(lifeTableShown(Cell(27.29032462686567), 2), QStringLiteral("27.29"));
    EXPECT_EQ(lifeTableShown(Cell(0.5), 3), QStringLiteral(".5"));
    EXPECT_EQ(lifeTableShown(Cell(1000.0), 2), QStringLiteral("1000."));
    EXPECT_EQ(lifeTableShown(Cell(QStringLiteral("W")), 2), QStringLiteral("W"));
    EXPECT_EQ(lifeTableShown(Cell(), 2), QString());
}

} // namespace
