// vesk-cli standard-table: a standard life table of the settings file as CSV, or a user defined
// table of a file checked as the import checks it.

#include "app/cli/cli.h"
#include "demography/life_table_check.h"
#include "demography/standard_life_table.h"
#include "demography/standard_table_export.h"
#include "demography/standard_table_texts.h"
#include "demography/user_life_table_file.h"
#include "demography/user_life_table_import.h"
#include "foundation/settings_file_keys.h"
#include "platform/texts.h"

#include <QFileInfo>

namespace vesk::cli {

namespace {

const QString kUsage = QStringLiteral(
    "Usage: vesk-cli standard-table --table KRO|WHO|USER [--sex F|M] [--settings FILE]\n"
    "       vesk-cli standard-table --import FILE [--sex F|M] [--settings FILE]\n\n"
    "Writes a standard life table as CSV: the column age, then the expectancy of life e(x) of\n"
    "females and of males (columns female, male), or of the one sex of --sex.\n\n"
    "  --table     KRO or WHO, the fixed tables of the settings file, or USER, the user defined\n"
    "              table it holds (File -> Import -> User Defined Standard Life Table puts one there)\n"
    "  --import    a user defined table in a file of any kind the import reads (.txt, .WK1, .xlsx,\n"
    "              .xls, .dbf, .vdb/.db/.sqlite/.mdb), checked as the import checks it: single years,\n"
    "              the last age 100, expectancies that do not rise. A database file, a worksheet\n"
    "              or a dBase folder is read from the table named by UsrLTSTblNm= of the settings\n"
    "              file (USRLTS when it names none), a database file or worksheet without it from LTS\n"
    "  --sex       F or M: that sex only\n"
    "  --settings  the settings file (default: Vesk.stp beside vesk-cli)\n\n"
    "Exit code 0 with the table, 1 when there is no table or it fails the check, 2 for a wrong\n"
    "argument.\n");

int fail(const QString& message, int code) {
    err(QStringLiteral("vesk-cli standard-table: ") + message);
    return code;
}

// The columns written: the age, then female (1) and male (2), or one of them.
QList<int> columnsFor(const QString& sex) {
    if (sex == QLatin1String("F"))
        return {0, 1};
    if (sex == QLatin1String("M"))
        return {0, 2};
    return {0, 1, 2};
}

QString tableCsv(const CellArray& table, const QList<int>& columns) {
    static const QStringList heads{QStringLiteral("age"), QStringLiteral("female"), QStringLiteral("male")};
    QStringList header;
    for (int c : columns)
        header << heads[c];
    QString text = csvLine(header) + u'\n';
    const CellArray rows = standardTableRows(table);
    for (int i = 0; i < rows.size(0); ++i) {
        QStringList fields;
        for (int c : columns) {
            const Cell& v = rows(i, c);
            fields << (v.isNumber() ? csvNumber(v.toDouble()) : v.toString());
        }
        text += csvLine(fields) + u'\n';
    }
    return text;
}

// The table that --table names, or the reason there is none.
std::optional<CellArray> settingsTable(const QString& which, const QString& path, QString* error) {
    VeskSettings s;
    PreferencesControls p;
    if (!readStandardLifeTables(path, s, p, error))
        return std::nullopt;
    if (which == QLatin1String("USER")) {
        const Cell user = GetUsrLifeTable(p);
        if (user.isArray())
            return user.array();
        *error = QStringLiteral(
                     "the settings file %1 holds no user defined life table (%2); import one with "
                     "File -> Import -> User Defined Standard Life Table, or check a file with --import")
                     .arg(path, QLatin1String(stp::kLtsUser));
        return std::nullopt;
    }
    const CellArray& fixed = which == QLatin1String("WHO") ? s.MtxLTSWHO : s.MtxLTSKRO;
    if (fixed.rank() == 2 && fixed.size(0) > 0)
        return fixed;
    *error = QStringLiteral("the settings file %1 holds no table %2")
                 .arg(path, QLatin1String(which == QLatin1String("WHO") ? stp::kLtsWho : stp::kLtsKro));
    return std::nullopt;
}

// The user table of a file, as the import reads and checks it; the import's own words on failure.
std::optional<CellArray> importedTable(const QString& file, const std::optional<QString>& settingsPath,
                                       QString* error) {
    VeskSettings s;
    PreferencesControls p;
    const QString path = settingsPath.value_or(defaultSettingsPath());
    if ((settingsPath || QFileInfo::exists(path)) && !readStandardLifeTables(path, s, p, error))
        return std::nullopt;
    QString reason;
    auto table = readUserLifeTable(file, userTableSourceName(s), &reason);
    if (!table) {
        *error = text(standard_table_texts::kNotImported) + reason;
        return std::nullopt;
    }
    if (!DoChk(*table)) {
        *error = consistencyFailureMessage();
        return std::nullopt;
    }
    return table;
}

int run(const QStringList& arguments) {
    QStringList args = arguments;
    const auto which = takeOption(args, QStringLiteral("--table"));
    const auto file = takeOption(args, QStringLiteral("--import"));
    const auto sex = takeOption(args, QStringLiteral("--sex"));
    const auto settingsPath = takeOption(args, QStringLiteral("--settings"));
    if (!args.isEmpty())
        return fail(
            QStringLiteral("unexpected argument '%1'; see `vesk-cli standard-table --help`").arg(args[0]), 2);
    if (bool(which) == bool(file))
        return fail(QStringLiteral("give --table KRO|WHO|USER or --import FILE, one of them"), 2);
    const QString table = which.value_or(QString()).trimmed().toUpper();
    if (which && table != QLatin1String("KRO") && table != QLatin1String("WHO") &&
        table != QLatin1String("USER"))
        return fail(QStringLiteral("unknown table '%1': use KRO, WHO or USER").arg(*which), 2);
    const QString letter = sex.value_or(QString()).trimmed().toUpper();
    if (sex && letter != QLatin1String("F") && letter != QLatin1String("M"))
        return fail(QStringLiteral("--sex takes F or M, not '%1'").arg(*sex), 2);
    QString error;
    const auto rows = which ? settingsTable(table, settingsPath.value_or(defaultSettingsPath()), &error)
                            : importedTable(*file, settingsPath, &error);
    if (!rows)
        return fail(error, 1);
    out(tableCsv(*rows, columnsFor(letter)));
    return 0;
}

const Registrar
    registrar({QStringLiteral("standard-table"),
               QStringLiteral("a standard life table (KRO, WHO, the user's) as CSV, or a user table "
                              "file checked"),
               kUsage, run});

} // namespace

} // namespace vesk::cli
