// The preferences form as a user uses it, continued: the names of tables in foreign files, the
// misc tab, the chart export; the edge cases of the form (a path of another machine, Close with a
// path missing), OK, the hint line, File -> Open pressing OK on the form nobody has shown, and the
// pictures of every tab.

#include "foundation/chart_export_settings.h"
#include "foundation/settings.h"
#include "foundation/settings_texts.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/texts.h"
#include "preferences_fixture.h"
#include "screenshots.h"
#include "shell/preferences_texts.h"

#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QTemporaryDir>

using namespace vesk;
using namespace vesk::test;

namespace t = preferences_texts;

namespace {

// A folder named as a path of another machine that this system reaches: "//a/b/c" is "/a/b/c" to
// a system of "/" paths; on Windows the administrative share of the folder's drive.
QString reachableShare(const QString& folder) {
#ifdef Q_OS_WIN
    return QStringLiteral("\\\\localhost\\%1$").arg(folder.at(0)) + QDir::toNativeSeparators(folder.mid(2));
#else
    return QLatin1Char('/') + folder;
#endif
}

} // namespace

class PreferencesFormMoreTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        resetGlobals();
        chartExportSettings() = ChartExportSettings{};
    }
    void cleanup() { resetGlobals(); }

    void tableNames() {
        PreferencesProgram p;
        QVERIFY(p.start());
        const char* controls[] = {"txtGrpDctTblNm",     "txtSGrpDctTblNm",     "txtClstrDctTblNm",
                                  "txtCOBDctTblNm",     "txtSqlaDctTblNm",     "txtMapDctTblNm",
                                  "txtBPUDctTblNm",     "txtPAG1DctTblNm",     "txtPAG2DctTblNm",
                                  "txtIntpltrPOPTblNm", "txtIntpltrDTHSTblNm", "txtIntpltrBOTHTblNm",
                                  "txtUsrDefLTS"};
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 4);
            QCOMPARE(f.fieldNamed(QStringLiteral("txtGrpDctTblNm"))->text(), QStringLiteral("_DctBDMGrps"));
            int i = 0;
            for (const char* control : controls)
                typeOver(f.fieldNamed(QLatin1String(control)), QStringLiteral("Name%1").arg(++i));
            typeOver(f.fieldNamed(QStringLiteral("txtPAG2DctTblNm")), QString()); // empty: the default
            QVERIFY(p.applyAndReload(f));
        }));
        const QStringList want = {
            "[DCTTBLNM]",        "GrpDctTblNm=Name1",  "SGrpDctTblNm=Name2", "ClstrDctTblNm=Name3",
            "COBDctTblNm=Name4", "SqlaDctTblNm=Name5", "MapDctTblNm=Name6",  "[POPDCTTBLNM]",
            "BPUTblNm=Name7",    "PAG1TblNm=Name8",    "PAG2TblNm=_DctPAG2", "[INTPLTRTBLNM]",
            "POPTblNm=Name10",   "DTHSTblNm=Name11",   "BOTHTblNm=Name12",   "[USRLTS]",
            "UsrLTSTblNm=Name13"};
        QCOMPARE(p.lines().mid(50, want.size()), want);
        QCOMPARE(settings().PAG1TblNm, QStringLiteral("Name8"));
        QCOMPARE(settings().UsrLTSTblNm, QStringLiteral("Name13"));
    }

    void misc() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 5);
            typeOver(f.TxtMinMaxage, QStringLiteral("40"));
            leaveFor(f.TxtMaxMaxage);
            QCOMPARE(p.prompts().messages(), QStringList{text(t::kMinMaxAge)});
            typeOver(f.TxtMinMaxage, QStringLiteral("55"));
            leaveFor(f.TxtMaxMaxage);
            typeOver(f.TxtMaxMaxage, QStringLiteral("55"));
            leaveFor(f.txtNLdCuss);
            QCOMPARE(p.prompts().messages().value(1),
                     QStringLiteral("MaxMaxAge should be greater than55and Less than 85"));
            typeOver(f.TxtMaxMaxage, QStringLiteral("80"));
            leaveFor(f.txtNLdCuss);
            // A number key only.
            typeOver(f.txtNLdCuss, QStringLiteral("1x5."));
            QCOMPARE(f.txtNLdCuss->text(), QStringLiteral("15"));
            QCOMPARE(p.prompts().messages().size(), 2);
            // Apply by its key leaves the field that has the focus first.
            QTest::keyClick(f.txtNLdCuss, Qt::Key_A, Qt::AltModifier);
            QTRY_COMPARE(p.line(15), QStringLiteral("NleadingCauses =15"));
            QVERIFY(p.program->waitForChain());
        }));
        QCOMPARE(p.line(15), QStringLiteral("NleadingCauses =15"));
        QCOMPARE(p.line(68), QStringLiteral("[MINMAX]"));
        QCOMPARE(p.line(69), QStringLiteral("[IMINMAXAGE] =55"));
        QCOMPARE(p.line(70), QStringLiteral("[IMAXMAXAGE] =80"));
        QCOMPARE(settings().NLdCauses, 15);
        QCOMPARE(settings().MaxMaxAge, qint16(80));
    }

    void graphExport() {
        PreferencesProgram p;
        p.backend.lblBPU = QStringLiteral("District");
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            clickTab(f.SSTab1, 6);
            QCOMPARE(f.CmbExportList->count(), kExportChartCount);
            QCOMPARE(f.CmbExportList->itemText(6),
                     QStringLiteral("Male-Female Ratio of YLD and YLL Rates by Region"));
            QCOMPARE(f.txtFlname->text(), QStringLiteral("GraphData"));
            QCOMPARE(f.txtShtName->text(), QStringLiteral("SheetNo1"));
            typeOver(f.txtShtName, QStringLiteral("Iyld"));
            f.CmbExportList->setCurrentIndex(4);
            QCOMPARE(f.txtShtName->text(), QStringLiteral("SheetNo5"));
            typeOver(f.txtShtName, QStringLiteral("Rates"));
            typeOver(f.txtstrowno, QStringLiteral("5"));
            typeOver(f.txtstcolno, QStringLiteral("3"));
            typeOver(f.txtFlname, QStringLiteral("Charts"));
            QTest::mouseClick(f.cmdApply, Qt::LeftButton);
        }));
        const ChartExportSettings& kept = chartExportSettings();
        QCOMPARE(kept.fileName, QStringLiteral("Charts"));
        QCOMPARE(kept.sheetNames[0], QStringLiteral("Iyld"));
        QCOMPARE(kept.sheetNames[4], QStringLiteral("Rates"));
        QCOMPARE(kept.startRows[4], 5);
        QCOMPARE(kept.startCols[4], 3);
        QCOMPARE(kept.startCols[0], 1);
        QCOMPARE(kept.sheetNames[8], QStringLiteral("SheetNo9"));
    }

    void chartTitlesTakeTheLevelOfAStudy() {
        PreferencesProgram p;
        p.backend.lblBPU = QStringLiteral("District");
        QVERIFY(p.start());
        struct StudyBackend : FakeStudyBackend {
            QString CurBDSId() const override { return QStringLiteral("S1"); }
        } study;
        study.lblBPU = QStringLiteral("District");
        setStudyBackend(&study);
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            QCOMPARE(f.CmbExportList->itemText(4), QStringLiteral("YLD & YLL Rates by District"));
            QCOMPARE(f.CmbExportList->itemText(0), QStringLiteral("Percentage Distribution of IYLD"));
        }));
        setStudyBackend(&p.backend);
    }

    // A path of another machine passes the form by its pattern and is tested for existence; a bad
    // machine name ends in the settings writer's message for it.
    void aNetworkPathIsTestedAndABadMachineIsTold() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            typeOver(f.txtTempArea, QStringLiteral("\\\\no-such-machine-vesk\\share\\temp"));
            leaveFor(f.txtImpLoc);
            QCOMPARE(p.prompts().messages(), QStringList{text(settings_texts::kMachineMissing)});
            QCOMPARE(p.prompts().shown().value(0).title, QStringLiteral("VESK Setup Error"));
            // Reached as "//machine/share/..." (on Windows a share of this machine): the folder is
            // found, nothing is said.
            typeOver(f.txtTempArea, reachableShare(p.folder.temp()));
            leaveFor(f.txtImpLoc);
            QCOMPARE(p.prompts().messages().size(), 1);
            typeOver(f.txtTempArea, QStringLiteral("temp"));
            leaveFor(f.txtImpLoc);
            QCOMPARE(p.prompts().messages().last(), text(t::kPathFormat));
            QCOMPARE(p.prompts().shown().last().title, QStringLiteral("VESK - 0001"));
            typeOver(f.txtTempArea, p.folder.temp());
            leaveFor(f.txtImpLoc);
        }));
    }

    // Close with an empty path: Yes stays in the form, No ends the program.
    void closeWithAnEmptyPathAndNoEndsTheProgram() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm(
            [&](frmVESKSetup& f) {
                typeOver(f.txtImpLoc, QString());
                p.prompts().answer(Answer::Yes);
                QTest::mouseClick(f.cmdClose, Qt::LeftButton);
                QVERIFY(f.isVisible());
                QCOMPARE(p.prompts().messages(), QStringList{text(t::kPathsIncomplete)});
                QCOMPARE(p.prompts().shown().value(0).title, QStringLiteral("VESK Setup Error"));
                QCOMPARE(p.prompts().shown().value(0).buttons, Buttons::YesNo);
                QCOMPARE(p.program->endCalls, 0);
                p.prompts().answer(Answer::No);
                QTest::keyClick(&f, Qt::Key_Escape); // Escape is Close too
                QVERIFY(!f.isVisible());
            },
            false));
        QCOMPARE(p.program->endCalls, 1);
        QCOMPARE(p.prompts().unanswered(), 0);
    }

    void okAppliesAndCloses() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm(
            [&](frmVESKSetup& f) {
                clickTab(f.SSTab1, 5);
                typeOver(f.txtNLdCuss, QStringLiteral("20"));
                QTest::mouseClick(f.Ok, Qt::LeftButton);
                QVERIFY(!f.isVisible());
            },
            false));
        QVERIFY(p.program->waitForChain());
        QCOMPARE(p.line(15), QStringLiteral("NleadingCauses =20"));
    }

    void theHintSaysWhatTheControlUnderThePointerIsFor() {
        PreferencesProgram p;
        QVERIFY(p.start());
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            // The offscreen platform moves no pointer over the widgets: each gets the event that the
            // pointer's coming gives it.
            auto* sounds = f.cmdSuccess->parentWidget();
            QEnterEvent intoSounds(QPointF(4, 4), sounds->mapTo(&f, QPointF(4, 4)),
                                   sounds->mapToGlobal(QPointF(4, 4)));
            QApplication::sendEvent(sounds, &intoSounds);
            QCOMPARE(f.Hint->text(), text(t::kHintSounds));
            QEnterEvent intoApply(QPointF(2, 2), f.cmdApply->mapTo(&f, QPointF(2, 2)),
                                  f.cmdApply->mapToGlobal(QPointF(2, 2)));
            QApplication::sendEvent(f.cmdApply, &intoApply);
            QCOMPARE(f.Hint->text(), text(t::kHintApply));
        }));
    }

    // File -> Open puts the database into the form's fields and presses its OK, shown or not.
    void fileOpenPressesOkOnTheFormNobodyShowed() {
        PreferencesProgram p;
        QVERIFY(p.start());
        const QString other = p.folder.touchDatabase(QStringLiteral("other.vdb"));
        p.prompts().fileAnswer(other);
        p.program->frame().item(QStringLiteral("mnu_Open"))->trigger();
        QVERIFY(veskSetupForm().window() == nullptr);
        QVERIFY(p.program->waitForChain());
        QCOMPARE(p.line(3), QStringLiteral("OBJECT=other.vdb"));
        QCOMPARE(settings().DBFullPath, QDir::toNativeSeparators(other));
    }

    void pictures() {
        QTemporaryDir scratch;
        const QString folder = screenshotFolder(scratch);
        PreferencesProgram p;
        QVERIFY(p.start());
        const char* names[] = {"file_locations", "column_widths", "decimal_places", "life_tables",
                               "table_names",    "misc",          "graph_export"};
        QVERIFY(p.inForm([&](frmVESKSetup& f) {
            for (int page = 0; page < f.SSTab1->count(); ++page) {
                clickTab(f.SSTab1, page);
                if (page == 1)
                    clickTab(f.SSTabColWth, kViewTab);
                if (page == 2)
                    clickTab(f.SSTabDecPlcs, kResultsTab);
                QTest::qWait(20);
                const QImage shot = f.grab().toImage();
                QVERIFY(hasContent(shot));
                QVERIFY(shot.save(folder +
                                  QStringLiteral("/preferences_%1.png").arg(QLatin1String(names[page]))));
            }
            clickTab(f.SSTab1, 3);
            clickTab(f.SSTab2, 1);
            clickOption(f.Optgre1);
            QTest::qWait(20);
            QVERIFY(f.grab().toImage().save(folder + QStringLiteral("/preferences_life_table_method.png")));
        }));
    }
};

QTEST_MAIN(PreferencesFormMoreTest)
#include "preferences_form_more_test.moc"
