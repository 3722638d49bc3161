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

TEST(GridModel, GrowingAndShrinkingABandTellsTheViewsWhichBodyEntries) {
    struct Band {
        const char* name;
        void (GridModel::*resize)(int);
        const char* inserted;
        const char* removed;
        const char* otherBand;
    };
    const Band bands[] = {
        {"rows", &GridModel::setRows, SIGNAL(rowsInserted(QModelIndex, int, int)),
         SIGNAL(rowsRemoved(QModelIndex, int, int)), SIGNAL(columnsInserted(QModelIndex, int, int))},
        {"columns", &GridModel::setCols, SIGNAL(columnsInserted(QModelIndex, int, int)),
         SIGNAL(columnsRemoved(QModelIndex, int, int)), SIGNAL(rowsInserted(QModelIndex, int, int))},
    };
    for (const Band& b : bands) {
        SCOPED_TRACE(b.name);
        GridModel g; // 2 x 2, one fixed row and one fixed column
        QSignalSpy inserted(&g, b.inserted), removed(&g, b.removed), other(&g, b.otherBand);
        (g.*b.resize)(5);
        ASSERT_EQ(inserted.count(), 1);
        EXPECT_EQ(span(inserted), std::make_pair(1, 3));
        (g.*b.resize)(3);
        ASSERT_EQ(removed.count(), 1);
        EXPECT_EQ(span(removed), std::make_pair(2, 3));
        EXPECT_EQ(other.count(), 0);
        EXPECT_EQ(g.rowCount() + g.columnCount(), 3);
    }
}

TEST(GridModel, ASizeThatCutsIntoTheFixedBandResets) {
    GridModel g;
    g.setFixedRows(2);
    g.setRows(4);
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
    EXPECT_EQ(inserted.count() + resets.count(), 0);
    g.setRedraw(true);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(g.rowCount(), 5);
    EXPECT_EQ(g.columnCount(), 1);
}

TEST(GridModel, ANewFixedBandResetsAndKeepsTheCurrentCellInTheBody) {
    GridModel g;
    g.setCurrent(1, 1);
    g.setRows(4);
    g.setCols(4);
    QSignalSpy resets(&g, &QAbstractItemModel::modelReset);
    g.setFixedRows(2);
    g.setFixedCols(3);
    EXPECT_EQ(resets.count(), 2);
    EXPECT_EQ(std::make_pair(g.row(), g.col()), std::make_pair(2, 3));
    g.setFixedCols(3); // no change, no reset
    g.setFixedRows(9); // at most every row
    EXPECT_EQ(g.fixedRows(), 4);
    EXPECT_EQ(resets.count(), 3);
}
