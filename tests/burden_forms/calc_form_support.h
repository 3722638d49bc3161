#pragma once
// Driving the calculators' grids as a user does: open a cell's editor, type, press Enter; click a
// cell; read what a cell and a head show; the settings the calculators read.

#include "grid_gestures.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "straight_life_table.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

namespace vesk::test {

// The settings the calculators read, and a clean error store with its log in `statOut`.
inline void calculatorSettings(const QString& statOut) {
    settings().StatOutPath = statOut + QStringLiteral("/");
    settings().MtxLTSKRO = straightLifeTable();
    settings().LifeTblType = 1;
    settings().ToolDecPlcs = 2;
    clearErrorStore();
}

// Opens the editor of a cell as a double click would, and returns it.
inline QLineEdit* openEditor(QTableView* view, int row, int column) {
    const QModelIndex index = view->model()->index(row, column);
    view->scrollTo(index);
    view->setCurrentIndex(index);
    view->edit(index);
    for (QLineEdit* e : view->viewport()->findChildren<QLineEdit*>())
        if (e->isVisible())
            return e;
    return nullptr;
}

// Types `text` into a cell and presses Enter; false when no editor opened.
inline bool typeCell(QTableView* view, int row, int column, const QString& text) {
    QLineEdit* editor = openEditor(view, row, column);
    if (!editor)
        return false;
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    return true;
}

// Types a row of inputs into a calculator's sheet, from its first input column.
inline void typeInputs(QTableView* sheet, int row, const QStringList& values) {
    for (int c = 0; c < values.size(); ++c)
        QVERIFY(typeCell(sheet, row, c + 1, values[c]));
}

// A result as the sheet shows it with two decimals.
inline QString fixed(double v) {
    return formatNumber(v, QStringLiteral("##.00"));
}

inline QString cellText(QTableView* view, int row, int column) {
    return view->model()->index(row, column).data().toString();
}

inline QString head(QTableView* view, int column) {
    return view->model()->headerData(column, Qt::Horizontal).toString();
}

// The column of a head, -1 when none.
inline int columnOf(QTableView* view, const QString& text) {
    for (int c = 0; c < view->model()->columnCount(); ++c)
        if (head(view, c) == text)
            return c;
    return -1;
}

} // namespace vesk::test
