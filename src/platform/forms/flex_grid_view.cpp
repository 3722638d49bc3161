#include "platform/forms/flex_grid_view.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>

namespace vesk {

namespace {
// Where a cell box belongs: its grid and the cell, kept on the box itself.
const char* const kBoxGrid = "veskGrid";
const char* const kBoxRow = "veskRow";
const char* const kBoxCol = "veskCol";

// The key code of a key press as the old key events gave it; 0 for keys that are no character.
int keyCode(const QKeyEvent* e) {
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter)
        return key::kEnter;
    if (e->key() == Qt::Key_Backspace)
        return key::kBackspace;
    if (e->key() == Qt::Key_Escape)
        return key::kEscape;
    const QString t = e->text();
    if (t.isEmpty() || !t[0].isPrint() || (e->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
        return 0;
    return static_cast<int>(t.toUcs4().value(0));
}
} // namespace

FlexGridView::FlexGridView(QWidget* parent) : QTableView(parent) {
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setHighlightSections(false);
}

void FlexGridView::setGrid(GridModel* grid) {
    if (grid_)
        disconnect(grid_, nullptr, this, nullptr);
    grid_ = grid;
    setModel(grid);
    if (!grid)
        return;
    connect(grid, &QAbstractItemModel::modelReset, this, &FlexGridView::modelChanged);
    connect(grid, &QAbstractItemModel::layoutChanged, this, &FlexGridView::modelChanged);
    connect(grid, &QAbstractItemModel::rowsInserted, this, &FlexGridView::modelChanged);
    connect(grid, &QAbstractItemModel::columnsInserted, this, &FlexGridView::modelChanged);
    modelChanged();
}

void FlexGridView::modelChanged() {
    horizontalHeader()->setVisible(grid_->fixedRows() > 0);
    verticalHeader()->setVisible(grid_->fixedCols() > 0);
    const int padding = grid_->takeAutoFitRequest();
    if (padding >= 0)
        ProcAutoFitCols(*this, padding);
    syncFromGrid();
}

void FlexGridView::syncFromGrid() {
    if (!grid_ || !selectionModel())
        return;
    const QModelIndex current =
        grid_->index(grid_->row() - grid_->fixedRows(), grid_->col() - grid_->fixedCols());
    const QModelIndex corner =
        grid_->index(grid_->rowSel() - grid_->fixedRows(), grid_->colSel() - grid_->fixedCols());
    if (!current.isValid())
        return;
    syncing_ = true;
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    selectionModel()->select(QItemSelection(current, corner.isValid() ? corner : current),
                             QItemSelectionModel::ClearAndSelect);
    scrollTo(current);
    syncing_ = false;
}

void FlexGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (syncing_ || !grid_ || !current.isValid())
        return;
    const int row = current.row() + grid_->fixedRows(), col = current.column() + grid_->fixedCols();
    if (dragging_ || (QApplication::keyboardModifiers() & Qt::ShiftModifier))
        grid_->setSelectionCorner(row, col);
    else
        grid_->setCurrent(row, col);
}

void FlexGridView::mousePressEvent(QMouseEvent* event) {
    dragging_ = false;
    // The pressed cell is the anchor, even when it is current already and the view says nothing.
    const QModelIndex pressed = indexAt(event->position().toPoint());
    if (grid_ && pressed.isValid() && !(event->modifiers() & Qt::ShiftModifier))
        grid_->setCurrent(pressed.row() + grid_->fixedRows(), pressed.column() + grid_->fixedCols());
    QTableView::mousePressEvent(event);
    dragging_ = event->button() == Qt::LeftButton;
}

void FlexGridView::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    dragging_ = false;
}

void FlexGridView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    dragging_ = false;
    if (style_ == EditStyle::CellBox && indexAt(event->position().toPoint()).isValid())
        openCellBox(QString());
}

