#include "platform/grid_model.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace vesk;

namespace {
// The first and last entry of the one signal a spy caught.
std::pair<int, int> span(const QSignalSpy& spy) {
    return {spy.at(0).at(1).toInt(), spy.at(0).at(2).toInt()};
}
} // namespace

TEST(GridModel, GrowingAndShrinkingTheRowsTellsTheViewsWhichBodyRows) {
    GridModel g; // 2 x 2, one fixed row and column
    QSignalSpy inserted(&g, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&g, &QAbstractItemModel::rowsRemoved);
    g.setRows(5);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(span(inserted), std::make_pair(1, 3));
    EXPECT_EQ(g.rowCount(), 4);
    g.setRows(3);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(span(removed), std::make_pair(2, 3));
    EXPECT_EQ(g.rowCount(), 2);
}

TEST(GridModel, GrowingAndShrinkingTheColumnsTellsTheViewsWhichBodyColumns) {
    GridModel g;
    QSignalSpy inserted(&g, &QAbstractItemModel::columnsInserted);
    QSignalSpy removed(&g, &QAbstractItemModel::columnsRemoved);
    QSignalSpy rows(&g, &QAbstractItemModel::rowsInserted);
    g.setCols(4);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(span(inserted), std::make_pair(1, 2));
    g.setCols(2);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(span(removed), std::make_pair(1, 2));
    EXPECT_EQ(rows.count(), 0);
    EXPECT_EQ(g.cols(), 2);
    EXPECT_EQ(g.rows(), 2);
}

TEST(GridModel, ASizeThatCutsIntoTheFixedBandResets) {
    GridModel g;
    g.setFixedRows(2);
    g.setRows(4);
    g.setFixedRows(2);
    QSignalSpy resets(&g, &QAbstractItemModel::modelReset);
    QSignalSpy removed(&g, &QAbstractItemModel::rowsRemoved);
    g.setRows(1);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(removed.count(), 0);
    EXPECT_EQ(g.fixedRows(), 1);
}

TEST(GridModel, WithPaintingOffNothingIsSignalledUntilItComesBack) {
    GridModel g;
    g.setRedraw(false);
    QSignalSpy resets(&g, &QAbstractItemModel::modelReset);
    QSignalSpy inserted(&g, &QAbstractItemModel::rowsInserted);
    g.setRows(6);
    g.setCols(3);
    g.setFixedCols(2);
    g.clear();
    EXPECT_EQ(inserted.count(), 0);
    EXPECT_EQ(resets.count(), 0);
    g.setRedraw(true);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(g.rowCount(), 5);
    EXPECT_EQ(g.columnCount(), 1);
}

TEST(GridModel, ANewFixedBandResetsAndKeepsTheCurrentCellInTheBody) {
    GridModel g;
    g.setRows(4);
    g.setCols(4);
    g.setCurrent(1, 1);
    QSignalSpy resets(&g, &QAbstractItemModel::modelReset);
    g.setFixedRows(2);
    g.setFixedCols(3);
    EXPECT_EQ(resets.count(), 2);
    EXPECT_EQ(g.row(), 2);
    EXPECT_EQ(g.col(), 3);
    g.setFixedCols(3); // no change, no reset
    g.setFixedRows(9); // at most every row
    EXPECT_EQ(g.fixedRows(), 4);
    EXPECT_EQ(resets.count(), 3);
}
