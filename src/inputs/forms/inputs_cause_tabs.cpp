// The tabs "&Cause of Death", " &Epidemiological" and "&Disability &Weights" of the Inputs window.

#include "inputs/cause_import.h"
#include "inputs/cause_sheet.h"
#include "inputs/epi_import.h"
#include "inputs/messages.h"
#include "inputs/forms/new_frm_inputs.h"
#include "inputs/sheet_texts.h"
#include "inputs/small_sheet_import.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace t = sheet_texts;

namespace {

QPushButton* button(const QString& caption, const QString& name, QWidget* parent) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    return b;
}

FlexGridView* sheetView(GridModel* model, const char* name, QWidget* parent) {
    auto* view = new FlexGridView(parent);
    view->setObjectName(QLatin1String(name));
    view->setGrid(model);
    view->setEditStyle(FlexGridView::EditStyle::CellBox);
    view->setNumeric(true);
    return view;
}

} // namespace

QWidget* NewFrmInputs::buildCauseTab() {
    auto* tab = new QWidget(this);
    causeModel_ = new GridModel(this);
    layoutCauseGrid(*causeModel_, study_.causes, study_.yllLabels);
    msflgCOD = sheetView(causeModel_, "msflgCOD", tab);
    connect(msflgCOD, &FlexGridView::cellEdited, this, [this](int row, int col) {
        if (!isProportion(causeModel_->textMatrix(row, col))) {
            prompts().ask(text(t::kProportionOutOfRange), Buttons::Ok, Icon::Critical);
            causeModel_->setTextMatrix(row, col, QString());
        }
    });
    auto* add = button(QStringLiteral("&Add Totals"), QStringLiteral("cmdAddTot"), tab);
    auto* check = button(QStringLiteral("&Check Totals"), QStringLiteral("cmdChckTot"), tab);
    auto* confirm = button(QStringLiteral("&Confirm"), QStringLiteral("cmdConfmCOD"), tab);
    auto* import = button(QStringLiteral("&Import"), QStringLiteral("cmdCODImprt"), tab);
    connect(import, &QPushButton::clicked, this, [this] {
        const auto file = prompts().openFileName(text(t::kImportCausesTitle) + study_.term, text(texts::kForeignFileFilter));
        if (file)
            importCauses(CauseImport{unit_, *file, QString()}, *causeModel_);
    });
    connect(add, &QPushButton::clicked, this, [this] { addTotals(*causeModel_); });
    connect(check, &QPushButton::clicked, this, [this] { checkTotals(*causeModel_); });
    connect(confirm, &QPushButton::clicked, this, [this] {
        const ConfirmResult r = confirmCauses(*causeModel_, unit_, *db_);
        if (r.outcome == ConfirmResult::Outcome::Refused)
            causeModel_->setCurrent(r.row, r.col);
    });
    auto* row = new QHBoxLayout;
    row->addWidget(goToSelect(tab));
    row->addStretch(1);
    for (QPushButton* b : {add, check, import, confirm})
        row->addWidget(b);
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(new QLabel(text(t::kCauseHelp), tab));
    layout->addWidget(msflgCOD, 1);
    layout->addLayout(row);
    return tab;
}

QWidget* NewFrmInputs::navigation(QWidget* parent, const QString& suffix) {
    auto* box = new QWidget(parent);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    const QList<QPair<const char*, const char*>> moves{
        {t::kMoveFirst, "cmdFirst"}, {t::kMovePrevious, "cmdPrevious"}, {t::kMoveNext, "cmdNext"}, {t::kMoveLast, "cmdLast"}};
    for (int k = 0; k < moves.size(); ++k) {
        auto* b = button(text(moves[k].first), QLatin1String(moves[k].second) + suffix, box);
        connect(b, &QPushButton::clicked, this, [this, k] {
            const int last = static_cast<int>(study_.causes.size()) - 1;
            const int to = k == 0 ? 0 : k == 1 ? std::max(0, cause_ - 1) : k == 2 ? std::min(last, cause_ + 1) : last;
            moveTo(to);
        });
        row->addWidget(b);
    }
    return box;
}

