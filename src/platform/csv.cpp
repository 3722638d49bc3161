#include "platform/csv.h"

#include <charconv>

namespace vesk {

int CsvTable::column(const QString& name) const {
    for (int i = 0; i < header.size(); ++i)
        if (header[i].trimmed().compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

std::optional<CsvTable> parseCsv(const QString& text, QString* error) {
    QList<QStringList> records;
    QStringList record;
    QString field;
    bool quoted = false, fieldStarted = false;
    auto endField = [&] {
        record << field;
        field.clear();
        fieldStarted = false;
    };
    auto endRecord = [&] {
        endField();
        if (!(record.size() == 1 && record[0].isEmpty()))
            records << record;
        record.clear();
    };
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c == u'"') {
                if (i + 1 < text.size() && text[i + 1] == u'"') {
                    field += u'"';
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                field += c;
            }
        } else if (c == u'"' && !fieldStarted) {
            quoted = true;
            fieldStarted = true;
        } else if (c == u',') {
            endField();
        } else if (c == u'\n') {
            endRecord();
        } else if (c == u'\r') {
            // part of a CR LF ending
        } else {
            field += c;
            fieldStarted = true;
        }
    }
    if (quoted) {
        if (error)
            *error = QStringLiteral("a quoted field is not closed");
        return std::nullopt;
    }
    if (fieldStarted || !field.isEmpty() || !record.isEmpty())
        endRecord();
    CsvTable t;
    if (!records.isEmpty()) {
        t.header = records.takeFirst();
        t.rows = records;
    }
    return t;
}

QString csvField(const QString& value) {
    if (value.contains(u',') || value.contains(u'"') || value.contains(u'\n') || value.contains(u'\r')) {
        QString v = value;
        v.replace(QStringLiteral("\""), QStringLiteral("\"\""));
        return u'"' + v + u'"';
    }
    return value;
}

QString csvLine(const QStringList& fields) {
    QStringList out;
    for (const auto& f : fields)
        out << csvField(f);
    return out.join(u',');
}

QString toCsv(const CsvTable& table) {
    QString s = csvLine(table.header) + u'\n';
    for (const auto& r : table.rows)
        s += csvLine(r) + u'\n';
    return s;
}

QString shortestNumber(double value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return QString::fromLatin1(text, result.ptr - text);
}

QString csvNumber(double value) {
    return shortestNumber(value);
}

} // namespace vesk
