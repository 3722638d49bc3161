// The program as a new user meets it: File -> New leads into DEFINESTUDY1, a first study is defined
// tab by tab, the dictionary of causes is built through File -> Dictionaries, the population units
// through Study -> Population Units, the study's causes are chosen through Study -> Setup, the
// loading chain reads it all back, and then a cluster and a study are deleted with their cascades.
// Also the end of a File -> New that lacks the minimum, and pictures of the four tabs (kept in
// VESK_SCREENSHOT_DIR when it is set).

#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/forms/frm_comp_daly.h"
#include "burden/forms/frm_load_status.h"
#include "database/db_create.h"
#include "database/study_context.h"
#include "form_support.h"
#include "foundation/settings.h"
#include "inputs/foreign_file.h"
#include "inputs/forms/new_frm_inputs.h"
#include "frame_fixture.h"
#include "query_rows.h"
#include "read_back.h"
#include "sample_study.h"
#include "screenshots.h"
#include "shell/forms/form_registry.h"
#include "shell/forms/frm_shw_cnt_mem.h"
#include "shell/study_backend.h"
#include "study/asg_data.h"
#include "study/forms/frm_cob.h"
#include "study/forms/frm_cob_print.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QSqlRecord>
#include <QTemporaryDir>

using namespace vesk;
using namespace vesk::test;
using namespace vesk::test::sample;

