// The tab "&Demographics" of the Inputs window: the population, death-rate and parameters sheets.

#include "inputs/demography_import.h"
#include "inputs/forms/new_frm_inputs.h"
#include "inputs/messages.h"
#include "inputs/parameters_sheet.h"
#include "inputs/sheet_texts.h"
#include "inputs/small_sheet_import.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace t = sheet_texts;

namespace {

int slot(DemographyKind kind) {
    return kind == DemographyKind::Population ? 0 : 1;
}

QPushButton* button(const QString& caption, const char* name, QWidget* parent) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    return b;
}

} // namespace

QWidget* NewFrmInputs::buildDemographicsTab() {
    auto* tab = new QWidget(this);
    DemogphSubtab = new QTabWidget(tab);
    DemogphSubtab->setObjectName(QStringLiteral("DemogphSubtab"));
    DemogphSubtab->addTab(demographySheet(DemographyKind::Population), text(t::kSubTabPopulation));
    DemogphSubtab->addTab(demographySheet(DemographyKind::DeathRates), text(t::kSubTabDeathRates));

    auto* parameters = new QWidget(tab);
    parametersModel_ = new GridModel(this);
    layoutParametersGrid(*parametersModel_);
    msflgDP = new FlexGridView(parameters);
    msflgDP->setObjectName(QStringLiteral("msflgDP"));
    msflgDP->setGrid(parametersModel_);
    msflgDP->setEditStyle(FlexGridView::EditStyle::CellBox);
    msflgDP->setToolTip(text(t::kFamilyBalloon));
    msflgDP->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(msflgDP, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        QMenu menu(this);
        menu.setObjectName(QStringLiteral("mnu_Cdml"));
        menu.setTitle(text(t::kFamilyMenu));
        for (const QString& family : coaleDemenyFamilies())
            menu.addAction(family, this, [this, family] { parametersModel_->setTextMatrix(1, 0, family); });
        menu.exec(msflgDP->viewport()->mapToGlobal(at));
    });
    auto* confirm = button(QStringLiteral("&Confirm"), "cmdConfDP", parameters);
    auto* import = button(QStringLiteral("&Import"), "cmdDPImp", parameters);
    connect(import, &QPushButton::clicked, this, [this] {
        const auto file = prompts().openFileName(text(t::kImportParametersTitle) + study_.term,
                                                 text(texts::kForeignFileFilter));
        if (file)
            importParameters(unit_, *file, QString(), *parametersModel_);
    });
    connect(confirm, &QPushButton::clicked, this, [this] {
        msflgDP->syncFromGrid();
        const ConfirmResult r = confirmParameters(*parametersModel_, unit_, *db_);
        if (r.outcome == ConfirmResult::Outcome::Refused)
            parametersModel_->setCurrent(r.row, r.col);
    });
    auto* header = new QLabel(text(t::kParametersHeader), parameters);
    auto* row = new QHBoxLayout;
    row->addWidget(goToSelect(parameters));
    row->addStretch(1);
    row->addWidget(import);
    row->addWidget(confirm);
    auto* layout = new QVBoxLayout(parameters);
    layout->addWidget(header);
    layout->addWidget(msflgDP, 1);
    layout->addLayout(row);
    DemogphSubtab->addTab(parameters, text(t::kSubTabParameters));

    auto* outer = new QVBoxLayout(tab);
    outer->addWidget(DemogphSubtab);
    return tab;
}

