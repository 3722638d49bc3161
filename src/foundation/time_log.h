#pragma once
// Time.stp: the seconds of each step of a computation, one block per run, appended in the
// statistical output folder (its text with "Time.stp" appended directly). The block opens with
//
//   Start Application  = [Date: 21/11/2026 And Time: 10:15:02 ]
//
// and each step adds its literal and the seconds, to two decimals, since the stamp taken at the head
// of that step (mark), or since the previous line where no step took one:
//
//   Loading population and Mortality data to Memory...  =  3.27

#include <QElapsedTimer>
#include <QFile>
#include <QString>
#include <QStringList>
#include <functional>

namespace vesk {

// The steps of a computation, in their order.
enum class TimePhase {
    LoadPopulation,
    LoadCauseOfDeath,
    LoadEpidemiological,
    Compute,
    StoreYLD,
    StoreYLL,
    StoreDALY,
};

// The literal that opens a step's line.
QString timePhaseLiteral(TimePhase phase);

// Time.stp's path: StatOutPath & "Time.stp".
QString timeLogPath();

class TimeLog {
public:
    // `seconds` is the run-time timer; by default the seconds since this log was made.
    explicit TimeLog(std::function<double()> seconds = {});
    ~TimeLog();

    // Opens the file for append and writes the start line; false when it cannot be opened.
    bool start();
    // Takes the stamp at the head of a step.
    void mark();
    // Writes the step's line with the seconds since the stamp, rounded to two decimals, and takes
    // the stamp anew.
    void phase(TimePhase phase);
    // The lines of this run as written (kept also when the file could not be opened).
    const QStringList& lines() const { return lines_; }
    // Closes the file at the end of the run.
    void finish();

private:
    std::function<double()> seconds_;
    QElapsedTimer clock_;
    QFile file_;
    double last_ = 0;
    QStringList lines_;
};

} // namespace vesk
