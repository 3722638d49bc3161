#pragma once
// The map between two age-sex group sets, and the rules that keep a study's three sets together.
//
// A study's YLL set and YLD set are feasible together when the narrower maps onto the wider: each
// group of the set with fewer labels is exactly the union of consecutive groups of the set with more
// labels, or, when both have equally many labels, the groups coincide ("many to one or one to many").
// The map carries results between the two sets. The PND set takes no part in this test; it is held
// to the others by the row rule of the entry grids only.
//
// Both map functions return a record of four cells:
//   0  -1 (true) when feasible, 0 when not
//   1  0 when the first argument is the shorter list S, 1 when the second is
//   2  the other of 0 and 1
//   3  the map, (n, 0..2): one row per label of the longer list L, at that label's index in L:
//      (i, 0) the label of L, (i, 1) the label of S whose group it lies in, (i, 2) that label's
//      index in S
// On false, cells 1 to 3 stay Empty. Indices are those of the lists as passed, before sorting.

#include "platform/cell_array.h"

namespace vesk {

inline constexpr int kAsgMapFeasible = 0;
inline constexpr int kAsgMapFirstSide = 1;
inline constexpr int kAsgMapSecondSide = 2;
inline constexpr int kAsgMapRows = 3;

// For lists of equal upper bound: every label of `first` must find a label of `second` with the same
// lower age and the same exclusive end (the first such partner, scanning the sorted list from the
// top; no letter is compared). Cell 1 is 0 and cell 2 is 1: `first` plays S.
CellArray FnAsgMapEq(const Cell& first, const Cell& second);

// For lists of different upper bound. The groups of the shorter list S are built up, in sorted
// order, from pieces of the longer list L: a piece with the right lower age that ends where the group
// ends completes it, one that ends earlier is a piece and moves the needed lower age on, one that
// ends later is passed over. Upper ends compare as dynamic values, so the text "W" of an open group
// is greater than any age and an open group swallows closed pieces up to an open one.
// Duplicates are refused first: neighbours of sorted S with the same lower age, or the same end, and
// the same first letter (case-blind); neighbours of sorted L with the same lower age or end, whatever
// their letters.
// A group of S that meets no piece at all right after a completed group is passed over, and passing
// the end of S that way ends the run as feasible (the map then holds the rows found so far). A group
// that meets no piece before any group was completed is not feasible.
CellArray FnAsgMapUneq(const Cell& first, const Cell& second);

// The caller's choice by sizes: equal upper bounds go to FnAsgMapEq, others to FnAsgMapUneq.
CellArray FnAsgMap(const Cell& first, const Cell& second);

// Cell 0 of a map record as a bool.
bool asgMapFeasible(const CellArray& record);

// The feasibility rule of a study's sets: FnAsgMap(VctrYLDAsg, VctrYLLAsg). When it fails, shows
// "The Age Groups Entered are not Feesable for maping, Please enter again" titled
// "Feesability Check" and returns false.
bool FnChkAsgFeasible(const Cell& yldLabels, const Cell& yllLabels);

// The row rule of the entry grids: figures in one row of the three sets must be equal, YLL against
// YLD and PND where YLL is filled, YLD against PND where YLL is blank. Blank cells always pass.
bool FnAsgRowRuleHolds(const Cell& yll, const Cell& yld, const Cell& pnd);
// The same, showing the rule's message on a breach. The grid then blanks the row's three cells and
// puts the cursor back in its first column.
bool FnChkAsgRowRule(const Cell& yll, const Cell& yld, const Cell& pnd);

} // namespace vesk
