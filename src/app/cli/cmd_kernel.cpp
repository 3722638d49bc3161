// vesk-cli yll, iyld, pyld: the burden kernel applied to the rows of a CSV table.

#include "app/cli/cli.h"
#include "burden/kernel.h"
#include "platform/csv.h"
#include "shell/error_store.h"

#include <QHash>

#include <functional>
#include <optional>

namespace vesk::cli {

namespace {

// The inputs of one row, by column name.
struct RowInputs {
    QHash<QString, float> number;
    Cell Beta, C;
};

struct KernelCommand {
    QString name;
    QString resultColumn;
    QStringList numbers; // single-float inputs, in the kernel's order
    std::function<double(const RowInputs&)> compute;
};

float in(const RowInputs& r, const char* name) { return r.number.value(QString::fromLatin1(name)); }

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

struct Table {
    CsvTable csv;
    QHash<QString, int> columns; // input name -> index
};

int missingColumn(const QString& command, const QString& name) {
    err(QStringLiteral("vesk-cli %1: the input has no column '%2'; `vesk-cli %1 --help` lists the columns")
            .arg(command, name));
    return 2;
}

// Reads the rows' inputs; on a field that is no number, says which and gives up.
std::optional<QList<RowInputs>> readRows(const KernelCommand& cmd, const Table& t) {
    QList<RowInputs> rows;
    for (int i = 0; i < t.csv.rows.size(); ++i) {
        const QStringList& fields = t.csv.rows[i];
        RowInputs row;
        for (const QString& name : cmd.numbers) {
            const QString text = fields.value(t.columns.value(name));
            const auto v = parseNumber(text);
            if (!v) {
                err(QStringLiteral("vesk-cli %1: row %2, column '%3': '%4' is not a number")
                        .arg(cmd.name)
                        .arg(i + 1)
                        .arg(name, text));
                return std::nullopt;
            }
            row.number.insert(name, *v);
        }
        row.Beta = dynamicCell(fields.value(t.columns.value(QStringLiteral("Beta"))));
        row.C = dynamicCell(fields.value(t.columns.value(QStringLiteral("C"))));
        rows << row;
    }
    return rows;
}

int runKernelCommand(const KernelCommand& cmd, QStringList args) {
    if (args.size() > 1 || (args.size() == 1 && args[0].startsWith(QLatin1String("--")))) {
        err(QStringLiteral("vesk-cli %1: unexpected arguments: %2; `vesk-cli %1 --help` tells the usage")
                .arg(cmd.name, args.join(u' ')));
        return 2;
    }
    QString error;
    const auto text = readInput(args.value(0), &error);
    if (!text) {
        err(QStringLiteral("vesk-cli %1: %2").arg(cmd.name, error));
        return 2;
    }
    Table t;
    const auto csv = parseCsv(*text, &error);
    if (!csv) {
        err(QStringLiteral("vesk-cli %1: %2").arg(cmd.name, error));
        return 2;
    }
    t.csv = *csv;
    QStringList needed = cmd.numbers;
    needed << QStringLiteral("Beta") << QStringLiteral("C");
    for (const QString& name : needed) {
        const int k = t.csv.column(name);
        if (k < 0)
            return missingColumn(cmd.name, name);
        t.columns.insert(name, k);
    }
    const auto rows = readRows(cmd, t);
    if (!rows)
        return 2;

    setErrorLogEnabled(false);
    bool anyError = false;
    CsvTable output;
    output.header = QStringList(t.csv.header) << cmd.resultColumn;
    for (int i = 0; i < rows->size(); ++i) {
        clearErrorStore();
        const double value = cmd.compute(rows->at(i));
        QStringList fields = t.csv.rows[i];
        while (fields.size() < t.csv.header.size())
            fields << QString();
        output.rows << (fields << csvNumber(value));
        for (int e = 0; e < errorStoreCount(); ++e) {
            const CellArray& store = ErrStore().array();
            err(QStringLiteral("row %1: error %2: %3 (%4)")
                    .arg(i + 1)
                    .arg(store(e, 0).toString(), store(e, 1).toString(), store(e, 2).toString()));
            anyError = true;
        }
    }
    out(toCsv(output));
    return anyError ? 1 : 0;
}

const QString kExitText = QStringLiteral(
    "Columns are found by name, in any order and any case; other columns pass through unchanged.\n"
    "An empty Beta or C is the empty string, which skips the checks of Beta and C.\n"
    "Output: the input rows with the result column added, numbers at full precision.\n"
    "Errors the kernel stores (bad parameters, division by zero, overflow) go to standard error,\n"
    "one line each with its row and number; the row's result is still written.\n"
    "Exit status: 0 without stored errors, 1 when the kernel stored any, 2 on unusable input.\n");

const KernelCommand kYll{
    QStringLiteral("yll"), QStringLiteral("yll"),
    {QStringLiteral("a"), QStringLiteral("L"), QStringLiteral("r"), QStringLiteral("K")},
    [](const RowInputs& r) { return FnYLLF(in(r, "a"), in(r, "L"), in(r, "r"), in(r, "K"), r.Beta, r.C); }};

const KernelCommand kIyld{QStringLiteral("iyld"),
                          QStringLiteral("iyld"),
                          {QStringLiteral("a"), QStringLiteral("L"), QStringLiteral("D"), QStringLiteral("r"),
                           QStringLiteral("K"), QStringLiteral("N")},
                          [](const RowInputs& r) {
                              return double(FnlYLD(in(r, "a"), in(r, "L"), in(r, "D"), in(r, "r"),
                                                   in(r, "K"), r.Beta, r.C, in(r, "N")));
                          }};

const KernelCommand kPyld{
    QStringLiteral("pyld"), QStringLiteral("pyld"),
    {QStringLiteral("a"), QStringLiteral("D"), QStringLiteral("K"), QStringLiteral("N")},
    [](const RowInputs& r) {
        return double(FnPYLD(in(r, "a"), in(r, "D"), in(r, "K"), r.Beta, r.C, in(r, "N")));
    }};

const Registrar yllCommand{
    {QStringLiteral("yll"), QStringLiteral("years of life lost per death (FnYLLF) for each row of a CSV"),
     QStringLiteral("Usage: vesk-cli yll [FILE]\n\n"
                    "Reads a CSV table (FILE, or standard input) with the columns a, L, r, K, Beta, C:\n"
                    "age at death, standard life expectancy at that age, discount rate, age-weight\n"
                    "modulation, age-weight constants. Writes it back with the column yll: the\n"
                    "discounted, age-weighted years of life lost by ONE death.\n\n") +
         kExitText,
     [](const QStringList& args) { return runKernelCommand(kYll, args); }}};

const Registrar iyldCommand{
    {QStringLiteral("iyld"), QStringLiteral("incidence-based years lived with disability (FnlYLD) per row"),
     QStringLiteral("Usage: vesk-cli iyld [FILE]\n\n"
                    "Reads a CSV table (FILE, or standard input) with the columns a, L, D, r, K, Beta,\n"
                    "C, N: age at onset, duration, disability weight, discount rate, age-weight\n"
                    "modulation, age-weight constants, incident cases. Writes it back with the column\n"
                    "iyld: the years lived with disability of the N cases.\n\n") +
         kExitText,
     [](const QStringList& args) { return runKernelCommand(kIyld, args); }}};

const Registrar pyldCommand{
    {QStringLiteral("pyld"), QStringLiteral("prevalence-based years lived with disability (FnPYLD) per row"),
     QStringLiteral("Usage: vesk-cli pyld [FILE]\n\n"
                    "Reads a CSV table (FILE, or standard input) with the columns a, D, K, Beta, C, N:\n"
                    "age of the prevalent cases, disability weight, age-weight modulation, age-weight\n"
                    "constants, prevalent cases. Writes it back with the column pyld: one year lived\n"
                    "with disability of the N cases. There is no discounting; a K strictly between 0\n"
                    "and 1 gives 0.\n\n") +
         kExitText,
     [](const QStringList& args) { return runKernelCommand(kPyld, args); }}};

} // namespace

} // namespace vesk::cli
