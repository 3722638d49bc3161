// Storing a computation's results: one transaction for each (year, unit, DAP) not yet stored.

#include "burden/computation_arrays.h"
#include "burden/computation_texts.h"
#include "burden/input_loaders_support.h"
#include "burden/stored_results.h"
#include "database/bulk_insert.h"
#include "foundation/error_store.h"
#include "platform/texts.h"

#include <QSqlError>
#include <vector>

namespace vesk {

namespace ct = computation_texts;
using loaders::entry;
using loaders::keyNumber;
using loaders::rowsIn;

namespace {

// One result table: its fields after the keys, the array's slots that fill them and their defaults.
struct ResultTable {
    const char* table;
    const char* source;
    const char* keys;                  // the key fields, in the order bound below
    bool sequela;                      // RsltYLD: the sequela field after the cause
    std::vector<const char*> measures; // the measure fields
    std::vector<int> measureSlots;           // the slot of each measure
    std::vector<QVariant> defaults;    // the field's default, for an Empty value
};

const ResultTable kYld{"RsltYLD", ct::kSourceStoreYld, "BPUID, YEAR, DAPID, COBCd, SqlaCd, ASG", true,
                       {"IYLD", "PYLD"}, {kYldIYLD, kYldPYLD}, {QVariant(0.0), QVariant(0.0)}};
const ResultTable kYll{"RsltYLL", ct::kSourceStoreYll, "BPUID, YEAR, DAPID, COBCd, ASG", false,
                       {"IYLL"}, {kYllYLL}, {QVariant()}};
const ResultTable kDaly{"RsltDALY", ct::kSourceStoreDaly, "BPUID, YEAR, DAPID, COBCd, ASG", false,
                        {"IDALY", "PDALY"}, {kDalyIDALY, kDalyPDALY}, {QVariant(0.0), QVariant(0.0)}};

QString insertText(const ResultTable& t, bool withMeasures) {
    QString fields = QString::fromLatin1(t.keys);
    int count = t.sequela ? 6 : 5;
    if (withMeasures)
        for (const char* m : t.measures) {
            fields += QStringLiteral(", ") + QLatin1String(m);
            ++count;
        }
    QStringList marks;
    for (int i = 0; i < count; ++i)
        marks << QStringLiteral("?");
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(QLatin1String(t.table), fields, marks.join(u", "));
}

// A measure into its parameter: Empty as the field's default, Null as NULL, a number as a double,
// anything else as text (for the table to refuse, naming the field).
void bindMeasure(BulkInsert& q, int i, const Cell& v, const QVariant& dflt) {
    if (v.isEmpty())
        q.bind(i, dflt);
    else if (v.isNull())
        q.bindNull(i);
    else if (v.isNumber())
        q.bindDouble(i, v.toDouble());
    else
        q.bindText(i, v.toString());
}

// The statements of one store, prepared once for all its transactions.
class Writer {
public:
    Writer(const ResultStudy& s, const ResultTable& t, const Cell& labels)
        : t_(t), labels_(labels), full_(*s.db, insertText(t, true)), short_(*s.db, insertText(t, false)) {
        if (!full_.ok())
            storeError(full_.error());
    }

