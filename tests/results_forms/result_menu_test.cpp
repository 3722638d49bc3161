// The Results menu's tables as a user opens them: every entry over the menu tree on the demonstration
// study in the running frame, before and after a computation; heads and figures against the stored
// rows summed here; paging through the units; Save As in each kind read back; Print to PDF.

#include "burden/calculator_models.h"
#include "burden/computation.h"
#include "burden/compute_run.h"
#include "database/db_connection.h"
#include "database/study_context.h"
#include "demography/standard_life_table.h"
#include "foundation/chart_export_settings.h"
#include "foundation/settings.h"
#include "foundation/time_log.h"
#include "frame_fixture.h"
#include "inputs/foreign_file.h"
#include "platform/forms/flex_grid_view.h"
#include "query_rows.h"
#include "demography/forms/frm_pop_dth_as.h"
#include "demography/forms/frm_pop_prymd.h"
#include "results/forms/frm_show_rslt.h"
#include "results/forms/result_viewer.h"
#include "results/result_entries.h"
#include "screenshots.h"
#include "shell/forms/form_registry.h"
#include "shell/forms/menu_commands.h"
#include "shell/study_backend.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

namespace {

// The stored field of a measure and its table.
std::pair<QString, QString> storedField(BurdenMeasure m) {
    switch (m) {
    case BurdenMeasure::YLL:
        return {"RsltYLL", "IYLL"};
    case BurdenMeasure::IYLD:
        return {"RsltYLD", "IYLD"};
    case BurdenMeasure::PYLD:
        return {"RsltYLD", "PYLD"};
    case BurdenMeasure::IDALY:
        return {"RsltDALY", "IDALY"};
    case BurdenMeasure::PDALY:
        break;
    }
    return {"RsltDALY", "PDALY"};
}

// The BPUs of a unit of a level, as SQL over _DctBPU.
QString unitsOf(ResultLevel level) {
    switch (level) {
    case ResultLevel::BPU:
        return "SELECT ?";
    case ResultLevel::PAG1:
        return "SELECT BPUID FROM _DctBPU WHERE BDSId = 'DEM' AND PAG1Id = ?";
    case ResultLevel::PAG2:
        break;
    }
    return "SELECT BPUID FROM _DctBPU WHERE BDSId = 'DEM' AND PAG1Id IN (SELECT PAG1Id FROM _DctPAG1 WHERE BDSId = "
           "'DEM' AND PAG2Id = ?)";
}

} // namespace

class ResultMenuTest : public QObject {
    Q_OBJECT

private:
    DatabaseStudyBackend backend;
    std::unique_ptr<ProgramFolder> folder;
    std::unique_ptr<RunningProgram> program;
    QString file;

    void start() {
        resetGlobals();
        studyContext() = StudyContext{};
        computation() = Computation{};
        setStudyBackend(&backend);
        registerResultViewers();
        registerPyramids();
        folder = std::make_unique<ProgramFolder>();
        folder->writeStp(QStringLiteral("demo.vdb"));
        file = QDir(folder->work()).filePath("demo.vdb");
        QVERIFY(QFile::copy(QStringLiteral(VESK_BIN_DIR "/demo.vdb"), file));
        QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        program = std::make_unique<RunningProgram>(*folder);
        QVERIFY(program->waitForFrame());
        QVERIFY(program->waitForChain());
        settings().StatOutPath = folder->stat();
        program->prompts.clear();
    }
    // The study computed for the sets 1 and 2, as Compute -> DALYs - Sensitivity Analysis does.
    void compute() {
        DapGridModel grid(DapRowTexts::Computation);
        grid.chooseRow(1, kCompModeSensitivity);
        grid.chooseRow(2, kCompModeSensitivity);
        computation().MtxDAP = grid.chosenDaps();
        const StandardLifeTable table = standardLifeTable();
        QVERIFY(table.table != nullptr);
        TimeLog log;
        QCOMPARE(runComputation(studyContext(), computation(), *table.table, nullptr, log).end, RunEnd::Stored);
        program->prompts.clear();
    }
    ResultViewer* openEntry(const ResultEntry& e) {
        program->frame().item(QString::fromLatin1(e.item))->trigger();
        const auto windows = program->frame().mdiArea()->subWindowList();
        for (QMdiSubWindow* w : windows)
            if (auto* v = dynamic_cast<ResultViewer*>(w->widget()); v && !v->property("seen").toBool()) {
                v->setProperty("seen", true);
                return v;
            }
        return nullptr;
    }
    // The stored sum of the entry's measure over the cause, the groups, the units' BPUs and the set.
    double stored(const ResultEntry& e, const QString& unit, int dap, const QString& cause, const QString& group = {}) {
        const auto [table, field] = storedField(e.measure);
        QString error;
        auto db = DbConnection::open(file, &error);
        const QString sql = QStringLiteral("SELECT SUM(%1) FROM %2 WHERE DAPID = ? AND COBCd = ? AND BPUID IN (%3)%4")
                                .arg(field, table, unitsOf(e.level), group.isEmpty() ? QString() : " AND ASG = ?");
        QVariantList values{dap, cause, unit};
        if (!group.isEmpty())
            values << group;
        return queryRows(*db, sql, values).value(0).toDouble();
    }

private slots:
    void init() { start(); }
    void cleanup() {
        program.reset();
        folder.reset();
        resetGlobals();
        computation() = Computation{};
        studyContext() = StudyContext{};
    }

