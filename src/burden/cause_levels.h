#pragma once
// The cause dictionary at one level of its hierarchy (group > subgroup > cluster > cause), and where
// each cause of the study stands in it.
//
//   ArrDict       (entries, 0..1): COBCd (the entry's code at that level), Descr
//   MtxCodLevels  (causes of the study, 0..3): CODCd, ClstCd, GCd, SGpCd; a cause joins through its
//                 cluster, so a cause without a cluster has no row, and a cluster without a subgroup
//                 (or a subgroup without a group) leaves those cells Null

#include "database/db_connection.h"
#include "platform/cell.h"

#include <QString>

namespace vesk {

enum class CauseLevel { Group, Subgroup, Cluster };

// The columns of MtxCodLevels.
namespace cod_levels {
inline constexpr int kCause = 0, kCluster = 1, kGroup = 2, kSubgroup = 3;
} // namespace cod_levels

struct CauseLevelDictionary {
    Cell ArrDict;
    Cell MtxCodLevels;
};

// LoadDictionary: the level's entries and the study's map of causes, the study's causes being those
// whose column `studyColumn` of _DctBDM is set. A level without entries shows "Please fill up the
// Required Level dictionary" and gives false; an engine failure shows "Error from LoadDictionary of
// DALYDist module : " with its number and words and gives false.
bool LoadDictionary(const DbConnection& db, CauseLevel level, const QString& studyColumn, CauseLevelDictionary& out);

// FnCodeAtLevel: the code at `level` of the entry the cause `code` belongs to (trimmed codes compared
// row by row, the first hit taken); Empty when the cause has no row.
Cell FnCodeAtLevel(const Cell& mtxCodLevels, const QString& code, CauseLevel level);

} // namespace vesk
