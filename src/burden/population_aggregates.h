#pragma once
// The population aggregates of a study and their members: each level-1 aggregate (PAG1) with the BPUs
// mapped to it, each level-2 aggregate (PAG2) with the BPUs of its PAG1s, as indices into the BPU
// dimension of a result (the order of VctrBPULst). A PAG2 list goes from the PAG2 through its PAG1s
// straight to the BPUs; it is never formed from PAG1 results.

#include "burden/aggregation.h"
#include "database/db_connection.h"
#include "platform/cell.h"

#include <QString>
#include <optional>
#include <vector>

namespace vesk {

enum class PagLevel { Pag1, Pag2 };

struct PopulationAggregate {
    QString id;
    QString name;
    PagMembers members; // indices into VctrBPULst, in the order of the BPU ids
};

// The aggregates of `study` at `level`, in the order of their ids: a PAG1 that has BPUs of the study, a
// PAG2 of the study; members in the order of their BPU ids, each once. Ids compare trimmed and without
// regard to case, as the population-unit tables are keyed. A BPU that is not in `vctrBPULst` is left
// out. std::nullopt with `error` when the engine fails.
std::optional<std::vector<PopulationAggregate>> populationAggregates(const DbConnection& db, const QString& study,
                                                                     const Cell& vctrBPULst, PagLevel level,
                                                                     QString* error);

// The member lists alone, for FnBPUToPag.
std::vector<PagMembers> memberLists(const std::vector<PopulationAggregate>& aggregates);

} // namespace vesk
