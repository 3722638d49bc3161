// DEFINESTUDY1: the widgets of the four tabs and their layout. The handlers are in
// definestudy1_handlers.cpp.

#include "study/forms/definestudy1.h"

#include "platform/forms/flex_grid_view.h"
#include "study/asg_texts.h"
#include "study/study_setup_texts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace t = setup_texts;

namespace {

QPointer<DEFINESTUDY1> theForm;

using setup_texts::text;

template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

FlexGridView* gridView(QWidget* parent, const char* name, GridModel& model, FlexGridView::EditStyle style) {
    auto* view = named(new FlexGridView(parent), name);
    view->setGrid(&model);
    view->setEditStyle(style);
    view->horizontalHeader()->setStretchLastSection(true);
    view->verticalHeader()->setDefaultSectionSize(22);
    // The cursor shows in the grid that has the focus only.
    view->setStyleSheet(QStringLiteral("QTableView:!focus { selection-background-color: transparent; "
                                       "selection-color: palette(text); }"));
    return view;
}

QRadioButton* option(const char* caption, const char* name, QWidget* parent) {
    return named(new QRadioButton(text(caption), parent), name);
}

struct OptionSpec {
    QRadioButton*& button;
    const char* caption;
    const char* name;
};

// A frame with its option buttons side by side, each made with its caption and object name.
QGroupBox* optionRow(QWidget* parent, std::initializer_list<OptionSpec> options) {
    auto* frame = new QGroupBox(parent);
    auto* row = new QHBoxLayout(frame);
    for (const OptionSpec& o : options) {
        o.button = option(o.caption, o.name, frame);
        row->addWidget(o.button);
    }
    row->addStretch();
    return frame;
}

bool gridColumnEmpty(const GridModel& g) {
    for (int r = g.fixedRows(); r < g.rows(); ++r)
        if (!g.textMatrix(r, 0).isEmpty())
            return false;
    return true;
}

// Twips of the old screen to pixels.
int pixels(int twips) {
    return twips / 15;
}

// The drawing of the hierarchy: the three levels in boxes, joined by lines from the top down.
class HierarchyPanel : public QWidget {
public:
    using QWidget::QWidget;
    QList<QWidget*> boxes;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setPen(QPen(palette().color(QPalette::Dark), 2));
        for (int i = 0; i + 1 < boxes.size(); ++i) {
            const QRect a = boxes[i]->geometry(), b = boxes[i + 1]->geometry();
            const int x = a.left() + 24;
            p.drawLine(x, a.bottom(), x, b.top() + b.height() / 2);
            p.drawLine(x, b.top() + b.height() / 2, b.left(), b.top() + b.height() / 2);
        }
    }
};

} // namespace

