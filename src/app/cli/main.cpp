#include "app/cli/cli.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <cstdio>

namespace vesk::cli {

namespace {
QList<Command>& registry() {
    static QList<Command> list;
    return list;
}

void printHelp() {
    QString text = QStringLiteral("Usage: vesk-cli <command> [options]\n\n"
                                  "VESK- Health Loss Ledger, command-line tools.\n\nCommands:\n");
    for (const auto& c : commands())
        text += QStringLiteral("  %1%2\n").arg(c.name, -14).arg(c.summary);
    text += QStringLiteral("\n`vesk-cli <command> --help` tells more of each.\n");
    out(text);
}
} // namespace

Registrar::Registrar(Command command) {
    registry().push_back(std::move(command));
}

const QList<Command>& commands() {
    std::sort(registry().begin(), registry().end(),
              [](const Command& a, const Command& b) { return a.name < b.name; });
    return registry();
}

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

} // namespace vesk::cli

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    using namespace vesk::cli;
    QStringList args = app.arguments().mid(1);
    if (args.isEmpty() || args[0] == QLatin1String("--help") || args[0] == QLatin1String("-h")) {
        printHelp();
        return args.isEmpty() ? 2 : 0;
    }
    const QString name = args.takeFirst();
    for (const auto& c : commands()) {
        if (c.name != name)
            continue;
        if (args.contains(QStringLiteral("--help"))) {
            out(c.usage.endsWith(u'\n') ? c.usage : c.usage + u'\n');
            return 0;
        }
        return c.run(args);
    }
    err(QStringLiteral("vesk-cli: unknown command '%1'; `vesk-cli --help` lists the commands").arg(name));
    return 2;
}
