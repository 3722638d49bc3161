#include "burden/aggregation.h"

#include "burden/aggregation_texts.h"
#include "burden/cell_guard.h"
#include "burden/computation_arrays.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "platform/runtime.h"

#include <QStringLiteral>
#include <vector>

namespace vesk {

namespace at = aggregation_texts;

namespace {

bool isResult(const Cell& c) {
    return c.isArray() && c.array().rank() == kComputationRank;
}


QString share(double value, double total, const char* picture) {
    return formatNumber(100.0 * value / total, QString::fromLatin1(picture));
}

// Adds `add` into `into`: a Null or Empty source is skipped, the first value copied, later ones added.
void accumulate(Cell& into, const Cell& add) {
    if (add.isNull() || add.isEmpty())
        return;
    if (into.isEmpty() || into.isNull())
        into = add;
    else
        into = runtime_arithmetic::plus(into, add);
}

// The nested sequela arrays of one cause: numbers added, codes and labels from the first member.
void accumulateNested(Cell& into, const Cell& add) {
    if (!add.isArray())
        return;
    if (!into.isArray()) {
        into = add;
        return;
    }
    CellArray& to = into.array();
    const CellArray& from = add.array();
    if (to.bounds() != from.bounds())
        throw RuntimeError(runtime_error::kSubscriptOutOfRange);
    for (int s = from.lbound(0); s <= from.ubound(0); ++s)
        for (int m = from.lbound(1); m <= from.ubound(1); ++m)
            for (int k = from.lbound(2); k <= from.ubound(2); ++k) {
                Cell& cell = to(s, m, k);
                if (k == kSqlaCodeSlot || k == kYldAsg)
                    cell = cell.isEmpty() || cell.isNull() ? from(s, m, k) : cell;
                else
                    accumulate(cell, from(s, m, k));
            }
}

void addMember(CellArray& out, const CellArray& a, int y, int p, int b) {
    for (int d = 0; d < a.size(kDimDAP); ++d)
        for (int c = 0; c < a.size(kDimCause); ++c)
            for (int m = 0; m < a.size(kDimAsg); ++m)
                for (int k = 0; k < a.size(kDimSlot); ++k) {
                    Cell& to = out(y, p, d, c, m, k);
                    const Cell& from = a(y, b, d, c, m, k);
                    guarded(at::kSourceBPUToPag, [&] {
                        if (m == kSequelaHolderAsg && k == kSequelaHolderSlot && from.isArray())
                            accumulateNested(to, from);
                        else if (k == kYldAsg)
                            to = to.isEmpty() || to.isNull() ? from : to;
                        else
                            accumulate(to, from);
                    });
                }
}

Cell rollUp(const Cell& result, const CauseLevelDictionary& dict, const Cell& mtxCobCd, CauseLevel level, int slot, int dap,
            int year, const char* message) {
    try {
        if (!isResult(result) || !dict.ArrDict.isArray() || !mtxCobCd.isArray())
            throw RuntimeError(runtime_error::kTypeMismatch);
        const CellArray& a = result.array();
        const CellArray& entries = dict.ArrDict.array();
        const CellArray& causes = mtxCobCd.array();
        if (dap < 0 || dap >= a.size(kDimDAP) || year < 0 || year >= a.size(kDimYear) || slot < 0 ||
            slot >= a.size(kDimSlot) || causes.size(0) < a.size(kDimCause))
            throw RuntimeError(runtime_error::kSubscriptOutOfRange);
        const int units = a.size(kDimBPU);
        CellArray out({entries.size(0), units, 2});
        std::vector<QString> codeOf(std::size_t(a.size(kDimCause)));
        for (int c = 0; c < a.size(kDimCause); ++c)
            codeOf[std::size_t(c)] =
                FnCodeAtLevel(dict.MtxCodLevels, causes(causes.lbound(0) + c, causes.lbound(1) + kCobCdCode).toString(),
                              level)
                    .toString();
        for (int e = 0; e < entries.size(0); ++e) {
            const Cell& code = entries(entries.lbound(0) + e, entries.lbound(1));
            for (int u = 0; u < units; ++u) {
                out(e, u, 0) = code;
                Cell& sum = out(e, u, 1);
                for (int c = 0; c < a.size(kDimCause); ++c) {
                    if (codeOf[std::size_t(c)].isEmpty() || codeOf[std::size_t(c)] != code.toString())
                        continue;
                    for (int m = 0; m < a.size(kDimAsg); ++m) {
                        const Cell& v = a(year, u, dap, c, m, slot);
                        if (!v.isNull())
                            sum = runtime_arithmetic::plus(sum, Cell(v.toDouble()));
                    }
                }
            }
        }
        return Cell(std::move(out));
    } catch (const RuntimeError& e) {
        prompts().ask(QString::fromUtf8(message) + QString::number(e.number) + QLatin1Char(' ') + e.words);
    } catch (const std::out_of_range&) {
        prompts().ask(QString::fromUtf8(message) + QString::number(runtime_error::kSubscriptOutOfRange) +
                      QLatin1Char(' ') + runtimeWords(runtime_error::kSubscriptOutOfRange));
    }
    return Cell();
}


} // namespace

Cell FnBPUToPag(const Cell& source, const std::vector<PagMembers>& pags) {
    if (!isResult(source))
        return Cell();
    const CellArray& a = source.array();
    for (const PagMembers& members : pags)
        for (int b : members)
            if (b < 0 || b >= a.size(kDimBPU))
                return Cell();
    CellArray out({a.size(kDimYear), int(pags.size()), a.size(kDimDAP), a.size(kDimCause), a.size(kDimAsg),
                   a.size(kDimSlot)});
    for (int y = 0; y < a.size(kDimYear); ++y)
        for (int p = 0; p < int(pags.size()); ++p)
            for (int b : pags[std::size_t(p)])
                addMember(out, a, y, p, b);
    return Cell(std::move(out));
}

Cell FnGrpBDNPnl(const Cell& result, const CauseLevelDictionary& dict, const Cell& mtxCobCd, CauseLevel level, int slot,
                 int dap, int year) {
    return rollUp(result, dict, mtxCobCd, level, slot, dap, year, at::kGrpBDNPnlError);
}

Cell FnGrpBDNPnlpag1(const Cell& result, const CauseLevelDictionary& dict, const Cell& mtxCobCd, CauseLevel level,
                     int slot, int dap, int year) {
    return rollUp(result, dict, mtxCobCd, level, slot, dap, year, at::kGrpBDNPnlPag1Error);
}

Cell FnPctOverCauses(const Cell& rolled) {
    if (!rolled.isArray() || rolled.array().rank() != 3)
        return Cell();
    const CellArray& r = rolled.array();
    CellArray out({r.size(0), r.size(1), 3});
    for (int u = 0; u < r.size(1); ++u) {
        double total = 0;
        for (int e = 0; e < r.size(0); ++e)
            total += r(r.lbound(0) + e, r.lbound(1) + u, r.lbound(2) + 1).toDouble();
        for (int e = 0; e < r.size(0); ++e) {
            out(e, u, 0) = r(r.lbound(0) + e, r.lbound(1) + u, r.lbound(2));
            const Cell& v = r(r.lbound(0) + e, r.lbound(1) + u, r.lbound(2) + 1);
            out(e, u, 1) = v;
            out(e, u, 2) = total == 0 ? Cell(0.0) : Cell(share(v.toDouble(), total, "0.000"));
        }
    }
    return Cell(std::move(out));
}

Cell FnSexRatioByUnit(const Cell& result, const Cell& unitIds, int slot) {
    if (!isResult(result))
        return Cell();
    const CellArray& a = result.array();
    if (slot < 0 || slot >= a.size(kDimSlot))
        return Cell();
    CellArray out({a.size(kDimYear), a.size(kDimBPU), a.size(kDimDAP), 4});
    for (int y = 0; y < a.size(kDimYear); ++y)
        for (int b = 0; b < a.size(kDimBPU); ++b)
            for (int d = 0; d < a.size(kDimDAP); ++d) {
                double male = 0, female = 0;
                for (int c = 0; c < a.size(kDimCause); ++c)
                    for (int m = 0; m < a.size(kDimAsg); ++m) {
                        const QString label = a(y, b, d, c, m, kYldAsg).toString();
                        const double v = a(y, b, d, c, m, slot).toDouble();
                        if (label.startsWith(QLatin1Char('M')))
                            male += v;
                        else if (label.startsWith(QLatin1Char('F')))
                            female += v;
                    }
                if (unitIds.isArray() && b < unitIds.array().size(0))
                    out(y, b, d, 0) = unitIds.array()(unitIds.array().lbound(0) + b);
                out(y, b, d, 1) = Cell(male);
                out(y, b, d, 2) = Cell(female);
                out(y, b, d, 3) = male == 0 || female == 0
                                      ? Cell(0.0)
                                      : Cell(formatNumber(male / female, QStringLiteral("0.000")));
            }
    return Cell(std::move(out));
}

Cell FnPctByAge(const Cell& result, int slot) {
    if (!isResult(result))
        return Cell();
    const CellArray& a = result.array();
    if (slot < 0 || slot >= a.size(kDimSlot))
        return Cell();
    const int groups = a.size(kDimAsg);
    CellArray out({a.size(kDimYear), a.size(kDimBPU), a.size(kDimDAP), groups, 3});
    for (int y = 0; y < a.size(kDimYear); ++y)
        for (int b = 0; b < a.size(kDimBPU); ++b)
            for (int d = 0; d < a.size(kDimDAP); ++d) {
                double total = 0;
                for (int m = 0; m < groups; ++m) {
                    double sum = 0;
                    Cell label;
                    for (int c = 0; c < a.size(kDimCause); ++c) {
                        sum += a(y, b, d, c, m, slot).toDouble();
                        if (label.isEmpty() || label.isNull())
                            label = a(y, b, d, c, m, kYldAsg);
                    }
                    out(y, b, d, m, 0) = label;
                    out(y, b, d, m, 1) = Cell(sum);
                    total += sum;
                }
                for (int m = 0; m < groups; ++m)
                    out(y, b, d, m, 2) = total == 0 ? Cell(0.0)
                                                    : Cell(share(out(y, b, d, m, 1).toDouble(), total, "0.00"));
            }
    return Cell(std::move(out));
}

} // namespace vesk
