#include "burden/forms/calculator_widgets.h"

#include "burden/calculator_models.h"
#include "burden/calculator_texts.h"
#include "foundation/settings.h"
#include "platform/forms/print_html.h"
#include "platform/prompts.h"
#include "study/age_quick_fill.h"
#include "study/asg_texts.h"
#include "study/forms/five_yr_ag.h"

#include <QComboBox>
#include <QFont>
#include <QFormLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPrinter>
#include <QTableView>
#include <algorithm>

namespace vesk {

namespace ct = calculator_texts;

CalcCellDelegate::CalcCellDelegate(bool allowW, QString refusal, QObject* parent)
    : QStyledItemDelegate(parent), allowW_(allowW), refusal_(std::move(refusal)) {}

QWidget* CalcCellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        line->setAlignment(Qt::AlignRight);
    return editor;
}

bool CalcCellDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const QString text = static_cast<QKeyEvent*>(event)->text();
        if (!text.isEmpty() && text.at(0).isPrint()) {
            const QChar c = text.at(0);
            const bool ok = c.isDigit() || c == u'.' || (allowW_ && (c == u'W' || c == u'w'));
            if (!ok) {
                if (!refusal_.isEmpty())
                    prompts().ask(refusal_, Buttons::Ok, Icon::Warning);
                return true; // the key is not taken
            }
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

void CalcCellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (!(index.flags() & Qt::ItemIsEditable))
        option->backgroundBrush = option->palette.window();
}

QTableView* makeCalcGrid(const QString& objectName, QWidget* parent) {
    auto* view = new QTableView(parent);
    view->setObjectName(objectName);
    view->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked |
                          QAbstractItemView::EditKeyPressed);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
    view->horizontalHeader()->setHighlightSections(false);
    view->setAlternatingRowColors(false);
    return view;
}

QTableView* makeDapGrid(DapGridModel* model, QWidget* parent, int compMode) {
    QTableView* view = makeCalcGrid(QStringLiteral("flexBuiltInDAP"), parent);
    view->setModel(model);
    view->setItemDelegate(new CalcCellDelegate(false, QString(), view));
    view->verticalHeader()->hide();
    // A click marks a row; no cell stays highlighted as if it were chosen.
    view->setSelectionMode(QAbstractItemView::NoSelection);
    QHeaderView* header = view->horizontalHeader();
    header->setMinimumSectionSize(52);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    QObject::connect(view, &QTableView::clicked, view, [model, compMode](const QModelIndex& index) {
        if (index.column() == DapGridModel::SelectColumn)
            model->chooseRow(index.row(), compMode);
    });
    view->resizeColumnsToContents();
    const int frame = 2 * view->frameWidth();
    view->setFixedHeight(header->sizeHint().height() +
                         model->rowCount() * view->verticalHeader()->defaultSectionSize() + frame);
    view->setFixedWidth(header->length() + frame);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return view;
}

QTableView* makeAgeDefGrid(const QString& objectName, AgeDefModel* model, QWidget* parent) {
    QTableView* view = makeCalcGrid(objectName, parent);
    view->setModel(model);
    view->setItemDelegate(new CalcCellDelegate(true, QString::fromLatin1(ct::kNotValidEntryAge), view));
    view->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(view, &QWidget::customContextMenuRequested, view, [view, model](const QPoint& at) {
        QMenu menu(view);
        QAction* five = menu.addAction(QString::fromLatin1(asg_texts::kFiveAgeGroup));
        QAction* seven = menu.addAction(QString::fromLatin1(asg_texts::kSevenAgeGroup));
        QAction* ladder = menu.addAction(QString::fromLatin1(asg_texts::kFiveYearAgeGroup));
        QAction* chosen = menu.exec(view->viewport()->mapToGlobal(at));
        if (chosen == five)
            model->setAges(FiveAgeGroupList());
        else if (chosen == seven)
            model->setAges(SevenAgeGroupList());
        else if (chosen == ladder)
            if (const auto ages = FiveYrAg::chooseAges(view->window()))
                model->setAges(*ages);
    });
    return view;
}

QComboBox* makeDecimalsBox(QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(QStringLiteral("ID_DecPlcs"));
    for (int d = 0; d <= 10; ++d)
        box->addItem(QString::number(d));
    box->setCurrentIndex(std::clamp(settings().ToolDecPlcs, 0, 10));
    return box;
}

QFormLayout* makeCalculatorHead(QWidget* parent, QObject* receiver, std::function<void()> onDecimals,
                                QLineEdit*& user, QComboBox*& cause, QComboBox*& decimals) {
    auto* form = new QFormLayout;
    user = new QLineEdit(parent);
    user->setObjectName(QStringLiteral("txtUserIden"));
    form->addRow(ct::text(ct::kUserIdentification), user);
    cause = new QComboBox(parent);
    cause->setObjectName(QStringLiteral("cbCOBLst"));
    cause->setEditable(true);
    form->addRow(ct::text(ct::kCause), cause);
    decimals = makeDecimalsBox(parent);
    QObject::connect(decimals, &QComboBox::currentIndexChanged, receiver,
                     [onDecimals = std::move(onDecimals)](int) { onDecimals(); });
    form->addRow(ct::text(ct::kDecimalPlaces), decimals);
    return form;
}

void printSheetTo(QPrinter& printer, const CalculatorSheet& sheet) {
    printHtmlTo(printer, calculatorPrintHtml(sheet));
}

void printCalculatorSheet(QWidget* parent, const CalculatorSheet& sheet) {
    printHtml(parent, calculatorPrintHtml(sheet));
}

void saveCalculatorSheet(const CalculatorSheet& sheet) {
    const auto path = prompts().saveFileName(QStringLiteral("Save As"), QStringLiteral("Text Files (*.txt)"));
    if (!path)
        return;
    QString error;
    if (!writeCalculatorFile(*path, calculatorSaveText(sheet), &error))
        prompts().ask(error, Buttons::Ok, Icon::Critical, QString::fromLatin1(ct::kTitleVesk));
}

CalculatorMenuActions addCalculatorMenus(QMainWindow* window) {
    CalculatorMenuActions a;
    QMenu* file = window->menuBar()->addMenu(QObject::tr("&File"));
    a.print = file->addAction(QObject::tr("&Print"));
    a.print->setObjectName(QStringLiteral("mnu_File_Print"));
    a.save = file->addAction(QObject::tr("&Save"));
    a.save->setObjectName(QStringLiteral("mnu_File_Save"));
    file->addSeparator();
    file->addAction(QObject::tr("&Close"), window, &QWidget::close);
    QMenu* help = window->menuBar()->addMenu(QObject::tr("&Help"));
    a.help = help->addAction(QObject::tr("&Contents"));
    a.help->setObjectName(QStringLiteral("mnu_Help"));
    return a;
}

} // namespace vesk
