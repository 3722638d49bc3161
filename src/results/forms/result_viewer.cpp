#include "results/forms/result_viewer.h"

#include "burden/aggregation_texts.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/leading_causes.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "inputs/grid_functions.h"
#include "inputs/save_results.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/print_html.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"
#include "results/forms/frm_show_rslt.h"
#include "results/results_texts.h"
#include "platform/forms/window_placement.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace vesk {

namespace rt = results_texts;

namespace {

bool isDetail(const ResultSource& s) {
    return s.entry.kind == ResultKind::Detail;
}

QString viewerName(const ResultSource& s) {
    if (isDetail(s))
        return QStringLiteral("Frm6DResults");
    return s.entry.level == ResultLevel::BPU ? QStringLiteral("frmDetailsForBpu") : QStringLiteral("frmDetails");
}


QString causeName(const QString& code) {
    return studyContext().StudyDB ? FnDiseaseName(*studyContext().StudyDB, code) : QString();
}

} // namespace

ResultViewer* ResultViewer::open(const ResultEntry& entry, QWidget* parent) {
    auto source = resultSource(entry, computation(), studyContext());
    if (!source)
        return nullptr;
    return new ResultViewer(std::move(*source), parent);
}

ResultViewer::ResultViewer(ResultSource source, QWidget* parent) : QWidget(parent), source_(std::move(source)) {
    setObjectName(viewerName(source_));
    setAttribute(Qt::WA_DeleteOnClose);
    if (isDetail(source_))
        setWindowTitle(text(rt::kDetailCaption));
    else if (source_.entry.kind == ResultKind::Leading)
        setWindowTitle(text(aggregation_texts::kLeadingTitle));
    else
        setWindowTitle(summaryHeads(source_.entry).value(2) + text(rt::kPercentage));
    buildControls();
    layOut();
    resize(isDetail(source_) ? 1100 : 820, 520);
    ShowReport();
}

