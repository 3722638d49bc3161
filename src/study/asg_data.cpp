#include "study/asg_data.h"

#include "database/db_connection.h"
#include "database/study_context.h"
#include "foundation/array_helpers.h"
#include "foundation/settings.h"
#include "study/asg_labels.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

namespace vesk {

bool& FlagDataADW() {
    static bool flag = false;
    return flag;
}

bool& FlagDataCSM() {
    static bool flag = false;
    return flag;
}

namespace {

QString orDefault(const QString& name, const char* fallback) {
    const QString t = name.trimmed();
    return t.isEmpty() ? QString::fromLatin1(fallback) : t;
}

// Text comparisons are case-blind, as the study database has always compared them.
// A table name goes into the statement text, so it must be a plain identifier.
QString quotedTable(const QString& name) {
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    const QString t = name.trimmed();
    if (!plain.match(t).hasMatch())
        throw RuntimeError(3078, QStringLiteral("Could not find the input table or query '%1'").arg(name));
    return u'"' + t + u'"';
}

[[noreturn]] void fail(const QSqlQuery& q) {
    const QSqlError e = q.lastError();
    bool ok = false;
    const int number = e.nativeErrorCode().toInt(&ok);
    throw RuntimeError(ok ? number : 3000, e.text());
}

// The counts under each label of one set, and the flag set by a non-zero count.
Cell countsUnderLabels(const QSqlDatabase& db, const CellArray& arrAgeDfn, int mode,
                       const QStringList& bpuIds, const QString& table, bool& flag) {
    if (bpuIds.isEmpty())
        return Cell();
    CellArray labels;
    if (!ASGDfn(arrAgeDfn, mode, labels) || labels.rank() != 1)
        return Cell();
    QStringList marks;
    for (int i = 0; i < bpuIds.size(); ++i)
        marks << QStringLiteral("?");
    const QString sql = QStringLiteral("select count(*) as ctr from %1 where bpuid collate nocase in (%2) "
                                       "and asg = ? collate nocase")
                            .arg(quotedTable(table), marks.join(u','));
    CellArray out({labels.size(0), 2});
    for (int i = 0; i < labels.size(0); ++i) {
        const QString label = labels(labels.lbound(0) + i).toString();
        QSqlQuery q(db);
        if (!q.prepare(sql))
            fail(q);
        for (const QString& id : bpuIds)
            q.addBindValue(id);
        q.addBindValue(label);
        if (!q.exec() || !q.next())
            fail(q);
        const double ctr = q.value(0).toDouble();
        out(i, 0) = Cell(label);
        out(i, 1) = Cell(ctr);
        if (ctr != 0)
            flag = true;
    }
    return Cell(std::move(out));
}

} // namespace

QString asgAdwTableName() {
    return orDefault(preferences().cmbVESKADW, "DatADW");
}

QString asgCsmTableName() {
    return orDefault(preferences().cmbVESKCSMP, "DatCSM");
}

Cell FnAsgDataYld(const QSqlDatabase& db, const CellArray& arrAgeDfn, const QStringList& bpuIds,
                  const QString& adwTable) {
    return countsUnderLabels(db, arrAgeDfn, 1, bpuIds, adwTable, FlagDataADW());
}

Cell FnAsgDataYll(const QSqlDatabase& db, const CellArray& arrAgeDfn, const QStringList& bpuIds,
                  const QString& csmTable) {
    return countsUnderLabels(db, arrAgeDfn, 0, bpuIds, csmTable, FlagDataCSM());
}

CellArray canModifyAsg(const QSqlDatabase& db, const CellArray& arrAgeDfn, const QStringList& bpuIds,
                       const QString& adwTable, const QString& csmTable) {
    CellArray record({4});
    record(2) = FnAsgDataYld(db, arrAgeDfn, bpuIds, adwTable);
    record(3) = FnAsgDataYll(db, arrAgeDfn, bpuIds, csmTable);
    record(0) = Cell(FlagDataADW() ? -1 : 0);
    record(1) = Cell(FlagDataCSM() ? -1 : 0);
    return record;
}

QStringList asgDataTables() {
    return {QStringLiteral("DatADW"), QStringLiteral("DatASDR"), QStringLiteral("DatCSM"),
            QStringLiteral("DatDmgphyPrmtrs"), QStringLiteral("DatPop")};
}

bool FnBpuHasData(const QSqlDatabase& db, const QString& bpuId, const QStringList& tables) {
    for (const QString& table : tables) {
        QSqlQuery q(db);
        if (!q.prepare(
                QStringLiteral("select * from %1 where bpuid = ? collate nocase").arg(quotedTable(table))))
            fail(q);
        q.addBindValue(bpuId);
        if (!q.exec())
            fail(q);
        if (q.next())
            return true;
    }
    return false;
}

namespace {

QStringList textsOf(const Cell& list) {
    QStringList out;
    if (!list.isArray() || list.array().rank() != 1)
        return out;
    const CellArray& a = list.array();
    for (int i = a.lbound(0); i <= a.ubound(0); ++i)
        out.push_back(a(i).toString());
    return out;
}

} // namespace

CellArray canModifyAsg() {
    const StudyContext& c = studyContext();
    if (!c.StudyDB) {
        CellArray record({4});
        record(0) = Cell(FlagDataADW() ? -1 : 0);
        record(1) = Cell(FlagDataCSM() ? -1 : 0);
        return record;
    }
    const CellArray dfn = c.ArrAgeDfn.isArray() ? c.ArrAgeDfn.array() : CellArray();
    return canModifyAsg(c.StudyDB->database(), dfn, textsOf(c.VctrBPULst));
}

bool FnBpuHasData(const QString& bpuId) {
    const StudyContext& c = studyContext();
    if (!c.StudyDB)
        return false;
    QStringList tables;
    for (const QString& t : c.TblNmLst)
        if (!t.isEmpty())
            tables.push_back(t);
    return FnBpuHasData(c.StudyDB->database(), bpuId, tables.isEmpty() ? asgDataTables() : tables);
}

} // namespace vesk
