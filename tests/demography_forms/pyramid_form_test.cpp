// The population pyramid as a user draws it: typed into the tool, checked, drawn; a study's units paged;
// the bars measured in the painted picture against the data; copy, save; pictures for the documentation.

#include "demography/forms/frm_pop_dth_as.h"
#include "demography/forms/frm_pop_prymd.h"
#include "demography/forms/frm_tools_pp.h"
#include "inputs/foreign_file.h"
#include "platform/cell_array.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "screenshots.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QAction>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

namespace {

// The length in pixels of the bar of row `i` on the side `male`, measured in a picture of `size`
// painted by paintPyramid: the run of the bar's colour from the centre.
int measured(const QImage& image, const PyramidTable& table, std::size_t i, bool male) {
    const int left = 60, top = 30, right = 20, bottom = 70;
    const PyramidGeometry g = pyramidGeometry(table, image.width() - left - right, image.height() - top - bottom);
    const int y = top + int(g.bars[i].top + g.bars[i].height / 2);
    const int centre = left + int(g.centre);
    const QColor colour = male ? QColor(70, 130, 180) : QColor(220, 120, 60);
    int n = 0;
    for (int x = male ? centre - 1 : centre + 1; x > 0 && x < image.width(); x += male ? -1 : 1) {
        if (image.pixelColor(x, y) != colour)
            break;
        ++n;
    }
    return n;
}

} // namespace

class PyramidFormTest : public QObject {
    Q_OBJECT

private:
    ScriptedPrompts prompts;
    std::unique_ptr<ScopedPromptService> scope;
    QTemporaryDir dir;

private slots:
    void initTestCase() { scope = std::make_unique<ScopedPromptService>(&prompts); }
    void cleanupTestCase() { scope.reset(); }
    void init() { prompts.clear(); }

    void typedTableIsCheckedAndDrawnToScale();
    void studyUnitsArePaged();
    void copyAndSave();
    void populationByAgeAndSex();
};

void PyramidFormTest::populationByAgeAndSex() {
    // Two units, single years 0..9 and the open row 10: women 1 a year, men 2 (unit 2: twice).
    CellArray pop({1, 2, 11, 5});
    CellArray units({2});
    for (int b = 0; b < 2; ++b) {
        units(b) = Cell(QStringLiteral("U%1").arg(b + 1));
        for (int r = 0; r <= 10; ++r) {
            pop(0, b, r, 0) = Cell(double(r));
            pop(0, b, r, 2) = Cell(1.0 * (b + 1));
            pop(0, b, r, 3) = Cell(2.0 * (b + 1));
        }
    }
    QVERIFY(!frmPopDthAS::open(frmPopDthAS::Population, Cell(pop), Cell()));
    QCOMPARE(prompts.messages(), QStringList{"NO BPU values are exist for the current study"});
    prompts.clear();
    std::unique_ptr<frmPopDthAS> f(frmPopDthAS::open(frmPopDthAS::Deaths, Cell(pop), Cell(units)));
    QVERIFY(f);
    QCOMPARE(f->windowTitle(), QString("Deaths by Age and Sex"));
    // No intervals: the check's message.
    QVERIFY(!f->showFor("P"));
    QCOMPARE(prompts.messages(), QStringList{"The Age Intervals are not set, Please enter the Age Intervals"});
    f->mnu_5Yr->trigger();
    QCOMPARE(f->grid().textMatrix(3, 0), QString("10")); // 0-4, 5-9, then the open row from 10
    QCOMPARE(f->grid().textMatrix(3, 1), QString("w"));
    f->grid().setTextMatrix(4, 0, "3");
    f->grid().setTextMatrix(4, 1, "3"); // one year, BAI equal to EAI
    prompts.clear();
    std::unique_ptr<frmShowRsltpopdth> all(f->showFor("ALL"));
    QVERIFY(all);
    QCOMPARE(all->grid().textMatrix(0, 4), QString("Persons"));
    QCOMPARE(all->grid().textMatrix(1, 2), QString("10")); // men 0-4 of U1
    QCOMPARE(all->grid().textMatrix(4, 4), QString("3"));  // persons aged 3
    all->cmdNext->click();
    QCOMPARE(all->lblUnit->text(), QString("U2"));
    QCOMPARE(all->grid().textMatrix(3, 3), QString("2")); // women 10+ of U2
    all->showUnit(5); // past the last unit: the last stays
    QCOMPARE(all->unit(), 1);
    // Save As in a kind read back, and Print to PDF.
    prompts.fileAnswer(dir.filePath("view.dbf"));
    all->cmdSavAs->click();
    QVERIFY(prompts.messages().last().startsWith("Data exported successfully:"));
    const CellArray back = FnReadArrFile(dir.filePath("view.dbf"), "Results");
    QCOMPARE(back.size(0), 4);
    QCOMPARE(back(back.lbound(0), back.lbound(1) + 2).toDouble(), 20.0); // men 0-4 of U2
    prompts.fileAnswer(dir.filePath("view.pdf"));
    all->CmdPrint->click();
    QVERIFY(QFileInfo(dir.filePath("view.pdf")).size() > 500);
    prompts.clear();
    f->grid().setTextMatrix(4, 0, "7");
    QVERIFY(!f->showFor("M"));
    QCOMPARE(prompts.messages(), QStringList{"The BAI value should not be morethan EAI value"});
    // No array for the mode yet: the table stays empty.
    frmShowRsltpopdth none(popDeathTables(Cell(), Cell(units), fiveAgeGroups(), "P"), "Deaths by Age and Sex");
    QCOMPARE(none.grid().rows(), 0);
    QTemporaryDir scratch;
    f->show();
    all->show();
    QVERIFY(QTest::qWaitForWindowExposed(all.get()));
    QVERIFY(f->grab().toImage().save(screenshotFolder(scratch) + "/frmPopDthAS.png"));
    QVERIFY(all->grab().toImage().save(screenshotFolder(scratch) + "/frmShowRsltpopdth.png"));
}

