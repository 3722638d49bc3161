#pragma once
// The structure check: before a file becomes the current study database it is held against the
// schema definition, attribute by attribute, and refused unless all agrees. Each difference is told
// in a message box and written to vskstru.log, and the check goes on to the next, so that one run
// lists everything; only a missing table ends it at once. Names compare without regard to case;
// tables and fields that the definition does not name are not looked at (each study adds its own
// column to _DctBDM). Indexes, keys, relations and the reserved mark are not compared.
//
// The rules of kind and range of each declared type (type_rules.h) belong to its type: a field whose
// type agrees but whose rules differ or are missing is told as a difference of its datatype, the log
// giving the rules found. A file made before these rules existed so fails the check field by field.

#include <QList>
#include <QString>

namespace vesk {

struct StructureFinding {
    enum class Kind { MissingTable, MissingField, Difference };
    Kind kind = Kind::Difference;
    QString table{};      // the definition's table name
    QString field{};      // the definition's field name
    int attribute = 0;    // the attribute compared (AttrType .. AttrAllowZeroLength)
    QString expected{};   // the definition's value
    QString foundTable{}; // the names as the file spells them
    QString foundField{};
    QString found{}; // the file's value

    // The message box text.
    QString message() const;
    // The line of vskstru.log; empty for a missing table, which the log does not get.
    QString logLine() const;
};

struct StructureReport {
    bool fileMissing = false; // no file at the path
    QString unreadable;       // the engine's description when the file is not a database
    QList<StructureFinding> findings;
    bool passed() const { return !fileMissing && unreadable.isEmpty() && findings.isEmpty(); }
};

// Holds the file at `dbPath` against the definition (InitDBStruArr is called first). Nothing is
// shown or written.
StructureReport checkDatabaseStructure(const QString& dbPath);

// The check as the program runs it: the log rewritten, every message shown (warning mark), every
// line written; True when nothing was found wrong. A file that the engine cannot open as a database
// (a text file, random bytes, a folder) ends the check with nothing shown and True, as the result
// stood; the study's loader (InitBDS) then reports the engine's description.
bool ChkDBStru(const QString& dbPath);

// StatOutPath & "vskstru.log"; an empty StatOutPath is first set to the program folder.
QString structureLogPath();

} // namespace vesk
