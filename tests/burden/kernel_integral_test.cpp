// The kernel against an independent evaluation of the burden of one case (Murray, Bull WHO 1994),
//
//   integral from a to a+L of  D * [ K*C*x*exp(-Beta*x) + (1-K) ] * exp(-r*(x-a))  dx,
//
// by Simpson's rule on a fine grid in double. The kernel's formulas are that integral wherever
// K is 0 or 1, and FnYLLF is it for every K in [0, 1]. Where a formula keeps its own unweighted share
// (FnlYLD with K strictly between 0 and 1) or its own bracket (FnPYLD with K = 1), the reference is
// that stated form, built from the integral of the weighted part alone or evaluated in double.
//
// Tolerances. Inputs are single floats; the reference uses the same floats widened to double, so
// the differences left are the kernel's single-float steps and Simpson's error (below 1e-12 here):
//   - each rounding to single, 2^-24 relative, a few in a row, and the single products r*a, r*L
//     inside exp, 2^-24 of the argument: together relative 4e-6 for the single results of FnlYLD
//     and FnPYLD, 1e-6 for the double of FnYLLF;
//   - a+L is a single sum: the integrand at the upper end times |fl(a+L) - (a+L)|;
//   - FnlYLD rounds E1 and E2 to single before it subtracts the two terms of H: 2^-23 of each term,
//     times the factor D*K*C*exp(r*a)/(r+Beta)^2*N, which matters for short durations.

#include "burden/kernel.h"
#include "kernel_fixture.h"

#include <cmath>
#include <functional>

using namespace vesk;

namespace {

double simpson(const std::function<double(double)>& f, double lo, double hi, int intervals = 20000) {
    if (hi == lo)
        return 0;
    const double h = (hi - lo) / intervals;
    double sum = f(lo) + f(hi);
    for (int i = 1; i < intervals; ++i)
        sum += f(lo + i * h) * (i % 2 ? 4 : 2);
    return sum * h / 3;
}

struct Params {
    float a, L, D, r, K;
    double beta, c;
    float N;
};

// The age-weighted part alone: integral of C*x*exp(-Beta*x)*exp(-r*(x-a)) over [a, a+L].
double weightedIntegral(const Params& p) {
    const double r = p.r, b = p.beta, c = p.c, a = p.a;
    return simpson([&](double x) { return c * x * std::exp(-b * x) * std::exp(-r * (x - a)); }, a,
                   double(p.a) + double(p.L));
}

// The whole burden integral of one case, times N.
double burdenIntegral(const Params& p) {
    const double r = p.r, K = p.K, b = p.beta, c = p.c, a = p.a, D = p.D;
    const auto f = [&](double x) {
        return D * (K * c * x * std::exp(-b * x) + (1 - K)) * std::exp(-r * (x - a));
    };
    return simpson(f, a, double(p.a) + double(p.L)) * p.N;
}

struct Case {
    const char* what;
    Params p;
};

const Case kCases[] = {
    {"no discount, no weights", {30, 10, 0.2f, 0, 0, 0.04, 0.1658, 3}},
    {"no discount, no weights, fractional", {0.5f, 0.25f, 0.67f, 0, 0, 0.04, 0.1658, 1.5f}},
    {"no discount, full weights, young", {0, 5, 0.3f, 0, 1, 0.04, 0.1658, 1}},
    {"no discount, full weights, old, long", {62.5f, 25.5f, 0.9f, 0, 1, 0.04, 0.1658, 250}},
    {"no discount, full weights, other Beta and C", {14, 3.5f, 0.15f, 0, 1, 0.1, 0.5, 10}},
    {"discount, no weights", {30, 10, 0.2f, 0.03f, 0, 0.04, 0.1658, 3}},
    {"discount 6%, no weights, long", {5, 70, 0.5f, 0.06f, 0, 0.04, 0.1658, 2}},
    {"discount, full weights, birth", {0, 82.5f, 1, 0.03f, 1, 0.04, 0.1658, 1}},
    {"discount, full weights, middle age", {45.3f, 12.7f, 0.35f, 0.03f, 1, 0.04, 0.1658, 17}},
    {"discount, full weights, short", {20, 0.1f, 0.6f, 0.03f, 1, 0.04, 0.1658, 1000}},
    {"discount 10%, full weights, other Beta", {70, 15, 0.7f, 0.1f, 1, 0.02, 0.3, 4}},
};

constexpr double kSingleUlp = 1.0 / (1 << 23);

// The tolerance of a comparison, as set out above.
double tolerance(const Params& p, double expected, double relative, bool roundedExponentials) {
    const double r = p.r, K = p.K, b = p.beta, c = p.c, a = p.a, D = p.D;
    const double top = double(p.a) + double(p.L);
    const double endError =
        std::abs(double(p.a + p.L) - top) *
        std::abs(D * (K * c * top * std::exp(-b * top) + (1 - K)) * std::exp(-r * (top - a))) * p.N;
    double cancellation = 0;
    if (roundedExponentials && K != 0 && r != 0) {
        const double rb = r + b;
        const double terms =
            std::exp(-rb * top) * std::abs(-rb * top - 1) + std::exp(-rb * a) * std::abs(-rb * a - 1);
        cancellation = D * K * c * std::exp(r * a) / (rb * rb) * terms * kSingleUlp * p.N;
    }
    return relative * std::abs(expected) + endError + cancellation;
}

class KernelIntegral : public vesk::test::KernelTest {};

} // namespace

