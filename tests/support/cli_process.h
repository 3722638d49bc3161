#pragma once
// vesk-cli run as a script runs it: arguments, standard input, a working folder; its exit code and
// both outputs back.

#include <QProcess>
#include <QString>
#include <QStringList>

namespace vesk::test {

struct CliRun {
    int exitCode = -1; // -1 when it did not start or did not end within the time given
    QString out, err;
};

inline CliRun runCli(const QStringList& args, const QString& input = {}, const QString& workDir = {},
                     int timeoutMs = 120000) {
    QProcess p;
    if (!workDir.isEmpty())
        p.setWorkingDirectory(workDir);
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"), args);
    if (!p.waitForStarted())
        return {};
    p.write(input.toUtf8());
    p.closeWriteChannel();
    if (!p.waitForFinished(timeoutMs))
        return {};
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

} // namespace vesk::test
