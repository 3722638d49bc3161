#pragma once
// The pieces shared by the settings file's reader and writer: lines in and out, the runtime errors
// that file access can raise, and the few text helpers of the format.

#include "foundation/runtime_error.h"

#include <QString>
#include <QStringList>

namespace vesk::stp {

// How the platform's failures of file access are named (as RuntimeError, runtime_error.h):
//   the folder of the path does not exist: 52 "Bad file name or number" when the path names a
//     network share ("\\machine\share\..." or "//machine/share/...", where the old platform said 52
//     for a machine it could not reach), else 76 "Path not found";
//   reading a file that is not there: 53 "File not found";
//   no right to read the file, or to write in the folder or over the file: 70 "Permission denied";
//   a write that fails after the file was opened (the volume is full, a size limit): 61 "Disk full";
//   anything else: 75 "Path/File access error".

RuntimeError openErrorFor(const QString& path, bool forWriting);
RuntimeError inputPastEnd();
RuntimeError overflow();

// The runtime's Trim: blanks only, tabs stay.
QString Trim(const QString& text);
// A section heading as the reader compares it: trimmed and upper-cased.
QString heading(const QString& line);

// "*" & separator & "*" joins: "\" on Windows, "/" elsewhere.
QString pathSeparator();
// The reader upper-cases the working and import folders. That is right only where the file system
// does not tell cases apart (Windows); elsewhere it would name another folder, so the path is kept.
QString upperWhereCaseBlind(const QString& path);

// Conversions of a value text: the lenient leading-number parse, rounded half to even for integers,
// with the runtime's overflow error outside the type's range.
qint16 toInt16(const QString& text);
qint32 toInt32(const QString& text);

// Lines of a settings file: CR LF ends a line, as does a bare CR or LF; text is UTF-8. Returns false
// when the file cannot be opened (no error shown).
bool readLines(const QString& path, QStringList& lines);

// The lines of the open settings file, read one after the other.
class StpLines {
public:
    // Throws RuntimeError when the file cannot be opened.
    static StpLines open(const QString& path);
    bool atEnd() const { return pos_ >= lines_.size(); }
    // The next line; past the end it throws "Input past end of file" (62).
    QString next();

private:
    QStringList lines_;
    qsizetype pos_ = 0;
};

inline const QString kRule27 = QString(27, u'-');
inline const QString kRule28 = QString(28, u'-');

} // namespace vesk::stp