void PyramidFormTest::typedTableIsCheckedAndDrawnToScale() {
    frmToolsPP tool;
    QCOMPARE(tool.grid().textMatrix(0, 1), QString("Males"));
    prompts.inputAnswer(QString("17"));
    tool.Cmdupplmt->click();
    QCOMPARE(prompts.messages(), QStringList{"The upper age limit should be divisible by 5"});
    prompts.clear();
    prompts.inputAnswer(QString("20"));
    tool.Cmdupplmt->click();
    QCOMPARE(tool.grid().rows(), 1 + 5);
    QCOMPARE(tool.grid().textMatrix(5, 0), QString("20"));
    const double males[] = {6000, 5200, 4100, 3000, 1500}, females[] = {5800, 5100, 4300, 3400, 2300};
    for (int r = 0; r < 5; ++r) {
        tool.grid().setTextMatrix(r + 1, 1, QString::number(males[r]));
        tool.grid().setTextMatrix(r + 1, 2, QString::number(females[r]));
    }
    tool.grid().setTextMatrix(3, 1, "many");
    QVERIFY(!tool.showChart());
    QCOMPARE(prompts.messages(), QStringList{"Male Population for the BAI : 10 is invalid"});
    QCOMPARE(prompts.shown().last().title, QString("VESK"));
    tool.grid().setTextMatrix(3, 1, QString::number(males[2]));
    std::unique_ptr<frmPopPrymd> f(tool.showChart());
    QVERIFY(f);
    QCOMPARE(f->lblAxis->text(), QString("Population in Hundreds"));
    const QImage image = f->picture(QSize(800, 600));
    const PyramidTable& t = f->picPyramid->table();
    const PyramidGeometry g = pyramidGeometry(t, 800 - 80, 600 - 100);
    for (std::size_t i = 0; i < t.size(); ++i) {
        QVERIFY(qAbs(measured(image, t, i, true) - g.bars[i].maleLength) <= 1.5);
        QVERIFY(qAbs(measured(image, t, i, false) - g.bars[i].femaleLength) <= 1.5);
    }
    // The bars follow the data: 6000 men at 0 over a half width of 360 pixels on an axis of 5 x 12 hundreds.
    QVERIFY(qAbs(g.bars[0].maleLength - 360.0 * 60 / 60) < 1e-9);
    QVERIFY(qAbs(g.bars[4].femaleLength - 360.0 * 23 / 60) < 1e-9);
    QTemporaryDir scratch;
    f->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.get()));
    QVERIFY(hasContent(f->grab().toImage()));
    QVERIFY(f->grab().toImage().save(screenshotFolder(scratch) + "/frmPopPrymd.png"));
    tool.show();
    QVERIFY(tool.grab().toImage().save(screenshotFolder(scratch) + "/frmToolsPP.png"));
}

void PyramidFormTest::studyUnitsArePaged() {
    CellArray pop({1, 3, 4, 5});
    CellArray units({3});
    for (int b = 0; b < 3; ++b) {
        units(b) = Cell(QStringLiteral("U%1").arg(b + 1));
        for (int r = 0; r < 4; ++r) {
            pop(0, b, r, 0) = Cell(double(r * 5));
            pop(0, b, r, 2) = Cell(1000.0 * (b + 1) + r); // female
            pop(0, b, r, 3) = Cell(900.0 * (b + 1) - r);  // male
        }
    }
    frmPopPrymd f{Cell(pop), Cell(units)};
    QCOMPARE(f.lblBPU->text(), QString("U1"));
    QVERIFY(!f.cmdPrev->isEnabled());
    f.cmdNxt->click();
    f.cmdNxt->click();
    QCOMPARE(f.page(), 2);
    QCOMPARE(f.lblBPU->text(), QString("U3"));
    QVERIFY(!f.cmdNxt->isEnabled());
    f.FnDrawPP(3); // past the last unit: the last stays on view
    QCOMPARE(f.page(), 2);
    QCOMPARE(f.picPyramid->table()[3].females, 3003.0);
    QCOMPARE(f.picPyramid->table()[0].males, 2700.0);
    const QImage image = f.picture(QSize(800, 600));
    const PyramidGeometry g = pyramidGeometry(f.picPyramid->table(), 720, 500);
    QVERIFY(qAbs(measured(image, f.picPyramid->table(), 3, false) - g.bars[3].femaleLength) <= 1.5);
    QCOMPARE(g.bars[3].label, QString("15+"));
    f.cmdTop->click();
    QCOMPARE(f.page(), 0);
}

void PyramidFormTest::copyAndSave() {
    frmPopPrymd f(PyramidTable{{0, 10, 12}, {5, 8.5, 9}}, "Typed");
    f.cmdCopy->click();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("0\t10\t12\n5\t8.5\t9\n"));
    for (const char* name : {"p.png", "p.svg", "p.pdf"}) {
        const QString path = dir.filePath(QString::fromLatin1(name));
        prompts.fileAnswer(path);
        f.cmdSave->click();
        QVERIFY2(QFileInfo(path).size() > 500, name);
    }
    QVERIFY(prompts.messages().isEmpty());
    // Print goes to a PDF where no printer is attached.
    const QString pdf = dir.filePath("printed.pdf");
    prompts.fileAnswer(pdf);
    f.cmdPrint->click();
    QVERIFY(QFileInfo(pdf).size() > 500);
}

QTEST_MAIN(PyramidFormTest)
#include "pyramid_form_test.moc"