    void beforeAComputationEveryEntryAnswersItsCheckAndOpensNothing();
    void everyEntryShowsTheStoredFiguresOfItsUnits();
    void pagingStopsAtTheEnds();
    void savingReadsBackAndPrintingSaysSo();
    void graphsAndTheirDataExportFromTheMenu();
    void theCauseGridShowsSequelaeUnderTheirCause();
    void pyramidAndViewsFromTheMenus();
};

void ResultMenuTest::pyramidAndViewsFromTheMenus() {
    // Before a computation the pyramid builds the population itself.
    program->frame().item(QStringLiteral("mnu_popPryd"))->trigger();
    auto* pyramid = program->frame().findChild<frmPopPrymd*>(QStringLiteral("frmPopPrymd"));
    QVERIFY(pyramid);
    QCOMPARE(pyramid->lblBPU->text(), QString("CAP"));
    QVERIFY(!pyramid->picPyramid->table().empty());
    pyramid->cmdlast->click();
    QCOMPARE(pyramid->lblBPU->text(), QString("SLO"));
    // The views read the computation's arrays: after one, the deaths of each district.
    compute();
    program->frame().item(QStringLiteral("mnu_DthsByAgeSex"))->trigger();
    auto* view = program->frame().findChild<frmPopDthAS*>(QStringLiteral("frmPopDthAS"));
    QVERIFY(view);
    view->mnu_5->trigger();
    std::unique_ptr<frmShowRsltpopdth> shown(view->showFor("P"));
    QVERIFY(shown);
    QCOMPARE(shown->grid().rows(), 1 + 5);
    QCOMPARE(shown->lblUnit->text(), QString("CAP"));
    QVERIFY(shown->grid().textMatrix(5, 2).toDouble() > 0); // deaths at 60 and over
}

void ResultMenuTest::theCauseGridShowsSequelaeUnderTheirCause() {
    compute();
    ResultViewer* v = openEntry(*resultEntry("mnu_idalyYldAgSxCu"));
    QVERIFY(v);
    auto* grid = dynamic_cast<frmShowRslt*>(v->openCauseGrid());
    QVERIFY(grid);
    QVERIFY(program->frame().mdiArea()->subWindowList().size() >= 2);
    const CellArray& t = grid->table()->rows;
    QCOMPARE(grid->table()->heads, QStringList({"Causes", "Description", "ASG", "IYLD"}));
    // 25 causes of 38 groups, and 13 sequelae of 38 groups under their causes.
    QCOMPARE(t.size(0), (25 + 13) * 38);
    // Diabetes and its four sequelae: each group's cause value is the sum of its sequelae's.
    int at = -1;
    for (int r = 0; r < t.size(0); ++r)
        if (t(r, 1).toString() == QLatin1String("Diabetes mellitus")) {
            at = r;
            break;
        }
    QVERIFY(at >= 0);
    const QString sequela = t(at + 38, 0).toString();
    QString error;
    auto db = DbConnection::open(file, &error);
    QCOMPARE(t(at + 38, 1).toString(),
             queryRows(*db, "SELECT Sequela FROM _DctBDMSqla WHERE SqlaCd = ?", {sequela}).value(0));
    for (int m = 0; m < 38; ++m) {
        double sum = 0;
        for (int q = 1; q <= 4; ++q) {
            QCOMPARE(t(at + q * 38 + m, 2).toString(), t(at + m, 2).toString());
            sum += t(at + q * 38 + m, 3).toDouble();
        }
        QVERIFY2(qAbs(sum - t(at + m, 3).toDouble()) <= 1e-12 * qMax(1.0, sum), qPrintable(t(at + m, 2).toString()));
    }
    // The sequelae of one cause alone; a cause without them says so and the grid stays.
    grid->cmbCause->setCurrentIndex(grid->cmbCause->findText("Diabetes mellitus", Qt::MatchEndsWith));
    grid->cmdSqla->click();
    QCOMPARE(grid->table()->rows.size(0), 4 * 38);
    program->prompts.clear();
    grid->cmbCause->setCurrentIndex(0);
    grid->cmdSqla->click();
    QCOMPARE(program->prompts.messages(), QStringList{"There is no Sqla Existing for this Cobcode"});
    QCOMPARE(grid->table()->rows.size(0), 4 * 38);
    QTemporaryDir scratch;
    grid->cmdAll->click();
    grid->parentWidget()->resize(760, 520);
    QTest::qWait(20);
    const QImage shot = grid->grab().toImage();
    QVERIFY(hasContent(shot));
    QVERIFY(shot.save(screenshotFolder(scratch) + "/frmShowRslt.png"));
}

