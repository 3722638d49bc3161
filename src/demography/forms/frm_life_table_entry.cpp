#include "demography/forms/frm_life_table_entry.h"

#include "demography/forms/frm_interpolate.h"
#include "demography/life_table.h"
#include "demography/life_table_texts.h"
#include "foundation/settings.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/window_placement.h"
#include "platform/texts.h"

#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace vesk {

namespace lt = life_table_texts;

namespace {

constexpr int kFirstRows = 1; // an empty row to type into before the ladder is made

QPushButton* button(QWidget* parent, const QString& name, const char* caption) {
    return namedButton(parent, name, text(caption));
}

} // namespace

FrmLifeTableEntry* FrmLifeTableEntry::open(QWidget* parent) {
    static QPointer<FrmLifeTableEntry> single;
    return openSingle(single, parent, [parent] { return new FrmLifeTableEntry(parent); });
}

FrmLifeTableEntry::FrmLifeTableEntry(QWidget* area) : area_(area) {
    setObjectName(QStringLiteral("FrmLifeTableEntry"));
    setWindowTitle(text(lt::kEntryCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    grid_.setRows(kFirstRows + 1);
    grid_.setCols(2);
    grid_.setFixedCols(0);
    grid_.setFixedRows(1);
    grid_.setTextMatrix(0, 0, text(lt::kHeadAge));
    grid_.setTextMatrix(0, 1, text(lt::kHeadRate));
    datas = new FlexGridView(this);
    datas->setObjectName(QStringLiteral("datas"));
    datas->setEditStyle(FlexGridView::EditStyle::CellBox);
    datas->setGrid(&grid_);
    datas->cellBox()->setObjectName(QStringLiteral("txtGrid"));

    auto* right = new QVBoxLayout;
    right->addWidget(buildParameters());
    right->addWidget(buildMethods());
    right->addWidget(buildLadder());
    right->addWidget(buildModel());
    TxtBblHlp = new QLabel(this);
    TxtBblHlp->setObjectName(QStringLiteral("TxtBblHlp"));
    TxtBblHlp->setWordWrap(true);
    TxtBblHlp->setMinimumHeight(48);
    right->addWidget(TxtBblHlp);
    right->addStretch();

    auto* body = new QHBoxLayout;
    body->addWidget(datas, 1);
    body->addLayout(right);
    cmdLTGen = button(this, QStringLiteral("cmdLTGen"), lt::kGenerateLifeTable);
    cmdHelp = button(this, QStringLiteral("cmdHelp"), lt::kHelp);
    cmdClose = button(this, QStringLiteral("cmdClose"), lt::kClose);
    connect(cmdLTGen, &QPushButton::clicked, this, [this] { cmdLTGen_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* foot = new QHBoxLayout;
    foot->addWidget(cmdHelp);
    foot->addStretch();
    foot->addWidget(cmdLTGen);
    foot->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(foot);
    methodChosen(std::clamp<qint16>(settings().LTMethod, 0, 3));
    resize(900, 640);
}

QLineEdit* FrmLifeTableEntry::field(const QString& name, const QString& value) {
    auto* e = new QLineEdit(value, this);
    e->setObjectName(name);
    return e;
}

QRadioButton* FrmLifeTableEntry::option(const QString& name, const char* label) {
    return namedOption(this, name, text(label));
}

QWidget* FrmLifeTableEntry::buildParameters() {
    auto* box = new QGroupBox(this);
    auto* form = new QFormLayout(box);
    const VeskSettings& s = settings();
    txtIMR = field(QStringLiteral("txtIMR"));
    txtImrDnmtr = field(QStringLiteral("txtImrDnmtr"), text(lt::kDefaultImrDenominator));
    txtPGR = field(QStringLiteral("txtPGR"));
    TxtAsdrDnmtr = field(QStringLiteral("TxtAsdrDnmtr"));
    txtlftdec = field(QStringLiteral("txtlftdec"), QString::number(s.LfTbDecPlcs));
    Rngval = field(QStringLiteral("Rngval"), s.LTGreval.trimmed());
    form->addRow(text(lt::kLabelImr), txtIMR);
    form->addRow(text(lt::kLabelImrDenominator), txtImrDnmtr);
    form->addRow(text(lt::kLabelPgr), txtPGR);
    form->addRow(text(lt::kLabelAsdrDenominator), TxtAsdrDnmtr);
    form->addRow(text(lt::kLabelDecimals), txtlftdec);
    form->addRow(text(lt::kLabelGreville), Rngval);
    auto* keyfitz = new QGroupBox(text(lt::kKeyfitzFrame), box);
    auto* limits = new QFormLayout(keyfitz);
    txtKFlwrlmt = field(QStringLiteral("txtKFlwrlmt"), s.LTKFlwrLmt.trimmed());
    txtKFupprlmt = field(QStringLiteral("txtKFupprlmt"), s.LTKFupprLmt.trimmed());
    limits->addRow(text(lt::kLabelLower), txtKFlwrlmt);
    limits->addRow(text(lt::kLabelUpper), txtKFupprlmt);
    form->addRow(keyfitz);
    txtImrDnmtr->installEventFilter(this);
    return box;
}

QWidget* FrmLifeTableEntry::buildMethods() {
    auto* box = new QGroupBox(text(lt::kMethodFrame), this);
    auto* row = new QHBoxLayout(box);
    Optnewell = option(QStringLiteral("Optnewell"), lt::kMethodLabels[0]);
    Optkeyfitz = option(QStringLiteral("Optkeyfitz"), lt::kMethodLabels[1]);
    Optrdmrll = option(QStringLiteral("Optrdmrll"), lt::kMethodLabels[2]);
    OptGre = option(QStringLiteral("OptGre"), lt::kMethodLabels[3]);
    QRadioButton* options[] = {Optnewell, Optkeyfitz, Optrdmrll, OptGre};
    for (qint16 m = 0; m < 4; ++m) {
        QRadioButton* o = options[m];
        row->addWidget(o);
        connect(o, &QRadioButton::clicked, this, [this, m] { methodChosen(m); });
    }
    Optnewell->installEventFilter(this);
    Optkeyfitz->installEventFilter(this);
    return box;
}

QWidget* FrmLifeTableEntry::buildLadder() {
    auto* box = new QGroupBox(this);
    auto* layout = new QVBoxLayout(box);
    auto* initial = new QGroupBox(text(lt::kInitialFrame), box);
    auto* initialRow = new QHBoxLayout(initial);
    optAge1 = option(QStringLiteral("optAge1"), lt::kInitialLabels[0]);
    optAge2 = option(QStringLiteral("optAge2"), lt::kInitialLabels[1]);
    optAge3 = option(QStringLiteral("optAge3"), lt::kInitialLabels[2]);
    optAge4 = option(QStringLiteral("optAge4"), lt::kInitialLabels[3]);
    for (QRadioButton* o : {optAge1, optAge2, optAge3, optAge4})
        initialRow->addWidget(o);
    optAge1->setChecked(true);
    auto* middle = new QGroupBox(text(lt::kMiddleFrame), box);
    auto* middleRow = new QHBoxLayout(middle);
    OptMAge5 = option(QStringLiteral("OptMAge5"), lt::kMiddleLabels[0]);
    OptMAge10 = option(QStringLiteral("OptMAge10"), lt::kMiddleLabels[1]);
    middleRow->addWidget(OptMAge5);
    middleRow->addWidget(OptMAge10);
    OptMAge5->setChecked(true);
    auto* last = new QHBoxLayout;
    txtLage = field(QStringLiteral("txtLage"), text(lt::kDefaultLastAge));
    last->addWidget(new QLabel(text(lt::kLabelLastAge), box));
    last->addWidget(txtLage);
    cmdGenAgeGrps = button(box, QStringLiteral("cmdGenAgeGrps"), lt::kGenerateAgeGroups);
    cmdIntpr = button(box, QStringLiteral("cmdIntpr"), lt::kCallInterpolator);
    last->addWidget(cmdGenAgeGrps);
    last->addWidget(cmdIntpr);
    connect(cmdGenAgeGrps, &QPushButton::clicked, this, [this] { cmdGenAgeGrps_Click(); });
    connect(cmdIntpr, &QPushButton::clicked, this, [this] { frmInterpolate::open(area_); });
    layout->addWidget(initial);
    layout->addWidget(middle);
    layout->addLayout(last);
    return box;
}

QWidget* FrmLifeTableEntry::buildModel() {
    auto* box = new QGroupBox(text(lt::kModelFrame), this);
    auto* row = new QHBoxLayout(box);
    cmbCdFamily = new QComboBox(box);
    cmbCdFamily->setObjectName(QStringLiteral("cmbCdFamily"));
    for (CdFamily f : {CdFamily::West, CdFamily::North, CdFamily::East, CdFamily::South})
        cmbCdFamily->addItem(cdFamilyName(f), int(f));
    cmbCdSex = new QComboBox(box);
    cmbCdSex->setObjectName(QStringLiteral("cmbCdSex"));
    cmbCdSex->addItem(QStringLiteral("F"), int(CdSex::Female));
    cmbCdSex->addItem(QStringLiteral("M"), int(CdSex::Male));
    spnCdLevel = new QSpinBox(box);
    spnCdLevel->setObjectName(QStringLiteral("spnCdLevel"));
    spnCdLevel->setRange(1, kCdLevels);
    spnCdLevel->setValue(15);
    row->addWidget(new QLabel(text(lt::kLabelFamily), box));
    row->addWidget(cmbCdFamily);
    row->addWidget(new QLabel(text(lt::kLabelSex), box));
    row->addWidget(cmbCdSex);
    row->addWidget(new QLabel(text(lt::kLabelLevel), box));
    row->addWidget(spnCdLevel);
    cmdCdTable = button(box, QStringLiteral("cmdCdTable"), lt::kShowModel);
    cmdCdRates = button(box, QStringLiteral("cmdCdRates"), lt::kModelRates);
    connect(cmdCdTable, &QPushButton::clicked, this, [this] { cmdCdTable_Click(); });
    connect(cmdCdRates, &QPushButton::clicked, this, [this] { cmdCdRates_Click(); });
    row->addWidget(cmdCdTable);
    row->addWidget(cmdCdRates);
    return box;
}

bool FrmLifeTableEntry::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::FocusIn) {
        if (watched == Optnewell)
            TxtBblHlp->setText(text(lt::kStandardSource));
        else if (watched == Optkeyfitz)
            TxtBblHlp->setText(text(lt::kKeyfitzSource));
        else if (watched == txtImrDnmtr)
            TxtBblHlp->setText(text(lt::kImrHint));
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vesk
