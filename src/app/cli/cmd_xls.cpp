// vesk-cli xls-table FILE NAME: the child reader of legacy .xls workbooks. It opens FILE through
// freexl and writes the table NAME (a defined name, or a sheet's name) to standard output as a
// table stream (inputs/table_stream.h). The program runs it in a child process with memory and
// time limits, so that a damaged workbook ends this process, never the program.

#include "app/cli/cli.h"
#include "inputs/table_stream.h"
#include "inputs/xls_workbook.h"

#include <cstdio>

namespace vesk::cli {

namespace {

int xlsTable(const QStringList& args) {
    if (args.size() != 2) {
        err(QStringLiteral("vesk-cli xls-table: FILE and NAME are needed; `vesk-cli xls-table --help` tells more"));
        return 2;
    }
    XlsWorkbook book;
    if (!book.open(args[0])) {
        err(lastForeignError().words);
        return 1;
    }
    const auto table = book.readTable(args[1]);
    if (!table)
        return 3;
    const QByteArray stream = encodeTable(*table);
    return std::fwrite(stream.constData(), 1, size_t(stream.size()), stdout) == size_t(stream.size()) ? 0 : 1;
}

const Registrar xlsTableCommand({
    QStringLiteral("xls-table"),
    QStringLiteral("read one table of a legacy .xls workbook as a table stream (the program's child reader)"),
    QStringLiteral("Usage: vesk-cli xls-table FILE NAME\n\n"
                   "Writes the table NAME of the .xls workbook FILE (a defined name, or a sheet's name\n"
                   "for its used area) to standard output: a head line \"VESK-TABLE <records> <fields>\",\n"
                   "a line \"F<name>\" per field, then a line per cell (\"-\" Null, \"N\" number, \"D\" date\n"
                   "serial, \"T\" text with \\\\, \\n and \\r escaped). Exit 0, 3 when the workbook has no\n"
                   "such table, 1 on a workbook that cannot be read (the reason on standard error).\n"),
    xlsTable,
});

} // namespace

} // namespace vesk::cli
