#include "app/cli/cli.h"

#include <QCoreApplication>
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
