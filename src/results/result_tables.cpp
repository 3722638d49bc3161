#include "results/result_tables.h"

#include "burden/computation.h"
#include "burden/aggregation_texts.h"
#include "burden/computation_arrays.h"
#include "burden/population_aggregates.h"
#include "database/study_context.h"
#include "foundation/runtime_arithmetic.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"
#include "results/cross_tab.h"
#include "results/results_texts.h"

namespace vesk {

namespace rt = results_texts;

namespace {

std::vector<ResultUnit> bpuUnits(const StudyContext& study) {
    std::vector<ResultUnit> out;
    if (!study.VctrBPULst.isArray())
        return out;
    const CellArray& v = study.VctrBPULst.array();
    for (int b = v.lbound(0); b <= v.ubound(0); ++b) {
        QString name;
        if (study.StudyDB) {
            auto q = study.StudyDB->query(QStringLiteral("SELECT BPUName FROM _DctBPU WHERE BDSId = ? AND BPUID = ?"),
                                          {study.CurBDSId, v(b).toString()});
            if (q && q->next())
                name = q->value(0).toString();
        }
        out.push_back({v(b).toString(), name});
    }
    return out;
}

// The level's word for its messages: the scheme's label, or the level's name.
QString levelWord(const StudyContext& study, ResultLevel level) {
    const QString label = level == ResultLevel::PAG1 ? study.LblPAG1 : study.LblPAG2;
    return label.isEmpty() ? levelName(level) : label;
}

bool rollUp(ResultSource& s, const StudyContext& study) {
    std::vector<PagMembers> members;
    s.units = levelUnits(s.entry.level, study, &members);
    if (s.entry.level == ResultLevel::BPU)
        return true;
    if (s.units.empty()) {
        const QString word = levelWord(study, s.entry.level);
        prompts().ask(s.entry.level == ResultLevel::PAG1 ? text(rt::kNoPag1Start) + word + text(rt::kNoPag1End)
                                                         : text(rt::kNoPag2Start) + word + text(rt::kNoPag2End));
        return false;
    }
    s.measure.result = FnBPUToPag(s.measure.result, members);
    return s.measure.result.isArray();
}


} // namespace

QStringList tableFieldNames(const QStringList& heads) {
    QStringList out;
    for (QString h : heads) {
        for (QChar& c : h)
            if (!c.isLetterOrNumber())
                c = u'_';
        out << h;
    }
    return out;
}

std::vector<ResultUnit> levelUnits(ResultLevel level, const StudyContext& study, std::vector<PagMembers>* members,
                                   QString* error) {
    if (level == ResultLevel::BPU) {
        std::vector<ResultUnit> units = bpuUnits(study);
        if (members)
            for (std::size_t b = 0; b < units.size(); ++b)
                members->push_back({int(b)});
        return units;
    }
    QString engine;
    const auto aggregates =
        study.StudyDB ? populationAggregates(*study.StudyDB, study.CurBDSId, study.VctrBPULst,
                                             level == ResultLevel::PAG1 ? PagLevel::Pag1 : PagLevel::Pag2, &engine)
                      : std::nullopt;
    std::vector<ResultUnit> units;
    if (!aggregates) {
        if (error)
            *error = engine;
        return units;
    }
    for (const auto& a : *aggregates)
        units.push_back({a.id, a.name});
    if (members)
        *members = memberLists(*aggregates);
    return units;
}

Cell shownValue(const Cell& value, int decimals) {
    if (value.isNull() || value.isEmpty())
        return Cell();
    if (decimals <= 0)
        return value;
    return Cell(roundHalfEven(value.toDouble(), decimals));
}

std::optional<ResultSource> resultSource(const ResultEntry& entry, const Computation& comp, const StudyContext& study) {
    ResultSource s;
    s.entry = entry;
    s.measure = measureSource(comp, entry.measure);
    s.years = study.VctrYrLst;
    s.daps = comp.MtxDAP;
    if (!s.measure.result.isArray() || !s.measure.labels.isArray()) {
        if (entry.kind == ResultKind::Leading)
            prompts().ask(text(aggregation_texts::kLeadingNotShown), Buttons::Ok, Icon::Information);
        else
            prompts().ask(text(rt::kSummaryNotShown), Buttons::Ok, Icon::Information);
        return std::nullopt;
    }
    if (!rollUp(s, study))
        return std::nullopt;
    return s;
}

std::optional<ResultTable> summaryTable(const ResultSource& source, int unit, int year, int dap, const QString& nBox,
                                        int decimals, const std::function<QString(const QString&)>& name) {
    std::optional<LeadingCausesTable> ranked;
    if (source.entry.kind == ResultKind::Leading) {
        ranked = procNLeadCausDALY(source.measure, source.entry.measure, unit, year, dap, nBox, name);
    } else {
        const Cell totals =
            FnCauseTotals(source.measure.result, source.measure.labels, source.measure.slot, unit, dap, year);
        if (totals.isArray())
            ranked = LeadingCausesTable{{}, leadingCausesReport(totals, year, dap, totals.array().size(kDimCause), name)};
    }
    if (!ranked)
        return std::nullopt;
    CellArray& rows = ranked->rows;
    for (int r = 0; r < rows.size(0); ++r)
        for (int k : {2, 3})
            rows(r, k) = shownValue(rows(r, k), decimals);
    return ResultTable{summaryHeads(source.entry), std::move(rows)};
}

std::optional<ResultTable> detailTable(const ResultSource& source, int unit, int year, int dap, int decimals,
                                       const std::function<QString(const QString&)>& name) {
    const CellArray& a = source.measure.result.array();
    if (unit < 0 || unit >= a.size(kDimBPU) || year < 0 || year >= a.size(kDimYear) || dap < 0 ||
        dap >= a.size(kDimDAP))
        return std::nullopt;
    const CellArray& lbl = source.measure.labels.array();
    const CellArray& causes = lbl(lbl.lbound(0) + kLblCauses).array();
    const Cell& groupLabels = lbl(lbl.lbound(0) + kLblAsgs);
    const int groups = a.size(kDimAsg), count = a.size(kDimCause);
    // One row a cause and group: code, label, value; then causes by groups.
    CellArray flat({count * groups, 3});
    for (int c = 0; c < count; ++c)
        for (int m = 0; m < groups; ++m) {
            const int r = c * groups + m;
            flat(r, 0) = causes(causes.lbound(0) + c);
            Cell label = a(year, unit, dap, c, m, kYldAsg);
            if ((label.isEmpty() || label.isNull()) && groupLabels.isArray() && m < groupLabels.array().size(0))
                label = groupLabels.array()(groupLabels.array().lbound(0) + m);
            flat(r, 1) = label;
            flat(r, 2) = shownValue(a(year, unit, dap, c, m, source.measure.slot), decimals);
        }
    const Cell grid = FnCrossTab(flat, 0, 1, true, QStringLiteral("2"));
    if (!grid.isArray())
        return std::nullopt;
    const CellArray& g = grid.array();
    ResultTable t;
    t.heads << text(rt::kDetailCode) << text(rt::kDetailDescription);
    for (int k = 1; k < g.size(1); ++k)
        t.heads << g(0, k).toString();
    t.rows = CellArray({g.size(0) - 1, g.size(1) + 1});
    for (int r = 1; r < g.size(0); ++r) {
        t.rows(r - 1, 0) = g(r, 0);
        t.rows(r - 1, 1) = Cell(name(g(r, 0).toString()));
        for (int k = 1; k < g.size(1); ++k)
            t.rows(r - 1, k + 1) = g(r, k);
    }
    return t;
}

} // namespace vesk