void FlexGridView::keyPressEvent(QKeyEvent* event) {
    const int code = grid_ ? keyCode(event) : 0;
    if (style_ == EditStyle::Direct && (code == key::kEnter || code == key::kBackspace || code >= 32)) {
        const int row = grid_->row(), col = grid_->col();
        if (ProcGridKey(code, *grid_, numeric_))
            emit cellEdited(row, col);
        syncFromGrid();
        return;
    }
    if (style_ == EditStyle::CellBox && (code == key::kEnter || code >= 32)) {
        const char32_t typed = static_cast<char32_t>(code);
        openCellBox(code >= 32 ? QString::fromUcs4(&typed, 1) : QString());
        return;
    }
    QTableView::keyPressEvent(event);
}

QLineEdit* FlexGridView::cellBox() {
    if (!box_) {
        box_ = new QLineEdit(viewport());
        box_->setObjectName(QStringLiteral("txtCellBox"));
        box_->setFrame(false);
        box_->hide();
    }
    return box_;
}

void FlexGridView::openCellBox(const QString& typed) {
    QLineEdit* box = cellBox();
    ProcCellBoxShow(*this, *box);
    if (!typed.isEmpty())
        box->setText(box->text() + typed);
}

bool FlexGridView::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (box && event->type() == QEvent::KeyPress) {
        const int code = keyCode(static_cast<QKeyEvent*>(event));
        if ((code == key::kEnter || code == key::kEscape) && ProcCellBoxKey(*box, code))
            return true;
    }
    return QTableView::eventFilter(watched, event);
}

void ProcAutoFitCols(FlexGridView& grid, int option) {
    GridModel* g = grid.grid();
    if (!g)
        return;
    const int spare = option >= 0
                          ? option
                          : 2 * grid.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &grid) + 8;
    const QFontMetrics body(grid.font()), head(grid.horizontalHeader()->font());
    for (int c = g->fixedCols(); c < g->cols(); ++c) {
        int width = 0;
        for (int r = 0; r < g->rows(); ++r) {
            const QFontMetrics& fm = r < g->fixedRows() ? head : body;
            width = std::max(width, fm.horizontalAdvance(g->textMatrix(r, c)));
        }
        grid.setColumnWidth(c - g->fixedCols(),
                            std::max(width + spare, grid.horizontalHeader()->minimumSectionSize()));
    }
}

void ProcCellBoxShow(FlexGridView& grid, QLineEdit& box, int left, int top) {
    GridModel* g = grid.grid();
    if (!g)
        return;
    const QModelIndex current = g->index(g->row() - g->fixedRows(), g->col() - g->fixedCols());
    if (!current.isValid())
        return;
    grid.scrollTo(current);
    QRect cell = grid.visualRect(current);
    // The box may live in another widget than the viewport: place it by the viewport's corner.
    if (box.parentWidget() && box.parentWidget() != grid.viewport())
        cell.moveTopLeft(box.parentWidget()->mapFromGlobal(grid.viewport()->mapToGlobal(cell.topLeft())));
    box.setGeometry(cell.translated(left, top));
    box.setFont(grid.font());
    box.setText(g->text());
    box.setProperty(kBoxGrid, QVariant::fromValue(QPointer<QObject>(&grid)));
    box.setProperty(kBoxRow, g->row());
    box.setProperty(kBoxCol, g->col());
    box.removeEventFilter(&grid);
    box.installEventFilter(&grid);
    box.show();
    box.raise();
    box.setFocus();
}

bool ProcCellBoxKey(QLineEdit& box, int keyCode) {
    if (keyCode != key::kEnter && keyCode != key::kEscape)
        return false;
    auto* grid = qobject_cast<FlexGridView*>(box.property(kBoxGrid).value<QPointer<QObject>>().data());
    if (keyCode == key::kEnter && grid && grid->grid()) {
        const int row = box.property(kBoxRow).toInt(), col = box.property(kBoxCol).toInt();
        grid->grid()->setTextMatrix(row, col, box.text());
        emit grid->cellEdited(row, col);
    }
    // Focus first: a focused box that hides hands the focus on, and a grid would take that as Tab.
    if (grid)
        grid->setFocus();
    else
        box.clearFocus();
    box.hide();
    return true;
}

} // namespace vesk
