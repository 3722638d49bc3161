#include "results/forms/frm_show_rslt.h"

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
#include "platform/texts.h"
#include "results/result_collapse.h"
#include "results/results_texts.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace vesk {

namespace rt = results_texts;

namespace {

QString causeName(const QString& code) {
    return studyContext().StudyDB ? FnDiseaseName(*studyContext().StudyDB, code) : QString();
}

QString sequelaName(const QString& code) {
    return studyContext().StudyDB ? FnSequelaName(*studyContext().StudyDB, code) : QString();
}

} // namespace

frmShowRslt::frmShowRslt(ResultSource source, int unit, int year, int dap, QWidget* parent)
    : QWidget(parent), source_(std::move(source)), unit_(unit), year_(year), dap_(dap) {
    setObjectName(QStringLiteral("frmShowRslt"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(source_.units.at(std::size_t(unit_)).id + QStringLiteral(" - ") +
                   burdenMeasureName(source_.entry.measure));
    cmbCause = new QComboBox(this);
    cmbCause->setObjectName(QStringLiteral("cmbCause"));
    const CellArray& lbl = source_.measure.labels.array();
    const CellArray& causes = lbl(lbl.lbound(0) + kLblCauses).array();
    for (int c = causes.lbound(0); c <= causes.ubound(0); ++c)
        cmbCause->addItem(causes(c).toString() + QStringLiteral(" - ") + causeName(causes(c).toString()));
    grdRslt = new FlexGridView(this);
    grdRslt->setObjectName(QStringLiteral("grdRslt"));
    grdRslt->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    grdRslt->setGrid(&grid_);
    cmdAll = namedButton(this, QStringLiteral("cmdAll"), QStringLiteral("All Causes"));
    cmdSqla = namedButton(this, QStringLiteral("cmdSqla"), QStringLiteral("Sequelae of the Cause"));
    cmdSavAs = namedButton(this, QStringLiteral("cmdSavAs"), text(rt::kSaveAs));
    CmdPrint = namedButton(this, QStringLiteral("CmdPrint"), text(rt::kPrint));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), text(rt::kClose));
    connect(cmdAll, &QPushButton::clicked, this, [this] { showAll(); });
    connect(cmdSqla, &QPushButton::clicked, this, [this] { showSequela(); });
    connect(cmdSavAs, &QPushButton::clicked, this, [this] {
        saveResultsAs(table_ ? table_->rows : CellArray(), table_ ? tableFieldNames(table_->heads) : QStringList(),
                      QStringLiteral("Results"));
    });
    connect(CmdPrint, &QPushButton::clicked, this, [this] {
        if (printHtml(this, gridHtml(windowTitle(), grid_)))
            prompts().ask(text(rt::kPrinted));
    });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* top = new QHBoxLayout;
    top->addWidget(cmbCause, 1);
    top->addWidget(cmdSqla);
    top->addWidget(cmdAll);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    for (QPushButton* b : {cmdSavAs, CmdPrint, cmdClose})
        bottom->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(grdRslt, 1);
    layout->addLayout(bottom);
    resize(760, 520);
    showAll();
}

void frmShowRslt::showAll() {
    table_ = collapseWithSequelae(source_, unit_, year_, dap_, settings().RsltDecPlcs, causeName, sequelaName);
    fill();
}

void frmShowRslt::showSequela() {
    auto rows = sequelaRows(source_, cmbCause->currentIndex(), unit_, year_, dap_, settings().RsltDecPlcs, sequelaName);
    if (!rows)
        return; // the grid keeps what it showed
    table_ = std::move(rows);
    fill();
}

void frmShowRslt::fill() {
    grid_.setFixedRows(0);
    grid_.setFixedCols(0);
    if (!table_) {
        grid_.setRows(0);
        return;
    }
    showTable(grid_, table_->heads, table_->rows);
    grdRslt->resizeColumnsToContents();
}

} // namespace vesk
