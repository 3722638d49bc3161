#pragma once
// The small study of small_study.h in a fixture's new study file, opened as the loading chain and the
// computation open it: the program's settings file read (the standard life table, Sprague's panels, the
// open-interval coefficients), the program and output folders set, the study's rows written with any
// `extra` statements after them, and the computation's loaders run. For the form tests, which use the
// plain fixture; the GoogleTest ones have small_study_fixture.h.

#include "burden/compute_run.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "small_study.h"
#include "study_db_fixture.h"

namespace vesk::test {

// False with `error` when a step fails.
inline bool openSmallStudy(StudyDbFixture& fx, const QStringList& extra, QString* error) {
    if (readSettingsFile(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"), settings(), preferences()).outcome !=
        SettingsOutcome::Ok) {
        *error = QStringLiteral("the program's settings file could not be read");
        return false;
    }
    settings().AppPath = QStringLiteral(VESK_BIN_DIR);
    settings().StatOutPath = fx.dir.path() + u'/';
    if (!fx.openCurrentStudy(error))
        return false;
    for (const auto& [sql, values] : smallStudySql())
        if (!StudyDbFixture::exec(*fx.db, sql, values, error))
            return false;
    for (const QString& sql : extra)
        if (!StudyDbFixture::exec(*fx.db, sql, {}, error))
            return false;
    preferences().txtwklocation = fx.dir.path();
    preferences().txtVESKObj = QStringLiteral("study.vdb");
    if (!openComputationStudy(studyContext())) {
        *error = QStringLiteral("the small study did not open for a computation");
        return false;
    }
    fx.prompts.clear();
    clearErrorStore();
    return true;
}

} // namespace vesk::test
