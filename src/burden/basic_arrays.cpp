#include "burden/basic_arrays.h"

#include "burden/computation_arrays.h"
#include "foundation/runtime_arithmetic.h"
#include "study/asg_labels.h"

#include <algorithm>

namespace vesk {

namespace {

bool inside(double bai, double start, const Cell& end) {
    if (bai < start)
        return false;
    if (end.isText())
        return end.toString().compare(QLatin1String("W"), Qt::CaseInsensitive) == 0;
    return end.isNumber() && bai < end.toDouble();
}

} // namespace

int ageColumnOfSex(const QString& label) {
    const QString sex = label.trimmed().left(1).toUpper();
    if (sex == QLatin1String("F"))
        return kAgeFemale;
    if (sex == QLatin1String("M"))
        return kAgeMale;
    return kAgeBoth;
}

Cell FnMapBasicToAsg(const Cell& labels, const Cell& basic) {
    if (!labels.isArray() || !basic.isArray() || basic.array().rank() != kAgeArrRank)
        return Cell();
    QStringList sorted;
    for (int i = labels.array().lbound(0); i <= labels.array().ubound(0); ++i)
        sorted << labels.array()(i).toString();
    std::sort(sorted.begin(), sorted.end());
    const CellArray& a = basic.array();
    CellArray out({a.size(kAgeDimYear), a.size(kAgeDimBPU), int(sorted.size()), kAsgMapLastSlot + 1});
    for (int g = 0; g < sorted.size(); ++g) {
        const double start = FnAsgStart(sorted[g]);
        const Cell end = FnAsgEnd(sorted[g]);
        const int column = ageColumnOfSex(sorted[g]);
        for (int y = 0; y < a.size(kAgeDimYear); ++y)
            for (int b = 0; b < a.size(kAgeDimBPU); ++b) {
                out(y, b, g, kAsgMapAsg) = Cell(sorted[g]);
                Cell& sum = out(y, b, g, kAsgMapValue);
                for (int r = 0; r < a.size(kAgeDimRow); ++r) {
                    const Cell& bai = a(y, b, r, kAgeBai);
                    if (bai.isNull() || bai.isEmpty() || !inside(runtime_arithmetic::operand(bai), start, end))
                        continue;
                    const Cell& v = a(y, b, r, column);
                    if (v.isNull()) {
                        sum = Cell::null();
                        continue;
                    }
                    if (!sum.isNull())
                        sum = Cell(runtime_arithmetic::operand(sum) + runtime_arithmetic::operand(v));
                }
            }
    }
    return Cell(std::move(out));
}

} // namespace vesk