void ResultViewer::buildControls() {
    const bool detail = isDetail(source_);
    cmbDap = new QComboBox(this);
    cmbDap->setObjectName(QStringLiteral("cmbDap"));
    if (source_.daps.isArray()) {
        const CellArray& m = source_.daps.array();
        for (int d = m.lbound(0); d <= m.ubound(0); ++d)
            cmbDap->addItem(m(d, m.lbound(1) + kDapId).toString());
    }
    cmbYear = new QComboBox(this);
    cmbYear->setObjectName(QStringLiteral("cmbYear"));
    if (source_.years.isArray())
        for (int y = source_.years.array().lbound(0); y <= source_.years.array().ubound(0); ++y)
            cmbYear->addItem(source_.years.array()(y).toString());
    // The current year of the study first, where it is one of the list.
    const int current = cmbYear->findText(QString::number(studyContext().CurYear));
    cmbYear->setCurrentIndex(current >= 0 ? current : 0);
    Combo1 = new QComboBox(this);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    for (const ResultUnit& u : source_.units)
        Combo1->addItem(u.name.isEmpty() ? u.id : u.id + QStringLiteral(" - ") + u.name);
    nBox = new QLineEdit(this);
    nBox->setObjectName(source_.entry.level == ResultLevel::BPU ? QStringLiteral("txtnldCausDtsBpu")
                                                                : QStringLiteral("txtnldCausDts"));
    nBox->setText(QString::number(settings().NLdCauses));
    nBox->setVisible(source_.entry.kind == ResultKind::Leading);
    lblUnit = new QLabel(this);
    lblUnit->setObjectName(QStringLiteral("lblUnit"));
    grid = new FlexGridView(this);
    grid->setObjectName(detail ? QStringLiteral("msflgADW") : QStringLiteral("MSFlexGrid1"));
    grid->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    grid->setGrid(&grid_);
    if (detail) {
        cmdTop = namedButton(this, QStringLiteral("cmdFirst"), text(rt::kMoveFirst));
        cmdPrev = namedButton(this, QStringLiteral("cmdPrev"), text(rt::kMovePrevious));
        cmdNxt = namedButton(this, QStringLiteral("cmdNext"), text(rt::kMoveNext));
        cmdlast = namedButton(this, QStringLiteral("cmdLast"), text(rt::kMoveLast));
    } else {
        cmdTop = namedButton(this, QStringLiteral("cmdTop"), text(rt::kFirst));
        cmdPrev = namedButton(this, QStringLiteral("cmdPrev"), text(rt::kPrevious));
        cmdNxt = namedButton(this, QStringLiteral("cmdNxt"), text(rt::kNext));
        cmdlast = namedButton(this, QStringLiteral("cmdlast"), text(rt::kLast));
    }
    cmdShow = namedButton(this, QStringLiteral("cmdShow"), text(rt::kShow));
    cmdCauses = namedButton(this, QStringLiteral("cmdCauses"), QStringLiteral("Causes and &Sequelae"));
    cmdCauses->setVisible(detail);
    connect(cmdCauses, &QPushButton::clicked, this, [this] { openCauseGrid(); });
    cmdSavAs = namedButton(this, QStringLiteral("cmdSavAs"), text(rt::kSaveAs));
    CmdPrint = namedButton(this, QStringLiteral("CmdPrint"), text(rt::kPrint));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), text(rt::kClose));
    connect(cmdTop, &QPushButton::clicked, this, [this] { showPage(0); });
    connect(cmdPrev, &QPushButton::clicked, this, [this] { showPage(page_ - 1); });
    connect(cmdNxt, &QPushButton::clicked, this, [this] { showPage(page_ + 1); });
    connect(cmdlast, &QPushButton::clicked, this, [this] { showPage(int(source_.units.size()) - 1); });
    connect(Combo1, &QComboBox::activated, this, [this](int i) { showPage(i); });
    connect(cmbDap, &QComboBox::activated, this, [this] { ShowReport(); });
    connect(cmbYear, &QComboBox::activated, this, [this] { ShowReport(); });
    connect(cmdShow, &QPushButton::clicked, this, [this] { ShowReport(); });
    connect(cmdSavAs, &QPushButton::clicked, this, [this] { save(); });
    connect(CmdPrint, &QPushButton::clicked, this, [this] { print(); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
}

void ResultViewer::layOut() {
    auto* choices = new QGridLayout;
    choices->addWidget(new QLabel(text(rt::kDapLabel), this), 0, 0);
    choices->addWidget(cmbDap, 0, 1);
    choices->addWidget(new QLabel(text(rt::kYearLabel), this), 0, 2);
    choices->addWidget(cmbYear, 0, 3);
    choices->addWidget(Combo1, 0, 4);
    if (nBox->isVisibleTo(this)) {
        choices->addWidget(new QLabel(text(rt::kNLabel), this), 0, 5);
        choices->addWidget(nBox, 0, 6);
    }
    choices->addWidget(cmdShow, 0, 7);
    choices->setColumnStretch(4, 1);
    auto* moves = new QHBoxLayout;
    for (QPushButton* b : {cmdTop, cmdPrev, cmdNxt, cmdlast})
        moves->addWidget(b);
    moves->addStretch();
    if (isDetail(source_))
        moves->addWidget(cmdCauses);
    for (QPushButton* b : {cmdSavAs, CmdPrint, cmdClose})
        moves->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(choices);
    layout->addWidget(lblUnit);
    layout->addWidget(grid, 1);
    layout->addLayout(moves);
}

void ResultViewer::showPage(int page) {
    // Past either end the unit on view stays.
    page_ = std::clamp(page, 0, std::max(0, int(source_.units.size()) - 1));
    ShowReport();
}

void ResultViewer::updateMoves() {
    const int last = int(source_.units.size()) - 1;
    cmdNxt->setEnabled(page_ < last);
    cmdlast->setEnabled(page_ < last);
    cmdPrev->setEnabled(page_ > 0);
    cmdTop->setEnabled(page_ > 0);
    Combo1->setCurrentIndex(page_);
    if (page_ <= last)
        lblUnit->setText(Combo1->itemText(page_));
}

void ResultViewer::ShowReport() {
    updateMoves();
    const int year = std::max(0, cmbYear->currentIndex()), dap = std::max(0, cmbDap->currentIndex());
    const int decimals = settings().RsltDecPlcs;
    table_ = isDetail(source_) ? detailTable(source_, page_, year, dap, decimals, causeName)
                               : summaryTable(source_, page_, year, dap, nBox->text(), decimals, causeName);
    grid_.setFixedRows(0);
    grid_.setFixedCols(0);
    if (!table_) {
        grid_.setRows(0);
        grid_.setCols(0);
        return;
    }
    showTable(grid_, table_->heads, table_->rows);
    grid->resizeColumnsToContents();
    grid->horizontalScrollBar()->setValue(0);
    grid->verticalScrollBar()->setValue(0);
}

void ResultViewer::save() {
    saveResultsAs(table_ ? table_->rows : CellArray(), table_ ? tableFieldNames(table_->heads) : QStringList(),
                  QStringLiteral("Results"));
}

QWidget* ResultViewer::openCauseGrid() {
    auto* grid = new frmShowRslt(source_, page_, std::max(0, cmbYear->currentIndex()), std::max(0, cmbDap->currentIndex()));
    placeBesideOpener(this, grid);
    grid->show();
    return grid;
}

void ResultViewer::print() {
    if (printHtml(this, gridHtml(windowTitle() + QStringLiteral(" - ") + lblUnit->text(), grid_)))
        prompts().ask(text(rt::kPrinted));
}

} // namespace vesk
