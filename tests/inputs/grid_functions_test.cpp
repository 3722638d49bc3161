#include "inputs/grid_functions.h"
#include "test_support.h"

#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>

using namespace vesk;
using vesk::test::table;

namespace {
// Types the text into the current cell as keys.
void type(GridModel& g, const QString& text, bool numeric) {
    for (const QChar c : text)
        ProcGridKey(c.unicode(), g, numeric);
}
} // namespace

TEST(FnArrToGrid, NullShowsEmptyAndZeroShowsZero) {
    GridModel g;
    const CellArray a =
        table({{Cell::null(), Cell(0)}, {Cell(2.5), Cell("x")}, {Cell(), Cell::boolean(true)}});
    FnArrToGrid(a, g);
    EXPECT_EQ(g.rows(), 4);
    EXPECT_EQ(g.cols(), 3);
    EXPECT_EQ(g.textMatrix(1, 1), "");
    EXPECT_EQ(g.textMatrix(1, 2), "0");
    EXPECT_EQ(g.textMatrix(2, 1), "2.5");
    EXPECT_EQ(g.textMatrix(3, 1), "");
    EXPECT_EQ(g.textMatrix(3, 2), "True");
    // The fixed column numbers the rows with their grid index.
    EXPECT_EQ(g.textMatrix(1, 0), "1");
    EXPECT_EQ(g.textMatrix(3, 0), "3");
    // The table-model face shows the same.
    EXPECT_EQ(g.data(g.index(0, 0)).toString(), "");
    EXPECT_EQ(g.data(g.index(0, 1)).toString(), "0");
    EXPECT_EQ(g.headerData(2, Qt::Vertical).toString(), "3");
}

TEST(FnArrToGrid, HeadersGoIntoTheLastFixedRow) {
    GridModel g;
    g.setRows(3);
    g.setFixedRows(2);
    g.setTextMatrix(0, 1, "stale");
    const QStringList headers{"Age", "EXF"};
    FnArrToGrid(table({{Cell(0), Cell(82.5)}}), g, &headers);
    EXPECT_EQ(g.rows(), 3);
    EXPECT_EQ(g.textMatrix(0, 1), "") << "the grid is cleared first";
    EXPECT_EQ(g.textMatrix(1, 1), "Age");
    EXPECT_EQ(g.textMatrix(1, 2), "EXF");
    EXPECT_EQ(g.headerData(1, Qt::Horizontal).toString(), "\nEXF");
    EXPECT_EQ(g.textMatrix(2, 2), "82.5");
}

TEST(FnArrToGrid, NoArrayDoesNothingAndPaintingComesBackOnce) {
    GridModel g;
    g.setTextMatrix(1, 1, "kept");
    FnArrToGrid(CellArray{3}, g);
    EXPECT_EQ(g.textMatrix(1, 1), "kept");
    QSignalSpy resets(&g, &QAbstractItemModel::modelReset);
    FnArrToGrid(table({{Cell(1)}}), g);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_TRUE(g.redraw());
}

TEST(FnFillGrid, TheArrayCarriesItsHeadings) {
    GridModel g;
    const CellArray a = table({{Cell(""), Cell("M"), Cell("F")}, {Cell("0-4"), Cell(10), Cell::null()}});
    FnFillGrid(a, g, 1, 1);
    EXPECT_EQ(g.rows(), 2);
    EXPECT_EQ(g.cols(), 3);
    EXPECT_EQ(g.fixedRows(), 1);
    EXPECT_EQ(g.fixedCols(), 1);
    EXPECT_EQ(g.textMatrix(0, 1), "M");
    EXPECT_EQ(g.textMatrix(1, 0), "0-4");
    EXPECT_EQ(g.textMatrix(1, 1), "10");
    EXPECT_EQ(g.textMatrix(1, 2), "");
    EXPECT_EQ(g.takeAutoFitRequest(), -1);
    // Fixed bands as large as the grid become one less.
    FnFillGrid(a, g, 5, 2, 12);
    EXPECT_EQ(g.fixedRows(), 1);
    EXPECT_EQ(g.fixedCols(), 2);
    EXPECT_EQ(g.takeAutoFitRequest(), 12);
}

TEST(FnGridToArr, GivesTheBodyAsTexts) {
    GridModel g;
    FnArrToGrid(table({{Cell(1), Cell("a")}, {Cell::null(), Cell(0)}}), g);
    EXPECT_EQ(FnGridToArr(g), table({{Cell("1"), Cell("a")}, {Cell(""), Cell("0")}}));
}

TEST(FnGridToArr, AGridWithOnlyFixedRowsGivesAnError) {
    GridModel g;
    g.setRows(1); // the fixed row alone
    try {
        FnGridToArr(g);
        FAIL() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number, 9);
        EXPECT_STREQ(e.what(), "Subscript out of range");
    }
}

