#pragma once
// The error store: long operations record what goes wrong and go on; at their end the user is
// offered the list. Each addition also appends a block to the log errorsrec.stp in the statistical
// output folder (the path is that folder's text with the name appended directly):
//
//   [Date : 21/11/2026   Time : 10:15:02]
//          -2,Invalid parameter value, r must be >=0 and <1,FnlYLD
//
// one line per entry stored so far, so that earlier entries repeat in later blocks.

#include "platform/cell.h"

#include <QString>

namespace vesk {

// ErrStore: Empty when no error is stored, else an array (0..n-1, 0..2) of number, description, source.
Cell& ErrStore();

// Appends one entry and the log block. A failure to write the log is not reported here.
void ErrorStore(double number, const QString& description, const QString& source);

int errorStoreCount();
void clearErrorStore();

// The log's path: StatOutPath & "errorsrec.stp".
QString errorLogPath();

// Whether additions append to the log (on by default). The command-line tool turns it off: it
// writes the stored errors to standard error instead of leaving a log file where it was run.
void setErrorLogEnabled(bool enabled);

} // namespace vesk
