// The tabs of frmVESKSetup, one function each, and the small makers of their controls.

#include "platform/forms/flex_grid_view.h"
#include "platform/texts.h"
#include "shell/forms/frm_vesk_setup.h"
#include "shell/preferences_names.h"
#include "shell/preferences_texts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace t = preferences_texts;

namespace {

QGroupBox* frame(const char* caption, QWidget* parent) {
    return new QGroupBox(text(caption), parent);
}

QLabel* note(const char* words, QWidget* parent) {
    auto* label = new QLabel(text(words), parent);
    label->setWordWrap(true);
    return label;
}

} // namespace

QLineEdit* frmVESKSetup::field(const char* name, QWidget* parent) {
    auto* e = new QLineEdit(parent);
    const QString n = QString::fromLatin1(name);
    e->setObjectName(n);
    fields_.insert(n, e);
    e->installEventFilter(this);
    connect(e, &QLineEdit::textEdited, this, [this, n](const QString& typed) {
        session_.setField(n, typed);
        if (n == QLatin1String("txtSampPct"))
            resample();
    });
    return e;
}

QComboBox* frmVESKSetup::recordset(const char* name, const char* table, QWidget* parent) {
    auto* c = new QComboBox(parent);
    const QString n = QString::fromLatin1(name);
    c->setObjectName(n);
    c->setEditable(true);
    c->addItem(text(table));
    combos_.insert(n, c);
    connect(c, &QComboBox::editTextChanged, this, [this, n](const QString& typed) {
        if (!refreshing_)
            session_.setField(n, typed);
    });
    return c;
}

