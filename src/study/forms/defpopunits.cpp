#include "study/forms/defpopunits.h"

#include "database/study_context.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "study/forms/study_forms_grid.h"
#include "study/population_units_texts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace {

enum Tab { TabPAG2 = 0, TabPAG1 = 1, TabBPU = 2, TabMap = 3 };

int index(PopLevel level) {
    return static_cast<int>(level);
}

QString levelName(PopLevel level) {
    static const QString kNames[] = {QStringLiteral("BPU"), QStringLiteral("PAG1"), QStringLiteral("PAG2")};
    return kNames[index(level)];
}

QStringList idsOf(const QList<UnitRow>& rows) {
    QStringList ids;
    for (const UnitRow& r : rows)
        if (!r.id.trimmed().isEmpty())
            ids << r.id;
    return ids;
}

} // namespace

defpopunits* defpopunits::open(QWidget* parent) {
    StudyContext& c = studyContext();
    auto db = c.ensureStudyDBOrShow();
    if (!db)
        return nullptr;
    if (c.CurBDSId.isEmpty()) {
        prompts().ask(putext::NoCurrentStudy);
        return nullptr;
    }
    return new defpopunits(std::move(db), c.CurBDSId, parent);
}

defpopunits::defpopunits(std::shared_ptr<DbConnection> db, QString study, QWidget* parent)
    : QWidget(parent), db_(std::move(db)), study_(std::move(study)), units_(*db_, study_),
      terms_(currentLevelTerms()) {
    setObjectName(QStringLiteral("defpopunits"));
    setWindowTitle(putext::FormCaption);
    bpuGrid_ = new GridModel(this);
    pag1Grid_ = new GridModel(this);
    mapGrid_ = new GridModel(this);

    SSBPU = new QTabWidget(this);
    SSBPU->setObjectName(QStringLiteral("SSBPU"));
    SSBPU->addTab(buildPAG2Tab(), QString());
    SSBPU->addTab(buildLevelTab(PopLevel::PAG1, pag1Grid_, &MSFLPAG1, QStringLiteral("MSFLPAG1")), QString());
    SSBPU->addTab(buildLevelTab(PopLevel::BPU, bpuGrid_, &MSFGBPU, QStringLiteral("MSFGBPU")), QString());
    SSBPU->addTab(buildMapTab(), QStringLiteral("Map"));
    connect(SSBPU, &QTabWidget::currentChanged, this, [this](int tab) {
        if (tab == TabMap)
            refreshLists();
    });

    auto* note = new QLabel(putext::DeleteNote, this);
    note->setObjectName(QStringLiteral("lblNote"));
    cmdApply = new QPushButton(QStringLiteral("&Apply"), this);
    cmdApply->setObjectName(QStringLiteral("cmdApply"));
    cmdClose = new QPushButton(QStringLiteral("&Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    connect(cmdApply, &QPushButton::clicked, this, &defpopunits::cmdApply_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* foot = new QHBoxLayout;
    foot->addWidget(note, 1);
    foot->addWidget(cmdApply);
    foot->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSBPU, 1);
    layout->addLayout(foot);

    onDeleteKey(MSFGBPU, [this] { deleteBPURow(); });
    onDeleteKey(MSFLPAG1, [this] { deletePAG1Row(); });
    onDeleteKey(MapGrid, [this] { deleteMapRows(); });
    applyTerms();
    loadStudy();
    resize(640, 460);
}

QWidget* defpopunits::levelHeader(PopLevel level, QWidget* tab) {
    const QString name = levelName(level);
    auto* box = new QWidget(tab);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    headings_[index(level)] = new QLabel(box);
    headings_[index(level)]->setObjectName(QStringLiteral("lblHeading") + name);
    QFont bold = headings_[index(level)]->font();
    bold.setBold(true);
    headings_[index(level)]->setFont(bold);
    layout->addWidget(headings_[index(level)]);
    Level& l = levels_[index(level)];
    l.fresh = new QRadioButton(box);
    l.fresh->setObjectName(QStringLiteral("OptFresh") + name);
    l.pick = new QRadioButton(box);
    l.pick->setObjectName(QStringLiteral("OptPick") + name);
    l.studies = new QComboBox(box);
    l.studies->setObjectName(QStringLiteral("cmb") + name);
    l.studies->setEnabled(false);
    l.fresh->setChecked(true);
    auto* pickRow = new QHBoxLayout;
    pickRow->addWidget(l.pick);
    pickRow->addWidget(l.studies);
    pickRow->addStretch(1);
    layout->addWidget(l.fresh);
    layout->addLayout(pickRow);
    connect(l.fresh, &QRadioButton::toggled, this, [this, level](bool on) {
        if (on)
            freshClicked(level);
    });
    connect(l.pick, &QRadioButton::toggled, this, [this, level](bool on) {
        if (on)
            pickClicked(level);
    });
    connect(l.studies, &QComboBox::currentIndexChanged, this, [this, level](int) { sourceChosen(level); });
    return box;
}

QWidget* defpopunits::buildPAG2Tab() {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(levelHeader(PopLevel::PAG2, tab));
    auto* form = new QFormLayout;
    txtPAG2Id = new QLineEdit(tab);
    txtPAG2Id->setObjectName(QStringLiteral("txtPAG2Id"));
    txtPAG2Name = new QLineEdit(tab);
    txtPAG2Name->setObjectName(QStringLiteral("txtPAG2Name"));
    form->addRow(QStringLiteral("Id"), txtPAG2Id);
    form->addRow(QStringLiteral("Name"), txtPAG2Name);
    layout->addLayout(form);
    layout->addStretch(1);
    return tab;
}

QWidget* defpopunits::buildLevelTab(PopLevel level, GridModel* model, FlexGridView** view,
                                    const QString& name) {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(levelHeader(level, tab));
    *view = makeTextGrid(tab, name, model);
    layout->addWidget(*view, 1);
    return tab;
}

QWidget* defpopunits::buildMapTab() {
    auto* tab = new QWidget;
    lstbpu = new QListWidget(tab);
    lstbpu->setObjectName(QStringLiteral("lstbpu"));
    List1 = new QListWidget(tab);
    List1->setObjectName(QStringLiteral("List1"));
    cmdSet = new QPushButton(putext::SetButton, tab);
    cmdSet->setObjectName(QStringLiteral("cmdSet"));
    connect(cmdSet, &QPushButton::clicked, this, &defpopunits::cmdSet_Click);
    MapGrid = makeTextGrid(tab, QStringLiteral("MapGrid"), mapGrid_);
    MapGrid->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    auto* heading = new QLabel(putext::MapTable, tab);
    heading->setObjectName(QStringLiteral("lblMapTable"));
    auto* lists = new QHBoxLayout;
    lists->addWidget(lstbpu);
    lists->addWidget(List1);
    auto* left = new QVBoxLayout;
    left->addLayout(lists, 1);
    left->addWidget(cmdSet);
    auto* right = new QVBoxLayout;
    right->addWidget(heading);
    right->addWidget(MapGrid, 1);
    auto* layout = new QHBoxLayout(tab);
    layout->addLayout(left, 1);
    layout->addLayout(right, 1);
    return tab;
}

// The words of the scheme on the tabs, headings and options; the fixed captions without a scheme.
void defpopunits::applyTerms() {
    const StudyContext& c = studyContext();
    const bool scheme = !c.LblBPU.isEmpty() && !c.LblPAG1.isEmpty() && !c.LblPAG2.isEmpty();
    const QString terms[3] = {terms_.bpu, terms_.pag1, terms_.pag2};
    const QString fixedFresh[3] = {putext::FreshBPU, putext::FreshPAG1, putext::FreshPAG2};
    const QString fixedPick[3] = {putext::PickBPU, putext::PickPAG1, putext::PickPAG2};
    for (int i = 0; i < 3; ++i) {
        headings_[i]->setText(terms[i] + putext::EntryScreen);
        levels_[i].fresh->setText(scheme ? putext::FreshOpening + terms[i] + putext::FreshClosing
                                         : fixedFresh[i]);
        levels_[i].pick->setText(scheme ? putext::PickOpening + terms[i] + putext::PickClosing
                                        : fixedPick[i]);
    }
    SSBPU->setTabText(TabPAG2, terms_.pag2);
    SSBPU->setTabText(TabPAG1, terms_.pag1);
    SSBPU->setTabText(TabBPU, terms_.bpu);
}

QStringList defpopunits::headers(PopLevel level) const {
    if (level == PopLevel::BPU)
        return {terms_.bpu + QStringLiteral(" Id"), terms_.bpu + QStringLiteral(" Name"), putext::Priority};
    const QString& term = level == PopLevel::PAG1 ? terms_.pag1 : terms_.pag2;
    return {term + QStringLiteral(" Id"), term + QStringLiteral(" Name")};
}

void defpopunits::loadStudy() {
    loading_ = true;
    map_ = units_.loadMap();
    const QList<UnitRow> pag2 = units_.loadRows(PopLevel::PAG2);
    setRows(PopLevel::PAG2, pag2);
    setRows(PopLevel::PAG1, units_.loadRows(PopLevel::PAG1));
    setRows(PopLevel::BPU, units_.loadRows(PopLevel::BPU));
    showMap();
    loading_ = false;
}

void defpopunits::setRows(PopLevel level, const QList<UnitRow>& rows) {
    if (level == PopLevel::PAG2) {
        // The form holds one aggregate of level 2: the first row.
        txtPAG2Id->setText(rows.isEmpty() ? QString() : rows.first().id);
        txtPAG2Name->setText(rows.isEmpty() ? QString() : rows.first().name);
        return;
    }
    QList<QStringList> texts;
    for (const UnitRow& r : rows)
        texts << (level == PopLevel::BPU ? QStringList{r.id, r.name, r.priority} : QStringList{r.id, r.name});
    setGridRows(level == PopLevel::BPU ? *bpuGrid_ : *pag1Grid_, headers(level), texts);
}

QList<UnitRow> defpopunits::rowsOf(PopLevel level) const {
    QList<UnitRow> rows;
    const CellArray body = WriteToArraybpu(level == PopLevel::BPU ? *bpuGrid_ : *pag1Grid_);
    for (int r = 0; r < body.size(0); ++r)
        rows.push_back({body(r, 0).toString(), body(r, 1).toString(),
                        body.size(1) > 2 ? body(r, 2).toString() : QString()});
    return rows;
}

CellArray defpopunits::WriteToArraybpu(const GridModel& grid) {
    const QList<QStringList> rows = gridRows(grid);
    const int columns = grid.cols() - grid.fixedCols();
    CellArray values{static_cast<int>(rows.size()), columns};
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < columns; ++c)
            values(r, c) = Cell(rows[r][c]);
    return values;
}

