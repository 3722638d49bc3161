// The Inputs window driven as a user drives it, on a real study file: the guard, the choice of a
// unit, typing a population and confirming it, the multiplier, closing without Confirm, the cause
// sheet, the epidemiological sheet with its move that keeps figures in memory, the weights, and a
// picture of each tab.

#include "database/study_context.h"
#include "forms_support.h"
#include "inputs/forms/new_frm_inputs.h"
#include "inputs/sheet_texts.h"
#include "platform/texts.h"
#include "screenshots.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

namespace t = vesk::sheet_texts;

class NewFrmInputsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<StudyFixture> fx;

    template <typename T> static T* child(QWidget* form, const char* name) {
        T* w = form->findChild<T*>(QString::fromLatin1(name));
        if (!w)
            qFatal("no widget %s", name);
        return w;
    }
    void defineStudy() {
        fx->exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 0, 0, 0), ('S1', 5, 15, 1), "
                 "('S1', NULL, NULL, 5), ('S1', NULL, NULL, 10)");
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty) VALUES ('S1', 'B1', 'Alpha', 1), "
                 "('S1', 'B2', 'Beta', 2)");
        fx->exec("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (1, 'Communicable')");
        fx->exec("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES ('11', 'Infections', 1)");
        fx->exec("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('1101', 'Diarrhoea', '11')");
        fx->exec("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, S1) VALUES ('11011', 'Cholera', '1101', 0, -1), "
                 "('11012', 'Shigella', '1101', 0, -1)");
        studyContext().LblBPU.clear();
    }
    std::unique_ptr<NewFrmInputs> openForm() {
        std::unique_ptr<NewFrmInputs> form(NewFrmInputs::open());
        if (!form)
            qFatal("the Inputs window did not open: %s", qPrintable(fx->prompts.messages().join(u'\n')));
        form->show();
        return form;
    }
    static void chooseUnit(NewFrmInputs& form, int row) {
        auto* grid = child<FlexGridView>(&form, "msflgBPU");
        QCoreApplication::processEvents();
        const QModelIndex index = grid->model()->index(row, 0);
        const QPoint at = grid->visualRect(index).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
        if (QTest::currentTestFailed())
            return;
    }
    static void typePopulation(NewFrmInputs& form) {
        auto* grid = child<FlexGridView>(&form, "msflgPop");
        const QStringList males{"120", "480", "610", "2500"}, females{"118", "470", "600", "2900"};
        for (int r = 0; r < 4; ++r) {
            typeCell(grid, r, 1, males[r]);
            typeCell(grid, r, 2, females[r]);
        }
    }
    void picture(QWidget& form, const QString& name) {
        QCoreApplication::processEvents();
        const QImage image = form.grab().toImage();
        QVERIFY(hasContent(image));
        QVERIFY(image.save(screenshotFolder(fx->dir) + u'/' + name));
    }

