#include "burden/forms/frm_dale.h"

#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/dale.h"
#include "burden/dale_texts.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "inputs/grid_functions.h"
#include "inputs/save_results.h"
#include "platform/cell_array.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/print_html.h"
#include "platform/forms/window_placement.h"
#include "platform/texts.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace vesk {

namespace dt = dale_texts;

namespace {

QStringList heads() {
    return {text(dt::kHeadRegion), text(dt::kHeadE0F),  text(dt::kHeadDaleF), text(dt::kHeadE0M),
            text(dt::kHeadDaleM),  text(dt::kHeadE0P),  text(dt::kHeadDaleP), text(dt::kHeadHeF),
            text(dt::kHeadHeM),    text(dt::kHeadHeP)};
}

int rowsOf(const Cell& c) {
    return c.isArray() ? c.array().size(0) : 0;
}

// "[r,K,Beta,C]" of a row of MtxDAP.
QString dapText(const CellArray& m, int row) {
    QStringList parts;
    for (int k = kDapR; k <= kDapC; ++k)
        parts << m(m.lbound(0) + row, m.lbound(1) + k).toString();
    return QLatin1Char('[') + parts.join(QLatin1Char(',')) + QLatin1Char(']');
}

QString shown(const Cell& value, int decimals) {
    return value.isNumber() ? QString::number(value.toDouble(), 'f', decimals) : value.toString();
}

} // namespace

frmDale* frmDale::open(QWidget* parent) {
    static QPointer<frmDale> slot;
    return openSingle(slot, parent, [] {
        return new frmDale(computation().ArrDale, studyContext().VctrYrLst, computation().MtxDAP);
    });
}

frmDale::frmDale(const Cell& arrDale, const Cell& years, const Cell& mtxDap, QWidget* parent)
    : QWidget(parent), arrDale_(arrDale), years_(years), mtxDap_(mtxDap) {
    setObjectName(QStringLiteral("frmDale"));
    setWindowTitle(text(dt::kCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    lstYear = new QListWidget(this);
    lstYear->setObjectName(QStringLiteral("lstYear"));
    for (int y = 0; y < rowsOf(years_); ++y)
        lstYear->addItem(years_.array()(years_.array().lbound(0) + y).toString());
    lstDap = new QListWidget(this);
    lstDap->setObjectName(QStringLiteral("lstDap"));
    for (int d = 0; d < rowsOf(mtxDap_); ++d)
        lstDap->addItem(dapText(mtxDap_.array(), d));
    lstYear->setCurrentRow(0);
    lstDap->setCurrentRow(0);
    txtDecimals = new QLineEdit(QString::number(settings().LDaleDecPlcs), this);
    txtDecimals->setObjectName(QStringLiteral("txtDecimals"));
    flxdale = new FlexGridView(this);
    flxdale->setObjectName(QStringLiteral("flxdale"));
    flxdale->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    flxdale->setGrid(&grid_);
    cmdRefresh = namedButton(this, QStringLiteral("cmdRefresh"), text(dt::kRefresh));
    CmdPrint = namedButton(this, QStringLiteral("CmdPrint"), text(dt::kPrint));
    cmdSave = namedButton(this, QStringLiteral("cmdSave"), text(dt::kSave));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), text(dt::kClose));
    connect(cmdRefresh, &QPushButton::clicked, this, [this] { flxdalefill(); });
    connect(lstYear, &QListWidget::currentRowChanged, this, [this] { flxdalefill(); });
    connect(lstDap, &QListWidget::currentRowChanged, this, [this] { flxdalefill(); });
    connect(CmdPrint, &QPushButton::clicked, this, [this] { CmdPrint_Click(); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);

    auto* choices = new QGridLayout;
    choices->addWidget(new QLabel(text(dt::kYear), this), 0, 0);
    choices->addWidget(new QLabel(text(dt::kDap), this), 0, 1);
    choices->addWidget(new QLabel(text(dt::kDecimals), this), 0, 2);
    choices->addWidget(lstYear, 1, 0);
    choices->addWidget(lstDap, 1, 1);
    choices->addWidget(txtDecimals, 1, 2, Qt::AlignTop);
    lstYear->setMaximumHeight(64);
    lstDap->setMaximumHeight(64);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* b : {cmdRefresh, CmdPrint, cmdSave, cmdClose})
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(choices);
    layout->addWidget(flxdale, 1);
    layout->addLayout(buttons);
    resize(1280, 420);
    flxdalefill();
}

void frmDale::flxdalefill() {
    const QStringList h = heads();
    const int decimals = std::clamp(txtDecimals->text().trimmed().toInt(), 0, 15);
    // The figures rounded half to even by daleRows, shown with their decimals.
    const Cell rows = daleRows(arrDale_, lstYear->currentRow(), lstDap->currentRow(), decimals);
    const int count = rowsOf(rows);
    CellArray texts({count, dale_slot::kLast + 1});
    for (int b = 0; b < count; ++b)
        for (int k = 0; k <= dale_slot::kLast; ++k)
            texts(b, k) = Cell(k == dale_slot::kRegion ? rows.array()(b, k).toString() : shown(rows.array()(b, k), decimals));
    showTable(grid_, h, texts);
    // The long heads wrap over three lines in columns of one width, so that a row reads at a glance.
    flxdale->horizontalHeader()->setDefaultAlignment(Qt::Alignment(Qt::AlignCenter | Qt::TextWordWrap));
    flxdale->horizontalHeader()->setMinimumHeight(64);
    for (int c = 0; c < grid_.cols(); ++c)
        flxdale->setColumnWidth(c, c == 0 ? 90 : 128);
    flxdale->horizontalScrollBar()->setValue(0);
}

void frmDale::CmdPrint_Click() {
    printHtml(this, gridHtml(text(dt::kCaption), grid_));
}

void frmDale::cmdSave_Click() {
    QStringList fields{QStringLiteral("Year"), QStringLiteral("BPUID"), QStringLiteral("DAPID")};
    fields << daleFieldNames();
    if (!arrDale_.isArray())
        return;
    const CellArray& a = arrDale_.array();
    CellArray out({a.size(0) * a.size(1) * a.size(2), int(fields.size())});
    int r = 0;
    for (int y = 0; y < a.size(0); ++y)
        for (int b = 0; b < a.size(1); ++b)
            for (int d = 0; d < a.size(2); ++d, ++r) {
                out(r, 0) = y < rowsOf(years_) ? years_.array()(years_.array().lbound(0) + y) : Cell();
                out(r, 1) = a(y, b, d, dale_slot::kRegion);
                out(r, 2) = d < rowsOf(mtxDap_) ? mtxDap_.array()(mtxDap_.array().lbound(0) + d, kDapId) : Cell();
                for (int k = dale_slot::kE0F; k <= dale_slot::kLast; ++k)
                    out(r, 2 + k) = a(y, b, d, k);
            }
    saveResultsAs(out, fields, QStringLiteral("DALE"));
}

} // namespace vesk
