#pragma once
// frmDale, "DALE Results": ArrDale of the chosen year and parameter set, a row for each BPU, rounded
// to the decimals in txtDecimals; printed (to PDF where no printer is attached) and saved in any of
// the five kinds with the keys Year, BPUID and DAPID and the fields E0_F .. DALE_P and the Sullivan
// health expectancies HE_F .. HE_P. What is saved is the doubles of ArrDale, not the rounded texts.

#include "platform/cell.h"
#include "platform/grid_model.h"

#include <QWidget>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace vesk {

class FlexGridView;

class frmDale : public QWidget {
public:
    // The window over the program's computation and study (mnu_DaleShow), made or brought forward.
    static frmDale* open(QWidget* parent);
    frmDale(const Cell& arrDale, const Cell& years, const Cell& mtxDap, QWidget* parent = nullptr);

    QListWidget* lstYear = nullptr;
    QListWidget* lstDap = nullptr;
    QLineEdit* txtDecimals = nullptr;
    FlexGridView* flxdale = nullptr;
    QPushButton *cmdRefresh = nullptr, *CmdPrint = nullptr, *cmdSave = nullptr, *cmdClose = nullptr;

    void flxdalefill();
    void CmdPrint_Click();
    void cmdSave_Click();
    const GridModel& grid() const { return grid_; }

private:
    Cell arrDale_, years_, mtxDap_;
    GridModel grid_;
};

} // namespace vesk
