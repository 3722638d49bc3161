#include "burden/forms/frm_yll_cal.h"

#include "burden/calculator_texts.h"
#include "burden/forms/calculator_widgets.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace vesk {

namespace ct = calculator_texts;

namespace {
using calculator_texts::text;
} // namespace

frmYLLCal::frmYLLCal(CalculatorTask task, QWidget* parent)
    : CalculatorWindow(false, ct::kHelpYll, parent), task_(task), ageDef_(this), data_(this) {
    setObjectName(QStringLiteral("frmYLLCal"));
    setWindowTitle(text(calculatorTaskInfo(task).caption));
    auto* central = new QWidget(this);
    auto* row = new QHBoxLayout(central);
    row->addWidget(buildAgePanel());
    row->addWidget(buildSheetPanel(), 1);
    setCentralWidget(central);
    data_.setDecimals(ID_DecPlcs->currentIndex());
    resize(960, 620);
}

QWidget* frmYLLCal::buildAgePanel() {
    auto* box = new QGroupBox(text(ct::kDefineAgeIntervals), this);
    auto* col = new QVBoxLayout(box);
    AgeDef = makeAgeDefGrid(QStringLiteral("AgeDef"), &ageDef_, box);
    AgeDef->setFixedWidth(130);
    col->addWidget(AgeDef, 1);
    ID_BUILD =
        makeButton(ct::kBuildAgeIntervals, QStringLiteral("ID_BUILD"), box, [this] { ID_BUILD_Click(); });
    col->addWidget(ID_BUILD);
    return box;
}

QPushButton* frmYLLCal::computeButton(const char* name, const char* caption, CalculatorTask task) {
    auto* b = makeButton(caption, QString::fromLatin1(name), this, [this] { ID_COMPUTE_Click(); });
    b->setVisible(task == task_);
    return b;
}

QWidget* frmYLLCal::buildSheetPanel() {
    auto* panel = new QWidget(this);
    auto* col = new QVBoxLayout(panel);
    col->setContentsMargins(0, 0, 0, 0);
    auto* top = new QHBoxLayout;
    top->addLayout(addDapAndHead(top, panel), 1);
    col->addLayout(top);

    lblTitle = makeTitle(QStringLiteral("lblTitle"), panel);
    col->addWidget(lblTitle);
    flexData = makeDataGrid(QStringLiteral("flexData"), &data_, panel);
    col->addWidget(flexData, 1);

    CmdInputData =
        makeButton(ct::kInputData, QStringLiteral("CmdInputData"), panel, [this] { CmdInputData_Click(); });
    ID_COMPUTE_YLL = computeButton("ID_COMPUTE_YLL", ct::kComputeYlls, CalculatorTask::Yll);
    ID_COMPUTE_YLD = computeButton("ID_COMPUTE_YLD", ct::kComputeIylds, CalculatorTask::Iyld);
    ID_COMPUTE_PYLD = computeButton("ID_COMPUTE_PYLD", ct::kComputePylds, CalculatorTask::Pyld);
    col->addLayout(buttonRow({CmdInputData}, {ID_COMPUTE_YLL, ID_COMPUTE_YLD, ID_COMPUTE_PYLD}, panel));
    return panel;
}

void frmYLLCal::ID_BUILD_Click() {
    if (buildCalculator(task_, ageDef_, data_))
        lblTitle->setText(data_.title());
}

void frmYLLCal::ID_COMPUTE_Click() {
    computeCalculator(task_, dap_, data_);
}

void frmYLLCal::CmdInputData_Click() {
    data_.clearResults();
}

void frmYLLCal::SetOutputData() {
    data_.setDecimals(ID_DecPlcs->currentIndex());
}

CalculatorSheet frmYLLCal::sheet() const {
    return {windowTitle(), txtUserIden->text(), cbCOBLst->currentText(), {{data_.title(), &data_}}};
}

} // namespace vesk
