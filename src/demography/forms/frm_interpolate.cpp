#include "demography/forms/frm_interpolate.h"

#include "demography/sprague_texts.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vesk {

namespace st = sprague_texts;

namespace {

QRadioButton* option(QWidget* parent, const QString& name, const char* label) {
    return namedOption(parent, name, text(label));
}

QPushButton* button(QWidget* parent, const QString& name, const char* caption) {
    return namedButton(parent, name, text(caption));
}

FlexGridView* gridView(QWidget* parent, const QString& name, GridModel& model, FlexGridView::EditStyle style) {
    model.setRows(2);
    model.setCols(1);
    model.setFixedCols(0);
    model.setFixedRows(1);
    auto* v = new FlexGridView(parent);
    v->setObjectName(name);
    v->setEditStyle(style);
    v->setGrid(&model);
    return v;
}

} // namespace

frmInterpolate* frmInterpolate::open(QWidget* parent) {
    static QPointer<frmInterpolate> single;
    return openSingle(single, parent, [parent] { return new frmInterpolate(parent); });
}

frmInterpolate::frmInterpolate(QWidget* area) : area_(area) {
    setObjectName(QStringLiteral("frmInterpolate"));
    setWindowTitle(text(st::kCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* intro = new QLabel(text(st::kIntro), this);
    intro->setObjectName(QStringLiteral("lblIntro"));
    intro->setWordWrap(true);
    flexSource = gridView(this, QStringLiteral("flexSource"), source_, FlexGridView::EditStyle::CellBox);
    FlexOPAgGrps = gridView(this, QStringLiteral("FlexOPAgGrps"), output_, FlexGridView::EditStyle::CellBox);
    FlexDest = gridView(this, QStringLiteral("FlexDest"), dest_, FlexGridView::EditStyle::ReadOnly);
    output_.setTextMatrix(0, 0, text(st::kHeadOutput));
    connect(flexSource, &FlexGridView::cellEdited, this, [this](int r, int c) { sourceEdited(r, c); });
    connect(FlexOPAgGrps, &FlexGridView::cellEdited, this, [this](int r, int c) { outputEdited(r, c); });
    lblOutput = new QLabel(this);
    lblOutput->setObjectName(QStringLiteral("lblOutput"));
    auto* grids = new QHBoxLayout;
    grids->addWidget(flexSource, 3);
    auto* outputColumn = new QVBoxLayout;
    outputColumn->addWidget(lblOutput);
    outputColumn->addWidget(FlexOPAgGrps);
    grids->addLayout(outputColumn, 3);
    grids->addWidget(FlexDest, 3);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(buildOptions());
    layout->addLayout(grids, 1);
    layout->addWidget(buildButtons());
    dataChosen();
    outputModeChosen();
    for (FlexGridView* v : {flexSource, FlexOPAgGrps, FlexDest})
        v->resizeColumnsToContents();
    resize(980, 620);
}

QWidget* frmInterpolate::buildOptions() {
    auto* box = new QWidget(this);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    auto* data = new QGroupBox(box);
    auto* dataRow = new QHBoxLayout(data);
    Option1 = option(data, QStringLiteral("Option1"), st::kPopulation);
    Option2 = option(data, QStringLiteral("Option2"), st::kDeaths);
    Optboth = option(data, QStringLiteral("Optboth"), st::kBoth);
    for (QRadioButton* o : {Option1, Option2, Optboth}) {
        dataRow->addWidget(o);
        connect(o, &QRadioButton::clicked, this, [this] { dataChosen(); });
    }
    Option1->setChecked(true);
    auto* width = new QGroupBox(box);
    auto* widthRow = new QHBoxLayout(width);
    Optfvnaggrp = option(width, QStringLiteral("Optfvnaggrp"), st::kFiveYear);
    OptTnaggrp = option(width, QStringLiteral("OptTnaggrp"), st::kTenYear);
    widthRow->addWidget(Optfvnaggrp);
    widthRow->addWidget(OptTnaggrp);
    Optfvnaggrp->setChecked(true);
    connect(OptTnaggrp, &QRadioButton::clicked, this, [this] {
        prompts().ask(text(st::kYetToBeDeveloped), Buttons::Ok, Icon::Information, QString());
        Optfvnaggrp->setChecked(true);
    });
    auto* mode = new QGroupBox(box);
    auto* modeRow = new QHBoxLayout(mode);
    optAgeInt = option(mode, QStringLiteral("optAgeInt"), st::kAgeIntervals);
    optExactAge = option(mode, QStringLiteral("optExactAge"), st::kExactAge);
    modeRow->addWidget(optAgeInt);
    modeRow->addWidget(optExactAge);
    optAgeInt->setChecked(true);
    for (QRadioButton* o : {optAgeInt, optExactAge})
        connect(o, &QRadioButton::clicked, this, [this] { outputModeChosen(); });
    row->addWidget(data);
    row->addWidget(width);
    row->addWidget(mode);
    return box;
}

QWidget* frmInterpolate::buildButtons() {
    auto* box = new QWidget(this);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    Cmdupplmt = button(box, QStringLiteral("Cmdupplmt"), st::kUpperLimit);
    Command2 = button(box, QStringLiteral("Command2"), st::kImportData);
    CmdBuiltSngyr = button(box, QStringLiteral("CmdBuiltSngyr"), st::kBuildSingleYear);
    CmdSv = button(box, QStringLiteral("CmdSv"), st::kSaveAs);
    CmdClr = button(box, QStringLiteral("CmdClr"), st::kClearAll);
    Cmdclose = button(box, QStringLiteral("Cmdclose"), st::kClose);
    connect(Cmdupplmt, &QPushButton::clicked, this, [this] { Cmdupplmt_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(CmdBuiltSngyr, &QPushButton::clicked, this, [this] { CmdBuiltSngyr_Click(); });
    connect(CmdSv, &QPushButton::clicked, this, [this] { CmdSv_Click(); });
    connect(CmdClr, &QPushButton::clicked, this, [this] { CmdClr_Click(); });
    connect(Cmdclose, &QPushButton::clicked, this, &QWidget::close);
    for (QPushButton* b : {Cmdupplmt, Command2, CmdBuiltSngyr, CmdSv, CmdClr})
        row->addWidget(b);
    row->addStretch();
    row->addWidget(Cmdclose);
    return box;
}

} // namespace vesk
