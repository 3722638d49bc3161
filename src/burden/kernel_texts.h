#pragma once
// The burden kernel's own words: the messages of its parameter checks and the names it reports
// under. Kept to the letter; several checks speak of another parameter than the one they test,
// and that is how the messages read.

#include "platform/texts.h"

namespace vesk::kernel_texts {

// Sources, as they appear in the error store's third column.
inline constexpr const char* kSourceIYLD = "FnlYLD";
inline constexpr const char* kSourcePYLD = "FnPYLD";
inline constexpr const char* kSourceYLL = "FnYLLF";

// Check messages.
inline constexpr const char* kRRange = "Invalid parameter value, r must be >=0 and <1";
inline constexpr const char* kBetaRange = "Invalid parameter value, Beta must be >=0 and <1";
inline constexpr const char* kKRangeYLL = "Invalid parameter value, k must be >=0 and <1";
inline constexpr const char* kCRangeYLL = "Invalid parameter value, C should be <= 0 ";

// Check numbers (negative: the kernel's own raises).
inline constexpr int kErrIYLDr = -1;    // FnlYLD: r < 0 or r >= 1, words kRRange
inline constexpr int kErrIYLDk = -2;    // FnlYLD: K < 0 or K > 1, words kRRange
inline constexpr int kErrIYLDBeta = -3; // FnlYLD: Beta < 0 or Beta >= 1, words kBetaRange
inline constexpr int kErrIYLDc = -4;    // FnlYLD: C <= 0, words kBetaRange
inline constexpr int kErrPYLDk = -5;    // FnPYLD: K < 0 or K > 1, words kRRange
inline constexpr int kErrPYLDBeta = -6; // FnPYLD: Beta < 0 or Beta >= 1, words kBetaRange
inline constexpr int kErrPYLDc = -7;    // FnPYLD: C < 0, words kBetaRange
inline constexpr int kErrYLLr = -10;    // FnYLLF: r < 0 or r >= 1, words kRRange
inline constexpr int kErrYLLk = -11;    // FnYLLF: K < 0 or K > 1, words kKRangeYLL
inline constexpr int kErrYLLBeta = -13; // FnYLLF: Beta < 0 or Beta >= 1, words kBetaRange
inline constexpr int kErrYLLc = -14;    // FnYLLF: C <= 0, words kCRangeYLL

} // namespace vesk::kernel_texts
