#pragma once
// frmShowRslt, the cause grid with sequelae of a detail table's unit, year and set: a row for each cause
// and age-sex group with the sequela rows under their cause (results/result_collapse.h), or, for the
// cause chosen, its sequela rows alone. Save As and Print as on the other viewers.

#include "platform/grid_model.h"
#include "results/result_tables.h"

#include <QWidget>

class QComboBox;
class QPushButton;

namespace vesk {

class FlexGridView;

class frmShowRslt : public QWidget {
public:
    frmShowRslt(ResultSource source, int unit, int year, int dap, QWidget* parent = nullptr);

    QComboBox* cmbCause = nullptr;
    FlexGridView* grdRslt = nullptr;
    QPushButton *cmdAll = nullptr, *cmdSqla = nullptr, *cmdSavAs = nullptr, *CmdPrint = nullptr, *cmdClose = nullptr;

    void showAll();     // Adwbpucollapse / AdwPag2collapse
    void showSequela(); // AdwbpucollapseSqla / AdwbpucollapseSqlaPag2 of the chosen cause
    const GridModel& gridModel() const { return grid_; }
    const std::optional<ResultTable>& table() const { return table_; }

private:
    void fill();

    ResultSource source_;
    int unit_, year_, dap_;
    GridModel grid_;
    std::optional<ResultTable> table_;
};

} // namespace vesk
