// The burden kernel's edge cases and its stored errors: numbers, words and sources.

#include "burden/kernel.h"
#include "burden/kernel_texts.h"
#include "burden/parameter_sets.h"
#include "foundation/runtime_error.h"
#include "kernel_fixture.h"

#include <cmath>

using namespace vesk;
using namespace vesk::kernel_texts;
using vesk::test::StoredError;
using vesk::test::storedErrors;

namespace {

class Kernel : public vesk::test::KernelTest {};

const Cell kBeta(0.04);
const Cell kC(0.1658);
const QString kIYLD = QStringLiteral("FnlYLD");
const QString kPYLD = QStringLiteral("FnPYLD");
const QString kYLL = QStringLiteral("FnYLLF");

StoredError err(int number, const char* words, const QString& source) {
    return {number, QString::fromLatin1(words), source};
}

} // namespace

// --- FnlYLD ---------------------------------------------------------------------------------------

TEST_F(Kernel, IyldNoDiscountNoWeightIsDLNWhateverBetaAndCHold) {
    const float expected = 0.3f * 12.5f * 7.0f;
    for (const Cell& beta : {Cell(), Cell(""), Cell::null(), kBeta, Cell("0.04"), Cell(0.0)})
        for (const Cell& c : {Cell(), Cell(""), kC, Cell(2.0)})
            EXPECT_EQ(FnlYLD(40, 12.5f, 0.3f, 0, 0, beta, c, 7), expected)
                << beta.toString().toStdString() << " " << c.toString().toStdString();
    // With Beta and C empty the checks are skipped, and nothing is stored.
    clearErrorStore();
    EXPECT_EQ(FnlYLD(40, 12.5f, 0.3f, 0, 0, Cell(), Cell(), 7), expected);
    EXPECT_EQ(FnlYLD(40, 12.5f, 0.3f, 0, 0, Cell(""), Cell(""), 7), expected);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, IyldDiscountedWithoutWeightsOfZeroDurationIsZero) {
    EXPECT_EQ(FnlYLD(30, 0, 0.2f, 0.03f, 0, Cell(), Cell(), 10), 0.0f);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, IyldOfNoCasesIsZeroInEveryBranch) {
    for (float r : {0.0f, 0.03f})
        for (float K : {0.0f, 0.5f, 1.0f})
            EXPECT_EQ(FnlYLD(30, 10, 0.2f, r, K, kBeta, kC, 0), 0.0f) << r << " " << K;
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, IyldUnweightedShareIsNotDiscountedOverTheDuration) {
    // r = 0.03, K = 0.5: D*(G*H + U)*N with U = (1-K)/r whatever the duration. At L = 0 the weighted
    // integral is 0, so only U remains: 0.2 * (0.5/0.03) * 3 = 10.
    const float atZero = FnlYLD(30, 0, 0.2f, 0.03f, 0.5f, kBeta, kC, 3);
    EXPECT_NEAR(atZero, 0.2 * (0.5 / 0.03) * 3, 1e-5);
    const float atOneDay = FnlYLD(30, 1.0f / 365, 0.2f, 0.03f, 0.5f, kBeta, kC, 3);
    EXPECT_NEAR(atOneDay, 10.0, 2e-3);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, IyldUndiscountedUnweightedShareIsNotMultipliedByTheWeight) {
    // r = 0, K = 0.5: (A*B*D + (1-K)*L)*N. With D = 0 the whole 0.5*L*N remains.
    EXPECT_FLOAT_EQ(FnlYLD(30, 10, 0, 0, 0.5f, kBeta, kC, 3), 0.5f * 10 * 3);
    // With D = 0.2 the weighted part is multiplied by D, the unweighted one is not.
    const double b = 0.04, c = 0.1658, a = 30, L = 10;
    const double weighted =
        0.5 * c * std::exp(-b * a) / (b * b) * (std::exp(-b * L) * (-b * (a + L) - 1) - (-b * a - 1));
    EXPECT_NEAR(FnlYLD(30, 10, 0.2f, 0, 0.5f, kBeta, kC, 3), (weighted * 0.2 + 5) * 3, 1e-4);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, IyldWithZeroBetaStoresDivisionByZeroAndKeepsTheUnweightedShare) {
    const float v = FnlYLD(30, 10, 0.2f, 0, 0.5f, Cell(0.0), kC, 3);
    EXPECT_FLOAT_EQ(v, 0.5f * 10 * 3); // A stays 0: E*N
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(11, "Division by zero", kIYLD)});
}