TEST_F(KernelIntegral, IncidenceYldIsTheBurdenIntegralForNoneOrFullWeights) {
    for (const Case& k : kCases) {
        const Params& p = k.p;
        const double expected = burdenIntegral(p);
        const float v = FnlYLD(p.a, p.L, p.D, p.r, p.K, Cell(p.beta), Cell(p.c), p.N);
        EXPECT_NEAR(v, expected, tolerance(p, expected, 4e-6, true)) << k.what;
    }
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(KernelIntegral, YllIsTheBurdenIntegralOfOneDeathForEveryK) {
    for (const Case& k : kCases)
        for (float K : {k.p.K, 0.25f, 0.5f, 0.9f}) {
            Params p = k.p;
            p.D = 1;
            p.N = 1;
            p.K = K;
            const double expected = burdenIntegral(p);
            const double v = FnYLLF(p.a, p.L, p.r, p.K, Cell(p.beta), Cell(p.c));
            EXPECT_NEAR(v, expected, tolerance(p, expected, 1e-6, false)) << k.what << " K=" << K;
        }
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(KernelIntegral, IncidenceYldWithPartialWeightsKeepsItsOwnUnweightedShare) {
    for (const Case& k : kCases)
        for (float K : {0.25f, 0.5f, 0.9f}) {
            Params p = k.p;
            p.K = K;
            const double weighted = p.D * K * weightedIntegral(p);
            // r = 0: (1-K)*L outside D. r != 0: (1-K)/r, inside D, not discounted over L.
            const double share = p.r == 0 ? (1 - double(K)) * p.L : p.D * (1 - double(K)) / p.r;
            const double expected = (weighted + share) * p.N;
            const float v = FnlYLD(p.a, p.L, p.D, p.r, p.K, Cell(p.beta), Cell(p.c), p.N);
            EXPECT_NEAR(v, expected, tolerance(p, expected, 4e-6, true)) << k.what << " K=" << K;
            // And so it differs from the integral.
            EXPECT_GT(std::abs(v - burdenIntegral(p)), 1e-3 * std::abs(expected)) << k.what << " K=" << K;
        }
}

TEST_F(KernelIntegral, PrevalenceYldWithoutWeightsIsOneYearOfTheIntegral) {
    for (const Case& k : kCases) {
        Params p = k.p;
        p.L = 1;
        p.r = 0;
        p.K = 0;
        const double expected = burdenIntegral(p);
        const float v = FnPYLD(p.a, p.D, p.K, Cell(p.beta), Cell(p.c), p.N);
        EXPECT_NEAR(v, expected, 4e-6 * std::abs(expected)) << k.what;
    }
}

TEST_F(KernelIntegral, PrevalenceYldWithFullWeightsIsItsStatedBracket) {
    // K*C*exp(-Beta*a)/Beta^2 * (-Beta*a-1) * (exp(-Beta) - 1): the duration of one year enters
    // through exp(-Beta) alone, so this is not the integral over [a, a+1].
    for (const Case& k : kCases) {
        const Params& p = k.p;
        const double b = p.beta, a = p.a;
        const double expected =
            p.D * p.c * std::exp(-b * a) / (b * b) * (-b * a - 1) * (std::exp(-b) - 1) * p.N;
        const float v = FnPYLD(p.a, p.D, 1, Cell(p.beta), Cell(p.c), p.N);
        EXPECT_NEAR(v, expected, 4e-6 * std::abs(expected)) << k.what;
        Params year = p;
        year.L = 1;
        year.r = 0;
        year.K = 1;
        EXPECT_GT(std::abs(v - burdenIntegral(year)), 1e-3 * std::abs(expected)) << k.what;
    }
}

TEST_F(KernelIntegral, BranchesWithoutAFormulaGiveZero) {
    EXPECT_EQ(FnPYLD(30, 0.2f, 0.5f, Cell(0.04), Cell(0.1658), 3), 0.0f);
    EXPECT_EQ(errorStoreCount(), 0);
    EXPECT_EQ(FnYLLF(30, 50, 0, -1, Cell(0.04), Cell(0.1658)), 0.0);
}
