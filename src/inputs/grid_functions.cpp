#include "inputs/grid_functions.h"

#include <algorithm>

#include "platform/runtime.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace vesk {

namespace {
QString cellText(const Cell& c) {
    return c.isNull() ? QString() : c.toString();
}
} // namespace

void FnArrToGrid(const CellArray& values, GridModel& grid, const QStringList* headers) {
    if (values.rank() != 2)
        return;
    grid.setRedraw(false);
    grid.clear();
    const int fixedRows = grid.fixedRows(), fixedCols = grid.fixedCols();
    grid.setRows(values.size(0) + fixedRows);
    grid.setCols(values.size(1) + fixedCols);
    if (headers) {
        const int headRow = fixedRows > 0 ? fixedRows - 1 : 0;
        for (int k = 0; k < headers->size(); ++k)
            grid.setTextMatrix(headRow, fixedCols + k, headers->at(k));
    }
    for (int col = fixedCols; col < grid.cols(); ++col) {
        for (int row = fixedRows; row < grid.rows(); ++row) {
            if (fixedCols > 0)
                grid.setTextMatrix(row, fixedCols - 1, QString::number(row));
            grid.setTextMatrix(
                row, col,
                cellText(values(values.lbound(0) + row - fixedRows, values.lbound(1) + col - fixedCols)));
        }
    }
    grid.setRedraw(true);
}

void showTable(GridModel& grid, const QStringList& heads, const CellArray& values) {
    grid.setFixedCols(0);
    grid.setRows(std::max(grid.rows(), 1));
    grid.setFixedRows(1);
    CellArray texts = values;
    for (std::size_t k = 0; k < texts.count(); ++k)
        if (const Cell& v = texts.flat(k); v.isNumber())
            texts.flat(k) = Cell(valueText(v.isSingle() ? Cell(v.toDouble()) : v));
    FnArrToGrid(texts, grid, &heads);
}

void FnFillGrid(const CellArray& values, GridModel& grid, int fixedCols, int fixedRows, int option) {
    if (values.rank() != 2)
        return;
    grid.setRedraw(false);
    grid.setRows(values.size(0));
    grid.setCols(values.size(1));
    grid.setFixedRows(fixedRows < grid.rows() ? fixedRows : grid.rows() - 1);
    grid.setFixedCols(fixedCols < grid.cols() ? fixedCols : grid.cols() - 1);
    for (int row = 0; row < grid.rows(); ++row)
        for (int col = 0; col < grid.cols(); ++col)
            grid.setTextMatrix(row, col, cellText(values(values.lbound(0) + row, values.lbound(1) + col)));
    if (option >= 0)
        grid.requestAutoFit(option);
    grid.setRedraw(true);
}

namespace {
CellArray block(const GridModel& grid, int r1, int c1, int r2, int c2) {
    if (r2 < r1 || c2 < c1)
        throw RuntimeError(runtime_error::kSubscriptOutOfRange);
    CellArray out{r2 - r1 + 1, c2 - c1 + 1};
    for (int r = r1; r <= r2; ++r)
        for (int c = c1; c <= c2; ++c)
            out(r - r1, c - c1) = Cell(grid.textMatrix(r, c));
    return out;
}
} // namespace

CellArray FnGridToArr(const GridModel& grid) {
    return block(grid, grid.fixedRows(), grid.fixedCols(), grid.rows() - 1, grid.cols() - 1);
}

CellArray FnGridSelToArr(const GridModel& grid) {
    return block(grid, std::min(grid.row(), grid.rowSel()), std::min(grid.col(), grid.colSel()),
                 std::max(grid.row(), grid.rowSel()), std::max(grid.col(), grid.colSel()));
}

namespace {
Cell fromVariant(const QVariant& v) {
    if (v.isNull())
        return Cell::null();
    switch (v.typeId()) {
    case QMetaType::Bool:
        return Cell::boolean(v.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return Cell(v.toDouble());
    case QMetaType::Float:
        return Cell::single(v.toFloat());
    case QMetaType::QDate:
        return Cell::date(dateSerial(v.toDate()));
    case QMetaType::QDateTime:
        return Cell::date(dateSerial(v.toDateTime()));
    default:
        return Cell(v.toString());
    }
}
} // namespace

Cell FnRsToArr(QSqlQuery& rs) {
    if (!rs.isActive() || !rs.first())
        return Cell();
    // Every record is read once, so that the count is exact whatever the driver reports.
    QList<QList<Cell>> records;
    const QSqlRecord fields = rs.record();
    do {
        QList<Cell> rec;
        for (int f = 0; f < fields.count(); ++f)
            rec << fromVariant(rs.value(f));
        records << rec;
    } while (rs.next());
    CellArray matrix{static_cast<int>(fields.count()), static_cast<int>(records.size())};
    CellArray names{static_cast<int>(fields.count())};
    for (int f = 0; f < fields.count(); ++f) {
        names(f) = Cell(fields.fieldName(f));
        for (int r = 0; r < records.size(); ++r)
            matrix(f, r) = records[r][f];
    }
    CellArray result{2};
    result(0) = Cell(std::move(matrix));
    result(1) = Cell(std::move(names));
    return Cell(std::move(result));
}

} // namespace vesk
