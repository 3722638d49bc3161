#pragma once
// The stored results of a computation: ArrYld, ArrYll and ArrDaly written into RsltYLD, RsltYLL and
// RsltDALY at the end of a run (LoadTables, LoadTblYll, LoadTblDaly), and read back into the arrays
// (LoadStroedResults), so that the result views work without a new computation.
//
// A stored row's key is the year, the unit, the DAP id, the cause, for YLD the sequela, and the
// age-sex group. A YLD row of a cause without sequelae holds the sequela "xxxxxxx"; a cause with
// sequelae has rows for each sequela and none at cause level, whose sum is formed again on reading
// (a Null counted as 0). Storing skips every (year, unit, DAP) that already has a row in the table:
// earlier results are not overwritten, they are to be deleted first. Each (year, unit, DAP) goes in
// as one transaction through one prepared statement, so that a run cut short leaves whole units
// and storing runs at the engine's speed. A row the table refuses goes to the error store and the
// others stay. Where a group's label (slot 1) is Empty or Null, the ASG field takes the group's label
// of the classification and the measures keep their defaults; a Null measure is stored as NULL, an
// Empty one as the field's default.

#include "burden/computation_helpers.h"
#include "burden/computation_study.h"
#include "platform/cell.h"
#include "platform/progress.h"

#include <QString>
#include <functional>

namespace vesk {

class Computation;

// What storing and loading read of the study.
using ResultStudy = ComputationStudy;

// The progress display of the run (the form's bar and label) and the seconds since it began.
using ResultProgress = ComputationProgress;

// LoadTables with the kind "YLD" and the table "RsltYLD": ArrYld into RsltYLD.
void LoadTables(const ResultStudy& s, const QString& kind, const QString& table, const Cell& MtxDAP,
                const Cell& ArrYld, const ResultProgress& p);
// ArrYll into RsltYLL.
void LoadTblYll(const ResultStudy& s, const Cell& MtxDAP, const Cell& ArrYll, const ResultProgress& p);
// ArrDaly into RsltDALY; its groups are the YLD groups, or the YLL ones when it has as many.
void LoadTblDaly(const ResultStudy& s, const Cell& MtxDAP, const Cell& ArrDaly, const ResultProgress& p);

// The arrays LoadStroedResults fills, and the labels of their axes (BldResultLabels).
struct LoadedResults {
    Cell ArrYld, ArrYll, ArrDaly;
    ResultLabels labels;
};
enum class LoadEnd {
    Loaded, // the arrays hold what the tables had
    Ended,  // the user chose not to go on with some results missing
    Failed, // an error, shown as "There is an error in loading the stored Results. The error is: "
};
// LoadStroedResults for the parameter sets of MtxDAP: the three arrays as the tables hold them. At the
// first (year, unit, DAP) without DALY rows it asks once whether to go on. `list` gets the entries
// of the running list, `bar` the texts of each step.
LoadEnd LoadStroedResults(const ResultStudy& s, const Cell& MtxDAP, const std::function<void(const QString&)>& list,
                          Progress* bar, LoadedResults& out);

// The loaded arrays and their labels made the computation's results (MtxDAP stays as it is).
void adoptLoadedResults(LoadedResults&& loaded, Computation& comp);

} // namespace vesk
