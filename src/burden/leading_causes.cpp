#include "burden/leading_causes.h"

#include "burden/aggregation_texts.h"
#include "burden/cell_guard.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "foundation/runtime_arithmetic.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <utility>
#include <vector>

namespace vesk {

namespace {

constexpr int kTotalsCode = 0, kTotalsSum = 1, kTotalsShare = 2;

bool within(std::optional<int> chosen, int index) {
    return !chosen || *chosen == index;
}

} // namespace

Cell FnCauseTotals(const Cell& result, const Cell& labels, int slot, std::optional<int> unit, std::optional<int> dap,
                   std::optional<int> year, Progress* bar) {
    if (!result.isArray() || !labels.isArray() || (slot != 2 && slot != 3) ||
        result.array().rank() != kComputationRank)
        return Cell();
    const CellArray& a = result.array();
    const CellArray& causes = labels.array()(labels.array().lbound(0) + kLblCauses).array();
    const int years = a.size(kDimYear), daps = a.size(kDimDAP), count = a.size(kDimCause);
    CellArray out({years, 1, daps, count, kTotalsShare + 1});
    std::vector<double> total(std::size_t(years * daps), 0.0);
    if (bar)
        bar->setRange(0, count + 1);
    for (int c = 0; c < count; ++c) {
        if (bar)
            bar->setValue(c + 1);
        for (int y = 0; y < years; ++y)
            for (int d = 0; d < daps; ++d) {
                Cell& sum = out(y, 0, d, c, kTotalsSum);
                out(y, 0, d, c, kTotalsCode) = causes(causes.lbound(0) + c);
                out(y, 0, d, c, kTotalsShare) = Cell(0.0);
                double s = 0;
                if (within(year, y) && within(dap, d))
                    for (int b = 0; b < a.size(kDimBPU); ++b)
                        for (int m = 0; within(unit, b) && m < a.size(kDimAsg); ++m)
                            guarded("FnCauseTotals", [&] { s += runtime_arithmetic::operand(a(y, b, d, c, m, slot)); });
                sum = Cell(s);
                total[std::size_t(y * daps + d)] += s;
            }
    }
    for (int y = 0; y < years; ++y)
        for (int d = 0; d < daps; ++d) {
            const double t = total[std::size_t(y * daps + d)];
            if (t > 0)
                for (int c = 0; c < count; ++c)
                    out(y, 0, d, c, kTotalsShare) =
                        Cell(formatNumber(100.0 * out(y, 0, d, c, kTotalsSum).toDouble() / t, QStringLiteral("0.000")));
        }
    return Cell(std::move(out));
}

void FnSortMtx(CellArray& m, int column, int direction) {
    const int first = m.lbound(0), last = m.ubound(0), col = m.lbound(1) + column;
    const auto value = [&](int r) { return Val(m(r, col).toString()); };
    for (int i = first; i < last; ++i)
        for (int j = i + 1; j <= last; ++j) {
            const bool swap = direction == 0 ? value(j) > value(i) : value(j) < value(i);
            if (!swap)
                continue;
            for (int k = m.lbound(1); k <= m.ubound(1); ++k)
                std::swap(m(i, k), m(j, k));
        }
}

CellArray FnMoveCol(const CellArray& m, int from, int to) {
    CellArray out({m.size(0), m.size(1)});
    QList<int> order;
    for (int k = 0; k < m.size(1); ++k)
        if (k != from)
            order << k;
    order.insert(to, from);
    for (int r = 0; r < m.size(0); ++r)
        for (int k = 0; k < m.size(1); ++k)
            out(r, k) = m(m.lbound(0) + r, m.lbound(1) + order[k]);
    return out;
}

QString FnDiseaseName(const DbConnection& db, const QString& code) {
    auto q = db.query(QStringLiteral("SELECT Disease FROM _DctBDM WHERE CobCd = ?"), {code});
    return q && q->next() ? q->value(0).toString() : QString();
}

CellArray leadingCausesReport(const Cell& totals, int y, int d, int n, const std::function<QString(const QString&)>& name) {
    const CellArray& t = totals.array();
    const int causes = t.size(kDimCause);
    CellArray m({causes, 4});
    for (int c = 0; c < causes; ++c)
        for (int k = kTotalsCode; k <= kTotalsShare; ++k)
            m(c, k) = t(y, 0, d, c, k);
    FnSortMtx(m, kTotalsShare, 0);
    for (int c = 0; c < causes; ++c)
        m(c, 3) = Cell(name(m(c, kTotalsCode).toString()));
    const CellArray moved = FnMoveCol(m, 3, 1);
    const int rows = std::min(n, causes);
    CellArray out({rows, 4});
    for (int r = 0; r < rows; ++r)
        for (int k = 0; k < 4; ++k)
            out(r, k) = moved(r, k);
    return out;
}

QStringList leadingCausesHeads(const QString& measure) {
    return {QStringLiteral("Cob Code"), QStringLiteral("Cob Description"), measure,
            measure + QStringLiteral(" Percentage")};
}

} // namespace vesk