namespace {

QString studyFile(const ProgramFolder& folder, const QString& name) {
    return QDir(folder.work()).filePath(name);
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
        computation() = Computation{};
        FlagDataADW() = false;
        FlagDataCSM() = false;
        setStudyBackend(&backend_);
        registerRunLogViewers();
        registerStudySetup();
        registerStudyDefinitionForms();
        registerComputationForms();
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
    static QStringList rows(const QString& sql) { return queryRows(*studyContext().StudyDB, sql); }
    static void exec(const QString& sql, const QVariantList& values = {}) {
        QSqlError e;
        QVERIFY2(studyContext().StudyDB->exec(sql, values, &e), qPrintable(sql + ": " + e.text()));
    }
    // The texts of a one-dimensional array cell; empty when the cell holds no array.
    static QStringList cellTexts(const Cell& cell) {
        QStringList out;
        if (cell.isArray())
            for (int i = 0; i < cell.array().size(); ++i)
                out << cell.array()(i).toString();
        return out;
    }
    // The causes of the current study as the context holds them.
    static QStringList studyCauses() {
        QStringList out;
        const Cell& m = studyContext().MtxCobCd;
        if (m.isArray())
            for (int i = 0; i < m.array().size(0); ++i)
                out << m.array()(i, 0).toString();
        return out;
    }
    template <typename Form> static Form* waitForSubWindow(FRMMAINMENU& frame) {
        Form* form = nullptr;
        const bool shown =
            QTest::qWaitFor([&] { return (form = frame.findChild<Form*>()) && form->isVisible(); });
        return shown ? form : nullptr;
    }
    // The same for a window without a meta-object of its own, found by its object name.
    template <typename Form> static Form* waitForNamed(FRMMAINMENU& frame, const char* name) {
        QWidget* form = nullptr;
        const bool shown = QTest::qWaitFor([&] {
            return (form = frame.findChild<QWidget*>(QString::fromLatin1(name))) && form->isVisible();
        });
        return shown ? static_cast<Form*>(form) : nullptr;
    }
    void buildDictionary(FRMMAINMENU& frame, ScriptedPrompts& prompts);
    void buildUnits(FRMMAINMENU& frame, ScriptedPrompts& prompts);
    void chooseCauses(FRMMAINMENU& frame, ScriptedPrompts& prompts);
    void deleteACluster(FRMMAINMENU& frame, ScriptedPrompts& prompts);
    void checkOutline(FRMMAINMENU& frame, ScriptedPrompts& prompts, const char* item,
                      const QStringList& nodes, const QString& name);
    static void addData();
    static DEFINESTUDY1* waitForForm() {
        if (!QTest::qWaitFor(
                [] { return DEFINESTUDY1::instance() && DEFINESTUDY1::instance()->isVisible(); }))
            return nullptr;
        DEFINESTUDY1* f = DEFINESTUDY1::instance();
        if (!QTest::qWaitForWindowActive(f))
            qWarning("Study Setup is not the active window");
        return f;
    }
    // A picture of each tab of `form`, named prefix_name.png.
    void shootTabs(QWidget* form, QTabWidget* tabs, const QString& prefix, const QStringList& names) {
        for (int tab = 0; tab < names.size(); ++tab) {
            tabs->setCurrentIndex(tab);
            QTest::qWait(50);
            const QImage image = form->grab().toImage();
            QVERIFY(hasContent(image));
            QVERIFY(image.save(shots_ + u'/' + prefix + u'_' + names[tab] + QStringLiteral(".png")));
        }
    }
    void firstStudy(DEFINESTUDY1& f, ScriptedPrompts& prompts);
    void checkTables();
    void checkContext();
    void enterInputs(FRMMAINMENU& frame, ScriptedPrompts& prompts);
    void enterUnitInputs(NewFrmInputs& form, ScriptedPrompts& prompts, int unit);
    void checkInputs();
    void deleteTheStudy(FRMMAINMENU& frame, ScriptedPrompts& prompts);
    void computeTheStudy(FRMMAINMENU& frame, ScriptedPrompts& prompts, RecordingSound& sounds);

private slots:
    void initTestCase() { shots_ = screenshotFolder(scratch_); }
    void init() { start(); }
    void cleanup() {
        if (DEFINESTUDY1* f = DEFINESTUDY1::instance()) {
            f->setAttribute(Qt::WA_DeleteOnClose, false);
            delete f;
        }
        resetGlobals();
        studyContext() = StudyContext{};
        computation() = Computation{};
    }

    void fromFileNewToACompleteStudyAndItsDeletion();
    void aNewDatabaseWithoutTheMinimumGoesAway();
    void theStoredResultsLoadInANewRun();
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

void StudySetupScenarioTest::buildDictionary(FRMMAINMENU& frame, ScriptedPrompts& prompts) {
    QVERIFY(frame.isMenuEnabled("mnu_cgroups"));
    frame.item("mnu_cgroups")->trigger();
    auto* form = waitForSubWindow<FRMBULDMAINCLDIC>(frame);
    QVERIFY(form);
    prompts.clear();
    enterDictionary(*form, prompts);
    if (QTest::currentTestFailed())
        return;
    shootTabs(form, child<QTabWidget>(form, "SSTab1"), "dictionary",
              {"groups", "subgroups", "clusters", "causes", "sequelae"});
    child<QPushButton>(form, "cmdClose")->click();
    QTRY_VERIFY(!frame.findChild<FRMBULDMAINCLDIC*>());
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
}

void StudySetupScenarioTest::buildUnits(FRMMAINMENU& frame, ScriptedPrompts& prompts) {
    QVERIFY(frame.isMenuEnabled("mnu_BPUES"));
    frame.item("mnu_BPUES")->trigger();
    auto* form = waitForSubWindow<defpopunits>(frame);
    QVERIFY(form);
    // The scheme's terms stand in the captions of the tabs.
    auto* tabs = child<QTabWidget>(form, "SSBPU");
    QVERIFY2(tabs->tabText(0).contains("Nation") && tabs->tabText(1).contains("State") &&
                 tabs->tabText(2).contains("District"),
             qPrintable(tabs->tabText(0) + "/" + tabs->tabText(1) + "/" + tabs->tabText(2)));
    prompts.clear();
    enterUnits(*form, prompts);
    if (QTest::currentTestFailed())
        return;
    shootTabs(form, tabs, "defpopunits", {"pag2", "pag1", "bpu", "map"});
    // Apply reloads the study's units and aggregates into the context at once.
    QCOMPARE(cellTexts(studyContext().VctrBPULst), QStringList({"BLR", "MYS", "MAA", "CBE"}));
    QCOMPARE(cellTexts(studyContext().VctrPAGLst), QStringList({"KA", "TN"}));
    child<QPushButton>(form, "cmdClose")->click();
    QTRY_VERIFY(!frame.findChild<defpopunits*>());
}

void StudySetupScenarioTest::chooseCauses(FRMMAINMENU& frame, ScriptedPrompts& prompts) {
    frame.item("mnu_SSetup")->trigger();
    DEFINESTUDY1* f = waitForForm();
    QVERIFY(f);
    QVERIFY(f->SSTabDstudy->isTabEnabled(3));
    QVERIFY(f->OptPickStudy->isChecked());
    QCOMPARE(f->txtBDSId->text(), QString("Ind"));
    QCOMPARE(f->txtYear->text(), QString("2001,2002"));
    QCOMPARE(gridColumn(f->session().ages.RPTGrid).mid(0, 4), QStringList({"0", "1", "5", "15"}));
    QCOMPARE(f->session().flexBuiltInDAP.textMatrix(2, 5), QString("True"));
    f->SSTabDstudy->setCurrentIndex(3);
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
    QCOMPARE(gridTexts(f->DbGridCauseGrps).size(), kCauses.size());
    // All twelve, then the two breast-cancer causes out again by a click in the study's column.
    f->cmdSelectAll->click();
    clickCell(f->DbGridCauseGrps, 7, 2);
    clickCell(f->DbGridCauseGrps, 9, 2);
    QCOMPARE(f->session().DbGridCauseGrps.textMatrix(8, 2), QString("False"));
    QCOMPARE(f->session().DbGridCauseGrps.textMatrix(9, 2), QString("True"));
    f->cmdApply->click();
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
    // One more map from this tab: Disfigurement also follows small-cell lung cancer.
    QCOMPARE(f->LstSqlacd->count(), kSequelae.size());
    f->LstSqlacd->setCurrentRow(3);
    QCOMPARE(gridTexts(f->MsflxdtCobcd), QStringList({"21021|Ductal"}));
    typeAge(f->MsflxdtCobcd, 1, "21011");
    QCOMPARE(gridTexts(f->MsflxdtCobcd), QStringList({"21011|Small cell", "21021|Ductal"}));
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
    shootTabs(f, f->SSTabDstudy, "definestudy1", {"study", "age_groups", "pop_units", "causes"});
    f->cmdClose->click();
    QTRY_VERIFY(!DEFINESTUDY1::instance());
    QVERIFY2(prompts.messages().isEmpty(), qPrintable(prompts.messages().join('\n')));
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
    QCOMPARE(rows("SELECT \"GrpCd\", \"Group\" FROM _DctBDMGrps ORDER BY GrpCd"), joined(kGroups, false));
    QCOMPARE(rows("SELECT SGrpCd, Subgroup, GrpCd FROM _DctBDMSGrps ORDER BY SGrpCd"),
             joined(kSubGroups, true));
    QCOMPARE(rows("SELECT ClstrCd, Cluster, SGrpCd FROM _DctBDMClstr ORDER BY ClstrCd"),
             joined(kClusters, true));
    QCOMPARE(rows("SELECT name FROM pragma_table_info('_DctBDM')"),
             QStringList({"CobCd", "Disease", "ClstrCd", "Sqla", "Ind"}));
    // Every cause but 21012 and 21022 has a sequela and stands in the study.
    QStringList causes;
    for (const Entry& e : kCauses) {
        const bool out = e.code == "21012" || e.code == "21022";
        causes << QStringList({e.code, e.description, e.parent, out ? "0" : "-1", out ? "0" : "1"}).join('|');
    }
    QCOMPARE(rows("SELECT CobCd, Disease, ClstrCd, Sqla, Ind FROM _DctBDM ORDER BY CobCd"), causes);
    QCOMPARE(rows("SELECT SqlaCd, Sequela FROM _DctBDMSqla ORDER BY SqlaCd"), joined(kSequelae, false));
    QStringList maps = joinedMaps();
    maps.insert(6, "SQ4|21011");
    QCOMPARE(rows("SELECT SqlaCd, cobcd FROM _MapBDMSqla ORDER BY SqlaCd, cobcd"), maps);
    QCOMPARE(rows("SELECT BDSId, PAG2Id, PAG2Name FROM _DctPAG2"), QStringList({"Ind|IN|India"}));
    QCOMPARE(rows("SELECT BDSId, PAG1Id, PAG1Name, PAG2Id FROM _DctPAG1 ORDER BY PAG1Id"),
             QStringList({"Ind|KA|Karnataka|IN", "Ind|TN|Tamil Nadu|IN"}));
    QCOMPARE(rows("SELECT BDSId, BPUID, BPUName, Prty, PAG1Id FROM _DctBPU ORDER BY Prty"),
             QStringList({"Ind|BLR|Bangalore|1|KA", "Ind|MYS|Mysore|2|KA", "Ind|MAA|Chennai|3|TN",
                          "Ind|CBE|Coimbatore|4|TN"}));
    for (const char* table :
         {"DatADW", "DatADWSqla", "DatASDR", "DatCSM", "DatPOP", "DatDwt", "RsltYLL", "RsltYLD", "RsltDALY"})
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
    QCOMPARE(cellTexts(c.VctrBPULst), QStringList({"BLR", "MYS", "MAA", "CBE"}));
    QCOMPARE(cellTexts(c.VctrPAGLst), QStringList({"KA", "TN"}));
    QVERIFY(c.ArrAgeDfn.isArray());
    QCOMPARE(c.ArrAgeDfn.array().size(0), 10);
    QCOMPARE(cellTexts(c.VctrYLLAsg), QStringList({"F0", "F01-4", "F05-14", "F15-44", "F45-59", "F60-w", "M0",
                                                   "M01-4", "M05-14", "M15-44", "M45-59", "M60-w"}));
    QVERIFY(c.VctrYLDAsg.isArray());
    QCOMPARE(c.VctrYLDAsg.array().size(), 20);
    QCOMPARE(c.VctrYLDAsg.array()(2).toString(), QString("F05-9"));
    QCOMPARE(c.VctrYLDAsg.array()(9).toString(), QString("F80-w"));
    QVERIFY(c.VctrPNDAge.isArray());
    QCOMPARE(c.VctrPNDAge.array().size(), 10);
    QCOMPARE(c.VctrPNDAge.array()(9).toDouble(), 80.0);
    QStringList expected;
    for (const Entry& e : kCauses)
        if (e.code != "21012" && e.code != "21022")
            expected << e.code;
    QCOMPARE(studyCauses(), expected);
    const CellArray& causes = c.MtxCobCd.array();
    QCOMPARE(cellTexts(causes(0, 1)), QStringList({"SQ1"})); // 11011
    QCOMPARE(cellTexts(causes(4, 1)), QStringList({"SQ3"})); // 12011
    QCOMPARE(cellTexts(causes(5, 1)), QStringList({"SQ2"})); // 12012
    QCOMPARE(cellTexts(causes(6, 1)), QStringList({"SQ4"})); // 21011
    QCOMPARE(cellTexts(causes(9, 1)), QStringList({"SQ5"})); // 31012
}

// The inputs of two districts through Study -> Inputs, as an analyst enters them: a population typed
// in thousands, death rates imported per 1,000 from a workbook whose ranges are named after the
// districts, the demographic parameters typed, cause-of-death proportions imported from a text
// file, epidemiological estimates for a cause with sequelae (by cause and by sequela) and one
// without, and the weights; then every stored row against what was typed or imported.
namespace {

const QStringList kInputUnits = {"BLR", "MYS"};
const double kPndAges[] = {0, 1, 5, 10, 15, 30, 45, 60, 70, 80};

// The population typed in thousands (the multiplier is 1000), and the rates per one in the workbook.
double typedPopulation(int unit, int row, bool male) {
    return 100 + 10 * unit + row + (male ? 0.5 : 0.25);
}
double fileRate(int unit, int row, bool male) {
    return 0.000123456789 * (1 + unit) * (row + 1) * (male ? 1.25 : 1.0);
}

void writeRateWorkbook(const QString& file) {
    for (int unit = 0; unit < 2; ++unit) {
        CellArray a{10, 6};
        for (int row = 0; row < 10; ++row) {
            a(row, 0) = Cell(kInputUnits[unit]);
            a(row, 1) = Cell(2001);
            a(row, 2) = Cell(kPndAges[row]);
            a(row, 3) = Cell(fileRate(unit, row, true));
            a(row, 4) = Cell(fileRate(unit, row, false));
            a(row, 5) = Cell::date(dateSerial(QDate(2001, 6, 30)));
        }
        QVERIFY2(FnWriteArrFile(a, file, kInputUnits[unit], {"BPUID", "Year", "BAI", "M", "F", "UpdDt"}),
                 qPrintable(lastForeignError().words));
    }
}

// The proportions of cause k (of ten) in every label: a tenth each, but the first cause takes 0.1
// more and the last 0.1 less, so that each column adds to 1.
QString proportion(int cause) {
    return cause == 0 ? "0.2" : cause == 9 ? "0" : "0.1";
}

void writeCauseText(const QString& file, const QStringList& causes, const QStringList& labels) {
    QFile f(file);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(("BPUID;Year;COBCd;" + labels.join(';') + "\r\n").toUtf8());
    for (const QString& unit : kInputUnits)
        for (int k = 0; k < causes.size(); ++k) {
            QStringList values(labels.size(), proportion(k));
            f.write((unit + ";2001;" + causes[k] + ";" + values.join(';') + "\r\n").toUtf8());
        }
}

} // namespace

void StudySetupScenarioTest::enterUnitInputs(NewFrmInputs& form, ScriptedPrompts& prompts, int unit) {
    auto* chooser = form.findChild<FlexGridView*>("msflgBPU");
    QCoreApplication::processEvents();
    const QPoint at = chooser->visualRect(chooser->model()->index(unit, 0)).center();
    QTest::mouseClick(chooser->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(chooser->viewport(), Qt::LeftButton, {}, at);
    QCOMPARE(form.unitInForce(), kInputUnits[unit]);
    auto* tabs = form.findChild<QTabWidget*>("SSTabInputs");
    auto* demographics = form.findChild<QTabWidget*>("DemogphSubtab");

    // The population, typed in thousands.
    tabs->setCurrentIndex(1);
    demographics->setCurrentIndex(0);
    form.findChild<QLineEdit*>("txtMul")->setText("1000");
    auto* pop = form.findChild<FlexGridView*>("msflgPop");
    for (int row = 0; row < 10; ++row) {
        typeCell(pop, row, 1, QString::number(typedPopulation(unit, row, true)));
        typeCell(pop, row, 2, QString::number(typedPopulation(unit, row, false)));
    }
    form.findChild<QPushButton*>("cmdPopGo")->click();
    QCOMPARE(prompts.messages().last().left(40), QString("The data in the grid is successfully sto"));

    // The death rates, imported per 1,000 from the workbook's range named after the district.
    demographics->setCurrentIndex(1);
    form.findChild<QLineEdit*>("txtDmntr")->setText("1000");
    prompts.fileAnswer(QDir(scratch_.path()).filePath("rates.xlsx"));
    form.findChild<QPushButton*>("cmdASDRImprt")->click();
    QVERIFY(form.findChild<FlexGridView*>("msflgASDR")->model()->index(0, 1).data().toString().startsWith(
        QString::number(fileRate(unit, 0, true) * 1000, 'g', 17).left(6)));
    form.findChild<QPushButton*>("cmdASDRGo")->click();
    QVERIFY2(prompts.messages().last().contains("DatASDR"), qPrintable(prompts.messages().last()));

    // The demographic parameters, typed.
    demographics->setCurrentIndex(2);
    auto* dp = form.findChild<FlexGridView*>("msflgDP");
    typeCell(dp, 0, 0, unit == 0 ? "West" : "South");
    typeCell(dp, 0, 1, "0.0175");
    typeCell(dp, 0, 2, unit == 0 ? "32.5" : "41");
    form.findChild<QPushButton*>("cmdConfDP")->click();
    QVERIFY2(prompts.messages().last().contains("DatDmgphyPrmtrs"), qPrintable(prompts.messages().last()));

    // The proportions, imported from the text file and confirmed.
    tabs->setCurrentIndex(2);
    prompts.fileAnswer(QDir(scratch_.path()).filePath("csm.txt"));
    form.findChild<QPushButton*>("cmdCODImprt")->click();
    QCOMPARE(prompts.messages().last(), QString("Import successfully completed."));
    form.findChild<QPushButton*>("cmdConfmCOD")->click();
    QVERIFY2(prompts.messages().last().contains("DatCSM"), qPrintable(prompts.messages().last()));

    // The estimates of the first cause (which has sequelae), by cause and by sequela, and of the
    // first cause without sequelae.
    tabs->setCurrentIndex(3);
    auto* epiTabs = form.findChild<QTabWidget*>("EpiTab");
    form.findChild<QPushButton*>("cmdFirstEpi")->click();
    QVERIFY(epiTabs->isTabEnabled(1));
    auto* byCause = form.findChild<FlexGridView*>("flex1");
    typeCell(byCause, 0, 0, "0.0042");
    typeCell(byCause, 0, 3, "2.5");
    form.findChild<QPushButton*>("cmdcommit")->click();
    QVERIFY2(prompts.messages().last().startsWith("Records Added to database:"), qPrintable(prompts.messages().last()));
    epiTabs->setCurrentIndex(1);
    auto* bySequela = form.findChild<FlexGridView*>("grdSqle");
    typeCell(bySequela, 1, 1, "0.015");
    typeCell(bySequela, 1, 2, "12");
    form.findChild<QPushButton*>("cmdSqCnfrm")->click();
    QVERIFY2(prompts.messages().last().startsWith("Records Added To Database Successfully:"),
             qPrintable(prompts.messages().last()));
    epiTabs->setCurrentIndex(0);
    for (int k = 0; k < 10 && epiTabs->isTabEnabled(1); ++k)
        form.findChild<QPushButton*>("cmdNextEpi")->click();
    QCOMPARE(form.findChild<QLabel*>("lblCauseCode")->text(), QString("21021"));
    QVERIFY(!epiTabs->isTabEnabled(1));
    typeCell(byCause, 19, 0, "0.0008");
    form.findChild<QPushButton*>("cmdcommit")->click();
    QVERIFY2(prompts.messages().last().startsWith("Records Added to database:"), qPrintable(prompts.messages().last()));

    // The weights of the study, once.
    if (unit == 0) {
        tabs->setCurrentIndex(4);
        auto* weights = form.findChild<FlexGridView*>("MSFlgDWT");
        typeCell(weights, 0, 0, "0.105");
        typeCell(weights, 0, 4, "0.2");
        form.findChild<QPushButton*>("cmdConfirmDwt")->click();
        QVERIFY2(prompts.messages().last().contains("datdwt"), qPrintable(prompts.messages().last()));
    }
}

void StudySetupScenarioTest::enterInputs(FRMMAINMENU& frame, ScriptedPrompts& prompts) {
    // Every cause of the sample has a sequela; ductal carcinoma loses its flag (as the dictionary's
    // check box would take it), so that the study also has a cause without sequelae.
    exec("UPDATE _DctBDM SET Sqla = 0 WHERE CobCd = '21021'");
    writeRateWorkbook(QDir(scratch_.path()).filePath("rates.xlsx"));
    writeCauseText(QDir(scratch_.path()).filePath("csm.txt"), studyCauses(), cellTexts(studyContext().VctrYLLAsg));
    QVERIFY(frame.isMenuEnabled("mnu_studyInp"));
    frame.item("mnu_studyInp")->trigger();
    auto* form = waitForSubWindow<NewFrmInputs>(frame);
    QVERIFY(form);
    QCOMPARE(form->windowTitle(), QString("Inputs: India burden of disease (2001)"));
    for (int unit = 0; unit < 2; ++unit) {
        enterUnitInputs(*form, prompts, unit);
        if (QTest::currentTestFailed())
            return;
    }
    shootTabs(form, form->findChild<QTabWidget*>("SSTabInputs"), "inputs_scenario",
              {"select", "demographics", "causes", "epidemiology", "weights"});
    form->close();
    checkInputs();
}

// Compute -> DALYs - Quick with set 1, then DALYs - Sensitivity Analysis with sets 0 and 3, on the
// inputs just entered; the file as it then stands is kept for a later run of the program.
void StudySetupScenarioTest::computeTheStudy(FRMMAINMENU& frame, ScriptedPrompts& prompts, RecordingSound& sounds) {
    const QList<std::pair<const char*, QList<int>>> runs = {{"mnu_Daly", {1}}, {"mnu_sens", {0, 3}}};
    for (const auto& [item, sets] : runs) {
        prompts.clear();
        sounds.played.clear();
        QVERIFY(frame.isMenuEnabled(item));
        frame.item(item)->trigger();
        auto* form = waitForNamed<frmCompDALY>(frame, "frmCompDALY");
        QVERIFY(form);
        for (int r : sets)
            clickCell(form->flexBuiltInDAP, r, DapGridModel::SelectColumn);
        prompts.answer(Answer::No); // the errors of the run, if it stored any, are not viewed
        QPointer<frmCompDALY> alive(form);
        form->ID_COMPUTE->click();
        QTRY_VERIFY(!alive);
        QCOMPARE(prompts.messages().last(), QString("Calculation of DALY is complete.  Results are stored in tables "));
        QVERIFY(sounds.played.contains(settings().sLBussy));
        QCOMPARE(sounds.played.last(), settings().sLSuccess);
    }
    QCOMPARE(rows("SELECT DISTINCT DAPID FROM RsltYLL ORDER BY DAPID"), QStringList({"0", "1", "3"}));
    // Each set has the rows of each unit, cause and group; the YLL of the first cause in the first
    // unit is the figure the arrays hold.
    const int causes = int(studyCauses().size()), yllGroups = int(cellTexts(studyContext().VctrYLLAsg).size());
    const int units = int(cellTexts(studyContext().VctrBPULst).size());
    QCOMPARE(units, 4); // two of them with inputs
    QCOMPARE(rows("SELECT count(*) FROM RsltYLL WHERE DAPID = 3").value(0).toInt(), units * causes * yllGroups);
    QVERIFY(rows("SELECT count(*) FROM RsltDALY WHERE DAPID = 1").value(0).toInt() > 0);
    const Cell& yll = computation().ArrYll;
    QVERIFY(yll.isArray());
    QCOMPARE(rows("SELECT IYLL FROM RsltYLL WHERE DAPID = 3 AND BPUID = 'BLR' AND COBCd = '" + studyCauses()[0] +
                  "' ORDER BY ASG LIMIT 1")
                 .value(0)
                 .toDouble(),
             yll.array()(0, 0, 1, 0, 0, kYllYLL).toDouble());
    QVERIFY(QFile::copy(studyContext().StudyDB->path(), QDir(scratch_.path()).filePath("computed.vdb")));
}

void StudySetupScenarioTest::checkInputs() {
    const auto rows = [](const QString& sql) { return queryRows(*studyContext().StudyDB, sql); };
    for (int unit = 0; unit < 2; ++unit) {
        const QVariantList key{kInputUnits[unit]};
        const QStringList pop = queryRows(*studyContext().StudyDB,
                                          "SELECT Bai, M, F FROM DatPOP WHERE BPUID = ? AND YEAR = 2001 ORDER BY Bai", key);
        QCOMPARE(pop.size(), 10);
        auto asdr = studyContext().StudyDB->query(
            "SELECT Bai, M, F, P FROM DatASDR WHERE BPUID = ? AND YEAR = 2001 ORDER BY Bai", key);
        QVERIFY(asdr);
        for (int row = 0; row < 10; ++row) {
            const double m = typedPopulation(unit, row, true) * 1000, f = typedPopulation(unit, row, false) * 1000;
            QCOMPARE(pop[row], QString("%1|%2|%3").arg(kPndAges[row]).arg(m).arg(f));
            QVERIFY(asdr->next());
            QCOMPARE(asdr->value(1).toDouble(), fileRate(unit, row, true));
            QCOMPARE(asdr->value(2).toDouble(), fileRate(unit, row, false));
            QCOMPARE(asdr->value(3).toDouble(),
                     (fileRate(unit, row, false) * f + fileRate(unit, row, true) * m) / (f + m));
        }
    }
    QCOMPARE(rows("SELECT BPUID, YEAR, Cdmdl, PGR, IMR FROM DatDmgphyPrmtrs ORDER BY BPUID"),
             QStringList({"BLR|2001|West|0.0175|32.5", "MYS|2001|South|0.0175|41"}));
    const QStringList causes = studyCauses();
    QCOMPARE(rows("SELECT count(*) FROM DatCSM").value(0).toInt(), 2 * (causes.size() - 1) * 12); // no 0 rows
    QCOMPARE(rows("SELECT DISTINCT CSMP FROM DatCSM WHERE COBCd = '" + causes[0] + "'"), QStringList{"0.2"});
    QCOMPARE(rows("SELECT BPUID, COBCd, ASG, i, DURN FROM DatADW WHERE i IS NOT NULL ORDER BY BPUID, COBCd"),
             QStringList({"BLR|11011|F0|0.0042|2.5", "BLR|21021|M80-w|8e-04|<null>", "MYS|11011|F0|0.0042|2.5",
                          "MYS|21021|M80-w|8e-04|<null>"}));
    QCOMPARE(rows("SELECT BPUID, COBCd, SqlaCd, ASG, P, ago FROM DatADWSqla WHERE P IS NOT NULL ORDER BY BPUID"),
             QStringList({"BLR|11011|SQ1|F01-4|0.015|12", "MYS|11011|SQ1|F01-4|0.015|12"}));
    QCOMPARE(rows("SELECT BDSId, YEAR, COBCd, ASG, Dwt FROM DatDwt ORDER BY ASG"),
             QStringList({"Ind|2001|SQ1|U0-4|0.105", "Ind|2001|SQ1|U60-w|0.2"}));
}

// An outline opened from the View menu: its nodes, a picture, and a print to PDF whose text holds
// every node.
void StudySetupScenarioTest::checkOutline(FRMMAINMENU& frame, ScriptedPrompts& prompts, const char* item,
                                          const QStringList& nodes, const QString& name) {
    frame.item(item)->trigger();
    auto* form = waitForSubWindow<frmCOB>(frame);
    QVERIFY(form);
    child<QPushButton>(form, "cmdExpand")->click();
    auto* tree = child<QTreeWidget>(form, "COB");
    QCOMPARE(treeTexts(tree), nodes);
    QTest::qWait(50);
    QVERIFY(form->grab().save(shots_ + u'/' + name + QStringLiteral(".png")));
    const QString pdf = scratch_.filePath(name + QStringLiteral(".pdf"));
    setOutlinePrintToPdf(true);
    prompts.clear();
    prompts.fileAnswer(pdf);
    child<QPushButton>(form, "cmdPrint")->click();
    setOutlinePrintToPdf(false);
    QCOMPARE(prompts.messages(), QStringList({"printed Sucessfully"}));
    const QString text = pdfText(pdf);
    QVERIFY2(!text.isEmpty(), "pdftotext gave nothing");
    for (const QString& node : nodes)
        QVERIFY2(text.contains(node.trimmed()), qPrintable(node));
    prompts.clear();
}

// Data under two causes, as the input sheets would leave them: one cause of the cluster that goes
// (11011) and one that stays (21011), for both years, in Bangalore.
void StudySetupScenarioTest::addData() {
    for (int year : {2001, 2002}) {
        for (const char* cause : {"11011", "21011"}) {
            exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P) VALUES ('BLR', ?, ?, 'M0', 1, 2)",
                 {year, cause});
            exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('BLR', ?, ?, 'M0', 0.5)",
                 {year, cause});
            exec("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES ('Ind', ?, ?, 'M0', 0.2)",
                 {year, cause});
        }
        exec("INSERT INTO DatADWSqla (BPUID, YEAR, COBCd, SqlaCd, ASG, i) VALUES ('BLR', ?, '11011', 'SQ1', "
             "'M0', 1)",
             {year});
        exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('BLR', ?, 0, 100, 90)", {year});
        exec("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES ('BLR', ?, 0, 0.1, 0.1, 0.1)", {year});
        exec("INSERT INTO RsltYLL (BPUID, YEAR, DAPID, COBCd, ASG, IYLL, PYLL) VALUES ('BLR', ?, 1, '11011', "
             "'M0', 5, 5)",
             {year});
    }
}

