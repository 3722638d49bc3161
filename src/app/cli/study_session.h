#pragma once
// What the commands on a study file share: the parameter sets chosen as the computation window's grid
// chooses them, the progress and the stored errors on standard error, and the study opened with its
// results, loaded from the result tables where they hold the sets, computed and stored otherwise.

#include "burden/compute_run.h"
#include "foundation/time_log.h"
#include "platform/cell.h"
#include "platform/progress.h"

#include <QElapsedTimer>
#include <QString>
#include <optional>

namespace vesk::cli {

// MtxDAP of the built-in sets `ids` ("0,1"), chosen in the window's grid as its clicks choose them; more
// than one needs `sensitivity`. Empty with `error` otherwise.
Cell chosenSets(const QString& ids, bool sensitivity, QString* error);

// The error store's entries on standard error, a line each (number, description, source).
void printStoredErrors();

// The progress of a run on standard error, once the run has taken more than a second: each new step
// on a line of its own.
class StderrProgress : public Progress {
public:
    StderrProgress() { clock_.start(); }
    void setRange(int, int) override {}
    void setValue(int) override {}
    void setVisible(bool) override {}
    void setText(const QString& text) override;

private:
    QElapsedTimer clock_;
    QString last_;
};

// The settings file `stp` read, and the current study of `studyFile` opened as the computation opens
// it, for the life of the object: false with error() when it could not be (a message the loaders
// showed has gone to standard error already). The study goes with the object, before the program's
// statics do, as File -> Close lets it go.
//
// Opened for its definitions alone, the study is what the loading chain finds of it before its
// causes and inputs: the study, its years, its units and aggregates (a study without units or causes
// opens all the same, for File -> Import and Export).
enum class StudyOpening { ForComputation, Definitions };

class OpenStudy {
public:
    OpenStudy(const QString& studyFile, const QString& stp,
              StudyOpening opening = StudyOpening::ForComputation);
    ~OpenStudy();
    OpenStudy(const OpenStudy&) = delete;
    OpenStudy& operator=(const OpenStudy&) = delete;
    explicit operator bool() const { return error_.isEmpty(); }
    const QString& error() const { return error_; }

private:
    QString error_;
};

// The index of `wanted` in `list`, compared trimmed and without regard to case: 0 when none is given
// (the first), -1 when it is not there. With entryTexts, how a command finds its --unit or --year.
int chosenIndex(const QStringList& list, const std::optional<QString>& wanted);
// The texts of a vector's entries (VctrYrLst, VctrBPULst); none for a cell that is no array.
QStringList entryTexts(const Cell& vector);

// What the commands that read a study's results do first: the built-in sets `ids` chosen (a refusal
// calls for exit code 2), the study opened and its results loaded or computed (a failure calls for 1).
// The study stays open for the life of the object.
class StudyWithResults {
public:
    StudyWithResults(const QString& studyFile, const QString& stp, const QString& ids, bool sensitivity);
    explicit operator bool() const { return error_.isEmpty(); }
    const QString& error() const { return error_; }
    int exitCode() const { return code_; }

private:
    std::optional<OpenStudy> study_;
    QString error_;
    int code_ = 0;
};

// A computation of the open study for the sets `sets`, as Compute -> DALYs runs it, on the standard
// life table of the settings; its timed steps in `log`.
RunOutcome computeStudy(const Cell& sets, const QString& stp, TimeLog& log);

// The results of the open study for the sets `sets` in the computation: loaded when RsltYLL holds a row
// of the study's years and units for every set, otherwise computed and stored as `vesk-cli compute`
// does. False with `error` when neither gives a DALY array.
bool studyResults(const Cell& sets, const QString& stp, QString* error);

} // namespace vesk::cli
