// vesk-cli convert: a table from one foreign file to another, through the program's own readers
// and writers, so that scripts can move data between the kinds the desktop program exchanges.

#include "app/cli/cli.h"
#include "inputs/foreign_file.h"
#include "platform/csv.h"

#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cmath>

namespace vesk::cli {

namespace {

// 2^53: the whole numbers up to it are doubles exactly, those beyond it not all.
constexpr double kLargestExactWhole = 9007199254740992.0;

const char* const kUsage =
    "Usage: vesk-cli convert IN OUT [--table NAME] [--out-table NAME] [--text COL]...\n"
    "\n"
    "Reads a table from IN and writes it to OUT. The kind of each file follows its extension:\n"
    "  .wk1             Lotus 1-2-3 worksheet; the table is a named range (first row: field names)\n"
    "                   (it has no logical cells: True and False come back as 1 and 0)\n"
    "  .xlsx, .xls      Excel workbook (.xls is read only); a defined name, or a sheet's name\n"
    "  .vdb .db .sqlite .mdb   database file (SQLite); the table by its name\n"
    "  .dbf             dBase table; the table is the file itself\n"
    "                   (a text keeps 254 characters, field names keep 10 bytes; a text\n"
    "                   that ends in blanks, a date with a time of day or outside the years\n"
    "                   100 to 9999, and a number no 20-character text brings back are\n"
    "                   refused)\n"
    "  .txt             text, ';' between fields, no row of field names\n"
    "                   (read back, its fields are Field0, Field1... and every value is text)\n"
    "  .csv             comma-separated values with a header row (also '-' for standard input\n"
    "                   and output)\n"
    "\n"
    "--table NAME       the table to read (worksheets and database files need it)\n"
    "--out-table NAME   the table to write; by default the one read, or the base name of OUT\n"
    "--text COL         the CSV column COL stays text even where its values read as numbers\n"
    "                   (may be given more than once)\n"
    "\n"
    "A CSV field is a number when the whole field reads as one, except a code with a leading\n"
    "zero (007, 01001), a value with blanks around it, and a whole number from 2^53 up that\n"
    "a double does not hold exactly (9007199254740993), which stay text; a blank field is\n"
    "Null. Numbers are written as the shortest text that reads back to the same double. A text\n"
    "file puts a value holding ';', a double quote or a line break between double quotes, its\n"
    "quotes doubled.\n"
    "\n"
    "A worksheet or database file that exists gets the table added to it; a table of the same\n"
    "name there is an error. Text and CSV files are replaced.\n"
    "\n"
    "A worksheet (.wk1, .xlsx) keeps the first 255 characters of a text; the rest is lost.\n";

bool isCsv(const QString& path) {
    return path == u"-" || path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
}

// Whether a field that reads as the number `v` would lose its text as one: a code with a
// leading zero, blanks around it, or a whole number beyond those a double holds exactly.
bool keepsText(const QString& field, double v) {
    if (field != field.trimmed())
        return true;
    const QStringView digits =
        QStringView(field).mid(field.startsWith(u'-') || field.startsWith(u'+') ? 1 : 0);
    if (digits.size() > 1 && digits[0] == u'0' && digits[1].isDigit())
        return true;
    const bool whole = std::all_of(digits.begin(), digits.end(), [](QChar c) { return c.isDigit(); });
    return whole && std::fabs(v) >= kLargestExactWhole && QString::number(std::fabs(v), 'f', 0) != digits;
}

// A CSV field: Null when blank; a number when the whole field reads as one and loses nothing as
// one (see keepsText), unless its column is to stay text; else text.
Cell csvCell(const QString& field, bool asText) {
    if (field.trimmed().isEmpty())
        return Cell::null();
    if (asText)
        return Cell(field);
    bool ok = false;
    const double v = field.trimmed().toDouble(&ok);
    return ok && std::isfinite(v) && !keepsText(field, v) ? Cell(v) : Cell(field);
}

// The columns that --text names, by their place in the header; false with a message when one is
// not there.
bool textColumns(const CsvTable& csv, const QString& in, const QStringList& named, QList<bool>* asText) {
    *asText = QList<bool>(csv.header.size(), false);
    for (const QString& name : named) {
        const int j = csv.column(name);
        if (j < 0) {
            err(QStringLiteral("vesk-cli convert: --text %1: %2 has no column %1").arg(name, in));
            return false;
        }
        (*asText)[j] = true;
    }
    return true;
}

QString csvText(const Cell& c) {
    if (c.isNumber() && !c.isBoolean() && !c.isDate())
        return csvNumber(c.toDouble());
    return c.toString();
}

bool readCsv(const QString& in, const QStringList& textNames, CellArray* rows, QStringList* names) {
    QString error;
    const auto csv = readCsvTable(in, &error);
    QList<bool> asText;
    if (!csv) {
        err(QStringLiteral("vesk-cli convert: %1").arg(error));
        return false;
    }
    if (!textColumns(*csv, in, textNames, &asText))
        return false;
    *names = csv->header;
    *rows = CellArray{static_cast<int>(csv->rows.size()), static_cast<int>(csv->header.size())};
    for (int i = 0; i < csv->rows.size(); ++i)
        for (int j = 0; j < csv->header.size(); ++j)
            (*rows)(i, j) = j < csv->rows[i].size() ? csvCell(csv->rows[i][j], asText[j]) : Cell::null();
    return true;
}

bool readTable(const QString& in, const QString& table, const QStringList& textNames, CellArray* rows,
               QStringList* names) {
    if (isCsv(in))
        return readCsv(in, textNames, rows, names);
    if (!textNames.isEmpty()) {
        err(QStringLiteral("vesk-cli convert: --text names columns of a CSV input, and %1 is none").arg(in));
        return false;
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
        if (lastForeignError().number == engine_error::kTooLarge)
            err(QStringLiteral("vesk-cli convert: %1").arg(lastForeignError().words));
        else
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
        // A file that cannot be written whole keeps what it held.
        QSaveFile f(out);
        const QByteArray bytes = text.toUtf8();
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit()) {
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
    QStringList textNames;
    while (const auto name = takeOption(args, QStringLiteral("--text")))
        textNames << *name;
    if (args.size() != 2 || args[0].startsWith(QLatin1String("--")) ||
        args[1].startsWith(QLatin1String("--"))) {
        err(QStringLiteral("vesk-cli convert: give IN and OUT; `vesk-cli convert --help` tells more"));
        return 2;
    }
    CellArray rows;
    QStringList names;
    if (!readTable(args[0], table, textNames, &rows, &names))
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
