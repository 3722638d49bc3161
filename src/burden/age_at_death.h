#pragma once
// The mean age at death of each YLL age-sex group of a unit (FnAgeAtDeath) and the array of them for
// a study (AGDARR).
//
// A closed group (start to its exclusive end): the mean of x + f(x) over its single years x, weighted
// by the unit's population at x of the group's sex, f(x) the fraction of the year lived by those
// dying at x (FnAgeFraction, the a(x) table of the life table: by the IMR at age 0, 0.4 at 1, 0.5
// above); years whose weight or fraction is Null are left out, and an empty or 0 sum gives 0.
// An open group of F or M: its start plus the mean years lived beyond it (FnOIAGD, the unit's model
// family, growth rate and, as this program's own choice, the Ratio of the unit's single-year deaths
// of that sex at 45 and over to those at 10 and over). An open "P" group has no mean: Null.

#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>
#include <optional>

namespace vesk {

// A unit's demographic parameters; a unit without a row has none of them.
struct DemographicParameters {
    QString family; // CDMdl
    std::optional<double> pgr, imr;
};

// FnAgeAtDeath for year index y and unit index b: (group, 0..1), slot 0 the label, slot 1 the mean or
// Null. `pop` and `deaths` are the single-year arrays (year, BPU, age, column).
CellArray FnAgeAtDeath(const Cell& labels, const CellArray& pop, const CellArray& deaths, int y, int b,
                       const DemographicParameters& p);

// AGDARR: ArrAGD (years, BPUs, 0, 0, YLL groups, 0..1) from the single-year population; a unit whose
// first row is Empty or Null has Null ages. `parameters(b)` gives the unit's parameters, std::nullopt
// when it has none (the caller says so).
template <class Parameters>
Cell AGDARR(const Cell& labels, const Cell& pop, const Cell& deaths, Parameters&& parameters);

} // namespace vesk

#include "burden/age_at_death_impl.h"
