#include "demography/forms/frm_ag_frctn.h"

#include "demography/age_fraction.h"
#include "demography/sprague_texts.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace vesk {

namespace st = sprague_texts;

FrmAGFrctn::FrmAGFrctn(const QStringList& labels, Writer write, QWidget* parent)
    : QWidget(parent), write_(std::move(write)) {
    setObjectName(QStringLiteral("FrmAGFrctn"));
    setWindowTitle(text(st::kFractionCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    grid_.setRows(int(labels.size()) + 1);
    grid_.setCols(2);
    grid_.setFixedRows(1);
    grid_.setFixedCols(1);
    grid_.setTextMatrix(0, 0, text(st::kFractionHeads[0]));
    grid_.setTextMatrix(0, 1, text(st::kFractionHeads[1]));
    for (int i = 0; i < labels.size(); ++i)
        grid_.setTextMatrix(i + 1, 0, labels[i]);
    grdFrction = new FlexGridView(this);
    grdFrction->setObjectName(QStringLiteral("grdFrction"));
    grdFrction->setEditStyle(FlexGridView::EditStyle::Direct);
    grdFrction->setNumeric(true); // digits, one full stop and backspace
    grdFrction->setGrid(&grid_);
    grdFrction->installEventFilter(this);
    cmdOK = namedButton(this, QStringLiteral("cmdOK"), text(st::kOk));
    cmdCancel = namedButton(this, QStringLiteral("cmdCancel"), text(st::kCancel));
    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grdFrction);
    layout->addLayout(buttons);
    resize(360, 420);
}

// Enter on a fraction outside 0 to 1 clears it and leaves the cell to be typed again.
bool FrmAGFrctn::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grdFrction && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            const QString typed = grid_.text().trimmed();
            const double f = Val(typed);
            if (!typed.isEmpty() && !(f >= 0 && f <= 1)) {
                grid_.setText(QString());
                grdFrction->syncFromGrid();
                return true;
            }
            if (grid_.row() == grid_.rows() - 1) { // the last group: no row is added below the labels
                if (!typed.isEmpty())
                    grid_.setText(numberToText(f));
                return true;
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FrmAGFrctn::cmdOK_Click() {
    for (int r = grid_.fixedRows(); r < grid_.rows(); ++r) {
        const QString typed = grid_.textMatrix(r, 1).trimmed();
        if (typed.isEmpty())
            continue;
        if (const auto age = exactAgeOfDeath(grid_.textMatrix(r, 0), Val(typed)))
            write_(r - grid_.fixedRows(), *age);
    }
    close();
}

} // namespace vesk
