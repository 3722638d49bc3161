#include "study/forms/study_forms_grid.h"

#include <QKeyEvent>

namespace vesk {

namespace {

class DeleteKeyFilter : public QObject {
public:
    DeleteKeyFilter(QObject* parent, std::function<void()> onDelete)
        : QObject(parent), onDelete_(std::move(onDelete)) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
            onDelete_();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> onDelete_;
};

bool rowHasText(const GridModel& grid, int row) {
    for (int c = grid.fixedCols(); c < grid.cols(); ++c)
        if (!grid.textMatrix(row, c).isEmpty())
            return true;
    return false;
}

void numberRows(GridModel& grid) {
    if (grid.fixedCols() == 0)
        return;
    for (int r = grid.fixedRows(); r < grid.rows(); ++r)
        grid.setTextMatrix(r, grid.fixedCols() - 1, QString::number(r));
}

} // namespace

FlexGridView* makeTextGrid(QWidget* parent, const QString& name, GridModel* model) {
    auto* view = new FlexGridView(parent);
    view->setObjectName(name);
    view->setGrid(model);
    view->setEditStyle(FlexGridView::EditStyle::CellBox);
    QObject::connect(view, &FlexGridView::cellEdited, view, [model](int, int) { keepBlankLastRow(*model); });
    return view;
}

QList<QStringList> gridRows(const GridModel& grid) {
    QList<QStringList> rows;
    for (int r = grid.fixedRows(); r < grid.rows(); ++r) {
        QStringList row;
        for (int c = grid.fixedCols(); c < grid.cols(); ++c)
            row << grid.textMatrix(r, c);
        rows << row;
    }
    return rows;
}

void setGridRows(GridModel& grid, const QStringList& headers, const QList<QStringList>& rows) {
    grid.setRedraw(false);
    grid.clear();
    grid.setCols(grid.fixedCols() + static_cast<int>(headers.size()));
    grid.setRows(grid.fixedRows() + static_cast<int>(rows.size()) + 1);
    for (int c = 0; c < headers.size(); ++c)
        grid.setTextMatrix(grid.fixedRows() - 1, grid.fixedCols() + c, headers[c]);
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < headers.size() && c < rows[r].size(); ++c)
            grid.setTextMatrix(grid.fixedRows() + r, grid.fixedCols() + c, rows[r][c]);
    numberRows(grid);
    grid.setCurrent(grid.fixedRows(), grid.fixedCols());
    grid.requestAutoFit(16);
    grid.setRedraw(true);
}

void removeGridRow(GridModel& grid, int row) {
    if (row < grid.fixedRows() || row >= grid.rows())
        return;
    grid.setRedraw(false);
    if (grid.rows() <= 2) {
        for (int c = grid.fixedCols(); c < grid.cols(); ++c)
            grid.setTextMatrix(row, c, QString());
    } else {
        for (int r = row; r + 1 < grid.rows(); ++r)
            for (int c = grid.fixedCols(); c < grid.cols(); ++c)
                grid.setTextMatrix(r, c, grid.textMatrix(r + 1, c));
        grid.setRows(grid.rows() - 1);
    }
    keepBlankLastRow(grid);
    numberRows(grid);
    grid.setCurrent(std::min(row, grid.rows() - 1), grid.fixedCols());
    grid.setRedraw(true);
}

void keepBlankLastRow(GridModel& grid) {
    if (grid.rows() > grid.fixedRows() && !rowHasText(grid, grid.rows() - 1)) {
        return;
    }
    grid.setRows(grid.rows() + 1);
    numberRows(grid);
}

void onDeleteKey(QWidget* view, std::function<void()> onDelete) {
    view->installEventFilter(new DeleteKeyFilter(view, std::move(onDelete)));
}

} // namespace vesk
