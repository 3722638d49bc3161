#pragma once
// Sprague's osculatory subdivision of five-year groups into single years of age, and even spreading,
// its plain companion.
//
// Source: Sprague's fifth-difference multipliers for subdividing into fifths, Shryock H.S. & Siegel
// J.S., The Methods and Materials of Demography, condensed edition by E.G. Stockwell, Academic Press
// 1976, Appendix C, Table C-5, Panel B. The five 5 x 5 panels are data of the settings file
// ([PANEL 0] to [PANEL 4] under [PANELS]), read anew at every call so that a change of the file
// takes effect at once; a row of a panel is the year within the group being split (lowest first), a
// column the group it multiplies.
//
// With U closed groups G(0..U-1) and the open group G(U), N = 5·U single years; block g = y / 5,
// year j = y mod 5:
//   y 0..4        [PANEL 0]: sum over k = 0..4 of G(k)·P(j, k)
//   y 5..9        [PANEL 1]: sum over k = 0..4 of G(k)·P(j, k)
//   y 10..N-11    [PANEL 2]: sum over k = 0..4 of G(g - 2 + k)·P(j, k)
//   y N-10..N-6   [PANEL 4]: sum over k = 1..4 of G(U - 5 + k)·P(j, k)
//   y N-5..N-1    [PANEL 3]: sum over k = 1..4 of G(U - 5 + k)·P(j, k)
// (the last two blocks take four terms: column 0 of their panels and group U-5 do not enter; in the
// published panels that column is 0). Sums are taken in the order of the panel's columns.
//
// Domain and edges: fewer than five closed groups (U < 5) are not interpolated. A sum below 0 stops
// the run at once: a series that moves sharply between neighbouring groups makes the multipliers
// overshoot, and that is the program's sign that Sprague's method does not suit it (the threshold
// is 0, no other statistic). A 0 passes. With KeepOpen 1 the open group is kept as the last cell.

#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>
#include <array>
#include <optional>

namespace vesk {

using SpraguePanel = std::array<std::array<double, 5>, 5>; // [year in group][group]
struct SpraguePanels {
    std::array<SpraguePanel, 5> panel; // [PANEL 0] .. [PANEL 4]
};

// ProcLoadPanels: the five blocks of the settings file at `file` (the program's own when empty);
// std::nullopt when one is missing or is not five rows of five numbers.
std::optional<SpraguePanels> ProcLoadPanels(const QString& file = QString());

// FnSprague: the integer 0 when U < 5 (`single` untouched), the integer 1 when a value came out
// negative (`single` holds the values before it), else the array `single` (0 to N-1, to N with
// KeepOpen 1). Where the settings file lacks the panels: "Some Values are missing in the STP
// file,Interpolator coefficients are not loaded.You can use the copy of VESK.STP  ", the program
// ends (endTheProgram) and the result is Empty; a run-time fault: "Error from Sprague Interpolator "
// and its words, and Empty. `groups` is one-dimensional, from index 0; cells are numbers or texts of
// numbers.
Cell FnSprague(const CellArray& groups, qint16 keepOpen, CellArray& single);
Cell FnSprague(const CellArray& groups, qint16 keepOpen, CellArray& single, const SpraguePanels& panels);

// FnSpreadUniform: each group's value spread evenly over its years, AgeBreaks(i) to
// AgeBreaks(i+1) - 1; with KeepOpen 1 the last cell (at the last break) takes the open group's
// value. The integer 0 when `values` is not an array or its length differs from that of `ageBreaks`.
Cell FnSpreadUniform(const Cell& values, qint16 keepOpen, const CellArray& ageBreaks);

} // namespace vesk
