#include "shell/preferences_life_table.h"

#include "demography/standard_life_table.h"
#include "demography/standard_table_export.h"
#include "demography/standard_table_texts.h"
#include "demography/user_life_table_import.h"
#include "inputs/save_results.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "shell/preferences_texts.h"

namespace vesk {

namespace {

namespace st = standard_table_texts;

// The grid's column of each of the table's columns: age, female, male.
constexpr int kGridColumn[] = {0, 2, 1};

int normalType(int type) {
    return type == 2 || type == 3 ? type : 1;
}

void setHeads(GridModel& grid, int rows) {
    grid.setFixedCols(0);
    grid.setFixedRows(1);
    grid.setCols(3);
    grid.setRows(1 + rows);
    grid.clear();
    grid.setTextMatrix(0, 0, text(st::kHeadAge));
    grid.setTextMatrix(0, 1, text(preferences_texts::kHeadMale));
    grid.setTextMatrix(0, 2, text(preferences_texts::kHeadFemale));
}

const CellArray& fixedTable(int type, const VeskSettings& s) {
    return type == 3 ? s.MtxLTSWHO : s.MtxLTSKRO;
}

CellArray& fixedTable(int type, VeskSettings& s) {
    return type == 3 ? s.MtxLTSWHO : s.MtxLTSKRO;
}

bool hasUserTable(const PreferencesControls& p) {
    return p.userLifeTableLoaded && p.userLifeTable.rank() == 2;
}

} // namespace

void fillLifeTableGrid(GridModel& grid, const CellArray& table) {
    if (table.rank() != 2) {
        emptyLifeTableGrid(grid);
        return;
    }
    const bool redraw = grid.redraw();
    grid.setRedraw(false);
    setHeads(grid, table.size(0));
    for (int i = 0; i < table.size(0); ++i)
        for (int c = 0; c < 3 && c < table.size(1); ++c)
            grid.setTextMatrix(i + 1, kGridColumn[c],
                               valueText(table(table.lbound(0) + i, table.lbound(1) + c)));
    grid.setRedraw(redraw);
}

void emptyLifeTableGrid(GridModel& grid) {
    setHeads(grid, kEmptySheetRows);
}

CellArray lifeTableFromGrid(const GridModel& grid) {
    QList<int> rows;
    for (int r = grid.fixedRows(); r < grid.rows(); ++r)
        for (int c = 0; c < 3; ++c)
            if (!grid.textMatrix(r, c).trimmed().isEmpty()) {
                rows << r;
                break;
            }
    if (rows.isEmpty())
        return {};
    CellArray table({static_cast<int>(rows.size()), 3});
    for (int i = 0; i < rows.size(); ++i)
        for (int c = 0; c < 3; ++c) {
            const QString value = grid.textMatrix(rows[i], kGridColumn[c]).trimmed();
            if (!value.isEmpty())
                table(i, c) = Cell(value);
        }
    return table;
}

void LifeTableTab::load(const VeskSettings& s, const PreferencesControls& p) {
    choice_ = normalType(s.LifeTblType);
    show(s, p, false);
}

void LifeTableTab::choose(int type, const VeskSettings& s, const PreferencesControls& p) {
    choice_ = normalType(type);
    show(s, p, true);
}

void LifeTableTab::show(const VeskSettings& s, const PreferencesControls& p, bool askWhenNone) {
    if (choice_ != 2) {
        fillLifeTableGrid(grid_, fixedTable(choice_, s));
        return;
    }
    if (hasUserTable(p)) {
        fillLifeTableGrid(grid_, p.userLifeTable);
        return;
    }
    if (askWhenNone)
        prompts().ask(text(st::kNoUserTable), Buttons::Ok, Icon::None, text(st::kNoUserTableTitle));
    emptyLifeTableGrid(grid_);
}

QString LifeTableTab::note() const {
    return standardLifeTableNote(choice_);
}

void LifeTableTab::apply(VeskSettings& s, PreferencesControls& p) {
    s.LifeTblType = choice_;
    CellArray table = lifeTableFromGrid(grid_);
    if (choice_ == 2) {
        p.userLifeTableLoaded = !table.isEmpty();
        p.userLifeTable = std::move(table);
    } else {
        // A grid emptied leaves the matrix empty, and the settings file's writer then passes on the
        // table the file holds rather than write none.
        fixedTable(choice_, s) = std::move(table);
    }
    show(s, p, false);
}

Cell LifeTableTab::GetUsrLifeTable(const PreferencesControls& p) const {
    if (choice_ != 2)
        return vesk::GetUsrLifeTable(p);
    CellArray table = lifeTableFromGrid(grid_);
    return table.isEmpty() ? Cell() : Cell(std::move(table));
}

bool LifeTableTab::exportGrid(const VeskSettings& s) const {
    const QString name =
        choice_ == 2 ? userTableSourceName(s) : text(choice_ == 3 ? st::kWhoTable : st::kKroTable);
    QStringList fields;
    for (const char* field : st::kFieldNames)
        fields << text(field);
    return saveResultsAs(standardTableRows(lifeTableFromGrid(grid_)), fields, name);
}

} // namespace vesk
