// vesk-cli convert: a table from one foreign file to another, through the program's own readers
// and writers, so that scripts can move data between the kinds the desktop program exchanges.

#include "app/cli/cli.h"
#include "inputs/foreign_file.h"
#include "platform/csv.h"

#include <QFile>
#include <QFileInfo>
#include <cmath>

namespace vesk::cli {

namespace {

const char* const kUsage =
    "Usage: vesk-cli convert IN OUT [--table NAME] [--out-table NAME]\n"
    "\n"
    "Reads a table from IN and writes it to OUT. The kind of each file follows its extension:\n"
    "  .wk1             Lotus 1-2-3 worksheet; the table is a named range (first row: field names)\n"
    "  .xlsx, .xls      Excel workbook (.xls is read only); a defined name, or a sheet's name\n"
    "  .vdb .db .sqlite .mdb   database file (SQLite); the table by its name\n"
    "  .dbf             dBase table; the table is the file itself\n"
    "  .txt             text, ';' between fields, no row of field names\n"
    "  .csv             comma-separated values with a header row (also '-' for standard input\n"
    "                   and output)\n"
    "\n"
    "--table NAME       the table to read (worksheets and database files need it)\n"
    "--out-table NAME   the table to write; by default the one read, or the base name of OUT\n"
    "\n"
    "A worksheet or database file that exists gets the table added to it; a table of the same\n"
    "name there is an error. Text and CSV files are replaced.\n"
    "\n"
    "A worksheet (.wk1, .xlsx) keeps the first 255 characters of a text; the rest is lost.\n";

bool isCsv(const QString& path) {
    return path == u"-" || path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
}

// A CSV field: a number when the whole field reads as one, Null when blank, else text.
Cell csvCell(const QString& field) {
    if (field.trimmed().isEmpty())
        return Cell::null();
    bool ok = false;
    const double v = field.trimmed().toDouble(&ok);
    return ok && std::isfinite(v) ? Cell(v) : Cell(field);
}

QString csvText(const Cell& c) {
    if (c.isNumber() && !c.isBoolean() && !c.isDate())
        return csvNumber(c.toDouble());
    return c.toString();
}

bool readTable(const QString& in, const QString& table, CellArray* rows, QStringList* names) {
    if (isCsv(in)) {
        QString error;
        const auto text = readInput(in, &error);
        const auto csv = text ? parseCsv(*text, &error) : std::nullopt;
        if (!csv) {
            err(QStringLiteral("vesk-cli convert: %1").arg(error));
            return false;
        }
        *names = csv->header;
        *rows = CellArray{static_cast<int>(csv->rows.size()), static_cast<int>(csv->header.size())};
        for (int i = 0; i < csv->rows.size(); ++i)
            for (int j = 0; j < csv->header.size(); ++j)
                (*rows)(i, j) = j < csv->rows[i].size() ? csvCell(csv->rows[i][j]) : Cell::null();
        return true;
    }
    const ForeignKind kind = foreignKind(in);
    if (kind == ForeignKind::None) {
        err(QStringLiteral("vesk-cli convert: %1 is of no kind this tool reads").arg(in));
        return false;
    }
    if (!QFileInfo::exists(in)) {
        err(QStringLiteral("vesk-cli convert: %1 does not exist").arg(in));
        return false;
    }
    const bool needsName = kind == ForeignKind::Wk1 || kind == ForeignKind::Xlsx ||
                           kind == ForeignKind::Xls || kind == ForeignKind::Database;
    if (needsName && table.isEmpty()) {
        err(QStringLiteral("vesk-cli convert: name the table to read in %1 with --table").arg(in));
        return false;
    }
    *rows = FnReadArrFile(in, table, names);
    if (rows->isEmpty() && names->isEmpty()) {
        err(QStringLiteral("vesk-cli convert: %1 holds no table %2").arg(in, table));
        return false;
    }
    if (kind == ForeignKind::Text)
        for (int j = 0; j < (rows->rank() == 2 ? rows->size(1) : 0); ++j)
            *names << QStringLiteral("Field%1").arg(j);
    return true;
}

bool writeTable(const QString& out, const QString& table, const CellArray& rows, const QStringList& names) {
    const int n = rows.rank() == 2 ? rows.size(0) : 0;
    if (isCsv(out)) {
        CsvTable csv;
        csv.header = names;
        for (int i = 0; i < n; ++i) {
            QStringList fields;
            for (int j = 0; j < rows.size(1); ++j)
                fields << csvText(rows(i, j));
            csv.rows << fields;
        }
        const QString text = toCsv(csv);
        if (out == u"-") {
            cli::out(text);
            return true;
        }
        QFile f(out);
        if (!f.open(QIODevice::WriteOnly) || f.write(text.toUtf8()) < 0) {
            err(QStringLiteral("vesk-cli convert: cannot write %1").arg(out));
            return false;
        }
        return true;
    }
    if (foreignKind(out) == ForeignKind::None) {
        err(QStringLiteral("vesk-cli convert: %1 is of no kind this tool writes").arg(out));
        return false;
    }
    // A table without records still has its fields.
    CellArray body = rows;
    if (body.rank() != 2)
        body = CellArray{0, static_cast<int>(names.size())};
    if (!FnWriteArrFile(body, out, table, names)) {
        err(QStringLiteral("vesk-cli convert: %1: %2 (error %3)")
                .arg(out, lastForeignError().words)
                .arg(lastForeignError().number));
        return false;
    }
    return true;
}

int run(const QStringList& argsIn) {
    QStringList args = argsIn;
    const QString table = takeOption(args, QStringLiteral("--table")).value_or(QString());
    QString outTable = takeOption(args, QStringLiteral("--out-table")).value_or(QString());
    if (args.size() != 2 || args[0].startsWith(QLatin1String("--")) ||
        args[1].startsWith(QLatin1String("--"))) {
        err(QStringLiteral("vesk-cli convert: give IN and OUT; `vesk-cli convert --help` tells more"));
        return 2;
    }
    CellArray rows;
    QStringList names;
    if (!readTable(args[0], table, &rows, &names))
        return 1;
    if (outTable.isEmpty())
        outTable = table.isEmpty() ? QFileInfo(args[1]).completeBaseName() : table;
    return writeTable(args[1], outTable, rows, names) ? 0 : 1;
}

const Registrar
    registrar({QStringLiteral("convert"),
               QStringLiteral("copy a table between WK1, XLSX/XLS, DBF, database, text and CSV files"),
               QString::fromLatin1(kUsage), run});

} // namespace

} // namespace vesk::cli
