#pragma once
// The burden kernel: the closed-form arithmetic of every burden figure. Three pure functions turn one
// case (or one death) into discounted, age-weighted years of healthy life lost, and one look-up finds
// the standard life expectancy at a fractional age.
//
// All of them follow Murray CJL, "Quantifying the burden of disease: the technical basis for
// disability-adjusted life years", Bull WHO 1994;72(3):429-445, whose burden of one case is
//
//   integral from a to a+L of  D * [ K*C*x*exp(-Beta*x) + (1-K) ] * exp(-r*(x-a))  dx
//
// with a the age (years), L the duration (years), D the disability weight (0..1), r the discount
// rate per year, K the age-weighting modulation (0 = none, 1 = full), C*x*exp(-Beta*x) the age
// weight. With r > 0 and K = 1 it integrates to
//
//   D*K*C*exp(r*a)/(r+Beta)^2 * [ exp(-(r+Beta)*(a+L))*(-(r+Beta)*(a+L)-1)
//                                 - exp(-(r+Beta)*a)*(-(r+Beta)*a-1) ]
//
// and with K = 0 to D*(1-exp(-r*L))/r. Where K lies strictly between 0 and 1 the functions below
// keep the program's own forms of the unweighted share, which are not the integral (see each one).
//
// Arithmetic. a, L, D, N, r and K are single floats; Beta and C are dynamic cells (Empty, Null, a
// number, or a text such as "" or "0.04" from a grid). Products and sums of single floats alone are
// single-float operations; as soon as Beta, C or exp take part the arithmetic is double. exp is
// always evaluated in double on an argument formed from the single floats. Where a step is said to
// be "rounded to single" it is stored in a single float (vesk::toSingle). Tests of r and K against
// 0 and 1 are exact comparisons of the single float.
//
// Failures never stop a function. Each begins with parameter checks; a failed check goes to the
// error store (number, words, the function's name) and the next statement runs, so that all checks
// run and the formula runs on the bad values at the end. The caller gets a number and no signal.
// Run-time failures inside the formulas go the same way, under the runtime's own numbers:
//   - x / 0 with x != 0: 11 "Division by zero"; 0 / 0: 6 "Overflow" (the runtime's word for an
//     invalid floating-point result);
//   - exp, a product or a sum that leaves the double range, or a value too large for the single
//     float it is stored in: 6 "Overflow";
//   - a Beta or C text that is no number (such as ""), where arithmetic needs it: 13 "Type mismatch";
//   - a Null Beta or C, where arithmetic needs it: 94 "Invalid use of Null".
// The failing statement leaves its variable as it was (0), and the function goes on with the next.
//
// Checks of Beta and C. They run only when Beta is not the empty string: an Empty Beta compares
// equal to "" and skips both, as does a text "". A number (0 included) or a Null Beta does not
// equal "", so the checks run; a Null Beta then skips the range test (a comparison with Null is not
// true) and a Null C skips its test too. An Empty C counts as 0. A Beta or C text that is no number
// stores 13 "Type mismatch" from the comparison, and, as the run resumes at the statement after the
// comparison, which is the check's own raise, the check's error follows it.
//
// The error messages are in the catalog kernel_texts.catalog, the numbers in kernel.cpp.

#include "demography/life_expectancy_at.h" // FnLifeExpAt, which the YLL of a study reads
#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>