TEST_F(Kernel, IyldWithZeroBetaAndZeroCIsAnOverflow) {
    // 0/0 is the runtime's overflow; C = 0 is reported by the check first.
    const float v = FnlYLD(30, 10, 0.2f, 0, 1, Cell(0.0), Cell(0.0), 3);
    EXPECT_EQ(v, 0.0f);
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-4, kBetaRange, kIYLD), err(6, "Overflow", kIYLD)}));
}

TEST_F(Kernel, IyldOverflowOfASingleIsStoredAndLeavesZero) {
    EXPECT_EQ(FnlYLD(30, 1e20f, 1, 0, 0, Cell(), Cell(), 1e30f), 0.0f);
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(6, "Overflow", kIYLD)});
}

TEST_F(Kernel, IyldEqualsYllForFullWeightsUpToSingleRounding) {
    for (float r : {0.0f, 0.03f})
        for (float a : {0.0f, 0.5f, 27.25f, 63.0f}) {
            const double yll = FnYLLF(a, 30, r, 1, kBeta, kC);
            EXPECT_NEAR(FnlYLD(a, 30, 1, r, 1, kBeta, kC, 1), yll, 2e-6 * yll) << r << " " << a;
        }
}

TEST_F(Kernel, IyldRoundsItsExponentialsToSingleBeforeTheDifference) {
    // Over a short duration H is a small difference of two terms near 0.6; E1 and E2 rounded to single
    // floats leave an error of a few hundredths of a percent, which is the program's value.
    const float a = 45, L = 1e-4f, D = 1, r = 0.03f, K = 1, N = 1;
    const double b = 0.04, c = 0.1658, rb = r + b;
    const float aL = a + L;
    const float P = static_cast<float>(std::exp(static_cast<float>(r * a)));
    const float E1 = static_cast<float>(std::exp(-rb * aL));
    const float E2 = static_cast<float>(std::exp(-rb * a));
    const double G = K * c * P / (rb * rb);
    const double H = E1 * (-rb * aL - 1) - E2 * (-rb * a - 1);
    const float stated = static_cast<float>(D * (G * H + (1 - K) / r) * N);
    const double plain = c * std::exp(r * double(a)) / (rb * rb) *
                         (std::exp(-rb * aL) * (-rb * aL - 1) - std::exp(-rb * a) * (-rb * a - 1));
    const float v = FnlYLD(a, L, D, r, K, kBeta, kC, N);
    EXPECT_FLOAT_EQ(v, stated);
    EXPECT_GT(std::abs(v - plain), 1e-4 * std::abs(plain));
}

// --- FnPYLD ---------------------------------------------------------------------------------------

TEST_F(Kernel, PyldWithFractionalKIsZeroWithoutError) {
    EXPECT_EQ(FnPYLD(30, 0.2f, 0.5f, kBeta, kC, 100), 0.0f);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, PyldTakesNoDiscount) {
    // Built-in sets 1 and 2 differ in r alone: one value for both.
    const auto& s1 = kBuiltInParameterSets[1];
    const auto& s2 = kBuiltInParameterSets[2];
    ASSERT_STRNE(s1.r, s2.r);
    const auto run = [](const BuiltInParameterSet& s) {
        return FnPYLD(45, 0.35f, std::stof(s.K), Cell(s.Beta), Cell(s.C), 12);
    };
    EXPECT_EQ(run(s1), run(s2));
    // Without weights it is D*N.
    EXPECT_FLOAT_EQ(FnPYLD(45, 0.35f, 0, Cell(), Cell(), 12), 0.35f * 12);
}

