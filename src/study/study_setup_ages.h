#pragma once
// Study Setup, the tab "Age Groups": three one-column grids side by side, RPTGrid (YLL), Rptgrid2
// (YLD) and Rptgrid3 (PND), where a row is one age of the common ladder. The grids are edited in
// place; Apply turns them into the rows of _DfnAgeGrps of the current study.
//
// Before rows are replaced the user is warned when data stand under the labels of the current
// definitions (canModifyAsg); the change is never prevented, and the data rows stay behind under
// their old labels.

#include "database/study_context.h"
#include "platform/grid_model.h"

#include <QList>
#include <QStringList>

namespace vesk {

class AgeGroupsEditor {
public:
    AgeGroupsEditor();

    // Column 0 YLL, 1 YLD, 2 PND.
    GridModel& grid(int column);
    const GridModel& grid(int column) const;
    GridModel RPTGrid, Rptgrid2, Rptgrid3;

    // Set when a row of a grid is deleted or edited (also by a quick fill or a pick), cleared when
    // the user backs out of a redefinition.
    bool gridChanged = false;
    // Set when the row rule has fired; Apply then leaves the definitions as they are stored.
    bool rowRuleFired = false;

    // Every grid emptied to its heading and one blank row ("cleared to two rows").
    void clearGrids();
    // The grids filled from rows (YLL, YLD, PND); with `closeUp` each column drops its blanks.
    void fillGrids(const QList<QList<Cell>>& rows, bool closeUp);

    // The row rule for grid row `row` (fixed row counted): figures of one row must agree. On a
    // breach shows the rule's message, blanks the row in all three grids, sets rowRuleFired and
    // returns false; the form puts the cursor back on the row in the first column.
    bool checkRowRule(int row);

    // Delete on a row: "Are you sure to delete the row ?" (OK/Cancel, titled "Vesk"); OK removes
    // the row, or blanks it when the grid has two rows or fewer, and sets gridChanged.
    bool deleteRow(int column, int row);

    // A quick-fill list into one grid: the grid takes the entries plus two rows.
    void quickFill(int column, const QList<int>& ages);

    // " Define afresh": when the study has definitions and data stand under them, the two
    // questions; only then (or without data) the grids are cleared. False when the user backed out.
    bool defineAfresh(StudyContext& context);

    // " Pick from existing study": the studies with age definitions, or the message "No Age
    // Defination defined Previously" and an empty list.
    QStringList pickSources(const DbConnection& db) const;
    // Fills the grids with the definitions of `id`, each grid closed up.
    void pickFrom(const DbConnection& db, const QString& id);
    // "Display Existing": the current study's rows in the order of PND, or "No current records".
    bool displayExisting(const DbConnection& db, const QString& id);

    // Apply on the tab. True when the rows of _DfnAgeGrps were written and the context reloaded.
    bool apply(StudyContext& context);

    // The grid's body as texts, blanks dropped (Empty when nothing remains).
    Cell compactedColumn(int column) const;

private:
    bool warnBeforeRedefining(StudyContext& context);
    bool writeRows(StudyContext& context, const CellArray& rows);
};

} // namespace vesk
