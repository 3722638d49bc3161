// File -> Import, Export and Zap in the running program on the demonstration study: the menu items
// ask for their files with their own titles, the core does the rest, and the loading chain loads the
// study again after an import or purge that changed it.

#include "database/study_context.h"
#include "foundation/settings.h"
#include "frame_fixture.h"
#include "inputs/forms/transfer_commands.h"
#include "inputs/transfer_texts.h"
#include "query_rows.h"
#include "shell/forms/form_registry.h"
#include "shell/forms/menu_commands.h"
#include "shell/study_backend.h"

#include <QDir>
#include <QFile>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

namespace t = vesk::transfer_texts;

class TransferMenuTest : public QObject {
    Q_OBJECT

private:
    DatabaseStudyBackend backend;
    QList<bool> setupOpened;

    struct Started {
        ProgramFolder folder;
        std::unique_ptr<RunningProgram> program;
        QString file(const QString& name) const { return QDir(folder.work()).filePath(name); }
    };

    // The program started on a copy of the demonstration study, Ready.
    void start(Started& s) {
        resetGlobals();
        studyContext() = StudyContext{};
        setStudyBackend(&backend);
        setStudySetupOpener([this](FRMMAINMENU&, bool newDatabase) { setupOpened << newDatabase; });
        registerTransfers();
        setupOpened.clear();
        s.folder.writeStp(QStringLiteral("demo.vdb"));
        QVERIFY(QFile::copy(QStringLiteral(VESK_BIN_DIR "/demo.vdb"), s.file(QStringLiteral("demo.vdb"))));
        QFile(s.file(QStringLiteral("demo.vdb"))).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        s.program = std::make_unique<RunningProgram>(s.folder);
        QVERIFY(s.program->waitForFrame());
        QVERIFY(s.program->waitForChain());
        QVERIFY2(s.program->prompts.messages().isEmpty(),
                 qPrintable(s.program->prompts.messages().join('\n')));
    }

    static QStringList rows(const QString& sql) { return queryRows(*studyContext().StudyDB, sql); }

    static void trigger(Started& s, const char* item) {
        QVERIFY2(s.program->enabled(QString::fromLatin1(item)), item);
        s.program->frame().item(QString::fromLatin1(item))->trigger();
    }

private slots:
    void cleanup() {
        studyContext() = StudyContext{};
        setStudyBackend(nullptr);
    }

    // Every item of the three menus has its command, and is enabled on a Ready study.
    void everyItemOfTheThreeMenusIsWired() {
        Started s;
        start(s);
        for (const TransferCommand& c : transferCommands())
            QVERIFY2(s.program->enabled(QString::fromLatin1(c.item)), c.item);
        QCOMPARE(transferCommands().size(), 31); // 14 dictionaries, 8 units, 6 study data, 3 zaps
    }

    // The dictionaries out to a workbook, zapped (the chain then finds no causes of the study), and
    // back in from the workbook (the chain finds them again).
    void theDictionariesGoOutAreZappedAndComeBack() {
        Started s;
        start(s);
        const QStringList before = rows(QStringLiteral("SELECT * FROM _DctBDM ORDER BY CobCd"));
        const QString book = s.file(QStringLiteral("dictionaries.xlsx"));
        s.program->prompts.fileAnswer(book);
        trigger(s, "mnu_ExpAllDict");
        QCOMPARE(s.program->prompts.shown().first().text, QStringLiteral("Save As"));
        QCOMPARE(s.program->prompts.messages().last(), QString::fromUtf8(t::kAllDictionariesExported));
        QVERIFY(QFile::exists(book));

        s.program->prompts.clear();
        s.program->prompts.answer(Answer::Ok);
        trigger(s, "Mnu_Submnu_DfltDicMps");
        QVERIFY(s.program->waitForChain());
        QVERIFY(s.program->prompts.messages().contains(QString::fromUtf8(t::kDictionariesPurged)));
        QVERIFY(rows(QStringLiteral("SELECT * FROM _DctBDM")).isEmpty());
        // The chain, loading the study again, finds none of its causes and offers the error.
        QVERIFY(s.program->prompts.messages().join('\n').contains(
            QStringLiteral("The Cobcds are not declared in _DctBdm")));

        s.program->prompts.clear();
        s.program->prompts.fileAnswer(book);
        trigger(s, "mnu_All_Dic");
        QVERIFY(s.program->waitForChain());
        QCOMPARE(s.program->prompts.shown().first().text, QString::fromUtf8(t::kImportAllTitle));
        QCOMPARE(s.program->prompts.messages().last(), QString::fromUtf8(t::kAllImported));
        QCOMPARE(rows(QStringLiteral("SELECT * FROM _DctBDM ORDER BY CobCd")), before);
        QVERIFY(s.program->enabled(QStringLiteral("mnu_Daly")));
    }

