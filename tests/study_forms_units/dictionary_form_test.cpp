// The dictionary of causes built through its form as a user builds it (3 groups, 4 subgroups,
// 6 clusters, 12 causes, 5 sequelae and their maps), the population units of the study through
// theirs (one PAG2, two PAG1, four BPUs), every table row checked, and a cluster deleted with its
// cascade over the data tables.

#include "database/study_context.h"
#include "forms_support.h"
#include "sample_study.h"
#include "study/forms/defpopunits.h"
#include "study/forms/frm_buld_main_cl_dic.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;
using namespace vesk::test::sample;

class DictionaryFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<StudyFixture> fx;

    void buildDictionary(FRMBULDMAINCLDIC& form) { enterDictionary(form, fx->prompts); }

    void buildUnits() {
        defpopunits form(fx->db, "S1");
        form.show();
        enterUnits(form, fx->prompts);
    }

    void addData(const QString& cause) {
        fx->exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('BLR', 2000, ?, 'M0-4', 0.1)",
                 {cause});
        fx->exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P) VALUES ('MYS', 2000, ?, 'F0-4', 1, 2)",
                 {cause});
        fx->exec("INSERT INTO DatADWSqla (BPUID, YEAR, COBCd, SqlaCd, ASG, i) VALUES ('MAA', 2000, ?, 'SQ1', "
                 "'M0-4', 1)",
                 {cause});
        fx->exec("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES ('S1', 2000, ?, 'U0-4', 0.2)",
                 {cause});
    }

