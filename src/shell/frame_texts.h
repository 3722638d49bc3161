#pragma once
// The words of the main frame, its loading chain and its File commands, kept to the letter.

#include "platform/texts.h"

#include <QString>

namespace vesk::frame_texts {

// The one text() of every texts header, for the places that name it as this header's own.
using vesk::text;

inline constexpr const char* kProductName = "VESK- Health Loss Ledger";
inline constexpr const char* kWindowTitle = "VESK- Health Loss Ledger";
inline constexpr const char* kLabel1 = "Processing,please wait...";

// The chain's error handler: "Err number : " & number & five blanks & description.
inline constexpr const char* kErrNumber = "Err number : ";
inline constexpr const char* kErrGap = "     ";

// The offer of the errors collected while loading.
inline constexpr const char* kInitErrorOne =
    "An error occured during Initalization of Vesk Data, do you wish to view it";
inline constexpr const char* kInitErrorMany =
    "Few errors occured during Initalization of Vesk Data, do you wish to view them";
inline constexpr const char* kInitErrorTitle = "Initalization of Vesk Data";

// File -> Open.
inline constexpr const char* kOpenTitle = "Open VESK Database...";
inline constexpr const char* kOpenFilter = "VESK Database (*.vdb)";
inline constexpr const char* kOpenNotVesk =
    "The file chosen by you does not appear to be a VESK Database. Please open a valid VESK Database or "
    "use File->New menu to create a valid database. Click OK to continue";

// Study -> Setup.
inline constexpr const char* kCheckPaths = "Check paths and objects in the File Setup";

// Every command's handler: "Error " and the description.
inline constexpr const char* kErrorPrefix = "Error ";
// The handler of Preferences: "The error can be " and the description.
inline constexpr const char* kPreferencesErrorPrefix = "The error can be ";

// The runtime's number for a modeless form shown over a modal one (its words: runtime_error.h).
inline constexpr int kErrModelessOverModal = 401;

// What this build says of the parts that are not built into it yet.
inline constexpr const char* kNotBuiltTitle = "VESK";
inline constexpr const char* kPreferencesNotBuilt =
    "The Preferences form is not built into this version of VESK yet.";
inline constexpr const char* kStudySetupNotBuilt = "Study Setup is not built into this version of VESK yet.";
inline constexpr const char* kHelpMissing =
    "The help file veskhelp.hlp is not present in the program folder:";
inline constexpr const char* kHelpNotOpened = "No program on this system opens the help file:";

// The menu captions shared by the three Results branches.
inline constexpr const char* kPctYll = "Percentage Distribution of Y&LLs among specific causes";
inline constexpr const char* kPctIyld = "Percentage Distribution of IYL&Ds among specific causes";
inline constexpr const char* kPctIdaly = "Percentage Distribution of ID&ALYs among specific causes";
inline constexpr const char* kPctPyld = "Percentage Distribution of PYL&Ds among specific causes";
inline constexpr const char* kPctPdaly = "Percentage Distribution of PD&ALYs among specific causes";
inline constexpr const char* kNLeading = "&N Leading Causes";
inline constexpr const char* kDtYll = "Y&LL by Age, Sex and Cause";
inline constexpr const char* kDtIyld = "IYL&D by Age,Sex and Cause";
inline constexpr const char* kDtIdaly = "ID&ALY by Age,Sex and Cause";
inline constexpr const char* kDtPyld = "PYL&D by Age,Sex and Cause";
inline constexpr const char* kDtPdaly = "PD&ALY by Age,Sex and Cause";

// The about box.
inline constexpr const char* kAboutTitle = "About VESK";
inline constexpr const char* kAboutText =
    "A package for national and regional burden-of-disease studies: years of life lost, years lived "
    "with disability, disability-adjusted life years and disability-adjusted life expectancy; and a "
    "demographer's workbench of life tables, interpolation, open age intervals and population "
    "pyramids.";

} // namespace vesk::frame_texts