TEST(FnGridSelToArr, ASelectionDraggedEitherWayGivesTheSameBlock) {
    GridModel g;
    FnArrToGrid(
        table({{Cell(1), Cell(2), Cell(3)}, {Cell(4), Cell(5), Cell(6)}, {Cell(7), Cell(8), Cell(9)}}), g);
    g.setCurrent(1, 2);
    g.setSelectionCorner(2, 3);
    const CellArray down = FnGridSelToArr(g);
    g.setCurrent(2, 3);
    g.setSelectionCorner(1, 2);
    const CellArray up = FnGridSelToArr(g);
    EXPECT_EQ(down, table({{Cell("2"), Cell("3")}, {Cell("5"), Cell("6")}}));
    EXPECT_EQ(up, down);
    g.setCurrent(3, 1);
    EXPECT_EQ(FnGridSelToArr(g), table({{Cell("7")}}));
}

TEST(FnRsToArr, FieldFirstWithTheNamesBeside) {
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "rs");
        db.setDatabaseName(":memory:");
        ASSERT_TRUE(db.open());
        QSqlQuery q(db);
        ASSERT_TRUE(q.exec("CREATE TABLE t (code TEXT, n INTEGER, x REAL)"));
        ASSERT_TRUE(q.exec("INSERT INTO t VALUES ('a', 1, 0.5), ('b', NULL, 2.5), ('c', 3, NULL)"));
        ASSERT_TRUE(q.exec("SELECT * FROM t ORDER BY code"));
        const Cell rs = FnRsToArr(q);
        ASSERT_TRUE(rs.isArray());
        ASSERT_EQ(rs.array().size(0), 2);
        const CellArray& m = rs.array()(0).array();
        EXPECT_EQ(m.size(0), 3) << "fields first";
        EXPECT_EQ(m.size(1), 3) << "then records";
        EXPECT_EQ(m(0, 1), Cell("b"));
        EXPECT_EQ(m(1, 1), Cell::null());
        EXPECT_EQ(m(2, 0), Cell(0.5));
        EXPECT_EQ(m(1, 2), Cell(3));
        const CellArray& names = rs.array()(1).array();
        ASSERT_EQ(names.rank(), 1);
        ASSERT_EQ(names.size(0), 3);
        EXPECT_EQ(names(0), Cell("code"));
        EXPECT_EQ(names(2), Cell("x"));

        ASSERT_TRUE(q.exec("SELECT * FROM t WHERE code = 'none'"));
        EXPECT_TRUE(FnRsToArr(q).isEmpty());
    }
    QSqlDatabase::removeDatabase("rs");
}

TEST(ProcGridKey, ASecondFullStopInANumericCellIsDropped) {
    GridModel g;
    g.setCurrent(1, 1);
    type(g, "12.5", true);
    EXPECT_FALSE(ProcGridKey('.', g, true));
    EXPECT_TRUE(ProcGridKey('7', g, true));
    EXPECT_EQ(g.text(), "12.57");
    EXPECT_FALSE(ProcGridKey('a', g, true));
    EXPECT_FALSE(ProcGridKey('-', g, true));
    EXPECT_EQ(g.text(), "12.57");
    // Without the flag every key passes.
    g.setTextMatrix(1, 1, "");
    type(g, "a.b.-é", false);
    EXPECT_EQ(g.text(), "a.b.-é");
}

TEST(ProcGridKey, BackspaceCutsTheLastCharacter) {
    GridModel g;
    g.setCurrent(1, 1);
    type(g, "42", true);
    ProcGridKey(key::kBackspace, g, true);
    EXPECT_EQ(g.text(), "4");
    ProcGridKey(key::kBackspace, g, true);
    ProcGridKey(key::kBackspace, g, true);
    EXPECT_EQ(g.text(), "");
}

TEST(ProcGridKey, EnterRewritesTheNumberAndMovesOn) {
    GridModel g;
    g.setCols(3);
    g.setCurrent(1, 1);
    type(g, "5.", true);
    ProcGridKey(key::kEnter, g, true);
    EXPECT_EQ(g.textMatrix(1, 1), "5");
    EXPECT_EQ(g.row(), 1);
    EXPECT_EQ(g.col(), 2);
    // An empty cell stays empty; a text cell is not touched without the flag.
    ProcGridKey(key::kEnter, g, true);
    EXPECT_EQ(g.textMatrix(1, 2), "");
}

TEST(ProcGridKey, EnterInTheLastCellAddsARowAndLandsInItsFirstBodyColumn) {
    GridModel g;
    g.setRows(3);
    g.setCols(4);
    g.setCurrent(2, 3);
    QSignalSpy inserted(&g, &QAbstractItemModel::rowsInserted);
    ProcGridKey(key::kEnter, g, false);
    EXPECT_EQ(g.rows(), 4);
    EXPECT_EQ(g.row(), 3);
    EXPECT_EQ(g.col(), 1);
    EXPECT_EQ(inserted.count(), 1);
    // In the last column of another row no row is added.
    g.setCurrent(1, 3);
    ProcGridKey(key::kEnter, g, false);
    EXPECT_EQ(g.rows(), 4);
    EXPECT_EQ(g.row(), 2);
    EXPECT_EQ(g.col(), 1);
}
