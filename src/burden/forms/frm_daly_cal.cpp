#include "burden/forms/frm_daly_cal.h"

#include "burden/calculator_texts.h"
#include "burden/forms/calculator_widgets.h"
#include "platform/prompts.h"

#include <QCheckBox>
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

frmDALYCal::frmDALYCal(QWidget* parent)
    : QMainWindow(parent), dap_(true), yldAges_(this), yllAges_(this), yld_(this), yll_(this) {
    setObjectName(QStringLiteral("frmDALYCal"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(text(ct::kDalyCaption));
    wireCalculatorMenus(this);
    auto* central = new QWidget(this);
    auto* col = new QVBoxLayout(central);
    col->addWidget(buildTop());
    auto* sides = new QHBoxLayout;
    sides->addWidget(buildSide(ct::kYldSide, QStringLiteral("AgeDef"), &yldAges_, AgeDef,
                               QStringLiteral("flexData"), &yld_, flexData, lblTitle),
                     3);
    sides->addWidget(buildSide(ct::kYllSide, QStringLiteral("AgeDefYll"), &yllAges_, AgeDefYll,
                               QStringLiteral("flexYLLData"), &yll_, flexYLLData, lblTitleYll),
                     2);
    col->addLayout(sides, 1);

    auto* buttons = new QHBoxLayout;
    ID_BUILD = new QPushButton(text(ct::kBuildAgeIntervals), central);
    ID_BUILD->setObjectName(QStringLiteral("ID_BUILD"));
    connect(ID_BUILD, &QPushButton::clicked, this, &frmDALYCal::ID_BUILD_Click);
    buttons->addWidget(ID_BUILD);
    buttons->addStretch();
    ID_COMPUTE = new QPushButton(text(ct::kComputeDalys), central);
    ID_COMPUTE->setObjectName(QStringLiteral("ID_COMPUTE"));
    connect(ID_COMPUTE, &QPushButton::clicked, this, &frmDALYCal::ID_COMPUTE_Click);
    buttons->addWidget(ID_COMPUTE);
    cmdClose = new QPushButton(text(ct::kClose), central);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    buttons->addWidget(cmdClose);
    col->addLayout(buttons);
    setCentralWidget(central);
    SetOutputData();
    resize(1180, 680);
}

QWidget* frmDALYCal::buildTop() {
    auto* top = new QWidget(this);
    auto* row = new QHBoxLayout(top);
    row->setContentsMargins(0, 0, 0, 0);
    flexBuiltInDAP = makeDapGrid(&dap_, top);
    row->addWidget(flexBuiltInDAP, 0, Qt::AlignTop);
    auto* form = makeCalculatorHead(
        top, this, [this] { SetOutputData(); }, txtUserIden, cbCOBLst, ID_DecPlcs);
    chkFeasibility = new QCheckBox(text(ct::kFeasibilityOption), top);
    chkFeasibility->setObjectName(QStringLiteral("chkFeasibility"));
    chkFeasibility->setChecked(true);
    form->addRow(QString(), chkFeasibility);
    row->addLayout(form, 1);
    return top;
}

QWidget* frmDALYCal::buildSide(const char* side, const QString& ageName, AgeDefModel* ages,
                               QTableView*& ageView, const QString& dataName, CalcDataModel* data,
                               QTableView*& dataView, QLabel*& title) {
    auto* box = new QGroupBox(text(side), this);
    auto* row = new QHBoxLayout(box);
    auto* ageCol = new QVBoxLayout;
    auto* ageLabel = new QLabel(text(ct::kDefineAgeIntervals), box);
    ageLabel->setWordWrap(true);
    ageLabel->setFixedWidth(86);
    ageCol->addWidget(ageLabel);
    ageView = makeAgeDefGrid(ageName, ages, box);
    ageView->setFixedWidth(86);
    ageCol->addWidget(ageView, 1);
    row->addLayout(ageCol);
    auto* dataCol = new QVBoxLayout;
    title = new QLabel(box);
    title->setObjectName(dataName == QLatin1String("flexData") ? QStringLiteral("lblTitle")
                                                               : QStringLiteral("lblTitleYll"));
    QFont f = title->font();
    f.setBold(true);
    title->setFont(f);
    dataCol->addWidget(title);
    dataView = makeCalcGrid(dataName, box);
    dataView->setModel(data);
    dataView->setItemDelegate(new CalcCellDelegate(true, text(ct::kNotValidEntryData), dataView));
    dataView->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    dataCol->addWidget(dataView, 1);
    row->addLayout(dataCol, 1);
    return box;
}

void frmDALYCal::ID_BUILD_Click() {
    if (!buildDalyCalculator(yldAges_, yllAges_, yld_, yll_, chkFeasibility->isChecked()))
        return;
    lblTitle->setText(yld_.title());
    lblTitleYll->setText(yll_.title());
}

void frmDALYCal::ID_COMPUTE_Click() {
    CalculateDalyCal(dap_, yld_, yll_, chkFeasibility->isChecked());
}

void frmDALYCal::SetOutputData() {
    yld_.setDecimals(ID_DecPlcs->currentIndex());
    yll_.setDecimals(ID_DecPlcs->currentIndex());
}

CalculatorSheet frmDALYCal::sheet() const {
    return {windowTitle(),
            txtUserIden->text(),
            cbCOBLst->currentText(),
            {{text(ct::kYldSide) + QStringLiteral(": ") + yld_.title(), &yld_},
             {text(ct::kYllSide) + QStringLiteral(": ") + yll_.title(), &yll_}}};
}

void frmDALYCal::mnu_File_Print_Click() {
    printCalculatorSheet(this, sheet());
}

void frmDALYCal::mnu_File_Save_Click() {
    saveCalculatorSheet(sheet());
}

void frmDALYCal::mnu_Help_Click() {
    prompts().ask(text(ct::kHelpDaly), Buttons::Ok, Icon::Information);
}

} // namespace vesk
