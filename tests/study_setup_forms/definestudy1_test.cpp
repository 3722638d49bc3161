// DEFINESTUDY1 driven as a user drives it: typing in its fields and grids, clicking its options,
// cells and buttons, and answering its questions.

#include "burden/computation.h"
#include "database/db_create.h"
#include "database/study_context.h"
#include "form_support.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "platform/prompts.h"
#include "query_rows.h"
#include "shell/loading_chain.h"
#include "shell/menu_state.h"
#include "shell/study_backend.h"
#include "study/asg_data.h"

#include <QAction>
#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTimer>

using namespace vesk;
using namespace vesk::test;

class DefineStudy1Test : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir_;
    QString file_;
    ScriptedPrompts prompts_;
    RecordingMenus menus_;
    DatabaseStudyBackend backend_;
    QPointer<DEFINESTUDY1> form_;

    DEFINESTUDY1& openForm(bool newDatabase = false) {
        // As the frame opens it: the computation's parameter sets and the frame's request handler.
        form_ = DEFINESTUDY1::open(nullptr, newDatabase, computation().MtxDAP, applyFrameRequest);
        if (!QTest::qWaitForWindowExposed(form_) || !QTest::qWaitForWindowActive(form_))
            qWarning("the form did not come up");
        return *form_;
    }
    void exec(const QString& sql, const QVariantList& values = {}) {
        QSqlError e;
        QVERIFY2(studyContext().StudyDB->exec(sql, values, &e), qPrintable(sql + ": " + e.text()));
    }
    static QStringList rows(const QString& sql) { return queryRows(*studyContext().StudyDB, sql); }
    // A new study made on the first tab.
    void newStudy(DEFINESTUDY1& f, const QString& id, const QString& years, const QString& title) {
        f.OptNewStudy->click();
        typeField(f.txtBDSId, id);
        typeField(f.txtYear, years);
        typeField(f.txtBDSTi, title);
        f.cmdApply->click();
    }

