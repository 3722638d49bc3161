#pragma once
// Time.stp: the seconds of each step of a computation, one block per run, appended in the
// statistical output folder (its text with "Time.stp" appended directly). The block opens with
//
//   Start Application  = [Date: 21/11/2026 And Time: 10:15:02 ]
//
// and each step adds its literal and the rounded seconds since the previous stamp:
//
//   Loading population and Mortality data to Memory...  =  3

#include <QElapsedTimer>
#include <QFile>
#include <QString>
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
    // Writes the step's line with the rounded seconds since the previous stamp.
    void phase(TimePhase phase);
    // Closes the file at the end of the run.
    void finish();

private:
    std::function<double()> seconds_;
    QElapsedTimer clock_;
    QFile file_;
    double last_ = 0;
};

} // namespace vesk
