#pragma once
// The grids of the calculators as table models, so that they work and can be tested without a view:
//   DapGridModel    flexBuiltInDAP: the built-in parameter sets, the "Custom" row and "Select"
//   AgeDefModel     AgeDef: the lower ages of the age intervals, one a row
//   CalcDataModel   flexData / flexYLLData: the age labels, the inputs and the result columns
// They emit only the signals of the model base, and so need no meta-object of their own.

#include "platform/cell.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <array>
#include <vector>

namespace vesk {

// One parameter set as the grid holds it: the texts of r, K, Beta and C.
struct DapValues {
    QString id;
    QString r, K, Beta, C;
};

class DapGridModel : public QAbstractTableModel {
public:
    enum Column { IdColumn = 0, RColumn, KColumn, BetaColumn, CColumn, SelectColumn, ColumnCount };
    static constexpr int kCustomRow = 4;

    // The row texts of the YLL calculator ("Built In 0") or of the DALY calculator ("Built In-0").
    explicit DapGridModel(bool dalyRowTexts, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Only the cells r, K, Beta, C of the "Custom" row take text. Leaving a cell whose column head,
    // upper-cased, is "R" with a value outside 0 to 1 is refused with "The value should be between 0
    // and 1" (title "VESK"): the value is not taken.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // A click in "Select" turns "False" to "True" and back.
    void toggleSelect(int row);
    bool isSelected(int row) const;
    // The marked rows, top to bottom.
    std::vector<DapValues> selectedSets() const;
    QString text(int row, int column) const;

private:
    std::vector<std::array<QString, ColumnCount>> rows_;
};

class AgeDefModel : public QAbstractTableModel {
public:
    explicit AgeDefModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // A text in the last row adds a blank row below it, so that there is always one to type in.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // The non-blank entries, top to bottom.
    QStringList ages() const;
    // Replaces the entries (a quick-fill list).
    void setAges(const QList<int>& ages);
    void setAgeTexts(const QStringList& ages);

private:
    QStringList rows_;
};

class CalcDataModel : public QAbstractTableModel {
public:
    explicit CalcDataModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // A new sheet: one row per label, the label column and the input columns, all inputs blank.
    void build(const QString& title, const QStringList& labels, const QStringList& inputHeads);
    bool isBuilt() const { return !labels_.isEmpty(); }
    QString title() const { return title_; }
    const QStringList& labels() const { return labels_; }
    int inputCount() const { return static_cast<int>(inputHeads_.size()); }
    // The text of input `input` (0-based after the label) of a row.
    QString inputText(int row, int input) const;
    void setInputText(int row, int input, const QString& text);

    // A result column: replaces the column of the same head, or adds one at the right.
    void setResultColumn(const QString& head, const std::vector<Cell>& values);
    int resultCount() const { return static_cast<int>(results_.size()); }
    QString resultHead(int k) const { return results_.at(k).head; }
    const std::vector<Cell>& resultValues(int k) const { return results_.at(k).values; }
    // The values of the result column with that head, or nullptr.
    const std::vector<Cell>* result(const QString& head) const;
    void clearResults();

    // The decimals of the result columns, 0 to 10, by the formats "0", "##.0", ... "##.0000000000".
    void setDecimals(int decimals);
    int decimals() const { return decimals_; }

    // GetString: the texts of a row as shown; GetIdx: the row of a label, -1 when none.
    QStringList GetString(int row) const;
    int GetIdx(const QString& label) const;

private:
    struct ResultColumn {
        QString head;
        std::vector<Cell> values;
    };
    QString title_;
    QStringList labels_;
    QStringList inputHeads_;
    std::vector<QStringList> inputs_;
    std::vector<ResultColumn> results_;
    int decimals_ = 2;
};

// The text of a result value in a format picture of the calculators: Null and Empty as blank.
QString formatCalculatorValue(const Cell& value, int decimals);

} // namespace vesk
