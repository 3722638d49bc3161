#pragma once
// frmLifeTable: the result of the life table tool (or a model table beside it), shown rounded to
// the chosen decimals, printed (to PDF where no printer is attached) and saved in any of the five
// kinds with the field names of a saved life table. What is saved is the table's doubles, not the
// rounded texts on screen.

#include "demography/life_table_tool.h"
#include "platform/grid_model.h"

#include <QWidget>

class QPushButton;

namespace vesk {

class FlexGridView;

class frmLifeTable : public QWidget {
public:
    frmLifeTable(LifeTableToolResult result, int decimals, const QString& caption, QWidget* parent = nullptr);

    FlexGridView* grdLTF = nullptr;
    QPushButton* IDClose = nullptr;
    QPushButton* IdPrn = nullptr;
    QPushButton* IDSave = nullptr;

    void IdPrn_Click();
    void IDSave_Click();
    const LifeTableToolResult& result() const { return result_; }
    // The page that Print sends: the title and the grid as shown.
    QString printHtml() const;

private:
    void fill(int decimals);

    LifeTableToolResult result_;
    GridModel grid_;
};

} // namespace vesk
