// The open-interval calculator as a user uses it: starts typed into the grid, the family, the growth
// rate and the deaths, Calculate, and the messages of what it cannot take.

#include "demography/forms/frmoiagd.h"
#include "demography/open_interval.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "grid_gestures.h"
#include "platform/prompts.h"
#include "screenshots.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>

using namespace vesk;
using namespace vesk::test;

class OpenIntervalCalculator : public QObject {
    Q_OBJECT

    ScriptedPrompts prompts_;

    std::unique_ptr<frmoiagd> window() {
        auto w = std::make_unique<frmoiagd>();
        w->show();
        return w;
    }

private slots:
    void init() {
        setPromptService(&prompts_);
        prompts_.clear();
        QVERIFY(FnReadOAIGD(settings().MtxOAIGD, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")));
    }
    void cleanup() {
        setPromptService(nullptr);
        QCOMPARE(prompts_.unanswered(), 0);
    }

    void calculatesEachStartTyped() {
        auto w = window();
        typeCell(w->MsGrdOiagd, 0, 0, "85");
        typeCell(w->MsGrdOiagd, 1, 0, "45");
        w->cb_cdml->setCurrentText("West");
        w->tb_pgr->setText("0.02");
        w->tbsum45->setText("600");
        w->tbsum10->setText("1000");
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QVERIFY(prompts_.shown().isEmpty());
        for (int row : {1, 2}) {
            const int boai = w->grid().textMatrix(row, 0).toInt();
            const double want = FnOIAGD("WEST", boai, 0.6, 0.02).toDouble();
            QCOMPARE(w->grid().textMatrix(row, 1).toDouble(), want); // the shown text reads back exactly
        }
    }

    void startOutsideTheNineOrTwiceIsRefused() {
        auto w = window();
        typeCell(w->MsGrdOiagd, 0, 0, "90");
        QCOMPARE(prompts_.messages(), QStringList{"Age Intervals should be 45,50,55,60,65,70,75,80,85"});
        QCOMPARE(w->grid().textMatrix(1, 0), QString());
        prompts_.clear();
        typeCell(w->MsGrdOiagd, 0, 0, "60");
        typeCell(w->MsGrdOiagd, 1, 0, "60");
        QCOMPARE(prompts_.messages(), QStringList{"Boai already exist"});
        QCOMPARE(w->grid().textMatrix(2, 0), QString());
    }

    void withoutFamilyNoClosesTheForm() {
        auto w = window();
        prompts_.answer(Answer::Yes);
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QCOMPARE(prompts_.messages(),
                 QStringList{"Enter Coal and Demeney Family of Life Tables.\nPressing No will close the form"});
        QVERIFY(w->isVisible());
        prompts_.answer(Answer::No);
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QVERIFY(!w->isVisible());
        w.release(); // closed and deleted by itself
    }

    void withoutGrowthRateYesReturnsNoGoesOn() {
        auto w = window();
        typeCell(w->MsGrdOiagd, 0, 0, "70");
        w->cb_cdml->setCurrentText("North");
        prompts_.answer(Answer::Yes);
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QCOMPARE(w->grid().textMatrix(1, 1), QString());
        prompts_.answer(Answer::No);
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QCOMPARE(prompts_.messages().size(), 2);
        QCOMPARE(prompts_.messages()[1], QStringLiteral("Population Growth Rate is not entered.  Do you want to enter"));
        QCOMPARE(w->grid().textMatrix(1, 1).toDouble(), -67.394152); // a alone: no ratio, no growth
    }

    void growthRateInPerCentIsRefused() {
        auto w = window();
        typeCell(w->MsGrdOiagd, 0, 0, "70");
        w->cb_cdml->setCurrentText("East");
        w->tb_pgr->setText("2");
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QCOMPARE(prompts_.messages().size(), 1);
        QVERIFY(prompts_.messages()[0].contains("0.02 for 2 per cent"));
        QCOMPARE(w->grid().textMatrix(1, 1), QString());
    }

    void deathsAboveTenOfZeroIsADivisionError() {
        auto w = window();
        typeCell(w->MsGrdOiagd, 0, 0, "70");
        w->cb_cdml->setCurrentText("South");
        w->tb_pgr->setText("0.01");
        w->tbsum45->setText("10");
        w->tbsum10->setText("0");
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList{"Division by zero"});
        QVERIFY(w->isVisible());
    }

    void deathsTakeDigitsOnly() {
        auto w = window();
        w->tbsum45->setText("12.5");
        w->cb_cdml->setCurrentText("South");
        w->tb_pgr->setText("0.01");
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList{"No of Deaths should be an integer value"});
        QCOMPARE(w->tbsum45->text(), QString());
        prompts_.clear();
        w->tbsum45->setText("12");
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList{"Deaths are not available"});
    }

    void screenshot() {
        auto w = window();
        typeCell(w->MsGrdOiagd, 0, 0, "80");
        typeCell(w->MsGrdOiagd, 1, 0, "85");
        w->cb_cdml->setCurrentText("West");
        w->tb_pgr->setText("0.015");
        w->tbsum45->setText("5400");
        w->tbsum10->setText("8200");
        QTest::mouseClick(w->cmd_calculate, Qt::LeftButton);
        QTemporaryDir dir;
        const QImage image = w->grab().toImage();
        QVERIFY(hasContent(image));
        QVERIFY(image.save(screenshotFolder(dir) + "/open_interval_calculator.png"));
    }
};

QTEST_MAIN(OpenIntervalCalculator)
#include "frmoiagd_test.moc"