namespace vesk {

// FnlYLD = N * integral from a to a+L of D*[K*C*x*exp(-Beta*x) + (1-K)]*exp(-r*(x-a)) dx, in the
// closed forms below (Murray CJL, Quantifying the burden of disease: the technical basis for
// disability-adjusted life years, Bull WHO 1994;72(3):429-445), except for the unweighted share when
// K lies strictly between 0 and 1. The incidence-based years lived with disability of N cases of
// onset at age a lasting L years with disability weight D. Units: years of healthy life; a and L in
// years. Returns a single float.
//
// Exactly one branch applies, the test of r first:
//   1. r = 0, K = 0:  D*L*N.
//   2. r = 0, K != 0: A = K*C*exp(-Beta*a)/Beta^2 (rounded to single),
//                     B = exp(-Beta*L)*(-Beta*(a+L)-1) - (-Beta*a-1) (rounded to single),
//                     E = (1-K)*L (single); result (A*B*D + E)*N.
//      E stands outside the multiplication by D: the unweighted share counts at full weight here.
//      With Beta = 0 the division fails (11, or 6 when C is 0): A stays 0 and the result is E*N.
//   3. r != 0, K = 0: (1-exp(-r*L))/r*D*N.
//   4. r != 0, K != 0: P = exp(r*a), E1 = exp(-(r+Beta)*(a+L)), E2 = exp(-(r+Beta)*a), each rounded
//      to single, a+L a single float; G = K*C*P/(r+Beta)^2;
//      H = E1*(-(r+Beta)*(a+L)-1) - E2*(-(r+Beta)*a-1); U = (1-K)/r; result D*(G*H + U)*N.
//      U is (1-K)/r as it stands, not multiplied by (1-exp(-r*L)): it does not depend on L, and it
//      vanishes for K = 1.
// Domain: r in [0,1), K in [0,1], Beta in [0,1) or empty, C > 0. Checks, in order:
//   -1 r < 0 or r >= 1, -2 K < 0 or K > 1 (both "...r must be >=0 and <1"), then, when Beta is not
//   "": -3 Beta < 0 or Beta >= 1, -4 C <= 0 (both "...Beta must be >=0 and <1").
// Edge behaviour: N = 0 gives 0 in every branch; K = 1 passes the checks.
float FnlYLD(float a, float L, float D, float r, float K, const Cell& Beta, const Cell& C, float N);

// FnPYLD = D*N*[K*C*exp(-Beta*a)/Beta^2*(-Beta*a-1)*(exp(-Beta)-1) + (1-K)] for K = 0 or 1: the
// age-weighted year of Murray CJL, Quantifying the burden of disease: the technical basis for
// disability-adjusted life years, Bull WHO 1994;72(3):429-445, in the program's own bracket (see 2).
// The prevalence-based years lived with disability of N prevalent cases aged a (years) with
// disability weight D, over one year. Units: years of healthy life. Returns a single float. No
// discounting.
//   1. K = 0: D*N.
//   2. K = 1: D*( K*C*exp(-Beta*a)/Beta^2 * ( exp(-Beta)*(-Beta*a-1) - (-Beta*a-1) ) + (1-K) )*N.
//      Both brackets carry -Beta*a-1: the one-year duration enters only through exp(-Beta); this is
//      not the integral over [a, a+1]. It is one statement: with Beta = 0 the division fails and the
//      result is 0.
//   3. K strictly between 0 and 1 (or outside [0,1]): 0, with no error of its own.
// Checks, in order: -5 K < 0 or K > 1 ("...r must be >=0 and <1"), then, when Beta is not "":
//   -6 Beta < 0 or Beta >= 1, -7 C < 0 (both "...Beta must be >=0 and <1"). C = 0 passes here.
float FnPYLD(float a, float D, float K, const Cell& Beta, const Cell& C, float N);

// FnYLLF = integral from a to a+L of [K*C*x*exp(-Beta*x) + (1-K)]*exp(-r*(x-a)) dx, in closed form
// (Murray CJL, Quantifying the burden of disease: the technical basis for disability-adjusted life
// years, Bull WHO 1994;72(3):429-445): the years of life lost by ONE death at age a (years) whose
// standard life expectancy there is L (years). Units: years. Returns a double (deaths are multiplied
// in by the caller).
//   1. r = 0, K = 0: L.
//   2. r = 0, K > 0: K*C*exp(-Beta*a)/Beta^2 * ( exp(-Beta*L)*(-Beta*(L+a)-1) - (-Beta*a-1) ) + (1-K)*L.
//      One statement: with Beta = 0 the division fails and the result is 0.
//   3. r = 0, K < 0: 0 (no branch).
//   4. r != 0, K = 0: (1-K)/r * (1-exp(-r*L)).
//   5. r != 0, K != 0: with E0 = exp(-r*L), E1 = exp(-(r+Beta)*(L+a)), E2 = exp(-(r+Beta)*a) (double):
//      K*C*exp(r*a)/(r+Beta)^2 * ( E1*(-(r+Beta)*(L+a)-1) - E2*(-(r+Beta)*a-1) ) + (1-K)/r*(1-E0).
//   Here the unweighted share keeps its discounting. With K = 1 the value equals FnlYLD with D = 1,
//   N = 1 up to single-float rounding.
// Checks, in order: -10 r < 0 or r >= 1 ("...r must be >=0 and <1"), -11 K < 0 or K > 1
//   ("...k must be >=0 and <1"), then, when Beta is not "": -13 Beta < 0 or Beta >= 1
//   ("...Beta must be >=0 and <1"), -14 C <= 0 ("Invalid parameter value, C should be <= 0 ").
// Example: r = 0.03, K = 1, Beta = 0.04, C = 0.1658, a = 0, L = 82.5 gives 33.13 years.
double FnYLLF(float a, float L, float r, float K, const Cell& Beta, const Cell& C);

} // namespace vesk
