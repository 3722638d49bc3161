#include "study/population_units.h"

#include "database/study_context.h"
#include "foundation/array_helpers.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "study/asg_data.h"
#include "study/population_units_texts.h"
#include "study/study_setup_report.h"

#include <QSqlRecord>

namespace vesk {

namespace {

const QString kNl = QStringLiteral("\n");

// A blank text is stored as Null: no text field of the study file takes a zero-length string.
QVariant textValue(const QString& text) {
    return text.isEmpty() ? QVariant() : QVariant(text);
}

QString cellText(const QVariant& v) {
    if (v.isNull())
        return {};
    const Cell c = cellFromVariant(v);
    return c.isNumber() ? numberToText(c.toDouble()) : c.toString();
}

bool isBlank(const UnitRow& row) {
    return row.id.trimmed().isEmpty() && row.name.trimmed().isEmpty() && row.priority.trimmed().isEmpty();
}

void showError(const QSqlError& e) {
    prompts().ask(QString::number(engineErrorNumber(e)) + u' ' + engineDescription(e));
}

// One column of a query's rows as texts.
QStringList firstColumn(const DbConnection& db, const QString& sql, const QVariantList& values) {
    QSqlError e;
    QStringList out;
    auto q = db.query(sql, values, &e);
    if (!q) {
        showError(e);
        return out;
    }
    while (q->next())
        out << cellText(q->value(0));
    return out;
}

} // namespace

LevelTerms currentLevelTerms() {
    const StudyContext& c = studyContext();
    return {c.LblBPU.isEmpty() ? QStringLiteral("BPU") : c.LblBPU,
            c.LblPAG1.isEmpty() ? QStringLiteral("PAG1") : c.LblPAG1,
            c.LblPAG2.isEmpty() ? QStringLiteral("PAG2") : c.LblPAG2};
}

void setMapPair(QList<MapPair>& map, const QString& bpu, const QString& pag1) {
    for (MapPair& pair : map)
        if (pair.bpu == bpu) {
            pair.pag1 = pag1;
            return;
        }
    map.push_back({bpu, pag1});
}

void removeMapPairOfBPU(QList<MapPair>& map, const QString& bpu) {
    map.removeIf([&](const MapPair& p) { return p.bpu == bpu; });
}

void removeMapPairsOfPAG1(QList<MapPair>& map, const QString& pag1) {
    map.removeIf([&](const MapPair& p) { return p.pag1 == pag1; });
}

QStringList studyDataTables() {
    QStringList tables;
    for (const QString& t : studyContext().TblNmLst)
        if (!t.isEmpty())
            tables << t;
    return tables.isEmpty() ? asgDataTables() : tables;
}

QStringList PopulationUnits::sourceStudies(PopLevel level) const {
    static const QString tables[] = {QStringLiteral("_DctBPU"), QStringLiteral("_DctPAG1"),
                                     QStringLiteral("_DctPAG2")};
    return firstColumn(
        db_,
        QStringLiteral("SELECT BDSId FROM _DctBDS WHERE BDSId IN (SELECT BDSId FROM %1) ORDER BY rowid")
            .arg(tables[static_cast<int>(level)]),
        {});
}

namespace {

QList<UnitRow> unitRows(const DbConnection& db, const QString& sql, const QVariantList& values) {
    QSqlError e;
    QList<UnitRow> rows;
    auto q = db.query(sql, values, &e);
    if (!q) {
        showError(e);
        return rows;
    }
    const int columns = q->record().count();
    while (q->next())
        rows.push_back(
            {cellText(q->value(0)), cellText(q->value(1)), columns > 2 ? cellText(q->value(2)) : QString()});
    return rows;
}

} // namespace

QList<UnitRow> PopulationUnits::copyRows(PopLevel level, const QString& chosen) const {
    switch (level) {
    case PopLevel::BPU:
        return unitRows(
            db_, QStringLiteral("SELECT BPUID, BPUName, Prty FROM _DctBPU WHERE BDSId = ? ORDER BY rowid"),
            {chosen});
    case PopLevel::PAG1:
        return unitRows(
            db_, QStringLiteral("SELECT PAG1Id, PAG1Name FROM _DctPAG1 WHERE BDSId = ? ORDER BY rowid"),
            {chosen});
    case PopLevel::PAG2:
        return unitRows(
            db_, QStringLiteral("SELECT PAG2Id, PAG2Name FROM _DctPAG2 WHERE BDSId = ? ORDER BY rowid"),
            {chosen});
    }
    return {};
}

QList<UnitRow> PopulationUnits::loadRows(PopLevel level) const {
    // The same rows as a copy, under the current study.
    return copyRows(level, study_);
}

QList<MapPair> PopulationUnits::loadMap() const {
    QSqlError e;
    QList<MapPair> map;
    auto q =
        db_.query(QStringLiteral("SELECT DISTINCT BPUID, PAG1Id FROM _DctBPU WHERE BDSId = ? AND PAG1Id IN "
                                 "(SELECT DISTINCT PAG1Id FROM _DctPAG1 WHERE upper(BDSId) = ?) "
                                 "ORDER BY rowid"),
                  {study_, study_.toUpper()}, &e);
    if (!q) {
        showError(e);
        return map;
    }
    while (q->next())
        map.push_back({cellText(q->value(0)), cellText(q->value(1))});
    return map;
}

void PopulationUnits::reportWriteError(const QSqlError& error) {
    if (engineErrorNumber(error) == 3163)
        prompts().ask(putext::FieldSize1 + kNl + putext::FieldSize2 + kNl + putext::FieldSize3);
    else
        showError(error);
}

bool PopulationUnits::addOrEdit(const QString& findSql, const QVariantList& findValues,
                                const QString& insertSql, const QVariantList& insertValues,
                                const QString& updateSql, const QVariantList& updateValues) const {
    QSqlError e;
    auto found = db_.query(findSql, findValues, &e);
    if (!found) {
        reportWriteError(e);
        return false;
    }
    bool ok;
    if (found->next()) {
        QVariantList values = updateValues;
        values << found->value(0); // the rowid of the record found
        found.reset();
        ok = db_.exec(updateSql, values, &e);
    } else {
        found.reset();
        ok = db_.exec(insertSql, insertValues, &e);
    }
    if (!ok)
        reportWriteError(e);
    return ok;
}

// The id compares as the engine compares the key column; the study compares trimmed and case-blind.
bool PopulationUnits::writePAG2(const UnitRow& pag2) const {
    return addOrEdit(
        QStringLiteral("SELECT rowid FROM _DctPAG2 WHERE PAG2Id = ? AND upper(trim(BDSId)) = ?"),
        {pag2.id, studyKey()},
        QStringLiteral("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES (?, ?, ?)"),
        {study_, pag2.id, textValue(pag2.name)},
        QStringLiteral("UPDATE _DctPAG2 SET BDSId = ?, PAG2Id = ?, PAG2Name = ? WHERE rowid = ?"),
        {study_, pag2.id, textValue(pag2.name)});
}

bool PopulationUnits::writePAG1(const UnitRow& row, const QString& pag2Id) const {
    return addOrEdit(
        QStringLiteral("SELECT rowid FROM _DctPAG1 WHERE PAG1Id = ? AND upper(trim(BDSId)) = ?"),
        {textValue(row.id), studyKey()},
        QStringLiteral("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES (?, ?, ?, ?)"),
        {study_, textValue(row.id), textValue(row.name), textValue(pag2Id)},
        QStringLiteral("UPDATE _DctPAG1 SET PAG1Id = ?, PAG1Name = ?, PAG2Id = ? WHERE rowid = ?"),
        {textValue(row.id), textValue(row.name), textValue(pag2Id)});
}

bool PopulationUnits::writeBPU(const UnitRow& row, const QString& pag1Id) const {
    const int priority = static_cast<int>(roundHalfEven(Val(row.priority)));
    return addOrEdit(
        QStringLiteral("SELECT rowid FROM _DctBPU WHERE BPUID = ? AND upper(trim(BDSId)) = ?"),
        {textValue(row.id), studyKey()},
        QStringLiteral("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES (?, ?, ?, ?, ?)"),
        {study_, textValue(row.id), textValue(row.name), priority, textValue(pag1Id)},
        QStringLiteral("UPDATE _DctBPU SET BPUID = ?, BPUName = ?, Prty = ?, PAG1Id = ? WHERE rowid = ?"),
        {textValue(row.id), textValue(row.name), priority, textValue(pag1Id)});
}

bool PopulationUnits::apply(const LevelTerms& terms, const UnitRow& pag2, const QList<UnitRow>& pag1Rows,
                            const QList<UnitRow>& bpuRows, const QList<MapPair>& map) const {
    if (map.isEmpty()) {
        prompts().ask(putext::MapNotSet);
        return false;
    }
    if (pag2.id.trimmed().isEmpty()) {
        prompts().ask(terms.pag2 + putext::IdNotBlank);
        return false;
    }
    if (!writePAG2(pag2))
        return false;
    for (const UnitRow& row : pag1Rows)
        if (!isBlank(row) && !writePAG1(row, pag2.id))
            return false;
    QString unmapped;
    for (const UnitRow& row : bpuRows) {
        if (isBlank(row))
            continue;
        const auto pair =
            std::find_if(map.cbegin(), map.cend(), [&](const MapPair& p) { return p.bpu == row.id; });
        if (pair == map.cend())
            unmapped += row.id + u',' + kNl;
        else if (!writeBPU(row, pair->pag1))
            return false;
    }
    if (!unmapped.isEmpty())
        prompts().ask(putext::NotMapped1 + terms.bpu + putext::NotMapped2 + terms.pag1 + kNl + unmapped +
                          putext::NotMapped3,
                      Buttons::Ok, Icon::None, putext::TitleVesk);
    reloadUnitLists();
    prompts().ask(putext::Updated, Buttons::Ok, Icon::Information, putext::TitleVESK);
    return true;
}

bool PopulationUnits::deleteBPU(const QString& id, const QStringList& dataTables) const {
    bool hasData = false;
    try {
        hasData = FnBpuHasData(db_.database(), id, dataTables);
    } catch (const RuntimeError& error) {
        prompts().ask(QString::number(error.number) + u' ' + QString::fromStdString(error.what()));
        return false;
    }
    QSqlError e;
    bool ok;
    if (hasData) {
        if (prompts().ask(putext::SureDeleteRow, Buttons::OkCancel, Icon::Question, putext::TitleVesk) !=
            Answer::Ok)
            return false;
        ok = db_.exec(QStringLiteral("DELETE FROM _DctBPU WHERE upper(trim(BPUID)) = ? COLLATE NOCASE AND "
                                     "upper(trim(BDSId)) = ?"),
                      {id, studyKey()}, &e);
    } else {
        // No study term: the unit goes from every study that holds the id.
        ok = db_.exec(QStringLiteral("DELETE FROM _DctBPU WHERE BPUID = ?"), {id}, &e);
    }
    if (!ok) {
        showError(e);
        return false;
    }
    reloadUnitLists();
    return true;
}

bool PopulationUnits::deletePAG1(const QString& id) const {
    if (prompts().ask(putext::DeletePAG1Row, Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    const QString where =
        QStringLiteral(" WHERE upper(trim(BDSId)) = ? AND upper(trim(PAG1Id)) = ? COLLATE NOCASE");
    QSqlError e;
    auto count = db_.query(QStringLiteral("SELECT count(*) FROM _DctBPU") + where, {studyKey(), id}, &e);
    if (!count) {
        showError(e);
        return false;
    }
    const int n = count->next() ? count->value(0).toInt() : 0;
    count.reset();
    if (n > 0 && prompts().ask(putext::PAG1Rows1 + QString::number(n) + putext::PAG1Rows2 + kNl +
                                   putext::PAG1Rows3 + kNl + putext::PAG1Rows4,
                               Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    if (!db_.exec(QStringLiteral("DELETE FROM _DctBPU") + where, {studyKey(), id}, &e) ||
        !db_.exec(QStringLiteral("DELETE FROM _DctPAG1") + where, {studyKey(), id}, &e)) {
        showError(e);
        return false;
    }
    reloadUnitLists();
    return true;
}

void reloadUnitLists() {
    StudyContext& c = studyContext();
    setupRequests().ask(c.InitBPULst(QStringLiteral("_DctBPU")));
    setupRequests().ask(c.InitPAGLst(QStringLiteral("_DctPAG1")));
}

} // namespace vesk
