#pragma once
// frmYLLCal, "Calculator": the YLL, IYLD and PYLD calculators. The user lists the lower ages of the
// age intervals, builds the sheet of age-sex groups, types the inputs, marks one or more parameter
// sets and computes; each set adds a result column.

#include "burden/calculator.h"
#include "burden/calculator_output.h"

#include <QMainWindow>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace vesk {

class frmYLLCal : public QMainWindow {
    Q_OBJECT
public:
    explicit frmYLLCal(CalculatorTask task, QWidget* parent = nullptr);

    CalculatorTask task() const { return task_; }
    DapGridModel& dapModel() { return dap_; }
    AgeDefModel& ageModel() { return ageDef_; }
    CalcDataModel& dataModel() { return data_; }

    // The handlers of the buttons and menu items.
    void ID_BUILD_Click();
    void ID_COMPUTE_Click();
    void CmdInputData_Click();
    void SetOutputData();
    void mnu_File_Print_Click();
    void mnu_File_Save_Click();
    void mnu_Help_Click();
    // The sheet that print and save send out.
    CalculatorSheet sheet() const;

    QTableView* AgeDef = nullptr;
    QPushButton* ID_BUILD = nullptr;
    QTableView* flexBuiltInDAP = nullptr;
    QTableView* flexData = nullptr;
    QComboBox* ID_DecPlcs = nullptr;
    QLineEdit* txtUserIden = nullptr;
    QComboBox* cbCOBLst = nullptr;
    QLabel* lblTitle = nullptr;
    QPushButton* ID_COMPUTE_YLL = nullptr;
    QPushButton* ID_COMPUTE_YLD = nullptr;
    QPushButton* ID_COMPUTE_PYLD = nullptr;
    QPushButton* CmdInputData = nullptr;
    QPushButton* cmdClose = nullptr;
    QAction* mnu_File_Print = nullptr;
    QAction* mnu_File_Save = nullptr;
    QAction* mnu_Help = nullptr;

private:
    QWidget* buildAgePanel();
    QWidget* buildSheetPanel();
    QPushButton* computeButton(const char* name, const char* caption, CalculatorTask task);

    CalculatorTask task_;
    DapGridModel dap_;
    AgeDefModel ageDef_;
    CalcDataModel data_;
};

} // namespace vesk
