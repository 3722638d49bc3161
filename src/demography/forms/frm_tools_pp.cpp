#include "demography/forms/frm_tools_pp.h"

#include "demography/forms/frm_pop_prymd.h"
#include "demography/interpolator.h"
#include "demography/pyramid_texts.h"
#include "inputs/foreign_file.h"
#include "inputs/messages.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace vesk {

namespace pt = pyramid_texts;

namespace {

bool isNumberText(const QString& s) {
    bool ok = false;
    const double v = s.trimmed().toDouble(&ok);
    return ok && v >= 0;
}

} // namespace

frmToolsPP::frmToolsPP(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmToolsPP"));
    setWindowTitle(text(pt::kToolCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    flexSource = new FlexGridView(this);
    flexSource->setObjectName(QStringLiteral("flexSource"));
    flexSource->setEditStyle(FlexGridView::EditStyle::CellBox);
    flexSource->setGrid(&grid_);
    setRows(1);
    Cmdupplmt = namedButton(this, QStringLiteral("Cmdupplmt"), text(pt::kUpperAgeButton));
    cmdImport = namedButton(this, QStringLiteral("cmdImport"), text(pt::kImportButton));
    cmdClearAll = namedButton(this, QStringLiteral("cmdClearAll"), text(pt::kClearButton));
    cmdShowChart = namedButton(this, QStringLiteral("cmdShowChart"), text(pt::kShowChartButton));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), QStringLiteral("C&lose"));
    connect(Cmdupplmt, &QPushButton::clicked, this, [this] { upperLimit(); });
    connect(cmdImport, &QPushButton::clicked, this, [this] { importData(); });
    connect(cmdClearAll, &QPushButton::clicked, this, [this] { clearAll(); });
    connect(cmdShowChart, &QPushButton::clicked, this, [this] {
        if (frmPopPrymd* f = showChart())
            f->show();
    });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {Cmdupplmt, cmdImport, cmdClearAll, cmdShowChart})
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(flexSource, 1);
    layout->addLayout(buttons);
    resize(520, 480);
}

void frmToolsPP::setRows(int rows) {
    grid_.setFixedRows(0);
    grid_.setFixedCols(0);
    grid_.setRows(rows + 1);
    grid_.setCols(3);
    grid_.setFixedRows(1);
    grid_.setTextMatrix(0, 0, QStringLiteral("BAI"));
    grid_.setTextMatrix(0, 1, QStringLiteral("Males"));
    grid_.setTextMatrix(0, 2, QStringLiteral("Females"));
}

void frmToolsPP::upperLimit() {
    const auto typed = prompts().inputBox(text(pt::kUpperAgePrompt), text(pt::kToolCaption), QString());
    if (!typed)
        return;
    const auto ladder = interpolatorAgeLadder(*typed); // its own messages when the limit is refused
    if (!ladder)
        return;
    setRows(int(ladder->size()));
    for (int r = 0; r < ladder->size(); ++r)
        grid_.setTextMatrix(r + 1, 0, QString::number(Val((*ladder)[r])));
}

void frmToolsPP::importData() {
    const auto path = prompts().openFileName(text(pt::kImportTitle), text(texts::kForeignFileFilter));
    if (!path)
        return;
    const CellArray rows = FnReadArrFile(*path, QStringLiteral("POP"));
    if (rows.rank() != 2 || rows.size(0) == 0 || rows.size(1) < 3) {
        prompts().ask(text(pt::kUnreadable));
        return;
    }
    setRows(rows.size(0));
    for (int r = 0; r < rows.size(0); ++r)
        for (int k = 0; k < 3; ++k) {
            const Cell& v = rows(rows.lbound(0) + r, rows.lbound(1) + k);
            grid_.setTextMatrix(r + 1, k, v.isNumber() ? QString::number(v.toDouble(), 'g', 17) : v.toString());
        }
}

void frmToolsPP::clearAll() {
    setRows(1);
}

frmPopPrymd* frmToolsPP::showChart() {
    PyramidTable table;
    for (int r = 1; r < grid_.rows(); ++r) {
        const QString age = grid_.textMatrix(r, 0);
        if (age.trimmed().isEmpty())
            continue;
        if (!isNumberText(grid_.textMatrix(r, 1))) {
            prompts().ask(text(pt::kMaleInvalid1) + age + text(pt::kInvalid2), Buttons::Ok, Icon::None, text(pt::kTitleVesk));
            return nullptr;
        }
        if (!isNumberText(grid_.textMatrix(r, 2))) {
            prompts().ask(text(pt::kFemaleInvalid1) + age + text(pt::kInvalid2), Buttons::Ok, Icon::None,
                          text(pt::kTitleVesk));
            return nullptr;
        }
        table.push_back({Val(age), grid_.textMatrix(r, 1).toDouble(), grid_.textMatrix(r, 2).toDouble()});
    }
    if (table.empty())
        return nullptr;
    auto* pyramid = new frmPopPrymd(std::move(table), text(pt::kToolCaption));
    placeBesideOpener(this, pyramid);
    return pyramid;
}

} // namespace vesk
