#include "results/forms/frm_chg_prpty.h"

#include "platform/forms/named_widgets.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "results/chart_look.h"
#include "results/results_texts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace rt = results_texts;
namespace gf = graph_field;

namespace {

struct TextField {
    const char* name;
    int field;
    int tab;
    const char* caption;
};

// The text fields, tab by tab, in the order Apply checks them.
const TextField kTextFields[] = {
    {"txtLegPos", gf::LegendPosition, 0, "Legend position (Number < 9)"},
    {"txtColColrs", gf::Colours, 0, "Column colours (Format R,G,B;)"},
    {"txtChtTitle", gf::Title, 1, "Title"},
    {"txtTitleFont", gf::TitleFont, 1, "Font"},
    {"txtFntSz", gf::TitleFontSize, 1, "Size (Number < 20)"},
    {"txtChtFotnotTitle", gf::Footnote, 2, "Footnote"},
    {"txtFotnotFont", gf::FootnoteFont, 2, "Font"},
    {"txtChtFotnotFntSz", gf::FootnoteFontSize, 2, "Size (Number < 20)"},
    {"txtXAxisTitle", gf::AxisXTitle, 3, "Title"},
    {"txtAxisXFont", gf::AxisXFont, 3, "Font"},
    {"txtAxisXFntSz", gf::AxisXFontSize, 3, "Size (Number < 20)"},
    {"txtAxisYTitle", gf::AxisYTitle, 4, "Title"},
    {"txtAxisYFont", gf::AxisYFont, 4, "Font"},
    {"txtAxisYFntSz", gf::AxisYFontSize, 4, "Size (Number < 20)"},
    {"txtVSclMin", gf::ScaleMin, 4, "Minimum"},
    {"txtVSclMax", gf::ScaleMax, 4, "Maximum (0 automatic)"},
    {"txtVSclMajDiv", gf::MajorDivisions, 4, "Major divisions"},
};

QComboBox* combo(QWidget* parent, const char* name, const QStringList& items, const QString& current) {
    auto* c = new QComboBox(parent);
    c->setObjectName(QString::fromLatin1(name));
    c->addItems(items);
    bool ok = false;
    const int index = current.trimmed().toInt(&ok);
    c->setCurrentIndex(ok && index >= 0 && index < items.size() ? index : 0);
    return c;
}

void pair(QWidget* parent, QRadioButton*& yes, QRadioButton*& no, const char* yesName, const char* noName,
          const QString& value, QFormLayout* form, const QString& caption) {
    yes = namedOption(parent, QString::fromLatin1(yesName), QStringLiteral("True"));
    no = namedOption(parent, QString::fromLatin1(noName), QStringLiteral("False"));
    (value.trimmed().compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ? yes : no)->setChecked(true);
    auto* box = new QWidget(parent);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(yes);
    row->addWidget(no);
    row->addStretch();
    form->addRow(caption, box);
}

QString truth(const QRadioButton* yes) {
    return yes->isChecked() ? QStringLiteral("True") : QStringLiteral("False");
}

} // namespace

