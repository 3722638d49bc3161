// frmYLLCal in its three tasks, used as a user would: list the ages, build, type the inputs, mark a
// built-in or a custom parameter set, compute, read the result columns; print and save.

#include "burden/forms/calculators_open.h"
#include "burden/forms/frm_yll_cal.h"
#include "burden/kernel.h"
#include "calc_form_support.h"
#include "platform/runtime.h"
#include "read_back.h"
#include "study/forms/five_yr_ag.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

class YllCalculatorTest : public QObject {
    Q_OBJECT
private:
    ScriptedPrompts prompts_;
    QTemporaryDir dir_;

    // Types the lower ages and presses "Build Age Intervals".
    static void buildAges(frmYLLCal& w, const QStringList& ages) {
        for (int i = 0; i < ages.size(); ++i)
            QVERIFY(typeCell(w.AgeDef, i, 0, ages[i]));
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
    }
    // Types a row of inputs, from the first input column.
    static void typeRow(frmYLLCal& w, int row, const QStringList& values) {
        typeInputs(w.flexData, row, values);
    }

private slots:
    void init() {
        QVERIFY(dir_.isValid());
        prompts_.clear();
        setPromptService(&prompts_);
        calculatorSettings(dir_.path());
    }
    void cleanup() { setPromptService(nullptr); }

    void openersKeepOneWindowPerTask() {
        QMdiArea area;
        area.resize(1200, 800);
        area.show();
        frmYLLCal* yll = openYllCalculator(&area);
        QVERIFY(yll);
        QCOMPARE(yll->windowTitle(), QString("YLL Calculator"));
        QCOMPARE(openYllCalculator(&area), yll);
        frmYLLCal* iyld = openIyldCalculator(&area);
        QCOMPARE(iyld->windowTitle(), QString("IYLD Calculator"));
        QVERIFY(iyld != yll);
        QCOMPARE(openPyldCalculator(&area)->windowTitle(), QString("PYLD Calculator"));
        QCOMPARE(area.subWindowList().size(), 3);
        QVERIFY(openYllCalculator(&area)->isVisible());
        QCOMPARE(area.activeSubWindow()->widget(), yll);
        area.closeAllSubWindows();
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(openYllCalculator(&area) != nullptr);
        area.closeAllSubWindows();
    }

    void yllWithBuiltInZeroIsLifeExpectancyTimesDeaths() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        QVERIFY(w.ID_COMPUTE_YLL->isVisible());
        QVERIFY(!w.ID_COMPUTE_YLD->isVisible());
        buildAges(w, {"0", "5"});
        QCOMPARE(w.lblTitle->text(), QString("Data Inputs and Results"));
        QCOMPARE(w.flexData->model()->rowCount(), 4);
        QCOMPARE(cellText(w.flexData, 0, 0), QString("F0-4"));
        QCOMPARE(head(w.flexData, 1), QString("Deaths"));
        QCOMPARE(head(w.flexData, 2), QString("Age at Death"));
        typeRow(w, 0, {"10", "2.5"});
        typeRow(w, 1, {"20", "30"});
        typeRow(w, 2, {"12", "2.5"});
        typeRow(w, 3, {"22", "47.25"});
        clickCell(w.flexBuiltInDAP, 0, 5);
        QCOMPARE(cellText(w.flexBuiltInDAP, 0, 5), QString("True"));
        QTest::mouseClick(w.ID_COMPUTE_YLL, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        const int col = columnOf(w.flexData, "YLL[0,0]");
        QCOMPARE(col, 3);
        QCOMPARE(cellText(w.flexData, 0, col), fixed(10 * femaleE(2.5)));
        QCOMPARE(cellText(w.flexData, 1, col), fixed(20 * femaleE(30)));
        QCOMPARE(cellText(w.flexData, 2, col), fixed(12 * maleE(2.5)));
        QCOMPARE(cellText(w.flexData, 3, col), fixed(22 * maleE(47.25)));
        // Fewer decimals on the same column.
        w.ID_DecPlcs->setCurrentIndex(0);
        QCOMPARE(cellText(w.flexData, 0, col), QString("805"));
        // "Input Data" takes the results away and keeps the inputs.
        QTest::mouseClick(w.CmdInputData, Qt::LeftButton);
        QCOMPARE(w.flexData->model()->columnCount(), 3);
        QCOMPARE(cellText(w.flexData, 1, 1), QString("20"));
    }

