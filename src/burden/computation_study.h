#pragma once
// What a computation reads of the study besides its tables: the open file, the study, its years,
// units, causes with their sequelae, the two age-sex label vectors and the units' demographic
// parameters. The loaders of the inputs and the stores of the results take it alike.

#include "database/db_connection.h"
#include "database/study_context.h"
#include "platform/cell.h"
#include "platform/progress.h"

#include <QString>
#include <functional>

namespace vesk {

struct ComputationStudy {
    const DbConnection* db = nullptr;
    QString study;   // CurBDSId
    Cell years;      // VctrYrLst
    Cell units;      // VctrBPULst
    Cell causes;     // MtxCobCd
    Cell yllLabels;  // VctrYLLAsg
    Cell yldLabels;  // VctrYLDAsg
    Cell demography; // MtxDmgphy: BPUId, Year, CDMdl, PGR, IMR
};

// Where the steps of a run report progress (the window's bar and label), and the seconds since the
// run began for their texts.
struct ComputationProgress {
    Progress* bar = nullptr;
    std::function<double()> seconds;
};

// The study context's current study as a computation reads it.
inline ComputationStudy computationStudy(const StudyContext& c) {
    return {c.StudyDB.get(), c.CurBDSId, c.VctrYrLst, c.VctrBPULst, c.MtxCobCd, c.VctrYLLAsg, c.VctrYLDAsg,
            c.MtxDmgphy};
}

} // namespace vesk
