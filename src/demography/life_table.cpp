#include "demography/life_table.h"

#include "demography/life_table_run.h"
#include "demography/life_table_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <stdexcept>

namespace vesk {

using namespace runtime_arithmetic;

namespace {

std::optional<double> numberOrNone(const QString& text) {
    if (text.trimmed().isEmpty())
        return std::nullopt;
    return textNumber(text);
}

void showFault(int number, const QString& words) {
    if (number > 0)
        prompts().ask(words, Buttons::Ok, Icon::Critical, text(life_table_texts::kErrorTitle));
}

} // namespace

LifeTableSettings lifeTableSettings(const VeskSettings& s) {
    LifeTableSettings o;
    o.radix = s.LTRadix == 0 ? 1.0 : s.LTRadix;
    o.kfLower = numberOrNone(s.LTKFlwrLmt);
    o.kfUpper = numberOrNone(s.LTKFupprLmt);
    o.greval = numberOrNone(s.LTGreval).value_or(kDefaultGreval);
    return o;
}

int lifeTableWidth(qint16 method) {
    return method == kLtKeyfitz || method == kLtReedMerrell ? 16 : 15;
}

double FnIMRRatio(qint16 IMR, qint16 IMRDenominator) {
    return quot(double(IMR), double(IMRDenominator));
}

double FnSeparationFactor(double R) {
    if (R <= 0.015)
        return 0.95;
    if (R <= 0.025)
        return 0.85;
    if (R <= 0.05)
        return 0.8;
    if (R <= 0.1)
        return 0.75;
    if (R <= 0.15)
        return 0.67;
    return 0.6;
}

std::optional<double> FnAxFraction(double age, std::optional<double> IMR) {
    const qint16 a = toInteger(age);
    if (a == 0) {
        if (!IMR)
            return std::nullopt;
        if (*IMR < 20)
            return 0.09;
        if (*IMR <= 40)
            return 0.15;
        if (*IMR <= 60)
            return 0.23;
        return 0.3;
    }
    if (a == 1)
        return 0.4;
    if (a >= 2)
        return 0.5;
    return std::nullopt;
}

qint32 FnSumColumn(const CellArray& table, int column, int row, int direction) {
    qint32 sum = 0;
    const auto add = [&](int i) {
        const Cell& c = table(i, column);
        sum = toLong(double(sum) + (c.isNull() ? 0.0 : operand(c)));
    };
    if (direction == 0) {
        for (int i = table.lbound(0); i <= row; ++i)
            add(i);
    } else {
        for (int i = table.ubound(0); i >= row; --i)
            add(i);
    }
    return sum;
}

Cell FnLifeTable(const Cell& rates, qint16 IMR, qint16 IMRDenominator, qint16 PGR, qint16 method,
                 const Cell& adjust, const LifeTableSettings& options) {
    if (!rates.isArray() || rates.array().rank() != 2)
        return Cell::boolean(false);
    const CellArray& input = rates.array();
    if (input.ubound(1) < 2 && method == kLtKeyfitz)
        return Cell::boolean(false);
    try {
        LifeTableRun run(input, IMR, PGR, method, options);
        run.compute(FnIMRRatio(IMR, IMRDenominator));
        run.adjust(adjust);
        return Cell(run.take());
    } catch (const RuntimeError& e) {
        showFault(e.number, e.words);
    } catch (const std::out_of_range&) {
        showFault(runtime_error::kSubscriptOutOfRange, runtimeWords(runtime_error::kSubscriptOutOfRange));
    }
    return Cell();
}

Cell FnLifeTable(const Cell& rates, qint16 IMR, qint16 IMRDenominator, qint16 PGR, qint16 method,
                 const Cell& adjust) {
    return FnLifeTable(rates, IMR, IMRDenominator, PGR, method, adjust, lifeTableSettings());
}

} // namespace vesk
