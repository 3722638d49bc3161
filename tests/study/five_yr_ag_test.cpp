// FiveYrAg, "Define Age Interval", used as a user would: type an upper age, choose the first years,
// press OK, and read the list and the remembered choices.

#include "platform/prompts.h"
#include "foundation/settings.h"
#include "study/forms/five_yr_ag.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace vesk;

class FiveYrAgTest : public QObject {
    Q_OBJECT
private:
    ScriptedPrompts prompts_;
    PromptService* previous_ = nullptr;

    static void typeUpperAge(FiveYrAg& d, const QString& text) {
        QLineEdit* edit = d.cmbUpperAge->lineEdit();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }

private slots:
    void init() {
        prompts_.clear();
        setPromptService(&prompts_);
        settings().MinMaxAge = 45;
        settings().MaxMaxAge = 85;
        settings().ChoiceFiveYrs = Cell(0);
        settings().UpperAgeIntvl = Cell(1);
    }
    void cleanup() { setPromptService(nullptr); }

    void opensWithItsChoices() {
        FiveYrAg d;
        QCOMPARE(d.windowTitle(), QString("Define Age Interval"));
        QCOMPARE(d.cmbUpperAge->currentText(), QString("85"));
        QCOMPARE(d.cmbUpperAge->count(), 9);
        QCOMPARE(d.cmbUpperAge->itemText(0), QString("45"));
        QVERIFY(d.OptFirstYears[0]->isChecked());
        QCOMPARE(d.OptFirstYears[1]->text(), QString("0 , 1 , 2-4 "));
        QVERIFY(d.OptOpen->isChecked());
    }

    void outOfRangeIsRefusedAtOnceAndCleared() {
        settings().MinMaxAge = 50;
        settings().MaxMaxAge = 80;
        FiveYrAg d;
        d.show();
        typeUpperAge(d, "85");
        QCOMPARE(prompts_.messages(),
                 QStringList({"Entered value should be Greater than 50 less than 80\n Please "
                              "check Misc Tab/Preferences form for MinmaxAge or MaxMaxAge"}));
        QCOMPARE(d.cmbUpperAge->currentText(), QString());
        prompts_.clear();
        typeUpperAge(d, "50"); // the limits themselves pass
        QVERIFY(prompts_.messages().isEmpty());
        typeUpperAge(d, "80");
        QVERIFY(prompts_.messages().isEmpty());
    }

    void limitsDefaultWhenEitherIsZero() {
        settings().MinMaxAge = 0;
        settings().MaxMaxAge = 70;
        FiveYrAg d;
        d.show();
        typeUpperAge(d, "40");
        QCOMPARE(prompts_.messages().size(), 1);
        QVERIFY(prompts_.messages()[0].startsWith("Entered value should be Greater than 45 less than 85"));
    }

    void notDivisibleByFiveIsRefused() {
        FiveYrAg d;
        d.show();
        typeUpperAge(d, "62");
        QCOMPARE(prompts_.messages(), QStringList({" The entered value should be divisble by 5"}));
        QCOMPARE(d.cmbUpperAge->currentText(), QString());
    }

    void blankUpperAgeOnOk() {
        FiveYrAg d;
        d.show();
        d.cmbUpperAge->setEditText(QString());
        QTest::mouseClick(d.cmdOK, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"please fill  Upper/Last Age Group"}));
        QVERIFY(d.isVisible());
        QVERIFY(d.ages().isEmpty());
    }

    void okBuildsTheListAndRemembersTheChoices() {
        FiveYrAg d;
        d.show();
        typeUpperAge(d, "45");
        d.OptFirstYears[1]->click();
        d.OptClose->click();
        QTest::mouseClick(d.cmdOK, Qt::LeftButton);
        QVERIFY(prompts_.messages().isEmpty());
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(d.ages(), QList<int>({0, 1, 2, 5, 10, 15, 20, 25, 30, 35, 40, 45}));
        QCOMPARE(settings().ChoiceFiveYrs.toDouble(), 1.0);
        QCOMPARE(settings().UpperAgeIntvl.toDouble(), 0.0);
        // The closed choice changes no list: the same list as with "Open".
        FiveYrAg again;
        QVERIFY(again.OptFirstYears[1]->isChecked());
        QVERIFY(again.OptClose->isChecked());
        again.show();
        again.OptFirstYears[2]->click();
        typeUpperAge(again, "60");
        QTest::mouseClick(again.cmdOK, Qt::LeftButton);
        QCOMPARE(again.ages(), QList<int>({0, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60}));
    }
};

QTEST_MAIN(FiveYrAgTest)
#include "five_yr_ag_test.moc"
