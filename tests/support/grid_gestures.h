#pragma once
// The user's gestures on a grid, shared by the form tests: a click on a body cell, typing into a
// cell through the grid's cell box, a whole row, the Delete key, and the grid's texts read back.

#include "platform/forms/flex_grid_view.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QLineEdit>
#include <QStringList>
#include <QtTest>

namespace vesk::test {

// A click on the body cell (row, col), counted from the first body row and column.
inline void clickCell(QAbstractItemView* view, int row, int col) {
    QCoreApplication::processEvents(); // a page just shown is laid out first
    const QModelIndex index = view->model()->index(row, col);
    view->scrollTo(index);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
}

// Clicks the cell, presses Enter, types `text` into the cell box and presses Enter.
inline void typeCell(FlexGridView* view, int row, int col, const QString& text) {
    clickCell(view, row, col);
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Return);
    QLineEdit* box = view->cellBox();
    box->clear();
    QTest::keyClicks(box, text);
    QTest::keyClick(box, Qt::Key_Return);
}

// Types a whole row from column 0 on.
inline void typeRow(FlexGridView* view, int row, const QStringList& texts) {
    for (int c = 0; c < texts.size(); ++c)
        typeCell(view, row, c, texts[c]);
}

// Presses Delete on the grid.
inline void pressDelete(QAbstractItemView* view) {
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Delete);
}

// The body texts of a grid, columns joined by "|", blank rows left out.
inline QStringList gridTexts(const QAbstractItemView* view) {
    QStringList out;
    const QAbstractItemModel* m = view->model();
    for (int r = 0; r < m->rowCount(); ++r) {
        QStringList row;
        bool any = false;
        for (int c = 0; c < m->columnCount(); ++c) {
            const QString t = m->data(m->index(r, c)).toString();
            any = any || !t.isEmpty();
            row << t;
        }
        if (any)
            out << row.join(u'|');
    }
    return out;
}

} // namespace vesk::test
