// frmCOB in its two modes, its buttons and its printing, and the menu entries that open the study
// forms in the frame.

#include "database/study_context.h"
#include "forms_support.h"
#include "read_back.h"
#include "shell/forms/form_registry.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/forms/menu_commands.h"
#include "shell/frame_menu_tree.h"
#include "study/forms/defpopunits.h"
#include "study/forms/frm_cob.h"
#include "study/forms/frm_cob_print.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

namespace {

// The nodes with children that stand open.
int expandedCount(const QTreeWidget* tree) {
    int n = 0;
    std::function<void(const QTreeWidgetItem*)> walk = [&](const QTreeWidgetItem* item) {
        n += item->childCount() > 0 && item->isExpanded() ? 1 : 0;
        for (int i = 0; i < item->childCount(); ++i)
            walk(item->child(i));
    };
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        walk(tree->topLevelItem(i));
    return n;
}

} // namespace

class OutlineFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<StudyFixture> fx;

    void fillStudy() {
        fx->exec(
            "INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (1, 'Communicable'), (2, 'Noncommunicable')");
        fx->exec("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES ('11', 'Infectious', 1), "
                 "('21', 'Cancers', 2)");
        fx->exec("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('1101', 'Diarrhoeal', '11'), "
                 "('1102', 'Malaria', '11'), ('2101', 'Lung', '21')");
        fx->exec("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, S1) VALUES "
                 "('11011', 'Cholera', '1101', 0, -1), ('11012', 'Shigellosis', '1101', 0, 0), "
                 "('11021', 'Falciparum', '1102', 0, -1), ('21011', 'Small cell', '2101', 0, -1)");
        fx->exec(
            "INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES ('SQ1', 'Dehydration'), ('SQ2', 'Anaemia')");
        fx->exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES ('S1', 'IN', 'India')");
        fx->exec(
            "INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S1', 'KA', 'Karnataka', 'IN'), "
            "('S1', 'TN', 'Tamil Nadu', 'IN')");
        fx->exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES "
                 "('S1', 'BLR', 'Bangalore', 1, 'KA'), ('S1', 'MYS', 'Mysore', 2, 'KA'), "
                 "('S1', 'MAA', 'Chennai', 3, 'TN'), ('S1', 'CBE', 'Coimbatore', 4, 'TN')");
    }

    // Prints through the form's button into a PDF and gives back its text.
    QString printToPdf(frmCOB& form, const QString& name) {
        const QString pdf = fx->dir.filePath(name);
        setOutlinePrintToPdf(true);
        fx->prompts.fileAnswer(pdf);
        form.findChild<QPushButton*>("cmdPrint")->click();
        setOutlinePrintToPdf(false);
        return pdfText(pdf);
    }