TEST_F(Kernel, PyldWithZeroBetaStoresDivisionByZeroAndGivesZero) {
    EXPECT_EQ(FnPYLD(30, 0.2f, 1, Cell(0.0), kC, 3), 0.0f);
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(11, "Division by zero", kPYLD)});
    clearErrorStore();
    EXPECT_EQ(FnPYLD(30, 0.2f, 1, Cell(0.0), Cell(0.0), 3), 0.0f); // 0/0, and C = 0 passes here
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(6, "Overflow", kPYLD)});
}

// --- FnYLLF ---------------------------------------------------------------------------------------

TEST_F(Kernel, YllWithoutDiscountOrWeightsIsTheLifeExpectancy) {
    EXPECT_EQ(FnYLLF(30, 51.37f, 0, 0, Cell(), Cell()), static_cast<double>(51.37f));
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, YllOfAFemaleDeathAtBirthIsThirtyThreePointOneThree) {
    // Standard e(0) of females 82.5 (West level 26); 3% discounting, full age weights.
    const double v = FnYLLF(0, 82.5f, 0.03f, 1, kBeta, kC);
    EXPECT_NEAR(v, 33.13, 0.005);
    EXPECT_EQ(std::round(v * 100) / 100, 33.13);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, YllWithNegativeKAndNoDiscountIsZero) {
    EXPECT_EQ(FnYLLF(30, 50, 0, -0.5f, kBeta, kC), 0.0);
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(-11, kKRangeYLL, kYLL)});
}

TEST_F(Kernel, YllWithZeroBetaStoresDivisionByZeroAndGivesZero) {
    EXPECT_EQ(FnYLLF(30, 50, 0, 1, Cell(0.0), kC), 0.0);
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(11, "Division by zero", kYLL)});
}

TEST_F(Kernel, YllOverflowInExpIsStoredAndLeavesZero) {
    EXPECT_EQ(FnYLLF(-20000, 10, 0.03f, 1, kBeta, kC), 0.0);
    const auto errors = storedErrors();
    ASSERT_FALSE(errors.empty());
    for (const auto& e : errors)
        EXPECT_EQ(e, err(6, "Overflow", kYLL));
}

TEST_F(Kernel, NullBetaInAFormulaIsAnInvalidUseOfNull) {
    EXPECT_EQ(FnYLLF(30, 50, 0.03f, 1, Cell::null(), kC), 0.0);
    const auto errors = storedErrors();
    ASSERT_FALSE(errors.empty());
    for (const auto& e : errors)
        EXPECT_EQ(e, err(94, "Invalid use of Null", kYLL));
}

// --- Checks ---------------------------------------------------------------------------------------

TEST_F(Kernel, DiscountRateOfOneIsReportedAndTheFormulaStillRuns) {
    EXPECT_NEAR(FnlYLD(30, 10, 0.2f, 1, 0, Cell(), Cell(), 3), (1 - std::exp(-10.0)) * 0.2 * 3, 1e-6);
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(-1, kRRange, kIYLD)});
    clearErrorStore();
    EXPECT_NEAR(FnYLLF(30, 10, 1, 0, Cell(), Cell()), 1 - std::exp(-10.0), 1e-7);
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(-10, kRRange, kYLL)});
}

TEST_F(Kernel, FullAgeWeightsPassAllChecks) {
    FnlYLD(30, 10, 0.2f, 0.03f, 1, kBeta, kC, 3);
    FnPYLD(30, 0.2f, 1, kBeta, kC, 3);
    FnYLLF(30, 10, 0.03f, 1, kBeta, kC);
    FnlYLD(30, 10, 0.2f, 0, 1, Cell("0.04"), Cell("0.1658"), 3);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, ZeroCIsReportedByIncidenceAndLossButNotByPrevalence) {
    FnlYLD(30, 10, 0.2f, 0.03f, 1, kBeta, Cell(0.0), 3);
    FnPYLD(30, 0.2f, 1, kBeta, Cell(0.0), 3);
    FnYLLF(30, 10, 0.03f, 1, kBeta, Cell(0.0));
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-4, kBetaRange, kIYLD),
                                        err(-14, "Invalid parameter value, C should be <= 0 ", kYLL)}));
}

