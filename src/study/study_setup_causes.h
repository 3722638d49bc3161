#pragma once
// Study Setup, the tab "Causes of Burden": which causes of the dictionary belong to the current
// study (its own Boolean column of _DctBDM), and the maps between causes and sequelae.
//
// The study's column is found by comparing the field names of _DctBDM with the study id,
// upper-cased; it enters a statement only as a name found there and quoted.

#include "database/study_context.h"
#include "platform/grid_model.h"

#include <QList>
#include <QString>
#include <utility>

namespace vesk {

// The grid DbGridCauseGrps: "Cobcd", "Disease" and the study's column, "True" or "False", one row
// per cause. False (the grid left empty) when the study has no column.
bool fillCauseGrid(const DbConnection& db, const QString& studyId, GridModel& grid);
inline constexpr int kCauseChoiceColumn = 2;
// A click in the study's column: the cause of body row `row` in or out of the study, written at once.
bool toggleCause(const DbConnection& db, const QString& studyId, GridModel& grid, int row);

// "Select all causes ...", "Unselect all causes ...": the study's column True or False in every row.
bool setAllCauses(const DbConnection& db, const QString& studyId, bool selected);
// "Swap": each row's value turned over.
bool swapCauses(const DbConnection& db, const QString& studyId);

// Apply on the tab: the causes of the study counted. None disables the menu entries of inputs and
// computation, one or more enables them; then the study's causes are loaded (InitCobcd). Returns
// the count, or -1 when the study has no column.
int applyCauses(StudyContext& context, const QString& studyId);

// The sequelae of the dictionary (code, description). When there are none, says that the
// dictionaries are not imported.
QList<std::pair<QString, QString>> sequelaList(const DbConnection& db);
// The grid MsflxdtCobcd: "Cobcd", "Cobcdname", one row per cause mapped to `sqlaCd`, and a blank
// row to type a new one into.
void fillSequelaCauseGrid(const DbConnection& db, const QString& sqlaCd, GridModel& grid);
// The description of a cause, or "This COBcd doesnot exist" and nothing.
std::optional<QString> causeName(const DbConnection& db, const QString& cobcd);
// A cause mapped to a sequela: refused for an unknown cause or a pair that exists ("This Cobcd has
// allready been mapped to the above Sequelacd"); the cause's Sqla flag set.
bool mapCauseToSequela(const DbConnection& db, const QString& sqlaCd, const QString& cobcd);
// The pair removed; the cause's Sqla flag cleared when it has no sequela left.
bool unmapCauseFromSequela(const DbConnection& db, const QString& sqlaCd, const QString& cobcd);

} // namespace vesk
