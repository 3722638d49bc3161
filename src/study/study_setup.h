#pragma once
// Study Setup, the tab "Define Study": a study is one or more rows of _DctBDS, one per reference
// year, all with the same BDSId, and exactly one row of the whole table is the current one. A new
// study also gets its own Boolean column in the cause dictionary _DctBDM, named by the study id,
// which says which causes belong to it; deleting the study drops the column again.
//
// Every write goes straight to the study file, row by row, with the values bound; nothing is
// wrapped in a transaction, so a failure midway leaves the rows written before it. The study id is
// used as a column name only after it has been checked to be a plain word.

#include "database/study_context.h"
#include "platform/grid_model.h"

#include <QList>
#include <QSqlError>
#include <QString>
#include <QStringList>

namespace vesk {

// The form's fields of the tab.
struct StudyFields {
    QString id;
    QString years;
    QString title;
};

// One row of _DctBDS as the study grid shows it.
struct StudyRow {
    QString id;
    int year = 0;
    QString title;
    QString scheme;
    bool current = false;
};

// Which field a refused Apply puts the focus back on.
enum class StudyField { None, Id, Years, Title };

struct StudyApplyResult {
    bool applied = false;
    StudyField focus = StudyField::None;
    QList<int> years; // the year list of the field, sorted
};

// Shows a database failure: "Please check Actual  field size less than the data what you are
// entering on the screen" titled "Vesk : warning" for a text too long for its field (the old
// engine's 3163), otherwise the error's number and description.
void showStudySetupDbError(const QSqlError& error);
// Runs one statement of Study Setup with its bound values; a failure is shown as above and gives
// false.
bool execSetupStatement(const DbConnection& db, const QString& sql, const QVariantList& values = {});

// The rows of _DctBDS in the order they were written.
QList<StudyRow> studyRows(const DbConnection& db);
// The current row, if there is one.
std::optional<StudyRow> currentStudyRow(const DbConnection& db);

// Apply of a new study: the three blank checks in their order, the test that the id is not in
// use, then every row of _DctBDS made not current, one row per year (the first current), the
// context moved to the new study and the study's column added to _DctBDM.
StudyApplyResult applyNewStudy(StudyContext& context, const StudyFields& fields);
// Apply of the picked study: the blank checks in their own wording, then a row with Slct False for
// each year of the field that the study does not have yet.
StudyApplyResult applyExistingStudy(StudyContext& context, const StudyFields& fields);

// Makes the row (id, year) the only current one and reloads the study context for it.
bool markCurrentStudy(StudyContext& context, const QString& id, int year);
// The context after a change of the current study: the study's own fields, the context emptied,
// then the scheme, the age definitions, the causes, the unit lists (when the study has units) and
// the captions of the Results menu.
void reloadStudyContext(StudyContext& context, const StudyRow& row);
// The study's age definitions (InitAgeGrps, its finding asked of the frame) and, when there are
// some, the age-sex group labels built from them.
void reloadAgeGroups(StudyContext& context);

// The Boolean column of the study in _DctBDM. Refused (false) for an id that is not a plain word.
bool addStudyColumn(const DbConnection& db, const QString& id, QSqlError* error);
bool dropStudyColumn(const DbConnection& db, const QString& id, QSqlError* error);
// The column of _DctBDM that carries `id`, as the file spells it (compared upper-cased); empty if none.
QString studyColumnName(const DbConnection& db, const QString& id);

// Removes a study: the question with the units it shares with other studies, the data of `year`
// under its units (only when DatADW holds some: that one test governs all five data tables), its
// age definitions, aggregates, units and rows of _DctBDS, and its column of _DctBDM. Stored results
// and disability weights stay. Returns false when the user said no or a statement failed.
bool DeleteStudy(StudyContext& context, const QString& id, int year);

// The grid of studies (dbgrid2): a record-selector column, then "Study Id", "Year", "Study Title",
// "PAG", "Slct".
void fillStudyGrid(const QList<StudyRow>& rows, GridModel& grid);

// The built-in parameter sets: the rows of _DctDAP, which start from the program's built-in sets
// when the table is empty. The grid flexBuiltInDAP has the columns "DAP Id", "r", "K", "Beta", "C"
// and a column of "False" or "True"; the rows whose id stands in `chosenSets` are ticked.
// `chosenSets` is the computation's MtxDAP, handed in by whoever opens Study Setup.
bool fillBuiltInDapGrid(StudyContext& context, const Cell& chosenSets, GridModel& grid);
// Toggles the choice of body row `row` and writes the chosen rows into `chosenSets` (MtxDAP),
// (n, 0..4): DAP id, r, K, Beta, C as the grid's texts; no chosen row leaves it empty.
void toggleBuiltInDap(Cell& chosenSets, GridModel& grid, int row);
inline constexpr int kDapChoiceColumn = 5;

// The fields that make the minimum of a study.
struct MinimumFields {
    QString id, years, title;
    int yllRows = 0, yldRows = 0, pndRows = 0; // grid rows, the fixed row included
    QString scheme, bpu, pag1, pag2;
};
// False when the study id, year or title is blank, any of the three age grids has two rows or
// fewer, or the scheme id or one of its three names is blank.
bool FnChkMinStdParameter(const MinimumFields& fields);

// The end of a File -> New that lacks the minimum: the settings file put back from the copy made
// at the start (in the temporary folder), the database closed and its file deleted, the settings
// read again and the loading chain armed, so that the program returns to the database it had.
// Returns false (with `error`) when the file could not be deleted.
bool abandonNewDatabase(StudyContext& context, QString* error);

} // namespace vesk
