#include "inputs/text_file.h"

#include "inputs/codepage.h"

#include <QFile>
#include <QSaveFile>

namespace vesk {

bool writeTextTable(const QString& path, const CellArray& array, QString* error) {
    QByteArray out;
    const bool flat = array.rank() == 1;
    const int rows = array.rank() >= 1 ? array.size(0) : 0;
    const int cols = flat ? 1 : (array.rank() >= 2 ? array.size(1) : 0);
    for (int i = 0; i < rows; ++i) {
        QStringList fields;
        for (int j = 0; j < cols; ++j)
            fields << (flat ? array.at({array.lbound(0) + i})
                            : array.at({array.lbound(0) + i, array.lbound(1) + j}))
                          .toString();
        out += fields.join(u';').toUtf8() + "\r\n";
    }
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(out) != out.size() || !f.commit()) {
        *error = f.errorString();
        return false;
    }
    return true;
}

std::optional<CellArray> readTextTable(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = f.readAll();
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    const QString text = decodeGuessingUtf8(bytes, CodePage::Cp1252);
    QStringList lines = text.split(u'\n');
    // A last line end closes the last line; it does not open another.
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    QList<QStringList> rows;
    int cols = 0;
    for (QString line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        rows << line.split(u';');
        cols = std::max(cols, static_cast<int>(rows.last().size()));
    }
    if (rows.isEmpty())
        return CellArray();
    CellArray out{static_cast<int>(rows.size()), cols};
    for (int i = 0; i < rows.size(); ++i)
        for (int j = 0; j < rows[i].size(); ++j)
            out(i, j) = Cell(rows[i][j]);
    return out;
}

} // namespace vesk
