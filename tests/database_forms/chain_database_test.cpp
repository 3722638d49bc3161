// The program started on real study files: the loading chain runs the structure check and the
// loaders of the study database, and File -> New makes a file and leads into Study Setup.

#include "burden/calculator_models.h"
#include "burden/forms/frm_comp_daly.h"
#include "burden/forms/frm_dale.h"
#include "database/chk_db_stru.h"
#include "database/db_create.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "frame_fixture.h"
#include "grid_gestures.h"
#include "screenshots.h"
#include "shell/forms/form_registry.h"
#include "shell/forms/frm_shw_cnt_mem.h"
#include "shell/forms/menu_commands.h"
#include "shell/study_backend.h"

#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

class ChainDatabaseTest : public QObject {
    Q_OBJECT

private:
    DatabaseStudyBackend backend;
    QList<bool> setupOpened;

    void start() {
        resetGlobals();
        studyContext() = StudyContext{};
        setStudyBackend(&backend);
        setStudySetupOpener([this](FRMMAINMENU&, bool newDatabase) { setupOpened << newDatabase; });
        registerRunLogViewers();
        setupOpened.clear();
    }
    static QString studyFile(const ProgramFolder& folder, const QString& name = QStringLiteral("vesk.vdb")) {
        return QDir(folder.work()).filePath(name);
    }
    static void fill(const QString& file, const QList<std::pair<QString, QVariantList>>& rows) {
        QString error;
        auto db = DbConnection::open(file, &error);
        QVERIFY2(db, qPrintable(error));
        for (const auto& [sql, values] : rows) {
            QSqlError e;
            QVERIFY2(db->exec(sql, values, &e), qPrintable(sql + ": " + e.text()));
        }
    }
    // A file with a current study that has everything the chain loads.
    static void fillStudy(const QString& file) {
        fill(file,
             {
                 {"INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, ?)",
                  {"S1", 2001, "National", "SCH", 1}},
                 {"INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES (?, ?, ?, ?)",
                  {"SCH", "District", "Province", "Nation"}},
                 {"ALTER TABLE _DctBDM ADD COLUMN S1 BOOLEAN", {}},
                 {"INSERT INTO _DctBDM (CobCd, Sqla, S1) VALUES (?, ?, ?)", {"A01", 0, 1}},
                 {"INSERT INTO _DctBPU (BDSId, BPUID, Prty, PAG1Id) VALUES (?, ?, ?, ?)",
                  {"S1", "U1", 1, "P1"}},
                 {"INSERT INTO _DctPAG1 (BDSId, PAG1Id) VALUES (?, ?)", {"S1", "P1"}},
                 {"INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)", {"S1", 0, 0, 0}},
             });
    }

private slots:
    void init() { start(); }
    void cleanup() {
        resetGlobals();
        setStudySetupOpener({});
        studyContext() = StudyContext{};
    }

    void aSoundStudyLoadsWithoutAWord() {
        ProgramFolder folder;
        folder.writeStp();
        QString error;
        QVERIFY2(createStudyFile(studyFile(folder), &error), qPrintable(error));
        fillStudy(studyFile(folder));
        RunningProgram program(folder);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        QVERIFY2(program.prompts.messages().isEmpty(), qPrintable(program.prompts.messages().join('\n')));
        QVERIFY(program.frame().chain().DBStruOK());
        QVERIFY2(stateMismatch(program.frame(), MenuState::Ready).isEmpty(),
                 qPrintable(stateMismatch(program.frame(), MenuState::Ready)));
        QCOMPARE(program.frame().menuCaption("mnu_pag2"), QString("Nation"));
        QCOMPARE(program.frame().menuCaption("mnu_bpu"), QString("District"));
        QCOMPARE(program.frame().menuCaption("mnu_Pag1Results"), QString("Province"));
        QCOMPARE(studyContext().CurBDSId, QString("S1"));
        QVERIFY(studyContext().VctrBPULst.isArray());
        QVERIFY(studyContext().MtxCobCd.isArray());
        QCOMPARE(studyContext().StudyDB->path(), studyFile(folder));
    }

