#pragma once
// The demonstration study built beside the programs (bin/demo.vdb), copied into a test's folder, opened
// as the computation opens it with the program's settings file, and computed for the built-in parameter
// set 1, as Compute -> DALYs - Quick computes it. Errors go to no log in the source folder.

#include "burden/calculator_models.h"
#include "burden/computation.h"
#include "burden/compute_run.h"
#include "database/study_context.h"
#include "demography/standard_life_table.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "foundation/time_log.h"

#include <QFile>
#include <QTemporaryDir>

namespace vesk::test {

// False with `error` when a step fails; `comp` holds the results otherwise.
inline bool openComputedDemo(const QTemporaryDir& dir, Computation& comp, QString* error) {
    const QString file = dir.filePath(QStringLiteral("demo.vdb"));
    if (!QFile::copy(QStringLiteral(VESK_BIN_DIR "/demo.vdb"), file)) {
        *error = QStringLiteral("no demonstration study beside the programs");
        return false;
    }
    QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    readSettingsFile(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"), settings(), preferences());
    settings().AppPath = QStringLiteral(VESK_BIN_DIR); // Sprague's panels from the program's settings
    settings().StatOutPath = dir.path() + u'/';
    setErrorLogEnabled(false);
    preferences().txtwklocation = dir.path();
    preferences().txtVESKObj = QStringLiteral("demo.vdb");
    if (!openComputationStudy(studyContext())) {
        *error = QStringLiteral("the demonstration study did not open");
        return false;
    }
    DapGridModel grid(DapRowTexts::Computation);
    grid.chooseRow(1, kCompModeQuick);
    comp.MtxDAP = grid.chosenDaps();
    const StandardLifeTable table = standardLifeTable();
    if (!table.table) {
        *error = QStringLiteral("no standard life table in the settings");
        return false;
    }
    TimeLog log;
    const RunOutcome outcome = runComputation(studyContext(), comp, *table.table, nullptr, log);
    clearErrorStore();
    if (outcome.end != RunEnd::Stored) {
        *error = outcome.message;
        return false;
    }
    return true;
}

} // namespace vesk::test
