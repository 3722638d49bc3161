// What the commands of vesk-cli share, and vesk-chart with them: options, input, output, the settings
// file beside the program.

#include "app/cli/cli.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <cstdio>

namespace vesk::cli {

std::optional<QString> takeOption(QStringList& args, const QString& name) {
    const int i = args.indexOf(name);
    if (i < 0)
        return std::nullopt;
    if (i + 1 >= args.size()) {
        args.removeAt(i);
        return QString();
    }
    const QString v = args[i + 1];
    args.remove(i, 2);
    return v;
}

bool takeFlag(QStringList& args, const QString& name) {
    return args.removeAll(name) > 0;
}

std::optional<QString> readInput(const QString& path, QString* error) {
    QFile f;
    if (path.isEmpty() || path == QLatin1String("-")) {
        if (!f.open(stdin, QIODevice::ReadOnly)) {
            *error = QStringLiteral("cannot read standard input");
            return std::nullopt;
        }
    } else {
        f.setFileName(path);
        if (!f.open(QIODevice::ReadOnly)) {
            *error = QStringLiteral("cannot open %1: %2").arg(path, f.errorString());
            return std::nullopt;
        }
    }
    return QString::fromUtf8(f.readAll());
}

void out(const QString& text) {
    const QByteArray b = text.toUtf8();
    std::fwrite(b.constData(), 1, static_cast<size_t>(b.size()), stdout);
}

void err(const QString& text) {
    const QByteArray b = (text + u'\n').toUtf8();
    std::fwrite(b.constData(), 1, static_cast<size_t>(b.size()), stderr);
}

QString defaultSettingsPath() {
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("Vesk.stp"));
}

int runBeside(const QString& program, const QStringList& args, const QString& command) {
    const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(program);
    QProcess p;
    p.setProcessChannelMode(QProcess::ForwardedChannels);
    p.start(path, args);
    if (!p.waitForStarted()) {
        err(QStringLiteral("vesk-cli %1: cannot run %2: %3").arg(command, path, p.errorString()));
        return 1;
    }
    p.waitForFinished(-1);
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : 1;
}

} // namespace vesk::cli