void ResultMenuTest::graphsAndTheirDataExportFromTheMenu() {
    compute();
    chartExportSettings() = ChartExportSettings{};
    program->prompts.answer(Answer::No); // the sheets unnamed: the defaults
    program->frame().item(QStringLiteral("mnu_bpuGraphExptDat"))->trigger();
    const QString book = QDir(folder->stat()).filePath("DEM/Data/GphData.xlsx");
    QVERIFY(QFile::exists(book));
    QCOMPARE(program->prompts.messages().last(), "The data are stored in the file path :" + QDir(folder->stat()).filePath("DEM/Data"));
    program->prompts.clear();
    program->frame().item(QStringLiteral("mnu_Pag1GraphExportdata"))->trigger();
    QVERIFY(QFile::exists(QDir(folder->stat()).filePath("DEM/Data/PagData.xlsx")));
    // Without Gph.stp beside the program the charts say so; with it they open.
    program->prompts.clear();
    program->frame().item(QStringLiteral("mnu_pag1Graphs"))->trigger();
    QCOMPARE(program->prompts.messages(), QStringList{"Gph.stp is not existing, Graphs cannot be displayed"});
    QVERIFY(QFile::copy(QStringLiteral(VESK_BIN_DIR "/Gph.stp"), settings().AppPath + "/Gph.stp"));
    program->frame().item(QStringLiteral("mnu_pag1Graphs"))->trigger();
    auto* charts = program->frame().findChild<QWidget*>(QStringLiteral("frmnew"));
    QVERIFY(charts);
    QCOMPARE(charts->windowTitle(), QString("Graphs"));
    chartExportSettings() = ChartExportSettings{};
}

void ResultMenuTest::beforeAComputationEveryEntryAnswersItsCheckAndOpensNothing() {
    for (const ResultEntry& e : resultEntries()) {
        QVERIFY2(program->enabled(QString::fromLatin1(e.item)), e.item);
        program->prompts.clear();
        program->frame().item(QString::fromLatin1(e.item))->trigger();
        QCOMPARE(program->prompts.messages().size(), 1);
        QCOMPARE(program->prompts.messages()[0],
                 e.kind == ResultKind::Leading ? QString("The present result cannot be shown. Please Calculate the daly again")
                                               : QString("The Report cannot be shown. Please Calculate The Daly Again "));
    }
    QVERIFY(program->frame().mdiArea()->subWindowList().isEmpty());
}

