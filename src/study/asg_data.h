#pragma once
// Data held under age-sex group labels. The labels are the only link between the data tables and a
// study's age definitions: when the definitions change nothing is converted or deleted, and old rows
// keep their old labels. Before the user redefines, the forms ask canModifyAsg whether data stand
// under the labels of the current definitions, and warn.
//
// All queries bind their values; a table name is taken only when it is a plain identifier.

#include "platform/cell_array.h"

#include <QSqlDatabase>
#include <QStringList>

namespace vesk {

// Set once a count under the YLD labels (FlagDataADW) or the YLL labels (FlagDataCSM) was non-zero.
// Nothing in the program clears them: they stay set until the program ends.
bool& FlagDataADW();
bool& FlagDataCSM();

// The table names of the current preferences, trimmed ("DatADW" and "DatCSM" when none is set).
QString asgAdwTableName();
QString asgCsmTableName();

// For each label of the YLD set (ASGDfn mode 1 on arrAgeDfn): the count of rows of `adwTable` under
// that label for the study's units, as a (labels, 0..1) array of (label, ctr). A non-zero count sets
// FlagDataADW. With no units the result is Empty and the flag stays as it was. Throws RuntimeError when
// a query fails or the table name is not a plain identifier.
Cell FnAsgDataYld(const QSqlDatabase& db, const CellArray& arrAgeDfn, const QStringList& bpuIds,
                  const QString& adwTable = asgAdwTableName());
// The same for the YLL set (mode 0), `csmTable` and FlagDataCSM.
Cell FnAsgDataYll(const QSqlDatabase& db, const CellArray& arrAgeDfn, const QStringList& bpuIds,
                  const QString& csmTable = asgCsmTableName());

// The four-cell check: 0 FlagDataADW, 1 FlagDataCSM (both -1 for true, 0 for false), 2 the array of
// FnAsgDataYld, 3 the array of FnAsgDataYll. The forms look at the flags only.
CellArray canModifyAsg(const QSqlDatabase& db, const CellArray& arrAgeDfn, const QStringList& bpuIds,
                       const QString& adwTable = asgAdwTableName(),
                       const QString& csmTable = asgCsmTableName());

// The same for the current study: StudyDB, ArrAgeDfn and VctrBPULst of the study context. With no
// open database the arrays stay Empty and the flags are reported as they are.
CellArray canModifyAsg();

// The data tables of a study, as the study context lists them.
QStringList asgDataTables();

// Whether the unit `bpuId` has any row in one of `tables`: true at the first table with a row.
// Throws RuntimeError when a query fails or a name is not a plain identifier.
bool FnBpuHasData(const QSqlDatabase& db, const QString& bpuId, const QStringList& tables = asgDataTables());
// The same in the current study's database over the context's TblNmLst; false with no database.
bool FnBpuHasData(const QString& bpuId);

} // namespace vesk
