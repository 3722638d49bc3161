#pragma once
// frmLoadStatus, "Loading": stored results read back into the computation's arrays
// (LoadStroedResults, burden/stored_results.h) for the parameter sets chosen in flexBuiltInDAP, so
// that the result views work without a new computation. A running list tells each step.

#include "burden/calculator_models.h"

#include <QWidget>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTableView;
class QTimer;

namespace vesk {

class frmLoadStatus : public QWidget {
public:
    // The window, made or brought forward (mns_lsr).
    static frmLoadStatus* open(QWidget* parent);
    explicit frmLoadStatus(QWidget* parent = nullptr);

    QLabel* Label2 = nullptr;
    QTableView* flexBuiltInDAP = nullptr;
    QPushButton *CmdOk = nullptr, *cmdClose = nullptr;
    QListWidget* List1 = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QLabel* Label1 = nullptr;
    QTimer* Timer1 = nullptr;

    DapGridModel& dapModel() { return dap_; }
    void CmdOk_Click();

private:
    void Timer1_Timer();

    DapGridModel dap_{DapRowTexts::Computation};
};

} // namespace vesk
