#pragma once
// Where a study file lies, in the form the settings keep: its folder and its file title. A file on
// a mapped network drive is stored under the share's network path, so that every machine can
// read it; a local path stands as it is. On Windows the drive text is what a drive list shows,
// "c: [SYSTEM]" for a local drive and "z: [\\server\share]" for a mapped one; elsewhere an absolute
// path ("/...") is the local form.

#include <QString>

namespace vesk {

struct DatabaseLocation {
    QString path;      // the path as it is to be stored
    QString folder;    // the path less its file title and the separator before it
    QString fileTitle; // the file name (lower-cased where the file system does not tell case apart)
    QString share;     // for a mapped drive: the share cut out of the drive text ("\\server\share")
};

// The drive text of the drive that holds `path`; empty for a network path.
QString driveText(const QString& path);

// The location of the study file at `path`, given the drive text of its drive.
DatabaseLocation normaliseDatabasePath(const QString& path, const QString& drive);

// Folder and file name joined as the settings join them: "\" on Windows, "/" elsewhere.
QString joinPath(const QString& folder, const QString& name);

} // namespace vesk
