#include "foundation/runtime_arithmetic.h"

#include "foundation/runtime_error.h"
#include "platform/runtime.h"

#include <cmath>

namespace vesk::runtime_arithmetic {

void fail(int number) {
    throw RuntimeError(number);
}

void overflow() {
    fail(runtime_error::kOverflow);
}

std::optional<double> textNumber(const QString& text) {
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return std::nullopt;
    return v;
}

double operand(const Cell& c) {
    switch (c.kind()) {
    case Cell::Kind::Empty:
        return 0.0;
    case Cell::Kind::Number:
        return c.toDouble();
    case Cell::Kind::Null:
        fail(runtime_error::kInvalidUseOfNull);
    case Cell::Kind::Text:
        if (const auto v = textNumber(c.toString()))
            return *v;
        break;
    case Cell::Kind::Array:
        break;
    }
    fail(runtime_error::kTypeMismatch);
}

std::optional<double> comparand(const Cell& c) {
    if (c.isNull())
        return std::nullopt;
    return operand(c);
}

double finite(double v) {
    if (!std::isfinite(v))
        overflow();
    return v;
}

Cell times(const Cell& a, const Cell& b) {
    if (a.isNull() || b.isNull())
        return Cell::null();
    return Cell(finite(operand(a) * operand(b)));
}

Cell plus(const Cell& a, const Cell& b) {
    if (a.isNull() || b.isNull())
        return Cell::null();
    return Cell(finite(operand(a) + operand(b)));
}

double quot(double numerator, double denominator) {
    if (denominator == 0.0) {
        if (numerator == 0.0)
            overflow(); // 0/0
        fail(runtime_error::kDivisionByZero);
    }
    return finite(numerator / denominator);
}

double ex(double x) {
    return finite(std::exp(x));
}

double ln(double x) {
    if (!(x > 0.0))
        fail(runtime_error::kInvalidProcedureCall);
    return finite(std::log(x));
}

double sq(double x) {
    return finite(x * x);
}

qint16 toInteger(double v) {
    const double r = roundHalfEven(finite(v));
    if (r < -32768.0 || r > 32767.0)
        overflow();
    return static_cast<qint16>(r);
}

qint32 toLong(double v) {
    const double r = roundHalfEven(finite(v));
    if (r < -2147483648.0 || r > 2147483647.0)
        overflow();
    return static_cast<qint32>(r);
}

} // namespace vesk::runtime_arithmetic
