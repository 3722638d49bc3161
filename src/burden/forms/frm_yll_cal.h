#pragma once
// frmYLLCal, "Calculator": the YLL, IYLD and PYLD calculators. The user lists the lower ages of the
// age intervals, builds the sheet of age-sex groups, types the inputs, marks one or more parameter
// sets and computes; each set adds a result column.

#include "burden/forms/calculator_window.h"

namespace vesk {

class frmYLLCal : public CalculatorWindow {
    Q_OBJECT
public:
    explicit frmYLLCal(CalculatorTask task, QWidget* parent = nullptr);

    CalculatorTask task() const { return task_; }
    AgeDefModel& ageModel() { return ageDef_; }
    CalcDataModel& dataModel() { return data_; }

    // The handlers of the buttons and menu items.
    void ID_BUILD_Click();
    void ID_COMPUTE_Click();
    void CmdInputData_Click();
    void SetOutputData() override;
    CalculatorSheet sheet() const override;

    QTableView* AgeDef = nullptr;
    QTableView* flexData = nullptr;
    QLabel* lblTitle = nullptr;
    QPushButton* ID_COMPUTE_YLL = nullptr;
    QPushButton* ID_COMPUTE_YLD = nullptr;
    QPushButton* ID_COMPUTE_PYLD = nullptr;
    QPushButton* CmdInputData = nullptr;

private:
    QWidget* buildAgePanel();
    QWidget* buildSheetPanel();
    QPushButton* computeButton(const char* name, const char* caption, CalculatorTask task);

    CalculatorTask task_;
    AgeDefModel ageDef_;
    CalcDataModel data_;
};

} // namespace vesk
