#include "demography/forms/frm_pop_dth_as.h"

#include "demography/pyramid_texts.h"
#include "inputs/grid_functions.h"
#include "inputs/save_results.h"
#include "platform/cell_array.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/print_html.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vesk {

namespace pt = pyramid_texts;

namespace {

// The open age of a single-year array: the age of its last row (85 where none can be read).
int openAgeOf(const Cell& array4D) {
    if (!array4D.isArray() || array4D.array().rank() != 4 || array4D.array().size(2) == 0)
        return 85;
    const CellArray& a = array4D.array();
    const Cell& age = a(0, 0, a.size(2) - 1, 0);
    return age.isNumber() ? int(age.toDouble()) : 85;
}

} // namespace

frmShowRsltpopdth::frmShowRsltpopdth(std::vector<UnitTable> tables, const QString& caption, QWidget* parent)
    : QWidget(parent), tables_(std::move(tables)) {
    setObjectName(QStringLiteral("frmShowRsltpopdth"));
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);
    lblUnit = new QLabel(this);
    lblUnit->setObjectName(QStringLiteral("lblUnit"));
    msflgAsgPopDth = new FlexGridView(this);
    msflgAsgPopDth->setObjectName(QStringLiteral("msflgAsgPopDth"));
    msflgAsgPopDth->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    msflgAsgPopDth->setGrid(&grid_);
    cmdFirst = namedButton(this, QStringLiteral("cmdFirst"), QStringLiteral("Move First"));
    cmdPrev = namedButton(this, QStringLiteral("cmdPrev"), QStringLiteral("Move Previous"));
    cmdNext = namedButton(this, QStringLiteral("cmdNext"), QStringLiteral("Move Next "));
    cmdLast = namedButton(this, QStringLiteral("cmdLast"), QStringLiteral("Move Last"));
    cmdSavAs = namedButton(this, QStringLiteral("cmdSavAs"), QStringLiteral("Save &As"));
    CmdPrint = namedButton(this, QStringLiteral("CmdPrint"), QStringLiteral("&Print"));
    cmdclose = namedButton(this, QStringLiteral("cmdclose"), QStringLiteral("&Close"));
    connect(cmdFirst, &QPushButton::clicked, this, [this] { showUnit(0); });
    connect(cmdPrev, &QPushButton::clicked, this, [this] { showUnit(unit_ - 1); });
    connect(cmdNext, &QPushButton::clicked, this, [this] { showUnit(unit_ + 1); });
    connect(cmdLast, &QPushButton::clicked, this, [this] { showUnit(int(tables_.size()) - 1); });
    connect(cmdSavAs, &QPushButton::clicked, this, [this] {
        if (tables_.empty())
            return;
        const UnitTable& t = tables_[std::size_t(unit_)];
        saveResultsAs(unitTableValues(t), t.heads, QStringLiteral("Results"));
    });
    connect(CmdPrint, &QPushButton::clicked, this, [this] { printHtml(this, gridHtml(lblUnit->text(), grid_)); });
    connect(cmdclose, &QPushButton::clicked, this, &QWidget::close);
    auto* moves = new QHBoxLayout;
    for (QPushButton* b : {cmdFirst, cmdPrev, cmdNext, cmdLast})
        moves->addWidget(b);
    moves->addStretch();
    for (QPushButton* b : {cmdSavAs, CmdPrint, cmdclose})
        moves->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblUnit);
    layout->addWidget(msflgAsgPopDth, 1);
    layout->addLayout(moves);
    resize(640, 420);
    showUnit(0);
}

void frmShowRsltpopdth::showUnit(int unit) {
    grid_.setFixedRows(0);
    grid_.setFixedCols(0);
    if (tables_.empty()) {
        grid_.setRows(0);
        return;
    }
    unit_ = std::clamp(unit, 0, int(tables_.size()) - 1);
    const UnitTable& t = tables_[std::size_t(unit_)];
    lblUnit->setText(t.unit);
    showTable(grid_, t.heads, unitTableTexts(t));
    const int last = int(tables_.size()) - 1;
    cmdNext->setEnabled(unit_ < last);
    cmdLast->setEnabled(unit_ < last);
    cmdPrev->setEnabled(unit_ > 0);
    cmdFirst->setEnabled(unit_ > 0);
    msflgAsgPopDth->resizeColumnsToContents();
}

frmPopDthAS* frmPopDthAS::open(Mode mode, const Cell& array4D, const Cell& units, QWidget* parent) {
    if (!units.isArray() || units.array().size(0) == 0) {
        prompts().ask(text(pt::kNoBpu));
        return nullptr;
    }
    return new frmPopDthAS(mode, array4D, units, parent);
}