QWidget* NewFrmInputs::buildEpiTab() {
    auto* tab = new QWidget(this);
    lblCauseCode = new QLabel(tab);
    lblCauseCode->setObjectName(QStringLiteral("lblCauseCode"));
    lblCauseName = new QLabel(tab);
    lblCauseName->setObjectName(QStringLiteral("lblCauseName"));
    EpiTab = new QTabWidget(tab);
    EpiTab->setObjectName(QStringLiteral("EpiTab"));

    auto* byCause = new QWidget(tab);
    epiModel_ = new GridModel(this);
    layoutEpiGrid(*epiModel_, study_.yldLabels);
    flex1 = sheetView(epiModel_, "flex1", byCause);
    txtIncRate = new QLineEdit(QStringLiteral("1"), byCause);
    txtIncRate->setObjectName(QStringLiteral("txtIncRate"));
    txtPrvlRate = new QLineEdit(QStringLiteral("1"), byCause);
    txtPrvlRate->setObjectName(QStringLiteral("txtPrvlRate"));
    auto* commit = button(QStringLiteral("&Confirm"), QStringLiteral("cmdcommit"), byCause);
    auto* importByCause = button(QStringLiteral("&Import"), QStringLiteral("cmdImport"), byCause);
    auto* addByCause = button(QStringLiteral("Add Records"), QStringLiteral("cmdAdd"), byCause);
    connect(addByCause, &QPushButton::clicked, this, [this] { procCmdAdd(false); });
    connect(importByCause, &QPushButton::clicked, this, [this] { importEpiSheet(false); });
    connect(commit, &QPushButton::clicked, this, [this] { confirmEpi(false); });
    connect(flex1, &FlexGridView::cellEdited, this, [this] { epiDirty_[epiKey(false).cause] = true; });
    auto* bases = new QHBoxLayout;
    bases->addWidget(new QLabel(text(t::kIncidenceBase), byCause));
    bases->addWidget(txtIncRate);
    bases->addWidget(new QLabel(text(t::kIncidenceUnit), byCause));
    bases->addWidget(new QLabel(text(t::kPrevalenceBase), byCause));
    bases->addWidget(txtPrvlRate);
    bases->addWidget(new QLabel(text(t::kPrevalenceUnit), byCause));
    bases->addStretch(1);
    bases->addWidget(addByCause);
    bases->addWidget(importByCause);
    bases->addWidget(commit);
    auto* byCauseLayout = new QVBoxLayout(byCause);
    byCauseLayout->addWidget(flex1, 1);
    byCauseLayout->addLayout(bases);
    EpiTab->addTab(byCause, text(t::kSubTabByCause));

    auto* sequelae = new QWidget(tab);
    sequelaModel_ = new GridModel(this);
    layoutEpiGrid(*sequelaModel_, study_.yldLabels);
    grdSqle = sheetView(sequelaModel_, "grdSqle", sequelae);
    cmbSqla = new QComboBox(sequelae);
    cmbSqla->setObjectName(QStringLiteral("cmbSqla"));
    ChkSqleOvrd = new QCheckBox(text(t::kSequelaeOverride), sequelae);
    ChkSqleOvrd->setObjectName(QStringLiteral("ChkSqleOvrd"));
    auto* confirmSequela = button(QStringLiteral("&Confirm"), QStringLiteral("cmdSqCnfrm"), sequelae);
    auto* importSequela = button(QStringLiteral("&Import"), QStringLiteral("cmdSqImport"), sequelae);
    auto* addSequela = button(QStringLiteral("Add Records"), QStringLiteral("cmdSqAdd"), sequelae);
    connect(addSequela, &QPushButton::clicked, this, [this] { procCmdAdd(true); });
    connect(importSequela, &QPushButton::clicked, this, [this] { importEpiSheet(true); });
    connect(confirmSequela, &QPushButton::clicked, this, [this] { confirmEpi(true); });
    connect(cmbSqla, &QComboBox::currentIndexChanged, this, [this] { showEpi(); });
    connect(ChkSqleOvrd, &QCheckBox::toggled, this, [this] { captionByCause(); });
    connect(EpiTab, &QTabWidget::currentChanged, this, [this](int tab) {
        if (tab == 1)
            lookAtSequelaShares();
    });
    auto* sequelaRow = new QHBoxLayout;
    sequelaRow->addWidget(cmbSqla);
    sequelaRow->addWidget(ChkSqleOvrd);
    sequelaRow->addStretch(1);
    sequelaRow->addWidget(addSequela);
    sequelaRow->addWidget(importSequela);
    sequelaRow->addWidget(confirmSequela);
    auto* sequelaLayout = new QVBoxLayout(sequelae);
    sequelaLayout->addWidget(grdSqle, 1);
    sequelaLayout->addLayout(sequelaRow);
    EpiTab->addTab(sequelae, text(t::kSubTabSequelae));

    auto* head = new QHBoxLayout;
    head->addWidget(new QLabel(text(t::kCauseCode), tab));
    head->addWidget(lblCauseCode);
    head->addWidget(new QLabel(text(t::kCauseName), tab));
    head->addWidget(lblCauseName, 1);
    auto* foot = new QHBoxLayout;
    foot->addWidget(goToSelect(tab));
    foot->addStretch(1);
    foot->addWidget(navigation(tab, QStringLiteral("Epi")));
    auto* layout = new QVBoxLayout(tab);
    layout->addLayout(head);
    layout->addWidget(EpiTab, 1);
    layout->addLayout(foot);
    return tab;
}

