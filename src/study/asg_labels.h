#pragma once
// Age-sex group labels. An age-sex group (ASG) is known everywhere by a text: a sex letter and an
// age range, with no blanks.
//
//   M10-14, F45-59   closed interval, both ends inclusive
//   M0, F0           the single year of age 0, when the next boundary is 1
//   M60-w, F85-w     open interval to the end of life
//
// Letters: M male, F female, P persons, U the unisex labels of the disability-weight sheet. A lower
// age strictly between 0 and 10 of a closed interval is written with a leading zero (M01-4, F05-14);
// 0 is not padded, nor the last age, nor the lower age of an open interval. The padding makes a
// plain text sort put the groups of one sex in age order, all female labels before the male ones:
// F0, F01-4, F05-9, F10-14, ... F60-w, M0, ... Labels are compared as text.
//
// The ends are read back with FnAsgStart (the lower age) and FnAsgEnd (the EXCLUSIVE upper end: the
// lower age of the next group of the same sex, or the text "W" for an open group). The age-sex map
// relies on that exclusive end.

#include "platform/cell_array.h"

#include <QString>

namespace vesk {

class StudyContext;

// The three age definitions of a study, as the columns of ArrAgeDfn and the modes of ASGDfn.
inline constexpr int kAsgYll = 0;
inline constexpr int kAsgYld = 1;
inline constexpr int kAsgPnd = 2;

// The labels of column `column` of an age-boundary array (rows, columns): for each numeric entry, in
// row order, an M and an F label; the last entry opens the interval to the end of life. The ages are
// taken as typed, with no test that they ascend. Sorted as text. An empty column gives a rank-0 array.
// Throws RuntimeError 9 ("Subscript out of range") for a column outside the array.
CellArray FnAsgLabels(const CellArray& boundaries, int column);
// The same with the letter P and one label per entry.
CellArray FnAsgLabelsP(const CellArray& boundaries, int column);
// The labels of one list of lower ages, for the letters given, in the order built (not sorted).
QStringList asgLabelsFor(const QList<double>& ages, const QStringList& letters);

// The lower age: the number between the first character and the first "-", or, with no "-", the
// number made of everything after the first character; read by the lenient leading-number parse, so
// M0 gives 0 and M05-9 gives 5.
double FnAsgStart(const QString& label);
// The exclusive end: with no "-", FnAsgStart + 1 (M0 gives 1); behind the "-", a number gives that
// number + 1 (M0-4 gives 5), a remainder beginning with w or W gives the text "W", anything else
// (M60-) gives Empty.
Cell FnAsgEnd(const QString& label);
// "W" for an open group, otherwise the integer FnAsgEnd - FnAsgStart + 1: 6 for M0-4, 2 for M0, one
// more than the single years in the group. Callers allow for the extra one.
Cell FnAsgWidth(const QString& label);

// ASGDfn(boundaries, mode, result, labels): the labels of a study's age definitions.
//   mode 0, 1, 2  FnAsgLabels on column `mode` (0 YLL, 1 YLD, 2 PND): sorted M and F labels;
//   mode 3, 4, 5  parse `labels`: result (i, 0) the label, (i, 1) FnAsgStart, (i, 2) FnAsgEnd less
//                 the lower age plus 1, or 999 for an open group; the rows keep the bounds of labels;
//   mode 7, 8, 9  FnAsgLabelsP on column mode - 7: sorted P labels;
//   mode 6, a negative mode or one above 9: nothing; result untouched.
// Returns false after an error, which is shown as "Error from ASGDfn :  " and its description; the
// result is then as far as it came.
bool ASGDfn(const CellArray& boundaries, int mode, CellArray& result, const CellArray* labels = nullptr);

// The three label vectors rebuilt at every load of ArrAgeDfn: VctrYLLAsg = ASGDfn mode 0,
// VctrYLDAsg = ASGDfn mode 1 (both sexes, sorted), VctrPNDAge = column 2 as it stands, one entry per
// row (plain lower ages, blanks included). False when ASGDfn failed (it has shown why).
bool buildAgeGroupVectors(const CellArray& arrAgeDfn, CellArray& VctrYLLAsg, CellArray& VctrYLDAsg,
                          CellArray& VctrPNDAge);
// The same into the context, from its ArrAgeDfn, after each load of the age definitions; when
// ASGDfn fails the former vectors stay.
bool buildAgeGroupLabels(StudyContext& context);

} // namespace vesk
