#include "inputs/changed_definitions.h"

#include "inputs/demography_sheet.h"
#include "inputs/sheet_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace t = sheet_texts;

namespace {

QList<QVariant> storedValues(DbConnection& db, const QString& sql, const SheetUnit& unit) {
    QList<QVariant> out;
    auto q = db.query(sql, {unit.bpuId, unit.year});
    while (q && q->next())
        out << q->value(0);
    return out;
}

// Deletes the unit's rows of the year from `tables` in one transaction.
bool deleteRows(DbConnection& db, const QStringList& tables, const SheetUnit& unit) {
    QSqlDatabase base = db.database();
    if (!base.transaction())
        return false;
    bool ok = true;
    for (const QString& table : tables)
        ok = ok && db.exec(QStringLiteral("DELETE FROM %1 WHERE BPUID = ? AND YEAR = ?").arg(table),
                           {unit.bpuId, unit.year});
    if (ok && base.commit())
        return true;
    base.rollback();
    return false;
}

ChangedRows ask(DbConnection& db, const QStringList& tables, const SheetUnit& unit, const char* question,
                const char* keep) {
    if (prompts().ask(text(question), Buttons::YesNo, Icon::Question) == Answer::Yes && deleteRows(db, tables, unit))
        return ChangedRows::Deleted;
    prompts().ask(text(keep), Buttons::Ok, Icon::Information);
    return ChangedRows::Kept;
}

} // namespace

ChangedRows askAboutChangedPndAges(DbConnection& db, const SheetUnit& unit, const QList<double>& pndAges) {
    if (pndAges.isEmpty())
        return ChangedRows::Fit;
    bool fits = true;
    for (const QString& table : {QStringLiteral("DatPOP"), QStringLiteral("DatASDR")})
        for (const QVariant& bai :
             storedValues(db, QStringLiteral("SELECT Bai FROM %1 WHERE BPUID = ? AND YEAR = ?").arg(table), unit))
            fits = fits && (pndAges.contains(bai.toDouble()) || bai.toDouble() == pndAges.last() + kClosedLastInterval);
    if (fits)
        return ChangedRows::Fit;
    return ask(db, {QStringLiteral("DatPOP"), QStringLiteral("DatASDR")}, unit, t::kChangedPndAges, t::kKeepPndAges);
}

ChangedRows askAboutChangedYllLabels(DbConnection& db, const SheetUnit& unit, const QStringList& yllLabels) {
    bool fits = true;
    for (const QVariant& label :
         storedValues(db, QStringLiteral("SELECT ASG FROM DatCSM WHERE BPUID = ? AND YEAR = ?"), unit))
        fits = fits && yllLabels.contains(label.toString());
    if (fits)
        return ChangedRows::Fit;
    return ask(db, {QStringLiteral("DatCSM")}, unit, t::kChangedYllLabels, t::kKeepYllLabels);
}

} // namespace vesk
