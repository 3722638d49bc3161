#include "shell/forms/frm_shw_cnt_mem.h"

#include "burden/computation.h"
#include "database/db_texts.h"
#include "database/study_context.h"
#include "platform/cell_array.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "shell/forms/frm_grid_test.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/forms/menu_commands.h"

#include <QPointer>

namespace vesk {

namespace {

const char* const kHeadings[] = {"Column No", "Years", "Regions", "Dap Ids"};

int upperBound(const Cell& c) {
    return c.isArray() && c.array().rank() >= 1 ? c.array().ubound(0) : -1;
}

QString entry(const Cell& vector, int i) {
    if (!vector.isArray() || i > vector.array().ubound(0))
        return {};
    const CellArray& a = vector.array();
    return a.rank() == 1 ? a(i).toString() : a(i, 0).toString();
}

// A parameter set as "[DAPID,r,K,Beta,C]".
QString parameterSet(const Cell& mtxDAP, int i) {
    if (!mtxDAP.isArray() || mtxDAP.array().rank() != 2 || i > mtxDAP.array().ubound(0))
        return {};
    const CellArray& m = mtxDAP.array();
    QStringList values;
    for (int j = 0; j < m.size(1); ++j)
        values << m(i, j).toString();
    return u'[' + values.join(u',') + u']';
}

bool hasContent(const Computation& c) {
    return c.MtxDAP.isArray() || c.ArrYld.isArray() || c.ArrYll.isArray() || c.ArrDaly.isArray();
}

} // namespace

ContentInMemoryModel::ContentInMemoryModel(const StudyContext& c, const Computation& computation,
                                           QObject* parent)
    : QAbstractTableModel(parent) {
    // As many rows as the greatest upper bound of the causes, the units and the parameter sets.
    const Cell& sets = computation.MtxDAP;
    const int last = std::max({upperBound(c.MtxCobCd), upperBound(c.VctrBPULst), upperBound(sets)});
    for (int i = 0; i <= last; ++i)
        rows_.push_back(
            {QString::number(i + 1), entry(c.VctrYrLst, i), entry(c.VctrBPULst, i), parameterSet(sets, i)});
}

int ContentInMemoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ContentInMemoryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 4;
}

QVariant ContentInMemoryModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid())
        return {};
    return rows_[index.row()][index.column()];
}

QVariant ContentInMemoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 || section > 3)
        return QAbstractTableModel::headerData(section, orientation, role);
    return QString::fromLatin1(kHeadings[section]);
}

FrmShwCntMem::FrmShwCntMem(QWidget* parent)
    : QWidget(parent), model_(new ContentInMemoryModel(studyContext(), computation(), this)) {
    setupGridForm(this, QStringLiteral("FrmShwCntMem"), QStringLiteral("Content in memory"), model_);
}

void registerRunLogViewers() {
    static QPointer<QMdiSubWindow> errors, content;
    setErrorViewerOpener(
        [](FRMMAINMENU& frame) { showSingleInArea(frame.mdiArea(), new frmgridtest, errors); });
    registerMenuCommand(QStringLiteral("mnu_ShCntMem"), [](FRMMAINMENU& frame) {
        if (FrmShwCntMem* form = FrmShwCntMem::open())
            showSingleInArea(frame.mdiArea(), form, content);
    });
}

FrmShwCntMem* FrmShwCntMem::open(QWidget* parent) {
    if (!hasContent(computation())) {
        prompts().ask(dbtext::NoResultsInMemory, Buttons::Ok, Icon::None, dbtext::ContentInMemoryTitle);
        return nullptr;
    }
    return new FrmShwCntMem(parent);
}

} // namespace vesk
