#include "demography/life_table_tool.h"

#include "demography/life_table.h"
#include "demography/life_table_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <cmath>

namespace vesk {

namespace lt = life_table_texts;

namespace {

constexpr double kOldestLastAge = 32767; // a start age is a 16-bit integer to the engine

void say(const QString& message, const char* title = lt::kEntryTitle) {
    prompts().ask(message, Buttons::Ok, Icon::Warning, text(title));
}

bool filled(const QString& s) {
    return !s.trimmed().isEmpty();
}

QString cellText(const CellArray& g, int row, int c) {
    return c <= g.ubound(1) ? g(row, c).toString() : QString();
}

bool checkImr(const LifeTableToolInput& in) {
    if (!filled(in.imr) || !filled(in.imrDenominator))
        return true;
    const double ratio = Val(in.imr) / Val(in.imrDenominator);
    if (std::isfinite(ratio) && ratio >= 0 && ratio <= 1)
        return true;
    say(text(lt::kImrRange));
    return false;
}

bool takeGreville(const LifeTableToolInput& in, VeskSettings& s) {
    const double c = Val(in.greville);
    if (filled(in.greville) && c != 0)
        s.LTGreval = in.greville.trimmed();
    if (in.method == kLtGreville && c == 0) {
        say(text(lt::kGrevilleZero));
        return false;
    }
    return true;
}

// The Keyfitz limits go into the settings whichever method is chosen, and are checked against the
// ages of the grid.
bool takeKeyfitzLimits(const LifeTableToolInput& in, VeskSettings& s) {
    s.LTKFlwrLmt = in.kfLower.trimmed();
    s.LTKFupprLmt = in.kfUpper.trimmed();
    const CellArray& g = in.grid;
    const double first = Val(cellText(g, g.lbound(0), 0)), last = Val(cellText(g, g.ubound(0), 0));
    const double lower = Val(in.kfLower), upper = Val(in.kfUpper);
    if (lower < first || lower > last) {
        say(text(lt::kKeyfitzLower));
        return false;
    }
    if (upper < first || upper > last) {
        say(text(lt::kKeyfitzUpper));
        return false;
    }
    if (upper < lower) {
        say(text(lt::kKeyfitzOrder));
        return false;
    }
    return true;
}

bool gridFilled(const CellArray& g) {
    if (g.rank() != 2 || g.size(0) == 0 || g.size(1) < 2)
        return false;
    for (int i = g.lbound(0); i <= g.ubound(0); ++i)
        if (!filled(cellText(g, i, 0)) || !filled(cellText(g, i, 1)))
            return false;
    return true;
}

// The engine's input: age, rate (divided by the ASDR denominator when that is a number other than
// 0, each quotient within 0 to 1) and, where the grid has it, population.
std::optional<CellArray> engineRates(const LifeTableToolInput& in) {
    const CellArray& g = in.grid;
    const auto denominator = runtime_arithmetic::textNumber(in.asdrDenominator);
    const bool divide = denominator && *denominator != 0;
    const int cols = std::min(g.size(1), 3);
    CellArray r({g.size(0), cols});
    for (int i = 0; i < g.size(0); ++i) {
        const int row = g.lbound(0) + i;
        for (int c = 0; c < cols; ++c)
            r(i, c) = Cell(cellText(g, row, c).trimmed());
        if (!divide)
            continue;
        const QString rate = cellText(g, row, 1).trimmed();
        const double q = Val(rate) / *denominator;
        if (!(q >= 0 && q <= 1)) {
            say(text(lt::kAsdrOpen) + rate + text(lt::kAsdrForAge) + cellText(g, row, 0).trimmed() +
                text(lt::kAsdrDividedBy) + u'\n' + text(lt::kAsdrRange) + u'\n' + text(lt::kAsdrCheck));
            return std::nullopt;
        }
        r(i, 1) = Cell(q);
    }
    return r;
}

CellArray withoutAdjusted(const CellArray& t, qint16 method) {
    const int cols = lifeTableWidth(method) - 3;
    CellArray out({t.size(0), cols});
    for (int i = 0; i < t.size(0); ++i)
        for (int c = 0; c < cols; ++c)
            out(i, c) = t(t.lbound(0) + i, c);
    return out;
}

QStringList listOf(const auto& texts) {
    QStringList out;
    for (const char* t : texts)
        out << QString::fromLatin1(t);
    return out;
}

QStringList withThirteenth(QStringList list, qint16 method) {
    if (method == kLtKeyfitz)
        list << QString::fromLatin1(lt::kHeadPop);
    else if (method == kLtReedMerrell)
        list << QString::fromLatin1(lt::kHeadRSlx);
    return list;
}

} // namespace

std::optional<std::vector<int>> lifeTableAgeLadder(const QString& lastAge, InitialAgeGroups first, int step) {
    if (!filled(lastAge)) {
        say(text(lt::kLastAgeEmpty));
        return std::nullopt;
    }
    const double last = Val(lastAge);
    if (last < 0 || last > kOldestLastAge || std::fmod(last, step) != 0) {
        say(text(step == 10 ? lt::kNotTenYears : lt::kNotFiveYears) + text(lt::kValidLastAge));
        return std::nullopt;
    }
    std::vector<int> initial{0};
    if (first == InitialAgeGroups::ZeroOneFour)
        initial = {0, 1};
    else if (first == InitialAgeGroups::ZeroOneTwoFour)
        initial = {0, 1, 2};
    const int middle = first == InitialAgeGroups::ZeroTen ? 10 : 5;
    std::vector<int> ages;
    for (int a : initial)
        if (a <= last)
            ages.push_back(a);
    for (int a = middle; a <= last; a = (a / step + 1) * step)
        ages.push_back(a);
    return ages;
}

std::optional<LifeTableToolResult> generateLifeTable(const LifeTableToolInput& in, VeskSettings& s) {
    if (!checkImr(in) || !takeGreville(in, s))
        return std::nullopt;
    if (!gridFilled(in.grid)) {
        say(text(lt::kGridEmpty), lt::kGridTitle);
        return std::nullopt;
    }
    if (!takeKeyfitzLimits(in, s))
        return std::nullopt;
    const auto rates = engineRates(in);
    if (!rates)
        return std::nullopt;
    qint16 imr = 0, denominator = 0, pgr = 0;
    try {
        imr = runtime_arithmetic::toInteger(Val(in.imr));
        denominator = runtime_arithmetic::toInteger(Val(in.imrDenominator));
        pgr = runtime_arithmetic::toInteger(Val(in.pgr));
    } catch (const RuntimeError& e) {
        say(e.words);
        return std::nullopt;
    }
    const Cell t = FnLifeTable(Cell(*rates), imr, denominator, pgr, in.method, Cell(), lifeTableSettings(s));
    if (!t.isArray()) {
        say(text(lt::kUnableToCompute) + u'\r' + text(lt::kCheckSource));
        return std::nullopt;
    }
    return LifeTableToolResult{withoutAdjusted(t.array(), in.method), lifeTableHeads(in.method),
                               lifeTableFieldNames(in.method)};
}

QStringList lifeTableHeads(qint16 method) {
    return withThirteenth(listOf(lt::kHeads), method);
}

QStringList lifeTableFieldNames(qint16 method) {
    return withThirteenth(listOf(lt::kFieldNames), method);
}

QString lifeTableShown(const Cell& c, int decimals) {
    if (!c.isNumber())
        return c.toString();
    return formatNumber(c.toDouble(), QStringLiteral("#.") + QString(qMax(decimals, 0), u'#'));
}

LifeTableToolResult modelLifeTableView(const CdLifeTable& t) {
    LifeTableToolResult r;
    r.heads = QStringList{"age", "n", "nqx", "lx", "ndx", "nLx", "nmx", "nax", "Tx", "ex"};
    r.fieldNames = r.heads;
    r.table = CellArray({kCdAgeGroups, int(r.heads.size())});
    for (int i = 0; i < kCdAgeGroups; ++i) {
        const double v[] = {t.age[i], t.n[i], t.nqx[i], t.lx[i], t.ndx[i], t.nLx[i], t.nmx[i], t.nax[i], t.Tx[i], t.ex[i]};
        for (int c = 0; c < int(r.heads.size()); ++c)
            r.table(i, c) = std::isnan(v[c]) ? Cell(QString::fromLatin1(lt::kOpenInterval)) : Cell(v[c]);
    }
    return r;
}

CellArray modelRatesGrid(const CdLifeTable& t) {
    CellArray g({kCdAgeGroups, 2});
    for (int i = 0; i < kCdAgeGroups; ++i) {
        g(i, 0) = Cell(shortestNumber(t.age[i]));
        g(i, 1) = Cell(shortestNumber(i + 1 < kCdAgeGroups ? t.nmx[i] : t.lx[i] / t.Tx[i]));
    }
    return g;
}

} // namespace vesk