void ResultMenuTest::everyEntryShowsTheStoredFiguresOfItsUnits() {
    compute();
    QTemporaryDir scratch;
    const QString shots = screenshotFolder(scratch);
    QSet<QString> pictured;
    for (const ResultEntry& e : resultEntries()) {
        ResultViewer* v = openEntry(e);
        QVERIFY2(v, e.item);
        const GridModel& g = v->gridModel();
        const bool detail = e.kind == ResultKind::Detail;
        QCOMPARE(v->objectName(), detail ? QString("Frm6DResults")
                                         : e.level == ResultLevel::BPU ? QString("frmDetailsForBpu") : QString("frmDetails"));
        if (detail) {
            QCOMPARE(g.textMatrix(0, 0), QString("CobCD"));
            QCOMPARE(g.textMatrix(0, 1), QString("Description"));
        } else {
            QCOMPARE(QStringList({g.textMatrix(0, 0), g.textMatrix(0, 1), g.textMatrix(0, 2), g.textMatrix(0, 3)}),
                     summaryHeads(e));
        }
        QCOMPARE(g.rows() - 1, e.kind == ResultKind::Leading ? 10 : 25);
        // The last unit, the second set: three rows of figures against the stored rows.
        v->cmdlast->click();
        v->cmbDap->setCurrentIndex(1);
        v->cmdShow->click();
        const QString unit = v->lblUnit->text().section(' ', 0, 0);
        for (int r : {1, 5, g.rows() - 1}) {
            const QString cause = g.textMatrix(r, 0);
            const double got = detail ? g.textMatrix(r, 2).toDouble() : g.textMatrix(r, 2).toDouble();
            const double want = detail ? stored(e, unit, 2, cause, g.textMatrix(0, 2)) : stored(e, unit, 2, cause);
            QVERIFY2(qAbs(got - want) <= 1e-9 * qMax(1.0, qAbs(want)),
                     qPrintable(QStringLiteral("%1 %2 %3: %4 against %5").arg(e.item, unit, cause).arg(got, 0, 'g', 17).arg(want, 0, 'g', 17)));
        }
        const QString kind = v->objectName();
        if (!pictured.contains(kind)) {
            pictured << kind;
            v->parentWidget()->resize(1000, 520);
            QTest::qWait(20);
            const QImage shot = v->grab().toImage();
            QVERIFY(hasContent(shot));
            QVERIFY(shot.save(shots + "/" + kind + ".png"));
        }
        v->close();
    }
    QCOMPARE(pictured.size(), 3);
}

void ResultMenuTest::pagingStopsAtTheEnds() {
    compute();
    ResultViewer* v = openEntry(*resultEntry("mnu_iDalyAgSxCa"));
    QVERIFY(v);
    QCOMPARE(v->page(), 0);
    QVERIFY(!v->cmdPrev->isEnabled());
    for (int k = 0; k < 7; ++k)
        v->cmdNxt->click();
    QCOMPARE(v->page(), 7);
    QVERIFY(!v->cmdNxt->isEnabled());
    QVERIFY(!v->cmdlast->isEnabled());
    v->showPage(8); // moving past the last unit keeps the last on view
    QCOMPARE(v->page(), 7);
    QCOMPARE(v->lblUnit->text().section(' ', 0, 0), QString("SLO"));
    v->cmdTop->click();
    QCOMPARE(v->page(), 0);
    v->Combo1->setCurrentIndex(3);
    emit v->Combo1->activated(3);
    QCOMPARE(v->page(), 3);
    // N leading with an empty N: the question; OK takes 10, Cancel shows nothing.
    ResultViewer* n = openEntry(*resultEntry("mnu_nLdCauses"));
    QVERIFY(n);
    n->nBox->clear();
    program->prompts.clear();
    program->prompts.answer(Answer::Ok);
    n->cmdShow->click();
    QCOMPARE(program->prompts.shown().size(), 1);
    QCOMPARE(program->prompts.shown()[0].title, QString("Value foe N Leading cause not set"));
    QCOMPARE(n->gridModel().rows(), 11);
    n->nBox->setText("40");
    n->cmdShow->click();
    QCOMPARE(n->gridModel().rows(), 26); // all 25 causes
}

void ResultMenuTest::savingReadsBackAndPrintingSaysSo() {
    compute();
    ResultViewer* v = openEntry(*resultEntry("mnu_Pg1PDalyAgSxCa"));
    QVERIFY(v);
    for (const char* name : {"t.txt", "t.dbf", "t.WK1", "t.xlsx", "t.vdb"}) {
        const QString path = folder->work() + "/" + QLatin1String(name);
        program->prompts.clear();
        program->prompts.fileAnswer(path);
        v->cmdSavAs->click();
        QCOMPARE(program->prompts.messages().value(0), "Data exported successfully:" + path);
        const CellArray back = FnReadArrFile(path, QStringLiteral("Results"));
        QCOMPARE(back.size(0), 25);
        const CellArray& rows = v->table()->rows;
        for (int r = 0; r < 25; ++r)
            for (int k = 2; k < rows.size(1); ++k)
                QVERIFY2(back(r, k).toDouble() == rows(r, k).toDouble(), qPrintable(QString("%1 %2 %3").arg(name).arg(r).arg(k)));
    }
    program->prompts.clear();
    const QString pdf = folder->work() + "/t.pdf";
    program->prompts.fileAnswer(pdf);
    v->CmdPrint->click();
    QVERIFY(QFile::exists(pdf));
    QCOMPARE(program->prompts.messages().value(0), QString("Printed Succesfully"));
}

QTEST_MAIN(ResultMenuTest)
#include "result_menu_test.moc"