    // The record of group m: keys, then the slots of `cell(slot)`.
    template <class Cells> void add(const QVariantList& keys, int m, Cells&& cell) {
        if (!full_.ok())
            return;
        const Cell& label = cell(kYldAsg);
        const bool substitute = label.isEmpty() || label.isNull();
        BulkInsert& q = substitute ? short_ : full_;
        int i = 0;
        for (const QVariant& k : keys)
            q.bind(i++, k);
        if (substitute)
            q.bindText(i++, m < rowsIn(labels_) ? entry(labels_, m).toString() : QString());
        else
            bindMeasure(q, i++, label, QVariant());
        if (!substitute)
            for (std::size_t k = 0; k < t_.measures.size(); ++k)
                bindMeasure(q, i++, cell(t_.measureSlots[k]), t_.defaults[k]);
        if (!q.insert())
            storeError(q.error());
    }

private:
    void storeError(const QSqlError& e) {
        ErrorStore(engineErrorNumber(e), engineDescription(e), QString::fromLatin1(t_.source));
    }
    const ResultTable& t_;
    const Cell& labels_;
    BulkInsert full_, short_;
};

bool alreadyStored(const ResultStudy& s, const ResultTable& t, const QVariantList& key) {
    auto q = s.db->query(QStringLiteral("SELECT 1 FROM %1 WHERE YEAR = ? AND DAPID = ? AND BPUID = ? LIMIT 1")
                             .arg(QLatin1String(t.table)),
                         key);
    return q && q->next();
}

struct StoreWords {
    const char* run;   // the text of the run's step
    const char* cause; // the text at each cause
};

void storeResult(const ResultStudy& s, const ResultTable& t, const StoreWords& words, const Cell& MtxDAP,
                 const Cell& result, const Cell& labels, const ResultProgress& p) {
    if (!s.db || !result.isArray() || !MtxDAP.isArray())
        return;
    const CellArray& a = result.array();
    const CellArray& dap = MtxDAP.array();
    const int years = rowsIn(s.years), units = rowsIn(s.units), causes = rowsIn(s.causes);
    const auto say = [&](const char* what) {
        if (p.bar)
            p.bar->setText(loaders::stepText(what, p, ct::kStoringSecs));
    };
    if (p.bar) {
        p.bar->setRange(0, (causes + 1) * (years + 1) * (units + 1) * (dap.size(0) + 1));
        p.bar->setValue(0);
    }
    say(words.run);
    Writer w(s, t, labels);
    int done = 0;
    for (int y = 0; y < years; ++y)
        for (int b = 0; b < units; ++b)
            for (int d = 0; d < dap.size(0); ++d) {
                const QVariant year = keyNumber(entry(s.years, y)), unit = entry(s.units, b).toString();
                const QVariant dapId = keyNumber(dap(d, kDapId));
                if (alreadyStored(s, t, {year, dapId, unit}))
                    continue;
                QSqlDatabase db = s.db->database();
                db.transaction();
                for (int c = 0; c < causes; ++c) {
                    say(words.cause);
                    if (p.bar)
                        p.bar->setValue(++done);
                    const CellArray& mtx = s.causes.array();
                    const QString code = mtx(mtx.lbound(0) + c, mtx.lbound(1) + kCobCdCode).toString();
                    const Cell& sequelae = mtx(mtx.lbound(0) + c, mtx.lbound(1) + kCobCdSequelae);
                    const Cell& holder = a(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot);
                    if (t.sequela && sequelae.isArray() && holder.isArray()) {
                        const CellArray& nested = holder.array();
                        for (int q = 0; q < nested.size(kSqlaDimSequela); ++q)
                            for (int m = 0; m < nested.size(kSqlaDimAsg); ++m)
                                w.add({unit, year, dapId, code, entry(sequelae, q).toString()}, m,
                                      [&](int slot) -> const Cell& { return nested(q, m, slot); });
                        continue;
                    }
                    QVariantList keys{unit, year, dapId, code};
                    if (t.sequela)
                        keys << QString::fromLatin1(ct::kNoSequela);
                    for (int m = 0; m < a.size(kDimAsg); ++m)
                        w.add(keys, m, [&](int slot) -> const Cell& { return a(y, b, d, c, m, slot); });
                }
                if (!db.commit()) {
                    ErrorStore(engineErrorNumber(db.lastError()), engineDescription(db.lastError()),
                               QString::fromLatin1(t.source));
                    db.rollback();
                }
            }
}

} // namespace

void LoadTables(const ResultStudy& s, const QString& kind, const QString& table, const Cell& MtxDAP,
                const Cell& ArrYld, const ResultProgress& p) {
    // The kind and the table name the one YLD store; the words are made of the kind.
    if (table.compare(QLatin1String(kYld.table), Qt::CaseInsensitive) != 0)
        return;
    const QByteArray run = (text(ct::kStoringKind1) + kind + text(ct::kStoringKind2)).toLatin1();
    storeResult(s, kYld, {run.constData(), run.constData()}, MtxDAP, ArrYld, s.yldLabels, p);
}

void LoadTblYll(const ResultStudy& s, const Cell& MtxDAP, const Cell& ArrYll, const ResultProgress& p) {
    storeResult(s, kYll, {ct::kStoringYllCause, ct::kStoringYllCause}, MtxDAP, ArrYll, s.yllLabels, p);
}

void LoadTblDaly(const ResultStudy& s, const Cell& MtxDAP, const Cell& ArrDaly, const ResultProgress& p) {
    const bool onYll = ArrDaly.isArray() && ArrDaly.array().size(kDimAsg) == rowsIn(s.yllLabels) &&
                       rowsIn(s.yllLabels) != rowsIn(s.yldLabels);
    storeResult(s, kDaly, {ct::kStoringDalyRun, ct::kStoringDalyCause}, MtxDAP, ArrDaly,
                onYll ? s.yllLabels : s.yldLabels, p);
}

} // namespace vesk
