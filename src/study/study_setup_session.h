#pragma once
// One opening of Study Setup (DEFINESTUDY1): its working fields and the operations behind its
// controls, with no widget. Four tabs, each applied by itself with the one button "Apply":
// 0 "Define Study", 1 "Age Groups", 2 "Pop Units -  Aggt. Schema", 3 "Causes of Burden".
//
// The form shows what the session holds and hands every edit, click and key to it; the session
// writes the study file through the study context and reloads the context after each change.

#include "database/study_context.h"
#include "platform/grid_model.h"
#include "study/study_setup.h"
#include "study/study_setup_ages.h"
#include "study/study_setup_scheme.h"

#include <QList>
#include <array>

namespace vesk {

class StudySetupSession {
public:
    enum Tab { TabStudy = 0, TabAgeGroups = 1, TabPopUnits = 2, TabCauses = 3 };

    // `newDatabase`: opened for a first study, as after File -> New (the causes tab is not offered).
    // `chosenSets`: the computation's MtxDAP, where the ticked parameter sets go; the opener hands
    // it in, as Study Setup cannot reach the computation.
    StudySetupSession(bool newDatabase, Cell& chosenSets, StudyContext& context = studyContext());

    StudyContext& context;
    Cell& chosenSets;
    const bool newDatabase;

    // Working fields.
    int tabInForce = TabStudy;
    bool dirty = false;
    std::array<bool, 4> applied{};
    QList<int> yearList;
    bool pickExisting = false; // "Pick an existing Study" rather than "Define new Study"
    StudyFields study;
    StudyField focus = StudyField::None; // where a refused Apply of the first tab leaves the cursor
    SchemeFields scheme;
    AgeGroupsEditor ages;
    GridModel dbgrid2;         // the studies
    GridModel flexBuiltInDAP;  // the built-in parameter sets
    GridModel DbGridCauseGrps; // the causes and the study's column
    GridModel MsflxdtCobcd;    // the causes mapped to the chosen sequela
    QString sequela;           // the sequela chosen in LstSqlacd

    // The form's load: the current study (its fields, definitions and scheme) or a new one, the
    // studies, and the parameter sets with those of chosenSets ticked.
    void load();
    void refreshStudies();
    // The fields of the tab "Define Study" from the current study, or blank for a new one.
    void showCurrentStudy();

    // Apply: the tab in force, or `tab`.
    bool apply();
    bool applyTab(int tab);
    // A change of tab: with the dirty flag set, "              Apply Changes" (Yes/No, "VESK"), and
    // Yes applies the tab left unless it was applied already. Then the new tab is in force.
    void changeTab(int newTab);
    // Entering the causes tab: the grid bound to the study's column, and the sequelae listed.
    QList<std::pair<QString, QString>> enterCausesTab();

    // The form's Close and its unload. False when the form stays open (the user chose to go on
    // with a new database that lacks the minimum). `abandoned` tells that the new database was
    // deleted.
    bool closeRequested(bool* abandoned = nullptr);
    bool FnChkMinStdParameter() const;

    // The study grid: a click on the "Slct" cell of body row `row` makes it current; Delete on a
    // row deletes the study after its questions.
    bool markCurrentAt(int row);
    bool deleteStudyAt(int row);

private:
    bool applyStudyTab();
    bool applyAgeGroupsTab();
    void newDatabaseComplete();
    bool askApplyChanges(int tab);
};

} // namespace vesk
