#pragma once
// The reshaping of a computation's results (year, unit, DAP, cause, age-sex group, slot): causes rolled
// up the cause dictionary, BPUs rolled up to their population aggregates, and the shares and the sex
// ratio that the result views and charts show. The cause level of a cause with sequelae already holds
// the sum of its sequelae, so no roll-up adds sequelae. Counts and shares only: no rate per population
// is formed here.
//
// Shares: 100 x value / total, as the text "0.000" ("0.00" by age); a total of 0 gives the number 0.
// The total is that of the unit and DAP in question over the categories shown.

#include "burden/cause_levels.h"
#include "platform/cell.h"

#include <vector>

namespace vesk {

// The members of one population aggregate: indices into the BPU dimension of a result.
using PagMembers = std::vector<int>;

// FnBPUToPag: the result with its BPU dimension running over the aggregates, each the sum of its
// members. For each year, aggregate, member, DAP, cause, group and slot:
//   - the nested sequela array at (group 0, slot 0): added cell by cell into the aggregate's nested
//     array, a Null skipped and the first non-Null cell copied; the codes and labels in it (its slots
//     0 and 1) are taken from the first member that has them, as the aggregate's labels are;
//   - slot 1, the label: from the first member that has one;
//   - every other cell: a Null (or a never assigned Empty) skipped, the first value copied, later
//     ones added.
// Empty when `source` is no six-dimensional array, or a member index lies outside its BPUs. A sum
// that fails (a text that is no number, an overflow) goes to the error store and the loop goes on.
Cell FnBPUToPag(const Cell& source, const std::vector<PagMembers>& pags);

// FnGrpBDNPnl: (entries of the dictionary, units, 0..1), slot 0 the entry's code, slot 1 the sum over
// the causes at that entry (FnCodeAtLevel of MtxCobCd's codes) and every group of cell (year, unit,
// dap, cause, group, slot), a Null skipped and a text summed by its leading number; slot 1 stays Empty
// where nothing was added. A failure shows "Error from FnGrpBDNPnl procedure : " with its number and
// words and gives Empty. FnGrpBDNPnlpag1 is the same over a result of aggregates (FnBPUToPag), with
// its own message.
Cell FnGrpBDNPnl(const Cell& result, const CauseLevelDictionary& dict, const Cell& mtxCobCd, CauseLevel level, int slot,
                 int dap, int year = 0);
Cell FnGrpBDNPnlpag1(const Cell& result, const CauseLevelDictionary& dict, const Cell& mtxCobCd, CauseLevel level,
                     int slot, int dap, int year = 0);

// FnPctOverCauses: a rolled-up array (entries, units, 0..1) with a slot 2, the entry's share of the
// unit's total over the entries, "0.000".
Cell FnPctOverCauses(const Cell& rolled);

// FnSexRatioByUnit: (years, units, DAPs, 0..3): slot 0 the unit's id from `unitIds` (VctrBPULst or the
// aggregates' ids), slot 1 the sum of the slot over the causes and the groups whose label (slot 1)
// begins with "M", slot 2 the same for "F", slot 3 slot 1 / slot 2 as "0.000", or 0 where either sum
// is 0. A Null adds 0.
Cell FnSexRatioByUnit(const Cell& result, const Cell& unitIds, int slot);

// FnPctByAge: (years, units, DAPs, groups, 0..2): slot 0 the group's label, slot 1 the sum of the slot
// over the causes, slot 2 its share of the unit's total over the groups, "0.00". A Null adds 0.
Cell FnPctByAge(const Cell& result, int slot);

} // namespace vesk
