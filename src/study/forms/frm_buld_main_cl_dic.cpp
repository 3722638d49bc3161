#include "study/forms/frm_buld_main_cl_dic.h"

#include "database/study_context.h"
#include "platform/forms/bar_progress.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "study/cause_dictionary_texts.h"
#include "study/forms/study_forms_grid.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace {

const int kParentColumn = 2;

struct PageDef {
    const char* title;
    const char* grid;
    const char* combo; // "" for none
    const char* suffix;
    QStringList headers;
};

const PageDef& pageDef(int tab) {
    static const PageDef defs[5] = {
        {"Groups", "MsbdmGrps", "", "Grps", {cdtext::GroupCode, cdtext::GroupDescription}},
        {"Sub Groups",
         "MSFlexsubgrps",
         "cmbgrpcode",
         "SGrps",
         {cdtext::SubGroupCode, cdtext::SubGroupDescription, QStringLiteral("GrpCd")}},
        {"Clusters",
         "MSFlexbdmclstr",
         "cmbSgrpcode",
         "Clstr",
         {cdtext::ClusterCode, cdtext::ClusterDescription, QStringLiteral("SGrpCd")}},
        {"Causes of Burden",
         "MSFlexsgrptab",
         "cmbclstrcode",
         "Cob",
         {cdtext::CauseCode, cdtext::CauseDescription, QStringLiteral("ClstrCd")}},
        {"Sequela", "MSFlxSequelaDct", "", "Sqla", {cdtext::SequelaCode, cdtext::SequelaDescription}},
    };
    return defs[tab];
}

QPushButton* button(QWidget* parent, const QString& name, const QString& caption) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    return b;
}

} // namespace

FRMBULDMAINCLDIC* FRMBULDMAINCLDIC::open(QWidget* parent) {
    auto db = studyContext().ensureStudyDBOrShow();
    if (!db)
        return nullptr;
    return new FRMBULDMAINCLDIC(std::move(db), parent);
}

FRMBULDMAINCLDIC::FRMBULDMAINCLDIC(std::shared_ptr<DbConnection> db, QWidget* parent)
    : QWidget(parent), db_(std::move(db)), dict_(*db_) {
    setObjectName(QStringLiteral("FRMBULDMAINCLDIC"));
    setWindowTitle(cdtext::FormCaption);
    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    for (int t = 0; t < 5; ++t) {
        const PageDef& d = pageDef(t);
        SSTab1->addTab(buildPage(static_cast<Tab>(t), QString::fromLatin1(d.grid),
                                 QString::fromLatin1(d.combo), QString::fromLatin1(d.suffix)),
                       QString::fromLatin1(d.title));
    }
    connect(SSTab1, &QTabWidget::currentChanged, this, [this](int tab) {
        refreshParentCombo(static_cast<Tab>(tab));
        if (tab == TabSequela)
            refreshSequelaCauses();
    });

    cmdAppend = button(this, QStringLiteral("cmdAppend"), cdtext::AppendButton);
    cmdAppend->setToolTip(cdtext::AppendHint);
    cmdOK = button(this, QStringLiteral("cmdOK"), cdtext::OkButton);
    cmdClose = button(this, QStringLiteral("cmdClose"), cdtext::CloseButton);
    connect(cmdAppend, &QPushButton::clicked, this, [this] { cmdAppend_Click(); });
    connect(cmdOK, &QPushButton::clicked, this, &FRMBULDMAINCLDIC::cmdOK_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setTextVisible(false);
    ProgressBar1->setVisible(false);
    lblStatus = new QLabel(this);
    lblStatus->setObjectName(QStringLiteral("lblStatus"));
    auto* foot = new QHBoxLayout;
    foot->addWidget(lblStatus);
    foot->addWidget(ProgressBar1, 1);
    foot->addStretch(1);
    foot->addWidget(cmdAppend);
    foot->addWidget(cmdOK);
    foot->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1, 1);
    layout->addLayout(foot);
    loadAll();
    resize(720, 480);
}

