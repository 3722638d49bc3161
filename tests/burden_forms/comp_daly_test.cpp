// The DALY computation window and the load of stored results, used as a user uses them on the small
// study of tests/support/small_study.h in a real study file; the window's run against vesk-cli's.

#include "burden/computation.h"
#include "burden/compute_run.h"
#include "burden/forms/frm_comp_daly.h"
#include "burden/forms/frm_load_status.h"
#include "database/db_create.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "foundation/time_log.h"
#include "grid_gestures.h"
#include "query_rows.h"
#include "screenshots.h"
#include "small_study.h"
#include "small_study_open.h"
#include "study_db_fixture.h"

#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTest>

using namespace vesk;
using namespace vesk::test;

namespace {

const QString kSettings = QStringLiteral(VESK_BIN_DIR "/Vesk.stp");

// The rows of a result table in key order, for comparing two files.
QStringList resultRows(const DbConnection& db, const char* table) {
    return queryRows(db, QStringLiteral("SELECT * FROM %1 ORDER BY BPUID, YEAR, DAPID, COBCd, ASG%2")
                             .arg(QLatin1String(table), QLatin1String(table) == QLatin1String("RsltYLD")
                                                            ? QStringLiteral(", SqlaCd")
                                                            : QString()));
}

} // namespace

class CompDalyTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<StudyDbFixture> fx_;
    QString shots_;

    // The program's settings file, the output folder in the fixture's folder, and the small study
    // opened as the loading chain opens it.
    void smallStudy() {
        QString error;
        QVERIFY2(openSmallStudy(*fx_, {}, &error), qPrintable(error));
    }
    void clickSelect(frmCompDALY& f, int row) { clickCell(f.flexBuiltInDAP, row, DapGridModel::SelectColumn); }
    QStringList selects(QTableView* view) {
        QStringList out;
        for (int r = 0; r < view->model()->rowCount(); ++r)
            out << view->model()->index(r, DapGridModel::SelectColumn).data().toString();
        return out;
    }
    QString count(const char* table) {
        return queryRows(*fx_->db, QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table))).value(0);
    }

private slots:
    void init() {
        computation() = Computation{};
        fx_ = std::make_unique<StudyDbFixture>();
        shots_ = screenshotFolder(fx_->dir);
    }
    void cleanup() {
        computation() = Computation{};
        fx_.reset();
    }

    void quickChoosesOneSetAndComputes();
    void sensitivityTogglesAndAsksForASet();
    void noUnitsNoWindow();
    void storedResultsLoadBack();
    void theWindowStoresWhatVeskCliStores();
};

void CompDalyTest::quickChoosesOneSetAndComputes() {
    smallStudy();
    int viewerOpened = 0;
    auto* f = new frmCompDALY(kCompModeQuick, [&viewerOpened] { ++viewerOpened; });
    f->show();
    QVERIFY(QTest::qWaitForWindowExposed(f));
    QCOMPARE(f->windowTitle(), QString("DALY Computation "));
    QCOMPARE(f->Label1->text(), QString("Choose\\Define DAPs for Computation Of DALYs "));
    QVERIFY(!f->fmecompdaly->isVisible());
    // Nothing chosen: the run ends before Time.stp is touched.
    f->ID_COMPUTE->click();
    QCOMPARE(fx_->prompts.messages(), QStringList{"please select atleast one dap for computation to proceed further"});
    QCOMPARE(fx_->prompts.shown().last().title, QString("Select DAP"));
    QVERIFY(!QFile::exists(timeLogPath()));
    // Two clicks on different rows leave one chosen.
    clickSelect(*f, 1);
    clickSelect(*f, 0);
    QCOMPARE(selects(f->flexBuiltInDAP), QStringList({"True", "False", "False", "False", "False"}));
    QImage shot = f->grab().toImage();
    QVERIFY(hasContent(shot));
    shot.save(shots_ + "/frmCompDALY.png");

    fx_->prompts.clear();
    fx_->prompts.answer(Answer::Yes);
    QPointer<frmCompDALY> alive(f);
    f->ID_COMPUTE->click();
    QTRY_VERIFY(!alive);
    // The window closes first, offering the one error stored (U2 has no population), then says the
    // run is complete.
    QCOMPARE(fx_->prompts.messages(), QStringList({"An error occured during DALY calculation, do you wish to view it",
                                                   "Calculation of DALY is complete.  Results are stored in tables "}));
    QCOMPARE(fx_->prompts.shown().first().title, QString("DALY Calculation"));
    QCOMPARE(viewerOpened, 1);
    QCOMPARE(errorStoreCount(), 0);
    QCOMPARE(count("RsltYLD"), QString("80"));
    QCOMPARE(count("RsltYLL"), QString("24"));
    QCOMPARE(count("RsltDALY"), QString("24"));
    QVERIFY(QFile::exists(timeLogPath()));
    QVERIFY(computation().ArrDaly.isArray());
}

