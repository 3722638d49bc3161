#pragma once
// The words of the main frame, its loading chain and its File commands, kept to the letter.

#include <QString>

namespace vesk::frame_texts {

// The texts below are UTF-8 literals; this gives one as the QString a prompt or caption takes.
inline QString text(const char* s) {
    return QString::fromUtf8(s);
}

inline constexpr char kProductName[] = "VESK- Health Loss Ledger";
inline constexpr char kWindowTitle[] = "VESK- Health Loss Ledger";
inline constexpr char kLabel1[] = "Processing,please wait...";

// The chain's error handler: "Err number : " & number & five blanks & description.
inline constexpr char kErrNumber[] = "Err number : ";
inline constexpr char kErrGap[] = "     ";

// The offer of the errors collected while loading.
inline constexpr char kInitErrorOne[] =
    "An error occured during Initalization of Vesk Data, do you wish to view it";
inline constexpr char kInitErrorMany[] =
    "Few errors occured during Initalization of Vesk Data, do you wish to view them";
inline constexpr char kInitErrorTitle[] = "Initalization of Vesk Data";

// File -> Open.
inline constexpr char kOpenTitle[] = "Open VESK Database...";
inline constexpr char kOpenFilter[] = "VESK Database (*.vdb)";
inline constexpr char kOpenNotVesk[] =
    "The file chosen by you does not appear to be a VESK Database. Please open a valid VESK Database or "
    "use File->New menu to create a valid database. Click OK to continue";

// Study -> Setup.
inline constexpr char kCheckPaths[] = "Check paths and objects in the File Setup";

// Every command's handler: "Error " and the description.
inline constexpr char kErrorPrefix[] = "Error ";
// The handler of Preferences: "The error can be " and the description.
inline constexpr char kPreferencesErrorPrefix[] = "The error can be ";

// The runtime's own descriptions of the errors the frame raises.
inline constexpr int kErrFileNotFound = 53;
inline constexpr char kErrFileNotFoundText[] = "File not found";
inline constexpr int kErrPathNotFound = 76;
inline constexpr char kErrPathNotFoundText[] = "Path not found";
inline constexpr int kErrModelessOverModal = 401;

// What this build says of the parts that are not built into it yet.
inline constexpr char kNotBuiltTitle[] = "VESK";
inline constexpr char kPreferencesNotBuilt[] =
    "The Preferences form is not built into this version of VESK yet.";
inline constexpr char kStudySetupNotBuilt[] = "Study Setup is not built into this version of VESK yet.";
inline constexpr char kHelpMissing[] = "The help file veskhelp.hlp is not present in the program folder:";
inline constexpr char kHelpNotOpened[] = "No program on this system opens the help file:";

// The about box.
inline constexpr char kAboutTitle[] = "About VESK";
inline constexpr char kAboutText[] =
    "A package for national and regional burden-of-disease studies: years of life lost, years lived "
    "with disability, disability-adjusted life years and disability-adjusted life expectancy; and a "
    "demographer's workbench of life tables, interpolation, open age intervals and population "
    "pyramids.";

} // namespace vesk::frame_texts
