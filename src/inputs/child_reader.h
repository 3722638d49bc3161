#pragma once
// Reading a file in a child process, for the readers that lean on a library whose faults on a
// damaged file no check of ours can rule out (legacy .xls through freexl). The child is vesk-cli,
// beside the running program; it runs with a memory and a time limit, so that a damaged file can
// neither crash the program nor corrupt its memory nor hold it: the worst it does is end the child.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vesk {

struct ChildResult {
    bool ran = false;    // false: the child could not start, ran out of time, or was killed
    int exitCode = -1;   // when ran
    QByteArray output;   // its standard output
    QString errorText;   // its standard error, or why it did not run
};

// Limits of one child: its address space and its run time.
inline constexpr qint64 kChildMemoryBytes = qint64(2) << 30;
inline constexpr int kChildSeconds = 60;

// Runs `vesk-cli <arguments>` and waits for it, within the limits.
ChildResult runReaderChild(const QStringList& arguments);

// The vesk-cli the children run: $VESK_CLI when set, else the one beside the running program.
QString readerProgram();

} // namespace vesk
