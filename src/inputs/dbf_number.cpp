#include "inputs/dbf_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace vesk {

namespace {

// How near a shortened text must read back: relative to the value's size.
constexpr double kTolerance = 1e-15;
constexpr auto kWidth = static_cast<std::size_t>(DbfNumberField::kMaxWidth);

// Room for the longest fixed-point text of a double (the smallest subnormal has 326 characters).
using Buffer = std::array<char, 400>;

std::string shortest(double v) {
    Buffer b;
    return std::string(b.data(), std::to_chars(b.data(), b.data() + b.size(), v).ptr);
}

std::string shortestFixed(double v) {
    Buffer b;
    return std::string(b.data(),
                       std::to_chars(b.data(), b.data() + b.size(), v, std::chars_format::fixed).ptr);
}

std::string withPrecision(double v, std::chars_format format, int precision) {
    Buffer b;
    return std::string(b.data(), std::to_chars(b.data(), b.data() + b.size(), v, format, precision).ptr);
}

// "1e+25" as "1e25", "1e-07" as "1e-7": the exponent without its plus sign or leading zeros.
std::string compactExponent(std::string s) {
    const std::size_t e = s.find('e');
    if (e == std::string::npos)
        return s;
    std::size_t digits = e + 1;
    if (s[digits] == '+')
        s.erase(digits, 1);
    else if (s[digits] == '-')
        ++digits;
    while (digits + 1 < s.size() && s[digits] == '0')
        s.erase(digits, 1);
    return s;
}

bool readsBackWithin(const std::string& text, double v) {
    const auto back = parseNumber(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return back && (*back == v || std::fabs(*back - v) <= kTolerance * std::fabs(v));
}

// The text of `digits` significant digits in fixed-point form; empty when that form needs more
// decimals than a field has room for.
std::string fixedWithDigits(double v, int digits) {
    const int magnitude = v == 0.0 ? 0 : static_cast<int>(std::floor(std::log10(std::fabs(v))));
    const int decimals = digits - 1 - magnitude;
    if (decimals < 0 || decimals > DbfNumberField::kMaxWidth)
        return std::string();
    return withPrecision(v, std::chars_format::fixed, decimals);
}

// The text of the value in a field of texts with exponents: the shortest that reads back to it, else the
// longest that fits and reads back within the tolerance; std::nullopt when none does.
std::optional<std::string> floatText(double v) {
    const std::string exact = compactExponent(shortest(v));
    if (exact.size() <= kWidth)
        return exact;
    for (int digits = 17; digits >= 1; --digits) {
        for (const std::string& t :
             {compactExponent(withPrecision(v, std::chars_format::scientific, digits - 1)),
              fixedWithDigits(v, digits)}) {
            if (!t.empty() && t.size() <= kWidth && readsBackWithin(t, v))
                return t;
        }
    }
    return std::nullopt;
}

// The fixed-point text that reads back to the value, split at its point.
struct FixedParts {
    int integerChars = 0; // with the sign
    int decimals = 0;
};

FixedParts fixedParts(double v) {
    const std::string s = shortestFixed(v);
    const std::size_t dot = s.find('.');
    if (dot == std::string::npos)
        return {static_cast<int>(s.size()), 0};
    return {static_cast<int>(dot), static_cast<int>(s.size() - dot - 1)};
}

// The N field that holds every value in fixed point, if one does.
std::optional<DbfNumberField> fixedField(const QList<double>& values, bool whole, int minWidth) {
    int integerChars = 1, decimals = 0;
    for (const double v : values) {
        const FixedParts p = fixedParts(v);
        integerChars = std::max(integerChars, p.integerChars);
        decimals = std::max(decimals, p.decimals);
    }
    const int needed = integerChars + (decimals > 0 ? decimals + 1 : 0);
    if (needed > DbfNumberField::kMaxWidth)
        return std::nullopt;
    if (whole && decimals == 0)
        return DbfNumberField{std::clamp(minWidth, needed, DbfNumberField::kMaxWidth), 0, false};
    return DbfNumberField{DbfNumberField::kMaxWidth, decimals, false};
}

int decimalsOf(const std::string& text) {
    const std::size_t dot = text.find('.');
    if (dot == std::string::npos)
        return 0;
    const std::size_t e = text.find('e');
    return static_cast<int>((e == std::string::npos ? text.size() : e) - dot - 1);
}

std::string padLeft(const std::string& text, int width) {
    return std::string(static_cast<std::size_t>(std::max(0, width - static_cast<int>(text.size()))), ' ') +
           text;
}

} // namespace

std::optional<DbfNumberField> numberFieldFor(const QList<double>& values, bool whole, int minWidth,
                                             double* refused) {
    if (auto fixed = fixedField(values, whole, minWidth))
        return fixed;
    int decimals = 0;
    for (const double v : values) {
        const auto text = floatText(v);
        if (!text) {
            if (refused)
                *refused = v;
            return std::nullopt;
        }
        decimals = std::max(decimals, decimalsOf(*text));
    }
    return DbfNumberField{DbfNumberField::kMaxWidth, std::min(decimals, DbfNumberField::kMaxWidth - 2), true};
}

QByteArray numberText(double value, const DbfNumberField& field) {
    std::string text;
    if (field.exponent) {
        text = floatText(value).value_or(std::string());
    } else {
        text = shortestFixed(value);
        const int decimals = fixedParts(value).decimals;
        if (field.decimals > decimals)
            text += (decimals == 0 ? "." : "") +
                    std::string(static_cast<std::size_t>(field.decimals - decimals), '0');
    }
    if (text.empty() || static_cast<int>(text.size()) > field.width)
        text = std::string(static_cast<std::size_t>(field.width),
                           '*'); // dBase's mark of a number that did not fit
    text = padLeft(text, field.width);
    return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<double> parseNumber(QByteArrayView text) {
    text = text.trimmed();
    if (text.startsWith('+'))
        text = text.sliced(1);
    if (text.isEmpty() || text.front() == '*')
        return std::nullopt;
    double v = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(v))
        return std::nullopt;
    return v;
}

QString shortestText(double value) {
    return QString::fromStdString(shortest(value));
}

} // namespace vesk