void CompDalyTest::sensitivityTogglesAndAsksForASet() {
    smallStudy();
    // A study without death rates stops at the demographic inputs; its errors are offered on closing.
    QString error;
    QVERIFY(StudyDbFixture::exec(*fx_->db, "DELETE FROM DatASDR", {}, &error));
    auto* f = new frmCompDALY(kCompModeSensitivity, {});
    f->show();
    f->ID_COMPUTE->click();
    QCOMPARE(fx_->prompts.messages(), QStringList{"Please select DAP "});
    clickSelect(*f, 0);
    clickSelect(*f, 2);
    clickSelect(*f, 0);
    clickSelect(*f, 3);
    QCOMPARE(selects(f->flexBuiltInDAP), QStringList({"False", "False", "True", "True", "False"}));
    fx_->prompts.clear();
    fx_->prompts.answer(Answer::Ok);
    fx_->prompts.answer(Answer::No);
    QPointer<frmCompDALY> alive(f);
    f->ID_COMPUTE->click();
    QTRY_VERIFY(!alive);
    const QStringList said = fx_->prompts.messages();
    QVERIFY(!said.isEmpty());
    QCOMPARE(said.first(), QString("Demographic Inputs could not be built as data for Population Or ASDR(Mortality "
                                   "Rate) may not be present. Computation of DALY cannot proceed further"));
    QCOMPARE(fx_->prompts.shown().first().title, QString("Daly Computation"));
    // U2's missing population was stored; the one error is offered.
    QCOMPARE(said.value(1), QString("An error occured during DALY calculation, do you wish to view it"));
    QCOMPARE(errorStoreCount(), 0);
    QFile log(timeLogPath());
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromLatin1(log.readAll()).count("\r\n"), 1); // the start line only
    QCOMPARE(count("RsltYLD"), QString("0"));
}

void CompDalyTest::noUnitsNoWindow() {
    studyContext().VctrBPULst = Cell();
    QVERIFY(!frmCompDALY::open(nullptr, kCompModeQuick));
    QCOMPARE(fx_->prompts.messages(),
             QStringList{"No population units to compute DALYs, Define population units first and supply inputs "
                         "before computing DALYs"});
}

