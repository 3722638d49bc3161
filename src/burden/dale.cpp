#include "burden/dale.h"

#include "burden/basic_arrays.h"
#include "burden/cell_guard.h"
#include "burden/compute_run.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/dale_texts.h"
#include "burden/input_loaders_support.h"
#include "database/study_context.h"
#include "demography/life_table.h"
#include "foundation/error_store.h"
#include "foundation/runtime_arithmetic.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"
#include "study/asg_labels.h"

#include <QHash>
#include <array>
#include <vector>

namespace vesk {

namespace dt = dale_texts;
namespace ra = runtime_arithmetic;
using loaders::entry;

namespace {

constexpr int kFracLabel = 0, kFracF = 1, kFracM = 2, kFracP = 3;
constexpr int kTotLabel = 0, kTotIYLD = 1, kTotPYLD = 2;
constexpr int kAsdrBai = 0, kAsdrF = 1, kAsdrM = 2, kAsdrP = 3;
constexpr int kFractionError = -25;

int size(const Cell& vector) {
    return vector.isArray() ? vector.array().size(0) : 0;
}

int sexColumn(const QString& sex, int f, int m, int p) {
    return sex == QLatin1String("F") ? f : sex == QLatin1String("M") ? m : p;
}

// The key of a unit's rows: year and BPU as text, as DatASDR holds them.
QString unitKey(const QString& year, const QString& bpu) {
    return year + QChar(0x1F) + bpu.trimmed().toUpper();
}

Cell quotient(const Cell& numerator, const Cell& denominator) {
    return Cell(ra::quot(ra::operand(numerator), ra::operand(denominator)));
}

} // namespace

QStringList daleFieldNames() {
    return {QStringLiteral("E0_F"), QStringLiteral("DALE_F"), QStringLiteral("E0_M"), QStringLiteral("DALE_M"),
            QStringLiteral("E0_P"), QStringLiteral("DALE_P"), QStringLiteral("HE_F"), QStringLiteral("HE_M"),
            QStringLiteral("HE_P")};
}

std::optional<Cell> FnLoadASDRAll(const DbConnection& db, const Cell& years, const Cell& units, bool* noData,
                                  QString* error) {
    *noData = false;
    QSqlError e;
    auto q = db.query(QStringLiteral("SELECT YEAR, BPUID, BAI, F, M, P FROM DatASDR ORDER BY rowid"), {}, &e);
    if (!q) {
        *error = engineDescription(e);
        return std::nullopt;
    }
    QHash<QString, std::vector<std::array<Cell, 4>>> byUnit;
    bool any = false;
    while (q->next()) {
        any = true;
        byUnit[unitKey(q->value(0).toString(), q->value(1).toString())].push_back(
            {cellFromVariant(q->value(2)), cellFromVariant(q->value(3)), cellFromVariant(q->value(4)),
             cellFromVariant(q->value(5))});
    }
    if (!any) {
        *noData = true;
        return Cell();
    }
    std::size_t rows = 1;
    for (const auto& r : byUnit)
        rows = std::max(rows, r.size());
    CellArray out({size(years), size(units), int(rows), kAsdrP + 1});
    for (int y = 0; y < size(years); ++y)
        for (int b = 0; b < size(units); ++b) {
            const auto it = byUnit.constFind(unitKey(entry(years, y).toString(), entry(units, b).toString()));
            if (it == byUnit.cend())
                continue;
            for (std::size_t r = 0; r < it->size(); ++r)
                for (int k = 0; k <= kAsdrP; ++k)
                    out(y, b, int(r), k) = (*it)[r][std::size_t(k)];
        }
    return Cell(std::move(out));
}

Cell FnSumYldCauses(const Cell& arrYld) {
    if (!arrYld.isArray() || arrYld.array().rank() != kComputationRank)
        return Cell();
    const CellArray& a = arrYld.array();
    CellArray out({a.size(kDimYear), a.size(kDimBPU), a.size(kDimDAP), 1, a.size(kDimAsg), kTotPYLD + 1});
    const auto add = [](Cell& into, const Cell& v) {
        if (!v.isNull() && !v.isEmpty())
            into = ra::plus(into, Cell(ra::operand(v)));
    };
    for (int y = 0; y < a.size(kDimYear); ++y)
        for (int b = 0; b < a.size(kDimBPU); ++b)
            for (int d = 0; d < a.size(kDimDAP); ++d)
                for (int c = 0; c < a.size(kDimCause); ++c)
                    for (int m = 0; m < a.size(kDimAsg); ++m)
                        guarded(dt::kSourceDale, [&] {
                            const Cell& label = a(y, b, d, c, m, kYldAsg);
                            if (!label.isEmpty() && !label.isNull())
                                out(y, b, d, 0, m, kTotLabel) = label;
                            add(out(y, b, d, 0, m, kTotIYLD), a(y, b, d, c, m, kYldIYLD));
                            add(out(y, b, d, 0, m, kTotPYLD), a(y, b, d, c, m, kYldPYLD));
                        });
    return Cell(std::move(out));
}

Cell FnDaleFractions(const Cell& arrYldTot, const Cell& population) {
    if (!arrYldTot.isArray())
        return Cell();
    const CellArray& t = arrYldTot.array();
    const int groups = t.size(4), rows = groups / 2;
    CellArray out({t.size(0), t.size(1), t.size(2), 1, rows, kFracP + 1});
    for (int y = 0; y < t.size(0); ++y)
        for (int b = 0; b < t.size(1); ++b) {
            // The population of each label of this year and unit.
            QHash<QString, Cell> pop;
            if (population.isArray()) {
                const CellArray& p = population.array();
                if (y < p.size(kAsgMapDimYear) && b < p.size(kAsgMapDimBPU))
                    for (int g = 0; g < p.size(kAsgMapDimAsg); ++g)
                        pop.insert(p(y, b, g, kAsgMapAsg).toString(), p(y, b, g, kAsgMapValue));
            }
            for (int d = 0; d < t.size(2); ++d) {
                int female = 0, male = 0;
                const auto perSex = static_cast<std::size_t>(rows);
                std::vector<Cell> iyldF(perSex), iyldM(perSex), popF(perSex), popM(perSex);
                for (int m = 0; m < groups; ++m) {
                    const QString label = t(y, b, d, 0, m, kTotLabel).toString();
                    const Cell& iyld = t(y, b, d, 0, m, kTotIYLD);
                    const Cell people = pop.value(label);
                    if (label.startsWith(QLatin1Char('F')) && female < rows) {
                        const int n = female++;
                        out(y, b, d, 0, n, kFracLabel) = Cell(QStringLiteral("A") + label.mid(1));
                        iyldF[std::size_t(n)] = iyld;
                        popF[std::size_t(n)] = people;
                        guarded(dt::kSourceFractions, [&] { out(y, b, d, 0, n, kFracF) = quotient(iyld, people); });
                    } else if (label.startsWith(QLatin1Char('M')) && male < rows) {
                        const int n = male++;
                        iyldM[std::size_t(n)] = iyld;
                        popM[std::size_t(n)] = people;
                        guarded(dt::kSourceFractions, [&] { out(y, b, d, 0, n, kFracM) = quotient(iyld, people); });
                    }
                }
                for (int n = 0; n < rows; ++n)
                    guarded(dt::kSourceFractions, [&] {
                        const std::size_t k = std::size_t(n);
                        out(y, b, d, 0, n, kFracP) = quotient(ra::plus(iyldF[k], iyldM[k]), ra::plus(popF[k], popM[k]));
                    });
            }
        }
    return Cell(std::move(out));
}

Cell FnRatesFor(const Cell& arrASDRAll, int year, int unit, const QString& sex) {
    if (!arrASDRAll.isArray())
        return Cell();
    const CellArray& a = arrASDRAll.array();
    if (year >= a.size(0) || unit >= a.size(1))
        return Cell();
    int rows = 0;
    while (rows < a.size(2) && !a(year, unit, rows, kAsdrBai).isEmpty() && !a(year, unit, rows, kAsdrBai).isNull())
        ++rows;
    if (rows == 0)
        return Cell();
    const int column = sexColumn(sex, kAsdrF, kAsdrM, kAsdrP);
    CellArray out({rows, 2});
    for (int r = 0; r < rows; ++r) {
        out(r, 0) = a(year, unit, r, kAsdrBai);
        out(r, 1) = a(year, unit, r, column);
    }
    return Cell(std::move(out));
}

Cell FnAdjustFor(const Cell& arrDaleFrac, int year, int unit, int dap, const QString& sex, const Cell& rates) {
    if (!rates.isArray())
        return Cell();
    const CellArray& r = rates.array();
    CellArray out(std::vector<Bound>{{r.lbound(0), r.ubound(0)}});
    if (!arrDaleFrac.isArray())
        return Cell(std::move(out));
    const CellArray& f = arrDaleFrac.array();
    const int column = sexColumn(sex, kFracF, kFracM, kFracP);
    for (int n = 0; n < f.size(4); ++n) {
        const QString label = f(year, unit, dap, 0, n, kFracLabel).toString();
        const Cell& fraction = f(year, unit, dap, 0, n, column);
        if (label.isEmpty() || fraction.isEmpty() || fraction.isNull())
            continue;
        const double start = FnAsgStart(label);
        const Cell end = FnAsgEnd(label);
        const Cell rounded(roundHalfEven(ra::operand(fraction), 4));
        for (int i = r.lbound(0); i <= r.ubound(0); ++i) {
            const double bai = ra::operand(r(i, r.lbound(1)));
            if (end.isNumber() ? start <= bai && bai < end.toDouble() : bai >= start)
                out(i) = rounded;
        }
    }
    return Cell(std::move(out));
}

bool FnFracValid(const Cell& adjust) {
    if (!adjust.isArray())
        return true;
    const CellArray& a = adjust.array();
    for (std::size_t k = 0; k < a.count(); ++k) {
        const Cell& c = a.flat(k);
        if (!c.isEmpty() && !c.isNull() && ra::operand(c) > 1)
            return false;
    }
    return true;
}

std::optional<DaleFigures> daleFigures(const Cell& table) {
    if (!table.isArray())
        return std::nullopt;
    const CellArray& t = table.array();
    const int first = t.lbound(0), c0 = t.lbound(1), last = t.ubound(1);
    const int adjustedLx = last - 2;
    double person = 0;
    for (int i = first; i <= t.ubound(0); ++i)
        person += ra::operand(t(i, adjustedLx));
    const double l0 = ra::operand(t(first, c0 + life_table_col::lx));
    return DaleFigures{t(first, c0 + life_table_col::Ex), t(first, last), Cell(ra::quot(person, l0))};
}

namespace {

void fillSex(CellArray& out, int y, int b, int d, const QString& sex, const Cell& asdr, const Cell& fractions,
             const QString& bpu) {
    const int e0 = sexColumn(sex, dale_slot::kE0F, dale_slot::kE0M, dale_slot::kE0P);
    const int he = sexColumn(sex, dale_slot::kHeF, dale_slot::kHeM, dale_slot::kHeP);
    guarded(dt::kSourceDale, [&] {
        const Cell rates = FnRatesFor(asdr, y, b, sex);
        const Cell adjust = FnAdjustFor(fractions, y, b, d, sex, rates);
        if (!FnFracValid(adjust))
            ErrorStore(kFractionError, text(dt::kFractionAbove1) + bpu, text(dt::kSourceDale));
        const auto figures = daleFigures(FnLifeTable(rates, 0, 1000, 0, kLtStandard, adjust));
        if (!figures)
            return;
        out(y, b, d, e0) = figures->e0;
        out(y, b, d, e0 + 1) = figures->dale;
        out(y, b, d, he) = figures->he;
    });
}

} // namespace

bool computeDale(StudyContext& study, Computation& comp, const QString& settingsFile) {
    if (!study.StudyDB)
        return false;
    bool noData = false;
    QString error;
    const auto asdr = FnLoadASDRAll(*study.StudyDB, study.VctrYrLst, study.VctrBPULst, &noData, &error);
    if (!asdr) {
        prompts().ask(error, Buttons::Ok, Icon::Critical, text(dt::kComputationTitle));
        return false;
    }
    if (noData) {
        prompts().ask(text(dt::kNoAsdr));
        return false;
    }
    if (!comp.ArrPop4D.isArray())
        comp.ArrPop4D = singleYearPopulation(study, settingsFile);
    const Cell fractions =
        FnDaleFractions(FnSumYldCauses(comp.ArrYld), FnMapBasicToAsg(study.VctrYLDAsg, comp.ArrPop4D));
    const int years = size(study.VctrYrLst), units = size(study.VctrBPULst);
    const int daps = comp.MtxDAP.isArray() ? comp.MtxDAP.array().size(0) : 0;
    CellArray out({years, units, daps, dale_slot::kLast + 1});
    for (int y = 0; y < years; ++y)
        for (int b = 0; b < units; ++b)
            for (int d = 0; d < daps; ++d) {
                const Cell& bpu = entry(study.VctrBPULst, b);
                out(y, b, d, dale_slot::kRegion) = bpu;
                for (const char* sex : {"F", "M", "P"})
                    fillSex(out, y, b, d, QString::fromLatin1(sex), *asdr, fractions, bpu.toString());
            }
    comp.ArrDale = Cell(std::move(out));
    return true;
}

bool procCompDALE(StudyContext& study, Computation& comp, const std::function<void()>& showErrors,
                  const QString& settingsFile) {
    if (!comp.MtxDAP.isArray()) {
        prompts().ask(text(dt::kNoMtxDap), Buttons::Ok, Icon::None, text(dt::kComputationTitle));
        return false;
    }
    const bool computed = computeDale(study, comp, settingsFile);
    const int errors = errorStoreCount();
    if (errors == 0) {
        if (computed)
            prompts().ask(text(dt::kDone), Buttons::Ok, Icon::None, text(dt::kReportTitle));
    } else {
        if (prompts().ask(text(errors == 1 ? dt::kErrorsOne : dt::kErrorsMany), Buttons::YesNo, Icon::None,
                          text(dt::kReportTitle)) == Answer::Yes &&
            showErrors)
            showErrors();
        clearErrorStore();
    }
    return computed;
}

Cell daleRows(const Cell& arrDale, int year, int dap, std::optional<int> decimals) {
    if (!arrDale.isArray())
        return Cell();
    const CellArray& a = arrDale.array();
    if (year < 0 || year >= a.size(0) || dap < 0 || dap >= a.size(2))
        return Cell();
    CellArray out({a.size(1), dale_slot::kLast + 1});
    for (int b = 0; b < a.size(1); ++b)
        for (int k = 0; k <= dale_slot::kLast; ++k) {
            const Cell& v = a(year, b, dap, k);
            out(b, k) = decimals && k != dale_slot::kRegion && v.isNumber() ? Cell(roundHalfEven(v.toDouble(), *decimals))
                                                                            : v;
        }
    return Cell(std::move(out));
}

} // namespace vesk
