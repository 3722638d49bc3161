#include "burden/calculator_models.h"

#include "burden/calculator_texts.h"
#include "burden/parameter_sets.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "platform/runtime.h"

#include <algorithm>

namespace vesk {

namespace ct = calculator_texts;

// ---------------------------------------------------------------------------------------------
// CalculatorTableModel

CalculatorTableModel::CalculatorTableModel(QStringList heads, Look look, QObject* parent)
    : QAbstractTableModel(parent), heads_(std::move(heads)), look_(look) {}

int CalculatorTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cells_.size());
}

int CalculatorTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(heads_.size());
}

QVariant CalculatorTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return text(index.row(), index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(index.column() == 0 ? look_.firstColumn : look_.otherColumns);
    return {};
}

QVariant CalculatorTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return heads_.at(section);
    return look_.numberedRows ? QVariant(section + 1) : QVariant();
}

Qt::ItemFlags CalculatorTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (takesText(index.row(), index.column()))
        f |= Qt::ItemIsEditable;
    return f;
}

bool CalculatorTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    if (!keepText(index.row(), index.column(), value.toString().trimmed()))
        return false;
    emit dataChanged(index, index);
    textKept(index.row());
    return true;
}

bool CalculatorTableModel::keepText(int row, int column, const QString& text) {
    cells_.at(row)[column] = text;
    return true;
}

// ---------------------------------------------------------------------------------------------
// DapGridModel

namespace {

QStringList parameterGridHeads() {
    QStringList heads;
    for (const char* head : kParameterGridColumns)
        heads << QString::fromLatin1(head);
    return heads;
}

} // namespace

DapGridModel::DapGridModel(bool dalyRowTexts, QObject* parent)
    : DapGridModel(dalyRowTexts ? DapRowTexts::DalyCalculator : DapRowTexts::YllCalculator, parent) {}

DapGridModel::DapGridModel(DapRowTexts rowTexts, QObject* parent)
    : CalculatorTableModel(parameterGridHeads(), {Qt::AlignLeft | Qt::AlignVCenter, Qt::AlignCenter, false},
                           parent) {
    for (const auto& set : kBuiltInParameterSets) {
        const char* row = rowTexts == DapRowTexts::DalyCalculator ? set.dalyCalculatorRow
                          : rowTexts == DapRowTexts::YllCalculator ? set.yllCalculatorRow
                                                                   : set.id;
        cells_.push_back({QString::fromLatin1(row), QString::fromLatin1(set.r), QString::fromLatin1(set.K),
                          QString::fromLatin1(set.Beta), QString::fromLatin1(set.C),
                          QString::fromLatin1(kParameterNotSelected)});
    }
    cells_.push_back({rowTexts == DapRowTexts::Computation ? QString() : QString::fromLatin1(kCustomParameterRow),
                      QString(), QString(), QString(), QString(), QString::fromLatin1(kParameterNotSelected)});
}

bool DapGridModel::takesText(int row, int column) const {
    return row == kCustomRow && column >= RColumn && column <= CColumn;
}

bool DapGridModel::keepText(int row, int column, const QString& text) {
    if (heads_.at(column).toUpper() == QLatin1String("R") && !text.isEmpty()) {
        const double r = Val(text);
        if (r < 0 || r > 1) {
            prompts().ask(QString::fromLatin1(ct::kRBetweenZeroAndOne), Buttons::Ok, Icon::Warning,
                          QString::fromLatin1(ct::kTitleVesk));
            return false;
        }
    }
    return CalculatorTableModel::keepText(row, column, text);
}

void DapGridModel::toggleSelect(int row) {
    if (row < 0 || row >= rowCount())
        return;
    QString& cell = cells_.at(row)[SelectColumn];
    cell = QString::fromLatin1(isSelected(row) ? kParameterNotSelected : kParameterSelected);
    emit dataChanged(index(row, SelectColumn), index(row, SelectColumn));
}

void DapGridModel::chooseRow(int row, int compMode) {
    if (row < 0 || row >= rowCount())
        return;
    if (compMode != kCompModeQuick) {
        toggleSelect(row);
        return;
    }
    for (QStringList& cells : cells_)
        cells[SelectColumn] = QString::fromLatin1(kParameterNotSelected);
    cells_.at(row)[SelectColumn] = QString::fromLatin1(kParameterSelected);
    emit dataChanged(index(0, SelectColumn), index(rowCount() - 1, SelectColumn));
}

Cell DapGridModel::chosenDaps() const {
    const std::vector<DapValues> sets = selectedSets();
    if (sets.empty())
        return Cell();
    CellArray m({int(sets.size()), kDapC + 1});
    for (int i = 0; i < int(sets.size()); ++i) {
        const QString texts[] = {sets[i].id, sets[i].r, sets[i].K, sets[i].Beta, sets[i].C};
        for (int c = kDapId; c <= kDapC; ++c)
            if (!texts[c].isEmpty())
                m(i, c) = Cell(texts[c]);
    }
    return Cell(std::move(m));
}

bool DapGridModel::isSelected(int row) const {
    return text(row, SelectColumn) == QLatin1String(kParameterSelected);
}

