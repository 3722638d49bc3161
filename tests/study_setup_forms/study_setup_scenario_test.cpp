// The program as a user meets Study Setup: File -> New leads into DEFINESTUDY1, a first study is
// defined tab by tab, its causes are chosen through Study -> Setup, the loading chain reads it all
// back, and a study is deleted with its cascade. Also the end of a File -> New that lacks the
// minimum, and pictures of the four tabs (kept in VESK_SCREENSHOT_DIR when it is set).

#include "database/database_backend.h"
#include "database/db_create.h"
#include "database/study_context.h"
#include "form_support.h"
#include "frame_fixture.h"
#include "shell/forms/frm_shw_cnt_mem.h"
#include "shell/settings.h"
#include "study/asg_data.h"
#include "study/forms/definestudy1_register.h"

#include <QAction>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QSqlRecord>
#include <QTemporaryDir>

using namespace vesk;
using namespace vesk::test;

namespace {

QString studyFile(const ProgramFolder& folder, const QString& name) {
    return QDir(folder.work()).filePath(name);
}

bool hasContent(const QImage& image) {
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 3)
        for (int x = 0; x < image.width(); x += 3)
            colours.insert(image.pixel(x, y));
    return colours.size() > 8;
}

// The common ladder of the three sets, one row per age: YLL has the broad groups, YLD and PND the
// finer ones; a blank where a set has no boundary at that age.
const QStringList kYll = {"0", "1", "5", "", "15", "", "45", "60", "", ""};
const QStringList kFine = {"0", "1", "5", "10", "15", "30", "45", "60", "70", "80"};

} // namespace

class StudySetupScenarioTest : public QObject {
    Q_OBJECT

private:
    DatabaseStudyBackend backend_;
    QTemporaryDir scratch_;
    QString shots_;

    void start() {
        resetGlobals();
        studyContext() = StudyContext{};
        FlagDataADW() = false;
        FlagDataCSM() = false;
        setStudyBackend(&backend_);
        registerRunLogViewers();
        registerStudySetup();
    }
    // A study file with a current study, so that the program starts in the state Ready.
    static void oldStudyFile(const QString& file) {
        QString error;
        QVERIFY2(createStudyFile(file, &error), qPrintable(error));
        auto db = DbConnection::open(file, &error);
        QVERIFY(db);
        for (const char* sql :
             {"INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES ('OLD', 1995, 'Old', 'OS', 1)",
              "INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES ('OS', 'Ward', 'City', "
              "'Land')",
              "ALTER TABLE _DctBDM ADD COLUMN OLD BOOLEAN NOT NULL DEFAULT 0",
              "INSERT INTO _DctBDM (CobCd, Disease, Sqla, OLD) VALUES ('Z0101', 'Old cause', 0, 1)",
              "INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('OLD', 'W1', 'Ward', 1, "
              "'C1')",
              "INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('OLD', 'C1', 'City', 'L')",
              "INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('OLD', 0, 0, 0)"})
            QVERIFY2(db->exec(QString::fromLatin1(sql)), sql);
    }
    static QStringList rows(const QString& sql) {
        QStringList out;
        auto q = studyContext().StudyDB->query(sql);
        while (q && q->next()) {
            QStringList cells;
            for (int c = 0; c < q->record().count(); ++c)
                cells << (q->value(c).isNull() ? QStringLiteral("<null>") : q->value(c).toString());
            out << cells.join(u'|');
        }
        return out;
    }
    static void exec(const QString& sql) {
        QSqlError e;
        QVERIFY2(studyContext().StudyDB->exec(sql, {}, &e), qPrintable(sql + ": " + e.text()));
    }
    // The dictionary of causes, as File -> Dictionaries or File -> Import would leave it: one group,
    // two subgroups, two clusters and ten causes, and one sequela.
    static void fillDictionaries() {
        exec("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (1, 'Communicable diseases')");
        exec("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES ('A', 'Infectious', 1), ('B', "
             "'Respiratory', 1)");
        exec("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('A010', 'Tuberculosis', 'A'), "
             "('B010', 'Respiratory infections', 'B')");
        for (int i = 1; i <= 5; ++i) {
            exec(QStringLiteral(
                     "INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla) VALUES ('A010%1', 'Cause A%1', "
                     "'A010', 0)")
                     .arg(i));
            exec(QStringLiteral(
                     "INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla) VALUES ('B010%1', 'Cause B%1', "
                     "'B010', 0)")
                     .arg(i));
        }
        exec("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES ('SQ1', 'Episode')");
    }
    static DEFINESTUDY1* waitForForm() {
        if (!QTest::qWaitFor(
                [] { return DEFINESTUDY1::instance() && DEFINESTUDY1::instance()->isVisible(); }))
            return nullptr;
        DEFINESTUDY1* f = DEFINESTUDY1::instance();
        if (!QTest::qWaitForWindowActive(f))
            qWarning("Study Setup is not the active window");
        return f;
    }
    void shoot(DEFINESTUDY1& f, int tab, const char* name) {
        f.SSTabDstudy->setCurrentIndex(tab);
        QTest::qWait(50);
        const QImage image = f.grab().toImage();
        QVERIFY(hasContent(image));
        QVERIFY(image.save(shots_ + QStringLiteral("/definestudy1_%1.png").arg(QLatin1String(name))));
    }
    void firstStudy(DEFINESTUDY1& f, ScriptedPrompts& prompts);
    void checkTables();
    void checkContext();
    void deleteTheStudy(FRMMAINMENU& frame, ScriptedPrompts& prompts);

private slots:
    void initTestCase() {
        shots_ = qEnvironmentVariableIsSet("VESK_SCREENSHOT_DIR")
                     ? qEnvironmentVariable("VESK_SCREENSHOT_DIR")
                     : scratch_.path();
    }
    void init() { start(); }
    void cleanup() {
        if (DEFINESTUDY1* f = DEFINESTUDY1::instance()) {
            f->setAttribute(Qt::WA_DeleteOnClose, false);
            delete f;
        }
        resetGlobals();
        studyContext() = StudyContext{};
    }

