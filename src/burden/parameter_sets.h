#pragma once
// The built-in sets of social-value parameters (discount rate r, age-weight modulation K, age-weight
// constants Beta and C) offered by the parameter grids of the computation dialog and the calculators.
// Values are the grid's texts; an empty text stands empty on the screen too (with K = 0 neither Beta
// nor C is used, and an empty Beta passes the kernel's checks). Set 1 is the standard of the Global
// Burden of Disease study: 3% discounting and full age weights, Beta = 0.04, C = 0.1658 (Murray CJL,
// Bull WHO 1994;72(3):429-445).
//
// A parameter set in the computation arrays is one row of the computation's MtxDAP
// (burden/computation.h): the DAP id, then r, K, Beta, C at the column indices 1, 2, 3, 4.

#include <array>

namespace vesk {

struct BuiltInParameterSet {
    const char* id;                // row text of the computation grid
    const char* yllCalculatorRow;  // row text of the YLL calculator's grid
    const char* dalyCalculatorRow; // row text of the DALY calculator's grid
    const char* r;
    const char* K;
    const char* Beta;
    const char* C;
};

inline constexpr std::array<BuiltInParameterSet, 4> kBuiltInParameterSets{{
    {"0", "Built In 0", "Built In-0", "0", "0", "", ""},
    {"1", "Built In 1", "Built In-1", "0.03", "1", "0.04", "0.1658"},
    {"2", "Built In 2", "Built In-2", "0", "1", "0.04", "0.1658"},
    {"3", "Built In 3", "Built In-3", "0.03", "0", "", ""},
}};

// The row the user fills in the calculators' grids (row 5, after the four built-in sets).
inline constexpr const char* kCustomParameterRow = "Custom";

// Columns of the parameter grids, from the left; "Select" holds "False" until the row is marked.
inline constexpr std::array<const char*, 6> kParameterGridColumns{"DAP Id", "r", "K", "Beta", "C", "Select"};
inline constexpr const char* kParameterSelected = "True";
inline constexpr const char* kParameterNotSelected = "False";

// Column indices of the DAP id, r, K, Beta and C in a row of MtxDAP.
inline constexpr int kDapId = 0;
inline constexpr int kDapR = 1;
inline constexpr int kDapK = 2;
inline constexpr int kDapBeta = 3;
inline constexpr int kDapC = 4;

} // namespace vesk
