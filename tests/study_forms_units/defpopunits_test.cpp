// Define Population Units driven as a user drives it: the scheme's words on the form, typing in the
// grids, the map, Apply, copying from another study and the Delete key.

#include "database/study_context.h"
#include "forms_support.h"
#include "sample_study.h"
#include "study/forms/defpopunits.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;
using namespace vesk::test::sample;

class DefPopUnitsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<StudyFixture> fx;

    template <typename T> static T* child(QWidget* form, const char* name) {
        T* w = form->findChild<T*>(QString::fromLatin1(name));
        if (!w)
            qFatal("no widget %s", name);
        return w;
    }
    static void enterUnits(defpopunits& form) {
        typeUnits(form, {"N1", "Nation one"}, {{"P1", "North"}, {"P2", "South"}},
                  {{"B1", "Alpha", "1"}, {"B2", "Beta", "2"}, {"B3", "Gamma", "3"}, {"B4", "Delta", "4"}});
    }

private slots:
    void init() { fx = std::make_unique<StudyFixture>(); }
    void cleanup() { fx.reset(); }

    void theSchemesTermsStandInEveryCaption() {
        defpopunits form(fx->db, "S1");
        form.show();
        QCOMPARE(form.windowTitle(), QString("Define Population Units"));
        auto* tabs = child<QTabWidget>(&form, "SSBPU");
        QCOMPARE(tabs->tabText(0), QString("Nation"));
        QCOMPARE(tabs->tabText(1), QString("Province"));
        QCOMPARE(tabs->tabText(2), QString("District"));
        QCOMPARE(child<QLabel>(&form, "lblHeadingBPU")->text(),
                 QString("District Entry Screen for the Current Study"));
        QCOMPARE(child<QRadioButton>(&form, "OptFreshBPU")->text(),
                 QString("Define freshDistricts for the current study"));
        QCOMPARE(child<QRadioButton>(&form, "OptPickPAG1")->text(),
                 QString("Pick Provinces from an existing study"));
        QCOMPARE(child<QLabel>(&form, "lblNote")->text(),
                 QString("Note:To remove a row from the grid,press Delete [Del] Key"));
        QCOMPARE(child<QLabel>(&form, "lblMapTable")->text(), QString("Map Table"));
        QCOMPARE(child<FlexGridView>(&form, "MSFGBPU")->model()->headerData(2, Qt::Horizontal).toString(),
                 QString("Priority"));
    }

    void withoutASchemeTheFixedCaptionsStand() {
        studyContext().LblBPU.clear();
        defpopunits form(fx->db, "S1");
        QCOMPARE(child<QRadioButton>(&form, "OptFreshPAG2")->text(),
                 QString("Define fresh PAG2 for the current study"));
        QCOMPARE(child<QRadioButton>(&form, "OptPickPAG1")->text(),
                 QString("&Select PAG1from an existing study"));
        QCOMPARE(child<QRadioButton>(&form, "OptPickBPU")->text(),
                 QString("&Select BPUs from an existing study"));
    }

    void typingMappingAndApplyingWritesTheTables() {
        defpopunits form(fx->db, "S1");
        form.show();
        enterUnits(form);
        setPair(form, "B1", "P1");
        setPair(form, "B2", "P1");
        setPair(form, "B3", "P2");
        setPair(form, "B4", "P2");
        setPair(form, "B2", "P2"); // a second Set replaces the pair
        QCOMPARE(gridTexts(child<FlexGridView>(&form, "MapGrid")),
                 QStringList({"B1|P1", "B2|P2", "B3|P2", "B4|P2"}));
        child<QPushButton>(&form, "cmdApply")->click();
        QCOMPARE(fx->prompts.messages(), QStringList({"Population Units updated successfully"}));
        QCOMPARE(fx->rows("SELECT BDSId, PAG2Id, PAG2Name FROM _DctPAG2"), QStringList({"S1|N1|Nation one"}));
        QCOMPARE(fx->rows("SELECT PAG1Id, PAG1Name, PAG2Id FROM _DctPAG1 ORDER BY PAG1Id"),
                 QStringList({"P1|North|N1", "P2|South|N1"}));
        QCOMPARE(fx->rows("SELECT BPUID, BPUName, Prty, PAG1Id FROM _DctBPU ORDER BY BPUID"),
                 QStringList({"B1|Alpha|1|P1", "B2|Beta|2|P2", "B3|Gamma|3|P2", "B4|Delta|4|P2"}));
        QVERIFY(studyContext().VctrBPULst.isArray());
        QCOMPARE(studyContext().VctrBPULst.array().size(), 4);
        // A new form rebuilds the map from the tables.
        defpopunits again(fx->db, "S1");
        QCOMPARE(again.mapPairs().size(), 4);
    }

    void applyWithoutAMapNamesNothingAndWritesNothing() {
        defpopunits form(fx->db, "S1");
        form.show();
        enterUnits(form);
        child<QPushButton>(&form, "cmdApply")->click();
        QCOMPARE(fx->prompts.messages(), QStringList({" bpu-pag1 map not set:"}));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctPAG2"), QString("0"));
    }

    // A unit in the grid without a pair is not saved and is listed; one already in the table keeps
    // its old row.
    void anUnmappedUnitIsListedAndNotSaved() {
        fx->exec(
            "INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'B4', 'Old', 9, 'P9')");
        defpopunits form(fx->db, "S1");
        form.show();
        enterUnits(form);
        setPair(form, "B1", "P1");
        child<QPushButton>(&form, "cmdApply")->click();
        QCOMPARE(
            fx->prompts.messages(),
            QStringList({"The Following District were not mapped with any of the Province\nB2,\nB3,\nB4,\n"
                         "these wil not be saved if they are not mapped.",
                         "Population Units updated successfully"}));
        QCOMPARE(fx->rows("SELECT BPUID, BPUName, Prty, PAG1Id FROM _DctBPU ORDER BY BPUID"),
                 QStringList({"B1|Alpha|1|P1", "B4|Old|9|P9"}));
    }

    void aTooLongIdShowsTheFieldSizeMessage() {
        defpopunits form(fx->db, "S1");
        form.show();
        QTest::keyClicks(child<QLineEdit>(&form, "txtPAG2Id"), "NAT1");
        typeRow(child<FlexGridView>(&form, "MSFLPAG1"), 0, {"P1", "North"});
        typeRow(child<FlexGridView>(&form, "MSFGBPU"), 0, {"B1", "Alpha", "1"});
        setPair(form, "B1", "P1");
        child<QPushButton>(&form, "cmdApply")->click();
        QCOMPARE(
            fx->prompts.messages(),
            QStringList({"Please check Actual  field size less than the data what you are entering on the "
                         "screen\nPopulation Aggregation Scheme id should be maximum of 3 char\nBasic "
                         "Population  unit id should contain maximun of 5 characters"}));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctPAG2"), QString("0"));
    }

    // Copying from another study fills the grid only; Apply writes the rows under the current study
    // with the same ids, and the data held under these ids belong to it at once.
    void copyingUnitsFromAnotherStudy() {
        defpopunits empty(fx->db, "S1");
        child<QRadioButton>(&empty, "OptPickBPU")->click();
        QCOMPARE(fx->prompts.messages(), QStringList({"NO study exist"}));
        QVERIFY(child<QRadioButton>(&empty, "OptFreshBPU")->isChecked());
        child<QRadioButton>(&empty, "OptPickPAG2")->click();
        QCOMPARE(fx->prompts.messages().last(), QString("NO PAG2id exist"));
        fx->prompts.clear();

        fx->addStudy("S2", 1999, false);
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B7', 'Seven', 4, "
                 "'Q1'), "
                 "('S2', 'B8', 'Eight', 5, 'Q1')");
        fx->exec(
            "INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S2', 'Q1', 'Quarter', 'M1')");
        fx->exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('B7', 2000, 0, 10, 11)");
        defpopunits form(fx->db, "S1");
        form.show();
        child<QRadioButton>(&form, "OptPickBPU")->click();
        auto* combo = child<QComboBox>(&form, "cmbBPU");
        QCOMPARE(combo->count(), 1);
        combo->setCurrentIndex(0);
        QCOMPARE(gridTexts(child<FlexGridView>(&form, "MSFGBPU")), QStringList({"B7|Seven|4", "B8|Eight|5"}));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBPU WHERE BDSId = 'S1'"), QString("0"));
        child<QRadioButton>(&form, "OptPickPAG1")->click();
        child<QComboBox>(&form, "cmbPAG1")->setCurrentIndex(0);
        child<QRadioButton>(&form, "OptPickPAG2")->click();
        QCOMPARE(fx->prompts.messages(), QStringList({"NO PAG2id exist"}));
        QTest::keyClicks(child<QLineEdit>(&form, "txtPAG2Id"), "N1");
        setPair(form, "B7", "Q1");
        setPair(form, "B8", "Q1");
        fx->prompts.clear();
        child<QPushButton>(&form, "cmdApply")->click();
        QCOMPARE(fx->prompts.messages(), QStringList({"Population Units updated successfully"}));
        QCOMPARE(fx->rows("SELECT BDSId, BPUID, Prty, PAG1Id FROM _DctBPU ORDER BY BDSId, BPUID"),
                 QStringList({"S1|B7|4|Q1", "S1|B8|5|Q1", "S2|B7|4|Q1", "S2|B8|5|Q1"}));
        QCOMPARE(
            fx->value(
                "SELECT count(*) FROM DatPOP WHERE BPUID IN (SELECT BPUID FROM _DctBPU WHERE BDSId = 'S1')"),
            QString("1"));
    }

    // The form holds one aggregate of level 2: a copy takes the chosen study's first.
    void copyingTheLevelTwoAggregateFillsItsIdAndName() {
        fx->addStudy("S2", 1999, false);
        fx->exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES ('S2', 'M1', 'Mainland'), "
                 "('S2', 'M2', 'Islands')");
        defpopunits form(fx->db, "S1");
        form.show();
        QVERIFY(child<QLineEdit>(&form, "txtPAG2Id")->text().isEmpty());
        child<QRadioButton>(&form, "OptPickPAG2")->click();
        child<QComboBox>(&form, "cmbPAG2")->setCurrentIndex(0);
        QCOMPARE(child<QLineEdit>(&form, "txtPAG2Id")->text(), QString("M1"));
        QCOMPARE(child<QLineEdit>(&form, "txtPAG2Name")->text(), QString("Mainland"));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctPAG2 WHERE BDSId = 'S1'"), QString("0"));
        // Defining it afresh empties the fields again.
        child<QRadioButton>(&form, "OptFreshPAG2")->click();
        QVERIFY(child<QLineEdit>(&form, "txtPAG2Id")->text().isEmpty());
        QVERIFY(fx->prompts.messages().isEmpty());
    }

    void aChosenStudyWithoutRowsSaysNoRecords() {
        fx->addStudy("S2", 1999, false);
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B7', 'Seven', 4, "
                 "'Q1')");
        fx->exec(
            "INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES ('S3', 1998, 'Three', 'SCH', 0)");
        defpopunits form(fx->db, "S1");
        form.show();
        child<QRadioButton>(&form, "OptPickBPU")->click();
        // The list holds the studies with units; a study whose rows went meanwhile shows none.
        fx->exec("DELETE FROM _DctBPU WHERE BDSId = 'S2'");
        child<QComboBox>(&form, "cmbBPU")->setCurrentIndex(0);
        QCOMPARE(fx->prompts.messages(), QStringList({"No records"}));
    }

    // Deleting a unit without data from one study removes it from every study that holds the id.
    void deletingAUnitWithoutDataRemovesItEverywhere() {
        fx->addStudy("S2", 1999, false);
        fx->exec(
            "INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B2', 'Beta', 1, 'Q1')");
        fx->exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S1', 'P1', 'North', 'N1')");
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'B1', 'Alpha', 1, "
                 "'P1'), "
                 "('S1', 'B2', 'Beta', 2, 'P1')");
        defpopunits form(fx->db, "S1");
        form.show();
        child<QTabWidget>(&form, "SSBPU")->setCurrentIndex(2);
        auto* grid = child<FlexGridView>(&form, "MSFGBPU");
        clickCell(grid, 1, 0);
        pressDelete(grid);
        QVERIFY(fx->prompts.messages().isEmpty());
        QCOMPARE(fx->rows("SELECT BDSId, BPUID FROM _DctBPU ORDER BY BDSId"), QStringList({"S1|B1"}));
        QCOMPARE(gridTexts(grid), QStringList({"B1|Alpha|1"}));
        QCOMPARE(form.mapPairs().size(), 1);
    }

    void deletingAUnitWithDataAsksAndTakesThisStudysRowAlone() {
        fx->addStudy("S2", 1999, false);
        fx->exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S1', 'P1', 'North', 'N1')");
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'B1', 'Alpha', 1, "
                 "'P1'), "
                 "('S2', 'B1', 'Alpha', 1, 'Q1')");
        fx->exec("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M) VALUES ('B1', 2000, 0, 0.01, 0.02)");
        defpopunits form(fx->db, "S1");
        form.show();
        child<QTabWidget>(&form, "SSBPU")->setCurrentIndex(2);
        auto* grid = child<FlexGridView>(&form, "MSFGBPU");
        clickCell(grid, 0, 1);
        fx->prompts.answer(Answer::Cancel);
        pressDelete(grid);
        QCOMPARE(gridTexts(grid), QStringList({"B1|Alpha|1"}));
        fx->prompts.answer(Answer::Ok);
        pressDelete(grid);
        // The last unit of the study gone, the reload of the context says so.
        QCOMPARE(fx->prompts.messages(),
                 QStringList({"Are you sure to delete the row ?", "Are you sure to delete the row ?",
                              "No BPUs defined for the Study S1"}));
        QCOMPARE(fx->rows("SELECT BDSId, BPUID FROM _DctBPU"), QStringList({"S2|B1"}));
        QCOMPARE(fx->value("SELECT count(*) FROM DatASDR"), QString("1"));
        QVERIFY(gridTexts(grid).isEmpty()); // a grid of one row is blanked
        QVERIFY(form.mapPairs().isEmpty());
    }

    void deletingAPAG1RowAsksTwiceAndTakesItsUnits() {
        fx->exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S1', 'P1', 'North', 'N1'), "
                 "('S1', 'P2', 'South', 'N1')");
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'B1', 'Alpha', 1, "
                 "'P1'), "
                 "('S1', 'B2', 'Beta', 2, 'P2')");
        defpopunits form(fx->db, "S1");
        form.show();
        child<QTabWidget>(&form, "SSBPU")->setCurrentIndex(1);
        auto* grid = child<FlexGridView>(&form, "MSFLPAG1");
        clickCell(grid, 0, 0);
        fx->prompts.answer(Answer::Yes);
        fx->prompts.answer(Answer::Yes);
        pressDelete(grid);
        QCOMPARE(fx->prompts.messages().size(), 2);
        QCOMPARE(fx->rows("SELECT PAG1Id FROM _DctPAG1"), QStringList({"P2"}));
        QCOMPARE(fx->rows("SELECT BPUID FROM _DctBPU"), QStringList({"B2"}));
        QCOMPARE(gridTexts(grid), QStringList({"P2|South"}));
        QCOMPARE(form.mapPairs().size(), 1);
    }

    void deletingMapRowsRemovesThePairs() {
        defpopunits form(fx->db, "S1");
        form.show();
        enterUnits(form);
        setPair(form, "B1", "P1");
        setPair(form, "B2", "P1");
        auto* map = child<FlexGridView>(&form, "MapGrid");
        clickCell(map, 0, 0);
        pressDelete(map);
        QCOMPARE(gridTexts(map), QStringList({"B2|P1"}));
    }

    void theGridArraysGoBothWays() {
        defpopunits form(fx->db, "S1");
        auto* grid = child<FlexGridView>(&form, "MSFGBPU")->grid();
        CellArray values{2, 3};
        values(0, 0) = Cell(QString("B1"));
        values(0, 1) = Cell(QString("One"));
        values(0, 2) = Cell(QString("1"));
        values(1, 0) = Cell(QString("B2"));
        defpopunits::WriteOnBPUGrid(values, *grid);
        const CellArray back = defpopunits::WriteToArraybpu(*grid);
        QCOMPARE(back.size(0), 3); // the two rows and the blank row for the next entry
        QCOMPARE(back(1, 0).toString(), QString("B2"));
        QCOMPARE(grid->textMatrix(0, 3), QString("Priority"));
    }
};

QTEST_MAIN(DefPopUnitsTest)
#include "defpopunits_test.moc"
