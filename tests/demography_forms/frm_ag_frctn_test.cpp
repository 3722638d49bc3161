// The fraction of the age interval as a user types it: digits and one full stop, a fraction outside
// 0 to 1 cleared on Enter, and OK handing each group's exact age to the grid that opened the form.

#include "demography/forms/frm_ag_frctn.h"
#include "grid_gestures.h"
#include "screenshots.h"

#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

class FractionForm : public QObject {
    Q_OBJECT

    // Types into a body cell of a directly edited grid, key by key, and presses Enter.
    static void typeDirect(FlexGridView* view, int row, int col, const QString& keys) {
        clickCell(view, row, col);
        view->setFocus();
        QTest::keyClicks(view, keys);
        QTest::keyClick(view, Qt::Key_Return);
    }

private slots:
    void fractionsGiveExactAges() {
        QList<QPair<int, double>> written;
        auto* w = new FrmAGFrctn({"F0-4", "M5-9", "M80-w"}, [&](int row, double age) { written << qMakePair(row, age); });
        w->show();
        typeDirect(w->grdFrction, 0, 0, "0.5");
        typeDirect(w->grdFrction, 1, 0, "1.5");
        QCOMPARE(w->grid().textMatrix(2, 1), QString()); // outside 0 to 1: cleared
        QCOMPARE(w->grid().row(), 2);                   // and left to be typed again
        typeDirect(w->grdFrction, 1, 0, "a.2.5");       // letters dropped, one full stop only
        QCOMPARE(w->grid().textMatrix(2, 1), QStringLiteral("0.25")); // Enter writes the number it reads
        typeDirect(w->grdFrction, 2, 0, "0.7");
        QTemporaryDir dir;
        QVERIFY(w->grab().toImage().save(screenshotFolder(dir) + "/fraction_of_age_interval.png"));
        QTest::mouseClick(w->cmdOK, Qt::LeftButton);
        QCOMPARE(written, (QList<QPair<int, double>>{{0, 2.5}, {1, 5 + 0.25 * 5}, {2, 80.0}}));
    }

    void cancelWritesNothing() {
        int writes = 0;
        auto* w = new FrmAGFrctn({"F0-4"}, [&](int, double) { ++writes; });
        w->show();
        typeDirect(w->grdFrction, 0, 0, "0.5");
        QTest::mouseClick(w->cmdCancel, Qt::LeftButton);
        QCOMPARE(writes, 0);
    }
};

QTEST_MAIN(FractionForm)
#include "frm_ag_frctn_test.moc"
