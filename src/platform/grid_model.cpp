#include "platform/grid_model.h"

#include "platform/runtime.h"

#include <QStringList>
#include <algorithm>

namespace vesk {

GridModel::GridModel(QObject* parent)
    : QAbstractTableModel(parent), texts_(static_cast<std::size_t>(rows_ * cols_)) {}

void GridModel::resize(int rows, int cols) {
    rows = std::max(rows, 0);
    cols = std::max(cols, 0);
    std::vector<QString> texts(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
    for (int r = 0; r < std::min(rows, rows_); ++r)
        for (int c = 0; c < std::min(cols, cols_); ++c)
            texts[static_cast<std::size_t>(r * cols + c)] =
                std::move(texts_[static_cast<std::size_t>(r * cols_ + c)]);
    texts_ = std::move(texts);
    rows_ = rows;
    cols_ = cols;
    fixedRows_ = std::min(fixedRows_, rows_);
    fixedCols_ = std::min(fixedCols_, cols_);
    clampCurrent();
}

void GridModel::setRows(int rows) {
    rows = std::max(rows, 0);
    if (rows == rows_)
        return;
    const int oldBody = rowCount(), newBody = std::max(0, rows - fixedRows_);
    const bool signal = redraw_ && rows >= fixedRows_;
    if (signal && newBody > oldBody)
        beginInsertRows(QModelIndex(), oldBody, newBody - 1);
    else if (signal && newBody < oldBody)
        beginRemoveRows(QModelIndex(), newBody, oldBody - 1);
    else if (redraw_)
        beginResetModel();
    resize(rows, cols_);
    if (signal && newBody > oldBody)
        endInsertRows();
    else if (signal && newBody < oldBody)
        endRemoveRows();
    else if (redraw_)
        endResetModel();
}

void GridModel::setCols(int cols) {
    cols = std::max(cols, 0);
    if (cols == cols_)
        return;
    const int oldBody = columnCount(), newBody = std::max(0, cols - fixedCols_);
    const bool signal = redraw_ && cols >= fixedCols_;
    if (signal && newBody > oldBody)
        beginInsertColumns(QModelIndex(), oldBody, newBody - 1);
    else if (signal && newBody < oldBody)
        beginRemoveColumns(QModelIndex(), newBody, oldBody - 1);
    else if (redraw_)
        beginResetModel();
    resize(rows_, cols);
    if (signal && newBody > oldBody)
        endInsertColumns();
    else if (signal && newBody < oldBody)
        endRemoveColumns();
    else if (redraw_)
        endResetModel();
}

void GridModel::setFixedRows(int n) {
    n = std::clamp(n, 0, rows_);
    if (n == fixedRows_)
        return;
    if (redraw_)
        beginResetModel();
    fixedRows_ = n;
    clampCurrent();
    if (redraw_)
        endResetModel();
}

void GridModel::setFixedCols(int n) {
    n = std::clamp(n, 0, cols_);
    if (n == fixedCols_)
        return;
    if (redraw_)
        beginResetModel();
    fixedCols_ = n;
    clampCurrent();
    if (redraw_)
        endResetModel();
}

QString GridModel::textMatrix(int row, int col) const {
    if (row < 0 || row >= rows_ || col < 0 || col >= cols_)
        return QString();
    return texts_[static_cast<std::size_t>(row * cols_ + col)];
}

void GridModel::setTextMatrix(int row, int col, const QString& text) {
    if (row < 0 || row >= rows_ || col < 0 || col >= cols_)
        return;
    texts_[static_cast<std::size_t>(row * cols_ + col)] = text;
    changedCell(row, col);
}

void GridModel::changedCell(int row, int col) {
    if (!redraw_)
        return;
    if (row >= fixedRows_ && col >= fixedCols_) {
        const QModelIndex i = index(row - fixedRows_, col - fixedCols_);
        emit dataChanged(i, i);
    } else if (row < fixedRows_ && col >= fixedCols_) {
        emit headerDataChanged(Qt::Horizontal, col - fixedCols_, col - fixedCols_);
    } else if (col < fixedCols_ && row >= fixedRows_) {
        emit headerDataChanged(Qt::Vertical, row - fixedRows_, row - fixedRows_);
    }
}

void GridModel::clear() {
    if (redraw_)
        beginResetModel();
    std::fill(texts_.begin(), texts_.end(), QString());
    if (redraw_)
        endResetModel();
}

void GridModel::clampCurrent() {
    row_ = std::clamp(row_, std::min(fixedRows_, rows_ - 1), std::max(rows_ - 1, 0));
    col_ = std::clamp(col_, std::min(fixedCols_, cols_ - 1), std::max(cols_ - 1, 0));
    rowSel_ = std::clamp(rowSel_, std::min(fixedRows_, rows_ - 1), std::max(rows_ - 1, 0));
    colSel_ = std::clamp(colSel_, std::min(fixedCols_, cols_ - 1), std::max(cols_ - 1, 0));
}

void GridModel::setCurrent(int row, int col) {
    row_ = rowSel_ = row;
    col_ = colSel_ = col;
    clampCurrent();
}

void GridModel::setSelectionCorner(int rowSel, int colSel) {
    rowSel_ = rowSel;
    colSel_ = colSel;
    clampCurrent();
}

void GridModel::setRedraw(bool on) {
    if (on == redraw_)
        return;
    if (!on) {
        beginResetModel();
        redraw_ = false;
    } else {
        redraw_ = true;
        endResetModel();
    }
}

int GridModel::takeAutoFitRequest() {
    const int padding = autoFit_;
    autoFit_ = -1;
    return padding;
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(0, rows_ - fixedRows_);
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(0, cols_ - fixedCols_);
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return QVariant();
    return textMatrix(index.row() + fixedRows_, index.column() + fixedCols_);
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    setTextMatrix(index.row() + fixedRows_, index.column() + fixedCols_, value.toString());
    return true;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return QVariant();
    QStringList parts;
    if (orientation == Qt::Horizontal) {
        for (int r = 0; r < fixedRows_; ++r)
            parts << textMatrix(r, section + fixedCols_);
        return parts.join(u'\n');
    }
    for (int c = 0; c < fixedCols_; ++c)
        parts << textMatrix(section + fixedRows_, c);
    return parts.join(u' ');
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | (editable_ ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

bool ProcGridKey(int keyCode, GridModel& grid, bool numeric) {
    const QString current = grid.text();
    if (keyCode == key::kBackspace) {
        if (!current.isEmpty())
            grid.setText(current.left(current.size() - 1));
        return true;
    }
    if (keyCode == key::kEnter) {
        if (numeric && !current.isEmpty())
            grid.setText(numberToText(Val(current)));
        if (grid.col() < grid.cols() - 1) {
            grid.setCurrent(grid.row(), grid.col() + 1);
        } else {
            if (grid.row() == grid.rows() - 1)
                grid.setRows(grid.rows() + 1);
            grid.setCurrent(grid.row() + 1, grid.fixedCols());
        }
        return true;
    }
    const char32_t code = static_cast<char32_t>(keyCode);
    const QString typed = QString::fromUcs4(&code, 1);
    if (numeric) {
        const bool digit = keyCode >= '0' && keyCode <= '9';
        const bool point = keyCode == '.' && !current.contains(u'.');
        if (!digit && !point)
            return false;
    }
    grid.setText(current + typed);
    return true;
}

} // namespace vesk