QWidget* NewFrmInputs::buildWeightsTab() {
    auto* tab = new QWidget(this);
    weightsModel_ = new GridModel(this);
    layoutWeightsGrid(*weightsModel_, weightRowsOf(study_));
    MSFlgDWT = sheetView(weightsModel_, "MSFlgDWT", tab);
    connect(MSFlgDWT, &FlexGridView::cellEdited, this, [this](int row, int col) {
        const auto w = cellFigure(weightsModel_->textMatrix(row, col));
        if (w && !(*w >= 0.0 && *w <= 1.0)) {
            prompts().ask(text(t::kWeightOutOfRange), Buttons::Ok, Icon::Critical);
            weightsModel_->setTextMatrix(row, col, QString());
        }
    });
    auto* confirm = button(QStringLiteral("Confirm"), QStringLiteral("cmdConfirmDwt"), tab);
    auto* update = button(QStringLiteral("Update"), QStringLiteral("CmdUpdateDwt"), tab);
    auto* import = button(QStringLiteral(" Import"), QStringLiteral("cmdImportDwt"), tab);
    auto* exportButton = button(QStringLiteral("Export"), QStringLiteral("cmdExportDwt"), tab);
    const WeightsKey key{study_.studyId, study_.year};
    connect(exportButton, &QPushButton::clicked, this, [this, key] { exportWeights(*weightsModel_, key, *db_); });
    connect(import, &QPushButton::clicked, this, [this, key] {
        const auto file = prompts().openFileName(text(t::kImportWeightsTitle) + study_.term,
                                                 text(texts::kForeignFileFilter));
        if (file)
            importWeights(key, study_.term, *file, QString(), *weightsModel_);
    });
    connect(confirm, &QPushButton::clicked, this, [this, key] { confirmWeights(*weightsModel_, key, *db_); });
    connect(update, &QPushButton::clicked, this, [this, key] {
        if (cause_ < study_.causes.size())
            updateWeights(*weightsModel_, key, study_.causes[cause_].code, weightRowsOf(study_), *db_);
    });
    auto* row = new QHBoxLayout;
    row->addWidget(navigation(tab, QStringLiteral("Dwt")));
    row->addStretch(1);
    for (QPushButton* b : {import, exportButton, update, confirm})
        row->addWidget(b);
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(MSFlgDWT, 1);
    layout->addLayout(row);
    return tab;
}

void NewFrmInputs::loadCauses() {
    layoutCauseGrid(*causeModel_, study_.causes, study_.yllLabels);
    vesk::loadCauses(*causeModel_, unit_, *db_);
}

void NewFrmInputs::loadWeights() {
    layoutWeightsGrid(*weightsModel_, weightRowsOf(study_));
    fillWithTabData(*weightsModel_, WeightsKey{study_.studyId, study_.year}, *db_);
}

EpiKey NewFrmInputs::epiKey(bool bySequela) const {
    EpiKey key;
    key.unit = unit_;
    key.cause = cause_ < study_.causes.size() ? study_.causes[cause_].code : QString();
    key.sequela = bySequela ? cmbSqla->currentText() : QString();
    key.incidenceBase = scaleFactor(txtIncRate->text());
    key.prevalenceBase = scaleFactor(txtPrvlRate->text());
    return key;
}