void defpopunits::WriteOnBPUGrid(const CellArray& values, GridModel& grid) {
    QStringList headings;
    for (int c = grid.fixedCols(); c < grid.cols(); ++c)
        headings << grid.textMatrix(grid.fixedRows() - 1, c);
    QList<QStringList> rows;
    if (values.rank() == 2)
        for (int r = 0; r < values.size(0); ++r) {
            QStringList row;
            for (int c = 0; c < values.size(1); ++c)
                row << values(values.lbound(0) + r, values.lbound(1) + c).toString();
            rows << row;
        }
    setGridRows(grid, headings, rows);
}

void defpopunits::pickClicked(PopLevel level) {
    if (loading_)
        return;
    static const QString none[3] = {putext::NoStudyExist, putext::NoPAG1Exist, putext::NoPAG2Exist};
    Level& l = levels_[index(level)];
    const QStringList studies = units_.sourceStudies(level);
    if (studies.isEmpty()) {
        prompts().ask(none[index(level)]);
        loading_ = true;
        l.fresh->setChecked(true);
        loading_ = false;
        return;
    }
    loading_ = true;
    l.studies->clear();
    l.studies->addItems(studies);
    l.studies->setCurrentIndex(-1);
    l.studies->setEnabled(true);
    loading_ = false;
}

