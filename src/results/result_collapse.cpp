#include "results/result_collapse.h"

#include "burden/computation_arrays.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "results/results_texts.h"

namespace vesk {

namespace rt = results_texts;

namespace {

const CellArray* nestedOf(const CellArray& a, int year, int unit, int dap, int cause) {
    const Cell& holder = a(year, unit, dap, cause, kSequelaHolderAsg, kSequelaHolderSlot);
    return holder.isArray() && holder.array().rank() == kSqlaRank ? &holder.array() : nullptr;
}

void appendSequelae(QList<QList<Cell>>& rows, const CellArray& nested, int slot, int decimals,
                    const std::function<QString(const QString&)>& sequelaName) {
    for (int s = nested.lbound(0); s <= nested.ubound(0); ++s) {
        const QString code = nested(s, nested.lbound(1) + kSqlaCodeAsg, nested.lbound(2) + kSqlaCodeSlot).toString();
        const QString sqlaName = sequelaName(code);
        for (int m = nested.lbound(1); m <= nested.ubound(1); ++m)
            rows.append({Cell(code), Cell(sqlaName), nested(s, m, nested.lbound(2) + kYldAsg),
                         shownValue(nested(s, m, nested.lbound(2) + slot), decimals)});
    }
}

ResultTable tableOf(const ResultSource& source, const QList<QList<Cell>>& rows) {
    ResultTable t{collapseHeads(source), CellArray({int(rows.size()), 4})};
    for (int r = 0; r < rows.size(); ++r)
        for (int k = 0; k < 4; ++k)
            t.rows(r, k) = rows[r][k];
    return t;
}

bool inside(const CellArray& a, int unit, int year, int dap) {
    return unit >= 0 && unit < a.size(kDimBPU) && year >= 0 && year < a.size(kDimYear) && dap >= 0 &&
           dap < a.size(kDimDAP);
}

} // namespace

QString FnSequelaName(const DbConnection& db, const QString& code) {
    auto q = db.query(QStringLiteral("SELECT Sequela FROM _DctBDMSqla WHERE upper(SqlaCd) = upper(?)"), {code});
    return q && q->next() ? q->value(0).toString() : QString();
}

QStringList collapseHeads(const ResultSource& source) {
    return {text(rt::kCollapseCauses), text(rt::kCollapseDescription), QStringLiteral("ASG"),
            burdenMeasureName(source.entry.measure)};
}

std::optional<ResultTable> collapseWithSequelae(const ResultSource& source, int unit, int year, int dap, int decimals,
                                                const std::function<QString(const QString&)>& name,
                                                const std::function<QString(const QString&)>& sequelaName) {
    const CellArray& a = source.measure.result.array();
    if (!inside(a, unit, year, dap))
        return std::nullopt;
    const CellArray& lbl = source.measure.labels.array();
    const CellArray& causes = lbl(lbl.lbound(0) + kLblCauses).array();
    QList<QList<Cell>> rows;
    for (int c = 0; c < a.size(kDimCause); ++c) {
        const QString code = causes(causes.lbound(0) + c).toString();
        const QString description = name(code);
        for (int m = 0; m < a.size(kDimAsg); ++m)
            rows.append({Cell(code), Cell(description), a(year, unit, dap, c, m, kYldAsg),
                         shownValue(a(year, unit, dap, c, m, source.measure.slot), decimals)});
        if (const CellArray* nested = nestedOf(a, year, unit, dap, c))
            appendSequelae(rows, *nested, source.measure.slot, decimals, sequelaName);
    }
    return tableOf(source, rows);
}

std::optional<ResultTable> sequelaRows(const ResultSource& source, int cause, int unit, int year, int dap, int decimals,
                                       const std::function<QString(const QString&)>& sequelaName) {
    const CellArray& a = source.measure.result.array();
    const CellArray* nested =
        inside(a, unit, year, dap) && cause >= 0 && cause < a.size(kDimCause) ? nestedOf(a, year, unit, dap, cause) : nullptr;
    if (!nested) {
        prompts().ask(text(rt::kNoSequela));
        return std::nullopt;
    }
    QList<QList<Cell>> rows;
    appendSequelae(rows, *nested, source.measure.slot, decimals, sequelaName);
    return tableOf(source, rows);
}

} // namespace vesk
