#pragma once
// The messages of the settings file's reader, writer and start-up dialogue, to the letter.

#include "platform/texts.h"

namespace vesk::settings_texts {

inline constexpr const char* kTitleVesk = "VESK";
inline constexpr const char* kTitleSetupError = "VESK Setup Error";
inline constexpr const char* kTitleOpenFile = "OpenFile";

// Reader.
inline constexpr const char* kOaigdMissing =
    "Some Values are missed in the STP file,LTS values are not loaded.You can use the copy of STP  ";
inline constexpr const char* kCheckVeskPath =
    " Check VESK path in the File - Setup,Wrong format reported from VESK.stp";
inline constexpr const char* kStatOutMissing =
    "Statistical Outputs path to be defined in File - Setup - File Locations - Statistical Outputs";
inline constexpr const char* kTempMissing =
    "Temp Directory to be defined in File - Setup - File Locations - Temp";
inline constexpr const char* kValuesMissed =
    "Some Values are missed in the STP file are not loaded.Please check";
// The last words belong to the text: the message is shown without a mark.
inline constexpr const char* kLifeTableTypeMissing =
    "Some Values are missed in the STP file,Panel values are not loaded.You can use the copy of STP, "
    "vbCritical";
inline constexpr const char* kLtsMissing =
    "Some Values are missing in the STP file,Panel values are not loaded.You can use the copy of STP";
inline constexpr const char* kPleaseCheckPath = "Please check Path";

// Writer.
inline constexpr const char* kWriterPathsEmpty =
    "Please fill in the VESK Database Path along with the Database Object Or also the Temp Or "
    "Statistical Output Directories or the vesk.stp file will not be generated or updated";
inline constexpr const char* kMachineMissing =
    "Machine Specified does not exist on the network,check machine name";

// Missing settings file.
inline constexpr const char* kTrapini =
    "The VESK.STP file containing the paths for various locations is not present in your current "
    "directory Configure your application using New or Open under the File Menu of the VESK "
    "application.Select 'YES' to generate/update a 'VESK.STP' file and 'NO' to abort the application.";

inline constexpr const char* kInitVeskFilePathError = "Error from InitVESKFilePath : ";

} // namespace vesk::settings_texts