QWidget* NewFrmInputs::demographySheet(DemographyKind kind) {
    const bool people = kind == DemographyKind::Population;
    auto* sheet = new QWidget(this);
    auto* model = new GridModel(this);
    demographyModel_[slot(kind)] = model;
    layoutDemographyGrid(*model, study_.pndAges);
    auto* grid = new FlexGridView(sheet);
    grid->setObjectName(people ? QStringLiteral("msflgPop") : QStringLiteral("msflgASDR"));
    grid->setGrid(model);
    grid->setEditStyle(FlexGridView::EditStyle::CellBox);
    grid->setNumeric(true);
    (people ? msflgPop : msflgASDR) = grid;
    connect(grid, &QAbstractItemView::doubleClicked, this, [this, kind, model](const QModelIndex& index) {
        switchDemographyLastRow(kind, index.row() + model->fixedRows());
    });
    connect(grid, &FlexGridView::cellEdited, this, [this, kind, model] {
        fillPersons(*model, kind, kind == DemographyKind::DeathRates ? storedPopulation(*db_, unit_) : QList<AgePopulation>{});
    });
    auto* scale = new QLineEdit(QStringLiteral("1"), sheet);
    scale->setObjectName(people ? QStringLiteral("txtMul") : QStringLiteral("txtDmntr"));
    scale->setValidator(new QIntValidator(0, 1000000000, scale));
    connect(scale, &QLineEdit::returnPressed, scale, [scale] { scale->setText(QString::number(scaleFactor(scale->text()), 'f', 0)); });
    (people ? txtMul : txtDmntr) = scale;
    auto* confirm = button(QStringLiteral("&Confirm"), people ? "cmdPopGo" : "cmdASDRGo", sheet);
    auto* import = button(QStringLiteral("&Import"), people ? "cmdPopImprt" : "cmdASDRImprt", sheet);
    connect(confirm, &QPushButton::clicked, this, [this, kind] { confirmDemographySheet(kind); });
    connect(import, &QPushButton::clicked, this, [this, kind] { importDemographySheet(kind); });
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(text(people ? t::kMultiplier : t::kDenominator), sheet));
    row->addWidget(scale);
    row->addWidget(goToSelect(sheet));
    row->addStretch(1);
    row->addWidget(import);
    row->addWidget(confirm);
    auto* layout = new QVBoxLayout(sheet);
    layout->addWidget(grid, 1);
    layout->addWidget(new QLabel(text(t::kLastRowNote), sheet));
    layout->addLayout(row);
    return sheet;
}

void NewFrmInputs::switchDemographyLastRow(DemographyKind kind, int row) {
    GridModel& model = *demographyModel_[slot(kind)];
    if (row != model.rows() - 1)
        return;
    if (switchLastRow(model, addedRow_[slot(kind)]) == LastRowSwitch::NeedsValues)
        prompts().ask(text(t::kSwitchNeedsValues), Buttons::Ok, Icon::Information);
}

void NewFrmInputs::confirmDemographySheet(DemographyKind kind) {
    DemographyConfirm c;
    c.kind = kind;
    c.unit = unit_;
    c.lastPndAge = study_.pndAges.isEmpty() ? 0 : study_.pndAges.last();
    c.scale = scaleFactor((kind == DemographyKind::Population ? txtMul : txtDmntr)->text());
    c.holdInMem = holdInMem_;
    c.loaded = &loaded_[slot(kind)];
    GridModel& model = *demographyModel_[slot(kind)];
    const ConfirmResult r = confirmDemography(c, model, memory_, *db_);
    if (r.outcome == ConfirmResult::Outcome::Refused)
        model.setCurrent(r.row, r.col);
    if (r.outcome == ConfirmResult::Outcome::Stored && kind == DemographyKind::Population)
        fillPersons(*demographyModel_[1], DemographyKind::DeathRates, storedPopulation(*db_, unit_));
}

void NewFrmInputs::importDemographySheet(DemographyKind kind) {
    const bool people = kind == DemographyKind::Population;
    const auto file = prompts().openFileName(importTitle(kind, study_.term), text(texts::kForeignFileFilter));
    if (!file)
        return;
    DemographyImport im;
    im.kind = kind;
    im.unit = unit_;
    im.path = *file;
    im.scale = scaleFactor((people ? txtMul : txtDmntr)->text());
    GridModel& model = *demographyModel_[slot(kind)];
    if (importDemography(im, model) && !people)
        fillPersons(model, kind, storedPopulation(*db_, unit_));
}

void NewFrmInputs::loadDemographics() {
    for (const DemographyKind kind : {DemographyKind::Population, DemographyKind::DeathRates}) {
        GridModel& model = *demographyModel_[slot(kind)];
        layoutDemographyGrid(model, study_.pndAges);
        const double scale = scaleFactor((kind == DemographyKind::Population ? txtMul : txtDmntr)->text());
        const DemographyLoad found = loadDemography(kind, model, unit_, scale, *db_);
        addedRow_[slot(kind)] = found.added;
        loaded_[slot(kind)] = found.figures;
    }
    layoutParametersGrid(*parametersModel_);
    loadParameters(*parametersModel_, unit_, *db_);
}

} // namespace vesk
