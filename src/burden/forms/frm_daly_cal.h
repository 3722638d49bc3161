#pragma once
// frmDALYCal, the DALY calculator of one cause: the YLD side (incidence inputs) and the YLL side
// (deaths and ages at death), each with its own age intervals, joined into a DALY through the
// age-sex map. With "Feesability Option" on, the two sets must map.

#include "burden/forms/calculator_window.h"

class QCheckBox;

namespace vesk {

class frmDALYCal : public CalculatorWindow {
    Q_OBJECT
public:
    explicit frmDALYCal(QWidget* parent = nullptr);

    AgeDefModel& yldAgeModel() { return yldAges_; }
    AgeDefModel& yllAgeModel() { return yllAges_; }
    CalcDataModel& yldModel() { return yld_; }
    CalcDataModel& yllModel() { return yll_; }

    void ID_BUILD_Click();
    void ID_COMPUTE_Click();
    void SetOutputData() override;
    CalculatorSheet sheet() const override;

    // The YLD side: its age intervals, title and data grid.
    QTableView* AgeDef = nullptr;
    QLabel* lblTitle = nullptr;
    QTableView* flexData = nullptr;
    // The YLL side.
    QTableView* AgeDefYll = nullptr;
    QLabel* lblTitleYll = nullptr;
    QTableView* flexYLLData = nullptr;
    QCheckBox* chkFeasibility = nullptr;
    QPushButton* ID_COMPUTE = nullptr;

private:
    QWidget* buildTop();
    QWidget* buildSide(const char* side, const QString& ageName, AgeDefModel* ages, QTableView*& ageView,
                       const QString& dataName, CalcDataModel* data, QTableView*& dataView, QLabel*& title);

    AgeDefModel yldAges_;
    AgeDefModel yllAges_;
    CalcDataModel yld_;
    CalcDataModel yll_;
};

} // namespace vesk