DEFINESTUDY1::DEFINESTUDY1(bool newDatabase, Cell& chosenSets, QWidget* parent)
    : QDialog(parent), session_(std::make_unique<StudySetupSession>(newDatabase, chosenSets)) {
    setObjectName(QStringLiteral("DEFINESTUDY1"));
    setWindowTitle(text(t::kCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(900, 620);

    auto* top = new QVBoxLayout(this);
    SSTabDstudy = named(new QTabWidget(this), "SSTabDstudy");
    SSTabDstudy->addTab(buildStudyTab(), text(t::kTabStudy));
    SSTabDstudy->addTab(buildAgeGroupsTab(), text(t::kTabAgeGroups));
    SSTabDstudy->addTab(buildSchemeTab(), text(t::kTabPopUnits));
    SSTabDstudy->addTab(buildCausesTab(), text(t::kTabCauses));
    // A first study: tabs 0, 1 and 2; the causes come later.
    if (newDatabase)
        SSTabDstudy->setTabEnabled(StudySetupSession::TabCauses, false);
    top->addWidget(SSTabDstudy);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    cmdApply = named(new QPushButton(text(t::kApply), this), "cmdApply");
    cmdClose = named(new QPushButton(text(t::kClose), this), "cmdClose");
    for (QPushButton* b : {cmdApply, cmdClose}) {
        b->setAutoDefault(false);
        b->setMinimumWidth(96);
        buttons->addWidget(b);
    }
    top->addLayout(buttons);

    session_->load();
    connectStudyTab();
    connectAgeGroupsTab();
    connectSchemeTab();
    connectCausesTab();
    // The options that match what the load put on the tabs.
    OptDisplayAges->setChecked(!gridColumnEmpty(session_->ages.RPTGrid));
    (session_->scheme.scheme.isEmpty() ? OptNewSchema : OptDisplaySchema)->setChecked(true);
    showSession();
}

DEFINESTUDY1::~DEFINESTUDY1() = default;

DEFINESTUDY1* DEFINESTUDY1::open(QWidget* parent, bool newDatabase, Cell& chosenSets,
                                 FrameRequestHandler onRequest) {
    if (!theForm) {
        theForm = new DEFINESTUDY1(newDatabase, chosenSets, parent);
        theForm->setWindowModality(Qt::ApplicationModal);
        if (onRequest)
            theForm->requests_ = std::make_unique<ScopedSetupHandler>(std::move(onRequest));
    }
    theForm->show();
    theForm->raise();
    theForm->activateWindow();
    return theForm;
}

DEFINESTUDY1* DEFINESTUDY1::instance() {
    return theForm;
}

QWidget* DEFINESTUDY1::buildStudyTab() {
    auto* tab = new QWidget;
    auto* layout = new QGridLayout(tab);

    layout->addWidget(optionRow(tab, {{OptNewStudy, t::kOptNewStudy, "OptNewStudy"},
                                      {OptPickStudy, t::kOptPickStudy, "OptPickStudy"}}),
                      0, 0, 1, 2);

    auto* fields = new QFormLayout;
    txtBDSId = named(new QLineEdit(tab), "txtBDSId");
    txtBDSId->setMaxLength(5);
    txtBDSId->setMaximumWidth(90);
    txtYear = named(new QLineEdit(tab), "txtYear");
    txtYear->setPlaceholderText(QStringLiteral("2001  or  2001,2005  or  2001-2005"));
    txtBDSTi = named(new QLineEdit(tab), "txtBDSTi");
    fields->addRow(text(t::kStudyIdCaption), txtBDSId);
    fields->addRow(text(t::kYearCaption), txtYear);
    fields->addRow(text(t::kStudyTitleCaption), txtBDSTi);
    layout->addLayout(fields, 1, 0);

    lstYear = named(new QListWidget(tab), "lstYear");
    lstYear->setMaximumHeight(90);
    layout->addWidget(lstYear, 1, 1);

    dbgrid2 = gridView(tab, "dbgrid2", session_->dbgrid2, FlexGridView::EditStyle::ReadOnly);
    dbgrid2->setSelectionBehavior(QAbstractItemView::SelectRows);
    dbgrid2->setSelectionMode(QAbstractItemView::SingleSelection);
    dbgrid2->setStyleSheet(QString()); // the selected study shows at all times
    dbgrid2->verticalHeader()->setFixedWidth(pixels(kStudyColumnWidths[0]));
    dbgrid2->horizontalHeader()->setStretchLastSection(false);
    layout->addWidget(dbgrid2, 2, 0, 1, 2);

    auto* builtIn = new QGroupBox(text(t::kBuiltInDap), tab);
    auto* bl = new QVBoxLayout(builtIn);
    flexBuiltInDAP =
        gridView(builtIn, "flexBuiltInDAP", session_->flexBuiltInDAP, FlexGridView::EditStyle::ReadOnly);
    bl->addWidget(flexBuiltInDAP);
    auto* addl = new QGroupBox(text(t::kAddlDap), tab);
    auto* adl = new QVBoxLayout(addl);
    addlDap_.setFixedRows(1);
    addlDap_.setFixedCols(0);
    addlDap_.setCols(6);
    addlDap_.setRows(3);
    for (int c = 0; c < 5; ++c)
        addlDap_.setTextMatrix(0, c, text(t::kDapColumns[c]));
    addlDap_.setTextMatrix(0, 5, text(t::kDapChoice));
    flexAddlDAP = gridView(addl, "flexAddlDAP", addlDap_, FlexGridView::EditStyle::ReadOnly);
    adl->addWidget(flexAddlDAP);
    for (FlexGridView* v : {flexBuiltInDAP, flexAddlDAP}) {
        v->verticalHeader()->setVisible(false);
        v->setMinimumHeight(22 * 5 + 8);
    }
    layout->addWidget(builtIn, 3, 0);
    layout->addWidget(addl, 3, 1);
    layout->setRowStretch(2, 1);
    return tab;
}

QWidget* DEFINESTUDY1::buildAgeGroupsTab() {
    auto* tab = new QWidget;
    auto* layout = new QGridLayout(tab);
    AgeGroupsEditor& ages = session_->ages;
    RPTGrid = gridView(tab, "RPTGrid", ages.RPTGrid, FlexGridView::EditStyle::Direct);
    Rptgrid2 = gridView(tab, "Rptgrid2", ages.Rptgrid2, FlexGridView::EditStyle::Direct);
    Rptgrid3 = gridView(tab, "Rptgrid3", ages.Rptgrid3, FlexGridView::EditStyle::Direct);
    int column = 0;
    for (FlexGridView* g : {RPTGrid, Rptgrid2, Rptgrid3}) {
        g->setNumeric(true);
        g->setContextMenuPolicy(Qt::CustomContextMenu);
        g->setMinimumWidth(120);
        g->installEventFilter(this);
        layout->addWidget(g, 0, column++);
    }

    auto* options = new QGroupBox(tab);
    auto* ol = new QVBoxLayout(options);
    OptAfresh = option(t::kOptAfresh, "OptAfresh", options);
    OptPickAges = option(t::kOptPickAges, "OptPickAges", options);
    OptDisplayAges = option(t::kOptDisplayAges, "OptDisplayAges", options);
    Combo1 = named(new QComboBox(options), "Combo1");
    for (QWidget* w : std::initializer_list<QWidget*>{OptAfresh, OptPickAges, Combo1, OptDisplayAges})
        ol->addWidget(w);
    ol->addStretch();
    layout->addWidget(options, 0, 3);

    auto* note = named(new QLabel(text(t::kAgeNote), tab), "lblNote");
    note->setWordWrap(true);
    layout->addWidget(note, 1, 0, 1, 4);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    layout->setColumnStretch(2, 1);

    popupAges_ = named(new QMenu(this), "mnuAgeGroups");
    named(popupAges_->addAction(QString::fromLatin1(asg_texts::kFiveAgeGroup)), "mnuFiveAgeGroup");
    named(popupAges_->addAction(QString::fromLatin1(asg_texts::kSevenAgeGroup)), "mnuSevenAgeGroup");
    popupPnd_ = named(new QMenu(this), "mnuPndAgeGroups");
    named(popupPnd_->addAction(QString::fromLatin1(asg_texts::kFiveYearAgeGroup)), "mnuFiveYearAgeGroup");
    return tab;
}

QWidget* DEFINESTUDY1::buildSchemeTab() {
    auto* tab = new QWidget;
    auto* layout = new QGridLayout(tab);

    layout->addWidget(optionRow(tab, {{OptNewSchema, t::kOptNewSchema, "OptNewSchema"},
                                      {OptPickSchema, t::kOptPickSchema, "OptPickSchema"},
                                      {OptDisplaySchema, t::kOptDisplaySchema, "OptDisplaySchema"}}),
                      0, 0, 1, 2);

    auto* ids = new QFormLayout;
    Txtpagsch = named(new QLineEdit(tab), "Txtpagsch");
    Txtpagsch->setMaximumWidth(90);
    CMBPAGSCH = named(new QComboBox(tab), "CMBPAGSCH");
    CMBPAGSCH->setMinimumWidth(90);
    ids->addRow(QStringLiteral("PAGSch"), Txtpagsch);
    ids->addRow(text(t::kOptPickSchema), CMBPAGSCH);
    layout->addLayout(ids, 1, 0, Qt::AlignTop);

    auto* heading = named(new QLabel(text(t::kSchemaHeading), tab), "lblSchemeHeading");
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    layout->addWidget(heading, 2, 0, 1, 2);

    auto* drawing = new HierarchyPanel(tab);
    drawing->setObjectName(QStringLiteral("picHierarchy"));
    auto* dl = new QVBoxLayout(drawing);
    dl->setSpacing(22);
    const char* levels[3] = {"Level - 2 Population Aggregates", t::kPag1Level, t::kBpuLevel};
    TXTPAG2 = named(new QLineEdit, "TXTPAG2");
    tXTPAG1 = named(new QLineEdit, "tXTPAG1");
    TXTBPU = named(new QLineEdit, "TXTBPU");
    QLineEdit* edits[3] = {TXTPAG2, tXTPAG1, TXTBPU};
    for (int i = 0; i < 3; ++i) {
        auto* box = new QGroupBox(text(levels[i]), drawing);
        auto* bl = new QHBoxLayout(box);
        edits[i]->setParent(box);
        edits[i]->setMinimumWidth(220);
        bl->addWidget(edits[i]);
        bl->addStretch();
        box->setMinimumWidth(320);
        // Each level stands a step to the right of the one it rolls up into.
        auto* row = new QHBoxLayout;
        row->addSpacing(i * 48);
        row->addWidget(box);
        row->addStretch();
        dl->addLayout(row);
        drawing->boxes << box;
    }
    dl->addStretch();
    layout->addWidget(drawing, 3, 0, 1, 2);
    layout->setRowStretch(3, 1);
    layout->setColumnStretch(1, 1);
    return tab;
}

QWidget* DEFINESTUDY1::buildCausesTab() {
    auto* tab = new QWidget;
    auto* layout = new QGridLayout(tab);
    DbGridCauseGrps =
        gridView(tab, "DbGridCauseGrps", session_->DbGridCauseGrps, FlexGridView::EditStyle::ReadOnly);
    DbGridCauseGrps->verticalHeader()->setVisible(false);
    DbGridCauseGrps->horizontalHeader()->setStretchLastSection(false);
    layout->addWidget(DbGridCauseGrps, 0, 0, 1, 3);
    cmdSelectAll = named(new QPushButton(text(t::kSelectAll), tab), "cmdSelectAll");
    cmdUnselectAll = named(new QPushButton(text(t::kUnselectAll), tab), "cmdUnselectAll");
    cmdSwap = named(new QPushButton(text(t::kSwap), tab), "cmdSwap");
    for (QPushButton* b : {cmdSelectAll, cmdUnselectAll, cmdSwap})
        b->setAutoDefault(false);
    // The two long buttons one above the other, Swap beside them.
    cmdUnselectAll->setMinimumWidth(cmdUnselectAll->sizeHint().width());
    cmdSelectAll->setMinimumWidth(cmdUnselectAll->sizeHint().width());
    layout->addWidget(cmdSelectAll, 1, 0);
    layout->addWidget(cmdUnselectAll, 2, 0);
    layout->addWidget(cmdSwap, 1, 1, 2, 1, Qt::AlignVCenter | Qt::AlignLeft);

    auto* maps = new QGroupBox(tab);
    auto* ml = new QVBoxLayout(maps);
    ml->addWidget(new QLabel(text(t::kPickSequela), maps));
    LstSqlacd = named(new QListWidget(maps), "LstSqlacd");
    ml->addWidget(LstSqlacd);
    MsflxdtCobcd = gridView(maps, "MsflxdtCobcd", session_->MsflxdtCobcd, FlexGridView::EditStyle::Direct);
    MsflxdtCobcd->verticalHeader()->setVisible(false);
    MsflxdtCobcd->installEventFilter(this);
    ml->addWidget(MsflxdtCobcd);
    layout->addWidget(maps, 0, 3, 3, 1);
    layout->setColumnStretch(2, 1);
    layout->setColumnStretch(3, 1);
    return tab;
}

QMenu* DEFINESTUDY1::popupFor(int column) {
    popupTarget_ = column;
    return column == 2 ? popupPnd_ : popupAges_;
}

} // namespace vesk
