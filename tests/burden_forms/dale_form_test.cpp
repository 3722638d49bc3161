// The DALE window on the small study computed in a real study file: the lists, the grid and its
// decimals, Save As read back, Print to PDF, and its picture.

#include "burden/calculator_models.h"
#include "burden/computation.h"
#include "burden/compute_run.h"
#include "burden/dale.h"
#include "burden/forms/frm_dale.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "foundation/time_log.h"
#include "inputs/foreign_file.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/runtime.h"
#include "screenshots.h"
#include "small_study.h"
#include "small_study_open.h"
#include "study_db_fixture.h"

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

using namespace vesk;
using namespace vesk::test;

namespace {

const QString kSettings = QStringLiteral(VESK_BIN_DIR "/Vesk.stp");

} // namespace

class DaleFormTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<StudyDbFixture> fx_;
    QString shots_;

    // The small study (with the death rates of both sexes together) computed for sets 1 and 2, and
    // its DALE.
    void computedStudy() {
        QString error;
        QVERIFY2(openSmallStudy(*fx_, {kSmallPersonsRates}, &error), qPrintable(error));
        DapGridModel grid(DapRowTexts::Computation);
        grid.chooseRow(1, kCompModeSensitivity);
        grid.chooseRow(2, kCompModeSensitivity);
        computation().MtxDAP = grid.chosenDaps();
        TimeLog log;
        QCOMPARE(runComputation(studyContext(), computation(), CellArray(), nullptr, log, kSettings).end, RunEnd::Stored);
        QVERIFY(computeDale(studyContext(), computation(), kSettings));
        clearErrorStore();
        fx_->prompts.clear();
    }

private slots:
    void init() {
        computation() = Computation{};
        fx_ = std::make_unique<StudyDbFixture>();
        shots_ = screenshotFolder(fx_->dir);
    }
    void cleanup() {
        computation() = Computation{};
        fx_.reset();
    }

    void gridListsAndDecimals();
    void saveReadsBackEveryDouble();
    void printGoesToPdfWithoutAPrinter();
};

void DaleFormTest::gridListsAndDecimals() {
    computedStudy();
    auto* f = frmDale::open(nullptr);
    f->show();
    QVERIFY(QTest::qWaitForWindowExposed(f));
    QCOMPARE(f->windowTitle(), QString("DALE Results"));
    QCOMPARE(f->lstYear->count(), 1);
    QCOMPARE(f->lstYear->item(0)->text(), QString("2000"));
    QCOMPARE(f->lstDap->count(), 2);
    QCOMPARE(f->lstDap->item(0)->text(), QString("[0.03,1,0.04,0.1658]"));
    QCOMPARE(f->txtDecimals->text(), QString::number(settings().LDaleDecPlcs));
    const GridModel& g = f->grid();
    QCOMPARE(g.rows(), 3);
    QCOMPARE(g.textMatrix(0, 0), QString("Region ID"));
    QCOMPARE(g.textMatrix(0, 3), QString("Life Expectancy at birth for ales"));
    QCOMPARE(g.textMatrix(0, 7), QString("Sullivan health expectancy at birth for Females"));
    QCOMPARE(g.textMatrix(1, 0), QString("U1"));
    const CellArray& d = computation().ArrDale.array();
    const double daleF = d(0, 0, 0, dale_slot::kDaleF).toDouble();
    QCOMPARE(g.textMatrix(1, 2), QString::number(roundHalfEven(daleF, 2), 'f', 2));
    f->txtDecimals->setText("4");
    f->cmdRefresh->click();
    QCOMPARE(g.textMatrix(1, 2), QString::number(roundHalfEven(daleF, 4), 'f', 4));
    // The second set: its own figures.
    f->lstDap->setCurrentRow(1);
    QCOMPARE(g.textMatrix(1, 2), QString::number(roundHalfEven(d(0, 0, 1, dale_slot::kDaleF).toDouble(), 4), 'f', 4));
    QImage shot = f->grab().toImage();
    QVERIFY(hasContent(shot));
    shot.save(shots_ + "/frmDale.png");
    // Opened again, the same window comes forward.
    QCOMPARE(frmDale::open(nullptr), f);
    f->close();
}

void DaleFormTest::saveReadsBackEveryDouble() {
    computedStudy();
    frmDale f(computation().ArrDale, studyContext().VctrYrLst, computation().MtxDAP);
    for (const char* kind : {"dale.txt", "dale.dbf", "dale.WK1", "dale.xlsx", "dale.vdb"}) {
        const QString path = fx_->dir.path() + u'/' + QLatin1String(kind);
        fx_->prompts.clear();
        fx_->prompts.fileAnswer(path);
        f.cmdSave->click();
        QVERIFY2(fx_->prompts.messages().value(0).startsWith("Data exported successfully:"),
                 qPrintable(fx_->prompts.messages().join('|')));
        QStringList fields;
        const CellArray back = FnReadArrFile(path, QStringLiteral("DALE"), &fields);
        // A text file holds no field names: its fields read back as Field0, Field1...
        if (!QString::fromLatin1(kind).endsWith(QLatin1String(".txt")))
            QCOMPARE(fields, QStringList({"Year", "BPUID", "DAPID", "E0_F", "DALE_F", "E0_M", "DALE_M", "E0_P", "DALE_P",
                                          "HE_F", "HE_M", "HE_P"}));
        const CellArray& d = computation().ArrDale.array();
        QCOMPARE(back.size(0), 4); // two units by two sets
        int r = back.lbound(0);
        for (int b = 0; b < 2; ++b)
            for (int s = 0; s < 2; ++s, ++r) {
                QCOMPARE(back(r, back.lbound(1) + 1).toString(), d(0, b, s, dale_slot::kRegion).toString());
                for (int k = dale_slot::kE0F; k <= dale_slot::kLast; ++k)
                    QCOMPARE(back(r, back.lbound(1) + 2 + k).toDouble(), d(0, b, s, k).toDouble());
            }
    }
}

void DaleFormTest::printGoesToPdfWithoutAPrinter() {
    computedStudy();
    frmDale f(computation().ArrDale, studyContext().VctrYrLst, computation().MtxDAP);
    const QString pdf = fx_->dir.path() + "/dale.pdf";
    fx_->prompts.fileAnswer(pdf);
    f.CmdPrint->click();
    QVERIFY(QFile::exists(pdf));
    QVERIFY(QFileInfo(pdf).size() > 1000);
}

QTEST_MAIN(DaleFormTest)
#include "dale_form_test.moc"
