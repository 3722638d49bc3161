#pragma once
// Single-year standard life tables from published abridged expectations of life.
//
// Piecewise exponential (the "KRO" block and the GBD 2019 table): within each published interval
// [x, x+n] the force of mortality is a constant mu, solved so that the published e(x) at both ends
// are met:
//     e(x) = (1 - exp(-mu·n)) / mu + exp(-mu·n)·e(x+n),
// and each single year x+t of the interval takes e(x+t) from the same mu with n - t in place of n.
// The right side falls strictly with mu, from n + e(x+n) at mu = 0 towards 0, so a solution exists
// when e(x) < n + e(x+n) (a negative mu, rising mortality being impossible, is refused).
//
// Geometric (the "WHO" block): e(x+t) = e(x)·(e(x+n)/e(x))^(t/n).
//
// Gompertz closure: where the source stops before 100, a Gompertz hazard mu(x) = A·exp(B·(x - x0))
// is fitted by least squares to the last published e(x) (e.g. 85, 90, 95), with
//     e(x) = integral over t >= 0 of exp(-z(exp(B·t) - 1)) dt = exp(z)·E1(z) / B,  z = mu(x)/B,
// (E1 the exponential integral), and e(100) is read from the fitted curve.
//
// Ages in years; the tables run from the first published age (0) to 100 by single years.

#include <optional>
#include <vector>

namespace vesk::refgen {

// Published expectations e(x) at increasing ages, the last one 100 (supplied by the caller).
struct AbridgedExpectancy {
    std::vector<int> ages;
    std::vector<double> ex;
};

// The constant hazard of [x, x+n] between e(x) and e(x+n); std::nullopt when none is >= 0.
std::optional<double> pweHazard(double ex, double exNext, double n);
// e(x+t) for the hazard mu: (1 - exp(-mu·(n-t))) / mu + exp(-mu·(n-t))·e(x+n); mu 0 gives n - t + e(x+n).
double pweExpectancy(double mu, double remaining, double exNext);

// Single years from the first age to the last one (index = age - first age); std::nullopt when an
// interval admits no non-negative hazard.
std::optional<std::vector<double>> pweSingleYears(const AbridgedExpectancy& table);
std::vector<double> geometricSingleYears(const AbridgedExpectancy& table);

// e(x) under the Gompertz hazard m·exp(B·t), t the years above x: exp(z)·E1(z) / B with z = m/B.
double gompertzExpectancy(double m, double B);

struct GompertzFit {
    double x0 = 0;  // reference age of A
    double A = 0;   // hazard at x0
    double B = 0;   // rate of ageing
    double rss = 0; // residual sum of squares of the fitted e(x)
    double expectancy(double age) const;
};

// Least squares over (ln A, ln B) by the Nelder-Mead simplex, started from the constant-hazard
// guess A = 1/e(x0), B = 0.1.
GompertzFit fitGompertz(const std::vector<int>& ages, const std::vector<double>& ex);

} // namespace vesk::refgen
