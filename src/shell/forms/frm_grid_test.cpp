#include "shell/forms/frm_grid_test.h"

#include "foundation/error_store.h"

#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

namespace vesk {

namespace {
const char* const kHeadings[] = {"S.No", "Error Number", "Error Description", "Error Source"};
const QString kNoError = QStringLiteral("No Error");

CellArray snapshot() {
    return ErrStore().isArray() ? ErrStore().array() : CellArray{0, 3};
}
} // namespace

void setupGridForm(QWidget* form, const QString& name, const QString& title, QAbstractItemModel* model) {
    form->setObjectName(name);
    form->setWindowTitle(title);
    auto* grid = new QTableView(form);
    grid->setObjectName(QStringLiteral("grid"));
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->verticalHeader()->setVisible(false);
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->setModel(model);
    grid->resizeColumnsToContents();
    auto* layout = new QVBoxLayout(form);
    layout->addWidget(grid);
    form->resize(640, 320);
}

ErrorListModel::ErrorListModel(CellArray errors, QObject* parent)
    : QAbstractTableModel(parent), errors_(std::move(errors)) {}

int ErrorListModel::rowCount(const QModelIndex& parent) const {
    // An empty store still has its first data row, which says so.
    return parent.isValid() ? 0 : std::max(1, errors_.rank() == 2 ? errors_.size(0) : 0);
}

int ErrorListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 4;
}

QVariant ErrorListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid())
        return {};
    const int n = errors_.rank() == 2 ? errors_.size(0) : 0;
    if (n == 0)
        return index.column() == 0 ? QVariant(kNoError) : QVariant();
    if (index.column() == 0)
        return QString::number(index.row() + 1);
    return errors_(index.row(), index.column() - 1).toString();
}

QVariant ErrorListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 || section > 3)
        return QAbstractTableModel::headerData(section, orientation, role);
    return QString::fromLatin1(kHeadings[section]);
}

frmgridtest::frmgridtest(QWidget* parent) : QWidget(parent), model_(new ErrorListModel(snapshot(), this)) {
    setupGridForm(this, QStringLiteral("frmgridtest"), QStringLiteral("Errors"), model_);
}

} // namespace vesk