frmPopDthAS::frmPopDthAS(Mode mode, const Cell& array4D, const Cell& units, QWidget* parent)
    : QWidget(parent), mode_(mode), array_(array4D), units_(units) {
    setObjectName(QStringLiteral("frmPopDthAS"));
    setWindowTitle(text(mode == Population ? pt::kPopulationCaption : pt::kDeathsCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    msflgAGM = new FlexGridView(this);
    msflgAGM->setObjectName(QStringLiteral("msflgAGM"));
    msflgAGM->setEditStyle(FlexGridView::EditStyle::CellBox);
    msflgAGM->setGrid(&grid_);
    fillLadder({});
    mnu_ASG = new QMenu(this);
    mnu_ASG->setObjectName(QStringLiteral("mnu_ASG"));
    mnu_5 = mnu_ASG->addAction(text(pt::kFiveGroups));
    mnu_5->setObjectName(QStringLiteral("mnu_5"));
    mnu_7 = mnu_ASG->addAction(text(pt::kSevenGroups));
    mnu_7->setObjectName(QStringLiteral("mnu_7"));
    mnu_5Yr = mnu_ASG->addAction(text(pt::kFiveYearGroups));
    mnu_5Yr->setObjectName(QStringLiteral("mnu_5Yr"));
    connect(mnu_5, &QAction::triggered, this, [this] { fillLadder(fiveAgeGroups()); });
    connect(mnu_7, &QAction::triggered, this, [this] { fillLadder(sevenAgeGroups()); });
    connect(mnu_5Yr, &QAction::triggered, this, [this] { fillLadder(fiveYearGroups(openAgeOf(array_))); });
    msflgAGM->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(msflgAGM, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { mnu_ASG->popup(msflgAGM->viewport()->mapToGlobal(at)); });
    OptMale = namedOption(this, QStringLiteral("OptMale"), text(pt::kMaleOnly));
    OptFemale = namedOption(this, QStringLiteral("OptFemale"), text(pt::kFemaleOnly));
    OptPersons = namedOption(this, QStringLiteral("OptPersons"), text(pt::kPersonsOnly));
    OptMaleFemale = namedOption(this, QStringLiteral("OptMaleFemale"), text(pt::kMaleFemale));
    OptAll = namedOption(this, QStringLiteral("OptAll"), text(pt::kAllSexes));
    const std::pair<QRadioButton*, const char*> options[] = {
        {OptMale, "M"}, {OptFemale, "F"}, {OptPersons, "P"}, {OptMaleFemale, "MF"}, {OptAll, "ALL"}};
    auto* sexes = new QHBoxLayout;
    for (const auto& [option, code] : options) {
        sexes->addWidget(option);
        connect(option, &QRadioButton::clicked, this, [this, c = QString::fromLatin1(code)] {
            if (frmShowRsltpopdth* shown = showFor(c))
                shown->show();
        });
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(text(pt::kStep1), this));
    layout->addWidget(msflgAGM, 1);
    layout->addWidget(new QLabel(text(pt::kStep2), this));
    layout->addLayout(sexes);
    resize(600, 440);
}

void frmPopDthAS::fillLadder(const std::vector<AgeInterval>& rows) {
    grid_.setFixedRows(0);
    grid_.setFixedCols(0);
    grid_.setRows(int(rows.size()) + 2); // a blank row to type more
    grid_.setCols(2);
    grid_.setFixedRows(1);
    grid_.setTextMatrix(0, 0, QStringLiteral("BAI"));
    grid_.setTextMatrix(0, 1, QStringLiteral("EAI"));
    for (int r = 0; r < int(rows.size()); ++r) {
        grid_.setTextMatrix(r + 1, 0, rows[std::size_t(r)].bai);
        grid_.setTextMatrix(r + 1, 1, rows[std::size_t(r)].eai);
    }
}

std::vector<AgeInterval> frmPopDthAS::intervals() const {
    std::vector<AgeInterval> out;
    for (int r = 1; r < grid_.rows(); ++r) {
        const QString bai = grid_.textMatrix(r, 0), eai = grid_.textMatrix(r, 1);
        if (!bai.trimmed().isEmpty() || !eai.trimmed().isEmpty())
            out.push_back({bai.trimmed(), eai.trimmed()});
    }
    return out;
}

frmShowRsltpopdth* frmPopDthAS::showFor(const QString& sex) {
    const std::vector<AgeInterval> rows = intervals();
    if (const auto refused = checkIntervals(rows)) {
        prompts().ask(*refused);
        return nullptr;
    }
    auto* shown = new frmShowRsltpopdth(popDeathTables(array_, units_, rows, sex), windowTitle());
    placeBesideOpener(this, shown);
    return shown;
}

} // namespace vesk
