#pragma once
// Vesk.stp, the settings file beside the program: its reader (openfile), its writer
// (Write_To_Vesk_Stp), the dialogue for a missing file (trapini), the start of it all
// (InitVESKFilePath) and the readers of the numeric blocks.
//
// The format is line-oriented and position-based. The writer puts every line in a fixed order and
// the reader leans on that order: it is one loop over lines, and on each pass the line just read is
// compared with the section headings one after the other, so that a block which read further lines
// hands its last line to the later comparisons of the same pass. Lines end in CR LF; the reader also
// takes a bare CR or LF as a line end. Text is UTF-8.
//
// None of these routines ends the process: where the program is to end they return
// SettingsOutcome::EndProgram (after showing the message), and the frame ends it.

#include "foundation/settings.h"

#include <QString>

namespace vesk {

// One name on every system: the writer and the reader, on case-sensitive file systems as well.
inline constexpr char kSettingsFileName[] = "Vesk.stp";

enum class SettingsOutcome {
    Ok,         // the file was read (or a file error was reported and reading stopped)
    NoSettings, // the file was missing and the user chose to configure: leave only File -> New/Open
    EndProgram, // a message was shown and the program is to end
};

struct SettingsResult {
    SettingsOutcome outcome = SettingsOutcome::Ok;
    // The frame's SettingsOK: false when the reader found the database path of [VESK] wrong
    // (the file does not exist or does not end in a three-letter extension).
    bool SettingsOK = true;
    // The runtime error number that stopped the reader and was shown (52, 53, 62, 76...), 0 if none.
    int errorNumber = 0;
};

enum class WriteResult {
    Written, // the whole file was replaced
    Refused, // a path was empty: the message was shown and the old file stays
    Failed,  // the file could not be written: the message was shown and the old file stays whole
};

// AppPath for a program folder: the folder in the platform's separators; a drive root "X:\" becomes
// "X:", the file system root "/" becomes "", so that separator & "Vesk.stp" can always be appended.
QString appPathFor(const QString& programFolder);
// If the path is like "?:\", its first two characters; otherwise the path unchanged.
QString cutDriveRoot(const QString& path);
// AppPath & separator & "Vesk.stp" ("\" on Windows, "/" elsewhere).
QString settingsFilePath(const QString& appPath);
// The path of the settings file of the current AppPath.
QString settingsFilePath();

// Sets AppPath (programFolder, or QCoreApplication::applicationDirPath() when it is empty), sets the
// sample percent to 100 and shows it in txtSampPct, then reads the file through openfile, or, when
// it is missing, asks through trapini (Yes gives NoSettings, No gives EndProgram).
SettingsResult InitVESKFilePath(const QString& programFolder = QString(), VeskSettings& s = settings(),
                                PreferencesControls& p = preferences());

// Reads AppPath's Vesk.stp into the settings and into the controls of the preferences form.
SettingsResult openfile(VeskSettings& s = settings(), PreferencesControls& p = preferences());
// The same from the settings file at `path` (vesk-cli's --settings).
SettingsResult readSettingsFile(const QString& path, VeskSettings& s, PreferencesControls& p);

// The dialogue for a settings file that is missing or unusable. Returns true when the user answered
// Yes (the frame then leaves only File -> New and File -> Open), false for No (end the program).
bool trapini();

// Rewrites the whole file from the settings and the controls of the preferences form. The rewrite is
// atomic: the new content goes to a temporary file that replaces the old one only when complete.
// The numeric blocks are passed on from the file; one that its reader refuses (settingsBlockRefusal)
// would be written back empty, so the rewrite is refused instead (Failed, the reason shown).
WriteResult Write_To_Vesk_Stp(VeskSettings& s = settings(), PreferencesControls& p = preferences());

// The readers of the numeric blocks. `file` defaults to the settings file of the current AppPath.
// Each fills `table` with text cells as they stand in the file, or leaves it empty (no cells) and
// returns false when the block is not there.
//
// FnReadLTS: the section named (e.g. "[Standard Life Table-KRO]") and its three lines, tagged
// "[BAI]:", "[EXF]:", "[EXM]:", into (0..n-1, 0..2): column 0 age, 1 female, 2 male.
bool FnReadLTS(const QString& sectionName, CellArray& table, const QString& file = QString());
// [OAIGD]: the rows between the 28-hyphen rule under the heading and the next 27-hyphen rule,
// (0..rows-1, 0..values-1).
bool FnReadOAIGD(CellArray& table, const QString& file = QString());
// [PANEL 0] to [PANEL 4]: the rows from the panel heading to the next heading, for panel 4 to the
// closing rule; (0..rows-1, 0..values-1).
bool FnReadPanel0(CellArray& table, const QString& file = QString());
bool FnReadPanel1(CellArray& table, const QString& file = QString());
bool FnReadPanel2(CellArray& table, const QString& file = QString());
bool FnReadPanel3(CellArray& table, const QString& file = QString());
bool FnReadPanel4(CellArray& table, const QString& file = QString());
bool FnReadPanel(int panel, CellArray& table, const QString& file = QString());
// Why the last block reader refused its block, naming the file; empty when it did not refuse. A
// block whose rows, each as wide as its widest, would take far more cells than the file has
// characters is refused rather than built.
QString settingsBlockRefusal();

} // namespace vesk
