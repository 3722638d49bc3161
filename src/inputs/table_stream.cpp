#include "inputs/table_stream.h"

#include "platform/csv.h"

#include <QList>

namespace vesk {

namespace {

QByteArray escaped(const QString& text) {
    QByteArray out;
    for (const char c : text.toUtf8()) {
        if (c == '\\')
            out += "\\\\";
        else if (c == '\n')
            out += "\\n";
        else if (c == '\r')
            out += "\\r";
        else
            out += c;
    }
    return out;
}

std::optional<QString> unescaped(QByteArrayView s) {
    QByteArray out;
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (s[i] != '\\') {
            out += s[i];
            continue;
        }
        if (++i == s.size())
            return std::nullopt;
        if (s[i] == 'n')
            out += '\n';
        else if (s[i] == 'r')
            out += '\r';
        else if (s[i] == '\\')
            out += '\\';
        else
            return std::nullopt;
    }
    return QString::fromUtf8(out);
}

QByteArray cellLine(const Cell& c) {
    if (c.isEmpty() || c.isNull())
        return "-";
    if (c.isNumber())
        return (c.isDate() ? "D" : "N") + shortestNumber(c.toDouble()).toLatin1();
    return "T" + escaped(c.toString());
}

std::optional<Cell> cellOf(QByteArrayView line) {
    if (line == "-")
        return Cell::null();
    if (line.isEmpty())
        return std::nullopt;
    const QByteArrayView rest = line.sliced(1);
    if (line[0] == 'T') {
        const auto text = unescaped(rest);
        return text ? std::optional<Cell>(Cell(*text)) : std::nullopt;
    }
    bool ok = false;
    const double v = QString::fromLatin1(rest).toDouble(&ok);
    if (!ok)
        return std::nullopt;
    if (line[0] == 'N')
        return Cell(v);
    if (line[0] == 'D')
        return Cell::date(v);
    return std::nullopt;
}

} // namespace

QByteArray encodeTable(const ForeignTable& table) {
    const int records = table.rowCount(), fields = int(table.fieldNames.size());
    QByteArray out = "VESK-TABLE " + QByteArray::number(records) + ' ' + QByteArray::number(fields) + '\n';
    for (const QString& name : table.fieldNames)
        out += 'F' + escaped(name) + '\n';
    for (int i = 0; i < records; ++i)
        for (int j = 0; j < fields; ++j) {
            const bool inside = j < table.rows.size(1);
            out += cellLine(inside ? table.rows(table.rows.lbound(0) + i, table.rows.lbound(1) + j) : Cell::null());
            out += '\n';
        }
    return out;
}

std::optional<ForeignTable> decodeTable(const QByteArray& stream, QString* error) {
    auto fail = [&](const QString& why) -> std::optional<ForeignTable> {
        if (error)
            *error = why;
        return std::nullopt;
    };
    const QList<QByteArray> lines = stream.split('\n');
    const QList<QByteArray> head = lines.value(0).split(' ');
    bool okRecords = false, okFields = false;
    const qint64 records = head.value(1).toLongLong(&okRecords), fields = head.value(2).toLongLong(&okFields);
    if (head.size() != 3 || head[0] != "VESK-TABLE" || !okRecords || !okFields || records < 0 || fields < 0)
        return fail(QStringLiteral("the table stream has no head"));
    // The lines after the head, less the empty one after the last line end.
    const qint64 present = lines.size() - 2;
    if (fields > present || (fields > 0 && records > (present - fields) / fields) ||
        present != fields + records * fields)
        return fail(QStringLiteral("the table stream does not hold the cells its head claims"));
    ForeignTable t;
    for (qint64 j = 0; j < fields; ++j) {
        const QByteArray& line = lines[1 + j];
        const auto name = line.startsWith('F') ? unescaped(QByteArrayView(line).sliced(1)) : std::nullopt;
        if (!name)
            return fail(QStringLiteral("a field name of the table stream is damaged"));
        t.fieldNames << *name;
    }
    if (records > 0 && fields > 0)
        t.rows = CellArray{int(records), int(fields)};
    for (qint64 i = 0; i < records; ++i)
        for (qint64 j = 0; j < fields; ++j) {
            const auto cell = cellOf(lines[1 + fields + i * fields + j]);
            if (!cell)
                return fail(QStringLiteral("a cell of the table stream is damaged"));
            t.rows(int(i), int(j)) = *cell;
        }
    return t;
}

} // namespace vesk
