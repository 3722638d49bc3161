// frmDALYCal used as a user would: the ages of both sides, build, type, mark a set, compute, read the
// IYLD, YLL and DALY columns.

#include "burden/forms/calculators_open.h"
#include "burden/forms/frm_daly_cal.h"
#include "calc_form_support.h"
#include "platform/runtime.h"

#include <QCheckBox>
#include <QLabel>
#include <QMdiArea>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

class DalyCalculatorTest : public QObject {
    Q_OBJECT
private:
    ScriptedPrompts prompts_;
    QTemporaryDir dir_;

    static void typeAges(QTableView* grid, const QStringList& ages) {
        for (int i = 0; i < ages.size(); ++i)
            QVERIFY(typeCell(grid, i, 0, ages[i]));
    }
    static void typeRow(QTableView* grid, int row, const QStringList& values) {
        typeInputs(grid, row, values);
    }

private slots:
    void init() {
        QVERIFY(dir_.isValid());
        prompts_.clear();
        setPromptService(&prompts_);
        calculatorSettings(dir_.path());
    }
    void cleanup() { setPromptService(nullptr); }

    void opensOnce() {
        QMdiArea area;
        area.show();
        frmDALYCal* w = openDalyCalculator(&area);
        QCOMPARE(w->windowTitle(), QString("DALY Calculator"));
        QCOMPARE(openDalyCalculator(&area), w);
        QCOMPARE(area.subWindowList().size(), 1);
        QCOMPARE(cellText(w->flexBuiltInDAP, 0, 0), QString("Built In-0"));
        area.closeAllSubWindows();
    }

    void dalyJoinsYldAndYll() {
        frmDALYCal w;
        w.show();
        QVERIFY(w.chkFeasibility->isChecked());
        typeAges(w.AgeDef, {"0", "1", "5"});
        typeAges(w.AgeDefYll, {"0", "5"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        QCOMPARE(w.lblTitle->text(), QString("Epidemiological Data Input Sheet for YLD"));
        QCOMPARE(head(w.flexData, 4), QString("Cases"));
        QCOMPARE(w.flexYLLData->model()->rowCount(), 4);
        // YLD rows F0, F01-4, F5-w, M0, M01-4, M5-w; YLL rows F0-4, F5-w, M0-4, M5-w.
        const std::vector<QStringList> yld{{"0.5", "2", "0.5", "10"}, {"2", "1", "0.2", "5"},
                                           {"30", "4", "0.1", "8"},   {"0.5", "2", "0.5", "12"},
                                           {"3", "1", "0.2", "6"},    {"40", "1", "0.3", "2"}};
        for (int r = 0; r < 6; ++r)
            typeRow(w.flexData, r, yld[r]);
        typeRow(w.flexYLLData, 0, {"4", "2.5"});
        typeRow(w.flexYLLData, 1, {"6", "30"});
        typeRow(w.flexYLLData, 2, {"3", "1.5"});
        typeRow(w.flexYLLData, 3, {"5", "47.25"});
        QTest::mouseClick(w.ID_COMPUTE, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please select r,k,Beta and c values from the list"}));
        prompts_.clear();
        clickCell(w.flexBuiltInDAP, 0, 5);
        QTest::mouseClick(w.ID_COMPUTE, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        const int iyld = columnOf(w.flexData, "IYLD[0,0]");
        const int daly = columnOf(w.flexData, "DALY[0,0]");
        const int yll = columnOf(w.flexYLLData, "YLL[0,0]");
        QVERIFY(iyld > 0 && daly > 0 && yll > 0);
        QCOMPARE(columnOf(w.flexYLLData, "DALY[0,0]"), -1); // the finer YLD side is the base
        QCOMPARE(cellText(w.flexData, 0, iyld), fixed(0.5 * 2 * 10));
        QCOMPARE(cellText(w.flexYLLData, 0, yll), fixed(4 * femaleE(2.5)));
        QCOMPARE(cellText(w.flexData, 0, daly), fixed(10 + 4 * femaleE(2.5)));
        QCOMPARE(cellText(w.flexData, 1, daly), fixed(0.2 * 1 * 5));
        QCOMPARE(cellText(w.flexData, 5, daly), fixed(0.3 * 2 + 5 * maleE(47.25)));
    }

    void setsThatDoNotMap() {
        frmDALYCal w;
        w.show();
        typeAges(w.AgeDef, {"0", "3"});
        typeAges(w.AgeDefYll, {"0", "5"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        QCOMPARE(prompts_.messages(),
                 QStringList(
                     {"The data you have entered in YLL and YLd do not map. Please enter the proper data"}));
        QCOMPARE(w.flexData->model()->rowCount(), 0);
        prompts_.clear();
        w.chkFeasibility->setChecked(false);
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        QVERIFY(prompts_.messages().isEmpty());
        w.chkFeasibility->setChecked(true);
        QTest::mouseClick(w.ID_COMPUTE, Qt::LeftButton);
        QCOMPARE(
            prompts_.messages(),
            QStringList({"!!! The Asg you have entered are not feesable. Please Enter valid asgs  !!!"}));
        QCOMPARE(prompts_.shown()[0].title, QString("Feesability Check"));
    }

    void missingSidesAndInputs() {
        frmDALYCal w;
        w.show();
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please fill the Yll  ASG"}));
        prompts_.clear();
        typeAges(w.AgeDefYll, {"0"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please fill the YLD  ASG"}));
        prompts_.clear();
        typeAges(w.AgeDef, {"0"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        clickCell(w.flexBuiltInDAP, 1, 5);
        typeRow(w.flexData, 0, {"20", "5"}); // weight and cases left blank
        QTest::mouseClick(w.ID_COMPUTE, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please fill the Requried input and then compute DALYs"}));
    }

    void helpSaysOptionNotAvailable() {
        frmDALYCal w;
        w.mnu_Help->trigger();
        QCOMPARE(prompts_.messages(), QStringList({"Option not available"}));
    }
};

QTEST_MAIN(DalyCalculatorTest)
#include "daly_calculator_test.moc"
