// The interpolation tool as a user uses it: the upper age limit, the data typed or imported, the
// output age groups, Build Single Year, the chart of a sudden change, Save As read back, Clear All.

#include "demography/forms/frm_interpolate.h"
#include "demography/sprague.h"
#include "foundation/settings.h"
#include "grid_gestures.h"
#include "inputs/foreign_file.h"
#include "platform/prompts.h"
#include "screenshots.h"

#include <QFile>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

class InterpolatorForm : public QObject {
    Q_OBJECT

    ScriptedPrompts prompts_;
    QTemporaryDir dir_;
    const QStringList pop_{"500", "480", "470", "460", "450", "440", "2000"};

    std::unique_ptr<frmInterpolate> window() {
        auto w = std::make_unique<frmInterpolate>();
        w->show();
        return w;
    }
    // The ladder 0, 5, ..., 25, "30-w" and the population typed.
    std::unique_ptr<frmInterpolate> filled() {
        auto w = window();
        prompts_.inputAnswer(QStringLiteral("30"));
        QTest::mouseClick(w->Cmdupplmt, Qt::LeftButton);
        for (int i = 0; i < pop_.size(); ++i)
            typeCell(w->flexSource, i, 1, pop_[i]);
        return w;
    }

private slots:
    void init() {
        setPromptService(&prompts_);
        prompts_.clear();
        settings().AppPath = QStringLiteral(VESK_BIN_DIR); // the delivered settings file holds the panels
        settings().LfTbDecPlcs = 2;
    }
    void cleanup() {
        setPromptService(nullptr);
        QCOMPARE(prompts_.unanswered(), 0);
    }

    void upperLimitMakesTheLadder() {
        auto w = filled();
        QCOMPARE(w->source().rows(), 8);
        QCOMPARE(w->source().textMatrix(7, 0), QStringLiteral("30-w"));
        QCOMPARE(w->source().textMatrix(0, 1), QStringLiteral("Population"));
        prompts_.inputAnswer(QStringLiteral("33"));
        QTest::mouseClick(w->Cmdupplmt, Qt::LeftButton);
        QCOMPARE(prompts_.messages().last(), QStringLiteral("The upper age limit should be divisible by 5"));
    }

    void sourceTypedWithoutALimitIsRefused() {
        auto w = window();
        typeCell(w->flexSource, 0, 0, "0");
        QCOMPARE(prompts_.messages(), QStringList{"Pls. enter the upper age limit"});
        QCOMPARE(w->source().textMatrix(1, 0), QString());
    }

    void buildsSingleYearsAndOutputGroups() {
        auto w = filled();
        typeCell(w->FlexOPAgGrps, 0, 0, "0");
        typeCell(w->FlexOPAgGrps, 1, 0, "15");
        typeCell(w->FlexOPAgGrps, 2, 0, "25-w");
        QTest::mouseClick(w->CmdBuiltSngyr, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList());
        QCOMPARE(w->dest().rows(), 32); // the head, 0 to 29 and the open group
        QCOMPARE(w->dest().textMatrix(31, 0), QStringLiteral("30"));
        QCOMPARE(w->dest().textMatrix(31, 1), QStringLiteral("2000."));
        QCOMPARE(w->output().textMatrix(2, 1), QStringLiteral("910.")); // 15-24: two whole groups
    }

    void outputGroupsAreChecked() {
        auto w = window();
        typeCell(w->FlexOPAgGrps, 0, 0, "5");
        QCOMPARE(prompts_.messages(), QStringList{"Input data is missing"});
        prompts_.clear();
        w = filled();
        typeCell(w->FlexOPAgGrps, 0, 0, "10");
        typeCell(w->FlexOPAgGrps, 1, 0, "10");
        typeCell(w->FlexOPAgGrps, 1, 0, "45");
        QCOMPARE(prompts_.messages(),
                 QStringList({"The entered  age group may be either repetative [or] may be less than the Previous age "
                              "group",
                              "Your Output Age group should be within your upper age limit"}));
    }

    void tenYearGroupsAreNotBuilt() {
        auto w = window();
        QTest::mouseClick(w->OptTnaggrp, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList{"Yet to be developed"});
        QVERIFY(w->Optfvnaggrp->isChecked());
    }