QWidget* FRMBULDMAINCLDIC::buildPage(Tab tab, const QString& gridName, const QString& comboName,
                                     const QString& suffix) {
    auto* page = new QWidget;
    Page& p = pages_[tab];
    p.model = new GridModel(this);
    p.view = makeTextGrid(page, gridName, p.model);
    onDeleteKey(p.view, [this, tab] { deleteRow(tab); });
    auto* nav = new QHBoxLayout;
    const char* const moves[4][2] = {
        {"cmdFirst", "|<"}, {"cmdPrev", "<"}, {"cmdNext", ">"}, {"cmdLast", ">|"}};
    for (int m = 0; m < 4; ++m) {
        QPushButton* b =
            button(page, QString::fromLatin1(moves[m][0]) + suffix, QString::fromLatin1(moves[m][1]));
        b->setFixedWidth(40);
        connect(b, &QPushButton::clicked, this, [this, tab, m] { move(tab, m); });
        nav->addWidget(b);
    }
    nav->addStretch(1);
    if (!comboName.isEmpty()) {
        p.parent = new QComboBox(page);
        p.parent->setObjectName(comboName);
        p.parent->setMinimumWidth(120);
        auto* label = new QLabel(pageDef(tab - 1).headers[0].trimmed(), page);
        nav->addWidget(label);
        nav->addWidget(p.parent);
        connect(p.parent, &QComboBox::currentIndexChanged, this, [this, tab](int) { parentChosen(tab); });
    }
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(p.view, 1);
    layout->addLayout(nav);
    if (tab == TabSequela)
        layout->addWidget(buildSequelaMaps(page));
    connect(p.view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, tab] { currentRowChanged(tab); });
    return page;
}

QWidget* FRMBULDMAINCLDIC::buildSequelaMaps(QWidget* tab) {
    auto* box = new QWidget(tab);
    cmbCobcd = new QComboBox(box);
    cmbCobcd->setObjectName(QStringLiteral("cmbCobcd"));
    cmbCobcd->setMinimumWidth(100);
    lstSqlaCauses = new QListWidget(box);
    lstSqlaCauses->setObjectName(QStringLiteral("lstSqlaCauses"));
    lstSqlaCauses->setMaximumHeight(110);
    cmdMap = button(box, QStringLiteral("cmdMap"), QStringLiteral("&Map"));
    cmdUnmap = button(box, QStringLiteral("cmdUnmap"), QStringLiteral("&Remove Map"));
    connect(cmdMap, &QPushButton::clicked, this, &FRMBULDMAINCLDIC::cmdMap_Click);
    connect(cmdUnmap, &QPushButton::clicked, this, &FRMBULDMAINCLDIC::cmdUnmap_Click);
    auto* left = new QVBoxLayout;
    left->addWidget(new QLabel(cdtext::CauseCode, box));
    left->addWidget(cmbCobcd);
    left->addWidget(cmdMap);
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addWidget(new QLabel(QStringLiteral("Sequela-Cause of Burden Map"), box));
    right->addWidget(lstSqlaCauses);
    right->addWidget(cmdUnmap);
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(left);
    layout->addLayout(right, 1);
    return box;
}

void FRMBULDMAINCLDIC::loadAll() {
    for (int t = 0; t < 4; ++t)
        fillPage(static_cast<Tab>(t), loadDictLevel(*db_, static_cast<DictLevel>(t)));
    fillPage(TabSequela, loadSequelae(*db_));
    cmbCobcd->clear();
    for (const DictRow& row : loadDictLevel(*db_, DictLevel::Cause))
        cmbCobcd->addItem(row.code);
    for (Tab tab : {TabSubGroups, TabClusters, TabCauses})
        refreshParentCombo(tab);
    refreshSequelaCauses();
}

void FRMBULDMAINCLDIC::fillPage(Tab tab, const QList<DictRow>& rows) {
    Page& p = pages_[tab];
    const QStringList& headers = pageDef(tab).headers;
    QList<QStringList> texts;
    p.saved.clear();
    for (const DictRow& r : rows) {
        texts << (headers.size() > kParentColumn ? QStringList{r.code, r.description, r.parent}
                                                 : QStringList{r.code, r.description});
        p.saved.insert(r.code);
    }
    setGridRows(*p.model, headers, texts);
    if (headers.size() > kParentColumn)
        p.view->setColumnHidden(kParentColumn, true);
    p.view->syncFromGrid();
}

QList<DictRow> FRMBULDMAINCLDIC::pageRows(Tab tab) const {
    QList<DictRow> rows;
    for (const QStringList& r : gridRows(*pages_[tab].model))
        rows.push_back({r.value(0), r.value(1), r.value(kParentColumn)});
    return rows;
}

QString FRMBULDMAINCLDIC::currentCode(Tab tab) const {
    const GridModel& m = *pages_[tab].model;
    return m.textMatrix(m.row(), m.fixedCols());
}

