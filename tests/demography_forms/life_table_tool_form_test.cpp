// The life table tool as a user uses it: the ladder of ages, rates typed into the grid, the method
// options, Generate, the result window's Print and Save As in each file kind read back, the model
// tables beside a computed one, and the messages of bad input.

#include "demography/forms/frm_interpolate.h"
#include "demography/forms/frm_life_table.h"
#include "demography/forms/frm_life_table_entry.h"
#include "demography/life_table.h"
#include "foundation/settings.h"
#include "grid_gestures.h"
#include "inputs/foreign_file.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "screenshots.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>

using namespace vesk;
using namespace vesk::test;

class LifeTableToolForm : public QObject {
    Q_OBJECT

    ScriptedPrompts prompts_;
    QTemporaryDir dir_;

    // The window with the ladder 0, 1, 5, 10 and the rates per 1000 of the hand-worked table.
    FrmLifeTableEntry* filledWindow() {
        auto* w = new FrmLifeTableEntry;
        w->show();
        w->txtLage->setText(QStringLiteral("10"));
        w->optAge1->setChecked(true);
        w->OptMAge5->setChecked(true);
        QTest::mouseClick(w->cmdGenAgeGrps, Qt::LeftButton);
        const char* rates[] = {"50", "10", "2", "50"};
        for (int i = 0; i < 4; ++i)
            typeCell(w->datas, i, 1, QString::fromLatin1(rates[i]));
        w->TxtAsdrDnmtr->setText(QStringLiteral("1000"));
        w->txtIMR->setText(QStringLiteral("50"));
        w->txtPGR->setText(QStringLiteral("0"));
        return w;
    }

    frmLifeTable* generate(FrmLifeTableEntry* w) {
        QTest::mouseClick(w->cmdLTGen, Qt::LeftButton);
        if (!w->lastResult())
            qWarning() << prompts_.messages() << w->grid().rows();
        return w->lastResult();
    }

private slots:
    void init() {
        setPromptService(&prompts_);
        prompts_.clear();
        settings() = VeskSettings{};
        settings().LTRadix = 1000;
        settings().LfTbDecPlcs = 2;
    }
    void cleanup() {
        setPromptService(nullptr);
        QVERIFY(prompts_.unanswered() == 0);
    }

    void ladderOfAgesGoesIntoTheFirstColumn() {
        std::unique_ptr<FrmLifeTableEntry> w(new FrmLifeTableEntry);
        w->txtLage->setText(QStringLiteral("30"));
        w->optAge2->setChecked(true);
        w->OptMAge10->setChecked(true);
        QTest::mouseClick(w->cmdGenAgeGrps, Qt::LeftButton);
        QStringList ages;
        for (int r = 1; r < w->grid().rows(); ++r)
            ages << w->grid().textMatrix(r, 0);
        QCOMPARE(ages, QStringList({"0", "1", "2", "5", "10", "20", "30"}));
        w->txtLage->setText(QStringLiteral("35"));
        QTest::mouseClick(w->cmdGenAgeGrps, Qt::LeftButton);
        QCOMPARE(prompts_.messages().constLast(), QStringLiteral("GIVEN VALUE DOSENOT FALL UNDER 10 YEAR AGE INTERVAL, "
                                                                 "ENTER A VALID NUMBER FOR LAST AGE GROUP"));
        QCOMPARE(w->grid().rows(), 8); // the ladder stays as it was
    }

    void methodOptionsSwitchTheirFields() {
        std::unique_ptr<FrmLifeTableEntry> w(new FrmLifeTableEntry);
        w->show();
        QTest::mouseClick(w->OptGre, Qt::LeftButton);
        QCOMPARE(settings().LTMethod, qint16(3));
        QVERIFY(w->Rngval->isEnabled());
        QCOMPARE(w->Rngval->text(), QStringLiteral("1.099658856"));
        QVERIFY(!w->txtKFlwrlmt->isEnabled());
        QCOMPARE(w->grid().cols(), 2);
        QTest::mouseClick(w->Optkeyfitz, Qt::LeftButton);
        QCOMPARE(settings().LTMethod, qint16(1));
        QVERIFY(!w->Rngval->isEnabled());
        QVERIFY(w->txtKFlwrlmt->isEnabled() && w->txtKFupprlmt->isEnabled());
        QCOMPARE(w->grid().cols(), 3);
        QCOMPARE(w->grid().textMatrix(0, 2), QStringLiteral("Pop"));
        typeCell(w->datas, 0, 2, QStringLiteral("1234"));
        QTest::mouseClick(w->Optnewell, Qt::LeftButton);
        QCOMPARE(settings().LTMethod, qint16(0));
        QVERIFY(!w->txtKFlwrlmt->isEnabled() && !w->Rngval->isEnabled());
        QCOMPARE(w->grid().cols(), 2);
        QTest::mouseClick(w->Optkeyfitz, Qt::LeftButton); // the population typed comes back
        QCOMPARE(w->grid().textMatrix(1, 2), QStringLiteral("1234"));
    }