    void fromFileNewToACompleteStudyAndItsDeletion();
    void aNewDatabaseWithoutTheMinimumGoesAway();
};

void StudySetupScenarioTest::firstStudy(DEFINESTUDY1& f, ScriptedPrompts& prompts) {
    // Tab 0: a study of two years, and two of the built-in parameter sets for the computation.
    typeField(f.txtBDSId, "Ind");
    typeField(f.txtYear, "2001,2002");
    typeField(f.txtBDSTi, "India burden of disease");
    f.cmdApply->click();
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
    clickCell(f.flexBuiltInDAP, 1, 5);
    clickCell(f.flexBuiltInDAP, 3, 5);
    // Tab 2: the scheme and its three terms.
    f.SSTabDstudy->setCurrentIndex(2);
    f.OptNewSchema->click();
    typeField(f.Txtpagsch, "IND");
    typeField(f.TXTBPU, "District");
    typeField(f.tXTPAG1, "State");
    typeField(f.TXTPAG2, "Nation");
    f.cmdApply->click();
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
    // Tab 1, with no question: the scheme tab was applied. The ages row by row.
    f.SSTabDstudy->setCurrentIndex(1);
    typeAges(f.RPTGrid, kYll);
    typeAges(f.Rptgrid2, kFine);
    typeAges(f.Rptgrid3, kFine);
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
    prompts.answer(Answer::Ok);
    f.cmdApply->click();
    QCOMPARE(
        prompts.messages(),
        QStringList(
            {"New Database Created.\nYou need to build up causes of burden dictionaries and maps.\n"
             "You can either build it up manually using File-Dictionaries or Import using File-Import."}));
    QVERIFY(!studyContext().NewDBDone);
}