private slots:
    void init() {
        file_ = dir_.filePath(QStringLiteral("study%1.vdb").arg(QDateTime::currentMSecsSinceEpoch()));
        QString error;
        QVERIFY2(createStudyFile(file_, &error), qPrintable(error));
        studyContext() = StudyContext{};
        computation() = Computation{};
        preferences() = PreferencesControls{};
        preferences().txtwklocation = QFileInfo(file_).absolutePath();
        preferences().txtVESKObj = QFileInfo(file_).fileName();
        QVERIFY(studyContext().ensureStudyDB(&error));
        prompts_.clear();
        setPromptService(&prompts_);
        setMenuSwitch(&menus_);
        setStudyBackend(&backend_);
        clearErrorStore();
        FlagDataADW() = false;
        FlagDataCSM() = false;
    }
    void cleanup() {
        if (form_) {
            form_->setAttribute(Qt::WA_DeleteOnClose, false);
            delete form_;
        }
        studyContext() = StudyContext{};
        computation() = Computation{};
        setPromptService(nullptr);
        setMenuSwitch(nullptr);
        setStudyBackend(nullptr);
    }

    void opensOnItsFourTabs() {
        DEFINESTUDY1& f = openForm();
        QCOMPARE(f.windowTitle(), QString("Define Study"));
        QCOMPARE(f.SSTabDstudy->count(), 4);
        QCOMPARE(f.SSTabDstudy->tabText(0), QString("Define Study"));
        QCOMPARE(f.SSTabDstudy->tabText(1), QString("Age Groups"));
        QCOMPARE(f.SSTabDstudy->tabText(2), QString("Pop Units -  Aggt. Schema"));
        QCOMPARE(f.SSTabDstudy->tabText(3), QString("Causes of Burden"));
        QCOMPARE(f.cmdApply->text(), QString("Apply"));
        QVERIFY(f.OptNewStudy->isChecked()); // no current study
        QVERIFY(f.SSTabDstudy->isTabEnabled(3));
        QVERIFY(f.isModal() || f.windowModality() == Qt::ApplicationModal);
        QCOMPARE(DEFINESTUDY1::open(nullptr, false, computation().MtxDAP), &f); // one instance
    }

    void aFirstStudyHasNoCausesTab() {
        DEFINESTUDY1& f = openForm(true);
        for (int tab = 0; tab < 3; ++tab)
            QVERIFY(f.SSTabDstudy->isTabEnabled(tab));
        QVERIFY(!f.SSTabDstudy->isTabEnabled(3));
    }

    void theStudyIdTakesLettersAndDigitsOnly() {
        DEFINESTUDY1& f = openForm();
        f.txtBDSId->setFocus();
        QTest::keyClicks(f.txtBDSId, "1");
        QCOMPARE(f.txtBDSId->text(), QString());
        QTest::keyClicks(f.txtBDSId, "In_d-9");
        QCOMPARE(f.txtBDSId->text(), QString("Ind9"));
        QCOMPARE(prompts_.messages(), QStringList({"The StudyId should start with a character",
                                                   "No data other than alphabets and Numerics is allowed ",
                                                   "No data other than alphabets and Numerics is allowed "}));
        QTest::keyClicks(f.txtBDSId, "xyz"); // five characters at most
        QCOMPARE(f.txtBDSId->text(), QString("Ind9x"));
        prompts_.clear();
        f.txtBDSTi->setFocus();
        QTest::keyClicks(f.txtBDSTi, " National");
        QCOMPARE(f.txtBDSTi->text(), QString("National"));
        QCOMPARE(prompts_.messages(), QStringList({"The Studytitle should not begin with the space"}));
    }

    void aBlankIdIsQuestionedOnLeavingIt() {
        DEFINESTUDY1& f = openForm();
        f.txtBDSId->setFocus();
        prompts_.answer(Answer::Ok);
        f.txtBDSTi->setFocus();
        QCOMPARE(prompts_.messages(), QStringList({"Study Id Cannot Be Blank:"}));
        QCOMPARE(prompts_.shown()[0].title, QString("vesk"));
        QCOMPARE(prompts_.shown()[0].buttons, Buttons::OkCancel);
        QTRY_VERIFY(f.txtBDSId->hasFocus());
    }

    void aBadYearIsRefusedAndTheFieldCancelled() {
        DEFINESTUDY1& f = openForm();
        typeField(f.txtBDSId, "S1");
        typeField(f.txtYear, "2003-2001");
        f.txtBDSTi->setFocus();
        QCOMPARE(prompts_.messages(), QStringList({"Not a valid Entry for Date"}));
        QCOMPARE(f.txtYear->text(), QString());
        prompts_.clear();
        typeField(f.txtYear, "2001-2003");
        f.txtBDSTi->setFocus();
        QVERIFY(prompts_.messages().isEmpty());
    }

    void applyMakesTheStudyAndListsIt() {
        DEFINESTUDY1& f = openForm();
        newStudy(f, "S1", "2001-2003", "National");
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('\n')));
        QCOMPARE(rows("SELECT BDSId, Year, Slct FROM _DctBDS ORDER BY Year"),
                 QStringList({"S1|2001|1", "S1|2002|0", "S1|2003|0"}));
        QCOMPARE(f.session().dbgrid2.rows(), 4);
        QCOMPARE(f.lstYear->count(), 3);
        QCOMPARE(f.session().yearList, (QList<int>{2001, 2002, 2003}));
        QVERIFY(f.session().applied[0]);
        // A blank title is refused and the cursor goes back to it.
        prompts_.clear();
        newStudy(f, "S2", "2001", "");
        QCOMPARE(prompts_.messages(), QStringList({"Study title is blank append record is not possibe"}));
        QVERIFY(f.txtBDSTi->hasFocus());
    }

    void pickingAndDeletingInTheStudyGrid() {
        DEFINESTUDY1& f = openForm();
        newStudy(f, "S1", "2001", "First");
        newStudy(f, "S2", "2005", "Second");
        QCOMPARE(studyContext().CurBDSId, QString("S2"));
        // A click on "Slct" of the first row makes S1 current.
        clickCell(f.dbgrid2, 0, 4);
        QCOMPARE(studyContext().CurBDSId, QString("S1"));
        QCOMPARE(rows("SELECT BDSId FROM _DctBDS WHERE Slct <> 0"), QStringList({"S1"}));
        QVERIFY(f.OptPickStudy->isChecked());
        QCOMPARE(f.txtBDSId->text(), QString("S1"));
        QVERIFY(f.txtBDSId->isReadOnly());
        // Delete on the second row: both questions, and S2 goes with its column.
        clickCell(f.dbgrid2, 1, 0);
        prompts_.clear();
        prompts_.answer(Answer::Yes);
        prompts_.answer(Answer::Yes);
        f.dbgrid2->setFocus();
        QTest::keyClick(f.dbgrid2, Qt::Key_Delete);
        QCOMPARE(prompts_.messages().size(), 2);
        QCOMPARE(prompts_.messages()[0], QString(" Do U want to delete the selected study"));
        QCOMPARE(rows("SELECT DISTINCT BDSId FROM _DctBDS"), QStringList({"S1"}));
        QCOMPARE(f.session().dbgrid2.rows(), 2);
    }

    void theParameterSetsFillMtxDAPAndTheOthersAreNotBuilt() {
        DEFINESTUDY1& f = openForm();
        QCOMPARE(f.session().flexBuiltInDAP.rows(), 5);
        clickCell(f.flexBuiltInDAP, 1, 5);
        QVERIFY(computation().MtxDAP.isArray());
        QCOMPARE(computation().MtxDAP.array()(0, 0).toString(), QString("1"));
        QCOMPARE(f.session().flexBuiltInDAP.textMatrix(2, 5), QString("True"));
        clickCell(f.flexBuiltInDAP, 1, 5);
        QVERIFY(!computation().MtxDAP.isArray());
        clickCell(f.flexAddlDAP, 0, 1);
        QCOMPARE(prompts_.messages(), QStringList({"Yet to be developed"}));
    }

    void ageGridsAreTypedIntoAndHoldTheRowRule() {
        DEFINESTUDY1& f = openForm();
        newStudy(f, "S1", "2001", "First");
        f.SSTabDstudy->setCurrentIndex(1);
        typeAges(f.RPTGrid, {"0", "5", "15"});
        QCOMPARE(gridColumn(f.session().ages.RPTGrid), QStringList({"0", "5", "15", ""}));
        QVERIFY(f.session().ages.gridChanged);
        // Letters do not enter a cell; a second point neither.
        clickCell(f.Rptgrid2, 0, 0);
        QTest::keyClicks(f.Rptgrid2, "0a.5.");
        QCOMPARE(f.session().ages.Rptgrid2.textMatrix(1, 0), QString("0.5"));
        QVERIFY(prompts_.messages().isEmpty());
        // Enter leaves the row: 0.5 against 0 breaks the row rule.
        QTest::keyClick(f.Rptgrid2, Qt::Key_Return);
        QCOMPARE(prompts_.messages().size(), 1);
        QVERIFY(prompts_.messages()[0].startsWith("Age gruop defination must satisfy"));
        QCOMPARE(f.session().ages.RPTGrid.textMatrix(1, 0), QString());
        QCOMPARE(f.session().ages.Rptgrid2.textMatrix(1, 0), QString());
        QVERIFY(f.session().ages.rowRuleFired);
        QCOMPARE(f.session().ages.RPTGrid.row(), 1);
        QVERIFY(f.RPTGrid->hasFocus());
        // Delete asks, and removes the row.
        prompts_.clear();
        prompts_.answer(Answer::Ok);
        clickCell(f.RPTGrid, 1, 0);
        QTest::keyClick(f.RPTGrid, Qt::Key_Delete);
        QCOMPARE(prompts_.messages(), QStringList({"Are you sure to delete the row ?"}));
        QCOMPARE(gridColumn(f.session().ages.RPTGrid), QStringList({"", "15", ""}));
    }

    void thePopUpsFillAGrid() {
        DEFINESTUDY1& f = openForm();
        f.SSTabDstudy->setCurrentIndex(1);
        f.popupFor(0)->findChild<QAction*>("mnuFiveAgeGroup")->trigger();
        QCOMPARE(gridColumn(f.session().ages.RPTGrid), QStringList({"0", "5", "15", "45", "60", ""}));
        f.popupFor(1)->findChild<QAction*>("mnuSevenAgeGroup")->trigger();
        QCOMPARE(gridColumn(f.session().ages.Rptgrid2),
                 QStringList({"0", "5", "15", "30", "45", "60", "70", ""}));
        QCOMPARE(f.popupFor(2)->actions().size(), 1);
        QCOMPARE(f.popupFor(0)->actions()[0]->text(), QString("Five Age Group"));
        // The PND pop-up opens "Define Age Interval"; OK with 0 - 4 up to 85.
        QTimer::singleShot(0, [] {
            QWidget* dialog = QApplication::activeModalWidget();
            QVERIFY(dialog && dialog->objectName() == "FiveYrAg");
            dialog->findChild<QRadioButton*>("OptFirstYears2")->click();
            dialog->findChild<QPushButton*>("cmdOK")->click();
        });
        f.popupFor(2)->findChild<QAction*>("mnuFiveYearAgeGroup")->trigger();
        const QStringList pnd = gridColumn(f.session().ages.Rptgrid3);
        QCOMPARE(pnd.size(), 19); // 0, 5, ... 85 and a blank row
        QCOMPARE(pnd[1], QString("5"));
        QCOMPARE(pnd[17], QString("85"));
    }

    void theAgeOptions() {
        exec("INSERT INTO _DctBDS (BDSId, Year, BDSTi, Slct) VALUES ('S1', 2001, 'First', 1)");
        exec("ALTER TABLE _DctBDM ADD COLUMN S1 BOOLEAN NOT NULL DEFAULT 0");
        exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S0', 0, 0, 0), ('S0', NULL, 1, 1), "
             "('S0', 5, 5, 5)");
        DEFINESTUDY1& f = openForm();
        studyContext().CurBDSId = "S1";
        f.SSTabDstudy->setCurrentIndex(1);
        f.OptDisplayAges->click();
        QCOMPARE(prompts_.messages(), QStringList({"No current records"}));
        f.OptPickAges->click();
        QCOMPARE(f.Combo1->count(), 1);
        f.Combo1->setCurrentIndex(0);
        emit f.Combo1->activated(0);
        QCOMPARE(gridColumn(f.session().ages.RPTGrid), QStringList({"0", "5"}));
        QCOMPARE(gridColumn(f.session().ages.Rptgrid3), QStringList({"0", "1", "5"}));
        f.cmdApply->click();
        QCOMPARE(rows("SELECT YLL, YLD, PND FROM _DfnAgeGrps WHERE BDSId = 'S1' ORDER BY rowid"),
                 QStringList({"0|0|0", "5|1|1", "<null>|5|5"}));
        f.OptAfresh->click();
        QCOMPARE(f.session().ages.RPTGrid.rows(), 2);
        prompts_.clear();
        f.OptDisplayAges->click();
        QVERIFY(prompts_.messages().isEmpty());
        QCOMPARE(gridColumn(f.session().ages.Rptgrid2), QStringList({"0", "1", "5"}));
    }

    void leavingATabWithChangesAsks() {
        DEFINESTUDY1& f = openForm();
        typeField(f.txtBDSId, "S1");
        typeField(f.txtYear, "2001");
        typeField(f.txtBDSTi, "First");
        prompts_.answer(Answer::Yes);
        f.SSTabDstudy->setCurrentIndex(2);
        QCOMPARE(prompts_.messages(), QStringList({"              Apply Changes"}));
        QCOMPARE(rows("SELECT BDSId FROM _DctBDS"), QStringList({"S1"}));
        QCOMPARE(f.session().tabInForce, 2);
    }

    void theSchemeTab() {
        DEFINESTUDY1& f = openForm();
        newStudy(f, "S1", "2001", "First");
        f.SSTabDstudy->setCurrentIndex(2);
        f.OptPickSchema->click();
        QCOMPARE(prompts_.messages(), QStringList({"No Population Aggregate Schema in the Database"}));
        f.OptNewSchema->click();
        typeField(f.Txtpagsch, "SCH");
        typeField(f.TXTBPU, "District");
        typeField(f.tXTPAG1, "State");
        f.cmdApply->click();
        QCOMPARE(prompts_.messages().last(), QString("PAG2Dscrptr are not entered"));
        typeField(f.TXTPAG2, "Nation");
        f.cmdApply->click();
        QCOMPARE(rows("SELECT PAGSch, BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs"),
                 QStringList({"SCH|District|State|Nation"}));
        QCOMPARE(rows("SELECT PAGSch FROM _DctBDS"), QStringList({"SCH"}));
        QCOMPARE(menus_.menuCaption("mnu_bpu"), QString("District"));
        // A new scheme with an id in use is refused on leaving the field.
        prompts_.clear();
        f.OptNewSchema->click();
        QCOMPARE(f.TXTBPU->text(), QString());
        typeField(f.Txtpagsch, "SCH");
        f.TXTBPU->setFocus();
        QCOMPARE(prompts_.messages(),
                 QStringList({" Already PAGSch : SCHrecord exist in the _DfnBPUPAGDscrptrs"}));
        QCOMPARE(f.Txtpagsch->text(), QString());
        f.OptPickSchema->click();
        emit f.CMBPAGSCH->activated(0);
        QCOMPARE(f.tXTPAG1->text(), QString("State"));
        f.OptNewSchema->click();
        f.OptDisplaySchema->click();
        QCOMPARE(f.TXTPAG2->text(), QString("Nation"));
    }

    void theCausesTab() {
        DEFINESTUDY1& f = openForm();
        newStudy(f, "S1", "2001", "First");
        for (const char* code : {"A0101", "A0102", "B0101"})
            exec("INSERT INTO _DctBDM (CobCd, Disease, Sqla) VALUES (?, ?, 0)",
                 {code, QString("Cause ") + code});
        prompts_.clear();
        f.SSTabDstudy->setCurrentIndex(3);
        QCOMPARE(prompts_.messages(), QStringList({"Dictionaries are not imported\nPlease import from File - "
                                                   "Import  -  Dictinaries and maps"}));
        QCOMPARE(f.session().DbGridCauseGrps.rows(), 4);
        clickCell(f.DbGridCauseGrps, 1, 2);
        QCOMPARE(rows("SELECT CobCd FROM _DctBDM WHERE S1 <> 0"), QStringList({"A0102"}));
        f.cmdSwap->click();
        QCOMPARE(rows("SELECT CobCd FROM _DctBDM WHERE S1 <> 0 ORDER BY 1"), QStringList({"A0101", "B0101"}));
        QCOMPARE(f.session().DbGridCauseGrps.textMatrix(1, 2), QString("True"));
        f.cmdUnselectAll->click();
        f.cmdApply->click();
        QVERIFY(!menus_.isMenuEnabled("mnu_studyInp"));
        f.cmdSelectAll->click();
        f.cmdApply->click();
        QVERIFY(menus_.isMenuEnabled("mnu_studyInp"));
        QCOMPARE(studyContext().MtxCobCd.array().size(0), 3);
        QCOMPARE(f.cmdSelectAll->text(),
                 QString("Select all causes in the dictionaries for the current study"));
    }

    void sequelaMapsAreEditedOnTheCausesTab() {
        DEFINESTUDY1& f = openForm();
        newStudy(f, "S1", "2001", "First");
        exec("INSERT INTO _DctBDM (CobCd, Disease, Sqla) VALUES ('A0101', 'Tuberculosis', 0)");
        exec("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES ('SQ1', 'Episode'), ('SQ2', 'Blindness')");
        f.SSTabDstudy->setCurrentIndex(3);
        QCOMPARE(f.LstSqlacd->count(), 2);
        QCOMPARE(f.session().sequela, QString("SQ1"));
        typeAge(f.MsflxdtCobcd, 0, "A0101");
        QCOMPARE(rows("SELECT SqlaCd, cobcd FROM _MapBDMSqla"), QStringList({"SQ1|A0101"}));
        QCOMPARE(f.session().MsflxdtCobcd.textMatrix(1, 1), QString("Tuberculosis"));
        QCOMPARE(rows("SELECT Sqla FROM _DctBDM"), QStringList({"-1"}));
        typeAge(f.MsflxdtCobcd, 1, "Z9999");
        QCOMPARE(prompts_.messages().last(), QString("This COBcd doesnot exist"));
        clickCell(f.MsflxdtCobcd, 0, 0);
        QTest::keyClick(f.MsflxdtCobcd, Qt::Key_Delete);
        QVERIFY(rows("SELECT * FROM _MapBDMSqla").isEmpty());
        QCOMPARE(rows("SELECT Sqla FROM _DctBDM"), QStringList({"0"}));
    }
};

QTEST_MAIN(DefineStudy1Test)
#include "definestudy1_test.moc"
