// The common grid as a user meets it: keys typed into the view, a block dragged with the mouse,
// the cell box laid over a cell.

#include "inputs/grid_functions.h"
#include "platform/forms/flex_grid_view.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QtTest>

using namespace vesk;

namespace {
CellArray numbers(int rows, int cols) {
    CellArray a{rows, cols};
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < cols; ++j)
            a(i, j) = Cell(i * cols + j + 1);
    return a;
}
} // namespace

class FlexGridViewTest : public QObject {
    Q_OBJECT

private:
    GridModel* grid_ = nullptr;
    FlexGridView* view_ = nullptr;

    QPoint centre(int bodyRow, int bodyCol) const {
        return view_->visualRect(grid_->index(bodyRow, bodyCol)).center();
    }

    // A press, a move with the button held, a release: a drag as the mouse makes it.
    void drag(QPoint from, QPoint to) {
        QWidget* vp = view_->viewport();
        QTest::mousePress(vp, Qt::LeftButton, Qt::NoModifier, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), vp->mapToGlobal(QPointF(to)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &move);
        QTest::mouseRelease(vp, Qt::LeftButton, Qt::NoModifier, to);
    }

private slots:
    void init() {
        grid_ = new GridModel;
        view_ = new FlexGridView;
        view_->setGrid(grid_);
        view_->resize(600, 400);
        view_->show();
        QVERIFY(QTest::qWaitForWindowExposed(view_));
    }
    void cleanup() {
        delete view_;
        delete grid_;
    }

    void nullShowsEmptyAndZeroShowsZero() {
        CellArray a{1, 3};
        a(0, 0) = Cell::null();
        a(0, 1) = Cell(0);
        a(0, 2) = Cell(2.5);
        FnArrToGrid(a, *grid_);
        QAbstractItemModel* m = view_->model();
        QCOMPARE(m->rowCount(), 1);
        QCOMPARE(m->columnCount(), 3);
        QCOMPARE(m->data(m->index(0, 0)).toString(), QString());
        QCOMPARE(m->data(m->index(0, 1)).toString(), QStringLiteral("0"));
        QCOMPARE(m->data(m->index(0, 2)).toString(), QStringLiteral("2.5"));
        QVERIFY(view_->horizontalHeader()->isVisible());
        QCOMPARE(m->headerData(0, Qt::Vertical).toString(), QStringLiteral("1"));
    }

