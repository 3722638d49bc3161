#include "study/age_quick_fill.h"

#include "platform/runtime.h"
#include "study/asg_texts.h"

#include <cmath>

namespace vesk {

QList<int> FiveYrAgList(FirstYears choice, int upper) {
    QList<int> ages{0};
    if (choice == FirstYears::ZeroOneFour)
        ages.push_back(1);
    else if (choice == FirstYears::ZeroOneTwoFour)
        ages << 1 << 2;
    for (int a = 5; a <= upper; a += 5)
        ages.push_back(a);
    return ages;
}

QList<int> FiveAgeGroupList() {
    return {0, 5, 15, 45, 60};
}

QList<int> SevenAgeGroupList() {
    return {0, 5, 15, 30, 45, 60, 70};
}

QList<int> upperAgeChoices() {
    QList<int> out;
    for (int a = 45; a <= 85; a += 5)
        out.push_back(a);
    return out;
}

UpperAgeLimits upperAgeLimits(const VeskSettings& s) {
    if (s.MinMaxAge == 0 || s.MaxMaxAge == 0)
        return {settings_defaults::MinMaxAge, settings_defaults::MaxMaxAge};
    return {s.MinMaxAge, s.MaxMaxAge};
}

namespace {
bool divisibleByFive(double value) {
    return std::fmod(value, 5.0) == 0.0;
}
} // namespace

UpperAgeCheck checkTypedUpperAge(const QString& text, const UpperAgeLimits& limits) {
    if (text.trimmed().isEmpty())
        return UpperAgeCheck::Blank;
    const double value = Val(text);
    if (value < limits.min || value > limits.max)
        return UpperAgeCheck::OutOfRange;
    if (!divisibleByFive(value))
        return UpperAgeCheck::NotDivisible;
    return UpperAgeCheck::Accepted;
}

QString typedUpperAgeMessage(UpperAgeCheck check, const UpperAgeLimits& limits) {
    switch (check) {
    case UpperAgeCheck::OutOfRange:
        return QString::fromLatin1(asg_texts::kOutOfRangeStart) + QString::number(limits.min) +
               QString::fromLatin1(asg_texts::kOutOfRangeMiddle) + QString::number(limits.max) + u'\n' +
               QString::fromLatin1(asg_texts::kOutOfRangeEnd);
    case UpperAgeCheck::NotDivisible:
        return QString::fromLatin1(asg_texts::kNotDivisibleTyped);
    default:
        return QString();
    }
}

QString applyUpperAgeMessage(const QString& text) {
    if (text.trimmed().isEmpty())
        return QString::fromLatin1(asg_texts::kFillUpperAge);
    if (!divisibleByFive(Val(text)))
        return QString::fromLatin1(asg_texts::kNotDivisibleApply);
    return QString();
}

} // namespace vesk
