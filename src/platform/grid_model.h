#pragma once
// GridModel: the grid of every sheet, dictionary and viewer, as a table of texts with one band of
// fixed rows and one of fixed columns in front of the data, a current cell and the other corner
// of the selection. The grid helpers work on it without any view; a QTableView shows it, with the
// fixed rows as its column headings and the fixed columns as its row headings.
//
// Coordinates of the grid's own face (rows(), textMatrix(), row()...) count the fixed bands in,
// as the grids of the old forms did; the table-model face counts only the body.

#include <QAbstractTableModel>
#include <QString>
#include <functional>
#include <vector>

namespace vesk {

class GridModel : public QAbstractTableModel {
public:
    explicit GridModel(QObject* parent = nullptr);

    // Size, fixed bands included. Growing keeps the texts; new cells are empty.
    int rows() const { return rows_; }
    int cols() const { return cols_; }
    void setRows(int rows);
    void setCols(int cols);
    int fixedRows() const { return fixedRows_; }
    int fixedCols() const { return fixedCols_; }
    void setFixedRows(int n);
    void setFixedCols(int n);

    QString textMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString& text);
    // Every cell empty; the size stays.
    void clear();

    // The current cell and the other corner of the selection, in grid coordinates.
    int row() const { return row_; }
    int col() const { return col_; }
    int rowSel() const { return rowSel_; }
    int colSel() const { return colSel_; }
    // Moves the current cell and collapses the selection onto it.
    void setCurrent(int row, int col);
    void setSelectionCorner(int rowSel, int colSel);
    // The text of the current cell.
    QString text() const { return textMatrix(row_, col_); }
    void setText(const QString& text) { setTextMatrix(row_, col_, text); }

    // Painting off: changes are shown together when it is turned on again.
    void setRedraw(bool on);
    bool redraw() const { return redraw_; }

    // Whether the body may be edited through the view's own editor (helpers always may).
    void setEditable(bool on) { editable_ = on; }
    // A request that the view fit its columns to their texts, with this many pixels to spare.
    void requestAutoFit(int padding) { autoFit_ = padding; }
    int takeAutoFitRequest();

    // QAbstractTableModel: the body only.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct BandSignals;
    static const BandSignals& bandSignals(Qt::Orientation band);
    // The rows (Vertical) or the columns (Horizontal), fixed band included.
    void setBandSize(Qt::Orientation band, int size);
    void setFixedBand(int& fixed, int n);
    // Makes the change, which the views take as a reset unless painting is off.
    void resetting(const std::function<void()>& change);
    void resize(int rows, int cols);
    void clampCurrent();
    void changedCell(int row, int col);

    int rows_ = 2, cols_ = 2, fixedRows_ = 1, fixedCols_ = 1;
    int row_ = 1, col_ = 1, rowSel_ = 1, colSel_ = 1;
    std::vector<QString> texts_;
    bool redraw_ = true;
    bool editable_ = false;
    int autoFit_ = -1;
};

// Key codes as the form events give them.
namespace key {
constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr int kEscape = 27;
} // namespace key

// The common key handler of a directly edited grid. With `numeric`, digits pass, a full stop only
// when the cell has none yet, all else but Enter and Backspace is dropped; without it every key
// passes. A key that passes is appended to the current cell. Backspace cuts the last character.
// Enter rewrites a numeric cell as the number its text reads as ("5." becomes "5"), then moves to
// the next column, or from the last column to the first body column of the next row, adding a row
// when the current row is the last. Returns false when the key was dropped.
bool ProcGridKey(int keyCode, GridModel& grid, bool numeric);

} // namespace vesk
