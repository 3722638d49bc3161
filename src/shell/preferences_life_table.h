#pragma once
// The standard life table's tab of the preferences form, without its widgets: the three choices
// (OptBltStd 1 the KRO table, OptUsrdf 2 the user's, optBltWHO 3 the WHO table) with their notes,
// the grid FlexLftTable that shows the table chosen and takes edits, Apply on the tab, the user
// table as the grid holds it (GetUsrLifeTable), and the grid's Export.
//
// The grid's columns are "Age", "Male", "Female"; a table holds age, female, male. The grid shows a
// table's values as the settings file keeps them, and what it holds goes back as texts, so that a
// table applied unchanged writes the same lines again. Rows left blank in the grid are no rows of
// the table.

#include "foundation/settings.h"
#include "platform/cell.h"
#include "platform/grid_model.h"

#include <QString>

namespace vesk {

// The empty sheet of the user option without a table: this many rows, one for each age 0 to 100.
inline constexpr int kEmptySheetRows = 101;

// The grid with the table's rows; the empty sheet under the same headings.
void fillLifeTableGrid(GridModel& grid, const CellArray& table);
void emptyLifeTableGrid(GridModel& grid);
// The table the grid holds: (0..n-1, 0..2) age, female, male, one row for each row with a text,
// each value the text typed (trimmed), a cell left blank Empty; no cells when no row has a text.
CellArray lifeTableFromGrid(const GridModel& grid);

class LifeTableTab {
public:
    // Form_Load: the table that LifeTblType chooses (the KRO table for any number but 2 and 3),
    // without a word when it is the user's and there is none.
    void load(const VeskSettings& s = settings(), const PreferencesControls& p = preferences());
    // An option chosen: the grid shows its table. The user option without a user table says "There
    // is no User defined Life Table " under "Life Table" and shows the empty sheet.
    void choose(int type, const VeskSettings& s = settings(), const PreferencesControls& p = preferences());

    int choice() const { return choice_; }
    // The note beside the choice (standardLifeTableNote).
    QString note() const;
    GridModel& grid() { return grid_; }
    const GridModel& grid() const { return grid_; }

    // Apply on the tab: the choice into LifeTblType; the grid of a fixed table back into its matrix,
    // the grid of the user option into the user table (none when the grid holds no row); then the
    // grid shows the chosen table as it is kept now.
    void apply(VeskSettings& s = settings(), PreferencesControls& p = preferences());

    // The user table at this moment: the grid's while the user option is shown, else the one kept;
    // a cell that holds no array when there is none.
    Cell GetUsrLifeTable(const PreferencesControls& p = preferences()) const;

    // Export (Command1): the grid's table saved to a foreign file (saveResultsAs) under the fields
    // Age, EXF, EXM, as the table LTSKRO, LTSWHO or the user table's source name.
    bool exportGrid(const VeskSettings& s = settings()) const;

private:
    void show(const VeskSettings& s, const PreferencesControls& p, bool askWhenNone);

    int choice_ = 1;
    GridModel grid_;
};

} // namespace vesk
