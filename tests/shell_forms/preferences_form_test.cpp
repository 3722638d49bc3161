// The preferences form as a user uses it, tab by tab: each setting changed, Apply, the loading chain
// run again, and the setting found in Vesk.stp on the line the settings file's layout gives it, and
// in the settings the chain read back. File locations with the sounds and recordsets, the column
// widths with the sample, the decimal places, the standard life table and the life table's method.

#include "foundation/settings.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/sound.h"
#include "platform/texts.h"
#include "preferences_fixture.h"
#include "shell/preferences_texts.h"

#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

using namespace vesk;
using namespace vesk::test;

namespace t = preferences_texts;

class PreferencesFormTest : public QObject {
    Q_OBJECT
private slots:
    void init() { resetGlobals(); }
    void cleanup() { resetGlobals(); }

    void theToolbarAndTheMenuOpenTheForm() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([](frmVESKSetup& f) {
            QCOMPARE(f.windowTitle(), QStringLiteral("Preferences"));
            QVERIFY(f.isModal());
            QVERIFY(preferences().loaded);
            QCOMPARE(f.SSTab1->count(), 7);
            QCOMPARE(f.txtwklocation->text(), preferences().txtwklocation);
        }));
        QTimer::singleShot(0, [] {
            if (!QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }))
                return;
            if (auto* f = qobject_cast<frmVESKSetup*>(QApplication::activeModalWidget()))
                QTest::mouseClick(f->cmdClose, Qt::LeftButton);
        });
        p.program->frame().item(QStringLiteral("mnu_setup"))->trigger();
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QCOMPARE(p.prompts().messages(), QStringList());
    }

    // Every control by its name, and the frames, labels and captions in the program's own words.
    void everyControlByItsNameAndCaption() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            const char* names[] = {"SSTab1",
                                   "SSTab2",
                                   "txtwklocation",
                                   "txtVESKObj",
                                   "txtStatOut",
                                   "txtImpLoc",
                                   "txtTempArea",
                                   "lblSuccess",
                                   "lblBusy",
                                   "lblfail",
                                   "cmdSuccess",
                                   "CmdBussy",
                                   "Cmdfailure",
                                   "cmbVESKADW",
                                   "cmbVESKCSMP",
                                   "cmbVESKPSYr",
                                   "txtGrpDctTblNm",
                                   "txtSGrpDctTblNm",
                                   "txtClstrDctTblNm",
                                   "txtCOBDctTblNm",
                                   "txtSqlaDctTblNm",
                                   "txtMapDctTblNm",
                                   "txtBPUDctTblNm",
                                   "txtPAG1DctTblNm",
                                   "txtPAG2DctTblNm",
                                   "txtIntpltrPOPTblNm",
                                   "txtIntpltrDTHSTblNm",
                                   "txtIntpltrBOTHTblNm",
                                   "txtUsrDefLTS",
                                   "StbLfFrame",
                                   "OptBltStd",
                                   "OptUsrdf",
                                   "optBltWHO",
                                   "FlexLftTable",
                                   "Command1",
                                   "Optnewell1",
                                   "OptKeyfitz1",
                                   "Optrdmrll1",
                                   "Optgre1",
                                   "Txtradix1",
                                   "txtKFlwrlmt1",
                                   "txtKFupprlmt1",
                                   "rngval1",
                                   "UpDown1",
                                   "TxtMinMaxage",
                                   "TxtMaxMaxage",
                                   "txtNLdCuss",
                                   "FmeDtlsForExcel",
                                   "CmbExportList",
                                   "txtFlname",
                                   "txtShtName",
                                   "txtstcolno",
                                   "txtstrowno",
                                   "SSTabColWth",
                                   "FlexColumnWdth",
                                   "SSTabDecPlcs",
                                   "FlexDecPlcs",
                                   "FlxTstGrdEft",
                                   "txtSampPct",
                                   "lblSmpEft",
                                   "Hint",
                                   "Ok",
                                   "cmdApply",
                                   "cmdClose"};
            for (const char* name : names)
                QVERIFY2(f.findChild<QWidget*>(QLatin1String(name)), name);
            QCOMPARE(f.findChildren<FlexGridView*>(QStringLiteral("FlexColumnWdth")).size(), 6);
            QCOMPARE(f.findChildren<FlexGridView*>(QStringLiteral("FlexDecPlcs")).size(), 6);
            QStringList frames;
            for (const QGroupBox* g : f.findChildren<QGroupBox*>())
                frames << g->title();
            for (const char* frame :
                 {"Database Details", "Other Paths", "Paths for playing wave files ", "Recordsets",
                  "Table/Range names for Dictionaries and Maps",
                  "Table/Range/Section names for Population Units",
                  "Table/Range/Section names for Interpolator", "Table/Range name for Standard Life Table",
                  "Method", "Radix", " Age range to  Keyfitz's Correction",
                  "Upper Age Range:", "N Leading Causes", "Detalis for the storage:"})
                QVERIFY2(frames.contains(QLatin1String(frame)), frame);
            QStringList labels;
            for (const QLabel* l : f.findChildren<QLabel*>())
                labels << l->text();
            for (const char* label :
                 {"Working Location", "Database", "Statistical Outputs", "Import Location",
                  "Temporary Location", "Age-Disablity Weight (ADW) Table ",
                  "Cause Specific Mortality Proportion (CSMP) Table",
                  "Population - Single Year Table (PopSnglYr)", " Range for Greville's Constant C :",
                  "Sample Effect:", "These table and range names pertain only to the import module"})
                QVERIFY2(labels.contains(QLatin1String(label)), label);
            const std::pair<QAbstractButton*, const char*> captions[] = {
                {f.cmdSuccess, "On Success"},
                {f.CmdBussy, "On Busy"},
                {f.Cmdfailure, "On Failure"},
                {f.Command1, "&Export"},
                {f.OptBltStd, "Standard Life Table - KRO"},
                {f.OptUsrdf, "User defined standard"},
                {f.optBltWHO, "Standard Life Table -WHO"},
                {f.Optnewell1, " Newell"},
                {f.OptKeyfitz1, " Keyfitz"},
                {f.Optrdmrll1, "Reed-Merrel"},
                {f.Optgre1, " Greville"}};
            for (const auto& [button, caption] : captions)
                QCOMPARE(button->text(), QLatin1String(caption));
            QStringList tabs;
            for (int i = 0; i < f.SSTabColWth->count(); ++i)
                tabs << f.SSTabColWth->tabText(i);
            QCOMPARE(tabs, (QStringList{"File", "Study", "View", "Compute", "Results", "Tools"}));
            QCOMPARE(f.FlexColumnWdth[0]->grid()->textMatrix(0, 3), QStringLiteral("Other Columns"));
            QCOMPARE(f.FlexDecPlcs[0]->grid()->textMatrix(0, 1), QStringLiteral("Decimal Places"));
            QCOMPARE(f.cmbVESKPSYr->currentText(), QStringLiteral("IntPopSnglYr"));
        }));
    }

    void fileLocations() {
        PreferencesProgram p;
        QVERIFY(p.start());
        // New folders for every path, and a study file in the new working location.
        const QString base = p.folder.work() + QStringLiteral("/elsewhere");
        const QStringList folders = {base, base + "/stat", base + "/temp", base + "/import"};
        for (const QString& folder : folders)
            QVERIFY(QDir().mkpath(folder));
        p.folder.touchDatabase(QStringLiteral("elsewhere/second.vdb"));
        const QString sounds = p.folder.prog() + QStringLiteral("/sounds/");
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            typeOver(f.txtwklocation, folders[0]);
            leaveFor(f.txtVESKObj);
            typeOver(f.txtVESKObj, QStringLiteral("second.vdb"));
            leaveFor(f.txtStatOut);
            typeOver(f.txtStatOut, folders[1]);
            leaveFor(f.txtTempArea);
            typeOver(f.txtTempArea, folders[2]);
            leaveFor(f.txtImpLoc);
            typeOver(f.txtImpLoc, folders[3]);
            leaveFor(f.txtwklocation);
            QCOMPARE(p.prompts().messages(), QStringList()); // every folder and the file are there
            // The recordsets are fixed whatever is typed.
            f.cmbVESKADW->setFocus();
            f.cmbVESKADW->lineEdit()->selectAll();
            QTest::keyClicks(f.cmbVESKADW->lineEdit(), QStringLiteral("Other"));
            const std::pair<QPushButton*, const char*> waves[] = {
                {f.cmdSuccess, "done.wav"}, {f.CmdBussy, "wait.wav"}, {f.Cmdfailure, "oops.wav"}};
            for (const auto& [button, wave] : waves) {
                p.prompts().fileAnswer(sounds + QLatin1String(wave));
                QTest::mouseClick(button, Qt::LeftButton);
                QCOMPARE(p.prompts().shown().last().kind, PromptRecord::Kind::OpenFile);
                QCOMPARE(p.prompts().shown().last().filter, QStringLiteral("Wave Formats (*.wav)"));
                QCOMPARE(p.program->sounds.played.last(), sounds + QLatin1String(wave)); // heard at once
            }
            QCOMPARE(f.lblSuccess->text(), sounds + "done.wav");
            QCOMPARE(f.lblBusy->text(), sounds + "wait.wav");
            QCOMPARE(f.lblfail->text(), sounds + "oops.wav");
            QVERIFY(p.applyAndReload(f));
            QCOMPARE(f.cmbVESKADW->currentText(), QStringLiteral("DatADW"));
        }));
        const QStringList want = {"[VESK]",
                                  "PATH  =" + folders[0],
                                  "OBJECT=second.vdb",
                                  "ADW   =DatADW",
                                  "CSM   =DatCSM",
                                  "[Working Location Path]",
                                  "PATH  =" + folders[0],
                                  "[Statistical Output Path]",
                                  "PATH  =" + folders[1],
                                  "[Temporary Location Path]",
                                  "PATH  =" + folders[2],
                                  "[ImportData Location Path]",
                                  "PATH  =" + folders[3]};
        QCOMPARE(p.lines().mid(0, want.size()), want);
        QCOMPARE(p.line(23), "sLSuccess =" + sounds + "done.wav");
        QCOMPARE(p.line(24), "sLBussy =" + sounds + "wait.wav");
        QCOMPARE(p.line(25), "sLFailure =" + sounds + "oops.wav");
        // As the chain read them back.
        QCOMPARE(settings().DBFullPath, folders[0] + "/second.vdb");
        QCOMPARE(settings().StatOutPath, folders[1]);
        QCOMPARE(settings().TempPath, folders[2]);
        QCOMPARE(settings().ImportPath, folders[3]);
        QCOMPARE(settings().sLFailure, sounds + "oops.wav");
        QCOMPARE(p.prompts().messages(), QStringList());
    }

    void theDatabaseFieldIsCheckedWhenLeft() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            typeOver(f.txtVESKObj, QStringLiteral("study"));
            leaveFor(f.txtStatOut);
            typeOver(f.txtVESKObj, QStringLiteral("other.vdb"));
            leaveFor(f.txtStatOut);
            QCOMPARE(p.prompts().messages().join(u'|'),
                     (QStringList{text(t::kFileFormat), text(t::kNoFile)}).join(u'|'));
            QCOMPARE(p.prompts().shown().value(0).title, QStringLiteral("VESK - 0001"));
            QCOMPARE(p.prompts().shown().value(1).title, QStringLiteral("VESK Setup Error"));
            typeOver(f.txtVESKObj, QStringLiteral("vesk.vdb"));
            leaveFor(f.txtStatOut);
            QCOMPARE(p.prompts().messages().size(), 2);
        }));
    }

    void columnWidthsWithTheSample() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 1);
            QVERIFY(f.FlxTstGrdEft->isVisible());
            clickTab(f.SSTabColWth, kResultsTab);
            FlexGridView* results = f.FlexColumnWdth[kResultsTab];
            QCOMPARE(gridTexts(results).value(1),
                     QStringLiteral("Results -> Summary results by Age, Sex and Cause|900|4000|900"));
            typeCell(results, 1, 2, QStringLiteral("3333"));
            // The sample shows the row being edited: 3333 twips at 15 a pixel.
            QCOMPARE(f.FlxTstGrdEft->columnWidth(1), 222);
            typeOver(f.txtSampPct, QStringLiteral("50"));
            QCOMPARE(f.FlxTstGrdEft->columnWidth(1), 111);
            // The caption column takes no typing.
            clickCell(results, 0, 0);
            results->setFocus();
            QTest::keyClicks(results, QStringLiteral("9"));
            QVERIFY(!results->cellBox()->isVisible());
            QTest::keyClick(results, Qt::Key_Right); // the keys that move pass
            QCOMPARE(results->grid()->col(), 1);
            QCOMPARE(results->grid()->textMatrix(1, 0),
                     QStringLiteral("Results -> Detail results by Age, Sex and Cause"));
            // Every width of every tab: 2000 and its place in [COLUMN WIDTH].
            for (int tab = 0; tab < kMenuTabCount; ++tab) {
                clickTab(f.SSTabColWth, tab);
                GridModel* g = f.FlexColumnWdth[tab]->grid();
                for (int row = 1; row < g->rows(); ++row)
                    for (int n = 1; n <= 3; ++n) {
                        const QString key =
                            QString::fromLatin1(widthRows(tab)[row - 1].stem) + QString::number(n);
                        typeCell(f.FlexColumnWdth[tab], row - 1, n,
                                 QString::number(2000 + ColWdthIndex(key)));
                    }
            }
            QVERIFY(p.applyAndReload(f));
        }));
        QCOMPARE(p.line(26), QStringLiteral("[COLUMN WIDTH]"));
        for (int i = 0; i < kColumnWidthCount; ++i) {
            QCOMPARE(p.line(27 + i),
                     QStringLiteral("%1=%2").arg(QLatin1String(kColumnWidthKeys[i])).arg(2000 + i));
            QCOMPARE(settings().ColWdth[i], 2000 + i);
        }
        QCOMPARE(p.line(51), QStringLiteral("[DCTTBLNM]"));
    }

    void decimalPlaces() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 2);
            QVERIFY(f.FlxTstGrdEft->isVisible());
            clickTab(f.SSTabDecPlcs, kToolsTab);
            FlexGridView* tools = f.FlexDecPlcs[kToolsTab];
            QCOMPARE(gridTexts(tools), (QStringList{"Tools -> Life Table|2", "Tools|2"}));
            typeCell(tools, 1, 1, QStringLiteral("6"));
            QCOMPARE(f.FlxTstGrdEft->grid()->textMatrix(1, 2), QStringLiteral("1234.567890"));
            // Every decimal of every tab.
            const std::pair<int, QStringList> typed[] = {
                {kViewTab, {"3", "4"}}, {kResultsTab, {"5", "1", "7"}}, {kToolsTab, {"8", "9"}}};
            for (const auto& [tab, values] : typed) {
                clickTab(f.SSTabDecPlcs, tab);
                for (int row = 0; row < values.size(); ++row)
                    typeCell(f.FlexDecPlcs[tab], row, 1, values[row]);
            }
            QVERIFY(p.applyAndReload(f));
        }));
        const QStringList want = {"[Prefer]",        "NleadingCauses =10", "ToolDecPlcs =9",
                                  "RsltDecPlcs = 5", "RptDecPlcs =3",      "LfTbDecPlcs =8",
                                  "LSumDecPlcs =1",  "LDthDecPlcs =4",     "LDaleDecPlcs =7"};
        QCOMPARE(p.lines().mid(13, want.size()), want);
        QCOMPARE(settings().RsltDecPlcs, 5);
        QCOMPARE(settings().LDaleDecPlcs, 7);
    }

    void theStandardLifeTable() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 3);
            QVERIFY(f.OptBltStd->isChecked());
            QVERIFY(f.lblLifeTableNote->text().startsWith(QStringLiteral("West Level 26 for Females")));
            QCOMPARE(f.FlexLftTable->grid()->textMatrix(0, 1), QStringLiteral("Male"));
            clickOption(f.optBltWHO);
            QVERIFY(f.lblLifeTableNote->text().startsWith(
                QStringLiteral("Interpolated values are taken from WHO.")));
            QCOMPARE(gridTexts(f.FlexLftTable).value(0), QStringLiteral("0|80.0000|82.5000"));
            typeCell(f.FlexLftTable, 0, 2, QStringLiteral("82.6"));
            QVERIFY(p.applyAndReload(f));
        }));
        QCOMPARE(p.after(QStringLiteral("[LIFE TABLE]")), QStringLiteral("[LIFE TABLE TYPE]=3"));
        QVERIFY(p.after(QStringLiteral("[Standard Life Table-WHO]"), 3)
                    .startsWith(QStringLiteral("[EXF]:82.6|81.8400|")));
        QVERIFY(p.after(QStringLiteral("[Standard Life Table-KRO]"), 3)
                    .startsWith(QStringLiteral("[EXF]:82.5000|81.8400|")));
        QCOMPARE(settings().LifeTblType, 3);
        QCOMPARE(settings().MtxLTSWHO(0, 1).toString(), QStringLiteral("82.6"));
    }

    void theUserOptionWithoutATable() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 3);
            p.prompts().answer(Answer::Ok);
            clickOption(f.OptUsrdf);
            QCOMPARE(p.prompts().messages(),
                     QStringList{QStringLiteral("There is no User defined Life Table ")});
            QCOMPARE(p.prompts().shown().value(0).title, QStringLiteral("Life Table"));
            QCOMPARE(f.FlexLftTable->grid()->textMatrix(0, 0), QStringLiteral("Age"));
            QCOMPARE(gridTexts(f.FlexLftTable), QStringList());
            QVERIFY(f.lblLifeTableNote->text().startsWith(QStringLiteral("Defined by you.")));
            typeRow(f.FlexLftTable, 0, {QStringLiteral("0"), QStringLiteral("70"), QStringLiteral("75")});
            typeRow(f.FlexLftTable, 1, {QStringLiteral("1"), QStringLiteral("69.5"), QStringLiteral("74.4")});
            // GetUsrLifeTable is the grid's at this moment: age, female, male.
            const Cell user = veskSetupForm().session().GetUsrLifeTable();
            QVERIFY(user.isArray());
            QCOMPARE(user.array()(1, 1).toString(), QStringLiteral("74.4"));
            QVERIFY(p.applyAndReload(f));
            // Export: the grid to a foreign file.
            const QString file = p.folder.import() + QStringLiteral("/mine.vdb");
            p.prompts().fileAnswer(file);
            p.prompts().answer(Answer::Ok);
            QTest::mouseClick(f.Command1, Qt::LeftButton);
            QVERIFY(QFileInfo::exists(file));
            QVERIFY(p.prompts().messages().last().startsWith(QStringLiteral("Data exported successfully:")));
        }));
        QCOMPARE(p.after(QStringLiteral("[LIFE TABLE]")), QStringLiteral("[LIFE TABLE TYPE]=2"));
        QCOMPARE(p.after(QStringLiteral("[User Defined Life Table]"), 1), QStringLiteral("[BAI]:0|1"));
        QCOMPARE(p.after(QStringLiteral("[User Defined Life Table]"), 2), QStringLiteral("[EXM]:70|69.5"));
        QCOMPARE(p.after(QStringLiteral("[User Defined Life Table]"), 3), QStringLiteral("[EXF]:75|74.4"));
        QVERIFY(preferences().userLifeTableLoaded); // read back by the chain
        QCOMPARE(settings().LifeTblType, 2);
        QCOMPARE(p.prompts().unanswered(), 0);
    }

    void theLifeTablesMethod() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 3);
            clickTab(f.SSTab2, 1);
            QVERIFY(f.Optrdmrll1->isChecked()); // Method=2 in the delivered file
            QCOMPARE(f.Txtradix1->text(), QStringLiteral("100000"));
            QVERIFY(!f.rngval1->isEnabled());
            clickOption(f.Optgre1);
            QVERIFY(f.rngval1->isEnabled());
            QCOMPARE(f.rngval1->text(), QStringLiteral("1.099658856"));
            // A click on the upper arrow.
            QTest::mouseClick(f.UpDown1, Qt::LeftButton, {},
                              QPoint(f.UpDown1->width() - 6, f.UpDown1->height() / 4));
            QCOMPARE(f.rngval1->text(), QStringLiteral("1.100658856"));
            typeOver(f.Txtradix1, QStringLiteral("1000"));
            QVERIFY(p.applyAndReload(f));
        }));
        QCOMPARE(p.line(71), QStringLiteral("[ABGLTBL]"));
        QCOMPARE(p.line(72), QStringLiteral("Radix =1000"));
        QCOMPARE(p.line(73), QStringLiteral("Method=3"));
        QCOMPARE(p.line(74), QStringLiteral("Greval=1.100658856"));
        QCOMPARE(p.line(75), QStringLiteral("[OPNCLSAGEINTVL]"));
        QCOMPARE(settings().LTMethod, 3);
        QCOMPARE(settings().LTRadix, 1000.0);

        // Keyfitz with its age range.
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 3);
            clickTab(f.SSTab2, 1);
            clickOption(f.OptKeyfitz1);
            QVERIFY(f.txtKFlwrlmt1->isEnabled() && !f.rngval1->isEnabled());
            typeOver(f.txtKFlwrlmt1, QStringLiteral("5"));
            typeOver(f.txtKFupprlmt1, QStringLiteral("70"));
            QVERIFY(p.applyAndReload(f));
        }));
        QCOMPARE(p.line(73), QStringLiteral("Method=1"));
        QCOMPARE(p.line(74), QStringLiteral("KFlwrlmt=5"));
        QCOMPARE(p.line(75), QStringLiteral("KFupprlmt=70"));
        QCOMPARE(p.line(76), QStringLiteral("[OPNCLSAGEINTVL]"));
        QCOMPARE(settings().LTKFupprLmt, QStringLiteral("70"));
    }
};

QTEST_MAIN(PreferencesFormTest)
#include "preferences_form_test.moc"
