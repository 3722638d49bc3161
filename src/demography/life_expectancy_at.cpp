#include "demography/life_expectancy_at.h"

#include "foundation/runtime_error.h"
#include "platform/runtime.h"

#include <stdexcept>

namespace vesk {

namespace {

int columnOf(const QString& sexLetter) {
    if (sexLetter == QLatin1String("F"))
        return 1;
    if (sexLetter == QLatin1String("M"))
        return 2;
    if (sexLetter == QLatin1String("P"))
        return 3;
    return 0;
}

} // namespace

float FnLifeExpAt(const CellArray& MtxLTS, float a, const QString& sexLetter) {
    const int col = columnOf(sexLetter);
    if (MtxLTS.rank() != 2 || MtxLTS.size(0) == 0)
        throw std::out_of_range(runtimeWords(runtime_error::kSubscriptOutOfRange).toStdString());

    const float whole = static_cast<float>(vbInt(a));
    const double age = whole;
    const int last = MtxLTS.ubound(0);
    if (age == MtxLTS(last, 0).toDouble())
        return toSingle(MtxLTS(last, col).toDouble());
    for (int i = MtxLTS.lbound(0); i <= last; ++i) {
        if (MtxLTS(i, 0).toDouble() != age)
            continue;
        const double lo = MtxLTS(i, col).toDouble();
        const double hi = MtxLTS(i + 1, col).toDouble();
        return toSingle(lo + static_cast<double>(a - whole) * (hi - lo));
    }
    return 0.0f;
}

} // namespace vesk