void FRMBULDMAINCLDIC::move(Tab tab, int where) {
    GridModel& m = *pages_[tab].model;
    const int first = m.fixedRows(), last = m.rows() - 1;
    const int rows[4] = {first, std::max(first, m.row() - 1), std::min(last, m.row() + 1), last};
    m.setCurrent(rows[where], m.fixedCols());
    pages_[tab].view->syncFromGrid();
    currentRowChanged(tab);
}

void FRMBULDMAINCLDIC::currentRowChanged(Tab tab) {
    Page& p = pages_[tab];
    if (p.parent) {
        const QString parent = p.model->textMatrix(p.model->row(), p.model->fixedCols() + kParentColumn);
        syncing_ = true;
        const int i = p.parent->findText(parent.isEmpty() ? cdtext::NoParent : parent);
        p.parent->setCurrentIndex(std::max(i, 0));
        syncing_ = false;
    }
    if (tab == TabSequela)
        refreshSequelaCauses();
}

// The parent codes: those of the level above as its grid holds them, saved or about to be.
void FRMBULDMAINCLDIC::refreshParentCombo(Tab tab) {
    Page& p = pages_[tab];
    if (!p.parent)
        return;
    syncing_ = true;
    p.parent->clear();
    p.parent->addItem(cdtext::NoParent);
    for (const DictRow& row : pageRows(static_cast<Tab>(tab - 1)))
        if (!row.code.trimmed().isEmpty())
            p.parent->addItem(row.code);
    syncing_ = false;
    currentRowChanged(tab);
}

void FRMBULDMAINCLDIC::parentChosen(Tab tab) {
    if (syncing_)
        return;
    Page& p = pages_[tab];
    const QString text = p.parent->currentText();
    p.model->setTextMatrix(p.model->row(), p.model->fixedCols() + kParentColumn,
                           text == cdtext::NoParent ? QString() : text);
    keepBlankLastRow(*p.model);
}

bool FRMBULDMAINCLDIC::cmdAppend_Click() {
    const Tab tab = static_cast<Tab>(SSTab1->currentIndex());
    bool ok;
    if (tab == TabSequela) {
        ok = dict_.saveSequelae(pageRows(TabSequela));
        if (ok)
            fillPage(TabSequela, loadSequelae(*db_));
        return ok;
    }
    BarProgress progress(ProgressBar1, lblStatus, BarProgress::Refresh::Events);
    ok = dict_.append(
        {pageRows(TabGroups), pageRows(TabSubGroups), pageRows(TabClusters), pageRows(TabCauses)}, progress);
    if (ok)
        loadAll();
    return ok;
}

void FRMBULDMAINCLDIC::cmdOK_Click() {
    if (cmdAppend_Click())
        close();
}

void FRMBULDMAINCLDIC::deleteRow(Tab tab) {
    Page& p = pages_[tab];
    const QString code = currentCode(tab);
    if (!p.saved.contains(code)) {
        removeGridRow(*p.model, p.model->row()); // a row not yet in the table only leaves the grid
        return;
    }
    if (tab == TabCauses) {
        prompts().ask(cdtext::SavedCauseStays, Buttons::Ok, Icon::Information);
        return;
    }
    const bool deleted = tab == TabSequela ? dict_.deleteSequela(code) : dict_.deleteCode(code, tab);
    if (deleted)
        loadAll();
}

void FRMBULDMAINCLDIC::refreshSequelaCauses() {
    lstSqlaCauses->clear();
    const QString sequela = currentCode(TabSequela);
    if (sequela.isEmpty())
        return;
    for (const DictRow& row : dict_.causesOfSequela(sequela))
        lstSqlaCauses->addItem(row.code);
}

void FRMBULDMAINCLDIC::cmdMap_Click() {
    const QString sequela = currentCode(TabSequela);
    if (sequela.isEmpty() || cmbCobcd->currentText().isEmpty())
        return;
    dict_.mapSequela(sequela, cmbCobcd->currentText());
    refreshSequelaCauses();
}

void FRMBULDMAINCLDIC::cmdUnmap_Click() {
    const QString sequela = currentCode(TabSequela);
    if (sequela.isEmpty() || !lstSqlaCauses->currentItem())
        return;
    dict_.removeSequelaMap(lstSqlaCauses->currentItem()->text(), sequela);
    refreshSequelaCauses();
}

} // namespace vesk