private slots:
    void init() { fx = std::make_unique<StudyFixture>(); }
    void cleanup() { fx.reset(); }

    void theHeadingsAndButtons() {
        FRMBULDMAINCLDIC form(fx->db);
        QCOMPARE(form.windowTitle(), QString("Build dictionary of Cause of Burden and their Hierarchy"));
        const auto heading = [&](const char* grid, int c) {
            return child<FlexGridView>(&form, grid)->model()->headerData(c, Qt::Horizontal).toString();
        };
        QCOMPARE(heading("MsbdmGrps", 0), QString("Group Code"));
        QCOMPARE(heading("MsbdmGrps", 1), QString("Group Description"));
        QCOMPARE(heading("MSFlexsubgrps", 0), QString(" SubGroup Code"));
        QCOMPARE(heading("MSFlexsubgrps", 1), QString("SubGroup Description"));
        QCOMPARE(heading("MSFlexbdmclstr", 0), QString("Cluster Code"));
        QCOMPARE(heading("MSFlexbdmclstr", 1), QString("Cluster Description"));
        QCOMPARE(heading("MSFlexsgrptab", 0), QString("CoBCd"));
        QCOMPARE(heading("MSFlexsgrptab", 1), QString("Description"));
        QCOMPARE(heading("MSFlxSequelaDct", 0), QString("Sequela Code"));
        QCOMPARE(heading("MSFlxSequelaDct", 1), QString("Sequela Description"));
        QCOMPARE(child<QPushButton>(&form, "cmdAppend")->text(), QString("&Append"));
        QCOMPARE(child<QPushButton>(&form, "cmdAppend")->toolTip(), QString("Appends to the database"));
        QCOMPARE(child<QPushButton>(&form, "cmdOK")->text(), QString("&OK"));
        QCOMPARE(child<QPushButton>(&form, "cmdClose")->text(), QString("C&lose"));
        QCOMPARE(child<QComboBox>(&form, "cmbgrpcode")->itemText(0), QString("-NA-"));
    }

    void buildEverythingThroughTheFormsThenDeleteACluster() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        buildDictionary(form);
        buildUnits();

        QCOMPARE(fx->rows("SELECT GrpCd, \"Group\" FROM _DctBDMGrps ORDER BY GrpCd"), joined(kGroups, false));
        QCOMPARE(fx->rows("SELECT SGrpCd, Subgroup, GrpCd FROM _DctBDMSGrps ORDER BY SGrpCd"),
                 joined(kSubGroups, true));
        QCOMPARE(fx->rows("SELECT ClstrCd, Cluster, SGrpCd FROM _DctBDMClstr ORDER BY ClstrCd"),
                 joined(kClusters, true));
        QCOMPARE(fx->rows("SELECT CobCd, Disease, ClstrCd FROM _DctBDM ORDER BY CobCd"),
                 joined(kCauses, true));
        QCOMPARE(
            fx->rows("SELECT CobCd FROM _DctBDM WHERE Sqla = -1 ORDER BY CobCd"),
            QStringList({"11011", "11012", "11021", "11022", "12011", "12012", "21021", "31011", "31012"}));
        QCOMPARE(fx->rows("SELECT CobCd FROM _DctBDM WHERE Sqla = 0 ORDER BY CobCd"),
                 QStringList({"21011", "21012", "21022"}));
        QCOMPARE(fx->rows("SELECT SqlaCd, Sequela FROM _DctBDMSqla ORDER BY SqlaCd"),
                 joined(kSequelae, false));
        QCOMPARE(fx->rows("SELECT SqlaCd, cobcd FROM _MapBDMSqla ORDER BY SqlaCd, cobcd"), joinedMaps());
        QCOMPARE(fx->rows("SELECT BDSId, PAG2Id, PAG2Name FROM _DctPAG2"), QStringList({"S1|IN|India"}));
        QCOMPARE(fx->rows("SELECT BDSId, PAG1Id, PAG1Name, PAG2Id FROM _DctPAG1 ORDER BY PAG1Id"),
                 QStringList({"S1|KA|Karnataka|IN", "S1|TN|Tamil Nadu|IN"}));
        QCOMPARE(fx->rows("SELECT BDSId, BPUID, BPUName, Prty, PAG1Id FROM _DctBPU ORDER BY Prty"),
                 QStringList({"S1|BLR|Bangalore|1|KA", "S1|MYS|Mysore|2|KA", "S1|MAA|Chennai|3|TN",
                              "S1|CBE|Coimbatore|4|TN"}));

        // Data under a cause of the cluster to go and under one that stays.
        addData("11011");
        addData("11012");
        addData("21011");
        fx->exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('BLR', 2000, 0, 5, 6)");
        auto* tabs = child<QTabWidget>(&form, "SSTab1");
        tabs->setCurrentIndex(2);
        auto* clusters = child<FlexGridView>(&form, "MSFlexbdmclstr");
        clickCell(clusters, 0, 0);
        fx->prompts.answer(Answer::Ok);
        fx->prompts.answer(Answer::Yes);
        pressDelete(clusters);
        QCOMPARE(fx->prompts.messages().size(), 2);
        QVERIFY(
            fx->prompts.messages()[0].startsWith("There are 2 CobCds mapped to this Cluster Code(1101),"));
        QCOMPARE(fx->prompts.unanswered(), 0);

        QCOMPARE(fx->rows("SELECT ClstrCd FROM _DctBDMClstr ORDER BY ClstrCd"),
                 QStringList({"1102", "1201", "2101", "2102", "3101"}));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBDM"), QString("10"));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBDM WHERE ClstrCd = '1101'"), QString("0"));
        for (const char* table : {"DatCSM", "DatADW", "DatADWSqla", "DatDwt"})
            QCOMPARE(fx->rows(QStringLiteral("SELECT COBCd FROM %1").arg(table)), QStringList({"21011"}));
        QCOMPARE(fx->value("SELECT count(*) FROM DatPOP"), QString("1"));
        // The sequela maps of the causes that went stay, as do the levels above.
        QCOMPARE(fx->value("SELECT count(*) FROM _MapBDMSqla WHERE SqlaCd = 'SQ1'"), QString("2"));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBDMSGrps"), QString("4"));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBDMGrps"), QString("3"));
        // The grids show the tables again.
        QCOMPARE(gridTexts(clusters).size(), 5);
        QCOMPARE(gridTexts(child<FlexGridView>(&form, "MSFlexsgrptab")).size(), 10);
        QCOMPARE(fx->rows("SELECT BPUID FROM _DctBPU ORDER BY Prty"),
                 QStringList({"BLR", "MYS", "MAA", "CBE"}));
    }

    void deletingAGroupFromItsTabAsksOnce() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        buildDictionary(form);
        addData("21021");
        child<QTabWidget>(&form, "SSTab1")->setCurrentIndex(0);
        auto* groups = child<FlexGridView>(&form, "MsbdmGrps");
        clickCell(groups, 1, 0);
        fx->prompts.answer(Answer::Yes);
        pressDelete(groups);
        QCOMPARE(fx->prompts.messages().size(), 1);
        QCOMPARE(fx->prompts.shown().first().title, QString("Vesk : Warning"));
        QCOMPARE(fx->rows("SELECT GrpCd FROM _DctBDMGrps ORDER BY GrpCd"), QStringList({"1", "3"}));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBDM WHERE CobCd LIKE '2%'"), QString("0"));
        QCOMPARE(fx->value("SELECT count(*) FROM DatCSM"), QString("0"));
        QCOMPARE(gridTexts(groups), QStringList({"1|Communicable", "3|Injuries"}));
    }

    void deleteOnASavedCauseSaysWhereCausesGo() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        buildDictionary(form);
        child<QTabWidget>(&form, "SSTab1")->setCurrentIndex(3);
        auto* causes = child<FlexGridView>(&form, "MSFlexsgrptab");
        // A row typed but not appended only leaves the grid, without a question.
        typeRow(causes, kCauses.size(), {"31013", "Cyclist"});
        clickCell(causes, kCauses.size(), 0);
        pressDelete(causes);
        QCOMPARE(fx->prompts.messages(), QStringList());
        QCOMPARE(gridTexts(causes).size(), kCauses.size());
        // A saved cause stays, and the user is told how causes go.
        clickCell(causes, 0, 0);
        pressDelete(causes);
        QCOMPARE(fx->prompts.messages().size(), 1);
        QVERIFY(fx->prompts.messages()[0].startsWith("A cause of burden already in the dictionary is deleted "
                                                     "with its cluster"));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBDM"), QString::number(kCauses.size()));
        QCOMPARE(gridTexts(causes).size(), kCauses.size());
    }

    void appendShowsTheGroupRuleMessage() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        typeRow(child<FlexGridView>(&form, "MsbdmGrps"), 0, {"10", "Ten"});
        child<QPushButton>(&form, "cmdAppend")->click();
        QCOMPARE(
            fx->prompts.messages(),
            QStringList({"The groups cannot be greater than 3, The record cannot be updated at present"}));
    }

    void aBadCauseCodeIsListedAndNotSaved() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        enterLevel(form, 0, "MsbdmGrps", "", {kGroups[0]});
        enterLevel(form, 1, "MSFlexsubgrps", "cmbgrpcode", {kSubGroups[0]});
        enterLevel(form, 2, "MSFlexbdmclstr", "cmbSgrpcode", {kClusters[0]});
        enterLevel(form, 3, "MSFlexsgrptab", "cmbclstrcode",
                   {{"1101", "Four", "1101"}, {"110111", "Six", "1101"}, {"11011", "Five", "1101"}});
        child<QPushButton>(&form, "cmdAppend")->click();
        QCOMPARE(fx->prompts.messages(), QStringList({"1101::Only five charactered Cobcd is valid\n"
                                                      "110111::Only five charactered Cobcd is valid"}));
        QCOMPARE(fx->rows("SELECT CobCd FROM _DctBDM"), QStringList({"11011"}));
    }

    void aCauseWithoutDescriptionIsRefused() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        child<QTabWidget>(&form, "SSTab1")->setCurrentIndex(3);
        typeCell(child<FlexGridView>(&form, "MSFlexsgrptab"), 0, 0, "11011");
        child<QPushButton>(&form, "cmdOK")->click();
        QCOMPARE(
            fx->prompts.messages(),
            QStringList({"Fill the Description for the CobCd entered as the description cannot be empty"}));
        QVERIFY(form.isVisible()); // OK closes only after a successful Append
    }

    void removingTheLastSequelaOfACauseClearsItsFlag() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        buildDictionary(form);
        child<QTabWidget>(&form, "SSTab1")->setCurrentIndex(4);
        auto* sequelae = child<FlexGridView>(&form, "MSFlxSequelaDct");
        auto* list = child<QListWidget>(&form, "lstSqlaCauses");
        clickCell(sequelae, 1, 0); // SQ2: 11021, 11022, 12012
        list->setCurrentRow(0);
        child<QPushButton>(&form, "cmdUnmap")->click();
        QCOMPARE(list->count(), 2);
        QCOMPARE(fx->value("SELECT Sqla FROM _DctBDM WHERE CobCd = '11021'"), QString("0"));
        clickCell(sequelae, 0, 0); // SQ1: 11011, 11012; remove one of two maps of a cause with one sequela
        list->setCurrentRow(0);
        child<QPushButton>(&form, "cmdUnmap")->click();
        QCOMPARE(fx->value("SELECT Sqla FROM _DctBDM WHERE CobCd = '11011'"), QString("0"));
        QCOMPARE(fx->value("SELECT Sqla FROM _DctBDM WHERE CobCd = '11012'"), QString("-1"));
        // A second map of 12012 to SQ3; removing one of its two keeps the flag.
        clickCell(sequelae, 2, 0);
        auto* causes = child<QComboBox>(&form, "cmbCobcd");
        causes->setCurrentIndex(causes->findText("12012"));
        child<QPushButton>(&form, "cmdMap")->click();
        child<QPushButton>(&form, "cmdMap")->click();
        QCOMPARE(fx->prompts.messages(),
                 QStringList({"This Cobcd has allready been mapped to the above Sequelacd"}));
        clickCell(sequelae, 1, 0);
        list->setCurrentItem(list->findItems("12012", Qt::MatchExactly).value(0));
        child<QPushButton>(&form, "cmdUnmap")->click();
        QCOMPARE(fx->value("SELECT Sqla FROM _DctBDM WHERE CobCd = '12012'"), QString("-1"));
    }

    void deletingASequelaFromItsGrid() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        buildDictionary(form);
        child<QTabWidget>(&form, "SSTab1")->setCurrentIndex(4);
        auto* sequelae = child<FlexGridView>(&form, "MSFlxSequelaDct");
        clickCell(sequelae, 4, 1);
        fx->prompts.answer(Answer::Yes);
        pressDelete(sequelae);
        QCOMPARE(fx->prompts.messages(),
                 QStringList({"Are you sure you want to delete the selected Sequela"}));
        QCOMPARE(fx->value("SELECT count(*) FROM _DctBDMSqla"), QString("4"));
        QCOMPARE(fx->value("SELECT count(*) FROM _MapBDMSqla WHERE SqlaCd = 'SQ5'"), QString("0"));
        QCOMPARE(fx->value("SELECT Sqla FROM _DctBDM WHERE CobCd = '31011'"), QString("-1"));
        QCOMPARE(gridTexts(sequelae).size(), 4);
    }

    void navigationButtonsMoveTheCurrentRowAndItsParent() {
        FRMBULDMAINCLDIC form(fx->db);
        form.show();
        buildDictionary(form);
        auto* tabs = child<QTabWidget>(&form, "SSTab1");
        tabs->setCurrentIndex(2);
        auto* grid = child<FlexGridView>(&form, "MSFlexbdmclstr");
        auto* parent = child<QComboBox>(&form, "cmbSgrpcode");
        child<QPushButton>(&form, "cmdLastClstr")->click();
        QCOMPARE(grid->grid()->row(), 7); // the blank row at the foot
        child<QPushButton>(&form, "cmdPrevClstr")->click();
        QCOMPARE(grid->grid()->textMatrix(grid->grid()->row(), 1), QString("3101"));
        QCOMPARE(parent->currentText(), QString("31"));
        child<QPushButton>(&form, "cmdFirstClstr")->click();
        child<QPushButton>(&form, "cmdNextClstr")->click();
        QCOMPARE(grid->grid()->textMatrix(grid->grid()->row(), 1), QString("1102"));
        QCOMPARE(parent->currentText(), QString("11"));
        // Choosing another parent and appending edits the cluster.
        parent->setCurrentIndex(parent->findText("12"));
        child<QPushButton>(&form, "cmdAppend")->click();
        QCOMPARE(fx->value("SELECT SGrpCd FROM _DctBDMClstr WHERE ClstrCd = '1102'"), QString("12"));
    }
};

QTEST_MAIN(DictionaryFormTest)
#include "dictionary_form_test.moc"
