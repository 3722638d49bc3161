#pragma once
// Comma-separated tables for the command-line tool: a header row naming the columns, fields in
// double quotes where they hold a comma, a quote or a line break (RFC 4180).

#include <QString>
#include <QStringList>
#include <optional>

namespace vesk {

struct CsvTable {
    QStringList header;
    QList<QStringList> rows;
    // Index of a column by its name, compared case-blind; -1 when absent.
    int column(const QString& name) const;
};

// Parses the text; std::nullopt with `error` set when a quoted field is not closed.
std::optional<CsvTable> parseCsv(const QString& text, QString* error = nullptr);
QString csvField(const QString& value);
QString csvLine(const QStringList& fields);
QString toCsv(const CsvTable& table);
// The shortest text that reads back to the same double (std::to_chars): 0.1, 123456789012,
// 1e+300. Text files write it where the runtime's fifteen digits would not do.
QString shortestNumber(double value);
// Numbers for other programs, in that shortest form.
QString csvNumber(double value);

} // namespace vesk
