#include "results/forms/chart_painter.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QFileInfo>
#include <QLegend>
#include <QPainter>
#include <QStackedBarSeries>
#include <QSvgGenerator>
#include <QValueAxis>

namespace vesk {

namespace {

QFont fontOf(const ChartFont& f, double fallback) {
    QFont font(f.name.isEmpty() ? QStringLiteral("Arial") : f.name);
    font.setPointSizeF(f.size > 0 ? f.size : fallback);
    font.setItalic(f.italic);
    return font;
}

Qt::BrushStyle brushOf(int fill) {
    switch (fill) {
    case 0:
        return Qt::NoBrush;
    case 2:
        return Qt::Dense4Pattern;
    case 3:
        return Qt::DiagCrossPattern;
    default:
        return Qt::SolidPattern;
    }
}

Qt::Alignment alignmentOf(ChartPlace p) {
    switch (p) {
    case ChartPlace::Top:
        return Qt::AlignTop;
    case ChartPlace::Bottom:
        return Qt::AlignBottom;
    case ChartPlace::Left:
        return Qt::AlignLeft;
    case ChartPlace::Right:
        break;
    }
    return Qt::AlignRight;
}


} // namespace

QChart* makeBarChart(const ChartLook& look, const ChartTable& table) {
    auto* chart = new QChart;
    QAbstractBarSeries* series = look.stacked ? static_cast<QAbstractBarSeries*>(new QStackedBarSeries)
                                              : static_cast<QAbstractBarSeries*>(new QBarSeries);
    for (int k = 0; k < table.series.size(); ++k) {
        auto* set = new QBarSet(table.series[k]);
        for (double v : table.values[std::size_t(k)])
            *set << v;
        QBrush brush = set->brush();
        if (std::size_t(k) < look.colours.size()) {
            const auto& c = look.colours[std::size_t(k)];
            brush.setColor(QColor(c[0], c[1], c[2]));
        } else {
            brush.setColor(QColor::fromHsv((k * 47) % 360, 140, 200));
        }
        brush.setStyle(brushOf(look.fill));
        set->setBrush(brush);
        series->append(set);
    }
    series->setBarWidth(std::clamp(1.0 - look.barGap / 100.0, 0.1, 1.0));
    chart->addSeries(series);
    auto* x = new QBarCategoryAxis;
    x->append(table.categories);
    x->setTitleText(look.axisXTitle);
    x->setLabelsFont(fontOf(look.axisXFont, 12));
    x->setGridLineVisible(false);
    x->setLineVisible(look.ticksX);
    auto* y = new QValueAxis;
    y->setTitleText(look.axisYTitle);
    y->setTitleFont(fontOf(look.axisYFont, 9));
    y->setLabelsFont(fontOf(look.axisYFont, 9));
    y->setGridLineVisible(false);
    if (look.majorDivisions > 0)
        y->setTickCount(look.majorDivisions + 1);
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    series->attachAxis(x);
    series->attachAxis(y);
    if (look.scaleMax != 0) {
        y->setRange(look.scaleMin, look.scaleMax);
    } else {
        y->setMin(std::min(0.0, look.scaleMin));
        y->applyNiceNumbers();
    }
    chart->setTitle(look.title + (look.footnote.isEmpty() ? QString() : QStringLiteral("\n") + look.footnote));
    chart->setTitleFont(fontOf(look.titleFont, 12));
    chart->legend()->setVisible(look.legend);
    chart->legend()->setAlignment(alignmentOf(look.legendPlace));
    // The legend's font is 11 points; a long list of series (the age groups) takes a smaller one so that
    // every entry fits beside the chart.
    chart->legend()->setFont(QFont(QStringLiteral("Arial"), table.series.size() > 10 ? 7 : 11));
    return chart;
}

bool saveChartView(QChartView& view, const QString& path, const QString& title) {
    if (QFileInfo(path).suffix().compare(QLatin1String("svg"), Qt::CaseInsensitive) == 0) {
        QSvgGenerator svg;
        svg.setFileName(path);
        svg.setSize(view.size());
        svg.setViewBox(QRect(QPoint(0, 0), view.size()));
        svg.setTitle(title);
        QPainter painter;
        if (!painter.begin(&svg))
            return false;
        view.render(&painter);
        return painter.end() && QFileInfo(path).size() > 0;
    }
    return view.grab().toImage().save(path);
}

} // namespace vesk