    void typedKeysGoIntoTheCurrentCell() {
        FnArrToGrid(CellArray{2, 2}, *grid_);
        view_->setNumeric(true);
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, centre(0, 1));
        QCOMPARE(grid_->col(), 2);
        QSignalSpy edited(view_, &FlexGridView::cellEdited);
        QTest::keyClicks(view_, QStringLiteral("12.5.x7"));
        QCOMPARE(grid_->textMatrix(1, 2), QStringLiteral("12.57")); // the second full stop and the x dropped
        QCOMPARE(edited.count(), 5);
        QTest::keyClick(view_, Qt::Key_Backspace);
        QCOMPARE(grid_->textMatrix(1, 2), QStringLiteral("12.5"));
    }

    void aSecondFullStopIsDropped() {
        FnArrToGrid(CellArray{1, 1}, *grid_);
        view_->setNumeric(true);
        grid_->setCurrent(1, 1);
        view_->syncFromGrid();
        QTest::keyClicks(view_, QStringLiteral("5.."));
        QCOMPARE(grid_->text(), QStringLiteral("5."));
        QTest::keyClick(view_, Qt::Key_Return);
        QCOMPARE(grid_->textMatrix(1, 1), QStringLiteral("5"));
    }

    void enterInTheLastCellAddsARow() {
        FnArrToGrid(numbers(2, 3), *grid_);
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, centre(1, 2));
        QCOMPARE(grid_->row(), 2);
        QCOMPARE(grid_->col(), 3);
        QTest::keyClick(view_, Qt::Key_Return);
        QCOMPARE(view_->model()->rowCount(), 3);
        QCOMPARE(grid_->row(), 3);
        QCOMPARE(grid_->col(), 1);
        QCOMPARE(view_->currentIndex(), grid_->index(2, 0)); // the view follows, in the new row
        QTest::keyClicks(view_, QStringLiteral("abc"));
        QCOMPARE(grid_->textMatrix(3, 1), QStringLiteral("abc"));
    }

    void aSelectionDraggedEitherWayGivesTheSameBlock() {
        FnArrToGrid(numbers(4, 4), *grid_);
        drag(centre(0, 1), centre(2, 2));
        const CellArray down = FnGridSelToArr(*grid_);
        QCOMPARE(down.size(0), 3);
        QCOMPARE(down.size(1), 2);
        QCOMPARE(down(0, 0).toString(), QStringLiteral("2"));
        QCOMPARE(down(2, 1).toString(), QStringLiteral("11"));
        QCOMPARE(view_->selectionModel()->selectedIndexes().size(), 6);

        drag(centre(2, 2), centre(0, 1));
        QCOMPARE(grid_->row(), 3); // the drag started below and to the right
        QCOMPARE(grid_->rowSel(), 1);
        QVERIFY(FnGridSelToArr(*grid_) == down);
    }

    void theCellBoxLiesOverTheCellAndEnterWritesIt() {
        FnArrToGrid(numbers(3, 3), *grid_);
        view_->setEditStyle(FlexGridView::EditStyle::CellBox);
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, centre(1, 1));
        QTest::keyClick(view_, Qt::Key_Return);
        QLineEdit* box = view_->cellBox();
        QVERIFY(box->isVisible());
        QCOMPARE(box->geometry(), view_->visualRect(grid_->index(1, 1)));
        QCOMPARE(box->text(), QStringLiteral("5"));
        QCOMPARE(box->font(), view_->font());
        box->setText(QStringLiteral("changed"));
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(!box->isVisible());
        QCOMPARE(grid_->textMatrix(2, 2), QStringLiteral("changed"));
        QCOMPARE(grid_->col(), 2); // the edit leaves the current cell where it was
        QVERIFY(view_->hasFocus());

        // Escape ends the edit without writing.
        QTest::keyClick(view_, Qt::Key_9);
        QVERIFY(box->isVisible());
        QCOMPARE(box->text(), QStringLiteral("changed9"));
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(!box->isVisible());
        QCOMPARE(grid_->textMatrix(2, 2), QStringLiteral("changed"));
    }

    void aBoxOfTheFormIsPlacedOverTheCellToo() {
        QWidget form;
        form.resize(800, 600);
        auto* view = new FlexGridView(&form);
        view->setGrid(grid_);
        view->setGeometry(40, 30, 500, 400);
        auto* box = new QLineEdit(&form);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        FnArrToGrid(numbers(3, 3), *grid_);
        grid_->setCurrent(2, 3);
        ProcCellBoxShow(*view, *box);
        const QRect cell = view->visualRect(grid_->index(1, 2));
        QCOMPARE(box->pos(), view->viewport()->mapTo(&form, cell.topLeft()));
        QCOMPARE(box->size(), cell.size());
        QCOMPARE(box->text(), QStringLiteral("6"));
        ProcCellBoxShow(*view, *box, 5, -3);
        QCOMPARE(box->pos(), view->viewport()->mapTo(&form, cell.topLeft()) + QPoint(5, -3));
        QVERIFY(ProcCellBoxKey(*box, key::kEnter));
        QVERIFY(!ProcCellBoxKey(*box, 'a'));
    }

    void autoFitWidensToTheLongestText() {
        CellArray a{2, 2};
        a(0, 0) = Cell("short");
        a(1, 0) = Cell("a much, much longer text than the column shows");
        a(0, 1) = Cell("x");
        FnArrToGrid(a, *grid_);
        view_->setColumnWidth(0, 20);
        ProcAutoFitCols(*view_, 6);
        const int want = view_->fontMetrics().horizontalAdvance(grid_->textMatrix(2, 1)) + 6;
        QCOMPARE(view_->columnWidth(0), want);
        // FnFillGrid's option asks for the same fit.
        FnFillGrid(a, *grid_, 0, 1, 10);
        QCOMPARE(view_->columnWidth(0), view_->fontMetrics().horizontalAdvance(grid_->textMatrix(1, 0)) + 10);
        QVERIFY(!view_->verticalHeader()->isVisible()); // no fixed column
    }
};

QTEST_MAIN(FlexGridViewTest)
#include "flex_grid_view_test.moc"