void StudySetupScenarioTest::deleteACluster(FRMMAINMENU& frame, ScriptedPrompts& prompts) {
    frame.item("mnu_cgroups")->trigger();
    auto* form = waitForSubWindow<FRMBULDMAINCLDIC>(frame);
    QVERIFY(form);
    child<QTabWidget>(form, "SSTab1")->setCurrentIndex(2);
    auto* clusters = child<FlexGridView>(form, "MSFlexbdmclstr");
    clickCell(clusters, 0, 0); // 1101 Diarrhoeal: cholera and shigellosis
    prompts.clear();
    prompts.answer(Answer::Ok);
    prompts.answer(Answer::Yes);
    pressDelete(clusters);
    QCOMPARE(prompts.messages().size(), 2);
    QCOMPARE(prompts.shown()[0].title, QString("Vesk : warning"));
    QVERIFY(prompts.messages()[0].startsWith("There are 2 CobCds mapped to this Cluster Code(1101),"));
    QCOMPARE(prompts.shown()[1].title, QString("Vesk : warning message"));
    QCOMPARE(prompts.unanswered(), 0);
    QCOMPARE(gridTexts(clusters).size(), kClusters.size() - 1);
    child<QPushButton>(form, "cmdClose")->click();
    QTRY_VERIFY(!frame.findChild<FRMBULDMAINCLDIC*>());

    QCOMPARE(rows("SELECT ClstrCd FROM _DctBDMClstr ORDER BY ClstrCd"),
             QStringList({"1102", "1201", "2101", "2102", "3101"}));
    QCOMPARE(rows("SELECT count(*) FROM _DctBDM WHERE ClstrCd = '1101'"), QStringList({"0"}));
    QCOMPARE(rows("SELECT count(*), sum(Ind) FROM _DctBDM"), QStringList({"10|8"}));
    // Every table whose name begins with DAT loses the cause's rows, in both years; the rest stay.
    for (const char* table : {"DatADW", "DatCSM", "DatDwt"})
        QCOMPARE(rows(QStringLiteral("SELECT COBCd, YEAR FROM %1 ORDER BY YEAR").arg(QLatin1String(table))),
                 QStringList({"21011|2001", "21011|2002"}));
    QCOMPARE(rows("SELECT count(*) FROM DatADWSqla"), QStringList({"0"}));
    for (const char* table : {"DatPOP", "DatASDR", "RsltYLL"})
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table))),
                 QStringList({"2"}));
    // The maps of the causes that went stay, as do the levels above the cluster.
    QCOMPARE(rows("SELECT cobcd FROM _MapBDMSqla WHERE SqlaCd = 'SQ1' ORDER BY cobcd"),
             QStringList({"11011", "11012"}));
    QCOMPARE(rows("SELECT count(*) FROM _DctBDMSGrps"), QStringList({"4"}));
}