QPushButton* frmVESKSetup::button(const char* name, const char* caption, QWidget* parent) {
    auto* b = new QPushButton(text(caption), parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QRadioButton* frmVESKSetup::option(const char* name, const char* caption, QWidget* parent) {
    auto* o = new QRadioButton(text(caption), parent);
    o->setObjectName(QString::fromLatin1(name));
    return o;
}

FlexGridView* frmVESKSetup::grid(const QString& name, GridModel& model, QWidget* parent) {
    auto* g = new FlexGridView(parent);
    g->setObjectName(name);
    g->setEditStyle(FlexGridView::EditStyle::CellBox);
    g->setGrid(&model);
    g->verticalHeader()->setVisible(false);
    g->installEventFilter(this);
    g->viewport()->installEventFilter(this);
    return g;
}

void frmVESKSetup::hint(QWidget* w, const char* words) {
    w->setProperty("bubblehlp", text(words));
    w->installEventFilter(this);
}

QWidget* frmVESKSetup::buildFileLocations() {
    auto* page = new QWidget(this);
    auto* database = frame(t::kDatabaseDetails, page);
    auto* databaseForm = new QFormLayout(database);
    txtwklocation = field("txtwklocation", database);
    txtVESKObj = field("txtVESKObj", database);
    databaseForm->addRow(text(t::kWorkingLocation), txtwklocation);
    databaseForm->addRow(text(t::kDatabase), txtVESKObj);
    hint(database, t::kHintDatabase);

    auto* other = frame(t::kOtherPaths, page);
    auto* otherForm = new QFormLayout(other);
    txtStatOut = field("txtStatOut", other);
    txtImpLoc = field("txtImpLoc", other);
    txtTempArea = field("txtTempArea", other);
    otherForm->addRow(text(t::kStatisticalOutputs), txtStatOut);
    otherForm->addRow(text(t::kImportLocation), txtImpLoc);
    otherForm->addRow(text(t::kTemporaryLocation), txtTempArea);
    hint(other, t::kHintPaths);
#ifdef Q_OS_WIN
    auto* format = note(t::kPathFormatWindows, page);
#else
    auto* format = note(t::kPathFormatOther, page);
#endif
    format->setObjectName(QStringLiteral("lblPathFormat"));

    auto* sounds = frame(t::kWaveFiles, page);
    auto* soundGrid = new QGridLayout(sounds);
    cmdSuccess = button("cmdSuccess", t::kOnSuccess, sounds);
    CmdBussy = button("CmdBussy", t::kOnBusy, sounds);
    Cmdfailure = button("Cmdfailure", t::kOnFailure, sounds);
    lblSuccess = new QLabel(sounds);
    lblBusy = new QLabel(sounds);
    lblfail = new QLabel(sounds);
    QPushButton* buttons[] = {cmdSuccess, CmdBussy, Cmdfailure};
    QLabel* labels[] = {lblSuccess, lblBusy, lblfail};
    const char* names[] = {"lblSuccess", "lblBusy", "lblfail"};
    const EventSound kinds[] = {EventSound::Success, EventSound::Busy, EventSound::Failure};
    for (int i = 0; i < 3; ++i) {
        labels[i]->setObjectName(QString::fromLatin1(names[i]));
        labels[i]->setWordWrap(true);
        labels[i]->setFrameShape(QFrame::StyledPanel);
        labels[i]->setMinimumWidth(260);
        soundGrid->addWidget(buttons[i], i, 0, Qt::AlignTop);
        soundGrid->addWidget(labels[i], i, 1);
        connect(buttons[i], &QPushButton::clicked, this,
                [this, kind = kinds[i], b = buttons[i]] { chooseSound(kind, b); });
    }
    soundGrid->setColumnStretch(1, 1);
    hint(sounds, t::kHintSounds);

    auto* recordsets = frame(t::kRecordsets, page);
    auto* recordForm = new QFormLayout(recordsets);
    recordForm->setRowWrapPolicy(QFormLayout::WrapAllRows);
    cmbVESKADW = recordset("cmbVESKADW", t::kAdwTable, recordsets);
    cmbVESKCSMP = recordset("cmbVESKCSMP", t::kCsmpTable, recordsets);
    cmbVESKPSYr = recordset("cmbVESKPSYr", t::kPopSnglYrTable, recordsets);
    recordForm->addRow(text(t::kAdwTableLabel), cmbVESKADW);
    recordForm->addRow(text(t::kCsmpTableLabel), cmbVESKCSMP);
    recordForm->addRow(text(t::kPopSnglYrLabel), cmbVESKPSYr);
    hint(recordsets, t::kHintRecordsets);

    auto* left = new QVBoxLayout;
    left->addWidget(database);
    left->addWidget(other);
    left->addWidget(format);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(sounds);
    right->addWidget(recordsets);
    right->addStretch();
    auto* layout = new QHBoxLayout(page);
    layout->addLayout(left, 1);
    layout->addLayout(right, 1);
    return page;
}

QWidget* frmVESKSetup::buildMenuGrids(bool widths) {
    auto* page = new QWidget(this);
    auto* tabs = new QTabWidget(page);
    tabs->setObjectName(widths ? QStringLiteral("SSTabColWth") : QStringLiteral("SSTabDecPlcs"));
    auto& grids = widths ? FlexColumnWdth : FlexDecPlcs;
    MenuGrids& models = widths ? session_.widthGrids() : session_.decimalGrids();
    for (int tab = 0; tab < kMenuTabCount; ++tab) {
        grids[tab] = grid(widths ? QStringLiteral("FlexColumnWdth") : QStringLiteral("FlexDecPlcs"),
                          models[tab], tabs);
        grids[tab]->setProperty("menuTab", tab);
        grids[tab]->cellBox()->setValidator(
            new QIntValidator(0, widths ? 2147483647 : kMaxDecimals, grids[tab]));
        grids[tab]->horizontalHeader()->setStretchLastSection(true);
        tabs->addTab(grids[tab], text(t::kMenuTabs[tab]));
        hint(grids[tab], widths ? t::kHintWidths : t::kHintDecimals);
    }
    (widths ? SSTabColWth : SSTabDecPlcs) = tabs;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(tabs, 1);
    return page;
}

QWidget* frmVESKSetup::buildSample() {
    sampleFrame = new QGroupBox(this);
    sampleFrame->setObjectName(QStringLiteral("sampleFrame"));
    lblSmpEft = new QLabel(text(t::kSampleEffect), sampleFrame);
    lblSmpEft->setObjectName(QStringLiteral("lblSmpEft"));
    FlxTstGrdEft = new FlexGridView(sampleFrame);
    FlxTstGrdEft->setObjectName(QStringLiteral("FlxTstGrdEft"));
    FlxTstGrdEft->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    FlxTstGrdEft->setGrid(&session_.sample());
    FlxTstGrdEft->verticalHeader()->setVisible(false);
    FlxTstGrdEft->setSelectionMode(QAbstractItemView::NoSelection);
    FlxTstGrdEft->setFocusPolicy(Qt::NoFocus);
    // A sample has no current cell to show: the cell the grid keeps current is painted as any other.
    QPalette plain = FlxTstGrdEft->palette();
    plain.setColor(QPalette::Highlight, plain.color(QPalette::Base));
    plain.setColor(QPalette::HighlightedText, plain.color(QPalette::Text));
    FlxTstGrdEft->setPalette(plain);
    FlxTstGrdEft->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    FlxTstGrdEft->setFixedHeight(112);
    txtSampPct = field("txtSampPct", sampleFrame);
    txtSampPct->setMaximumWidth(80);
    auto* top = new QHBoxLayout;
    top->addWidget(lblSmpEft);
    top->addStretch();
    top->addWidget(new QLabel(text(t::kSamplePercent), sampleFrame));
    top->addWidget(txtSampPct);
    auto* layout = new QVBoxLayout(sampleFrame);
    layout->addLayout(top);
    layout->addWidget(FlxTstGrdEft);
    return sampleFrame;
}

QWidget* frmVESKSetup::buildLifeTables() {
    auto* page = new QWidget(this);
    SSTab2 = new QTabWidget(page);
    SSTab2->setObjectName(QStringLiteral("SSTab2"));
    SSTab2->addTab(buildStandardTable(), text(t::kLifeTablePages[0]));
    SSTab2->addTab(buildMethod(), text(t::kLifeTablePages[1]));
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(SSTab2);
    return page;
}

QWidget* frmVESKSetup::buildStandardTable() {
    auto* page = new QWidget(this);
    StbLfFrame = frame(t::kStandardTableFrame, page);
    StbLfFrame->setObjectName(QStringLiteral("StbLfFrame"));
    OptBltStd = option("OptBltStd", t::kOptKro, StbLfFrame);
    OptUsrdf = option("OptUsrdf", t::kOptUser, StbLfFrame);
    optBltWHO = option("optBltWHO", t::kOptWho, StbLfFrame);
    lblLifeTableNote = new QLabel(StbLfFrame);
    lblLifeTableNote->setObjectName(QStringLiteral("lblLifeTableNote"));
    lblLifeTableNote->setWordWrap(true);
    lblLifeTableNote->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    lblLifeTableNote->setFrameShape(QFrame::StyledPanel);
    lblLifeTableNote->setMargin(6);
    auto* options = new QVBoxLayout(StbLfFrame);
    int type = 1;
    for (QRadioButton* o : {OptBltStd, OptUsrdf, optBltWHO}) {
        options->addWidget(o);
        connect(o, &QRadioButton::clicked, this, [this, type] {
            session_.chooseLifeTable(type);
            refresh();
        });
        ++type;
    }
    options->addWidget(lblLifeTableNote, 1);
    hint(StbLfFrame, t::kHintLifeTable);

    FlexLftTable = grid(QStringLiteral("FlexLftTable"), session_.lifeTable().grid(), page);
    FlexLftTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    Command1 = button("Command1", t::kExport, page);
    connect(Command1, &QPushButton::clicked, this, [this] { session_.lifeTable().exportGrid(); });
    auto* right = new QVBoxLayout;
    right->addWidget(FlexLftTable, 1);
    right->addWidget(Command1, 0, Qt::AlignRight);
    auto* layout = new QHBoxLayout(page);
    layout->addWidget(StbLfFrame, 3);
    layout->addLayout(right, 2);
    return page;
}

QWidget* frmVESKSetup::buildMethod() {
    auto* page = new QWidget(this);
    auto* methods = frame(t::kMethodFrame, page);
    auto* methodLayout = new QVBoxLayout(methods);
    Optnewell1 = option("Optnewell1", t::kMethods[0], methods);
    OptKeyfitz1 = option("OptKeyfitz1", t::kMethods[1], methods);
    Optrdmrll1 = option("Optrdmrll1", t::kMethods[2], methods);
    Optgre1 = option("Optgre1", t::kMethods[3], methods);
    qint16 m = 0;
    for (QRadioButton* o : {Optnewell1, OptKeyfitz1, Optrdmrll1, Optgre1}) {
        methodLayout->addWidget(o);
        connect(o, &QRadioButton::clicked, this, [this, m] {
            session_.chooseMethod(m);
            refresh();
        });
        ++m;
    }
    methodLayout->addStretch();
    auto* radix = frame(t::kRadixFrame, page);
    Txtradix1 = field("Txtradix1", radix);
    (new QVBoxLayout(radix))->addWidget(Txtradix1);
    auto* keyfitz = frame(t::kKeyfitzFrame, page);
    auto* keyfitzForm = new QFormLayout(keyfitz);
    txtKFlwrlmt1 = field("txtKFlwrlmt1", keyfitz);
    txtKFupprlmt1 = field("txtKFupprlmt1", keyfitz);
    keyfitzForm->addRow(text(t::kKeyfitzLower), txtKFlwrlmt1);
    keyfitzForm->addRow(text(t::kKeyfitzUpper), txtKFupprlmt1);
    auto* greville = new QHBoxLayout;
    rngval1 = field("rngval1", page);
    UpDown1 = new UpDownArrows(page);
    UpDown1->setObjectName(QStringLiteral("UpDown1"));
    UpDown1->onStep = [this](int steps) {
        session_.stepGreville(steps);
        refresh();
    };
    greville->addWidget(new QLabel(text(t::kGrevilleLabel), page));
    greville->addWidget(rngval1, 1);
    greville->addWidget(UpDown1);
    auto* layout = new QGridLayout(page);
    layout->addWidget(methods, 0, 0, 3, 1);
    layout->addWidget(radix, 0, 1);
    layout->addWidget(keyfitz, 1, 1);
    layout->addLayout(greville, 2, 1);
    layout->setRowStretch(3, 1);
    layout->setColumnStretch(1, 1);
    for (QWidget* w :
         {static_cast<QWidget*>(methods), static_cast<QWidget*>(radix), static_cast<QWidget*>(keyfitz)})
        hint(w, t::kHintMethod);
    return page;
}

QWidget* frmVESKSetup::buildTableNames() {
    auto* page = new QWidget(this);
    const char* frames[] = {t::kDictionaryNames, t::kPopulationNames, t::kInterpolatorNames,
                            t::kUserTableName};
    const int counts[] = {6, 3, 3, 1};
    auto* layout = new QGridLayout(page);
    int name = 0;
    for (int f = 0; f < 4; ++f) {
        auto* box = frame(frames[f], page);
        auto* form = new QFormLayout(box);
        for (int i = 0; i < counts[f]; ++i, ++name)
            form->addRow(text(t::kNameLabels[name]), field(kNameControls[name], box));
        hint(box, t::kHintNames);
        layout->addWidget(box, f == 0 ? 0 : f - 1, f == 0 ? 0 : 1, f == 0 ? 3 : 1, 1);
    }
    layout->addWidget(note(t::kNamesNote, page), 3, 0, 1, 2);
    layout->setRowStretch(4, 1);
    return page;
}

QWidget* frmVESKSetup::buildMisc() {
    auto* page = new QWidget(this);
    auto* ages = frame(t::kUpperAgeRange, page);
    auto* agesForm = new QFormLayout(ages);
    TxtMinMaxage = field("TxtMinMaxage", ages);
    TxtMaxMaxage = field("TxtMaxMaxage", ages);
    for (QLineEdit* age : {TxtMinMaxage, TxtMaxMaxage})
        age->setMaximumWidth(80);
    agesForm->addRow(text(t::kMinMaxAgeLabel), TxtMinMaxage);
    agesForm->addRow(text(t::kMaxMaxAgeLabel), TxtMaxMaxage);
    agesForm->addRow(note(t::kUpperAgeNote, ages));
    auto* leading = frame(t::kNLeadingCauses, page);
    auto* leadingForm = new QFormLayout(leading);
    txtNLdCuss = field("txtNLdCuss", leading);
    txtNLdCuss->setMaximumWidth(80);
    leadingForm->addRow(txtNLdCuss);
    leadingForm->addRow(note(t::kNLeadingCausesNote, leading));
    hint(ages, t::kHintMisc);
    hint(leading, t::kHintMisc);
    auto* layout = new QGridLayout(page);
    layout->addWidget(ages, 0, 0);
    layout->addWidget(leading, 0, 1);
    layout->setRowStretch(1, 1);
    return page;
}

QWidget* frmVESKSetup::buildGraphExport() {
    auto* page = new QWidget(this);
    FmeDtlsForExcel = frame(t::kExportFrame, page);
    FmeDtlsForExcel->setObjectName(QStringLiteral("FmeDtlsForExcel"));
    auto* form = new QFormLayout(FmeDtlsForExcel);
    form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    CmbExportList = new QComboBox(FmeDtlsForExcel);
    CmbExportList->setObjectName(QStringLiteral("CmbExportList"));
    connect(CmbExportList, &QComboBox::currentIndexChanged, this, [this](int chart) {
        if (refreshing_ || chart < 0)
            return;
        session_.chooseExportChart(chart);
        refresh();
    });
    txtFlname = field("txtFlname", FmeDtlsForExcel);
    txtShtName = field("txtShtName", FmeDtlsForExcel);
    txtstcolno = field("txtstcolno", FmeDtlsForExcel);
    txtstrowno = field("txtstrowno", FmeDtlsForExcel);
    form->addRow(text(t::kChartLabel), CmbExportList);
    form->addRow(text(t::kFileNameLabel), txtFlname);
    form->addRow(text(t::kSheetNameLabel), txtShtName);
    form->addRow(text(t::kStartColumnLabel), txtstcolno);
    form->addRow(text(t::kStartRowLabel), txtstrowno);
    for (QLineEdit* start : {txtstcolno, txtstrowno})
        start->setMaximumWidth(80);
    for (QLineEdit* name : {txtFlname, txtShtName})
        name->setMaximumWidth(320);
    form->addRow(note(t::kExportNote, FmeDtlsForExcel));
    hint(FmeDtlsForExcel, t::kHintExport);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(FmeDtlsForExcel);
    layout->addStretch();
    return page;
}

QWidget* frmVESKSetup::buildFoot() {
    auto* foot = new QWidget(this);
    Hint = new QLabel(foot);
    Hint->setObjectName(QStringLiteral("Hint"));
    Hint->setFrameShape(QFrame::StyledPanel);
    Hint->setFrameShadow(QFrame::Sunken);
    Hint->setWordWrap(true);
    Hint->setMinimumHeight(36);
    Ok = button("Ok", t::kOk, foot);
    cmdApply = button("cmdApply", t::kApply, foot);
    cmdClose = button("cmdClose", t::kClose, foot);
    hint(cmdApply, t::kHintApply);
    hint(cmdClose, t::kHintClose);
    connect(Ok, &QPushButton::clicked, this, [this] { okPressed(); });
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, [this] { Cancel_Click(); });
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Hint, 1);
    layout->addWidget(Ok);
    layout->addWidget(cmdApply);
    layout->addWidget(cmdClose);
    return foot;
}

} // namespace vesk
