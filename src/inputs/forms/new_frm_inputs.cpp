#include "inputs/forms/new_frm_inputs.h"

#include "database/study_context.h"
#include "inputs/changed_definitions.h"
#include "inputs/sheet_texts.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace t = sheet_texts;

namespace {
enum Tab { TabSelect = 0, TabDemographics, TabCauses, TabEpi, TabWeights };
} // namespace

NewFrmInputs* NewFrmInputs::open(QWidget* parent) {
    StudyContext& c = studyContext();
    if (c.CurBDSId.isEmpty()) {
        prompts().ask(text(t::kGuardPart1) + u'\n' + text(t::kGuardPart2), Buttons::Ok, Icon::Information);
        return nullptr;
    }
    const auto study = openInputsStudy(c);
    if (!study)
        return nullptr;
    return new NewFrmInputs(c.StudyDB, *study, parent);
}

NewFrmInputs::NewFrmInputs(std::shared_ptr<DbConnection> db, InputsStudy study, QWidget* parent)
    : QWidget(parent), db_(std::move(db)), study_(std::move(study)) {
    setObjectName(QStringLiteral("NewFrmInputs"));
    setWindowTitle(inputsCaption(study_));
    unit_ = SheetUnit{QString(), study_.year, study_.term};
    SSTabInputs = new QTabWidget(this);
    SSTabInputs->setObjectName(QStringLiteral("SSTabInputs"));
    SSTabInputs->addTab(buildSelectTab(), text(t::kTabSelect).replace(QStringLiteral("[BPU]"), study_.term));
    SSTabInputs->addTab(buildDemographicsTab(), text(t::kTabDemographics));
    SSTabInputs->addTab(buildCauseTab(), text(t::kTabCauses));
    SSTabInputs->addTab(buildEpiTab(), text(t::kTabEpidemiological));
    SSTabInputs->addTab(buildWeightsTab(), text(t::kTabWeights));
    for (int tab = TabDemographics; tab <= TabWeights; ++tab)
        SSTabInputs->setTabEnabled(tab, false); // until a unit is chosen
    connect(SSTabInputs, &QTabWidget::currentChanged, this, [this](int tab) { tabOpened(tab); });
    lblStatus = new QLabel(this);
    lblStatus->setObjectName(QStringLiteral("lblStatus"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTabInputs, 1);
    layout->addWidget(lblStatus);
    resize(860, 560);
}

QWidget* NewFrmInputs::buildSelectTab() {
    auto* tab = new QWidget(this);
    bpuModel_ = new GridModel(this);
    bpuModel_->setFixedRows(1);
    bpuModel_->setFixedCols(0);
    bpuModel_->setCols(3);
    bpuModel_->setRows(1 + static_cast<int>(study_.units.size()));
    bpuModel_->setTextMatrix(0, 0, study_.term);
    bpuModel_->setTextMatrix(0, 1, QStringLiteral("Name"));
    bpuModel_->setTextMatrix(0, 2, text(t::kHeadSelect));
    for (int i = 0; i < study_.units.size(); ++i) {
        bpuModel_->setTextMatrix(i + 1, 0, study_.units[i]);
        bpuModel_->setTextMatrix(i + 1, 1, study_.unitNames.value(i));
    }
    msflgBPU = new FlexGridView(tab);
    msflgBPU->setObjectName(QStringLiteral("msflgBPU"));
    msflgBPU->setGrid(bpuModel_);
    msflgBPU->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    connect(msflgBPU, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& index) { chooseUnit(index.row() + bpuModel_->fixedRows()); });
    auto* note = new QLabel(text(t::kSelectNote), tab);
    note->setObjectName(QStringLiteral("lblSelectNote"));
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(msflgBPU, 1);
    layout->addWidget(note);
    return tab;
}

QPushButton* NewFrmInputs::goToSelect(QWidget* parent) {
    auto* button = new QPushButton(text(t::kGoToPart1) + study_.term + u'\'', parent);
    connect(button, &QPushButton::clicked, this, [this] { SSTabInputs->setCurrentIndex(TabSelect); });
    return button;
}

void NewFrmInputs::chooseUnit(int row) {
    if (row < 1 || row >= bpuModel_->rows())
        return;
    const bool deselect = bpuModel_->textMatrix(row, 2) == u"*";
    for (int r = 1; r < bpuModel_->rows(); ++r)
        bpuModel_->setTextMatrix(r, 2, QString());
    unit_.bpuId = deselect ? QString() : bpuModel_->textMatrix(row, 0);
    if (!deselect)
        bpuModel_->setTextMatrix(row, 2, QStringLiteral("*"));
    for (int tab = TabDemographics; tab <= TabWeights; ++tab)
        SSTabInputs->setTabEnabled(tab, !deselect);
    if (!deselect)
        procChckConfm();
}

void NewFrmInputs::tabOpened(int tab) {
    if (unit_.bpuId.isEmpty())
        return;
    if (tab == TabDemographics && askAboutChangedPndAges(*db_, unit_, study_.pndAges) == ChangedRows::Deleted)
        loadDemographics();
    if (tab == TabCauses && askAboutChangedYllLabels(*db_, unit_, study_.yllLabels) == ChangedRows::Deleted)
        loadCauses();
}

void NewFrmInputs::status(const QString& message) {
    lblStatus->setText(message);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void NewFrmInputs::procChckConfm() {
    status(text(t::kLoadingPart1) + study_.term + text(t::kLoadingPart2) + u' ' + text(t::kLoadingNote));
    epiDirty_.clear();
    epiPending_.clear(); // what was not confirmed for the unit left goes with it
    loadDemographics();
    loadCauses();
    cause_ = 0;
    moveTo(0);
    loadWeights();
    status(QString());
}

} // namespace vesk
