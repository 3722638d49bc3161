#include "study/forms/frm_cob.h"

#include "database/study_context.h"
#include "platform/forms/bar_progress.h"
#include "platform/prompts.h"
#include "study/cause_dictionary_texts.h"
#include "study/forms/frm_cob_print.h"
#include "study/population_units_texts.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace vesk {

namespace {

QPushButton* button(QWidget* parent, const QString& name, const QString& caption) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    return b;
}

} // namespace

frmCOB* frmCOB::open(Mode mode, QWidget* parent) {
    StudyContext& c = studyContext();
    auto db = c.ensureStudyDBOrShow();
    if (!db)
        return nullptr;
    if (mode == Mode::Population && c.CurBDSId.isEmpty()) {
        prompts().ask(putext::NoCurrentStudy);
        return nullptr;
    }
    return new frmCOB(std::move(db), c.CurBDSId, mode, parent);
}

frmCOB::frmCOB(std::shared_ptr<DbConnection> db, QString study, Mode mode, QWidget* parent)
    : QWidget(parent), db_(std::move(db)), study_(std::move(study)), mode_(mode) {
    setObjectName(QStringLiteral("frmCOB"));
    setWindowTitle(cdtext::OutlineCaption);
    COB = new QTreeWidget(this);
    COB->setObjectName(QStringLiteral("COB"));
    COB->setColumnCount(1);
    COB->header()->hide();
    cmdExpand = button(this, QStringLiteral("cmdExpand"), cdtext::ExpandAll);
    cmdCollapse = button(this, QStringLiteral("cmdCollapse"), cdtext::CollapseAll);
    cmdPrint = button(this, QStringLiteral("cmdPrint"), cdtext::PrintButton);
    cmdClose = button(this, QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setTextVisible(false);
    connect(cmdExpand, &QPushButton::clicked, COB, &QTreeWidget::expandAll);
    connect(cmdCollapse, &QPushButton::clicked, COB, &QTreeWidget::collapseAll);
    connect(cmdPrint, &QPushButton::clicked, this, [this] { cmdPrint_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdExpand);
    buttons->addWidget(cmdCollapse);
    buttons->addWidget(cmdPrint);
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(COB, 1);
    layout->addWidget(ProgressBar1);
    layout->addLayout(buttons);
    resize(480, 520);
    fill();
}

void frmCOB::fill() {
    COB->clear();
    BarProgress progress(ProgressBar1);
    progress.setVisible(true);
    const OutlineNode root = mode_ == Mode::Causes ? causeOutline(*db_, study_, &progress)
                                                   : populationOutline(*db_, study_, &progress);
    auto* top = new QTreeWidgetItem(COB, QStringList{root.text});
    top->setData(0, Qt::UserRole, root.key);
    addChildren(top, root);
    // The root and its one child open, the levels below closed until the user opens them.
    top->setExpanded(true);
    if (top->childCount() > 0)
        top->child(0)->setExpanded(true);
    progress.setVisible(false);
}

void frmCOB::addChildren(QTreeWidgetItem* parent, const OutlineNode& node) {
    for (const OutlineNode& child : node.children) {
        auto* item = new QTreeWidgetItem(parent, QStringList{child.text});
        item->setData(0, Qt::UserRole, child.key);
        addChildren(item, child);
    }
}

bool frmCOB::cmdPrint_Click() {
    return mode_ == Mode::Causes ? printCauseOutline(*db_, study_) : printPopulationOutline(*db_, study_);
}

} // namespace vesk