void StudySetupScenarioTest::checkTables() {
    QCOMPARE(
        rows("SELECT BDSId, Year, BDSTi, PAGSch, Slct FROM _DctBDS ORDER BY rowid"),
        QStringList({"Ind|2001|India burden of disease|IND|1", "Ind|2002|India burden of disease|IND|0"}));
    QCOMPARE(rows("SELECT PAGSch, BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs"),
             QStringList({"IND|District|State|Nation"}));
    // Each grid closed up, as many rows as the PND list.
    QCOMPARE(
        rows("SELECT BDSId, YLL, YLD, PND FROM _DfnAgeGrps ORDER BY rowid"),
        QStringList({"Ind|0|0|0", "Ind|1|1|1", "Ind|5|5|5", "Ind|15|10|10", "Ind|45|15|15", "Ind|60|30|30",
                     "Ind|<null>|45|45", "Ind|<null>|60|60", "Ind|<null>|70|70", "Ind|<null>|80|80"}));
    QCOMPARE(rows("SELECT DAPID, r, K, Beta, C FROM _DctDAP ORDER BY DAPID"),
             QStringList({"0|0|0|0|0", "1|0.03|1|0.04|0.1658", "2|0|1|0.04|0.1658", "3|0.03|0|0|0"}));
    QCOMPARE(rows("SELECT name FROM pragma_table_info('_DctBDM')"),
             QStringList({"CobCd", "Disease", "ClstrCd", "Sqla", "Ind"}));
    QCOMPARE(rows("SELECT count(*), sum(Ind) FROM _DctBDM"), QStringList({"10|10"}));
    QCOMPARE(rows("SELECT CobCd, Sqla FROM _DctBDM WHERE Sqla <> 0"), QStringList({"A0101|1"}));
    QCOMPARE(rows("SELECT SqlaCd, cobcd FROM _MapBDMSqla"), QStringList({"SQ1|A0101"}));
    for (const char* table : {"_DctBPU", "_DctPAG1", "_DctPAG2", "DatADW", "DatASDR", "DatCSM", "DatPOP",
                              "DatDwt", "RsltYLL", "RsltYLD", "RsltDALY"})
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table))),
                 QStringList({"0"}));
}

void StudySetupScenarioTest::checkContext() {
    const StudyContext& c = studyContext();
    QCOMPARE(c.CurBDSId, QString("Ind"));
    QCOMPARE(c.CurBDSTi, QString("India burden of disease"));
    QCOMPARE(c.CurPAGSch, QString("IND"));
    QCOMPARE(c.CurYear, qint16(2001));
    QVERIFY(c.VctrYrLst.isArray());
    QCOMPARE(c.VctrYrLst.array().size(), 1);
    QCOMPARE(c.LblBPU + "/" + c.LblPAG1 + "/" + c.LblPAG2, QString("District/State/Nation"));
    QVERIFY(c.ArrAgeDfn.isArray());
    QCOMPARE(c.ArrAgeDfn.array().size(0), 10);
    QVERIFY(c.VctrYLLAsg.isArray());
    QStringList yll;
    for (int i = 0; i < c.VctrYLLAsg.array().size(); ++i)
        yll << c.VctrYLLAsg.array()(i).toString();
    QCOMPARE(yll, QStringList({"F0", "F01-4", "F05-14", "F15-44", "F45-59", "F60-w", "M0", "M01-4", "M05-14",
                               "M15-44", "M45-59", "M60-w"}));
    QVERIFY(c.VctrYLDAsg.isArray());
    QCOMPARE(c.VctrYLDAsg.array().size(), 20);
    QCOMPARE(c.VctrYLDAsg.array()(2).toString(), QString("F05-9"));
    QCOMPARE(c.VctrYLDAsg.array()(9).toString(), QString("F80-w"));
    QVERIFY(c.VctrPNDAge.isArray());
    QCOMPARE(c.VctrPNDAge.array().size(), 10);
    QCOMPARE(c.VctrPNDAge.array()(9).toDouble(), 80.0);
    QVERIFY(c.MtxCobCd.isArray());
    const CellArray& causes = c.MtxCobCd.array();
    QCOMPARE(causes.size(0), 10);
    QCOMPARE(causes(0, 0).toString(), QString("A0101"));
    QVERIFY(causes(0, 1).isArray());
    QCOMPARE(causes(0, 1).array()(0).toString(), QString("SQ1"));
    QCOMPARE(causes(9, 0).toString(), QString("B0105"));
    QVERIFY(causes(9, 1).isEmpty());
}

