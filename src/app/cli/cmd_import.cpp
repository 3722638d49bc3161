// vesk-cli import STUDY.vdb --sheet SHEET --bpu ID [--year Y] FILE [--table NAME]: a sheet's import
// and Confirm, as the Inputs window does them, for the current study of STUDY.vdb; with --what, the
// import of a whole export (cmd_transfer.h).

#include "app/cli/cli.h"
#include "app/cli/cmd_transfer.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "inputs/sheet_import.h"

#include <QFileInfo>

namespace vesk::cli {

namespace {

int importSheet(const QStringList& arguments) {
    if (isTransferImport(arguments))
        return transferImport(arguments);
    QStringList args = arguments;
    const auto sheetName = takeOption(args, QStringLiteral("--sheet"));
    const auto bpu = takeOption(args, QStringLiteral("--bpu"));
    const auto year = takeOption(args, QStringLiteral("--year"));
    const auto table = takeOption(args, QStringLiteral("--table"));
    const auto sheet = sheetName ? inputSheetNamed(*sheetName) : std::nullopt;
    bool yearOk = true;
    const int yearValue = year ? year->toInt(&yearOk) : 0;
    if (args.size() != 2 || !sheet || !bpu || !yearOk) {
        err(QStringLiteral("vesk-cli import: give STUDY.vdb, --sheet, --bpu and FILE; "
                           "`vesk-cli import --help` tells more"));
        return 2;
    }
    const QFileInfo study(args[0]);
    if (!study.isFile()) {
        err(QStringLiteral("vesk-cli import: no study file at %1").arg(args[0]));
        return 1;
    }
    preferences().txtwklocation = study.absolutePath();
    preferences().txtVESKObj = study.fileName();
    const SheetImportRequest request{*sheet, *bpu, year ? std::optional<int>(yearValue) : std::nullopt, args[1],
                                     table.value_or(QString())};
    const SheetImportResult result = importSheetFile(studyContext(), request);
    // The connection goes before the program's statics do, as the frame's File -> Close lets it go.
    studyContext() = StudyContext{};
    switch (result) {
    case SheetImportResult::Stored:
        return 0;
    case SheetImportResult::Ended:
        break;
    }
    return 1;
}

const Registrar importCommand({
    QStringLiteral("import"),
    QStringLiteral("import an input sheet of a study from a file and confirm it, or a whole export"),
    QStringLiteral(
        "Usage: vesk-cli import STUDY.vdb --sheet SHEET --bpu ID [--year Y] FILE [--table NAME]\n\n"
        "Imports the rows of the unit ID and the year Y (the study's year by default) from FILE into\n"
        "the sheet SHEET of the current study of STUDY.vdb and confirms it, as the Inputs window's\n"
        "Import and Confirm buttons do: the same tests, the same messages (on standard error), the\n"
        "same rows stored, in one transaction. Questions are answered with their first button (Yes).\n\n"
        "SHEET   population, asdr, demography, csm, epi, sequela-epi, weights\n"
        "FILE    .wk1, .xlsx, .xls (the range named ID), .dbf, .txt (fields split at ';'), or a\n"
        "        database file (.vdb, .db, .sqlite, .mdb) whose table --table names\n"
        "        population, asdr: fields by position: unit, year, lower age (BAI), male, female, date\n"
        "        csm: fields by name: BPUID, Year, COBCd and one per YLL label (a text file names them\n"
        "        on its first line)\n"
        "        epi: fields by position: unit, year, cause, ASG, i, p, ago, durn, agp; every cause of\n"
        "        the study that the file has rows of is imported and confirmed\n"
        "        sequela-epi: the same with the sequela after the cause\n"
        "        demography: fields by position: unit, year, CDMdl, PGR, IMR\n"
        "        weights: fields by position: study, code (cause or sequela), name, U0-4, U05-14,\n"
        "        U15-44, U45-59, U60-w (a worksheet's range is named after the study)\n\n"
        "Exit code 0 when the rows were stored, 1 when a test or the engine refused them, 2 for a\n"
        "command that cannot be run.\n\n") +
        transferImportUsage(),
    importSheet,
});

} // namespace

} // namespace vesk::cli