namespace vesk {

namespace lt = aggregation_texts;

std::optional<BurdenMeasure> burdenMeasureNamed(const QString& name) {
    for (BurdenMeasure m : {BurdenMeasure::YLL, BurdenMeasure::IYLD, BurdenMeasure::PYLD, BurdenMeasure::IDALY,
                            BurdenMeasure::PDALY})
        if (burdenMeasureName(m).compare(name.trimmed(), Qt::CaseInsensitive) == 0)
            return m;
    return std::nullopt;
}

QString burdenMeasureName(BurdenMeasure measure) {
    switch (measure) {
    case BurdenMeasure::YLL:
        return QStringLiteral("YLL");
    case BurdenMeasure::IYLD:
        return QStringLiteral("IYLD");
    case BurdenMeasure::PYLD:
        return QStringLiteral("PYLD");
    case BurdenMeasure::IDALY:
        return QStringLiteral("IDALY");
    case BurdenMeasure::PDALY:
        break;
    }
    return QStringLiteral("PDALY");
}

MeasureSource measureSource(const Computation& comp, BurdenMeasure measure) {
    switch (measure) {
    case BurdenMeasure::YLL:
        return {comp.ArrYll, comp.ArrYllLbl, kYllYLL};
    case BurdenMeasure::IYLD:
        return {comp.ArrYld, comp.ArrYldLbl, kYldIYLD};
    case BurdenMeasure::PYLD:
        return {comp.ArrYld, comp.ArrYldLbl, kYldPYLD};
    case BurdenMeasure::IDALY:
        return {comp.ArrDaly, comp.ArrDalyLbl, kDalyIDALY};
    case BurdenMeasure::PDALY:
        break;
    }
    return {comp.ArrDaly, comp.ArrDalyLbl, kDalyPDALY};
}

std::optional<int> leadingCausesN(const QString& box) {
    bool ok = false;
    const int n = box.trimmed().toInt(&ok);
    if (ok && n > 0)
        return n;
    const Answer a = prompts().ask(text(lt::kLeadingAskN1) + QLatin1Char('\n') + text(lt::kLeadingAskN2),
                                   Buttons::OkCancel, Icon::None, text(lt::kLeadingAskNTitle));
    if (a != Answer::Ok)
        return std::nullopt;
    return 10;
}

std::optional<LeadingCausesTable> procNLeadCausDALY(const MeasureSource& source, BurdenMeasure measure, int unit,
                                                    int year, int dap, const QString& nBox,
                                                    const std::function<QString(const QString&)>& name) {
    if (!source.result.isArray() || !source.labels.isArray()) {
        prompts().ask(text(lt::kLeadingNotShown), Buttons::Ok, Icon::Information);
        return std::nullopt;
    }
    const std::optional<int> n = leadingCausesN(nBox);
    if (!n)
        return std::nullopt;
    const Cell totals = FnCauseTotals(source.result, source.labels, source.slot, unit, dap, year);
    if (!totals.isArray())
        return std::nullopt;
    return LeadingCausesTable{leadingCausesHeads(burdenMeasureName(measure)),
                              leadingCausesReport(totals, year, dap, *n, name)};
}

} // namespace vesk
