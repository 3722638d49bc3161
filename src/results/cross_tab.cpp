#include "results/cross_tab.h"

#include "platform/prompts.h"
#include "platform/texts.h"
#include "results/results_texts.h"

#include <QHash>
#include <QStringList>
#include <vector>

namespace vesk {

namespace rt = results_texts;

namespace {

// The carried column indices of `carry`, each refused name shown.
std::vector<int> carriedColumns(const CellArray& table, const QString& carry) {
    std::vector<int> out;
    for (const QString& part : carry.split(u',', Qt::SkipEmptyParts)) {
        bool ok = false;
        const int k = part.trimmed().toInt(&ok);
        if (!ok || k < 0 || k >= table.size(1)) {
            prompts().ask(text(rt::kCannotAddColumn) + part.trimmed());
            continue;
        }
        out.push_back(k);
    }
    return out;
}

// The distinct keys of column `k` in the order met, and the index of each.
QStringList keysOf(const CellArray& table, int k, QHash<QString, int>& index, std::vector<int>* counts = nullptr) {
    QStringList keys;
    for (int r = 0; r < table.size(0); ++r) {
        const QString key = table(table.lbound(0) + r, table.lbound(1) + k).toString();
        auto it = index.constFind(key);
        if (it == index.cend()) {
            it = index.insert(key, int(keys.size()));
            keys << key;
            if (counts)
                counts->push_back(0);
        }
        if (counts)
            ++(*counts)[std::size_t(*it)];
    }
    return keys;
}

} // namespace

Cell FnCrossTab(const CellArray& table, int rowKey, int columnKey, bool heads, const QString& carry) {
    if (table.rank() != 2 || rowKey < 0 || columnKey < 0 || rowKey >= table.size(1) || columnKey >= table.size(1))
        return Cell();
    QHash<QString, int> rowIndex, columnIndex;
    std::vector<int> counts;
    const QStringList rows = keysOf(table, rowKey, rowIndex, &counts);
    for (int c : counts)
        if (c != counts.front()) {
            prompts().ask(text(rt::kTransposeNotEqual));
            return Cell();
        }
    const QStringList columns = keysOf(table, columnKey, columnIndex);
    const std::vector<int> carried = carriedColumns(table, carry);
    const int width = 1 + int(columns.size() * qsizetype(carried.size()));
    const int top = heads ? 1 : 0;
    CellArray out({int(rows.size()) + top, width});
    if (heads)
        for (int c = 0; c < columns.size(); ++c)
            for (std::size_t k = 0; k < carried.size(); ++k)
                out(0, 1 + c * int(carried.size()) + int(k)) = Cell(columns[c]);
    for (int r = 0; r < rows.size(); ++r)
        out(top + r, 0) = Cell(rows[r]);
    for (int r = 0; r < table.size(0); ++r) {
        const int i = table.lbound(0) + r, j = table.lbound(1);
        const int row = rowIndex.value(table(i, j + rowKey).toString());
        const int column = columnIndex.value(table(i, j + columnKey).toString());
        for (std::size_t k = 0; k < carried.size(); ++k)
            out(top + row, 1 + column * int(carried.size()) + int(k)) = table(i, j + carried[k]);
    }
    return Cell(std::move(out));
}

} // namespace vesk