void NewFrmInputs::moveTo(int cause) {
    if (study_.causes.isEmpty())
        return;
    // Pending figures of the cause left are kept in memory on the way, not written.
    const EpiKey leaving = epiKey(false);
    if (epiDirty_.value(leaving.cause) && cause != cause_) {
        HoldsInMem(true);
        if (Commitdata(*epiModel_, leaving, HoldInMem(), memory_, *db_).outcome == ConfirmResult::Outcome::InMemory) {
            QList<QStringList> texts;
            for (int r = 1; r < epiModel_->rows(); ++r) {
                QStringList row;
                for (int c = 0; c < epiModel_->cols(); ++c)
                    row << epiModel_->textMatrix(r, c);
                texts << row;
            }
            epiPending_.insert(leaving.cause, texts);
        }
        HoldsInMem(false);
        epiDirty_.remove(leaving.cause);
    }
    cause_ = std::clamp(cause, 0, static_cast<int>(study_.causes.size()) - 1);
    lblCauseCode->setText(study_.causes[cause_].code);
    lblCauseName->setText(study_.causes[cause_].name);
    cmbSqla->blockSignals(true);
    cmbSqla->clear();
    cmbSqla->addItems(study_.sequelae.value(cause_));
    cmbSqla->blockSignals(false);
    EpiTab->setTabEnabled(1, cmbSqla->count() > 0);
    showEpi();
}

void NewFrmInputs::showEpi() {
    layoutEpiGrid(*epiModel_, study_.yldLabels);
    const QString cause = epiKey(false).cause;
    if (epiPending_.contains(cause)) {
        // The figures kept when the cause was left unconfirmed come back, still to be confirmed.
        const QList<QStringList> texts = epiPending_.take(cause);
        for (int r = 0; r < texts.size() && r + 1 < epiModel_->rows(); ++r)
            for (int c = 0; c < texts[r].size(); ++c)
                epiModel_->setTextMatrix(r + 1, c, texts[r][c]);
        epiDirty_[cause] = true;
    } else {
        GetData(*epiModel_, epiKey(false), *db_);
    }
    layoutEpiGrid(*sequelaModel_, study_.yldLabels);
    if (cmbSqla->count() > 0)
        GetData(*sequelaModel_, epiKey(true), *db_);
}

void NewFrmInputs::procCmdAdd(bool bySequela) {
    // The grid's figures go into the form's memory with the bases in force; no table changes.
    HoldsInMem(true);
    Commitdata(bySequela ? *sequelaModel_ : *epiModel_, epiKey(bySequela), HoldInMem(), memory_, *db_);
    HoldsInMem(false);
}

void NewFrmInputs::captionByCause() {
    QString caption = text(t::kSubTabByCause);
    if (ChkSqleOvrd->isChecked() && cause_ < study_.causes.size())
        caption += QStringLiteral(" (") + study_.causes[cause_].code + u' ' + cmbSqla->currentText() + u')';
    EpiTab->setTabText(0, caption);
}

void NewFrmInputs::lookAtSequelaShares() {
    if (const auto refusal = vesk::lookAtSequelaShares(epiKey(true), *db_))
        prompts().ask(*refusal, Buttons::Ok, Icon::Critical);
}

void NewFrmInputs::importEpiSheet(bool bySequela) {
    const auto file = prompts().openFileName(text(t::kImportEpiTitle) + study_.term, text(texts::kForeignFileFilter));
    if (file && importEpi(EpiImport{epiKey(bySequela), *file, QString()}, bySequela ? *sequelaModel_ : *epiModel_) &&
        !bySequela)
        epiDirty_[epiKey(false).cause] = true;
}

void NewFrmInputs::confirmEpi(bool bySequela) {
    if (bySequela && cmbSqla->count() == 0) {
        prompts().ask(text(t::kNoSequelaePart1) + epiKey(false).cause, Buttons::Ok, Icon::Information);
        return;
    }
    GridModel& model = bySequela ? *sequelaModel_ : *epiModel_;
    const ConfirmResult r = Commitdata(model, epiKey(bySequela), HoldInMem(), memory_, *db_);
    if (r.outcome == ConfirmResult::Outcome::Refused) {
        model.setCurrent(r.row, r.col);
        return;
    }
    if (r.outcome == ConfirmResult::Outcome::Stored) {
        epiDirty_.remove(epiKey(false).cause);
        GetData(model, epiKey(bySequela), *db_);
    }
}

} // namespace vesk
