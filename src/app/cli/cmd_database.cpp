// vesk-cli create-db FILE / check-db FILE: a study file made from the schema definition, and the
// structure check of one, with the differences in the lines of vskstru.log.

#include "app/cli/cli.h"
#include "database/chk_db_stru.h"
#include "database/db_create.h"

#include <QFileInfo>

namespace vesk::cli {

namespace {

int createDb(const QStringList& arguments) {
    QStringList args = arguments;
    const bool replace = takeFlag(args, QStringLiteral("--replace"));
    if (args.size() != 1) {
        err(QStringLiteral("vesk-cli create-db: one FILE is needed; `vesk-cli create-db --help` tells more"));
        return 2;
    }
    const QString file = args[0];
    QString error;
    if (QFileInfo::exists(file)) {
        if (!replace) {
            err(QStringLiteral("vesk-cli create-db: %1 already exists; add --replace to overwrite it")
                    .arg(file));
            return 1;
        }
        if (!removeStudyFile(file, &error)) {
            err(QStringLiteral("vesk-cli create-db: %1").arg(error));
            return 1;
        }
    }
    if (!createStudyFile(file, &error)) {
        err(QStringLiteral("vesk-cli create-db: Error from New Database Creation:  %1").arg(error));
        return 1;
    }
    return 0;
}

int checkDb(const QStringList& args) {
    if (args.size() != 1) {
        err(QStringLiteral("vesk-cli check-db: one FILE is needed; `vesk-cli check-db --help` tells more"));
        return 2;
    }
    const StructureReport report = checkDatabaseStructure(args[0]);
    if (report.fileMissing) {
        err(QStringLiteral("vesk-cli check-db: no file at %1").arg(args[0]));
        return 1;
    }
    if (!report.unreadable.isEmpty()) {
        err(QStringLiteral("vesk-cli check-db: %1 is not a study database: %2")
                .arg(args[0], report.unreadable));
        return 1;
    }
    for (const StructureFinding& f : report.findings) {
        const QString line = f.logLine();
        out((line.isEmpty() ? f.message() : line) + u'\n');
    }
    return report.passed() ? 0 : 1;
}

const Registrar createCommand({
    QStringLiteral("create-db"),
    QStringLiteral("create an empty study database (.vdb) from the schema"),
    QStringLiteral("Usage: vesk-cli create-db [--replace] FILE\n\n"
                   "Creates FILE as a new study database with every table of the schema and no rows.\n"
                   "An existing FILE is left alone unless --replace is given.\n"
                   "Exit code 0 when the file was made, 1 when it was not."),
    createDb,
});

const Registrar checkCommand({
    QStringLiteral("check-db"),
    QStringLiteral("check a study database against the schema"),
    QStringLiteral("Usage: vesk-cli check-db FILE\n\n"
                   "Holds FILE against the schema, field by field, and prints each difference as a line of\n"
                   "vskstru.log:\n"
                   "  Array Properties:   FIELD|TABLE|EXPECTED     Table Properties   :FIELD|TABLE|FOUND\n"
                   "  The field FIELD present in table TABLE is either misspelt or missing.\n"
                   "A missing table is printed as its message and ends the check.\n"
                   "Exit code 0 when the file agrees with the schema, 1 when it does not."),
    checkDb,
});

} // namespace

} // namespace vesk::cli
