#include "shell/preferences_grids.h"

#include "foundation/settings_file_io.h"
#include "platform/runtime.h"
#include "platform/texts.h"
#include "shell/preferences_texts.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vesk {

namespace t = preferences_texts;

namespace {

constexpr WidthRow kStudyWidths[] = {
    {t::kRowStudyCauseTab, "SICC"},
    {t::kRowStudySetupCauses, "SSCC"},
    {t::kRowStudyEpi, "SIEC"},
};
constexpr WidthRow kViewWidths[] = {
    {t::kRowViewWeights, "VWC"},
    {t::kRowViewDeaths, "VDC"},
    {t::kRowViewPopulation, "VPC"},
};
constexpr WidthRow kResultsWidths[] = {
    {t::kRowResultsDetail, "RDC"},
    {t::kRowResultsSummary, "RSC"},
};

const DecimalRow kViewDecimals[] = {
    {t::kRowViewWeights, &VeskSettings::RptDecPlcs},
    {t::kRowViewDeaths, &VeskSettings::LDthDecPlcs},
};
const DecimalRow kResultsDecimals[] = {
    {t::kRowResultsDetail, &VeskSettings::RsltDecPlcs},
    {t::kRowResultsSummary, &VeskSettings::LSumDecPlcs},
    {t::kRowResultsDale, &VeskSettings::LDaleDecPlcs},
};
const DecimalRow kToolsDecimals[] = {
    {t::kRowToolsLifeTable, &VeskSettings::LfTbDecPlcs},
    {t::kRowTools, &VeskSettings::ToolDecPlcs},
};

constexpr double kTwipsPerPixel = 15;
// The sample's numbers: one with more decimals than any setting shows, and a small one.
constexpr double kSampleNumbers[] = {1234.567890123456, 0.5};

// The index in ColWdth of the key stem & n.
int widthIndex(const char* stem, int n) {
    return ColWdthIndex(QString::fromLatin1(stem) + QString::number(n));
}

void setHeads(GridModel& grid, std::span<const char* const> heads) {
    grid.setFixedCols(0);
    grid.setFixedRows(1);
    grid.setCols(static_cast<int>(heads.size()));
    for (int c = 0; c < grid.cols(); ++c)
        grid.setTextMatrix(0, c, text(heads[c]));
}

} // namespace

std::span<const WidthRow> widthRows(int tab) {
    switch (tab) {
    case kStudyTab:
        return kStudyWidths;
    case kViewTab:
        return kViewWidths;
    case kResultsTab:
        return kResultsWidths;
    default:
        return {};
    }
}

std::span<const DecimalRow> decimalRows(int tab) {
    switch (tab) {
    case kViewTab:
        return kViewDecimals;
    case kResultsTab:
        return kResultsDecimals;
    case kToolsTab:
        return kToolsDecimals;
    default:
        return {};
    }
}

void SetColWthConstants(GridModel& grid) {
    setHeads(grid, t::kColumnHeads);
}

void SetDecPlcsConstants(GridModel& grid) {
    setHeads(grid, t::kDecimalHeads);
}

void SetColWth(GridModel& grid, int tab, const VeskSettings& s) {
    SetColWthConstants(grid);
    const auto rows = widthRows(tab);
    grid.setRows(1 + static_cast<int>(rows.size()));
    for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
        grid.setTextMatrix(r + 1, 0, text(rows[r].caption));
        for (int n = 1; n <= 3; ++n)
            grid.setTextMatrix(r + 1, n, QString::number(s.ColWdth[widthIndex(rows[r].stem, n)]));
    }
}

void SetDecPlcs(GridModel& grid, int tab, const VeskSettings& s) {
    SetDecPlcsConstants(grid);
    const auto rows = decimalRows(tab);
    grid.setRows(1 + static_cast<int>(rows.size()));
    for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
        grid.setTextMatrix(r + 1, 0, text(rows[r].caption));
        grid.setTextMatrix(r + 1, 1, QString::number(s.*rows[r].member));
    }
}

void DoProcess(MenuGrids& grids, const VeskSettings& s) {
    for (int tab = 0; tab < kMenuTabCount; ++tab)
        SetColWth(grids[tab], tab, s);
}

void DoProcess1(MenuGrids& grids, const VeskSettings& s) {
    for (int tab = 0; tab < kMenuTabCount; ++tab)
        SetDecPlcs(grids[tab], tab, s);
}

std::array<qint32, 3> rowWidths(const GridModel& grid, int row) {
    std::array<qint32, 3> widths{};
    for (int n = 0; n < 3; ++n)
        widths[n] = std::max<qint32>(0, stp::toInt32(grid.textMatrix(row, n + 1)));
    return widths;
}

int rowDecimals(const GridModel& grid, int row) {
    const double d = roundHalfEven(Val(grid.textMatrix(row, 1)));
    return static_cast<int>(std::clamp(d, 0.0, double(kMaxDecimals)));
}

void AppndColumnWidths(const MenuGrids& grids, VeskSettings& s) {
    // Every text is read before any width changes, so an overflow leaves the settings as they were.
    std::array<qint32, kColumnWidthCount> widths = s.ColWdth;
    for (int tab = 0; tab < kMenuTabCount; ++tab) {
        const auto rows = widthRows(tab);
        for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
            const std::array<qint32, 3> row = rowWidths(grids[tab], r + 1);
            for (int n = 1; n <= 3; ++n)
                widths[widthIndex(rows[r].stem, n)] = row[n - 1];
        }
    }
    s.ColWdth = widths;
}

void AppndDecimals(const MenuGrids& grids, VeskSettings& s) {
    for (int tab = 0; tab < kMenuTabCount; ++tab) {
        const auto rows = decimalRows(tab);
        for (int r = 0; r < static_cast<int>(rows.size()); ++r)
            s.*rows[r].member = rowDecimals(grids[tab], r + 1);
    }
}

double samplePercent(const QString& text) {
    const double pct = Val(text);
    return text.trimmed().isEmpty() || !(pct > 0) ? 100 : pct;
}

std::array<int, 3> samplePixels(const std::array<qint32, 3>& twips, double percent) {
    std::array<int, 3> pixels{};
    for (int n = 0; n < 3; ++n)
        pixels[n] = static_cast<int>(std::lround(std::min(double(twips[n]) * percent / 100 / kTwipsPerPixel,
                                                          double(std::numeric_limits<int>::max() / 2))));
    return pixels;
}

void fillSample(GridModel& sample, int decimals) {
    setHeads(sample, t::kSampleHeads);
    constexpr int kRows = 2;
    sample.setRows(1 + kRows);
    for (int r = 0; r < kRows; ++r) {
        sample.setTextMatrix(r + 1, 0, text(t::kSampleRows[2 * r]));
        sample.setTextMatrix(r + 1, 1, text(t::kSampleRows[2 * r + 1]));
        sample.setTextMatrix(r + 1, 2, formatFixed(kSampleNumbers[r], decimals));
    }
}

} // namespace vesk
