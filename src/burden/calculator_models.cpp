#include "burden/calculator_models.h"

#include "burden/calculator_texts.h"
#include "burden/parameter_sets.h"
#include "platform/prompts.h"
#include "platform/runtime.h"

#include <algorithm>

namespace vesk {

namespace ct = calculator_texts;

// ---------------------------------------------------------------------------------------------
// DapGridModel

DapGridModel::DapGridModel(bool dalyRowTexts, QObject* parent) : QAbstractTableModel(parent) {
    for (const auto& set : kBuiltInParameterSets) {
        rows_.push_back({QString::fromLatin1(dalyRowTexts ? set.dalyCalculatorRow : set.yllCalculatorRow),
                         QString::fromLatin1(set.r), QString::fromLatin1(set.K),
                         QString::fromLatin1(set.Beta), QString::fromLatin1(set.C),
                         QString::fromLatin1(kParameterNotSelected)});
    }
    rows_.push_back({QString::fromLatin1(kCustomParameterRow), QString(), QString(), QString(), QString(),
                     QString::fromLatin1(kParameterNotSelected)});
}

int DapGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DapGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DapGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return rows_.at(index.row()).at(index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            Qt::Alignment(index.column() == IdColumn ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter));
    return {};
}

QVariant DapGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return QString::fromLatin1(kParameterGridColumns.at(section));
    return {};
}

Qt::ItemFlags DapGridModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.row() == kCustomRow && index.column() >= RColumn && index.column() <= CColumn)
        f |= Qt::ItemIsEditable;
    return f;
}

bool DapGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    const QString text = value.toString().trimmed();
    const QString head = QString::fromLatin1(kParameterGridColumns.at(index.column())).toUpper();
    if (head == QLatin1String("R") && !text.isEmpty()) {
        const double r = Val(text);
        if (r < 0 || r > 1) {
            prompts().ask(QString::fromLatin1(ct::kRBetweenZeroAndOne), Buttons::Ok, Icon::Warning,
                          QString::fromLatin1(ct::kTitleVesk));
            return false;
        }
    }
    rows_.at(index.row()).at(index.column()) = text;
    emit dataChanged(index, index);
    return true;
}

void DapGridModel::toggleSelect(int row) {
    if (row < 0 || row >= rowCount())
        return;
    QString& cell = rows_.at(row).at(SelectColumn);
    cell = QString::fromLatin1(isSelected(row) ? kParameterNotSelected : kParameterSelected);
    emit dataChanged(index(row, SelectColumn), index(row, SelectColumn));
}

bool DapGridModel::isSelected(int row) const {
    return rows_.at(row).at(SelectColumn) == QLatin1String(kParameterSelected);
}

std::vector<DapValues> DapGridModel::selectedSets() const {
    std::vector<DapValues> out;
    for (int i = 0; i < rowCount(); ++i)
        if (isSelected(i))
            out.push_back({rows_[i][IdColumn], rows_[i][RColumn], rows_[i][KColumn], rows_[i][BetaColumn],
                           rows_[i][CColumn]});
    return out;
}

QString DapGridModel::text(int row, int column) const {
    return rows_.at(row).at(column);
}

// ---------------------------------------------------------------------------------------------
// AgeDefModel

AgeDefModel::AgeDefModel(QObject* parent) : QAbstractTableModel(parent) {
    rows_.resize(2);
}

int AgeDefModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int AgeDefModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1;
}

QVariant AgeDefModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return rows_.at(index.row());
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    return {};
}

QVariant AgeDefModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return QString::fromLatin1(ct::kAgeHead);
    return section + 1;
}

Qt::ItemFlags AgeDefModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable : Qt::NoItemFlags;
}

bool AgeDefModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    rows_[index.row()] = value.toString().trimmed();
    emit dataChanged(index, index);
    if (index.row() == rowCount() - 1 && !rows_.last().isEmpty()) {
        beginInsertRows(QModelIndex(), rowCount(), rowCount());
        rows_.push_back(QString());
        endInsertRows();
    }
    return true;
}

QStringList AgeDefModel::ages() const {
    QStringList out;
    for (const QString& r : rows_)
        if (!r.trimmed().isEmpty())
            out.push_back(r.trimmed());
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
    rows_ = ages;
    rows_.push_back(QString()); // the grid holds the entries plus a row to type in
    endResetModel();
}

// ---------------------------------------------------------------------------------------------
// CalcDataModel

CalcDataModel::CalcDataModel(QObject* parent) : QAbstractTableModel(parent) {}

int CalcDataModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : labels_.size();
}

int CalcDataModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1 + inputCount() + resultCount();
}

QVariant CalcDataModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const int c = index.column();
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            Qt::Alignment(c == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignRight | Qt::AlignVCenter));
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    if (c == 0)
        return labels_.at(index.row());
    if (c <= inputCount())
        return inputs_.at(index.row()).at(c - 1);
    return formatCalculatorValue(results_.at(c - 1 - inputCount()).values.at(index.row()), decimals_);
}

QVariant CalcDataModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    if (section == 0)
        return QString::fromLatin1(ct::kAsgHead);
    if (section <= inputCount())
        return inputHeads_.at(section - 1);
    return results_.at(section - 1 - inputCount()).head;
}

Qt::ItemFlags CalcDataModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() >= 1 && index.column() <= inputCount())
        f |= Qt::ItemIsEditable;
    return f;
}

bool CalcDataModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    inputs_[index.row()][index.column() - 1] = value.toString().trimmed();
    emit dataChanged(index, index);
    return true;
}

void CalcDataModel::build(const QString& title, const QStringList& labels, const QStringList& inputHeads) {
    beginResetModel();
    title_ = title;
    labels_ = labels;
    inputHeads_ = inputHeads;
    inputs_.assign(labels.size(), QStringList(inputHeads.size(), QString()));
    results_.clear();
    endResetModel();
}

QString CalcDataModel::inputText(int row, int input) const {
    return inputs_.at(row).at(input);
}

void CalcDataModel::setInputText(int row, int input, const QString& text) {
    setData(index(row, input + 1), text);
}

void CalcDataModel::setResultColumn(const QString& head, const std::vector<Cell>& values) {
    for (int k = 0; k < resultCount(); ++k) {
        if (results_[k].head == head) {
            results_[k].values = values;
            const int col = 1 + inputCount() + k;
            emit dataChanged(index(0, col), index(rowCount() - 1, col));
            return;
        }
    }
    const int col = columnCount();
    beginInsertColumns(QModelIndex(), col, col);
    results_.push_back({head, values});
    endInsertColumns();
}

const std::vector<Cell>* CalcDataModel::result(const QString& head) const {
    for (const auto& r : results_)
        if (r.head == head)
            return &r.values;
    return nullptr;
}

void CalcDataModel::clearResults() {
    if (results_.empty())
        return;
    beginRemoveColumns(QModelIndex(), 1 + inputCount(), columnCount() - 1);
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
    return labels_.indexOf(label);
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
