#pragma once
// The old runtime's arithmetic on dynamic cells, with its run-time errors, for the numerical routines
// that must fail where it failed: the burden kernel and the life table engine.
//
//   - a cell as an operand: Empty is 0, a number its double, a text holding a plain decimal number
//     (blanks around it allowed) that number; Null fails with 94 "Invalid use of Null", any other
//     text or an array with 13 "Type mismatch";
//   - x / 0 with x != 0: 11 "Division by zero"; 0 / 0 and every result that leaves the double range
//     (exp, a product, a sum): 6 "Overflow", the runtime's word for an invalid floating-point result;
//   - the natural logarithm of 0 or of a negative number: 5 "Invalid procedure call or argument";
//   - a double stored in a 16-bit or 32-bit integer rounds half to even and fails with 6 "Overflow"
//     out of that type's range.
// Every failure is a RuntimeError with the runtime's number and its words from the one table.

#include "platform/cell.h"

#include <QString>
#include <QtGlobal>
#include <optional>

namespace vesk::runtime_arithmetic {

[[noreturn]] void fail(int number);
[[noreturn]] void overflow();

// A text as the runtime converts it for arithmetic; "" and "abc" are no number.
std::optional<double> textNumber(const QString& text);

double operand(const Cell& c);
// One side of a numeric comparison: Null gives no value, and a comparison with it is not true.
std::optional<double> comparand(const Cell& c);

double finite(double v);
// a * b and a + b of two dynamic cells as the runtime forms them: Null on either side gives Null, Empty
// counts as 0, a text of a number as that number; a result out of the double range fails with 6.
Cell times(const Cell& a, const Cell& b);
Cell plus(const Cell& a, const Cell& b);
double quot(double numerator, double denominator);
double ex(double x);
double ln(double x);
double sq(double x);

// CInt and CLng: nearest whole number, halves to the even neighbour, within the type's range.
qint16 toInteger(double v);
qint32 toLong(double v);

} // namespace vesk::runtime_arithmetic
