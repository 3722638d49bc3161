#pragma once
// The population and deaths views without their windows: intervals of age (BAI, EAI; "w" an open end)
// from a ready ladder or typed, their checks, and for each BPU the sum of the single-year population
// (ArrPop4D) or deaths (ArrDth4D) over each interval, for the sexes chosen.
//
//   sex codes  "M" male, "F" female, "P" persons (male + female), "MF" male and female, "ALL" male,
//              female and persons
//   table      head row "BAI", "EAI", then "Persons" or the sex columns ("Male", "Female"); a row an
//              interval

#include "platform/cell.h"

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vesk {

struct AgeInterval {
    QString bai, eai; // as typed; "w" an open end
};

// The ladders of the pop-up: five groups (0-4, 5-14, 15-44, 45-59, 60-w), seven (0-4, 5-14, 15-29,
// 30-44, 45-59, 60-69, 70-w), and five-year groups up to `openAge` from which the interval is open.
std::vector<AgeInterval> fiveAgeGroups();
std::vector<AgeInterval> sevenAgeGroups();
std::vector<AgeInterval> fiveYearGroups(int openAge);

// proccellvalid over all rows: the first fault's message ("The cell should not be left blank", "The BAI
// value should not be morethan EAI value"), "The Age Intervals are not set, Please enter the Age
// Intervals" without rows; std::nullopt when they pass.
std::optional<QString> checkIntervals(const std::vector<AgeInterval>& rows);

struct UnitTable {
    QString unit;
    QStringList heads;
    std::vector<std::vector<QString>> rows; // BAI, EAI as typed, then the sums as shortest texts
    std::vector<std::vector<double>> values; // the sums
};

// For each BPU of the four-dimensional array (year index 0): the sums by interval for `sex`. Empty when
// the array is none (no computation yet).
std::vector<UnitTable> popDeathTables(const Cell& array4D, const Cell& units, const std::vector<AgeInterval>& rows,
                                      const QString& sex);

// A unit's table as an array (rows, heads): every cell its text, as the view shows it; or, for a
// file, the sums as numbers after BAI and EAI as typed.
CellArray unitTableTexts(const UnitTable& t);
CellArray unitTableValues(const UnitTable& t);

} // namespace vesk
