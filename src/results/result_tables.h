#pragma once
// The result tables without their windows: what an entry of the Results menu shows for one unit,
// year and parameter set, built from the computation's arrays. A viewer makes a ResultSource once
// (the entry check, the roll-up to the entry's level) and asks it for a table at each move.
//
//   summary  (causes, 0..3): code, description, the measure summed over the age-sex groups, its share
//            of the total of all causes; ranked by the share, descending (the exchange sort of the N
//            leading causes); every cause for a percentage distribution, the first N for N leading
//   detail   (causes, 2 + groups): code, description, then the measure of each age-sex group, the heads
//            "CobCD", "Description" and the groups' labels (FnCrossTab of the cause and group rows)
//
// With decimals above 0 the value and share are rounded half to even to that many places; with 0 they
// stand as computed. A Null value shows as an empty cell.

#include "burden/aggregation.h"
#include "burden/leading_causes.h"
#include "platform/cell.h"
#include "platform/cell_array.h"
#include "results/result_entries.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

namespace vesk {

class Computation;
class StudyContext;

struct ResultUnit {
    QString id, name;
};

// The units of a level: the BPUs of VctrBPULst with their names, or the aggregates with theirs, and the
// BPU indices of each in `members`; none when the level has none or the engine fails (then `error`,
// when given, holds the engine's words).
std::vector<ResultUnit> levelUnits(ResultLevel level, const StudyContext& study,
                                   std::vector<PagMembers>* members = nullptr, QString* error = nullptr);

struct ResultSource {
    ResultEntry entry{};
    MeasureSource measure; // the array at the entry's level (aggregates rolled up), its labels, the slot
    std::vector<ResultUnit> units;
    Cell years;            // VctrYrLst
    Cell daps;             // MtxDAP
};

// The entry check and the roll-up: std::nullopt after the entry's message when the arrays are not
// there ("The Report cannot be shown. Please Calculate The Daly Again " for a summary or a detail
// table, "The present result cannot be shown. Please Calculate the daly again" for N leading), or when
// the level has no unit ("No PAG1 " + the level's word + " Available", "No " + the word + " is
// associated with this study").
std::optional<ResultSource> resultSource(const ResultEntry& entry, const Computation& comp, const StudyContext& study);

struct ResultTable {
    QStringList heads;
    CellArray rows;
};

// The summary of unit `unit`, year `year` and set `dap`; N from `nBox` for N leading (the question
// when it is empty or 0; nothing on Cancel).
std::optional<ResultTable> summaryTable(const ResultSource& source, int unit, int year, int dap, const QString& nBox,
                                        int decimals, const std::function<QString(const QString&)>& name);

// The detail table of unit `unit`, year `year` and set `dap`.
std::optional<ResultTable> detailTable(const ResultSource& source, int unit, int year, int dap, int decimals,
                                       const std::function<QString(const QString&)>& name);

// The field names of a table written to a file: its heads with every character that is no letter or
// digit made "_" ("Cob Code" gives Cob_Code, "F01-4" F01_4).
QStringList tableFieldNames(const QStringList& heads);

// A value as a table shows it: rounded half to even to `decimals` places when above 0 (a text of a
// number read as that number), Null and Empty as Empty.
Cell shownValue(const Cell& value, int decimals);

} // namespace vesk
