#pragma once
// DEFINESTUDY1, "Define Study": the modal form through which a study comes to exist. Four tabs on
// SSTabDstudy, each applied by itself with the one button "Apply": "Define Study", "Age Groups",
// "Pop Units -  Aggt. Schema" and "Causes of Burden". After File -> New the form also decides, as
// it closes, whether the new database survives.
//
// The form is thin: its working fields and every operation are StudySetupSession's; the widgets
// show the session and hand it each edit, click and key.

#include "study/study_setup_report.h"
#include "study/study_setup_session.h"

#include <QDialog>
#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace vesk {

class FlexGridView;

// The widths of the studies grid in twips: the record selector, then the five columns.
inline constexpr int kStudyColumnWidths[6] = {400, 750, 700, 2800, 700, 600};

class DEFINESTUDY1 : public QDialog {
    Q_OBJECT
public:
    // `newDatabase`: for a first study, as after File -> New: the causes tab is disabled.
    // `chosenSets`: the computation's MtxDAP, which the grid of parameter sets shows and fills.
    DEFINESTUDY1(bool newDatabase, Cell& chosenSets, QWidget* parent = nullptr);
    ~DEFINESTUDY1() override;

    // The one instance, opened modally over `parent` without waiting; an open one is raised. What
    // Study Setup asks of the frame while the form is up goes to `onRequest`, and the parameter sets
    // ticked go to `chosenSets`; the opener gives both.
    static DEFINESTUDY1* open(QWidget* parent, bool newDatabase, Cell& chosenSets,
                              FrameRequestHandler onRequest = {});
    static DEFINESTUDY1* instance();

    StudySetupSession& session() { return *session_; }
    // The pop-up of an age grid (0 YLL, 1 YLD, 2 PND), aimed at that grid.
    QMenu* popupFor(int column);

    QTabWidget* SSTabDstudy = nullptr;
    QPushButton* cmdApply = nullptr;
    QPushButton* cmdClose = nullptr;

    // "Define Study"
    QRadioButton* OptNewStudy = nullptr;
    QRadioButton* OptPickStudy = nullptr;
    QLineEdit* txtBDSId = nullptr;
    QLineEdit* txtYear = nullptr;
    QLineEdit* txtBDSTi = nullptr;
    QListWidget* lstYear = nullptr;
    FlexGridView* dbgrid2 = nullptr;
    FlexGridView* flexBuiltInDAP = nullptr;
    FlexGridView* flexAddlDAP = nullptr;

    // "Age Groups"
    FlexGridView* RPTGrid = nullptr;
    FlexGridView* Rptgrid2 = nullptr;
    FlexGridView* Rptgrid3 = nullptr;
    QRadioButton* OptAfresh = nullptr;
    QRadioButton* OptPickAges = nullptr;
    QRadioButton* OptDisplayAges = nullptr;
    QComboBox* Combo1 = nullptr;

    // "Pop Units -  Aggt. Schema"
    QRadioButton* OptNewSchema = nullptr;
    QRadioButton* OptPickSchema = nullptr;
    QRadioButton* OptDisplaySchema = nullptr;
    QLineEdit* Txtpagsch = nullptr;
    QLineEdit* TXTBPU = nullptr;
    QLineEdit* tXTPAG1 = nullptr;
    QLineEdit* TXTPAG2 = nullptr;
    QComboBox* CMBPAGSCH = nullptr;

    // "Causes of Burden"
    FlexGridView* DbGridCauseGrps = nullptr;
    QPushButton* cmdSelectAll = nullptr;
    QPushButton* cmdUnselectAll = nullptr;
    QPushButton* cmdSwap = nullptr;
    QListWidget* LstSqlacd = nullptr;
    FlexGridView* MsflxdtCobcd = nullptr;

public slots:
    void reject() override; // Escape closes as Close does

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildStudyTab();
    QWidget* buildAgeGroupsTab();
    QWidget* buildSchemeTab();
    QWidget* buildCausesTab();
    void connectStudyTab();
    void connectAgeGroupsTab();
    void connectSchemeTab();
    void connectCausesTab();

    // The widgets from the session's fields, without counting as edits.
    void showSession();
    void fitGrids();
    void markDirty();
    void applyClicked();
    void tabChanged(int index);
    void studyOptionClicked(bool pick);
    void ageGridKey(int column, int row);
    void ageGridEdited(int column, int row);
    void quickFill(int column, int which);
    void sequelaChosen();
    void sequelaCauseEntered(int row, int col);
    bool filterStudyIdKey(QKeyEvent* event);
    bool filterTitleKey(QKeyEvent* event);
    void studyIdLeft();
    void yearLeft();
    void schemeIdLeft();

    std::unique_ptr<StudySetupSession> session_;
    std::unique_ptr<ScopedSetupHandler> requests_;
    QMenu* popupAges_ = nullptr;
    QMenu* popupPnd_ = nullptr;
    int popupTarget_ = 0;
    bool enterPressed_[3] = {false, false, false};
    bool cobcdEnter_ = false;
    bool showing_ = false;
    GridModel addlDap_;
};

} // namespace vesk
