#include "demography/forms/frmoiagd.h"

#include "demography/open_interval.h"
#include "demography/open_interval_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/csv.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace vesk {

namespace ot = open_interval_texts;

namespace {

constexpr int kGridRows = 10; // the nine starts and the head

bool allDigits(const QString& s) {
    for (QChar c : s)
        if (!c.isDigit())
            return false;
    return true;
}

} // namespace

frmoiagd* frmoiagd::open(QWidget* parent) {
    static QPointer<frmoiagd> single;
    return openSingle(single, parent, [] { return new frmoiagd; });
}

frmoiagd::frmoiagd(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmoiagd"));
    setWindowTitle(text(ot::kCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    grid_.setRows(kGridRows);
    grid_.setCols(2);
    grid_.setFixedCols(0);
    grid_.setFixedRows(1);
    grid_.setTextMatrix(0, 0, text(ot::kHeadBoai));
    grid_.setTextMatrix(0, 1, text(ot::kHeadAgeAtDeath));
    MsGrdOiagd = new FlexGridView(this);
    MsGrdOiagd->setObjectName(QStringLiteral("MsGrdOiagd"));
    MsGrdOiagd->setEditStyle(FlexGridView::EditStyle::CellBox);
    MsGrdOiagd->setGrid(&grid_);
    MsGrdOiagd->cellBox()->setObjectName(QStringLiteral("txtGrid"));
    MsGrdOiagd->setColumnWidth(0, 120);
    MsGrdOiagd->setColumnWidth(1, 190);
    MsGrdOiagd->setMinimumWidth(340);
    connect(MsGrdOiagd, &FlexGridView::cellEdited, this, [this](int r, int c) { boaiTyped(r, c); });

    cb_cdml = new QComboBox(this);
    cb_cdml->setObjectName(QStringLiteral("cb_cdml"));
    cb_cdml->addItem(QString());
    for (const char* f : ot::kFamilies)
        cb_cdml->addItem(text(f));
    tb_pgr = new QLineEdit(this);
    tb_pgr->setObjectName(QStringLiteral("tb_pgr"));
    tb_pgr->setToolTip(text(ot::kPgrUnit));
    tb_pgr->setPlaceholderText(QStringLiteral("0.02"));
    tbsum45 = new QLineEdit(this);
    tbsum45->setObjectName(QStringLiteral("tbsum45"));
    tbsum10 = new QLineEdit(this);
    tbsum10->setObjectName(QStringLiteral("tbsum10"));
    for (QLineEdit* box : {tbsum45, tbsum10})
        connect(box, &QLineEdit::editingFinished, this, [this, box] { deathsTyped(box); });
    auto* form = new QFormLayout;
    form->addRow(text(ot::kLabelFamily), cb_cdml);
    form->addRow(text(ot::kLabelPgr), tb_pgr);
    auto* unit = new QLabel(text(ot::kPgrUnit), this);
    unit->setObjectName(QStringLiteral("lblPgrUnit"));
    form->addRow(QString(), unit);
    form->addRow(text(ot::kLabelDeaths45), tbsum45);
    form->addRow(text(ot::kLabelDeaths10), tbsum10);
    auto* note = new QLabel(text(ot::kNote), this);
    note->setObjectName(QStringLiteral("lblNote"));
    form->addRow(note);

    cmd_calculate = namedButton(this, QStringLiteral("cmd_calculate"), text(ot::kCalculate));
    cmd_Close = namedButton(this, QStringLiteral("cmd_Close"), text(ot::kClose));
    connect(cmd_calculate, &QPushButton::clicked, this, [this] { cmd_calculate_Click(); });
    connect(cmd_Close, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmd_calculate);
    buttons->addWidget(cmd_Close);
    auto* right = new QVBoxLayout;
    right->addLayout(form);
    right->addStretch();
    right->addLayout(buttons);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(MsGrdOiagd);
    layout->addLayout(right, 1);
    resize(940, 380);
}

// A start typed into the grid: one of the nine, and not twice.
void frmoiagd::boaiTyped(int row, int col) {
    if (col != 0)
        return;
    const QString typed = grid_.textMatrix(row, 0).trimmed();
    if (typed.isEmpty())
        return;
    const auto boai = runtime_arithmetic::textNumber(typed);
    QString refusal;
    if (!boai || !isOaigdBoai(*boai))
        refusal = text(ot::kAgeIntervals);
    for (int r = grid_.fixedRows(); refusal.isEmpty() && r < grid_.rows(); ++r)
        if (r != row && runtime_arithmetic::textNumber(grid_.textMatrix(r, 0)) == boai)
            refusal = text(ot::kBoaiExists);
    if (refusal.isEmpty())
        return;
    prompts().ask(refusal, Buttons::Ok, Icon::Warning, QString());
    grid_.setTextMatrix(row, 0, QString());
}

bool frmoiagd::deathsTyped(QLineEdit* box) {
    if (allDigits(box->text().trimmed()))
        return true;
    prompts().ask(text(ot::kDeathsInteger), Buttons::Ok, Icon::Warning, QString());
    box->clear();
    box->setFocus();
    return false;
}

void frmoiagd::cmd_calculate_Click() {
    if (cb_cdml->currentText().trimmed().isEmpty()) {
        if (prompts().ask(text(ot::kNoFamily) + u'\n' + text(ot::kNoFamilyClose), Buttons::YesNo, Icon::Question,
                          QString()) == Answer::No)
            close();
        return;
    }
    std::optional<double> pgr;
    if (tb_pgr->text().trimmed().isEmpty()) {
        if (prompts().ask(text(ot::kNoPgr), Buttons::YesNo, Icon::Question, QString()) == Answer::Yes) {
            tb_pgr->setFocus();
            return;
        }
    } else {
        pgr = runtime_arithmetic::textNumber(tb_pgr->text());
        const QString refusal = pgr ? oaigdGrowthRateRefusal(*pgr) : text(ot::kPgrUnit);
        if (!refusal.isEmpty()) {
            prompts().ask(refusal, Buttons::Ok, Icon::Warning, QString());
            tb_pgr->setFocus();
            return;
        }
    }
    if (!deathsTyped(tbsum45) || !deathsTyped(tbsum10))
        return;
    const QString d45 = tbsum45->text().trimmed(), d10 = tbsum10->text().trimmed();
    if (d45.isEmpty() != d10.isEmpty()) {
        prompts().ask(text(ot::kNoDeaths), Buttons::Ok, Icon::Warning, QString());
        return;
    }
    try {
        std::optional<double> ratio;
        if (!d45.isEmpty())
            ratio = runtime_arithmetic::quot(d45.toDouble(), d10.toDouble());
        for (int r = grid_.fixedRows(); r < grid_.rows(); ++r) {
            const auto boai = runtime_arithmetic::textNumber(grid_.textMatrix(r, 0));
            if (!boai)
                continue;
            const Cell y = FnOIAGD(cb_cdml->currentText(), int(*boai), ratio, pgr);
            grid_.setTextMatrix(r, 1, y.isNumber() ? shortestNumber(y.toDouble()) : QString());
        }
    } catch (const RuntimeError& e) {
        prompts().ask(e.words, Buttons::Ok, Icon::Critical, QString());
    }
}

} // namespace vesk
