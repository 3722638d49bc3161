#pragma once
// Numbers in dBase fields. A number field holds the number as text, at most 20 characters wide, as
// dBase III and FoxPro allow. A column whose values all have a fixed-point text of that width that
// reads back to the same double becomes N(width, decimals), every value written with the same
// decimals; any other column becomes N(20, decimals) too, but each value in the shortest text that
// reads back to it, with an exponent where that is shorter ("1e25", "-1e300"). Other readers parse
// such a text in an N field, where some of them take an F field for a binary one. Where no text of 20
// characters reads back to the value, a text of fewer digits serves if it reads back within 1e-15 of the
// value's size; a value that not even such a text holds is refused: the column cannot be written.
//
// Texts are made and read in the "C" form whatever the locale: a point before the decimals.

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace vesk {

struct DbfNumberField {
    static constexpr int kMaxWidth = 20;
    int width = 1;
    int decimals = 0;
    bool exponent = false; // each value its own shortest text, with an exponent where that is shorter
};

// The field for a column's finite values. `whole` for a column declared Integer or Long, which
// keeps a width of at least `minWidth` and no decimals as long as every value is whole. When a value
// fits no field, std::nullopt, with the value in `refused`.
std::optional<DbfNumberField> numberFieldFor(const QList<double>& values, bool whole, int minWidth,
                                             double* refused);
// The value's text in the field, right-aligned to its width. The value is one the field was made for.
QByteArray numberText(double value, const DbfNumberField& field);
// The number a field's text holds: blanks around it and a leading "+" are allowed, an exponent too.
// std::nullopt for blanks, dBase's row of "*" for no value, and text that is no number.
std::optional<double> parseNumber(QByteArrayView text);
// The shortest text that reads back to the value, for messages ("-1.2345678901234567e-300").
QString shortestText(double value);

} // namespace vesk
