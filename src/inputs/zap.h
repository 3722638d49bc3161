#pragma once
// File -> Zap: the three purges of whole groups of tables, each with its question, its deletes in
// their order (run in one transaction: all of them or none), and its messages.
//
// - Dictionaries and Maps (Mnu_Submnu_DfltDicMps): nothing to purge when the groups are empty. The
//   units of the study that hold data in DatADWSqla, DatCSM and DatAdw are named, each in brackets,
//   with the warning that the data will be lost (OK / Cancel); without such units one question
//   (Yes / No). Then the statements of the old recover routine (ProcImpDctRecover), "_DctBDM" twice
//   as it always was.
// - All Study Data (Mnu_Submnu_ExtStDt): the data and result tables, when DatDmgphyPrmtrs has rows.
// - Existing Study Setup (mnu_exStdSetup): the study's definitions and the dictionary of studies,
//   when _DctBPU has rows. The current study goes with _DctBDS: the loading chain's next run finds
//   no entry in the dictionary of studies.

#include "database/db_connection.h"

#include <QString>
#include <QStringList>

namespace vesk {

enum class ZapResult { Empty, Declined, Purged, Failed };

// The statements of each purge, in their order.
const QStringList& ProcImpDctRecoverStatements();
const QStringList& studyDataPurgeStatements();
const QStringList& studySetupPurgeStatements();

// The names of the units of `study` with data linked to the dictionaries, in their order.
QStringList unitsWithLinkedData(const DbConnection& db, const QString& study);

ZapResult zapDictionaries(const DbConnection& db, const QString& study);
ZapResult zapStudyData(const DbConnection& db);
ZapResult zapStudySetup(const DbConnection& db);

} // namespace vesk
