#include "burden/forms/frm_yll_cal.h"

#include "burden/calculator_texts.h"
#include "burden/forms/calculator_widgets.h"
#include "platform/prompts.h"

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
    : QMainWindow(parent), task_(task), dap_(false), ageDef_(this), data_(this) {
    setObjectName(QStringLiteral("frmYLLCal"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(text(calculatorTaskInfo(task).caption));
    wireCalculatorMenus(this);
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
    ID_BUILD = new QPushButton(text(ct::kBuildAgeIntervals), box);
    ID_BUILD->setObjectName(QStringLiteral("ID_BUILD"));
    connect(ID_BUILD, &QPushButton::clicked, this, &frmYLLCal::ID_BUILD_Click);
    col->addWidget(ID_BUILD);
    return box;
}

QPushButton* frmYLLCal::computeButton(const char* name, const char* caption, CalculatorTask task) {
    auto* b = new QPushButton(text(caption), this);
    b->setObjectName(QString::fromLatin1(name));
    b->setVisible(task == task_);
    connect(b, &QPushButton::clicked, this, &frmYLLCal::ID_COMPUTE_Click);
    return b;
}

QWidget* frmYLLCal::buildSheetPanel() {
    auto* panel = new QWidget(this);
    auto* col = new QVBoxLayout(panel);
    col->setContentsMargins(0, 0, 0, 0);
    auto* top = new QHBoxLayout;
    flexBuiltInDAP = makeDapGrid(&dap_, panel);
    top->addWidget(flexBuiltInDAP, 0, Qt::AlignTop);
    auto* form = makeCalculatorHead(
        panel, this, [this] { SetOutputData(); }, txtUserIden, cbCOBLst, ID_DecPlcs);
    top->addLayout(form, 1);
    col->addLayout(top);

    lblTitle = new QLabel(panel);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont f = lblTitle->font();
    f.setBold(true);
    lblTitle->setFont(f);
    col->addWidget(lblTitle);
    flexData = makeCalcGrid(QStringLiteral("flexData"), panel);
    flexData->setModel(&data_);
    flexData->setItemDelegate(new CalcCellDelegate(true, text(ct::kNotValidEntryData), flexData));
    flexData->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    col->addWidget(flexData, 1);

    auto* buttons = new QHBoxLayout;
    CmdInputData = new QPushButton(text(ct::kInputData), panel);
    CmdInputData->setObjectName(QStringLiteral("CmdInputData"));
    connect(CmdInputData, &QPushButton::clicked, this, &frmYLLCal::CmdInputData_Click);
    buttons->addWidget(CmdInputData);
    buttons->addStretch();
    ID_COMPUTE_YLL = computeButton("ID_COMPUTE_YLL", ct::kComputeYlls, CalculatorTask::Yll);
    ID_COMPUTE_YLD = computeButton("ID_COMPUTE_YLD", ct::kComputeIylds, CalculatorTask::Iyld);
    ID_COMPUTE_PYLD = computeButton("ID_COMPUTE_PYLD", ct::kComputePylds, CalculatorTask::Pyld);
    buttons->addWidget(ID_COMPUTE_YLL);
    buttons->addWidget(ID_COMPUTE_YLD);
    buttons->addWidget(ID_COMPUTE_PYLD);
    cmdClose = new QPushButton(text(ct::kClose), panel);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    buttons->addWidget(cmdClose);
    col->addLayout(buttons);
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

void frmYLLCal::mnu_File_Print_Click() {
    printCalculatorSheet(this, sheet());
}

void frmYLLCal::mnu_File_Save_Click() {
    saveCalculatorSheet(sheet());
}

void frmYLLCal::mnu_Help_Click() {
    prompts().ask(text(ct::kHelpYll), Buttons::Ok, Icon::Information);
}

} // namespace vesk
