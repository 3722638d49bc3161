#include "inputs/zap.h"

#include "inputs/transfer_tables.h"
#include "inputs/transfer_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <functional>

namespace vesk {

namespace {

namespace t = transfer_texts;

// A purge: the table whose rows say there is something to purge, the message when it has none, the
// statements, and the messages of success and failure.
struct Purge {
    const char* table;
    const char* empty;
    const QStringList& statements;
    const char* purged;
    const char* error;
};

bool confirmed(const QString& question) {
    return prompts().ask(question, Buttons::YesNo, Icon::Question, text(t::kPurgeTitle)) == Answer::Yes;
}

// Nothing to purge, or the user's answer, or the statements run in one transaction.
ZapResult purge(const DbConnection& db, const Purge& p, const std::function<bool()>& agreed) {
    if (!hasRows(db, QStringLiteral("SELECT 1 FROM %1 LIMIT 1").arg(QLatin1String(p.table)))) {
        prompts().ask(text(p.empty), Buttons::Ok, Icon::Information, text(t::kPurgeTitle));
        return ZapResult::Empty;
    }
    if (!agreed())
        return ZapResult::Declined;
    QSqlError error;
    if (!inOneImport(
            db, [&](QSqlError* e) { return runStatements(db, p.statements, e); }, &error)) {
        prompts().ask(text(p.error) + engineDescription(error), Buttons::Ok, Icon::Critical,
                      text(t::kPurgeTitle));
        return ZapResult::Failed;
    }
    prompts().ask(text(p.purged), Buttons::Ok, Icon::Information, text(t::kPurgeTitle));
    return ZapResult::Purged;
}

// The question before the dictionaries go: with the units whose data they leave behind named, each
// in brackets, OK / Cancel; without such units, Yes / No.
bool dictionariesMayGo(const DbConnection& db, const QString& study) {
    const QStringList units = unitsWithLinkedData(db, study);
    if (units.isEmpty())
        return confirmed(text(t::kPurgeDictionaries));
    QString list;
    for (const QString& u : units)
        list += QStringLiteral("\n[") + u + u']';
    const QString warning = text(t::kLinkedUnits) + list + QStringLiteral("\n\n") + text(t::kLinkedWarning) +
                            QStringLiteral("\n\n") + text(t::kOkToZap);
    return prompts().ask(warning, Buttons::OkCancel, Icon::Warning, text(t::kPurgeTitle)) == Answer::Ok;
}

} // namespace

const QStringList& ProcImpDctRecoverStatements() {
    // The first and the fifth are the same statement, as the routine always had it.
    static const QStringList s = {
        QStringLiteral("DELETE FROM _DctBDM"),      QStringLiteral("DELETE FROM _DctBDMClstr"),
        QStringLiteral("DELETE FROM _DctBDMSGrps"), QStringLiteral("DELETE FROM _DctBDMGrps"),
        QStringLiteral("DELETE FROM _DctBDM"),      QStringLiteral("DELETE FROM _DctBDMSqla"),
        QStringLiteral("DELETE FROM _MapBDMSqla")};
    return s;
}

const QStringList& studyDataPurgeStatements() {
    static const QStringList s = {
        QStringLiteral("DELETE FROM DatAdw"),   QStringLiteral("DELETE FROM DatADWSqla"),
        QStringLiteral("DELETE FROM DatCSM"),   QStringLiteral("DELETE FROM DatPop"),
        QStringLiteral("DELETE FROM DatAsdr"),  QStringLiteral("DELETE FROM DatDmgphyPrmtrs"),
        QStringLiteral("DELETE FROM RsltDALY"), QStringLiteral("DELETE FROM RsltYLD"),
        QStringLiteral("DELETE FROM RsltYLL")};
    return s;
}

const QStringList& studySetupPurgeStatements() {
    static const QStringList s = {
        QStringLiteral("DELETE FROM _DctPAG1"),    QStringLiteral("DELETE FROM _DctPAG2"),
        QStringLiteral("DELETE FROM _DfnAgeGrps"), QStringLiteral("DELETE FROM _DfnBPUPAGDscrptrs"),
        QStringLiteral("DELETE FROM datdwt"),      QStringLiteral("DELETE FROM _DctBPU"),
        QStringLiteral("DELETE FROM _DctBDS")};
    return s;
}

QStringList unitsWithLinkedData(const DbConnection& db, const QString& study) {
    // The old query joined the three tables on the unit; a unit is named when each of them holds a
    // row of it, which EXISTS tells without multiplying their rows.
    auto q = db.query(QStringLiteral("SELECT BPUName FROM _DctBPU u WHERE u.BDSId = ? "
                                     "AND EXISTS (SELECT 1 FROM DatADWSqla d WHERE d.BPUID = u.BPUID) "
                                     "AND EXISTS (SELECT 1 FROM DatCSM d WHERE d.BPUID = u.BPUID) "
                                     "AND EXISTS (SELECT 1 FROM DatAdw d WHERE d.BPUID = u.BPUID) "
                                     "ORDER BY u.rowid"),
                      {study});
    QStringList names;
    while (q && q->next())
        if (!names.contains(q->value(0).toString()))
            names << q->value(0).toString();
    return names;
}

ZapResult zapDictionaries(const DbConnection& db, const QString& study) {
    return purge(db,
                 {"_DctBDMGrps", t::kDictionariesEmpty, ProcImpDctRecoverStatements(), t::kDictionariesPurged,
                  t::kDictionariesPurgeError},
                 [&] { return dictionariesMayGo(db, study); });
}

ZapResult zapStudyData(const DbConnection& db) {
    return purge(
        db,
        {"DatDmgphyPrmtrs", t::kDataEmpty, studyDataPurgeStatements(), t::kDataPurged, t::kDataPurgeError},
        [] { return confirmed(text(t::kPurgeData)); });
}

ZapResult zapStudySetup(const DbConnection& db) {
    return purge(
        db, {"_DctBPU", t::kSetupEmpty, studySetupPurgeStatements(), t::kSetupPurged, t::kSetupPurgeError},
        [] { return confirmed(text(t::kPurgeSetup) + u'\n' + text(t::kPurgeSetupAlso)); });
}

} // namespace vesk