private slots:
    void init() { fx = std::make_unique<StudyFixture>(); }
    void cleanup() { fx.reset(); }

    void withoutAStudyTheGuardSpeaks() {
        studyContext().CurBDSId.clear();
        QVERIFY(!NewFrmInputs::open());
        QCOMPARE(fx->prompts.messages(), QStringList{text(t::kGuardPart1) + u'\n' + text(t::kGuardPart2)});
    }

    void aStudyWithoutCausesOpensNoSheet() {
        fx->exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 0, 0, 0)");
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty) VALUES ('S1', 'B1', 'Alpha', 1)");
        QVERIFY(!NewFrmInputs::open());
        QCOMPARE(fx->prompts.messages().last(), text(t::kNoCauses));
    }

    void aTypedPopulationIsConfirmedTimesTheMultiplier() {
        defineStudy();
        auto form = openForm();
        QCOMPARE(form->windowTitle(), QString("Inputs: Study S1 (2000)"));
        auto* tabs = child<QTabWidget>(form.get(), "SSTabInputs");
        QCOMPARE(tabs->tabText(0), QString("&Select District"));
        QVERIFY(!tabs->isTabEnabled(1));
        picture(*form, "inputs_select.png");
        chooseUnit(*form, 1);
        QCOMPARE(form->unitInForce(), QString("B2"));
        QVERIFY(tabs->isTabEnabled(1));
        tabs->setCurrentIndex(1);
        child<QLineEdit>(form.get(), "txtMul")->setText("1000");
        typePopulation(*form);
        QCOMPARE(gridTexts(child<FlexGridView>(form.get(), "msflgPop")).value(3), QString("w|2500|2900|5400"));
        picture(*form, "inputs_population.png");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdPopGo"), Qt::LeftButton);
        QCOMPARE(fx->rows("SELECT BPUID, Bai, M, F FROM DatPOP ORDER BY Bai"),
                 (QStringList{"B2|0|120000|118000", "B2|1|480000|470000", "B2|5|610000|600000",
                              "B2|10|2500000|2900000"}));
        QCOMPARE(fx->prompts.messages().last(), text(t::kStoredPopulation) + fx->db->path());
        // The death rates show the persons rate weighted by the population just confirmed.
        child<QTabWidget>(form.get(), "DemogphSubtab")->setCurrentIndex(1);
        auto* rates = child<FlexGridView>(form.get(), "msflgASDR");
        typeCell(rates, 0, 1, "0.02");
        typeCell(rates, 0, 2, "0.01");
        QCOMPARE(gridTexts(rates).value(0), QString("1|0.02|0.01|%1").arg(
                                                 QString::number((0.01 * 118000 + 0.02 * 120000) / 238000.0, 'g', 17)));
        picture(*form, "inputs_death_rates.png");
        child<QTabWidget>(form.get(), "DemogphSubtab")->setCurrentIndex(2);
        picture(*form, "inputs_parameters.png");
    }

    void closingWithoutConfirmWritesNothing() {
        defineStudy();
        {
            auto form = openForm();
            chooseUnit(*form, 0);
            child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(1);
            typePopulation(*form);
            form->close();
        }
        QCOMPARE(fx->value("SELECT count(*) FROM DatPOP"), QString("0"));
        QVERIFY(fx->prompts.messages().isEmpty());
    }

    void aZeroPopulationIsRefusedAndNothingIsStored() {
        defineStudy();
        auto form = openForm();
        chooseUnit(*form, 0);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(1);
        typePopulation(*form);
        typeCell(child<FlexGridView>(form.get(), "msflgPop"), 2, 1, "0");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdPopGo"), Qt::LeftButton);
        QCOMPARE(fx->prompts.messages().last(), text(t::kPopulationNotPositive));
        QCOMPARE(fx->value("SELECT count(*) FROM DatPOP"), QString("0"));
    }

    void openingTheDemographicsOffersToDeleteRowsOfOldAges() {
        defineStudy();
        fx->exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B1', 2000, 3, 7, 8)");
        auto form = openForm();
        chooseUnit(*form, 0);
        fx->prompts.answer(Answer::Yes);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(1);
        QCOMPARE(fx->prompts.messages().last(), text(t::kChangedPndAges));
        QCOMPARE(fx->value("SELECT count(*) FROM DatPOP"), QString("0"));
    }

    void theFamilyIsChosenFromThePopUpOfTheCell() {
        defineStudy();
        auto form = openForm();
        chooseUnit(*form, 0);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(1);
        child<QTabWidget>(form.get(), "DemogphSubtab")->setCurrentIndex(2);
        auto* grid = child<FlexGridView>(form.get(), "msflgDP");
        QStringList offered;
        QTimer::singleShot(0, [&offered] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction* a : menu->actions())
                offered << a->text();
            menu->actions().value(1)->trigger(); // "South"
            menu->close();
        });
        emit grid->customContextMenuRequested(grid->visualRect(grid->model()->index(0, 0)).center());
        QCOMPARE(offered, QStringList({"West", "South", "North", "East"}));
        QCOMPARE(gridTexts(grid).value(0), QString("South||"));
    }

    void theCauseSheetAddsItsTotalsAndConfirms() {
        defineStudy();
        auto form = openForm();
        chooseUnit(*form, 0);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(2);
        auto* grid = child<FlexGridView>(form.get(), "msflgCOD");
        const QStringList first{"0.5", "0.25", "0.75", "1"}, second{"0.5", "0.75", "0.25", "0"};
        for (int c = 0; c < 4; ++c) {
            typeCell(grid, 0, c, first[c]);
            typeCell(grid, 1, c, second[c]);
        }
        // A proportion above 1 cannot be typed: the cell is refused as it is left.
        typeCell(grid, 1, 3, "1.5");
        QCOMPARE(fx->prompts.messages().last(), text(t::kProportionOutOfRange));
        QCOMPARE(gridTexts(grid).value(1), QString("0.5|0.75|0.25|"));
        typeCell(grid, 1, 3, "0");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdChckTot"), Qt::LeftButton);
        QCOMPARE(fx->prompts.messages().last(), text(t::kSubtotalsAllOne));
        picture(*form, "inputs_causes.png");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdConfmCOD"), Qt::LeftButton);
        QCOMPARE(fx->value("SELECT count(*) FROM DatCSM WHERE BPUID = 'B1'"), QString("7")); // one 0 is no row
        QCOMPARE(fx->value("SELECT CSMP FROM DatCSM WHERE COBCd = '11012' AND ASG = 'F5-w'"), QString("0.75"));
    }

    void aMoveKeepsUnconfirmedEpidemiologyInMemoryAndConfirmStoresIt() {
        defineStudy();
        auto form = openForm();
        chooseUnit(*form, 0);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(3);
        QCOMPARE(child<QLabel>(form.get(), "lblCauseCode")->text(), QString("11011"));
        auto* grid = child<FlexGridView>(form.get(), "flex1");
        typeCell(grid, 0, 0, "0.004");
        typeCell(grid, 0, 3, "2.5");
        picture(*form, "inputs_epidemiology.png");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdNextEpi"), Qt::LeftButton);
        QCOMPARE(child<QLabel>(form.get(), "lblCauseCode")->text(), QString("11012"));
        QCOMPARE(fx->prompts.messages().last(), text(t::kStoredInMemory));
        QCOMPARE(fx->value("SELECT count(*) FROM DatADW"), QString("0"));
        QVERIFY(!form->HoldInMem());
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdFirstEpi"), Qt::LeftButton);
        QCOMPARE(gridTexts(grid).value(0), QString("0.004|||2.5|"));
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdcommit"), Qt::LeftButton);
        QCOMPARE(fx->prompts.messages().last(), text(t::kRecordsAdded) + "4");
        QCOMPARE(fx->rows("SELECT ASG, i, DURN FROM DatADW WHERE COBCd = '11011' AND i IS NOT NULL"),
                 QStringList{"F0-14|0.004|2.5"});
    }

    void addRecordsKeepsTheFiguresInMemoryAndTheOverrideNamesTheSequela() {
        defineStudy();
        fx->exec("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES ('SQ1', 'Dehydration')");
        fx->exec("INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES ('SQ1', '11011')");
        fx->exec("UPDATE _DctBDM SET Sqla = -1 WHERE CobCd = '11011'");
        auto form = openForm();
        chooseUnit(*form, 0);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(3);
        typeCell(child<FlexGridView>(form.get(), "flex1"), 1, 0, "0.5");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdAdd"), Qt::LeftButton);
        QCOMPARE(fx->prompts.messages().last(), text(t::kStoredInMemory));
        QCOMPARE(fx->value("SELECT count(*) FROM DatADW"), QString("0"));
        QVERIFY(!form->HoldInMem());
        auto* epiTabs = child<QTabWidget>(form.get(), "EpiTab");
        QVERIFY(epiTabs->isTabEnabled(1));
        // The sequela sheet looks at the shares of DatCSMSqla, which a new study file does not hold.
        epiTabs->setCurrentIndex(1);
        QVERIFY2(fx->prompts.messages().last().startsWith("3078 "), qPrintable(fx->prompts.messages().last()));
        child<QCheckBox>(form.get(), "ChkSqleOvrd")->setChecked(true);
        QCOMPARE(epiTabs->tabText(0), QString("By &Cause (11011 SQ1)"));
        picture(*form, "inputs_sequelae.png");
        child<QCheckBox>(form.get(), "ChkSqleOvrd")->setChecked(false);
        QCOMPARE(epiTabs->tabText(0), QString("By &Cause"));
    }

    void figuresKeptInMemoryGoWithTheUnitLeft() {
        defineStudy();
        auto form = openForm();
        chooseUnit(*form, 0);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(3);
        auto* grid = child<FlexGridView>(form.get(), "flex1");
        typeCell(grid, 0, 0, "0.004");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdNextEpi"), Qt::LeftButton);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(0);
        chooseUnit(*form, 1);
        QCOMPARE(form->unitInForce(), QString("B2"));
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(3);
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdFirstEpi"), Qt::LeftButton);
        QVERIFY(gridTexts(grid).isEmpty());
        QCOMPARE(fx->value("SELECT count(*) FROM DatADW"), QString("0"));
    }

    void weightsAreConfirmedOnTheFiveGroups() {
        defineStudy();
        auto form = openForm();
        chooseUnit(*form, 0);
        child<QTabWidget>(form.get(), "SSTabInputs")->setCurrentIndex(4);
        auto* grid = child<FlexGridView>(form.get(), "MSFlgDWT");
        QCOMPARE(grid->model()->headerData(4, Qt::Horizontal).toString(), QString("U60-w"));
        typeCell(grid, 0, 0, "0.2");
        typeCell(grid, 1, 4, "1.35"); // refused as typed: a weight lies from 0 to 1
        QCOMPARE(fx->prompts.messages().last(), text(t::kWeightOutOfRange));
        typeCell(grid, 1, 4, "0.35");
        picture(*form, "inputs_weights.png");
        QTest::mouseClick(child<QPushButton>(form.get(), "cmdConfirmDwt"), Qt::LeftButton);
        QCOMPARE(fx->rows("SELECT COBCd, ASG, Dwt FROM DatDwt ORDER BY COBCd"),
                 (QStringList{"11011|U0-4|0.2", "11012|U60-w|0.35"}));
    }
};

QTEST_MAIN(NewFrmInputsTest)
#include "new_frm_inputs_test.moc"
