// The error viewer, the content-in-memory viewer and the event sounds, driven as a user meets them.

#include "burden/computation.h"
#include "database/study_context.h"
#include "platform/cell_array.h"
#include "platform/forms/qt_services.h"
#include "platform/prompts.h"
#include "foundation/error_store.h"
#include "shell/forms/frm_grid_test.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/forms/frm_shw_cnt_mem.h"
#include "shell/forms/menu_commands.h"
#include "foundation/settings.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

using namespace vesk;

class RunLogFormsTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir;
    ScriptedPrompts prompts;
    std::unique_ptr<ScopedPromptService> installed;

    static QStringList headings(const QAbstractItemModel* m) {
        QStringList out;
        for (int c = 0; c < m->columnCount(); ++c)
            out << m->headerData(c, Qt::Horizontal).toString();
        return out;
    }
    static QStringList row(const QAbstractItemModel* m, int r) {
        QStringList out;
        for (int c = 0; c < m->columnCount(); ++c)
            out << m->data(m->index(r, c)).toString();
        return out;
    }

private slots:
    void init() {
        installed = std::make_unique<ScopedPromptService>(&prompts);
        prompts.clear();
        settings().StatOutPath = dir.path() + u'/';
        clearErrorStore();
        studyContext() = StudyContext{};
        computation() = Computation{};
    }
    void cleanup() {
        installed.reset();
        clearErrorStore();
        studyContext() = StudyContext{};
        computation() = Computation{};
    }

    void errorViewerOnAnEmptyStoreShowsNoError() {
        frmgridtest form;
        form.show();
        auto* grid = form.findChild<QTableView*>("grid");
        QVERIFY(grid);
        QCOMPARE(form.objectName(), QString("frmgridtest"));
        QCOMPARE(headings(grid->model()),
                 QStringList({"S.No", "Error Number", "Error Description", "Error Source"}));
        QCOMPARE(grid->model()->rowCount(), 1);
        QCOMPARE(row(grid->model(), 0), QStringList({"No Error", "", "", ""}));
    }

    void errorViewerListsTheStoreAsItStoodWhenOpened() {
        ErrorStore(0, "The Cobcds are not declared in _DctBdm ", "InitCobcd ");
        ErrorStore(-2, "Invalid parameter value", "FnlYLD");
        frmgridtest form;
        clearErrorStore(); // the chain empties the store once the viewer is open
        const QAbstractItemModel* m = form.findChild<QTableView*>("grid")->model();
        QCOMPARE(m->rowCount(), 2);
        QCOMPARE(row(m, 0), QStringList({"1", "0", "The Cobcds are not declared in _DctBdm ", "InitCobcd "}));
        QCOMPARE(row(m, 1), QStringList({"2", "-2", "Invalid parameter value", "FnlYLD"}));
    }

    void contentInMemoryWithNothingInMemorySaysSo() {
        QVERIFY(FrmShwCntMem::open() == nullptr);
        QCOMPARE(prompts.messages(), QStringList({"No results in memory "}));
        QCOMPARE(prompts.shown().first().title, QString("Content in memory"));
    }

    void contentInMemoryListsYearsUnitsAndParameterSets() {
        StudyContext& c = studyContext();
        CellArray years{1};
        years(0) = Cell(2001);
        c.VctrYrLst = Cell(years);
        CellArray units{3};
        units(0) = Cell("U1");
        units(1) = Cell("U2");
        units(2) = Cell("U3");
        c.VctrBPULst = Cell(units);
        CellArray dap{2, 5};
        const double sets[2][5] = {{0, 0, 0, 0, 0}, {1, 0.03, 1, 0.04, 0.1658}};
        for (int i = 0; i < 2; ++i)
            for (int j = 0; j < 5; ++j)
                dap(i, j) = Cell(sets[i][j]);
        computation().MtxDAP = Cell(dap);
        std::unique_ptr<FrmShwCntMem> form(FrmShwCntMem::open());
        QVERIFY(form);
        QVERIFY(prompts.shown().isEmpty());
        QCOMPARE(form->objectName(), QString("FrmShwCntMem"));
        const QAbstractItemModel* m = form->findChild<QTableView*>("grid")->model();
        QCOMPARE(headings(m), QStringList({"Column No", "Years", "Regions", "Dap Ids"}));
        QCOMPARE(m->rowCount(), 3);
        QCOMPARE(row(m, 0), QStringList({"1", "2001", "U1", "[0,0,0,0,0]"}));
        QCOMPARE(row(m, 1), QStringList({"2", "", "U2", "[1,0.03,1,0.04,0.1658]"}));
        QCOMPARE(row(m, 2), QStringList({"3", "", "U3", ""}));
    }

    void contentInMemoryOpensOnResultsAlone() {
        computation().ArrDaly = Cell(CellArray{1});
        std::unique_ptr<FrmShwCntMem> form(FrmShwCntMem::open());
        QVERIFY(form);
        QVERIFY(prompts.shown().isEmpty());
    }

    void theFrameOpensBothViewersInsideItOneAtATime() {
        clearMenuCommands();
        registerRunLogViewers();
        QVERIFY(errorViewerOpener());
        QVERIFY(menuCommand("mnu_ShCntMem"));
        FRMMAINMENU frame;
        auto titles = [&] {
            QStringList out;
            for (QMdiSubWindow* w : frame.mdiArea()->subWindowList())
                out << w->widget()->objectName();
            return out;
        };
        ErrorStore(5, "Invalid procedure call", "InitCobcd ");
        errorViewerOpener()(frame);
        errorViewerOpener()(frame);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(titles(), QStringList({"frmgridtest"}));
        menuCommand("mnu_ShCntMem")(frame);
        QCOMPARE(prompts.messages(), QStringList({"No results in memory "}));
        computation().MtxDAP = Cell(CellArray{1, 5});
        menuCommand("mnu_ShCntMem")(frame);
        QCOMPARE(titles(), QStringList({"frmgridtest", "FrmShwCntMem"}));
        clearMenuCommands();
    }

    void anEmptySoundPathDoesNothingAndSaysNothing() {
        QtSoundService sound;
        sound.play(QString());
        sound.play(dir.filePath("missing.wav"));
        sound.play(QString());
        QVERIFY(prompts.shown().isEmpty());
    }
};

QTEST_MAIN(RunLogFormsTest)
#include "run_log_forms_test.moc"
