#pragma once
// What the calculators print and save: the caption, the user's identification and cause, then each
// grid under its title, heads first, cells as shown. Saved as text with ";" between fields and CR LF
// line ends; printed from the same content laid out as a table.

#include <QAbstractItemModel>
#include <QString>
#include <vector>

namespace vesk {

struct CalculatorGrid {
    QString title;
    const QAbstractItemModel* model = nullptr;
};

struct CalculatorSheet {
    QString caption;
    QString userIdentification;
    QString cause;
    std::vector<CalculatorGrid> grids;
};

// The text file: one line per row, fields separated by ";".
QString calculatorSaveText(const CalculatorSheet& sheet);
// Writes the text (UTF-8); false with the reason in `error` when the file cannot be written.
bool writeCalculatorFile(const QString& path, const QString& text, QString* error);
// The same content as an HTML document for printing.
QString calculatorPrintHtml(const CalculatorSheet& sheet);

} // namespace vesk
