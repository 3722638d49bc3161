// The loaders of the study context that read the study's own rows: age definitions, causes and
// their sequelae, population units and aggregates, demographic parameters.

#include "database/db_texts.h"
#include "database/sql_tokens.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "platform/prompts.h"

#include <functional>

namespace vesk {

using sql::quoteName;

namespace {

Cell matrix(const QList<QList<Cell>>& rows, int columns) {
    CellArray m{static_cast<int>(rows.size()), columns};
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < columns; ++c)
            m(r, c) = rows[r][c];
    return Cell(std::move(m));
}

Cell vector(const QList<Cell>& items) {
    CellArray v{static_cast<int>(items.size())};
    for (int i = 0; i < items.size(); ++i)
        v(i) = items[i];
    return Cell(std::move(v));
}

bool isTrue(const Cell& c) {
    return c.isNumber() && c.toDouble() != 0;
}

// A list of the current study: the first column of `sql`, whose %1 is the table the settings name
// (a name that is not a plain word reads as no rows) and whose one parameter is the study.
struct StudyList {
    const char* sql;
    const char* missing; // shown with the study when the list is empty
    StudyFinding finding;
};

const StudyList kUnitList{"SELECT BPUID FROM %1 WHERE BDSId = ? ORDER BY Prty", dbtext::NoBPUs,
                          StudyFinding::NoUnits};
// The old engine gave the distinct values in sorted order; the order is asked for here.
const StudyList kAggregateList{"SELECT DISTINCT PAG1Id FROM %1 WHERE BDSId = ? ORDER BY PAG1Id",
                               dbtext::NoPAGs, StudyFinding::NoAggregates};

// Reads the list into `target`; a failing engine is shown, then an empty list is reported.
LoadReport loadStudyList(const DbConnection& db, const StudyList& list, const QString& table,
                         const QString& study, Cell& target,
                         const std::function<void(const QString&)>& show) {
    QSqlError e;
    std::optional<QSqlQuery> q;
    if (isPlainIdentifier(table))
        q = db.query(QString::fromLatin1(list.sql).arg(quoteName(table)), {study}, &e);
    QList<Cell> items;
    if (q)
        for (const auto& row : rowsOf(*q, 1))
            items.push_back(row[0]);
    else if (e.isValid())
        show(engineDescription(e));
    if (items.isEmpty()) {
        show(list.missing + study);
        return {list.finding};
    }
    target = vector(items);
    return {};
}

} // namespace

LoadReport StudyContext::InitAgeGrps(const QString& bdsId, Cell& arrAgeDfn) {
    if (!StudyDB)
        return {StudyFinding::EngineFailed};
    QSqlError e;
    auto q = StudyDB->query(
        QStringLiteral("SELECT YLL, YLD, PND FROM _DfnAgeGrps WHERE BDSId = ? ORDER BY rowid"), {bdsId}, &e);
    if (!q) {
        show(engineDescription(e));
        return {StudyFinding::EngineFailed};
    }
    QList<QList<Cell>> rows = rowsOf(*q, 3);
    if (rows.isEmpty()) {
        show(dbtext::NoAgeDefinitions); // the former definitions stay
        return {StudyFinding::NoAgeDefinitions};
    }
    for (auto& row : rows)
        for (Cell& c : row)
            if (c.isNull())
                c = Cell(QString());
    arrAgeDfn = matrix(rows, 3);
    return {StudyFinding::AgeDefinitionsFound};
}

QString StudyContext::studyColumn() const {
    if (!StudyDB || CurBDSId.isEmpty())
        return {};
    auto q = StudyDB->query(QStringLiteral("SELECT name FROM pragma_table_info('_DctBDM')"));
    while (q && q->next()) {
        const QString name = q->value(0).toString();
        if (name.toUpper() == CurBDSId.toUpper())
            return isPlainIdentifier(name) ? name : QString();
    }
    return {};
}

LoadReport StudyContext::InitCOB() {
    const QString column = studyColumn();
    if (!column.isEmpty()) {
        const QString col = quoteName(column);
        auto q = StudyDB->query(QStringLiteral("SELECT count(%1) FROM _DctBDM WHERE %1 <> 0").arg(col));
        // A count always gives its row, also for 0: a study without causes passes here.
        if (q && q->next())
            return {};
    }
    show(dbtext::NoBDMRecords);
    return {StudyFinding::NoCauses};
}

void StudyContext::InitCobcd(bool quiet) {
    const auto store = [quiet](const QString& description) {
        if (!quiet)
            ErrorStore(0, description, dbtext::InitCobcdSource);
    };
    const QString column = studyColumn();
    QList<QList<Cell>> causes;
    if (!column.isEmpty()) {
        auto q = StudyDB->query(QStringLiteral("SELECT CobCd, Sqla FROM _DctBDM WHERE %1 <> 0 ORDER BY CobCd")
                                    .arg(quoteName(column)));
        if (q)
            causes = rowsOf(*q, 2);
    }
    if (causes.isEmpty()) {
        store(dbtext::CobcdsNotDeclared);
        return;
    }
    CellArray mtx{static_cast<int>(causes.size()), 2};
    for (int i = 0; i < causes.size(); ++i) {
        const Cell& code = causes[i][0];
        mtx(i, 0) = code;
        if (!isTrue(causes[i][1]))
            continue;
        auto q = StudyDB->query(QStringLiteral("SELECT SqlaCd FROM _MapBDMSqla WHERE cobcd = ?"),
                                {code.toString()});
        const QList<QList<Cell>> sequelae = q ? rowsOf(*q, 1) : QList<QList<Cell>>();
        if (sequelae.isEmpty()) {
            store(dbtext::SqlaNoMap1 + code.toString() + dbtext::SqlaNoMap2);
        } else if (sequelae[0][0].isNull()) {
            store(dbtext::SqlaNull1 + code.toString() + dbtext::SqlaNull2);
        } else {
            QList<Cell> codes;
            for (const auto& row : sequelae)
                codes.push_back(row[0]);
            mtx(i, 1) = vector(codes);
        }
    }
    MtxCobCd = Cell(std::move(mtx));
}

LoadReport StudyContext::InitBPULst(const QString& tableName) {
    if (!StudyDB)
        return {StudyFinding::EngineFailed};
    return loadStudyList(*StudyDB, kUnitList, tableName, CurBDSId, VctrBPULst,
                         [this](const QString& t) { show(t); });
}

LoadReport StudyContext::InitPAGLst(const QString& tableName) {
    if (!StudyDB)
        return {StudyFinding::EngineFailed};
    return loadStudyList(*StudyDB, kAggregateList, tableName, CurBDSId, VctrPAGLst,
                         [this](const QString& t) { show(t); });
}

void StudyContext::InitDmgphyPrmtrs(const QString& bdsId, Cell& mtxDmgphy) {
    if (!StudyDB)
        return;
    QSqlError e;
    auto q = StudyDB->query(
        QStringLiteral("SELECT BPUID, YEAR, Cdmdl, PGR, IMR FROM DatDmgphyPrmtrs WHERE BPUID IN "
                       "(SELECT BPUID FROM _DctBPU WHERE BDSId = ?) ORDER BY rowid"),
        {bdsId}, &e);
    if (!q) {
        show(isNoSuchTable(e) ? dbtext::NoDmgphyTable : engineDescription(e));
        return;
    }
    const auto rows = rowsOf(*q, 5);
    mtxDmgphy = rows.isEmpty() ? Cell() : matrix(rows, 5);
}

} // namespace vesk
