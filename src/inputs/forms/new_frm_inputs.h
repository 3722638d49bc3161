#pragma once
// NewFrmInputs, "Inputs": the one window where a study's data are typed, checked, confirmed and
// imported for one unit (BPU) and one year at a time. Tab 0 chooses the unit (a double click on its
// row); the other tabs hold the sheets of that unit: population, death rates and demographic
// parameters; cause-of-death proportions; epidemiological estimates by cause and by sequela; and
// disability weights. Nothing is written until a sheet's Confirm; leaving the unit or the window
// loses what was not confirmed. The work is done in the core (inputs/*_sheet.h, *_store.h,
// demography_import.h); the window reads its grids and fields and shows the outcome.

#include "database/db_connection.h"
#include "inputs/demography_store.h"
#include "inputs/epi_sheet.h"
#include "inputs/inputs_study.h"
#include "inputs/weights_sheet.h"
#include "platform/grid_model.h"

#include <QHash>
#include <QWidget>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace vesk {

class FlexGridView;

class NewFrmInputs : public QWidget {
    Q_OBJECT
public:
    // The window on the current study, after the guard and the opening checks; nullptr after their
    // message when one fails.
    static NewFrmInputs* open(QWidget* parent = nullptr);
    NewFrmInputs(std::shared_ptr<DbConnection> db, InputsStudy study, QWidget* parent = nullptr);

    // The pair of the public flag: true while a move keeps pending epidemiological figures in memory.
    bool HoldInMem() const { return holdInMem_; }
    void HoldsInMem(bool on) { holdInMem_ = on; }
    // The unit in force ("" before one is chosen).
    const QString& unitInForce() const { return unit_.bpuId; }

private:
    // The frame and the chooser (new_frm_inputs.cpp).
    QWidget* buildSelectTab();
    QPushButton* goToSelect(QWidget* parent);
    void chooseUnit(int row);
    void procChckConfm();
    // A tab opened: stored rows that no longer fit the age definitions are offered for deletion.
    void tabOpened(int tab);
    void status(const QString& text);
    // Demographics (inputs_demography_tab.cpp).
    QWidget* buildDemographicsTab();
    QWidget* demographySheet(DemographyKind kind);
    void confirmDemographySheet(DemographyKind kind);
    void importDemographySheet(DemographyKind kind);
    void switchDemographyLastRow(DemographyKind kind, int row);
    void loadDemographics();
    // Causes, epidemiology and weights (inputs_cause_tabs.cpp).
    QWidget* buildCauseTab();
    QWidget* buildEpiTab();
    QWidget* buildWeightsTab();
    QWidget* navigation(QWidget* parent, const QString& suffix);
    void loadCauses();
    void moveTo(int cause);
    void showEpi();
    void confirmEpi(bool bySequela);
    void importEpiSheet(bool bySequela);
    void procCmdAdd(bool bySequela);
    void captionByCause();
    void lookAtSequelaShares();
    void loadWeights();
    EpiKey epiKey(bool bySequela) const;

    std::shared_ptr<DbConnection> db_;
    InputsStudy study_;
    SheetUnit unit_;
    bool holdInMem_ = false;
    int cause_ = 0;
    bool addedRow_[2] = {false, false};
    LoadedFigures loaded_[2];
    CellArray memory_;
    QHash<QString, bool> epiDirty_;
    QHash<QString, QList<QStringList>> epiPending_; // the texts of a cause left with HoldInMem up

    QTabWidget* SSTabInputs = nullptr;
    QLabel* lblStatus = nullptr;
    GridModel* bpuModel_ = nullptr;
    FlexGridView* msflgBPU = nullptr;
    QTabWidget* DemogphSubtab = nullptr;
    GridModel* demographyModel_[2] = {nullptr, nullptr};
    FlexGridView* msflgPop = nullptr;
    FlexGridView* msflgASDR = nullptr;
    QLineEdit* txtMul = nullptr;
    QLineEdit* txtDmntr = nullptr;
    GridModel* parametersModel_ = nullptr;
    FlexGridView* msflgDP = nullptr;
    GridModel* causeModel_ = nullptr;
    FlexGridView* msflgCOD = nullptr;
    QTabWidget* EpiTab = nullptr;
    GridModel* epiModel_ = nullptr;
    GridModel* sequelaModel_ = nullptr;
    FlexGridView* flex1 = nullptr;
    FlexGridView* grdSqle = nullptr;
    QLineEdit* txtIncRate = nullptr;
    QLineEdit* txtPrvlRate = nullptr;
    QComboBox* cmbSqla = nullptr;
    QCheckBox* ChkSqleOvrd = nullptr;
    QLabel* lblCauseCode = nullptr;
    QLabel* lblCauseName = nullptr;
    GridModel* weightsModel_ = nullptr;
    FlexGridView* MSFlgDWT = nullptr;
};

} // namespace vesk
