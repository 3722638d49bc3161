#include "burden/age_at_death.h"

#include "burden/basic_arrays.h"
#include "demography/life_table.h"
#include "demography/open_interval.h"
#include "foundation/runtime_arithmetic.h"
#include "study/asg_labels.h"

namespace vesk {

namespace {

std::optional<double> valueAt(const CellArray& a, int y, int b, int age, int column) {
    if (a.rank() != kAgeArrRank || age < a.lbound(kAgeDimRow) || age > a.ubound(kAgeDimRow))
        return std::nullopt;
    const Cell& v = a(y, b, age, column);
    if (v.isNull())
        return std::nullopt;
    return runtime_arithmetic::operand(v);
}

// Deaths of one sex at `from` and over in the single-year array.
double deathsFrom(const CellArray& d, int y, int b, int from, int column) {
    double sum = 0;
    for (int x = from; d.rank() == kAgeArrRank && x <= d.ubound(kAgeDimRow); ++x)
        sum += valueAt(d, y, b, x, column).value_or(0);
    return sum;
}

Cell closedMean(const CellArray& pop, int y, int b, int start, int end, int column, std::optional<double> imr) {
    double weighted = 0, weights = 0;
    for (int x = start; x < end; ++x) {
        const auto w = valueAt(pop, y, b, x, column);
        const auto f = FnAxFraction(x, imr);
        if (!w || !f)
            continue;
        weighted += (x + *f) * *w;
        weights += *w;
    }
    return Cell(weights == 0 ? 0.0 : weighted / weights);
}

} // namespace

CellArray FnAgeAtDeath(const Cell& labels, const CellArray& pop, const CellArray& deaths, int y, int b,
                       const DemographicParameters& p) {
    const CellArray& l = labels.array();
    CellArray out({l.size(0), 2});
    for (int m = 0; m < l.size(0); ++m) {
        const QString label = l(l.lbound(0) + m).toString();
        out(m, 0) = Cell(label);
        const QString sex = label.trimmed().left(1).toUpper();
        const double start = FnAsgStart(label);
        const Cell end = FnAsgEnd(label);
        if (end.isNumber()) {
            out(m, 1) = closedMean(pop, y, b, int(start), int(end.toDouble()), ageColumnOfSex(sex), p.imr);
            continue;
        }
        if (sex == QLatin1String("P") || !end.isText()) {
            out(m, 1) = Cell::null();
            continue;
        }
        const double above10 = deathsFrom(deaths, y, b, 10, ageColumnOfSex(sex));
        const std::optional<double> ratio =
            above10 > 0 ? std::optional<double>(deathsFrom(deaths, y, b, 45, ageColumnOfSex(sex)) / above10) : std::nullopt;
        const Cell beyond = FnOIAGD(p.family, int(start), ratio, p.pgr);
        out(m, 1) = beyond.isNumber() ? Cell(start + beyond.toDouble()) : Cell::null();
    }
    return out;
}

} // namespace vesk
