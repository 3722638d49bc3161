#pragma once
// FnLifeTable: a complete abridged life table from a column of age-specific death rates, by one of
// four methods, and, for the expectation of life free of disability, the same person-years reduced
// by a fraction of disability at each age.
//
// Input (`Rates`, a two-dimensional array, one row for each age group in ascending order, rows
// numbered from the first): column 0 the age at the start of the interval, the last row being the
// open interval; column 1 the death rate m, already divided by its denominator; column 2 the
// population of the group, which Keyfitz's correction needs and the other methods ignore. Cells may
// be numbers or texts of numbers. Units: ages and expectancies in years, rates per person-year,
// lx on the radix of the settings.
//
// Result: one row for each input row, columns
//   0 X  1 Mx  2 n  3 ax  4 qx  5 px  6 lx  7 dx  8 Lx  9 mx  10 Tx  11 Ex
//   12 POP (Keyfitz: the input population) or RSlx (Reed-Merrell: the sum of lx from the end)
//   then three columns: Lx, Tx and Ex reduced by the disability fraction of the row, v - v·Adjust(i)
// so columns 0 to 14 under Standard and Greville, 0 to 15 under Keyfitz and Reed-Merrell; the last
// column is always the adjusted expectation. n is age(i+1) - age(i), and "W" in the open row.
//
// Common frame. R = IMR / IMRDenominator (FnIMRRatio) and f = FnSeparationFactor(R), the share of
// infant deaths that fall in the year of birth (Chiang's separation factors). px = 1 - qx;
// l(0) = Radix, l(i) = l(i-1)·p(i-1); dx = qx·lx; Ex = Tx / lx. "The first age" is the row of age 0
// with n exactly 1: a table opening with 0-4 has no infant row and takes the general rule of its
// method there. The open row always has qx 1, px 0, dx = lx, and Lx = lx / m, so an open-row rate of
// 0 stops the table with a division error. l(i+1) below is the next row's lx, lx(i)·px(i).
//
// Method 0, Standard (the conventional abridged table, nax from the IMR, Newell 1988):
//   ax = FnAxFraction(age, IMR) in every row;
//   q0 = R / ((1 - f)·exp(-PGR) + f); qx = n·m / (1 + (1 - ax)·n·m);
//   Lx = n·(lx·px + ax·dx), open row lx / m; mx = dx / Lx; Tx = Lx + Tx(i+1).
// Method 1, Keyfitz (Keyfitz & Frauenthal 1975, "An improved life table method", Biometrics 31):
//   outside the ages KFlwrlmt..KFupprlmt: q0 = (1 - f)·exp(-PGR) + R / f (the division applies to
//   R alone), other rows the Standard rule with the table's ax;
//   within them: qx = 1 - exp(-n·(m + (P(i-1) - P(i+1))·(m(i+1) - m(i-1)) / (48·P(i)))), with P the
//   input population, and no guard at the ends: a limit at the first or the last row stops the
//   table with "Subscript out of range";
//   Lx, mx, Tx as Standard with the table's ax; then every row but the open one whose age is above
//   KFlwrlmt or not above KFupprlmt takes ax = 1 - 1/qx + 1/(n·m); the open row's ax is "NA".
//   A limit that the settings leave empty makes no comparison true: no row takes the correction.
// Method 2, Reed-Merrell (Reed & Merrell 1939, "A short method for constructing an abridged life
// table", American Journal of Hygiene 30):
//   qx = 1 - exp(-m·(0.9539 - 0.5509·m)) at age 0 with n 1, 1 - exp(-m·(0.951 - 1.921·m)) at age 1
//   with n 1, 1 - exp(-m·(0.9086 - 2.079·m)) at age 1 with n 4, else 1 - exp(-n·m - 0.008·n³·m²);
//   Lx: age 0, n 1: f·l(i) + (1 - f)·l(i+1); age 1, n 1: 0.41·l(i) + 0.592·l(i+1); age 1, n 4:
//   0.034·l(i-1) + 1.184·l(i) + 2.782·l(i+1); age 2, n 3: 0.21·l(i-2) + 1.384·l(i) + 1.637·l(i+1);
//   age 5, n 5: 0.21·l(0) + 1.384·l(i) + 1.637·l(i+1); each only where the rows it reads exist, the
//   cell staying empty otherwise; any other row n·lx·px (ax is not known yet); open row lx / m.
//   Then from the last row up: RSlx = lx + RSlx(i+1); Tx by the first rule that fits:
//   age >= 5, n 5 (not the first nor the last row): 0.20833·l(i-1) + 2.5·l(i) + 0.20833·l(i+1)
//   + 5·RSlx(i); age >= 5, n 10 (not the last row): 4.16667·l(i) + 0.83333·l(i+1) + 10·RSlx(i);
//   age <= 5, n below 5 (not the last row): Tx(i+1) + Lx; otherwise FnSumColumn of Lx from the
//   end up to the row, a whole number (with radix 1 that makes it 0 or 1, as it always did);
//   rows aged 5 or more with n 10, and aged 10 or more with n 5, take Lx = Tx - Tx(i+1);
//   Ex = Tx / lx; ax = 1 - 1/qx + 1/(n·m) and mx = dx / Lx where Lx and dx are filled.
// Method 3, Greville (Greville 1943, "Short methods of constructing abridged life tables", Record
//   of the American Institute of Actuaries 32), with c = Greval:
//   q0 = (1 - f)·exp(-PGR) + R / f, as under Keyfitz; qx = m / (1/n + m·(1/2 + (n/12)·(m - ln c)));
//   L0 = f·l0 + (1 - f)·l1; other rows before the last dx / m; the last lx / m; mx = dx / Lx;
//   Tx = Tx(i+1) + Lx; ax = 1 - 1/qx + 1/(n·m), "NA" in the open row.
//
// Edge behaviour. An infant row with R = 0 has q0 0 under Standard but (1 - 0.95)·exp(-PGR) under
// Keyfitz and Greville. PGR is a plain exponent, never divided by 100. Rates in columns 1 and up are
// taken as numbers first (a text that is no number gives 0, the old Val); ages are read as numbers
// where arithmetic needs them (a text that is no number stops the table with "Type mismatch").
//
// Failures. Not a two-dimensional array, or Keyfitz without a population column: the result is the
// boolean False and nothing is shown. Any run-time fault inside the computation (a division by
// zero, an overflow, a subscript at the ends of the Keyfitz range, a Null or non-numeric operand)
// shows the runtime's words in a critical box titled "Error generating Life Table", and the result
// is Empty: callers test the result for an array, never a cell of it.

