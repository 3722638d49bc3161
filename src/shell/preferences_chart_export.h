#pragma once
// The chart data export's frame of the preferences form (FmeDtlsForExcel, "Detalis for the
// storage:") without its widgets: the nine charts of CmbExportList, and the workbook, sheet, start
// column and start row (txtFlname, txtShtName, txtstcolno, txtstrowno) of the chart chosen.
//
// What is typed for a chart is kept for it while another is chosen, and Apply keeps all of them in
// the export's settings. A chart with no sheet shows "SheetNo1" for the first, "SheetNo2" for the
// second and so on; a workbook not named shows "GraphData".

#include "foundation/chart_export_settings.h"

#include <QStringList>
#include <array>

namespace vesk {

// The nine charts' titles. Without a study each names its level "Region"; with one, `levelLabel`
// takes the place of that last word.
QStringList chartExportTitles(const QString& levelLabel = QString());

struct ChartExportFields {
    QString fileName, sheetName, startCol, startRow;
    bool operator==(const ChartExportFields&) const = default;
};

class ChartExportTab {
public:
    // Form_Load: the settings kept, the first chart chosen.
    void load(const ChartExportSettings& kept = chartExportSettings());
    int chart() const { return chart_; }
    // The fields of the chart chosen, as they are to be shown.
    ChartExportFields fields() const;
    // The fields as typed, kept for the chart chosen.
    void setFields(const ChartExportFields& fields);
    // Another chart chosen (0 to 8).
    void choose(int chart);
    // Apply: every chart's fields into the settings. A start row or column is a whole number from 1
    // (a text that reads as less is 1).
    void apply(ChartExportSettings& kept = chartExportSettings()) const;

private:
    QString fileName_;
    std::array<QString, kExportChartCount> sheets_, cols_, rows_;
    int chart_ = 0;
};

} // namespace vesk
