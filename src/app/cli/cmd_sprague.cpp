// vesk-cli sprague: five-year groups to single years by Sprague's multipliers.

#include "app/cli/cli.h"
#include "demography/sprague.h"
#include "platform/prompts.h"

#include <QFileInfo>

namespace vesk::cli {

namespace {

const QString kUsage = QStringLiteral(
    "Usage: vesk-cli sprague [FILE] [--keep-open] [--settings FILE]\n\n"
    "Subdivides five-year age groups into single years of age with Sprague's fifth-difference\n"
    "multipliers (Shryock & Siegel 1976, Table C-5, Panel B), read from the [PANELS] block of the\n"
    "settings file.\n\n"
    "Input: CSV (FILE or standard input) whose first row names the columns and whose first column\n"
    "holds one value a row: the groups 0-4, 5-9, ... in order, the last row the open group. At least\n"
    "six rows (five closed groups and the open one).\n"
    "Output: CSV with the columns age, value: one row a single year, 0 to 5·(rows - 1) - 1, and with\n"
    "--keep-open a last row for the open group, unchanged. Numbers at full precision.\n\n"
    "Exit codes: 0 done; 2 bad input or no panels; 3 a single-year value came out negative (the\n"
    "series moves too sharply between neighbouring groups for Sprague's method: try even spreading).\n\n"
    "  --settings   the settings file (default: Vesk.stp beside vesk-cli)\n");

int fail(const QString& message, int code = 2) {
    err(QStringLiteral("vesk-cli sprague: ") + message);
    return code;
}

int run(const QStringList& arguments) {
    QStringList args = arguments;
    const bool keepOpen = takeFlag(args, QStringLiteral("--keep-open"));
    const auto settingsFile = takeOption(args, QStringLiteral("--settings"));
    const QString file = args.isEmpty() ? QString() : args.takeFirst();
    if (!args.isEmpty())
        return fail(QStringLiteral("unexpected argument '%1'; see `vesk-cli sprague --help`").arg(args.first()));
    const QString stp = settingsFile.value_or(defaultSettingsPath());
    const auto panels = QFileInfo(stp).isFile() ? ProcLoadPanels(stp) : std::nullopt;
    if (!panels)
        return fail(QStringLiteral("the settings file %1 has no five panels of five rows of numbers under [PANELS]")
                        .arg(stp));
    QString error;
    const auto csv = readCsvTable(file, &error);
    if (!csv)
        return fail(error);
    CellArray groups({int(csv->rows.size())});
    for (int i = 0; i < csv->rows.size(); ++i) {
        bool ok = false;
        const double v = csv->rows[i].value(0).trimmed().toDouble(&ok);
        if (!ok)
            return fail(QStringLiteral("row %1: '%2' is no number").arg(i + 2).arg(csv->rows[i].value(0)));
        groups(i) = Cell(v);
    }
    ScriptedPrompts quiet;
    ScopedPromptService scope(&quiet);
    CellArray single;
    const Cell r = FnSprague(groups, keepOpen ? 1 : 0, single, *panels);
    if (!r.isArray()) {
        if (r.isNumber() && r.toDouble() == 0)
            return fail(QStringLiteral("%1 rows: at least six are needed (five closed groups and the open one)")
                            .arg(groups.size(0)));
        if (r.isNumber())
            return fail(QStringLiteral("the single year %1 came out negative: the series changes too sharply between "
                                       "neighbouring groups for Sprague interpolation")
                            .arg([&] {
                                int y = 0;
                                while (y < single.size(0) && single(y).isNumber())
                                    ++y;
                                return y;
                            }()),
                        3);
        return fail(quiet.messages().join(QStringLiteral("; ")));
    }
    QString text = QStringLiteral("age,value\n");
    for (int y = 0; y < single.size(0); ++y)
        text += QString::number(y) + u',' + csvNumber(single(y).toDouble()) + u'\n';
    out(text);
    return 0;
}

const Registrar registrar({QStringLiteral("sprague"),
                           QStringLiteral("five-year age groups to single years (Sprague's multipliers)"), kUsage,
                           run});

} // namespace

} // namespace vesk::cli