// A fresh definition starts from an empty grid; nothing leaves the tables until Apply.
void defpopunits::freshClicked(PopLevel level) {
    Level& l = levels_[index(level)];
    l.studies->setEnabled(false);
    if (!loading_)
        setRows(level, {});
}

void defpopunits::sourceChosen(PopLevel level) {
    const QComboBox* combo = levels_[index(level)].studies;
    if (loading_ || combo->currentIndex() < 0)
        return;
    const QList<UnitRow> rows = units_.copyRows(level, combo->currentText());
    if (rows.isEmpty()) {
        prompts().ask(putext::NoRecords);
        return;
    }
    setRows(level, rows);
}

void defpopunits::refreshLists() {
    lstbpu->clear();
    lstbpu->addItems(idsOf(rowsOf(PopLevel::BPU)));
    List1->clear();
    List1->addItems(idsOf(rowsOf(PopLevel::PAG1)));
}

void defpopunits::showMap() {
    QList<QStringList> rows;
    for (const MapPair& p : map_)
        rows << QStringList{p.bpu, p.pag1};
    setGridRows(*mapGrid_, {putext::MapBPU, putext::MapPAG1}, rows);
}

void defpopunits::cmdSet_Click() {
    if (!lstbpu->currentItem() || !List1->currentItem())
        return;
    setMapPair(map_, lstbpu->currentItem()->text(), List1->currentItem()->text());
    showMap();
}

void defpopunits::cmdApply_Click() {
    units_.apply(terms_, {txtPAG2Id->text(), txtPAG2Name->text(), {}}, rowsOf(PopLevel::PAG1),
                 rowsOf(PopLevel::BPU), map_);
}

void defpopunits::deleteBPURow() {
    const int row = bpuGrid_->row();
    const QString id = bpuGrid_->textMatrix(row, bpuGrid_->fixedCols());
    if (!id.isEmpty()) {
        if (!units_.deleteBPU(id, studyDataTables()))
            return;
        removeMapPairOfBPU(map_, id);
        showMap();
    }
    removeGridRow(*bpuGrid_, row);
}

void defpopunits::deletePAG1Row() {
    const int row = pag1Grid_->row();
    const QString id = pag1Grid_->textMatrix(row, pag1Grid_->fixedCols());
    if (!id.isEmpty()) {
        if (!units_.deletePAG1(id))
            return;
        removeMapPairsOfPAG1(map_, id);
        showMap();
    }
    removeGridRow(*pag1Grid_, row);
}

void defpopunits::deleteMapRows() {
    const int first = std::min(mapGrid_->row(), mapGrid_->rowSel()) - mapGrid_->fixedRows();
    const int last = std::max(mapGrid_->row(), mapGrid_->rowSel()) - mapGrid_->fixedRows();
    for (int i = std::min<int>(last, static_cast<int>(map_.size()) - 1); i >= first && i >= 0; --i)
        map_.removeAt(i);
    showMap();
}

} // namespace vesk
