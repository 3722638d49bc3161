#pragma once
// FlexGridView: the one grid of the forms, a QTableView over a GridModel that edits the same way
// everywhere. The fixed rows of the model are the column headings and the fixed columns the row
// headings; the model's current cell and selection corner follow the view (a block dragged
// either way is the same block), and the view follows the model after every key.
//
// Editing styles: Direct, where typed keys go through ProcGridKey into the current cell (the
// numeric flag keeps the cell a number); CellBox, where a text box laid over the current cell takes
// the typing until Enter writes it or Escape drops it; ReadOnly.

#include "platform/grid_model.h"

#include <QTableView>

class QLineEdit;

namespace vesk {

class FlexGridView : public QTableView {
    Q_OBJECT
public:
    enum class EditStyle { ReadOnly, Direct, CellBox };

    explicit FlexGridView(QWidget* parent = nullptr);

    void setGrid(GridModel* grid);
    GridModel* grid() const { return grid_; }
    void setEditStyle(EditStyle style) { style_ = style; }
    EditStyle editStyle() const { return style_; }
    void setNumeric(bool on) { numeric_ = on; }
    bool numeric() const { return numeric_; }
    // The text box of the CellBox style.
    QLineEdit* cellBox();

    // Puts the view's current cell and selection where the model's are, and shows them.
    void syncFromGrid();

signals:
    // A cell's text was changed by typing (grid coordinates, fixed bands counted).
    void cellEdited(int row, int col);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void modelChanged();
    void openCellBox(const QString& typed);
    GridModel* grid_ = nullptr;
    QLineEdit* box_ = nullptr;
    EditStyle style_ = EditStyle::Direct;
    bool numeric_ = false;
    bool syncing_ = false;
    bool dragging_ = false;
};

// Widens each column to its longest text at the grid's font, headings included, with `option`
// pixels to spare (a negative option spares the grid's usual margin).
void ProcAutoFitCols(FlexGridView& grid, int option);

// Lays the text box exactly over the current cell and gives it the cell's text, font and size.
// `left` and `top` shift it, for a box that lives in another widget than the grid's viewport.
void ProcCellBoxShow(FlexGridView& grid, QLineEdit& box, int left = 0, int top = 0);

// Enter ends the edit and writes the box's text into the cell it was shown over; Escape ends it
// without writing. Returns true when the key was one of the two.
bool ProcCellBoxKey(QLineEdit& box, int keyCode);

} // namespace vesk
