// vesk-cli lifetable: the life table tool's Generate on a CSV of ages and rates.

#include "app/cli/cli.h"
#include "demography/life_table.h"
#include "demography/life_table_tool.h"
#include "foundation/settings_file.h"
#include "platform/prompts.h"

#include <QFileInfo>

namespace vesk::cli {

namespace {

const QString kUsage = QStringLiteral(
    "Usage: vesk-cli lifetable [FILE] [--method 0|1|2|3] [--imr N] [--imr-denominator N] [--pgr N]\n"
    "                          [--radix N] [--kf-lower AGE] [--kf-upper AGE] [--greville-c C]\n"
    "                          [--asdr-denominator N] [--settings FILE]\n\n"
    "Computes an abridged life table as the life table tool does and writes it as CSV with the heads\n"
    "X, Mx, n, ax, qx, px, lx, dx, Lx, mx, Tx, Ex (and POP under Keyfitz, RSlx under Reed-Merrell),\n"
    "numbers at full precision; n of the last row, the open interval, is W.\n\n"
    "Input: CSV (FILE or standard input) whose first three columns are the start age of each group,\n"
    "its death rate and, for Keyfitz, its population; the first row names the columns; the last row\n"
    "is the open interval.\n\n"
    "  --method             0 Standard (q from m with a(x) by IMR), 1 Keyfitz (Keyfitz & Frauenthal\n"
    "                       1975: q corrected by the neighbouring rates and populations between\n"
    "                       --kf-lower and --kf-upper), 2 Reed-Merrell (1939), 3 Greville (1943);\n"
    "                       default: Method= of the settings\n"
    "  --imr, --imr-denominator\n"
    "                       infant mortality and its base (default 1000); both are taken to whole\n"
    "                       numbers, halves to even, as the tool does, so give an IMR of 0.07 as\n"
    "                       --imr 70 --imr-denominator 1000\n"
    "  --pgr                population growth rate, a plain exponent in e^-PGR, to a whole number\n"
    "  --radix              l0 (default: Radix = of the settings, else 1)\n"
    "  --greville-c         Greville's constant c (default: Greval= of the settings, else 1.099658856)\n"
    "  --kf-lower, --kf-upper\n"
    "                       the ages of Keyfitz's correction (default: the settings'); as in the\n"
    "                       tool they must lie within the table's ages whatever the method, so a\n"
    "                       table that does not start at 0 needs them\n"
    "  --asdr-denominator   divide the rates by this number first (each quotient must lie in 0..1)\n"
    "  --settings           the settings file (default: Vesk.stp beside vesk-cli; without one the\n"
    "                       program's defaults)\n");

int fail(const QString& message) {
    err(QStringLiteral("vesk-cli lifetable: ") + message);
    return 2;
}

// The grid of the tool from the CSV: its first three columns, as typed.
CellArray gridOf(const CsvTable& csv, int columns) {
    CellArray g({static_cast<int>(csv.rows.size()), columns});
    for (int i = 0; i < csv.rows.size(); ++i)
        for (int c = 0; c < columns; ++c)
            g(i, c) = Cell(csv.rows[i].value(c));
    return g;
}

QString tableCsv(const LifeTableToolResult& r) {
    QString text = csvLine(r.heads) + u'\n';
    for (int i = 0; i < r.table.size(0); ++i) {
        QStringList fields;
        for (int c = 0; c < r.table.size(1); ++c) {
            const Cell& cell = r.table(i, c);
            fields << (cell.isNumber() ? csvNumber(cell.toDouble()) : cell.toString());
        }
        text += csvLine(fields) + u'\n';
    }
    return text;
}

struct Options {
    std::optional<QString> method, imr, denominator, pgr, radix, kfLower, kfUpper, greville, asdr, settings;
};

Options takeOptions(QStringList& args) {
    Options o;
    o.method = takeOption(args, QStringLiteral("--method"));
    o.imr = takeOption(args, QStringLiteral("--imr"));
    o.denominator = takeOption(args, QStringLiteral("--imr-denominator"));
    o.pgr = takeOption(args, QStringLiteral("--pgr"));
    o.radix = takeOption(args, QStringLiteral("--radix"));
    o.kfLower = takeOption(args, QStringLiteral("--kf-lower"));
    o.kfUpper = takeOption(args, QStringLiteral("--kf-upper"));
    o.greville = takeOption(args, QStringLiteral("--greville-c"));
    o.asdr = takeOption(args, QStringLiteral("--asdr-denominator"));
    o.settings = takeOption(args, QStringLiteral("--settings"));
    return o;
}

// The life table options of the settings file; false only when a named file cannot be read.
bool readSettings(const std::optional<QString>& named, VeskSettings& s) {
    const QString path = named.value_or(defaultSettingsPath());
    if (!QFileInfo(path).isFile())
        return !named;
    PreferencesControls p;
    return readSettingsFile(path, s, p).errorNumber == 0;
}

int run(const QStringList& arguments) {
    QStringList args = arguments;
    const Options o = takeOptions(args);
    const QString file = args.isEmpty() ? QString() : args.takeFirst();
    if (!args.isEmpty())
        return fail(QStringLiteral("unexpected argument '%1'; see `vesk-cli lifetable --help`").arg(args.first()));
    ScriptedPrompts quiet; // the tool's and the engine's messages, said once on standard error
    ScopedPromptService scope(&quiet);
    VeskSettings s;
    if (!readSettings(o.settings, s))
        return fail(QStringLiteral("cannot read the settings file %1").arg(*o.settings));
    LifeTableToolInput in;
    in.method = o.method ? qint16(o.method->trimmed().toShort()) : s.LTMethod;
    if (in.method < 0 || in.method > 3 || (o.method && !QStringList{"0", "1", "2", "3"}.contains(o.method->trimmed())))
        return fail(QStringLiteral("--method is 0, 1, 2 or 3"));
    if (o.radix) {
        bool ok = false;
        s.LTRadix = o.radix->toDouble(&ok);
        if (!ok || !(s.LTRadix > 0))
            return fail(QStringLiteral("--radix '%1' is no positive number").arg(*o.radix));
    }
    in.imr = o.imr.value_or(QStringLiteral("0"));
    in.imrDenominator = o.denominator.value_or(QStringLiteral("1000"));
    in.pgr = o.pgr.value_or(QStringLiteral("0"));
    in.asdrDenominator = o.asdr.value_or(QString());
    in.greville = o.greville.value_or(s.LTGreval.trimmed().isEmpty() ? QString::number(kDefaultGreval, 'g', 17)
                                                                    : s.LTGreval);
    in.kfLower = o.kfLower.value_or(s.LTKFlwrLmt);
    in.kfUpper = o.kfUpper.value_or(s.LTKFupprLmt);
    QString error;
    const auto csv = readCsvTable(file, &error);
    if (!csv)
        return fail(error);
    // A population column only where the file has one: Keyfitz without it cannot begin.
    in.grid = gridOf(*csv, in.method == kLtKeyfitz ? std::min<int>(3, csv->header.size()) : 2);
    const auto result = generateLifeTable(in, s);
    if (!result)
        return fail(quiet.messages().join(QStringLiteral("; ")).replace(u'\r', u' ').replace(u'\n', u' '));
    out(tableCsv(*result));
    return 0;
}

const Registrar registrar({QStringLiteral("lifetable"),
                           QStringLiteral("abridged life table by the Standard, Keyfitz, Reed-Merrell or "
                                          "Greville method"),
                           kUsage, run});

} // namespace

} // namespace vesk::cli
