// vesk-cli export STUDY.vdb --what WHAT [--bpu ID] [--year Y] --out FILE and
// vesk-cli import STUDY.vdb --what WHAT FILE: File -> Export and File -> Import of the whole of the
// dictionaries, the population units, the study data or the user defined standard life table, each a
// thin wrapper over the routine of its menu item.

#include "app/cli/cmd_transfer.h"

#include "app/cli/cli.h"
#include "app/cli/study_session.h"
#include "database/study_context.h"
#include "demography/standard_table_export.h"
#include "demography/user_life_table_import.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "inputs/dictionary_transfer.h"
#include "inputs/study_data_transfer.h"
#include "inputs/unit_transfer.h"

#include <QFileInfo>

namespace vesk::cli {

namespace {

enum class What { Dictionaries, Units, Data, LifeTable };

std::optional<What> whatNamed(const std::optional<QString>& name) {
    if (!name)
        return std::nullopt;
    if (*name == QLatin1String("dictionaries"))
        return What::Dictionaries;
    if (*name == QLatin1String("units"))
        return What::Units;
    if (*name == QLatin1String("data"))
        return What::Data;
    if (*name == QLatin1String("lifetable"))
        return What::LifeTable;
    return std::nullopt;
}

int exitCode(TransferResult r) {
    return r == TransferResult::Done ? 0 : 1;
}

struct Scope {
    std::optional<QString> bpu;
    std::optional<int> year;
    bool ok = true;
};

Scope takeScope(QStringList& args) {
    Scope s;
    s.bpu = takeOption(args, QStringLiteral("--bpu"));
    if (const auto year = takeOption(args, QStringLiteral("--year")))
        s.year = year->toInt(&s.ok);
    return s;
}

int lifeTable(bool import, const QString& file, const QString& stp) {
    if (!QFileInfo(stp).isFile()) {
        err(QStringLiteral("no settings file at %1").arg(stp));
        return 1;
    }
    readSettingsFile(stp, settings(), preferences());
    settings().AppPath = QFileInfo(stp).absolutePath();
    if (!import) {
        const StandardTableExport r = exportUserTable(file);
        if (r == StandardTableExport::Declined)
            err(QStringLiteral("the settings file %1 holds no user defined standard life table").arg(stp));
        return r == StandardTableExport::Exported ? 0 : 1;
    }
    // The program keeps the table in its settings file, which is named Vesk.stp wherever it lies.
    if (QFileInfo(stp).fileName() != QFileInfo(settingsFilePath(settings().AppPath)).fileName()) {
        err(QStringLiteral("the user defined table goes into a settings file named %1, not %2")
                .arg(QFileInfo(settingsFilePath(settings().AppPath)).fileName(), stp));
        return 1;
    }
    if (importUserLifeTable(file) != UserTableImport::Imported)
        return 1;
    // The table goes into the settings file, as the program writes it there at its next rewrite.
    return Write_To_Vesk_Stp() == WriteResult::Written ? 0 : 1;
}

// What the menu item of `what` does, on the study opened.
int transfer(What what, bool import, const QString& file, const Scope& scope) {
    const DbConnection& db = *studyContext().StudyDB;
    switch (what) {
    case What::Dictionaries:
        return exitCode(import ? ImpAllDct(db, file) : exportDictionary(db, std::nullopt, file));
    case What::Units:
        return exitCode(import ? FnImpPopUntsAll(studyContext(), std::nullopt, file)
                               : exportUnits(db, studyContext().CurBDSId, std::nullopt, file));
    case What::Data: {
        const StudyDataScope s{scope.bpu, scope.year};
        return exitCode(import ? importStudyData(studyContext(), std::nullopt, file, s)
                               : exportStudyData(studyContext(), std::nullopt, file, s));
    }
    case What::LifeTable:
        break;
    }
    return 1;
}

int run(bool import, const QStringList& arguments) {
    QStringList args = arguments;
    const auto what = whatNamed(takeOption(args, QStringLiteral("--what")));
    const auto outFile = import ? std::nullopt : takeOption(args, QStringLiteral("--out"));
    const auto stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    const Scope scope = takeScope(args);
    const QString command = import ? QStringLiteral("import") : QStringLiteral("export");
    const int positional = import ? 2 : 1;
    if (!what || args.size() != positional || (!import && !outFile) || !scope.ok) {
        err(QStringLiteral("vesk-cli %1: give STUDY.vdb, --what and %2; `vesk-cli %1 --help` tells more")
                .arg(command, import ? QStringLiteral("FILE") : QStringLiteral("--out FILE")));
        return 2;
    }
    const QString file = import ? args[1] : *outFile;
    if (*what == What::LifeTable)
        return lifeTable(import, file, stp);
    const OpenStudy study(args[0], stp, StudyOpening::Definitions);
    if (!study) {
        err(QStringLiteral("vesk-cli %1: %2").arg(command, study.error()));
        return 1;
    }
    return transfer(*what, import, file, scope);
}

// A function, not a static: vesk-cli import's help asks for it while the statics are being made.
QString whatHelp() {
    return QStringLiteral(
        "WHAT  dictionaries  the six dictionaries of causes (groups, subgroups, clusters, causes,\n"
        "                    sequelae, the sequela-cause map), each a table named as the settings file\n"
        "                    names it (GrpDctTblNm= ...); a text file holds them as sections, a line\n"
        "                    [NAME] before each table's rows\n"
        "      units         the population units of the current study, the aggregates of level 1 and 2\n"
        "                    (tables named BPUTblNm=, PAG1TblNm=, PAG2TblNm=; a text file holds the three,\n"
        "                    each after a line with its name)\n"
        "      data          the population, death rates, cause-specific mortality proportions,\n"
        "                    epidemiological estimates, disability weights, the sequelae's estimates and\n"
        "                    the demographic parameters of the study: a table for each unit and year\n"
        "                    (POP_<unit>_<year>, ASDR_, CSMP_, EPI_, SEPI_, DMG_, DWT_<year>); a text,\n"
        "                    dBase or Lotus export makes a file of each in the folder of FILE\n"
        "                    (Population_<unit>_<year>, ASDR_, CSMP_, EpiEst_, SqlaEpiEst_, Demography_,\n"
        "                    CSMP_<year>)\n"
        "      lifetable     the user defined standard life table of the settings file (STUDY.vdb is\n"
        "                    not read)\n\n"
        "FILE  .txt, .WK1, .xlsx (.xls to read), .dbf, or a database file (.vdb, .db, .sqlite, .mdb)\n");
}

const Registrar exportCommand({
    QStringLiteral("export"),
    QStringLiteral("export a study's dictionaries, population units or data, or the user life table"),
    QStringLiteral("Usage: vesk-cli export STUDY.vdb --what WHAT [--bpu ID] [--year Y] --out FILE "
                   "[--settings FILE]\n\n"
                   "Writes what File -> Export writes for the current study of STUDY.vdb. --bpu and --year\n"
                   "take the study data of one unit or one year only.\n\n") +
        whatHelp() +
        QStringLiteral(
            "\nMessages go to standard error. Exit code 0 when the file was written, 1 when it was\n"
            "not, 2 for a command that cannot be run."),
    [](const QStringList& args) { return run(false, args); },
});

} // namespace

bool isTransferImport(const QStringList& args) {
    return args.contains(QStringLiteral("--what"));
}

int transferImport(const QStringList& args) {
    return run(true, args);
}

QString transferImportUsage() {
    return QStringLiteral(
               "       vesk-cli import STUDY.vdb --what WHAT [--bpu ID] [--year Y] FILE [--settings FILE]\n\n"
               "With --what, reads back what vesk-cli export (or File -> Export) wrote, as File ->\n"
               "Import does, in one transaction: a bad row or a file cut short changes nothing.\n"
               "An import of the study data replaces the rows of each unit and year the file has.\n"
               "The user defined standard life table goes into the settings file.\n\n") +
           whatHelp();
}

} // namespace vesk::cli
