#pragma once
// The few helpers of the old runtime whose exact behaviour the program's numbers and messages rely on.

#include <QString>

namespace vesk {

// Lenient leading-number parse: blanks anywhere are skipped, the longest leading number is taken
// (sign, digits, one decimal point, an exponent introduced by E or D, or &H / &O radix prefixes),
// and a text with no leading number gives 0. "12abc" -> 12, " 1 2.5" -> 12.5, "abc" -> 0, "1,5" -> 1.
double Val(const QString& text);

// Text of a number as the runtime prints it: up to 15 significant digits, no trailing zeros,
// exponent as "E+20" / "E-05" where the plain form would be too long.
QString numberToText(double value);

// Pattern match with ? (one character), * (any run), # (one digit), [abc], [a-z] and [!abc].
// Case-sensitive, as under binary comparison.
bool Like(const QString& text, const QString& pattern);

// Rounding to `digits` decimals with ties to the even neighbour (banker's rounding).
double roundHalfEven(double value, int digits = 0);

// Fixed decimals as a "0.000" format gives them: ties away from zero, a leading "0" before the point.
QString formatFixed(double value, int decimals);

// A numeric format picture such as "0", "0.00", "#,##0.000": the decimals are the zeros after the
// point, and a "," in the integer part asks for thousands separators. An integer part of "#" only
// makes its digits optional, so that 0.5 in "##.00" is ".50"; a "#" after the point is an optional
// place, so that "#.##" gives "12.5" for 12.5, "12." for 12 and "." for 0, the point always shown.
QString formatNumber(double value, const QString& picture);

// Rounding to single precision, where a computation stores an intermediate in a single float.
inline float toSingle(double value) {
    return static_cast<float>(value);
}

// Int: truncation towards minus infinity. Fix: truncation towards zero.
double vbInt(double value);
double vbFix(double value);

// Mid$ with a 1-based start; a start past the end gives "".
QString Mid(const QString& text, int start1, int length = -1);

} // namespace vesk
