#pragma once
// frmDALYCal, the DALY calculator of one cause: the YLD side (incidence inputs) and the YLL side
// (deaths and ages at death), each with its own age intervals, joined into a DALY through the
// age-sex map. With "Feesability Option" on, the two sets must map.

#include "burden/calculator.h"
#include "burden/calculator_output.h"

#include <QMainWindow>

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace vesk {

class frmDALYCal : public QMainWindow {
    Q_OBJECT
public:
    explicit frmDALYCal(QWidget* parent = nullptr);

    DapGridModel& dapModel() { return dap_; }
    AgeDefModel& yldAgeModel() { return yldAges_; }
    AgeDefModel& yllAgeModel() { return yllAges_; }
    CalcDataModel& yldModel() { return yld_; }
    CalcDataModel& yllModel() { return yll_; }

    void ID_BUILD_Click();
    void ID_COMPUTE_Click();
    void SetOutputData();
    void mnu_File_Print_Click();
    void mnu_File_Save_Click();
    void mnu_Help_Click();
    CalculatorSheet sheet() const;

    QTableView* flexBuiltInDAP = nullptr;
    QTableView* AgeDef = nullptr;    // the YLD side's age intervals
    QTableView* AgeDefYll = nullptr; // the YLL side's
    QPushButton* ID_BUILD = nullptr;
    QTableView* flexData = nullptr;
    QTableView* flexYLLData = nullptr;
    QLabel* lblTitle = nullptr;
    QLabel* lblTitleYll = nullptr;
    QComboBox* ID_DecPlcs = nullptr;
    QLineEdit* txtUserIden = nullptr;
    QComboBox* cbCOBLst = nullptr;
    QCheckBox* chkFeasibility = nullptr;
    QPushButton* ID_COMPUTE = nullptr;
    QPushButton* cmdClose = nullptr;
    QAction* mnu_File_Print = nullptr;
    QAction* mnu_File_Save = nullptr;
    QAction* mnu_Help = nullptr;

private:
    QWidget* buildTop();
    QWidget* buildSide(const char* side, const QString& ageName, AgeDefModel* ages, QTableView*& ageView,
                       const QString& dataName, CalcDataModel* data, QTableView*& dataView, QLabel*& title);

    DapGridModel dap_;
    AgeDefModel yldAges_;
    AgeDefModel yllAges_;
    CalcDataModel yld_;
    CalcDataModel yll_;
};

} // namespace vesk
