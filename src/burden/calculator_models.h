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

// The texts of the first column of flexBuiltInDAP: the calculators' row names, or the ids of the
// DALY computation and of the stored results' load (the Custom row without one).
enum class DapRowTexts { YllCalculator, DalyCalculator, Computation };

// CompMode, the menu entry that opened the DALY computation: Quick chooses one set, Sensitivity any.
inline constexpr int kCompModeQuick = 1;       // mnu_Daly
inline constexpr int kCompModeSensitivity = 2; // mnu_sens

// One parameter set as the grid holds it: the texts of r, K, Beta and C.
struct DapValues {
    QString id;
    QString r, K, Beta, C;
};

// What the three grids share: one head a column, a row of texts a row, and a cell edited at a
// time, its text trimmed. A grid may show a cell otherwise than by its text, take text in some
// cells only, refuse a text, or grow after one.
class CalculatorTableModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent = QModelIndex()) const final;
    int columnCount(const QModelIndex& parent = QModelIndex()) const final;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const final;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const final;
    Qt::ItemFlags flags(const QModelIndex& index) const final;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) final;

    // The text a cell shows.
    virtual QString text(int row, int column) const { return cells_.at(row).at(column); }

protected:
    struct Look {
        Qt::Alignment firstColumn;
        Qt::Alignment otherColumns;
        bool numberedRows; // the row heads count the rows from 1
    };
    CalculatorTableModel(QStringList heads, Look look, QObject* parent);

    virtual bool takesText(int /*row*/, int /*column*/) const { return true; }
    // Keeps a text typed into a cell that takes text; false refuses it.
    virtual bool keepText(int row, int column, const QString& text);
    // After the views have heard of a kept text.
    virtual void textKept(int /*row*/) {}

    QStringList heads_;
    std::vector<QStringList> cells_;

private:
    Look look_;
};

class DapGridModel : public CalculatorTableModel {
public:
    enum Column { IdColumn = 0, RColumn, KColumn, BetaColumn, CColumn, SelectColumn, ColumnCount };
    static constexpr int kCustomRow = 4;

    // The row texts of the YLL calculator ("Built In 0") or of the DALY calculator ("Built In-0").
    explicit DapGridModel(bool dalyRowTexts, QObject* parent = nullptr);
    // BuldDapArray: the built-in sets with the row texts given, then Custom, all "False".
    explicit DapGridModel(DapRowTexts rowTexts, QObject* parent = nullptr);

    // A click in "Select" turns "False" to "True" and back.
    void toggleSelect(int row);
    // A click in "Select" of the DALY computation: Quick (kCompModeQuick) makes the row the one
    // chosen; Sensitivity toggles it ("False" becomes "True", anything else "False").
    void chooseRow(int row, int compMode);
    // MtxDAP: (chosen rows, kDapId .. kDapC) of the rows marked "True", top to bottom, the cells as
    // the grid's texts and an empty one Empty; Empty when no row is marked.
    Cell chosenDaps() const;
    bool isSelected(int row) const;
    // The marked rows, top to bottom.
    std::vector<DapValues> selectedSets() const;

protected:
    // Only the cells r, K, Beta, C of the "Custom" row take text.
    bool takesText(int row, int column) const override;
    // Leaving a cell whose column head, upper-cased, is "R" with a value outside 0 to 1 is refused
    // with "The value should be between 0 and 1" (title "VESK"): the value is not taken.
    bool keepText(int row, int column, const QString& text) override;
};

class AgeDefModel : public CalculatorTableModel {
public:
    explicit AgeDefModel(QObject* parent = nullptr);

    // The non-blank entries, top to bottom.
    QStringList ages() const;
    // Replaces the entries (a quick-fill list).
    void setAges(const QList<int>& ages);
    void setAgeTexts(const QStringList& ages);

protected:
    // A text in the last row adds a blank row below it, so that there is always one to type in.
    void textKept(int row) override;
};

// The texts of a row: its label, then its inputs; the result columns follow.
class CalcDataModel : public CalculatorTableModel {
public:
    explicit CalcDataModel(QObject* parent = nullptr);

    // A new sheet: one row per label, the label column and the input columns, all inputs blank.
    void build(const QString& title, const QStringList& labels, const QStringList& inputHeads);
    bool isBuilt() const { return !cells_.empty(); }
    QString title() const { return title_; }
    QStringList labels() const;
    int inputCount() const { return inputCount_; }
    // The text of input `input` (0-based after the label) of a row.
    QString inputText(int row, int input) const;
    void setInputText(int row, int input, const QString& text);

    // A result column: replaces the column of the same head, or adds one at the right.
    void setResultColumn(const QString& head, const std::vector<Cell>& values);
    int resultCount() const { return static_cast<int>(results_.size()); }
    QString resultHead(int k) const { return heads_.at(1 + inputCount_ + k); }
    const std::vector<Cell>& resultValues(int k) const { return results_.at(k); }
    // The values of the result column with that head, or nullptr.
    const std::vector<Cell>* result(const QString& head) const;
    void clearResults();

    // The decimals of the result columns, 0 to 10, by the formats "0", "##.0", ... "##.0000000000".
    void setDecimals(int decimals);
    int decimals() const { return decimals_; }

    // GetString: the texts of a row as shown; GetIdx: the row of a label, -1 when none.
    QStringList GetString(int row) const;
    int GetIdx(const QString& label) const;
    // A result shows in the format of the decimals.
    QString text(int row, int column) const override;

protected:
    // The inputs take text, the labels and results do not.
    bool takesText(int row, int column) const override;

private:
    QString title_;
    int inputCount_ = 0;
    std::vector<std::vector<Cell>> results_; // under the heads after the inputs
    int decimals_ = 2;
};

// The text of a result value in a format picture of the calculators: Null and Empty as blank.
QString formatCalculatorValue(const Cell& value, int decimals);

} // namespace vesk
