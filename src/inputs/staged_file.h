#pragma once
// A file written beside its target and put in the target's place only when the writing
// succeeded. The writer is handed a path in a scratch folder made next to the target (same
// folder, so the final move is a rename on one disk); commit() moves what the writer made there
// over the target, files it made beside its file (a dBase table's .cpg) along with it. Without a
// commit the scratch folder goes, and the target, or its absence, stays as it was.

#include <QString>
#include <QTemporaryDir>

namespace vesk {

class StagedFile {
public:
    // `keepContent`: the target's present content is copied in first, for writers that add to
    // an existing file (a worksheet or workbook gaining a range).
    StagedFile(const QString& target, bool keepContent);
    // False, with `error` telling why, when no scratch file could be made beside the target.
    bool ready(QString* error) const;
    // The path the writer writes to: the target's file name in the scratch folder.
    QString path() const { return path_; }
    // Moves the written files over their namesakes beside the target; false with `error` set
    // when a move failed.
    bool commit(QString* error);

private:
    QString target_;
    QTemporaryDir scratch_;
    QString path_;
    QString error_;
};

} // namespace vesk
