#pragma once
// File -> Import / Export -> Population Units, without their file dialogs: the basic population
// units (_DctBPU), the aggregates of level 1 (_DctPAG1) and level 2 (_DctPAG2) of the current study,
// one level or all three.
//
// A file holds a level's table under the name the settings give it (BPUTblNm, PAG1TblNm, PAG2TblNm),
// its fields those of the study table without the study's id, which an import puts back as the
// current study's: BPU: BPUID, BPUName, Prty, PAG1Id; PAG1: PAG1Id, PAG1Name, PAG2Id; PAG2: PAG2Id,
// PAG2Name. A text file holds the three levels at once: each table's rows (fields split at ";")
// after the first line that holds its name anywhere, up to the next line that holds any of the three
// names, or the end.
//
// Import (FnImpPopUntsAll): when the study has units already, the question whether to purge its
// schema (No: "Aborting import of Population Schema"); then in one transaction the three levels of
// the study emptied and the rows of the level (or of all three) appended. A level without rows
// stops it with "... not found"; a refused row with the recover routine's message
// (ProcImpPopRecover); either way the transaction is undone and the schema there was stays whole.
// After an import of all three, the study's lists of units and aggregates are loaded again.

#include "database/study_context.h"
#include "foundation/settings.h"
#include "inputs/dictionary_transfer.h"

#include <QString>
#include <optional>

namespace vesk {

enum class UnitLevel { Bpu, Pag1, Pag2 };

// The key of the menu ("BPU", "PAG1", "PAG2", "ALL") as a level; std::nullopt for "ALL".
std::optional<UnitLevel> unitLevelOfKey(const QString& key, bool* known = nullptr);
// The study table, and the name of its table in a file (the settings' or the study table's own).
QString unitTableName(UnitLevel level);
QString unitSourceName(UnitLevel level, const VeskSettings& s = settings());

// FnImpPopUntsAll: `level` std::nullopt imports all three.
TransferResult FnImpPopUntsAll(StudyContext& context, std::optional<UnitLevel> level, const QString& path,
                               const VeskSettings& s = settings());

// FnExpData for "BPUDCT", "PAG1DCT", "PAG2DCT" and "POPALL" (std::nullopt): the study's rows.
TransferResult exportUnits(const DbConnection& db, const QString& study, std::optional<UnitLevel> level,
                           const QString& path, const VeskSettings& s = settings());

} // namespace vesk
