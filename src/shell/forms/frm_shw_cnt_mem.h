#pragma once
// FrmShwCntMem: what the computation holds in memory, behind Compute -> Show Content in Memory:
// the years, the population units and the parameter sets, one row each.

#include "platform/cell.h"

#include <QAbstractTableModel>
#include <QWidget>

class QTableView;

namespace vesk {

class Computation;
class StudyContext;

// The years and units come from the study context, the parameter sets from the computation.
class ContentInMemoryModel : public QAbstractTableModel {
public:
    ContentInMemoryModel(const StudyContext& context, const Computation& computation,
                         QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QList<QStringList> rows_;
};

class FrmShwCntMem : public QWidget {
    Q_OBJECT
public:
    explicit FrmShwCntMem(QWidget* parent = nullptr);

    // The guard of mnu_ShCntMem: with neither the computation's MtxDAP nor one of its result arrays
    // in memory it says "No results in memory " under "Content in memory" and gives nullptr;
    // otherwise the new form.
    static FrmShwCntMem* open(QWidget* parent = nullptr);

    const ContentInMemoryModel* model() const { return model_; }

private:
    ContentInMemoryModel* model_;
};

// Makes the two viewers reachable from the frame: frmgridtest as the error viewer of the loading
// chain, FrmShwCntMem as the command of mnu_ShCntMem. Each opens inside the frame, one at a time.
// Call once before the frame is built.
void registerRunLogViewers();

} // namespace vesk
