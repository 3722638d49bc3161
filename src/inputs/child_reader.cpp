#include "inputs/child_reader.h"

#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>

#include <sys/resource.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VESK_HAS_ASAN 1
#endif
#endif
#ifndef VESK_HAS_ASAN
#define VESK_HAS_ASAN 0
#endif

namespace vesk {

QString readerProgram() {
    const QString set = qEnvironmentVariable("VESK_CLI");
    if (!set.isEmpty())
        return set;
    // The folder of the running executable, whether or not a QCoreApplication exists.
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath() + QStringLiteral("/vesk-cli");
}

ChildResult runReaderChild(const QStringList& arguments) {
    ChildResult r;
    QProcess p;
    p.setChildProcessModifier([] {
#if !defined(__SANITIZE_ADDRESS__) && !VESK_HAS_ASAN
        // An address space limit; not in a sanitized build, whose shadow memory alone exceeds it.
        const rlimit memory{rlim_t(kChildMemoryBytes), rlim_t(kChildMemoryBytes)};
        setrlimit(RLIMIT_AS, &memory);
#endif
        const rlimit cpu{rlim_t(kChildSeconds), rlim_t(kChildSeconds)};
        setrlimit(RLIMIT_CPU, &cpu);
    });
    p.start(readerProgram(), arguments);
    if (!p.waitForStarted()) {
        r.errorText = QStringLiteral("%1 could not be started").arg(readerProgram());
        return r;
    }
    if (!p.waitForFinished((kChildSeconds + 5) * 1000)) {
        p.kill();
        p.waitForFinished();
        r.errorText = QStringLiteral("reading took longer than %1 seconds").arg(kChildSeconds);
        return r;
    }
    r.output = p.readAllStandardOutput();
    r.errorText = QString::fromUtf8(p.readAllStandardError()).trimmed();
    if (p.exitStatus() != QProcess::NormalExit) {
        if (r.errorText.isEmpty())
            r.errorText = QStringLiteral("the reader ended abnormally");
        return r;
    }
    r.ran = true;
    r.exitCode = p.exitCode();
    return r;
}

} // namespace vesk
