#pragma once
// A chart as the painter draws it: the fields of its Gph.stp line read into typed properties, beside the
// data of its family. No drawing here: the chart window turns a ChartLook into bars.
//
// Words decide booleans ("True", any case; anything else false); numbers are read by the lenient
// leading-number parse; colours are "R,G,B" with ";" between series (a series past the list takes none,
// and the drawing surface its own). A scale maximum of 0 is automatic. The series and the category are
// the family's: "YLD Rate" and "YLL Rate" (1), one series an age group (2), "YLD MFR" and "YLL MFR" (3),
// the groups of causes stacked (4, 5), the units as the category ("Region").

#include "results/chart_data.h"
#include "results/graph_props.h"

#include <QString>
#include <array>
#include <optional>
#include <vector>

namespace vesk {

struct ChartFont {
    QString name;
    double size = 0;
    bool italic = false;
};

enum class ChartPlace { Top, Bottom, Left, Right };

struct ChartLook {
    bool threeD = false;
    bool stacked = false;
    bool legend = true;
    ChartPlace legendPlace = ChartPlace::Right;
    QString title, axisYTitle, axisXTitle, footnote;
    ChartFont titleFont, axisYFont, axisXFont, footnoteFont;
    double scaleMin = 0, scaleMax = 0; // scaleMax 0: automatic
    int majorDivisions = 0;
    double barGap = 0;                     // per cent of a bar
    std::vector<std::array<int, 3>> colours; // one a series, where given
    int fill = 1;                          // 0 none, 1 solid, 2 pattern, 3 hatched
    bool ticksX = true, ticksY = true;
    bool narrower = false;
};

// The look of a chart line for a family's table; the chart window puts the family's title into the line
// when it reads the file, so the line's title is drawn, and the family's where the line has none.
ChartLook chartLook(const GraphLine& line, const ChartTable& table);

// What the read of the chart list does before the first chart is drawn: the title of each family's line
// becomes the family's stem and level word.
void applyFamilyTitles(GraphProps& props, const ChartData& data);

// The legend position codes 0-8 as a place on the chart's side.
ChartPlace placeOf(int code);

// frmChgPrpty's check of a field typed for `field` (a graph_field index); the message when refused.
std::optional<QString> checkChartField(int field, const QString& value);

} // namespace vesk
