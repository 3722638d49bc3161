#include "results/chart_data.h"

#include "burden/aggregation.h"
#include "burden/cause_levels.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/compute_run.h"
#include "database/study_context.h"
#include "foundation/runtime_error.h"
#include "platform/cell_array.h"
#include "platform/runtime.h"
#include "platform/texts.h"
#include "results/result_tables.h"
#include "results/results_texts.h"

#include <QHash>

namespace vesk {

namespace rt = results_texts;

namespace {

constexpr int kYear = 0, kDap = 0;

// The arrays of one level: each unit a BPU, or an aggregate of BPUs.
struct LevelArrays {
    QStringList ids;
    std::vector<PagMembers> members; // the BPUs of each unit
    Cell yld, yll, daly;
};

double text3(double v, const char* picture) {
    return Val(formatNumber(v, QString::fromLatin1(picture)));
}


// The sum of slot `slot` over the causes and groups of unit `u`; a Null adds nothing.
double total(const Cell& array, int u, int slot) {
    const CellArray& a = array.array();
    double s = 0;
    for (int c = 0; c < a.size(kDimCause); ++c)
        for (int m = 0; m < a.size(kDimAsg); ++m)
            s += a(kYear, u, kDap, c, m, slot).toDouble();
    return s;
}

double population(const Cell& pop4d, const PagMembers& members) {
    if (!pop4d.isArray())
        return 0;
    const CellArray& p = pop4d.array();
    double s = 0;
    for (int b : members)
        if (b < p.size(kAgeDimBPU))
            for (int r = 0; r < p.size(kAgeDimRow); ++r)
                s += p(kYear, b, r, kAgeBoth).toDouble();
    return s;
}

ChartTable table(int family, const char* stem, const QString& word, const QStringList& categories,
                 const QStringList& series, const QString& key) {
    ChartTable t;
    t.family = family;
    t.title = text(stem) + word;
    t.categories = categories;
    t.series = series;
    t.values.assign(std::size_t(series.size()), std::vector<double>(std::size_t(categories.size()), 0.0));
    t.head = QStringList{key} + series;
    return t;
}

ChartTable rates(const LevelArrays& l, const Cell& pop4d, const QString& word, const QString& key) {
    ChartTable t = table(1, rt::kStem1, word, l.ids, {text(rt::kSeriesYldRate), text(rt::kSeriesYllRate)}, key);
    for (int u = 0; u < l.ids.size(); ++u) {
        const double people = population(pop4d, l.members[std::size_t(u)]);
        const double yld = total(l.yld, u, kYldIYLD), yll = total(l.yll, u, kYllYLL);
        t.values[0][std::size_t(u)] = yld == 0 || !(people > 0) ? 0 : text3(yld / people * 1000, "0.000");
        t.values[1][std::size_t(u)] = yll == 0 || !(people > 0) ? 0 : text3(yll / people * 1000, "0.000");
    }
    return t;
}

ChartTable byAge(const LevelArrays& l, const QString& word, const QString& key) {
    const Cell pct = FnPctByAge(l.daly, kDalyIDALY);
    const CellArray& p = pct.array();
    // The groups of both sexes: "P" and the label without its sex letter, in the order met.
    QStringList persons;
    for (int m = 0; m < p.size(3); ++m) {
        const QString label = QStringLiteral("P") + p(kYear, 0, kDap, m, 0).toString().mid(1);
        if (!persons.contains(label))
            persons << label;
    }
    ChartTable t = table(2, rt::kStem2, word, l.ids, persons, key);
    for (int u = 0; u < l.ids.size(); ++u) {
        std::vector<double> sums(std::size_t(persons.size()), 0.0);
        double all = 0;
        for (int m = 0; m < p.size(3); ++m) {
            const int k = int(persons.indexOf(QStringLiteral("P") + p(kYear, u, kDap, m, 0).toString().mid(1)));
            const double v = p(kYear, u, kDap, m, 1).toDouble();
            if (k >= 0)
                sums[std::size_t(k)] += v;
            all += v;
        }
        for (int k = 0; k < persons.size(); ++k)
            t.values[std::size_t(k)][std::size_t(u)] = all == 0 ? 0 : text3(100 * sums[std::size_t(k)] / all, "0.00");
    }
    return t;
}

ChartTable sexRatios(const LevelArrays& l, const QString& word, const QString& key) {
    ChartTable t = table(3, rt::kStem3, word, l.ids, {text(rt::kSeriesYldMfr), text(rt::kSeriesYllMfr)}, key);
    const Cell yld = FnSexRatioByUnit(l.yld, Cell(), kYldIYLD), yll = FnSexRatioByUnit(l.yll, Cell(), kYllYLL);
    for (int u = 0; u < l.ids.size(); ++u) {
        t.values[0][std::size_t(u)] = yld.array()(kYear, u, kDap, 3).toDouble();
        t.values[1][std::size_t(u)] = yll.array()(kYear, u, kDap, 3).toDouble();
    }
    return t;
}

QString roman(int n) {
    static const char* const numerals[] = {"I", "II", "III", "IV", "V", "VI", "VII", "VIII", "IX", "X"};
    return n >= 1 && n <= 10 ? QString::fromLatin1(numerals[n - 1]) : QString::number(n);
}

ChartTable groups(int family, const LevelArrays& l, const CauseLevelDictionary& dict, const Cell& causes,
                  const QString& word, const QString& key) {
    const int slot = family == 4 ? kDalyIDALY : kDalyPDALY;
    const Cell shares = FnPctOverCauses(FnGrpBDNPnl(l.daly, dict, causes, CauseLevel::Group, slot, kDap, kYear));
    if (!shares.isArray())
        throw RuntimeError(runtime_error::kTypeMismatch);
    const CellArray& s = shares.array();
    QStringList series;
    for (int e = 0; e < s.size(0); ++e)
        series << QStringLiteral("Group ") + roman(e + 1);
    ChartTable t = table(family, family == 4 ? rt::kStem4 : rt::kStem5, word, l.ids, series, key);
    t.stacked = true;
    for (int e = 0; e < s.size(0); ++e)
        for (int u = 0; u < l.ids.size(); ++u)
            t.values[std::size_t(e)][std::size_t(u)] = s(e, u, 2).toDouble();
    return t;
}

QList<QList<Cell>> percentTable(const LevelArrays& l, const Cell& array, int slot, const CauseLevelDictionary& dict,
                                const Cell& causes, const QString& key, const QString& head) {
    const Cell shares = FnPctOverCauses(FnGrpBDNPnl(array, dict, causes, CauseLevel::Group, slot, kDap, kYear));
    if (!shares.isArray())
        throw RuntimeError(runtime_error::kTypeMismatch);
    const CellArray& s = shares.array();
    QList<QList<Cell>> rows{{Cell(key), Cell(QStringLiteral("Group")), Cell(head)}};
    for (int u = 0; u < l.ids.size(); ++u)
        for (int e = 0; e < s.size(0); ++e)
            rows.append({Cell(l.ids[u]), s(e, u, 0), Cell(s(e, u, 2).toDouble())});
    return rows;
}

QString dapLine(const Cell& mtxDap) {
    QString line = text(rt::kDapLine);
    if (!mtxDap.isArray())
        return line;
    const CellArray& m = mtxDap.array();
    const char* names[] = {" R: ", " K: ", " B: ", " C: "};
    for (int k = 0; k < 4; ++k)
        line += QString::fromLatin1(names[k]) + u'(' +
                formatNumber(m(m.lbound(0) + kDap, m.lbound(1) + kDapR + k).toDouble(), QStringLiteral("0.00")) + u')';
    return line;
}

std::optional<ChartData> build(bool pag, const Computation& comp, const StudyContext& study, QString* error) {
    if (!comp.ArrDaly.isArray() || !comp.ArrYll.isArray() || !comp.ArrYld.isArray()) {
        *error = text(rt::kChartArraysMissing);
        return std::nullopt;
    }
    try {
        LevelArrays l;
        QString engine;
        const auto units = levelUnits(pag ? ResultLevel::PAG1 : ResultLevel::BPU, study, &l.members, &engine);
        if (!engine.isEmpty()) {
            *error = engine;
            return std::nullopt;
        }
        for (const ResultUnit& u : units)
            l.ids << u.id;
        if (pag) {
            l.yld = FnBPUToPag(comp.ArrYld, l.members);
            l.yll = FnBPUToPag(comp.ArrYll, l.members);
            l.daly = FnBPUToPag(comp.ArrDaly, l.members);
        } else {
            l.yld = comp.ArrYld, l.yll = comp.ArrYll, l.daly = comp.ArrDaly;
        }
        const Cell pop4d = comp.ArrPop4D.isArray() ? comp.ArrPop4D : singleYearPopulation(study);
        CauseLevelDictionary dict;
        if (!study.StudyDB ||
            !LoadDictionary(*study.StudyDB, CauseLevel::Group, study.studyColumn(), dict)) {
            *error = text(rt::kChartOtherError);
            return std::nullopt;
        }
        const QString word = text(pag ? rt::kLevelWordPag : rt::kLevelWordBpu);
        const QString key = pag ? QStringLiteral("PAG1") : QStringLiteral("BPUID");
        ChartData data;
        data.tables = {rates(l, pop4d, word, key), byAge(l, word, key), sexRatios(l, word, key),
                       groups(4, l, dict, study.MtxCobCd, word, key), groups(5, l, dict, study.MtxCobCd, word, key)};
        data.dapLine = dapLine(comp.MtxDAP);
        data.percentTables = {
            percentTable(l, l.yld, kYldIYLD, dict, study.MtxCobCd, key, QStringLiteral("IYLD Percent")),
            percentTable(l, l.yll, kYllYLL, dict, study.MtxCobCd, key, QStringLiteral("YLL Percent")),
            percentTable(l, l.daly, kDalyIDALY, dict, study.MtxCobCd, key, QStringLiteral("IDaly Percent")),
            percentTable(l, l.daly, kDalyPDALY, dict, study.MtxCobCd, key, QStringLiteral("PDaly Percent"))};
        return data;
    } catch (const RuntimeError& e) {
        *error = text(e.number == runtime_error::kTypeMismatch     ? rt::kChartTypeMismatch
                      : e.number == runtime_error::kDivisionByZero ? rt::kChartDivision
                                                                  : rt::kChartOtherError);
    } catch (const std::exception&) {
        *error = text(rt::kChartOtherError);
    }
    return std::nullopt;
}

} // namespace

std::optional<ChartData> procBPUGraphs(const Computation& comp, const StudyContext& study, QString* error) {
    return build(false, comp, study, error);
}

std::optional<ChartData> procPagGraphs(const Computation& comp, const StudyContext& study, QString* error) {
    return build(true, comp, study, error);
}

} // namespace vesk
