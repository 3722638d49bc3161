// What the interpolation tool's options and buttons do; the window's construction is in
// frm_interpolate.cpp.

#include "demography/forms/frm_interpolate.h"

#include "demography/interpolator.h"
#include "demography/sprague_texts.h"
#include "foundation/settings.h"
#include "inputs/save_results.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <QChart>
#include <QChartView>
#include <QLabel>
#include <QLineSeries>
#include <QRadioButton>
#include <QVBoxLayout>
#include <QValueAxis>

namespace vesk {

namespace st = sprague_texts;

QStringList frmInterpolate::dataHeads() const {
    if (Optboth->isChecked())
        return {text(st::kPopulation), text(st::kDeaths)};
    return {text(Option2->isChecked() ? st::kDeaths : st::kPopulation)};
}

// The source grid takes a column for each kind of data chosen; what was typed stays in its column.
void frmInterpolate::dataChosen() {
    const QStringList heads = dataHeads();
    source_.setCols(1 + int(heads.size()));
    source_.setTextMatrix(0, 0, text(st::kHeadAgeGroups));
    for (int c = 0; c < heads.size(); ++c)
        source_.setTextMatrix(0, c + 1, heads[c]);
    flexSource->syncFromGrid();
}

void frmInterpolate::outputModeChosen() {
    lblOutput->setText(text(optExactAge->isChecked() ? st::kOutputExactAge : st::kOutputAgeInterval));
}

QStringList frmInterpolate::column(const GridModel& g, int col) const {
    QStringList out;
    for (int r = g.fixedRows(); r < g.rows(); ++r)
        out << g.textMatrix(r, col);
    while (!out.isEmpty() && out.last().trimmed().isEmpty() &&
           (col == 0 || g.textMatrix(g.fixedRows() + int(out.size()) - 1, 0).trimmed().isEmpty()))
        out.removeLast();
    return out;
}

void frmInterpolate::setSourceAges(const QStringList& ages) {
    source_.setRows(int(ages.size()) + 1);
    for (int i = 0; i < ages.size(); ++i)
        source_.setTextMatrix(i + 1, 0, ages[i]);
    flexSource->syncFromGrid();
}

void frmInterpolate::Cmdupplmt_Click() {
    const auto typed = prompts().inputBox(text(st::kUpperLimit), text(st::kCaption), QString());
    if (!typed)
        return;
    const auto ages = interpolatorAgeLadder(*typed);
    if (!ages)
        return;
    upperLimit_ = Val(*typed);
    setSourceAges(*ages);
}

// A source row typed by hand before an upper limit gave the ladder.
void frmInterpolate::sourceEdited(int row, int col) {
    if (upperLimit_ || source_.textMatrix(row, col).trimmed().isEmpty())
        return;
    prompts().ask(text(st::kEnterUpperLimit), Buttons::Ok, Icon::Warning, QString());
    source_.setTextMatrix(row, col, QString());
}

void frmInterpolate::outputEdited(int row, int col) {
    const QString typed = output_.textMatrix(row, col).trimmed();
    if (col != 0 || typed.isEmpty())
        return;
    QString refusal;
    if (column(source_, 1).isEmpty()) {
        refusal = text(st::kInputMissing);
    } else {
        std::optional<double> previous;
        for (int r = row - 1; r >= output_.fixedRows() && !previous; --r)
            if (!output_.textMatrix(r, 0).trimmed().isEmpty())
                previous = Val(output_.textMatrix(r, 0));
        refusal = outputGroupRefusal(typed, previous, upperLimit_);
    }
    if (refusal.isEmpty()) {
        if (row == output_.rows() - 1)
            output_.setRows(output_.rows() + 1); // room for the next group
        return;
    }
    prompts().ask(refusal, Buttons::Ok, Icon::Warning, QString());
    output_.setTextMatrix(row, 0, QString());
}

void frmInterpolate::Command2_Click() {
    const auto path = prompts().openFileName(text(st::kImportTitle), text(st::kImportFilter));
    if (!path)
        return;
    QStringList fields;
    if (!Option2->isChecked())
        fields << text(st::kPopField);
    if (!Option1->isChecked())
        fields << text(st::kDeathsField);
    const auto columns = readInterpolatorSource(*path, fields);
    if (!columns || columns->first().isEmpty())
        return;
    const int n = int(columns->first().size());
    if (column(source_, 0).size() != n) {
        QStringList ages;
        for (int i = 0; i + 1 < n; ++i)
            ages << QString::number(5 * i);
        ages << QString::number(5 * (n - 1)) + QStringLiteral("-w");
        upperLimit_ = 5.0 * (n - 1);
        setSourceAges(ages);
    }
    for (int c = 0; c < columns->size(); ++c)
        for (int i = 0; i < n; ++i)
            source_.setTextMatrix(i + 1, c + 1, (*columns)[c].value(i));
}

void frmInterpolate::CmdBuiltSngyr_Click() {
    const QStringList ages = column(source_, 0);
    QList<QStringList> columns;
    for (int c = 1; c < source_.cols(); ++c)
        columns << column(source_, c).mid(0, ages.size());
    const InterpolatorRun run = runInterpolator(ages, columns);
    if (run.outcome == InterpolatorOutcome::NegativeChart)
        showChart(ages, columns);
    if (run.outcome != InterpolatorOutcome::Done)
        return;
    const int decimals = settings().LfTbDecPlcs;
    const int n = run.singleYears.first().size(0);
    dest_.setRows(n + 1);
    dest_.setCols(1 + int(run.singleYears.size()));
    dest_.setTextMatrix(0, 0, text(st::kHeadAgex));
    const QStringList heads = dataHeads();
    for (int c = 0; c < run.singleYears.size(); ++c) {
        dest_.setTextMatrix(0, c + 1, heads.value(c));
        for (int y = 0; y < n; ++y)
            dest_.setTextMatrix(y + 1, c + 1, TKdecimals(run.singleYears[c](y).toDouble(), decimals));
    }
    for (int y = 0; y < n; ++y)
        dest_.setTextMatrix(y + 1, 0, QString::number(y));
    const QStringList groups = column(output_, 0);
    collapsed_ = collapseToOutputGroups(run.singleYears, groups, optExactAge->isChecked());
    output_.setCols(1 + int(run.singleYears.size()));
    for (int c = 0; c < run.singleYears.size(); ++c) {
        output_.setTextMatrix(0, c + 1, heads.value(c));
        for (int r = 0; r < groups.size(); ++r) {
            const Cell& v = collapsed_(r, c + 1);
            output_.setTextMatrix(r + 1, c + 1, v.isNumber() ? TKdecimals(v.toDouble(), decimals) : QString());
        }
    }
    FlexDest->resizeColumnsToContents();
    FlexOPAgGrps->resizeColumnsToContents();
    if (!groups.isEmpty())
        ProcChkNegRslt(collapsed_);
}

void frmInterpolate::showChart(const QStringList& ages, const QList<QStringList>& columns) {
    auto* chart = new QChart;
    chart->setTitle(text(st::kChartTitle));
    const QStringList heads = dataHeads();
    for (int c = 0; c < columns.size(); ++c) {
        auto* series = new QLineSeries;
        series->setName(heads.value(c));
        for (int i = 0; i < columns[c].size(); ++i)
            series->append(Val(ages.value(i)), Val(columns[c][i]));
        chart->addSeries(series);
    }
    chart->createDefaultAxes();
    auto* view = new QChartView(chart);
    view->setObjectName(QStringLiteral("chtSprague"));
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->setWindowTitle(text(st::kChartTitle));
    view->setRenderHint(QPainter::Antialiasing);
    view->resize(640, 420);
    chart_ = view;
    placeWindow(view, area_);
}

void frmInterpolate::CmdSv_Click() {
    if (dest_.rows() <= 1 || dest_.textMatrix(1, 0).isEmpty()) {
        prompts().ask(text(st::kCheckGridBeforeSaving), Buttons::Ok, Icon::Information, QString());
        return;
    }
    if (column(output_, 0).isEmpty() || collapsed_.size(0) == 0) {
        prompts().ask(text(st::kNoOutputGroups), Buttons::Ok, Icon::Information, QString());
        return;
    }
    QStringList fields{text(st::kHeadAgex)};
    fields << dataHeads();
    SaveAsWords words;
    words.dialogTitle = text(st::kSaveTitle);
    words.replaceQuestion = text(st::kFileExists);
    words.databaseQuestion = false;
    saveResultsAs(collapsed_, fields, text(st::kTargetTable), words);
}

void frmInterpolate::CmdClr_Click() {
    for (GridModel* g : {&source_, &dest_}) {
        g->setRows(2);
        for (int c = 0; c < g->cols(); ++c)
            g->setTextMatrix(1, c, QString());
    }
    output_.setRows(2);
    output_.setCols(1);
    output_.setTextMatrix(1, 0, QString());
    dest_.setCols(1);
    collapsed_ = CellArray();
    upperLimit_.reset();
    for (FlexGridView* v : {flexSource, FlexOPAgGrps, FlexDest})
        v->syncFromGrid();
}

} // namespace vesk