void StudySetupScenarioTest::deleteTheStudy(FRMMAINMENU& frame, ScriptedPrompts& prompts) {
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
    QCOMPARE(rows("SELECT name FROM pragma_table_info('_DctBDM')"),
             QStringList({"CobCd", "Disease", "ClstrCd", "Sqla", "Ind", "Ind2"}));
    QCOMPARE(rows("SELECT count(*) FROM _DctBDM WHERE Ind2 <> 0"), QStringList({"0"}));
    clickCell(f->dbgrid2, 0, 0); // Ind 2001
    prompts.clear();
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Yes);
    pressDelete(f->dbgrid2);
    QCOMPARE(prompts.messages().size(), 2);
    QCOMPARE(prompts.messages()[0], QString(" Do U want to delete the selected study"));
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
    // DatADW had rows for 2001 under the study's units: the five data tables lose 2001 and keep 2002;
    // disability weights and results are not touched.
    QCOMPARE(rows("SELECT COBCd, YEAR FROM DatADW"), QStringList({"21011|2002"}));
    QCOMPARE(rows("SELECT COBCd, YEAR FROM DatCSM"), QStringList({"21011|2002"}));
    for (const char* table : {"DatPOP", "DatASDR"})
        QCOMPARE(rows(QStringLiteral("SELECT YEAR FROM %1").arg(QLatin1String(table))),
                 QStringList({"2002"}));
    QCOMPARE(rows("SELECT count(*) FROM DatDwt"), QStringList({"2"}));
    QCOMPARE(rows("SELECT count(*) FROM RsltYLL"), QStringList({"2"}));
    QCOMPARE(rows("SELECT BDSId, Year, Slct FROM _DctBDS"), QStringList({"Ind2|2005|1"}));
    QCOMPARE(f->session().dbgrid2.rows(), 2);
    // The dictionary is common to all studies and stays whole.
    QCOMPARE(rows("SELECT count(*) FROM _DctBDM"), QStringList({"10"}));
    f->close();
    QTRY_VERIFY(!DEFINESTUDY1::instance());
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

    // File -> Dictionaries, Study -> Population Units, then Study -> Setup for the causes.
    for (auto step : {&StudySetupScenarioTest::buildDictionary, &StudySetupScenarioTest::buildUnits,
                      &StudySetupScenarioTest::chooseCauses}) {
        (this->*step)(program.frame(), program.prompts);
        if (QTest::currentTestFailed())
            return;
    }
    checkTables();

    // The chain reads the whole study back, silently now that it has units.
    program.prompts.clear();
    program.frame().setTimerEnabled(true);
    QVERIFY(program.waitForChain());
    QVERIFY2(program.prompts.messages().isEmpty(), qPrintable(program.prompts.messages().join('\n')));
    checkContext();
    QCOMPARE(program.frame().menuCaption("mnu_bpu"), QString("District"));

    // The two outlines of the complete study, on screen and on paper.
    checkOutline(program.frame(), program.prompts, "mnu_CauseGrps",
                 {" Causes of Burden Outline",
                  "  Cause of Burden",
                  "    1;(Communicable)",
                  "      11;(Infectious)",
                  "        1101;(Diarrhoeal)",
                  "          11011;(Cholera)",
                  "          11012;(Shigellosis)",
                  "        1102;(Malaria)",
                  "          11021;(Falciparum)",
                  "          11022;(Vivax)",
                  "      12;(Maternal)",
                  "        1201;(Haemorrhage)",
                  "          12011;(Antepartum)",
                  "          12012;(Postpartum)",
                  "    2;(Noncommunicable)",
                  "      21;(Cancers)",
                  "        2101;(Lung)",
                  "          21011;(Small cell)",
                  "        2102;(Breast)",
                  "          21021;(Ductal)",
                  "    3;(Injuries)",
                  "      31;(Unintentional)",
                  "        3101;(Road traffic)",
                  "          31011;(Pedestrian)",
                  "          31012;(Motorcyclist)"},
                 "frm_cob");
    checkOutline(program.frame(), program.prompts, "mnu_popunits_outline",
                 {" Population Schema Outline", "  Population Schema", "    IN;(India)",
                  "      KA;(Karnataka)", "        BLR;(Bangalore)", "        MYS;(Mysore)",
                  "      TN;(Tamil Nadu)", "        MAA;(Chennai)", "        CBE;(Coimbatore)"},
                 "frm_cob_population");
    if (QTest::currentTestFailed())
        return;

    enterInputs(program.frame(), program.prompts);
    if (QTest::currentTestFailed())
        return;
    computeTheStudy(program.frame(), program.prompts, program.sounds);
    if (QTest::currentTestFailed())
        return;
    // The later steps count the rows of data and results of their own: these rows go again.
    for (const char* table : {"DatPOP", "DatASDR", "DatDmgphyPrmtrs", "DatCSM", "DatADW", "DatADWSqla", "DatDwt",
                              "RsltYLD", "RsltYLL", "RsltDALY"})
        exec(QStringLiteral("DELETE FROM %1").arg(QLatin1String(table)));

    addData();
    deleteACluster(program.frame(), program.prompts);
    if (QTest::currentTestFailed())
        return;
    program.frame().setTimerEnabled(true);
    QVERIFY(program.waitForChain());
    QCOMPARE(studyCauses(),
             QStringList({"11021", "11022", "12011", "12012", "21011", "21021", "31011", "31012"}));
    deleteTheStudy(program.frame(), program.prompts);
}

