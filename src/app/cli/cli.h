#pragma once
// vesk-cli: the core's tools for scripts. One file per subcommand; each registers itself with a
// static CliRegistrar, so that adding a command touches no other file.

#include "platform/csv.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace vesk::cli {

struct Command {
    QString name;
    QString summary;                                 // one line for `vesk-cli --help`
    QString usage;                                   // the text of `vesk-cli <name> --help`
    std::function<int(const QStringList& args)> run; // args after the command name
};

struct Registrar {
    explicit Registrar(Command command);
};

const QList<Command>& commands();

// Small helpers shared by the commands.
// The value after `--name`, or std::nullopt; `args` keeps the rest.
std::optional<QString> takeOption(QStringList& args, const QString& name);
bool takeFlag(QStringList& args, const QString& name);
// The text of a file argument, or of standard input when the argument is absent or "-".
std::optional<QString> readInput(const QString& path, QString* error);
// The CSV table of a file argument or of standard input; std::nullopt with `error` set when it
// cannot be read or parsed, or when its rows, each as wide as the widest, would take far more
// memory than its text (one wide line over many short ones).
std::optional<CsvTable> readCsvTable(const QString& path, QString* error);
void out(const QString& text); // standard output, UTF-8
void err(const QString& text); // standard error, UTF-8, with a line end
// Runs `program` beside vesk-cli with `args`, its output and errors passed through; its exit code, or 1
// when it cannot be run (the message names `command`).
int runBeside(const QString& program, const QStringList& args, const QString& command);

// The settings file beside the program, or the one named by --settings.
QString defaultSettingsPath();

} // namespace vesk::cli
