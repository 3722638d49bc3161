#pragma once
// frmChgPrpty, the properties of the chart on view in frmnew: its Gph.stp fields in the controls of six
// tabs (Chart, Title, Footnote, Axis X, Axis Y, Series). Apply checks the typed numbers (font sizes
// below 20, a legend position below 9, divisions and scale limits in digits), shows the first refusal
// and keeps the line as it was; otherwise it stores the fields into the line and calls `applied`.

#include "results/graph_props.h"

#include <QDialog>
#include <QHash>
#include <functional>

class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace vesk {

class frmChgPrpty : public QDialog {
public:
    frmChgPrpty(GraphLine& line, std::function<void()> applied, QWidget* parent = nullptr);

    QTabWidget* SSTab1 = nullptr;
    QComboBox* CmbChtTy = nullptr;
    QRadioButton *Optstck1 = nullptr, *OptStck2 = nullptr, *OptDsr1 = nullptr, *OptDSR2 = nullptr,
                 *OptShL1 = nullptr, *OptShL2 = nullptr;
    QComboBox *CmbTickXStyle = nullptr, *CmbTickYStyle = nullptr, *CmbpatternFillSty = nullptr,
              *CmbPlotFrmSty = nullptr, *CmbChtFrmSty = nullptr;
    QPushButton *cmdApply = nullptr, *cmdClose = nullptr;
    // The text fields by their object names (txtLegPos, txtFntSz, txtVSclMax ...).
    QLineEdit* field(const QString& name) const { return fields_.value(name); }

    // False after the message of the first field refused.
    bool Apply();

private:
    GraphLine& line_;
    std::function<void()> applied_;
    QHash<QString, QLineEdit*> fields_;
    QHash<QString, int> index_; // object name -> field index
};

} // namespace vesk
