#pragma once
// The population pyramid without its window: the table (age, males, females) of a study unit or typed
// by the user, and the geometry the window paints: the unit of the axis and its words, the scaled values,
// the age steps with their labels (the last with "+"), the ticks on both sides of the centre, and each
// bar's length in pixels.
//
//   FnGetMax          the largest value of the male and female columns
//   FnGetUnits        the maximum divided by 10, rounded to the nearest integer, until it is at most 10;
//                     the unit is 10 to the number of divisions (a maximum of at most 10: 1)
//   FnGetResizeFactor the smallest power of ten (from 1) that brings the largest value to at most 100;
//                     FnResizeArrPopPrymd divides a working copy by it
//   FnGetUnitsInWords the word of the axis title "Population in ..." (100 "Tens" .. 10^9 "Hundred
//                     Millions"; empty for a unit of 1 or 10)

#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace vesk {

struct PyramidRow {
    double age = 0, males = 0, females = 0;
};
using PyramidTable = std::vector<PyramidRow>;

double FnGetMax(const PyramidTable& table);
double FnGetUnits(double maximum);
double FnGetResizeFactor(double maximum);
PyramidTable FnResizeArrPopPrymd(const PyramidTable& table, double factor);
QString FnGetUnitsInWords(double unit);

// ArrPopPrymd of unit `unit` of a four-dimensional population array (year index 0): age from column 0,
// males from column 3, females from column 2; rows whose age is no number are left out.
PyramidTable pyramidOfUnit(const Cell& arrPop4D, int unit);

// The table as the clipboard takes it: tabs between columns, a line break after each row.
QString ArrPopPrymdatToClip(const PyramidTable& table);

struct PyramidBar {
    QString label;        // the age; the last with "+"
    double top = 0;       // y of the step's top, pixels from the top of the drawing
    double height = 0;    // the step's height
    double maleLength = 0, femaleLength = 0; // pixels from the centre
};

struct PyramidTick {
    double offset = 0; // pixels from the centre, on both sides
    QString label;     // the scaled value
};

struct PyramidGeometry {
    double unit = 1, factor = 1;
    QString axisTitle; // "Population in " and the word
    double centre = 0, halfWidth = 0;
    std::vector<PyramidBar> bars; // youngest at the bottom
    std::vector<PyramidTick> ticks;
};

// The geometry of `table` on a drawing of `width` by `height` pixels, with `tickCount` ticks a side:
// step height = height / (rows + 1) as an integer; a tick = the scaled maximum / tickCount as an
// integer, rounded up (and at least 1) so that the longest bar stays inside the axis; a bar's length =
// its scaled value / (tick x tickCount) of the half width.
PyramidGeometry pyramidGeometry(const PyramidTable& table, double width, double height, int tickCount = 5);

} // namespace vesk
