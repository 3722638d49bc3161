#pragma once
// Gph.stp: the list of charts and their look, one line a chart from the line "[DisplayGraph]" on, each
// property between "{" and "}", read into GraphProps (line by field, 39 fields). The program only
// reads the file; the properties form changes the table in memory for as long as the chart form is
// open. The fields stand in the order of their index (docs: data/README.md):
//
//   0 name  1 type ("3D Bar", "2D Bar")  2 title  3 show legend  4 stacking  5 legend position
//   6 axis Y title  7 scale maximum (0 automatic)  8 column colours ("R,G,B;" a column)
//   9 axis Y title orientation  10 title font size  11 series in rows  12 bar gap  13 axis Y font
//   14 axis Y font size  15 scale minimum  16 major divisions  17 axis X font size  18 an on-off option
//   19 title font  20 title location  21 title font style  22 axis Y font style  23 chart frame style
//   24 plot frame style  25 title orientation  26 footnote  27 footnote font  28 footnote font size
//   29 footnote font style  30 footnote orientation  31 narrower chart  32 footnote location
//   33 axis X tick style  34 axis Y tick style  35 axis X font  36 axis X font style  37 axis X title
//   38 fill style of the data points
//
// The reader is bounded: a file over 1 MB, or over 1,000 chart lines, is refused as damaged; a line's
// fields past the 39th are ignored and missing ones stay empty.

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vesk {

inline constexpr int kGraphFields = 39;

namespace graph_field {
inline constexpr int Name = 0, Type = 1, Title = 2, ShowLegend = 3, Stacking = 4, LegendPosition = 5, AxisYTitle = 6,
                     ScaleMax = 7, Colours = 8, AxisYOrientation = 9, TitleFontSize = 10, SeriesInRows = 11,
                     BarGap = 12, AxisYFont = 13, AxisYFontSize = 14, ScaleMin = 15, MajorDivisions = 16,
                     AxisXFontSize = 17, OnOff = 18, TitleFont = 19, TitleLocation = 20, TitleFontStyle = 21,
                     AxisYFontStyle = 22, ChartFrame = 23, PlotFrame = 24, TitleOrientation = 25, Footnote = 26,
                     FootnoteFont = 27, FootnoteFontSize = 28, FootnoteFontStyle = 29, FootnoteOrientation = 30,
                     Narrower = 31, FootnoteLocation = 32, AxisXTicks = 33, AxisYTicks = 34, AxisXFont = 35,
                     AxisXFontStyle = 36, AxisXTitle = 37, FillStyle = 38;
} // namespace graph_field

using GraphLine = QStringList; // kGraphFields fields
using GraphProps = std::vector<GraphLine>;

// The chart lines of the file at `path`; std::nullopt with `error` when it is missing ("Gph.stp is not
// existing, Graphs cannot be displayed") or damaged.
std::optional<GraphProps> readGraphProps(const QString& path, QString* error);

// A line as the file holds it: each field between braces, in index order.
QString graphLineText(const GraphLine& line);

// The program's Gph.stp: beside the program.
QString graphPropsPath();

} // namespace vesk