#include "foundation/settings.h"
#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QtGlobal>
#include <optional>

namespace vesk {

// The method numbers, as the settings file and Preferences store them.
enum LifeTableMethod : qint16 {
    kLtStandard = 0,
    kLtKeyfitz = 1,
    kLtReedMerrell = 2,
    kLtGreville = 3,
};

// The result's columns.
namespace life_table_col {
inline constexpr int X = 0, Mx = 1, n = 2, ax = 3, qx = 4, px = 5, lx = 6, dx = 7, Lx = 8, mx = 9, Tx = 10,
                     Ex = 11, Extra = 12; // POP or RSlx
} // namespace life_table_col

// What the engine reads from the settings on each call.
struct LifeTableSettings {
    double radix = 1;                     // l0; 1 where the settings hold 0 or nothing
    std::optional<double> kfLower;        // KFlwrlmt
    std::optional<double> kfUpper;        // KFupprlmt
    double greval = 1.099658856;          // Greville's c
};
inline constexpr double kDefaultGreval = 1.099658856;

// The engine's settings from the [ABGLTBL] block as read: an empty or non-numeric limit is none, an
// empty Greville constant the default.
LifeTableSettings lifeTableSettings(const VeskSettings& s = settings());

// The table, False (could not begin) or Empty (a fault, shown in the error box).
Cell FnLifeTable(const Cell& rates, qint16 IMR, qint16 IMRDenominator, qint16 PGR, qint16 method,
                 const Cell& adjust, const LifeTableSettings& options);
// The same with the settings of the program.
Cell FnLifeTable(const Cell& rates, qint16 IMR, qint16 IMRDenominator, qint16 PGR, qint16 method,
                 const Cell& adjust = Cell());

// The number of columns of a method's table (15 or 16).
int lifeTableWidth(qint16 method);

// The companions, exposed for their tests.
double FnIMRRatio(qint16 IMR, qint16 IMRDenominator); // IMR / IMRDenominator; a fault throws
double FnSeparationFactor(double R);
// ax by age and IMR: age 0 by IMR (none without one), 1 gives 0.4, 2 and over 0.5; the age rounded
// half to even to a 16-bit integer first. No value below age 0.
std::optional<double> FnAxFraction(double age, std::optional<double> IMR);
// Direction 0 sums column `column` from the first row down to `row`, 1 from the last row up to it;
// Empty and Null count 0; the 32-bit accumulator is rounded half to even after every addition.
qint32 FnSumColumn(const CellArray& table, int column, int row, int direction);

} // namespace vesk
