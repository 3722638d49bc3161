#pragma once
// The kernel loops of a computation: the epidemiological inputs and the deaths of a study, through
// the burden kernel (burden/kernel.h), to years lived with disability, years of life lost and their
// sum on a common age-sex classification. Every array is six-dimensional in the order of
// burden/computation_arrays.h; a cause with sequelae keeps its nested (sequela, group, slot) array in
// (y, b, d, c, 0, 0), and its cause-level cells the sum over the sequelae.
//
// The rules of Null and 0, on purpose:
//   - YLD: a group whose inputs for one measure are not all there (Empty or Null) gets 0 for that
//     measure. With sequelae, the first sequela's missing measure is Null in the nested array and
//     the cause takes it as it is; every further sequela's missing measure is 0 and adds to the
//     cause's value (a Null cause value counting as 0). So a cause whose one sequela has no data
//     shows Null, and shows a number as soon as it has two.
//   - YLL: deaths x the YLL of one death; a Null on either side gives Null. A Null age at death
//     gives a Null YLL of one death in every cause.
//   - DALY: on the shorter of the YLD and YLL classifications (the YLD one when they are as long),
//     each group of the longer added into the group of the shorter that holds it: a value added to a
//     value, a value replacing a Null, a Null leaving the other as it is. IDALY = YLL + IYLD and
//     PDALY = YLL + PYLD. When the classifications cannot be matched the result is Empty, and YLD
//     and YLL stay as they are.
// A run-time failure inside a cell goes to the error store under the loop's name, the cell stays
// unset, and the loop goes on.

#include "platform/cell.h"
#include "platform/cell_array.h"

namespace vesk {

// BldYLDArray, mode "B": IYLD and PYLD of every year, unit, parameter set, cause and YLD group.
Cell BldYLDArray(const Cell& ArrADWIP, const Cell& MtxDAP);
// BldYLLPerDeath: the YLL of one death of each YLL group, for each parameter set, from its age at
// death and the standard life table's expectancy there (FnLifeExpAt, the sex from the label).
Cell BldYLLPerDeath(const Cell& ArrAGD, const Cell& MtxDAP, const CellArray& MtxLTS);
// BldYLLArray: deaths by cause x the YLL of one death.
Cell BldYLLArray(const Cell& ArrDBC, const Cell& ArrYLLPerDeath);
// BldDALYArray: YLL + YLD on the shorter classification; Empty when they cannot be matched.
Cell BldDALYArray(const Cell& ArrYld, const Cell& ArrYll, const Cell& VctrYLDAsg, const Cell& VctrYLLAsg);

// FnAsgVctr: the labels of a six-dimensional result, (0, 0, 0, 0, m, 1) for each group m; Empty after
// "Invalid input. Not enough dimensions or not an array." for anything else.
Cell FnAsgVctr(const Cell& result);

} // namespace vesk