    void suddenChangeDrawsTheChartOnYes() {
        auto w = window();
        prompts_.inputAnswer(QStringLiteral("30"));
        QTest::mouseClick(w->Cmdupplmt, Qt::LeftButton);
        const QStringList jump{"10000", "0", "0", "0", "0", "0", "5"};
        for (int i = 0; i < jump.size(); ++i)
            typeCell(w->flexSource, i, 1, jump[i]);
        prompts_.answer(Answer::Yes);
        QTest::mouseClick(w->CmdBuiltSngyr, Qt::LeftButton);
        QVERIFY(w->lastChart());
        QCOMPARE(w->lastChart()->windowTitle(), QStringLiteral("Sprague Interpolator Error!!!"));
        QCOMPARE(w->dest().textMatrix(1, 0), QString()); // no table filled
        QTemporaryDir dir;
        QVERIFY(w->lastChart()->grab().toImage().save(screenshotFolder(dir) + "/interpolator_sudden_change.png"));
        delete w->lastChart();
    }

    void importsAMarkedTextFileForBoth() {
        auto w = window();
        QTest::mouseClick(w->Optboth, Qt::LeftButton);
        QCOMPARE(w->source().cols(), 3);
        const QString txt = dir_.filePath("p.txt");
        QFile f(txt);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("[pop];500;480;470;460;450;440;2000\n[Dths];9;8;7;6;6;6;60\n");
        f.close();
        prompts_.fileAnswer(txt);
        QTest::mouseClick(w->Command2, Qt::LeftButton);
        QCOMPARE(w->source().textMatrix(7, 0), QStringLiteral("30-w"));
        QCOMPARE(w->source().textMatrix(1, 1), QStringLiteral("500"));
        QCOMPARE(w->source().textMatrix(7, 2), QStringLiteral("60"));
        QTest::mouseClick(w->CmdBuiltSngyr, Qt::LeftButton);
        QCOMPARE(w->dest().cols(), 3);
        QCOMPARE(w->dest().textMatrix(0, 2), QStringLiteral("Deaths"));
    }

    void saveAsReadsBackTheOutputGroups() {
        auto w = filled();
        QTest::mouseClick(w->CmdSv, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList{"Please check the data on the grid before saving it."});
        prompts_.clear();
        QTest::mouseClick(w->CmdBuiltSngyr, Qt::LeftButton);
        QTest::mouseClick(w->CmdSv, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList{"No Output Age groups"});
        typeCell(w->FlexOPAgGrps, 0, 0, "0");
        typeCell(w->FlexOPAgGrps, 1, 0, "1");
        typeCell(w->FlexOPAgGrps, 2, 0, "20-w");
        QTest::mouseClick(w->CmdBuiltSngyr, Qt::LeftButton);
        const QString path = dir_.filePath("out.xlsx");
        prompts_.clear();
        prompts_.fileAnswer(path);
        QTest::mouseClick(w->CmdSv, Qt::LeftButton);
        QCOMPARE(prompts_.shown()[0].text, QStringLiteral("Save As"));
        QCOMPARE(prompts_.messages().last(), QStringLiteral("Data exported successfully:") + path);
        QStringList fields;
        const CellArray back = FnReadArrFile(path, "DstTable", &fields);
        QCOMPARE(fields, QStringList({"Agex", "Population"}));
        QCOMPARE(back.size(0), 3);
        QCOMPARE(back(2, 0).toString(), QStringLiteral("20-w"));
        QVERIFY(std::abs(back(2, 1).toDouble() - (450 + 440 + 2000)) < 1e-9);
        prompts_.clear();
        prompts_.fileAnswer(path);
        prompts_.answer(Answer::No);
        QTest::mouseClick(w->CmdSv, Qt::LeftButton);
        QCOMPARE(prompts_.messages().last(), QStringLiteral("File Already Exists.Do you want to Replace"));
    }

    void clearAllEmptiesTheGrids() {
        auto w = filled();
        QTest::mouseClick(w->CmdBuiltSngyr, Qt::LeftButton);
        QTest::mouseClick(w->CmdClr, Qt::LeftButton);
        QCOMPARE(w->source().textMatrix(1, 0), QString());
        QCOMPARE(w->dest().textMatrix(1, 0), QString());
        typeCell(w->flexSource, 0, 1, "5"); // the limit went with the grids
        QCOMPARE(prompts_.messages(), QStringList{"Pls. enter the upper age limit"});
    }

    void screenshot() {
        auto w = filled();
        typeCell(w->FlexOPAgGrps, 0, 0, "0");
        typeCell(w->FlexOPAgGrps, 1, 0, "1");
        typeCell(w->FlexOPAgGrps, 2, 0, "15");
        typeCell(w->FlexOPAgGrps, 3, 0, "25-w");
        QTest::mouseClick(w->CmdBuiltSngyr, Qt::LeftButton);
        QTemporaryDir dir;
        const QImage image = w->grab().toImage();
        QVERIFY(hasContent(image));
        QVERIFY(image.save(screenshotFolder(dir) + "/interpolator.png"));
    }
};

QTEST_MAIN(InterpolatorForm)
#include "frm_interpolate_test.moc"