private slots:
    void init() {
        fx = std::make_unique<StudyFixture>();
        fillStudy();
    }
    void cleanup() {
        clearMenuCommands();
        fx.reset();
    }

    void theCausesOfTheStudy() {
        frmCOB form(fx->db, "S1", frmCOB::Mode::Causes);
        QCOMPARE(form.windowTitle(), QString("Cause of Burden Outline"));
        auto* tree = form.findChild<QTreeWidget*>("COB");
        QCOMPARE(
            treeTexts(tree),
            QStringList({" Causes of Burden Outline", "  Cause of Burden", "    1;(Communicable)",
                         "      11;(Infectious)", "        1101;(Diarrhoeal)", "          11011;(Cholera)",
                         "        1102;(Malaria)", "          11021;(Falciparum)", "    2;(Noncommunicable)",
                         "      21;(Cancers)", "        2101;(Lung)", "          21011;(Small cell)"}));
        QCOMPARE(tree->topLevelItem(0)->child(0)->child(0)->data(0, Qt::UserRole).toString(), QString("G1"));
        QCOMPARE(form.findChild<QPushButton*>("cmdExpand")->text(), QString("&Expand All"));
        QCOMPARE(form.findChild<QPushButton*>("cmdCollapse")->text(), QString("&Collapse All"));
        QCOMPARE(form.findChild<QPushButton*>("cmdPrint")->text(), QString("&Print"));
        form.findChild<QPushButton*>("cmdExpand")->click();
        QCOMPARE(expandedCount(tree), 9); // every node with children
        form.findChild<QPushButton*>("cmdCollapse")->click();
        QCOMPARE(expandedCount(tree), 0);
    }

    void theWholeDictionaryWithoutACurrentStudy() {
        studyContext().CurBDSId.clear();
        std::unique_ptr<frmCOB> form(frmCOB::open(frmCOB::Mode::Causes));
        QVERIFY(form);
        QVERIFY(treeTexts(form->findChild<QTreeWidget*>("COB")).contains("          11012;(Shigellosis)"));
        // The population schema needs a study.
        QVERIFY(!frmCOB::open(frmCOB::Mode::Population));
        QCOMPARE(fx->prompts.messages(), QStringList({"Select a study from the Study - Setup menu."}));
    }

    void thePopulationSchema() {
        frmCOB form(fx->db, "S1", frmCOB::Mode::Population);
        QCOMPARE(treeTexts(form.findChild<QTreeWidget*>("COB")),
                 QStringList({" Population Schema Outline", "  Population Schema", "    IN;(India)",
                              "      KA;(Karnataka)", "        BLR;(Bangalore)", "        MYS;(Mysore)",
                              "      TN;(Tamil Nadu)", "        MAA;(Chennai)", "        CBE;(Coimbatore)"}));
    }

    void theCauseOutlinePrintsEveryNode() {
        frmCOB form(fx->db, "S1", frmCOB::Mode::Causes);
        const QString text = printToPdf(form, "causes.pdf");
        QCOMPARE(fx->prompts.messages(), QStringList({"printed Sucessfully"}));
        QVERIFY2(!text.isEmpty(), "pdftotext gave nothing");
        for (const QString& node : treeTexts(form.findChild<QTreeWidget*>("COB")))
            QVERIFY2(text.contains(node.trimmed()), qPrintable(node));
    }

    void thePopulationOutlinePrintsEveryNode() {
        frmCOB form(fx->db, "S1", frmCOB::Mode::Population);
        const QString text = printToPdf(form, "population.pdf");
        QCOMPARE(fx->prompts.messages(), QStringList({"printed Sucessfully"}));
        for (const QString& node : treeTexts(form.findChild<QTreeWidget*>("COB")))
            QVERIFY2(text.contains(node.trimmed()), qPrintable(node));
        // The lines stand indented by their depth.
        const QStringList lines = text.split(u'\n');
        const auto indentOf = [&](const QString& node) {
            for (const QString& l : lines)
                if (l.contains(node))
                    return static_cast<int>(l.indexOf(node));
            return -1;
        };
        QVERIFY(indentOf("IN;(India)") < indentOf("KA;(Karnataka)"));
        QVERIFY(indentOf("KA;(Karnataka)") < indentOf("BLR;(Bangalore)"));
    }

    void aLongOutlineBreaksPages() {
        for (int i = 0; i < 150; ++i)
            fx->exec("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, S1) VALUES (?, ?, '2101', 0, -1)",
                     {QStringLiteral("9%1").arg(i, 4, 10, QChar(u'0')), QStringLiteral("Cause %1").arg(i)});
        frmCOB form(fx->db, "S1", frmCOB::Mode::Causes);
        const QString text = printToPdf(form, "long.pdf");
        QVERIFY(text.count(u'\f') >= 2);
        QVERIFY(text.contains("90149;(Cause 149)"));
    }

    void cancellingThePdfNamePrintsNothing() {
        frmCOB form(fx->db, "S1", frmCOB::Mode::Population);
        setOutlinePrintToPdf(true);
        fx->prompts.fileAnswer(std::nullopt);
        QVERIFY(!form.cmdPrint_Click());
        setOutlinePrintToPdf(false);
        QVERIFY(fx->prompts.messages().isEmpty());
    }

    void theMenuOpensTheFormsInTheFrame() {
        registerStudyDefinitionForms();
        FRMMAINMENU frame;
        QVERIFY(frame.isBuilt("mnu_BPUES"));
        QVERIFY(frame.isBuilt("mnu_cgroups"));
        QVERIFY(frame.isBuilt("mnu_CauseGrps"));
        QVERIFY(frame.isBuilt("mnu_popunits_outline"));
        QVERIFY(frame.isBuilt(toolbarButtonName(3)));
        const auto shown = [&] {
            QStringList names;
            for (QMdiSubWindow* w : frame.mdiArea()->subWindowList())
                if (w->widget())
                    names << w->widget()->objectName();
            return names;
        };
        frame.item("mnu_BPUES")->trigger();
        frame.item(toolbarButtonName(3))->trigger(); // the toolbar's "Dictionaries"
        frame.item("mnu_CauseGrps")->trigger();
        QCOMPARE(shown(), QStringList({"defpopunits", "FRMBULDMAINCLDIC", "frmCOB"}));
        frame.item("mnu_popunits_outline")->trigger(); // the one outline form, now in the other mode
        QTest::qWait(10);
        QCOMPARE(shown().count("frmCOB"), 1);
        QCOMPARE(frame.mdiArea()->findChild<frmCOB*>()->mode(), frmCOB::Mode::Population);
        frame.item("mnu_BPUES")->trigger(); // a form is single
        QTest::qWait(10);
        QCOMPARE(shown().count("defpopunits"), 1);
        // Without a study, Population Units says where to get one.
        studyContext().CurBDSId.clear();
        fx->prompts.clear();
        QVERIFY(!defpopunits::open());
        QCOMPARE(fx->prompts.messages(), QStringList({"Select a study from the Study - Setup menu."}));
    }
};

QTEST_MAIN(OutlineFormTest)
#include "outline_form_test.moc"