    void generateShowsTheTableRounded() {
        std::unique_ptr<FrmLifeTableEntry> w(filledWindow());
        frmLifeTable* r = generate(w.get());
        QVERIFY(r);
        std::unique_ptr<frmLifeTable> owned(r);
        QCOMPARE(r->windowTitle(), QStringLiteral("Life Table"));
        const QStringList rows = gridTexts(r->grdLTF);
        QCOMPARE(r->grdLTF->model()->headerData(11, Qt::Horizontal).toString(), QStringLiteral("Ex"));
        // X as typed; Mx, n, ax, qx, px, lx, dx, Lx, mx, Tx, Ex at two decimals, by the picture "#.##".
        QCOMPARE(rows.value(0), QStringLiteral("0|.05|1.|.23|.05|.95|1000.|50.|961.5|.05|27290.32|27.29"));
        QCOMPARE(rows.value(3).section(u'|', 2, 2), QStringLiteral("W"));
        QVERIFY(prompts_.shown().isEmpty());
    }

    void saveAsInEachKindReadsBackTheDoubles() {
        std::unique_ptr<FrmLifeTableEntry> w(filledWindow());
        std::unique_ptr<frmLifeTable> r(generate(w.get()));
        QVERIFY(r);
        const CellArray& table = r->result().table;
        for (const char* name : {"lt.txt", "lt.WK1", "lt.xlsx", "lt.dbf", "lt.vdb"}) {
            const QString path = dir_.filePath(QString::fromLatin1(name));
            prompts_.clear();
            prompts_.fileAnswer(path);
            QTest::mouseClick(r->IDSave, Qt::LeftButton);
            QCOMPARE(prompts_.messages().constLast(), QStringLiteral("Data exported successfully:") + path);
            QStringList fields;
            const CellArray back = FnReadArrFile(path, QStringLiteral("LifeTable"), &fields);
            // A text file holds no field names: its fields read back as Field0, Field1...
            if (!QString::fromLatin1(name).endsWith(QLatin1String(".txt")))
                QCOMPARE(fields, QStringList({"Agex", "ASDR", "Agen", "AX", "QX", "PX", "SLX", "Ltdx", "Blx", "LTMX",
                                              "TX", "EX"}));
            QCOMPARE(back.size(0), 4);
            for (int i = 0; i < 4; ++i)
                for (int c : {4, 6, 8, 10, 11})
                    QVERIFY2(back(i, c).toDouble() == table(i, c).toDouble(),
                             qPrintable(QStringLiteral("%1 row %2 col %3").arg(name).arg(i).arg(c)));
            QCOMPARE(back(3, 2).toString(), QStringLiteral("W"));
        }
        // A second save over the text file asks first; No leaves it.
        const QString txt = dir_.filePath(QStringLiteral("lt.txt"));
        const QByteArray before = [&] { QFile f(txt); f.open(QIODevice::ReadOnly); return f.readAll(); }();
        prompts_.clear();
        prompts_.fileAnswer(txt);
        prompts_.answer(Answer::No);
        QTest::mouseClick(r->IDSave, Qt::LeftButton);
        QCOMPARE(prompts_.messages(), QStringList({"The specified file already exists do you want to Overwrite it ?"}));
        QFile f(txt);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), before);
    }

    void saveIntoAnExistingDatabaseAddsANamedTable() {
        std::unique_ptr<FrmLifeTableEntry> w(filledWindow());
        std::unique_ptr<frmLifeTable> r(generate(w.get()));
        const QString path = dir_.filePath(QStringLiteral("two.vdb"));
        prompts_.fileAnswer(path);
        QTest::mouseClick(r->IDSave, Qt::LeftButton);
        prompts_.clear();
        prompts_.fileAnswer(path);
        prompts_.answer(Answer::No); // add a table
        prompts_.inputAnswer(QStringLiteral("Second"));
        QTest::mouseClick(r->IDSave, Qt::LeftButton);
        QCOMPARE(prompts_.messages().constLast(), QStringLiteral("Data exported successfully:") + path);
        QCOMPARE(FnReadArrFile(path, QStringLiteral("LifeTable")).size(0), 4);
        QCOMPARE(FnReadArrFile(path, QStringLiteral("Second")).size(0), 4);
    }

    void printGoesToPdfWithoutAPrinter() {
        std::unique_ptr<FrmLifeTableEntry> w(filledWindow());
        std::unique_ptr<frmLifeTable> r(generate(w.get()));
        const QString pdf = dir_.filePath(QStringLiteral("lt.pdf"));
        prompts_.fileAnswer(pdf);
        QTest::mouseClick(r->IdPrn, Qt::LeftButton);
        QVERIFY(QFileInfo(pdf).size() > 1000);
        QVERIFY(r->printHtml().contains(QStringLiteral("        Life Table")));
        QVERIFY(r->printHtml().contains(QStringLiteral("27290.32")));
    }

    void keyfitzNeedsLimitsWithinTheAges() {
        std::unique_ptr<FrmLifeTableEntry> w(filledWindow());
        QTest::mouseClick(w->Optkeyfitz, Qt::LeftButton);
        const char* pop[] = {"100", "400", "500", "2000"};
        for (int i = 0; i < 4; ++i)
            typeCell(w->datas, i, 2, QString::fromLatin1(pop[i]));
        w->txtKFlwrlmt->setText(QStringLiteral("12"));
        w->txtKFupprlmt->setText(QStringLiteral("5"));
        QVERIFY(!generate(w.get()));
        QCOMPARE(prompts_.messages(), QStringList({"Enter valid Lower limit for Keyfitz method:"}));
        prompts_.clear();
        w->txtKFlwrlmt->setText(QStringLiteral("5"));
        std::unique_ptr<frmLifeTable> r(generate(w.get()));
        QVERIFY(r);
        QCOMPARE(r->grdLTF->model()->headerData(12, Qt::Horizontal).toString(), QStringLiteral("POP"));
        QCOMPARE(r->result().table(2, 12).toString(), QStringLiteral("500"));
    }

    void emptyRateCellIsRefused() {
        std::unique_ptr<FrmLifeTableEntry> w(filledWindow());
        typeCell(w->datas, 2, 1, QString());
        QVERIFY(!generate(w.get()));
        QCOMPARE(prompts_.messages(), QStringList({"Make sure that you have entered data on the grid:"}));
    }

    void modelTableAndItsRates() {
        std::unique_ptr<FrmLifeTableEntry> w(new FrmLifeTableEntry);
        w->cmbCdFamily->setCurrentIndex(0); // West
        w->cmbCdSex->setCurrentIndex(0);    // F
        w->spnCdLevel->setValue(15);
        QTest::mouseClick(w->cmdCdTable, Qt::LeftButton);
        std::unique_ptr<frmLifeTable> model(w->lastResult());
        QVERIFY(model);
        QCOMPARE(model->windowTitle(), QStringLiteral("Life Table - Coale-Demeny West F 15"));
        const double modelE0 = model->result().table(0, 9).toDouble();
        QVERIFY(std::abs(modelE0 - 55.0) < 0.01);
        QTest::mouseClick(w->cmdCdRates, Qt::LeftButton);
        QCOMPARE(w->grid().rows(), 22);
        settings().LTRadix = 100000;
        std::unique_ptr<frmLifeTable> computed(generate(w.get()));
        QVERIFY(computed);
        QVERIFY(std::abs(computed->result().table(0, 11).toDouble() - modelE0) < 0.25);
        QVERIFY(prompts_.shown().isEmpty());
    }

    void helpSaysWhatEachMethodComputes() {
        std::unique_ptr<FrmLifeTableEntry> w(new FrmLifeTableEntry);
        QTest::mouseClick(w->cmdHelp, Qt::LeftButton);
        const QString help = prompts_.messages().value(0);
        for (const char* m : {"Standard:", "Keyfitz:", "Reed-Merrell:", "Greville:"})
            QVERIFY2(help.contains(QString::fromLatin1(m)), m);
        QTest::mouseClick(w->cmdIntpr, Qt::LeftButton); // the interpolator, with nothing passed
        std::unique_ptr<frmInterpolate> interpolator(frmInterpolate::open());
        QVERIFY(interpolator->isVisible());
        QCOMPARE(interpolator->source().textMatrix(1, 0), QString());
    }

    void screenshots() {
        std::unique_ptr<FrmLifeTableEntry> w(filledWindow());
        QTest::mouseClick(w->Optkeyfitz, Qt::LeftButton);
        QTest::mouseClick(w->Optnewell, Qt::LeftButton);
        const QString folder = screenshotFolder(dir_);
        const QImage entry = w->grab().toImage();
        QVERIFY(hasContent(entry));
        QVERIFY(entry.save(folder + QStringLiteral("/life_table_entry.png")));
        std::unique_ptr<frmLifeTable> r(generate(w.get()));
        r->show();
        const QImage result = r->grab().toImage();
        QVERIFY(hasContent(result));
        QVERIFY(result.save(folder + QStringLiteral("/life_table_result.png")));
    }
};

QTEST_MAIN(LifeTableToolForm)
#include "life_table_tool_form_test.moc"
