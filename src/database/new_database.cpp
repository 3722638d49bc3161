#include "database/new_database.h"

#include "database/db_create.h"
#include "database/db_schema.h"
#include "database/db_texts.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "platform/prompts.h"

#include <QFileInfo>

namespace vesk {

namespace {

// A chosen name without a suffix gets the study file's, as the dialog's default extension would.
QString withSuffix(const QString& name) {
    return QFileInfo(name).suffix().isEmpty() ? name + u'.' + dbtext::DatabaseSuffix : name;
}

void showFailure(const QString& description) {
    prompts().ask(dbtext::NewDatabaseError + QStringLiteral("  ") + description, Buttons::Ok, Icon::Critical);
}

} // namespace

bool CreateNewDatabase() {
    StudyContext& ctx = studyContext();
    InitDBStruArr();
    const auto chosen = prompts().saveFileName(dbtext::NewDatabaseTitle, dbtext::DatabaseFilter, QString());
    if (!chosen || chosen->trimmed().isEmpty()) {
        ctx.NewDBDone = false;
        return false;
    }
    const QString path = withSuffix(chosen->trimmed());
    if (QFileInfo::exists(path)) {
        if (prompts().ask(dbtext::FileExistsReplace, Buttons::YesNo, Icon::Question) != Answer::Yes) {
            ctx.NewDBDone = false;
            return false;
        }
    }
    QString error;
    if (!removeStudyFile(path, &error) || !createStudyFile(path, &error)) {
        showFailure(error);
        return false;
    }
    handOverToSettings(path);
    // The new file is the current one from now on: Study Setup, which follows, works on it.
    QString ignored;
    ctx.ensureStudyDB(&ignored);
    return true;
}

DatabaseLocation handOverToSettings(const QString& path) {
    const DatabaseLocation loc = normaliseDatabasePath(path, driveText(path));
    if (!loc.share.isEmpty())
        settings().DBFullPath = loc.share;
    preferences().txtwklocation = loc.folder;
    preferences().txtVESKObj = loc.fileTitle;
    return loc;
}

} // namespace vesk