TEST_F(Kernel, EveryCheckFailsInOrderWithItsNumberAndWords) {
    FnlYLD(30, 10, 0.2f, -0.1f, 1.5f, Cell(1.0), Cell(-2.0), 3);
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-1, "Invalid parameter value, r must be >=0 and <1", kIYLD),
                                        err(-2, "Invalid parameter value, r must be >=0 and <1", kIYLD),
                                        err(-3, "Invalid parameter value, Beta must be >=0 and <1", kIYLD),
                                        err(-4, "Invalid parameter value, Beta must be >=0 and <1", kIYLD)}));
    clearErrorStore();
    FnPYLD(30, 0.2f, -1, Cell(-0.5), Cell(-0.5), 3);
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-5, "Invalid parameter value, r must be >=0 and <1", kPYLD),
                                        err(-6, "Invalid parameter value, Beta must be >=0 and <1", kPYLD),
                                        err(-7, "Invalid parameter value, Beta must be >=0 and <1", kPYLD)}));
    clearErrorStore();
    FnYLLF(30, 10, 1.5f, 1.01f, Cell(1.5), Cell(0.0));
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-10, "Invalid parameter value, r must be >=0 and <1", kYLL),
                                        err(-11, "Invalid parameter value, k must be >=0 and <1", kYLL),
                                        err(-13, "Invalid parameter value, Beta must be >=0 and <1", kYLL),
                                        err(-14, "Invalid parameter value, C should be <= 0 ", kYLL)}));
}

TEST_F(Kernel, RangeLimitsOfTheChecks) {
    FnlYLD(30, 10, 0.2f, 0.999f, 1, Cell(0.999), Cell(1e-9), 3); // all inside
    FnlYLD(30, 10, 0.2f, 0, 0, Cell(0.0), Cell(1.0), 3);         // Beta = 0 is inside
    EXPECT_EQ(errorStoreCount(), 0);
    FnlYLD(30, 10, 0.2f, 0, 0, Cell(-0.001), Cell(1.0), 3);
    FnYLLF(30, 10, 0, 0, Cell(1.0), Cell(1.0));
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-3, kBetaRange, kIYLD), err(-13, kBetaRange, kYLL)}));
}

TEST_F(Kernel, EmptyBetaSkipsTheBetaAndCChecks) {
    for (const Cell& beta : {Cell(), Cell("")}) {
        FnlYLD(30, 10, 0.2f, 0, 0, beta, Cell(-5.0), 3);
        FnPYLD(30, 0.2f, 0, beta, Cell(-5.0), 3);
        FnYLLF(30, 10, 0, 0, beta, Cell(-5.0));
    }
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, NullBetaSkipsTheRangeTestButNotTheCCheck) {
    FnlYLD(30, 10, 0.2f, 0, 0, Cell::null(), Cell(5.0), 3);
    EXPECT_EQ(errorStoreCount(), 0);
    FnlYLD(30, 10, 0.2f, 0, 0, Cell::null(), Cell(0.0), 3);
    FnPYLD(30, 0.2f, 0, Cell::null(), Cell(-1.0), 3);
    FnYLLF(30, 10, 0, 0, Cell::null(), Cell(0.0));
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-4, kBetaRange, kIYLD), err(-7, kBetaRange, kPYLD),
                                        err(-14, kCRangeYLL, kYLL)}));
    clearErrorStore();
    // A Null C fails no comparison.
    FnYLLF(30, 10, 0, 0, kBeta, Cell::null());
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(Kernel, EmptyCCountsAsZeroInTheChecks) {
    FnlYLD(30, 10, 0.2f, 0, 0, kBeta, Cell(), 3);
    FnPYLD(30, 0.2f, 0, kBeta, Cell(), 3);
    EXPECT_EQ(storedErrors(), std::vector<StoredError>{err(-4, kBetaRange, kIYLD)});
}

