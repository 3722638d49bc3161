#pragma once
// procPaintChart's drawing of a chart in two dimensions, and a drawn chart saved as a picture: one
// painter for the chart window and for `vesk-cli chart`.

#include "results/chart_data.h"
#include "results/chart_look.h"

#include <QString>

class QChart;
class QChartView;

namespace vesk {

// The bars of `table` as `look` describes them: a series of bars or stacked bars, a bar set a series in
// its colour and fill, the units on the category axis (labels in 12 points where the line gives no
// size), the value axis with its title, font, divisions and fixed or automatic scale, the title and
// footnote, the legend at its place. The caller owns the chart.
QChart* makeBarChart(const ChartLook& look, const ChartTable& table);

// The view's chart into `path`: SVG for ".svg", otherwise the image kind of the extension (BMP, JPG,
// PNG ...). False when nothing could be written.
bool saveChartView(QChartView& view, const QString& path, const QString& title);

} // namespace vesk
