#pragma once
// The settings of the chart data export (Results -> Graph Export Data): the workbook's name, and for
// each of the nine data tables the sheet it goes to and the row and column it starts at. They are
// held in memory only, for the life of the program: the settings file has no line for them.
// Preferences edits them; the export reads them, and fills them in when the sheets are not named.

#include <QString>
#include <array>

namespace vesk {

inline constexpr int kExportChartCount = 9;

struct ChartExportSettings {
    QString fileName;                                  // empty until one is set
    std::array<QString, kExportChartCount> sheetNames; // empty until set
    std::array<int, kExportChartCount> startRows{1, 1, 1, 1, 1, 1, 1, 1, 1};
    std::array<int, kExportChartCount> startCols{1, 1, 1, 1, 1, 1, 1, 1, 1};
};

ChartExportSettings& chartExportSettings();

} // namespace vesk
