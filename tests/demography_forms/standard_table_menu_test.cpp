// The standard life tables' items of the running frame: File -> Import -> User Defined Standard Life
// Table and File -> Export -> Life Tables -> KRO / WHO are enabled once the frame is ready, and each
// asks for its file, asks its question and shows its message; the imported table goes to the
// settings file with the next rewrite (File -> Close).

#include "demography/standard_table_texts.h"
#include "demography/user_life_table_import.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "frame_fixture.h"
#include "inputs/foreign_file.h"
#include "inputs/messages.h"
#include "platform/texts.h"
#include "shell/forms/form_registry.h"
#include "user_life_tables.h"

#include <QAction>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

namespace {

namespace t = standard_table_texts;

const QStringList kItems{"Mnu_SubMnu_UsrStdLftbl", "mnu_expKROLTS", "mnu_expWHOLTS"};


} // namespace

class StandardTableMenuTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        resetGlobals();
        registerForms();
    }
    void cleanup() { resetGlobals(); }

    void theItemsAreEnabledWhenTheFrameIsReady() {
        ReadyProgram ready;
        QVERIFY(ready.start());
        for (const QString& name : kItems) {
            QVERIFY2(ready.program->enabled(name), qPrintable(name));
            QVERIFY2(ready.program->frame().item(name)->isEnabled(), qPrintable(name));
        }
    }

    void importAskTheFileAndTheLayoutThenTakesTheTableIntoTheSettings() {
        ReadyProgram ready;
        QVERIFY(ready.start());
        const CellArray table = exactUserTable();
        const QString file = ready.folder.import() + "/user.WK1";
        QVERIFY(QDir().mkpath(ready.folder.import()));
        QVERIFY(writeUserTable(file, table, "USRLTS"));
        ready.prompts().fileAnswer(file);
        ready.prompts().answer(Answer::Yes);
        ready.trigger("Mnu_SubMnu_UsrStdLftbl");
        const auto& shown = ready.prompts().shown();
        QCOMPARE(shown.size(), 3);
        QCOMPARE(shown[0].kind, PromptRecord::Kind::OpenFile);
        QCOMPARE(shown[0].title, "Import User Defined Life Table data  from");
        QCOMPARE(shown[0].filter, text(texts::kForeignFileFilter));
        QCOMPARE(shown[1].text, userTableQuestion(ForeignKind::Wk1));
        QCOMPARE(shown[2].text, "The User defined life table Data is imported succesfully");
        QVERIFY(preferences().userLifeTableLoaded);
        QCOMPARE(preferences().userLifeTable(100, 1).toDouble(), 1e-300);

        // File -> Close rewrites the settings file, the table with it.
        ready.trigger("Cls");
        CellArray written;
        QVERIFY(FnReadLTS("[User Defined Life Table]", written, ready.folder.stpPath()));
        QCOMPARE(written.size(0), 101);
        for (int x = 0; x <= 100; ++x)
            for (int c = 0; c < 3; ++c)
                QCOMPARE(written(x, c).toDouble(), table(x, c).toDouble());
    }

    void aCancelledDialogOrAQuestionAnsweredNoChangesNothing() {
        ReadyProgram ready;
        QVERIFY(ready.start());
        ready.prompts().fileAnswer(std::nullopt);
        ready.trigger("Mnu_SubMnu_UsrStdLftbl");
        QCOMPARE(ready.prompts().shown().size(), 1);
        const QString file = ready.folder.import() + "/user.txt";
        QVERIFY(QDir().mkpath(ready.folder.import()));
        QVERIFY(writeUserTable(file, exactUserTable(), ""));
        ready.prompts().fileAnswer(file);
        ready.prompts().answer(Answer::No);
        ready.trigger("Mnu_SubMnu_UsrStdLftbl");
        QCOMPARE(ready.prompts().shown().size(), 3);
        QVERIFY(!preferences().userLifeTableLoaded);
        ready.prompts().fileAnswer(std::nullopt);
        ready.trigger("mnu_expKROLTS");
        QCOMPARE(ready.prompts().shown().size(), 4);
        QCOMPARE(ready.prompts().unanswered(), 0);
    }

    void aTableThatFailsTheChecksLeavesTheOldOne() {
        ReadyProgram ready;
        QVERIFY(ready.start());
        const QString good = ready.folder.import() + "/good.txt", bad = ready.folder.import() + "/bad.txt";
        QVERIFY(QDir().mkpath(ready.folder.import()));
        QVERIFY(writeUserTable(good, exactUserTable(), ""));
        QVERIFY(writeUserTable(bad, exactUserTable(99), ""));
        ready.prompts().fileAnswer(good);
        ready.prompts().answer(Answer::Yes);
        ready.trigger("Mnu_SubMnu_UsrStdLftbl");
        ready.prompts().fileAnswer(bad);
        ready.prompts().answer(Answer::Yes);
        ready.trigger("Mnu_SubMnu_UsrStdLftbl");
        QCOMPARE(ready.prompts().messages().last(), consistencyFailureMessage());
        QCOMPARE(preferences().userLifeTable.size(0), 101);
        // Each of the other checks: a gap of two years, then a rising expectancy of each sex.
        CellArray gap = exactUserTable();
        gap(50, 0) = Cell(51.0);
        CellArray risingFemale = exactUserTable(), risingMale = exactUserTable();
        risingFemale(60, 1) = Cell(risingFemale(59, 1).toDouble() + 0.5);
        risingMale(70, 2) = Cell(risingMale(69, 2).toDouble() + 0.5);
        int n = 0;
        for (const CellArray* t : {&gap, &risingFemale, &risingMale}) {
            const QString path = ready.folder.import() + QStringLiteral("/bad%1.txt").arg(++n);
            QVERIFY(writeUserTable(path, *t, ""));
            ready.prompts().fileAnswer(path);
            ready.prompts().answer(Answer::Yes);
            ready.trigger("Mnu_SubMnu_UsrStdLftbl");
            QCOMPARE(ready.prompts().messages().last(), consistencyFailureMessage());
            QCOMPARE(preferences().userLifeTable(50, 0).toDouble(), 50.0); // the good table stays
        }
    }

    void eachExportAsksWhereAndWritesItsTable() {
        ReadyProgram ready;
        QVERIFY(ready.start());
        const QString file = ready.folder.work() + "/tables.xlsx";
        const QList<std::pair<QString, QString>> items{{"mnu_expKROLTS", "LTSKRO"},
                                                       {"mnu_expWHOLTS", "LTSWHO"}};
        for (const auto& [item, table] : items) {
            ready.prompts().clear();
            ready.prompts().fileAnswer(file);
            ready.trigger(item);
            const auto& shown = ready.prompts().shown();
            QCOMPARE(shown.size(), 2);
            QCOMPARE(shown[0].kind, PromptRecord::Kind::SaveFile);
            QCOMPARE(shown[0].title, "Save As");
            QCOMPARE(shown[0].filter, text(texts::kForeignFileFilter));
            QCOMPARE(shown[1].text, item == "mnu_expKROLTS" ? text(t::kKroExported) : text(t::kWhoExported));
            QStringList names;
            const CellArray rows = FnReadArrFile(file, table, &names);
            QCOMPARE(names, userTableFields());
            QCOMPARE(rows.size(0), 101);
            const CellArray& held = item == "mnu_expKROLTS" ? settings().MtxLTSKRO : settings().MtxLTSWHO;
            for (int x = 0; x <= 100; ++x)
                for (int c = 0; c < 3; ++c)
                    QCOMPARE(rows(x, c).toDouble(), held(x, c).toString().toDouble());
        }
    }
};

QTEST_MAIN(StandardTableMenuTest)
#include "standard_table_menu_test.moc"