    void yllWithACustomSet() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        buildAges(w, {"0", "15"});
        typeRow(w, 1, {"3", "40"});
        QVERIFY(typeCell(w.flexBuiltInDAP, 4, 1, "1.5")); // refused
        QCOMPARE(prompts_.messages(), QStringList({"The value should be between 0 and 1"}));
        QCOMPARE(prompts_.shown()[0].title, QString("VESK"));
        QCOMPARE(cellText(w.flexBuiltInDAP, 4, 1), QString());
        prompts_.clear();
        QVERIFY(typeCell(w.flexBuiltInDAP, 4, 1, "0.03"));
        QVERIFY(typeCell(w.flexBuiltInDAP, 4, 2, "1"));
        QVERIFY(typeCell(w.flexBuiltInDAP, 4, 3, "0.04"));
        QVERIFY(typeCell(w.flexBuiltInDAP, 4, 4, "0.1658"));
        clickCell(w.flexBuiltInDAP, 4, 5);
        clickCell(w.flexBuiltInDAP, 0, 5);
        QTest::mouseClick(w.ID_COMPUTE_YLL, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        // One column per marked set, top to bottom.
        QCOMPARE(head(w.flexData, 3), QString("YLL[0,0]"));
        QCOMPARE(head(w.flexData, 4), QString("YLL[0.03,1]"));
        const float L = FnLifeExpAt(settings().MtxLTSKRO, 40.0f, "F");
        const double custom = 3 * FnYLLF(40.0f, L, 0.03f, 1.0f, Cell("0.04"), Cell("0.1658"));
        QCOMPARE(cellText(w.flexData, 1, 4), fixed(custom));
        QCOMPARE(cellText(w.flexData, 1, 3), fixed(3 * femaleE(40)));
        QCOMPARE(cellText(w.flexData, 0, 4), QString()); // no age: Null
    }

    void badAgeIsRefused() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        buildAges(w, {"0", "5"});
        typeRow(w, 0, {"10", "7"}); // 7 is not in F0-4
        clickCell(w.flexBuiltInDAP, 0, 5);
        QTest::mouseClick(w.ID_COMPUTE_YLL, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please enter the currect AGD values"}));
        QCOMPARE(w.flexData->model()->columnCount(), 3);
    }

    void noSetAndNoAges() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please fill the Age definition"}));
        prompts_.clear();
        buildAges(w, {"0"});
        QTest::mouseClick(w.ID_COMPUTE_YLL, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please select the r,k, Beta,c values from the list"}));
    }