    // The delivered settings open the demonstration study built beside the programs: the chain loads it
    // without a word, and Compute -> DALYs - Quick opens on it at once.
    void theDemonstrationStudyOpensReadyToCompute() {
        ProgramFolder folder;
        folder.writeStp(QStringLiteral("demo.vdb"));
        QVERIFY(QFile::copy(QStringLiteral(VESK_BIN_DIR "/demo.vdb"), studyFile(folder, QStringLiteral("demo.vdb"))));
        QFile(studyFile(folder, QStringLiteral("demo.vdb"))).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        registerComputationForms();
        RunningProgram program(folder);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        QVERIFY2(program.prompts.messages().isEmpty(), qPrintable(program.prompts.messages().join('\n')));
        QVERIFY2(stateMismatch(program.frame(), MenuState::Ready).isEmpty(),
                 qPrintable(stateMismatch(program.frame(), MenuState::Ready)));
        QCOMPARE(studyContext().CurBDSId, QString("DEM"));
        QCOMPARE(program.frame().menuCaption("mnu_Pag1Results"), QString("Region"));
        QCOMPARE(studyContext().VctrBPULst.array().size(0), 8);
        QVERIFY(program.enabled(QStringLiteral("mnu_Daly")));
        program.frame().item(QStringLiteral("mnu_Daly"))->trigger();
        QTRY_VERIFY(program.frame().findChild<QWidget*>(QStringLiteral("frmCompDALY")));
        program.frame().resize(1024, 640);
        QTest::qWait(50);
        QTemporaryDir scratch;
        const QImage shot = program.frame().grab().toImage();
        QVERIFY(hasContent(shot));
        QVERIFY(shot.save(screenshotFolder(scratch) + QStringLiteral("/main_frame_demo.png")));
    }

    // A new user's first minutes on the demonstration study: Compute -> DALE before any computation says
    // what to do first; Compute -> DALYs - Quick with set 1, then Compute -> DALE, then Results -> DALE
    // Results shows a row for each district.
    void theDemonstrationStudyComputesItsDalysAndDale() {
        ProgramFolder folder;
        folder.writeStp(QStringLiteral("demo.vdb"));
        const QString file = studyFile(folder, QStringLiteral("demo.vdb"));
        QVERIFY(QFile::copy(QStringLiteral(VESK_BIN_DIR "/demo.vdb"), file));
        QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        registerComputationForms();
        RunningProgram program(folder);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        settings().StatOutPath = folder.stat();

        program.frame().item(QStringLiteral("mnu_CmpDale"))->trigger();
        QCOMPARE(program.prompts.shown().size(), 1);
        QVERIFY(program.prompts.shown()[0].text.startsWith("Either Compute DALY from Compute DALY"));
        QCOMPARE(program.prompts.shown()[0].title, QString("DALE Computation"));

        program.frame().item(QStringLiteral("mnu_Daly"))->trigger();
        auto* daly = program.frame().findChild<frmCompDALY*>(QStringLiteral("frmCompDALY"));
        QVERIFY(daly);
        clickCell(daly->flexBuiltInDAP, 1, DapGridModel::SelectColumn);
        program.prompts.clear();
        daly->ID_COMPUTE->click();
        QTRY_VERIFY(!program.frame().findChild<frmCompDALY*>(QStringLiteral("frmCompDALY")));
        QCOMPARE(program.prompts.messages(), QStringList{"Calculation of DALY is complete.  Results are stored in tables "});

        program.prompts.clear();
        program.frame().item(QStringLiteral("mnu_CmpDale"))->trigger();
        QCOMPARE(program.prompts.messages(), QStringList{"DALE Computation is done Succesfully"});
        QCOMPARE(program.prompts.shown()[0].title, QString("DALE Calculation"));
        program.frame().item(QStringLiteral("mnu_DaleShow"))->trigger();
        auto* dale = program.frame().findChild<frmDale*>(QStringLiteral("frmDale"));
        QVERIFY(dale);
        QCOMPARE(dale->grid().rows(), 1 + 8);
        QCOMPARE(dale->grid().textMatrix(1, 0), QString("CAP"));
        // Disability takes years away from every district and sex.
        for (int r = 1; r <= 8; ++r)
            for (int k : {1, 3, 5})
                QVERIFY(dale->grid().textMatrix(r, k + 1).toDouble() < dale->grid().textMatrix(r, k).toDouble());
    }

