#include "inputs/text_file.h"

#include "inputs/codepage.h"
#include "inputs/foreign_driver.h"
#include "platform/csv.h"
#include "platform/table_limits.h"

#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vesk {

namespace {

constexpr qsizetype kMaxIndex = std::numeric_limits<int>::max();

QString fieldText(const Cell& v) {
    QString text = valueText(v);
    const bool quoted =
        text.contains(u';') || text.contains(u'"') || text.contains(u'\n') || text.contains(u'\r');
    if (!quoted)
        return text;
    text.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + text + u'"';
}

// The rows of a text as one list of fields and the index of each row's first field.
struct Fields {
    QStringList values;
    std::vector<qsizetype> rowStart;
    qsizetype widest = 0;
};

// Whether the quote at `i` closes a value: a ";", a line end or the end of the text follows it.
bool closesValue(const QString& s, qsizetype i) {
    const qsizetype n = s.size();
    if (i + 1 == n)
        return true;
    const QChar next = s[i + 1];
    return next == u';' || next == u'\n' || (next == u'\r' && (i + 2 == n || s[i + 2] == u'\n'));
}

// The closing quote of the quoted value opening at `at`, or -1 with `brokenTo` set to where the
// attempt ended: the first lone quote, or the end of the text.
qsizetype closingQuote(const QString& s, qsizetype at, qsizetype* brokenTo) {
    for (qsizetype i = at + 1; i < s.size(); ++i) {
        if (s[i] != u'"')
            continue;
        if (i + 1 < s.size() && s[i + 1] == u'"') {
            ++i;
            continue;
        }
        if (closesValue(s, i))
            return i;
        *brokenTo = i;
        return -1;
    }
    *brokenTo = s.size();
    return -1;
}

// Cuts the text into rows and fields. A field inside a quoted value that did not close reads as
// it stands without trying again, so that no character is scanned more than twice.
Fields splitFields(const QString& s) {
    Fields out;
    const qsizetype n = s.size();
    qsizetype pos = 0, brokenTo = -1, rowFirst = 0;
    auto endRow = [&] {
        out.rowStart.push_back(rowFirst);
        out.widest = std::max(out.widest, out.values.size() - rowFirst);
        rowFirst = out.values.size();
    };
    while (pos < n) {
        const qsizetype close = s[pos] == u'"' && pos > brokenTo ? closingQuote(s, pos, &brokenTo) : -1;
        if (close >= 0) {
            out.values
                << s.mid(pos + 1, close - pos - 1).replace(QStringLiteral("\"\""), QStringLiteral("\""));
            pos = close + 1;
            if (pos < n && s[pos] == u'\r')
                ++pos;
        } else {
            qsizetype end = pos;
            while (end < n && s[end] != u';' && s[end] != u'\n')
                ++end;
            QString value = s.mid(pos, end - pos);
            if (value.endsWith(u'\r') && (end == n || s[end] == u'\n'))
                value.chop(1);
            out.values << value;
            pos = end;
        }
        if (pos < n && s[pos] == u';') {
            if (++pos == n)
                out.values << QString();
            else
                continue;
        } else if (pos < n) {
            ++pos; // the line feed
        }
        endRow();
    }
    return out;
}

CellArray tableOf(const Fields& f) {
    const auto rows = static_cast<qsizetype>(f.rowStart.size());
    CellArray out{static_cast<int>(rows), static_cast<int>(f.widest)};
    for (qsizetype i = 0; i < rows; ++i) {
        const qsizetype end = i + 1 < rows ? f.rowStart[i + 1] : f.values.size();
        for (qsizetype k = f.rowStart[i]; k < end; ++k)
            out(static_cast<int>(i), static_cast<int>(k - f.rowStart[i])) = Cell(f.values[k]);
    }
    return out;
}

} // namespace

QString textTableLines(const CellArray& array) {
    QString out;
    const bool flat = array.rank() == 1;
    const int rows = array.rank() >= 1 ? array.size(0) : 0;
    const int cols = flat ? 1 : (array.rank() >= 2 ? array.size(1) : 0);
    for (int i = 0; i < rows; ++i) {
        QStringList fields;
        for (int j = 0; j < cols; ++j)
            fields << fieldText(flat ? array.at({array.lbound(0) + i})
                                     : array.at({array.lbound(0) + i, array.lbound(1) + j}));
        out += fields.join(u';') + QStringLiteral("\r\n");
    }
    return out;
}

bool writeTextTable(const QString& path, const CellArray& array, QString* error) {
    const QByteArray out = textTableLines(array).toUtf8();
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(out) != out.size() || !f.commit()) {
        *error = f.errorString();
        return false;
    }
    return true;
}

std::optional<QString> readTextContent(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = f.readAll();
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    return decodeGuessingUtf8(bytes, CodePage::Cp1252);
}

std::optional<CellArray> parseTextTable(const QString& text, const QString& source, QString* error) {
    const Fields fields = splitFields(text);
    const auto rows = static_cast<qsizetype>(fields.rowStart.size());
    if (rows == 0)
        return CellArray();
    if (!widenedRowsFit(rows, fields.widest, text.size()) || rows > kMaxIndex || fields.widest > kMaxIndex) {
        if (error)
            *error = QStringLiteral("The text file '%1' has %2 lines and one of %3 fields: its table "
                                    "would be far larger than the file, and it is not read.")
                         .arg(source)
                         .arg(rows)
                         .arg(fields.widest);
        return std::nullopt;
    }
    return tableOf(fields);
}

std::optional<CellArray> readTextTable(const QString& path, QString* error) {
    const auto text = readTextContent(path);
    if (!text)
        return std::nullopt;
    return parseTextTable(*text, path, error);
}

} // namespace vesk
