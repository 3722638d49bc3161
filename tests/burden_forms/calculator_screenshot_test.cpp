// Pictures of the four calculator windows, filled and computed, taken offscreen. With
// VESK_SCREENSHOT_DIR set they are kept there (docs/screenshots); otherwise they go to a temporary
// folder and only their making is tested.

#include "burden/forms/frm_daly_cal.h"
#include "burden/forms/frm_yll_cal.h"
#include "calc_form_support.h"
#include "screenshots.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

namespace {

void typeAges(QTableView* grid, const QStringList& ages) {
    for (int i = 0; i < ages.size(); ++i)
        typeCell(grid, i, 0, ages[i]);
}

void typeRows(QTableView* grid, const std::vector<QStringList>& rows) {
    for (int r = 0; r < static_cast<int>(rows.size()); ++r)
        for (int c = 0; c < rows[r].size(); ++c)
            typeCell(grid, r, c + 1, rows[r][c]);
}

} // namespace

class CalculatorScreenshotTest : public QObject {
    Q_OBJECT
private:
    ScriptedPrompts prompts_;
    QTemporaryDir scratch_;
    QString dir_;

    void save(QWidget& w, const QString& name) {
        w.resize(1040, 660);
        QTest::qWait(50);
        const QImage image = w.grab().toImage();
        QVERIFY(hasContent(image));
        QVERIFY(image.save(dir_ + u'/' + name));
    }

private slots:
    void initTestCase() {
        dir_ = screenshotFolder(scratch_);
        setPromptService(&prompts_);
        calculatorSettings(scratch_.path());
    }
    void cleanupTestCase() { setPromptService(nullptr); }

    void yll() {
        frmYLLCal w(CalculatorTask::Yll);
        w.show();
        typeAges(w.AgeDef, {"0", "1", "5", "15", "45", "60"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        typeRows(w.flexData, {{"120", "0.2"},
                              {"35", "2.1"},
                              {"18", "9.4"},
                              {"64", "31"},
                              {"150", "53.2"},
                              {"410", "72.5"},
                              {"160", "0.2"},
                              {"40", "2"},
                              {"22", "9.1"},
                              {"110", "30.4"},
                              {"260", "52.8"},
                              {"380", "70.9"}});
        clickCell(w.flexBuiltInDAP, 0, 5);
        clickCell(w.flexBuiltInDAP, 1, 5);
        w.txtUserIden->setText("District health office");
        w.cbCOBLst->setEditText("Tuberculosis");
        QTest::mouseClick(w.ID_COMPUTE_YLL, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        save(w, "calc_yll.png");
    }

    void iyld() {
        frmYLLCal w(CalculatorTask::Iyld);
        w.show();
        typeAges(w.AgeDef, {"0", "5", "15", "45", "60"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        typeRows(w.flexData, {{"2.5", "1.2", "0.27", "900"},
                              {"9.5", "0.9", "0.27", "640"},
                              {"29", "0.7", "0.27", "1300"},
                              {"52", "0.8", "0.27", "700"},
                              {"68", "0.9", "0.27", "520"},
                              {"2.4", "1.1", "0.27", "950"},
                              {"9.7", "0.9", "0.27", "600"},
                              {"30", "0.7", "0.27", "1450"},
                              {"51.5", "0.8", "0.27", "810"},
                              {"67", "1", "0.27", "480"}});
        clickCell(w.flexBuiltInDAP, 0, 5);
        clickCell(w.flexBuiltInDAP, 1, 5);
        w.cbCOBLst->setEditText("Malaria");
        QTest::mouseClick(w.ID_COMPUTE_YLD, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        save(w, "calc_iyld.png");
    }

    void pyld() {
        frmYLLCal w(CalculatorTask::Pyld);
        w.show();
        typeAges(w.AgeDef, {"0", "5", "15", "45", "60"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        typeRows(w.flexData, {{"1200", "0.1", "2.5"},
                              {"4300", "0.1", "10"},
                              {"15000", "0.1", "30"},
                              {"9800", "0.1", "52"},
                              {"7600", "0.1", "68"},
                              {"1100", "0.1", "2.5"},
                              {"4100", "0.1", "10"},
                              {"13800", "0.1", "30"},
                              {"9100", "0.1", "52"},
                              {"6900", "0.1", "68"}});
        clickCell(w.flexBuiltInDAP, 0, 5);
        w.cbCOBLst->setEditText("Asthma");
        QTest::mouseClick(w.ID_COMPUTE_PYLD, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        save(w, "calc_pyld.png");
    }

    void daly() {
        frmDALYCal w;
        w.show();
        typeAges(w.AgeDef, {"0", "1", "5", "15", "30", "45", "60", "70"});
        typeAges(w.AgeDefYll, {"0", "5", "15", "45", "60"});
        QTest::mouseClick(w.ID_BUILD, Qt::LeftButton);
        std::vector<QStringList> yld;
        const double onset[] = {0.3, 2.5, 9.5, 22, 37, 52, 64, 76};
        for (int sex = 0; sex < 2; ++sex)
            for (double a : onset)
                yld.push_back({QString::number(a), "1.5", "0.21", QString::number(400 + 37 * a + 50 * sex)});
        typeRows(w.flexData, yld);
        typeRows(w.flexYLLData, {{"95", "1.1"},
                                 {"20", "9"},
                                 {"60", "31"},
                                 {"140", "53"},
                                 {"300", "71"},
                                 {"110", "1.2"},
                                 {"25", "9.2"},
                                 {"90", "30"},
                                 {"180", "52.5"},
                                 {"260", "70"}});
        clickCell(w.flexBuiltInDAP, 1, 5);
        w.cbCOBLst->setEditText("Diarrhoeal diseases");
        QTest::mouseClick(w.ID_COMPUTE, Qt::LeftButton);
        QVERIFY2(prompts_.messages().isEmpty(), qPrintable(prompts_.messages().join('|')));
        w.resize(1200, 700);
        QTest::qWait(50);
        const QImage image = w.grab().toImage();
        QVERIFY(hasContent(image));
        QVERIFY(image.save(dir_ + QStringLiteral("/calc_daly.png")));
    }
};

QTEST_MAIN(CalculatorScreenshotTest)
#include "calculator_screenshot_test.moc"
