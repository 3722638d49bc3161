#include "demography/open_interval.h"

#include "demography/open_interval_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "platform/texts.h"

namespace vesk {

using namespace runtime_arithmetic;

bool isOaigdBoai(double boai) {
    for (int b = 45; b <= 85; b += 5)
        if (boai == b)
            return true;
    return false;
}

Cell FnOIAGD(const QString& family, int boai, std::optional<double> ratio, std::optional<double> pgr,
             const CellArray& table) {
    if (!isOaigdBoai(boai))
        return Cell::null();
    if (table.rank() != 2 || table.size(1) < 5)
        return Cell();
    const QString wanted = family.trimmed().toUpper();
    for (int i = table.lbound(0); i <= table.ubound(0); ++i) {
        const int c0 = table.lbound(1);
        if (table(i, c0).toString().trimmed().toUpper() != wanted || textNumber(table(i, c0 + 1).toString()) != boai)
            continue;
        const double a = operand(table(i, c0 + 2)), b = operand(table(i, c0 + 3)), c = operand(table(i, c0 + 4));
        if (!ratio && !pgr)
            return Cell(a);
        if (!ratio)
            return Cell(finite(c * ex(*pgr) + a));
        if (!pgr)
            return Cell(finite(a + *ratio * b));
        return Cell(finite(c * ex(*pgr) + (*ratio * b + a)));
    }
    return Cell();
}

Cell FnOIAGD(const QString& family, int boai, std::optional<double> ratio, std::optional<double> pgr) {
    return FnOIAGD(family, boai, ratio, pgr, settings().MtxOAIGD);
}

QString oaigdGrowthRateRefusal(double pgr) {
    if (pgr >= kOaigdLowestGrowth && pgr <= kOaigdHighestGrowth)
        return QString();
    return text(open_interval_texts::kGrowthOutsideFit).arg(pgr);
}

} // namespace vesk
