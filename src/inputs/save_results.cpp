#include "inputs/save_results.h"

#include "foundation/runtime_error.h"
#include "foundation/settings.h"
#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/messages.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vesk {

namespace {

bool isDatabase(const QString& path) {
    return foreignKind(path) == ForeignKind::Database;
}

bool sameFile(const QString& a, const QString& b) {
    const QFileInfo x(a), y(b);
    return !b.isEmpty() && x.exists() && y.exists() && x.canonicalFilePath() == y.canonicalFilePath();
}

struct DatabaseTarget {
    QString table;
    bool replace = false;
};

// The database question: Yes replaces the file, No adds a table named by the user; nothing when
// the user stopped.
std::optional<DatabaseTarget> databaseTarget(const QString& path, const QString& tableName) {
    const QString question = QStringList{text(texts::kDatabaseExists[0]), text(texts::kDatabaseExists[1]),
                                         text(texts::kDatabaseExists[2]), text(texts::kDatabaseExists[3])}
                                 .join(u'\n');
    const Answer a = prompts().ask(question, Buttons::YesNoCancel, Icon::Question, text(texts::kSaveMenuTitle));
    if (a == Answer::Cancel)
        return std::nullopt;
    if (a == Answer::Yes) {
        if (sameFile(path, settings().DBFullPath)) {
            prompts().ask(text(texts::kOpenStudyNotOverwritten), Buttons::Ok, Icon::Warning,
                          text(texts::kSaveMenuTitle));
            return std::nullopt;
        }
        return DatabaseTarget{tableName, true};
    }
    const auto table = prompts().inputBox(text(texts::kDestinationTable), text(texts::kSaveMenuTitle), tableName);
    if (!table || table->trimmed().isEmpty())
        return std::nullopt;
    return DatabaseTarget{table->trimmed(), false};
}

} // namespace

bool saveResultsTo(const QString& path, const CellArray& rows, const QStringList& fieldNames,
                   const QString& tableName, const SaveAsWords& words) {
    QString table = tableName;
    bool replace = false;
    if (QFileInfo::exists(path)) {
        if (isDatabase(path) && words.databaseQuestion) {
            const auto asked = databaseTarget(path, tableName);
            if (!asked)
                return false;
            replace = asked->replace;
            table = asked->table;
        } else if (prompts().ask(words.replaceQuestion.isEmpty() ? text(texts::kOverwriteFile) : words.replaceQuestion,
                                 Buttons::YesNo, Icon::Warning,
                                 words.replaceQuestion.isEmpty() ? text(texts::kOverwriteFileTitle)
                                                                 : words.replaceTitle) != Answer::Yes) {
            return false;
        } else if (sameFile(path, settings().DBFullPath)) {
            prompts().ask(text(texts::kOpenStudyNotOverwritten), Buttons::Ok, Icon::Warning, QString());
            return false;
        } else {
            replace = true; // the file anew, not a table added to the old workbook
        }
    }
    // A file replaced is written anew beside the old one, which stays until the new one is whole.
    const QFileInfo info(path);
    const QString target = replace ? info.dir().filePath(QStringLiteral(".~new-") + info.fileName()) : path;
    if (replace)
        QFile::remove(target);
    const bool written = FnWriteArrFile(rows, target, table, fieldNames) &&
                         (!replace || ((QFile::remove(path) || !QFile::exists(path)) && QFile::rename(target, path)));
    if (!written) {
        if (replace)
            QFile::remove(target);
        const QString why = lastForeignError().words;
        prompts().ask(text(texts::kUnableToSave) + (why.isEmpty() ? QString() : QStringLiteral("\n") + why),
                      Buttons::Ok, Icon::Critical, QString());
        return false;
    }
    prompts().ask(text(texts::kDataExported) + path, Buttons::Ok, Icon::Information, QString());
    return true;
}

bool saveResultsAs(const CellArray& rows, const QStringList& fieldNames, const QString& tableName,
                   const SaveAsWords& words) {
    if (rows.rank() != 2 || rows.size(0) == 0) {
        prompts().ask(text(texts::kCheckGridBeforeSaving), Buttons::Ok, Icon::Information, QString());
        return false;
    }
    const QString title = words.dialogTitle.isEmpty() ? text(texts::kSaveResultsTitle) : words.dialogTitle;
    const auto path = prompts().saveFileName(title, text(texts::kForeignFileFilter));
    if (!path)
        return false;
    return saveResultsTo(*path, rows, fieldNames, tableName, words);
}

} // namespace vesk
