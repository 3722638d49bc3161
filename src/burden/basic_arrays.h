#pragma once
// The basic arrays of population and deaths, (year, BPU, row, column) with the columns of
// burden/computation_arrays.h (kAgeBai, kAgeWidth, kAgeFemale, kAgeMale, kAgeBoth), mapped to the
// age-sex groups of a classification.

#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>

namespace vesk {

// FnMapBasicToAsg: (year, BPU, group, 0..1), slot 0 the label and slot 1 the sum of the rows inside
// the group by its sex ("F" female, "M" male, "P" both): a row is inside when start <= BAI and BAI <
// end, or, for an open group ("W"), start <= BAI. Rows whose BAI is Null are left out; rows are
// neither split nor prorated, so a boundary inside a basic interval gives the interval to the group
// it starts in (the single-year form makes this exact). The labels are sorted as text first. A group
// no row falls in keeps slot 1 Empty.
Cell FnMapBasicToAsg(const Cell& labels, const Cell& basic);

// The column of a label's sex in a basic or single-year array: "F" female, "M" male, any other both.
int ageColumnOfSex(const QString& label);

} // namespace vesk