void StudySetupScenarioTest::deleteTheStudy(FRMMAINMENU& frame, ScriptedPrompts& prompts) {
    // Units and data under the first study, for the cascade to meet.
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('Ind', 'D1', 'Delhi', 1, 'S1')");
    exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('Ind', 'S1', 'State one', 'IN')");
    exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES ('Ind', 'IN', 'India')");
    for (int year : {2001, 2002}) {
        const QString y = QString::number(year);
        exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P) VALUES ('D1', " + y +
             ", 'A0101', 'M0', 1, 2)");
        exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('D1', " + y +
             ", 'A0101', 'M0', 0.5)");
        exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('D1', " + y + ", 0, 100, 90)");
        exec("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES ('D1', " + y + ", 0, 0.1, 0.1, 0.1)");
        exec("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES ('Ind', " + y +
             ", 'A0101', 'M0', 0.2)");
        exec("INSERT INTO RsltYLL (BPUID, YEAR, DAPID, COBCd, ASG, IYLL, PYLL) VALUES ('D1', " + y +
             ", 1, 'A0101', 'M0', 5, 5)");
    }
    // A second study becomes the current one; then the first is deleted from the study grid.
    prompts.clear();
    frame.item("mnu_SSetup")->trigger();
    DEFINESTUDY1* f = waitForForm();
    QVERIFY(f);
    f->OptNewStudy->click();
    typeField(f->txtBDSId, "Ind2");
    typeField(f->txtYear, "2005");
    typeField(f->txtBDSTi, "Second look");
    f->cmdApply->click();
    QCOMPARE(studyContext().CurBDSId, QString("Ind2"));
    clickCell(f->dbgrid2, 0, 0); // Ind 2001
    prompts.clear();
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Yes);
    f->dbgrid2->setFocus();
    QTest::keyClick(f->dbgrid2, Qt::Key_Delete);
    QCOMPARE(prompts.messages().size(), 2);
    QCOMPARE(
        prompts.messages()[1],
        QString("The BDSID- Ind you have selected have the following details\n Following BPUS are mapped - "
                " Following BPUS are not mapped -  Do You want to proceed further with the data for the "
                "mapped been deleted? "));
    for (const char* table : {"_DctBDS", "_DfnAgeGrps", "_DctPAG2", "_DctPAG1", "_DctBPU"})
        QCOMPARE(
            rows(QStringLiteral("SELECT count(*) FROM %1 WHERE BDSId = 'Ind'").arg(QLatin1String(table))),
            QStringList({"0"}));
    QCOMPARE(rows("SELECT name FROM pragma_table_info('_DctBDM')"),
             QStringList({"CobCd", "Disease", "ClstrCd", "Sqla", "Ind2"}));
    // DatADW had rows for 2001: the five data tables lose 2001 under the study's units, and keep 2002.
    for (const char* table : {"DatADW", "DatCSM", "DatPOP", "DatASDR"})
        QCOMPARE(rows(QStringLiteral("SELECT YEAR FROM %1").arg(QLatin1String(table))),
                 QStringList({"2002"}));
    QCOMPARE(rows("SELECT count(*) FROM DatDwt"), QStringList({"2"}));
    QCOMPARE(rows("SELECT count(*) FROM RsltYLL"), QStringList({"2"}));
    QCOMPARE(rows("SELECT BDSId, Year, Slct FROM _DctBDS"), QStringList({"Ind2|2005|1"}));
    QCOMPARE(f->session().dbgrid2.rows(), 2);
    f->close();
}

