// The readers of the numeric blocks of Vesk.stp: the standard life tables of [LTS], the table of
// [OAIGD] and the interpolation panels of [PANELS]. Each opens the file on its own, finds its
// heading and reads its rows; the values stay texts, as they stand in the file, so that a rewrite
// passes them on unchanged.

#include "platform/runtime.h"
#include "foundation/settings_file.h"
#include "foundation/settings_file_io.h"
#include "platform/table_limits.h"

#include <algorithm>
#include <optional>

namespace vesk {

using stp::heading;

namespace {

QString fileOrDefault(const QString& file) {
    return file.isEmpty() ? settingsFilePath() : file;
}

// Index of the first line at or after `from` whose heading is `name`, or -1.
qsizetype findHeading(const QStringList& lines, const QString& name, qsizetype from = 0) {
    const QString wanted = heading(name);
    for (qsizetype i = from; i < lines.size(); ++i)
        if (heading(lines[i]) == wanted)
            return i;
    return -1;
}

QString& lastRefusal() {
    static QString text;
    return text;
}

// Rows of "|"-separated values as a (0..rows-1, 0..widest-1) array of text cells. A row with fewer
// values than the widest leaves its last cells Empty, and the writer leaves them out again. A
// block whose rows, so widened, would take far more cells than it has characters (one wide row
// over many short ones) is refused: std::nullopt, the refusal naming `file`.
std::optional<CellArray> rowsToTable(const QList<QStringList>& rows, const QString& file) {
    qsizetype widest = 0, characters = 0;
    for (const auto& r : rows) {
        widest = std::max(widest, r.size());
        for (const QString& value : r)
            characters += value.size() + 1;
    }
    if (!widenedRowsFit(rows.size(), widest, characters)) {
        lastRefusal() = QStringLiteral("The settings file '%1' has a block of %2 rows and one of %3 values: "
                                       "its table would be far larger than the file, and it is not read.")
                            .arg(file)
                            .arg(rows.size())
                            .arg(widest);
        return std::nullopt;
    }
    CellArray table = CellArray::fromSizes({static_cast<int>(rows.size()), static_cast<int>(widest)});
    for (int i = 0; i < rows.size(); ++i)
        for (int j = 0; j < rows[i].size(); ++j)
            table(i, j) = Cell(rows[i][j]);
    return table;
}

// Column of a life-table line by its tag, -1 for any other tag.
int ltsColumn(const QString& line) {
    const QString tag = line.left(6).toUpper();
    if (tag == QLatin1String("[BAI]:"))
        return 0;
    if (tag == QLatin1String("[EXF]:"))
        return 1;
    if (tag == QLatin1String("[EXM]:"))
        return 2;
    return -1;
}

} // namespace

bool FnReadLTS(const QString& sectionName, CellArray& table, const QString& file) {
    table = CellArray();
    lastRefusal().clear();
    QStringList lines;
    if (!stp::readLines(fileOrDefault(file), lines))
        return false;
    const qsizetype at = findHeading(lines, sectionName);
    if (at < 0)
        return false;
    CellArray t(std::vector<Bound>{{0, -1}, {0, 2}});
    for (qsizetype k = at + 1; k <= at + 3 && k < lines.size(); ++k) {
        const int column = ltsColumn(lines[k]);
        if (column < 0)
            break;
        const QStringList values = Mid(lines[k], 7).split(u'|');
        if (values.size() > t.size(0))
            t.redim({{0, static_cast<int>(values.size()) - 1}, {0, 2}}, true);
        for (int j = 0; j < values.size(); ++j)
            t(j, column) = Cell(values[j]);
    }
    if (t.size(0) == 0)
        return false;
    table = std::move(t);
    return true;
}

bool FnReadOAIGD(CellArray& table, const QString& file) {
    table = CellArray();
    lastRefusal().clear();
    QStringList lines;
    if (!stp::readLines(fileOrDefault(file), lines))
        return false;
    const qsizetype at = findHeading(lines, QStringLiteral("[OAIGD]"));
    if (at < 0)
        return false;
    // The rule under the heading has 28 hyphens and is skipped; the rows end at a rule of 27.
    QList<QStringList> rows;
    for (qsizetype k = at + 2; k < lines.size() && lines[k] != stp::kRule27; ++k)
        rows << lines[k].split(u'|');
    auto built = rows.isEmpty() ? std::nullopt : rowsToTable(rows, fileOrDefault(file));
    if (!built)
        return false;
    table = std::move(*built);
    return true;
}

bool FnReadPanel(int panel, CellArray& table, const QString& file) {
    table = CellArray();
    lastRefusal().clear();
    QStringList lines;
    if (panel < 0 || panel > 4 || !stp::readLines(fileOrDefault(file), lines))
        return false;
    const qsizetype at = findHeading(lines, QStringLiteral("[PANEL %1]").arg(panel));
    if (at < 0)
        return false;
    // Panels 0 to 3 end at the next heading, panel 4 at the closing rule; a rule also ends the
    // earlier ones, so that a damaged file never hands a rule on as a row.
    QList<QStringList> rows;
    for (qsizetype k = at + 1; k < lines.size(); ++k) {
        const QString& line = lines[k];
        if (line == stp::kRule27 || (panel < 4 && stp::Trim(line).startsWith(u'[')))
            break;
        rows << line.split(u'|');
    }
    auto built = rows.isEmpty() ? std::nullopt : rowsToTable(rows, fileOrDefault(file));
    if (!built)
        return false;
    table = std::move(*built);
    return true;
}

QString settingsBlockRefusal() {
    return lastRefusal();
}

bool FnReadPanel0(CellArray& table, const QString& file) {
    return FnReadPanel(0, table, file);
}
bool FnReadPanel1(CellArray& table, const QString& file) {
    return FnReadPanel(1, table, file);
}
bool FnReadPanel2(CellArray& table, const QString& file) {
    return FnReadPanel(2, table, file);
}
bool FnReadPanel3(CellArray& table, const QString& file) {
    return FnReadPanel(3, table, file);
}
bool FnReadPanel4(CellArray& table, const QString& file) {
    return FnReadPanel(4, table, file);
}

} // namespace vesk
