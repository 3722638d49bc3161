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

// The insert and remove signals of one band: the rows or the columns.
struct GridModel::BandSignals {
    using Begin = void (QAbstractItemModel::*)(const QModelIndex&, int, int);
    using End = void (QAbstractItemModel::*)();
    Begin beginInsert;
    End endInsert;
    Begin beginRemove;
    End endRemove;
};

const GridModel::BandSignals& GridModel::bandSignals(Qt::Orientation band) {
    static const BandSignals rows{&GridModel::beginInsertRows, &GridModel::endInsertRows,
                                  &GridModel::beginRemoveRows, &GridModel::endRemoveRows};
    static const BandSignals cols{&GridModel::beginInsertColumns, &GridModel::endInsertColumns,
                                  &GridModel::beginRemoveColumns, &GridModel::endRemoveColumns};
    return band == Qt::Vertical ? rows : cols;
}

void GridModel::setRows(int rows) {
    setBandSize(Qt::Vertical, rows);
}

void GridModel::setCols(int cols) {
    setBandSize(Qt::Horizontal, cols);
}

// The views hear of a new size as entries inserted or removed at the end of the body while the
// fixed band stays whole, and as a reset when the size cuts into it.
void GridModel::setBandSize(Qt::Orientation band, int size) {
    const bool byRows = band == Qt::Vertical;
    size = std::max(size, 0);
    if (size == (byRows ? rows_ : cols_))
        return;
    const int fixed = byRows ? fixedRows_ : fixedCols_;
    const int oldBody = byRows ? rowCount() : columnCount(), newBody = std::max(0, size - fixed);
    const bool signal = redraw_ && size >= fixed;
    const bool grows = signal && newBody > oldBody, shrinks = signal && newBody < oldBody;
    const BandSignals& s = bandSignals(band);
    if (grows)
        (this->*s.beginInsert)(QModelIndex(), oldBody, newBody - 1);
    else if (shrinks)
        (this->*s.beginRemove)(QModelIndex(), newBody, oldBody - 1);
    else if (redraw_)
        beginResetModel();
    resize(byRows ? size : rows_, byRows ? cols_ : size);
    if (grows)
        (this->*s.endInsert)();
    else if (shrinks)
        (this->*s.endRemove)();
    else if (redraw_)
        endResetModel();
}

void GridModel::setFixedRows(int n) {
    setFixedBand(fixedRows_, std::clamp(n, 0, rows_));
}

void GridModel::setFixedCols(int n) {
    setFixedBand(fixedCols_, std::clamp(n, 0, cols_));
}

void GridModel::setFixedBand(int& fixed, int n) {
    if (n == fixed)
        return;
    resetting([&] {
        fixed = n;
        clampCurrent();
    });
}

void GridModel::resetting(const std::function<void()>& change) {
    if (redraw_)
        beginResetModel();
    change();
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
    resetting([this] { std::fill(texts_.begin(), texts_.end(), QString()); });
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