frmChgPrpty::frmChgPrpty(GraphLine& line, std::function<void()> applied, QWidget* parent)
    : QDialog(parent), line_(line), applied_(std::move(applied)) {
    setObjectName(QStringLiteral("frmChgPrpty"));
    setWindowTitle(text(rt::kPropertiesCaption));
    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    QList<QFormLayout*> forms;
    for (const char* tab : {"Chart", "Title", "Footnote", "Axis X", "Axis Y", "Series"}) {
        auto* page = new QWidget(SSTab1);
        forms << new QFormLayout(page);
        SSTab1->addTab(page, QString::fromLatin1(tab));
    }
    QWidget* chart = SSTab1->widget(0);
    CmbChtTy = combo(chart, "CmbChtTy", {"3D Bar", "2D Bar"}, QString());
    CmbChtTy->setCurrentText(line_.value(gf::Type));
    forms[0]->addRow(QStringLiteral("Chart type"), CmbChtTy);
    pair(chart, Optstck1, OptStck2, "Optstck1", "OptStck2", line_.value(gf::Stacking), forms[0], QStringLiteral("Stacking"));
    pair(chart, OptDsr1, OptDSR2, "OptDsr1", "OptDSR2", line_.value(gf::SeriesInRows), forms[0],
         QStringLiteral("Data series in rows"));
    pair(chart, OptShL1, OptShL2, "OptShL1", "OptShL2", line_.value(gf::ShowLegend), forms[0], QStringLiteral("Show legend"));
    for (const TextField& f : kTextFields) {
        auto* edit = new QLineEdit(line_.value(f.field), SSTab1->widget(f.tab));
        edit->setObjectName(QString::fromLatin1(f.name));
        forms[f.tab]->addRow(QString::fromLatin1(f.caption), edit);
        fields_.insert(edit->objectName(), edit);
        index_.insert(edit->objectName(), f.field);
    }
    const QStringList ticks = {"None", "Marks"};
    CmbTickXStyle = combo(SSTab1->widget(3), "CmbTickXStyle", ticks, line_.value(gf::AxisXTicks));
    forms[3]->addRow(QStringLiteral("Tick style"), CmbTickXStyle);
    CmbTickYStyle = combo(SSTab1->widget(4), "CmbTickYStyle", ticks, line_.value(gf::AxisYTicks));
    forms[4]->addRow(QStringLiteral("Tick style"), CmbTickYStyle);
    QWidget* series = SSTab1->widget(5);
    const QStringList frames = {"Single Line", "Double Line", "Thick Inner"};
    CmbpatternFillSty = combo(series, "CmbpatternFillSty", {"Null", "Solid", "Pattern", "Hatched"}, line_.value(gf::FillStyle));
    CmbPlotFrmSty = combo(series, "CmbPlotFrmSty", frames, line_.value(gf::PlotFrame));
    CmbChtFrmSty = combo(series, "CmbChtFrmSty", frames, line_.value(gf::ChartFrame));
    forms[5]->addRow(QStringLiteral("Fill style"), CmbpatternFillSty);
    forms[5]->addRow(QStringLiteral("Plot frame"), CmbPlotFrmSty);
    forms[5]->addRow(QStringLiteral("Chart frame"), CmbChtFrmSty);
    cmdApply = namedButton(this, QStringLiteral("cmdApply"), QStringLiteral("&Apply"));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    connect(cmdApply, &QPushButton::clicked, this, [this] { Apply(); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdApply);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1);
    layout->addLayout(buttons);
}

bool frmChgPrpty::Apply() {
    for (const TextField& f : kTextFields)
        if (const auto refused = checkChartField(f.field, fields_.value(QString::fromLatin1(f.name))->text())) {
            prompts().ask(*refused);
            fields_.value(QString::fromLatin1(f.name))->setFocus();
            return false;
        }
    for (auto it = index_.cbegin(); it != index_.cend(); ++it)
        line_[it.value()] = fields_.value(it.key())->text();
    line_[gf::Type] = CmbChtTy->currentText();
    line_[gf::Stacking] = truth(Optstck1);
    line_[gf::SeriesInRows] = truth(OptDsr1);
    line_[gf::ShowLegend] = truth(OptShL1);
    line_[gf::AxisXTicks] = QString::number(CmbTickXStyle->currentIndex());
    line_[gf::AxisYTicks] = QString::number(CmbTickYStyle->currentIndex());
    line_[gf::FillStyle] = QString::number(CmbpatternFillSty->currentIndex());
    line_[gf::PlotFrame] = QString::number(CmbPlotFrmSty->currentIndex());
    line_[gf::ChartFrame] = QString::number(CmbChtFrmSty->currentIndex());
    if (applied_)
        applied_();
    return true;
}

} // namespace vesk
