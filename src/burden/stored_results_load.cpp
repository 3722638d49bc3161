// Loading stored results back into the computation's arrays.

#include "burden/computation_arrays.h"
#include "burden/computation_texts.h"
#include "burden/sequela_sum.h"
#include "burden/input_loaders_support.h"
#include "burden/stored_results.h"

#include "burden/computation.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <stdexcept>

namespace vesk {

namespace ct = computation_texts;
using loaders::entry;
using loaders::keyNumber;
using loaders::Rows;
using loaders::rowsIn;

namespace {

// A failure of the engine while loading: shown with the error's text, and the load ends.
struct LoadFailure {
    QString words;
};

Rows rows(const ResultStudy& s, const QString& sql, const QVariantList& values, int columns) {
    QSqlError e;
    auto q = s.db->query(sql, values, &e);
    if (!q)
        throw LoadFailure{engineDescription(e)};
    return rowsOf(*q, columns);
}

bool any(const ResultStudy& s, const QString& sql, const QVariantList& values) {
    return !rows(s, sql + QStringLiteral(" LIMIT 1"), values, 1).isEmpty();
}

// One result table as the load reads it.
struct Source {
    const char* table;
    bool sequela;       // RsltYLD: rows by sequela
    QStringList fields; // ASG, then the measures
};

// Whether the table holds rows of the study's units, for any of the years (`byYear`) or of the DAPs.
bool holdsRows(const ResultStudy& s, const Source& src, const CellArray& dap, bool byYear) {
    const QString sql =
        QStringLiteral("SELECT 1 FROM %1 WHERE %2 = ? AND BPUID IN (SELECT BPUID FROM _DctBPU WHERE BDSId = ?)")
            .arg(QLatin1String(src.table), byYear ? QStringLiteral("YEAR") : QStringLiteral("DAPID"));
    const int n = byYear ? rowsIn(s.years) : dap.size(0);
    for (int i = 0; i < n; ++i)
        if (any(s, sql, {byYear ? keyNumber(entry(s.years, i)) : keyNumber(dap(i, kDapId)), s.study}))
            return true;
    return false;
}

// The rows of one (year, unit, DAP) into `a`: record n of a cause into group n; the sequelae of a cause
// into its nested array, their sum at cause level.
void fillUnit(const ResultStudy& s, const Source& src, CellArray& a, int y, int b, int d, const CellArray& dap) {
    const int width = int(src.fields.size());
    const QString fields = src.fields.join(u", ");
    const Rows all = rows(s,
                          QStringLiteral("SELECT COBCd, %1, %2 FROM %3 WHERE YEAR = ? AND BPUID = ? AND DAPID = ? "
                                         "ORDER BY ASG, rowid")
                              .arg(src.sequela ? QStringLiteral("SqlaCd") : QStringLiteral("''"), fields,
                                   QLatin1String(src.table)),
                          {keyNumber(entry(s.years, y)), entry(s.units, b).toString(), keyNumber(dap(d, kDapId))},
                          2 + width);
    QHash<QString, Rows> byCause, bySequela;
    for (const QList<Cell>& r : all) {
        byCause[r[0].toString()].push_back(r);
        bySequela[r[0].toString() + QChar(0) + r[1].toString()].push_back(r);
    }
    const CellArray& mtx = s.causes.array();
    for (int c = 0; c < rowsIn(s.causes); ++c) {
        const QString code = mtx(mtx.lbound(0) + c, mtx.lbound(1) + kCobCdCode).toString();
        const Cell& sequelae = mtx(mtx.lbound(0) + c, mtx.lbound(1) + kCobCdSequelae);
        if (!src.sequela || !sequelae.isArray()) {
            const Rows rs = byCause.value(code);
            for (int n = 0; n < rs.size(); ++n)
                for (int k = 0; k < width; ++k)
                    a(y, b, d, c, n, kYldAsg + k) = rs[n][2 + k];
            continue;
        }
        CellArray nested({rowsIn(sequelae), a.size(kDimAsg), kYldLastSlot + 1});
        for (int q = 0; q < rowsIn(sequelae); ++q) {
            const Rows rs = bySequela.value(code + QChar(0) + entry(sequelae, q).toString());
            if (rs.isEmpty())
                continue;
            nested(q, kSqlaCodeAsg, kSqlaCodeSlot) = entry(sequelae, q);
            for (int n = 0; n < rs.size(); ++n) {
                nested(q, n, kYldAsg) = rs[n][2];
                a(y, b, d, c, n, kYldAsg) = rs[n][2];
                for (int k = 1; k < width; ++k) {
                    nested(q, n, kYldAsg + k) = rs[n][2 + k];
                    a(y, b, d, c, n, kYldAsg + k) = sequelaSum(a(y, b, d, c, n, kYldAsg + k), rs[n][2 + k]);
                }
            }
        }
        a(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot) = Cell(std::move(nested));
    }
}

struct Words {
    const char* loading;
    const char* listLoaded;
    const char* loaded;
    const char* none;
    const char* notLoaded;
    const char* notCalculated;
    const char* notStored;
};

Cell loadResult(const ResultStudy& s, const Source& src, const CellArray& dap, int groups, bool byYear,
                const Words& w, const std::function<void(const QString&)>& list, Progress* bar) {
    const auto say = [&](const QString& t) {
        if (bar)
            bar->setText(t);
    };
    Cell result;
    if (holdsRows(s, src, dap, byYear)) {
        CellArray a({rowsIn(s.years), rowsIn(s.units), dap.size(0), rowsIn(s.causes), groups,
                     int(src.fields.size()) + 1});
        say(text(w.loading));
        for (int y = 0; y < rowsIn(s.years); ++y)
            for (int b = 0; b < rowsIn(s.units); ++b)
                for (int d = 0; d < dap.size(0); ++d)
                    fillUnit(s, src, a, y, b, d, dap);
        result = Cell(std::move(a));
        list(text(w.listLoaded));
        say(text(w.loaded));
    } else {
        list(text(w.none) + s.study);
        say(text(w.notLoaded) + s.study);
    }
    if (!result.isArray()) {
        list(text(w.notCalculated) + s.study);
        say(text(w.notStored));
    }
    return result;
}

const Source kYldSource{"RsltYLD", true, {"ASG", "IYLD", "PYLD"}};
const Source kYllSource{"RsltYLL", false, {"ASG", "IYLL"}};
const Source kDalySource{"RsltDALY", false, {"ASG", "IDALY", "PDALY"}};

// Step 1: whether to go on when some (year, unit, DAP) has no DALY rows; the question is asked once.
bool goOn(const ResultStudy& s, const CellArray& dap) {
    for (int y = 0; y < rowsIn(s.years); ++y)
        for (int b = 0; b < rowsIn(s.units); ++b)
            for (int d = 0; d < dap.size(0); ++d)
                if (!any(s, QStringLiteral("SELECT 1 FROM RsltDALY WHERE YEAR = ? AND BPUID = ? AND DAPID = ?"),
                         {keyNumber(entry(s.years, y)), entry(s.units, b).toString(), keyNumber(dap(d, kDapId))}))
                    return prompts().ask(text(ct::kLoadMissing), Buttons::YesNo, Icon::None, QString()) == Answer::Yes;
    return true;
}

} // namespace

LoadEnd LoadStroedResults(const ResultStudy& s, const Cell& MtxDAP, const std::function<void(const QString&)>& list,
                          Progress* bar, LoadedResults& out) {
    QString failure;
    try {
        if (!s.db || !MtxDAP.isArray() || !s.years.isArray() || !s.units.isArray() || !s.causes.isArray())
            throw LoadFailure{runtimeWords(runtime_error::kTypeMismatch)};
        const CellArray& dap = MtxDAP.array();
        if (!goOn(s, dap))
            return LoadEnd::Ended;
        out.ArrYld = loadResult(s, kYldSource, dap, rowsIn(s.yldLabels), true,
                                {ct::kLoadingYld, ct::kYldListLoaded, ct::kYldLoaded, ct::kYldNone1, ct::kYldNotLoaded,
                                 ct::kYldNotCalculated, ct::kYldNotStored},
                                list, bar);
        out.ArrYll = loadResult(s, kYllSource, dap, rowsIn(s.yllLabels), false,
                                {ct::kLoadingYll, ct::kYllListLoaded, ct::kYllLoaded, ct::kYllNone1, ct::kYllNotLoaded,
                                 ct::kYllNotCalculated, ct::kYllNotStored},
                                list, bar);
        // ArrDaly is always filled on the YLD groups, whatever groups it was computed on.
        out.ArrDaly = loadResult(s, kDalySource, dap, rowsIn(s.yldLabels), false,
                                 {ct::kLoadingDaly, ct::kDalyListLoaded, ct::kDalyLoaded, ct::kDalyNone1,
                                  ct::kDalyNotLoaded, ct::kDalyNotCalculated, ct::kDalyNotStored},
                                 list, bar);
        out.labels = BldResultLabels(s.years, s.units, MtxDAP, s.causes, s.yldLabels, s.yllLabels, out.ArrDaly);
        return LoadEnd::Loaded;
    } catch (const LoadFailure& f) {
        failure = f.words;
    } catch (const RuntimeError& e) {
        failure = e.words;
    } catch (const std::out_of_range&) {
        failure = runtimeWords(runtime_error::kSubscriptOutOfRange);
    }
    prompts().ask(text(ct::kLoadError) + failure, Buttons::Ok, Icon::None, QString());
    return LoadEnd::Failed;
}

void adoptLoadedResults(LoadedResults&& loaded, Computation& comp) {
    comp.ArrYld = std::move(loaded.ArrYld);
    comp.ArrYll = std::move(loaded.ArrYll);
    comp.ArrDaly = std::move(loaded.ArrDaly);
    comp.ArrYldLbl = std::move(loaded.labels.yld);
    comp.ArrYllLbl = std::move(loaded.labels.yll);
    comp.ArrDalyLbl = std::move(loaded.labels.daly);
}

} // namespace vesk
