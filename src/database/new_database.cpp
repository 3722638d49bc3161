#include "database/new_database.h"

#include "database/db_create.h"
#include "database/db_schema.h"
#include "database/db_texts.h"
#include "database/study_context.h"
#include "platform/prompts.h"
#include "shell/frame_preferences.h"
#include "foundation/settings.h"

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

void CreateNewDatabase() {
    StudyContext& ctx = studyContext();
    InitDBStruArr();
    const auto chosen = prompts().saveFileName(dbtext::NewDatabaseTitle, dbtext::DatabaseFilter, QString());
    if (!chosen || chosen->trimmed().isEmpty()) {
        ctx.NewDBDone = false;
        return;
    }
    const QString path = withSuffix(chosen->trimmed());
    if (QFileInfo::exists(path)) {
        if (prompts().ask(dbtext::FileExistsReplace, Buttons::YesNo, Icon::Question) != Answer::Yes) {
            ctx.NewDBDone = false;
            return;
        }
    }
    QString error;
    if (!removeStudyFile(path, &error) || !createStudyFile(path, &error)) {
        showFailure(error);
        return;
    }
    handOverToSettings(path);
    // The new file is the current one from now on: Study Setup, which follows, works on it.
    QString ignored;
    ctx.ensureStudyDB(&ignored);
}

DatabaseLocation handOverToSettings(const QString& path) {
    const DatabaseLocation loc = normaliseDatabasePath(path, driveText(path));
    if (!loc.share.isEmpty())
        settings().DBFullPath = loc.share;
    preferences().txtwklocation = loc.folder;
    preferences().txtVESKObj = loc.fileTitle;
    preferencesForm().Ok_Click();
    return loc;
}

} // namespace vesk
