#pragma once
// frmgridtest: the list of the errors in the error store, as they stood when the viewer opened
// (the store is emptied right after it is offered). An empty store shows "No Error".

#include "platform/cell_array.h"

#include <QAbstractTableModel>
#include <QWidget>

class QTableView;

namespace vesk {

class ErrorListModel : public QAbstractTableModel {
public:
    explicit ErrorListModel(CellArray errors, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    CellArray errors_; // (0..n-1, 0..2): number, description, source
};

// Lays out a viewer form: one read-only grid named "grid" over `model`, filling the form.
void setupGridForm(QWidget* form, const QString& name, const QString& title, QAbstractItemModel* model);

class frmgridtest : public QWidget {
    Q_OBJECT
public:
    // Lists the error store as it is now.
    explicit frmgridtest(QWidget* parent = nullptr);

    const ErrorListModel* model() const { return model_; }

private:
    ErrorListModel* model_;
};

} // namespace vesk
