#pragma once
// The population and death-rate sheets of the Inputs window (tab "&Demographics"): one row per age
// interval of the study's PND set, keyed by its lower age (BAI), the interval's size being the step
// to the next lower age and the last interval open ("w"). Columns "Age-x", "Size", "Male",
// "Female", "Persons"; persons is computed, never typed: the sum of the sexes for a population, and
// for death rates the mean of the two rates weighted by the population of the same unit, year and
// age,
//
//   P = (F * popF + M * popM) / (popF + popM),
//
// blank where the unit has no population of that age.
//
// The figures as typed are scaled on their way to the table: a population cell is multiplied by
// the multiplier (a population keyed in thousands), a rate divided by the denominator (a rate per
// 1,000). A sheet loaded from the table shows the stored figures through the same field in the
// reverse sense, so that Confirm of an unchanged sheet stores the same numbers. Figures are shown as
// the shortest text that reads back to the same double, so that nothing stored is rounded away by
// showing it and confirming it again.

#include "platform/grid_model.h"

#include <QList>
#include <QString>
#include <optional>

namespace vesk {

enum class DemographyKind { Population, DeathRates };

namespace demography_col {
inline constexpr int kAge = 0;
inline constexpr int kSize = 1;
inline constexpr int kMale = 2;
inline constexpr int kFemale = 3;
inline constexpr int kPersons = 4;
} // namespace demography_col

// The size of the last interval when it is switched to a closed one.
inline constexpr double kClosedLastInterval = 5.0;

// One heading row, one row per lower age (ascending, as the study defines them), blank figures; the
// last row open. An empty list leaves the heading alone.
void layoutDemographyGrid(GridModel& grid, const QList<double>& lowerAges);

// The lower ages of the rows, in row order.
QList<double> demographyAges(const GridModel& grid);

// What a double click on the last row did.
enum class LastRowSwitch {
    Closed,     // the open last row became a closed one of 5 years, with a new open row under it
    Opened,     // the row added by an earlier switch was taken away; the row above is open again
    NeedsValues // the last row's figures are not all there: nothing changed
};
// The double click on the last row. `added` tells whether the last row is one that a switch added
// (the form keeps it, as the old form kept the state of its grid); it is updated.
LastRowSwitch switchLastRow(GridModel& grid, bool& added);

// The multiplier or denominator as typed: digits only, a value below 1 (or none) taken as 1.
double scaleFactor(const QString& typed);

// A figure typed into a cell: the lenient number of its trimmed text, or nothing for a blank one.
std::optional<double> cellFigure(const QString& text);

// A typed figure as it is stored: a population times the multiplier, a rate divided by the
// denominator; nothing for a blank cell. A scale that is a power of ten moves the decimal point of
// the text as typed, so that "1.1" thousand is 1100 exactly and "1.25" per 1,000 is the double
// nearest 0.00125; any other scale is one operation in double.
std::optional<double> storedFigure(const QString& typed, DemographyKind kind, double scale);
// The text a stored figure shows through the scale, in the reverse sense: the text that
// storedFigure turns back into the very same double (the shortest such, the point moved where the
// scale is a power of ten).
QString shownFigure(double stored, DemographyKind kind, double scale);

// Persons of every row: the sum, or the population-weighted rate where `population` (rows of
// lower age, male, female, as stored) has the row's age; otherwise blank. Figures as shown.
struct AgePopulation {
    double bai = 0;
    double male = 0;
    double female = 0;
};
void fillPersons(GridModel& grid, DemographyKind kind, const QList<AgePopulation>& population = {});

// The persons rate of one age from the two rates and the population, or nothing without people.
std::optional<double> personsRate(double maleRate, double femaleRate, double popMale, double popFemale);

} // namespace vesk
