#pragma once
// What the commands on a study file share: the parameter sets chosen as the computation window's grid
// chooses them, the progress and the stored errors on standard error, and the study opened with its
// results, loaded from the result tables where they hold the sets, computed and stored otherwise.

#include "platform/cell.h"
#include "platform/progress.h"

#include <QElapsedTimer>
#include <QString>

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
// it; false with `error` (a message the loaders showed has gone to standard error already).
bool openStudyFile(const QString& studyFile, const QString& stp, QString* error);

// The results of the open study for the sets `sets` in the computation: loaded when RsltYLL holds a row
// of the study's years and units for every set, otherwise computed and stored as `vesk-cli compute`
// does. False with `error` when neither gives a DALY array.
bool studyResults(const Cell& sets, const QString& stp, QString* error);

// Lets the study go before the program's statics do, as File -> Close does.
void closeStudy();

} // namespace vesk::cli