    void aSequelaWithoutMapEndsWithTheOfferOfErrors() {
        ProgramFolder folder;
        folder.writeStp();
        QString error;
        QVERIFY2(createStudyFile(studyFile(folder), &error), qPrintable(error));
        fillStudy(studyFile(folder));
        fill(studyFile(folder), {{"UPDATE _DctBDM SET Sqla = 1", {}}});
        RunningProgram program(folder);
        program.prompts.answer(Answer::Yes);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        QCOMPARE(program.prompts.messages(),
                 QStringList({"An error occured during Initalization of Vesk Data, do you wish to view it"}));
        const auto windows = program.frame().mdiArea()->subWindowList();
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows[0]->widget()->objectName(), QString("frmgridtest"));
        QVERIFY(studyContext().MtxCobCd.isArray());
        QVERIFY(studyContext().MtxCobCd.array()(0, 1).isEmpty());
    }

    void aFileChangedByHandStandsAsBadDatabase() {
        ProgramFolder folder;
        folder.writeStp();
        QString error;
        QVERIFY2(createStudyFile(studyFile(folder), &error), qPrintable(error));
        fill(studyFile(folder), {{"DROP TABLE UserComments", {}}});
        RunningProgram program(folder);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        QCOMPARE(
            program.prompts.messages(),
            QStringList({"The table UserComments is not present in the VESK Database. Please update the VESK "
                         "Database and run the application."}));
        QVERIFY(!program.frame().chain().DBStruOK());
        QVERIFY(!program.frame().isMenuEnabled("mnu_Compute"));
        QVERIFY(QFile::exists(folder.stat() + "vskstru.log"));
    }

    void fileNewMakesAFileAndLeadsIntoStudySetup() {
        ProgramFolder folder;
        folder.writeStp();
        QString error;
        QVERIFY2(createStudyFile(studyFile(folder), &error), qPrintable(error));
        fillStudy(studyFile(folder));
        RunningProgram program(folder);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        const QString fresh = studyFile(folder, "fresh.vdb");
        program.prompts.fileAnswer(fresh);
        program.frame().item("mnu_New")->trigger();
        QVERIFY(program.waitForChain());
        QVERIFY2(program.prompts.messages().isEmpty(), qPrintable(program.prompts.messages().join('\n')));
        QVERIFY(QFile::exists(fresh));
        QCOMPARE(folder.stpValue("OBJECT="), QString("fresh.vdb"));
        QCOMPARE(preferences().txtVESKObj, QString("fresh.vdb"));
        // Study Setup opens for a first study, on the new file.
        QCOMPARE(setupOpened, QList<bool>({true}));
        QVERIFY(studyContext().StudyDB);
        QCOMPARE(studyContext().StudyDB->path(), fresh);
        QVERIFY(checkDatabaseStructure(fresh).passed());
    }

    // File -> New, then File -> Open on a file that is no database: the menu states after each step.
    void fileNewThenOpenOfAFileThatIsNoDatabase() {
        ProgramFolder folder;
        folder.writeStp();
        QString error;
        QVERIFY2(createStudyFile(studyFile(folder), &error), qPrintable(error));
        fillStudy(studyFile(folder));
        RunningProgram program(folder);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        FRMMAINMENU& frame = program.frame();
        const QStringList ready{"mnu_study", "mnu_res", "mnu_Reports", "Mnu_import", "mnu_exp",
                                "Mnu_Purge", "Cls",     "mnu_Compute", "mnu_tools",  "mnu_Help"};
        for (const auto& name : ready)
            QVERIFY2(frame.isMenuEnabled(name), qPrintable(name));

        program.prompts.fileAnswer(studyFile(folder, "fresh.vdb"));
        frame.item("mnu_New")->trigger();
        QVERIFY(program.waitForChain());
        QVERIFY(checkDatabaseStructure(studyFile(folder, "fresh.vdb")).passed());
        for (const auto& name : {"mnu_study", "Cls", "mnu_tools", "mnu_Help", "mnu_New", "mnu_Open"})
            QVERIFY2(frame.isMenuEnabled(name), name);

        const QString notes = studyFile(folder, "notes.vdb");
        QFile text(notes);
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write(QByteArray(4096, 'n'));
        text.close();
        program.prompts.clear();
        program.prompts.fileAnswer(notes);
        frame.item("mnu_Open")->trigger();
        // The engine cannot open the file: the structure check stops with its result True, the file
        // becomes the one the settings name, and loading the study says what the file is.
        QVERIFY(program.waitForChain());
        QVERIFY(!program.prompts.messages().isEmpty());
        QCOMPARE(program.prompts.messages().last(),
                 " Error from InitBDS  Unrecognized database format '" + notes + "'.");
        for (const auto& name :
             {"mnu_BPUES", "mnu_studyInp", "mnu_Daly", "mns_lsr", "mnu_Compute", "mnu_res"})
            QVERIFY2(!frame.isMenuEnabled(name), name);
        for (const auto& name : {"mnu_tools", "mnu_Help", "mnu_New", "mnu_Open", "mnu_exit"})
            QVERIFY2(frame.isMenuEnabled(name), name);
        QCOMPARE(folder.stpValue("OBJECT="), QString("notes.vdb"));
    }
};

QTEST_MAIN(ChainDatabaseTest)
#include "chain_database_test.moc"
