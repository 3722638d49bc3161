// The CSV tables the commands read: parsed, and refused when their shape would take far more
// memory than the text (one wide line over many short ones pads every row to its width).

#include "app/cli/cli.h"
#include "platform/table_limits.h"

#include <algorithm>

namespace vesk::cli {

namespace {

QString inputName(const QString& path) {
    return path.isEmpty() || path == u"-" ? QStringLiteral("standard input") : path;
}

} // namespace

std::optional<CsvTable> readCsvTable(const QString& path, QString* error) {
    const auto text = readInput(path, error);
    if (!text)
        return std::nullopt;
    auto csv = parseCsv(*text, error);
    if (!csv) {
        *error = inputName(path) + QStringLiteral(": ") + *error;
        return std::nullopt;
    }
    qsizetype widest = csv->header.size();
    for (const QStringList& row : csv->rows)
        widest = std::max(widest, row.size());
    if (!widenedRowsFit(csv->rows.size(), widest, text->size())) {
        *error = QStringLiteral("%1 has %2 rows and one of %3 fields: its table would be far larger "
                                "than the file, and it is not read")
                     .arg(inputName(path))
                     .arg(csv->rows.size())
                     .arg(widest);
        return std::nullopt;
    }
    return csv;
}

} // namespace vesk::cli
