#include "app/cli/study_session.h"

#include "app/cli/cli.h"
#include "burden/calculator_models.h"
#include "burden/computation_arrays.h"
#include "burden/compute_run.h"
#include "burden/stored_results.h"
#include "database/study_context.h"
#include "demography/standard_life_table.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "foundation/time_log.h"
#include "platform/cell_array.h"

#include <QFileInfo>
#include <utility>

namespace vesk::cli {

Cell chosenSets(const QString& ids, bool sensitivity, QString* error) {
    DapGridModel grid(DapRowTexts::Computation);
    const QStringList wanted = ids.split(u',', Qt::SkipEmptyParts);
    if (wanted.isEmpty() || (!sensitivity && wanted.size() > 1)) {
        *error = sensitivity ? QStringLiteral("--dap names no parameter set")
                             : QStringLiteral("a quick computation takes one parameter set; add --sensitivity for more");
        return Cell();
    }
    for (const QString& id : wanted) {
        int row = -1;
        for (int r = 0; r < DapGridModel::kCustomRow; ++r)
            if (grid.text(r, DapGridModel::IdColumn) == id.trimmed())
                row = r;
        if (row < 0) {
            *error = QStringLiteral("no built-in parameter set '%1'; the sets are 0, 1, 2 and 3").arg(id);
            return Cell();
        }
        if (!grid.isSelected(row))
            grid.chooseRow(row, sensitivity ? kCompModeSensitivity : kCompModeQuick);
    }
    return grid.chosenDaps();
}

void printStoredErrors() {
    const Cell& store = ErrStore();
    if (!store.isArray())
        return;
    const CellArray& e = store.array();
    for (int r = e.lbound(0); r <= e.ubound(0); ++r)
        err(QStringLiteral("error %1, %2, %3").arg(e(r, 0).toString(), e(r, 1).toString(), e(r, 2).toString()));
}

void StderrProgress::setText(const QString& text) {
    const QString step = text.section(QStringLiteral("   "), 0, 0);
    if (step == last_ || clock_.elapsed() < 1000)
        return;
    last_ = step;
    err(step);
}

namespace {

// The loading chain's loaders of a study's definitions; false when the file has no current study.
bool openDefinitions(StudyContext& c) {
    QString error;
    if (!c.ensureStudyDB(&error) || !c.InitBDS())
        return false;
    c.InitYear();
    c.InitBPULst(QStringLiteral("_DctBPU"));
    c.InitPAGLst(QStringLiteral("_DctPAG1"));
    return true;
}

} // namespace

OpenStudy::OpenStudy(const QString& studyFile, const QString& stp, StudyOpening opening) {
    const QFileInfo study(studyFile);
    if (!study.isFile()) {
        error_ = QStringLiteral("no study file at %1").arg(studyFile);
        return;
    }
    if (!QFileInfo(stp).isFile()) {
        error_ = QStringLiteral("no settings file at %1").arg(stp);
        return;
    }
    setErrorLogEnabled(false); // the errors go to standard error, not to a log where the tool runs
    readSettingsFile(stp, settings(), preferences());
    // The settings file's folder stands as the program folder: what a run reads of "the program's own
    // settings file" (Sprague's panels of a population built again after a load) is read there.
    settings().AppPath = QFileInfo(stp).absolutePath();
    preferences().txtwklocation = study.absolutePath();
    preferences().txtVESKObj = study.fileName();
    if (opening == StudyOpening::Definitions) {
        if (!openDefinitions(studyContext()))
            error_ = QStringLiteral("the file %1 has no current study").arg(studyFile);
    } else if (!openComputationStudy(studyContext())) {
        error_ = QStringLiteral("the study of %1 cannot be computed").arg(studyFile);
    }
}

OpenStudy::~OpenStudy() {
    computation() = Computation{};
    studyContext() = StudyContext{};
}

RunOutcome computeStudy(const Cell& sets, const QString& stp, TimeLog& log) {
    Computation& comp = computation();
    comp.MtxDAP = sets;
    const StandardLifeTable table = standardLifeTable();
    const CellArray none;
    StderrProgress progress;
    return runComputation(studyContext(), comp, table.table ? *table.table : none, &progress, log, stp);
}

namespace {

// Whether RsltYLL holds a row of the study's years and units for every set of `sets`.
bool storedForEverySet(const StudyContext& study, const Cell& sets) {
    const CellArray& m = sets.array();
    for (int d = m.lbound(0); d <= m.ubound(0); ++d) {
        auto q = study.StudyDB->query(
            QStringLiteral("SELECT 1 FROM RsltYLL WHERE DAPID = ? AND BPUID IN (SELECT BPUID FROM _DctBPU WHERE "
                           "BDSId = ?) AND YEAR IN (SELECT Year FROM _DctBDS WHERE BDSId = ? AND Slct <> 0) LIMIT 1"),
            {m(d, m.lbound(1) + kDapId).toDouble(), study.CurBDSId, study.CurBDSId});
        if (!q || !q->next())
            return false;
    }
    return true;
}

bool loadStored(const Cell& sets, QString* error) {
    Computation& comp = computation();
    LoadedResults loaded;
    StderrProgress progress;
    const LoadEnd end = LoadStroedResults(computationStudy(studyContext()), sets, [](const QString&) {}, &progress,
                                          loaded);
    if (end != LoadEnd::Loaded) {
        *error = QStringLiteral("the stored results could not be loaded");
        return false;
    }
    comp.MtxDAP = sets;
    adoptLoadedResults(std::move(loaded), comp);
    return true;
}

bool computeAndStore(const Cell& sets, const QString& stp, QString* error) {
    TimeLog log;
    const RunOutcome outcome = computeStudy(sets, stp, log);
    printStoredErrors();
    clearErrorStore();
    if (outcome.end != RunEnd::Stored) {
        *error = outcome.message;
        return false;
    }
    return true;
}

} // namespace

bool studyResults(const Cell& sets, const QString& stp, QString* error) {
    if (storedForEverySet(studyContext(), sets))
        return loadStored(sets, error);
    return computeAndStore(sets, stp, error);
}

StudyWithResults::StudyWithResults(const QString& studyFile, const QString& stp, const QString& ids, bool sensitivity) {
    const Cell sets = chosenSets(ids, sensitivity, &error_);
    if (!sets.isArray()) {
        code_ = 2;
        return;
    }
    study_.emplace(studyFile, stp);
    if (!*study_)
        error_ = study_->error();
    else
        studyResults(sets, stp, &error_);
    if (!error_.isEmpty())
        code_ = 1;
}

int chosenIndex(const QStringList& list, const std::optional<QString>& wanted) {
    if (!wanted)
        return 0;
    for (int i = 0; i < list.size(); ++i)
        if (list[i].trimmed().compare(wanted->trimmed(), Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QStringList entryTexts(const Cell& vector) {
    QStringList out;
    if (vector.isArray())
        for (int i = vector.array().lbound(0); i <= vector.array().ubound(0); ++i)
            out << vector.array()(i).toString();
    return out;
}

} // namespace vesk::cli
