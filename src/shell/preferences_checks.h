#pragma once
// The checks of the preferences form when a field is left, and its Close: what each field must
// hold, the message and title when it does not, and what Close does with a path missing. Each check
// shows its own message through the prompt service and says whether the field passed.
//
// A path is taken in the forms the program knows: a local folder like "?:*\" or "?:*" (on other
// systems than Windows also an absolute path, "/..."), or a folder on another machine like "\\*\*"
// (elsewhere also "//*/*"). A path of another machine is tested for its machine and share first: a
// share that cannot be reached is told as a machine the network does not know, as the settings
// file's writer tells it; a folder missing on a share that is there, as any missing folder.
//
// A field left empty is not checked: there is nothing to test yet, and Close asks about the paths
// that are missing.

#include "foundation/settings.h"

#include <QString>

namespace vesk {

// Whether `path` is in one of the forms above; and whether it names another machine's share.
bool isPathFormat(const QString& path);
bool isNetworkPath(const QString& path);

// txtwklocation, txtStatOut, txtImpLoc, txtTempArea: the form, then the folder's existence.
bool checkFolderLeft(const QString& path);
// txtVESKObj: a file name like "*.???", then the file in the working location.
bool checkDatabaseLeft(const QString& folder, const QString& file);

// TxtMinMaxage: 45 to 85, and then it is the lowest age (MinMaxAge).
bool checkMinMaxAgeLeft(const QString& text, VeskSettings& s = settings());
// TxtMaxMaxage: above the lowest age and at most 85, and then it is the highest (MaxMaxAge). The
// lowest age is MinMaxAge, or 45 while the settings hold 0 (which their writer turns into 45).
bool checkMaxMaxAgeLeft(const QString& text, VeskSettings& s = settings());

// txtNLdCuss takes the keys of digits, and Backspace; its value is NLdCauses once it is left.
bool isNumberKey(int keyCode);
void nLeadingCausesLeft(const QString& text, VeskSettings& s = settings());

enum class CloseOutcome {
    Hide,       // the paths are filled: the form hides
    Stay,       // a path is missing and the user chose to fill it in
    EndProgram, // a path is missing and the user chose to end the program
};

// Close: with any of the working, import, statistical output or temporary paths empty, asks
// whether to fill them in (Yes) or to end the program (No).
CloseOutcome closeAsked(const PreferencesControls& p = preferences());

} // namespace vesk
