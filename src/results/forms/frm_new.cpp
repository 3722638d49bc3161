#include "results/forms/frm_new.h"

#include "burden/computation.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "inputs/grid_functions.h"
#include "platform/cell_array.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/print_html.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "results/forms/chart_painter.h"
#include "results/forms/frm_chg_prpty.h"
#include "results/results_texts.h"

#include <QApplication>
#include <QChart>
#include <QChartView>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtDataVisualization/Q3DBars>
#include <QtDataVisualization/QBar3DSeries>
#include <QtDataVisualization/Q3DCamera>
#include <QtDataVisualization/Q3DScene>
#include <QtDataVisualization/Q3DTheme>
#include <QtDataVisualization/QCategory3DAxis>
#include <QtDataVisualization/QValue3DAxis>

namespace vesk {

namespace rt = results_texts;

namespace {

// A file name made of the chart's title: characters no file system takes become "_".
QString fileNameOf(const QString& title) {
    QString name = title.trimmed();
    for (QChar& c : name)
        if (QStringLiteral("/\\:*?\"<>|").contains(c))
            c = u'_';
    return name;
}

} // namespace

frmnew* frmnew::procReadGph(bool pag, QWidget* parent) {
    QString error;
    auto props = readGraphProps(graphPropsPath(), &error);
    if (!props) {
        prompts().ask(error);
        return nullptr;
    }
    auto data = pag ? procPagGraphs(computation(), studyContext(), &error)
                    : procBPUGraphs(computation(), studyContext(), &error);
    if (!data) {
        prompts().ask(error);
        return nullptr;
    }
    return new frmnew(std::move(*props), std::move(*data), parent);
}

frmnew::frmnew(GraphProps props, ChartData data, QWidget* parent)
    : QWidget(parent), props_(std::move(props)), data_(std::move(data)) {
    setObjectName(QStringLiteral("frmnew"));
    setWindowTitle(text(rt::kChartCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    applyFamilyTitles(props_, data_);
    MSChart1 = new QChartView(this);
    MSChart1->setObjectName(QStringLiteral("MSChart1"));
    MSChart1->setRenderHint(QPainter::Antialiasing);
    MSChart1->setMinimumHeight(360);
    FlxGrdGph = new FlexGridView(this);
    FlxGrdGph->setObjectName(QStringLiteral("FlxGrdGph"));
    FlxGrdGph->setEditStyle(FlexGridView::EditStyle::ReadOnly);
    FlxGrdGph->setGrid(&grid_);
    FlxGrdGph->setVisible(false);
    lblDap = new QLabel(data_.dapLine, this);
    lblDap->setObjectName(QStringLiteral("lblDap"));
    tbFirst = namedButton(this, QStringLiteral("tbFirst"), QStringLiteral("First"));
    tbPrev = namedButton(this, QStringLiteral("tbPrev"), QStringLiteral("Previous"));
    tbNext = namedButton(this, QStringLiteral("tbNext"), QStringLiteral("Next"));
    tbLast = namedButton(this, QStringLiteral("tbLast"), QStringLiteral("Last"));
    cmdShowData = namedButton(this, QStringLiteral("cmdShowData"), text(rt::kShowData));
    cmdCopy = namedButton(this, QStringLiteral("cmdCopy"), QStringLiteral("Copy"));
    cmdPrint = namedButton(this, QStringLiteral("cmdPrint"), QStringLiteral("Print"));
    cmdSave = namedButton(this, QStringLiteral("cmdSave"), QStringLiteral("Save"));
    cmdSaveAs = namedButton(this, QStringLiteral("cmdSaveAs"), QStringLiteral("Save As"));
    cmdProperties = namedButton(this, QStringLiteral("cmdProperties"), QStringLiteral("Properties"));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), QStringLiteral("Close"));
    connect(tbFirst, &QPushButton::clicked, this, [this] { moveFirst(); });
    connect(tbPrev, &QPushButton::clicked, this, [this] { movePrevious(); });
    connect(tbNext, &QPushButton::clicked, this, [this] { moveNext(); });
    connect(tbLast, &QPushButton::clicked, this, [this] { moveLast(); });
    connect(cmdShowData, &QPushButton::clicked, this, [this] { toggleData(); });
    connect(cmdCopy, &QPushButton::clicked, this, [this] { copyChart(); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] { printChart(); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { saveChart(); });
    connect(cmdSaveAs, &QPushButton::clicked, this, [this] { saveChartAs(); });
    connect(cmdProperties, &QPushButton::clicked, this, [this] { properties(); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* moves = new QHBoxLayout;
    for (QPushButton* b : {tbFirst, tbPrev, tbNext, tbLast})
        moves->addWidget(b);
    moves->addStretch();
    for (QPushButton* b : {cmdShowData, cmdCopy, cmdPrint, cmdSave, cmdSaveAs, cmdProperties, cmdClose})
        moves->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(moves);
    layout->addWidget(MSChart1, 3);
    layout->addWidget(lblDap);
    layout->addWidget(FlxGrdGph, 1);
    resize(1000, 640);
    procPaintChart(0);
}

bool frmnew::openGlAvailable() {
    QOpenGLContext context;
    if (!context.create())
        return false;
    QOffscreenSurface surface;
    surface.create();
    return surface.isValid() && context.makeCurrent(&surface);
}

void frmnew::procPaintChart(int index) {
    if (index < 0 || index >= int(props_.size()))
        return;
    index_ = index;
    if (index >= int(data_.tables.size())) {
        prompts().ask(text(rt::kChartsNotLoaded));
        return;
    }
    const ChartTable& table = data_.tables[std::size_t(index)];
    look_ = chartLook(props_[std::size_t(index)], table);
    if (look_.threeD && openGlAvailable())
        draw3D(table);
    else
        draw2D(table);
    fillGrid(table);
}

void frmnew::draw2D(const ChartTable& table) {
    drawn3D_ = false;
    if (MSChart3D) {
        MSChart3D->deleteLater();
        MSChart3D = nullptr;
        bars3D = nullptr;
    }
    MSChart1->setVisible(true);
    QChart* old = MSChart1->chart();
    MSChart1->setChart(makeBarChart(look_, table));
    delete old;
}

void frmnew::draw3D(const ChartTable& table) {
    drawn3D_ = true;
    auto* bars = new Q3DBars;
    bars->activeTheme()->setType(Q3DTheme::ThemeQt);
    bars->activeTheme()->setFont(QFont(QStringLiteral("Arial"), 30));
    bars->scene()->activeCamera()->setCameraPreset(Q3DCamera::CameraPresetIsometricRightHigh);
    bars->setMultiSeriesUniform(true);
    bars->columnAxis()->setLabels(table.categories);
    bars->valueAxis()->setTitle(look_.axisYTitle);
    bars->valueAxis()->setTitleVisible(true);
    if (look_.scaleMax != 0)
        bars->valueAxis()->setRange(float(look_.scaleMin), float(look_.scaleMax));
    // A series of bars a series of the chart, side by side, each in its colour.
    for (std::size_t k = 0; k < table.values.size(); ++k) {
        auto* series = new QBar3DSeries;
        series->setName(table.series.value(int(k)));
        series->setItemLabelFormat(QStringLiteral("@seriesName: @valueLabel"));
        if (k < look_.colours.size()) {
            const auto& c = look_.colours[k];
            series->setBaseColor(QColor(c[0], c[1], c[2]));
        }
        auto* rows = new QBarDataArray;
        auto* row = new QBarDataRow;
        for (double v : table.values[k])
            row->append(QBarDataItem(float(v)));
        rows->append(row);
        series->dataProxy()->resetArray(rows, {table.series.value(int(k))}, table.categories);
        bars->addSeries(series);
    }
    bars->setTitle(look_.title);
    if (MSChart3D)
        MSChart3D->deleteLater();
    bars3D = bars;
    MSChart3D = QWidget::createWindowContainer(bars, this);
    MSChart3D->setObjectName(QStringLiteral("MSChart3D"));
    MSChart3D->setMinimumHeight(360);
    static_cast<QVBoxLayout*>(layout())->insertWidget(1, MSChart3D, 3);
    MSChart1->setVisible(false);
}

void frmnew::fillGrid(const ChartTable& table) {
    CellArray rows({int(table.categories.size()), int(table.head.size())});
    for (int u = 0; u < table.categories.size(); ++u) {
        rows(u, 0) = Cell(table.categories[u]);
        for (std::size_t k = 0; k < table.values.size(); ++k)
            rows(u, int(k) + 1) = Cell(table.values[k][std::size_t(u)]);
    }
    showTable(grid_, table.head, rows);
    FlxGrdGph->resizeColumnsToContents();
}

void frmnew::moveFirst() {
    procPaintChart(0);
}

void frmnew::moveNext() {
    if (index_ + 1 >= int(props_.size())) {
        prompts().ask(text(rt::kEndOfCharts));
        return;
    }
    procPaintChart(index_ + 1);
}

void frmnew::movePrevious() {
    if (index_ <= 0) {
        prompts().ask(text(rt::kBeginOfCharts));
        return;
    }
    procPaintChart(index_ - 1);
}

void frmnew::moveLast() {
    procPaintChart(int(props_.size()) - 1);
}

void frmnew::toggleData() {
    const bool show = !FlxGrdGph->isVisibleTo(this);
    FlxGrdGph->setVisible(show);
    cmdShowData->setText(text(show ? rt::kHideData : rt::kShowData));
}

QImage frmnew::chartImage() {
    // The 3D bars are a window of their own, which a grab of the form does not reach: they render
    // themselves.
    if (drawn3D_ && bars3D) {
        const QSize size = MSChart3D->size().expandedTo(QSize(900, 500));
        bars3D->resize(size);
        return bars3D->renderToImage(0, size);
    }
    if (MSChart1->size().isEmpty())
        MSChart1->resize(900, 500);
    return MSChart1->grab().toImage();
}

void frmnew::copyChart() {
    QApplication::clipboard()->setImage(chartImage());
    prompts().ask(text(rt::kCopied));
}

void frmnew::printChart() {
    printImage(this, chartImage());
}

bool frmnew::writeChart(const QString& path) {
    if (drawn3D_ && bars3D && QFileInfo(path).suffix().compare(QLatin1String("svg"), Qt::CaseInsensitive) != 0)
        return chartImage().save(path);
    if (MSChart1->size().isEmpty())
        MSChart1->resize(900, 500);
    return saveChartView(*MSChart1, path, look_.title);
}

void frmnew::saveChart() {
    const QString path = QDir(preferences().txtwklocation).filePath(fileNameOf(look_.title) + QStringLiteral(".svg"));
    if (QFileInfo::exists(path) && prompts().ask(text(rt::kReplace), Buttons::YesNo) != Answer::Yes)
        return;
    if (writeChart(path))
        prompts().ask(text(rt::kSavedIn1) + path + text(rt::kSavedIn2));
    else
        prompts().ask(text(rt::kNotSavedAs));
}

void frmnew::saveChartAs() {
    const auto path = prompts().saveFileName(QStringLiteral("Save As"), text(rt::kChartSaveFilter));
    if (!path)
        return;
    prompts().ask(text(writeChart(*path) ? rt::kSavedAs : rt::kNotSavedAs));
}

void frmnew::properties() {
    if (index_ >= int(props_.size()))
        return;
    frmChgPrpty dialog(props_[std::size_t(index_)], [this] { procPaintChart(index_); }, this);
    dialog.exec();
}

} // namespace vesk
