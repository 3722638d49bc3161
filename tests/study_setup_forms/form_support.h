#pragma once
// Driving DEFINESTUDY1 as a user does: by object names, with the mouse on grid cells and the
// keyboard in fields and grids.

#include "grid_gestures.h"
#include "study/forms/definestudy1.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QtTest>

namespace vesk::test {

// Types `text` into the body cell (row, 0) of a one-column grid and presses Enter.
inline void typeAge(FlexGridView* view, int row, const QString& text) {
    clickCell(view, row, 0);
    view->setFocus();
    QTest::keyClicks(view, text);
    QTest::keyClick(view, Qt::Key_Return);
}

// Types each age into its row, pressing Enter after each (Enter on the last row adds one).
inline void typeAges(FlexGridView* view, const QStringList& ages) {
    for (int i = 0; i < ages.size(); ++i)
        typeAge(view, i, ages[i]);
}

// Replaces a field's text by typing.
inline void typeField(QLineEdit* edit, const QString& text) {
    edit->setFocus();
    edit->clear();
    QTest::keyClicks(edit, text);
}

// The texts of a one-column grid's body.
inline QStringList gridColumn(const GridModel& g, int col = 0) {
    QStringList out;
    for (int r = g.fixedRows(); r < g.rows(); ++r)
        out << g.textMatrix(r, col);
    return out;
}

} // namespace vesk::test