// A new run of the program on the study as it stood after its computation: Compute -> Load Stored
// Results brings the three sets back, and Show Content in Memory lists them.
void StudySetupScenarioTest::theStoredResultsLoadInANewRun() {
    const QString computed = QDir(scratch_.path()).filePath("computed.vdb");
    if (!QFile::exists(computed))
        QSKIP("the scenario did not come to its computation");
    ProgramFolder folder;
    folder.writeStp("india.vdb");
    QVERIFY(QFile::copy(computed, studyFile(folder, "india.vdb")));
    RunningProgram program(folder);
    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    QVERIFY(!computation().ArrYll.isArray());
    QVERIFY(program.frame().isMenuEnabled("mns_lsr"));
    program.prompts.clear();
    program.frame().item("mns_lsr")->trigger();
    auto* form = waitForNamed<frmLoadStatus>(program.frame(), "frmLoadStatus");
    QVERIFY(form);
    for (int r : {0, 1, 3})
        clickCell(form->flexBuiltInDAP, r, DapGridModel::SelectColumn);
    form->CmdOk->click();
    QTRY_COMPARE(program.prompts.messages(), QStringList{" The Results have been loaded"});
    QCOMPARE(form->List1->count(), 3);
    QCOMPARE(form->List1->item(2)->text(), QString("DALY results Loaded "));
    const Cell& yll = computation().ArrYll;
    QVERIFY(yll.isArray());
    QCOMPARE(yll.array().size(kDimDAP), 3);
    // The figure of set 3 (third chosen) for the first cause and group of the first unit.
    QCOMPARE(yll.array()(0, 0, 2, 0, 0, kYllYLL).toDouble(),
             rows("SELECT IYLL FROM RsltYLL WHERE DAPID = 3 AND BPUID = 'BLR' AND COBCd = '" + studyCauses()[0] +
                  "' ORDER BY ASG LIMIT 1")
                 .value(0)
                 .toDouble());
    QVERIFY(computation().ArrDaly.isArray());
    form->close();

    program.frame().item("mnu_ShCntMem")->trigger();
    auto* content = waitForSubWindow<FrmShwCntMem>(program.frame());
    QVERIFY(content);
    QStringList shown;
    const ContentInMemoryModel* m = content->model();
    for (int r = 0; r < m->rowCount(); ++r)
        for (int c = 0; c < m->columnCount(); ++c)
            shown << m->index(r, c).data().toString();
    for (const char* set : {"[0,0,0,,]", "[1,0.03,1,0.04,0.1658]", "[3,0.03,0,,]"})
        QVERIFY2(shown.contains(set), qPrintable(shown.join(',')));
    QVERIFY(shown.contains("BLR") && shown.contains("MYS"));
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
