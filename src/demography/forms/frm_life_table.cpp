#include "demography/forms/frm_life_table.h"

#include "demography/life_table_texts.h"
#include "inputs/save_results.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/print_html.h"
#include "platform/texts.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

namespace vesk {

namespace lt = life_table_texts;

frmLifeTable::frmLifeTable(LifeTableToolResult result, int decimals, const QString& caption, QWidget* parent)
    : QWidget(parent), result_(std::move(result)) {
    setObjectName(QStringLiteral("frmLifeTable"));
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);
    grdLTF = new FlexGridView(this);
    grdLTF->setObjectName(QStringLiteral("grdLTF"));
    grdLTF->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    grdLTF->setGrid(&grid_);
    fill(decimals);
    IDClose = namedButton(this, QStringLiteral("IDClose"), text(lt::kClose));
    IdPrn = namedButton(this, QStringLiteral("IdPrn"), text(lt::kPrint));
    IDSave = namedButton(this, QStringLiteral("IDSave"), text(lt::kSaveAs));
    connect(IDClose, &QPushButton::clicked, this, &QWidget::close);
    connect(IdPrn, &QPushButton::clicked, this, [this] { IdPrn_Click(); });
    connect(IDSave, &QPushButton::clicked, this, [this] { IDSave_Click(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(IdPrn);
    buttons->addWidget(IDSave);
    buttons->addWidget(IDClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grdLTF);
    layout->addLayout(buttons);
    resize(980, 520);
}

void frmLifeTable::fill(int decimals) {
    const CellArray& t = result_.table;
    grid_.setFixedRows(0);
    grid_.setFixedCols(0);
    grid_.setRows(t.size(0) + 1);
    grid_.setCols(t.size(1));
    grid_.setFixedRows(1);
    for (int c = 0; c < t.size(1); ++c)
        grid_.setTextMatrix(0, c, result_.heads.value(c));
    for (int i = 0; i < t.size(0); ++i)
        for (int c = 0; c < t.size(1); ++c)
            grid_.setTextMatrix(i + 1, c, lifeTableShown(t(i, c), decimals));
    grdLTF->resizeColumnsToContents();
}

QString frmLifeTable::printHtml() const {
    return gridHtml(text(lt::kPrintTitle), grid_);
}

void frmLifeTable::IdPrn_Click() {
    vesk::printHtml(this, printHtml());
}

void frmLifeTable::IDSave_Click() {
    saveResultsAs(result_.table, result_.fieldNames, QStringLiteral("LifeTable"));
}

} // namespace vesk