    // One dictionary's import: the dialog's title, the layout and overwrite questions; Cancel on the
    // dialog does nothing.
    void oneDictionaryAsksItsQuestions() {
        Started s;
        start(s);
        s.program->prompts.fileAnswer(std::nullopt);
        trigger(s, "mnu_GrpDic");
        QCOMPARE(s.program->prompts.shown().size(), 1);
        QCOMPARE(s.program->prompts.shown().first().text,
                 QStringLiteral("Import User Defined Dictionaries for Groups data  from"));

        const QString groups = s.file(QStringLiteral("groups.txt"));
        s.program->prompts.clear();
        s.program->prompts.fileAnswer(groups);
        trigger(s, "mnu_ExpGDict");
        QCOMPARE(s.program->prompts.messages().last(), QString::fromUtf8(t::kGroupsExported));
        s.program->prompts.clear();
        s.program->prompts.fileAnswer(groups);
        s.program->prompts.answer(Answer::Yes);
        s.program->prompts.answer(Answer::Yes);
        trigger(s, "mnu_GrpDic");
        QVERIFY(s.program->waitForChain());
        const QStringList shown = s.program->prompts.messages();
        QVERIFY(shown.first().startsWith(
            QStringLiteral("Are you sure the Data in the Text File is in the Format: ")));
        QVERIFY(shown.at(1).startsWith(QStringLiteral("The table _DctBDMGrps already has data")));
        QVERIFY(shown.contains(QString::fromUtf8(t::kGroupsImported)));
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM _DctBDMGrps")), QStringList{QStringLiteral("3")});
    }

    // The units out as one text file of three levels and back after the purge question; the study's
    // lists are the same.
    void thePopulationUnitsGoOutAndComeBack() {
        Started s;
        start(s);
        const QStringList before = rows(QStringLiteral("SELECT * FROM _DctBPU ORDER BY BPUID"));
        const QString file = s.file(QStringLiteral("units.txt"));
        s.program->prompts.fileAnswer(file);
        trigger(s, "mnu_expPopAll");
        QCOMPARE(s.program->prompts.messages().last(), QString::fromUtf8(t::kAllUnitsExported));
        s.program->prompts.clear();
        s.program->prompts.fileAnswer(file);
        s.program->prompts.answer(Answer::Yes);
        trigger(s, "mnu_popunits_all");
        QVERIFY(s.program->waitForChain());
        QCOMPARE(s.program->prompts.shown().first().text, QString::fromUtf8(t::kImportPopulationTitle));
        QVERIFY(s.program->prompts.messages().contains(QString::fromUtf8(t::kSchemaImported)));
        QCOMPARE(rows(QStringLiteral("SELECT * FROM _DctBPU ORDER BY BPUID")), before);
        QCOMPARE(studyContext().VctrBPULst.array().size(0), 8);
    }

    // The study data out, each to a text file of its own, under the dialog's label; then zapped.
    void theStudyDataGoOutAndAreZapped() {
        Started s;
        start(s);
        const QString file = s.file(QStringLiteral("data/backup.txt"));
        QVERIFY(QDir().mkpath(s.file(QStringLiteral("data"))));
        s.program->prompts.fileAnswer(file);
        trigger(s, "mnu_expAll");
        QCOMPARE(s.program->prompts.shown().first().text, QStringLiteral("Save As (All Study Data)"));
        QVERIFY(s.program->prompts.messages().last().endsWith(QStringLiteral(": 49 tables written")));
        QVERIFY(QFile::exists(s.file(QStringLiteral("data/Population_SLO_2020.txt"))));
        s.program->prompts.clear();
        s.program->prompts.fileAnswer(std::nullopt);
        trigger(s, "mnu_expASRD");
        QCOMPARE(s.program->prompts.shown().first().text,
                 QStringLiteral("Save As (Age Spec. Disability Weights)"));

        s.program->prompts.clear();
        s.program->prompts.answer(Answer::Yes);
        trigger(s, "Mnu_Submnu_ExtStDt");
        QCOMPARE(s.program->prompts.messages().last(), QString::fromUtf8(t::kDataPurged));
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM DatPOP")), QStringList{QStringLiteral("0")});
    }

    // The study setup zapped: the chain's next run finds no entry in the dictionary of studies and
    // leads into Study Setup for a first study.
    void theStudySetupZappedLeavesNoStudy() {
        Started s;
        start(s);
        s.program->prompts.answer(Answer::Yes);
        trigger(s, "mnu_exStdSetup");
        QVERIFY(s.program->waitForChain());
        const QStringList shown = s.program->prompts.messages();
        QVERIFY(shown.contains(QString::fromUtf8(t::kSetupPurged)));
        QVERIFY2(shown.contains(QStringLiteral("No entry in the Dictionary of Studies")),
                 qPrintable(shown.join('\n')));
        QCOMPARE(setupOpened, QList<bool>{true});
    }

    // Without a user table, its export does nothing: no dialog, no message.
    void theUserTablesExportWithoutATableDoesNothing() {
        Started s;
        start(s);
        preferences().userLifeTable = CellArray();
        preferences().userLifeTableLoaded = false;
        trigger(s, "mnu_expUstrLTS");
        QVERIFY(s.program->prompts.shown().isEmpty());
    }
};

QTEST_MAIN(TransferMenuTest)
#include "transfer_menu_test.moc"