std::vector<DapValues> DapGridModel::selectedSets() const {
    std::vector<DapValues> out;
    for (int i = 0; i < rowCount(); ++i)
        if (isSelected(i))
            out.push_back({text(i, IdColumn), text(i, RColumn), text(i, KColumn), text(i, BetaColumn),
                           text(i, CColumn)});
    return out;
}

// ---------------------------------------------------------------------------------------------
// AgeDefModel

AgeDefModel::AgeDefModel(QObject* parent)
    : CalculatorTableModel({QString::fromLatin1(ct::kAgeHead)},
                           {Qt::AlignRight | Qt::AlignVCenter, Qt::AlignRight | Qt::AlignVCenter, true},
                           parent) {
    cells_.assign(2, QStringList{QString()});
}

void AgeDefModel::textKept(int row) {
    if (row == rowCount() - 1 && !cells_.back().first().isEmpty()) {
        beginInsertRows(QModelIndex(), rowCount(), rowCount());
        cells_.push_back({QString()});
        endInsertRows();
    }
}

QStringList AgeDefModel::ages() const {
    QStringList out;
    for (const QStringList& r : cells_)
        if (!r.first().trimmed().isEmpty())
            out.push_back(r.first().trimmed());
    return out;
}

void AgeDefModel::setAges(const QList<int>& ages) {
    QStringList texts;
    for (int a : ages)
        texts.push_back(QString::number(a));
    setAgeTexts(texts);
}

void AgeDefModel::setAgeTexts(const QStringList& ages) {
    beginResetModel();
    cells_.clear();
    for (const QString& age : ages)
        cells_.push_back({age});
    cells_.push_back({QString()}); // the grid holds the entries plus a row to type in
    endResetModel();
}

// ---------------------------------------------------------------------------------------------
// CalcDataModel

// Before the first build, the label column alone.
CalcDataModel::CalcDataModel(QObject* parent)
    : CalculatorTableModel({QString::fromLatin1(ct::kAsgHead)},
                           {Qt::AlignLeft | Qt::AlignVCenter, Qt::AlignRight | Qt::AlignVCenter, false},
                           parent) {}

QString CalcDataModel::text(int row, int column) const {
    if (column <= inputCount())
        return CalculatorTableModel::text(row, column);
    return formatCalculatorValue(results_.at(column - 1 - inputCount()).at(row), decimals_);
}

bool CalcDataModel::takesText(int, int column) const {
    return column >= 1 && column <= inputCount();
}

void CalcDataModel::build(const QString& title, const QStringList& labels, const QStringList& inputHeads) {
    beginResetModel();
    title_ = title;
    heads_ = QStringList{QString::fromLatin1(ct::kAsgHead)} + inputHeads;
    inputCount_ = static_cast<int>(inputHeads.size());
    cells_.clear();
    for (const QString& label : labels)
        cells_.push_back(QStringList{label} + QStringList(inputHeads.size(), QString()));
    results_.clear();
    endResetModel();
}

QStringList CalcDataModel::labels() const {
    QStringList out;
    for (const QStringList& row : cells_)
        out << row.first();
    return out;
}

QString CalcDataModel::inputText(int row, int input) const {
    return cells_.at(row).at(input + 1);
}

void CalcDataModel::setInputText(int row, int input, const QString& text) {
    setData(index(row, input + 1), text);
}

void CalcDataModel::setResultColumn(const QString& head, const std::vector<Cell>& values) {
    for (int k = 0; k < resultCount(); ++k) {
        if (resultHead(k) == head) {
            results_[k] = values;
            const int col = 1 + inputCount() + k;
            emit dataChanged(index(0, col), index(rowCount() - 1, col));
            return;
        }
    }
    const int col = columnCount();
    beginInsertColumns(QModelIndex(), col, col);
    heads_.push_back(head);
    results_.push_back(values);
    endInsertColumns();
}

const std::vector<Cell>* CalcDataModel::result(const QString& head) const {
    for (int k = 0; k < resultCount(); ++k)
        if (resultHead(k) == head)
            return &results_[k];
    return nullptr;
}

void CalcDataModel::clearResults() {
    if (results_.empty())
        return;
    beginRemoveColumns(QModelIndex(), 1 + inputCount(), columnCount() - 1);
    heads_.resize(1 + inputCount());
    results_.clear();
    endRemoveColumns();
}

void CalcDataModel::setDecimals(int decimals) {
    decimals_ = std::clamp(decimals, 0, 10);
    if (resultCount() > 0 && rowCount() > 0)
        emit dataChanged(index(0, 1 + inputCount()), index(rowCount() - 1, columnCount() - 1));
}

QStringList CalcDataModel::GetString(int row) const {
    QStringList out;
    for (int c = 0; c < columnCount(); ++c)
        out.push_back(data(index(row, c)).toString());
    return out;
}

int CalcDataModel::GetIdx(const QString& label) const {
    for (int row = 0; row < rowCount(); ++row)
        if (cells_[row].first() == label)
            return row;
    return -1;
}

QString formatCalculatorValue(const Cell& value, int decimals) {
    if (value.isNull() || value.isEmpty())
        return QString();
    if (!value.isNumber())
        return value.toString();
    const int d = std::clamp(decimals, 0, 10);
    return formatNumber(value.toDouble(), QString::fromLatin1(ct::kDecimalFormats.at(d)));
}

} // namespace vesk
