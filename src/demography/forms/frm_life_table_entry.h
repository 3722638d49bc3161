#pragma once
// FrmLifeTableEntry, "LifeTable: Input Data And Choice Of Computational Method": the life table
// tool's window. The grid `datas` takes the ages and rates (and, under Keyfitz, populations), the
// fields the parameters, the options the method and the ladder of ages; Generate hands the result
// to a frmLifeTable. A Coale-Demeny model table can be shown beside it, or its rates put into the
// grid. The checks and the computation are the core's (demography/life_table_tool.h).

#include "demography/coale_demeny.h"
#include "demography/forms/frm_life_table.h"
#include "platform/grid_model.h"

#include <QPointer>
#include <QWidget>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace vesk {

class FlexGridView;

class FrmLifeTableEntry : public QWidget {
public:
    // The one window of the tool, made or brought forward; `parent` the frame's area.
    static FrmLifeTableEntry* open(QWidget* parent = nullptr);
    explicit FrmLifeTableEntry(QWidget* area = nullptr);

    FlexGridView* datas = nullptr;
    QLineEdit *txtIMR = nullptr, *txtImrDnmtr = nullptr, *txtPGR = nullptr, *TxtAsdrDnmtr = nullptr;
    QLineEdit *txtlftdec = nullptr, *Rngval = nullptr, *txtKFlwrlmt = nullptr, *txtKFupprlmt = nullptr;
    QLineEdit* txtLage = nullptr;
    QRadioButton *Optnewell = nullptr, *Optkeyfitz = nullptr, *Optrdmrll = nullptr, *OptGre = nullptr;
    QRadioButton *optAge1 = nullptr, *optAge2 = nullptr, *optAge3 = nullptr, *optAge4 = nullptr;
    QRadioButton *OptMAge5 = nullptr, *OptMAge10 = nullptr;
    QLabel* TxtBblHlp = nullptr;
    QPushButton *cmdGenAgeGrps = nullptr, *cmdIntpr = nullptr, *cmdLTGen = nullptr, *cmdClose = nullptr;
    QPushButton *cmdHelp = nullptr, *cmdCdTable = nullptr, *cmdCdRates = nullptr;
    QComboBox *cmbCdFamily = nullptr, *cmbCdSex = nullptr;
    QSpinBox* spnCdLevel = nullptr;

    GridModel& grid() { return grid_; }
    // The last result window this one opened (tests look at it).
    frmLifeTable* lastResult() const { return lastResult_; }

    void cmdGenAgeGrps_Click();
    void cmdLTGen_Click();
    void cmdCdTable_Click();
    void cmdCdRates_Click();
    void cmdHelp_Click();
    // An option of the method chosen: the global Method at once, and the fields it uses.
    void methodChosen(qint16 method);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildParameters();
    QWidget* buildMethods();
    QWidget* buildLadder();
    QWidget* buildModel();
    QLineEdit* field(const QString& name, const QString& value = QString());
    QRadioButton* option(const QString& name, const char* label);
    void showResult(QWidget* result);
    void showPopulation(bool on);
    qint16 method() const;
    int decimals() const;
    std::optional<CdLifeTable> chosenModel();

    GridModel grid_;
    QWidget* area_ = nullptr;
    QPointer<frmLifeTable> lastResult_;
    std::optional<CoaleDemenyData> model_;
    QStringList keptPopulation_;
};

} // namespace vesk
