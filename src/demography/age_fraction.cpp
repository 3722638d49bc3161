#include "demography/age_fraction.h"

#include <QRegularExpression>

namespace vesk {

std::optional<AgeGroupBounds> ageGroupBounds(const QString& label) {
    static const QRegularExpression group(QStringLiteral(R"(^\s*[A-Za-z](\d+)\s*-\s*(\d+|[wW])\s*$)"));
    const auto m = group.match(label);
    if (!m.hasMatch())
        return std::nullopt;
    AgeGroupBounds b;
    b.lower = m.captured(1).toDouble();
    if (m.captured(2).compare(QLatin1String("w"), Qt::CaseInsensitive) != 0)
        b.upper = m.captured(2).toDouble() + 1;
    return b;
}

std::optional<double> exactAgeOfDeath(const QString& label, double fraction) {
    const auto b = ageGroupBounds(label);
    if (!b || !(fraction >= 0 && fraction <= 1))
        return std::nullopt;
    if (!b->upper)
        return b->lower;
    return b->lower + fraction * (*b->upper - b->lower);
}

} // namespace vesk