    void keysOtherThanAgesAreRefused() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        QLineEdit* ageEditor = openEditor(w.AgeDef, 0, 0);
        QVERIFY(ageEditor);
        QTest::keyClicks(ageEditor, "6x");
        QCOMPARE(prompts_.messages(), QStringList({"Not a valid entry"}));
        QTest::keyClicks(ageEditor, "W");
        QCOMPARE(ageEditor->text(), QString("6W"));
        QTest::keyClick(ageEditor, Qt::Key_Escape);
        prompts_.clear();
        buildAges(w, {"0"});
        QLineEdit* dataEditor = openEditor(w.flexData, 0, 1);
        QVERIFY(dataEditor);
        QTest::keyClicks(dataEditor, "1-");
        QCOMPARE(prompts_.messages(), QStringList({"Not a Valid Entry"}));
        QCOMPARE(dataEditor->text(), QString("1"));
        QTest::keyClick(dataEditor, Qt::Key_Escape);
        // The custom row takes digits and "." only, without a word.
        prompts_.clear();
        QLineEdit* dapEditor = openEditor(w.flexBuiltInDAP, 4, 3);
        QVERIFY(dapEditor);
        QTest::keyClicks(dapEditor, "0.0a4");
        QCOMPARE(dapEditor->text(), QString("0.04"));
        QVERIFY(prompts_.messages().isEmpty());
        QTest::keyClick(dapEditor, Qt::Key_Escape);
        // Built-in rows cannot be typed into.
        QVERIFY(!openEditor(w.flexBuiltInDAP, 1, 1));
    }

    void iyldWithBuiltInZeroIsWeightDurationCases() {
        frmYLLCal w(CalculatorTask::Iyld);
        w.show();
        QVERIFY(w.ID_COMPUTE_YLD->isVisible());
        buildAges(w, {"0", "15"});
        QCOMPARE(w.lblTitle->text(), QString("Epidemiological Data Input Sheet for YLD"));
        QCOMPARE(head(w.flexData, 4), QString("Incident Cases"));
        typeRow(w, 0, {"3", "2.5", "0.2", "100"});
        typeRow(w, 3, {"20", "0.5", "0.6", "3"});
        clickCell(w.flexBuiltInDAP, 0, 5);
        clickCell(w.flexBuiltInDAP, 3, 5);
        QTest::mouseClick(w.ID_COMPUTE_YLD, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        QCOMPARE(cellText(w.flexData, 0, columnOf(w.flexData, "IYLD[0,0]")), fixed(0.2 * 2.5 * 100));
        QCOMPARE(cellText(w.flexData, 3, columnOf(w.flexData, "IYLD[0,0]")), fixed(0.6 * 0.5 * 3));
        QCOMPARE(cellText(w.flexData, 0, columnOf(w.flexData, "IYLD[0.03,0]")),
                 fixed((1 - std::exp(-0.03 * 2.5)) / 0.03 * 0.2 * 100));
        // An onset outside its group.
        typeRow(w, 1, {"10", "1", "0.1", "1"}); // 10 is not in F15-w
        QTest::mouseClick(w.ID_COMPUTE_YLD, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"Please enter the currect Age at Onset values"}));
    }

    void pyldWithBuiltInZeroIsWeightTimesCases() {
        frmYLLCal w(CalculatorTask::Pyld);
        w.show();
        QVERIFY(w.ID_COMPUTE_PYLD->isVisible());
        buildAges(w, {"0"});
        typeRow(w, 0, {"50", "0.4", "30"});
        typeRow(w, 1, {"8", "0.5", "70"});
        clickCell(w.flexBuiltInDAP, 0, 5);
        QTest::mouseClick(w.ID_COMPUTE_PYLD, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        QCOMPARE(cellText(w.flexData, 0, columnOf(w.flexData, "PYLD[0,0]")), fixed(20));
        QCOMPARE(cellText(w.flexData, 1, columnOf(w.flexData, "PYLD[0,0]")), fixed(4));
    }

    // The pop-up of the age grid: press Down `item` + 1 times and Enter in the menu that opens.
    static void choosePopupItem(QTableView* grid, int item) {
        QTimer::singleShot(0, [item] {
            QWidget* menu = QApplication::activePopupWidget();
            QVERIFY(qobject_cast<QMenu*>(menu));
            for (int i = 0; i <= item; ++i)
                QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        emit grid->customContextMenuRequested(QPoint(5, 5));
    }

    void quickFillFromThePopup() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        choosePopupItem(w.AgeDef, 0);
        QCOMPARE(w.ageModel().ages(), QStringList({"0", "5", "15", "45", "60"}));
        choosePopupItem(w.AgeDef, 1);
        QCOMPARE(w.ageModel().ages(), QStringList({"0", "5", "15", "30", "45", "60", "70"}));
        // "Five Year Age Group" opens FiveYrAg; an upper age of 50 with "0 , 1 -4 ".
        bool answered = false;
        QTimer::singleShot(50, [&answered] {
            auto* dialog = qobject_cast<FiveYrAg*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            dialog->cmbUpperAge->setEditText("50");
            dialog->OptFirstYears[0]->click();
            QTest::mouseClick(dialog->cmdOK, Qt::LeftButton);
            answered = true;
        });
        choosePopupItem(w.AgeDef, 2);
        QVERIFY(answered);
        QCOMPARE(w.ageModel().ages(),
                 QStringList({"0", "1", "5", "10", "15", "20", "25", "30", "35", "40", "45", "50"}));
        QVERIFY(prompts_.messages().isEmpty());
    }

    void helpSaysItIsNotBuilt() {
        frmYLLCal w(CalculatorTask::Yll);
        w.mnu_Help->trigger();
        QCOMPARE(prompts_.messages(), QStringList({"Yet to be developed"}));
    }

    void saveAndPrint() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        buildAges(w, {"0"});
        typeRow(w, 0, {"10", "30"});
        clickCell(w.flexBuiltInDAP, 0, 5);
        QTest::mouseClick(w.ID_COMPUTE_YLL, Qt::LeftButton);
        w.txtUserIden->setText("Analyst A");
        w.cbCOBLst->setEditText("Malaria");
        const QString path = dir_.filePath("yll.txt");
        prompts_.fileAnswer(path);
        w.mnu_File_Save->trigger();
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(f.readAll());
        QVERIFY(text.startsWith("YLL Calculator\r\nUser Indentification;Analyst A\r\nCause;Malaria\r\n"));
        QVERIFY(text.contains("ASG;Deaths;Age at Death;YLL[0,0]\r\nF0-w;10;30;" + fixed(10 * femaleE(30)) +
                              "\r\n"));
        // Cancelling the file dialog writes nothing.
        prompts_.fileAnswer(std::nullopt);
        w.mnu_File_Save->trigger();
        if (!QPrinterInfo::availablePrinters().isEmpty())
            QSKIP("a printer is attached: printing would open the print dialog");
        const QString pdf = dir_.filePath("yll.pdf");
        w.txtUserIden->setText("Office staff"); // words a typesetter would ligate
        prompts_.fileAnswer(pdf);
        w.mnu_File_Print->trigger();
        QFile p(pdf);
        QVERIFY(p.open(QIODevice::ReadOnly));
        QVERIFY(p.read(5) == "%PDF-");
        const QString printed = pdfText(pdf);
        for (const QString& words :
             {QString("Office staff"), QString("Malaria"), QString("Age at Death"), fixed(10 * femaleE(30))})
            QVERIFY2(printed.contains(words), qPrintable(words + " not in:\n" + printed));
    }
};

QTEST_MAIN(YllCalculatorTest)
#include "yll_calculator_test.moc"
