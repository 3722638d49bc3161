#pragma once
// The grids of the widths (SSTabColWth, FlexColumnWdth on each tab) and of the decimals
// (SSTabDecPlcs, FlexDecPlcs on each tab) of the preferences form, and its sample grid
// (FlxTstGrdEft), without their views.
//
// Each family has six tabs in the order of the menu (File, Study, View, Compute, Results, Tools).
// A row names a grid of the program by its menu and item; a width row holds the three widths of
// that grid in twips ("Row Heading 1", "Row Heading 2", "Other Columns", the keys stem1 to stem3 of
// [COLUMN WIDTH]), a decimal row the decimal places of one setting. The File, Compute and Tools tabs
// of the widths hold no rows, nor do the File, Study and Compute tabs of the decimals.
//
// The sample grid shows two rows of a result grid at the widths of the row being edited, scaled by
// the sample percent, with a number at the decimals being edited.

#include "foundation/settings.h"
#include "platform/grid_model.h"

#include <array>
#include <span>

namespace vesk {

inline constexpr int kMenuTabCount = 6;
enum MenuTab { kFileTab, kStudyTab, kViewTab, kComputeTab, kResultsTab, kToolsTab };

struct WidthRow {
    const char* caption;
    const char* stem; // "VWC": the keys VWC1, VWC2, VWC3
};
struct DecimalRow {
    const char* caption;
    int VeskSettings::*member;
};

std::span<const WidthRow> widthRows(int tab);
std::span<const DecimalRow> decimalRows(int tab);

// One grid for each tab.
using MenuGrids = std::array<GridModel, kMenuTabCount>;

// The headings: "Menu and Item" and the three column kinds; "Menu and Item", "Decimal Places".
void SetColWthConstants(GridModel& grid);
void SetDecPlcsConstants(GridModel& grid);
// The rows of one tab from the settings (what SetColWthFile ... SetColWthTools do for theirs).
void SetColWth(GridModel& grid, int tab, const VeskSettings& s = settings());
void SetDecPlcs(GridModel& grid, int tab, const VeskSettings& s = settings());
// All six tabs.
void DoProcess(MenuGrids& grids, const VeskSettings& s = settings());
void DoProcess1(MenuGrids& grids, const VeskSettings& s = settings());
// The grids back into the settings. A width is a whole number of twips (a text read by the lenient
// parse, half to even; below 0 it is 0, which the settings file's writer turns into the default);
// one beyond 32 bits throws the runtime's Overflow. Decimal places are 0 to kMaxDecimals.
void AppndColumnWidths(const MenuGrids& grids, VeskSettings& s = settings());
void AppndDecimals(const MenuGrids& grids, VeskSettings& s = settings());
inline constexpr int kMaxDecimals = 15; // a double holds no more

// The widths of a width row, and the decimals of a decimal row, as their texts read now.
std::array<qint32, 3> rowWidths(const GridModel& grid, int row);
int rowDecimals(const GridModel& grid, int row);

// The sample percent of txtSampPct: 100 when it is empty or not above 0.
double samplePercent(const QString& text);
// The sample's three column widths in pixels: twips at 15 a pixel, scaled by the percent.
std::array<int, 3> samplePixels(const std::array<qint32, 3>& twips, double percent);
// The sample grid: its headings, two rows, the numbers at `decimals`.
void fillSample(GridModel& sample, int decimals);

} // namespace vesk
