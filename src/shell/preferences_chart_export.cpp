#include "shell/preferences_chart_export.h"

#include "platform/runtime.h"
#include "platform/texts.h"
#include "shell/preferences_texts.h"

#include <algorithm>
#include <limits>

namespace vesk {

namespace t = preferences_texts;

namespace {

int startOf(const QString& text) {
    const double n = roundHalfEven(Val(text));
    return static_cast<int>(std::clamp(n, 1.0, double(std::numeric_limits<int>::max())));
}

} // namespace

QStringList chartExportTitles(const QString& levelLabel) {
    const QString level = text(t::kChartLevel);
    QStringList titles;
    for (const char* title : t::kChartTitles) {
        QString shown = text(title);
        if (!levelLabel.isEmpty() && shown.endsWith(level))
            shown = shown.left(shown.size() - level.size()) + levelLabel;
        titles << shown;
    }
    return titles;
}

void ChartExportTab::load(const ChartExportSettings& kept) {
    fileName_ = kept.fileName;
    for (int i = 0; i < kExportChartCount; ++i) {
        sheets_[i] = kept.sheetNames[i];
        cols_[i] = QString::number(kept.startCols[i]);
        rows_[i] = QString::number(kept.startRows[i]);
    }
    chart_ = 0;
}

ChartExportFields ChartExportTab::fields() const {
    return {fileName_.isEmpty() ? text(t::kDefaultFileName) : fileName_,
            sheets_[chart_].isEmpty() ? text(t::kDefaultSheetName).arg(chart_ + 1) : sheets_[chart_],
            cols_[chart_], rows_[chart_]};
}

void ChartExportTab::setFields(const ChartExportFields& fields) {
    fileName_ = fields.fileName;
    sheets_[chart_] = fields.sheetName;
    cols_[chart_] = fields.startCol;
    rows_[chart_] = fields.startRow;
}

void ChartExportTab::choose(int chart) {
    chart_ = std::clamp(chart, 0, kExportChartCount - 1);
}

void ChartExportTab::apply(ChartExportSettings& kept) const {
    kept.fileName = fields().fileName;
    for (int i = 0; i < kExportChartCount; ++i) {
        kept.sheetNames[i] = sheets_[i].isEmpty() ? text(t::kDefaultSheetName).arg(i + 1) : sheets_[i];
        kept.startCols[i] = startOf(cols_[i]);
        kept.startRows[i] = startOf(rows_[i]);
    }
}

} // namespace vesk
