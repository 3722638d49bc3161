#pragma once
// The general array helpers that the whole program shares: the comparison of two dynamic values,
// the exchange sort, the removal of one entry and the dropping of blank entries.
//
// Comparison follows the runtime's rules for two dynamic values:
//   - two numbers compare as numbers, two texts as texts (binary, case-sensitive);
//   - a number is less than any text, so the text "W" (an open upper age) is greater than any age;
//   - Empty counts as 0 against a number and as "" against a text; two Empty values are equal;
//   - Null makes the comparison unknown, which no test takes as true;
//   - an array cannot be compared: 13 "Type mismatch".

#include "foundation/runtime_error.h"
#include "platform/cell_array.h"

#include <QString>
#include <optional>

namespace vesk {

// -1, 0 or 1 as a is less than, equal to or greater than b; std::nullopt when Null takes part.
// Throws RuntimeError 13 for an array.
std::optional<int> CompareCells(const Cell& a, const Cell& b);
// The tests as an If statement takes them: false whenever the comparison is unknown.
bool cellEquals(const Cell& a, const Cell& b);
bool cellLess(const Cell& a, const Cell& b);
bool cellGreater(const Cell& a, const Cell& b);

// True for a number, and for a text that is a whole number as written ("5", " 12 ", "2.5", "1E2").
bool isNumericCell(const Cell& value);
// Empty, Null, or a text of blanks only.
bool isBlankCell(const Cell& value);

// The exchange sort: for every position, each later position is compared with it and the two are
// swapped when out of order. `column` -1 sorts a one-dimensional array; a column number sorts the
// rows of a two-dimensional array by that column, swapping whole rows. `order` non-zero is
// ascending, zero descending. Sorts in place and keeps the bounds.
void FnSortArr(CellArray& array, int column, int order);

// A copy without entry (or row) `index`, 0-based in the result. When nothing remains the result is
// a CellArray of rank 0, which counts as no array. `dimensions` is 1 or 2. Throws RuntimeError 9 for an
// index outside the bounds.
CellArray FnArrDelRow(const CellArray& array, int index, int dimensions);

// A 0-based copy without blank entries (dimensions 1) or without rows blank in every column
// (dimensions 2). Returns the array in a cell, or the text "" when nothing remains or when `array`
// holds no array.
Cell FnCompactArr(const Cell& array, int dimensions);

// True when the cell holds an array with at least one dimension.
bool isArrayCell(const Cell& value);

} // namespace vesk
