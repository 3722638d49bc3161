// vesk-cli yll, iyld, pyld: the burden kernel applied to the rows of a CSV table.

#include "app/cli/cli.h"
#include "burden/kernel.h"
#include "demography/standard_life_table.h"
#include "foundation/error_store.h"
#include "foundation/runtime_error.h"
#include "platform/csv.h"
#include "platform/runtime.h"

#include <QHash>
#include <functional>
#include <optional>
#include <stdexcept>

namespace vesk::cli {

namespace {

// The inputs of one row, by column name.
struct RowInputs {
    QHash<QString, float> number;
    Cell Beta, C;
};

struct KernelCommand {
    QString name;
    QStringList numbers; // single-float inputs, by their column names
    std::function<double(const RowInputs&)> compute;
    bool takesLifeTable = false; // L may come from the standard life table
};

float in(const RowInputs& r, const char* name) {
    return r.number.value(QString::fromLatin1(name));
}

std::optional<float> parseNumber(const QString& text) {
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return static_cast<float>(v);
}

// A Beta or C cell: an empty field is the empty string, as an empty grid cell is; a number is a
// number; any other text stays text, for the kernel to find it no number.
Cell dynamicCell(const QString& text) {
    const QString t = text.trimmed();
    bool ok = false;
    const double v = t.toDouble(&ok);
    return ok ? Cell(v) : Cell(t);
}

int fail(const QString& command, const QString& message) {
    err(QStringLiteral("vesk-cli %1: %2").arg(command, message));
    return 2;
}

// Where L comes from when the table has no L column: the standard life table of the settings file,
// at the age of each row, for the sex given once or in a column "sex".
struct LifeTableSource {
    CellArray table;
    QString sex;        // the letter of --sex, or empty
    int sexColumn = -1; // else the column "sex"
};

// The settings file's [LIFE TABLE TYPE] and its three tables, as the settings reader takes them.
bool readLifeTableSettings(const QString& path, VeskSettings& s, PreferencesControls& p, QString* error) {
    if (!readStandardLifeTables(path, s, p, error))
        return false;
    if (s.LifeTblType == 0) {
        *error =
            QStringLiteral("the settings file %1 names no life table type 1, 2 or 3 in [LIFE TABLE TYPE]")
                .arg(path);
        return false;
    }
    return true;
}

// The standard life table that the settings file chooses, by the program's one choice of it.
std::optional<CellArray> standardLifeTable(const QString& path, QString* error) {
    VeskSettings s;
    PreferencesControls p;
    if (!readLifeTableSettings(path, s, p, error))
        return std::nullopt;
    const StandardLifeTable chosen = vesk::standardLifeTable(s, p);
    if (chosen.lack != StandardLifeTableLack::None) {
        *error = QStringLiteral("the settings file %1 has no life table %2")
                     .arg(path, QLatin1String(chosen.block));
        return std::nullopt;
    }
    return *chosen.table;
}

std::optional<LifeTableSource> lifeTableSource(const KernelCommand& cmd, const CsvTable& csv,
                                               const std::optional<QString>& sex,
                                               const std::optional<QString>& settingsPath, int* exit) {
    LifeTableSource src;
    if (sex) {
        src.sex = sex->trimmed().toUpper();
        if (src.sex != QLatin1String("F") && src.sex != QLatin1String("M")) {
            *exit = fail(cmd.name, QStringLiteral("--sex takes F or M, not '%1'").arg(*sex));
            return std::nullopt;
        }
    } else {
        src.sexColumn = csv.column(QStringLiteral("sex"));
        if (src.sexColumn < 0) {
            *exit =
                fail(cmd.name, QStringLiteral("the input has no column 'L'; give it, or give --sex F|M (or a "
                                              "column 'sex') to take L from the standard life table"));
            return std::nullopt;
        }
    }
    QString error;
    auto table = standardLifeTable(settingsPath.value_or(defaultSettingsPath()), &error);
    if (!table) {
        *exit = fail(cmd.name, error);
        return std::nullopt;
    }
    src.table = std::move(*table);
    return src;
}

// Reads the rows' inputs; on a field that is no number, says which and gives up.
std::optional<QList<RowInputs>> readRows(const KernelCommand& cmd, const CsvTable& csv,
                                         const QStringList& numbers) {
    QList<RowInputs> rows;
    const int beta = csv.column(QStringLiteral("Beta"));
    const int c = csv.column(QStringLiteral("C"));
    for (int i = 0; i < csv.rows.size(); ++i) {
        const QStringList& fields = csv.rows[i];
        RowInputs row;
        for (const QString& name : numbers) {
            const QString text = fields.value(csv.column(name));
            const auto v = parseNumber(text);
            if (!v) {
                fail(cmd.name,
                     QStringLiteral("row %1, column '%2': '%3' is not a number").arg(i + 1).arg(name, text));
                return std::nullopt;
            }
            row.number.insert(name, *v);
        }
        row.Beta = dynamicCell(fields.value(beta));
        row.C = dynamicCell(fields.value(c));
        rows << row;
    }
    return rows;
}

// The errors the kernel stored for one row, to standard error.
bool reportStoredErrors(int row) {
    for (int e = 0; e < errorStoreCount(); ++e) {
        const CellArray& store = ErrStore().array();
        err(QStringLiteral("row %1: error %2: %3 (%4)")
                .arg(row)
                .arg(store(e, 0).toString(), store(e, 1).toString(), store(e, 2).toString()));
    }
    return errorStoreCount() > 0;
}

// L from the life table for one row; std::nullopt after a subscript error, which is reported.
std::optional<float> lookUpL(const LifeTableSource& src, const QStringList& fields, float a, int row) {
    const QString sex = src.sexColumn < 0 ? src.sex : fields.value(src.sexColumn).trimmed().left(1).toUpper();
    try {
        return FnLifeExpAt(src.table, a, sex);
    } catch (const std::out_of_range& e) {
        err(QStringLiteral("row %1: error %2: %3 (FnLifeExpAt, sex '%4')")
                .arg(row)
                .arg(runtime_error::kSubscriptOutOfRange)
                .arg(QString::fromLatin1(e.what()), sex));
        return std::nullopt;
    }
}

// Computes each row and writes the table with its result column to standard output. Returns 1 when
// the kernel stored an error for any row, else 0.
int writeResults(const KernelCommand& cmd, const CsvTable& csv, QList<RowInputs>& rows,
                 const LifeTableSource* lifeTable) {
    setErrorLogEnabled(false); // the errors go to standard error, not to a log where the tool runs
    bool anyError = false;
    CsvTable output;
    output.header = csv.header;
    if (lifeTable)
        output.header << QStringLiteral("L");
    output.header << cmd.name;
    for (int i = 0; i < rows.size(); ++i) {
        QStringList fields = csv.rows[i];
        while (fields.size() < csv.header.size())
            fields << QString();
        RowInputs& row = rows[i];
        if (lifeTable) {
            const auto L = lookUpL(*lifeTable, fields, in(row, "a"), i + 1);
            if (!L) {
                anyError = true;
                output.rows << (fields << QString() << QString());
                continue;
            }
            row.number.insert(QStringLiteral("L"), *L);
            fields << csvNumber(*L);
        }
        clearErrorStore();
        output.rows << (fields << csvNumber(cmd.compute(row)));
        anyError = reportStoredErrors(i + 1) || anyError;
    }
    clearErrorStore();
    out(toCsv(output));
    return anyError ? 1 : 0;
}

int runKernelCommand(const KernelCommand& cmd, QStringList args) {
    const auto sex = takeOption(args, QStringLiteral("--sex"));
    const auto settingsPath = takeOption(args, QStringLiteral("--settings"));
    if ((sex || settingsPath) && !cmd.takesLifeTable)
        return fail(cmd.name, QStringLiteral("--sex and --settings belong to yll"));
    if (args.size() > 1 || (args.size() == 1 && args[0].startsWith(QLatin1String("--"))))
        return fail(cmd.name, QStringLiteral("unexpected arguments: %1; `vesk-cli %2 --help` tells the usage")
                                  .arg(args.join(u' '), cmd.name));
    QString error;
    const auto csv = readCsvTable(args.value(0), &error);
    if (!csv)
        return fail(cmd.name, error);

    QStringList numbers = cmd.numbers;
    std::optional<LifeTableSource> lifeTable;
    if (cmd.takesLifeTable && csv->column(QStringLiteral("L")) < 0) {
        int exit = 0;
        lifeTable = lifeTableSource(cmd, *csv, sex, settingsPath, &exit);
        if (!lifeTable)
            return exit;
        numbers.removeAll(QStringLiteral("L"));
    }
    const QStringList needed = QStringList(numbers) << QStringLiteral("Beta") << QStringLiteral("C");
    for (const QString& name : needed)
        if (csv->column(name) < 0)
            return fail(cmd.name,
                        QStringLiteral("the input has no column '%1'; `vesk-cli %2 --help` lists the columns")
                            .arg(name, cmd.name));
    auto rows = readRows(cmd, *csv, numbers);
    if (!rows)
        return 2;

    return writeResults(cmd, *csv, *rows, lifeTable ? &*lifeTable : nullptr);
}

const QString kCommonHelp = QStringLiteral(
    "Columns are found by name, in any order and any case; other columns pass through unchanged.\n"
    "An empty Beta or C is the empty string, which skips the checks of Beta and C.\n"
    "Output: the input rows with the result column added, numbers as the shortest text that\n"
    "reads back to the same double.\n"
    "Errors the kernel stores (bad parameters, division by zero, overflow) go to standard error,\n"
    "one line each with its row and number; the row's result is still written.\n"
    "Exit status: 0 without stored errors, 1 when the kernel stored any, 2 on unusable input.\n");

const KernelCommand kYll{
    QStringLiteral("yll"),
    {QStringLiteral("a"), QStringLiteral("L"), QStringLiteral("r"), QStringLiteral("K")},
    [](const RowInputs& r) { return FnYLLF(in(r, "a"), in(r, "L"), in(r, "r"), in(r, "K"), r.Beta, r.C); },
    true};

const KernelCommand kIyld{QStringLiteral("iyld"),
                          {QStringLiteral("a"), QStringLiteral("L"), QStringLiteral("D"), QStringLiteral("r"),
                           QStringLiteral("K"), QStringLiteral("N")},
                          [](const RowInputs& r) {
                              return double(FnlYLD(in(r, "a"), in(r, "L"), in(r, "D"), in(r, "r"), in(r, "K"),
                                                   r.Beta, r.C, in(r, "N")));
                          }};

const KernelCommand kPyld{
    QStringLiteral("pyld"),
    {QStringLiteral("a"), QStringLiteral("D"), QStringLiteral("K"), QStringLiteral("N")},
    [](const RowInputs& r) {
        return double(FnPYLD(in(r, "a"), in(r, "D"), in(r, "K"), r.Beta, r.C, in(r, "N")));
    }};

// The command of a kernel function: its usage followed by the help the three share.
Command kernelCommand(const KernelCommand& cmd, const QString& summary, const QString& usage) {
    return {cmd.name, summary, usage + kCommonHelp,
            [&cmd](const QStringList& args) { return runKernelCommand(cmd, args); }};
}

const Registrar yllCommand{kernelCommand(
    kYll, QStringLiteral("years of life lost per death (FnYLLF) for each row of a CSV"),
    QStringLiteral("Usage: vesk-cli yll [FILE] [--sex F|M] [--settings FILE]\n\n"
                   "Reads a CSV table (FILE, or standard input) with the columns a, L, r, K, Beta, C:\n"
                   "age at death, standard life expectancy at that age, discount rate, age-weight\n"
                   "modulation, age-weight constants. Writes it back with the column yll: the\n"
                   "discounted, age-weighted years of life lost by ONE death.\n\n"
                   "Without an L column, L is read from the standard life table at each row's age\n"
                   "(FnLifeExpAt), for the sex of --sex or of a column 'sex' (its first letter), and\n"
                   "written as a column L. The table is the one [LIFE TABLE TYPE] chooses in the\n"
                   "settings file: Vesk.stp beside vesk-cli, or the file of --settings.\n\n"))};

const Registrar iyldCommand{kernelCommand(
    kIyld, QStringLiteral("incidence-based years lived with disability (FnlYLD) per row"),
    QStringLiteral("Usage: vesk-cli iyld [FILE]\n\n"
                   "Reads a CSV table (FILE, or standard input) with the columns a, L, D, r, K, Beta,\n"
                   "C, N: age at onset, duration, disability weight, discount rate, age-weight\n"
                   "modulation, age-weight constants, incident cases. Writes it back with the column\n"
                   "iyld: the years lived with disability of the N cases.\n\n"))};

const Registrar pyldCommand{kernelCommand(
    kPyld, QStringLiteral("prevalence-based years lived with disability (FnPYLD) per row"),
    QStringLiteral("Usage: vesk-cli pyld [FILE]\n\n"
                   "Reads a CSV table (FILE, or standard input) with the columns a, D, K, Beta, C, N:\n"
                   "age of the prevalent cases, disability weight, age-weight modulation, age-weight\n"
                   "constants, prevalent cases. Writes it back with the column pyld: one year lived\n"
                   "with disability of the N cases. There is no discounting; a K strictly between 0\n"
                   "and 1 gives 0.\n\n"))};

} // namespace

} // namespace vesk::cli