void StudySetupScenarioTest::fromFileNewToACompleteStudyAndItsDeletion() {
    ProgramFolder folder;
    folder.writeStp("old.vdb");
    oldStudyFile(studyFile(folder, "old.vdb"));
    RunningProgram program(folder);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    QCOMPARE(studyContext().CurBDSId, QString("OLD"));
    QVERIFY(program.frame().item("mnu_SSetup")->isEnabled());

    // File -> New: the file, then Study Setup for a first study.
    const QString fresh = studyFile(folder, "india.vdb");
    program.prompts.clear();
    program.prompts.fileAnswer(fresh);
    program.frame().item("mnu_New")->trigger();
    DEFINESTUDY1* f = waitForForm();
    QVERIFY(f);
    QVERIFY(QFile::exists(fresh));
    QCOMPARE(studyContext().StudyDB->path(), fresh);
    QVERIFY(!f->SSTabDstudy->isTabEnabled(3));
    QVERIFY(f->OptNewStudy->isChecked());
    firstStudy(*f, program.prompts);
    if (QTest::currentTestFailed())
        return;
    program.prompts.clear();
    f->cmdClose->click();
    QTRY_VERIFY(!DEFINESTUDY1::instance());
    QVERIFY2(program.prompts.messages().isEmpty(), qPrintable(program.prompts.messages().join('\n')));
    QVERIFY(QFile::exists(fresh));
    QCOMPARE(folder.stpValue("OBJECT="), QString("india.vdb"));

    // The causes, then Study -> Setup again: all four tabs, the causes chosen and a sequela mapped.
    fillDictionaries();
    program.frame().item("mnu_SSetup")->trigger();
    f = waitForForm();
    QVERIFY(f);
    QVERIFY(f->SSTabDstudy->isTabEnabled(3));
    QVERIFY(f->OptPickStudy->isChecked());
    QCOMPARE(f->txtBDSId->text(), QString("Ind"));
    QCOMPARE(f->txtYear->text(), QString("2001,2002"));
    QCOMPARE(gridColumn(f->session().ages.RPTGrid).mid(0, 4), QStringList({"0", "1", "5", "15"}));
    QCOMPARE(f->session().flexBuiltInDAP.textMatrix(2, 5), QString("True"));
    f->SSTabDstudy->setCurrentIndex(3);
    QVERIFY2(program.prompts.messages().isEmpty(), qPrintable(program.prompts.messages().join('\n')));
    f->cmdSelectAll->click();
    f->cmdApply->click();
    QCOMPARE(f->LstSqlacd->count(), 1);
    typeAge(f->MsflxdtCobcd, 0, "A0101");
    const char* const names[4] = {"study", "age_groups", "pop_units", "causes"};
    for (int tab = 0; tab < 4; ++tab)
        shoot(*f, tab, names[tab]);
    program.prompts.clear();
    f->cmdClose->click();
    QTRY_VERIFY(!DEFINESTUDY1::instance());
    checkTables();

    // The chain reads the study back; without units it says so.
    program.prompts.clear();
    program.frame().setTimerEnabled(true);
    QVERIFY(program.waitForChain());
    QCOMPARE(program.prompts.messages(),
             QStringList({"No BPUs defined for the Study Ind", "No PAGs defined for the Study Ind"}));
    checkContext();
    QCOMPARE(program.frame().menuCaption("mnu_bpu"), QString("District"));

    deleteTheStudy(program.frame(), program.prompts);
}

void StudySetupScenarioTest::aNewDatabaseWithoutTheMinimumGoesAway() {
    ProgramFolder folder;
    folder.writeStp("old.vdb");
    oldStudyFile(studyFile(folder, "old.vdb"));
    RunningProgram program(folder);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    const QString fresh = studyFile(folder, "fresh.vdb");
    program.prompts.clear();
    program.prompts.fileAnswer(fresh);
    program.frame().item("mnu_New")->trigger();
    DEFINESTUDY1* f = waitForForm();
    QVERIFY(f);
    QCOMPARE(folder.stpValue("OBJECT="), QString("fresh.vdb"));
    typeField(f->txtBDSId, "S1");
    typeField(f->txtYear, "2001");
    typeField(f->txtBDSTi, "Unfinished");
    f->cmdApply->click();
    // Close: the question; Yes keeps the form.
    program.prompts.clear();
    program.prompts.answer(Answer::Yes);
    f->cmdClose->click();
    QCOMPARE(program.prompts.messages().size(), 1);
    QVERIFY(program.prompts.messages()[0].startsWith(
        "You have not entered the minimum parameters required to conduct a study"));
    QCOMPARE(program.prompts.shown()[0].title, QString("Insufficient information to create new database"));
    QVERIFY(f->isVisible());
    // No: the settings as they were, the file gone, and the chain back on the former database.
    program.prompts.clear();
    program.prompts.answer(Answer::No);
    f->cmdClose->click();
    QTRY_VERIFY(!DEFINESTUDY1::instance());
    QVERIFY(!QFile::exists(fresh));
    QCOMPARE(folder.stpValue("OBJECT="), QString("old.vdb"));
    QVERIFY(program.waitForChain());
    QCOMPARE(studyContext().CurBDSId, QString("OLD"));
    QCOMPARE(QFileInfo(studyContext().StudyDB->path()).fileName(), QString("old.vdb"));
}

QTEST_MAIN(StudySetupScenarioTest)
#include "study_setup_scenario_test.moc"
