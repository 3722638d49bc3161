#pragma once
// frmVESKSetup: the preferences form. A modal dialog over the frame with the tabs of SSTab1 (file
// locations, column widths, decimal places, life tables, table names, misc, graph export), the hint
// line that says what the control under the pointer is for (bubblehlp), and OK, Apply and Close.
//
// The window is thin: what it holds and what its buttons do is a PreferencesSession's
// (shell/preferences_session.h). It shows the session, hands it every gesture (a field typed or
// left, a grid edited, an option chosen) and shows it again. VeskSetupForm is the form as the frame
// and the loading chain know it: it keeps the session for the life of the program, makes the
// window the first time it is shown, and presses OK on the session alone when nobody has shown it.

#include "shell/frame_preferences.h"
#include "shell/preferences_session.h"

#include <QAbstractSpinBox>
#include <QDialog>
#include <QHash>
#include <QPointer>
#include <array>
#include <functional>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace vesk {

class FlexGridView;

// UpDown1: the arrows of a spin control without a text of their own; each step is handed on.
class UpDownArrows : public QAbstractSpinBox {
public:
    explicit UpDownArrows(QWidget* parent = nullptr);
    void stepBy(int steps) override;
    std::function<void(int)> onStep;

protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
};

class frmVESKSetup : public QDialog {
    Q_OBJECT
public:
    explicit frmVESKSetup(PreferencesSession& session, QWidget* parent = nullptr);

    PreferencesSession& session() { return session_; }
    // Shows what the session holds.
    void refresh();
    // The OK button: Apply, then Close. (The form's Ok_Click, which File -> New and File -> Open
    // press, is Apply alone: VeskSetupForm::Ok_Click.)
    void okPressed();
    // Apply: the field that has the focus is left first, as a click on the button leaves it.
    void cmdApply_Click();
    // Close (Cancel): the form hides when the paths are filled.
    void Cancel_Click();
    // The field of that name (txtwklocation, txtGrpDctTblNm...), or nullptr.
    QLineEdit* fieldNamed(const QString& name) const { return fields_.value(name); }

    QTabWidget *SSTab1 = nullptr, *SSTab2 = nullptr, *SSTabColWth = nullptr, *SSTabDecPlcs = nullptr;
    QLineEdit *txtwklocation = nullptr, *txtVESKObj = nullptr, *txtStatOut = nullptr, *txtImpLoc = nullptr,
              *txtTempArea = nullptr;
    QLabel *lblSuccess = nullptr, *lblBusy = nullptr, *lblfail = nullptr;
    QPushButton *cmdSuccess = nullptr, *CmdBussy = nullptr, *Cmdfailure = nullptr;
    QComboBox *cmbVESKADW = nullptr, *cmbVESKCSMP = nullptr, *cmbVESKPSYr = nullptr;
    std::array<FlexGridView*, kMenuTabCount> FlexColumnWdth{}, FlexDecPlcs{};
    QGroupBox* sampleFrame = nullptr;
    FlexGridView* FlxTstGrdEft = nullptr;
    QLineEdit* txtSampPct = nullptr;
    QLabel* lblSmpEft = nullptr;
    QGroupBox* StbLfFrame = nullptr;
    QRadioButton *OptBltStd = nullptr, *OptUsrdf = nullptr, *optBltWHO = nullptr;
    QLabel* lblLifeTableNote = nullptr;
    FlexGridView* FlexLftTable = nullptr;
    QPushButton* Command1 = nullptr;
    QRadioButton *Optnewell1 = nullptr, *OptKeyfitz1 = nullptr, *Optrdmrll1 = nullptr, *Optgre1 = nullptr;
    QLineEdit *Txtradix1 = nullptr, *txtKFlwrlmt1 = nullptr, *txtKFupprlmt1 = nullptr, *rngval1 = nullptr;
    UpDownArrows* UpDown1 = nullptr;
    QLineEdit *TxtMinMaxage = nullptr, *TxtMaxMaxage = nullptr, *txtNLdCuss = nullptr;
    QGroupBox* FmeDtlsForExcel = nullptr;
    QComboBox* CmbExportList = nullptr;
    QLineEdit *txtFlname = nullptr, *txtShtName = nullptr, *txtstcolno = nullptr, *txtstrowno = nullptr;
    QLabel* Hint = nullptr;
    QPushButton *Ok = nullptr, *cmdApply = nullptr, *cmdClose = nullptr;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    // Escape and the window's close button are Close.
    void reject() override;

private:
    // The tabs, each built by its own function (frm_vesk_setup_pages.cpp).
    QWidget* buildFileLocations();
    QWidget* buildMenuGrids(bool widths);
    QWidget* buildSample();
    QWidget* buildLifeTables();
    QWidget* buildStandardTable();
    QWidget* buildMethod();
    QWidget* buildTableNames();
    QWidget* buildMisc();
    QWidget* buildGraphExport();
    QWidget* buildFoot();

    // The pieces of the tabs.
    QLineEdit* field(const char* name, QWidget* parent);
    QComboBox* recordset(const char* name, const char* table, QWidget* parent);
    QPushButton* button(const char* name, const char* caption, QWidget* parent);
    QRadioButton* option(const char* name, const char* caption, QWidget* parent);
    FlexGridView* grid(const QString& name, GridModel& model, QWidget* parent);
    void hint(QWidget* w, const char* words);

    void connectGrids();
    void pageChanged();
    // The sample for the row being edited on the open tab of the widths or the decimals.
    void resample();
    void chooseSound(EventSound sound, QPushButton* source);
    void refreshFields();
    void refreshOptions();
    void refreshLabels();
    void bubblehlp(QWidget* control);
    void fieldLeft(QLineEdit* field, QWidget* next);
    bool captionCell(QObject* watched, QEvent* event) const;

    PreferencesSession& session_;
    QHash<QString, QLineEdit*> fields_;
    QHash<QString, QComboBox*> combos_;
    bool refreshing_ = false;
};

// The preferences form of the program: the frame's Preferences and the toolbar's "Setup" show it,
// File -> New and File -> Open press its OK.
class VeskSetupForm : public PreferencesForm {
public:
    void Ok_Click() override;
    void showModal() override;
    void hide() override;

    PreferencesSession& session() { return session_; }
    // The window, once it has been shown; nullptr before.
    frmVESKSetup* window() const { return window_; }

private:
    PreferencesSession session_;
    QPointer<frmVESKSetup> window_;
};

VeskSetupForm& veskSetupForm();
// Makes the form the frame's preferences (setPreferencesForm).
void installPreferencesForm();

} // namespace vesk
