#include "burden/forms/calculator_window.h"

#include "burden/calculator_texts.h"
#include "burden/forms/calculator_widgets.h"
#include "platform/prompts.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

namespace vesk {

namespace ct = calculator_texts;

CalculatorWindow::CalculatorWindow(bool dalyRowTexts, const char* helpText, QWidget* parent)
    : QMainWindow(parent), dap_(dalyRowTexts), helpText_(helpText) {
    setAttribute(Qt::WA_DeleteOnClose);
    wireCalculatorMenus(this);
}

QFormLayout* CalculatorWindow::addDapAndHead(QHBoxLayout* row, QWidget* parent) {
    flexBuiltInDAP = makeDapGrid(&dap_, parent);
    row->addWidget(flexBuiltInDAP, 0, Qt::AlignTop);
    return makeCalculatorHead(
        parent, this, [this] { SetOutputData(); }, txtUserIden, cbCOBLst, ID_DecPlcs);
}

QPushButton* CalculatorWindow::makeButton(const char* caption, const QString& name, QWidget* parent,
                                          std::function<void()> onClick) {
    auto* b = new QPushButton(ct::text(caption), parent);
    b->setObjectName(name);
    connect(b, &QPushButton::clicked, this, std::move(onClick));
    return b;
}

QHBoxLayout* CalculatorWindow::buttonRow(const QList<QPushButton*>& left, const QList<QPushButton*>& right,
                                         QWidget* parent) {
    auto* row = new QHBoxLayout;
    for (QPushButton* b : left)
        row->addWidget(b);
    row->addStretch();
    for (QPushButton* b : right)
        row->addWidget(b);
    cmdClose = makeButton(ct::kClose, QStringLiteral("cmdClose"), parent, [this] { close(); });
    row->addWidget(cmdClose);
    return row;
}

QLabel* CalculatorWindow::makeTitle(const QString& name, QWidget* parent) {
    auto* title = new QLabel(parent);
    title->setObjectName(name);
    QFont f = title->font();
    f.setBold(true);
    title->setFont(f);
    return title;
}

QTableView* CalculatorWindow::makeDataGrid(const QString& name, CalcDataModel* model, QWidget* parent) {
    QTableView* view = makeCalcGrid(name, parent);
    view->setModel(model);
    view->setItemDelegate(new CalcCellDelegate(true, ct::text(ct::kNotValidEntryData), view));
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return view;
}

void CalculatorWindow::mnu_File_Print_Click() {
    printCalculatorSheet(this, sheet());
}

void CalculatorWindow::mnu_File_Save_Click() {
    saveCalculatorSheet(sheet());
}

void CalculatorWindow::mnu_Help_Click() {
    prompts().ask(ct::text(helpText_), Buttons::Ok, Icon::Information);
}

} // namespace vesk