void CompDalyTest::storedResultsLoadBack() {
    smallStudy();
    computation().MtxDAP = Cell();
    auto* f = new frmCompDALY(kCompModeQuick, {});
    clickSelect(*f, 0);
    f->ID_COMPUTE->click();
    const Cell computedYll = computation().ArrYll;
    computation() = Computation{};

    fx_->prompts.clear();
    auto* l = new frmLoadStatus;
    l->show();
    QVERIFY(QTest::qWaitForWindowExposed(l));
    QCOMPARE(l->windowTitle(), QString("Loading"));
    QCOMPARE(l->Label2->text(), QString("Choose/Define  DAPs  For Loading Desired Results"));
    l->CmdOk->click();
    QCOMPARE(fx_->prompts.messages(), QStringList{"Please Select the DAP for loading Stored Results"});
    QVERIFY(!computation().ArrYll.isArray());
    fx_->prompts.clear();
    clickCell(l->flexBuiltInDAP, 0, DapGridModel::SelectColumn);
    l->CmdOk->click();
    QVERIFY(!l->flexBuiltInDAP->isVisible());
    QTRY_COMPARE(fx_->prompts.messages(), QStringList{" The Results have been loaded"});
    QStringList entries;
    for (int i = 0; i < l->List1->count(); ++i)
        entries << l->List1->item(i)->text();
    QCOMPARE(entries, QStringList({"YLD results Loaded ", "YLL results Loaded ", "DALY results Loaded "}));
    QImage shot = l->grab().toImage();
    QVERIFY(hasContent(shot));
    shot.save(shots_ + "/frmLoadStatus.png");
    QVERIFY(computation().ArrYll.isArray());
    QCOMPARE(computation().ArrYll.array()(0, 0, 0, 0, 0, 2).toDouble(), computedYll.array()(0, 0, 0, 0, 0, 2).toDouble());
    QVERIFY(computation().ArrDalyLbl.isArray());
    l->close();
}

void CompDalyTest::theWindowStoresWhatVeskCliStores() {
    // A study file made by vesk-cli create-db, filled by SQL, in two copies.
    const QString a = fx_->path("a.vdb"), b = fx_->path("b.vdb");
    QProcess create;
    create.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"), {"create-db", a});
    QVERIFY(create.waitForFinished(30000));
    QCOMPARE(create.exitCode(), 0);
    {
        QString error;
        auto db = DbConnection::open(a, &error);
        QVERIFY2(db, qPrintable(error));
        std::vector<SqlStep> steps = {
            {"INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES ('S1', 2000, 'Small', 'SCH', 1)", {}},
            {"INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES ('SCH', 'Unit', 'Region', 'Nation')", {}},
            {"ALTER TABLE _DctBDM ADD COLUMN S1 BOOLEAN", {}}};
        for (const SqlStep& s : smallStudySql())
            steps.push_back(s);
        for (const auto& [sql, values] : steps)
            QVERIFY2(StudyDbFixture::exec(*db, sql, values, &error), qPrintable(error));
    }
    QVERIFY(QFile::copy(a, b));

    QVERIFY(readSettingsFile(kSettings, settings(), preferences()).outcome == SettingsOutcome::Ok);
    settings().AppPath = QStringLiteral(VESK_BIN_DIR);
    settings().StatOutPath = fx_->dir.path() + u'/';
    preferences().txtwklocation = fx_->dir.path();
    preferences().txtVESKObj = QStringLiteral("a.vdb");
    QVERIFY(openComputationStudy(studyContext()));
    fx_->prompts.clear();
    auto* f = new frmCompDALY(kCompModeSensitivity, {});
    for (int r = 0; r < 4; ++r)
        clickSelect(*f, r);
    f->ID_COMPUTE->click();
    QVERIFY(fx_->prompts.messages().contains("Calculation of DALY is complete.  Results are stored in tables "));
    studyContext() = StudyContext{};

    QProcess cli;
    cli.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"),
              {"compute", b, "--dap", "0,1,2,3", "--sensitivity", "--settings", kSettings});
    QVERIFY(cli.waitForFinished(60000));
    QCOMPARE(cli.exitCode(), 0);

    QString error;
    auto dbA = DbConnection::open(a, &error), dbB = DbConnection::open(b, &error);
    QVERIFY(dbA && dbB);
    for (const char* table : {"RsltYLD", "RsltYLL", "RsltDALY"}) {
        const QStringList fromWindow = resultRows(*dbA, table), fromCli = resultRows(*dbB, table);
        QVERIFY(!fromWindow.isEmpty());
        QCOMPARE(fromCli, fromWindow);
    }
    QCOMPARE(resultRows(*dbA, "RsltYLL").size(), 2 * 4 * 3 * 4);
}

QTEST_MAIN(CompDalyTest)
#include "comp_daly_test.moc"