TEST_F(Kernel, NumericTextsAreCheckedAsNumbers) {
    FnlYLD(30, 10, 0.2f, 0, 0, Cell(" 0.04 "), Cell("0.1658"), 3);
    EXPECT_EQ(errorStoreCount(), 0);
    FnlYLD(30, 10, 0.2f, 0, 0, Cell("1.5"), Cell("0"), 3);
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(-3, kBetaRange, kIYLD), err(-4, kBetaRange, kIYLD)}));
}

TEST_F(Kernel, ATextThatIsNoNumberIsATypeMismatchAndFailsItsCheck) {
    // The failed comparison is stored, and the run resumes with the check's own raise.
    FnYLLF(30, 10, 0, 0, Cell("abc"), kC);
    EXPECT_EQ(storedErrors(),
              (std::vector<StoredError>{err(13, "Type mismatch", kYLL), err(-13, kBetaRange, kYLL)}));
}

TEST_F(Kernel, EmptyBetaOfACustomRowWithWeightsRunsIntoTheFormula) {
    // K = 1 with Beta "" passes the checks; the formula cannot use the text.
    EXPECT_EQ(FnYLLF(30, 10, 0.03f, 1, Cell(""), Cell("")), 0.0);
    const auto errors = storedErrors();
    ASSERT_FALSE(errors.empty());
    for (const auto& e : errors)
        EXPECT_EQ(e, err(13, "Type mismatch", kYLL));
}

TEST_F(Kernel, EachStoredErrorIsLogged) {
    FnlYLD(30, 10, 0.2f, 1, 0, Cell(), Cell(), 3);
    FnYLLF(30, 10, 1, 0, Cell(), Cell());
    QFile log(errorLogPath());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(log.readAll());
    EXPECT_EQ(text.count(QStringLiteral("-1,Invalid parameter value, r must be >=0 and <1,FnlYLD")), 2);
    EXPECT_EQ(text.count(QStringLiteral("-10,Invalid parameter value, r must be >=0 and <1,FnYLLF")), 1);
}

TEST(ParameterSets, BuiltInSetsAsTheGridsShowThem) {
    ASSERT_EQ(kBuiltInParameterSets.size(), 4u);
    const auto& s1 = kBuiltInParameterSets[1];
    EXPECT_STREQ(s1.id, "1");
    EXPECT_STREQ(s1.yllCalculatorRow, "Built In 1");
    EXPECT_STREQ(s1.dalyCalculatorRow, "Built In-1");
    EXPECT_STREQ(s1.r, "0.03");
    EXPECT_STREQ(s1.K, "1");
    EXPECT_STREQ(s1.Beta, "0.04");
    EXPECT_STREQ(s1.C, "0.1658");
    EXPECT_STREQ(kBuiltInParameterSets[0].Beta, "");
    EXPECT_STREQ(kBuiltInParameterSets[3].r, "0.03");
    EXPECT_STREQ(kBuiltInParameterSets[3].K, "0");
    EXPECT_STREQ(kBuiltInParameterSets[2].r, "0");
    EXPECT_STREQ(kParameterGridColumns[3], "Beta");
}

// --- The runtime's words ----------------------------------------------------------------------------

TEST_F(Kernel, AFailureInsideAFormulaIsStoredWithTheWordsOfTheOneTable) {
    FnYLLF(30, 50, 0, 1, Cell(0.0), kC);
    FnPYLD(30, 0.2f, 1, Cell("abc"), kC, 3);
    FnYLLF(30, 50, 0.03f, 1, Cell::null(), kC);
    const std::vector<StoredError> stored = storedErrors();
    ASSERT_FALSE(stored.empty());
    int fromTheTable = 0;
    for (const auto& [number, words, source] : stored) {
        if (number < 0)
            continue; // the kernel's own checks keep their own words
        EXPECT_EQ(words, runtimeWords(number)) << number;
        ++fromTheTable;
    }
    EXPECT_GE(fromTheTable, 3);
    EXPECT_EQ(std::get<0>(stored.front()), runtime_error::kDivisionByZero);
    EXPECT_EQ(std::get<0>(stored.back()), runtime_error::kInvalidUseOfNull);
}
